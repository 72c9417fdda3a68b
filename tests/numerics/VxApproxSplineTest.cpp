#include "NumericsTestSupport.h"

#include "vx/numerics/VxApproxSpline.h"
#include "vx/numerics/VxLinRegr.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

// Second derivatives of the natural interpolating cubic spline (Thomas algorithm).
std::vector<double> NaturalCurvatures(const std::vector<double>& x, const std::vector<double>& y)
{
    const int n = int(x.size());
    std::vector<double> h(n - 1), M(n, 0.0), b(n), d(n);
    for (int i = 0; i < n - 1; ++i)
        h[i] = x[i + 1] - x[i];
    for (int i = 1; i < n - 1; ++i) {
        b[i] = 2 * (h[i - 1] + h[i]);
        d[i] = 6 * ((y[i + 1] - y[i]) / h[i] - (y[i] - y[i - 1]) / h[i - 1]);
        if (i > 1) { // eliminate the sub-diagonal h[i-1]
            b[i] -= h[i - 1] / b[i - 1] * h[i - 1];
            d[i] -= h[i - 1] / b[i - 1] * d[i - 1];
        }
    }
    for (int i = n - 2; i >= 1; --i)
        M[i] = (d[i] - h[i] * M[i + 1]) / b[i];
    return M;
}

// What the smoothing spline minimises over the natural splines through ordinates a:
// Σ σ·(a - y)² + ∫ f''², the integral exact for piecewise linear f''.
double Objective(const std::vector<double>& x, const std::vector<double>& y,
    const std::vector<double>& sigma, const std::vector<double>& a)
{
    const std::vector<double> M = NaturalCurvatures(x, a);
    double J = 0.0;
    for (size_t i = 0; i < x.size(); ++i)
        J += sigma[i] * (a[i] - y[i]) * (a[i] - y[i])
            + (i + 1 < x.size() ? (x[i + 1] - x[i]) * (M[i] * M[i] + M[i] * M[i + 1] + M[i + 1] * M[i + 1]) / 3 : 0.0);
    return J;
}

const std::vector<double> kX { 0, 0.5, 1.7, 2, 3.1, 4, 5.5, 6 };
const std::vector<double> kY { 1, 3, 2, -1, 0.5, 2, 4, 3 };

std::vector<double> Ordinates(const TVxApproxSpline& s) { return { s.A().begin(), s.A().begin() + s.KnotCount() }; }

} // namespace

TEST(ApproxSpline, MinimisesTheWeightedRoughnessObjective)
{
    // No small change of any one ordinate lowers the objective, and the curve is the
    // natural spline through the ordinates (C holds half its second derivative).
    const std::vector<double> sigma { 2, 0.5, 1, 3, 0.8, 1.5, 4, 1 };
    TVxApproxSpline s;
    Points(kX, kY, sigma).Fit(s);
    const std::vector<double> a = Ordinates(s), M = NaturalCurvatures(kX, a);
    const double J = Objective(kX, kY, sigma, a);
    for (size_t k = 0; k < a.size(); ++k) {
        SCOPED_TRACE(k);
        EXPECT_NEAR(2 * s.C()[k], M[k], 1e-12);
        for (double eps : { 1e-3, -1e-3 }) {
            std::vector<double> moved = a;
            moved[k] += eps;
            const double dJ = Objective(kX, kY, sigma, moved) - J;
            EXPECT_GT(dJ, 0.0);
            EXPECT_LT(dJ, 1e-4); // quadratic in eps: the gradient vanishes
        }
    }
}

TEST(ApproxSpline, PointsOnALineAreReproducedForAnyWeights)
{
    // Unsorted input and unequal weights: every band coupling lies inside the system, so
    // nothing disturbs the exact line.
    const std::vector<double> x { 3, 0, 7.5, 1, 2.2, 9, 4, 6, 5.1 };
    std::vector<double> y;
    for (double v : x)
        y.push_back(0.5 - 1.25 * v);
    for (double factor : { 1e-6, 0.3, 1.0, 50.0, 1e9 }) {
        SCOPED_TRACE(factor);
        TVxApproxSpline s;
        s.SetWeightFactor(factor);
        Points(x, y, { 1, 5, 0.2, 3, 8, 0.5, 2, 7, 1.5 }).Fit(s);
        ASSERT_EQ(s.KnotCount(), int(x.size()));
        for (int i = 0; i <= s.KnotCount(); ++i)
            EXPECT_NEAR(std::fabs(s.C()[i]) + std::fabs(s.D()[i]), 0.0, 1e-12) << i;
        for (double v : { -1.0, 0.0, 3.3, 8.9, 12.0 })
            EXPECT_NEAR(s.Interpolate(v), 0.5 - 1.25 * v, 1e-11) << v;
    }
}

