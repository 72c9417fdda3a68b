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
// arrow component that is not finite counts as 0; a point's end that overflows (a huge
// value plus its error) counts as the largest real, so the ranges stay finite. Values
// <= 0 on a logarithmic axis are drawn one pixel beyond the axis start, just outside the
// plot (the axis's own RealToIntPosition gives them -1, which on an upward y axis would
// be beyond its stop), and an area fill on a logarithmic y axis reaches down to the axis
// start: 0 lies infinitely far below it.
//
// Cost. Appending to a live vector folds the new value into the ranges and maps the new
// point in constant time. While the axes' mapping stays the same and every vector reports
// its changes (live vectors), the pixel cache is kept and a redraw maps only new points;
// plain vectors are remapped whole whenever the graph recalculates. A one-pixel solid line
// is drawn from a per-pixel-column reduction of the points (TVxPolylineReducer), so its
// cost follows the plot width. From 2000 points on, raster drawing keeps the line and the
// symbols in layers that are extended when points are appended and otherwise drawn again
// as they are (TVxLineLayer, TVxSymbolLayer; symbols only while small). All of it gives
// the same pixels as drawing every point. Symbol sizes (and error-bar caps) above 4096
// pixels are drawn at 4096.
//
// Typical use (the series binds to the last graph among the form's children):
//     auto* x = new TVxLiveVector(form);  auto* y = new TVxLiveVector(form);
//     auto* s = new TVxDataSeries(form);
//     s->SetXData(x);  s->SetYData(y);  s->PointStyle().SetStyle(SyCircleFilled);
//     x->Add(t);  y->Add(v);    // the axes follow at the next paint
//
// Lifetime. Axes, vectors, the graph and the parent series may be deleted in any order; a
// series clears its references when they go (QObject::destroyed) and keeps working with
// what is left.

#include "vx/core/VxConsts.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxAxis.h"
#include "vx/graph/VxDraw.h"
#include "vx/platform/VxGraphics.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QString>
#include <climits>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace vx {

class TCanvas;
class TRange;
class TVx2DGraph;
class TVxCustomRealVector;
class TVxDrawingWorld;
class TVxIniList;
class TVxIntegerVector;
class TVxPointVector;
class TVxLineLayer;
class TVxPolylineReducer;
class TVxSeriesList;
class TVxSymbolLayer;

// Restores the canvas pen, brush and clip when a drawing step ends.
class TVxCanvasStateGuard {
public:
    explicit TVxCanvasStateGuard(TCanvas& Canvas);
    ~TVxCanvasStateGuard();
    TVxCanvasStateGuard(const TVxCanvasStateGuard&) = delete;
    TVxCanvasStateGuard& operator=(const TVxCanvasStateGuard&) = delete;

private:
    TCanvas& FCanvas;
    TPen FPen;
    TBrush FBrush;
    bool FHadClip;
    QRect FClip;
};

// Base of every series: axes, data vectors, ranges, pixel cache, line and area drawing,
// children, captions and settings.
class TVxSeries : public QObject, public IVxModifiable {
    Q_OBJECT
    Q_PROPERTY(bool IncludeInLegend READ IncludeInLegend WRITE SetIncludeInLegend)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)

