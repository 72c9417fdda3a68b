#include "NumericsTestSupport.h"

#include "vx/numerics/VxSmoothing.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

TEST(Smoothing, TriangularWeights)
{
    struct Row {
        const char* Name;
        bool Log;
        TVxRealArray X, Y;
        double Range;
        TVxRealArray Expected;
    } rows[] = {
        // Range 2 over unit spacing: weights 1/2, 1, 1/2 inside, a half-span at the ends.
        { "unit spacing", false, { 0, 1, 2, 3 }, { 0, 4, 0, 4 }, 2.0, { 2 / 1.5, 4 / 2.0, 4 / 2.0, 4 / 1.5 } },
        { "decades", true, { 1, 10, 100, 1000 }, { 0, 4, 0, 4 }, 2.0, { 2 / 1.5, 4 / 2.0, 4 / 2.0, 4 / 1.5 } },
        { "range below spacing", false, { 0, 1, 2 }, { 5, -1, 7 }, 0.5, { 5, -1, 7 } },
        { "zero range", false, { 0, 1, 2 }, { 5, -1, 7 }, 0.0, { 5, -1, 7 } },
        { "negative range, bad x", true, { 0, -1, 2 }, { 5, -1, 7 }, -3.0, { 5, -1, 7 } },
        // The point at 10 has no neighbour within the span and keeps its value.
        { "isolated point", false, { 0, 1, 10 }, { 0, 3, 8 }, 2.0, { 1.5 / 1.5, 3 / 1.5, 8 } },
        // w(1) = 1/3; the last value uses the unsmoothed Y1 = 0; entries beyond X stay.
        { "reads unsmoothed values", false, { 0, 1, 2 }, { 3, 0, 0, 99 }, 1.5, { 2.25, 0.6, 0, 99 } },
        { "NaN x is a span of its own", false, { 0, NAN, 2 }, { 1, 5, 3 }, 1.5, { 1, 5, 3 } },
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.Name);
        row.Log ? SmoothVectorLog(row.X, row.Y, row.Range) : SmoothVector(row.X, row.Y, row.Range);
        for (size_t i = 0; i < row.Expected.size(); ++i)
            EXPECT_NEAR(row.Y[i], row.Expected[i], 1e-14) << "i=" << i;
    }
}

TEST(Smoothing, Failures)
{
    TVxRealArray two { 0, 1 }, Y { 1, 2, 3 };
    EXPECT_EQ(MessageOf([&] { SmoothVector(two, Y, 1.0); }), kNotEnoughData);
    EXPECT_EQ(MessageOf([&] { SmoothVectorLog(Y, two, 1.0); }), kNotEnoughData);
    TVxRealArray nanY { 1, NAN, 3 };
    EXPECT_THROW(SmoothVector(TVxRealArray { 0, 1, 2 }, nanY, 1.5), EInvalidOp);
    // Every x of the logarithmic smoothing takes its logarithm, equal neighbours or not.
    struct Row {
        TVxRealArray X;
        bool ZeroDivide;
    } rows[] = { { { 1, 0, 10 }, true }, { { 1, -2, 10 }, false }, { { -1, -1, -1 }, false }, { { 5, 5, 0 }, true } };
    for (Row& row : rows) {
        SCOPED_TRACE(row.X[1]);
        if (row.ZeroDivide)
            EXPECT_THROW(SmoothVectorLog(row.X, Y, 1.0), EZeroDivide);
        else
            EXPECT_THROW(SmoothVectorLog(row.X, Y, 1.0), EInvalidOp);
    }
}
