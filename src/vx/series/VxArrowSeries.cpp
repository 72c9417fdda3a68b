#include "vx/series/VxArrowSeries.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"

#include <algorithm>
#include <cmath>

namespace vx {

TVxArrowSeries::TVxArrowSeries(QObject* AOwner)
    : TVxNotCalculatedSeries(AOwner), FTipX(std::make_unique<TVxIntegerVector>()),
      FTipY(std::make_unique<TVxIntegerVector>())
{
    BindToOwnerGraph();
}

TVxArrowSeries::~TVxArrowSeries()
{
    FDestroying = true;
    if (FdXData)
        Unlisten(FdXData, &TVxSeries::FOnXIChanged);
    if (FdYData)
        Unlisten(FdYData, &TVxSeries::FOnYIChanged);
}

void TVxArrowSeries::SetTipLength(int Value)
{
    if (FTipLength == Value)
        return;
    FTipLength = Value;
    Modified();
}

void TVxArrowSeries::SetTipWidth(int Value)
{
    if (FTipWidth == Value)
        return;
    FTipWidth = Value;
    Modified();
}

void TVxArrowSeries::SetDX(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdXData, wrdXData, Vector, &TVxSeries::FOnXIChanged))
        RangesModified();
}

void TVxArrowSeries::SetDY(TVxCustomRealVector* Vector)
{
    if (ReplaceVector(FdYData, wrdYData, Vector, &TVxSeries::FOnYIChanged))
        RangesModified();
}

void TVxArrowSeries::ComponentRemoved(int Role)
{
    if (Role != wrdXData && Role != wrdYData) {
        TVxNotCalculatedSeries::ComponentRemoved(Role);
        return;
    }
    (Role == wrdXData ? FdXData : FdYData) = nullptr;
    InvalidatePixels();
    if (!FDestroying) {
        RangesModified();
        CalculatePoints();
        if (TVx2DGraph* g = Graph())
            g->Modified();
    }
}

void TVxArrowSeries::VectorRefs(std::vector<TVectorRef>& Refs) const
{
    TVxNotCalculatedSeries::VectorRefs(Refs);
    Refs.push_back({FdXData, &TVxSeries::FOnXIChanged});
    Refs.push_back({FdYData, &TVxSeries::FOnYIChanged});
}

bool TVxArrowSeries::CanKeepPixels() const
{
    auto heard = [this](const TVxCustomRealVector* v, void (TVxSeries::*h)(int, bool)) {
        return !v || ((qobject_cast<const TVxLiveVector*>(v) || qobject_cast<const TVxDBVector*>(v)) && Hears(v, h));
    };
    return TVxNotCalculatedSeries::CanKeepPixels() && heard(FdXData, &TVxSeries::FOnXIChanged)
           && heard(FdYData, &TVxSeries::FOnYIChanged);
}

void TVxArrowSeries::Modified()
{
    // Hidden arrows count only their starts in the ranges, and their tips lie on them.
    const bool shown = FLineStyle->Visible();
    if (shown != FArrowsShown) {
        FArrowsShown = shown;
        InvalidatePixels();
        RangesModified();
        return;
    }
    TVxNotCalculatedSeries::Modified();
}

double TVxArrowSeries::GetDX(int I) const
{
    return FLineStyle->Visible() ? ComponentValue(FdXData, I) : 0.0;
}

double TVxArrowSeries::GetDY(int I) const
{
    return FLineStyle->Visible() ? ComponentValue(FdYData, I) : 0.0;
}

void TVxArrowSeries::SpanOf(bool XSide, int Index, double V, double& Lo, double& Hi) const
{
    const double end = V + (XSide ? GetDX(Index) : GetDY(Index));
    Lo = std::min(V, end);
    Hi = std::max(V, end);
}

void TVxArrowSeries::GetNewXStartStop()
{
    ScanSpans(true);
    Modified();
}

void TVxArrowSeries::GetNewYStartStop()
{
    ScanSpans(false);
    Modified();
}

void TVxArrowSeries::CalculatePoint(int Index)
{
    TVxNotCalculatedSeries::CalculatePoint(Index);
    if (Index < 0 || Index >= FPointsCount || !FXAxis || !FYAxis)
        return;
    QPoint p;
    if (!PointAt(Index, p)) {
        FTipX->SetValue(Index, CInvalidPixel);
        FTipY->SetValue(Index, CInvalidPixel);
        return;
    }
    // Signed offsets in the direction in which the axis's values grow on screen: right
    // and up, or left and down on a twisted axis.
    auto offset = [](double d, const TVxAxis* axis) {
        const int l = PixelLength(d, axis->Scale());
        return (d < 0) == axis->Map().Forward() ? -l : l;
    };
    FTipX->SetValue(Index, p.x() + offset(GetDX(Index), FXAxis));
    FTipY->SetValue(Index, p.y() + offset(GetDY(Index), FYAxis));
}

void TVxArrowSeries::DrawLine(TCanvas& Canvas)
{
    if (!FXAxis || !FYAxis || !PrepareDrawing() || !FLineStyle->Visible())
        return;
    TVxCanvasStateGuard guard(Canvas);
    TPen pen;
    FLineStyle->ApplyTo(pen);
    pen.SetMode(pmCopy);
    Canvas.SetPen(pen);
    // Arrow heads on the plot's edge show whole.
    const int margin = std::clamp(FTipLength, 0, 1 << 20) + std::clamp(FTipWidth, 0, 1 << 20)
                       + std::clamp(pen.Width(), 0, 1 << 20) + 1;
    WithSymbolClipping(Canvas, margin, [&] {
        const int n = std::min({FPointsCount, FTipX->Count(), FTipY->Count()});
        for (int i = 0; i < n; ++i) {
            QPoint p;
            if (PointAt(i, p))
                DrawArrow(p.x(), p.y(), FTipX->Value(i), FTipY->Value(i), FTipLength, FTipWidth, Canvas);
        }
    });
}

void TVxArrowSeries::WriteToIni(TVxIniList& List, const QString& Section) const
{
    TVxNotCalculatedSeries::WriteToIni(List, Section);
    List.WriteInteger(Section, QStringLiteral("TipLength"), FTipLength);
    List.WriteInteger(Section, QStringLiteral("TipWidth"), FTipWidth);
}

void TVxArrowSeries::ReadFromIni(TVxIniList& List, const QString& Section)
{
    TVxNotCalculatedSeries::ReadFromIni(List, Section);
    SetTipLength(List.ReadInteger(Section, QStringLiteral("TipLength"), FTipLength));
    SetTipWidth(List.ReadInteger(Section, QStringLiteral("TipWidth"), FTipWidth));
}

} // namespace vx
