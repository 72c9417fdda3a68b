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
// The finished layer is kept: it is drawn again while the points, style and target
// rectangle stay the same, and when points were only appended the new symbols are stamped
// on top of it (later symbols cover earlier ones, so this gives the same picture).

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
    // How the layer draws; a layer is reused only for an equal key.
    struct TKey {
        TVxPointSymbol Symbol = SyCircle;
        int Size = 0;
        int Width = 0;
        TColor PenColor = 0;
        TColor BrushColor = 0;
        QRect Rect;
        bool operator==(const TKey& o) const
        {
            return Symbol == o.Symbol && Size == o.Size && Width == o.Width
                   && PenColor == o.PenColor && BrushColor == o.BrushColor && Rect == o.Rect;
        }
    };

    // Draws the symbol Symbol of half-size R at each of the Count positions (entries with
    // x = Skip are left out) in the canvas pen (width and colour) and brush colour.
    // Generation must change whenever a position already drawn changes; with the same
    // generation (and style and canvas area) the kept layer is reused and extended.
    void Draw(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R,
              quint64 Generation);
    // Drops the kept layer.
    void Clear() { FValid = false; FLayer = QImage(); }
    // Draws one DrawPointSymbol per point (devices the layer cannot serve, and few points,
    // where a layer of the plot's size would cost more memory than it saves time).
    static void DrawEach(TCanvas& Canvas, const QPoint* Points, int Count, int Skip, TVxPointSymbol Symbol, int R);

private:
    struct TSpritePixel {
        int DX;
        int DY;
        QRgb Value;
    };
    // Fills a fresh layer from the last symbol to the first.
    void Build(const QPoint* Points, int Count, int Skip);
    // Stamps symbols From..Count-1 over the layer, in order.
    void Extend(const QPoint* Points, int From, int Count, int Skip);
    // Copies the pattern centred on layer pixel (CX, CY) into Bits (the layer's pixels);
    // with OnlyEmpty, pixels already painted are kept.
    void Stamp(QRgb* Bits, int CX, int CY, bool OnlyEmpty);
    // Works out FOffsets and FUniform for the current layer and pattern.
    void PrepareOffsets();

    bool FValid = false;
    TKey FKey;
    quint64 FGeneration = 0;
    int FCount = 0;
    int FReach = 0;
    std::vector<TSpritePixel> FPattern;
    // The pattern's pixels as offsets into the layer's rows, for symbols wholly inside.
    std::vector<qsizetype> FOffsets;
    // Every pattern pixel has one value (a hollow or single-colour symbol): then the order
    // of the symbols cannot change the picture, and pixels are written without looking.
    bool FUniform = false;
    QImage FLayer;
};

} // namespace vx