public:
    // Pixel coordinate marking a point that is not drawn.
    static constexpr int CInvalidPixel = INT_MIN;

    explicit TVxSeries(QObject* AOwner = nullptr);
    ~TVxSeries() override;

    // --- Data binding ------------------------------------------------------------------
    // Weight vector for calculated children (registers FOnWeightChanged with it).
    virtual void SetWeight(TVxCustomRealVector* Vector);
    // The weight vector in force (a calculated series may use its parent's).
    virtual TVxCustomRealVector* GetWeight() const;
    // Data vectors. The series listens to a vector's change notices from the moment it is
    // set, also while no axis is set yet. The data range is entered in the axis's range
    // list when the vector is set while the axis is there; setting the axis afterwards
    // enters it only for a TVxLiveVector (set the data after the axes).
    virtual void SetXData(TVxCustomRealVector* Vector);
    virtual void SetYData(TVxCustomRealVector* Vector);
    TVxCustomRealVector* XData() const { return FXData; }
    TVxCustomRealVector* YData() const { return FYData; }
    TVxCustomRealVector* Weight() const { return FWeight; }

    // Binds the series to an axis; through the axis's graph it also gets the drawing world.
    void SetXAxis(TVxAxis* Axis);
    void SetYAxis(TVxAxis* Axis);
    TVxAxis* XAxis() const { return FXAxis; }
    TVxAxis* YAxis() const { return FYAxis; }
    TVxDrawingWorld* DrawingWorld() const { return FDrawingWorld; }
    // The graph of the drawing world (else of an axis); nullptr when unbound.
    TVx2DGraph* Graph() const;

    // Smallest and largest x and y of the drawable points (start > stop while empty).
    TRange* XRange() const { return FXRange.get(); }
    TRange* YRange() const { return FYRange.get(); }

    // --- Points --------------------------------------------------------------------------
    // Number of points drawn: min(XData count, YData count), 0 when a vector is missing.
    int PointsCount() const { return FPointsCount; }
    // Pixel positions, in drawing-world coordinates, of the last CalculatePoints.
    const TVxPointVector& Points() const { return *FPoints; }
    // Pixel position of point Index; false for a point skipped because its x or y is NaN
    // or infinite (or Index is outside 0..PointsCount-1).
    bool PointAt(int Index, QPoint& P) const;
    virtual void SetPointsCount();
    virtual int XIdxNeeded() const;
    virtual int YIdxNeeded() const;
    // Recomputes ranges (when dirty, empty or inverted) or pixel positions; the graph calls
    // it before drawing. A rescan that moves a range asks the graph to recalculate and maps
    // nothing; one that leaves the ranges as they were (a single point, all values equal)
    // maps the points at once, so that the graph does not recalculate for ever.
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
    void Modified() override;
    // Ranges and children must be recomputed as well; the graph recalculates (rescaling
    // its axes) before it paints again.
    void RangesModified();
    // A child changed a setting: the ranges are rescanned before the next drawing (the
    // graph recalculates as for RangesModified).
    void ChildModified();
    // Runs Calculate on every calculated child.
    void RecalculateChilds();
    // Tells the graph's legends that the items changed.
    void UpdateLegend();
    // Refresh after a design-time change: ranges, points and the graph.
    void DsgnUpdate();
    // Redraws the graph when the series moved among its owner's children.
    void TestOrder();
    bool PointsDirty() const { return FPointsDirty; }
    bool RangesDirty() const { return FRangesDirty; }
    bool ChildsDirty() const { return FChildsDirty; }

    // Change handlers registered with the vectors: (Index, AllChanged). A new value folds
    // into the ranges in constant time; an insertion (the vector grew while Index is not
    // its last value) moves the later values and counts as a change of all of them, and so
    // does a write beyond an error vector's end among the points (the gap shows whatever
    // the vector's storage held).
    void FOnXIChanged(int Index, bool AllChanged);
    void FOnYIChanged(int Index, bool AllChanged);
    virtual void FOnWeightChanged(int Index, bool AllChanged);

    // --- Dependent series ------------------------------------------------------------------
    // The dependent series, freed (last first) with this series.
    const TVxSeriesList& Childs() const { return *FChilds; }
    // Enters a dependent series (it leaves the list by itself when destroyed); a series
    // that this one already depends on is refused. Calculated children are drawn by their
    // parent, others by their drawing world.
    void AddChild(TVxSeries* Child);
    // True when Series is a child of this series or of one of its children.
    bool HasDescendant(const TVxSeries* Series) const;
    void RemoveChild(TVxSeries* Child);
    // Hooks for calculated series; a plain series is not one and ignores them.
    virtual bool IsCalculatedSeries() const { return false; }
    virtual void Calculate() {}
    virtual void CalculateLine() {}

    // --- Drawing -------------------------------------------------------------------------
    // Draws the area and line, the symbols and then the children. The canvas origin is the
    // drawing world's top-left corner and it is clipped to the drawing world.
    void Draw(TCanvas& Canvas);
    virtual void DrawLine(TCanvas& Canvas);
    // Point symbols and error bars; the base draws none.
    virtual void DrawPoints(TCanvas& Canvas);

    TVxLineStyle& LineStyle() const { return *FLineStyle; }
    void SetLineStyle(const TVxLineStyle& Value);
    TVxAreaStyle& AreaStyle() const { return *FAreaStyle; }
    void SetAreaStyle(const TVxAreaStyle& Value);
    // The graph's DataColor as copied on binding (background of xor fills).
    TColor BackgroundColor() const { return FBackgroundColor; }

    // --- Value/pixel mapping in graph coordinates --------------------------------------------
    int RealToIntX(double Value) const;
    int RealToIntY(double Value) const;
    double IntToRealX(int Pixel) const;
    double IntToRealY(int Pixel) const;
    // Index of the last point within Tolerance pixels (a square) of graph point (X, Y), or -1;
    // only points the vectors still hold (a deletion before the next paint is respected).
    Q_INVOKABLE virtual int FindPoint(int X, int Y, int Tolerance) const;

    // --- Captions ----------------------------------------------------------------------------
    // The effective caption, shown in legends.
    QString Caption() const { return FCaption; }
    void SetCaption(const QString& S);
    bool DoUserCaption() const { return FDoUserCaption; }
    // True shows the user's caption, false the automatic one again.
    void SetDoUserCaption(bool Value);
    QString UserCaption() const { return FUserCaption; }
    void SetUserCaption(const QString& S);
    QString AutoCaption() const { return FAutoCaption; }
    void SetAutoCaption(const QString& S);
    bool IncludeInLegend() const { return FIncludeInLegend; }
    void SetIncludeInLegend(bool Value);

    // --- Settings ----------------------------------------------------------------------------
    // Private settings list (caption under "Datapoints"/"Caption"; results of children).
    TVxIniList& SettingsList() const { return *FSettings; }
    virtual void WriteToIni(TVxIniList& List, const QString& Section) const;
    virtual void ReadFromIni(TVxIniList& List, const QString& Section);

