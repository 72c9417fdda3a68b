#pragma once
// Moving triangular-weight smoothing of y values over their x positions.

#include "vx/core/VxConsts.h"

namespace vx {

// Replaces each Y[i] by the mean of the Y[j] whose x lies closer than Range to X[i],
// weighted by 1 - |X[i] - X[j]| / Range (the span is searched outward from i, so X
// should be ascending). Only the first min(|X|, |Y|) entries take part; fewer than 3
// raise EMathError "Not enough data!". Range <= 0 leaves Y unchanged.
void SmoothVector(const TVxRealArray& X, TVxRealArray& Y, double Range);

// As SmoothVector with distances measured in decades (|log10 X[i] - log10 X[j]|).
// Non-positive x raise the logarithm's EInvalidOp / EZeroDivide.
void SmoothVectorLog(const TVxRealArray& X, TVxRealArray& Y, double Range);

} // namespace vx
