#include "vx/series/VxSymbolStamp.h"

#include "vx/platform/VxCanvas.h"

#include <QPainter>
#include <algorithm>
#include <climits>
#include <cmath>

namespace vx {

namespace {

// Half the side of a square that holds the whole symbol drawn with a pen of Width.
// A sprite (and pattern) this wide at most; larger symbols are drawn one by one, which
// then costs less than stamping their many pixels.
constexpr int kMaxSpriteReach = 256;



bool IntegralTranslation(const QTransform& T)
{
    return T.type() <= QTransform::TxTranslate && T.dx() == std::floor(T.dx()) && T.dy() == std::floor(T.dy());
}

} // namespace

void TVxSymbolLayer::DrawEach(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol,
                              int R)
{
    for (int i = 0; i < Count; ++i)
        if (Points[i].x() != Skip)
            DrawPointSymbol(Points[i].x(), Points[i].y(), R, Symbol, Canvas);
}

void TVxSymbolLayer::Draw(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R,
                          quint64 Generation)
{
    if (Count <= 0 || int(Symbol) < 0 || int(Symbol) >= VxPointSymbolCount)
        return;
    QPainter* painter = Canvas.Painter();
    if (!Canvas.IsRaster() || Canvas.Pen().Mode() != pmCopy || !IntegralTranslation(painter->deviceTransform())
        || PointSymbolReach(R, Canvas.Pen().Width()) > kMaxSpriteReach) {
        Clear();
        DrawEach(Canvas, Points, Count, Skip, Symbol, R);
        return;
    }
    const QRect rect = Canvas.ClipRect();
    if (rect.isEmpty())
        return;
    const TKey key{Symbol, R, Canvas.Pen().Width(), Canvas.Pen().Color(), Canvas.Brush().Color(), rect};
    if (FValid && key == FKey && Generation == FGeneration && FCount <= Count) {
        Extend(Points, FCount, Count, Skip);
    } else {
        FKey = key;
        // The pattern: the symbol drawn once into a transparent sprite.
        FReach = int(PointSymbolReach(R, Canvas.Pen().Width()));
        const int side = 2 * FReach + 1;
        QImage sprite(side, side, QImage::Format_ARGB32_Premultiplied);
        sprite.fill(0);
        {
            TCanvas sc(&sprite);
            sc.SetPalette(Canvas.Palette());
            sc.SetPen(Canvas.Pen());
            sc.SetBrush(Canvas.Brush());
            DrawPointSymbol(FReach, FReach, R, Symbol, sc);
        }
        FPattern.clear();
        for (int y = 0; y < side; ++y) {
            const QRgb* row = reinterpret_cast<const QRgb*>(sprite.constScanLine(y));
            for (int x = 0; x < side; ++x)
                if (qAlpha(row[x]) != 0)
                    FPattern.push_back({x - FReach, y - FReach, row[x]});
        }
        FLayer = QImage(rect.size(), QImage::Format_ARGB32_Premultiplied);
        FLayer.fill(0);
        PrepareOffsets();
        Build(Points, Count, Skip);
    }
    FValid = true;
    FGeneration = Generation;
    FCount = Count;
    painter = Canvas.Painter();
    const QPainter::CompositionMode mode = painter->compositionMode();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter->drawImage(rect.topLeft(), FLayer);
    painter->setCompositionMode(mode);
}

void TVxSymbolLayer::PrepareOffsets()
{
    const qsizetype stride = FLayer.bytesPerLine() / qsizetype(sizeof(QRgb));
    FOffsets.clear();
    FUniform = true;
    for (const TSpritePixel& s : FPattern) {
        FOffsets.push_back(qsizetype(s.DY) * stride + s.DX);
        FUniform = FUniform && s.Value == FPattern.front().Value;
    }
}

void TVxSymbolLayer::Stamp(QRgb* Bits, int CX, int CY, bool OnlyEmpty)
{
    const int w = FLayer.width();
    const int h = FLayer.height();
    QRgb* bits = Bits;
    const qsizetype stride = FLayer.bytesPerLine() / qsizetype(sizeof(QRgb));
    const bool inside = CX - FReach >= 0 && CY - FReach >= 0 && CX + FReach < w && CY + FReach < h;
    if (inside) {
        QRgb* centre = bits + qsizetype(CY) * stride + CX;
        const size_t n = FOffsets.size();
        if (FUniform) {
            const QRgb value = FPattern.empty() ? 0 : FPattern.front().Value;
            for (size_t k = 0; k < n; ++k)
                centre[FOffsets[k]] = value;
        } else {
            for (size_t k = 0; k < n; ++k) {
                QRgb& dst = centre[FOffsets[k]];
                if (!OnlyEmpty || qAlpha(dst) == 0)
                    dst = FPattern[k].Value;
            }
        }
        return;
    }
    for (const TSpritePixel& s : FPattern) {
        const int x = CX + s.DX;
        const int y = CY + s.DY;
        if (x < 0 || y < 0 || x >= w || y >= h)
            continue;
        QRgb& dst = bits[y * stride + x];
        if (!OnlyEmpty || qAlpha(dst) == 0)
            dst = s.Value;
    }
}

void TVxSymbolLayer::Build(const QPoint* Points, int Count, int Skip)
{
    const int w = FLayer.width();
    const int h = FLayer.height();
    QRgb* bits = reinterpret_cast<QRgb*>(FLayer.bits());
    // Positions already taken by a later (identical, covering) symbol.
    std::vector<std::uint8_t> taken(size_t(w) * size_t(h), 0);
    // Last symbol first: a pixel already painted belongs to a later symbol, which covers it.
    for (int i = Count - 1; i >= 0; --i) {
        const QPoint p = Points[i];
        if (p.x() == Skip)
            continue;
        const long long lx = (long long)p.x() - FKey.Rect.left();
        const long long ly = (long long)p.y() - FKey.Rect.top();
        if (lx < -FReach || ly < -FReach || lx >= w + FReach || ly >= h + FReach)
            continue;
        const int cx = int(lx), cy = int(ly);
        if (cx >= 0 && cy >= 0 && cx < w && cy < h) {
            std::uint8_t& t = taken[size_t(cy) * size_t(w) + size_t(cx)];
            if (t)
                continue;
            t = 1;
        }
        Stamp(bits, cx, cy, true);
    }
}

void TVxSymbolLayer::Extend(const QPoint* Points, int From, int Count, int Skip)
{
    const int w = FLayer.width();
    const int h = FLayer.height();
    QRgb* bits = reinterpret_cast<QRgb*>(FLayer.bits());
    for (int i = From; i < Count; ++i) {
        const QPoint p = Points[i];
        if (p.x() == Skip)
            continue;
        const long long lx = (long long)p.x() - FKey.Rect.left();
        const long long ly = (long long)p.y() - FKey.Rect.top();
        if (lx < -FReach || ly < -FReach || lx >= w + FReach || ly >= h + FReach)
            continue;
        Stamp(bits, int(lx), int(ly), false);
    }
}

} // namespace vx
