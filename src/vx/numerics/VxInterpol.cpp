#include "vx/numerics/VxInterpol.h"

#include "vx/core/VxVector.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>

namespace vx {

void TVxIntPolynom::RecalculateCoeffs(double, double, const TVxCustomRealVector&,
    const TVxCustomRealVector&, const TVxCustomRealVector*)
{
}

void TVxIntPolynom::ClearExtrema()
{
    for (TVxRealPosArray* list : { &FMinima, &FMaxima, &FDiffMinima, &FDiffMaxima,
             &FIntMinima, &FIntMaxima })
        list->clear();
}

void TVxIntPolynom::BeginRecalculation()
{
    FReady = false;
    FLastIndex = 0;
    ClearExtrema();
}

int TVxIntPolynom::FindIndex(double X)
{
    int I = FLastIndex;
    while (I < FKnotCount && X > FXKnots[I])
        ++I;
    while (I > 0 && X < FXKnots[I])
        --I;
    FLastIndex = I;
    return I;
}

int TVxIntPolynom::CheckedIndex(double X)
{
    if (!FReady)
        throw EMathError(QStringLiteral("Not enough data!"));
    return FindIndex(X);
}

double TVxIntPolynom::Interpolate(double X)
{
    const int I = CheckedIndex(X);
    const double t = X - FXKnots[I];
    return ((FD[I] * t + FC[I]) * t + FB[I]) * t + FA[I];
}

double TVxIntPolynom::Slope(double X)
{
    const int I = CheckedIndex(X);
    const double t = X - FXKnots[I];
    return (2.0 * FC[I] + 3.0 * FD[I] * t) * t + FB[I];
}

double TVxIntPolynom::Curvature(double X)
{
    const int I = CheckedIndex(X);
    const double t = X - FXKnots[I];
    return 2.0 * FC[I] + 6.0 * t * FD[I];
}

double TVxIntPolynom::IntervalIntegral(int i, double h) const
{
    return (((FD[i] * h / 4.0 + FC[i] / 3.0) * h + 0.5 * FB[i]) * h + FA[i]) * h;
}

void TVxIntPolynom::FindExtrema()
{
    if (!FReady)
        throw EMathError(QStringLiteral("Not enough data!"));
    FMinima.clear();
    FMaxima.clear();
    FMinima.reserve(size_t(FKnotCount / 2));
    FMaxima.reserve(size_t(FKnotCount / 2));
    for (int i = 0; i + 1 < FKnotCount; ++i) {
        // Roots of the derivative B + 2Ct + 3Dt²; a fault skips just this interval.
        try {
            const double disc = FSub(FMul(FC[i], FC[i]), FMul(FMul(3.0, FD[i]), FB[i]));
            const double d3 = FMul(3.0, FD[i]);
            if (!(disc >= 0.0) || d3 == 0.0)
                continue;
            const double root = FSqrt(disc);
            const double x1 = FAdd(FXKnots[i], FDiv(FAdd(-FC[i], root), d3));
            const double x2 = FAdd(FXKnots[i], FDiv(FSub(-FC[i], root), d3));
            for (const double x : { x1, x2 }) {
                if (!(FXKnots[i] <= x && x < FXKnots[i + 1]))
                    continue;
                const bool isMinimum = CheckFinite(Curvature(x)) >= 0.0;
                const TVxRealPos p { x, CheckFinite(Interpolate(x)) };
                (isMinimum ? FMinima : FMaxima).push_back(p);
            }
        } catch (EMathError&) {
        }
    }
}

void TVxIntPolynom::FindDiffExtrema()
{
    if (!FReady)
        throw EMathError(QStringLiteral("Not enough data!"));
    FDiffMinima.clear();
    FDiffMaxima.clear();
    FDiffMinima.reserve(size_t(FKnotCount / 2));
    FDiffMaxima.reserve(size_t(FKnotCount / 2));

    // The slope's extremum lies at an inflection point of one of the two intervals next
    // to knot i; an interval without cubic term offers the sentinel instead.
    struct Candidate {
        double X;
        double S;
    };
    auto inflection = [this](int k, int knot, double sentinel) {
        if (FD[k] == 0.0)
            return Candidate { FXKnots[knot], sentinel };
        const double x = FSub(FXKnots[k], FDiv(FC[k], FMul(3.0, FD[k])));
        return Candidate { x, CheckFinite(Slope(x)) };
    };
    auto append = [this](TVxRealPosArray& list, const Candidate& c) {
        list.push_back({ c.X, CheckFinite(Slope(c.X)) });
    };

    for (int i = 1; i + 1 < FKnotCount; ++i) {
        if (!(FB[i] < FB[i - 1] && FB[i] <= FB[i + 1]))
            continue;
        try {
            const Candidate left = inflection(i - 1, i, CVxMaxReal);
            const Candidate right = inflection(i, i, CVxMaxReal);
            append(FDiffMinima, right.S <= left.S ? right : left);
        } catch (EMathError&) {
        }
    }
    for (int i = 1; i + 1 < FKnotCount; ++i) {
        if (!(FB[i - 1] < FB[i] && FB[i + 1] <= FB[i]))
            continue;
        try {
            const Candidate left = inflection(i - 1, i, CVxMinReal);
            const Candidate right = inflection(i, i, CVxMinReal);
            append(FDiffMaxima, left.S <= right.S ? right : left);
        } catch (EMathError&) {
        }
    }
}

void TVxIntPolynom::Integrate(const TVxCustomRealVector& XVector, TVxCustomRealVector& YVector)
{
    if (!FReady)
        throw EMathError(QStringLiteral("Not enough data!"));
    FIntMinima.clear();
    FIntMaxima.clear();
    FIntMinima.reserve(size_t(FKnotCount / 2));
    FIntMaxima.reserve(size_t(FKnotCount / 2));

    const int count = XVector.Count();
    if (count == 0)
        return;
    double Sum = 0.0;
    YVector.SetValue(0, 0.0);
    int I = FindIndex(XVector.GetValue(0));
    double y2 = 0.0; // YVector[j-2]
    double y1 = 0.0; // YVector[j-1]
    for (int j = 1; j < count; ++j) {
        const double xj = XVector.GetValue(j);
        // Whole intervals passed are summed up. The bound taken from the sample count is
        // part of the documented behaviour; the knot bound keeps the index on the arrays.
        while (I < count - 2 && I < FKnotCount && xj >= FXKnots[I + 1]) {
            Sum += IntervalIntegral(I, FXKnots[I + 1] - FXKnots[I]);
            ++I;
        }
        const double y = Sum + IntervalIntegral(I, xj - FXKnots[I]);
        YVector.SetValue(j, y);

        if (j > 1 && j < count - 1) {
            const bool isMinimum = y1 < y2 && y >= y1;
            const bool isMaximum = y2 < y1 && y <= y1;
            if (isMinimum || isMaximum) {
                // Refine by halving steps inside interval I - 2 around sample j - 1.
                const int k = std::clamp(I - 2, 0, FKnotCount);
                double t = XVector.GetValue(j - 1) - FXKnots[k];
                double step = t;
                for (int n = 0; n < 31; ++n) {
                    const double tl = t - step;
                    const double tr = t + step;
                    const double pl = IntervalIntegral(k, tl);
                    const double pr = IntervalIntegral(k, tr);
                    t = (isMinimum ? pl < pr : pl > pr) ? tl : tr;
                    step /= 2.0;
                }
                const TVxRealPos p { FXKnots[k] + t, IntervalIntegral(k, t) + y1 };
                (isMinimum ? FIntMinima : FIntMaxima).push_back(p);
            }
        }
        y2 = y1;
        y1 = y;
    }
}

} // namespace vx
