#pragma once
// Decimal-exact scaling and the nice-number rounding that axes use to place their ends
// and ticks. The rounding works through the 15-significant-digit decimal text of a
// number (RealToText23) rather than binary arithmetic alone, so that steps of 0.1 land
// exactly on the values that are printed.

#include <QRect>

#include "vx/core/VxConsts.h"

namespace vx {

// Rectangle spanned by two corners in any order. right()/bottom() hold the larger
// coordinates themselves (set with setCoords), i.e. the platform's Right/Bottom.
QRect OrderedRect(int X1, int Y1, int X2, int Y2);

// Copies Source into the first elements of Dest without resizing Dest; a Dest shorter
// than Source raises ERangeError and nothing is copied.
void AssignRealArrays(const TVxRealArray& Source, TVxRealArray& Dest);

void SwapReal(double& A, double& B);
void SwapInteger(int& A, int& B);

// 10^X; exactly 1 for X = 0; 1.7E+308 when the power overflows.
double Exp10(double X);
// 10^N by integer power; 1.7E+308 when it overflows.
double IntExp10(int N);

// Decimal exponent of X rounded to 15 significant digits (floor(log10|X|));
// 0 for X = 0 and for NaN or infinities.
int GetExponent(double X);

// X * 10^-N as a decimal shift of the 15-digit mantissa (ExpMinus(0.3, -1) is the double
// nearest to 3). Returns X unchanged when the shifted value would overflow and for NaN
// or infinities.
double ExpMinus(double X, int N);

// X rounded up to a multiple of Step * 10^N. A positive X within 0.1% of Step above a
// multiple stays on that multiple; for X <= 0 an absolute tolerance of 1E-9 (in units
// of 10^N) keeps exact multiples in place. Step = 0 raises EZeroDivide (EInvalidOp for 0/0).
double RoundUp(double X, double Step, int N);
// Mirror image of RoundUp: rounded down, relative tolerance on the negative side.
double RoundDown(double X, double Step, int N);

// X rounded up/down on a logarithmic scale: the mantissa of X/Unit in its decade is
// rounded with RoundUp/RoundDown(M, Step, 0); a rounded mantissa below 1.1 snaps to the
// decade. X/Unit <= 0 raises the logarithm's error (EZeroDivide for 0, EInvalidOp below).
double RoundLogUp(double X, double Unit, double Step);
double RoundLogDown(double X, double Unit, double Step);

// Number of significant decimal digits of X (1..15), 0 for X = 0 (and NaN/infinities).
int LastSignificant(double X);

// A[0] + A[1]*X + ... + A[Degree]*X^Degree by Horner's rule. A Degree outside
// 0..A.size()-1 raises ERangeError; an overflowing result EOverflow.
double EvaluatePolynomial(const TVxRealArray& A, double X, short Degree);

} // namespace vx
