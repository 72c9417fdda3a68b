// Every point symbol, one data series per symbol.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

using namespace vx;

namespace {

QWidget* CreatePointSymbols()
{
    TVx2DGraph* graph = gallery::NewGraph("The sixteen point symbols");
    gallery::ShowRange(graph->XAxis(), 0, 9, "Column");
    gallery::ShowRange(graph->YAxis(), -1, 16, "Symbol ordinal");
    graph->YAxis()->SetTwisted(true); // ordinal 0 at the top
    const TColor colours[] = {clNavy, clMaroon, clGreen, clPurple, clTeal, clOlive, clBlue, clRed};
    auto* x = gallery::Sampled(graph, 8, [](int i) { return i + 1.0; });
    for (int k = 0; k < VxPointSymbolCount; ++k) {
        auto* s = new TVxDataSeries(graph);
        s->SetXData(x);
        s->SetYData(gallery::Sampled(graph, 8, [k](int i) { return k + 0.15 * std::sin(i); }));
        s->LineStyle().SetColor(clSilver);
        s->PointStyle().SetStyle(TVxPointSymbol(k));
        s->PointStyle().SetColor(colours[k % 8]);
        s->PointStyle().SetSize(k % 2 ? 5 : 4);
        s->PointStyle().SetWidth(k == SyPoint ? 3 : 1); // a one-pixel point would hardly show
    }
    return graph;
}

const GalleryRegistrar registrar{{
    "21-point-symbols",
    "Data series with every point symbol, top to bottom: point, cross, x, star, five-pointed "
    "star (hollow, filled), circle, filled circle, square, filled square, diamond, filled "
    "diamond, delta, filled delta, nabla, filled nabla. Hollow symbols are filled with the "
    "data background; the grey connecting lines run underneath.",
    CreatePointSymbols,
    {},
}};

} // namespace
