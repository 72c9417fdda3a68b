#include "vx/core/VxArithm.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vx;

namespace {
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();
} // namespace

TEST(VxArithm, DecimalExponentsAndDigits)
{
    // The exponent is read from the 15-digit text form, so 9.9999999999999982 counts as 10.
    const struct {
        double x;
        int exponent, lastSignificant;
    } rows[] = {
        {0.000123, -4, 3}, {-950.0, 2, 2}, {9.9999999999999982, 1, 1}, {9.99999999999999, 0, 15},
        {0.0, 0, 0}, {1.0, 0, 1}, {1.7e308, 308, 2}, {5e-324, -324, 15}, {kNaN, 0, 0},
        {1.25, 0, 3}, {1000.0, 3, 1}, {0.1, -1, 1}, {-7.5, 0, 2}, {1.0 / 3.0, -1, 15}, {123456.789, 5, 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(GetExponent(row.x), row.exponent);
        EXPECT_EQ(LastSignificant(row.x), row.lastSignificant);
    }
    for (auto [n, expected] : {std::pair{0, 1.0}, {2, 100.0}, {-2, 0.01}, {400, CVxMaxReal}, {-400, 0.0}}) {
        SCOPED_TRACE(n);
        EXPECT_EQ(Exp10(n), expected);
        EXPECT_EQ(IntExp10(n), expected);
    }
}

TEST(VxArithm, ExpMinusShiftsDecimallyWithoutBinaryError)
{
    // 0.1 * 3 loses its binary noise; underflow gives 0 and overflow leaves X unchanged.
    for (auto [x, n, expected] : {std::tuple{0.3, -1, 3.0}, {1234.0, 2, 12.34}, {-0.5, 1, -0.05},
                                  {0.1 * 3, 0, 0.3}, {0.0, 5, 0.0}, {7.0, 400, 0.0},
                                  {1e300, -100, 1e300}, {kInf, 1, kInf}}) {
        SCOPED_TRACE(n);
        EXPECT_EQ(ExpMinus(x, n), expected) << x;
    }
}

TEST(VxArithm, RoundUpAndDownSnapToMultiplesWithTolerances)
{
    // Outward moves forgive 0.1% of the step, inward ones only 1E-9; N scales by 10^N.
    const struct {
        double x, step;
        int n;
        double up, down;
    } rows[] = {
        {0.30000000000000004, 0.1, 0, 0.3, 0.3}, {0.31, 0.1, 0, 0.4, 0.3}, {1234.0, 5.0, 2, 1500.0, 1000.0},
        {2.0005, 1.0, 0, 2.0, 2.0}, {2.002, 1.0, 0, 3.0, 2.0}, {2.9995, 1.0, 0, 3.0, 2.0},
        {2.9999999999, 1.0, 0, 3.0, 3.0}, {2.9999999, 1.0, 0, 3.0, 2.0}, {0.7, 0.1, 0, 0.7, 0.7},
        {-1.5, 1.0, 0, -1.0, -2.0}, {-2.0, 1.0, 0, -2.0, -2.0}, {-2.0000000001, 1.0, 0, -2.0, -2.0},
        {-2.0005, 1.0, 0, -2.0, -2.0}, {-2.002, 1.0, 0, -2.0, -3.0}, {0.0, 0.5, 3, 0.0, 0.0},
        {0.0123, 1.0, -3, 0.013, 0.012}, {12.5, 2.0, 0, 14.0, 12.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(RoundUp(row.x, row.step, row.n), row.up);
        EXPECT_EQ(RoundDown(row.x, row.step, row.n), row.down);
    }
    EXPECT_THROW(RoundUp(1.0, 0.0, 0), EZeroDivide);
    EXPECT_THROW(RoundDown(0.0, 0.0, 0), EZeroDivide);
    EXPECT_THROW(RoundUp(kNaN, 1.0, 0), EInvalidOp);
}

TEST(VxArithm, LogRoundingSnapsToNiceMantissas)
{
    const struct {
        bool up;
        double x, unit, step, expected;
    } rows[] = {
        {true, 3.5, 1.0, 1.0, 4.0}, {true, 35.0, 1.0, 1.0, 40.0}, {false, 35.0, 1.0, 1.0, 30.0},
        {true, 95.0, 1.0, 1.0, 100.0}, {false, 1.05, 1.0, 1.0, 1.0}, // below 1.1 snaps to the decade
        {true, 0.035, 1.0, 1.0, 0.04}, {false, 0.35, 1.0, 5.0, 0.1}, {true, 7.0, 2.0, 1.0, 8.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        const double r = row.up ? RoundLogUp(row.x, row.unit, row.step) : RoundLogDown(row.x, row.unit, row.step);
        EXPECT_NEAR(r, row.expected, std::fabs(row.expected) * 1e-12);
    }
    EXPECT_EQ(RoundLogUp(1000.0, 1.0, 1.0), 1000.0); // exact decades stay exact
    EXPECT_THROW(RoundLogUp(0.0, 1.0, 1.0), EZeroDivide);
    EXPECT_THROW(RoundLogDown(-5.0, 1.0, 1.0), EInvalidOp);
}

TEST(VxArithm, PolynomialsAndSmallHelpers)
{
    const TVxRealArray a = {1.0, 2.0, 3.0};
    EXPECT_EQ(EvaluatePolynomial(a, 2.0, 2), 17.0);
    EXPECT_EQ(EvaluatePolynomial(a, 2.0, 1), 5.0); // higher coefficients ignored
    EXPECT_EQ(EvaluatePolynomial(a, 99.0, 0), 1.0);
    EXPECT_THROW(EvaluatePolynomial(a, 1.0, 3), ERangeError);
    EXPECT_THROW(EvaluatePolynomial(a, 1.0, -1), ERangeError);
    EXPECT_THROW(EvaluatePolynomial({1e300, 1e300}, 1e10, 1), EOverflow);
    EXPECT_TRUE(std::isnan(EvaluatePolynomial(a, kNaN, 2)));

    EXPECT_EQ(OrderedRect(5, 7, 1, 2), QRect(QPoint(1, 2), QPoint(5, 7)));
    TVxRealArray dest = {9.0, 9.0, 9.0}, shortDest = {0.0};
    AssignRealArrays({1.0, 2.0}, dest);
    EXPECT_EQ(dest, (TVxRealArray{1.0, 2.0, 9.0}));
    EXPECT_THROW(AssignRealArrays({1.0, 2.0}, shortDest), ERangeError);
    EXPECT_EQ(shortDest, (TVxRealArray{0.0}));
    double x = 1.0, y = 2.0;
    int i = 3, j = 4;
    SwapReal(x, y);
    SwapInteger(i, j);
    EXPECT_TRUE(x == 2.0 && y == 1.0 && i == 4 && j == 3);
}
