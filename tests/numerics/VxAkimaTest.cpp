#include "NumericsTestSupport.h"

#include "vx/numerics/VxAkima.h"
#include "vx/numerics/VxSmoothing.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

// Akima (1970) written from the secants: two extra secants on each side continue the
// secant differences linearly, the knot slope weights the neighbouring secants by the
// change of the secants on the far side (the mean of both when neither side changes).
std::vector<double> ReferenceSlopes(const std::vector<double>& x, const std::vector<double>& y)
{
    const int n = int(x.size());
    std::vector<double> m(n + 3); // m[i + 2] = secant i, i = -2 .. n
    for (int i = 0; i < n - 1; ++i)
        m[i + 2] = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);
    m[1] = 2 * m[2] - m[3];
    m[0] = 2 * m[1] - m[2];
    m[n + 1] = 2 * m[n] - m[n - 1];
    m[n + 2] = 2 * m[n + 1] - m[n];
    std::vector<double> t(n);
    for (int i = 0; i < n; ++i) {
        const double w1 = std::fabs(m[i + 3] - m[i + 2]);
        const double w2 = std::fabs(m[i + 1] - m[i]);
        t[i] = w1 + w2 == 0 ? (m[i + 1] + m[i + 2]) / 2 : (w1 * m[i + 1] + w2 * m[i + 2]) / (w1 + w2);
    }
    return t;
}

double Hermite(double x0, double x1, double y0, double y1, double t0, double t1, double x)
{
    const double h = x1 - x0;
    const double s = (x - x0) / h;
    const double h00 = (1 + 2 * s) * (1 - s) * (1 - s), h10 = s * (1 - s) * (1 - s);
    const double h01 = s * s * (3 - 2 * s), h11 = s * s * (s - 1);
    return h00 * y0 + h10 * h * t0 + h01 * y1 + h11 * h * t1;
}

} // namespace

TEST(Akima, AgreesWithAnIndependentImplementationInAnyPointOrder)
{
    const std::vector<double> x { 0, 0.7, 1.5, 3, 3.2, 5, 6.5, 8, 8.3, 10 };
    const std::vector<double> y { 1, 2.5, 0.5, -1, 3, 4, 2, 2.2, -3, 0 };
    const std::vector<double> t = ReferenceSlopes(x, y);
    TVxAkima a, shuffled;
    Points(x, y).Fit(a);
    Points({ 8, 0, 3.2, 10, 1.5, 6.5, 0.7, 8.3, 3, 5 }, { 2.2, 1, 3, 0, 0.5, 2, 2.5, -3, -1, 4 }).Fit(shuffled);
    ASSERT_EQ(a.KnotCount(), int(x.size()));
    for (size_t i = 0; i + 1 < x.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(a.Slope(x[i]), t[i], 1e-12);
        for (double f : { 0.0, 0.3, 0.5, 0.9 }) {
            const double xv = x[i] + f * (x[i + 1] - x[i]);
            EXPECT_NEAR(a.Interpolate(xv), Hermite(x[i], x[i + 1], y[i], y[i + 1], t[i], t[i + 1], xv), 1e-12);
            EXPECT_EQ(shuffled.Interpolate(xv), a.Interpolate(xv));
        }
    }
}

TEST(Akima, ExactCases)
{
    // Three points of y = 2x + 1 in any order: a straight line, extended to the left.
    TVxAkima a;
    Points({ 2, -1, 5 }, { 5, -1, 11 }).Fit(a);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(std::fabs(a.B()[i] - 2.0) + std::fabs(a.C()[i]) + std::fabs(a.D()[i]), 0.0, 1e-14) << i;
    EXPECT_NEAR(a.Interpolate(-3.0), -5.0, 1e-13);

    // A quadratic on a uniform grid: equal secant changes on both sides make each knot
    // slope the mean of its two secants, the exact derivative.
    std::vector<double> x, y;
    for (int i = 0; i < 7; ++i) {
        x.push_back(-1.0 + 0.5 * i);
        y.push_back(2 * x.back() * x.back() - 3 * x.back() + 1);
    }
    Points(x, y).Fit(a);
    for (double v = -1.0; v < 2.0; v += 0.125) { // the last knot starts the extrapolated interval
        SCOPED_TRACE(v);
        EXPECT_NEAR(a.Interpolate(v), 2 * v * v - 3 * v + 1, 1e-13);
        EXPECT_NEAR(a.Slope(v), 4 * v - 3, 1e-12);
        EXPECT_NEAR(a.Curvature(v), 4.0, 1e-11);
    }

    // Secants 1, 1 | 3, 3 around x = 2: neither side changes, and the knot takes the
    // right-hand secant 3 (not the mean 2 of its neighbours).
    Points({ 0, 1, 2, 3, 4, 5 }, { 0, 1, 2, 5, 8, 11 }).Fit(a);
    EXPECT_EQ(a.Slope(2.0), 3.0);
}

