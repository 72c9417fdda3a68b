#include "vx/numerics/VxSmoothing.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vx;

TEST(Smoothing, TriangularWeights)
{
    struct Row {
        const char* Name;
        TVxRealArray X, Y;
        double Range;
        TVxRealArray Expected;
    } rows[] = {
        // Range 2 over unit spacing: weights 1/2, 1, 1/2 inside, a half-span at the ends.
        { "unit spacing", { 0, 1, 2, 3 }, { 0, 4, 0, 4 }, 2.0,
            { (0 + 2) / 1.5, (0 * 0.5 + 4 + 0 * 0.5) / 2.0, (2 + 0 + 2) / 2.0, (0 * 0.5 + 4) / 1.5 } },
        { "range below spacing", { 0, 1, 2 }, { 5, -1, 7 }, 0.5, { 5, -1, 7 } },
        { "zero range", { 0, 1, 2 }, { 5, -1, 7 }, 0.0, { 5, -1, 7 } },
        { "negative range", { 0, 1, 2 }, { 5, -1, 7 }, -3.0, { 5, -1, 7 } },
        // The point at 10 has no neighbour within the span and keeps its value.
        { "isolated point", { 0, 1, 10 }, { 0, 3, 8 }, 2.0, { 3 * 0.5 / 1.5, 3 / 1.5, 8 } },
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.Name);
        SmoothVector(row.X, row.Y, row.Range);
        for (size_t i = 0; i < row.Expected.size(); ++i)
            EXPECT_NEAR(row.Y[i], row.Expected[i], 1e-14) << "i=" << i;
    }
}

TEST(Smoothing, ReadsOnlyUnsmoothedValuesAndExtraEntriesStay)
{
    TVxRealArray X { 0, 1, 2 };
    TVxRealArray Y { 3, 0, 0, 99 };
    SmoothVector(X, Y, 1.5);
    // w(1) = 1/3: Y0 = 3/(4/3), Y1 = 3·(1/3)/(5/3), Y2 = 0 (from the unsmoothed Y1 = 0).
    EXPECT_NEAR(Y[0], 2.25, 1e-15);
    EXPECT_NEAR(Y[1], 0.6, 1e-15);
    EXPECT_EQ(Y[2], 0.0);
    EXPECT_EQ(Y[3], 99.0);
}

TEST(Smoothing, LogarithmicSpansCountDecades)
{
    TVxRealArray X { 1, 10, 100, 1000 };
    TVxRealArray Y { 0, 4, 0, 4 };
    SmoothVectorLog(X, Y, 2.0);
    EXPECT_NEAR(Y[0], 4 * 0.5 / 1.5, 1e-14);
    EXPECT_NEAR(Y[1], 4 / 2.0, 1e-14);
    EXPECT_NEAR(Y[2], (4 * 0.5 + 4 * 0.5) / 2.0, 1e-14);

    TVxRealArray same { -1, -1, -1 }; // equal x never take a logarithm
    TVxRealArray Ys { 1, 2, 3 };
    SmoothVectorLog(same, Ys, 1.0);
    EXPECT_NEAR(Ys[0], 2.0, 1e-15);

    TVxRealArray bad { 1, 0, 10 };
    TVxRealArray Yb { 1, 2, 3 };
    EXPECT_THROW(SmoothVectorLog(bad, Yb, 1.0), EZeroDivide);
    TVxRealArray negative { 1, -2, 10 };
    EXPECT_THROW(SmoothVectorLog(negative, Yb, 1.0), EInvalidOp);
}

TEST(Smoothing, FailuresAreNamed)
{
    TVxRealArray X { 0, 1 };
    TVxRealArray Y { 0, 1, 2 };
    try {
        SmoothVector(X, Y, 1.0);
        ADD_FAILURE();
    } catch (const EMathError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Not enough data!"));
    }
    TVxRealArray Xn { 0, NAN, 2 };
    TVxRealArray Yn { 1, 5, 3 };
    SmoothVector(Xn, Yn, 1.5); // a NaN x is a span of its own
    EXPECT_EQ(Yn[1], 5.0);
    TVxRealArray Xy { 0, 1, 2 };
    TVxRealArray Ynan { 1, NAN, 3 };
    EXPECT_THROW(SmoothVector(Xy, Ynan, 1.5), EInvalidOp);
}
