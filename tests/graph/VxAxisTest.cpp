#include "vx/graph/VxAxis.h"

#include "vx/core/VxConsts.h"
#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxExceptions.h"

#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"
#include <cmath>
#include <limits>
#include <memory>

using namespace vx;

namespace {

TVxAxisScale Range(double start, double stop)
{
    TVxAxisScale s;
    s.Start = start;
    s.Stop = stop;
    return s;
}

TVxAxisScaleOptions Options(TVxAxScaling scaling = AxNormal)
{
    TVxAxisScaleOptions o;
    o.Scaling = scaling;
    return o;
}

QStringList LabelTexts(const TVxAxisTicks& t)
{
    QStringList texts;
    for (const TVxAxisTickLabel& l : t.Labels)
        texts << l.Text;
    return texts;
}

int MajorCount(const TVxAxisTicks& t)
{
    return int(std::count(t.TickIsMajor.begin(), t.TickIsMajor.end(), true));
}

const QString Dot = QString(QChar(0xB7));

} // namespace

// Rounded ends, parts and exponents of linear axes.
TEST(VxAxisEnds, LinearTable)
{
    struct Row {
        const char* name;
        double start, stop;
        double eStart, eStop;
        int rangeExp;
        double tick, major, label;
        int valueExp, labelDigits;
        bool scaleExp, defaulted;
    };
    const Row rows[] = {
        {"0.3..97 rounds to 0..100", 0.3, 97, 0, 100, 2, 0.02, 0.1, 0.2, 2, 2, false, false},
        {"all zero gives -1..1", 0, 0, -1, 1, 0, 0.05, 0.25, 0.5, 0, 2, false, true},
        {"5..5 gives 4..6", 5, 5, 4, 6, 0, 0.05, 0.25, 0.5, 0, 2, false, true},
        {"inverted gives 0..100", 10, 5, 0, 100, 2, 0.02, 0.1, 0.2, 2, 2, false, true},
        {"values up to 20000 use a common exponent", 0, 20000, 0, 20000, 4, 0.05, 0.25, 0.5, 4, 2, true, false},
        {"values up to 2000 do not", 0, 2000, 0, 2000, 3, 0.05, 0.25, 0.5, 3, 2, false, false},
        {"values below 0.01 use a common exponent", 0, 0.005, 0, 0.005, -3, 0.1, 0.5, 1, -3, 1, true, false},
        {"negative range", -97, -0.3, -100, 0, 2, 0.02, 0.1, 0.2, 2, 2, false, false},
        {"1.1..2.4 stays", 1.1, 2.4, 1.1, 2.4, 0, 0.02, 0.1, 0.2, 0, 2, false, false},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const TVxAxisScale s = CalculateAxisEnds(Range(r.start, r.stop), Options());
        EXPECT_DOUBLE_EQ(s.Start, r.eStart);
        EXPECT_DOUBLE_EQ(s.Stop, r.eStop);
        EXPECT_EQ(s.RangeExponent, r.rangeExp);
        EXPECT_DOUBLE_EQ(s.TickPart, r.tick);
        EXPECT_DOUBLE_EQ(s.MajorTickPart, r.major);
        EXPECT_DOUBLE_EQ(s.LabelPart, r.label);
        EXPECT_EQ(s.ValueExponent, r.valueExp);
        EXPECT_EQ(s.LabelDigits, r.labelDigits);
        EXPECT_EQ(s.ScaleExponent, r.scaleExp);
        EXPECT_EQ(s.RangeDefaulted, r.defaulted);
    }
}

TEST(VxAxisEnds, HostileRangesStayDrawable)
{
    struct Row {
        const char* name;
        double start, stop;
        TVxAxScaling scaling;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {"NaN start", nan, 5, AxNormal},
        {"infinite stop", 0, inf, AxNormal},
        {"width overflows", -1.7E308, 1.7E308, AxNormal},
        {"width below the 15th digit", 1, 1 + 1E-15, AxNormal},
        {"tiny values", 1E-300, 3E-300, AxNormal},
        {"log up to the largest double", 1, 1E308, AxLog},
        {"log NaN", nan, nan, AxLogEE},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const TVxAxisScale s = CalculateAxisEnds(Range(r.start, r.stop), Options(r.scaling));
        EXPECT_TRUE(std::isfinite(s.Start) && std::isfinite(s.Stop));
        EXPECT_LE(s.Start, s.Stop);
        const TVxAxisTicks t = CalculateAxisTicks(s, Options(r.scaling));
        EXPECT_GE(t.Size(), 1);
        EXPECT_LE(t.Size(), 10001);
        const TVxAxisMap m(s, r.scaling, 400, false, false);
        for (int p : m.TickPositions(t))
            EXPECT_TRUE(p >= -1 && p <= 401) << p;
    }
}

