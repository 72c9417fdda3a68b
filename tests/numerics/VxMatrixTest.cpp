#include "NumericsTestSupport.h"

#include "vx/numerics/VxMatrix.h"

#include <gtest/gtest.h>

#include <random>

using namespace vx;
using namespace vxtest;

TEST(SolveBand, SolvesDiagonallyDominantBandSystems)
{
    struct Row {
        const char* Name;
        int N, ML, MU;
    } rows[] = { { "tridiagonal", 7, 1, 1 }, { "pentadiagonal", 12, 2, 2 }, { "upper triangular", 6, 0, 2 },
        { "lower triangular", 5, 2, 0 }, { "smallest", 3, 1, 1 }, { "full width", 4, 2, 2 } };
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Name);
        // Band storage: A[i][j - i + ML] holds the dense element (i, j).
        TVxRealMatrix A(row.N, TVxRealArray(row.ML + row.MU + 1, 0.0));
        TVxRealArray x(row.N), B(row.N + row.ML, 0.0);
        for (int i = 0; i < row.N; ++i)
            x[i] = u(rng);
        for (int i = 0; i < row.N; ++i)
            for (int j = std::max(0, i - row.ML); j <= std::min(row.N - 1, i + row.MU); ++j) {
                A[i][j - i + row.ML] = i == j ? 5.0 + u(rng) : u(rng);
                B[i] += A[i][j - i + row.ML] * x[j];
            }
        SolveBand(row.N, row.ML, row.MU, A, B);
        for (int i = 0; i < row.N; ++i)
            EXPECT_NEAR(B[i], x[i], 1e-13) << "i=" << i;
    }
}

TEST(SolveBand, LeavesTheFactorsInTheMatrix)
{
    // [[2,1,0],[4,5,2],[0,3,7]] = L·U with L = [[1],[2,1],[0,1,1]], U = [[2,1],[3,2],[5]].
    TVxRealMatrix A { { 0, 2, 1 }, { 4, 5, 2 }, { 3, 7, 0 } };
    TVxRealArray B { 3, 11, 10, 0 };
    SolveBand(3, 1, 1, A, B);
    EXPECT_EQ(A, (TVxRealMatrix { { 0, 2, 1 }, { 2, 3, 2 }, { 1, 5, 0 } }));
    EXPECT_EQ(B, (TVxRealArray { 1, 1, 1, 0 })); // room beyond N is not touched
}

TEST(SolveBand, Failures)
{
    struct Row {
        int N, ML, MU;
        const char* Message;
    } rows[] = { { 2, 1, 1, "Not enough data!" }, { 4, 3, 2, "Not enough data!" },
        { 2, -1, 1, "Not enough data!" }, // the size test comes first
        { 5, -1, 1, "Matrix: Diagonal-Dimensions must be positive!" },
        { 5, 1, -1, "Matrix: Diagonal-Dimensions must be positive!" } };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.N * 100 + row.ML * 10 + row.MU);
        TVxRealMatrix A(5, TVxRealArray(5, 1.0));
        TVxRealArray B(5, 1.0);
        EXPECT_EQ(MessageOf([&] { SolveBand(row.N, row.ML, row.MU, A, B); }), QString::fromLatin1(row.Message));
    }
    TVxRealMatrix A(4, TVxRealArray(3, 1.0)), narrow(4, TVxRealArray(2, 1.0));
    TVxRealArray shortB(3, 1.0), B(4, 1.0);
    EXPECT_THROW(SolveBand(4, 1, 1, A, shortB), ERangeError);
    EXPECT_THROW(SolveBand(4, 1, 1, narrow, B), ERangeError);

    // An exactly zero pivot is skipped in elimination and divides in back substitution.
    TVxRealMatrix singular { { 0, 0, 1 }, { 1, 1, 1 }, { 1, 1, 0 } };
    TVxRealArray b { 1, 1, 1 };
    EXPECT_THROW(SolveBand(3, 1, 1, singular, b), EZeroDivide);
    TVxRealMatrix nan { { 0, NAN, 1 }, { 1, 1, 1 }, { 1, 1, 0 } };
    EXPECT_THROW(SolveBand(3, 1, 1, nan, b), EMathError);
}
