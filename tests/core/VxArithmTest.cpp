#include "vx/core/VxArithm.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vx;

TEST(VxArithm, GetExponentReadsTheFifteenDigitTextForm)
{
    const struct {
        double x;
        int expected;
    } rows[] = {
        {0.000123, -4}, {-950.0, 2}, {9.9999999999999982, 1}, {9.99999999999999, 0},
        {0.0, 0},       {1.0, 0},    {1.7e308, 308},          {5e-324, -324},
        {std::numeric_limits<double>::quiet_NaN(), 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(GetExponent(row.x), row.expected);
    }
}

TEST(VxArithm, ExpMinusShiftsDecimallyWithoutBinaryError)
{
    EXPECT_EQ(ExpMinus(0.3, -1), 3.0);
    EXPECT_EQ(ExpMinus(1234.0, 2), 12.34);
    EXPECT_EQ(ExpMinus(-0.5, 1), -0.05);
    EXPECT_EQ(ExpMinus(0.1 * 3, 0), 0.3); // 0.30000000000000004 loses its binary noise
    EXPECT_EQ(ExpMinus(0.0, 5), 0.0);
    EXPECT_EQ(ExpMinus(7.0, 400), 0.0);      // underflow is no error
    EXPECT_EQ(ExpMinus(1e300, -100), 1e300); // overflow leaves X unchanged
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ExpMinus(inf, 1), inf);
}