TEST(VxAxisEnds, FixedEndSnapsToMinorStepOnly)
{
    TVxAxisScaleOptions o = Options();
    o.StartEnd = AxFixed;
    // Width 9.6: RangeExponent 0, k = 10, round unit 1; the fixed start snaps to 0.02.
    const TVxAxisScale s = CalculateAxisEnds(Range(0.33, 9.93), o);
    EXPECT_DOUBLE_EQ(s.Start, 0.32);
    EXPECT_DOUBLE_EQ(s.Stop, 10);
}

TEST(VxAxisEnds, ManualPartsSurviveWithoutAutoTicks)
{
    TVxAxisScaleOptions o = Options();
    o.AutoTicks = false;
    TVxAxisScale in = Range(0, 100);
    in.TickPart = 0.05;
    in.MajorTickPart = 0.25;
    in.LabelPart = 0.25;
    const TVxAxisScale s = CalculateAxisEnds(in, o);
    EXPECT_DOUBLE_EQ(s.TickPart, 0.05);
    EXPECT_DOUBLE_EQ(s.MajorTickPart, 0.25);
    EXPECT_DOUBLE_EQ(s.LabelPart, 0.25);
    const TVxAxisTicks t = CalculateAxisTicks(s, o);
    EXPECT_EQ(t.TickCount, 21);
    EXPECT_EQ(LabelTexts(t), (QStringList{"0", "25", "50", "75", "100"}));
}

TEST(VxAxisEnds, LogTable)
{
    struct Row {
        const char* name;
        double start, stop, eStart, eStop;
        int decades;
    };
    const Row rows[] = {
        {"0.5..2000 snaps to decades", 0.5, 2000, 0.1, 10000, 4},
        {"inverted gives 1..10", 10, 5, 1, 10, 1},
        {"narrow range widens by a decade each side", 500, 501, 10, 1000, 2},
        {"non-positive ends", -5, -1, 1E-10, 1, 10},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const TVxAxisScale s = CalculateAxisEnds(Range(r.start, r.stop), Options(AxLog));
        EXPECT_DOUBLE_EQ(s.Start, r.eStart);
        EXPECT_DOUBLE_EQ(s.Stop, r.eStop);
        EXPECT_EQ(s.RangeExponent, r.decades);
        EXPECT_DOUBLE_EQ(s.TickPart, 0.1);
        EXPECT_DOUBLE_EQ(s.MajorTickPart, 1);
        EXPECT_DOUBLE_EQ(s.LogStart, std::log10(r.eStart));
        EXPECT_FALSE(s.ScaleExponent);
    }
}

// Tick counts, majors and labels of linear divisions.
TEST(VxAxisTicks, Linear0To100)
{
    const TVxAxisScale s = CalculateAxisEnds(Range(0.3, 97), Options());
    const TVxAxisTicks t = CalculateAxisTicks(s, Options());
    EXPECT_EQ(t.TickCount, 51);
    EXPECT_EQ(MajorCount(t), 11);
    EXPECT_TRUE(t.TickIsMajor[0]);
    EXPECT_TRUE(t.TickIsMajor[5]);
    EXPECT_FALSE(t.TickIsMajor[4]);
    EXPECT_EQ(LabelTexts(t), (QStringList{"0", "20", "40", "60", "80", "100"}));
    EXPECT_EQ(t.Labels[1].TickIndex, 10);
    EXPECT_TRUE(t.ExponentLabel.isEmpty());
}

