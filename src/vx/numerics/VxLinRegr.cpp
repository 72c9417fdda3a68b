#include "vx/numerics/VxLinRegr.h"

#include "vx/core/VxVector.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>

// Every operation that can fault goes through the checked helpers, so that division by
// zero, invalid operations and overflow raise exactly where the recovery rules expect
// them. Each pass re-reads the vectors, in index order.

namespace vx {

namespace {

EMathError NotEnoughData() { return EMathError(QStringLiteral("Not enough data!")); }

// The points of X/Y (and W) inside [XStart, XStop]; f(x, y, w) is called for each used
// point in index order, w = |W[i]| (1 without weights).
struct TSelection {
    double XStart;
    double XStop;
    const TVxCustomRealVector& X;
    const TVxCustomRealVector& Y;
    const TVxCustomRealVector* W;

    template <typename F>
    void ForEach(F f) const
    {
        int count = std::min(X.Count(), Y.Count());
        if (W)
            count = std::min(count, W->Count());
        for (int i = 0; i < count; ++i) {
            const double x = X.GetValue(i);
            if (XStart <= x && x <= XStop)
                f(x, Y.GetValue(i), W ? std::fabs(W->GetValue(i)) : 1.0);
        }
    }
};

double Sqr(double v) { return FMul(v, v); }

// Pass 1 of every routine: count or weight sum, the means and any further sums that
// extra(x, y, w) gathers. Any fault here (no used point gives 0/0) means there was
// nothing to average.
template <typename Extra>
double Means(const TSelection& s, TVxLinearRegessionResults& Results, Extra extra)
{
    double Sw = 0.0;
    try {
        double Swx = 0.0;
        double Swy = 0.0;
        s.ForEach([&](double x, double y, double w) {
            Sw = FAdd(Sw, w);
            Swx = FAdd(Swx, FMul(w, x));
            Swy = FAdd(Swy, FMul(w, y));
            extra(x, y, w);
        });
        Results.AverageX = FDiv(Swx, Sw);
        Results.AverageY = FDiv(Swy, Sw);
    } catch (Exception&) {
        throw NotEnoughData();
    }
    return Sw;
}

void ResetResults(TVxLinearRegessionResults& Results, bool keepOffset)
{
    const double offset = Results.Offset;
    Results = TVxLinearRegessionResults();
    if (keepOffset)
        Results.Offset = offset;
    Results.DeltaSlope = CVxMaxReal;
    if (!keepOffset)
        Results.DeltaOffset = CVxMaxReal;
}

// LinReg and LinRegWithWeight differ only in the weights and in how the variances are
// guarded; n is the point count or the weight sum.
void LineFit(const TSelection& s, bool weighted, TVxLinearRegessionResults& Results)
{
    ResetResults(Results, false);
    const double n = Means(s, Results, [](double, double, double) {});
    if (!weighted && n < 2.0)
        throw NotEnoughData();

    double Sxx = 0.0;
    double Syy = 0.0;
    double Sxy = 0.0;
    const double ax = Results.AverageX;
    const double ay = Results.AverageY;
    s.ForEach([&](double x, double y, double w) {
        const double dx = FSub(x, ax);
        Sxx = FAdd(Sxx, FMul(w, Sqr(dx)));
        Syy = FAdd(Syy, FMul(w, Sqr(FSub(y, ay))));
        Sxy = FAdd(Sxy, FMul(FMul(dx, w), y));
    });
    if (weighted && n > 1.0) {
        Results.VarianceX = FDiv(Sxx, n - 1.0);
        Results.VarianceY = FDiv(Syy, n - 1.0);
    }

    // Only a division by zero is recovered here; 0/0 and the like reach the caller.
    try {
        Results.Slope = FDiv(Sxy, Sxx);
        Results.Offset = FSub(ay, FMul(Results.Slope, ax));
        double chi = 0.0;
        s.ForEach([&](double x, double y, double w) {
            chi = FAdd(chi, FMul(w, Sqr(FSub(FSub(y, FMul(Results.Slope, x)), Results.Offset))));
        });
        Results.ChiSquare = chi;
        if (!weighted) {
            Results.VarianceX = FDiv(Sxx, n - 1.0);
            Results.VarianceY = FDiv(Syy, n - 1.0);
        }
        Results.R = FDiv(FMul(FSqrt(Results.VarianceX), Results.Slope), FSqrt(Results.VarianceY));
        Results.R2 = FSub(1.0, FDiv(Results.ChiSquare, Syy));
    } catch (EZeroDivide&) {
        Results.Slope = CVxMaxReal;
        Results.Offset = CVxMaxReal;
        Results.R = 1.0;
        Results.R2 = 1.0;
        Results.ChiSquare = 0.0;
    }

    try {
        Results.DeltaSlope = FSqrt(FDiv(Results.ChiSquare, FMul(n - 2.0, Sxx)));
        Results.DeltaOffset = FSqrt(FDiv(FMul(FAdd(FDiv(Sqr(ax), Sxx), FDiv(1.0, n)),
            Results.ChiSquare), n - 2.0));
    } catch (EMathError&) {
        Results.DeltaSlope = 0.0;
        Results.DeltaOffset = 0.0;
        Results.ChiSquare = 0.0;
    }
}

// Slope through the fixed offset Results.Offset. The unweighted fit recovers only from a
// division by zero, the weighted one from every math error.
template <typename Recovered>
void OffsetFit(const TSelection& s, bool weighted, TVxLinearRegessionResults& Results)
{
    ResetResults(Results, true);
    const double a = Results.Offset;
    double Sxx0 = 0.0;
    double Sxr = 0.0;
    const double n = Means(s, Results, [&](double x, double y, double w) {
        Sxx0 = FAdd(Sxx0, FMul(FMul(w, x), x));
        Sxr = FAdd(Sxr, FMul(FMul(w, x), FSub(y, a)));
    });
    if (!weighted && n < 1.0)
        throw NotEnoughData();

    double Sxx = 0.0;
    double Syy = 0.0;
    const double ax = Results.AverageX;
    const double ay = Results.AverageY;
    s.ForEach([&](double x, double y, double w) {
        Sxx = FAdd(Sxx, FMul(w, Sqr(FSub(x, ax))));
        Syy = FAdd(Syy, FMul(w, Sqr(FSub(y, ay))));
    });

    try {
        Results.Slope = FDiv(Sxr, Sxx0);
    } catch (Recovered&) {
        Results.Slope = CVxMaxReal;
    }

    try {
        double chi = 0.0;
        s.ForEach([&](double x, double y, double w) {
            chi = FAdd(chi, FMul(w, Sqr(FSub(FSub(y, FMul(Results.Slope, x)), a))));
        });
        Results.ChiSquare = chi;
        Results.DeltaSlope = FSqrt(FDiv(Results.ChiSquare, FMul(n - 1.0, Sxx0)));
        auto variances = [&] {
            Results.VarianceX = FDiv(Sxx, n - 1.0);
            Results.VarianceY = FDiv(Syy, n - 1.0);
        };
        // The two variants compute R2 and the variances in opposite order, which shows
        // when R2 fails (all y equal).
        if (!weighted)
            variances();
        Results.R2 = FSub(1.0, FDiv(Results.ChiSquare, Syy));
        if (weighted)
            variances();
    } catch (Recovered&) {
        Results.DeltaSlope = 0.0;
        Results.R2 = 1.0;
        Results.ChiSquare = 0.0;
    }
}

} // namespace

bool TVxLinearRegessionResults::operator==(const TVxLinearRegessionResults& o) const
{
    return Slope == o.Slope && DeltaSlope == o.DeltaSlope && Offset == o.Offset
        && DeltaOffset == o.DeltaOffset && AverageX == o.AverageX && AverageY == o.AverageY
        && VarianceX == o.VarianceX && VarianceY == o.VarianceY && R2 == o.R2 && R == o.R
        && ChiSquare == o.ChiSquare;
}

void LinReg(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxLinearRegessionResults& Results)
{
    LineFit(TSelection { XStart, XStop, X, Y, nullptr }, false, Results);
}

void LinRegWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxLinearRegessionResults& Results)
{
    LineFit(TSelection { XStart, XStop, X, Y, &W }, true, Results);
}

void OfsReg(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxLinearRegessionResults& Results)
{
    OffsetFit<EZeroDivide>(TSelection { XStart, XStop, X, Y, nullptr }, false, Results);
}

void OfsRegWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxLinearRegessionResults& Results)
{
    OffsetFit<EMathError>(TSelection { XStart, XStop, X, Y, &W }, true, Results);
}

} // namespace vx
