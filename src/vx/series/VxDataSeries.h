#pragma once
// The root of the series tree and the plain series that draw measured data: lines with an
// optional area fill, point symbols, and error bars.
//
// A series draws the values of an x and a y vector through an x and a y axis of one graph.
// It keeps the data range of its points in two TRange objects that its axes read, caches
// the pixel position of every point, and owns the series that depend on it (calculated
// curves), which it frees with itself.
//
// Values that cannot be drawn. A point whose x or y value is NaN or infinite is skipped: it
// does not widen the ranges, it gets no symbol, no error bars and no arrow, and the line is
// broken there (a gap); the area fill closes each unbroken run separately. An error or
// arrow component that is not finite counts as 0. (Values <= 0 on a logarithmic axis are
// drawn at the axis start, as the axis maps them.)
//
// Lifetime. Axes, vectors, the graph and the parent series may be deleted in any order; a
// series clears its references when they go (QObject::destroyed) and keeps working with
// what is left.

#include "vx/core/VxConsts.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>
#include <vector>

namespace vx {

class TCanvas;
class TRange;
class TVx2DGraph;
class TVxAreaStyle;
class TVxAxis;
class TVxCustomRealVector;
class TVxDrawingWorld;
class TVxIniList;
class TVxLineStyle;
class TVxPointVector;
class TVxSeriesList;

// Base of every series: axes, data vectors, ranges, pixel cache, line and area drawing,
// children, captions and settings.
// (Interface under construction; the implementation follows with the graph unit.)
class TVxSeries : public QObject {

public:
    explicit TVxSeries(QObject* AOwner = nullptr);
    ~TVxSeries() override;

    // --- Data binding ------------------------------------------------------------------
    virtual void SetWeight(TVxCustomRealVector* Vector);
    // The weight vector used by calculated children (a calculated series may use its parent's).
    virtual TVxCustomRealVector* GetWeight() const;
    virtual void SetXData(TVxCustomRealVector* Vector);
    virtual void SetYData(TVxCustomRealVector* Vector);
    TVxCustomRealVector* XData() const;
    TVxCustomRealVector* YData() const;
    TVxCustomRealVector* Weight() const;

    // Binds the series to an axis; through the axis's graph it also gets the drawing world.
    void SetXAxis(TVxAxis* Axis);
    void SetYAxis(TVxAxis* Axis);
    TVxAxis* XAxis() const;
    TVxAxis* YAxis() const;
    TVxDrawingWorld* DrawingWorld() const;
    // The graph that the x (else y) axis belongs to; nullptr when unbound.
    TVx2DGraph* Graph() const;

    // Smallest and largest x and y of the drawable points (start > stop while empty).
    TRange* XRange() const;
    TRange* YRange() const;

    // --- Points --------------------------------------------------------------------------
    // Number of points drawn: min(XData count, YData count), 0 when a vector is missing.
    int PointsCount() const { return FPointsCount; }
    // Pixel positions, in drawing-world coordinates, of the last CalculatePoints.
    const TVxPointVector& Points() const;
    // False for a point skipped because its x or y is NaN or infinite.
    bool PointIsValid(int Index) const;
    virtual void SetPointsCount();
    virtual int XIdxNeeded() const;
    virtual int YIdxNeeded() const;
    // Recomputes ranges (when dirty) or pixel positions; the graph calls it before drawing.
    void CalculatePoints();
    virtual void CalculatePoint(int Index);

    // --- Ranges ---------------------------------------------------------------------------
    virtual void GetNewXStartStop();
    virtual void GetNewYStartStop();
    // Folds one value into the range in constant time (rescans only if an extreme moved).
    virtual void CalcXValue(int Index);
    virtual void CalcYValue(int Index);

    // --- Change propagation ----------------------------------------------------------------
    // Pixel positions must be recomputed; repaints the drawing world and refreshes legends.
    void Modified();
    // Ranges and children must be recomputed as well.
    void RangesModified();
    // A child changed a setting: the ranges are rescanned before the next drawing.
    void ChildModified();
    void RecalculateChilds();
    void UpdateLegend();
    void DsgnUpdate();
    void TestOrder();
    bool PointsDirty() const { return FPointsDirty; }
    bool RangesDirty() const { return FRangesDirty; }
    bool ChildsDirty() const { return FChildsDirty; }

