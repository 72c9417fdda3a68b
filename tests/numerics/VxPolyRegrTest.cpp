#include "NumericsTestSupport.h"

#include "vx/numerics/VxLinRegr.h"
#include "vx/numerics/VxPolyRegr.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

QString MessageOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const Exception& e) {
        return e.Message();
    }
    return QString();
}

} // namespace

TEST(PolynomRegression, ReproducesAPolynomialInAnyPointOrder)
{
    const std::vector<double> xs { 3, -1, 0.5, 2, -2, 1, 4, 0 };
    std::vector<double> ys;
    for (double x : xs)
        ys.push_back(1.0 - 2.0 * x + 0.5 * x * x * x);
    auto X = MakeVector(xs);
    auto Y = MakeVector(ys);
    TVxPolynomRegessionResults r;
    r.Order = 3;
    r.Coeffs = { 7, 7, 7, 7, 7, 7, 7 }; // replaced
    PolynomRegression(-10, 10, *X, *Y, r);
    ASSERT_EQ(r.Coeffs.size(), 4u);
    EXPECT_NEAR(r.Coeffs[0], 1.0, 1e-12);
    EXPECT_NEAR(r.Coeffs[1], -2.0, 1e-12);
    EXPECT_NEAR(r.Coeffs[2], 0.0, 1e-12);
    EXPECT_NEAR(r.Coeffs[3], 0.5, 1e-12);
    EXPECT_NEAR(r.ChiSquare, 0.0, 1e-20);
    EXPECT_NEAR(r.r2, 1.0, 1e-14);
}

TEST(PolynomRegression, OrderOneAgreesWithLinReg)
{
    auto X = MakeVector({ 0, 1, 2, 3, 4.5 });
    auto Y = MakeVector({ 2, 2, 4, 8, 7 });
    TVxLinearRegessionResults lin;
    LinReg(0, 4, *X, *Y, lin); // 4.5 lies outside
    TVxPolynomRegessionResults r;
    r.Order = 1;
    PolynomRegression(0, 4, *X, *Y, r);
    EXPECT_NEAR(r.Coeffs[1], lin.Slope, 1e-14);
    EXPECT_NEAR(r.Coeffs[0], lin.Offset, 1e-14);
    EXPECT_NEAR(r.ChiSquare, lin.ChiSquare, 1e-13);
    EXPECT_DOUBLE_EQ(r.VarianceX, lin.VarianceX);
    EXPECT_DOUBLE_EQ(r.AverageY, lin.AverageY);
    EXPECT_NEAR(r.DeltaCoeffs[1], lin.DeltaSlope, 1e-14);
    EXPECT_NEAR(r.DeltaCoeffs[0], lin.DeltaOffset, 1e-14);
    EXPECT_NEAR(r.QRel, std::sqrt(r.ChiSquare / (4 - 1)), 1e-15); // n - Order
}

TEST(PolynomRegression, OrderZeroIsTheWeightedMean)
{
    auto X = MakeVector({ 0, 1, 2 });
    auto Y = MakeVector({ 1, 2, 6 });
    auto W = MakeVector({ 1, 2, 1 });
    TVxPolynomRegessionResults r;
    r.Order = 0;
    PolynomRegressionWithWeight(0, 2, *X, *Y, *W, r);
    EXPECT_DOUBLE_EQ(r.Coeffs[0], 11.0 / 4.0);
    EXPECT_DOUBLE_EQ(r.AverageY, 11.0 / 4.0);
}

TEST(PolynomRegression, NegativeWeightCountsNegativelyOnlyInTheNormalEquations)
{
    auto X = MakeVector({ 0, 1, 2 });
    auto Y = MakeVector({ 1, 2, 6 });
    auto W = MakeVector({ 1, -1, 2 });
    TVxPolynomRegessionResults r;
    r.Order = 0;
    PolynomRegressionWithWeight(0, 2, *X, *Y, *W, r);
    EXPECT_DOUBLE_EQ(r.Coeffs[0], (1.0 - 2.0 + 12.0) / 2.0); // Σw·y / Σw with signs
    EXPECT_DOUBLE_EQ(r.AverageY, (1.0 + 2.0 + 12.0) / 4.0);  // |w|
    const double c = r.Coeffs[0];
    EXPECT_DOUBLE_EQ(r.ChiSquare, (1 - c) * (1 - c) + (2 - c) * (2 - c) + 2 * (6 - c) * (6 - c));
}

