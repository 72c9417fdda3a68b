#include "vx/series/VxPointKernels.h"

#include "vx/core/VxConsts.h"
#include "vx/graph/VxAxis.h"

#include <algorithm>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vx {

namespace {

// Folds point I into R when both coordinates are finite (the first occurrence of an
// extreme wins, as only a strictly better value moves its index).
inline void FoldPoint(TVxPointRanges& R, const double* X, const double* Y, int I)
{
    const double x = X[I], y = Y[I];
    if (!std::isfinite(x) || !std::isfinite(y))
        return;
    TakeBelow(x, I, R.XMin, R.XMinIdx);
    TakeAbove(x, I, R.XMax, R.XMaxIdx);
    TakeBelow(y, I, R.YMin, R.YMinIdx);
    TakeAbove(y, I, R.YMax, R.YMaxIdx);
}

TVxPointRanges EmptyRanges()
{
    return {CVxMaxReal, CVxMinReal, CVxMaxReal, CVxMinReal, -1, -1, -1, -1};
}

// First index in From..To-1 holding exactly Value (which the caller knows is there).
int FirstIndexOf(const double* V, int From, int To, double Value)
{
    int i = From;
    while (i < To - 1 && V[i] != Value)
        ++i;
    return i;
}

#if defined(__SSE2__)
inline double Lane0(__m128d V)
{
    return _mm_cvtsd_f64(V);
}
inline double Lower(__m128d V)
{
    return std::fmin(Lane0(V), Lane0(_mm_unpackhi_pd(V, V)));
}
inline double Upper(__m128d V)
{
    return std::fmax(Lane0(V), Lane0(_mm_unpackhi_pd(V, V)));
}
#endif

} // namespace

TVxPointRanges ScanPointRangesPlain(const double* X, const double* Y, int Count)
{
    TVxPointRanges r = EmptyRanges();
    for (int i = 0; i < Count; ++i)
        FoldPoint(r, X, Y, i);
    return r;
}

TVxPointRanges ScanPointRanges(const double* X, const double* Y, int Count)
{
#if defined(__SSE2__)
    // Blocks small enough to stay in the first-level cache: a vector pass gives the block's
    // extremes, and only an extreme that beats the ranges so far is looked up again for
    // its index. A block with a non-finite value goes through the plain loop.
    constexpr int kBlock = 512;
    TVxPointRanges r = EmptyRanges();
    const __m128d zero = _mm_setzero_pd();
    int from = 0;
    for (; from + kBlock <= Count; from += kBlock) {
        const int to = from + kBlock;
        __m128d x0 = _mm_loadu_pd(X + from), x1 = x0, y0 = _mm_loadu_pd(Y + from), y1 = y0;
        __m128d spread = zero; // v - v summed: 0 while every value is finite, NaN after any other
        for (int i = from; i < to; i += 2) {
            const __m128d x = _mm_loadu_pd(X + i), y = _mm_loadu_pd(Y + i);
            spread = _mm_add_pd(spread, _mm_add_pd(_mm_sub_pd(x, x), _mm_sub_pd(y, y)));
            x0 = _mm_min_pd(x0, x);
            x1 = _mm_max_pd(x1, x);
            y0 = _mm_min_pd(y0, y);
            y1 = _mm_max_pd(y1, y);
        }
        if (_mm_movemask_pd(_mm_cmpeq_pd(spread, zero)) != 3) {
            for (int i = from; i < to; ++i)
                FoldPoint(r, X, Y, i);
            continue;
        }
        // An extreme that beats the ranges so far is looked up for its first index.
        const double xMin = Lower(x0), xMax = Upper(x1), yMin = Lower(y0), yMax = Upper(y1);
        if (xMin < r.XMin)
            TakeBelow(xMin, FirstIndexOf(X, from, to, xMin), r.XMin, r.XMinIdx);
        if (xMax > r.XMax)
            TakeAbove(xMax, FirstIndexOf(X, from, to, xMax), r.XMax, r.XMaxIdx);
        if (yMin < r.YMin)
            TakeBelow(yMin, FirstIndexOf(Y, from, to, yMin), r.YMin, r.YMinIdx);
        if (yMax > r.YMax)
            TakeAbove(yMax, FirstIndexOf(Y, from, to, yMax), r.YMax, r.YMaxIdx);
    }
    for (int i = from; i < Count; ++i)
        FoldPoint(r, X, Y, i);
    return r;
#else
    return ScanPointRangesPlain(X, Y, Count);
#endif
}

TVxLinearMap::TVxLinearMap(const TVxAxisMap& Map)
    : Offset(Map.Forward() ? 0 : Map.AxisLength()), Reversed(!Map.Forward()), Scale(Map.Scale()),
      Start(Map.IntToRealPosition(Map.Forward() ? 0 : Map.AxisLength()))
{
}

void MapLinearPointsPlain(const double* X, const double* Y, QPoint* P, int From, int To, const TVxLinearMap& Xm,
                          const TVxLinearMap& Ym, int Invalid)
{
    for (int i = From; i < To; ++i) {
        if (std::isfinite(X[i]) && std::isfinite(Y[i]))
            P[i] = QPoint(Xm(X[i]), Ym(Y[i]));
        else
            P[i] = QPoint(Invalid, Invalid);
    }
}

