#pragma once
// TCanvas: the platform's drawing surface over a QPainter, with its pixel semantics.

#include "vx/platform/VxGraphics.h"

#include <QFontMetrics>
#include <QLine>
#include <QPalette>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTransform>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QPainter;
class QPaintDevice;

namespace vx {

// A drawing surface with the platform's semantics on top of a QPainter:
// - Pen, Brush and Font are plain values applied to the painter lazily, at the next
//   primitive, and only when they changed since the last one.
// - Integer geometry is pixel exact and unantialiased: a one-pixel pen at (x, y) sets
//   exactly pixel (x, y); pen width 0 and 1 both give the one-pixel cosmetic pen.
// - LineTo leaves out the end pixel; so do the segments of Polyline and of Polygon's
//   outline (every vertex but a polyline's last is drawn exactly once) on raster
//   devices; vector devices get the connected geometry as it is. With patterned or wide
//   pens, Polyline and Polygon keep Qt's connected drawing (the pattern runs on across
//   vertices) and may differ from this at the vertices.
// - Rectangle, Ellipse and FillRect take rectangles whose right and bottom edges are
//   exclusive (Rectangle(0,0,10,10) covers pixels 0..9). A QRect argument covers
//   exactly its own pixels.
// - The window origin (SetWindowOrg) is the logical point that appears at device (0,0);
//   all drawing coordinates are logical. SelectClipRect takes device coordinates,
//   IntersectClipRect logical ones.
// - Pen mode pmXor (and the other raster modes) combine on raster devices (images,
//   pixmaps, widgets); on vector devices they draw as pmCopy. A shape's fill and
//   outline never combine twice in xor modes (drawing a shape twice restores the image).
// The canvas saves the painter's state on construction and restores it when destroyed.
class TCanvas {
public:
    // A canvas without a device: measures text (TextWidth, TextHeight), draws nothing.
    TCanvas();
    // Draws through Painter, which must be active (else the canvas only measures); the
    // canvas does not own it.
    explicit TCanvas(QPainter* Painter);
    // Opens and owns a painter on Device (ended when the canvas is destroyed).
    explicit TCanvas(QPaintDevice* Device);
    ~TCanvas();
    TCanvas(const TCanvas&) = delete;
    TCanvas& operator=(const TCanvas&) = delete;

    // The painter, with the current pen, brush, font and pen mode applied (for drawing
    // the canvas does not offer; such drawing should leave the painter's pen, brush,
    // font and composition mode as found, or call Invalidate afterwards).
    QPainter* Painter();
    // Forgets what was applied to the painter, so that everything is re-applied.
    void Invalidate();
    QPaintDevice* Device() const;
    // True for images, pixmaps and widgets: pen modes combine, pixel rules apply.
    bool IsRaster() const { return FRaster; }

    TPen& Pen() { return FPen; }
    const TPen& Pen() const { return FPen; }
    TBrush& Brush() { return FBrush; }
    const TBrush& Brush() const { return FBrush; }
    TFont& Font() { return FFont; }
    const TFont& Font() const { return FFont; }
    void SetPen(const TPen& Value) { FPen = Value; }
    void SetBrush(const TBrush& Value) { FBrush = Value; }
    void SetFont(const TFont& Value) { FFont.Assign(Value); }

    // Palette that resolves system colours (default: the device widget's palette, or
    // the application palette).
    const QPalette& Palette() const { return FPalette; }
    void SetPalette(const QPalette& Value);

    // The current position used by LineTo.
    QPoint PenPos() const { return FPenPos; }
    void SetPenPos(const QPoint& Value) { FPenPos = Value; }
    void MoveTo(int X, int Y) { FPenPos = QPoint(X, Y); }
    // Line from PenPos to (X, Y), end pixel excluded; PenPos := (X, Y).
    void LineTo(int X, int Y);
    // Connected lines through Points, the last point's pixel left out. PenPos is not
    // changed.
    void Polyline(const QPoint* Points, int Count);
    void Polyline(const std::vector<QPoint>& Points);
    // Closed polygon filled with the brush and outlined with the pen.
    void Polygon(const QPoint* Points, int Count);
    void Polygon(const std::vector<QPoint>& Points);
    // Rectangle from (X1, Y1) to (X2, Y2), right/bottom exclusive, filled with the brush
    // and outlined with the pen (inside the rectangle for one-pixel pens).
    void Rectangle(int X1, int Y1, int X2, int Y2);
    void Rectangle(const QRect& Rect);
    // Ellipse inscribed in the rectangle (X1, Y1)-(X2, Y2), right/bottom exclusive.
    void Ellipse(int X1, int Y1, int X2, int Y2);
    void Ellipse(const QRect& Rect);
    // Fills the rectangle with the brush only (nothing for bsClear).
    void FillRect(const QRect& Rect);
    void FillRect(int X1, int Y1, int X2, int Y2);
    // Dotted focus frame, inverted on raster devices (drawing it twice removes it).
    void DrawFocusRect(const QRect& Rect);

