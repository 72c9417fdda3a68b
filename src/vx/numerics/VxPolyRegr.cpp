#include "vx/numerics/VxPolyRegr.h"

#include "vx/core/VxArithm.h"
#include "vx/core/VxVector.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vx {

namespace {

EMathError NotEnoughData() { return EMathError(QStringLiteral("Not enough data!")); }

EMathError NotPositiveDefinite(const char* where)
{
    return EMathError(QStringLiteral("Cholesky Decomposition (%1): Matrix is not positive definite!")
                          .arg(QLatin1String(where)));
}

// The used points of the value arrays: XStart <= x <= XStop. Without weights every point
// has weight 1; Signed() gives the raw weight, Abs() its absolute value.
struct TPoints {
    const double* X;
    const double* Y;
    const double* W;
    int Count;
    double XStart;
    double XStop;

    TPoints(double start, double stop, const TVxCustomRealVector& x,
        const TVxCustomRealVector& y, const TVxCustomRealVector* w)
        : X(x.Data()), Y(y.Data()), W(w ? w->Data() : nullptr),
          Count(std::min(x.Count(), y.Count())), XStart(start), XStop(stop)
    {
        if (w)
            Count = std::min(Count, w->Count());
    }

    bool Used(int i) const { return XStart <= X[i] && X[i] <= XStop; }
    double Signed(int i) const { return W ? W[i] : 1.0; }
    double Abs(int i) const { return W ? std::fabs(W[i]) : 1.0; }
};

// Normal equations of the fit in x^0..x^Order. Only the first row (Σw·x^k) and the last
// column (Σw·x^(Order+k)) are summed; the rest of the Hankel matrix is copied along its
// anti-diagonals, the lower triangle mirrored.
void NormalEquations(const TPoints& p, int Order, TVxRealMatrix& M, TVxRealArray& v)
{
    const size_t size = size_t(Order + 1);
    M.assign(size, TVxRealArray(size, 0.0));
    v.assign(size, 0.0);
    for (int i = 0; i < p.Count; ++i) {
        if (!p.Used(i))
            continue;
        const double w = p.Signed(i);
        const double x = p.X[i];
        const double wy = w * p.Y[i];
        double power = 1.0;
        v[0] += wy;
        M[0][0] += w;
        for (int k = 1; k <= Order; ++k) {
            power *= x;
            v[k] += wy * power;
            M[0][k] += w * power;
        }
        for (int k = 1; k <= Order; ++k) {
            power *= x;
            M[k][Order] += w * power;
        }
    }
    for (int i = 1; i < Order; ++i)
        for (int j = i; j < Order; ++j)
            M[i][j] = M[i - 1][j + 1];
    for (size_t i = 1; i < size; ++i)
        for (size_t j = 0; j < i; ++j)
            M[i][j] = M[j][i];
    // Overflowing powers surface here rather than as NaN coefficients.
    for (const TVxRealArray& row : M)
        for (double e : row)
            CheckFinite(e);
    for (double e : v)
        CheckFinite(e);
}

// Standard errors s·sqrt(((X^T W X)^-1)_kk) from the Cholesky factor: column k of the
// inverse is the solution for the unit vector e_k.
TVxRealArray CoeffErrors(const TVxRealMatrix& R, double ChiSquare, double dof)
{
    const size_t size = R.size();
    TVxRealArray errors(size, 0.0);
    try {
        const double s2 = FDiv(ChiSquare, dof);
        if (!(dof > 0.0))
            throw EInvalidOp();
        for (size_t k = 0; k < size; ++k) {
            TVxRealArray e(size, 0.0);
            e[k] = 1.0;
            CholeskySolve(R, e);
            errors[k] = FSqrt(FMul(s2, e[k]));
        }
    } catch (EMathError&) {
        std::fill(errors.begin(), errors.end(), 0.0);
    }
    return errors;
}

void PolyFit(const TPoints& p, bool weighted, TVxPolynomRegessionResults& Results)
{
    const int Order = Results.Order;
    // The evaluation takes the degree as a 16-bit integer.
    if (Order < 0 || Order > std::numeric_limits<short>::max())
        throw ERangeError();
    Results.AverageX = Results.AverageY = 0.0;
    Results.VarianceX = Results.VarianceY = 0.0;
    Results.QRel = 0.0;
    Results.ChiSquare = 0.0;

    // Pass 1: weight sum (the point count without weights) and means.
    double Sw = 0.0;
    double Swx = 0.0;
    double Swy = 0.0;
    for (int i = 0; i < p.Count; ++i) {
        if (!p.Used(i))
            continue;
        const double w = p.Abs(i);
        Sw += w;
        Swx += w * p.X[i];
        Swy += w * p.Y[i];
    }
    try {
        Results.AverageX = FDiv(CheckFinite(Swx), CheckFinite(Sw));
        Results.AverageY = FDiv(CheckFinite(Swy), Sw);
    } catch (EMathError&) {
        throw NotEnoughData();
    }
    if (std::trunc(Sw) < double(Order) + 1.0)
        throw NotEnoughData();

    TVxRealMatrix M;
    TVxRealArray v;
    NormalEquations(p, Order, M, v);
    CholeskyDecompose(M);
    CholeskySolve(M, v);
    Results.Coeffs = v;

    // Pass 2: spreads and residuals.
    double Sxx = 0.0;
    double Syy = 0.0;
    double chi = 0.0;
    const double ax = Results.AverageX;
    const double ay = Results.AverageY;
    for (int i = 0; i < p.Count; ++i) {
        if (!p.Used(i))
            continue;
        const double w = p.Abs(i);
        const double x = p.X[i];
        const double y = p.Y[i];
        Sxx += w * ((x - ax) * (x - ax));
        Syy += w * ((y - ay) * (y - ay));
        const double res = y - EvaluatePolynomial(Results.Coeffs, x, short(Order));
        chi += w * (res * res);
    }
    CheckFinite(Sxx);
    CheckFinite(Syy);
    Results.ChiSquare = CheckFinite(chi);
    Results.DeltaCoeffs = CoeffErrors(M, Results.ChiSquare, Sw - Order - 1.0);

    if (weighted) {
        Results.r2 = FSub(1.0, FDiv(Results.ChiSquare, Syy));
        Results.VarianceY = FDiv(Syy, Sw - 1.0);
        Results.VarianceX = FDiv(Sxx, Sw - 1.0);
    } else {
        Results.VarianceX = FDiv(Sxx, Sw - 1.0);
        Results.VarianceY = FDiv(Syy, Sw - 1.0);
        Results.r2 = FSub(1.0, FDiv(Results.ChiSquare, Syy));
    }
    Results.QRel = FSqrt(FDiv(Results.ChiSquare, Sw - Order));
}

} // namespace

