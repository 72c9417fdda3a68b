#include "vx/numerics/VxSmoothing.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatMath.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

// Triangular moving mean: weight 1 - distance/Range inside the span. Distance(i, j)
// must return 0 for equal abscissae, so that each point keeps weight 1 for itself.
template <typename Distance>
void SmoothWith(const TVxRealArray& X, TVxRealArray& Y, double Range, Distance distance)
{
    const int n = static_cast<int>(std::min(X.size(), Y.size()));
    if (n < 3)
        throw EMathError(QStringLiteral("Not enough data!"));
    if (!(Range > 0.0))
        return;

    // Smoothed values go to a scratch array first, so no smoothed value is read again.
    TVxRealArray smoothed(n);
    for (int i = 0; i < n; ++i) {
        int l = i;
        while (l >= 1 && distance(i, l) < Range)
            --l;
        int u = i;
        while (u < n - 1 && distance(i, u) < Range)
            ++u;
        double S = 0.0;
        double Sw = 0.0;
        for (int j = l; j <= u; ++j) {
            const double w = j == i ? 1.0 : 1.0 - distance(i, j) / Range;
            if (w > 0.0) {
                S += Y[j] * w;
                Sw += w;
            }
        }
        smoothed[i] = FDiv(S, Sw);
    }
    std::copy(smoothed.begin(), smoothed.end(), Y.begin());
}

} // namespace

void SmoothVector(const TVxRealArray& X, TVxRealArray& Y, double Range)
{
    SmoothWith(X, Y, Range, [&X](int i, int j) {
        return X[i] == X[j] ? 0.0 : std::fabs(X[i] - X[j]);
    });
}

void SmoothVectorLog(const TVxRealArray& X, TVxRealArray& Y, double Range)
{
    const size_t n = std::min(X.size(), Y.size());
    TVxRealArray logX;
    if (n >= 3 && Range > 0.0) {
        // Every span search starts at its own point, so each x takes its logarithm and a
        // non-positive x raises even where its neighbours are equal to it.
        logX.resize(n);
        for (size_t i = 0; i < n; ++i)
            logX[i] = FLog10(X[i]);
    }
    SmoothWith(X, Y, Range, [&X, &logX](int i, int j) {
        return X[i] == X[j] ? 0.0 : std::fabs(logX[size_t(i)] - logX[size_t(j)]);
    });
}

} // namespace vx
