#include "vx/platform/VxFloatMath.h"

#include "vx/platform/VxExceptions.h"

#include <cmath>

namespace vx {

double CheckFinite(double x)
{
    if (std::isnan(x))
        throw EInvalidOp();
    if (std::isinf(x))
        throw EOverflow();
    return x;
}

double FDiv(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        throw EInvalidOp();
    if (b == 0.0) {
        if (a == 0.0)
            throw EInvalidOp();
        throw EZeroDivide();
    }
    return CheckFinite(a / b);
}

double FMul(double a, double b) { return CheckFinite(a * b); }
double FAdd(double a, double b) { return CheckFinite(a + b); }
double FSub(double a, double b) { return CheckFinite(a - b); }

double FSqrt(double x)
{
    if (std::isnan(x) || x < 0.0)
        throw EInvalidOp();
    return CheckFinite(std::sqrt(x));
}

double FLn(double x)
{
    if (std::isnan(x) || x < 0.0)
        throw EInvalidOp();
    if (x == 0.0)
        throw EZeroDivide();
    return CheckFinite(std::log(x));
}

double FLog10(double x)
{
    if (std::isnan(x) || x < 0.0)
        throw EInvalidOp();
    if (x == 0.0)
        throw EZeroDivide();
    return CheckFinite(std::log10(x));
}

double FExp(double x)
{
    return CheckFinite(std::exp(CheckFinite(x)));
}

double FPower(double base, double exponent)
{
    if (std::isnan(base) || std::isnan(exponent))
        throw EInvalidOp();
    if (base == 0.0 && exponent < 0.0)
        throw EZeroDivide();
    if (base < 0.0 && exponent != std::trunc(exponent))
        throw EInvalidOp();
    return CheckFinite(std::pow(base, exponent));
}

double FIntPower(double base, int n)
{
    double result = 1.0;
    const bool negative = n < 0;
    long long k = n;
    if (negative)
        k = -k;
    double factor = base;
    // Square-and-multiply keeps the multiplication count logarithmic in |n|.
    while (k > 0) {
        if (k & 1)
            result = FMul(result, factor);
        k >>= 1;
        if (k > 0)
            factor = FMul(factor, factor);
    }
    return negative ? FDiv(1.0, result) : result;
}

} // namespace vx
