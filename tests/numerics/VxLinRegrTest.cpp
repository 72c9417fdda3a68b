#include "NumericsTestSupport.h"

#include "vx/numerics/VxLinRegr.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vxtest;

namespace {

struct Data {
    std::unique_ptr<TVxRealVector> X, Y, W;
    Data(const std::vector<double>& x, const std::vector<double>& y, const std::vector<double>& w = {})
        : X(MakeVector(x)), Y(MakeVector(y)), W(MakeVector(w)) {}
};

template <typename Fit>
void ExpectNotEnoughData(Fit fit)
{
    try {
        fit();
        ADD_FAILURE() << "no exception";
    } catch (const EMathError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Not enough data!"));
    }
}

} // namespace

TEST(LinReg, SentinelHasTheDocumentedBitPattern)
{
    uint64_t bits;
    std::memcpy(&bits, &CVxMaxReal, sizeof bits);
    EXPECT_EQ(bits, 0x7FEE42D130773B76ull);
}

TEST(LinReg, TooFewPointsRaiseNotEnoughData)
{
    Data d({ 1, 2, 3 }, { 2, 4, 7 }, { 1, 1, 1 });
    TVxLinearRegessionResults r;
    SCOPED_TRACE("empty interval");
    ExpectNotEnoughData([&] { LinReg(5, 1, *d.X, *d.Y, r); });
    EXPECT_EQ(r.DeltaSlope, CVxMaxReal); // the record keeps its initial values
    EXPECT_EQ(r.DeltaOffset, CVxMaxReal);
    ExpectNotEnoughData([&] { LinRegWithWeight(5, 1, *d.X, *d.Y, *d.W, r); });
    ExpectNotEnoughData([&] { OfsReg(5, 1, *d.X, *d.Y, r); });
    ExpectNotEnoughData([&] { OfsRegWithWeight(5, 1, *d.X, *d.Y, *d.W, r); });
    // One point: LinReg refuses after storing the means.
    ExpectNotEnoughData([&] { LinReg(2, 2, *d.X, *d.Y, r); });
    EXPECT_EQ(r.AverageX, 2.0);
    EXPECT_EQ(r.AverageY, 4.0);
    // A zero weight sum.
    Data z({ 1, 2, 3 }, { 2, 4, 7 }, { 0, 0, 0 });
    ExpectNotEnoughData([&] { LinRegWithWeight(0, 5, *z.X, *z.Y, *z.W, r); });
}

TEST(LinReg, TwoPointsGiveExactLineAndZeroErrors)
{
    Data d({ 1, 3 }, { 5, 1 });
    TVxLinearRegessionResults r;
    LinReg(1, 3, *d.X, *d.Y, r); // both interval ends are inclusive
    EXPECT_DOUBLE_EQ(r.Slope, -2.0);
    EXPECT_DOUBLE_EQ(r.Offset, 7.0);
    EXPECT_DOUBLE_EQ(r.R, -1.0);
    EXPECT_EQ(r.DeltaSlope, 0.0);
    EXPECT_EQ(r.DeltaOffset, 0.0);
    EXPECT_EQ(r.ChiSquare, 0.0);
    EXPECT_DOUBLE_EQ(r.VarianceX, 2.0);
    EXPECT_DOUBLE_EQ(r.VarianceY, 8.0);
}

TEST(LinReg, StatisticsOfAnOrdinaryFit)
{
    // y = 1 + 2x with residuals +1, -1, -1, +1 at x = 0..3; values computed by hand:
    // Sxx = 5, Sxy = 10, ChiSquare = 4, Syy = 24.
    Data d({ 0, 1, 2, 3, 99 }, { 2, 2, 4, 8, 0 });
    TVxLinearRegessionResults r;
    LinReg(0, 3, *d.X, *d.Y, r);
    EXPECT_DOUBLE_EQ(r.Slope, 2.0);
    EXPECT_DOUBLE_EQ(r.Offset, 1.0);
    EXPECT_DOUBLE_EQ(r.ChiSquare, 4.0);
    EXPECT_DOUBLE_EQ(r.R2, 1.0 - 4.0 / 24.0);
    EXPECT_DOUBLE_EQ(r.R, std::sqrt(5.0 / 3.0) * 2.0 / std::sqrt(8.0));
    EXPECT_DOUBLE_EQ(r.DeltaSlope, std::sqrt(4.0 / (2.0 * 5.0)));
    EXPECT_DOUBLE_EQ(r.DeltaOffset, std::sqrt((2.25 / 5.0 + 0.25) * 4.0 / 2.0));
}

