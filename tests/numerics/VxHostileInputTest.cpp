// Every fit and evaluation on data with NaN, infinities, huge and tiny values: each call
// either returns or raises one of the library's exceptions; nothing crashes or hangs.

#include "NumericsTestSupport.h"

#include "vx/numerics/VxAkima.h"
#include "vx/numerics/VxApproxSpline.h"
#include "vx/numerics/VxLinRegr.h"
#include "vx/numerics/VxPolyRegr.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <random>

using namespace vx;
using namespace vxtest;

namespace {

const double kSpecial[] = { NAN, INFINITY, -INFINITY, 1e308, -1e308, 1e-308, 0.0, 5e-324 };

void Survives(const char* what, const std::function<void()>& f)
{
    SCOPED_TRACE(what);
    try {
        f();
    } catch (const Exception&) {
    } catch (const std::exception& e) {
        ADD_FAILURE() << "foreign exception: " << e.what();
    }
}

void Exercise(TVxIntPolynom& p, const TVxRealVector& X, const TVxRealVector& Y, const TVxRealVector& W)
{
    Survives("fit", [&] { p.RecalculateCoeffs(-INFINITY, INFINITY, X, Y, &W); });
    Survives("fit without weights", [&] { p.RecalculateCoeffs(-1.7e308, 1.7e308, X, Y, nullptr); });
    Survives("evaluate", [&] {
        for (double x : { -1e300, -1.0, 0.0, 0.5, 3.0, 1e300, double(NAN), double(INFINITY) }) {
            p.Interpolate(x);
            p.Slope(x);
            p.Curvature(x);
        }
    });
    Survives("extrema", [&] { p.FindExtrema(); });
    Survives("slope extrema", [&] { p.FindDiffExtrema(); });
    Survives("integral", [&] {
        TVxRealVector xs, ys;
        for (int i = 0; i < 50; ++i)
            xs.Add(-2.0 + 0.2 * i);
        p.Integrate(xs, ys);
    });
}

} // namespace

TEST(HostileInput, NoCrashNoHang)
{
    std::mt19937 rng(11);
    std::uniform_int_distribution<int> pick(0, int(std::size(kSpecial)) - 1);
    std::uniform_real_distribution<double> u(-3.0, 3.0);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        TVxRealVector X, Y, W;
        const int n = 3 + round % 12;
        for (int i = 0; i < n; ++i) {
            // Mostly ordinary values with a few special ones in x, y or w.
            X.Add(rng() % 4 == 0 ? kSpecial[pick(rng)] : u(rng));
            Y.Add(rng() % 4 == 0 ? kSpecial[pick(rng)] : u(rng));
            W.Add(rng() % 5 == 0 ? kSpecial[pick(rng)] : u(rng));
        }
        TVxLinearRegessionResults lr;
        Survives("LinReg", [&] { LinReg(-INFINITY, INFINITY, X, Y, lr); });
        Survives("LinRegWithWeight", [&] { LinRegWithWeight(-INFINITY, INFINITY, X, Y, W, lr); });
        Survives("OfsReg", [&] { OfsReg(-INFINITY, INFINITY, X, Y, lr); });
        Survives("OfsRegWithWeight", [&] { OfsRegWithWeight(-INFINITY, INFINITY, X, Y, W, lr); });
        TVxPolynomRegessionResults pr;
        pr.Order = round % 6;
        Survives("PolynomRegression", [&] { PolynomRegression(-INFINITY, INFINITY, X, Y, pr); });
        Survives("PolynomRegressionWithWeight", [&] { PolynomRegressionWithWeight(-INFINITY, INFINITY, X, Y, W, pr); });
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
