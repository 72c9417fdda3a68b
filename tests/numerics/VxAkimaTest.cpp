#include "NumericsTestSupport.h"

#include "vx/numerics/VxAkima.h"
#include "vx/numerics/VxSmoothing.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vx;
using namespace vxtest;

namespace {

struct Points {
    std::unique_ptr<TVxRealVector> X, Y, W;
    Points(const std::vector<double>& x, const std::vector<double>& y, const std::vector<double>& w = {})
        : X(MakeVector(x)), Y(MakeVector(y)), W(w.empty() ? nullptr : MakeVector(w)) {}
    void Fit(TVxAkima& a, double start = -1e300, double stop = 1e300) const
    {
        a.RecalculateCoeffs(start, stop, *X, *Y, W.get());
    }
};

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

TEST(Akima, AgreesWithAnIndependentImplementation)
{
    const std::vector<double> x { 0, 0.7, 1.5, 3, 3.2, 5, 6.5, 8, 8.3, 10 };
    const std::vector<double> y { 1, 2.5, 0.5, -1, 3, 4, 2, 2.2, -3, 0 };
    TVxAkima a;
    Points(x, y).Fit(a);
    ASSERT_EQ(a.KnotCount(), int(x.size()));
    const std::vector<double> t = ReferenceSlopes(x, y);
    for (size_t i = 0; i + 1 < x.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(a.Slope(x[i]), t[i], 1e-12);
        for (double f : { 0.0, 0.3, 0.5, 0.9 }) {
            const double xv = x[i] + f * (x[i + 1] - x[i]);
            EXPECT_NEAR(a.Interpolate(xv), Hermite(x[i], x[i + 1], y[i], y[i + 1], t[i], t[i + 1], xv), 1e-12);
        }
    }
}

TEST(Akima, StraightLinesAreReproduced)
{
    TVxAkima a;
    Points({ 2, -1, 5 }, { 5, -1, 11 }).Fit(a); // y = 2x + 1, any order
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(a.B()[i], 2.0, 1e-14);
        EXPECT_NEAR(a.C()[i], 0.0, 1e-14);
        EXPECT_NEAR(a.D()[i], 0.0, 1e-14);
    }
    EXPECT_NEAR(a.Interpolate(0.25), 1.5, 1e-14);
    EXPECT_NEAR(a.Interpolate(-3.0), -5.0, 1e-13); // first interval extended to the left
}

TEST(Akima, QuadraticsOnAUniformGridAreReproduced)
{
    // Secant changes are equal on both sides, so each knot slope is the mean of its two
    // secants, the exact derivative; the extrapolated secants continue the same way.
    std::vector<double> x, y;
    for (int i = 0; i < 7; ++i) {
        x.push_back(-1.0 + 0.5 * i);
        y.push_back(2 * x.back() * x.back() - 3 * x.back() + 1);
    }
    TVxAkima a;
    Points(x, y).Fit(a);
    for (double v = -1.0; v < 2.0; v += 0.125) { // the last knot starts the extrapolated interval
        SCOPED_TRACE(v);
        EXPECT_NEAR(a.Interpolate(v), 2 * v * v - 3 * v + 1, 1e-13);
        EXPECT_NEAR(a.Slope(v), 4 * v - 3, 1e-12);
        EXPECT_NEAR(a.Curvature(v), 4.0, 1e-11);
    }
}

TEST(Akima, EqualSecantsOnBothSidesTakeTheRightHandSlope)
{
    TVxAkima a;
    Points({ 0, 1, 2, 3, 4, 5 }, { 0, 1, 2, 5, 8, 11 }).Fit(a);
    EXPECT_DOUBLE_EQ(a.Slope(2.0), 3.0);
}

TEST(Akima, PointOrderDoesNotMatter)
{
    const std::vector<double> x { 0, 1, 2.5, 3, 4.5, 6 }, y { 1, 3, 2, 5, 4, 4.5 };
    TVxAkima sorted, shuffled;
    Points(x, y).Fit(sorted);
    Points({ 4.5, 0, 6, 2.5, 1, 3 }, { 4, 1, 4.5, 2, 3, 5 }).Fit(shuffled);
    for (int i = 0; i < 6; ++i) {
        EXPECT_DOUBLE_EQ(sorted.XKnots()[i], shuffled.XKnots()[i]);
        EXPECT_DOUBLE_EQ(sorted.B()[i], shuffled.B()[i]);
        EXPECT_DOUBLE_EQ(sorted.D()[i], shuffled.D()[i]);
    }
}

