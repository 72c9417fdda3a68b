#include "NumericsTestSupport.h"

#include "vx/numerics/VxLinRegr.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

using TFit = void (*)(double, double, const Points&, TVxLinearRegessionResults&);
void Lin(double a, double b, const Points& p, TVxLinearRegessionResults& r) { LinReg(a, b, *p.X, *p.Y, r); }
void LinW(double a, double b, const Points& p, TVxLinearRegessionResults& r) { LinRegWithWeight(a, b, *p.X, *p.Y, *p.W, r); }
void Ofs(double a, double b, const Points& p, TVxLinearRegessionResults& r) { OfsReg(a, b, *p.X, *p.Y, r); }
void OfsW(double a, double b, const Points& p, TVxLinearRegessionResults& r) { OfsRegWithWeight(a, b, *p.X, *p.Y, *p.W, r); }

} // namespace

TEST(LinReg, TooFewPointsRaiseNotEnoughData)
{
    const Points d({ 1, 2, 3 }, { 2, 4, 7 }, { 1, 1, 1 }), zeroW({ 1, 2, 3 }, { 2, 4, 7 }, { 0, 0, 0 });
    for (TFit fit : { Lin, LinW, Ofs, OfsW }) {
        TVxLinearRegessionResults r;
        r.Offset = 3.0;
        EXPECT_EQ(MessageOf([&] { fit(5, 1, d, r); }), kNotEnoughData); // XStart > XStop
        // The record keeps its initial values: the sentinel 1.7E308 for missing errors,
        // the fixed offset kept as input.
        const bool line = fit == Lin || fit == LinW;
        TVxLinearRegessionResults initial;
        initial.DeltaSlope = 1.7E308;
        initial.DeltaOffset = line ? 1.7E308 : 0.0;
        initial.Offset = line ? 0.0 : 3.0;
        EXPECT_EQ(r, initial);
        if (fit == LinW || fit == OfsW) { // all weights zero: nothing to fit
            EXPECT_EQ(MessageOf([&] { fit(0, 5, zeroW, r); }), kNotEnoughData);
        }
    }
    // One point: LinReg refuses after storing the means.
    TVxLinearRegessionResults r;
    EXPECT_EQ(MessageOf([&] { Lin(2, 2, d, r); }), kNotEnoughData);
    EXPECT_EQ(std::make_pair(r.AverageX, r.AverageY), std::make_pair(2.0, 4.0));
}

TEST(LinReg, HandComputedFits)
{
    // Two points (both interval ends inclusive): exact line, R = -1, no errors left.
    TVxLinearRegessionResults r;
    Lin(1, 3, Points({ 1, 3 }, { 5, 1 }), r);
    EXPECT_EQ(std::make_tuple(r.Slope, r.Offset, r.R, r.VarianceX, r.VarianceY), std::make_tuple(-2.0, 7.0, -1.0, 2.0, 8.0));
    EXPECT_EQ(r.DeltaSlope + r.DeltaOffset + r.ChiSquare, 0.0);

    // y = 1 + 2x with residuals +1, -1, -1, +1 at x = 0..3 (99 lies outside, and the
    // unequal lengths cut the last x): Sxx = 5, ChiSquare = 4, Syy = 24. Negative weights
    // act as their absolute values; a weight vector one shorter drops the point at 4.
    const Points p({ 0, 1, 2, 3, 99, 4 }, { 2, 2, 4, 8, 0 }), w({ 0, 1, 2, 3, 4 }, { 2, 2, 4, 8, 100 }, { -1, 1, -1, 1 });
    for (TFit fit : { Lin, LinW }) {
        SCOPED_TRACE(fit == Lin ? "LinReg" : "LinRegWithWeight");
        fit(0, fit == Lin ? 3 : 100, fit == Lin ? p : w, r);
        EXPECT_DOUBLE_EQ(r.Slope, 2.0);
        EXPECT_DOUBLE_EQ(r.Offset, 1.0);
        EXPECT_DOUBLE_EQ(r.ChiSquare, 4.0);
        EXPECT_DOUBLE_EQ(r.R2, 1.0 - 4.0 / 24.0);
        EXPECT_DOUBLE_EQ(r.R, std::sqrt(5.0 / 3.0) * 2.0 / std::sqrt(8.0));
        EXPECT_DOUBLE_EQ(r.DeltaSlope, std::sqrt(4.0 / (2.0 * 5.0)));
        EXPECT_DOUBLE_EQ(r.DeltaOffset, std::sqrt((2.25 / 5.0 + 0.25) * 4.0 / 2.0));
    }
    // A weight of 2 counts like a repeated point.
    TVxLinearRegessionResults a, b;
    Lin(-10, 10, Points({ 0, 1, 2, 3, 3 }, { 2, 2, 4, 8, 8 }), a);
    LinW(-10, 10, Points({ 0, 1, 2, 3 }, { 2, 2, 4, 8 }, { 1, 1, 1, 2 }), b);
    EXPECT_DOUBLE_EQ(a.Slope, b.Slope);
    EXPECT_DOUBLE_EQ(a.VarianceX, b.VarianceX);
    EXPECT_DOUBLE_EQ(a.DeltaOffset, b.DeltaOffset);

    // Through the fixed offset 1: both variants agree; R is never computed.
    const Points line({ 1, 2, 4 }, { 3, 5, 9 }, { 1, 1, 1 });
    a.Offset = b.Offset = 1.0;
    Ofs(0, 10, line, a);
    OfsW(0, 10, line, b);
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::make_tuple(a.Offset, a.Slope, a.R2), std::make_tuple(1.0, 2.0, 1.0));
    EXPECT_EQ(a.ChiSquare + a.DeltaSlope + a.DeltaOffset + a.R, 0.0);
}

