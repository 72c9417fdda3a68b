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
    return graph;
}

const GalleryRegistrar registrar{{
    "linear-axes",
    "Linear axes with grid lines at the major ticks, minor ticks between them, axis captions and a graph title.",
    CreateLinearAxes,
    {},
}};

} // namespace