protected:
    // The common bodies of SetXAxis/SetYAxis and SetXData/SetYData (XSide: the x one).
    void SetAxis(bool XSide, TVxAxis* Axis);
    void SetData(bool XSide, TVxCustomRealVector* Vector);
    // The common body of FOnXIChanged (XSide) and FOnYIChanged.
    void OnDataChanged(bool XSide, int Index, bool AllChanged);
    // Called after a data vector's change notice was handled (other series may depend on
    // this one's values); the base does nothing.
    virtual void DataChanged() {}
    // Binds to the last graph among the owner's children (line and arrow series).
    void BindToOwnerGraph();
    // True for point Index (< PointsCount) when x and y are finite.
    bool IsValidPoint(int Index) const;
    // Marks point Index as not drawable.
    void SetInvalidPoint(int Index);
    // The pixel cache may be extended instead of recomputed when every vector it depends
    // on reports its changes (live vectors).
    virtual bool CanKeepPixels() const;
    // Every pixel position must be recomputed (data replaced, cache unusable).
    void InvalidatePixels();
    // Point Index changed in place (not appended): the reduced line is rebuilt.
    void PixelChanged(int Index);
    void ResetReducer();
    // References to other components are watched by role: when the component is
    // destroyed, ComponentRemoved(Role) clears the reference (the platform's Notification).
    enum : int { wrXData, wrYData, wrWeight, wrXAxis, wrYAxis, wrDrawingWorld, wrFirstFree };
    // Watches Obj under Role (replacing the previous watch of that role; null unwatches).
    void Watch(int Role, QObject* Obj);
    virtual void ComponentRemoved(int Role);
    // A vector this series references and the handler it registered with it.
    using TVectorHandler = void (TVxSeries::*)(int, bool);
    struct TVectorRef {
        const TVxCustomRealVector* Vector;
        TVectorHandler Handler;
    };
    // Every vector reference with its handler (derived classes add theirs).
    virtual void VectorRefs(std::vector<TVectorRef>& Refs) const;
    // True when another reference still needs Handler on Vector (one vector may serve as,
    // say, both the plus and the minus errors, and holds a single entry per handler).
    bool StillListens(const TVxCustomRealVector* Vector, TVectorHandler Handler) const;
    // Sets up a vector reference: unregisters Handler from the old vector (unless another
    // reference still needs it), stores the new one, registers Handler; false when
    // unchanged.
    bool ReplaceVector(QPointer<TVxCustomRealVector>& Field, int Role, TVxCustomRealVector* Vector,
                       void (TVxSeries::*Handler)(int, bool));
    // True when this series is subscribed to Vector's notices with Handler (two series of
    // one class share a slot, so only the later subscriber hears a shared vector).
    bool Hears(const TVxCustomRealVector* Vector, void (TVxSeries::*Handler)(int, bool)) const;
    // Unsubscribes Handler from Vector, but only this series' own subscription: the
    // vector's list removes by handler alone, which would also end the subscription of
    // another series of this class that took over the shared slot.
    void Unlisten(TVxCustomRealVector* Vector, TVectorHandler Handler);
    // Maps points From..To-1 into the pixel cache; derived classes with their own
    // CalculatePoint override it with CalculateEachPoint.
    virtual void CalculatePointRange(int From, int To);
    void CalculateEachPoint(int From, int To);
    // Registers Range with Axis (hooks its change notice to the axis).
    static void RegisterRange(TRange& Range, TVxAxis* Axis);
    static void UnregisterRange(TRange& Range, TVxAxis* Axis);
    // Pixel of value V on an axis with map Map (Log: a logarithmic one, where values <= 0
    // lie just beyond the start).
    static int PixelOf(const TVxAxisMap& Map, bool Log, double V);
    // Pixel row of y = 0, for area fills and bars.
    int ZeroPixelY() const;
    // Brush colour that fills hollow symbols.
    TColor SymbolBackground() const;
    // Runs Body under the marks' clipping rule and restores the clip: unless both axes are
    // zoomed in, the clip is widened by Margin pixels (the reach of the marks beyond their
    // point), so that symbols, arrows and bars on the plot's edge show whole. Marks of
    // points beyond a fixed or zoomed end are still cut there, rather than drawn over the
    // axes, labels and title as fully unclipped drawing would.
    void WithSymbolClipping(TCanvas& Canvas, int Margin, const std::function<void()>& Body);
    // How far Style's symbols reach beyond their centre, pen included.
    static int SymbolReach(const TVxPointStyle& Style);
    // Half-size at which Style's symbols are drawn (sizes beyond any plot are limited).
    static int SymbolSize(const TVxPointStyle& Style);
    // Draws the symbol of every valid point.
    void DrawSymbols(TCanvas& Canvas, const TVxPointStyle& Style, TColor Background);
    // The incremental range step: offers Lo and Hi of point Index to Range, keeping the
    // indexes of the extremes; when Index holds an extreme whose value moved (or became
    // invalid) calls Rescan instead. True when the range changed or was rescanned.
    static bool FoldIntoRange(TRange& Range, int Index, bool Valid, double Lo, double Hi, int& MinIdx,
                              int& MaxIdx, const std::function<void()>& Rescan);
    // V limited to the largest real magnitude, so that sums of huge values (a value plus
    // its error, stacked bars) keep the ranges finite.
    static double LimitReal(double V) { return V > CVxMaxReal ? CVxMaxReal : (V < CVxMinReal ? CVxMinReal : V); }
    // Lo and Hi of the span that point Index, with x (XSide) or y value V, adds to the
    // x or y range: the value itself, widened by error bars or arrows in derived classes.
    virtual void SpanOf(bool XSide, int Index, double V, double& Lo, double& Hi) const;
    // FoldIntoRange for point Index of the x (XSide) or y data with its span, rescanning
    // through GetNewXStartStop / GetNewYStartStop; Modified when the range changed.
    void FoldSpan(bool XSide, int Index);
    // Sets the x or y range to the spans of the valid points (below the point count),
    // with the indexes of the extremes.
    void ScanSpans(bool XSide);
    // The plain scan of GetNewXStartStop / GetNewYStartStop.
    void ScanPlainRange(bool XSide);
    // Sets Range to (Start, Stop) unless it already is (the range announces every set).
    static bool SetRangeIfChanged(TRange& Range, double Start, double Stop);
    // |D| / Scale rounded to whole pixels (0 for a degenerate scale, clamped far out).
    static int PixelLength(double D, double Scale);
    // True when the ranges no longer fit the settings they were scanned with; they are
    // rescanned at the next CalculatePoints.
    virtual bool RangesOutdated() const { return false; }
    // True while GetNewXStartStop and GetNewYStartStop are the plain scans, which
    // ScanBothRanges then does in one pass over the data.
    virtual bool HasPlainRangeScan() const { return true; }
    void ScanBothRanges();
    // Value of vector V at Index when it exists and is finite, else 0.
    static double ComponentValue(const TVxCustomRealVector* V, int Index);
    // Before drawing: points and children up to date; false when the graph is updating.
    bool PrepareDrawing();
    // The line is a thin solid one, drawn from its per-column reduction.
    bool DrawsReducedLine() const;
    // Rebuilds (or extends) the reduced polyline from the pixel cache.
    void UpdateReducedLine();
    // Rebuilds (or extends) the reduced outlines of the area fill from the pixel cache.
    void UpdateAreaRuns();

    std::unique_ptr<TVxPointVector> FPoints;
    std::unique_ptr<TRange> FXRange;
    std::unique_ptr<TRange> FYRange;
    std::unique_ptr<TVxLineStyle> FLineStyle;
    std::unique_ptr<TVxAreaStyle> FAreaStyle;
    std::unique_ptr<TVxSeriesList> FChilds;
    std::unique_ptr<TVxIniList> FSettings;
    std::unique_ptr<TVxPolylineReducer> FReducer;
    std::unique_ptr<TVxSymbolLayer> FSymbolLayer;
    std::unique_ptr<TVxLineLayer> FLineLayer;
    // Changes whenever the reduction restarts (keys the line layer).
    quint64 FReducerGeneration = 0;
    // Changes whenever a pixel position already drawn changes (keys the symbol layer);
    // FDrawnCount points were drawn last time.
    quint64 FPixelsGeneration = 0;
    int FDrawnCount = 0;
    // The area's unbroken runs, reduced to the first and last point per pixel column, for
    // the first FAreaCount points of generation FAreaGeneration.
    struct TAreaRun {
        std::vector<QPoint> Points;
        int Inputs = 0;       // points of the run before reduction
        int ColumnPoints = 0; // points kept of the run's last column (1 or 2)
    };
    std::vector<TAreaRun> FAreaRuns;
    int FAreaCount = 0;
    quint64 FAreaGeneration = ~quint64(0);
    bool FAreaRunOpen = false;
    QPointer<TVxCustomRealVector> FXData;
    QPointer<TVxCustomRealVector> FYData;
    QPointer<TVxCustomRealVector> FWeight;
    QPointer<TVxAxis> FXAxis;
    QPointer<TVxAxis> FYAxis;
    QPointer<TVxDrawingWorld> FDrawingWorld;
    std::map<int, QMetaObject::Connection> FWatches;
    bool FPointsDirty = true;
    bool FRangesDirty = false;
    bool FChildsDirty = false;
    bool FDoUserCaption = false;
    bool FIncludeInLegend = true;
    bool FDestroying = false;
    QString FCaption;
    QString FUserCaption;
    QString FAutoCaption;
    TColor FBackgroundColor = clBtnFace;
    int FPointsCount = 0;
    int FComponentIndex = -1;
    int FXMinIdx = -1;
    int FXMaxIdx = -1;
    int FYMinIdx = -1;
    int FYMaxIdx = -1;
    // Pixel cache: the first FCachedCount points are mapped with FCachedXMap/FCachedYMap.
    int FCachedCount = 0;
    TVxAxisMap FCachedXMap;
    TVxAxisMap FCachedYMap;
    // The reduced polyline holds the first FReducedCount cached points.
    int FReducedCount = 0;
    // Count of every vector per handler as of its last change notice or calculation (tells
    // an insertion, which moves the later values, from an append). Kept for every vector
    // reference (data, errors, arrows), since a notice does not say which vector sent it.
    struct TSeenCount {
        const TVxCustomRealVector* Vector;
        TVectorHandler Handler;
        int Count;
    };
    std::vector<TSeenCount> FSeenCounts;
    // Rebuilds FSeenCounts from the current references.
    void ResyncSeenCounts();
    // Takes the counts of Handler's vectors after notice (Index, Deleted); true when one of
    // them changed values of the first OldCount points beyond Index: it grew while Index
    // is not its last value (an insertion) or lies beyond its old end (a gap).
    bool NoteUnannounced(TVectorHandler Handler, int Index, bool Deleted, int OldCount);
};

