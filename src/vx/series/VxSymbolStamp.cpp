#include "vx/series/VxSymbolStamp.h"

#include "vx/platform/VxCanvas.h"

#include <QPainter>
#include <algorithm>
#include <climits>
#include <cmath>

namespace vx {

namespace {

// One pixel of the symbol pattern, relative to the symbol's centre.
struct TSpritePixel {
    int DX;
    int DY;
    QRgb Value;
};

// Half the side of a square that holds the whole symbol drawn with a pen of Width.
int SymbolReach(int R, int Width)
{
    // The star's tip reaches 8 % beyond R; wide pens add half their width on each side.
    return (R * 108) / 100 + Width + 2;
}

// Draws the symbol once into a transparent sprite and lists its painted pixels.
std::vector<TSpritePixel> SymbolPattern(const TCanvas& Canvas, TVxPointSymbol Symbol, int R, int Reach)
{
    const int side = 2 * Reach + 1;
    QImage sprite(side, side, QImage::Format_ARGB32_Premultiplied);
    sprite.fill(0);
    {
        TCanvas sc(&sprite);
        sc.SetPalette(Canvas.Palette());
        sc.SetPen(Canvas.Pen());
        sc.SetBrush(Canvas.Brush());
        DrawPointSymbol(Reach, Reach, R, Symbol, sc);
    }
    std::vector<TSpritePixel> pixels;
    for (int y = 0; y < side; ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(sprite.constScanLine(y));
        for (int x = 0; x < side; ++x)
            if (qAlpha(row[x]) != 0)
                pixels.push_back({x - Reach, y - Reach, row[x]});
    }
    return pixels;
}

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
                          quint64 Version)
{
    if (Count <= 0 || int(Symbol) < 0 || int(Symbol) >= VxPointSymbolCount)
        return;
    QPainter* painter = Canvas.Painter();
    if (!Canvas.IsRaster() || Canvas.Pen().Mode() != pmCopy || !IntegralTranslation(painter->deviceTransform())) {
        FValid = false;
        DrawEach(Canvas, Points, Count, Skip, Symbol, R);
        return;
    }

    // The area the symbols can show in: the clip, narrowed to the points' reach.
    const int reach = SymbolReach(R, Canvas.Pen().Width());
    int x0 = INT_MAX, y0 = INT_MAX, x1 = INT_MIN, y1 = INT_MIN;
    for (int i = 0; i < Count; ++i) {
        const QPoint p = Points[i];
        if (p.x() == Skip)
            continue;
        x0 = std::min(x0, p.x());
        x1 = std::max(x1, p.x());
        y0 = std::min(y0, p.y());
        y1 = std::max(y1, p.y());
    }
    if (x0 > x1)
        return;
    const QRect reachRect(QPoint(std::max(x0, INT_MIN / 2) - reach, std::max(y0, INT_MIN / 2) - reach),
                          QPoint(std::min(x1, INT_MAX / 2) + reach, std::min(y1, INT_MAX / 2) + reach));
    const QRect rect = Canvas.ClipRect().intersected(reachRect);
    if (rect.isEmpty())
        return;

    const TKey key{Version, Symbol, R, Canvas.Pen().Width(), Canvas.Pen().Color(), Canvas.Brush().Color(), rect};
    if (!(FValid && key == FKey)) {
        FValid = Build(Canvas, Points, Count, Skip, Symbol, R, rect);
        FKey = key;
    }
    painter = Canvas.Painter();
    const QPainter::CompositionMode mode = painter->compositionMode();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter->drawImage(rect.topLeft(), FLayer);
    painter->setCompositionMode(mode);
}

bool TVxSymbolLayer::Build(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol,
                           int R, const QRect& Rect)
{
    const int reach = SymbolReach(R, Canvas.Pen().Width());
    const std::vector<TSpritePixel> pattern = SymbolPattern(Canvas, Symbol, R, reach);
    const int w = Rect.width();
    const int h = Rect.height();
    FLayer = QImage(w, h, QImage::Format_ARGB32_Premultiplied);
    FLayer.fill(0);
    FTaken.assign(size_t(w) * size_t(h), 0);
    QRgb* bits = reinterpret_cast<QRgb*>(FLayer.bits());
    const qsizetype stride = FLayer.bytesPerLine() / qsizetype(sizeof(QRgb));

    // Last symbol first: a pixel already painted belongs to a later symbol, which covers it.
    for (int i = Count - 1; i >= 0; --i) {
        const QPoint p = Points[i];
        if (p.x() == Skip)
            continue;
        const long long lx = (long long)p.x() - Rect.left();
        const long long ly = (long long)p.y() - Rect.top();
        if (lx < -reach || ly < -reach || lx >= w + reach || ly >= h + reach)
            continue;
        const int cx = int(lx), cy = int(ly);
        if (cx >= 0 && cy >= 0 && cx < w && cy < h) {
            std::uint8_t& taken = FTaken[size_t(cy) * size_t(w) + size_t(cx)];
            if (taken)
                continue; // an identical symbol is drawn later on the same spot
            taken = 1;
        }
        const bool inside = cx - reach >= 0 && cy - reach >= 0 && cx + reach < w && cy + reach < h;
        for (const TSpritePixel& s : pattern) {
            const int x = cx + s.DX;
            const int y = cy + s.DY;
            if (!inside && (x < 0 || y < 0 || x >= w || y >= h))
                continue;
            QRgb& dst = bits[y * stride + x];
            if (qAlpha(dst) == 0)
                dst = s.Value;
        }
    }
    return true;
}

} // namespace vx
