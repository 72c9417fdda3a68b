#include "vx/graph/VxDraw.h"

#include "vx/platform/VxCanvas.h"

#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>

namespace vx {

namespace {

// Half-sizes and head sizes are limited to this many pixels, so that the geometry
// stays far from integer overflow whatever a style holds.
constexpr int MaxFeature = 1 << 20;

int LimitFeature(int v)
{
    return std::clamp(v, -MaxFeature, MaxFeature);
}

// R * k / 100, truncated toward zero (the symbols' proportions).
constexpr int Pct(int r, int k)
{
    return r * k / 100;
}

// DrawLine's and DrawFrame's pen rule: width 1 becomes the cosmetic pen.
void UseCosmeticPen(TCanvas& canvas)
{
    if (canvas.Pen().Width() == 1)
        canvas.Pen().SetWidth(0);
}

template <std::size_t N>
void DrawPolygon(const std::array<QPoint, N>& points, TCanvas& canvas)
{
    canvas.Polygon(points.data(), static_cast<int>(N));
}

void DrawSpokes(int x, int y, const std::array<QPoint, 4>& ends, TCanvas& canvas)
{
    for (const QPoint& e : ends) {
        canvas.MoveTo(x, y);
        canvas.LineTo(e.x(), e.y());
    }
}

void DrawCrossSpokes(int x, int y, int r, TCanvas& canvas)
{
    DrawSpokes(x, y, {QPoint(x + r, y), QPoint(x - r, y), QPoint(x, y + r), QPoint(x, y - r)}, canvas);
}

void DrawXSpokes(int x, int y, int r, TCanvas& canvas)
{
    DrawSpokes(x, y, {QPoint(x + r, y + r), QPoint(x + r, y - r), QPoint(x - r, y + r), QPoint(x - r, y - r)}, canvas);
}

bool IsFilledSymbol(TVxPointSymbol s)
{
    switch (s) {
    case Sy5StarFilled:
    case SyCircleFilled:
    case SySquareFilled:
    case SyDiamondFilled:
    case SyDeltaFilled:
    case SyNablaFilled:
        return true;
    default:
        return false;
    }
}

} // namespace

// ---------------------------------------------------------------------------------
// Styles

void TVxStyle::NotifyOwner() const
{
    QObject* owner = FOwner.data();
    if (!owner)
        return;
    if (auto* modifiable = dynamic_cast<IVxModifiable*>(owner))
        modifiable->Modified();
    else if (auto* widget = qobject_cast<QWidget*>(owner))
        widget->update();
}

TVxLineStyle::TVxLineStyle(QObject* Owner)
    : TVxStyle(Owner)
{
}

bool TVxLineStyle::SameAs(const TVxLineStyle& o) const
{
    return FVisible == o.FVisible && FColor == o.FColor && FStyle == o.FStyle && FWidth == o.FWidth;
}

void TVxLineStyle::Assign(const TVxLineStyle& Source)
{
    if (SameAs(Source))
        return;
    FVisible = Source.FVisible;
    FColor = Source.FColor;
    FStyle = Source.FStyle;
    FWidth = Source.FWidth;
    NotifyOwner();
}

void TVxLineStyle::ApplyTo(TPen& Pen) const
{
    Pen.SetColor(FColor);
    Pen.SetStyle(FStyle);
    Pen.SetWidth(FWidth);
}

TVxAreaStyle::TVxAreaStyle(QObject* Owner)
    : TVxStyle(Owner)
{
}

bool TVxAreaStyle::SameAs(const TVxAreaStyle& o) const
{
    return FVisible == o.FVisible && FDrawXOred == o.FDrawXOred && FColor == o.FColor && FStyle == o.FStyle;
}

void TVxAreaStyle::Assign(const TVxAreaStyle& Source)
{
    if (SameAs(Source))
        return;
    FVisible = Source.FVisible;
    FDrawXOred = Source.FDrawXOred;
    FColor = Source.FColor;
    FStyle = Source.FStyle;
    NotifyOwner();
}

void TVxAreaStyle::ApplyTo(TBrush& Brush) const
{
    Brush.SetColor(FColor);
    Brush.SetStyle(FStyle);
}

TVxPointStyle::TVxPointStyle(QObject* Owner)
    : TVxStyle(Owner)
{
}

bool TVxPointStyle::SameAs(const TVxPointStyle& o) const
{
    return FVisible == o.FVisible && FColor == o.FColor && FStyle == o.FStyle && FSize == o.FSize
        && FWidth == o.FWidth;
}

void TVxPointStyle::Assign(const TVxPointStyle& Source)
{
    if (SameAs(Source))
        return;
    FVisible = Source.FVisible;
    FColor = Source.FColor;
    FStyle = Source.FStyle;
    FSize = Source.FSize;
    FWidth = Source.FWidth;
    NotifyOwner();
}

// ---------------------------------------------------------------------------------
// Drawing routines

void DrawLine(int X1, int Y1, int X2, int Y2, TCanvas& Canvas)
{
    UseCosmeticPen(Canvas);
    Canvas.MoveTo(X1, Y1);
    Canvas.LineTo(X2, Y2);
}

void DrawFrame(int X1, int Y1, int X2, int Y2, TCanvas& Canvas)
{
    UseCosmeticPen(Canvas);
    const std::array<QPoint, 5> frame{QPoint(X1, Y1), QPoint(X1, Y2), QPoint(X2, Y2), QPoint(X2, Y1), QPoint(X1, Y1)};
    Canvas.Polyline(frame.data(), static_cast<int>(frame.size()));
}

void DrawPointSymbol(int X, int Y, int R, TVxPointSymbol Symbol, TCanvas& Canvas)
{
    if (Symbol < SyPoint || Symbol > SyNablaFilled)
        return;
    R = LimitFeature(R);
    Canvas.Brush().SetStyle(bsSolid);
    Canvas.Pen().SetStyle(psSolid);
    if (IsFilledSymbol(Symbol))
        Canvas.Brush().SetColor(Canvas.Pen().Color());

    switch (Symbol) {
    case SyPoint:
        Canvas.MoveTo(X, Y);
        Canvas.LineTo(X, Y + 1);
        break;
    case SyCross:
        DrawCrossSpokes(X, Y, R, Canvas);
        break;
    case SyX:
        DrawXSpokes(X, Y, R, Canvas);
        break;
    case SyStar:
        DrawCrossSpokes(X, Y, R, Canvas);
        DrawXSpokes(X, Y, R, Canvas);
        break;
    case Sy5Star:
    case Sy5StarFilled:
        DrawPolygon(std::array<QPoint, 10>{
                        QPoint(X, Y - Pct(R, 108)), QPoint(X + Pct(R, 27), Y - Pct(R, 30)),
                        QPoint(X + R, Y - Pct(R, 30)), QPoint(X + Pct(R, 40), Y + Pct(R, 12)),
                        QPoint(X + Pct(R, 64), Y + Pct(R, 82)), QPoint(X, Y + Pct(R, 40)),
                        QPoint(X - Pct(R, 64), Y + Pct(R, 82)), QPoint(X - Pct(R, 40), Y + Pct(R, 12)),
                        QPoint(X - R, Y - Pct(R, 30)), QPoint(X - Pct(R, 27), Y - Pct(R, 30))},
                    Canvas);
        break;
    case SyCircle:
    case SyCircleFilled:
        Canvas.Ellipse(X - R, Y - R, X + R + 1, Y + R + 1);
        break;
    case SySquare:
    case SySquareFilled:
        Canvas.Rectangle(X - R, Y - R, X + R + 1, Y + R + 1);
        break;
    case SyDiamond:
    case SyDiamondFilled:
        DrawPolygon(std::array<QPoint, 4>{QPoint(X, Y - R), QPoint(X + R, Y), QPoint(X, Y + R), QPoint(X - R, Y)}, Canvas);
        break;
    case SyDelta:
    case SyDeltaFilled:
        DrawPolygon(std::array<QPoint, 3>{QPoint(X, Y - R), QPoint(X + R, Y + R), QPoint(X - R, Y + R)}, Canvas);
        break;
    case SyNabla:
    case SyNablaFilled:
        DrawPolygon(std::array<QPoint, 3>{QPoint(X - R, Y - R), QPoint(X + R, Y - R), QPoint(X, Y + R)}, Canvas);
        break;
    }
}

qint64 PointSymbolReach(int R, int PenWidth)
{
    return (qint64(R) * 108) / 100 + PenWidth + 2;
}

void DrawArrow(int X1, int Y1, int X2, int Y2, int TipLength, int TipWidth, TCanvas& Canvas)
{
    const double dx = X2 - X1;
    const double dy = Y2 - Y1;
    const double length = std::hypot(dx, dy);
    if (length == 0.0)
        return;
    TipLength = LimitFeature(TipLength);
    TipWidth = LimitFeature(TipWidth);
    if (TipLength <= 0 || TipWidth <= 0) {
        Canvas.MoveTo(X1, Y1);
        Canvas.LineTo(X2, Y2);
        return;
    }
    // Head: apex on the tip, base centre h pixels back along the shaft, corners
    // TipWidth pixels to either side.
    const double h = std::min<double>(TipLength, length);
    const double ux = dx / length;
    const double uy = dy / length;
    const double bx = X2 - ux * h;
    const double by = Y2 - uy * h;
    const QPoint base(static_cast<int>(std::lround(bx)), static_cast<int>(std::lround(by)));
    const std::array<QPoint, 3> head{
        QPoint(X2, Y2),
        QPoint(static_cast<int>(std::lround(bx - uy * TipWidth)), static_cast<int>(std::lround(by + ux * TipWidth))),
        QPoint(static_cast<int>(std::lround(bx + uy * TipWidth)), static_cast<int>(std::lround(by - ux * TipWidth)))};

    // The shaft ends at the head's base, so a wide pen does not poke through the tip.
    Canvas.MoveTo(X1, Y1);
    Canvas.LineTo(base.x(), base.y());

    const TBrush savedBrush = Canvas.Brush();
    const TPenStyle savedStyle = Canvas.Pen().Style();
    Canvas.Brush().SetColor(Canvas.Pen().Color());
    Canvas.Brush().SetStyle(bsSolid);
    if (savedStyle != psClear)
        Canvas.Pen().SetStyle(psSolid);
    DrawPolygon(head, Canvas);
    Canvas.SetBrush(savedBrush);
    Canvas.Pen().SetStyle(savedStyle);
}

void Draw3DBar(int Left, int Top, int Right, int Bottom, int DX, int DY,
               TColor FrontColor, TColor TopColor, TColor SideColor, TCanvas& Canvas)
{
    if (Right < Left)
        std::swap(Left, Right);
    if (Bottom < Top)
        std::swap(Top, Bottom);
    if (Right == Left || Bottom == Top)
        return;
    Canvas.Brush().SetStyle(bsSolid);
    if (DX != 0 || DY != 0) {
        // Faces behind the front share its outline pixels: last column and top row.
        const int xr = Right - 1;
        const int yb = Bottom - 1;
        Canvas.Brush().SetColor(TopColor);
        DrawPolygon(std::array<QPoint, 4>{QPoint(Left, Top), QPoint(Left + DX, Top - DY), QPoint(xr + DX, Top - DY),
                                          QPoint(xr, Top)},
                    Canvas);
        Canvas.Brush().SetColor(SideColor);
        DrawPolygon(std::array<QPoint, 4>{QPoint(xr, Top), QPoint(xr + DX, Top - DY), QPoint(xr + DX, yb - DY),
                                          QPoint(xr, yb)},
                    Canvas);
    }
    Canvas.Brush().SetColor(FrontColor);
    Canvas.Rectangle(Left, Top, Right, Bottom);
}

void DrawPolyline(const QPoint* Points, int Count, TCanvas& Canvas)
{
    if (!Points || Count < 2)
        return;
    std::array<QPoint, CVxPolylinePiece> piece;
    int n = 0;
    for (int i = 0; i < Count; ++i) {
        if (n > 0 && Points[i] == piece[n - 1])
            continue;
        if (n == CVxPolylinePiece) {
            Canvas.Polyline(piece.data(), n);
            piece[0] = piece[n - 1];
            n = 1;
        }
        piece[n++] = Points[i];
    }
    Canvas.Polyline(piece.data(), n);
}

} // namespace vx
