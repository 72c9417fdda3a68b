#include "vx/series/VxPolylineReducer.h"

#include <algorithm>

namespace vx {

namespace {

// The points that stand for one column run, in drawing order, without repeats.
//
// Segments are drawn from their start pixel up to, not including, their end pixel. The
// column's segments therefore cover the whole span from the lowest to the highest point,
// except the last point when it lies strictly beyond all earlier ones (it is only an end
// there); the segment leaving the column starts on the last point and covers it anyway.
// The chosen order reproduces exactly that coverage, so that a run's final column (with
// no segment leaving it) keeps its pixels too.
int ColumnPoints(int x, int firstY, int minY, int maxY, int lastY, bool lastStrictMin, bool lastStrictMax,
                 QPoint out[4])
{
    int ys[4];
    int k = 0;
    ys[k++] = firstY;
    if (lastStrictMin) {
        ys[k++] = maxY;
    } else if (lastStrictMax) {
        ys[k++] = minY;
    } else if (lastY == maxY) {
        ys[k++] = maxY;
        ys[k++] = minY;
    } else {
        ys[k++] = minY;
        ys[k++] = maxY;
    }
    ys[k++] = lastY;
    int n = 0;
    for (int i = 0; i < k; ++i) {
        if (n == 0 || out[n - 1].y() != ys[i])
            out[n++] = QPoint(x, ys[i]);
    }
    return n;
}

} // namespace

void TVxPolylineReducer::Clear()
{
    FPoints.clear();
    FRunStarts.clear();
    FInputCount = 0;
    FRunInputCount = 0;
    FInRun = false;
    FHasColumn = false;
}

void TVxPolylineReducer::AddToNewColumn(QPoint P)
{
    ++FInputCount;
    if (!FInRun) {
        FRunStarts.push_back(int(FPoints.size()));
        FInRun = true;
        FRunInputCount = 0;
    }
    ++FRunInputCount;
    FlushColumn();
    FHasColumn = true;
    FColumnX = P.x();
    FFirstY = FMinY = FMaxY = FLastY = P.y();
    FLastStrictMin = FLastStrictMax = false;
}

void TVxPolylineReducer::AddPoints(const QPoint* P, int Count, int Skip)
{
    int i = 0;
    while (i < Count) {
        const int x = P[i].x();
        if (x == Skip) {
            Break();
            ++i;
            continue;
        }
        if (!(FHasColumn && FInRun && x == FColumnX)) {
            AddToNewColumn(P[i]);
            ++i;
            continue;
        }
        // A run of further points in the open column (FColumnX is never Skip). A repeated
        // y leaves the strictness flags alone, as Add does; otherwise they are set afresh.
        int minY = FMinY, maxY = FMaxY, lastY = FLastY;
        bool strictMin = FLastStrictMin, strictMax = FLastStrictMax;
        const int first = i;
        for (; i < Count && P[i].x() == x; ++i) {
            const int y = P[i].y();
            const bool repeat = y == lastY;
            strictMin = (strictMin && repeat) || y < minY;
            strictMax = (strictMax && repeat) || y > maxY;
            minY = std::min(minY, y);
            maxY = std::max(maxY, y);
            lastY = y;
        }
        FMinY = minY;
        FMaxY = maxY;
        FLastY = lastY;
        FLastStrictMin = strictMin;
        FLastStrictMax = strictMax;
        FInputCount += i - first;
        FRunInputCount += i - first;
    }
}

void TVxPolylineReducer::Break()
{
    if (FInRun)
        EndRun();
}

void TVxPolylineReducer::FlushColumn()
{
    if (!FHasColumn)
        return;
    QPoint pts[4];
    const int n = ColumnPoints(FColumnX, FFirstY, FMinY, FMaxY, FLastY, FLastStrictMin, FLastStrictMax, pts);
    for (int i = 0; i < n; ++i)
        FPoints.push_back(pts[i]);
    FHasColumn = false;
}


void TVxPolylineReducer::EndRun()
{
    FlushColumn();
    const int start = FRunStarts.back();
    const int emitted = int(FPoints.size()) - start;
    if (FRunInputCount < 2) {
        // A single point draws no line.
        FPoints.resize(size_t(start));
        FRunStarts.pop_back();
    } else if (emitted == 1) {
        // Several points on one pixel: keep a zero-length segment, as the input had.
        FPoints.push_back(FPoints.back());
    }
    FInRun = false;
}

std::vector<TVxPolylineReducer::TRun> TVxPolylineReducer::Runs() const
{
    std::vector<TRun> runs;
    const int finished = FInRun ? int(FRunStarts.size()) - 1 : int(FRunStarts.size());
    for (int k = 0; k < finished; ++k) {
        const int start = FRunStarts[size_t(k)];
        const int stop = k + 1 < int(FRunStarts.size()) ? FRunStarts[size_t(k) + 1] : int(FPoints.size());
        runs.push_back({FPoints.data() + start, stop - start});
    }
    if (FInRun && FRunInputCount >= 2) {
        const int start = FRunStarts.back();
        FTail.assign(FPoints.begin() + start, FPoints.end());
        if (FHasColumn) {
            QPoint pts[4];
            const int n = ColumnPoints(FColumnX, FFirstY, FMinY, FMaxY, FLastY, FLastStrictMin, FLastStrictMax, pts);
            FTail.insert(FTail.end(), pts, pts + n);
        }
        if (FTail.size() == 1)
            FTail.push_back(FTail.back());
        runs.push_back({FTail.data(), int(FTail.size())});
    }
    return runs;
}

} // namespace vx
