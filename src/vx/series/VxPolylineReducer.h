#pragma once
// Thinning of a long polyline to the points a one-pixel solid pen needs.
//
// Consecutive points that fall into one pixel column are joined by vertical segments, and
// the pixels those segments cover are the column's span from the lowest to the highest of
// them (see ColumnPoints for the end pixel). So a column run can be replaced by its first,
// lowest, highest and last point, in a suitable order: the segments into and out of the
// column keep their end points, and the vertical span is the same. Any data (monotone in x or not) reduces this way; a run of points in
// one column ends when the next point lies in another column. For a curve sampled more
// densely than the pixels this leaves at most four points per column, so drawing costs
// follow the plot width rather than the number of points.
//
// The reducer is fed incrementally (appending points does not reprocess earlier ones);
// Break() ends the current polyline (a gap in the data).

#include <QPoint>
#include <vector>

namespace vx {

class TVxPolylineReducer {
public:
    // Forgets all points.
    void Clear();
    // Appends the next point of the current polyline.
    void Add(QPoint P)
    {
        // The common case inline: a further point in the open column.
        if (FHasColumn && FInRun && P.x() == FColumnX) {
            ++FInputCount;
            ++FRunInputCount;
            if (P.y() == FLastY)
                return; // a repeated point adds no segment
            FLastStrictMin = P.y() < FMinY;
            FLastStrictMax = P.y() > FMaxY;
            if (FLastStrictMin)
                FMinY = P.y();
            if (FLastStrictMax)
                FMaxY = P.y();
            FLastY = P.y();
            return;
        }
        AddToNewColumn(P);
    }
    // Appends Count points in order; a point whose x equals Skip ends the current polyline
    // instead (as Break). Same result as feeding them one by one through Add and Break, with
    // the column state kept in registers for the long runs of a dense curve.
    void AddPoints(const QPoint* P, int Count, int Skip);
    // Ends the current polyline; the next point starts a new one.
    void Break();
    // Number of points fed since the last Clear (breaks not counted).
    int InputCount() const { return FInputCount; }

    // The reduced polylines, each with at least two points (a polyline fed with a single
    // point is dropped, as it draws nothing). Valid until the next change.
    struct TRun {
        const QPoint* Points;
        int Count;
    };
    std::vector<TRun> Runs() const;

private:
    void AddToNewColumn(QPoint P);
    void FlushColumn();
    void EndRun();

    // Finished points; FRunStarts[k] is where polyline k starts in FPoints.
    std::vector<QPoint> FPoints;
    std::vector<int> FRunStarts;
    int FInputCount = 0;
    int FRunInputCount = 0; // points fed to the current polyline
    bool FInRun = false;
    // The open column run of the current polyline.
    bool FHasColumn = false;
    int FColumnX = 0;
    int FFirstY = 0;
    int FMinY = 0;
    int FMaxY = 0;
    int FLastY = 0;
    bool FLastStrictMin = false; // the last point lies below all earlier ones of the column
    bool FLastStrictMax = false;
    // Scratch for Runs(): the current polyline with its open column appended.
    mutable std::vector<QPoint> FTail;
};

} // namespace vx
