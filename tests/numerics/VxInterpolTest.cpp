#include "NumericsTestSupport.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

// A piecewise cubic with coefficients set directly.
class TFixedPolynom : public TVxIntPolynom {
public:
    void Set(const TVxRealArray& knots, const TVxRealArray& a, const TVxRealArray& b,
        const TVxRealArray& c, const TVxRealArray& d)
    {
        BeginRecalculation();
        FKnotCount = int(knots.size()) - 1; // the last entry is entry N
        std::tie(FXKnots, FA, FB, FC, FD) = std::tie(knots, a, b, c, d);
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

TEST(IntPolynom, LookupAndEvaluation)
{
    TFixedPolynom p;
    EXPECT_EQ(MessageOf([&] { p.Interpolate(1.0); }), kNotEnoughData); // nothing fitted yet
    EXPECT_EQ(MessageOf([&] { p.FindExtrema(); }), kNotEnoughData);

    p.SetCubic({ -2, -1, 0, 1, 2, 2 }); // N = 5, entry 5 repeats the last knot
    // The search starts at the previous index: the rows move it both ways.
    struct Row {
        double X;
        int Index;
    } rows[] = { { -1.0, 1 }, { -0.5, 1 }, { 0.0, 2 }, { -9.0, 0 }, { 1.999, 3 }, { 2.0, 4 }, { 50.0, 5 },
        { -2.0, 0 }, { NAN, 0 } };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.X);
        EXPECT_EQ(p.FindIndex(row.X), row.Index);
        EXPECT_EQ(p.LastIndex(), row.Index);
    }
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
    EXPECT_EQ(p.Minima(), (TVxRealPosArray { { 1.0, -2.0 } }));
    ASSERT_EQ(p.Maxima().size(), 1u);
    EXPECT_NEAR(std::fabs(p.Maxima()[0].X + 1.0) + std::fabs(p.Maxima()[0].Y - 2.0), 0.0, 1e-12);
    p.FindDiffExtrema(); // the slope 3x² - 3 is least at the inflection point 0
    EXPECT_EQ(p.DiffMinima(), (TVxRealPosArray { { 0.0, -3.0 } }));
    EXPECT_TRUE(p.DiffMaxima().empty());
    // Extrema on knots belong to the interval that starts there, not the one ending there.
    p.SetCubic({ -2, -1, 1, 2, 2 });
    p.FindExtrema();
    EXPECT_EQ(p.Maxima(), (TVxRealPosArray { { -1.0, 2.0 } }));
    EXPECT_EQ(p.Minima(), (TVxRealPosArray { { 1.0, -2.0 } }));

    // y = t³ on [0, 1): a double root of the slope with zero curvature, which counts as
    // a minimum, once for each root.
    p.Set({ 0, 1, 2 }, { 0, 1, 1 }, { 0, 3, 0 }, { 0, 3, 1 }, { 1, 1, 0 });
    p.FindExtrema();
    EXPECT_EQ(p.Minima(), (TVxRealPosArray { { 0.0, 0.0 }, { 0.0, 0.0 } }));
    EXPECT_TRUE(p.Maxima().empty());

    // Parabolic pieces (D = 0) around a kink of the slope: both candidates are sentinels,
    // the right one wins, at the knot itself; likewise for a maximum.
    p.Set({ 0, 1, 2, 3 }, { 0, 0, 0, 0 }, { 1, -1, 1, 1 }, { 0, 1, 0, 0 }, { 0, 0, 0, 0 });
    p.FindDiffExtrema();
    EXPECT_EQ(p.DiffMinima(), (TVxRealPosArray { { 1.0, -1.0 } }));
    p.Set({ 0, 1, 2, 3 }, { 0, 0, 0, 0 }, { -1, 1, -1, -1 }, { 0, -1, 0, 0 }, { 0, 0, 0, 0 });
    p.FindDiffExtrema();
    EXPECT_EQ(p.DiffMaxima(), (TVxRealPosArray { { 1.0, 1.0 } }));
}

TEST(IntPolynom, RunningIntegralAndItsExtrema)
{
    TFixedPolynom p;
    p.SetCubic({ -2, -1, 0, 1, 2, 2 });
    TVxRealVector X, Y;
    for (int i = 0; i <= 40; ++i)
        X.Add(-2.0 + 0.1 * i);
    p.Integrate(X, Y);
    ASSERT_EQ(Y.Count(), 41);
    for (int i = 0; i <= 40; ++i)
        EXPECT_NEAR(Y.Value(i), F(X.Value(i)) - F(-2.0), 1e-12) << i;

    // Minima near ±√3, maximum near 0. The refinement is a greedy halving search from
    // the knot of interval I - 2 over [0, 2t]; it reports that interval's integral plus
    // the running value at the sample. Here the first minimum is found exactly.
    ASSERT_EQ(p.IntMinima().size(), 2u);
    ASSERT_EQ(p.IntMaxima().size(), 1u);
    EXPECT_NEAR(p.IntMinima()[0].X, -std::sqrt(3.0), 1e-8);
    EXPECT_NEAR(p.IntMinima()[0].Y, (F(-std::sqrt(3.0)) - F(-2.0)) + (F(-1.7) - F(-2.0)), 1e-8);

    // Steps 1, 2, 3, 4 on unit intervals. The interval index may not pass Count - 2: with
    // three samples the last one is integrated with interval 1's polynomial.
    p.Set({ 0, 1, 2, 3, 4 }, { 1, 2, 3, 4, 4 }, { 0, 0, 0, 0, 0 }, { 0, 0, 0, 0, 0 }, { 0, 0, 0, 0, 0 });
    // The sum starts at the knot at or left of the first sample.
    for (auto [xs, ys] : { std::pair { TVxRealArray { 0, 2, 4 }, TVxRealArray { 0, 3, 1 + 2 * 3 } },
             { { 0.5, 1, 1.5, 2, 2.5 }, { 0, 1, 2 } } }) {
        p.Integrate(*MakeVector(xs), Y);
        const TVxRealArray y = Y.ToArray();
        EXPECT_EQ(TVxRealArray(y.begin(), y.begin() + 3), ys);
    }
    p.Integrate(TVxRealVector(), Y); // nothing to integrate: Y keeps its values
    EXPECT_EQ(Y.Count(), 41);
}
