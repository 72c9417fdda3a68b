#include "NumericsTestSupport.h"

#include "vx/numerics/VxInterpol.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vx;
using namespace vxtest;

namespace {

// A piecewise cubic with coefficients set directly; entry N repeats the last interval.
class TFixedPolynom : public TVxIntPolynom {
public:
    void Set(const TVxRealArray& knots, const TVxRealArray& a, const TVxRealArray& b,
        const TVxRealArray& c, const TVxRealArray& d)
    {
        BeginRecalculation();
        FKnotCount = int(knots.size()) - 1;
        FXKnots = knots;
        FA = a;
        FB = b;
        FC = c;
        FD = d;
        MarkReady();
    }

    // f(x) = x³ - 3x written in Taylor form at each knot.
    void SetCubic(const TVxRealArray& knots)
    {
        TVxRealArray a, b, c, d;
        for (double k : knots) {
            a.push_back(k * k * k - 3 * k);
            b.push_back(3 * k * k - 3);
            c.push_back(3 * k);
            d.push_back(1);
        }
        Set(knots, a, b, c, d);
    }
};

double F(double x) { return x * x * x * x / 4 - 1.5 * x * x; } // antiderivative of x³ - 3x

} // namespace

TEST(IntPolynom, EvaluationBeforeAFitIsRefused)
{
    TFixedPolynom p;
    EXPECT_THROW(p.Interpolate(1.0), EMathError);
    EXPECT_THROW(p.FindExtrema(), EMathError);
    EXPECT_EQ(p.FindIndex(5.0), 0);
}

TEST(IntPolynom, FindIndex)
{
    TFixedPolynom p;
    p.SetCubic({ -2, -1, 0, 1, 2, 2 }); // N = 5, entry 5 repeats the last knot
    struct Row {
        double X;
        int Index;
    } rows[] = { { -1.0, 1 }, { -0.5, 1 }, { 0.0, 2 }, { -9.0, 0 }, { 1.999, 3 }, { 2.0, 4 },
        { 50.0, 5 }, { -2.0, 0 }, { NAN, 0 } };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.X);
        EXPECT_EQ(p.FindIndex(row.X), row.Index);
        EXPECT_EQ(p.LastIndex(), row.Index);
    }
}

TEST(IntPolynom, ValueSlopeCurvature)
{
    TFixedPolynom p;
    p.SetCubic({ -2, -1, 0, 1, 2, 2 });
    for (double x : { -3.0, -1.5, -0.25, 0.0, 0.7, 1.9, 2.5 }) {
        SCOPED_TRACE(x);
        EXPECT_NEAR(p.Interpolate(x), x * x * x - 3 * x, 1e-13);
        EXPECT_NEAR(p.Slope(x), 3 * x * x - 3, 1e-13);
        EXPECT_NEAR(p.Curvature(x), 6 * x, 1e-13);
    }
    EXPECT_TRUE(std::isnan(p.Interpolate(NAN)));
}

TEST(IntPolynom, ExtremaOfCurveAndSlope)
{
    TFixedPolynom p;
    p.SetCubic({ -2, -0.5, 0.5, 2, 3, 3 });
    p.FindExtrema();
    ASSERT_EQ(p.Minima().size(), 1u);
    ASSERT_EQ(p.Maxima().size(), 1u);
    EXPECT_NEAR(p.Minima()[0].X, 1.0, 1e-12);
    EXPECT_NEAR(p.Minima()[0].Y, -2.0, 1e-12);
    EXPECT_NEAR(p.Maxima()[0].X, -1.0, 1e-12);
    EXPECT_NEAR(p.Maxima()[0].Y, 2.0, 1e-12);

    // The slope 3x² - 3 has its minimum at the inflection point 0.
    p.FindDiffExtrema();
    ASSERT_EQ(p.DiffMinima().size(), 1u);
    EXPECT_NEAR(p.DiffMinima()[0].X, 0.0, 1e-12);
    EXPECT_NEAR(p.DiffMinima()[0].Y, -3.0, 1e-12);
    EXPECT_TRUE(p.DiffMaxima().empty());
}

