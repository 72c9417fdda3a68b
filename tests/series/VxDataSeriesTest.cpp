#include "SeriesTestSupport.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/series/VxDataSeries.h"

#include <QPainter>
#include <QPointer>
#include <QRandomGenerator>
#include <array>
#include <climits>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

using namespace vx;
using namespace vx::test;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();

TVxDataSeries* MakeSeries(SeriesForm& F, TVxCustomRealVector* X, TVxCustomRealVector* Y)
{
    auto* s = new TVxDataSeries(F.Form.get());
    s->SetXData(X);
    s->SetYData(Y);
    return s;
}

} // namespace

TEST(VxDataSeries, BindsToTheLastGraphOfItsOwner)
{
    SeriesForm f;
    auto* second = new TVx2DGraph(f.Form.get());
    auto* s = new TVxLineSeries(f.Form.get());
    EXPECT_EQ(s->XAxis(), second->XAxis());
    EXPECT_EQ(s->YAxis(), second->YAxis());
    EXPECT_EQ(s->DrawingWorld(), second->DrawingWorld());
    EXPECT_TRUE(second->GetSeriesList().Contains(s));
    EXPECT_FALSE(f.Graph->GetSeriesList().Contains(s));
    // A series owned by a graph binds to that graph.
    auto* own = new TVxLineSeries(f.Graph);
    EXPECT_EQ(own->XAxis(), f.Graph->XAxis());
}

TEST(VxDataSeries, PointCountIsTheShorterVector)
{
    SeriesForm f;
    auto* s = MakeSeries(f, f.Vector({1, 2, 3, 4, 5}), f.Vector({1, 2, 3}));
    f.Render();
    EXPECT_EQ(s->PointsCount(), 3);
    EXPECT_EQ(s->XRange()->Start(), 1);
    EXPECT_EQ(s->XRange()->Stop(), 3);
    // Without data the series leaves the axes to the others.
    MakeSeries(f, f.Vector({1, 2}), f.Vector({0, 10}));
    auto* y = f.Vector({0, 1000});
    auto* big = MakeSeries(f, f.Vector({1, 2}), y);
    f.Render();
    EXPECT_GE(f.Graph->YAxis()->Stop(), 1000);
    s->SetYData(nullptr);
    delete big->XData();
    f.Render();
    EXPECT_EQ(s->PointsCount(), 0);
    EXPECT_LT(f.Graph->YAxis()->Stop(), 1000);
    EXPECT_GT(big->YRange()->Start(), big->YRange()->Stop());
    big->SetXData(f.Vector({1, 2}));
    f.Render();
    EXPECT_GE(f.Graph->YAxis()->Stop(), 1000);
}