TEST(VxArithm, RoundUpAndDownSnapToMultiplesWithTolerances)
{
    const struct {
        const char* name;
        double x, step;
        int n;
        double up, down;
    } rows[] = {
        {"binary noise stays on the multiple", 0.30000000000000004, 0.1, 0, 0.3, 0.3},
        {"just above a multiple", 0.31, 0.1, 0, 0.4, 0.3},
        {"scaled by 10^N", 1234.0, 5.0, 2, 1500.0, 1000.0},
        // Outward moves forgive 0.1% of the step, inward ones only 1E-9.
        {"within 0.1% of step", 2.0005, 1.0, 0, 2.0, 2.0},
        {"beyond 0.1% of step", 2.002, 1.0, 0, 3.0, 2.0},
        {"beyond the inward tolerance", 2.9995, 1.0, 0, 3.0, 2.0},
        {"within 1E-9 of the multiple", 2.9999999999, 1.0, 0, 3.0, 3.0},
        {"1E-7 short of the multiple", 2.9999999, 1.0, 0, 3.0, 2.0},
        {"exact multiple", 0.7, 0.1, 0, 0.7, 0.7},
        {"negative truncates toward the ends", -1.5, 1.0, 0, -1.0, -2.0},
        {"negative exact multiple kept", -2.0, 1.0, 0, -2.0, -2.0},
        {"negative inward tolerance", -2.0000000001, 1.0, 0, -2.0, -2.0},
        {"negative within 0.1% of step", -2.0005, 1.0, 0, -2.0, -2.0},
        {"negative beyond 0.1% of step", -2.002, 1.0, 0, -2.0, -3.0},
        {"zero", 0.0, 0.5, 3, 0.0, 0.0},
        {"small decade lands on a printed value", 0.0123, 1.0, -3, 0.013, 0.012},
        {"step of two", 12.5, 2.0, 0, 14.0, 12.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(RoundUp(row.x, row.step, row.n), row.up);
        EXPECT_EQ(RoundDown(row.x, row.step, row.n), row.down);
    }
}

TEST(VxArithm, ZeroStepRaisesTheDivisionError)
{
    EXPECT_THROW(RoundUp(1.0, 0.0, 0), EZeroDivide);
    EXPECT_THROW(RoundDown(0.0, 0.0, 0), EZeroDivide);
    EXPECT_THROW(RoundUp(std::nan(""), 1.0, 0), EInvalidOp);
}

TEST(VxArithm, LogRoundingSnapsToNiceMantissas)
{
    const struct {
        const char* name;
        bool up;
        double x, unit, step, expected;
    } rows[] = {
        {"up within a decade", true, 3.5, 1.0, 1.0, 4.0},
        {"up in the next decade", true, 35.0, 1.0, 1.0, 40.0},
        {"down", false, 35.0, 1.0, 1.0, 30.0},
        {"up across the decade", true, 95.0, 1.0, 1.0, 100.0},
        {"down below 1.1 snaps to the decade", false, 1.05, 1.0, 1.0, 1.0},
        {"below one", true, 0.035, 1.0, 1.0, 0.04},
        {"down with a coarse step snaps", false, 0.35, 1.0, 5.0, 0.1},
        {"unit scales", true, 7.0, 2.0, 1.0, 8.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const double r = row.up ? RoundLogUp(row.x, row.unit, row.step)
                                : RoundLogDown(row.x, row.unit, row.step);
        EXPECT_NEAR(r, row.expected, std::fabs(row.expected) * 1e-12);
    }
    EXPECT_EQ(RoundLogUp(1000.0, 1.0, 1.0), 1000.0); // exact decades stay exact
    EXPECT_THROW(RoundLogUp(0.0, 1.0, 1.0), EZeroDivide);
    EXPECT_THROW(RoundLogDown(-5.0, 1.0, 1.0), EInvalidOp);
}

TEST(VxArithm, PowersOfTenAndTheirOverflow)
{
    for (auto [n, expected] : {std::pair{0, 1.0}, {2, 100.0}, {-2, 0.01}, {400, CVxMaxReal}, {-400, 0.0}}) {
        SCOPED_TRACE(n);
        EXPECT_EQ(Exp10(n), expected);
        EXPECT_EQ(IntExp10(n), expected);
    }
}

TEST(VxArithm, LastSignificantCountsMantissaDigits)
{
    const struct {
        double x;
        int expected;
    } rows[] = {{1.25, 3}, {1000.0, 1}, {0.0, 0}, {0.1, 1}, {-7.5, 2},
                {1.0 / 3.0, 15}, {9.9999999999999982, 1}, {123456.789, 9}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(LastSignificant(row.x), row.expected);
    }
}

TEST(VxArithm, EvaluatePolynomialByHorner)
{
    const TVxRealArray a = {1.0, 2.0, 3.0};
    EXPECT_EQ(EvaluatePolynomial(a, 2.0, 2), 17.0);
    EXPECT_EQ(EvaluatePolynomial(a, 2.0, 1), 5.0); // higher coefficients ignored
    EXPECT_EQ(EvaluatePolynomial(a, 99.0, 0), 1.0);
    EXPECT_THROW(EvaluatePolynomial(a, 1.0, 3), ERangeError);
    EXPECT_THROW(EvaluatePolynomial(a, 1.0, -1), ERangeError);
    EXPECT_THROW(EvaluatePolynomial({1e300, 1e300}, 1e10, 1), EOverflow);
    EXPECT_TRUE(std::isnan(EvaluatePolynomial(a, std::nan(""), 2)));
}

TEST(VxArithm, SmallHelpers)
{
    EXPECT_EQ(OrderedRect(5, 7, 1, 2), QRect(QPoint(1, 2), QPoint(5, 7)));

    TVxRealArray dest = {9.0, 9.0, 9.0};
    AssignRealArrays({1.0, 2.0}, dest);
    EXPECT_EQ(dest, (TVxRealArray{1.0, 2.0, 9.0}));
    TVxRealArray shortDest = {0.0};
    EXPECT_THROW(AssignRealArrays({1.0, 2.0}, shortDest), ERangeError);
    EXPECT_EQ(shortDest, (TVxRealArray{0.0}));

    double x = 1.0, y = 2.0;
    SwapReal(x, y);
    int i = 3, j = 4;
    SwapInteger(i, j);
    EXPECT_TRUE(x == 2.0 && y == 1.0 && i == 4 && j == 3);
}
