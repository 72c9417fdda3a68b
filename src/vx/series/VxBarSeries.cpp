#include "vx/series/VxBarSeries.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"
#include "vx/platform/VxComponent.h"
#include "vx/series/VxPointKernels.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace vx {

namespace {

constexpr int kInvalidPixel = TVxSeries::CInvalidPixel;

// Bar corners are held within this many pixels of the plot's origin: far outside any
// plot, so the visible part of a bar is unchanged, and safe for the painter.
constexpr double kFarPixel = 1.0e6;

// Round to nearest, ties to even (the platform's Round); NaN counts as 0.
double RoundOffset(double V)
{
    return std::isnan(V) ? 0.0 : std::nearbyint(V);
}

int ClampPixel(double V)
{
    return int(std::clamp(RoundOffset(V), -kFarPixel, kFarPixel));
}

// The gap and depth percentages as drawn: a gap within 0..100, a depth of at least 0;
// a percentage that is not finite counts as 0.
double DrawnGap(double Percent)
{
    return std::isfinite(Percent) ? std::clamp(Percent, 0.0, 100.0) : 0.0;
}

double DrawnDepth(double Percent)
{
    return std::isfinite(Percent) ? std::max(Percent, 0.0) : 0.0;
}

double ValueAt(const TVxCustomRealVector* V, int I)
{
    return (V && I >= 0 && I < V->Count()) ? V->Data()[I] : std::numeric_limits<double>::quiet_NaN();
}

// (byte div 10) * Factor per colour byte, each kept in 8 bits: the light shade of a byte
// above 199 wraps around, deliberately, so that blocks keep the shades they always had.
TColor Shade(TColor Color, int Factor)
{
    const TColor rgb = ColorToRGB(Color);
    return RGB((GetRValue(rgb) / 10) * Factor, (GetGValue(rgb) / 10) * Factor, (GetBValue(rgb) / 10) * Factor);
}

// Number of bars of a series from its vectors (edges - 1, capped at the values).
int BarsOf(const TVxCustomRealVector* Edges, const TVxCustomRealVector* Values)
{
    if (!Edges || !Values)
        return 0;
    return std::max(0, std::min(Edges->Count() - 1, Values->Count()));
}

} // namespace

TVxBarSeries::TVxBarSeries(QObject* AOwner) : TVxLineSeries(AOwner)
{
    FLineStyle->SetColor(clBlue);
    FAreaStyle->SetColor(clNavy);
    FAreaStyle->SetDrawXOred(false);
    FXRange->SetStartStop(0.0, 0.0);
    FYRange->SetStartStop(0.0, 0.0);
}

void TVxBarSeries::SetShow3DBars(bool Value)
{
    if (FShow3DBars == Value)
        return;
    FShow3DBars = Value;
    SettingChanged();
}

void TVxBarSeries::SetBarHorizontal(bool Value)
{
    if (FBarHorizontal == Value)
        return;
    FBarHorizontal = Value;
    SettingChanged();
}

void TVxBarSeries::SetShiftOverlays(bool Value)
{
    if (FShiftOverlays == Value)
        return;
    FShiftOverlays = Value;
    if (Value)
        FStackOverlays = false;
    SettingChanged();
}

void TVxBarSeries::SetStackOverlays(bool Value)
{
    if (FStackOverlays == Value)
        return;
    FStackOverlays = Value;
    if (Value)
        FShiftOverlays = false;
    SettingChanged();
}

void TVxBarSeries::SetDepthPercent(double Value)
{
    if (FDepthPercent == Value)
        return;
    FDepthPercent = Value;
    SettingChanged();
}

void TVxBarSeries::SetBarsGapPercent(double Value)
{
    if (FBarsGapPercent == Value)
        return;
    FBarsGapPercent = Value;
    SettingChanged();
}

QList<TVxBarSeries*> TVxBarSeries::StackList() const
{
    QList<TVxBarSeries*> list;
    for (const auto& s : FStackList)
        if (s)
            list.append(s);
    return list;
}

void TVxBarSeries::DataChanged()
{
    if (!parent())
        return;
    // Any bar series later among the owner's children may have this one in its stack.
    bool after = false;
    for (TVxBarSeries* s : ComponentsOf<TVxBarSeries>(parent())) {
        if (s == this)
            after = true;
        else if (after && s->FStackOverlays)
            s->RangesModified();
    }
}

