#pragma once
// Shared set-up of the series gallery pages: vectors filled from functions, and axes that
// follow the data with a caption.

#include "PageAxesCommon.h"

#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/series/VxDataSeries.h"

#include <QGridLayout>
#include <QWidget>
#include <functional>
#include <initializer_list>

namespace gallery {

// A vector owned by Owner holding Values.
template <class V = vx::TVxRealVector>
V* Values(QObject* Owner, std::initializer_list<double> Values)
{
    auto* v = new V(Owner);
    for (double d : Values)
        v->Add(d);
    return v;
}

// A vector owned by Owner holding F(i) for i = 0 .. Count - 1.
inline vx::TVxRealVector* Sampled(QObject* Owner, int Count, const std::function<double(int)>& F)
{
    auto* v = new vx::TVxRealVector(Owner);
    for (int i = 0; i < Count; ++i)
        v->Add(F(i));
    return v;
}

// Lets Axis follow the data, with the page fonts and a caption (shown when not empty).
inline void FollowData(vx::TVxAxis* Axis, const QString& Caption = QString())
{
    Axis->SetFont(PageFont(9));
    Axis->SetCaptionFont(PageFont(10));
    if (!Caption.isEmpty()) {
        Axis->SetUserCaption(Caption);
        Axis->SetDoUserCaption(true);
        Axis->SetShowCaption(true);
    }
}

// Four widgets in a 2 x 2 grid.
inline QWidget* Grid(QWidget* A, QWidget* B, QWidget* C, QWidget* D)
{
    auto* box = new QWidget;
    auto* layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(A, 0, 0);
    layout->addWidget(B, 0, 1);
    layout->addWidget(C, 1, 0);
    layout->addWidget(D, 1, 1);
    return box;
}

} // namespace gallery
