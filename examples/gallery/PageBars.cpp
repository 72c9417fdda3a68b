// Bar series: side by side, stacked, lying and as blocks.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

#include "vx/series/VxBarSeries.h"

using namespace vx;

namespace {

// Colour bytes stay below 200: the lighter block shade of a larger byte wraps around.
const TColor kFronts[] = {RGB(70, 110, 190), RGB(190, 110, 40), RGB(90, 160, 90)};

// A bar series on Graph over Edges with Values, in colour k.
TVxBarSeries* AddBars(TVx2DGraph* Graph, TVxCustomRealVector* Edges, std::initializer_list<double> Values, int K,
                      bool Horizontal = false)
{
    auto* s = new TVxBarSeries(Graph);
    s->SetBarHorizontal(Horizontal);
    s->SetXData(Horizontal ? gallery::Values(Graph, Values) : Edges);
    s->SetYData(Horizontal ? Edges : gallery::Values(Graph, Values));
    s->LineStyle().SetColor(clBlack);
    s->AreaStyle().SetVisible(true);
    s->AreaStyle().SetColor(kFronts[K]);
    return s;
}

TVx2DGraph* SmallGraph(const QString& Title, const QString& X, const QString& Y)
{
    TVx2DGraph* g = gallery::NewGraph(Title);
    gallery::FollowData(g->XAxis(), X);
    gallery::FollowData(g->YAxis(), Y);
    return g;
}

QWidget* CreateBars()
{
    // Grouped: three series share each class, the first created on the left.
    TVx2DGraph* grouped = SmallGraph("Grouped (shifted)", "Quarter", "Sales");
    auto* quarters = gallery::Values(grouped, {0.5, 1.5, 2.5, 3.5, 4.5});
    const std::initializer_list<double> sales[] = {{4, 6, 5, 8}, {3, 4, 7, 6}, {2, 5, 4, 7}};
    for (int k = 0; k < 3; ++k) {
        TVxBarSeries* s = AddBars(grouped, quarters, sales[k], k);
        s->SetShiftOverlays(true);
        s->SetBarsGapPercent(25);
    }

    // Stacked: each series stands on the ones created before it.
    TVx2DGraph* stacked = SmallGraph("Stacked", "Quarter", "Sales");
    auto* edges = gallery::Values(stacked, {0.5, 1.5, 2.5, 3.5, 4.5});
    for (int k = 0; k < 3; ++k) {
        TVxBarSeries* s = AddBars(stacked, edges, sales[k], k);
        s->SetStackOverlays(true);
        s->SetBarsGapPercent(30);
    }

    // Lying: a histogram with the classes on the vertical axis.
    TVx2DGraph* lying = SmallGraph("Horizontal histogram", "Count", "Height / cm");
    auto* classes = gallery::Values(lying, {150, 160, 170, 180, 190, 200});
    AddBars(lying, classes, {3, 14, 27, 19, 6}, 0, true)->SetBarsGapPercent(10);

    // Blocks: two series side by side, drawn with depth.
    TVx2DGraph* blocks = SmallGraph("3D bars", "Year", "Output / t");
    auto* years = gallery::Values(blocks, {2019.5, 2020.5, 2021.5, 2022.5});
    for (int k = 0; k < 2; ++k) {
        TVxBarSeries* s = AddBars(blocks, years, k ? std::initializer_list<double>{11.5, 8.5, 12.5} : std::initializer_list<double>{10, 12, 10.5}, k + 1);
        s->SetShow3DBars(true);
        s->SetShiftOverlays(true);
        s->SetBarsGapPercent(30);
        s->SetDepthPercent(60);
    }
    return gallery::Grid(grouped, stacked, lying, blocks);
}

const GalleryRegistrar registrar{{
    "23-bars",
    "Bar series: three series sharing each class side by side (the first created on the left), "
    "the same values stacked, a lying histogram with its classes on the vertical axis, and two "
    "shifted series drawn as blocks with depth (lighter top, darker side).",
    CreateBars,
    {},
}};

} // namespace