TEST(LinReg, DivisionByZeroIsRecoveredWithTheDocumentedValues)
{
    // x spread 1e-200: (x - AverageX)² underflows, so Sxx = 0 while Sxy is not, and the
    // slope divides by zero. The error block then meets 0/0 and zeroes the errors.
    const Points p({ 0, 1e-200, 2e-200 }, { 1, 2, 4 }, { 1, 1, 1 });
    for (TFit fit : { Lin, LinW }) {
        TVxLinearRegessionResults r;
        fit(-1, 1, p, r);
        EXPECT_EQ(std::make_tuple(r.Slope, r.Offset, r.R, r.R2), std::make_tuple(CVxMaxReal, CVxMaxReal, 1.0, 1.0));
        EXPECT_EQ(r.ChiSquare + r.DeltaSlope + r.DeltaOffset + r.VarianceX, 0.0);
        EXPECT_DOUBLE_EQ(r.VarianceY, fit == LinW ? 14.0 / 6.0 : 0.0); // weighted: before the block
    }
    // Through an offset: Sxx0 underflows; slope sentinel, then ChiSquare / 0 recovered.
    const Points q({ 1e-200, 2e-200 }, { 3, 5 }, { 1, 1 });
    for (TFit fit : { Ofs, OfsW }) {
        TVxLinearRegessionResults r;
        r.Offset = 1.0;
        fit(-1, 1, q, r);
        EXPECT_EQ(std::make_pair(r.Slope, r.R2), std::make_pair(CVxMaxReal, 1.0));
        EXPECT_EQ(r.ChiSquare + r.DeltaSlope + r.VarianceX + r.R, 0.0);
    }
}

TEST(LinReg, InvalidOperationsReachTheCallerWhereTheyAreNotRecovered)
{
    TVxLinearRegessionResults r;
    EXPECT_THROW(Lin(0, 5, Points({ 2, 2, 2 }, { 1, 2, 3 }), r), EInvalidOp); // Sxy/Sxx = 0/0
    // All y equal: R = √VarianceX·0/√0.
    EXPECT_THROW(Lin(0, 5, Points({ 1, 2, 3 }, { 4, 4, 4 }), r), EInvalidOp);
    // Weight sum below 1: no variances, so R = 0·Slope/0.
    EXPECT_THROW(LinW(0, 2, Points({ 0, 1, 2 }, { 1, 3, 5 }, { 0.25, 0.25, 0.25 }), r), EInvalidOp);
    EXPECT_EQ(std::make_pair(r.Slope, r.VarianceX), std::make_pair(2.0, 0.0));

    // One point through an offset: Slope = (y - a)/x, then ChiSquare/(n-1) = 0/0, which
    // only the weighted variant recovers. All x at zero: Sxr/Sxx0 = 0/0 likewise.
    const Points one({ 2 }, { 5 }, { 1 }), zero({ 0, 0 }, { 1, 1 }, { 1, 1 });
    r.Offset = 1.0;
    EXPECT_THROW(Ofs(0, 10, one, r), EInvalidOp);
    EXPECT_DOUBLE_EQ(r.Slope, 2.0);
    OfsW(0, 10, one, r);
    EXPECT_EQ(std::make_pair(r.Slope, r.R2), std::make_pair(2.0, 1.0));
    EXPECT_EQ(r.DeltaSlope + r.ChiSquare + r.VarianceX, 0.0);
    EXPECT_THROW(Ofs(-1, 1, zero, r), EInvalidOp);
    OfsW(-1, 1, zero, r);
    EXPECT_EQ(std::make_pair(r.Slope, r.ChiSquare + r.DeltaSlope), std::make_pair(CVxMaxReal, 0.0));

    // A NaN x is never used; a NaN y fails the means.
    Lin(0, 2, Points({ 0, NAN, 1, 2 }, { 1, 5, 2, 3 }), r);
    EXPECT_DOUBLE_EQ(r.Slope, 1.0);
    EXPECT_EQ(MessageOf([&] { Lin(0, 2, Points({ 0, 1, 2 }, { 1, NAN, 3 }), r); }), kNotEnoughData);
}
