#include "vx/core/VxArithm.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"
#include "vx/platform/VxFloatText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vx {

namespace {

// Positions (0-based) in the 23-character text form " d.ddddddddddddddE+dddd".
constexpr int CMantissaFrom = 1;   // leading digit
constexpr int CMantissaLength = 16; // digit, point, fourteen digits
constexpr int CExponentFrom = 18;  // exponent sign
constexpr int CExponentLength = 5; // sign and four digits

// Relative tolerance on the outward side of RoundUp/RoundDown (a fraction of Step) and
// absolute tolerance on the inward side (in units of 10^N).
constexpr double COutwardTolerance = 0.001;
constexpr double CInwardTolerance = 1E-9;

// The exponent field of a 23-character text form ("+0003" -> 3).
int TextExponent(const QString& form)
{
    int value = 0;
    int code = 0;
    Val(form.mid(CExponentFrom, CExponentLength), value, code);
    return value;
}

// The mantissa of X/Unit in its decade, rounded with RoundUp or RoundDown, times the
// decade; a rounded mantissa below 1.1 snaps to the decade itself.
double LogRound(bool Up, double X, double Unit, double Step)
{
    double L = FLog10(FDiv(X, Unit));
    double F = L - std::trunc(L);
    L = std::trunc(L);
    if (F < 0) {
        F += 1;
        L -= 1;
    }
    double M = Exp10(F);
    M = Up ? RoundUp(M, Step, 0) : RoundDown(M, Step, 0);
    if (M < 1.1)
        return FMul(Exp10(L), Unit);
    return FMul(Exp10(FLog10(M) + L), Unit);
}

} // namespace

QRect OrderedRect(int X1, int Y1, int X2, int Y2)
{
    QRect r;
    r.setCoords(std::min(X1, X2), std::min(Y1, Y2), std::max(X1, X2), std::max(Y1, Y2));
    return r;
}

void AssignRealArrays(const TVxRealArray& Source, TVxRealArray& Dest)
{
    if (Dest.size() < Source.size())
        throw ERangeError();
    std::copy(Source.begin(), Source.end(), Dest.begin());
}

void SwapReal(double& A, double& B)
{
    std::swap(A, B);
}

void SwapInteger(int& A, int& B)
{
    std::swap(A, B);
}

double Exp10(double X)
{
    if (X == 0)
        return 1.0;
    try {
        return FPower(10.0, X);
    } catch (EMathError&) {
        return CVxMaxReal;
    }
}

double IntExp10(int N)
{
    try {
        return FIntPower(10.0, N);
    } catch (EMathError&) {
        // A negative power only underflows (to a subnormal or 0), which is no error.
        if (N < 0)
            return std::pow(10.0, N);
        return CVxMaxReal;
    }
}

int GetExponent(double X)
{
    if (!std::isfinite(X))
        return 0;
    return TextExponent(RealToText23(X));
}

double ExpMinus(double X, int N)
{
    if (!std::isfinite(X))
        return X;
    const QString form = RealToText23(X);
    const long long E = (long long)TextExponent(form) - N;
    QString text = form.mid(CMantissaFrom, CMantissaLength) + QLatin1Char('E') + QString::number(E);
    if (X < 0)
        text.prepend(QLatin1Char('-'));
    try {
        double value = 0.0;
        int code = 0;
        Val(text, value, code);
        return value;
    } catch (EMathError&) {
        return X;
    }
}

double RoundUp(double X, double Step, int N)
{
    double T = ExpMinus(X, N);
    if (X > 0)
        T = T + (Step - COutwardTolerance * Step);
    else
        T = T - CInwardTolerance;
    const double R = std::trunc(FDiv(T, Step)) * Step;
    return ExpMinus(R, -N);
}

double RoundDown(double X, double Step, int N)
{
    double T = ExpMinus(X, N);
    if (X < 0)
        T = T - (Step - COutwardTolerance * Step);
    else
        T = T + CInwardTolerance;
    const double R = std::trunc(FDiv(T, Step)) * Step;
    return ExpMinus(R, -N);
}

double RoundLogUp(double X, double Unit, double Step)
{
    return LogRound(true, X, Unit, Step);
}

double RoundLogDown(double X, double Unit, double Step)
{
    return LogRound(false, X, Unit, Step);
}

int LastSignificant(double X)
{
    if (!std::isfinite(X))
        return 0;
    QString digits = RealToText23(X).mid(CMantissaFrom, CMantissaLength);
    digits.remove(1, 1); // the decimal point
    int position = int(digits.size());
    while (position > 0 && digits[position - 1] == QLatin1Char('0'))
        --position;
    return position;
}

double EvaluatePolynomial(const TVxRealArray& A, double X, short Degree)
{
    if (Degree < 0 || size_t(Degree) >= A.size())
        throw ERangeError();
    double R = A[size_t(Degree)];
    for (int i = Degree - 1; i >= 0; --i)
        R = X * R + A[size_t(i)];
    // The platform traps an overflow of finite operands; NaN input just propagates.
    if (std::isinf(R) && std::isfinite(X)
        && std::all_of(A.begin(), A.begin() + Degree + 1, [](double a) { return std::isfinite(a); }))
        throw EOverflow();
    return R;
}

} // namespace vx
