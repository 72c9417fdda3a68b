#include "vx/series/VxDataSeries.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"
#include "vx/platform/VxComponent.h"
#include "vx/series/VxLineLayer.h"
#include "vx/series/VxPointKernels.h"
#include "vx/series/VxPolylineReducer.h"
#include "vx/series/VxSymbolStamp.h"

#include <QRandomGenerator>
#include <QTimer>
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace vx {

namespace {

constexpr int kInvalidPixel = TVxSeries::CInvalidPixel;

// Below this many points a series draws directly: a kept raster layer of the plot's size
// would cost more memory than it saves time.
constexpr int kLayerMinPoints = 2000;

// Pixel lengths beyond this are clamped (far outside any plot, safe for the painter).
constexpr double kMaxPixelLength = 1.0e6;

// Symbols are kept in a raster layer only up to this half-size and pen width: the layer
// stamps every pixel of the symbol per point, which beyond it costs more than drawing
// each symbol.
constexpr int kLayerMaxSymbolSize = 16;

// Symbol half-sizes (and error-bar caps) beyond this are drawn at it: it covers any plot,
// and keeps the pixel arithmetic around a point far from overflowing.
constexpr int kMaxSymbolSize = 4096;

bool Notifies(const TVxCustomRealVector* V)
{
    return qobject_cast<const TVxLiveVector*>(V) || qobject_cast<const TVxDBVector*>(V);
}

int CountOf(const TVxCustomRealVector* V)
{
    return V ? V->Count() : 0;
}

} // namespace

int TVxSeries::PixelLength(double D, double Scale)
{
    if (!(Scale > 0.0) || !std::isfinite(D))
        return 0;
    const double l = std::fabs(D) / Scale;
    return l > kMaxPixelLength ? int(kMaxPixelLength) : int(std::nearbyint(l));
}

TVxCanvasStateGuard::TVxCanvasStateGuard(TCanvas& Canvas)
    : FCanvas(Canvas), FPen(Canvas.Pen()), FBrush(Canvas.Brush()), FHadClip(Canvas.HasClip()),
      FClip(Canvas.ClipRect())
{
}

TVxCanvasStateGuard::~TVxCanvasStateGuard()
{
    FCanvas.SetPen(FPen);
    FCanvas.SetBrush(FBrush);
    FCanvas.ClearClip();
    if (FHadClip)
        FCanvas.IntersectClipRect(FClip);
}

// ---------------------------------------------------------------------------------------
// TVxSeries: construction and references
// ---------------------------------------------------------------------------------------

TVxSeries::TVxSeries(QObject* AOwner)
    : QObject(AOwner), FPoints(std::make_unique<TVxPointVector>(1024)),
      FXRange(std::make_unique<TRange>()), FYRange(std::make_unique<TRange>()),
      FLineStyle(std::make_unique<TVxLineStyle>(this)), FAreaStyle(std::make_unique<TVxAreaStyle>(this)),
      FChilds(std::make_unique<TVxSeriesList>()), FSettings(std::make_unique<TVxIniList>()),
      FReducer(std::make_unique<TVxPolylineReducer>()), FSymbolLayer(std::make_unique<TVxSymbolLayer>()),
      FLineLayer(std::make_unique<TVxLineLayer>())
{
    FAreaStyle->SetVisible(false);
    FPointsDirty = true;
    // In a designer, a change of the series' order among the form's children redraws the
    // graph in the new order.
    if (IsDesigning(this) && qobject_cast<QWidget*>(AOwner)) {
        FComponentIndex = AOwner->children().indexOf(this);
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, &TVxSeries::TestOrder);
        timer->start(100);
    }
}

TVxSeries::~TVxSeries()
{
    FDestroying = true;
    Destroying(this);
    for (auto& w : FWatches)
        disconnect(w.second);
    FWatches.clear();
    if (FDrawingWorld)
        FDrawingWorld->SeriesList().Remove(this);
    if (FXData)
        Unlisten(FXData, &TVxSeries::FOnXIChanged);
    if (FYData)
        Unlisten(FYData, &TVxSeries::FOnYIChanged);
    if (FWeight)
        Unlisten(FWeight, &TVxSeries::FOnWeightChanged);
    for (TVxAxis* axis : {FXAxis.data(), FYAxis.data()}) {
        if (!axis)
            continue;
        UnregisterRange(*FXRange, axis);
        UnregisterRange(*FYRange, axis);
        axis->RedoRanges();
    }
    // Dependent series do not outlive their parent.
    while (FChilds->Count() > 0) {
        TVxSeries* child = FChilds->Items(FChilds->Count() - 1);
        FChilds->Remove(child);
        delete child;
    }
    if (FDrawingWorld)
        FDrawingWorld->UpdateSeries();
}

void TVxSeries::Watch(int Role, QObject* Obj)
{
    auto it = FWatches.find(Role);
    if (it != FWatches.end()) {
        disconnect(it->second);
        FWatches.erase(it);
    }
    if (Obj)
        FWatches[Role] = connect(Obj, &QObject::destroyed, this, [this, Role, Obj]() {
            FWatches.erase(Role);
            FSeenCounts.erase(std::remove_if(FSeenCounts.begin(), FSeenCounts.end(),
                                             [Obj](const TSeenCount& c) { return c.Vector == Obj; }),
                              FSeenCounts.end());
            ComponentRemoved(Role);
        });
}

void TVxSeries::ComponentRemoved(int Role)
{
    switch (Role) {
    case wrXAxis:
    case wrYAxis:
        (Role == wrXAxis ? FXAxis : FYAxis) = nullptr;
        (Role == wrXAxis ? FXRange : FYRange)->SetOnChanged(nullptr);
        InvalidatePixels();
        if (!FDestroying)
            RangesModified();
        break;
    case wrXData:
    case wrYData:
        (Role == wrXData ? FXData : FYData) = nullptr;
        InvalidatePixels();
        if (!FDestroying) {
            RangesModified();
            CalculatePoints();
            if (TVx2DGraph* g = Graph())
                g->Modified();
        }
        break;
    case wrWeight:
        FWeight = nullptr;
        break;
    case wrDrawingWorld:
        FDrawingWorld = nullptr;
        // A graph replaces a drawing world deleted from outside: move over to the new one.
        if (TVx2DGraph* g = Graph(); g && !FDestroying && g->DrawingWorld()) {
            FDrawingWorld = g->DrawingWorld();
            Watch(wrDrawingWorld, FDrawingWorld);
            if (!IsCalculatedSeries())
                FDrawingWorld->SeriesList().Add(this);
            InvalidatePixels();
            Modified();
        }
        break;
    default:
        break;
    }
}

void TVxSeries::VectorRefs(std::vector<TVectorRef>& Refs) const
{
    Refs.push_back({FXData, &TVxSeries::FOnXIChanged});
    Refs.push_back({FYData, &TVxSeries::FOnYIChanged});
    Refs.push_back({FWeight, &TVxSeries::FOnWeightChanged});
}

bool TVxSeries::StillListens(const TVxCustomRealVector* Vector, TVectorHandler Handler) const
{
    std::vector<TVectorRef> refs;
    VectorRefs(refs);
    return std::any_of(refs.begin(), refs.end(),
                       [&](const TVectorRef& r) { return r.Vector == Vector && r.Handler == Handler; });
}

bool TVxSeries::ReplaceVector(QPointer<TVxCustomRealVector>& Field, int Role, TVxCustomRealVector* Vector,
                              void (TVxSeries::*Handler)(int, bool))
{
    if (Field == Vector)
        return false;
    TVxCustomRealVector* old = Field;
    Field = Vector;
    if (old && !StillListens(old, Handler))
        Unlisten(old, Handler);
    Watch(Role, Vector);
    if (Vector)
        Vector->IChangedList().Add(this, Handler);
    ResyncSeenCounts();
    InvalidatePixels();
    return true;
}