TEST(VxDataSeries, LiveEditsKeepRangesAndPixelsTrue)
{
    // One series through a sequence of edits, with error bars (plus y, minus x) or without.
    // Whenever the series says its ranges are current they are exactly those of the drawn
    // (finite) points; after each render every cached pixel and bar length is the axes'
    // mapping of its values and the axes cover the ranges.
    for (bool errors : {false, true}) {
        SCOPED_TRACE(errors ? "error bars" : "plain");
        SeriesForm f;
        auto* x = f.Vector({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        auto* y = f.Vector({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        TVxLiveVector& X = *x;
        TVxLiveVector& Y = *y;
        TVxLiveVector& E = *f.Vector({1, 1, 1, 1, 1});
        TVxLiveVector& M = *f.Vector({2, 2, 2, 2, 2, 2, 2});
        TVxDataWithErrorSeries* es = errors ? new TVxDataWithErrorSeries(f.Form.get()) : nullptr;
        TVxDataSeries* s = errors ? es : new TVxDataSeries(f.Form.get());
        s->SetXData(x);
        s->SetYData(y);
        if (es) {
            es->SetdYPlus(&E);
            es->SetdXMinus(&M);
        }
        f.Render();
        struct Row {
            const char* Name;
            std::function<void()> Edit;
        };
        const Row rows[] = {
            {"a non-extreme value moves inward", [&] { X.SetValue(2, 2.5); }},
            {"the maximum moves inward", [&] { X.SetValue(9, 8.5); }},
            {"a value beyond the maximum", [&] { X.SetValue(0, 20); }},
            {"the minimum changes to a larger value", [&] { X.SetValue(1, 15); }},
            {"insert into both", [&] { X.Insert(5, 4.5); Y.Insert(5, 4.5); }},
            {"insert into y only", [&] { Y.Insert(2, 50); }},
            {"append to both", [&] { X.Add(-20); Y.Add(-30); }},
            {"y drops its value beyond the points, then takes an insertion",
             [&] { Y.Delete(Y.Count()); Y.Insert(1, 40); }},
            {"insert into the plus errors", [&] { E.Insert(1, 30); }},
            {"the minus errors drop their last value, then take an insertion",
             [&] { M.Delete(M.Count() - 1); M.Insert(0, 25); }},
            {"the plus errors drop their last value", [&] { E.SetValue(E.Count() - 1, 60); E.Delete(E.Count() - 1); }},
            {"the plus errors written one beyond their end (the gap shows the dropped 60)",
             [&] { E.SetValue(E.Count() + 1, 2); }},
            {"the plus errors grow past the points", [&] { while (E.Count() < X.Count() + 2) E.Add(3); }},
            {"y turns NaN, x beyond the range", [&] { Y.SetValue(3, NaN); X.SetValue(3, 99); }},
            {"y turns finite again", [&] { Y.SetValue(3, 1); }},
            {"x two short of y, large values left in its storage",
             [&] {
                 while (X.Count() < Y.Count() + 2)
                     X.Add(1000 + X.Count());
                 while (X.Count() > Y.Count() - 2)
                     X.Delete(X.Count() - 1);
             }},
            {"x grows past y's end over its storage", [&] { X.SetValue(Y.Count() + 1, 3); }},
            {"x one short of y", [&] { X.Delete(X.Count() - 1); X.Delete(X.Count() - 1); X.Delete(X.Count() - 1); }},
            {"x grows to y's end plus one", [&] { X.SetValue(Y.Count(), 7); }},
            {"x cleared", [&] { X.Clear(); }},
        };
        // The error of point I from vector V, as the series counts it.
        auto err = [&](const TVxLiveVector& V, int I) {
            return es && I < V.Count() && std::isfinite(V.Value(I)) ? std::fabs(V.Value(I)) : 0.0;
        };
        auto expectRanges = [&] {
            double x0 = CVxMaxReal, x1 = CVxMinReal, y0 = CVxMaxReal, y1 = CVxMinReal;
            for (int i = 0; i < std::min(X.Count(), Y.Count()); ++i) {
                if (!std::isfinite(X.Value(i)) || !std::isfinite(Y.Value(i)))
                    continue;
                x0 = std::min(x0, X.Value(i) - err(M, i));
                x1 = std::max(x1, X.Value(i));
                y0 = std::min(y0, Y.Value(i));
                y1 = std::max(y1, Y.Value(i) + err(E, i));
            }
            using Ends = std::array<double, 4>;
            EXPECT_EQ((Ends{s->XRange()->Start(), s->XRange()->Stop(), s->YRange()->Start(), s->YRange()->Stop()}),
                      (Ends{x0, x1, y0, y1}));
        };
        for (const Row& r : rows) {
            SCOPED_TRACE(r.Name);
            r.Edit();
            if (!s->RangesDirty())
                expectRanges();
            f.Render();
            expectRanges();
            const TVxAxis* xa = f.Graph->XAxis();
            const TVxAxis* ya = f.Graph->YAxis();
            ASSERT_EQ(s->PointsCount(), std::min(X.Count(), Y.Count()));
            int wrong = 0;
            for (int i = 0; i < s->PointsCount(); ++i) {
                QPoint p;
                const bool valid = std::isfinite(X.Value(i)) && std::isfinite(Y.Value(i));
                if (s->PointAt(i, p) != valid)
                    ++wrong;
                else if (valid)
                    wrong += p != QPoint(xa->RealToIntPosition(X.Value(i)), ya->RealToIntPosition(Y.Value(i)));
                if (es && valid) {
                    const TVxIntegerVector& l = es->dYPlusLength();
                    wrong += (i < l.Count()) != (i < E.Count());
                    if (i < l.Count() && i < E.Count())
                        wrong += l.Value(i) != int(std::nearbyint(err(E, i) / ya->Scale()));
                }
            }
            EXPECT_EQ(wrong, 0);
            if (s->PointsCount() > 0)
                EXPECT_TRUE(xa->Start() <= s->XRange()->Start() && xa->Stop() >= s->XRange()->Stop()
                            && ya->Start() <= s->YRange()->Start() && ya->Stop() >= s->YRange()->Stop());
        }
    }
}

TEST(VxDataSeries, PlainVectorsAreRemappedWhenTheGraphIsModified)
{
    SeriesForm f;
    auto* x = f.Vector<TVxRealVector>({0, 10});
    auto* y = f.Vector<TVxRealVector>({0, 10});
    auto* s = MakeSeries(f, x, y);
    f.Render();
    const QPoint before = s->Points().Value(1);
    y->SetValue(1, 5); // a plain vector tells nobody
    f.Graph->Modified();
    f.Render();
    EXPECT_NE(s->Points().Value(1), before);
    EXPECT_EQ(s->Points().Value(1).y(), f.Graph->YAxis()->RealToIntPosition(5));
    // A value beyond the range: once told (as a child tells its parent), one render
    // rescales the axis and maps through it.
    y->SetValue(1, 50);
    s->ChildModified();
    f.Render();
    EXPECT_GE(f.Graph->YAxis()->Stop(), 50);
    EXPECT_EQ(s->Points().Value(1).y(), f.Graph->YAxis()->RealToIntPosition(50));
}

TEST(VxDataSeries, SeriesSharingALiveVectorStayCurrent)
{
    // Only the later series hears the shared vector (shared subscription slot); the earlier
    // one still follows when the graph recalculates, and leaving hands the slot back to
    // nobody but the later one.
    SeriesForm f;
    auto* x = f.Vector({0, 10});
    auto* a = MakeSeries(f, x, f.Vector({0, 10}));
    auto* b = MakeSeries(f, x, f.Vector({10, 0}));
    f.Render();
    x->SetValue(1, 5);
    f.Graph->Modified();
    f.Render();
    const int px = f.Graph->XAxis()->RealToIntPosition(5);
    EXPECT_EQ(a->Points().Value(1).x(), px);
    EXPECT_EQ(b->Points().Value(1).x(), px);
    delete a;
    x->SetValue(1, 20);
    EXPECT_EQ(b->XRange()->Stop(), 20);
}

TEST(VxDataSeries, NonFiniteValuesAreSkippedAndBreakTheLine)
{
    SeriesForm f;
    auto* x = f.Vector({0, 1, 2, 3, 4, 5, 6});
    auto* y = f.Vector({1, 1, NaN, 1, Inf, 1, 1});
    auto* s = MakeSeries(f, x, y);
    s->PointStyle().SetVisible(false);
    s->LineStyle().SetColor(clRed);
    x->SetValue(5, -Inf);
    const QImage img = f.Render();
    EXPECT_EQ(s->XRange()->Start(), 0);
    EXPECT_EQ(s->XRange()->Stop(), 6);
    EXPECT_EQ(s->YRange()->Start(), 1);
    EXPECT_EQ(s->YRange()->Stop(), 1);
    QPoint p;
    EXPECT_TRUE(s->PointAt(1, p));
    for (int i : {2, 4, 5})
        EXPECT_FALSE(s->PointAt(i, p)) << i;

    // The line from 0 to 1 is drawn, nothing between 1 and 3 (gap), nothing around 4 and 5.
    const QPoint w = f.World();
    auto redAt = [&](double xv) {
        const QPoint q(f.Graph->XAxis()->RealToIntPosition(xv), f.Graph->YAxis()->RealToIntPosition(1));
        return PixelAt(img, q + w) == clRed;
    };
    EXPECT_TRUE(redAt(0.5));
    EXPECT_FALSE(redAt(1.5));
    EXPECT_FALSE(redAt(2.5));
    EXPECT_FALSE(redAt(4.5));
    // A run of a single valid point (3) draws no line either.
    EXPECT_FALSE(redAt(3.3));

    // A y value turning finite or not brings the point's x into the x range or out of it.
    x->SetValue(2, 100);
    EXPECT_EQ(s->XRange()->Stop(), 6);
    y->SetValue(2, 1);
    EXPECT_EQ(s->XRange()->Stop(), 100);
    y->SetValue(2, NaN);
    EXPECT_EQ(s->XRange()->Stop(), 6);
}

TEST(VxDataSeries, AreaReachesDownToZeroOrTheLogarithmicStart)
{
    // Data all above 0: the fill reaches the bottom row even though y = 0 lies below the
    // plot (linear) or infinitely far below the axis start (logarithmic).
    for (TVxAxScaling scaling : {AxNormal, AxLog}) {
        SCOPED_TRACE(int(scaling));
        SeriesForm f;
        auto* s = MakeSeries(f, f.Vector({1, 10}), f.Vector({10, 100}));
        f.Graph->YAxis()->SetScaling(scaling);
        s->PointStyle().SetVisible(false);
        s->LineStyle().SetVisible(false);
        s->AreaStyle().SetVisible(true);
        s->AreaStyle().SetDrawXOred(false);
        s->AreaStyle().SetColor(clGreen);
        const QImage img = f.Render();
        ASSERT_GT(f.Graph->YAxis()->Start(), 0);
        const QRect world = f.Graph->DrawingWorld()->geometry();
        EXPECT_EQ(PixelAt(img, QPoint(world.center().x(), world.bottom() - 1)), clGreen);
        EXPECT_NE(PixelAt(img, QPoint(world.center().x(), world.top() + 1)), clGreen);
    }
}

TEST(VxDataSeries, XoredAreaDrawnTwiceRestoresTheBackground)
{
    SeriesForm f;
    auto* s = MakeSeries(f, f.Vector({0, 10}), f.Vector({5, 6}));
    s->PointStyle().SetVisible(false);
    s->LineStyle().SetVisible(false);
    s->AreaStyle().SetVisible(true);
    QImage img(f.Graph->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    f.Render();
    {
        TCanvas canvas(&img);
        s->DrawLine(canvas);
    }
    EXPECT_LT(CountColor(img, clWhite), img.width() * img.height());
    {
        TCanvas canvas(&img);
        s->DrawLine(canvas);
    }
    EXPECT_EQ(CountColor(img, clWhite), img.width() * img.height());
}

TEST(VxDataSeries, FindPointReturnsTheLastWithinTolerance)
{
    SeriesForm f;
    auto* s = MakeSeries(f, f.Vector({0, 50, 50.5, 100}), f.Vector({0, 50, 50.5, 100}));
    f.Render();
    const QPoint p = s->Points().Value(1) + f.World();
    EXPECT_EQ(s->FindPoint(p.x(), p.y(), 3), 2);
    EXPECT_EQ(s->FindPoint(p.x(), p.y(), 0), 1);
    EXPECT_EQ(s->FindPoint(-100, -100, 3), -1);
    // Far-out coordinates do not wrap around into the plot.
    EXPECT_EQ(s->FindPoint(INT_MIN, INT_MIN, INT_MAX), -1);
    EXPECT_EQ(s->FindPoint(INT_MAX, INT_MAX, INT_MAX), 3);
    // Before the next paint, points the vectors no longer hold are not found.
    auto* x = qobject_cast<TVxLiveVector*>(s->XData());
    x->Delete(3);
    EXPECT_EQ(s->FindPoint(INT_MAX, INT_MAX, INT_MAX), 2);
    x->Clear();
    EXPECT_EQ(s->FindPoint(p.x(), p.y(), 3), -1);
}

TEST(VxDataSeries, SinglePointIsMappedAndTheGraphSettles)
{
    SeriesForm f;
    auto* s = MakeSeries(f, f.Vector({3}), f.Vector({7}));
    s->PointStyle().SetColor(clBlue);
    const QImage img = f.Render();
    EXPECT_FALSE(f.Graph->NeedsCalculation());
    QPoint p;
    ASSERT_TRUE(s->PointAt(0, p));
    EXPECT_EQ(p.x(), f.Graph->XAxis()->RealToIntPosition(3));
    EXPECT_EQ(PixelAt(img, p + f.World() + QPoint(s->PointStyle().Size(), 0)), clBlue);
    // A degenerate range is rescanned on every calculation.
    s->XRange()->SetStartStop(100, 100);
    s->CalculatePoints();
    EXPECT_EQ(s->XRange()->Start(), 3);
}

TEST(VxDataSeries, CaptionsFollowTheUserFlag)
{
    SeriesForm f;
    auto* s = new TVxDataSeries(f.Form.get());
    s->SetAutoCaption("auto");
    s->SetUserCaption("mine");
    EXPECT_EQ(s->Caption(), "auto");
    s->SetDoUserCaption(true);
    EXPECT_EQ(s->Caption(), "mine");
    s->SetCaption("typed");
    EXPECT_EQ(s->UserCaption(), "typed");
    EXPECT_EQ(s->AutoCaption(), "auto");
    EXPECT_EQ(s->SettingsList().ReadString("Datapoints", "Caption", ""), "typed");
    s->SetDoUserCaption(false);
    EXPECT_EQ(s->Caption(), "auto");
}

TEST(VxDataSeries, SettingsRoundTripWithChildSections)
{
    SeriesForm f;
    f.Form->setObjectName("SeriesForm");
    auto* x = f.Vector({1, 2});
    x->setObjectName("XVec");
    auto* y = f.Vector({1, 2});
    y->setObjectName("YVec");
    auto* s = MakeSeries(f, x, y);
    s->SetUserCaption("Data");
    s->SetDoUserCaption(true);
    s->LineStyle().SetWidth(3);
    s->PointStyle().SetStyle(SyDiamond);
    s->PointStyle().SetSize(7);
    TVxLineSeries* children[3];
    for (auto*& c : children) {
        c = new TVxLineSeries(f.Form.get());
        s->AddChild(c);
    }
    children[0]->SetUserCaption("first");
    children[1]->SetUserCaption("second");
    TVxIniList ini;
    s->WriteToIni(ini, "S");
    EXPECT_EQ(ini.ReadInteger("S", "ChildCount", -1), 3);
    EXPECT_EQ(ini.ReadString("S.Child(2)", "UserCaption", ""), "second");
    EXPECT_EQ(ini.ReadInteger("S", "Point.Style", -1), int(SyDiamond));
    EXPECT_EQ(ini.ReadString("S", "XData", ""), ComponentPath(x));

    auto* t = new TVxDataSeries(f.Form.get());
    TVxLineSeries* others[3];
    for (auto*& c : others) {
        c = new TVxLineSeries(f.Form.get());
        t->AddChild(c);
    }
    ini.WriteInteger("S", "ChildCount", 2); // fewer stored than present: the third wraps
    t->ReadFromIni(ini, "S");
    EXPECT_EQ(t->Caption(), "Data");
    EXPECT_EQ(t->LineStyle().Width(), 3);
    EXPECT_EQ(t->PointStyle().Style(), SyDiamond);
    EXPECT_EQ(t->PointStyle().Size(), 7);
    EXPECT_EQ(t->XData(), x);
    EXPECT_EQ(t->YData(), y);
    EXPECT_EQ(others[0]->UserCaption(), "first");
    EXPECT_EQ(others[1]->UserCaption(), "second");
    EXPECT_EQ(others[2]->UserCaption(), "first");
}

TEST(VxDataSeries, HostileSettingsAreReadWithoutHarm)
{
    // One bad value each; the series of both classes read it, keep what it cannot name and
    // draw (2000 points: the size at which symbols are kept in a layer).
    struct Row {
        const char* Key;
        const char* Value;
    };
    const Row rows[] = {{"Point.Size", "2147483647"}, {"Point.With", "100000"}, {"Point.Style", "99"},
                        {"XData", "Nowhere.Nothing"},  {"YData", "SeriesForm.Axis"},  {"XAxis", "SeriesForm.XVec"},
                        {"dYPlus", "SeriesForm.Axis"},  {"ChildCount", "-4"}};
    for (const Row& r : rows) {
        for (bool errors : {false, true}) {
            SCOPED_TRACE(std::string(r.Key) + "=" + r.Value + (errors ? " (error bars)" : ""));
            SeriesForm f;
            f.Form->setObjectName("SeriesForm");
            f.Graph->YAxis()->setObjectName("Axis");
            auto* x = f.Vector({});
            x->setObjectName("XVec");
            auto* y = f.Vector({});
            for (int i = 0; i < 2000; ++i) {
                x->Add(i);
                y->Add(i % 13);
            }
            TVxDataSeries* s = errors ? new TVxDataWithErrorSeries(f.Form.get()) : new TVxDataSeries(f.Form.get());
            s->SetXData(x);
            s->SetYData(y);
            if (errors)
                static_cast<TVxDataWithErrorSeries*>(s)->SetdYPlus(y);
            s->AddChild(new TVxLineSeries(f.Form.get()));
            TVxIniList ini;
            s->WriteToIni(ini, "S");
            ini.WriteString("S", r.Key, r.Value);
            s->ReadFromIni(ini, "S");
            const QImage img = f.Render();
            if (s->PointStyle().Size() < 100) // else a hollow symbol's outline lies beyond the plot
                EXPECT_GT(CountColor(img, s->PointStyle().Color()), 0) << "symbols drawn";
            EXPECT_EQ(s->XData(), x);
            EXPECT_EQ(s->YData(), y);
            EXPECT_EQ(s->XAxis(), f.Graph->XAxis());
            EXPECT_EQ(s->PointStyle().Style(), SyCircle);
            EXPECT_EQ(s->Childs().Count(), 1);
            if (errors)
                EXPECT_EQ(static_cast<TVxDataWithErrorSeries*>(s)->dYPlus(), y);
        }
    }
}

TEST(VxDataSeries, ErrorBarsWidenTheRangeWhileSymbolsShow)
{
    SeriesForm f;
    auto* s = new TVxDataWithErrorSeries(f.Form.get());
    auto* y = f.Vector({10, 20, 30});
    s->SetXData(f.Vector({1, 2, 3}));
    s->SetYData(y);
    auto* dyp = f.Vector({1, -5});       // shorter than the data; sign ignored
    auto* dym = f.Vector({NaN, 2, 1});   // a non-finite error counts as 0
    s->SetdYPlus(dyp);
    s->SetdYMinus(dym);
    f.Render();
    EXPECT_EQ(s->YRange()->Start(), 10);
    EXPECT_EQ(s->YRange()->Stop(), 30);
    EXPECT_EQ(s->YPlus(1), 5);
    EXPECT_EQ(s->YPlus(2), 0);
    dym->SetValue(0, 4);
    EXPECT_EQ(s->YRange()->Start(), 6);
    dyp->SetValue(2, 3); // extends the error vector to the third point
    EXPECT_EQ(s->YRange()->Stop(), 33);
    dyp->SetValue(0, 45); // the point holding the minimum reaches past the maximum
    EXPECT_EQ(s->YRange()->Start(), 6);
    EXPECT_EQ(s->YRange()->Stop(), 55);
    dyp->SetValue(0, 1);
    // A value plus its error beyond the largest real keeps the range finite.
    dyp->SetValue(1, 1e308);
    y->SetValue(1, 1e308);
    EXPECT_EQ(s->YRange()->Stop(), CVxMaxReal);
    y->SetValue(1, 20);
    dyp->SetValue(1, -5);
    // Hiding the symbols takes the errors out of the range, showing them brings them back.
    s->PointStyle().SetVisible(false);
    f.Render();
    EXPECT_EQ(s->YRange()->Start(), 10);
    EXPECT_EQ(s->YRange()->Stop(), 30);
    s->PointStyle().SetVisible(true);
    f.Render();
    EXPECT_EQ(s->YRange()->Start(), 6);
    EXPECT_EQ(s->YRange()->Stop(), 33);
    EXPECT_GE(f.Graph->YAxis()->Stop(), 33);
    EXPECT_EQ(s->Points().Value(2).y(), f.Graph->YAxis()->RealToIntPosition(30));
}

TEST(VxDataSeries, OneVectorForBothErrorsKeepsNotifyingWhenOneIsReplaced)
{
    SeriesForm f;
    auto* s = new TVxDataWithErrorSeries(f.Form.get());
    s->SetXData(f.Vector({0, 1, 2}));
    s->SetYData(f.Vector({0, 5, 10}));
    auto* e = f.Vector({1, 1, 1});
    s->SetdYPlus(e);
    s->SetdYMinus(e);
    f.Render();
    s->SetdYMinus(f.Vector({1, 1, 1}));
    f.Render();
    e->SetValue(1, 100);
    EXPECT_EQ(s->YRange()->Stop(), 105);
}

TEST(VxDataSeries, ErrorBarsAreDrawnOnlyForPointsInsideAndForExistingErrors)
{
    SeriesForm f;
    auto* s = new TVxDataWithErrorSeries(f.Form.get());
    s->SetXData(f.Vector({0, 5, 10}));
    s->SetYData(f.Vector({0, 5, 10}));
    s->SetdXPlus(f.Vector({1}));
    s->SetErrorIndicatorsColor(clRed);
    s->LineStyle().SetVisible(false);
    QImage img = f.Render();
    const double scale = f.Graph->XAxis()->Scale();
    EXPECT_EQ(s->dXPlusLength().Count(), 1);
    EXPECT_EQ(s->dXPlusLength().Value(0), int(std::nearbyint(1 / scale)));
    // Drawn alone (the axes would cover the plot's edges).
    img = QImage(f.Graph->DrawingWorld()->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    {
        TCanvas canvas(&img);
        s->DrawPoints(canvas);
    }
    const QPoint p1 = s->Points().Value(1);
    const QPoint p0 = s->Points().Value(0);
    const int l = s->dXPlusLength().Value(0);
    EXPECT_EQ(PixelAt(img, p0 + QPoint(l - 1, 0)), clRed) << "bar of the first point";
    EXPECT_NE(PixelAt(img, p1 + QPoint(s->PointStyle().Size() + 2, 0)), clRed) << "no bar for point 2";

    // Zoomed onto the middle point, the first one lies outside: no bar, no symbol.
    f.Graph->XAxis()->ZoomIn(4, 6);
    f.Graph->YAxis()->ZoomIn(4, 6);
    f.Graph->Modified();
    img = f.Render();
    EXPECT_EQ(CountColor(img, clRed), 0);
}

TEST(VxDataSeries, PlusErrorBarsPointTowardLargerValues)
{
    struct Row {
        const char* Name;
        bool TwistX, TwistY;
    };
    const Row rows[] = {{"plain", false, false}, {"x twisted", true, false}, {"y twisted", false, true}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* s = new TVxDataWithErrorSeries(f.Form.get());
        s->SetXData(f.Vector({0, 5, 10}));
        s->SetYData(f.Vector({0, 5, 10}));
        s->SetdXPlus(f.Vector({0, 2}));
        s->SetdYPlus(f.Vector({0, 2}));
        s->SetErrorIndicatorsColor(clRed);
        s->LineStyle().SetVisible(false);
        f.Graph->XAxis()->SetTwisted(r.TwistX);
        f.Graph->YAxis()->SetTwisted(r.TwistY);
        const QImage img = f.Render();
        const TVxAxis* xa = f.Graph->XAxis();
        const TVxAxis* ya = f.Graph->YAxis();
        const QPoint w = f.World();
        auto red = [&](double X, double Y) {
            return PixelAt(img, w + QPoint(xa->RealToIntPosition(X), ya->RealToIntPosition(Y))) == clRed;
        };
        EXPECT_TRUE(red(6.5, 5));
        EXPECT_FALSE(red(3.5, 5));
        EXPECT_TRUE(red(5, 6.5));
        EXPECT_FALSE(red(5, 3.5));
    }
}

TEST(VxDataSeries, ComponentsMayBeDestroyedInAnyOrder)
{
    struct Row {
        const char* Name;
        int Victim; // 0 x vector, 1 y vector, 2 x axis, 3 graph, 4 weight vector, 5 drawing world
    };
    const Row rows[] = {{"x vector", 0}, {"y vector", 1}, {"x axis", 2}, {"graph", 3}, {"weight", 4},
                        {"drawing world", 5}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* x = f.Vector({1, 2, 3});
        auto* y = f.Vector({1, 2, 3});
        auto* w = f.Vector({1, 1, 1});
        QPointer<TVxDataWithErrorSeries> s = new TVxDataWithErrorSeries(f.Form.get());
        s->SetXData(x);
        s->SetYData(y);
        s->SetWeight(w);
        s->SetdXPlus(x);
        f.Render();
        QObject* victims[] = {x, y, f.Graph->XAxis(), f.Graph, w, f.Graph->DrawingWorld()};
        delete victims[r.Victim];
        if (r.Victim != 3)
            f.Render();
        if (r.Victim == 5) { // the graph's new drawing world draws the series
            EXPECT_EQ(s->DrawingWorld(), f.Graph->DrawingWorld());
            EXPECT_TRUE(f.Graph->GetSeriesList().Contains(s));
            EXPECT_GT(CountColor(f.Render(), s->PointStyle().Color()), 20);
        }
        x = nullptr;
        // The series keeps working with what is left and goes away cleanly.
        s->CalculatePoints();
        QImage img(100, 100, QImage::Format_ARGB32_Premultiplied);
        TCanvas canvas(&img);
        s->Draw(canvas);
        delete s;
        EXPECT_TRUE(s.isNull());
    }
}

TEST(VxDataSeries, ChildrenGoWithTheirParentAndMayLeaveFirst)
{
    SeriesForm f;
    auto* parent = MakeSeries(f, f.Vector({1, 2}), f.Vector({1, 2}));
    QPointer<TVxLineSeries> a = new TVxLineSeries(f.Form.get());
    QPointer<TVxLineSeries> b = new TVxLineSeries(f.Form.get());
    parent->AddChild(a);
    parent->AddChild(b);
    delete a.data();
    EXPECT_EQ(parent->Childs().Count(), 1);
    f.Render();
    delete parent;
    EXPECT_TRUE(b.isNull());
    f.Render();
    // A cycle is refused (it would free and draw without end).
    auto* p2 = MakeSeries(f, f.Vector({1, 2}), f.Vector({1, 2}));
    auto* c2 = MakeSeries(f, f.Vector({1, 2}), f.Vector({1, 2}));
    auto* g2 = MakeSeries(f, f.Vector({1, 2}), f.Vector({1, 2}));
    p2->AddChild(c2);
    c2->AddChild(g2);
    g2->AddChild(p2);
    c2->AddChild(p2);
    EXPECT_EQ(g2->Childs().Count() + c2->Childs().Count(), 1);
    // A plain child is drawn once, by the drawing world: its xor area stays visible.
    for (TVxDataSeries* s : {p2, g2})
        s->SetXData(nullptr);
    c2->PointStyle().SetVisible(false);
    c2->AreaStyle().SetVisible(true);
    c2->AreaStyle().SetColor(clGreen);
    EXPECT_GT(CountColor(f.Render(), clGreen), 100);
    delete p2;
    // The form deleting everything (series after vectors and graph) must not crash.
    auto* s = MakeSeries(f, f.Vector({1}), f.Vector({2}));
    s->AddChild(new TVxLineSeries(f.Form.get()));
    f.Form.reset();
}

TEST(VxDataSeries, CachedPixelsAreTheAxisMapping)
{
    // The bulk mapping must agree with RealToIntPosition everywhere, also on halves
    // (ties to even), far outside the axis (saturated) and on reversed or logarithmic axes.
    struct Row {
        const char* Name;
        TVxAxScaling Scaling;
        bool Twisted;
    };
    const Row rows[] = {{"linear", AxNormal, false}, {"reversed", AxNormal, true}, {"log", AxLog, false}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f(333, 257);
        QRandomGenerator rng(3);
        auto* x = new TVxRealVector(f.Form.get());
        auto* y = new TVxRealVector(f.Form.get());
        for (int i = 0; i < 3000; ++i) {
            x->Add(1 + rng.bounded(4000) / 8.0); // many values on exact half pixels
            y->Add(1 + rng.generateDouble() * 100);
        }
        for (double v : {1e300, -1e300, 1e-300, 0.0, -5.0}) {
            x->Add(v);
            y->Add(50);
        }
        auto* s = MakeSeries(f, x, y);
        f.Graph->XAxis()->SetScaling(r.Scaling);
        f.Graph->XAxis()->SetTwisted(r.Twisted);
        f.Graph->XAxis()->SetStartEnd(AxFixed);
        f.Graph->XAxis()->SetStopEnd(AxFixed);
        f.Graph->XAxis()->SetStart(1);
        f.Graph->XAxis()->SetStop(501);
        f.Render();
        int wrong = 0;
        for (int i = 0; i < s->PointsCount(); ++i) {
            QPoint p;
            ASSERT_TRUE(s->PointAt(i, p));
            if (r.Scaling != AxNormal && !(x->Value(i) > 0)) // see the test below
                continue;
            wrong += p.x() != f.Graph->XAxis()->RealToIntPosition(x->Value(i)) ? 1 : 0;
            wrong += p.y() != f.Graph->YAxis()->RealToIntPosition(y->Value(i)) ? 1 : 0;
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST(VxDataSeries, ValuesUpToZeroLieBeyondALogarithmicAxisStart)
{
    struct Row {
        const char* Name;
        bool OnX, Twisted;
    };
    const Row rows[] = {{"y", false, false}, {"y twisted", false, true}, {"x", true, false}, {"x twisted", true, true}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.Name);
        SeriesForm f;
        auto* s = MakeSeries(f, f.Vector({10, 0, 100}), f.Vector({10, -5, 100}));
        TVxAxis* axis = r.OnX ? f.Graph->XAxis() : f.Graph->YAxis();
        axis->SetScaling(AxLog);
        axis->SetTwisted(r.Twisted);
        f.Render();
        QPoint p;
        ASSERT_TRUE(s->PointAt(1, p));
        const int at = r.OnX ? p.x() : p.y();
        const int start = axis->RealToIntPosition(axis->Start()), stop = axis->RealToIntPosition(axis->Stop());
        EXPECT_EQ(at - start, stop > start ? -1 : 1);
    }
}

TEST(VxDataSeries, PublishedReferencesAreProperties)
{
    SeriesForm f;
    auto* x = f.Vector({1, 2});
    auto* s = new TVxDataWithErrorSeries(f.Form.get());
    ASSERT_TRUE(s->setProperty("XData", QVariant::fromValue<TVxCustomRealVector*>(x)));
    EXPECT_EQ(s->XData(), x);
    EXPECT_EQ(s->property("XAxis").value<TVxAxis*>(), f.Graph->XAxis());
    ASSERT_TRUE(s->setProperty("dYPlus", QVariant::fromValue<TVxCustomRealVector*>(x)));
    EXPECT_EQ(s->dYPlus(), x);
    EXPECT_TRUE(s->setProperty("Caption", "c"));
    EXPECT_EQ(s->Caption(), "c");
}

TEST(VxDataSeries, SeriesOwnedByTheGraphGoWithIt)
{
    SeriesForm f;
    QPointer<TVxDataSeries> s = new TVxDataSeries(f.Graph);
    QPointer<TVxLineSeries> child = new TVxLineSeries(f.Graph);
    s->AddChild(child);
    s->SetXData(new TVxLiveVector(f.Graph));
    s->SetYData(f.Vector({1, 2}));
    qobject_cast<TVxLiveVector*>(s->XData())->Add(1);
    f.Render();
    delete f.Graph;
    EXPECT_TRUE(s.isNull());
    EXPECT_TRUE(child.isNull());
}

TEST(VxDataSeries, ReducedLineAndAreaGiveTheSamePixelsAsEveryPoint)
{
    // Random walks dense enough that many points share pixel columns, with NaN gaps, steps
    // back in x (random x) and jumps; drawn by the series and, as reference, run by run
    // with every point.
    QRandomGenerator rng(12345);
    for (int trial = 0; trial < 12; ++trial) {
        const bool area = trial >= 6, xored = trial % 2 == 0, randomX = trial % 3 == 2;
        SCOPED_TRACE(trial);
        SeriesForm f(500, 320);
        auto* x = new TVxRealVector(f.Form.get());
        auto* y = new TVxRealVector(f.Form.get());
        double yv = 0;
        const int n = 1000 + (trial % 6) * 2500;
        for (int i = 0; i < n; ++i) {
            x->Add(randomX ? rng.generateDouble() * 100 : i * 100.0 / n);
            yv += rng.generateDouble() - 0.5;
            y->Add(rng.bounded(97) == 0 ? NaN : (rng.bounded(50) == 0 ? yv * 5 : yv));
        }
        auto* s = MakeSeries(f, x, y);
        s->PointStyle().SetVisible(false);
        s->LineStyle().SetVisible(!area);
        s->AreaStyle().SetVisible(area);
        s->AreaStyle().SetDrawXOred(xored);
        f.Render();

        QImage reduced(f.Graph->DrawingWorld()->size(), QImage::Format_ARGB32_Premultiplied);
        reduced.fill(Qt::white);
        QImage every = reduced;
        {
            TCanvas canvas(&reduced);
            s->DrawLine(canvas);
        }
        TCanvas canvas(&every);
        canvas.Pen().SetColor(s->LineStyle().Color());
        canvas.Pen().SetWidth(0);
        if (area) {
            canvas.Pen().SetStyle(psClear);
            canvas.Pen().SetMode(xored ? pmXor : pmCopy);
            canvas.Brush().SetColor(xored ? ColorToRGB(s->AreaStyle().Color()) ^ ColorToRGB(s->BackgroundColor())
                                          : s->AreaStyle().Color());
        }
        const int y0 = f.Graph->YAxis()->RealToIntPosition(0);
        std::vector<QPoint> run;
        for (int i = 0; i <= s->PointsCount(); ++i) {
            QPoint p;
            if (i < s->PointsCount() && s->PointAt(i, p)) {
                run.push_back(p);
                continue;
            }
            if (run.size() >= 2 && area) {
                run.emplace_back(run.back().x(), y0);
                run.emplace_back(run.front().x(), y0);
                canvas.Polygon(run);
            } else if (run.size() >= 2) {
                DrawPolyline(run, canvas);
            }
            run.clear();
        }
        EXPECT_TRUE(reduced == every);
    }
}

TEST(VxDataSeries, LiveAppendDrawsLikeAFreshSeries)
{
    // The incremental pixel cache, line and area reductions and the kept line and symbol
    // layers (from 2000 points on) must end where a full calculation does.
    struct Row {
        const char* Name;
        bool Scatter;
    };
    for (const Row& r : {Row{"line and area", false}, Row{"scatter", true}}) {
        SCOPED_TRACE(r.Name);
        SeriesForm f(500, 320);
        auto* x = f.Vector({});
        auto* y = f.Vector({});
        auto* s = MakeSeries(f, x, y);
        s->PointStyle().SetVisible(r.Scatter);
        s->LineStyle().SetVisible(!r.Scatter);
        s->AreaStyle().SetVisible(!r.Scatter);
        s->AreaStyle().SetDrawXOred(false);
        f.Graph->XAxis()->SetStartEnd(AxFixed);
        f.Graph->XAxis()->SetStopEnd(AxFixed);
        f.Graph->XAxis()->SetStop(3000);
        QRandomGenerator rng(8);
        for (int i = 0; i < 3000; ++i) {
            x->Add(r.Scatter ? rng.bounded(3000.0) : i);
            y->Add(r.Scatter ? rng.bounded(50.0) : (i % 701 == 700 ? NaN : std::sin(i * 0.01) * (i % 7)));
            if (i % 250 == 0)
                f.Render();
        }
        y->SetValue(10, 0.5); // a change among the drawn points, not an extreme
        const QImage live = f.Render();
        s->SetXData(nullptr); // forces a full calculation
        f.Render();
        s->SetXData(x);
        EXPECT_TRUE(live == f.Render());
    }
}
