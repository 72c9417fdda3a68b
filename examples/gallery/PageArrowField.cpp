// A vector field drawn with an arrow series.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

#include "vx/series/VxArrowSeries.h"

using namespace vx;

namespace {

QWidget* CreateArrowField()
{
    TVx2DGraph* graph = gallery::NewGraph("Flow around a vortex");
    gallery::ShowRange(graph->XAxis(), -5.5, 5.5, "\\ix\\i  / m");
    gallery::ShowRange(graph->YAxis(), -4.5, 4.5, "\\iy\\i  / m");
    auto* x = new TVxRealVector(graph);
    auto* y = new TVxRealVector(graph);
    auto* dx = new TVxRealVector(graph);
    auto* dy = new TVxRealVector(graph);
    // A vortex (circulating flow) drifting to the right, sampled on a grid.
    for (int i = -5; i <= 5; ++i) {
        for (int j = -4; j <= 4; ++j) {
            const double r2 = i * i + j * j + 2.0;
            x->Add(i);
            y->Add(j);
            dx->Add(0.3 - 1.6 * j / r2);
            dy->Add(1.6 * i / r2);
        }
    }
    auto* arrows = new TVxArrowSeries(graph);
    arrows->SetXData(x);
    arrows->SetYData(y);
    arrows->SetDX(dx);
    arrows->SetDY(dy);
    arrows->LineStyle().SetColor(clNavy);
    arrows->SetTipLength(7);
    arrows->SetTipWidth(3);
    return graph;
}

const GalleryRegistrar registrar{{
    "24-arrow-field",
    "An arrow series: one arrow per grid point from (x, y) to (x + dx, y + dy) in data units, "
    "showing a vortex carried along by a weak flow to the right.",
    CreateArrowField,
    {},
}};

} // namespace