void TVxSeries::ResyncSeenCounts()
{
    std::vector<TVectorRef> refs;
    VectorRefs(refs);
    FSeenCounts.clear();
    for (const TVectorRef& r : refs) {
        const bool known = std::any_of(FSeenCounts.begin(), FSeenCounts.end(), [&](const TSeenCount& c) {
            return c.Vector == r.Vector && c.Handler == r.Handler;
        });
        if (r.Vector && !known)
            FSeenCounts.push_back({r.Vector, r.Handler, r.Vector->Count()});
    }
}

bool TVxSeries::NoteUnannounced(TVectorHandler Handler, int Index, bool Deleted, int OldCount)
{
    bool unannounced = false;
    for (TSeenCount& c : FSeenCounts) {
        if (c.Handler != Handler)
            continue;
        const int count = c.Vector->Count();
        // Grown by an insertion (Index is not the last value; later values moved) or by a
        // write beyond the end (the gap shows what the storage held), among the points.
        if (!Deleted && count > c.Count && (Index < count - 1 || Index > c.Count)
            && std::min(Index, c.Count) < OldCount)
            unannounced = true;
        // A vector announces a deletion before it drops its last place. (Another vector
        // of the handler is taken one short as well: at worst its next change in the
        // middle counts as an insertion and rescans.)
        c.Count = Deleted && Index >= 0 ? std::max(0, count - 1) : count;
    }
    return unannounced;
}

bool TVxSeries::Hears(const TVxCustomRealVector* Vector, void (TVxSeries::*Handler)(int, bool)) const
{
    if (!Vector)
        return true;
    const QByteArray key = TVxValueIChangedList::MethodKey(Handler);
    const TVxValueIChangedList& list = Vector->IChangedList();
    for (int i = 0; i < list.Count(); ++i) {
        const auto& entry = list.Items(i);
        if (entry.Key == key)
            return entry.Receiver == this;
    }
    return false;
}

void TVxSeries::Unlisten(TVxCustomRealVector* Vector, TVectorHandler Handler)
{
    if (Vector && Hears(Vector, Handler))
        Vector->IChangedList().Remove(this, Handler);
}

void TVxSeries::RegisterRange(TRange& Range, TVxAxis* Axis)
{
    QPointer<TVxAxis> axis(Axis);
    Range.SetOnChanged([axis](TRange* R) {
        if (axis)
            axis->ValuesRangeChanged(R);
    });
    Axis->ValueRanges().Add(&Range);
}

void TVxSeries::UnregisterRange(TRange& Range, TVxAxis* Axis)
{
    Axis->ValueRanges().Remove(&Range);
}

void TVxSeries::BindToOwnerGraph()
{
    TVx2DGraph* graph = qobject_cast<TVx2DGraph*>(parent());
    if (!graph)
        for (TVx2DGraph* g : ComponentsOf<TVx2DGraph>(parent()))
            graph = g;
    if (!graph)
        return;
    SetXAxis(graph->XAxis());
    SetYAxis(graph->YAxis());
    if (FDrawingWorld != graph->DrawingWorld()) {
        FDrawingWorld = graph->DrawingWorld();
        Watch(wrDrawingWorld, FDrawingWorld);
    }
}

TVx2DGraph* TVxSeries::Graph() const
{
    if (FDrawingWorld)
        return FDrawingWorld->Graph();
    if (FXAxis)
        return FXAxis->Graph();
    return FYAxis ? FYAxis->Graph() : nullptr;
}

void TVxSeries::SetAxis(bool XSide, TVxAxis* Axis)
{
    QPointer<TVxAxis>& field = XSide ? FXAxis : FYAxis;
    TRange& range = XSide ? *FXRange : *FYRange;
    if (field == Axis)
        return;
    if (field)
        UnregisterRange(range, field);
    range.SetOnChanged(nullptr);
    field = Axis;
    Watch(XSide ? wrXAxis : wrYAxis, Axis);
    if (FDrawingWorld)
        FDrawingWorld->SeriesList().Remove(this);
    InvalidatePixels();
    TVx2DGraph* graph = Axis ? Axis->Graph() : nullptr;
    if (graph) {
        FDrawingWorld = graph->DrawingWorld();
        Watch(wrDrawingWorld, FDrawingWorld);
        if (!IsCalculatedSeries())
            FDrawingWorld->SeriesList().Add(this);
        FBackgroundColor = graph->DataColor();
        graph->Modified();
    } else {
        Modified();
    }
    // Only a live vector's range moves with the axis here; others register in SetXData.
    if (Axis && qobject_cast<TVxLiveVector*>((XSide ? FXData : FYData).data()))
        RegisterRange(range, Axis);
}

void TVxSeries::SetXAxis(TVxAxis* Axis)
{
    SetAxis(true, Axis);
}

void TVxSeries::SetYAxis(TVxAxis* Axis)
{
    SetAxis(false, Axis);
}

void TVxSeries::SetData(bool XSide, TVxCustomRealVector* Vector)
{
    QPointer<TVxCustomRealVector>& field = XSide ? FXData : FYData;
    TRange& range = XSide ? *FXRange : *FYRange;
    TVxAxis* axis = XSide ? FXAxis : FYAxis;
    if (axis && field != Vector)
        UnregisterRange(range, axis);
    if (!ReplaceVector(field, XSide ? wrXData : wrYData, Vector,
                       XSide ? &TVxSeries::FOnXIChanged : &TVxSeries::FOnYIChanged))
        return;
    if (Vector && axis)
        RegisterRange(range, axis);
    if (Vector && IsDesigning(this) && Vector->Count() == 0)
        for (int i = 0; i < 10; ++i)
            Vector->SetValue(i, 10.0 * i + 10.0 * QRandomGenerator::global()->generateDouble());
    if (IsDesigning(this))
        DsgnUpdate();
    else
        RangesModified();
}

void TVxSeries::SetXData(TVxCustomRealVector* Vector)
{
    SetData(true, Vector);
}

void TVxSeries::SetYData(TVxCustomRealVector* Vector)
{
    SetData(false, Vector);
}

void TVxSeries::SetWeight(TVxCustomRealVector* Vector)
{
    if (FWeight)
        Unlisten(FWeight, &TVxSeries::FOnWeightChanged);
    FWeight = Vector;
    Watch(wrWeight, Vector);
    if (Vector)
        Vector->IChangedList().Add(this, &TVxSeries::FOnWeightChanged);
    ResyncSeenCounts();
}

TVxCustomRealVector* TVxSeries::GetWeight() const
{
    return FWeight;
}

void TVxSeries::FOnWeightChanged(int, bool) {}

// ---------------------------------------------------------------------------------------
// Points and ranges
// ---------------------------------------------------------------------------------------

void TVxSeries::SetPointsCount()
{
    const int count = (FXData && FYData) ? std::min(FXData->Count(), FYData->Count()) : 0;
    if (count < FDrawnCount)
        ++FPixelsGeneration;
    FPointsCount = count;
    FPoints->SetCount(FPointsCount);
    if (FCachedCount > FPointsCount)
        FCachedCount = FPointsCount;
    if (FReducedCount > FPointsCount)
        ResetReducer();
}

int TVxSeries::XIdxNeeded() const
{
    return std::min(CountOf(FXData), FPointsCount);
}

int TVxSeries::YIdxNeeded() const
{
    return std::min(CountOf(FYData), FPointsCount);
}