void TVxBarSeries::SetXData(TVxCustomRealVector* Vector)
{
    TVxLineSeries::SetXData(Vector);
    DataChanged();
}

void TVxBarSeries::SetYData(TVxCustomRealVector* Vector)
{
    TVxLineSeries::SetYData(Vector);
    DataChanged();
}

void TVxBarSeries::SettingChanged()
{
    RangesModified();
    DataChanged();
}

void TVxBarSeries::RebuildStackList()
{
    FStackList.clear();
    if (!FStackOverlays || !parent())
        return;
    for (TVxBarSeries* s : ComponentsOf<TVxBarSeries>(parent())) {
        if (s == this)
            break;
        if (s->FStackOverlays && s->FBarHorizontal == FBarHorizontal && s->ClassAxis() == ClassAxis()) {
            FStackList.append(s);
            // The bars standing on a deleted series come down at the next drawing.
            connect(s, &QObject::destroyed, this, &TVxBarSeries::RangesModified, Qt::UniqueConnection);
        }
    }
}

bool TVxBarSeries::LogValues() const
{
    const TVxAxis* axis = ValueAxis();
    return axis && (axis->Scaling() == AxLog || axis->Scaling() == AxLogEE);
}

int TVxBarSeries::ValuePixel(double Value) const
{
    // 0 and below cannot be shown on a logarithmic axis: such a bar end lies on the
    // axis start, so that bars stand on the start instead of hanging from the far end.
    const TVxAxisMap& map = ValueAxis()->Map();
    if (LogValues() && !(Value > 0.0))
        return map.Forward() ? 0 : map.AxisLength();
    return ValueAxis()->RealToIntPosition(Value);
}

void TVxBarSeries::SetPointsCount()
{
    // The value range depends on the value axis's scaling (see ScanValueRange).
    if (FRangeOnLog != LogValues())
        FRangesDirty = true;
    if (FStackOverlays)
        RebuildStackList();
    else
        FStackList.clear();
    FBarCount = BarsOf(EdgeData(), ValueData());
    const int count = FBarCount > 0 ? FBarCount + 1 : 0;
    FPointsCount = count;
    FPoints->SetCount(count);
    InvalidatePixels();
}

int TVxBarSeries::XIdxNeeded() const
{
    const int n = FXData ? FXData->Count() : 0;
    return FBarHorizontal ? std::min(n, FBarCount) : std::min(n, FBarCount + 1);
}

int TVxBarSeries::YIdxNeeded() const
{
    const int n = FYData ? FYData->Count() : 0;
    return FBarHorizontal ? std::min(n, FBarCount + 1) : std::min(n, FBarCount);
}

double TVxBarSeries::StackBase(int I) const
{
    if (!FStackOverlays)
        return 0.0;
    double base = 0.0;
    for (const auto& s : FStackList) {
        if (!s || BarsOf(s->EdgeData(), s->ValueData()) <= I)
            continue;
        const double v = ValueAt(s->ValueData(), I);
        if (!std::isfinite(v))
            return v;
        base = LimitReal(base + v);
    }
    return base;
}

double TVxBarSeries::StackedValue(int I) const
{
    const double v = ValueAt(ValueData(), I);
    const double base = StackBase(I);
    return std::isfinite(v) && std::isfinite(base) ? LimitReal(v + base) : std::numeric_limits<double>::quiet_NaN();
}

bool TVxBarSeries::IsValidBar(int I) const
{
    const TVxCustomRealVector* edges = EdgeData();
    return I >= 0 && I < FBarCount && std::isfinite(ValueAt(edges, I)) && std::isfinite(ValueAt(edges, I + 1))
           && std::isfinite(StackedValue(I));
}

double TVxBarSeries::GetY(int I) const
{
    return FBarHorizontal ? ValueAt(FYData, I) : StackedValue(I);
}

double TVxBarSeries::GetX(int I) const
{
    return FBarHorizontal ? StackedValue(I) : ValueAt(FXData, I);
}

int TVxBarSeries::EdgesNeeded() const
{
    return FBarHorizontal ? YIdxNeeded() : XIdxNeeded();
}