TEST(Akima, EntryNIsComputedFromTheUnshiftedSlots)
{
    const std::vector<double> x { 0, 1, 3, 4, 7 }, y { 0, 2, 1, 5, 3 };
    TVxAkima a;
    Points(x, y).Fit(a);
    const int N = a.KnotCount();
    ASSERT_EQ(N, 5);
    // XKnots[N] is the first extrapolated abscissa 7 + 4 - 3; XKnots[N + 1] still holds
    // the last data abscissa, B[N + 1] the last data slope, so entry N runs backwards.
    EXPECT_EQ(std::make_pair(a.XKnots()[N], a.XKnots()[N + 1]), std::make_pair(8.0, 7.0));
    EXPECT_EQ(a.B()[N + 1], a.B()[N - 1]);
    const double h = 7.0 - 8.0;
    EXPECT_DOUBLE_EQ(a.C()[N], (3 * a.M()[N + 2] - 2 * a.B()[N] - a.B()[N + 1]) / h);
    EXPECT_DOUBLE_EQ(a.D()[N], (a.B()[N] + a.B()[N + 1] - 2 * a.M()[N + 2]) / (h * h));
    const double t = 9.5 - 8.0; // beyond XKnots[N] the lookup uses entry N
    EXPECT_DOUBLE_EQ(a.Interpolate(9.5), ((a.D()[N] * t + a.C()[N]) * t + a.B()[N]) * t + a.A()[N]);
    // Interval N - 1 joins the last point to the extrapolated one.
    EXPECT_EQ(a.Interpolate(7.0), 3.0);
    EXPECT_NEAR(a.Interpolate(8.0 - 1e-12), a.A()[N], 1e-9);
}

TEST(Akima, SelectionMergingAndSmoothing)
{
    // The sort exchanges the first and the last of the three points at x = 1, so the
    // merge sees 40, 20, 10: ((40 + 20)/2 + 10)/2 = 20 (not the mean 23.3).
    TVxAkima a, plain;
    Points({ 0, 1, 1, 1, 2, 3 }, { 0, 10, 20, 40, 5, 6 }).Fit(a);
    ASSERT_EQ(a.KnotCount(), 4);
    EXPECT_EQ(std::make_pair(a.XKnots()[1], a.Interpolate(1.0)), std::make_pair(1.0, 20.0));

    // A zero weight drops its point; other weights, even negative ones, do not matter.
    Points({ 0, 1, 2, 3, 4 }, { 0, 7, 1, 3, 2 }, { 1, 0, -2, 0.5, 9 }).Fit(a);
    Points({ 0, 2, 3, 4 }, { 0, 1, 3, 2 }).Fit(plain);
    ASSERT_EQ(a.KnotCount(), 4);
    for (double x : { 0.5, 2.2, 3.7 })
        EXPECT_EQ(a.Interpolate(x), plain.Interpolate(x));

    // Smoothing acts on the merged, sorted knot values before the interpolation.
    const std::vector<double> x { 1, 2, 3, 5, 8, 13, 21 }, y { 1, 4, 2, 6, 3, 7, 5 };
    for (bool log : { false, true }) {
        a.SetDoSmoothing(true);
        a.SetLogSmoothing(log);
        a.SetSmoothRange(log ? 0.4 : 3.0);
        Points({ 21, 1, 2, 2, 3, 5, 8, 13 }, { 5, 1, 4, 4, 2, 6, 3, 7 }).Fit(a);
        TVxRealArray xs = x, ys = y;
        log ? SmoothVectorLog(xs, ys, 0.4) : SmoothVector(xs, ys, 3.0);
        EXPECT_EQ(TVxRealArray(a.A().begin(), a.A().begin() + 7), ys) << log;
    }
}

TEST(Akima, Failures)
{
    TVxAkima a;
    auto fit = [&a](const Points& p, double start = -1e300, double stop = 1e300) {
        return MessageOf([&] { p.Fit(a, start, stop); });
    };
    EXPECT_EQ(fit(Points({ 0, 1 }, { 0, 1 })), kNotEnoughData);
    EXPECT_EQ(fit(Points({ 0, 1, 1, 0 }, { 0, 1, 2, 3 })), kNotEnoughData); // two distinct x
    EXPECT_EQ(fit(Points({ 0, 1, 2, 3 }, { 0, 1, 2, 3 }), 0.5, 2.5), kNotEnoughData);
    EXPECT_EQ(fit(Points({ 0, 1, 2 }, { 0, 1 })), kNotEnoughData);
    EXPECT_EQ(fit(Points({ 0, 1, 2, 3 }, { 0, 1, 2, 3 }, { 1, 0, 1 })), kNotEnoughData);
    EXPECT_EQ(a.KnotCount(), 2); // as counted
    EXPECT_EQ(MessageOf([&] { a.Interpolate(1.0); }), kNotEnoughData); // the failed fit left nothing
    // NaN x are never selected; NaN or overflowing y end in a math error.
    Points({ 0, NAN, 1, 2 }, { 0, 5, 1, 2 }).Fit(a);
    EXPECT_EQ(a.KnotCount(), 3);
    EXPECT_THROW(Points({ 0, 1, 2 }, { 0, NAN, 1 }).Fit(a), EMathError);
    EXPECT_THROW(Points({ 0, 1, 2 }, { 1e308, -1e308, 1e308 }).Fit(a), EMathError);
    EXPECT_THROW(Points({ 0, 1, INFINITY }, { 0, 1, 2 }).Fit(a, -INFINITY, INFINITY), EMathError);
}