TEST(VxAxisTicks, LabelTextsAndCommonExponent)
{
    struct Row {
        const char* name;
        double start, stop;
        QStringList labels;
        QString exponent;
    };
    const Row rows[] = {
        {"mantissas of 10^4", 0, 20000, {"0.0", "0.5", "1.0", "1.5", "2.0"}, Dot + "10\\+4"},
        {"plain up to 10^3", 0, 2000, {"0", "500", "1000", "1500", "2000"}, ""},
        {"mantissas of 10^-3", 0, 0.005, {"0", "1", "2", "3", "4", "5"}, Dot + "10\\+-3"},
        {"decimals from the label step", 1.1, 2.4, {"1.2", "1.4", "1.6", "1.8", "2.0", "2.2", "2.4"}, ""},
        {"around zero", -1, 1, {"-1.0", "-0.5", "0.0", "0.5", "1.0"}, ""},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const TVxAxisScale s = CalculateAxisEnds(Range(r.start, r.stop), Options());
        const TVxAxisTicks t = CalculateAxisTicks(s, Options());
        EXPECT_EQ(LabelTexts(t), r.labels);
        EXPECT_EQ(t.ExponentLabel, r.exponent);
    }
}

TEST(VxAxisTicks, TwistedCountsPhasesFromStop)
{
    TVxAxisScaleOptions o = Options();
    const TVxAxisScale s = CalculateAxisEnds(Range(1.1, 2.4), o);
    const TVxAxisTicks forward = CalculateAxisTicks(s, o);
    EXPECT_EQ(forward.TickCount, 66);
    EXPECT_EQ(forward.Labels.front().TickIndex, 5);
    o.Twisted = true;
    const TVxAxisTicks twisted = CalculateAxisTicks(s, o);
    EXPECT_EQ(twisted.Labels.front().TickIndex, 0);
    EXPECT_EQ(LabelTexts(twisted), (QStringList{"2.4", "2.2", "2.0", "1.8", "1.6", "1.4", "1.2"}));
}

TEST(VxAxisTicks, ZeroLabelLeftOutWhenAxesCrossAndNoneWithoutScaleLabels)
{
    const TVxAxisTicks crossing = CalculateAxisTicks(CalculateAxisEnds(Range(-1, 1), Options()), Options(), true);
    EXPECT_EQ(LabelTexts(crossing), (QStringList{"-1.0", "-0.5", "0.5", "1.0"}));
    TVxAxisScaleOptions o = Options();
    o.ShowScaleLabels = false;
    const TVxAxisTicks t = CalculateAxisTicks(CalculateAxisEnds(Range(0, 20000), o), o);
    EXPECT_TRUE(t.Labels.empty());
    EXPECT_TRUE(t.ExponentLabel.isEmpty());
    EXPECT_EQ(t.TickCount, 41);
}

TEST(VxAxisTicks, TooCoarseOrTooFineManualPartsFallBackToTables)
{
    TVxAxisScaleOptions o = Options();
    o.AutoTicks = false;
    // 5: one tick only; 1E-9: a billion ticks. The table parts of k = 1 take over.
    for (double part : {5.0, 1E-9}) {
        SCOPED_TRACE(part);
        TVxAxisScale s = Range(0, 100);
        s.RangeExponent = 2;
        s.TickPart = s.MajorTickPart = s.LabelPart = part;
        const TVxAxisTicks t = CalculateAxisTicks(s, o);
        EXPECT_EQ(t.TickCount, 51);
        EXPECT_DOUBLE_EQ(t.TickPart, 0.02);
        EXPECT_DOUBLE_EQ(t.LabelPart, 0.2);
        EXPECT_EQ(t.Labels.size(), 6u);
    }
}

TEST(VxAxisTicks, LogDecadesAndLabels)
{
    for (TVxAxScaling scaling : {AxLog, AxLogEE}) {
        SCOPED_TRACE(scaling);
        const TVxAxisScale s = CalculateAxisEnds(Range(0.5, 2000), Options(scaling));
        const TVxAxisTicks t = CalculateAxisTicks(s, Options(scaling));
        EXPECT_EQ(t.TickCount, 5);
        EXPECT_EQ(t.SubTicks, 9);
        EXPECT_EQ(t.Size(), 46);
        EXPECT_EQ(MajorCount(t), 6);
        EXPECT_TRUE(t.TickIsMajor[9]);
        EXPECT_TRUE(t.TickIsMajor[45]);
        const QStringList expected = scaling == AxLog
            ? QStringList{"0.1", "1", "10", "100", "1000", "10000"}
            : QStringList{"10\\+ -1", "10\\+ 0", "10\\+ 1", "10\\+ 2", "10\\+ 3", "10\\+ 4"};
        EXPECT_EQ(LabelTexts(t), expected);
    }
}

