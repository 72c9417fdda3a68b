#include "SeriesTestSupport.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/series/VxBarSeries.h"

#include <array>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

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

TEST(VxBarSeries, BarSpansInPixels)
{
    // Share k of n of the second class: gap on each side, the earlier series on the left.
    struct Row {
        const char* Name;
        double Gap;
        int Series;
        double DrawnGap;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {{"whole class", 0, 1, 0},           {"gap 50: a quarter each side", 50, 1, 50},
                        {"two shifted", 0, 2, 0},           {"three shifted with gap 20", 20, 3, 20},
                        {"negative gap drawn as 0", -50, 1, 0}, {"gap not finite drawn as 0", nan, 1, 0},
                        {"gap over 100 leaves nothing", 150, 1, 100}};
    const TColor colors[] = {clGreen, clRed, clBlue};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f(600, 300);
        auto* edges = f.Vector({0, 1, 2.5});
        TVxBarSeries* first = nullptr;
        for (int k = 0; k < r.Series; ++k) {
            TVxBarSeries* s = MakeBars(f, edges, f.Vector({0, 4}), colors[k]);
            s->SetBarsGapPercent(r.Gap);
            s->SetShiftOverlays(r.Series > 1);
            first = first ? first : s;
        }
        const QImage img = DrawBars(f);
        const int c0 = first->Points().Value(1).x(), c1 = first->Points().Value(2).x();
        const int row = (first->Points().Value(1).y() + first->Points().Value(0).y()) / 2;
        const int gap = RoundHalfEven((c1 - c0) * r.DrawnGap / 200.0);
        const double b = (c1 - c0) - 2 * gap;
        for (int k = 0; k < r.Series; ++k) {
            SCOPED_TRACE(k);
            const auto span = Span(img, row, colors[k], c0 - 5, c1 + 5);
            if (b <= 0) {
                EXPECT_EQ(span.first, -1);
                continue;
            }
            EXPECT_EQ(span.first, c0 + gap + RoundHalfEven(b / r.Series * k));
            EXPECT_EQ(span.second, c0 + gap + RoundHalfEven(b / r.Series * (k + 1)));
        }
    }
}

TEST(VxBarSeries, FillAndOutlineFollowTheStyles)
{
    struct Row {
        const char* Name;
        bool Line, Area, XOred;
        bool Fill, Outline;
    };
    const Row rows[] = {{"defaults: navy bars outlined in blue", true, false, false, true, true},
                        {"xored on the data colour", true, false, true, true, true},
                        {"line hidden: fill only", false, true, false, true, false},
                        {"both hidden: nothing", false, false, false, false, false}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* s = new TVxBarSeries(f.Form.get());
        s->SetXData(f.Vector({0, 1, 2}));
        s->SetYData(f.Vector({3, 2}));
        s->LineStyle().SetVisible(r.Line);
        s->AreaStyle().SetVisible(r.Area);
        s->AreaStyle().SetDrawXOred(r.XOred);
        const QImage img = DrawBars(f);
        EXPECT_EQ(CountColor(img, clNavy) > 100, r.Fill);
        EXPECT_EQ(CountColor(img, clBlue) > 10, r.Outline);
    }
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
    // The series on top comes down when the series below is deleted.
    delete low;
    f.Render();
    EXPECT_EQ(high->GetY(1), 3.5);
    EXPECT_EQ(high->YRange()->Stop(), 3.5);
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
}