// A series that holds its own data vectors (the type of a calculated series' parent).
class TVxNotCalculatedSeries : public TVxSeries {
    Q_OBJECT
public:
    explicit TVxNotCalculatedSeries(QObject* AOwner = nullptr);
};

// A line series; on creation it binds to the last graph among its owner's children.
class TVxLineSeries : public TVxNotCalculatedSeries {
    Q_OBJECT
    Q_PROPERTY(vx::TVxAxis* XAxis READ XAxis WRITE SetXAxis)
    Q_PROPERTY(vx::TVxAxis* YAxis READ YAxis WRITE SetYAxis)
    Q_PROPERTY(vx::TVxCustomRealVector* XData READ XData WRITE SetXData)
    Q_PROPERTY(vx::TVxCustomRealVector* YData READ YData WRITE SetYData)
    Q_PROPERTY(vx::TVxCustomRealVector* Weight READ Weight WRITE SetWeight)
public:
    explicit TVxLineSeries(QObject* AOwner = nullptr);
};

// A line series with point symbols.
class TVxDataSeries : public TVxLineSeries {
    Q_OBJECT
public:
    explicit TVxDataSeries(QObject* AOwner = nullptr);
    ~TVxDataSeries() override;

    TVxPointStyle& PointStyle() const { return *FPointStyle; }
    void SetPointStyle(const TVxPointStyle& Value);

