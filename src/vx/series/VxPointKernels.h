#pragma once
// The two passes over all points of a series that a first render cannot avoid: finding
// the data ranges and mapping the values to pixels. Both stream through millions of
// values, so they work on raw arrays, two values per instruction where the processor has
// SSE2, with a plain loop beside each that gives the same result bit for bit.

#include <QPoint>

namespace vx {

class TVxAxisMap;

// A new extreme and its index: V at I replaces Min (Max) when strictly below (above) it,
// so the first occurrence of an extreme keeps its index.
inline void TakeBelow(double V, int I, double& Min, int& MinIdx)
{
    if (V < Min) {
        Min = V;
        MinIdx = I;
    }
}
inline void TakeAbove(double V, int I, double& Max, int& MaxIdx)
{
    if (V > Max) {
        Max = V;
        MaxIdx = I;
    }
}

// Smallest and largest x and y over the points 0..Count-1 whose two coordinates are both
// finite, each with the index of its first occurrence; indexes are -1 when no point
// counts (the extremes are then left at +max / -max).
struct TVxPointRanges {
    double XMin, XMax, YMin, YMax;
    int XMinIdx, XMaxIdx, YMinIdx, YMaxIdx;
};
TVxPointRanges ScanPointRanges(const double* X, const double* Y, int Count);
TVxPointRanges ScanPointRangesPlain(const double* X, const double* Y, int Count);

// The linear branch of TVxAxisMap::RealToIntPosition for a finite value: the same
// quotient, rounded half to even and saturated the same way.
struct TVxLinearMap {
    explicit TVxLinearMap(const TVxAxisMap& Map);
    int operator()(double V) const
    {
        double q = (V - Start) / Scale;
        q = q > kLowest ? q : kLowest; // also for NaN, which the caller discards
        q = q < kHighest ? q : kHighest;
        const int d = int((q + kRound) - kRound); // round half to even in the default mode
        return Reversed ? Offset - d : Offset + d;
    }

    static constexpr double kLowest = -1073741824.0; // INT_MIN / 2
    static constexpr double kHighest = 1073741823.0; // INT_MAX / 2
    static constexpr double kRound = 6755399441055744.0; // 1.5 * 2^52
    int Offset;
    bool Reversed;
    double Scale;
    double Start;
};

// Maps points From..To-1 of X, Y through Xm, Ym into P; a point with a non-finite
// coordinate becomes (Invalid, Invalid).
void MapLinearPoints(const double* X, const double* Y, QPoint* P, int From, int To, const TVxLinearMap& Xm,
                     const TVxLinearMap& Ym, int Invalid);
void MapLinearPointsPlain(const double* X, const double* Y, QPoint* P, int From, int To, const TVxLinearMap& Xm,
                          const TVxLinearMap& Ym, int Invalid);

} // namespace vx
