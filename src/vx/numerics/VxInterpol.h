#pragma once
// Piecewise cubic polynomial over ascending knots: evaluation, derivatives, running
// integral and extremum search. Subclasses decide the coefficients.

#include "vx/core/VxConsts.h"

namespace vx {

class TVxCustomRealVector;

// Interval i holds A[i] + B[i]·t + C[i]·t² + D[i]·t³, t = x - XKnots[i]. Left of the
// first knot interval 0 is extended; right of the data the lookup yields KnotCount - 1
// or KnotCount (the subclass fills entry KnotCount). Evaluation before a successful
// RecalculateCoeffs raises EMathError "Not enough data!".
class TVxIntPolynom {
public:
    TVxIntPolynom() = default;
    virtual ~TVxIntPolynom() = default;
    TVxIntPolynom(const TVxIntPolynom&) = delete;
    TVxIntPolynom& operator=(const TVxIntPolynom&) = delete;

    // Rebuilds knots and coefficients from the points of X/Y with XStart <= x <= XStop;
    // W may be null. The base version does nothing.
    virtual void RecalculateCoeffs(double XStart, double XStop, const TVxCustomRealVector& X,
        const TVxCustomRealVector& Y, const TVxCustomRealVector* W);

    // Interval index for x (0..KnotCount), searched from the previous lookup, so that
    // ascending or nearby calls cost O(1).
    int FindIndex(double X);
    // Value, first and second derivative of the curve at x.
    double Interpolate(double X);
    double Slope(double X);
    double Curvature(double X);

    // Writes into YVector the running integral of the curve at the ascending abscissae of
    // XVector (0 at the first one, accumulated from the knot at or left of it) and fills
    // IntMinima/IntMaxima with the integral's local extrema. An empty XVector leaves
    // YVector as it is.
    void Integrate(const TVxCustomRealVector& XVector, TVxCustomRealVector& YVector);
    // Local extrema of the curve (Minima/Maxima) and of its slope (DiffMinima/DiffMaxima).
    void FindExtrema();
    void FindDiffExtrema();

    int KnotCount() const { return FKnotCount; }
    int LastIndex() const { return FLastIndex; }
    const TVxRealPosArray& Minima() const { return FMinima; }
    const TVxRealPosArray& Maxima() const { return FMaxima; }
    const TVxRealPosArray& DiffMinima() const { return FDiffMinima; }
    const TVxRealPosArray& DiffMaxima() const { return FDiffMaxima; }
    const TVxRealPosArray& IntMinima() const { return FIntMinima; }
    const TVxRealPosArray& IntMaxima() const { return FIntMaxima; }
    const TVxRealArray& XKnots() const { return FXKnots; }
    const TVxRealArray& A() const { return FA; }
    const TVxRealArray& B() const { return FB; }
    const TVxRealArray& C() const { return FC; }
    const TVxRealArray& D() const { return FD; }

protected:
    // Called by subclasses when a recalculation starts: empties the extremum lists,
    // resets LastIndex and marks the coefficients unusable until MarkReady.
    void BeginRecalculation();
    void MarkReady() { FReady = true; }
    void ClearExtrema();
    // Integral of interval i from its knot over the length h.
    double IntervalIntegral(int i, double h) const;

    int FKnotCount = 0;
    int FLastIndex = 0;
    TVxRealPosArray FMinima, FMaxima;
    TVxRealPosArray FDiffMinima, FDiffMaxima;
    TVxRealPosArray FIntMinima, FIntMaxima;
    TVxRealArray FXKnots, FA, FB, FC, FD;

private:
    int CheckedIndex(double X);
    bool FReady = false;
};

} // namespace vx