void PolynomRegression(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxPolynomRegessionResults& Results)
{
    PolyFit(TPoints(XStart, XStop, X, Y, nullptr), false, Results);
}

void PolynomRegressionWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxPolynomRegessionResults& Results)
{
    PolyFit(TPoints(XStart, XStop, X, Y, &W), true, Results);
}

void CholeskyDecompose(TVxRealMatrix& A)
{
    const size_t n = A.size();
    bool square = n > 0;
    for (const TVxRealArray& row : A)
        square = square && row.size() == n;
    if (!square)
        throw EMathError(QStringLiteral("Cholesky Decomposition: Matrix is not square!"));

    if (!(A[0][0] > 0.0))
        throw NotPositiveDefinite("[0,0]");
    A[0][0] = FSqrt(A[0][0]);
    for (size_t j = 1; j < n; ++j) {
        for (size_t i = 0; i < j; ++i) {
            double sum = A[i][j];
            for (size_t k = 0; k < i; ++k)
                sum = FSub(sum, FMul(A[k][i], A[k][j]));
            A[i][j] = FDiv(sum, A[i][i]);
        }
        double diag = A[j][j];
        for (size_t k = 0; k < j; ++k)
            diag = FSub(diag, FMul(A[k][j], A[k][j]));
        if (!(diag > 0.0))
            throw NotPositiveDefinite("[i,i]");
        A[j][j] = FSqrt(diag);
    }
}

void CholeskySolve(const TVxRealMatrix& R, TVxRealArray& B)
{
    const int n = int(R.size());
    if (int(B.size()) < n)
        throw ERangeError();
    if (n == 0)
        return;
    // Forward: R^T·z = B.
    B[0] = FDiv(B[0], R[0][0]);
    for (int j = 1; j < n; ++j) {
        double sum = B[j];
        for (int k = 0; k < j; ++k)
            sum = FSub(sum, FMul(B[k], R[k][j]));
        B[j] = FDiv(sum, R[j][j]);
    }
    // Backward: R·x = z.
    B[n - 1] = FDiv(B[n - 1], R[n - 1][n - 1]);
    for (int i = n - 2; i >= 0; --i) {
        double sum = B[i];
        for (int k = n - 1; k > i; --k)
            sum = FSub(sum, FMul(B[k], R[i][k]));
        B[i] = FDiv(sum, R[i][i]);
    }
}

} // namespace vx