TEST(IntPolynom, SlopeMinimumBetweenQuadraticIntervalsTakesTheKnot)
{
    // Two parabolic pieces (D = 0) meeting at a kink of the slope: both candidates are
    // sentinels and the right one wins, at the knot itself.
    TFixedPolynom p;
    p.Set({ 0, 1, 2, 3 }, { 0, 0, 0, 0 }, { 1, -1, 1, 1 }, { 0, 1, 0, 0 }, { 0, 0, 0, 0 });
    p.FindDiffExtrema();
    ASSERT_EQ(p.DiffMinima().size(), 1u);
    EXPECT_EQ(p.DiffMinima()[0].X, 1.0);
    EXPECT_EQ(p.DiffMinima()[0].Y, -1.0);
}

TEST(IntPolynom, RunningIntegralAndItsExtrema)
{
    TFixedPolynom p;
    p.SetCubic({ -2, -1, 0, 1, 2, 2 });
    auto X = std::make_unique<TVxRealVector>();
    auto Y = std::make_unique<TVxRealVector>();
    for (int i = 0; i <= 40; ++i)
        X->Add(-2.0 + 0.1 * i);
    p.Integrate(*X, *Y);
    ASSERT_EQ(Y->Count(), 41);
    for (int i = 0; i <= 40; ++i)
        EXPECT_NEAR(Y->Value(i), F(X->Value(i)) - F(-2.0), 1e-12) << i;

    // Minima near ±√3, maximum near 0. The refinement is a greedy halving search from
    // the knot of interval I - 2 over [0, 2t]; it reports that interval's integral plus
    // the running value at the sample. Here the first minimum is found exactly.
    ASSERT_EQ(p.IntMinima().size(), 2u);
    ASSERT_EQ(p.IntMaxima().size(), 1u);
    EXPECT_NEAR(p.IntMinima()[0].X, -std::sqrt(3.0), 1e-8);
    EXPECT_NEAR(p.IntMinima()[0].Y, (F(-std::sqrt(3.0)) - F(-2.0)) + (F(-1.7) - F(-2.0)), 1e-8);
}

TEST(IntPolynom, RunningIntegralQuirks)
{
    // Steps 1, 2, 3, 4 on unit intervals.
    TFixedPolynom p;
    p.Set({ 0, 1, 2, 3, 4 }, { 1, 2, 3, 4, 4 }, { 0, 0, 0, 0, 0 }, { 0, 0, 0, 0, 0 }, { 0, 0, 0, 0, 0 });
    auto X = std::make_unique<TVxRealVector>();
    auto Y = std::make_unique<TVxRealVector>();
    // The interval index may not pass Count - 2: with three samples the last one is
    // integrated with interval 1's polynomial.
    for (double x : { 0.0, 2.0, 4.0 })
        X->Add(x);
    p.Integrate(*X, *Y);
    EXPECT_DOUBLE_EQ(Y->Value(1), 3.0);
    EXPECT_DOUBLE_EQ(Y->Value(2), 1.0 + 2.0 * 3.0);

    // The sum starts at the knot at or left of the first sample.
    X->Clear();
    for (double x : { 0.5, 1.0, 1.5, 2.0, 2.5 })
        X->Add(x);
    p.Integrate(*X, *Y);
    EXPECT_DOUBLE_EQ(Y->Value(0), 0.0);
    EXPECT_DOUBLE_EQ(Y->Value(1), 1.0);
    EXPECT_DOUBLE_EQ(Y->Value(2), 2.0);
}

TEST(IntPolynom, AscendingLookupIsIncremental)
{
    // 10^5 knots, 10^6 ascending calls: each lookup moves LastIndex by at most a step or two.
    const int n = 100000;
    TVxRealArray knots(n + 1), zero(n + 1, 0.0), one(n + 1, 1.0);
    for (int i = 0; i <= n; ++i)
        knots[i] = std::min(i, n - 1);
    TFixedPolynom p;
    p.Set(knots, zero, one, zero, zero);
    double sum = 0.0;
    for (int i = 0; i < 1000000; ++i)
        sum += p.Interpolate(i * 1e-1);
    EXPECT_GT(sum, 0.0);
}
