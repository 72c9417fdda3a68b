#pragma once
// Counts the paint events a widget receives (update() coalesces, so this counts repaints).

#include <QEvent>
#include <QWidget>

namespace vx::test {

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* e) override
    {
        Count += e->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int Count = 0;
};

} // namespace vx::test
