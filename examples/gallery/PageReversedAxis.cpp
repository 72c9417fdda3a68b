// A reversed (twisted) axis: values decrease to the right, as in infrared spectra.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

QWidget* CreateReversedAxis()
{
    TVx2DGraph* graph = gallery::NewGraph("Infrared spectrum");
    TVxAxis* x = graph->XAxis();
    gallery::ShowRange(x, 400, 4000, "Wavenumber \\i\\sn\\s\\i  / cm\\+-1");
    x->SetTwisted(true);
    gallery::ShowRange(graph->YAxis(), 0, 100, "Transmittance / %");
    // Absorption bands (centre, depth, half width) of a made-up organic compound.
    const double bands[][3] = {{3350, 45, 120}, {2950, 55, 30}, {2870, 35, 25}, {1715, 75, 18},
                               {1460, 30, 15}, {1375, 25, 12}, {1100, 50, 25}, {720, 20, 10}};
    gallery::AddCurve(graph, 400, 4000, 1200, [&](double k) {
        double t = 95;
        for (const auto& b : bands)
            t -= b[1] / (1 + std::pow((k - b[0]) / b[2], 2));
        return t;
    }, clNavy);
    return graph;
}

const GalleryRegistrar registrar{{
    "12-reversed-axis",
    "A reversed horizontal axis (Twisted): the values fall from 4000 on the left to 400 on the right.",
    CreateReversedAxis,
    {},
}};

} // namespace
