#pragma once
// Shared set-up of the axis and label gallery pages: a white graph with a frame, a
// title and grid lines, and axes showing a fixed range (there is no data on them).

#include "vx/graph/VxAxis.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/graph/VxLabel.h"
#include "vx/core/VxVector.h"
#include "vx/series/VxDataSeries.h"

#include <QHBoxLayout>
#include <QWidget>
#include <cmath>
#include <functional>

namespace gallery {

// A font of the DejaVu family at Size points in Style.
inline vx::TFont PageFont(int Size, vx::TFontStyles Style = vx::TFontStyles())
{
    vx::TFont font;
    font.SetSize(Size);
    font.SetStyle(Style);
    font.SetColor(vx::clBlack);
    return font;
}

// A graph with Title above it, a frame around the data area and dotted major grid lines
// (solid light ones when MinorGrid is set, with dotted minor lines between them).
inline vx::TVx2DGraph* NewGraph(const QString& Title, QWidget* Parent = nullptr, bool MinorGrid = false)
{
    auto* graph = new vx::TVx2DGraph(Parent);
    graph->SetColor(vx::clWhite);
    graph->SetDataColor(vx::clWhite);
    graph->SetFont(PageFont(9));
    graph->SetTitleFont(PageFont(11, vx::fsBold));
    graph->SetCaption(Title);
    graph->SetShowTitle(true);
    graph->FrameLine().SetVisible(true);
    for (vx::TVxLineStyle* grid : {&graph->MajorGridX(), &graph->MajorGridY()}) {
        grid->SetVisible(true);
        grid->SetColor(MinorGrid ? vx::clSilver : vx::clGray);
        grid->SetStyle(MinorGrid ? vx::psSolid : vx::psDot);
    }
    if (MinorGrid) {
        for (vx::TVxLineStyle* grid : {&graph->MinorGridX(), &graph->MinorGridY()}) {
            grid->SetVisible(true);
            grid->SetColor(vx::clSilver);
            grid->SetStyle(vx::psDot);
        }
    }
    return graph;
}

// Fixes Axis to [Start, Stop] with a caption (shown when not empty).
inline void ShowRange(vx::TVxAxis* Axis, double Start, double Stop, const QString& Caption = QString(),
                      vx::TVxAxScaling Scaling = vx::AxNormal)
{
    Axis->SetScaling(Scaling);
    Axis->SetStartEnd(vx::AxFixed);
    Axis->SetStopEnd(vx::AxFixed);
    Axis->SetStart(Start);
    Axis->SetStop(Stop);
    Axis->SetFont(PageFont(9));
    Axis->SetCaptionFont(PageFont(10));
    if (!Caption.isEmpty()) {
        Axis->SetUserCaption(Caption);
        Axis->SetDoUserCaption(true);
        Axis->SetShowCaption(true);
    }
}

// A line through F(x) at Count points spread evenly over [X0, X1] (on a logarithmic
// scale when LogSpaced), drawn on the graph's primary axes.
inline vx::TVxLineSeries* AddCurve(vx::TVx2DGraph* Graph, double X0, double X1, int Count,
                                   const std::function<double(double)>& F, vx::TColor Color,
                                   bool LogSpaced = false, vx::TPenStyle Style = vx::psSolid)
{
    auto* x = new vx::TVxRealVector(Graph);
    auto* y = new vx::TVxRealVector(Graph);
    for (int i = 0; i < Count; ++i) {
        const double t = double(i) / (Count - 1);
        const double v = LogSpaced ? X0 * std::pow(X1 / X0, t) : X0 + (X1 - X0) * t;
        x->Add(v);
        y->Add(F(v));
    }
    auto* series = new vx::TVxLineSeries(Graph);
    series->LineStyle().SetColor(Color);
    series->LineStyle().SetStyle(Style);
    series->LineStyle().SetWidth(Style == vx::psSolid ? 2 : 1);
    series->SetXData(x);
    series->SetYData(y);
    return series;
}

// Two graphs side by side.
inline QWidget* SideBySide(QWidget* Left, QWidget* Right)
{
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Left);
    layout->addWidget(Right);
    return box;
}

} // namespace gallery