TEST(VxBarSeries, FindPointHitsTheTopEdge)
{
    // Bars over the classes 0..1 and 1..2, both of value 3; Offset moves the probe along
    // the value axis in pixels.
    struct Row {
        const char* Name;
        double Class, Value;
        int Offset, Tolerance, Found;
    };
    const Row rows[] = {{"top of the first bar", 0.5, 3, 0, 0, 0},  {"shared edge: the later bar", 1, 3, 0, 0, 1},
                        {"within the tolerance", 0.5, 3, 3, 3, 0},  {"beyond the tolerance", 0.5, 3, 4, 3, -1},
                        {"inside, below the top", 0.5, 1.5, 0, 5, -1}, {"beside the classes", 2.5, 3, 0, 5, -1}};
    for (bool lying : {false, true}) {
        SeriesForm f;
        auto* s = MakeBars(f, f.Vector({0, 1, 2}), f.Vector({3, 3}), clGreen, lying);
        f.Render();
        for (const Row& r : rows) {
            SCOPED_TRACE(std::string(r.Name) + (lying ? ", lying" : ""));
            const int c = (lying ? f.Graph->YAxis() : f.Graph->XAxis())->RealToIntPosition(r.Class);
            const int v = (lying ? f.Graph->XAxis() : f.Graph->YAxis())->RealToIntPosition(r.Value) + r.Offset;
            const QPoint p = (lying ? QPoint(v, c) : QPoint(c, v)) + f.World();
            EXPECT_EQ(s->FindPoint(p.x(), p.y(), r.Tolerance), r.Found);
        }
    }
}

TEST(VxBarSeries, ValueRangeCoversTheDrawnBarsAndTheirBases)
{
    // Below: values of a stacked series under the tested one (none: not stacked). Drawn:
    // whether each bar shows at value Probe ("": not probed).
    struct Row {
        const char* Name;
        std::initializer_list<double> Edges, Below, Values;
        double Start, Stop, Probe;
        const char* Drawn;
        bool Log = false;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {"NaN height skips its bar", {0, 1, 2, 3}, {}, {2, nan, 3}, 0, 3, 0.5, "101"},
        {"infinite height skips its bar", {0, 1, 2, 3}, {}, {-inf, 2, 1}, 0, 2, 0.5, "011"},
        {"NaN edge skips both bars beside it", {0, nan, 2, 3}, {}, {9, 8, 1}, 0, 1, 0.5, "001"},
        {"negative bar on top of positive ones", {0, 1, 2}, {5, 5}, {-2, -1}, 3, 5, 4.5, "11"},
        {"on a NaN below: that bar skipped", {0, 1, 2}, {nan, 1}, {2, 2}, 1, 3, 2, "01"},
        {"overflowing stack: the largest real", {0, 1}, {1.7e308}, {1.7e308}, 1.7e308, 1.7e308, 0, ""},
        {"log axis: on its start, ends above 0 only", {0, 1, 2, 3}, {}, {3, 0, 400}, 3, 400, 2.5, "101", true},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f(400, 300);
        f.Graph->YAxis()->SetScaling(r.Log ? AxLog : AxNormal);
        auto* edges = f.Vector(r.Edges);
        if (r.Below.size() > 0)
            MakeBars(f, edges, f.Vector(r.Below), clGreen)->SetStackOverlays(true);
        auto* s = MakeBars(f, edges, f.Vector(r.Values), clRed);
        s->SetStackOverlays(r.Below.size() > 0);
        const QImage img = DrawBars(f);
        EXPECT_EQ(s->YRange()->Start(), r.Start);
        EXPECT_EQ(s->YRange()->Stop(), r.Stop);
        const int row = f.Graph->YAxis()->RealToIntPosition(r.Probe);
        const double* e = edges->Data();
        for (int i = 0; r.Drawn[i]; ++i) {
            SCOPED_TRACE(i);
            const double mid = !std::isfinite(e[i])       ? e[i + 1] - 0.25
                               : !std::isfinite(e[i + 1]) ? e[i] + 0.25
                                                          : (e[i] + e[i + 1]) / 2;
            EXPECT_EQ(PixelAt(img, QPoint(f.Graph->XAxis()->RealToIntPosition(mid), row)) == clRed, r.Drawn[i] == '1');
        }
    }
}