TEST(Akima, DuplicatesMergeByTheRunningPairwiseMeanAfterTheUnstableSort)
{
    // The sort exchanges the first and the last of the three points at x = 1, so the
    // merge sees 40, 20, 10: ((40 + 20)/2 + 10)/2 = 20 (not the mean 23.3).
    TVxAkima a;
    Points({ 0, 1, 1, 1, 2, 3 }, { 0, 10, 20, 40, 5, 6 }).Fit(a);
    ASSERT_EQ(a.KnotCount(), 4);
    EXPECT_EQ(a.XKnots()[1], 1.0);
    EXPECT_DOUBLE_EQ(a.A()[1], 20.0);
    EXPECT_DOUBLE_EQ(a.Interpolate(1.0), 20.0);
}

TEST(Akima, WeightsOnlyMaskPoints)
{
    TVxAkima masked, plain;
    Points({ 0, 1, 2, 3, 4 }, { 0, 7, 1, 3, 2 }, { 1, 0, -2, 0.5, 9 }).Fit(masked);
    Points({ 0, 2, 3, 4 }, { 0, 1, 3, 2 }).Fit(plain);
    ASSERT_EQ(masked.KnotCount(), 4);
    for (double x : { 0.5, 2.2, 3.7 })
        EXPECT_DOUBLE_EQ(masked.Interpolate(x), plain.Interpolate(x));
}

TEST(Akima, SmoothingActsOnTheMergedKnotsBeforeInterpolating)
{
    const std::vector<double> x { 1, 2, 3, 5, 8, 13, 21 }, y { 1, 4, 2, 6, 3, 7, 5 };
    for (bool log : { false, true }) {
        SCOPED_TRACE(log);
        TVxAkima smoothed, reference;
        smoothed.SetDoSmoothing(true);
        smoothed.SetLogSmoothing(log);
        smoothed.SetSmoothRange(log ? 0.4 : 3.0);
        Points(x, y).Fit(smoothed);
        TVxRealArray ys = y;
        TVxRealArray xs = x;
        log ? SmoothVectorLog(xs, ys, 0.4) : SmoothVector(xs, ys, 3.0);
        Points(x, ys).Fit(reference);
        for (double v : { 1.5, 4.0, 10.0, 20.0 })
            EXPECT_DOUBLE_EQ(smoothed.Interpolate(v), reference.Interpolate(v));
        EXPECT_NE(smoothed.Interpolate(2.0), 4.0);
    }
}

TEST(Akima, TooFewPointsAndBadValues)
{
    auto message = [](const Points& p, double start = -1e300, double stop = 1e300) {
        TVxAkima a;
        try {
            p.Fit(a, start, stop);
        } catch (const EMathError& e) {
            return e.Message();
        }
        return QString();
    };
    EXPECT_EQ(message(Points({ 0, 1 }, { 0, 1 })), QStringLiteral("Not enough data!"));
    EXPECT_EQ(message(Points({ 0, 1, 1, 0 }, { 0, 1, 2, 3 })), QStringLiteral("Not enough data!"));
    EXPECT_EQ(message(Points({ 0, 1, 2, 3 }, { 0, 1, 2, 3 }), 0.5, 2.5), QStringLiteral("Not enough data!"));
    EXPECT_EQ(message(Points({ 0, 1, 2 }, { 0, 1 })), QStringLiteral("Not enough data!"));
    // NaN x are never selected; NaN or overflowing y end in a math error.
    TVxAkima a;
    Points({ 0, NAN, 1, 2 }, { 0, 5, 1, 2 }).Fit(a);
    EXPECT_EQ(a.KnotCount(), 3);
    EXPECT_THROW(Points({ 0, 1, 2 }, { 0, NAN, 1 }).Fit(a), EMathError);
    EXPECT_THROW(Points({ 0, 1, 2 }, { 1e308, -1e308, 1e308 }).Fit(a), EMathError);
    EXPECT_THROW(Points({ 0, 1, INFINITY }, { 0, 1, 2 }).Fit(a, -INFINITY, INFINITY), EMathError);
    EXPECT_THROW(a.Interpolate(1.0), EMathError); // the failed fit left nothing to evaluate
}
