// Line series with their areas filled down to y = 0.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

using namespace vx;

namespace {

QWidget* CreateLineArea()
{
    TVx2DGraph* graph = gallery::NewGraph("Filled areas");
    gallery::FollowData(graph->XAxis(), "Phase / rad");
    gallery::FollowData(graph->YAxis(), "Amplitude");
    constexpr int n = 400;
    auto* x = gallery::Sampled(graph, n, [](int i) { return i * 4 * M_PI / (n - 1); });

    // A wave filled in copy mode, and a narrower one on top drawn exclusive-or: where the
    // two overlap the colours mix, and the grid shows through in inverted colours.
    auto* wide = new TVxLineSeries(graph);
    wide->SetXData(x);
    wide->SetYData(gallery::Sampled(graph, n, [x](int i) { return 1.2 * std::sin(x->Value(i)); }));
    wide->LineStyle().SetColor(clNavy);
    wide->AreaStyle().SetVisible(true);
    wide->AreaStyle().SetDrawXOred(false);
    wide->AreaStyle().SetColor(RGB(170, 200, 240));

    auto* xored = new TVxLineSeries(graph);
    xored->SetXData(x);
    xored->SetYData(gallery::Sampled(graph, n, [x](int i) {
        const double t = x->Value(i);
        return 0.8 * std::sin(2 * t) * std::exp(-t / 8);
    }));
    xored->LineStyle().SetColor(clMaroon);
    xored->LineStyle().SetWidth(2);
    xored->AreaStyle().SetVisible(true);
    xored->AreaStyle().SetColor(RGB(255, 200, 120));
    return graph;
}

const GalleryRegistrar registrar{{
    "20-line-area",
    "Line series with their area filled down to y = 0: the light blue wave in copy mode, the "
    "orange one in exclusive-or mode (drawing it twice would restore the picture), so overlaps "
    "mix and the grid shows through inverted.",
    CreateLineArea,
    {},
}};

} // namespace
