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
    return graph;
}

const GalleryRegistrar registrar{{
    "reversed-axis",
    "A reversed horizontal axis (Twisted): the values fall from 4000 on the left to 400 on the right.",
    CreateReversedAxis,
    {},
}};

} // namespace
