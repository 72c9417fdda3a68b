#include "vx/numerics/VxMatrix.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

void CheckBandShape(int N, int width, const TVxRealMatrix& A, const TVxRealArray& B)
{
    if (static_cast<int>(A.size()) < N || static_cast<int>(B.size()) < N)
        throw ERangeError();
    for (int i = 0; i < N; ++i)
        if (static_cast<int>(A[i].size()) < width)
            throw ERangeError();
}

} // namespace

void SolveBand(int N, int ML, int MU, TVxRealMatrix& A, TVxRealArray& B)
{
    if (N < 3 || ML + MU > N)
        throw EMathError(QStringLiteral("Not enough data!"));
    if (ML < 0 || MU < 0)
        throw EMathError(QStringLiteral("Matrix: Diagonal-Dimensions must be positive!"));
    CheckBandShape(N, ML + MU + 1, A, B);

    // LU elimination without pivoting; the fill-in stays inside the band. A negligible
    // pivot leaves its column as it is (an exact zero surfaces in back substitution).
    if (ML > 0) {
        for (int k = 0; k < N - 1; ++k) {
            const int m = std::min(ML + 1, N - k);
            const int u = std::min(MU + 1, N - k);
            const double pivot = A[k][ML];
            if (!(std::fabs(pivot) >= CMaxAcurancy) || m <= 1)
                continue;
            for (int i = 1; i < m; ++i) {
                TVxRealArray& row = A[k + i];
                const double factor = FDiv(row[ML - i], pivot);
                row[ML - i] = factor;
                for (int j = 1; j < u; ++j)
                    row[ML - i + j] = FSub(row[ML - i + j], FMul(factor, A[k][ML + j]));
            }
        }
    }

    // Forward substitution with the multipliers (rows beyond N do not exist).
    const int lower = std::min(ML + 1, N - 1) - 1;
    for (int k = 0; k < N - 1; ++k)
        for (int i = 1; i <= lower && k + i < N; ++i)
            B[k + i] = FSub(B[k + i], FMul(A[k + i][ML - i], B[k]));

    // Back substitution over the super-diagonals.
    const int upper = std::min(MU + 1, N - 1) - 1;
    for (int k = N - 1; k >= 0; --k) {
        double sum = B[k];
        for (int i = 1; i <= upper && k + i < N; ++i)
            sum = FSub(sum, FMul(A[k][ML + i], B[k + i]));
        B[k] = FDiv(sum, A[k][ML]);
    }
}

} // namespace vx
