#pragma once
// A paint device that records the primitives a QPainter sends to it (in device
// coordinates, with the pen, brush and composition mode in force), so tests can check
// what was drawn without looking at pixels. Its engine is not a raster engine.

#include "vx/platform/VxCanvas.h"

#include <QBrush>
#include <QFont>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>
#include <memory>

namespace vx::test {

struct RecordedPrimitive {
    enum Kind { Line, Polyline, Polygon, Rect, Ellipse, Text, Path, Pixmap };
    Kind kind = Line;
    QVector<QPointF> points; // Line: 2 points; Polyline/Polygon: the vertices
    QRectF rect;             // Rect, Ellipse, Pixmap; Text: the baseline origin in topLeft
    QString text;
    QFont font;
    QPen pen;
    QBrush brush;
    QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver;
    bool clipped = false;
    QRectF clip; // device coordinates, when clipped
};

class RecordingEngine;

class RecordingDevice : public QPaintDevice {
public:
    explicit RecordingDevice(int width = 200, int height = 200);
    ~RecordingDevice() override;

    QPaintEngine* paintEngine() const override;
    const QVector<RecordedPrimitive>& Primitives() const;
    QVector<RecordedPrimitive> OfKind(RecordedPrimitive::Kind kind) const;
    // How often the painter changed the pen / brush / font since the last Clear.
    int PenChanges() const;
    int BrushChanges() const;
    int FontChanges() const;
    void Clear();

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    int FWidth;
    int FHeight;
    std::unique_ptr<RecordingEngine> FEngine;
};

// The primitives of one kind that `draw` sends through a canvas on a fresh device.
template <class Draw>
QVector<RecordedPrimitive> Recorded(RecordedPrimitive::Kind kind, Draw&& draw, int width = 200, int height = 200)
{
    RecordingDevice device(width, height);
    {
        QPainter painter(&device);
        TCanvas c(&painter);
        draw(c);
    }
    return device.OfKind(kind);
}

} // namespace vx::test