    // Writes Text with its top-left corner at (X, Y) in the font colour, rotated by the
    // font's Orientation around (X, Y). Unless the brush is bsClear, the text box is
    // first filled with the brush colour. PenPos := (X + TextWidth, Y).
    void TextOut(int X, int Y, const QString& Text);
    // As TextOut, rotated by Angle (tenths of a degree, counter-clockwise) instead of
    // the font's Orientation.
    void TextOutAngle(int X, int Y, int Angle, const QString& Text);
    // Unrotated advance width and cell height (ascent + descent) of Text in the font.
    int TextWidth(const QString& Text);
    int TextHeight(const QString& Text);
    QSize TextExtent(const QString& Text);
    // Metrics of the current font on this device.
    const QFontMetrics& FontMetrics();

    // The colour of the pixel at logical (X, Y); clNone outside the device, for
    // non-raster devices, and for pixmaps/widgets that cannot be read back.
    TColor Pixel(int X, int Y) const;
    // Sets one pixel (logical coordinates) to Color, ignoring pen mode.
    void SetPixel(int X, int Y, TColor Color);

    // Clipping. ClipRect is the current clip in logical coordinates (the whole device
    // when there is no clip).
    QRect ClipRect() const;
    bool HasClip() const { return FClip.has_value(); }
    // Replaces the clip by Rect given in device coordinates (origin not applied).
    void SelectClipRect(const QRect& DeviceRect);
    // Intersects the clip with Rect given in logical coordinates.
    void IntersectClipRect(const QRect& Rect);
    // Removes any clipping.
    void ClearClip();

    // Window origin: logical point shown at device (0, 0).
    QPoint WindowOrg() const { return FWindowOrg; }
    void SetWindowOrg(int X, int Y);
    void SetWindowOrg(const QPoint& Value) { SetWindowOrg(Value.x(), Value.y()); }

private:
    void Init();
    void ApplyPen();
    void ApplyBrush();
    void ApplyFont();
    void ApplyMode(TPenMode Mode);
    void ApplyClip();
    bool ModeDrawsNothing(TPenMode Mode) const;
    bool SegmentsExact() const;
    bool HasPen() const;
    bool HasBrush() const;
    bool LayerNeeded() const;
    void DrawCombinedLayer(QRect Bounds, const std::function<void(TCanvas&)>& Draw);
    void StrokeSegment(const QPoint& A, const QPoint& B);
    void StrokeSegments(const QPoint* Points, int Count, bool Closed);
    void AddRun(bool XMajor, int Minor, int Low, int High);
    void FlushLines();
    QRect VisibleRect();
    void ShapeOutline(bool Ellipse, int X1, int Y1, int X2, int Y2);
    void DrawText(int X, int Y, int Angle, const QString& Text);

    std::unique_ptr<QPainter> FOwnedPainter;
    QPainter* FPainter = nullptr;
    bool FRaster = false;
    QTransform FBaseTransform;
    QPalette FPalette;

    TPen FPen;
    TBrush FBrush;
    TFont FFont;
    QPoint FPenPos;
    QPoint FWindowOrg;
    std::optional<QRect> FClip; // device coordinates

    // What the painter currently holds.
    TPen FAppliedPen;
    bool FPenApplied = false;
    TBrush FAppliedBrush;
    bool FBrushApplied = false;
    TFont FAppliedFont;
    bool FFontApplied = false;
    std::optional<QFontMetrics> FMetrics;
    int FAppliedModeOp = -1;
    std::vector<QLine> FLines; // reused buffer of one-pixel lines
    QRect FVisible;            // logical area that can receive pixels
    bool FVisibleValid = false;
};

} // namespace vx
