#pragma once
// Straight-line least-squares fits, y = Offset + Slope·x, over the points whose x lies
// in a closed interval [XStart, XStop].

#include "vx/core/VxConsts.h"

namespace vx {

class TVxCustomRealVector;

// Result of a straight-line fit. 1.7E308 (CVxMaxReal) marks a value that could not be
// computed. For the fixed-offset fits, Offset is the input.
struct TVxLinearRegessionResults {
    double Slope = 0.0;
    double DeltaSlope = 0.0;   // standard error of Slope
    double Offset = 0.0;
    double DeltaOffset = 0.0;  // standard error of Offset
    double AverageX = 0.0;
    double AverageY = 0.0;
    double VarianceX = 0.0;    // sample variances of the used points
    double VarianceY = 0.0;
    double R2 = 0.0;           // 1 - ChiSquare / Syy
    double R = 0.0;            // correlation coefficient
    double ChiSquare = 0.0;    // sum of squared residuals

    bool operator==(const TVxLinearRegessionResults& o) const;
    bool operator!=(const TVxLinearRegessionResults& o) const { return !(*this == o); }
};

// Fits slope and offset. Raises EMathError "Not enough data!" when fewer than two points
// are used. Collinear-in-x data (all x equal) raise EInvalidOp; with two points the
// standard errors and ChiSquare are 0.
void LinReg(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxLinearRegessionResults& Results);

// As LinReg with weights |W[i]|; the sum of weights replaces the point count.
void LinRegWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxLinearRegessionResults& Results);

// Fits only the slope of a line through the fixed Results.Offset (one point suffices).
void OfsReg(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxLinearRegessionResults& Results);

// As OfsReg with weights |W[i]|.
void OfsRegWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxLinearRegessionResults& Results);

} // namespace vx