    void DrawPoints(TCanvas& Canvas) override;
    void WriteToIni(TVxIniList& List, const QString& Section) const override;
    void ReadFromIni(TVxIniList& List, const QString& Section) override;

protected:
    std::unique_ptr<TVxPointStyle> FPointStyle;
};

// A data series with error bars: each point gets bars of |dXMinus|, |dXPlus|, |dYMinus|
// and |dYPlus| (data units, converted linearly even on logarithmic axes) with caps of
// PointStyle.Size half-length; plus bars point toward larger values (on a twisted axis
// too). Error bars widen the ranges while symbols are shown
// (showing or hiding them rescans the ranges at the next calculation).
class TVxDataWithErrorSeries : public TVxDataSeries {
    Q_OBJECT
    Q_PROPERTY(vx::TVxCustomRealVector* dXPlus READ dXPlus WRITE SetdXPlus)
    Q_PROPERTY(vx::TVxCustomRealVector* dXMinus READ dXMinus WRITE SetdXMinus)
    Q_PROPERTY(vx::TVxCustomRealVector* dYPlus READ dYPlus WRITE SetdYPlus)
    Q_PROPERTY(vx::TVxCustomRealVector* dYMinus READ dYMinus WRITE SetdYMinus)
    Q_PROPERTY(int ErrorIndicatorsColor READ ErrorIndicatorsColor WRITE SetErrorIndicatorsColor)
public:
    explicit TVxDataWithErrorSeries(QObject* AOwner = nullptr);
    ~TVxDataWithErrorSeries() override;

