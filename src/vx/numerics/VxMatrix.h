#pragma once
// Banded linear systems, solved by LU elimination without pivoting.

#include "vx/core/VxConsts.h"

namespace vx {

// Solves A·x = B for a band matrix of N rows with ML sub- and MU super-diagonals.
// Row i of A holds ML + MU + 1 coefficients: element j belongs to unknown i - ML + j,
// so column ML is the diagonal. On return B[0..N-1] holds the solution and A its LU
// factors (multipliers in the sub-diagonal columns). A pivot below CMaxAcurancy is not
// eliminated; an exactly zero pivot raises the division error in back substitution.
// Raises EMathError "Not enough data!" (N < 3 or ML + MU > N), "Matrix: Diagonal-
// Dimensions must be positive!" (ML or MU negative), ERangeError when A or B are
// smaller than N rows / N entries or a row is narrower than ML + MU + 1.
void SolveBand(int N, int ML, int MU, TVxRealMatrix& A, TVxRealArray& B);

} // namespace vx
