// Every fit and evaluation on data with NaN, infinities, huge and tiny values: each call
// either returns or raises one of the library's exceptions (anything else fails the
// test through gtest); nothing crashes or hangs.

#include "NumericsTestSupport.h"

#include "vx/numerics/VxAkima.h"
#include "vx/numerics/VxApproxSpline.h"
#include "vx/numerics/VxLinRegr.h"
#include "vx/numerics/VxPolyRegr.h"

#include <gtest/gtest.h>

#include <random>

using namespace vx;
using namespace vxtest;

namespace {

void Exercise(TVxIntPolynom& p, const TVxRealVector& X, const TVxRealVector& Y, const TVxRealVector& W)
{
    MessageOf([&] { p.RecalculateCoeffs(-INFINITY, INFINITY, X, Y, &W); });
    MessageOf([&] { p.RecalculateCoeffs(-1.7e308, 1.7e308, X, Y, nullptr); });
    for (double x : { -1e300, -1.0, 0.0, 0.5, 3.0, 1e300, double(NAN), double(INFINITY) })
        MessageOf([&] { (void)(p.Interpolate(x) + p.Slope(x) + p.Curvature(x)); });
    MessageOf([&] { p.FindExtrema(); });
    MessageOf([&] { p.FindDiffExtrema(); });
    MessageOf([&] {
        TVxRealVector xs, ys;
        for (int i = 0; i < 50; ++i)
            xs.Add(-2.0 + 0.2 * i);
        p.Integrate(xs, ys);
    });
}

} // namespace

TEST(HostileInput, NoCrashNoHang)
{
    const double special[] = { NAN, INFINITY, -INFINITY, 1e308, -1e308, 1e-308, 0.0, 5e-324 };
    std::mt19937 rng(11);
    std::uniform_int_distribution<int> pick(0, int(std::size(special)) - 1);
    std::uniform_real_distribution<double> u(-3.0, 3.0);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        TVxRealVector X, Y, W; // mostly ordinary values with a few special ones
        for (int i = 0; i < 3 + round % 12; ++i) {
            X.Add(rng() % 4 == 0 ? special[pick(rng)] : u(rng));
            Y.Add(rng() % 4 == 0 ? special[pick(rng)] : u(rng));
            W.Add(rng() % 5 == 0 ? special[pick(rng)] : u(rng));
        }
        TVxLinearRegessionResults lr;
        MessageOf([&] { LinReg(-INFINITY, INFINITY, X, Y, lr); });
        MessageOf([&] { LinRegWithWeight(-INFINITY, INFINITY, X, Y, W, lr); });
        MessageOf([&] { OfsReg(-INFINITY, INFINITY, X, Y, lr); });
        MessageOf([&] { OfsRegWithWeight(-INFINITY, INFINITY, X, Y, W, lr); });
        TVxPolynomRegessionResults pr;
        pr.Order = round % 6;
        MessageOf([&] { PolynomRegression(-INFINITY, INFINITY, X, Y, pr); });
        MessageOf([&] { PolynomRegressionWithWeight(-INFINITY, INFINITY, X, Y, W, pr); });
        TVxAkima akima;
        akima.SetDoSmoothing(round % 3 == 0);
        akima.SetLogSmoothing(round % 2 == 0);
        akima.SetSmoothRange(0.7);
        Exercise(akima, X, Y, W);
        TVxApproxSpline spline;
        spline.SetWeightFactor(round % 2 ? 1.0 : 1e-300);
        Exercise(spline, X, Y, W);
    }
}
