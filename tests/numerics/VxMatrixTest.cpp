#include "vx/numerics/VxMatrix.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace vx;

namespace {

// Band storage of a dense matrix: row i, column j -> A[i][j - i + ML].
TVxRealMatrix ToBand(const TVxRealMatrix& dense, int ML, int MU)
{
    const int n = int(dense.size());
    TVxRealMatrix band(n, TVxRealArray(ML + MU + 1, 0.0));
    for (int i = 0; i < n; ++i)
        for (int j = std::max(0, i - ML); j <= std::min(n - 1, i + MU); ++j)
            band[i][j - i + ML] = dense[i][j];
    return band;
}

TVxRealArray Multiply(const TVxRealMatrix& dense, const TVxRealArray& x)
{
    TVxRealArray b(dense.size(), 0.0);
    for (size_t i = 0; i < dense.size(); ++i)
        for (size_t j = 0; j < x.size(); ++j)
            b[i] += dense[i][j] * x[j];
    return b;
}

void ExpectMessage(int N, int ML, int MU, const char* message)
{
    TVxRealMatrix A(std::max(N, 1), TVxRealArray(std::max(ML + MU + 1, 1), 1.0));
    TVxRealArray B(std::max(N, 1), 1.0);
    try {
        SolveBand(N, ML, MU, A, B);
        ADD_FAILURE() << "no exception";
    } catch (const EMathError& e) {
        EXPECT_EQ(e.Message(), QString::fromLatin1(message));
    }
}

} // namespace

TEST(SolveBand, SolvesRandomBandSystems)
{
    struct Row {
        const char* Name;
        int N, ML, MU;
    } rows[] = {
        { "tridiagonal", 7, 1, 1 },
        { "pentadiagonal", 12, 2, 2 },
        { "upper triangular", 6, 0, 2 },
        { "smallest", 3, 1, 1 },
        { "full width", 4, 2, 2 },
    };
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Name);
        TVxRealMatrix dense(row.N, TVxRealArray(row.N, 0.0));
        TVxRealArray x(row.N);
        for (int i = 0; i < row.N; ++i) {
            x[i] = u(rng);
            for (int j = std::max(0, i - row.ML); j <= std::min(row.N - 1, i + row.MU); ++j)
                dense[i][j] = u(rng);
            dense[i][i] = 5.0 + u(rng); // diagonally dominant: no pivoting needed
        }
        TVxRealMatrix A = ToBand(dense, row.ML, row.MU);
        TVxRealArray B = Multiply(dense, x);
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
    EXPECT_DOUBLE_EQ(A[1][0], 2.0);
    EXPECT_DOUBLE_EQ(A[1][1], 3.0);
    EXPECT_DOUBLE_EQ(A[2][0], 1.0);
    EXPECT_DOUBLE_EQ(A[2][1], 5.0);
    EXPECT_DOUBLE_EQ(B[0], 1.0);
    EXPECT_DOUBLE_EQ(B[1], 1.0);
    EXPECT_DOUBLE_EQ(B[2], 1.0);
    EXPECT_EQ(B[3], 0.0); // room beyond N is not touched
}

TEST(SolveBand, Messages)
{
    ExpectMessage(2, 1, 1, "Not enough data!");
    ExpectMessage(4, 3, 2, "Not enough data!");
    ExpectMessage(2, -1, 1, "Not enough data!"); // the size test comes first
    ExpectMessage(5, -1, 1, "Matrix: Diagonal-Dimensions must be positive!");
    ExpectMessage(5, 1, -1, "Matrix: Diagonal-Dimensions must be positive!");
}

TEST(SolveBand, BadShapesAndZeroPivots)
{
    TVxRealMatrix A(4, TVxRealArray(3, 1.0));
    TVxRealArray shortB(3, 1.0);
    EXPECT_THROW(SolveBand(4, 1, 1, A, shortB), ERangeError);
    TVxRealMatrix narrow(4, TVxRealArray(2, 1.0));
    TVxRealArray B(4, 1.0);
    EXPECT_THROW(SolveBand(4, 1, 1, narrow, B), ERangeError);

    // An exactly zero pivot is skipped in elimination and divides in back substitution.
    TVxRealMatrix singular { { 0, 0, 1 }, { 1, 1, 1 }, { 1, 1, 0 } };
    TVxRealArray b { 1, 1, 1 };
    EXPECT_THROW(SolveBand(3, 1, 1, singular, b), EZeroDivide);

    TVxRealMatrix nan { { 0, NAN, 1 }, { 1, 1, 1 }, { 1, 1, 0 } };
    TVxRealArray c { 1, 1, 1 };
    EXPECT_THROW(SolveBand(3, 1, 1, nan, c), EMathError);
}