bool TVxBarSeries::EdgeSpan(int I, double& Lo, double& Hi) const
{
    Lo = Hi = ValueAt(EdgeData(), I);
    return I < EdgesNeeded() && std::isfinite(Lo);
}

bool TVxBarSeries::BarSpan(int I, double& Lo, double& Hi) const
{
    if (!IsValidBar(I))
        return false;
    // A logarithmic axis shows the ends above 0 only; the others lie on its start.
    const double top = StackedValue(I), base = StackBase(I);
    const bool topShown = !FRangeOnLog || top > 0.0, baseShown = !FRangeOnLog || base > 0.0;
    if (!topShown && !baseShown)
        return false;
    Lo = topShown && baseShown ? std::min(top, base) : (topShown ? top : base);
    Hi = topShown && baseShown ? std::max(top, base) : Lo;
    return true;
}

void TVxBarSeries::ScanSpansOf(bool Edges)
{
    const int n = Edges ? EdgesNeeded() : FBarCount;
    const bool xSide = Edges == !FBarHorizontal;
    int& minIdx = xSide ? FXMinIdx : FYMinIdx;
    int& maxIdx = xSide ? FXMaxIdx : FYMaxIdx;
    double mn = CVxMaxReal, mx = CVxMinReal;
    minIdx = maxIdx = -1;
    for (int i = 0; i < n; ++i) {
        double lo, hi;
        if (!(Edges ? EdgeSpan(i, lo, hi) : BarSpan(i, lo, hi)))
            continue;
        TakeBelow(lo, i, mn, minIdx);
        TakeAbove(hi, i, mx, maxIdx);
    }
    // A block's depth reaches beyond the last class by a share of its width.
    const double* e = EdgeData() ? EdgeData()->Data() : nullptr;
    if (Edges && FShow3DBars && n >= 2 && mn <= mx) {
        const double w = std::fabs(e[n - 1] - e[n - 2]);
        const double share
            = (1.0 - DrawnGap(FBarsGapPercent) / 100.0) * DrawnDepth(FDepthPercent) / (FBarHorizontal ? 400.0 : 240.0);
        if (std::isfinite(w) && share > 0.0)
            mx = LimitReal(mx + w * share);
    }
    SetRangeIfChanged(xSide ? *FXRange : *FYRange, mn, mx);
}

void TVxBarSeries::ScanClassRange()
{
    ScanSpansOf(true);
}

void TVxBarSeries::ScanValueRange()
{
    FRangeOnLog = LogValues();
    ScanSpansOf(false);
}

void TVxBarSeries::GetNewXStartStop()
{
    if (FBarHorizontal)
        ScanValueRange();
    else if (FXData)
        ScanClassRange();
    Modified();
}

void TVxBarSeries::GetNewYStartStop()
{
    if (!FBarHorizontal)
        ScanValueRange();
    else if (FYData)
        ScanClassRange();
    Modified();
}

void TVxBarSeries::FoldSpanOf(bool Edges, int I)
{
    if (I < 0)
        return;
    // The depth of blocks depends on the last class: their class range is rescanned.
    if (Edges && FShow3DBars) {
        ScanClassRange();
        Modified();
        return;
    }
    const bool xSide = Edges == !FBarHorizontal;
    double lo = 0.0, hi = 0.0;
    const bool valid = Edges ? EdgeSpan(I, lo, hi) : BarSpan(I, lo, hi);
    if (FoldIntoRange(xSide ? *FXRange : *FYRange, I, valid, lo, hi, xSide ? FXMinIdx : FYMinIdx,
                      xSide ? FXMaxIdx : FYMaxIdx, [this, Edges] { Edges ? ScanClassRange() : ScanValueRange(); }))
        Modified();
}

void TVxBarSeries::ClassDataChanged(int Index)
{
    // An edge bounds the bars on either side of it.
    FoldSpanOf(true, Index);
    FoldSpanOf(false, Index - 1);
    FoldSpanOf(false, Index);
}

void TVxBarSeries::CalcXValue(int Index)
{
    FBarHorizontal ? FoldSpanOf(false, Index) : ClassDataChanged(Index);
}

void TVxBarSeries::CalcYValue(int Index)
{
    FBarHorizontal ? ClassDataChanged(Index) : FoldSpanOf(false, Index);
}

