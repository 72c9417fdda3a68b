#include "vx/series/VxLineLayer.h"

#include "vx/graph/VxDraw.h"
#include "vx/platform/VxCanvas.h"
#include "vx/series/VxPolylineReducer.h"

#include <QPainter>
#include <cmath>

namespace vx {

namespace {

bool IntegralTranslation(const QTransform& T)
{
    return T.type() <= QTransform::TxTranslate && T.dx() == std::floor(T.dx()) && T.dy() == std::floor(T.dy());
}

// A canvas drawing into Layer at the logical position Rect, in the pen of Source.
void SetUpLayerCanvas(TCanvas& LayerCanvas, const TCanvas& Source, const QRect& Rect)
{
    LayerCanvas.SetPalette(Source.Palette());
    LayerCanvas.SetPen(Source.Pen());
    LayerCanvas.SetWindowOrg(Rect.topLeft());
}

} // namespace

void DrawReducedLine(const TVxPolylineReducer& Reduced, TCanvas& Canvas)
{
    for (const auto& run : Reduced.Runs())
        DrawPolyline(run.Points, run.Count, Canvas);
}

void TVxLineLayer::Draw(TCanvas& Canvas, const TVxPolylineReducer& Reduced, quint64 Generation,
                        const QPoint* Points, int Count, int Skip)
{
    QPainter* painter = Canvas.Painter();
    const TPen& pen = Canvas.Pen();
    if (!Canvas.IsRaster() || pen.Mode() != pmCopy || pen.Width() > 1 || pen.Style() != psSolid
        || !IntegralTranslation(painter->deviceTransform())) {
        Clear();
        DrawReducedLine(Reduced, Canvas);
        return;
    }
    const QRect rect = Canvas.ClipRect();
    if (rect.isEmpty())
        return;
    const TColor color = ColorToRGB(pen.Color(), &Canvas.Palette());
    const bool extend = FValid && FGeneration == Generation && FColor == color && FRect == rect && FCount <= Count;
    if (!extend) {
        FLayer = QImage(rect.size(), QImage::Format_ARGB32_Premultiplied);
        FLayer.fill(0);
        TCanvas layer(&FLayer);
        SetUpLayerCanvas(layer, Canvas, rect);
        DrawReducedLine(Reduced, layer);
    } else if (FCount < Count) {
        // The segments from the last drawn point on.
        TVxPolylineReducer tail;
        const int from = FCount > 0 ? FCount - 1 : 0;
        tail.AddPoints(Points + from, Count - from, Skip);
        TCanvas layer(&FLayer);
        SetUpLayerCanvas(layer, Canvas, rect);
        DrawReducedLine(tail, layer);
    }
    FValid = true;
    FGeneration = Generation;
    FColor = color;
    FRect = rect;
    FCount = Count;
    painter = Canvas.Painter();
    const QPainter::CompositionMode mode = painter->compositionMode();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter->drawImage(rect.topLeft(), FLayer);
    painter->setCompositionMode(mode);
}

} // namespace vx
