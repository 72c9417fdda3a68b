#pragma once
// Natural cubic smoothing spline with fixed per-point weights: it balances closeness to
// the points against the integrated squared second derivative.

#include "vx/numerics/VxInterpol.h"

namespace vx {

// A point of weight σ is corrected with 6/σ: large σ pull the curve onto the point (all
// σ → ∞ give the interpolating natural spline), small σ let it relax toward the
// least-squares straight line. σ = |W[i]|·WeightFactor, or WeightFactor without W.
class TVxApproxSpline : public TVxIntPolynom {
public:
    TVxApproxSpline() = default;

    // Selects the points with XStart <= x <= XStop, sorts them by x (the weights keep
    // their selection order), merges equal x (running pairwise mean of y and σ) and
    // computes the coefficients. Raises EMathError "Not enough data!" with fewer than 6
    // points or distinct abscissae, EZeroDivide for a zero weight.
    void RecalculateCoeffs(double XStart, double XStop, const TVxCustomRealVector& X,
        const TVxCustomRealVector& Y, const TVxCustomRealVector* W) override;

    // Global factor applied to every weight; 1.0 by default.
    double WeightFactor() const { return FWeightFactor; }
    void SetWeightFactor(double Value) { FWeightFactor = Value; }

    // Per-knot weights σ after merging (KnotCount + 1 entries).
    const TVxRealArray& Sigma() const { return FSigma; }

protected:
    // Builds and solves the band system for the knot curvatures, then fills A..D.
    void CalcCoeffs();

private:
    TVxRealArray FSigma;
    double FWeightFactor = 1.0;
};

} // namespace vx
