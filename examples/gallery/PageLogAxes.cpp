// Logarithmic axes in both label styles: plain numbers and powers of ten.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

QWidget* CreateLogAxes()
{
    TVx2DGraph* graph = gallery::NewGraph("Frequency response of a low-pass filter", nullptr, true);
    gallery::ShowRange(graph->XAxis(), 0.01, 1000, "Frequency \\if\\i  / kHz", AxLog);
    gallery::ShowRange(graph->YAxis(), 1e-6, 1e2, "Transmitted power \\iP\\i  / W", AxLogEE);
    // First- and third-order low-pass filters with a corner at 1 kHz, 10 W in.
    for (int order : {1, 3})
        gallery::AddCurve(graph, 0.01, 1000, 300,
                          [order](double f) { return 10 / std::pow(1 + f * f, order); },
                          order == 1 ? clNavy : clMaroon, true);
    return graph;
}

const GalleryRegistrar registrar{{
    "11-log-axes",
    "Logarithmic axes: decades labelled as plain numbers (horizontal, 0.01 ... 1000) and as powers "
    "of ten (vertical, 10^-6 ... 10^2), with minor ticks at 2 ... 9 times each decade.",
    CreateLogAxes,
    {},
}};

} // namespace
