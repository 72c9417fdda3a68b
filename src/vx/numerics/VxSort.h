#pragma once
// In-place quicksorts of an abscissa array that carry paired arrays along.

#include "vx/core/VxConsts.h"

namespace vx {

// Sorts X[L..R] ascending (Hoare partition, middle pivot) and permutes Y alike.
// Not stable: pairs with equal x may change their order. Inputs that would make the
// partitioning quadratic (x rising and falling again, beyond a few thousand points) are
// finished by a stable sort, so the time stays O(n log n); NaN never stalls it. Indices
// outside an array raise ERangeError; L >= R does nothing.
void QuickSortYtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y);

// The same, with a third array W (e.g. weights) permuted alongside.
void QuickSortYWtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y, TVxRealArray& W);

} // namespace vx