TEST(LinReg, WeightsActAsAbsoluteValuesAndShortenTheData)
{
    Data plain({ 0, 1, 2, 3 }, { 2, 2, 4, 8 });
    Data neg({ 0, 1, 2, 3, 4 }, { 2, 2, 4, 8, 100 }, { -1, 1, -1, 1 });
    TVxLinearRegessionResults a, b;
    LinReg(-10, 10, *plain.X, *plain.Y, a);
    LinRegWithWeight(-10, 10, *neg.X, *neg.Y, *neg.W, b);
    EXPECT_DOUBLE_EQ(a.Slope, b.Slope);
    EXPECT_DOUBLE_EQ(a.Offset, b.Offset);
    EXPECT_DOUBLE_EQ(a.ChiSquare, b.ChiSquare);
    EXPECT_DOUBLE_EQ(a.DeltaSlope, b.DeltaSlope);

    // Doubling one weight is the same as repeating the point.
    Data twice({ 0, 1, 2, 3, 3 }, { 2, 2, 4, 8, 8 });
    Data weighted({ 0, 1, 2, 3 }, { 2, 2, 4, 8 }, { 1, 1, 1, 2 });
    LinReg(-10, 10, *twice.X, *twice.Y, a);
    LinRegWithWeight(-10, 10, *weighted.X, *weighted.Y, *weighted.W, b);
    EXPECT_DOUBLE_EQ(a.Slope, b.Slope);
    EXPECT_DOUBLE_EQ(a.Offset, b.Offset);
    EXPECT_DOUBLE_EQ(a.VarianceX, b.VarianceX);
    EXPECT_DOUBLE_EQ(a.DeltaOffset, b.DeltaOffset);
}

TEST(LinReg, WeightSumBelowOneKeepsVariancesZero)
{
    Data d({ 0, 1, 2 }, { 1, 3, 5 }, { 0.25, 0.25, 0.25 });
    TVxLinearRegessionResults r;
    // Sw - 1 < 0: no variances; R = sqrt(0)·Slope/sqrt(0) is 0/0, which is not recovered.
    EXPECT_THROW(LinRegWithWeight(0, 2, *d.X, *d.Y, *d.W, r), EInvalidOp);
    EXPECT_DOUBLE_EQ(r.Slope, 2.0);
    EXPECT_EQ(r.VarianceX, 0.0);
}

TEST(LinReg, AllXEqualIsAnInvalidOperation)
{
    Data d({ 2, 2, 2 }, { 1, 2, 3 });
    TVxLinearRegessionResults r;
    EXPECT_THROW(LinReg(0, 5, *d.X, *d.Y, r), EInvalidOp);
}

TEST(LinReg, NanAndHugeValuesEndInANamedError)
{
    TVxLinearRegessionResults r;
    Data nanX({ 0, NAN, 1, 2 }, { 1, 5, 2, 3 });
    LinReg(0, 2, *nanX.X, *nanX.Y, r); // a NaN x is never used
    EXPECT_DOUBLE_EQ(r.Slope, 1.0);
    Data nanY({ 0, 1, 2 }, { 1, NAN, 3 });
    ExpectNotEnoughData([&] { LinReg(0, 2, *nanY.X, *nanY.Y, r); });
    Data huge({ 0, 1, 2 }, { 1e308, -1e308, 1e308 });
    EXPECT_THROW(LinReg(0, 2, *huge.X, *huge.Y, r), EMathError);
}

TEST(OfsReg, SlopeThroughTheFixedOffset)
{
    Data d({ 1, 2, 4 }, { 3, 5, 9 }, { 1, 1, 1 });
    TVxLinearRegessionResults r;
    r.Offset = 1.0;
    OfsReg(0, 10, *d.X, *d.Y, r);
    EXPECT_EQ(r.Offset, 1.0);
    EXPECT_DOUBLE_EQ(r.Slope, 2.0);
    EXPECT_EQ(r.ChiSquare, 0.0);
    EXPECT_EQ(r.DeltaSlope, 0.0);
    EXPECT_EQ(r.DeltaOffset, 0.0);
    EXPECT_EQ(r.R, 0.0); // never computed
    EXPECT_DOUBLE_EQ(r.R2, 1.0);

    TVxLinearRegessionResults w;
    w.Offset = 1.0;
    OfsRegWithWeight(0, 10, *d.X, *d.Y, *d.W, w);
    EXPECT_EQ(r, w);
}

TEST(OfsReg, OnePointAndTheAsymmetricRecovery)
{
    // One point: Slope = (y - a)/x, then ChiSquare/(n-1) = 0/0. The unweighted fit
    // recovers only from division by zero, the weighted one from every math error.
    Data d({ 2 }, { 5 }, { 1 });
    TVxLinearRegessionResults r;
    r.Offset = 1.0;
    EXPECT_THROW(OfsReg(0, 10, *d.X, *d.Y, r), EInvalidOp);
    EXPECT_DOUBLE_EQ(r.Slope, 2.0);

    TVxLinearRegessionResults w;
    w.Offset = 1.0;
    OfsRegWithWeight(0, 10, *d.X, *d.Y, *d.W, w);
    EXPECT_DOUBLE_EQ(w.Slope, 2.0);
    EXPECT_EQ(w.DeltaSlope, 0.0);
    EXPECT_EQ(w.ChiSquare, 0.0);
    EXPECT_EQ(w.R2, 1.0);
    EXPECT_EQ(w.VarianceX, 0.0);

    // All x at zero: Sxr/Sxx0 = 0/0 propagates unweighted, becomes the sentinel weighted.
    Data z({ 0, 0 }, { 1, 1 }, { 1, 1 });
    TVxLinearRegessionResults u;
    EXPECT_THROW(OfsReg(-1, 1, *z.X, *z.Y, u), EInvalidOp);
    OfsRegWithWeight(-1, 1, *z.X, *z.Y, *z.W, u);
    EXPECT_EQ(u.Slope, CVxMaxReal);
    EXPECT_EQ(u.ChiSquare, 0.0);
    EXPECT_EQ(u.DeltaSlope, 0.0);
}
