#include "SeriesTestSupport.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/series/VxArrowSeries.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

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
    SeriesForm f;
    auto* s = MakeArrows(f, {0, 10}, {0, 10}, {-3, 5}, {2, -20});
    f.Render();
    EXPECT_EQ(s->XRange()->Start(), -3);
    EXPECT_EQ(s->XRange()->Stop(), 15);
    EXPECT_EQ(s->YRange()->Start(), -10);
    EXPECT_EQ(s->YRange()->Stop(), 10);
    s->LineStyle().SetVisible(false);
    s->GetNewXStartStop();
    s->GetNewYStartStop();
    EXPECT_EQ(s->XRange()->Start(), 0);
    EXPECT_EQ(s->XRange()->Stop(), 10);
    EXPECT_EQ(CountColor(f.Render(), clRed), 0) << "hidden arrows draw nothing";
}

TEST(VxArrowSeries, ArrowFromTheLeftmostPointMayReachPastTheRightEnd)
{
    SeriesForm f;
    auto* s = MakeArrows(f, {0, 1, 2}, {0, 5, 10}, {0, 0, 0}, {0, 0, 0});
    f.Render();
    s->dXData()->SetValue(0, 50);
    EXPECT_EQ(s->XRange()->Start(), 0);
    EXPECT_EQ(s->XRange()->Stop(), 50);
}

TEST(VxArrowSeries, TipsAreOffsetLinearlyInDataUnits)
{
    SeriesForm f;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // The x components stop after two points; the third y component is not finite.
    auto* s = MakeArrows(f, {1, 2, 3, 4}, {1, 2, 3, 4}, {1, -1}, {-1, 0.5, nan, 1});
    f.Render();
    const double sx = f.Graph->XAxis()->Scale(), sy = f.Graph->YAxis()->Scale();
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        const QPoint p = s->Points().Value(i);
        const double dx = i < 2 ? (i == 0 ? 1 : -1) : 0;
        const double dy = i == 0 ? -1 : i == 1 ? 0.5 : i == 2 ? 0 : 1;
        EXPECT_EQ(s->TipX().Value(i), p.x() + int(std::nearbyint(dx / sx)));
        EXPECT_EQ(s->TipY().Value(i), p.y() - int(std::nearbyint(dy / sy)));
    }
    EXPECT_GT(s->TipY().Value(0), s->Points().Value(0).y()) << "negative dy points down on screen";
    // A live change of a component moves the tip and widens the range at once.
    qobject_cast<TVxLiveVector*>(s->dXData())->SetValue(1, 10);
    EXPECT_EQ(s->XRange()->Stop(), 12);
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
    EXPECT_EQ(t->TipLength(), 14);
    EXPECT_EQ(t->TipWidth(), 5);
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
