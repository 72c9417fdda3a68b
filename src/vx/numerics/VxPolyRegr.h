#pragma once
// Polynomial least-squares fits y = c0 + c1·x + ... + cOrder·x^Order over the points
// whose x lies in a closed interval, solved through the normal equations by Cholesky.

#include "vx/core/VxConsts.h"

namespace vx {

class TVxCustomRealVector;

// Input Order, output coefficients (index = power of x) and goodness-of-fit figures.
struct TVxPolynomRegessionResults {
    int Order = 0;
    TVxRealArray Coeffs;
    double AverageX = 0.0;
    double AverageY = 0.0;
    double VarianceX = 0.0;
    double VarianceY = 0.0;
    double r2 = 0.0;         // 1 - ChiSquare / Syy
    double QRel = 0.0;       // sqrt(ChiSquare / (n - Order)), weighted: Sw - Order
    double ChiSquare = 0.0;
    // Standard error of each coefficient, s·sqrt(((X^T W X)^-1)_kk) with
    // s² = ChiSquare / (n - Order - 1) (weighted: Sw - Order - 1); all 0 when they
    // cannot be computed (no degrees of freedom left).
    TVxRealArray DeltaCoeffs;
};

// Unweighted fit. Raises EMathError "Not enough data!" with fewer than Order + 1 points,
// a Cholesky message when the normal matrix is singular, ERangeError for an Order
// outside 0..32767.
void PolynomRegression(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, TVxPolynomRegessionResults& Results);

// Weighted fit. The normal equations use the signed W[i], every other sum |W[i]|; the
// truncated sum of weights must reach Order + 1.
void PolynomRegressionWithWeight(double XStart, double XStop, const TVxCustomRealVector& X,
    const TVxCustomRealVector& Y, const TVxCustomRealVector& W,
    TVxPolynomRegessionResults& Results);

// In-place Cholesky factorisation A = R^T·R of a symmetric positive definite matrix;
// only the upper triangle is read and replaced by R. Raises EMathError
// "Cholesky Decomposition: Matrix is not square!" or one of the "... Matrix is not
// positive definite!" messages.
void CholeskyDecompose(TVxRealMatrix& A);

// Solves R^T·R·x = B with the factor of CholeskyDecompose; B becomes x.
void CholeskySolve(const TVxRealMatrix& R, TVxRealArray& B);

} // namespace vx
