#pragma once
// Akima interpolation: a smooth cubic through the points whose knot slopes are
// weighted means of the neighbouring secants, so the curve does not overshoot.

#include "vx/numerics/VxInterpol.h"

namespace vx {

class TVxAkima : public TVxIntPolynom {
public:
    TVxAkima() = default;

    // Selects the points with XStart <= x <= XStop (a zero weight drops a point), sorts
    // them, merges equal x by a running pairwise mean of y, optionally smooths, and
    // computes the coefficients. Raises EMathError "Not enough data!" with fewer than 3
    // points or distinct abscissae.
    void RecalculateCoeffs(double XStart, double XStop, const TVxCustomRealVector& X,
        const TVxCustomRealVector& Y, const TVxCustomRealVector* W) override;

    // Smooth the sorted points with SmoothVector (or SmoothVectorLog) before
    // interpolating; off by default.
    bool DoSmoothing() const { return FDoSmoothing; }
    void SetDoSmoothing(bool Value) { FDoSmoothing = Value; }
    bool LogSmoothing() const { return FLogSmoothing; }
    void SetLogSmoothing(bool Value) { FLogSmoothing = Value; }
    // Span of the smoothing, in x units (decades with LogSmoothing); 0 by default.
    double SmoothRange() const { return FSmoothRange; }
    void SetSmoothRange(double Value) { FSmoothRange = Value; }

    // Secant slopes of the extended point set (KnotCount + 5 entries).
    const TVxRealArray& M() const { return FM; }

protected:
    // Adds two extrapolated points on each side (real points move to 2..N+1).
    void Extrapolate();
    // Knot slopes and cubic coefficients; math errors stop it silently.
    void CalcCoeffs();

private:
    TVxRealArray FM;
    bool FDoSmoothing = false;
    bool FLogSmoothing = false;
    double FSmoothRange = 0.0;
};

} // namespace vx