TEST(ApproxSpline, WeightLimits)
{
    // Huge weights: the natural interpolating spline (through the points, natural ends).
    TVxApproxSpline s;
    s.SetWeightFactor(1e12);
    Points(kX, kY).Fit(s);
    const std::vector<double> a = Ordinates(s), M = NaturalCurvatures(kX, kY);
    for (size_t i = 0; i < kX.size(); ++i) {
        EXPECT_NEAR(a[i], kY[i], 1e-9) << i; // the distance shrinks as 1/σ
        EXPECT_NEAR(2 * s.C()[i], M[i], 1e-8) << i;
    }
    EXPECT_EQ(s.Curvature(0.0), 0.0);

    // Tiny weights: the least-squares straight line.
    const Points p(kX, kY);
    TVxLinearRegessionResults line;
    LinReg(-1e300, 1e300, *p.X, *p.Y, line);
    s.SetWeightFactor(1e-9);
    p.Fit(s);
    for (double v : { 0.0, 1.0, 2.5, 4.0, 6.0 })
        EXPECT_NEAR(s.Interpolate(v), line.Offset + line.Slope * v, 1e-6) << v;
}

TEST(ApproxSpline, SelectionSortingMergingAndTheEnd)
{
    // Descending input: the sort reverses x and y but not the weights.
    TVxApproxSpline s, reference;
    const std::vector<double> w { 1, 9, 2, 0.5, 4, 3, 0.25, 6 };
    Points({ kX.rbegin(), kX.rend() }, { kY.rbegin(), kY.rend() }, w).Fit(s);
    Points(kX, kY, w).Fit(reference);
    EXPECT_EQ(std::vector<double>(s.Sigma().begin(), s.Sigma().begin() + 8), w);
    EXPECT_EQ(Ordinates(s), Ordinates(reference));

    // The last knot reports the slope at the start of the last interval, and right of
    // the data the curve continues straight from the last knot with that slope.
    const int N = s.KnotCount();
    EXPECT_EQ(s.B()[N - 1], s.B()[N - 2]);
    EXPECT_EQ(s.XKnots()[N], s.XKnots()[N - 1]);
    const double h = kX[N - 1] - kX[N - 2];
    EXPECT_NEAR(s.Interpolate(kX[N - 1]), ((s.D()[N - 2] * h + s.C()[N - 2]) * h + s.B()[N - 2]) * h + s.A()[N - 2], 1e-12);
    EXPECT_EQ(s.Interpolate(kX[N - 1] + 2.0), s.A()[N - 1] + 2.0 * s.B()[N - 2]);

    // Duplicates merge y and weight by the running pairwise mean.
    Points({ 0, 1, 2, 2, 3, 4, 5 }, { 0, 1, 2, 4, 3, 4, 5 }, { 1, 1, 2, 6, 1, 1, 1 }).Fit(s);
    ASSERT_EQ(s.KnotCount(), 6);
    EXPECT_EQ(s.XKnots()[2], 2.0);
    EXPECT_EQ(s.Sigma()[2], 4.0);
}

TEST(ApproxSpline, Failures)
{
    TVxApproxSpline s;
    EXPECT_EQ(MessageOf([&] { Points({ 0, 1, 2, 3, 4 }, { 0, 1, 2, 3, 4 }).Fit(s); }), kNotEnoughData);
    EXPECT_EQ(MessageOf([&] { Points({ 0, 1, 2, 3, 4, 4 }, { 0, 1, 2, 3, 4, 5 }).Fit(s); }), kNotEnoughData);
    EXPECT_THROW(Points(kX, kY, { 1, 1, 0, 1, 1, 1, 1, 1 }).Fit(s), EZeroDivide);
    EXPECT_THROW(Points(kX, { 1, 3, NAN, -1, 0.5, 2, 4, 3 }).Fit(s), EMathError);
    EXPECT_THROW(Points(kX, { 1e308, -1e308, 1e308, -1e308, 1e308, -1e308, 1e308, 0 }).Fit(s), EMathError);
    EXPECT_THROW(s.Slope(1.0), EMathError);
}
