#include "NumericsTestSupport.h"

#include "vx/numerics/VxApproxSpline.h"
#include "vx/numerics/VxLinRegr.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vx;
using namespace vxtest;

namespace {

// Second derivatives of the natural interpolating cubic spline (Thomas algorithm).
std::vector<double> NaturalCurvatures(const std::vector<double>& x, const std::vector<double>& y)
{
    const int n = int(x.size());
    std::vector<double> h(n - 1), M(n, 0.0), a(n), b(n), c(n), d(n);
    for (int i = 0; i < n - 1; ++i)
        h[i] = x[i + 1] - x[i];
    for (int i = 1; i < n - 1; ++i) {
        a[i] = h[i - 1];
        b[i] = 2 * (h[i - 1] + h[i]);
        c[i] = h[i];
        d[i] = 6 * ((y[i + 1] - y[i]) / h[i] - (y[i] - y[i - 1]) / h[i - 1]);
    }
    for (int i = 2; i < n - 1; ++i) {
        const double f = a[i] / b[i - 1];
        b[i] -= f * c[i - 1];
        d[i] -= f * d[i - 1];
    }
    for (int i = n - 2; i >= 1; --i)
        M[i] = (d[i] - (i < n - 2 ? c[i] * M[i + 1] : 0.0)) / b[i];
    return M;
}

double NaturalSpline(const std::vector<double>& x, const std::vector<double>& y, double v)
{
    const std::vector<double> M = NaturalCurvatures(x, y);
    const int n = int(x.size());
    int i = 0;
    while (i < n - 2 && v > x[i + 1])
        ++i;
    const double h = x[i + 1] - x[i], t = v - x[i], u = x[i + 1] - v;
    return M[i] * u * u * u / (6 * h) + M[i + 1] * t * t * t / (6 * h)
        + (y[i] / h - M[i] * h / 6) * u + (y[i + 1] / h - M[i + 1] * h / 6) * t;
}

// The objective the smoothing spline minimises over the natural splines through
// ordinates a: Σ σ·(a - y)² + ∫ f''², the integral exact for piecewise linear f''.
double Objective(const std::vector<double>& x, const std::vector<double>& y,
    const std::vector<double>& sigma, const std::vector<double>& a)
{
    const std::vector<double> M = NaturalCurvatures(x, a);
    double J = 0.0;
    for (size_t i = 0; i < x.size(); ++i)
        J += sigma[i] * (a[i] - y[i]) * (a[i] - y[i]);
    for (size_t i = 0; i + 1 < x.size(); ++i)
        J += (x[i + 1] - x[i]) * (M[i] * M[i] + M[i] * M[i + 1] + M[i + 1] * M[i + 1]) / 3;
    return J;
}

const std::vector<double> kX { 0, 0.5, 1.7, 2, 3.1, 4, 5.5, 6 };
const std::vector<double> kY { 1, 3, 2, -1, 0.5, 2, 4, 3 };

} // namespace

TEST(ApproxSpline, MinimisesTheWeightedRoughnessObjective)
{
    // The smoothed ordinates are the minimum of the objective: no small change of any one
    // of them lowers it, and the curve is the natural spline through them.
    const std::vector<double> sigma { 2, 0.5, 1, 3, 0.8, 1.5, 4, 1 };
    TVxApproxSpline s;
    Points(kX, kY, sigma).Fit(s);
    const std::vector<double> a(s.A().begin(), s.A().begin() + s.KnotCount());
    const double J = Objective(kX, kY, sigma, a);
    for (size_t k = 0; k < a.size(); ++k) {
        SCOPED_TRACE(k);
        for (double eps : { 1e-3, -1e-3 }) {
            std::vector<double> moved = a;
            moved[k] += eps;
            const double dJ = Objective(kX, kY, sigma, moved) - J;
            EXPECT_GT(dJ, 0.0);
            EXPECT_LT(dJ, 1e-4); // quadratic in eps: the gradient vanishes
        }
    }
    const std::vector<double> M = NaturalCurvatures(kX, a);
    for (size_t i = 0; i < a.size(); ++i)
        EXPECT_NEAR(2 * s.C()[i], M[i], 1e-12) << i;
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
        for (int i = 0; i <= s.KnotCount(); ++i) {
            EXPECT_NEAR(s.C()[i], 0.0, 1e-12) << i;
            EXPECT_NEAR(s.D()[i], 0.0, 1e-12) << i;
        }
        for (double v : { -1.0, 0.0, 3.3, 8.9, 12.0 })
            EXPECT_NEAR(s.Interpolate(v), 0.5 - 1.25 * v, 1e-11) << v;
    }
}

