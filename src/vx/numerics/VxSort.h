#pragma once
// In-place quicksorts of an abscissa array that carry paired arrays along.

#include "vx/core/VxConsts.h"

namespace vx {

// Sorts X[L..R] ascending (Hoare partition, middle pivot) and permutes Y alike.
// Not stable: pairs with equal x may change their order. Indices outside an array
// raise ERangeError; L >= R does nothing.
void QuickSortYtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y);

// The same, with a third array W (e.g. weights) permuted alongside.
void QuickSortYWtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y, TVxRealArray& W);

} // namespace vx
