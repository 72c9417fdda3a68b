#include "SeriesTestSupport.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/series/VxArrowSeries.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

using namespace vx;
using namespace vx::test;

namespace {

TVxArrowSeries* MakeArrows(SeriesForm& F, std::initializer_list<double> X, std::initializer_list<double> Y,
                           std::initializer_list<double> DX, std::initializer_list<double> DY)
{
    auto* s = new TVxArrowSeries(F.Form.get());
    s->SetXData(F.Vector(X));
    s->SetYData(F.Vector(Y));
    s->SetDX(F.Vector(DX));
    s->SetDY(F.Vector(DY));
    s->LineStyle().SetColor(clRed);
    return s;
}

} // namespace

TEST(VxArrowSeries, RangesIncludeBothEndsWhileVisible)
{
    // Hiding the arrows leaves the starts in the ranges; showing them brings everything back.
    for (bool fixedAxes : {false, true}) {
        SCOPED_TRACE(fixedAxes ? "fixed axes" : "axes follow the data");
        SeriesForm f;
        if (fixedAxes)
            for (TVxAxis* axis : {f.Graph->XAxis(), f.Graph->YAxis()}) {
                axis->SetStartEnd(AxFixed);
                axis->SetStopEnd(AxFixed);
                axis->SetStart(-30);
                axis->SetStop(30);
            }
        auto* s = MakeArrows(f, {0, 10}, {0, 10}, {-3, 5}, {2, -20});
        const int shown = CountColor(f.Render(), clRed);
        auto expectRanges = [s](double X0, double X1, double Y0, double Y1) {
            EXPECT_EQ(s->XRange()->Start(), X0);
            EXPECT_EQ(s->XRange()->Stop(), X1);
            EXPECT_EQ(s->YRange()->Start(), Y0);
            EXPECT_EQ(s->YRange()->Stop(), Y1);
        };
        expectRanges(-3, 15, -10, 10);
        s->LineStyle().SetVisible(false);
        EXPECT_EQ(CountColor(f.Render(), clRed), 0) << "hidden arrows draw nothing";
        expectRanges(0, 10, 0, 10);
        s->LineStyle().SetVisible(true);
        EXPECT_EQ(CountColor(f.Render(), clRed), shown);
        expectRanges(-3, 15, -10, 10);
    }
}

TEST(VxArrowSeries, BadValuesLeaveTheRangesFinite)
{
    struct Row {
        const char* Name;
        std::initializer_list<double> X, DX;
        double Start, Stop;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {{"start not finite: no arrow", {0, nan, 10}, {1, 100, 1}, 0, 11},
                        {"component not finite counts as 0", {0, 10}, {inf, nan}, 0, 10},
                        {"overflowing end: the largest real", {1e308, 0}, {1.5e308, -inf}, 0, 1.7e308}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* s = MakeArrows(f, r.X, {0, 5, 10}, r.DX, {0, 0, 0});
        f.Render();
        EXPECT_EQ(s->XRange()->Start(), r.Start);
        EXPECT_EQ(s->XRange()->Stop(), r.Stop);
        EXPECT_EQ(s->YRange()->Stop(), r.X.size() == 3 ? 10 : 5);
    }
}

TEST(VxArrowSeries, TipsLieOnTheEndsAlsoOnTwistedAxes)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<bool, bool> twists[] = {{false, false}, {true, false}, {false, true}, {true, true}};
    for (auto [twistX, twistY] : twists) {
        SCOPED_TRACE(std::string(twistX ? "x twisted " : "") + (twistY ? "y twisted" : ""));
        SeriesForm f;
        f.Graph->XAxis()->SetTwisted(twistX);
        f.Graph->YAxis()->SetTwisted(twistY);
        // The x components stop after two points; the third y component is not finite.
        auto* s = MakeArrows(f, {1, 2, 3, 4}, {1, 2, 3, 4}, {1, -1}, {-1, 0.5, nan, 1});
        f.Render();
        const double dx[] = {1, -1, 0, 0}, dy[] = {-1, 0.5, 0, 1};
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(i);
            EXPECT_NEAR(s->TipX().Value(i), f.Graph->XAxis()->RealToIntPosition(1 + i + dx[i]), 1);
            EXPECT_NEAR(s->TipY().Value(i), f.Graph->YAxis()->RealToIntPosition(1 + i + dy[i]), 1);
        }
        EXPECT_EQ(s->TipY().Value(0) > s->Points().Value(0).y(), !twistY) << "negative dy points down on screen";
        // A live change of a component widens the range at once, also when its point
        // holds the other extreme.
        qobject_cast<TVxLiveVector*>(s->dXData())->SetValue(0, 10);
        EXPECT_EQ(s->XRange()->Start(), 1);
        EXPECT_EQ(s->XRange()->Stop(), 11);
    }
}

TEST(VxArrowSeries, DrawsShaftAndHead)
{
    SeriesForm f;
    auto* s = MakeArrows(f, {0, 10}, {0, 10}, {5, 0}, {0, 5});
    f.Render();
    QImage img(f.Graph->DrawingWorld()->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    {
        TCanvas canvas(&img);
        s->DrawLine(canvas);
    }
    const QPoint p = s->Points().Value(0);
    const QPoint mid((p.x() + s->TipX().Value(0)) / 2, p.y());
    EXPECT_EQ(PixelAt(img, mid), clRed);
    EXPECT_GT(CountColor(img, clRed), std::abs(s->TipX().Value(0) - p.x()) + 10) << "with heads";
}

TEST(VxArrowSeries, SettingsRoundTrip)
{
    SeriesForm f;
    auto* s = new TVxArrowSeries(f.Form.get());
    EXPECT_EQ(s->TipLength(), 10);
    EXPECT_EQ(s->TipWidth(), 3);
    s->SetTipLength(14);
    s->SetTipWidth(5);
    TVxIniList ini;
    s->WriteToIni(ini, "A");
    auto* t = new TVxArrowSeries(f.Form.get());
    t->ReadFromIni(ini, "A");
    EXPECT_EQ(std::make_pair(t->TipLength(), t->TipWidth()), std::make_pair(14, 5));
    for (auto [key, value] : {std::pair{"TipLength", 14}, {"TipWidth", 5}})
        EXPECT_EQ(ini.ReadInteger("A", key, 0), value) << key;
}

TEST(VxArrowSeries, ComponentVectorMayGoFirst)
{
    SeriesForm f;
    auto* s = MakeArrows(f, {0, 10}, {0, 10}, {5, 0}, {0, 5});
    f.Render();
    delete s->dXData();
    EXPECT_EQ(s->dXData(), nullptr);
    f.Render();
    EXPECT_EQ(s->XRange()->Stop(), 10);
    EXPECT_EQ(s->TipX().Value(0), s->Points().Value(0).x());
}