    TVxCustomRealVector* dXPlus() const { return FdXPlus; }
    void SetdXPlus(TVxCustomRealVector* Vector);
    TVxCustomRealVector* dXMinus() const { return FdXMinus; }
    void SetdXMinus(TVxCustomRealVector* Vector);
    TVxCustomRealVector* dYPlus() const { return FdYPlus; }
    void SetdYPlus(TVxCustomRealVector* Vector);
    TVxCustomRealVector* dYMinus() const { return FdYMinus; }
    void SetdYMinus(TVxCustomRealVector* Vector);
    TColor ErrorIndicatorsColor() const { return FErrorIndicatorsColor; }
    void SetErrorIndicatorsColor(TColor Value);

    // Error of point Index (absolute; 0 when symbols are hidden, the vector is missing or
    // too short, or the value is not finite).
    double XPlus(int Index) const;
    double XMinus(int Index) const;
    double YPlus(int Index) const;
    double YMinus(int Index) const;
    // Pixel length of each bar, per point (as long as the error vector).
    const TVxIntegerVector& dXPlusLength() const { return *FLengths[0]; }
    const TVxIntegerVector& dXMinusLength() const { return *FLengths[1]; }
    const TVxIntegerVector& dYPlusLength() const { return *FLengths[2]; }
    const TVxIntegerVector& dYMinusLength() const { return *FLengths[3]; }