// Value <-> pixel mapping for both orientations, Twisted and log.
TEST(VxAxisMap, LinearDirections)
{
    const TVxAxisScale s = CalculateAxisEnds(Range(0, 100), Options());
    struct Row {
        const char* name;
        bool vertical, twisted;
        int atStart, atStop;
    };
    const Row rows[] = {
        {"horizontal grows right", false, false, 0, 300},
        {"vertical grows up", true, false, 300, 0},
        {"twisted horizontal grows left", false, true, 300, 0},
        {"twisted vertical grows down", true, true, 0, 300},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const TVxAxisMap m(s, AxNormal, 300, r.vertical, r.twisted);
        EXPECT_EQ(m.RealToIntPosition(0), r.atStart);
        EXPECT_EQ(m.RealToIntPosition(100), r.atStop);
        EXPECT_EQ(m.RealToIntPosition(50), 150);
        EXPECT_DOUBLE_EQ(m.IntToRealPosition(r.atStart), 0);
        EXPECT_DOUBLE_EQ(m.IntToRealPosition(r.atStop), 100);
    }
    const TVxAxisMap m(s, AxNormal, 200, false, false);
    EXPECT_EQ(m.RealToIntPosition(0.75), 2); // 1.5 px and 2.5 px: half to even
    EXPECT_EQ(m.RealToIntPosition(1.25), 2);
    EXPECT_EQ(m.RealToIntPosition(1e300), 1073741823); // saturates instead of overflowing
}

TEST(VxAxisMap, LogMapping)
{
    const TVxAxisScale s = CalculateAxisEnds(Range(0.5, 2000), Options(AxLog));
    const TVxAxisMap h(s, AxLog, 500, false, false);
    EXPECT_DOUBLE_EQ(h.Scale(), 0.01);
    EXPECT_EQ(h.RealToIntPosition(1), 100);
    EXPECT_EQ(h.RealToIntPosition(1000), 400);
    EXPECT_EQ(h.RealToIntPosition(0), -1);
    EXPECT_EQ(h.RealToIntPosition(-3), -1);
    EXPECT_NEAR(h.IntToRealPosition(300), 100, 1e-9);
    const TVxAxisMap v(s, AxLog, 500, true, false);
    EXPECT_EQ(v.RealToIntPosition(1), 400);
    EXPECT_EQ(v.RealToIntPosition(0), -1);
    const std::vector<int> pos = v.TickPositions(CalculateAxisTicks(s, Options(AxLog)));
    ASSERT_EQ(pos.size(), 46u);
    // The start decade at the bottom; 0.2 is log10(2) = 0.301 decades = 30 px up.
    EXPECT_EQ((std::vector<int>{pos[0], pos[1], pos[9], pos[45]}), (std::vector<int>{500, 470, 400, 0}));
    // Twisted, the vertical axis grows downward: the same ticks mirrored.
    const TVxAxisMap vt(s, AxLog, 500, true, true);
    const std::vector<int> twisted = vt.TickPositions(CalculateAxisTicks(s, Options(AxLog)));
    EXPECT_EQ((std::vector<int>{twisted[0], twisted[1], twisted[45]}), (std::vector<int>{0, 30, 500}));
    EXPECT_EQ(vt.RealToIntPosition(1), 100);
}

TEST(VxAxisMap, LinearTickPositions)
{
    const TVxAxisScale s = CalculateAxisEnds(Range(0, 100), Options());
    const TVxAxisTicks t = CalculateAxisTicks(s, Options());
    const TVxAxisMap v(s, AxNormal, 300, true, false);
    const std::vector<int> pos = v.TickPositions(t);
    ASSERT_EQ(pos.size(), 51u);
    EXPECT_EQ(pos[1], 6);
    EXPECT_EQ(pos[50], 300);
    // Linear ticks of a vertical axis are stored from the start value: tick 1 sits 6 px
    // above the bottom.
    EXPECT_EQ(v.TickScreenOffset(pos[1]), 294);
}

TEST(VxAxisMap, UnknownScalingRaises)
{
    const TVxAxisMap m(Range(0, 1), TVxAxScaling(7), 100, false, false);
    VX_EXPECT_THROW_MSG(m.RealToIntPosition(1), EConvertError, QStringLiteral("Axis scaling not supportet"));
    EXPECT_THROW(m.IntToRealPosition(1), EConvertError);
    EXPECT_EQ(CalculateAxisTicks(Range(0, 1), Options(TVxAxScaling(7))).Size(), 0);
}

