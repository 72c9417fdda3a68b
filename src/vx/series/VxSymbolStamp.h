#pragma once
// Drawing many identical point symbols quickly, with the same pixels as drawing each one.
//
// Symbols are drawn aliased at integer positions, so every copy of one symbol in one
// pen and brush has the same pixel pattern shifted. On raster devices whose painter only
// translates, the pattern is drawn once with DrawPointSymbol into a small sprite and then
// copied pixel by pixel into a transparent layer that is composited in one call. Later
// symbols cover earlier ones: the layer is filled from the last symbol to the first, and a
// position already taken by a later symbol is skipped. Other devices (pictures, SVG, PDF,
// scaled painters) get one DrawPointSymbol per symbol.
//
// The finished layer can be kept and drawn again while the points, style and target
// rectangle stay the same (see TVxSymbolLayer).

#include "vx/graph/VxDraw.h"
#include "vx/platform/VxGraphics.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <cstdint>
#include <vector>

namespace vx {

class TCanvas;

// The cached symbol layer of one series.
class TVxSymbolLayer {
public:
    // What the layer shows; a layer is reused only for an equal key.
    struct TKey {
        quint64 PointsVersion = 0;
        TVxPointSymbol Symbol = SyCircle;
        int Size = 0;
        int Width = 0;
        TColor PenColor = 0;
        TColor BrushColor = 0;
        QRect Rect;
        bool operator==(const TKey& o) const
        {
            return PointsVersion == o.PointsVersion && Symbol == o.Symbol && Size == o.Size && Width == o.Width
                   && PenColor == o.PenColor && BrushColor == o.BrushColor && Rect == o.Rect;
        }
    };

    // Draws the symbol Symbol of half-size R at each of the Count positions (entries with
    // x = Skip are left out) in the canvas pen (width and colour) and brush colour.
    // Version identifies the positions: an unchanged version (with the same style and
    // canvas area) draws the kept layer.
    void Draw(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R,
              quint64 Version);
    // Drops the kept layer.
    void Clear() { FValid = false; FLayer = QImage(); }

private:
    // Draws one DrawPointSymbol per point (devices the layer cannot serve).
    static void DrawEach(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R);
    bool Build(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R,
               const QRect& Rect);

    bool FValid = false;
    TKey FKey;
    QImage FLayer;
    std::vector<std::uint8_t> FTaken;
};

} // namespace vx
