#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

using namespace vx;

TEST(VxFloatMath, DivisionFaultsRaiseThePlatformExceptions)
{
    EXPECT_THROW(FDiv(1.0, 0.0), EZeroDivide);
    EXPECT_THROW(FDiv(-1.0, 0.0), EZeroDivide);
    EXPECT_THROW(FDiv(0.0, 0.0), EInvalidOp);
    EXPECT_THROW(FDiv(1e308, 1e-308), EOverflow);
    EXPECT_THROW(FDiv(std::nan(""), 1.0), EInvalidOp);
    EXPECT_DOUBLE_EQ(FDiv(1.0, 4.0), 0.25);
}

TEST(VxFloatMath, DomainFaultsOfRootsLogsAndPowers)
{
    EXPECT_THROW(FSqrt(-1e-300), EInvalidOp);
    EXPECT_EQ(FSqrt(0.0), 0.0);
    EXPECT_THROW(FLn(0.0), EZeroDivide);
    EXPECT_THROW(FLog10(-2.0), EInvalidOp);
    EXPECT_DOUBLE_EQ(FLog10(1000.0), 3.0);
    EXPECT_THROW(FExp(710.0), EOverflow);
    EXPECT_THROW(FPower(-8.0, 1.0 / 3.0), EInvalidOp);
    EXPECT_THROW(FPower(0.0, -1.0), EZeroDivide);
    EXPECT_DOUBLE_EQ(FPower(-2.0, 3.0), -8.0);
}

TEST(VxFloatMath, IntegerPowerIsExactForSmallExponentsAndChecksOverflow)
{
    EXPECT_EQ(FIntPower(10.0, 0), 1.0);
    EXPECT_EQ(FIntPower(10.0, 5), 100000.0);
    EXPECT_DOUBLE_EQ(FIntPower(10.0, -3), 1e-3);
    EXPECT_THROW(FIntPower(10.0, 400), EOverflow);
    EXPECT_THROW(FIntPower(0.0, -1), EZeroDivide);
}

TEST(VxExceptions, MessagesAndApplicationHook)
{
    EXPECT_EQ(EZeroDivide().Message(), QStringLiteral("Floating point division by zero"));
    EXPECT_STREQ(EListError::IndexOutOfBounds(3).what(), "List index out of bounds (3)");

    QString seen;
    SetApplicationExceptionHandler([&](Exception& e) { seen = e.Message(); });
    GuardEvent([] { throw EConvertError(QStringLiteral("bad")); });
    EXPECT_EQ(seen, QStringLiteral("bad"));
    GuardEvent([] { throw std::runtime_error("std"); });
    EXPECT_EQ(seen, QStringLiteral("std"));
    SetApplicationExceptionHandler({});
}