bool TVxSeries::IsValidPoint(int Index) const
{
    if (Index < 0 || Index >= FPointsCount || !FXData || !FYData || Index >= FXData->Count()
        || Index >= FYData->Count())
        return false;
    return std::isfinite(FXData->Data()[Index]) && std::isfinite(FYData->Data()[Index]);
}

bool TVxSeries::PointAt(int Index, QPoint& P) const
{
    if (Index < 0 || Index >= FPointsCount || Index >= FPoints->Count())
        return false;
    P = FPoints->Value(Index);
    return P.x() != kInvalidPixel;
}

void TVxSeries::SetInvalidPoint(int Index)
{
    if (Index < FDrawnCount)
        ++FPixelsGeneration;
    FPoints->SetValue(Index, QPoint(kInvalidPixel, kInvalidPixel));
}

namespace {

// Smallest and largest of the values that Valid accepts, with the index of the first
// occurrence of each; indexes -1 when none.
template <class Value, class Valid>
void ScanRange(int Count, Value value, Valid valid, double& Min, int& MinIdx, double& Max, int& MaxIdx)
{
    Min = CVxMaxReal;
    Max = CVxMinReal;
    MinIdx = MaxIdx = -1;
    for (int i = 0; i < Count; ++i) {
        if (!valid(i))
            continue;
        const double v = value(i);
        TakeBelow(v, i, Min, MinIdx);
        TakeAbove(v, i, Max, MaxIdx);
    }
}

} // namespace

bool TVxSeries::SetRangeIfChanged(TRange& Range, double Start, double Stop)
{
    if (Range.Start() == Start && Range.Stop() == Stop)
        return false;
    Range.SetStartStop(Start, Stop);
    return true;
}

void TVxSeries::ScanPlainRange(bool XSide)
{
    double mn, mx;
    const double* x = FXData ? FXData->Data() : nullptr;
    const double* y = FYData ? FYData->Data() : nullptr;
    const double* v = XSide ? x : y;
    const int n = std::min(XSide ? XIdxNeeded() : YIdxNeeded(), CountOf(XSide ? FYData : FXData));
    ScanRange(
        n, [v](int i) { return v[i]; }, [x, y](int i) { return std::isfinite(x[i]) && std::isfinite(y[i]); }, mn,
        XSide ? FXMinIdx : FYMinIdx, mx, XSide ? FXMaxIdx : FYMaxIdx);
    SetRangeIfChanged(XSide ? *FXRange : *FYRange, mn, mx);
    Modified();
}

void TVxSeries::GetNewXStartStop()
{
    ScanPlainRange(true);
}

void TVxSeries::GetNewYStartStop()
{
    ScanPlainRange(false);
}

void TVxSeries::ScanBothRanges()
{
    const int n = std::min(XIdxNeeded(), YIdxNeeded());
    const TVxPointRanges r
        = ScanPointRanges(FXData ? FXData->Data() : nullptr, FYData ? FYData->Data() : nullptr, n);
    FXMinIdx = r.XMinIdx;
    FXMaxIdx = r.XMaxIdx;
    FYMinIdx = r.YMinIdx;
    FYMaxIdx = r.YMaxIdx;
    SetRangeIfChanged(*FXRange, r.XMin, r.XMax);
    SetRangeIfChanged(*FYRange, r.YMin, r.YMax);
    Modified();
}

bool TVxSeries::FoldIntoRange(TRange& Range, int Index, bool Valid, double Lo, double Hi, int& MinIdx, int& MaxIdx,
                              const std::function<void()>& Rescan)
{
    if (Index == MinIdx || Index == MaxIdx) {
        // An extreme point changed: unless it is still exactly where it was, the range may
        // have to shrink, which only a rescan can tell.
        const bool same = Valid && (Index != MinIdx || Lo == Range.Start()) && (Index != MaxIdx || Hi == Range.Stop());
        if (!same) {
            Rescan();
            return true;
        }
        // The extreme stayed; the point's other end (error bar, arrow) may still widen
        // the range on the other side, as for any other point.
    }
    if (!Valid)
        return false;
    bool changed = false;
    for (double v : {Lo, Hi}) {
        const TRangeChangedResult answer = Range.IfRangeChanged(v);
        if (answer == rgMinChanged || answer == rgBothChanged)
            MinIdx = Index;
        if (answer == rgMaxChanged || answer == rgBothChanged)
            MaxIdx = Index;
        changed = changed || answer != rgNotChanged;
        if (Hi == Lo)
            break;
    }
    return changed;
}

void TVxSeries::CalcXValue(int Index)
{
    FoldSpan(true, Index);
}

void TVxSeries::CalcYValue(int Index)
{
    FoldSpan(false, Index);
}

void TVxSeries::SpanOf(bool, int, double V, double& Lo, double& Hi) const
{
    Lo = Hi = V;
}

void TVxSeries::FoldSpan(bool XSide, int Index)
{
    const TVxCustomRealVector* data = XSide ? FXData : FYData;
    if (!data || Index < 0 || Index >= data->Count())
        return;
    double lo, hi;
    SpanOf(XSide, Index, data->Data()[Index], lo, hi);
    if (FoldIntoRange(XSide ? *FXRange : *FYRange, Index, IsValidPoint(Index), LimitReal(lo), LimitReal(hi),
                      XSide ? FXMinIdx : FYMinIdx, XSide ? FXMaxIdx : FYMaxIdx,
                      [this, XSide] { XSide ? GetNewXStartStop() : GetNewYStartStop(); }))
        Modified();
}

void TVxSeries::ScanSpans(bool XSide)
{
    const TVxCustomRealVector* data = XSide ? FXData : FYData;
    const int n = std::min(FPointsCount, CountOf(data));
    double mn = CVxMaxReal, mx = CVxMinReal;
    int& minIdx = XSide ? FXMinIdx : FYMinIdx;
    int& maxIdx = XSide ? FXMaxIdx : FYMaxIdx;
    minIdx = maxIdx = -1;
    for (int i = 0; i < n; ++i) {
        if (!IsValidPoint(i))
            continue;
        double lo, hi;
        SpanOf(XSide, i, data->Data()[i], lo, hi);
        lo = LimitReal(lo);
        hi = LimitReal(hi);
        if (lo < mn) {
            mn = lo;
            minIdx = i;
        }
        if (hi > mx) {
            mx = hi;
            maxIdx = i;
        }
    }
    SetRangeIfChanged(XSide ? *FXRange : *FYRange, mn, mx);
}

void TVxSeries::CalculatePoint(int Index)
{
    if (Index < 0 || Index >= FPointsCount || !FXAxis || !FYAxis)
        return;
    if (!IsValidPoint(Index)) {
        SetInvalidPoint(Index);
        return;
    }
    if (Index < FDrawnCount)
        ++FPixelsGeneration;
    FPoints->SetValue(Index, QPoint(PixelOf(FXAxis->Map(), FXAxis->Scaling() != AxNormal, FXData->Data()[Index]),
                                    PixelOf(FYAxis->Map(), FYAxis->Scaling() != AxNormal, FYData->Data()[Index])));
}

int TVxSeries::PixelOf(const TVxAxisMap& Map, bool Log, double V)
{
    // The axis gives every value <= 0 on a logarithmic scale pixel -1, which on an upward
    // axis lies beyond the stop; such values belong beyond the start.
    if (Log && !(V > 0.0))
        return Map.Forward() ? -1 : Map.AxisLength() + 1;
    return Map.RealToIntPosition(V);
}

