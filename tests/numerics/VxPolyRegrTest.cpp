#include "NumericsTestSupport.h"

#include "vx/numerics/VxLinRegr.h"
#include "vx/numerics/VxPolyRegr.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

TEST(PolynomRegression, ReproducesACubicInAnyPointOrder)
{
    const std::vector<double> xs { 3, -1, 0.5, 2, -2, 1, 4, 0 };
    std::vector<double> ys;
    for (double x : xs)
        ys.push_back(1.0 - 2.0 * x + 0.5 * x * x * x);
    const Points p(xs, ys);
    TVxPolynomRegessionResults r;
    r.Order = 3;
    r.Coeffs = { 7, 7, 7, 7, 7, 7, 7 }; // replaced
    PolynomRegression(-10, 10, *p.X, *p.Y, r);
    ASSERT_EQ(r.Coeffs.size(), 4u);
    for (auto [k, expected] : { std::pair { 0, 1.0 }, { 1, -2.0 }, { 2, 0.0 }, { 3, 0.5 } })
        EXPECT_NEAR(r.Coeffs[k], expected, 1e-12) << k;
    EXPECT_NEAR(r.ChiSquare, 0.0, 1e-20);
    EXPECT_NEAR(r.r2, 1.0, 1e-14);
}

TEST(PolynomRegression, OrderOneAgreesWithLinReg)
{
    const Points p({ 0, 1, 2, 3, 4.5 }, { 2, 2, 4, 8, 7 });
    TVxLinearRegessionResults lin;
    LinReg(0, 4, *p.X, *p.Y, lin); // 4.5 lies outside
    TVxPolynomRegessionResults r;
    r.Order = 1;
    PolynomRegression(0, 4, *p.X, *p.Y, r);
    for (auto [poly, line] : { std::pair { r.Coeffs[1], lin.Slope }, { r.Coeffs[0], lin.Offset },
             { r.VarianceX, lin.VarianceX }, { r.AverageY, lin.AverageY }, { r.DeltaCoeffs[1], lin.DeltaSlope },
             { r.DeltaCoeffs[0], lin.DeltaOffset } })
        EXPECT_NEAR(poly, line, 1e-14);
    EXPECT_NEAR(r.ChiSquare, lin.ChiSquare, 1e-13);
    EXPECT_NEAR(r.QRel, std::sqrt(r.ChiSquare / (4 - 1)), 1e-15); // n - Order
}

TEST(PolynomRegression, OrderZeroWeights)
{
    // The normal equations take the signed weight, averages and ChiSquare its absolute value.
    struct Row {
        std::vector<double> W;
        double Coeff, AverageY;
    } rows[] = { { { 1, 2, 1 }, 11.0 / 4.0, 11.0 / 4.0 }, { { 1, -1, 2 }, 11.0 / 2.0, 15.0 / 4.0 } };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.W[1]);
        const Points p({ 0, 1, 2 }, { 1, 2, 6 }, row.W);
        TVxPolynomRegessionResults r;
        PolynomRegressionWithWeight(0, 2, *p.X, *p.Y, *p.W, r);
        const double c = r.Coeffs[0];
        EXPECT_DOUBLE_EQ(c, row.Coeff);
        EXPECT_DOUBLE_EQ(r.AverageY, row.AverageY);
        EXPECT_DOUBLE_EQ(r.ChiSquare, std::fabs(row.W[0]) * (1 - c) * (1 - c)
                + std::fabs(row.W[1]) * (2 - c) * (2 - c) + std::fabs(row.W[2]) * (6 - c) * (6 - c));
    }
}

TEST(PolynomRegression, Failures)
{
    const Points p({ 0, 1, 2, 3 }, { 1, 2, 6, 7 }, { 0.9, 0.9, 0.9, 0.9 }), twoX({ 1, 1, 2 }, { 1, 2, 6 });
    TVxPolynomRegessionResults r;
    auto fit = [&r](int order, double start, double stop, const Points& q, bool weighted = false) {
        r.Order = order;
        return MessageOf([&] {
            weighted ? PolynomRegressionWithWeight(start, stop, *q.X, *q.Y, *q.W, r)
                     : PolynomRegression(start, stop, *q.X, *q.Y, r);
        });
    };
    EXPECT_EQ(fit(4, 0, 3, p), kNotEnoughData);
    EXPECT_DOUBLE_EQ(r.AverageX, 1.5); // stored before the count test
    EXPECT_EQ(fit(1, 5, 6, p), kNotEnoughData);
    EXPECT_EQ(fit(3, 0, 3, p, true), kNotEnoughData); // Trunc(3.6) = 3 < 4 coefficients
    EXPECT_EQ(fit(2, 0, 3, twoX), QStringLiteral("Cholesky Decomposition ([i,i]): Matrix is not positive definite!"));
    r.Order = -1;
    EXPECT_THROW(PolynomRegression(0, 3, *p.X, *p.Y, r), ERangeError);
    r.Order = 0; // a single point: the variances divide by n - 1 = 0
    EXPECT_THROW(PolynomRegression(0, 0, *p.X, *p.Y, r), EInvalidOp);
    const Points huge({ 1e200, 2e200, 3e200 }, { 1, 2, 3 });
    r.Order = 2;
    EXPECT_THROW(PolynomRegression(0, 1e300, *huge.X, *huge.Y, r), EOverflow);
}

TEST(Cholesky, DecomposesAndSolves)
{
    // A = R^T R with R = [[2,1,-1],[0,3,2],[0,0,1]]; the lower triangle is not touched.
    TVxRealMatrix A { { 4, 2, -2 }, { 2, 10, 5 }, { -2, 5, 6 } };
    CholeskyDecompose(A);
    EXPECT_EQ(A, (TVxRealMatrix { { 2, 1, -1 }, { 2, 3, 2 }, { -2, 5, 1 } }));
    TVxRealArray b { 6, 27, 14 }; // A·(1, 2, 1)
    CholeskySolve(A, b);
    EXPECT_EQ(b, (TVxRealArray { 1, 2, 1 }));

    struct Row {
        TVxRealMatrix A;
        const char* Message;
    } rows[] = {
        { { { 1, 0 } }, "Cholesky Decomposition: Matrix is not square!" },
        { {}, "Cholesky Decomposition: Matrix is not square!" },
        { { { 0, 1 }, { 1, 1 } }, "Cholesky Decomposition ([0,0]): Matrix is not positive definite!" },
        { { { NAN, 1 }, { 1, 1 } }, "Cholesky Decomposition ([0,0]): Matrix is not positive definite!" },
        { { { 1, 2 }, { 2, 1 } }, "Cholesky Decomposition ([i,i]): Matrix is not positive definite!" },
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.Message);
        EXPECT_EQ(MessageOf([&] { CholeskyDecompose(row.A); }), QString::fromLatin1(row.Message));
    }
}