    // Also marks the ranges for a rescan when the symbols were shown or hidden.
    void Modified() override;
    void GetNewXStartStop() override;
    void GetNewYStartStop() override;
    void CalculatePoint(int Index) override;
    void DrawPoints(TCanvas& Canvas) override;
    bool HasPlainRangeScan() const override { return false; }
    void WriteToIni(TVxIniList& List, const QString& Section) const override;
    void ReadFromIni(TVxIniList& List, const QString& Section) override;

protected:
    bool CanKeepPixels() const override;
    void VectorRefs(std::vector<TVectorRef>& Refs) const override;
    enum : int { wrdXPlus = wrFirstFree, wrdXMinus, wrdYPlus, wrdYMinus };
    void ComponentRemoved(int Role) override;
    void CalculatePointRange(int From, int To) override { CalculateEachPoint(From, To); }

    // [v - minus, v + plus].
    void SpanOf(bool XSide, int Index, double V, double& Lo, double& Hi) const override;
    // Showing or hiding the symbols adds the errors to the ranges or takes them out.
    bool RangesOutdated() const override;

private:
    // PointStyle.Visible as of the last scan of the x and the y range.
    bool FXSpansWithErrors = true;
    bool FYSpansWithErrors = true;

    QPointer<TVxCustomRealVector> FdXPlus;
    QPointer<TVxCustomRealVector> FdXMinus;
    QPointer<TVxCustomRealVector> FdYPlus;
    QPointer<TVxCustomRealVector> FdYMinus;
    TColor FErrorIndicatorsColor = clBlack;
    // dXPlus, dXMinus, dYPlus, dYMinus pixel lengths.
    std::unique_ptr<TVxIntegerVector> FLengths[4];
};

} // namespace vx