TEST(VxBarSeries, LiveEditsKeepTheRangesOfAFullScan)
{
    // Each step edits the class edges or the values in place; the ranges must then be
    // those a full rescan finds, upright and lying, alone and stacked on another series.
    struct Step {
        const char* Name;
        bool Edges;
        int Index; // -1: append
        double Value;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Step steps[] = {{"edge without a value", true, -1, 3},   {"value completing a bar", false, -1, 5},
                          {"value without an edge", false, -1, 7}, {"edge completing a bar", true, -1, 4},
                          {"tallest bar lowered", false, 3, 1},    {"lowest bar below 0", false, 0, -4},
                          {"first edge moved out", true, 0, -1},   {"first edge moved back in", true, 0, 0.5},
                          {"edge not a number", true, 2, nan},     {"edge restored", true, 2, 2},
                          {"lowest value not a number", false, 0, nan}};
    for (int variant = 0; variant < 4; ++variant) {
        const bool lying = variant & 1, stacked = variant & 2;
        SCOPED_TRACE(std::string(lying ? "lying" : "upright") + (stacked ? ", stacked" : ""));
        SeriesForm f;
        auto* edges = f.Vector({0, 1, 2});
        auto* values = f.Vector({1, 2});
        if (stacked)
            MakeBars(f, edges, f.Vector({1, -3, 2, 2}), clRed, lying)->SetStackOverlays(true);
        TVxBarSeries* s = MakeBars(f, edges, values, clGreen, lying);
        s->SetStackOverlays(stacked);
        f.Render();
        for (const Step& step : steps) {
            SCOPED_TRACE(step.Name);
            TVxLiveVector* v = step.Edges ? edges : values;
            step.Index < 0 ? void(v->Add(step.Value)) : v->SetValue(step.Index, step.Value);
            auto ranges = [s] {
                return std::array{s->XRange()->Start(), s->XRange()->Stop(), s->YRange()->Start(), s->YRange()->Stop()};
            };
            const auto folded = ranges();
            s->GetNewXStartStop();
            s->GetNewYStartStop();
            EXPECT_EQ(folded, ranges());
        }
    }
}

TEST(VxBarSeries, BlocksWidenTheClassRangeAndUseShades)
{
    SeriesForm f(400, 300);
    auto* s = MakeBars(f, f.Vector({0, 1, 2}), f.Vector({1, 2}), RGB(100, 150, 250));
    s->LineStyle().SetVisible(true);
    f.Render();
    EXPECT_EQ(s->XRange()->Stop(), 2);
    s->SetShow3DBars(true);
    const QImage img = DrawBars(f);
    EXPECT_NEAR(s->XRange()->Stop(), 2 + 50.0 / 240, 1e-12);
    // The top face carries the lighter shade (byte div 10 * 13, kept in 8 bits).
    const TColor light = RGB(10 * 13, 15 * 13, (25 * 13) & 0xFF);
    EXPECT_GT(CountColor(img, light), 0);
    EXPECT_GT(CountColor(img, RGB(10 * 6, 15 * 6, 25 * 6)), 0);
    // A depth that is not finite draws flat bars.
    s->SetDepthPercent(std::numeric_limits<double>::infinity());
    EXPECT_EQ(CountColor(DrawBars(f), light), 0);
    EXPECT_EQ(s->XRange()->Stop(), 2);
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
    EXPECT_EQ(std::make_tuple(t->Show3DBars(), t->BarHorizontal(), t->StackOverlays(), t->ShiftOverlays()),
              std::make_tuple(true, true, true, false));
    EXPECT_EQ(std::make_pair(t->DepthPercent(), t->BarsGapPercent()), std::make_pair(70.0, 12.5));
    QStringList keys;
    ini.ReadSection("Bars", keys);
    for (const char* key : {"ShiftOverlays", "StackOverlays", "Show3DBars", "BarHorizontal", "DepthPercent",
                            "BarsGapPercent"})
        EXPECT_TRUE(keys.contains(key)) << key;
}