// The axis component: setters, data ranges, zoom history, coupling.
TEST(VxAxisComponent, DefaultsAndSetters)
{
    TVxAxis axis;
    EXPECT_EQ(axis.Position(), AxLeftPos);
    EXPECT_TRUE(axis.Vertical());
    EXPECT_EQ(axis.Start(), 0);
    EXPECT_EQ(axis.Stop(), 100);
    EXPECT_EQ(axis.MajorTickLength(), 10);
    EXPECT_EQ(axis.TickLength(), 6);
    axis.SetTickPart(0.5); // ignored under AutoTicks
    EXPECT_DOUBLE_EQ(axis.TickPart(), 0.05);
    axis.SetAutoTicks(false);
    axis.SetTickPart(0.5);
    EXPECT_DOUBLE_EQ(axis.TickPart(), 0.5);
    EXPECT_THROW(axis.SetTickPart(-1), ERangeError);
    axis.SetPosition(AxTopPos);
    EXPECT_FALSE(axis.Vertical());
    axis.SetPosition(AxFreeFloating);
    EXPECT_TRUE(axis.Vertical());
}

// An axis with no parent that was never shown is visible: it makes ticks, and its
// mapping follows direction and scaling changes without waiting for a calculation.
TEST(VxAxisComponent, StandaloneAxisTicksAndMaps)
{
    TVxAxis axis;
    axis.SetStart(0.3);
    axis.SetStop(97);
    axis.CalculateEnds();
    axis.CalculateTicks();
    EXPECT_EQ(axis.TickCount(), 51);
    EXPECT_EQ(LabelTexts(axis.Ticks()), QStringList({"0", "20", "40", "60", "80", "100"}));
    // Position and Twisted turn the mapping at once, before the next calculation.
    axis.SetAxisLength(400);
    EXPECT_EQ(axis.RealToIntPosition(25), 300);
    axis.SetPosition(AxBottomPos);
    EXPECT_EQ(axis.RealToIntPosition(25), 100);
    axis.SetTwisted(true);
    EXPECT_EQ(axis.RealToIntPosition(25), 300);
    axis.SetScaling(TVxAxScaling(7));
    EXPECT_THROW(axis.RealToIntPosition(1), EConvertError);
    EXPECT_THROW(axis.IntToRealPosition(1), EConvertError);
}

TEST(VxAxisComponent, ValueRangesFollowTheEnds)
{
    TVxAxis axis;
    TRange a, b;
    a.SetStartStop(2, 5);
    b.SetStartStop(-1, 3);
    TRange empty; // still inverted: skipped
    axis.ValueRanges().Add(&a);
    axis.ValueRanges().Add(&b);
    axis.ValueRanges().Add(&empty);
    axis.ValuesRangeChanged(&a);
    EXPECT_EQ(axis.Start(), -1);
    EXPECT_EQ(axis.Stop(), 5);

    axis.SetStartEnd(AxFirstSet);
    axis.SetStopEnd(AxFixed);
    axis.SetStart(0);
    axis.SetStop(4);
    b.SetStartStop(1, 30);
    axis.ValuesRangeChanged(&b);
    EXPECT_EQ(axis.Start(), 0); // first-set only widens
    EXPECT_EQ(axis.Stop(), 4);  // fixed ignores the data
    b.SetStartStop(-7, 30);
    axis.ValuesRangeChanged(&b);
    EXPECT_EQ(axis.Start(), -7);
}

TEST(VxAxisComponent, ZoomHistoryIsCyclic)
{
    TVxAxis axis;
    EXPECT_FALSE(axis.CanZoomBack());
    axis.ZoomIn(10, 20);
    axis.ZoomIn(12, 15);
    EXPECT_EQ(axis.ZoomCount(), 3);
    const double expected[][2] = {{10, 20}, {0, 100}, {12, 15}};
    for (const auto& e : expected) {
        axis.ZoomBack();
        EXPECT_EQ(axis.Start(), e[0]);
        EXPECT_EQ(axis.Stop(), e[1]);
    }
    // A scaling change with registered ranges forgets the history.
    TRange r;
    r.SetStartStop(1, 2);
    axis.ValueRanges().Add(&r);
    axis.SetScaling(AxLog);
    EXPECT_FALSE(axis.CanZoomBack());
}