void TVxSeries::CalculateEachPoint(int From, int To)
{
    for (int i = From; i < To; ++i)
        CalculatePoint(i);
}

namespace {

bool IsLinear(const TVxAxis* Axis)
{
    return Axis->Scaling() == AxNormal && Axis->Scale() > 0.0;
}

} // namespace

void TVxSeries::CalculatePointRange(int From, int To)
{
    if (From >= To || !FXAxis || !FYAxis)
        return;
    if (From < FDrawnCount)
        ++FPixelsGeneration;
    const double* x = FXData->Data();
    const double* y = FYData->Data();
    QPoint* p = FPoints->GetPointer(0);
    const bool linear = IsLinear(FXAxis) && IsLinear(FYAxis);
    const TVxAxisMap xm = FXAxis->Map();
    const TVxAxisMap ym = FYAxis->Map();
    const bool xLog = FXAxis->Scaling() != AxNormal, yLog = FYAxis->Scaling() != AxNormal;
    // The thin line's reduction takes each block while its pixels are still in the
    // processor's cache, instead of reading all of them again when drawing.
    const bool feed = FReducedCount == From && DrawsReducedLine();
    constexpr int kBlock = 4096;
    for (int from = From; from < To; from += kBlock) {
        const int to = std::min(To, from + kBlock);
        if (linear) {
            MapLinearPoints(x, y, p, from, to, TVxLinearMap(xm), TVxLinearMap(ym), kInvalidPixel);
        } else {
            for (int i = from; i < to; ++i) {
                if (std::isfinite(x[i]) && std::isfinite(y[i]))
                    p[i] = QPoint(PixelOf(xm, xLog, x[i]), PixelOf(ym, yLog, y[i]));
                else
                    p[i] = QPoint(kInvalidPixel, kInvalidPixel);
            }
        }
        if (feed)
            FReducer->AddPoints(p + from, to - from, kInvalidPixel);
    }
    if (feed)
        FReducedCount = To;
}

bool TVxSeries::DrawsReducedLine() const
{
    return FLineStyle->Visible() && FLineStyle->Width() <= 1 && FLineStyle->Style() == psSolid;
}

bool TVxSeries::CanKeepPixels() const
{
    return Notifies(FXData) && Notifies(FYData) && Hears(FXData, &TVxSeries::FOnXIChanged)
           && Hears(FYData, &TVxSeries::FOnYIChanged);
}

void TVxSeries::InvalidatePixels()
{
    ++FPixelsGeneration;
    FCachedCount = 0;
    ResetReducer();
}

void TVxSeries::ResetReducer()
{
    FReducer->Clear();
    FReducedCount = 0;
    ++FReducerGeneration;
}

void TVxSeries::PixelChanged(int Index)
{
    if (Index < FReducedCount)
        ResetReducer();
}

void TVxSeries::CalculatePoints()
{
    if (!FXData || !FYData || !FXAxis || !FYAxis) {
        FPointsCount = 0;
        FPoints->SetCount(0);
        InvalidatePixels();
        // Without data the series has no range: the axes no longer make room for values
        // it does not draw. (The ranges stay marked for a rescan when data come back.)
        if (!FXData || !FYData) {
            FXMinIdx = FXMaxIdx = FYMinIdx = FYMaxIdx = -1;
            SetRangeIfChanged(*FXRange, CVxMaxReal, CVxMinReal);
            SetRangeIfChanged(*FYRange, CVxMaxReal, CVxMinReal);
        }
        return;
    }
    SetPointsCount();
    for (TSeenCount& c : FSeenCounts)
        c.Count = c.Vector->Count();
    const bool degenerate = FPointsCount > 0
                            && (FXRange->Start() >= FXRange->Stop() || FYRange->Start() >= FYRange->Stop());
    if (FRangesDirty || degenerate || RangesOutdated()) {
        const double x0 = FXRange->Start(), x1 = FXRange->Stop(), y0 = FYRange->Start(), y1 = FYRange->Stop();
        if (HasPlainRangeScan()) {
            ScanBothRanges();
        } else {
            GetNewXStartStop();
            GetNewYStartStop();
        }
        Modified();
        FRangesDirty = false;
        FChildsDirty = true;
        const bool changed = x0 != FXRange->Start() || x1 != FXRange->Stop() || y0 != FYRange->Start()
                             || y1 != FYRange->Stop();
        // A changed range rescales the axes, and the redraw that follows maps the points;
        // an unchanged one (also one that stays degenerate: one point, or all values
        // equal) is mapped now, so that the graph does not redraw forever.
        if (changed) {
            if (TVx2DGraph* g = Graph())
                g->Modified();
            return;
        }
    }
    for (TVxSeries* child : *FChilds) {
        if (child->IsCalculatedSeries())
            child->CalculateLine();
        child->Modified();
    }
    const TVxAxisMap& xm = FXAxis->Map();
    const TVxAxisMap& ym = FYAxis->Map();
    if (!CanKeepPixels() || !(xm == FCachedXMap) || !(ym == FCachedYMap)) {
        InvalidatePixels();
        FCachedXMap = xm;
        FCachedYMap = ym;
    }
    CalculatePointRange(FCachedCount, FPointsCount);
    FCachedCount = FPointsCount;
    FPointsDirty = false;
}

void TVxSeries::OnDataChanged(bool XSide, int Index, bool AllChanged)
{
    // Calc(i) folds the changed coordinate, CalcOther(i) the other one.
    auto calc = [this, XSide](int i) { XSide ? CalcXValue(i) : CalcYValue(i); };
    auto calcOther = [this, XSide](int i) { XSide ? CalcYValue(i) : CalcXValue(i); };
    FChildsDirty = true;
    const int oldCount = FPointsCount;
    // An insertion (into the data or an error vector) moves every later value up by one:
    // the points from Index on all changed, like after a deletion. A write beyond an
    // error vector's end alike brings in values nobody announced.
    if (NoteUnannounced(XSide ? &TVxSeries::FOnXIChanged : &TVxSeries::FOnYIChanged, Index, AllChanged, oldCount))
        AllChanged = true;
    SetPointsCount();
    if (!AllChanged) {
        // New points: the other coordinate was there already; the newest point of the
        // changed one is handled below through Index.
        for (int i = oldCount; i < FPointsCount; ++i)
            calcOther(i);
        for (int i = oldCount; i < FPointsCount - 1; ++i)
            calc(i);
        for (int i = oldCount; i < FPointsCount - 1; ++i)
            CalculatePoint(i);
        // When the vector grew past the other one's end, Index lies beyond the points and
        // the newest point would be left out of the range and the pixel cache.
        const int newest = FPointsCount - 1;
        if (FPointsCount > oldCount && Index != newest) {
            calc(newest);
            CalculatePoint(newest);
            if (FDrawingWorld)
                FDrawingWorld->UpdateSeries();
        }
    }
    if (Index > FPointsCount) {
        DataChanged();
        return;
    }
    if (AllChanged) {
        InvalidatePixels();
        RangesModified();
        DataChanged();
        return;
    }
    calc(Index);
    // A value turning finite or not makes the whole point count or not, so the other
    // coordinate's range may change too (an unchanged valid point folds in as a no-op).
    if (Index < oldCount)
        calcOther(Index);
    CalculatePoint(Index);
    PixelChanged(Index);
    DataChanged();
    if (FDrawingWorld)
        FDrawingWorld->UpdateSeries();
}

void TVxSeries::FOnXIChanged(int Index, bool AllChanged)
{
    OnDataChanged(true, Index, AllChanged);
}

void TVxSeries::FOnYIChanged(int Index, bool AllChanged)
{
    OnDataChanged(false, Index, AllChanged);
}