TEST(PolynomRegression, FailuresAndMessages)
{
    auto X = MakeVector({ 0, 1, 2, 3 });
    auto Y = MakeVector({ 1, 2, 6, 7 });
    auto small = MakeVector({ 0.9, 0.9, 0.9, 0.9 });
    TVxPolynomRegessionResults r;
    r.Order = 4;
    EXPECT_EQ(MessageOf([&] { PolynomRegression(0, 3, *X, *Y, r); }), QStringLiteral("Not enough data!"));
    EXPECT_DOUBLE_EQ(r.AverageX, 1.5); // stored before the count test
    r.Order = 1;
    EXPECT_EQ(MessageOf([&] { PolynomRegression(5, 6, *X, *Y, r); }), QStringLiteral("Not enough data!"));
    // Trunc(3.6) = 3 < 4 coefficients although there are four points.
    r.Order = 3;
    EXPECT_EQ(MessageOf([&] { PolynomRegressionWithWeight(0, 3, *X, *Y, *small, r); }),
        QStringLiteral("Not enough data!"));
    // Three points on two abscissae cannot carry a parabola.
    auto X2 = MakeVector({ 1, 1, 2 });
    r.Order = 2;
    EXPECT_EQ(MessageOf([&] { PolynomRegression(0, 3, *X2, *Y, r); }),
        QStringLiteral("Cholesky Decomposition ([i,i]): Matrix is not positive definite!"));
    r.Order = -1;
    EXPECT_THROW(PolynomRegression(0, 3, *X, *Y, r), ERangeError);
    // A single point with order 0: the variances divide by n - 1 = 0.
    r.Order = 0;
    EXPECT_THROW(PolynomRegression(0, 0, *X, *Y, r), EMathError);
    // Overflowing powers.
    auto huge = MakeVector({ 1e200, 2e200, 3e200 });
    r.Order = 2;
    EXPECT_THROW(PolynomRegression(0, 1e300, *huge, *Y, r), EOverflow);
}

TEST(Cholesky, DecomposesAndSolves)
{
    // A = R^T R with R = [[2,1,-1],[0,3,2],[0,0,1]]; the lower triangle is not touched.
    TVxRealMatrix A { { 4, 2, -2 }, { 2, 10, 5 }, { -2, 5, 6 } };
    CholeskyDecompose(A);
    const TVxRealMatrix R { { 2, 1, -1 }, { 2, 3, 2 }, { -2, 5, 1 } };
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(A[i][j], R[i][j], 1e-15) << i << "," << j;
    TVxRealArray b { 6, 27, 14 }; // A·(1, 2, 1)
    CholeskySolve(A, b);
    EXPECT_NEAR(b[0], 1.0, 1e-15);
    EXPECT_NEAR(b[1], 2.0, 1e-15);
    EXPECT_NEAR(b[2], 1.0, 1e-15);
}

TEST(Cholesky, Messages)
{
    struct Row {
        const char* Name;
        TVxRealMatrix A;
        const char* Message;
    } rows[] = {
        { "not square", { { 1, 0 } }, "Cholesky Decomposition: Matrix is not square!" },
        { "empty", {}, "Cholesky Decomposition: Matrix is not square!" },
        { "first pivot", { { 0, 1 }, { 1, 1 } }, "Cholesky Decomposition ([0,0]): Matrix is not positive definite!" },
        { "nan pivot", { { NAN, 1 }, { 1, 1 } }, "Cholesky Decomposition ([0,0]): Matrix is not positive definite!" },
        { "later pivot", { { 1, 2 }, { 2, 1 } }, "Cholesky Decomposition ([i,i]): Matrix is not positive definite!" },
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.Name);
        EXPECT_EQ(MessageOf([&] { CholeskyDecompose(row.A); }), QString::fromLatin1(row.Message));
    }
}