TEST(VxAxisComponent, MasterRules)
{
    TVxAxis master, other, vertical, slave;
    master.SetPosition(AxBottomPos);
    other.SetPosition(AxBottomPos);
    slave.SetPosition(AxTopPos);
    vertical.SetPosition(AxLeftPos);
    slave.SetMasterAxis(&vertical); // other orientation: ignored
    EXPECT_EQ(slave.MasterAxis(), nullptr);
    slave.SetMasterAxis(&slave); // itself: ignored
    EXPECT_FALSE(slave.IsSlaveAxis());
    slave.SetMasterAxis(&master);
    EXPECT_EQ(slave.MasterAxis(), &master);
    EXPECT_TRUE(slave.IsSlaveAxis());
    other.SetMasterAxis(&slave); // a slave cannot be a master
    EXPECT_EQ(other.MasterAxis(), nullptr);
    slave.SetMasterAxis(nullptr);
    EXPECT_FALSE(slave.IsSlaveAxis());
}

TEST(VxAxisComponent, SlaveShowsMasterRange)
{
    TVx2DGraph graph;
    TVxAxis* master = graph.XAxis();
    auto* slave = new TVxAxis(&graph);
    slave->SetPosition(AxTopPos);
    slave->SetMasterAxis(master);
    master->SetScaling(AxLog);
    master->SetStart(0.5);
    master->SetStop(2000);
    graph.Calculate();
    EXPECT_EQ(slave->Scaling(), AxLog);
    EXPECT_DOUBLE_EQ(slave->Start(), 0.1);
    EXPECT_DOUBLE_EQ(slave->Stop(), 10000);
    EXPECT_EQ(slave->AxisLength(), master->AxisLength());
    EXPECT_EQ(slave->TickPositions(), master->TickPositions());
}

TEST(VxAxisComponent, OutfitRoundTrip)
{
    TVxAxis a;
    a.SetStart(-3);
    a.SetStop(7);
    a.SetTwisted(true);
    a.SetScaling(AxLogEE);
    a.SetAutoTicks(false);
    a.SetTickPart(0.25);
    a.SetUserCaption("t / \\is");
    a.SetDoUserCaption(true);
    a.SetMajorTickLength(-4);
    a.SetAxisColor(clNavy);
    TFont f;
    f.SetSize(14);
    a.SetFont(f);
    TVxIniList ini;
    a.SaveOutfit("Axis", ini);
    QStringList keys;
    ini.ReadSection("Axis", keys);
    EXPECT_EQ(keys.first(), "Font.Name");
    EXPECT_EQ(keys.last(), "Scaling");

    // A loaded axis saves the same outfit again; spot checks catch a key neither side knows.
    TVxAxis b;
    b.LoadOutfit("Axis", ini);
    TVxIniList again;
    b.SaveOutfit("Axis", again);
    EXPECT_EQ(again.Lines(), ini.Lines());
    EXPECT_EQ(b.Stop(), 7);
    EXPECT_EQ(b.Scaling(), AxLogEE);
    EXPECT_EQ(b.Caption(), "t / \\is");
    EXPECT_EQ(b.Font().Size(), 14);
}

TEST(VxAxisTables, InitFieldsReadsUserSettings)
{
    if (UserSettings.isEmpty())
        VxFillDirs();
    const TVxAxisStepTables saved = AxisStepTables();
    {
        TVxLargeIniFile ini(UserSettings);
        const TVxRealArray ones(10, 1.0), halves(10, 0.5);
        ini.WriteRealArray("GraphScale", "RoundField", ones, 9);
        ini.WriteRealArray("GraphScale", "TickField", halves, 9);
        ini.WriteRealArray("GraphScale", "MajorTickField", ones, 9);
        ini.WriteRealArray("GraphScale", "LabelsField", ones, 9);
        ini.Save();
    }
    InitFields();
    const TVxAxisStepTables t = AxisStepTables();
    SetAxisStepTables(saved);
    QFile::remove(UserSettings);
    EXPECT_EQ(t.RoundField[1], 1.0);
    EXPECT_EQ(t.TickField[10], 0.5);
    EXPECT_EQ(saved, DefaultAxisStepTables());
}