TEST(ApproxSpline, WeightLimits)
{
    // Huge weights: the natural interpolating spline.
    TVxApproxSpline s;
    s.SetWeightFactor(1e12);
    Points(kX, kY).Fit(s);
    for (double v = 0.0; v <= 6.0; v += 0.25)
        EXPECT_NEAR(s.Interpolate(v), NaturalSpline(kX, kY, v), 1e-9) << v;
    EXPECT_NEAR(s.Curvature(0.0), 0.0, 1e-15); // natural ends
    const int last = s.KnotCount() - 2;
    const double h = kX[last + 1] - kX[last];
    EXPECT_NEAR(2 * s.C()[last] + 6 * h * s.D()[last], 0.0, 1e-12);

    // Tiny weights: the least-squares straight line.
    const Points p(kX, kY);
    TVxLinearRegessionResults line;
    LinReg(-1e300, 1e300, *p.X, *p.Y, line);
    s.SetWeightFactor(1e-9);
    Points(kX, kY).Fit(s);
    for (double v : { 0.0, 1.0, 2.5, 4.0, 6.0 })
        EXPECT_NEAR(s.Interpolate(v), line.Offset + line.Slope * v, 1e-6) << v;
}

TEST(ApproxSpline, SelectionSortingAndMerging)
{
    // Descending input: the sort reverses x and y but not the weights.
    TVxApproxSpline unsorted, reference, s;
    const std::vector<double> w { 1, 9, 2, 0.5, 4, 3, 0.25, 6 };
    std::vector<double> xr(kX.rbegin(), kX.rend()), yr(kY.rbegin(), kY.rend());
    Points(xr, yr, w).Fit(unsorted);
    Points(kX, kY, w).Fit(reference);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(unsorted.Sigma()[i], w[i]);
        EXPECT_EQ(unsorted.A()[i], reference.A()[i]);
    }
    // Duplicates merge y and weight by the running pairwise mean.
    Points({ 0, 1, 2, 2, 3, 4, 5 }, { 0, 1, 2, 4, 3, 4, 5 }, { 1, 1, 2, 6, 1, 1, 1 }).Fit(s);
    ASSERT_EQ(s.KnotCount(), 6);
    EXPECT_EQ(s.XKnots()[2], 2.0);
    EXPECT_EQ(s.Sigma()[2], 4.0);
}

TEST(ApproxSpline, EndOfTheCurve)
{
    TVxApproxSpline s;
    Points(kX, kY).Fit(s);
    const int N = s.KnotCount();
    // The last knot reports the slope at the start of the last interval, and right of
    // the data the curve continues straight from the last knot with that slope.
    EXPECT_EQ(s.B()[N - 1], s.B()[N - 2]);
    EXPECT_EQ(s.XKnots()[N], s.XKnots()[N - 1]);
    const double h = kX[N - 1] - kX[N - 2];
    const double end = ((s.D()[N - 2] * h + s.C()[N - 2]) * h + s.B()[N - 2]) * h + s.A()[N - 2];
    EXPECT_NEAR(s.Interpolate(kX[N - 1]), end, 1e-12);
    EXPECT_EQ(s.Interpolate(kX[N - 1] + 2.0), s.A()[N - 1] + 2.0 * s.B()[N - 2]);
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