// ---------------------------------------------------------------------------------------
// Change propagation
// ---------------------------------------------------------------------------------------

void TVxSeries::Modified()
{
    FPointsDirty = true;
    UpdateLegend();
    if (FDrawingWorld)
        FDrawingWorld->UpdateSeries();
}

void TVxSeries::RangesModified()
{
    FChildsDirty = true;
    ChildModified();
}

void TVxSeries::ChildModified()
{
    FRangesDirty = true;
    Modified();
    // The rescan may move the axes: the graph calculates before it paints again, so that
    // no drawing maps the points through axes that are about to change.
    if (TVx2DGraph* g = Graph())
        g->Modified();
}

void TVxSeries::RecalculateChilds()
{
    for (TVxSeries* child : *FChilds)
        if (child->IsCalculatedSeries())
            child->Calculate();
    FChildsDirty = false;
}

void TVxSeries::UpdateLegend()
{
    if (FDestroying)
        return;
    if (TVx2DGraph* g = Graph())
        for (QWidget* w : g->Legends())
            if (auto* legend = dynamic_cast<IVxGraphLegend*>(w))
                legend->ItemsModified();
}

void TVxSeries::DsgnUpdate()
{
    if (!IsDesigning(this))
        return;
    RangesModified();
    CalculatePoints();
    if (TVx2DGraph* g = Graph())
        g->Modified();
}

void TVxSeries::TestOrder()
{
    const int index = parent() ? parent()->children().indexOf(this) : -1;
    if (index == FComponentIndex)
        return;
    FComponentIndex = index;
    if (TVx2DGraph* g = Graph())
        g->Modified();
}

bool TVxSeries::HasDescendant(const TVxSeries* Series) const
{
    for (const TVxSeries* child : *FChilds)
        if (child == Series || child->HasDescendant(Series))
            return true;
    return false;
}

void TVxSeries::AddChild(TVxSeries* Child)
{
    // A cycle would make the series free and draw each other without end.
    if (!Child || Child == this || FChilds->Contains(Child) || Child->HasDescendant(this))
        return;
    FChilds->Add(Child);
    connect(Child, &QObject::destroyed, this, [this, Child]() { FChilds->Remove(Child); });
}

void TVxSeries::RemoveChild(TVxSeries* Child)
{
    if (!Child || !FChilds->Contains(Child))
        return;
    FChilds->Remove(Child);
    disconnect(Child, &QObject::destroyed, this, nullptr);
}

// ---------------------------------------------------------------------------------------
// Drawing
// ---------------------------------------------------------------------------------------

int TVxSeries::ZeroPixelY() const
{
    if (!FYAxis)
        return 0;
    // 0 lies infinitely far below a logarithmic axis's start: fills reach down to the start.
    if (FYAxis->Scaling() != AxNormal)
        return FYAxis->Map().Forward() ? 0 : FYAxis->Map().AxisLength();
    return FYAxis->RealToIntPosition(0.0);
}

TColor TVxSeries::SymbolBackground() const
{
    TVx2DGraph* g = Graph();
    if (!g)
        return FBackgroundColor;
    if (g->DataColor() == clBtnFace && g->PaintingToMetafile())
        return clWhite;
    return g->DataColor();
}

bool TVxSeries::PrepareDrawing()
{
    TVx2DGraph* g = Graph();
    if (!g)
        return false;
    g->BeginUpdate();
    if (FPointsDirty)
        CalculatePoints();
    if (FChildsDirty)
        RecalculateChilds();
    g->EndUpdate();
    return g->NotUpdating();
}

void TVxSeries::UpdateReducedLine()
{
    if (FReducedCount < FPointsCount)
        FReducer->AddPoints(FPoints->GetPointer(FReducedCount), FPointsCount - FReducedCount, kInvalidPixel);
    FReducedCount = FPointsCount;
}

void TVxSeries::UpdateAreaRuns()
{
    if (FAreaGeneration != FPixelsGeneration || FAreaCount > FPointsCount) {
        FAreaRuns.clear();
        FAreaCount = 0;
        FAreaRunOpen = false;
        FAreaGeneration = FPixelsGeneration;
    }
    // Within one pixel column only the first and the last point of a run matter to the
    // fill: the vertical edges between them lie on the column's left border, and the
    // pixels right of it see their crossings only as a net count.
    const QPoint* p = FPoints->GetPointer(0);
    for (int k = FAreaCount; k < FPointsCount; ++k) {
        if (p[k].x() == kInvalidPixel) {
            FAreaRunOpen = false;
            continue;
        }
        if (!FAreaRunOpen) {
            FAreaRuns.emplace_back();
            FAreaRunOpen = true;
        }
        TAreaRun& run = FAreaRuns.back();
        ++run.Inputs;
        std::vector<QPoint>& pts = run.Points;
        if (pts.empty() || pts.back().x() != p[k].x()) {
            pts.push_back(p[k]); // a new column
            run.ColumnPoints = 1;
        } else if (run.ColumnPoints == 1) {
            if (pts.back() != p[k]) {
                pts.push_back(p[k]);
                run.ColumnPoints = 2;
            }
        } else {
            pts.back() = p[k]; // the column's last point so far
            if (pts.back() == pts[pts.size() - 2]) {
                pts.pop_back();
                run.ColumnPoints = 1;
            }
        }
    }
    FAreaCount = FPointsCount;
    FDrawnCount = FPointsCount;
}

void TVxSeries::Draw(TCanvas& Canvas)
{
    DrawLine(Canvas);
    DrawPoints(Canvas);
    // Other children are in the drawing world's list and are drawn from there.
    for (TVxSeries* child : *FChilds)
        if (child->IsCalculatedSeries())
            child->Draw(Canvas);
}

void TVxSeries::DrawLine(TCanvas& Canvas)
{
    if (!FXAxis || !FYAxis)
        return;
    if (!PrepareDrawing())
        return;
    if ((!FLineStyle->Visible() && !FAreaStyle->Visible()) || FPointsCount < 2)
        return;
    TVxCanvasStateGuard guard(Canvas);
    const QPoint* p = FPoints->GetPointer(0);

    // Area: each unbroken run closed along the pixel row of y = 0.
    if (FAreaStyle->Visible()) {
        const int y0 = ZeroPixelY();
        TPen pen = Canvas.Pen();
        pen.SetWidth(0);
        pen.SetStyle(psClear);
        const bool xored = FAreaStyle->DrawXOred();
        pen.SetMode(xored ? pmXor : pmCopy);
        Canvas.SetPen(pen);
        FAreaStyle->ApplyTo(Canvas.Brush());
        if (xored)
            Canvas.Brush().SetColor(ColorToRGB(FAreaStyle->Color()) ^ ColorToRGB(FBackgroundColor));
        UpdateAreaRuns();
        std::vector<QPoint> polygon;
        for (const TAreaRun& run : FAreaRuns) {
            if (run.Inputs < 2)
                continue;
            polygon.assign(run.Points.begin(), run.Points.end());
            polygon.emplace_back(run.Points.back().x(), y0);
            polygon.emplace_back(run.Points.front().x(), y0);
            Canvas.Polygon(polygon);
        }
        Canvas.Pen().SetMode(pmCopy);
    }

    // Line, in pieces; a one-pixel solid pen draws the per-column reduction.
    if (FLineStyle->Visible()) {
        TPen pen;
        FLineStyle->ApplyTo(pen);
        if (pen.Width() == 1)
            pen.SetWidth(0);
        pen.SetMode(pmCopy);
        Canvas.SetPen(pen);
        if (DrawsReducedLine()) {
            UpdateReducedLine();
            if (FPointsCount >= kLayerMinPoints) {
                FLineLayer->Draw(Canvas, *FReducer, FReducerGeneration, p, FPointsCount, kInvalidPixel);
            } else {
                FLineLayer->Clear();
                DrawReducedLine(*FReducer, Canvas);
            }
        } else {
            for (int i = 0; i < FPointsCount;) {
                while (i < FPointsCount && p[i].x() == kInvalidPixel)
                    ++i;
                const int first = i;
                while (i < FPointsCount && p[i].x() != kInvalidPixel)
                    ++i;
                if (i - first >= 2)
                    DrawPolyline(p + first, i - first, Canvas);
            }
        }
    }
}

