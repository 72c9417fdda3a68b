#include "vx/graph/VxAxis.h"
#include "vx/series/VxPointKernels.h"

#include <QRandomGenerator>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace vx;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Values with repeats (ties for the first-occurrence rule) and, at the given places,
// non-finite values, so that blocks with and without them alternate.
std::vector<double> Values(QRandomGenerator& Rng, int N, const std::vector<int>& Bad, double Bad0)
{
    std::vector<double> v(static_cast<size_t>(N));
    for (double& d : v)
        d = double(Rng.bounded(200)) - 100;
    for (int i : Bad)
        if (i < N)
            v[size_t(i)] = Bad0;
    return v;
}

bool SameRanges(const TVxPointRanges& A, const TVxPointRanges& B)
{
    return A.XMin == B.XMin && A.XMax == B.XMax && A.YMin == B.YMin && A.YMax == B.YMax && A.XMinIdx == B.XMinIdx
           && A.XMaxIdx == B.XMaxIdx && A.YMinIdx == B.YMinIdx && A.YMaxIdx == B.YMaxIdx;
}

} // namespace

TEST(VxPointKernels, RangeScanMatchesThePlainLoop)
{
    QRandomGenerator rng(7);
    for (int n : {0, 1, 511, 512, 513, 1500, 5000}) {
        SCOPED_TRACE(n);
        auto x = Values(rng, n, {600, 2000}, kNaN);
        auto y = Values(rng, n, {1030, 4999}, -kInf);
        EXPECT_TRUE(SameRanges(ScanPointRanges(x.data(), y.data(), n), ScanPointRangesPlain(x.data(), y.data(), n)));
        // Monotone x: every block moves the maximum.
        for (int i = 0; i < n; ++i)
            x[size_t(i)] = i / 3;
        EXPECT_TRUE(SameRanges(ScanPointRanges(x.data(), y.data(), n), ScanPointRangesPlain(x.data(), y.data(), n)));
    }
    // The extreme of a point with a non-finite partner does not count.
    std::vector<double> x(1024, 1.0), y(1024, 1.0);
    x[700] = 1e9;
    y[700] = kNaN;
    const TVxPointRanges r = ScanPointRanges(x.data(), y.data(), 1024);
    EXPECT_EQ(r.XMax, 1.0);
    EXPECT_EQ(r.XMaxIdx, 0);
    const std::vector<double> none(1024, kNaN);
    EXPECT_EQ(ScanPointRanges(none.data(), none.data(), 1024).XMinIdx, -1);
}

TEST(VxPointKernels, VectorMappingMatchesThePlainLoop)
{
    // Halves (ties to even), saturation far outside, non-finite values in either lane of a
    // pair, odd counts, and forward and reversed axes with and without a usable reciprocal.
    QRandomGenerator rng(11);
    const int n = 4001;
    std::vector<double> x(static_cast<size_t>(n)), y(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        x[size_t(i)] = rng.bounded(8000) / 8.0 - 250;
        y[size_t(i)] = rng.generateDouble() * 1e3 - 500;
    }
    const double special[] = {kNaN, kInf, -kInf, 1e300, -1e300, 1e-300, 0.0};
    for (int k = 0; k < 70; ++k)
        (k % 2 ? x : y)[size_t(rng.bounded(n))] = special[k % 7];
    struct Axes {
        double Start, Stop;
        int Length;
        bool Vertical, Twisted;
    };
    for (const Axes& a : {Axes{0, 500, 333, false, false}, Axes{-3, 7, 257, true, false}, Axes{0, 500, 400, false, true},
                          Axes{0, 1e-310, 300, false, false}}) {
        TVxAxisScale scale;
        scale.Start = a.Start;
        scale.Stop = a.Stop;
        const TVxLinearMap m(TVxAxisMap(scale, AxNormal, a.Length, a.Vertical, a.Twisted));
        for (int from : {0, 1}) {
            std::vector<QPoint> fast(static_cast<size_t>(n)), plain(static_cast<size_t>(n));
            MapLinearPoints(x.data(), y.data(), fast.data(), from, n, m, m, -7);
            MapLinearPointsPlain(x.data(), y.data(), plain.data(), from, n, m, m, -7);
            EXPECT_EQ(fast, plain) << a.Start << ".." << a.Stop << " from " << from;
        }
    }
}
