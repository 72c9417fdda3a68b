#include "vx/core/VxArithm.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <cmath>
#include <utility>

namespace vx {

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

void SwapReal(double& A, double& B) { std::swap(A, B); }
void SwapInteger(int& A, int& B) { std::swap(A, B); }

double Exp10(double X) { return X == 0 ? 1.0 : std::pow(10.0, X); }
double IntExp10(int N) { return std::pow(10.0, N); }
int GetExponent(double X) { return X == 0 ? 0 : int(std::floor(std::log10(std::fabs(X)))); }
double ExpMinus(double X, int N) { return X * std::pow(10.0, -N); }
double RoundUp(double X, double Step, int N) { return std::ceil(X / Step / std::pow(10.0, N)) * Step * std::pow(10.0, N); }
double RoundDown(double X, double Step, int N) { return std::floor(X / Step / std::pow(10.0, N)) * Step * std::pow(10.0, N); }
double RoundLogUp(double X, double, double) { return X; }
double RoundLogDown(double X, double, double) { return X; }
int LastSignificant(double) { return 0; }

double EvaluatePolynomial(const TVxRealArray& A, double X, short Degree)
{
    if (Degree < 0 || size_t(Degree) >= A.size())
        throw ERangeError();
    double r = A[Degree];
    for (int i = Degree - 1; i >= 0; --i)
        r = X * r + A[i];
    return r;
}

} // namespace vx