void TVxBarSeries::CalculatePoint(int Index)
{
    if (Index < 0 || Index >= FPointsCount || !FXAxis || !FYAxis)
        return;
    // The value coordinate: the x of lying bars, the y of upright ones.
    auto pixel = [this](TVxAxis* axis, const TVxCustomRealVector* v, int i, double value, bool isValue) {
        if (!v || i >= v->Count())
            return 0;
        if (!std::isfinite(value))
            return kInvalidPixel;
        return isValue ? ValuePixel(value) : axis->RealToIntPosition(value);
    };
    FPoints->SetValue(Index, QPoint(pixel(FXAxis, FXData, Index, GetX(Index), FBarHorizontal),
                                    pixel(FYAxis, FYData, Index, GetY(Index), !FBarHorizontal)));
}

void TVxBarSeries::OverlayGroup(int& N, int& K, double& Gap, double& Depth) const
{
    N = K = 1;
    Gap = DrawnGap(FBarsGapPercent);
    Depth = DrawnDepth(FDepthPercent);
    if (!FShiftOverlays || !parent())
        return;
    int n = 0, k = 0;
    for (TVxBarSeries* s : ComponentsOf<TVxBarSeries>(parent())) {
        if (s->FBarHorizontal != FBarHorizontal || s->ClassAxis() != ClassAxis() || s->EdgeData() != EdgeData())
            continue;
        ++n;
        if (s == this)
            k = n;
        Gap = std::max(Gap, DrawnGap(s->FBarsGapPercent));
        Depth = std::max(Depth, DrawnDepth(s->FDepthPercent));
    }
    if (k > 0) {
        N = n;
        K = k;
    }
}

bool TVxBarSeries::BarRect(int I, int N, int K, double Gap, double Depth, TBarRect& R) const
{
    const QPoint* p = FPoints->GetPointer(0);
    const QPoint a = p[I], b = p[I + 1];
    const int c0 = FBarHorizontal ? a.y() : a.x();
    const int c1 = FBarHorizontal ? b.y() : b.x();
    int top = FBarHorizontal ? a.x() : a.y();
    if (c0 == kInvalidPixel || c1 == kInvalidPixel || top == kInvalidPixel)
        return false;
    const double base = StackBase(I);
    if (!std::isfinite(base) || !std::isfinite(StackedValue(I)))
        return false;
    const int bottom = ClampPixel(ValuePixel(base));

    // Class width, gaps on both sides, this series' share of the bar, depth.
    const double w = double(c1) - double(c0);
    const double gap = RoundOffset(w * Gap / 200.0);
    const double bw = w - 2.0 * gap;
    R.DX = ClampPixel(std::fabs(bw) * Depth / 240.0);
    R.DY = ClampPixel(std::fabs(bw) * Depth / 400.0);
    const int lo = ClampPixel(c0 + gap + RoundOffset(bw / N * (K - 1)));
    const int hi = ClampPixel(c0 + gap + RoundOffset(bw / N * K));
    top = ClampPixel(top);
    if (FBarHorizontal) {
        R.Left = std::min(bottom, top);
        R.Right = std::max(bottom, top);
        R.Top = std::min(lo, hi);
        R.Bottom = std::max(lo, hi);
    } else {
        R.Left = std::min(lo, hi);
        R.Right = std::max(lo, hi);
        R.Top = std::min(top, bottom);
        R.Bottom = std::max(top, bottom);
    }
    return true;
}

