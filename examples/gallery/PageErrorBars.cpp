// Data with asymmetric error bars in x and y.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

using namespace vx;

namespace {

QWidget* CreateErrorBars()
{
    TVx2DGraph* graph = gallery::NewGraph("Calibration measurements");
    gallery::FollowData(graph->XAxis(), "Concentration \\ic\\i  / (mmol/l)");
    gallery::FollowData(graph->YAxis(), "Absorbance \\iA\\i");
    auto* s = new TVxDataWithErrorSeries(graph);
    s->SetXData(gallery::Values(graph, {0.5, 1.0, 2.0, 3.0, 4.5, 6.0, 8.0}));
    s->SetYData(gallery::Values(graph, {0.06, 0.13, 0.24, 0.38, 0.55, 0.70, 0.95}));
    // Upward errors larger than downward ones; the concentration error grows with c and is
    // skewed to the left.
    s->SetdYPlus(gallery::Values(graph, {0.02, 0.03, 0.03, 0.05, 0.06, 0.08, 0.10}));
    s->SetdYMinus(gallery::Values(graph, {0.01, 0.01, 0.02, 0.02, 0.03, 0.04, 0.04}));
    s->SetdXMinus(gallery::Values(graph, {0.05, 0.1, 0.2, 0.3, 0.45, 0.6, 0.8}));
    s->SetdXPlus(gallery::Values(graph, {0.02, 0.04, 0.08, 0.12, 0.18, 0.24, 0.32}));
    s->SetErrorIndicatorsColor(clMaroon);
    s->LineStyle().SetColor(clSilver);
    s->LineStyle().SetStyle(psDash);
    s->PointStyle().SetStyle(SySquareFilled);
    s->PointStyle().SetColor(clNavy);
    s->PointStyle().SetSize(3);
    return graph;
}

const GalleryRegistrar registrar{{
    "22-error-bars",
    "A data series with asymmetric error bars: different upward and downward errors in y, and "
    "different left and right errors in x, each bar ending in a cap as wide as the symbol. The "
    "axes include the ends of the bars.",
    CreateErrorBars,
    {},
}};

} // namespace
