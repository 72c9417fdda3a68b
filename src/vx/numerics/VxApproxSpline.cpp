#include "vx/numerics/VxApproxSpline.h"

#include "vx/core/VxVector.h"
#include "vx/numerics/VxMatrix.h"
#include "vx/numerics/VxSort.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

EMathError NotEnoughData() { return EMathError(QStringLiteral("Not enough data!")); }

} // namespace

void TVxApproxSpline::RecalculateCoeffs(double XStart, double XStop,
    const TVxCustomRealVector& X, const TVxCustomRealVector& Y, const TVxCustomRealVector* W)
{
    BeginRecalculation();
    int N = 0;
    FKnotCount = 0;
    int Cnt = std::min(X.Count(), Y.Count());
    if (W)
        Cnt = std::min(Cnt, W->Count());
    FXKnots.resize(size_t(Cnt));
    FA.resize(size_t(Cnt));
    FSigma.resize(size_t(Cnt));
    TVxRealArray Tx(static_cast<size_t>(Cnt));
    TVxRealArray Ty(static_cast<size_t>(Cnt));
    TVxRealArray Ts(static_cast<size_t>(Cnt));

    // Selection; zero weights are kept (they fail later, in the division 6/σ).
    for (int i = 0; i < Cnt; ++i) {
        const double x = X.GetValue(i);
        if (XStart <= x && x <= XStop) {
            Tx[N] = x;
            Ty[N] = Y.GetValue(i);
            Ts[N] = W ? FMul(std::fabs(W->GetValue(i)), FWeightFactor) : FWeightFactor;
            ++N;
        }
    }
    FKnotCount = N;
    if (N < 6)
        throw NotEnoughData();

    // The weights deliberately stay in selection order: for unsorted input a weight
    // belongs to whichever point lands at its position.
    QuickSortYtoX(0, N - 1, Tx, Ty);

    // Equal abscissae merge by a running pairwise mean of y and σ.
    FXKnots[0] = Tx[0];
    FSigma[0] = Ts[0];
    FA[0] = Ty[0];
    int k = 1;
    for (int i = 1; i < N; ++i) {
        if (Tx[i - 1] == Tx[i]) {
            Ty[i] = (Ty[i - 1] + Ty[i]) / 2.0;
            Ts[i] = (Ts[i - 1] + Ts[i]) / 2.0;
            FA[k - 1] = Ty[i];
            FSigma[k - 1] = Ts[i];
        } else {
            FXKnots[k] = Tx[i];
            FSigma[k] = Ts[i];
            FA[k] = Ty[i];
            ++k;
        }
    }
    N = k;
    FKnotCount = N;
    if (N < 6)
        throw NotEnoughData();

    FXKnots.resize(size_t(N + 1));
    FA.resize(size_t(N + 1));
    FSigma.resize(size_t(N + 1));
    FB.assign(size_t(N + 1), 0.0);
    FC.assign(size_t(N + 1), 0.0);
    FD.assign(size_t(N + 1), 0.0);
    CalcCoeffs();
    MarkReady();
}

