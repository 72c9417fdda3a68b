#pragma once
// Checked floating-point operations. The numerics rely on division by zero, invalid
// operations and overflow being raised as exceptions at the point where they happen
// (the catch sites substitute documented values), so every operation that can fault
// goes through one of these helpers instead of relying on global FPU state.

namespace vx {

// Raises EInvalidOp for NaN and EOverflow for an infinite value; returns x otherwise.
double CheckFinite(double x);

// a / b. b == 0 raises EZeroDivide (a != 0) or EInvalidOp (a == 0, i.e. 0/0);
// an infinite quotient raises EOverflow, a NaN operand EInvalidOp.
double FDiv(double a, double b);

// Checked a*b, a+b, a-b: an infinite or NaN result raises EOverflow / EInvalidOp.
double FMul(double a, double b);
double FAdd(double a, double b);
double FSub(double a, double b);

// Square root; x < 0 raises EInvalidOp.
double FSqrt(double x);

// Natural and base-10 logarithms; x <= 0 raises EInvalidOp (x == 0 raises EZeroDivide,
// as the platform's logarithm does).
double FLn(double x);
double FLog10(double x);

// e^x; an overflowing result raises EOverflow.
double FExp(double x);

// base^exponent for real exponents; invalid combinations raise EInvalidOp,
// an overflowing result EOverflow.
double FPower(double base, double exponent);

// base^n by repeated multiplication (and division for n < 0); overflow raises EOverflow.
double FIntPower(double base, int n);

} // namespace vx