void TVxBarSeries::DrawLine(TCanvas& Canvas)
{
    if (!FXAxis || !FYAxis || !PrepareDrawing())
        return;
    if (!FLineStyle->Visible() && !FAreaStyle->Visible())
        return;
    if (FBarCount < 1 || FPoints->Count() < FBarCount + 1)
        return;
    TVxCanvasStateGuard guard(Canvas);
    int n, k;
    double gap, depth;
    OverlayGroup(n, k, gap, depth);

    TPen pen;
    pen.SetStyle(FLineStyle->Visible() ? FLineStyle->Style() : psClear);
    pen.SetWidth(FLineStyle->Width());
    // The bars are filled whether or not the area style is visible; a hidden line style
    // hides their outline.
    TBrush brush;
    brush.SetStyle(FAreaStyle->Style());
    const bool xored = FAreaStyle->DrawXOred() && !FShow3DBars;
    if (xored) {
        pen.SetMode(pmXor);
        pen.SetColor(ColorToRGB(FLineStyle->Color()) ^ ColorToRGB(FBackgroundColor));
        brush.SetColor(ColorToRGB(FAreaStyle->Color()) ^ ColorToRGB(FBackgroundColor));
    } else {
        pen.SetMode(pmCopy);
        pen.SetColor(FLineStyle->Color());
        brush.SetColor(FAreaStyle->Color());
    }
    Canvas.SetPen(pen);
    Canvas.SetBrush(brush);
    const TColor light = Shade(FAreaStyle->Color(), 13);
    const TColor dark = Shade(FAreaStyle->Color(), 6);

    // Bars reach beyond the plot by their outline and, in 3D, by their depth.
    const int outline = std::clamp(pen.Width(), 0, 1 << 20) + 1;
    int margin = outline;
    for (int i = 0; FShow3DBars && i < FBarCount; ++i) {
        TBarRect r;
        if (BarRect(i, n, k, gap, depth, r))
            margin = std::max({margin, std::abs(r.DX) + outline, std::abs(r.DY) + outline});
    }
    WithSymbolClipping(Canvas, margin, [&] {
        for (int i = FBarCount - 1; i >= 0; --i) {
            TBarRect r;
            if (!BarRect(i, n, k, gap, depth, r))
                continue;
            if (FShow3DBars)
                Draw3DBar(r.Left, r.Top, r.Right, r.Bottom, r.DX, r.DY, FAreaStyle->Color(), light, dark, Canvas);
            else
                Canvas.Rectangle(r.Left, r.Top, r.Right, r.Bottom);
        }
    });
}

int TVxBarSeries::FindPoint(int X, int Y, int Tolerance) const
{
    if (FDrawingWorld) {
        X -= FDrawingWorld->x();
        Y -= FDrawingWorld->y();
    }
    int found = -1;
    const QPoint* p = FPoints->Count() > 0 ? FPoints->GetPointer(0) : nullptr;
    for (int i = 0; p && i < FBarCount && i + 1 < FPoints->Count(); ++i) {
        const int c = FBarHorizontal ? Y : X, v = FBarHorizontal ? X : Y;
        const int c0 = FBarHorizontal ? p[i].y() : p[i].x();
        const int c1 = FBarHorizontal ? p[i + 1].y() : p[i + 1].x();
        const int top = FBarHorizontal ? p[i].x() : p[i].y();
        if (c0 == kInvalidPixel || c1 == kInvalidPixel || top == kInvalidPixel)
            continue;
        if (std::min(c0, c1) <= c && c <= std::max(c0, c1) && std::abs(v - top) <= Tolerance)
            found = i;
    }
    return found;
}

void TVxBarSeries::WriteToIni(TVxIniList& List, const QString& Section) const
{
    TVxLineSeries::WriteToIni(List, Section);
    List.WriteBool(Section, QStringLiteral("ShiftOverlays"), FShiftOverlays);
    List.WriteBool(Section, QStringLiteral("StackOverlays"), FStackOverlays);
    List.WriteBool(Section, QStringLiteral("Show3DBars"), FShow3DBars);
    List.WriteBool(Section, QStringLiteral("BarHorizontal"), FBarHorizontal);
    List.WriteReal(Section, QStringLiteral("DepthPercent"), FDepthPercent);
    List.WriteReal(Section, QStringLiteral("BarsGapPercent"), FBarsGapPercent);
}

void TVxBarSeries::ReadFromIni(TVxIniList& List, const QString& Section)
{
    TVxLineSeries::ReadFromIni(List, Section);
    SetShiftOverlays(List.ReadBool(Section, QStringLiteral("ShiftOverlays"), FShiftOverlays));
    SetStackOverlays(List.ReadBool(Section, QStringLiteral("StackOverlays"), FStackOverlays));
    SetShow3DBars(List.ReadBool(Section, QStringLiteral("Show3DBars"), FShow3DBars));
    SetBarHorizontal(List.ReadBool(Section, QStringLiteral("BarHorizontal"), FBarHorizontal));
    SetDepthPercent(List.ReadReal(Section, QStringLiteral("DepthPercent"), FDepthPercent));
    SetBarsGapPercent(List.ReadReal(Section, QStringLiteral("BarsGapPercent"), FBarsGapPercent));
}

} // namespace vx