    // Change handlers registered with the vectors: (Index, AllChanged).
    void FOnXIChanged(int Index, bool AllChanged);
    void FOnYIChanged(int Index, bool AllChanged);
    virtual void FOnWeightChanged(int Index, bool AllChanged);

    // --- Dependent series ------------------------------------------------------------------
    // The owned list of dependent series, freed (last first) with this series.
    TVxSeriesList* Childs() const;
    // Hooks for calculated series; a plain series is not one and ignores them.
    virtual bool IsCalculatedSeries() const { return false; }
    virtual void Calculate() {}
    virtual void CalculateLine() {}

    // --- Drawing -------------------------------------------------------------------------
    // Draws the line, the area fill, the symbols and then the children. The canvas origin is
    // the drawing world's top-left corner and it is clipped to the drawing world.
    void Draw(TCanvas& Canvas);
    virtual void DrawLine(TCanvas& Canvas);
    // Point symbols and error bars; the base draws none.
    virtual void DrawPoints(TCanvas& Canvas);

    TVxLineStyle* LineStyle() const;
    void SetLineStyle(const TVxLineStyle* Value);
    TVxAreaStyle* AreaStyle() const;
    void SetAreaStyle(const TVxAreaStyle* Value);

    // --- Value/pixel mapping in graph coordinates --------------------------------------------
    int RealToIntX(double Value) const;
    int RealToIntY(double Value) const;
    double IntToRealX(int Pixel) const;
    double IntToRealY(int Pixel) const;
    // Index of the last point within Tolerance pixels (a square) of graph point (X, Y), or -1.
    virtual int FindPoint(int X, int Y, int Tolerance) const;

    // --- Captions ----------------------------------------------------------------------------
    QString Caption() const { return FCaption; }
    void SetCaption(const QString& S);
    bool DoUserCaption() const { return FDoUserCaption; }
    void SetDoUserCaption(bool Value);
    QString UserCaption() const { return FUserCaption; }
    void SetUserCaption(const QString& S);
    QString AutoCaption() const { return FAutoCaption; }
    void SetAutoCaption(const QString& S);
    bool IncludeInLegend() const { return FIncludeInLegend; }
    void SetIncludeInLegend(bool Value);

    // --- Settings ----------------------------------------------------------------------------
    // Private settings list (caption under "Datapoints"/"Caption"; results of children).
    TVxIniList* SettingsList() const;
    virtual void WriteToIni(TVxIniList& List, const QString& Section) const;
    virtual void ReadFromIni(TVxIniList& List, const QString& Section);

protected:
    // Cached pixel positions (drawing-world coordinates) plus room for two closing points.
    std::unique_ptr<TVxPointVector> FPoints;
    std::unique_ptr<TRange> FXRange;
    std::unique_ptr<TRange> FYRange;
    std::unique_ptr<TVxLineStyle> FLineStyle;
    std::unique_ptr<TVxAreaStyle> FAreaStyle;
    std::unique_ptr<TVxSeriesList> FChilds;
    std::unique_ptr<TVxIniList> FSettings;
    QPointer<TVxCustomRealVector> FXData;
    QPointer<TVxCustomRealVector> FYData;
    QPointer<TVxCustomRealVector> FWeight;
    QPointer<TVxAxis> FXAxis;
    QPointer<TVxAxis> FYAxis;
    QPointer<TVxDrawingWorld> FDrawingWorld;
    bool FPointsDirty = true;
    bool FRangesDirty = false;
    bool FChildsDirty = false;
    bool FDoUserCaption = false;
    bool FIncludeInLegend = true;
    bool FDestroying = false;
    QString FCaption;
    QString FUserCaption;
    QString FAutoCaption;
    int FPointsCount = 0;
    int FXMinIdx = -1;
    int FXMaxIdx = -1;
    int FYMinIdx = -1;
    int FYMaxIdx = -1;
};

// A series that holds its own data vectors (the type of a calculated series' parent).
class TVxNotCalculatedSeries : public TVxSeries {
public:
    explicit TVxNotCalculatedSeries(QObject* AOwner = nullptr);
};

// A line series; on creation it binds to the last graph among its owner's children.
class TVxLineSeries : public TVxNotCalculatedSeries {
public:
    explicit TVxLineSeries(QObject* AOwner = nullptr);
};

} // namespace vx