#if defined(__SSE2__)
namespace {

// One axis of the two-point vector mapping.
struct TLaneMap {
    explicit TLaneMap(const TVxLinearMap& M)
        : Start(_mm_set1_pd(M.Start)), Scale(_mm_set1_pd(M.Scale)), Inverse(_mm_set1_pd(1.0 / M.Scale)),
          Negate(_mm_set1_epi32(M.Reversed ? -1 : 0)), Offset(_mm_set1_epi32(M.Offset))
    {
    }
    // The quotient clamped to the saturation values.
    static __m128d Clamped(__m128d Q)
    {
        return _mm_min_pd(_mm_max_pd(Q, _mm_set1_pd(TVxLinearMap::kLowest)), _mm_set1_pd(TVxLinearMap::kHighest));
    }
    // Rounded half to even (in the default rounding mode).
    static __m128d Rounded(__m128d Q)
    {
        const __m128d round = _mm_set1_pd(TVxLinearMap::kRound);
        return _mm_sub_pd(_mm_add_pd(Q, round), round);
    }
    // d -> Offset + d, or Offset - d on a reversed axis ((d ^ -1) - (-1) == -d).
    __m128i Pixels(__m128d Rounded) const
    {
        const __m128i d = _mm_cvttpd_epi32(Rounded);
        return _mm_add_epi32(_mm_sub_epi32(_mm_xor_si128(d, Negate), Negate), Offset);
    }
    __m128d Start, Scale, Inverse;
    __m128i Negate, Offset;
};

// Maps the pairs of points from From on while both points of a pair are finite; returns
// where it stopped. Multiply: by the reciprocal scale, which rounds the same way as the
// division except within a rounding error of a half; those few quotients are divided
// after all (errors stay below 1e-6 up to the saturation at 2^30; beyond it both saturate).
template <bool Multiply>
int MapPairs(const double* X, const double* Y, QPoint* P, int From, int To, const TLaneMap& Xm, const TLaneMap& Ym)
{
    const __m128d zero = _mm_setzero_pd();
    const __m128d nearHalf = _mm_set1_pd(0.5 - 1e-6);
    const __m128d magnitude = _mm_castsi128_pd(_mm_set1_epi64x(0x7fffffffffffffff));
    int i = From;
    for (; i + 1 < To; i += 2) {
        const __m128d x = _mm_loadu_pd(X + i), y = _mm_loadu_pd(Y + i);
        // v - v is 0 exactly in a finite lane, NaN otherwise.
        const __m128d finite = _mm_and_pd(_mm_cmpeq_pd(_mm_sub_pd(x, x), zero), _mm_cmpeq_pd(_mm_sub_pd(y, y), zero));
        if (_mm_movemask_pd(finite) != 3)
            break;
        const __m128d ax = _mm_sub_pd(x, Xm.Start), ay = _mm_sub_pd(y, Ym.Start);
        __m128d rx, ry;
        if (Multiply) {
            const __m128d qx = TLaneMap::Clamped(_mm_mul_pd(ax, Xm.Inverse));
            const __m128d qy = TLaneMap::Clamped(_mm_mul_pd(ay, Ym.Inverse));
            rx = TLaneMap::Rounded(qx);
            ry = TLaneMap::Rounded(qy);
            const __m128d farX = _mm_cmpgt_pd(_mm_and_pd(_mm_sub_pd(qx, rx), magnitude), nearHalf);
            const __m128d farY = _mm_cmpgt_pd(_mm_and_pd(_mm_sub_pd(qy, ry), magnitude), nearHalf);
            if (_mm_movemask_pd(_mm_or_pd(farX, farY)) != 0) {
                rx = TLaneMap::Rounded(TLaneMap::Clamped(_mm_div_pd(ax, Xm.Scale)));
                ry = TLaneMap::Rounded(TLaneMap::Clamped(_mm_div_pd(ay, Ym.Scale)));
            }
        } else {
            rx = TLaneMap::Rounded(TLaneMap::Clamped(_mm_div_pd(ax, Xm.Scale)));
            ry = TLaneMap::Rounded(TLaneMap::Clamped(_mm_div_pd(ay, Ym.Scale)));
        }
        // (x_i, x_i+1) and (y_i, y_i+1) interleaved into two QPoints.
        _mm_storeu_si128(reinterpret_cast<__m128i*>(P + i), _mm_unpacklo_epi32(Xm.Pixels(rx), Ym.Pixels(ry)));
    }
    return i;
}

} // namespace
#endif

void MapLinearPoints(const double* X, const double* Y, QPoint* P, int From, int To, const TVxLinearMap& Xm,
                     const TVxLinearMap& Ym, int Invalid)
{
#if defined(__SSE2__)
    const TLaneMap xl(Xm), yl(Ym);
    const bool multiply = std::isnormal(1.0 / Xm.Scale) && std::isnormal(1.0 / Ym.Scale);
    int i = From;
    while (i < To) {
        i = multiply ? MapPairs<true>(X, Y, P, i, To, xl, yl) : MapPairs<false>(X, Y, P, i, To, xl, yl);
        // A pair with a non-finite coordinate, or the odd last point.
        const int next = std::min(i + 2, To);
        MapLinearPointsPlain(X, Y, P, i, next, Xm, Ym, Invalid);
        i = next;
    }
#else
    MapLinearPointsPlain(X, Y, P, From, To, Xm, Ym, Invalid);
#endif
}

} // namespace vx
