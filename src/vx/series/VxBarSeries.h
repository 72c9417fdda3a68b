#pragma once
// Bar charts and histograms: each bar covers one class between two consecutive class
// edges and has the height of the class value.
//
// Upright bars take the class edges from XData (one more value than there are bars) and
// the heights from YData; lying bars (BarHorizontal) take the edges from YData and the
// lengths from XData. Each bar is filled with the area style's colour and brush style
// and outlined with the line style; the fill does not depend on AreaStyle.Visible, while
// a hidden line style leaves the outline out (both hidden: nothing is drawn). So the
// default series draws navy bars outlined in blue; a clear brush style gives outlines
// only.
//
// Bars stand on the value 0, so the value range always includes 0; on a logarithmic value
// axis they stand on the axis start, and the value range holds only the bar ends above 0. Several bar series on
// the same class axis and edges can share each class side by side (ShiftOverlays: the
// earlier series in its owner's children is on the left) or stand on each other
// (StackOverlays: a series stands on the bar series with StackOverlays created before it
// on the same class axis, and rescans its range when their data or settings change or
// one of them is deleted); a stacked bar's range covers its base and its top. Show3DBars
// draws blocks whose depth is DepthPercent of the bar width; the class range then widens
// by the depth of the last bar.
//
// Cost. A change of one edge or value folds it into the ranges in constant time (a full
// rescan only when an extreme moves inward, and for the class range of blocks); the pixel
// positions are recomputed whole at each drawing.
//
// Bad values. A bar whose edge or value (or, stacked, a value below it) is NaN or
// infinite is not drawn and leaves the ranges alone; a stacked sum that overflows counts
// as the largest real. The gap is drawn as at least 0 and at most 100 percent and the
// depth as at least 0; a percentage that is not finite counts as 0 (the stored
// properties keep what was set).

#include "vx/series/VxDataSeries.h"

#include <QList>

namespace vx {

class TVxBarSeries : public TVxLineSeries {
    Q_OBJECT
    Q_PROPERTY(bool ShiftOverlays READ ShiftOverlays WRITE SetShiftOverlays)
    Q_PROPERTY(bool StackOverlays READ StackOverlays WRITE SetStackOverlays)
    Q_PROPERTY(bool Show3DBars READ Show3DBars WRITE SetShow3DBars)
    Q_PROPERTY(bool BarHorizontal READ BarHorizontal WRITE SetBarHorizontal)
    Q_PROPERTY(double DepthPercent READ DepthPercent WRITE SetDepthPercent)
    Q_PROPERTY(double BarsGapPercent READ BarsGapPercent WRITE SetBarsGapPercent)

public:
    // Blue outline, navy fill drawn in copy mode.
    explicit TVxBarSeries(QObject* AOwner = nullptr);

    bool Show3DBars() const { return FShow3DBars; }
    void SetShow3DBars(bool Value);
    // Bars lie along the x axis; the classes are on the y axis.
    bool BarHorizontal() const { return FBarHorizontal; }
    void SetBarHorizontal(bool Value);
    // Shares each class with the other bar series on the same edges (turns stacking off).
    bool ShiftOverlays() const { return FShiftOverlays; }
    void SetShiftOverlays(bool Value);
    // Stands on the earlier stacked bar series (turns shifting off).
    bool StackOverlays() const { return FStackOverlays; }
    void SetStackOverlays(bool Value);
    // Depth of 3D bars in percent of the bar width (default 50).
    double DepthPercent() const { return FDepthPercent; }
    void SetDepthPercent(double Value);
    // Gap between neighbouring classes in percent of the class width (default 0).
    double BarsGapPercent() const { return FBarsGapPercent; }
    void SetBarsGapPercent(double Value);

