#pragma once
// Line, area and point styles that every drawn element carries, the point symbols, and
// the drawing routines for lines, frames, symbols, arrows and 3D bars.

#include "vx/platform/VxGraphics.h"

#include <QPoint>
#include <QPointer>
#include <vector>

namespace vx {

class TCanvas;

// Implemented by components whose drawing must be recalculated when one of their
// styles changes (series and graphs): a style calls Modified on its owner.
class IVxModifiable {
public:
    virtual ~IVxModifiable() = default;
    virtual void Modified() = 0;
};

// The point symbols (ordinals are stored in settings files).
enum TVxPointSymbol : int {
    SyPoint, SyCross, SyX, SyStar, Sy5Star, Sy5StarFilled, SyCircle, SyCircleFilled,
    SySquare, SySquareFilled, SyDiamond, SyDiamondFilled, SyDelta, SyDeltaFilled,
    SyNabla, SyNablaFilled
};
constexpr int VxPointSymbolCount = 16;

// Shared part of the styles: the owner, told about every change. The owner is told
// through IVxModifiable::Modified when it implements it, else a QWidget owner is
// repainted (update()); any other owner, or none, is not told.
class TVxStyle {
public:
    explicit TVxStyle(QObject* Owner) : FOwner(Owner) {}
    virtual ~TVxStyle() = default;
    TVxStyle(const TVxStyle&) = delete;
    TVxStyle& operator=(const TVxStyle&) = delete;

    QObject* Owner() const { return FOwner; }

protected:
    void NotifyOwner() const;
    // Stores Value in Field and notifies the owner when it differs.
    template <class T>
    void Store(T& Field, const T& Value)
    {
        if (Field == Value)
            return;
        Field = Value;
        NotifyOwner();
    }

private:
    QPointer<QObject> FOwner;
};

// Pen of a line: visibility, colour, pen style, width (negative widths become 0).
class TVxLineStyle : public TVxStyle {
public:
    explicit TVxLineStyle(QObject* Owner = nullptr);

    bool Visible() const { return FVisible; }
    void SetVisible(bool Value) { Store(FVisible, Value); }
    TColor Color() const { return FColor; }
    void SetColor(TColor Value) { Store(FColor, Value); }
    TPenStyle Style() const { return FStyle; }
    void SetStyle(TPenStyle Value) { Store(FStyle, Value); }
    int Width() const { return FWidth; }
    void SetWidth(int Value) { Store(FWidth, Value < 0 ? 0 : Value); }

    // Copies every value; notifies the owner once if anything changed.
    void Assign(const TVxLineStyle& Source);
    bool SameAs(const TVxLineStyle& o) const;
    // Sets the pen's colour, style and width from this style (mode untouched).
    void ApplyTo(TPen& Pen) const;

private:
    bool FVisible = true;
    TColor FColor = clRed;
    TPenStyle FStyle = psSolid;
    int FWidth = 1;
};

// Brush of an area: visibility, xor drawing, colour, brush style.
class TVxAreaStyle : public TVxStyle {
public:
    explicit TVxAreaStyle(QObject* Owner = nullptr);

    bool Visible() const { return FVisible; }
    void SetVisible(bool Value) { Store(FVisible, Value); }
    // Areas are drawn in xor mode (drawing twice restores the background).
    bool DrawXOred() const { return FDrawXOred; }
    void SetDrawXOred(bool Value) { Store(FDrawXOred, Value); }
    TColor Color() const { return FColor; }
    void SetColor(TColor Value) { Store(FColor, Value); }
    TBrushStyle Style() const { return FStyle; }
    void SetStyle(TBrushStyle Value) { Store(FStyle, Value); }

    void Assign(const TVxAreaStyle& Source);
    bool SameAs(const TVxAreaStyle& o) const;
    // Sets the brush's colour and style from this style.
    void ApplyTo(TBrush& Brush) const;

private:
    bool FVisible = true;
    bool FDrawXOred = true;
    TColor FColor = 0x808080;
    TBrushStyle FStyle = bsSolid;
};

// Point symbols: visibility, colour, symbol, half-size Size (negative sizes become 5)
// and pen Width (negative widths become 0).
class TVxPointStyle : public TVxStyle {
public:
    explicit TVxPointStyle(QObject* Owner = nullptr);

