#include "SeriesTestSupport.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/series/VxBarSeries.h"

#include <QPointer>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace vx;
using namespace vx::test;

namespace {

TVxBarSeries* MakeBars(SeriesForm& F, TVxCustomRealVector* Edges, TVxCustomRealVector* Values, TColor Fill,
                       bool Horizontal = false)
{
    auto* s = new TVxBarSeries(F.Form.get());
    s->SetBarHorizontal(Horizontal);
    s->SetXData(Horizontal ? Values : Edges);
    s->SetYData(Horizontal ? Edges : Values);
    s->LineStyle().SetVisible(false);
    s->AreaStyle().SetVisible(true);
    s->AreaStyle().SetColor(Fill);
    return s;
}

// The bars of the graph's series drawn alone on a white image of the drawing world.
QImage DrawBars(SeriesForm& F)
{
    F.Render();
    QImage img(F.Graph->DrawingWorld()->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    TCanvas canvas(&img);
    for (TVxSeries* s : F.Graph->GetSeriesList())
        s->DrawLine(canvas);
    return img;
}

// First and one-past-last x of Color along row Y within [From, To), or (-1, -1).
std::pair<int, int> Span(const QImage& Img, int Y, TColor Color, int From = 0, int To = INT_MAX)
{
    int first = -1, last = -1;
    for (int x = std::max(From, 0); x < std::min(To, Img.width()); ++x)
        if (PixelAt(Img, QPoint(x, Y)) == Color) {
            if (first < 0)
                first = x;
            last = x;
        }
    return {first, first < 0 ? -1 : last + 1};
}

int RoundHalfEven(double V)
{
    return int(std::nearbyint(V));
}

} // namespace

TEST(VxBarSeries, BarCountIsEdgesMinusOneCappedAtTheValues)
{
    struct Row {
        const char* Name;
        std::initializer_list<double> Heights;
        int Bars;
    };
    const Row rows[] = {{"4 heights", {1, 2, 3, 4}, 4}, {"3 heights", {1, 2, 3}, 3}, {"6 heights", {1, 2, 3, 4, 5, 6}, 4}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* s = MakeBars(f, f.Vector({0, 1, 2, 3, 4}), f.Vector(r.Heights), clGreen);
        f.Render();
        EXPECT_EQ(s->BarCount(), r.Bars);
        EXPECT_EQ(s->PointsCount(), r.Bars + 1);
        EXPECT_EQ(s->XIdxNeeded(), r.Bars + 1);
        EXPECT_EQ(s->YIdxNeeded(), r.Bars);
        EXPECT_EQ(s->YRange()->Start(), 0) << "bars stand on zero";
    }
}

TEST(VxBarSeries, GapLeavesTheGivenShareOfEachClassEmpty)
{
    SeriesForm f(600, 300);
    auto* s = MakeBars(f, f.Vector({0, 1, 2}), f.Vector({5, 5}), clGreen);
    s->SetBarsGapPercent(50);
    const QImage img = DrawBars(f);
    const int c0 = s->Points().Value(0).x(), c1 = s->Points().Value(1).x();
    const int gap = RoundHalfEven((c1 - c0) * 50 / 200.0);
    const int row = (s->Points().Value(0).y() + f.Graph->YAxis()->RealToIntPosition(0)) / 2;
    const auto span = Span(img, row, clGreen);
    EXPECT_EQ(span.first, c0 + gap);
    const int b = (c1 - c0) - 2 * gap;
    EXPECT_NEAR(b, (c1 - c0) / 2, 1);
    // The bar ends where its width says.
    EXPECT_EQ(PixelAt(img, QPoint(c0 + gap + b - 1, row)), clGreen);
    EXPECT_NE(PixelAt(img, QPoint(c0 + gap + b, row)), clGreen);
}

TEST(VxBarSeries, ShiftedSeriesShareEachClassInCreationOrder)
{
    SeriesForm f(600, 300);
    auto* edges = f.Vector({0, 1, 2});
    auto* a = MakeBars(f, edges, f.Vector({4, 4}), clGreen);
    auto* b = MakeBars(f, edges, f.Vector({4, 4}), clRed);
    b->SetShiftOverlays(true);
    a->SetShiftOverlays(true);
    EXPECT_FALSE(a->StackOverlays());
    const QImage img = DrawBars(f);
    const int c0 = a->Points().Value(0).x(), c1 = a->Points().Value(1).x();
    const int row = (a->Points().Value(0).y() + f.Graph->YAxis()->RealToIntPosition(0)) / 2;
    const auto green = Span(img, row, clGreen, c0, c1);
    const auto red = Span(img, row, clRed, c0, c1);
    EXPECT_EQ(green.first, c0);
    EXPECT_EQ(green.second, c0 + RoundHalfEven((c1 - c0) / 2.0));
    EXPECT_EQ(red.first, green.second) << "the later series on the right";
    EXPECT_LT(red.first, c1);
}

TEST(VxBarSeries, StackedSeriesStandsOnTheEarlierOne)
{
    SeriesForm f(400, 400);
    auto* edges = f.Vector({0, 1, 2});
    auto* low = MakeBars(f, edges, f.Vector({2, 3}), clGreen);
    auto* high = MakeBars(f, edges, f.Vector({1, 3.5}), clRed);
    low->SetStackOverlays(true);
    high->SetShiftOverlays(true);
    high->SetStackOverlays(true); // switches shifting off again
    f.Graph->YAxis()->SetStopEnd(AxFixed);
    f.Graph->YAxis()->SetStop(10);
    EXPECT_FALSE(high->ShiftOverlays());
    const QImage img = DrawBars(f);
    EXPECT_EQ(high->StackList().size(), 1);
    EXPECT_EQ(high->GetY(1), 6.5);
    EXPECT_EQ(high->YRange()->Stop(), 6.5);
    EXPECT_TRUE(low->StackList().isEmpty());
    const int x = (high->Points().Value(1).x() + high->Points().Value(2).x()) / 2;
    const int lowTop = f.Graph->YAxis()->RealToIntPosition(3);
    const int highTop = f.Graph->YAxis()->RealToIntPosition(6.5);
    ASSERT_GT(highTop, 2);
    EXPECT_EQ(PixelAt(img, QPoint(x, lowTop - 1)), clRed);
    EXPECT_EQ(PixelAt(img, QPoint(x, lowTop + 1)), clGreen);
    EXPECT_EQ(PixelAt(img, QPoint(x, highTop + 1)), clRed);
    EXPECT_NE(PixelAt(img, QPoint(x, highTop - 2)), clRed);
    // A change below lifts the series on top at the next drawing.
    low->YData()->SetValue(1, 5);
    f.Render();
    EXPECT_EQ(high->YRange()->Stop(), 8.5);
    // The stacked series' base survives the deletion of the series below.
    delete low;
    f.Render();
    EXPECT_EQ(high->GetY(1), 3.5);
}

TEST(VxBarSeries, LyingBarsTakeTheirClassesFromY)
{
    SeriesForm f(400, 400);
    auto* s = MakeBars(f, f.Vector({10, 20, 30}), f.Vector({3, -2}), clGreen, true);
    const QImage img = DrawBars(f);
    EXPECT_EQ(s->BarCount(), 2);
    EXPECT_EQ(s->XRange()->Start(), -2);
    EXPECT_EQ(s->XRange()->Stop(), 3);
    EXPECT_EQ(s->YRange()->Start(), 10);
    EXPECT_EQ(s->YRange()->Stop(), 30);
    const int zero = f.Graph->XAxis()->RealToIntPosition(0);
    const int row0 = f.Graph->YAxis()->RealToIntPosition(15);
    const int row1 = f.Graph->YAxis()->RealToIntPosition(25);
    EXPECT_EQ(PixelAt(img, QPoint(zero + 2, row0)), clGreen) << "first bar to the right";
    EXPECT_NE(PixelAt(img, QPoint(zero - 2, row0)), clGreen);
    EXPECT_EQ(PixelAt(img, QPoint(zero - 2, row1)), clGreen) << "negative length to the left";
    // FindPoint hits the bar's end.
    const QPoint end = QPoint(f.Graph->XAxis()->RealToIntPosition(3), row0) + f.World();
    EXPECT_EQ(s->FindPoint(end.x(), end.y(), 1), 0);
    EXPECT_EQ(s->FindPoint(end.x() - 10, end.y(), 1), -1);
}

TEST(VxBarSeries, NonFiniteHeightSkipsOnlyThatBar)
{
    SeriesForm f(400, 300);
    auto* s = MakeBars(f, f.Vector({0, 1, 2, 3}), f.Vector({2, std::numeric_limits<double>::quiet_NaN(), 3}), clGreen);
    const QImage img = DrawBars(f);
    EXPECT_EQ(s->YRange()->Stop(), 3);
    const int row = f.Graph->YAxis()->RealToIntPosition(1);
    auto mid = [&](int i) { return (s->Points().Value(i).x() + s->Points().Value(i + 1).x()) / 2; };
    EXPECT_EQ(PixelAt(img, QPoint(mid(0), row)), clGreen);
    EXPECT_NE(PixelAt(img, QPoint(mid(1), row)), clGreen);
    EXPECT_EQ(PixelAt(img, QPoint(mid(2), row)), clGreen);
}

TEST(VxBarSeries, BlocksWidenTheClassRangeAndUseShades)
{
    SeriesForm f(400, 300);
    auto* s = MakeBars(f, f.Vector({0, 1, 2}), f.Vector({1, 2}), RGB(100, 150, 250));
    s->LineStyle().SetVisible(true);
    EXPECT_EQ(s->LineStyle().Color(), clBlue);
    f.Render();
    EXPECT_EQ(s->XRange()->Stop(), 2);
    s->SetShow3DBars(true);
    const QImage img = DrawBars(f);
    EXPECT_NEAR(s->XRange()->Stop(), 2 + 50.0 / 240, 1e-12);
    // The top face carries the lighter shade (byte div 10 * 13, kept in 8 bits).
    const TColor light = RGB(10 * 13, 15 * 13, (25 * 13) & 0xFF);
    EXPECT_GT(CountColor(img, light), 0);
    EXPECT_GT(CountColor(img, RGB(10 * 6, 15 * 6, 25 * 6)), 0);
    // The depth beyond a class reaching the largest real keeps the range finite.
    s->XData()->SetValue(2, 1.7e308);
    f.Render();
    EXPECT_EQ(s->XRange()->Stop(), 1.7e308);
}

TEST(VxBarSeries, SettingsRoundTrip)
{
    SeriesForm f;
    auto* s = new TVxBarSeries(f.Form.get());
    s->SetShow3DBars(true);
    s->SetBarHorizontal(true);
    s->SetStackOverlays(true);
    s->SetDepthPercent(70);
    s->SetBarsGapPercent(12.5);
    TVxIniList ini;
    s->WriteToIni(ini, "Bars");
    auto* t = new TVxBarSeries(f.Form.get());
    t->ReadFromIni(ini, "Bars");
    EXPECT_TRUE(t->Show3DBars());
    EXPECT_TRUE(t->BarHorizontal());
    EXPECT_TRUE(t->StackOverlays());
    EXPECT_FALSE(t->ShiftOverlays());
    EXPECT_EQ(t->DepthPercent(), 70);
    EXPECT_EQ(t->BarsGapPercent(), 12.5);
}