void TVxSeries::DrawPoints(TCanvas&) {}

void TVxSeries::WithSymbolClipping(TCanvas& Canvas, int Margin, const std::function<void()>& Body)
{
    const bool zoomed = FXAxis && FYAxis && FXAxis->CanZoomBack() && FYAxis->CanZoomBack();
    if (zoomed || !Canvas.HasClip()) {
        Body();
        return;
    }
    // The clip widened by the marks' own reach: marks on the plot's edge show whole, while
    // points beyond a fixed or zoomed end do not spill over the axes, labels and title.
    const QRect clip = Canvas.ClipRect();
    Canvas.ClearClip();
    Canvas.IntersectClipRect(clip.adjusted(-Margin, -Margin, Margin, Margin));
    Body();
    Canvas.IntersectClipRect(clip);
}

int TVxSeries::SymbolReach(const TVxPointStyle& Style)
{
    return int(PointSymbolReach(SymbolSize(Style), std::clamp(Style.Width(), 0, kMaxSymbolSize)));
}

int TVxSeries::SymbolSize(const TVxPointStyle& Style)
{
    return std::clamp(Style.Size(), 0, kMaxSymbolSize);
}

void TVxSeries::DrawSymbols(TCanvas& Canvas, const TVxPointStyle& Style, TColor Background)
{
    Canvas.Pen().SetWidth(Style.Width());
    Canvas.Pen().SetColor(Style.Color());
    Canvas.Pen().SetMode(pmCopy);
    Canvas.Brush().SetColor(Background);
    const int size = SymbolSize(Style);
    if (FPointsCount >= kLayerMinPoints && size <= kLayerMaxSymbolSize && Style.Width() <= kLayerMaxSymbolSize) {
        FSymbolLayer->Draw(Canvas, FPoints->GetPointer(0), FPointsCount, kInvalidPixel, Style.Style(), size,
                           FPixelsGeneration);
    } else {
        FSymbolLayer->Clear();
        TVxSymbolLayer::DrawEach(Canvas, FPoints->GetPointer(0), FPointsCount, kInvalidPixel, Style.Style(), size);
    }
    FDrawnCount = FPointsCount;
}

// ---------------------------------------------------------------------------------------
// Mapping, captions, styles
// ---------------------------------------------------------------------------------------

int TVxSeries::RealToIntX(double Value) const
{
    if (!FXAxis)
        return 0;
    return FXAxis->RealToIntPosition(Value) + (FDrawingWorld ? FDrawingWorld->x() : 0);
}

int TVxSeries::RealToIntY(double Value) const
{
    if (!FYAxis)
        return 0;
    return FYAxis->RealToIntPosition(Value) + (FDrawingWorld ? FDrawingWorld->y() : 0);
}

double TVxSeries::IntToRealX(int Pixel) const
{
    if (!FXAxis)
        return 0.0;
    return FXAxis->IntToRealPosition(Pixel - (FDrawingWorld ? FDrawingWorld->x() : 0));
}

double TVxSeries::IntToRealY(int Pixel) const
{
    if (!FYAxis)
        return 0.0;
    return FYAxis->IntToRealPosition(Pixel - (FDrawingWorld ? FDrawingWorld->y() : 0));
}

int TVxSeries::FindPoint(int X, int Y, int Tolerance) const
{
    // In 64 bits: coordinates far out must not wrap around into the plot.
    const qint64 x = qint64(X) - (FDrawingWorld ? FDrawingWorld->x() : 0);
    const qint64 y = qint64(Y) - (FDrawingWorld ? FDrawingWorld->y() : 0);
    int found = -1;
    // Until the next calculation the cache may still hold points that a deletion or a
    // clear took from the vectors: those are not offered.
    const int n = std::min({FPointsCount, FPoints->Count(), CountOf(FXData), CountOf(FYData)});
    for (int i = 0; i < n; ++i) {
        QPoint p;
        if (PointAt(i, p) && std::llabs(p.x() - x) <= Tolerance && std::llabs(p.y() - y) <= Tolerance)
            found = i;
    }
    return found;
}

void TVxSeries::SetLineStyle(const TVxLineStyle& Value)
{
    FLineStyle->Assign(Value);
}

void TVxSeries::SetAreaStyle(const TVxAreaStyle& Value)
{
    FAreaStyle->Assign(Value);
}

namespace {
const QString kCaptionSection = QStringLiteral("Datapoints");
const QString kCaptionKey = QStringLiteral("Caption");
} // namespace

void TVxSeries::SetCaption(const QString& S)
{
    FCaption = S;
    if (FDoUserCaption)
        FUserCaption = S;
    else
        FAutoCaption = S;
    FSettings->WriteString(kCaptionSection, kCaptionKey, FCaption);
    UpdateLegend();
}

void TVxSeries::SetDoUserCaption(bool Value)
{
    FDoUserCaption = Value;
    FCaption = Value ? FUserCaption : FAutoCaption;
    FSettings->WriteString(kCaptionSection, kCaptionKey, FCaption);
    UpdateLegend();
}

void TVxSeries::SetUserCaption(const QString& S)
{
    FUserCaption = S;
    if (FDoUserCaption)
        FCaption = S;
    FSettings->WriteString(kCaptionSection, kCaptionKey, FCaption);
    UpdateLegend();
}

void TVxSeries::SetAutoCaption(const QString& S)
{
    FAutoCaption = S;
    if (!FDoUserCaption)
        FCaption = S;
    FSettings->WriteString(kCaptionSection, kCaptionKey, FCaption);
    UpdateLegend();
}

void TVxSeries::SetIncludeInLegend(bool Value)
{
    if (FIncludeInLegend == Value)
        return;
    FIncludeInLegend = Value;
    UpdateLegend();
}

// ---------------------------------------------------------------------------------------
// Settings
// ---------------------------------------------------------------------------------------

namespace {
QString ChildSection(const QString& Section, int N)
{
    return Section + QStringLiteral(".Child(") + QString::number(N) + QLatin1Char(')');
}
} // namespace

void TVxSeries::WriteToIni(TVxIniList& List, const QString& Section) const
{
    List.WriteBool(Section, QStringLiteral("DoUserCaption"), FDoUserCaption);
    List.WriteString(Section, QStringLiteral("UserCaption"), FUserCaption);
    List.WriteBool(Section, QStringLiteral("IncludeInLegend"), FIncludeInLegend);
    List.WriteLine(Section, QStringLiteral("Line"), *FLineStyle);
    List.WriteArea(Section, QStringLiteral("Area"), *FAreaStyle);
    List.WriteComponentRef(Section, QStringLiteral("XAxis"), FXAxis);
    List.WriteComponentRef(Section, QStringLiteral("YAxis"), FYAxis);
    List.WriteComponentRef(Section, QStringLiteral("XData"), FXData);
    List.WriteComponentRef(Section, QStringLiteral("YData"), FYData);
    List.WriteComponentRef(Section, QStringLiteral("Weight"), FWeight);
    List.WriteInteger(Section, QStringLiteral("ChildCount"), FChilds->Count());
    for (int i = 0; i < FChilds->Count(); ++i)
        FChilds->Items(i)->WriteToIni(List, ChildSection(Section, i + 1));
}

