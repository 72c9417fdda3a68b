#include "vx/numerics/VxAkima.h"

#include "vx/core/VxVector.h"
#include "vx/numerics/VxSmoothing.h"
#include "vx/numerics/VxSort.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

EMathError NotEnoughData() { return EMathError(QStringLiteral("Not enough data!")); }

// (a1 - a0) / (x1 - x0), checked.
double Secant(double x0, double a0, double x1, double a1)
{
    return FDiv(FSub(a1, a0), FSub(x1, x0));
}

} // namespace

void TVxAkima::RecalculateCoeffs(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector* W)
{
    BeginRecalculation();
    int N = 0;
    FKnotCount = 0;
    int Cnt = std::min(X.Count(), Y.Count());
    if (W)
        Cnt = std::min(Cnt, W->Count());
    FXKnots.resize(size_t(Cnt));
    FA.resize(size_t(Cnt));
    TVxRealArray Tx(static_cast<size_t>(Cnt));
    TVxRealArray Ty(static_cast<size_t>(Cnt));

    // Selection: a zero weight masks a point, the size of a weight does not matter.
    for (int i = 0; i < Cnt; ++i) {
        if (W && W->GetValue(i) == 0.0)
            continue;
        const double x = X.GetValue(i);
        if (XStart <= x && x <= XStop) {
            Tx[N] = x;
            Ty[N] = Y.GetValue(i);
            ++N;
        }
    }
    FKnotCount = N;
    if (N < 3)
        throw NotEnoughData();

    QuickSortYtoX(0, N - 1, Tx, Ty);

    // Equal abscissae merge into one knot by a running pairwise mean, which weights the
    // later points more (three equal x give ((y1 + y2)/2 + y3)/2).
    FXKnots[0] = Tx[0];
    FA[0] = Ty[0];
    int k = 1;
    for (int i = 1; i < N; ++i) {
        if (Tx[i - 1] == Tx[i]) {
            Ty[i] = (Ty[i - 1] + Ty[i]) / 2.0;
            FA[k - 1] = Ty[i];
        } else {
            FXKnots[k] = Tx[i];
            FA[k] = Ty[i];
            ++k;
        }
    }
    N = k;
    FKnotCount = N;
    if (N < 3)
        throw NotEnoughData();

    if (FDoSmoothing) {
        FXKnots.resize(size_t(N));
        FA.resize(size_t(N));
        if (FLogSmoothing)
            SmoothVectorLog(FXKnots, FA, FSmoothRange);
        else
            SmoothVector(FXKnots, FA, FSmoothRange);
    }

    FXKnots.resize(size_t(N + 4));
    FA.resize(size_t(N + 4));
    FB.assign(size_t(N + 4), 0.0);
    FC.assign(size_t(N + 4), 0.0);
    FD.assign(size_t(N + 4), 0.0);
    FM.assign(size_t(N + 5), 0.0);
    Extrapolate();
    CalcCoeffs();
    MarkReady();
}

void TVxAkima::Extrapolate()
{
    const int N = FKnotCount;
    TVxRealArray& X = FXKnots;
    TVxRealArray& A = FA;
    TVxRealArray& M = FM;

    // Real points move to positions 2..N+1.
    for (int k = N + 1; k >= 2; --k) {
        X[k] = X[k - 2];
        A[k] = A[k - 2];
    }
    // Two further abscissae on each side continue the spacing.
    X[1] = FSub(FAdd(X[2], X[3]), X[4]);
    X[0] = FSub(FAdd(X[1], X[2]), X[3]);
    X[N + 2] = FSub(FAdd(X[N + 1], X[N]), X[N - 1]);
    X[N + 3] = FSub(FAdd(X[N + 2], X[N + 1]), X[N]);

    for (int k = 2; k <= N; ++k)
        M[k] = Secant(X[k], A[k], X[k + 1], A[k + 1]);

    // The extra ordinates make the secant slope change linearly across the ends.
    A[1] = FAdd(FMul(FSub(X[2], X[1]), FSub(M[3], FMul(2.0, M[2]))), A[2]);
    M[1] = Secant(X[1], A[1], X[2], A[2]);
    A[0] = FAdd(FMul(FSub(X[1], X[0]), FSub(M[2], FMul(2.0, M[1]))), A[1]);
    M[0] = Secant(X[0], A[0], X[1], A[1]);

    A[N + 2] = FAdd(FMul(FSub(FMul(2.0, M[N]), M[N - 1]), FSub(X[N + 2], X[N + 1])), A[N + 1]);
    M[N + 1] = Secant(X[N + 1], A[N + 1], X[N + 2], A[N + 2]);
    A[N + 3] = FAdd(FMul(FSub(FMul(2.0, M[N + 1]), M[N]), FSub(X[N + 3], X[N + 2])), A[N + 2]);
    M[N + 2] = Secant(X[N + 2], A[N + 2], X[N + 3], A[N + 3]);
}

void TVxAkima::CalcCoeffs()
{
    ClearExtrema();
    const int N = FKnotCount;
    TVxRealArray& X = FXKnots;
    TVxRealArray& M = FM;
    try {
        // Knot slopes (Akima 1970): secants weighted by the change of the secants on the
        // far side. With no change on either side the two right-hand secants (which are
        // equal there) are averaged.
        for (int k = 2; k <= N + 2; ++k) {
            if (M[k - 2] == M[k - 1] && M[k] == M[k + 1]) {
                FB[k] = FMul(FAdd(M[k + 1], M[k]), 0.5);
            } else {
                const double w1 = std::fabs(FSub(M[k + 1], M[k]));
                const double w2 = std::fabs(FSub(M[k - 1], M[k - 2]));
                FB[k] = FDiv(FAdd(FMul(w1, M[k - 1]), FMul(w2, M[k])), FAdd(w1, w2));
            }
        }
        // Back to the data's own positions 0..N; entries above N keep their values.
        for (int i = 0; i <= N; ++i) {
            X[i] = X[i + 2];
            FA[i] = FA[i + 2];
            FB[i] = FB[i + 2];
        }
        // Hermite cubic of each interval from the end slopes and the secant.
        for (int i = 0; i <= N + 2; ++i) {
            const double h = FSub(X[i + 1], X[i]);
            FC[i] = FDiv(FSub(FSub(FMul(3.0, M[i + 2]), FMul(2.0, FB[i])), FB[i + 1]), h);
            FD[i] = FDiv(FSub(FAdd(FB[i], FB[i + 1]), FMul(2.0, M[i + 2])), FMul(h, h));
        }
    } catch (EMathError&) {
    }
    FLastIndex = 0;
}

} // namespace vx