// Reinsch's smoothing spline. With c the half second derivatives at the interior knots,
// w = 6/σ the point weights and Q the second-difference operator, the curvatures solve
// (R + Qᵀ·W·Q)·c = 3·Qᵀ·y, a symmetric pentadiagonal system in the N-2 unknowns c[1..N-2],
// and the smoothed ordinates are a = y - (w/3)·Q·c.
void TVxApproxSpline::CalcCoeffs()
{
    const int N = FKnotCount;
    const int n = N - 2; // unknowns: knots 1..N-2 are rows 0..N-3
    const TVxRealArray& X = FXKnots;
    TVxRealArray& A = FA;
    TVxRealArray& B = FB;
    TVxRealArray& C = FC;
    TVxRealArray& D = FD;
    TVxRealArray h(size_t(N), 0.0);
    TVxRealArray r(size_t(N), 0.0);

    // Spacings h, their reciprocals r; C holds r², B the point weights w, D the sums
    // r[i-1] + r[i] (the diagonal of Q) until they are overwritten.
    for (int i = 0; i <= N - 2; ++i) {
        h[i] = FSub(X[i + 1], X[i]);
        r[i] = FDiv(1.0, h[i]);
        C[i] = FMul(r[i], r[i]);
        B[i] = FDiv(6.0, FSigma[i]);
    }
    B[N - 1] = FDiv(6.0, FSigma[N - 1]);
    for (int i = 1; i <= N - 2; ++i)
        D[i] = FAdd(r[i - 1], r[i]);
    const TVxRealArray& w = B;

    // Band matrix, column 2 the diagonal. Only couplings between unknowns of the system
    // are entered; the second off-diagonal of knots i-1 and i+1 exists for i <= N-3.
    TVxRealMatrix M(size_t(n), TVxRealArray(5, 0.0));
    for (int i = 2; i <= N - 3; ++i) {
        const double e = FMul(FMul(w[i], r[i - 1]), r[i]);
        M[i][0] = e;
        M[i - 2][4] = e;
    }
    for (int i = 1; i <= N - 3; ++i) {
        const double e = FSub(FSub(h[i], FMul(FMul(w[i], r[i]), D[i])),
            FMul(FMul(w[i + 1], r[i]), D[i + 1]));
        M[i][1] = e;
        M[i - 1][3] = e;
    }
    for (int i = 0; i <= N - 3; ++i) {
        M[i][2] = FAdd(FAdd(FAdd(FMul(FMul(D[i + 1], D[i + 1]), w[i + 1]),
                           FMul(2.0, FAdd(h[i], h[i + 1]))),
                           FMul(w[i], C[i])),
            FMul(w[i + 2], C[i + 1]));
    }
    auto secant = [&](int i) { return FMul(FSub(A[i + 1], A[i]), r[i]); };
    for (int i = 0; i <= N - 3; ++i)
        C[i] = FMul(3.0, FSub(secant(i + 1), secant(i)));

    SolveBand(n, 2, 2, M, C);

    // Natural ends: zero curvature at the first and the last knot.
    for (int i = N - 2; i >= 1; --i)
        C[i] = C[i - 1];
    C[0] = 0.0;
    C[N - 1] = 0.0;

    // Smoothed ordinates a = y - (w/3)·Q·c.
    A[0] = FAdd(A[0], FMul(FMul(w[0] / 3.0, r[0]), FSub(C[0], C[1])));
    for (int i = 1; i <= N - 2; ++i) {
        const double qc = FAdd(FSub(FMul(C[i - 1], r[i - 1]), FMul(D[i], C[i])), FMul(C[i + 1], r[i]));
        A[i] = FSub(A[i], FMul(w[i] / 3.0, qc));
    }
    A[N - 1] = FSub(A[N - 1], FMul(FMul(w[N - 1] / 3.0, r[N - 2]), FSub(C[N - 2], C[N - 1])));

    // Slopes and cubic terms of each interval (B and D stop being scratch here).
    for (int i = 0; i <= N - 2; ++i) {
        B[i] = FSub(FMul(FSub(A[i + 1], A[i]), r[i]), FMul(FAdd(FMul(2.0, C[i]), C[i + 1]), h[i]) / 3.0);
        D[i] = FMul(FSub(C[i + 1], C[i]), r[i]) / 3.0;
    }

    // Entry N continues the last interval to the right; the last knot reports the slope
    // at the start of its interval.
    FXKnots[N] = FXKnots[N - 1];
    A[N] = A[N - 1];
    B[N - 1] = B[N - 2];
    B[N] = B[N - 1];
    C[N] = C[N - 1];
    D[N] = D[N - 1];
    FLastIndex = 0;
}

} // namespace vx