void TVxSeries::ReadFromIni(TVxIniList& List, const QString& Section)
{
    SetDoUserCaption(List.ReadBool(Section, QStringLiteral("DoUserCaption"), FDoUserCaption));
    SetUserCaption(List.ReadString(Section, QStringLiteral("UserCaption"), FUserCaption));
    if (FDoUserCaption)
        SetCaption(FUserCaption);
    SetIncludeInLegend(List.ReadBool(Section, QStringLiteral("IncludeInLegend"), true));
    List.ReadLine(Section, QStringLiteral("Line"), *FLineStyle);
    List.ReadArea(Section, QStringLiteral("Area"), *FAreaStyle);
    TVxAxis* axis = FXAxis;
    List.ReadComponentRef(Section, QStringLiteral("XAxis"), axis);
    SetXAxis(axis);
    axis = FYAxis;
    List.ReadComponentRef(Section, QStringLiteral("YAxis"), axis);
    SetYAxis(axis);
    TVxCustomRealVector* v = FXData;
    List.ReadComponentRef(Section, QStringLiteral("XData"), v);
    SetXData(v);
    v = FYData;
    List.ReadComponentRef(Section, QStringLiteral("YData"), v);
    SetYData(v);
    v = FWeight;
    List.ReadComponentRef(Section, QStringLiteral("Weight"), v);
    if (v != FWeight)
        SetWeight(v);
    const int stored = List.ReadInteger(Section, QStringLiteral("ChildCount"), 0);
    if (stored > 0)
        for (int k = 0; k < FChilds->Count(); ++k)
            FChilds->Items(k)->ReadFromIni(List, ChildSection(Section, k % stored + 1));
}

// ---------------------------------------------------------------------------------------
// TVxNotCalculatedSeries, TVxLineSeries
// ---------------------------------------------------------------------------------------

TVxNotCalculatedSeries::TVxNotCalculatedSeries(QObject* AOwner) : TVxSeries(AOwner) {}

TVxLineSeries::TVxLineSeries(QObject* AOwner) : TVxNotCalculatedSeries(AOwner)
{
    BindToOwnerGraph();
}

// ---------------------------------------------------------------------------------------
// TVxDataSeries
// ---------------------------------------------------------------------------------------

TVxDataSeries::TVxDataSeries(QObject* AOwner)
    : TVxLineSeries(AOwner), FPointStyle(std::make_unique<TVxPointStyle>(this))
{
}

TVxDataSeries::~TVxDataSeries() = default;

void TVxDataSeries::SetPointStyle(const TVxPointStyle& Value)
{
    FPointStyle->Assign(Value);
}

void TVxDataSeries::DrawPoints(TCanvas& Canvas)
{
    TVx2DGraph* g = Graph();
    if (!g || !g->NotUpdating() || !FPointStyle->Visible() || !FXAxis || !FYAxis)
        return;
    if (FPointsDirty)
        CalculatePoints();
    TVxCanvasStateGuard guard(Canvas);
    WithSymbolClipping(Canvas, SymbolReach(*FPointStyle), [&] { DrawSymbols(Canvas, *FPointStyle, SymbolBackground()); });
}

void TVxDataSeries::WriteToIni(TVxIniList& List, const QString& Section) const
{
    TVxLineSeries::WriteToIni(List, Section);
    List.WriteBool(Section, QStringLiteral("Point.Visible"), FPointStyle->Visible());
    List.WriteInteger(Section, QStringLiteral("Point.Color"), FPointStyle->Color());
    List.WriteInteger(Section, QStringLiteral("Point.Size"), FPointStyle->Size());
    List.WriteInteger(Section, QStringLiteral("Point.With"), FPointStyle->Width());
    List.WriteInteger(Section, QStringLiteral("Point.Style"), int(FPointStyle->Style()));
}

void TVxDataSeries::ReadFromIni(TVxIniList& List, const QString& Section)
{
    TVxLineSeries::ReadFromIni(List, Section);
    TVxPointStyle& s = *FPointStyle;
    s.SetVisible(List.ReadBool(Section, QStringLiteral("Point.Visible"), s.Visible()));
    s.SetColor(List.ReadInteger(Section, QStringLiteral("Point.Color"), s.Color()));
    s.SetSize(List.ReadInteger(Section, QStringLiteral("Point.Size"), s.Size()));
    s.SetWidth(List.ReadInteger(Section, QStringLiteral("Point.With"), s.Width()));
    const int style = List.ReadInteger(Section, QStringLiteral("Point.Style"), int(s.Style()));
    if (style >= 0 && style < VxPointSymbolCount)
        s.SetStyle(TVxPointSymbol(style));
}

// ---------------------------------------------------------------------------------------
// TVxDataWithErrorSeries
// ---------------------------------------------------------------------------------------

TVxDataWithErrorSeries::TVxDataWithErrorSeries(QObject* AOwner) : TVxDataSeries(AOwner)
{
    for (auto& l : FLengths)
        l = std::make_unique<TVxIntegerVector>();
}

TVxDataWithErrorSeries::~TVxDataWithErrorSeries()
{
    FDestroying = true;
    if (FdXPlus)
        Unlisten(FdXPlus, &TVxSeries::FOnXIChanged);
    if (FdXMinus)
        Unlisten(FdXMinus, &TVxSeries::FOnXIChanged);
    if (FdYPlus)
        Unlisten(FdYPlus, &TVxSeries::FOnYIChanged);
    if (FdYMinus)
        Unlisten(FdYMinus, &TVxSeries::FOnYIChanged);
}

void TVxDataWithErrorSeries::SetdXPlus(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdXPlus, wrdXPlus, Vector, &TVxSeries::FOnXIChanged))
        RangesModified();
}

void TVxDataWithErrorSeries::SetdXMinus(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdXMinus, wrdXMinus, Vector, &TVxSeries::FOnXIChanged))
        RangesModified();
}

void TVxDataWithErrorSeries::SetdYPlus(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdYPlus, wrdYPlus, Vector, &TVxSeries::FOnYIChanged))
        RangesModified();
}

void TVxDataWithErrorSeries::SetdYMinus(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdYMinus, wrdYMinus, Vector, &TVxSeries::FOnYIChanged))
        RangesModified();
}

void TVxDataWithErrorSeries::SetErrorIndicatorsColor(TColor Value)
{
    if (FErrorIndicatorsColor == Value)
        return;
    FErrorIndicatorsColor = Value;
    Modified();
}

void TVxDataWithErrorSeries::ComponentRemoved(int Role)
{
    switch (Role) {
    case wrdXPlus: FdXPlus = nullptr; break;
    case wrdXMinus: FdXMinus = nullptr; break;
    case wrdYPlus: FdYPlus = nullptr; break;
    case wrdYMinus: FdYMinus = nullptr; break;
    default: TVxDataSeries::ComponentRemoved(Role); return;
    }
    InvalidatePixels();
    if (!FDestroying)
        RangesModified();
}

double TVxSeries::ComponentValue(const TVxCustomRealVector* V, int Index)
{
    if (!V || Index < 0 || Index >= V->Count())
        return 0.0;
    const double d = V->Data()[Index];
    return std::isfinite(d) ? d : 0.0;
}

double TVxDataWithErrorSeries::XPlus(int Index) const
{
    return FPointStyle->Visible() ? std::fabs(ComponentValue(FdXPlus, Index)) : 0.0;
}

