// Linear axes with grid lines and a title.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

QWidget* CreateLinearAxes()
{
    TVx2DGraph* graph = gallery::NewGraph("Damped oscillation");
    gallery::ShowRange(graph->XAxis(), 0, 12, "Time \\it\\i  / ms");
    gallery::ShowRange(graph->YAxis(), -1.5, 1.5, "Displacement \\ix\\i  / mm");
    const auto envelope = [](double t) { return 1.3 * std::exp(-t / 4); };
    gallery::AddCurve(graph, 0, 12, 400, [&](double t) { return envelope(t) * std::cos(2.2 * t); }, clNavy);
    gallery::AddCurve(graph, 0, 12, 100, envelope, clGray, false, psDash);
    gallery::AddCurve(graph, 0, 12, 100, [&](double t) { return -envelope(t); }, clGray, false, psDash);
    return graph;
}

const GalleryRegistrar registrar{{
    "10-linear-axes",
    "Linear axes with grid lines at the major ticks, minor ticks between them, axis captions and a graph title.",
    CreateLinearAxes,
    {},
}};

} // namespace