    // Number of bars drawn: (edge count - 1), capped at the value count.
    int BarCount() const { return FBarCount; }
    // The stacked series below this one, bottom first (rebuilt by SetPointsCount).
    QList<TVxBarSeries*> StackList() const;
    // Value I of the y and x data as drawn: for the value coordinate (y of upright bars,
    // x of lying ones) the top of bar I, its own value plus the values of the stacked
    // series below it (NaN when any part is not finite); for the class coordinate edge I
    // (NaN when missing).
    double GetY(int I) const;
    double GetX(int I) const;

    // As for any series; the stacked series standing on this one rescan as well.
    void SetXData(TVxCustomRealVector* Vector) override;
    void SetYData(TVxCustomRealVector* Vector) override;
    void SetPointsCount() override;
    int XIdxNeeded() const override;
    int YIdxNeeded() const override;
    void GetNewXStartStop() override;
    void GetNewYStartStop() override;
    bool HasPlainRangeScan() const override { return false; }
    void CalcXValue(int Index) override;
    void CalcYValue(int Index) override;
    void CalculatePoint(int Index) override;
    void DrawLine(TCanvas& Canvas) override;
    // The last bar whose class holds graph point (X, Y) and whose top edge lies within
    // Tolerance pixels of it along the value axis, or -1.
    int FindPoint(int X, int Y, int Tolerance) const override;
    void WriteToIni(TVxIniList& List, const QString& Section) const override;
    void ReadFromIni(TVxIniList& List, const QString& Section) override;

protected:
    bool CanKeepPixels() const override { return false; }
    // The stacked series above this one stand on its values: they rescan too.
    void DataChanged() override;
    void CalculatePointRange(int From, int To) override { CalculateEachPoint(From, To); }

private:
    // Pixel geometry of one drawn bar.
    struct TBarRect {
        int Left, Top, Right, Bottom, DX, DY;
    };
    // The class and value vectors for the orientation.
    TVxCustomRealVector* EdgeData() const { return FBarHorizontal ? FYData : FXData; }
    TVxCustomRealVector* ValueData() const { return FBarHorizontal ? FXData : FYData; }
    TVxAxis* ClassAxis() const { return FBarHorizontal ? FYAxis : FXAxis; }
    TVxAxis* ValueAxis() const { return FBarHorizontal ? FXAxis : FYAxis; }
    // Value of bar I plus those below it (the bar's top), NaN when not finite.
    double StackedValue(int I) const;
    // Value where bar I starts (0, or the top of the series below; NaN when not finite).
    double StackBase(int I) const;
    // Bar I can be drawn: its edges, value and base are finite.
    bool IsValidBar(int I) const;
    bool LogValues() const;
    // Pixel of a bar end on the value axis.
    int ValuePixel(double Value) const;
    void RebuildStackList();
    // RangesModified for this series and the stacked series standing on it.
    void SettingChanged();
    // n and k of the overlay group, and the group's gap and depth percentages.
    void OverlayGroup(int& N, int& K, double& Gap, double& Depth) const;
    bool BarRect(int I, int N, int K, double Gap, double Depth, TBarRect& R) const;
    // Number of class edges the class range covers.
    int EdgesNeeded() const;
    // The span that edge I adds to the class range, or bar I to the value range; false
    // when it adds none.
    bool EdgeSpan(int I, double& Lo, double& Hi) const;
    bool BarSpan(int I, double& Lo, double& Hi) const;
    // Rescans the class range (Edges) or the value range, with the indexes of the extremes.
    void ScanSpansOf(bool Edges);
    void ScanClassRange();
    void ScanValueRange();
    // Folds edge I (Edges) or bar I into its range in constant time (see FoldIntoRange).
    void FoldSpanOf(bool Edges, int I);
    void ClassDataChanged(int Index);

    bool FShow3DBars = false;
    bool FBarHorizontal = false;
    bool FShiftOverlays = false;
    bool FStackOverlays = false;
    double FDepthPercent = 50.0;
    double FBarsGapPercent = 0.0;
    int FBarCount = 0;
    // The value range was last scanned for a logarithmic value axis.
    bool FRangeOnLog = false;
    QList<QPointer<TVxBarSeries>> FStackList;
};

} // namespace vx