double TVxDataWithErrorSeries::XMinus(int Index) const
{
    return FPointStyle->Visible() ? std::fabs(ComponentValue(FdXMinus, Index)) : 0.0;
}

double TVxDataWithErrorSeries::YPlus(int Index) const
{
    return FPointStyle->Visible() ? std::fabs(ComponentValue(FdYPlus, Index)) : 0.0;
}

double TVxDataWithErrorSeries::YMinus(int Index) const
{
    return FPointStyle->Visible() ? std::fabs(ComponentValue(FdYMinus, Index)) : 0.0;
}

void TVxDataWithErrorSeries::VectorRefs(std::vector<TVectorRef>& Refs) const
{
    TVxDataSeries::VectorRefs(Refs);
    Refs.push_back({FdXPlus, &TVxSeries::FOnXIChanged});
    Refs.push_back({FdXMinus, &TVxSeries::FOnXIChanged});
    Refs.push_back({FdYPlus, &TVxSeries::FOnYIChanged});
    Refs.push_back({FdYMinus, &TVxSeries::FOnYIChanged});
}

bool TVxDataWithErrorSeries::CanKeepPixels() const
{
    return TVxDataSeries::CanKeepPixels() && (!FdXPlus || Notifies(FdXPlus)) && (!FdXMinus || Notifies(FdXMinus))
           && (!FdYPlus || Notifies(FdYPlus)) && (!FdYMinus || Notifies(FdYMinus))
           && Hears(FdXPlus, &TVxSeries::FOnXIChanged) && Hears(FdXMinus, &TVxSeries::FOnXIChanged)
           && Hears(FdYPlus, &TVxSeries::FOnYIChanged) && Hears(FdYMinus, &TVxSeries::FOnYIChanged);
}

void TVxDataWithErrorSeries::SpanOf(bool XSide, int Index, double V, double& Lo, double& Hi) const
{
    Lo = V - (XSide ? XMinus(Index) : YMinus(Index));
    Hi = V + (XSide ? XPlus(Index) : YPlus(Index));
}

void TVxDataWithErrorSeries::GetNewXStartStop()
{
    FXSpansWithErrors = FPointStyle->Visible();
    ScanSpans(true);
}

void TVxDataWithErrorSeries::GetNewYStartStop()
{
    FYSpansWithErrors = FPointStyle->Visible();
    ScanSpans(false);
}

void TVxDataWithErrorSeries::Modified()
{
    TVxDataSeries::Modified();
    // The symbols were shown or hidden: the errors enter or leave the ranges.
    if (RangesOutdated() && !FRangesDirty)
        RangesModified();
}

bool TVxDataWithErrorSeries::RangesOutdated() const
{
    const bool visible = FPointStyle->Visible();
    return FXSpansWithErrors != visible || FYSpansWithErrors != visible;
}

void TVxDataWithErrorSeries::CalculatePoint(int Index)
{
    TVxDataSeries::CalculatePoint(Index);
    if (Index < 0 || Index >= FPointsCount || !FXAxis || !FYAxis)
        return;
    const TVxCustomRealVector* vectors[4] = {FdXPlus, FdXMinus, FdYPlus, FdYMinus};
    for (int k = 0; k < 4; ++k) {
        // The lengths never outlast their error vector (it may have shrunk or gone).
        const int count = vectors[k] ? vectors[k]->Count() : 0;
        if (FLengths[k]->Count() > count)
            FLengths[k]->SetCount(count);
        if (count <= Index)
            continue;
        const double scale = (k < 2 ? FXAxis : FYAxis)->Scale();
        FLengths[k]->SetValue(Index, PixelLength(ComponentValue(vectors[k], Index), scale));
    }
}

void TVxDataWithErrorSeries::DrawPoints(TCanvas& Canvas)
{
    TVx2DGraph* g = Graph();
    if (!g || !g->NotUpdating() || !FPointStyle->Visible() || !FXAxis || !FYAxis)
        return;
    if (FPointsDirty)
        CalculatePoints();
    TVxCanvasStateGuard guard(Canvas);
    const int width = FDrawingWorld ? FDrawingWorld->width() : 0;
    const int height = FDrawingWorld ? FDrawingWorld->height() : 0;
    const int s = SymbolSize(*FPointStyle);
    const TColor background = SymbolBackground();
    // Plus bars point toward larger values, also on twisted axes.
    const int sx = FXAxis->Map().Forward() ? 1 : -1;
    const int sy = FYAxis->Map().Forward() ? 1 : -1;
    // Error bars reach beyond the plot only as far as their caps and the symbols.
    WithSymbolClipping(Canvas, std::max(SymbolReach(*FPointStyle), s + 2), [&] {
        for (int i = 0; i < FPointsCount; ++i) {
            QPoint p;
            if (!PointAt(i, p) || p.x() < 0 || p.x() > width || p.y() < 0 || p.y() > height)
                continue;
            const int x = p.x(), y = p.y();
            Canvas.Pen().SetWidth(1);
            Canvas.Pen().SetColor(FErrorIndicatorsColor);
            Canvas.Pen().SetStyle(psSolid);
            for (int k = 0; k < 2; ++k) {
                if (i < FLengths[k]->Count()) {
                    const int e = x + (k == 0 ? sx : -sx) * FLengths[k]->Value(i);
                    vx::DrawLine(x, y, e, y, Canvas);
                    vx::DrawLine(e, y - s, e, y + s, Canvas);
                }
                if (i < FLengths[k + 2]->Count()) {
                    const int e = y + (k == 0 ? sy : -sy) * FLengths[k + 2]->Value(i);
                    vx::DrawLine(x, y, x, e, Canvas);
                    vx::DrawLine(x - s, e, x + s, e, Canvas);
                }
            }
            Canvas.Pen().SetWidth(FPointStyle->Width());
            Canvas.Pen().SetColor(FPointStyle->Color());
            Canvas.Brush().SetColor(background);
            DrawPointSymbol(x, y, s, FPointStyle->Style(), Canvas);
        }
    });
}

void TVxDataWithErrorSeries::WriteToIni(TVxIniList& List, const QString& Section) const
{
    TVxDataSeries::WriteToIni(List, Section);
    List.WriteComponentRef(Section, QStringLiteral("dXMinus"), FdXMinus);
    List.WriteComponentRef(Section, QStringLiteral("dXPlus"), FdXPlus);
    List.WriteComponentRef(Section, QStringLiteral("dYMinus"), FdYMinus);
    List.WriteComponentRef(Section, QStringLiteral("dYPlus"), FdYPlus);
    List.WriteInteger(Section, QStringLiteral("ErrorBars.Color"), FErrorIndicatorsColor);
}

void TVxDataWithErrorSeries::ReadFromIni(TVxIniList& List, const QString& Section)
{
    TVxDataSeries::ReadFromIni(List, Section);
    TVxCustomRealVector* v = FdXMinus;
    List.ReadComponentRef(Section, QStringLiteral("dXMinus"), v);
    SetdXMinus(v);
    v = FdXPlus;
    List.ReadComponentRef(Section, QStringLiteral("dXPlus"), v);
    SetdXPlus(v);
    v = FdYMinus;
    List.ReadComponentRef(Section, QStringLiteral("dYMinus"), v);
    SetdYMinus(v);
    v = FdYPlus;
    List.ReadComponentRef(Section, QStringLiteral("dYPlus"), v);
    SetdYPlus(v);
    SetErrorIndicatorsColor(List.ReadInteger(Section, QStringLiteral("ErrorBars.Color"), FErrorIndicatorsColor));
}

} // namespace vx