    bool Visible() const { return FVisible; }
    void SetVisible(bool Value) { Store(FVisible, Value); }
    TColor Color() const { return FColor; }
    void SetColor(TColor Value) { Store(FColor, Value); }
    TVxPointSymbol Style() const { return FStyle; }
    void SetStyle(TVxPointSymbol Value) { Store(FStyle, Value); }
    int Size() const { return FSize; }
    void SetSize(int Value) { Store(FSize, Value < 0 ? 5 : Value); }
    int Width() const { return FWidth; }
    void SetWidth(int Value) { Store(FWidth, Value < 0 ? 0 : Value); }

    void Assign(const TVxPointStyle& Source);
    bool SameAs(const TVxPointStyle& o) const;

private:
    bool FVisible = true;
    TColor FColor = clBlue;
    TVxPointSymbol FStyle = SyCircle;
    int FSize = 5;
    int FWidth = 1;
};

// Line from (X1, Y1) to (X2, Y2) with the canvas pen; a pen of width 1 is first made
// the cosmetic pen (width 0).
void DrawLine(int X1, int Y1, int X2, int Y2, TCanvas& Canvas);
// Closed frame through (X1, Y1), (X1, Y2), (X2, Y2), (X2, Y1); pen rule as DrawLine.
void DrawFrame(int X1, int Y1, int X2, int Y2, TCanvas& Canvas);
// Symbol centred on pixel (X, Y) with half-size R in the canvas pen; hollow symbols are
// filled with the canvas brush colour, filled ones with the pen colour (the brush
// colour is changed). Sets brush style bsSolid and pen style psSolid first. Symbols
// outside 0..15 draw nothing.
void DrawPointSymbol(int X, int Y, int R, TVxPointSymbol Symbol, TCanvas& Canvas);
// How far from its centre a symbol of half-size R drawn with a pen of PenWidth can paint
// (the star's tip reaches 8 % beyond R; wide pens add half their width on each side).
qint64 PointSymbolReach(int R, int PenWidth);
// Arrow from the tail (X1, Y1) to the tip (X2, Y2) in the canvas pen: the shaft, and a
// head filled with the pen colour: a triangle with its apex on the tip, TipLength pixels
// long along the shaft and 2 * TipWidth + 1 pixels wide across it. A head longer than
// the shaft is shortened to the shaft's length; a zero-length arrow draws nothing;
// TipLength or TipWidth <= 0 draws the shaft only. The brush is left as found.
void DrawArrow(int X1, int Y1, int X2, int Y2, int TipLength, int TipWidth, TCanvas& Canvas);
// Block bar: the front face Left..Right x Top..Bottom (right/bottom exclusive, either
// order accepted) in FrontColor, a top face in TopColor and a right side face in
// SideColor, both reaching DX pixels to the right and DY pixels up (depth); all faces
// outlined with the canvas pen. DX = DY = 0 draws the front face only. The brush
// colour is changed, its style set to bsSolid.
void Draw3DBar(int Left, int Top, int Right, int Bottom, int DX, int DY,
               TColor FrontColor, TColor TopColor, TColor SideColor, TCanvas& Canvas);

// Largest number of points handed to the canvas in one Polyline call.
constexpr int CVxPolylinePiece = 2000;
// Draws the connected line through Count points in pieces of at most CVxPolylinePiece
// points (consecutive pieces share their joint point, so the line is unbroken), with
// repeated consecutive points dropped. Allocates nothing itself (the canvas reuses
// one buffer).
void DrawPolyline(const QPoint* Points, int Count, TCanvas& Canvas);
inline void DrawPolyline(const std::vector<QPoint>& Points, TCanvas& Canvas)
{
    DrawPolyline(Points.data(), static_cast<int>(Points.size()), Canvas);
}

} // namespace vx
