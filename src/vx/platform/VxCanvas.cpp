#include "vx/platform/VxCanvas.h"

#include <QGuiApplication>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vx {

namespace {

// Composition mode for a pen mode on a raster device (pmNop is handled by the caller).
QPainter::CompositionMode RasterMode(TPenMode mode)
{
    switch (mode) {
    case pmBlack: return QPainter::RasterOp_ClearDestination;
    case pmWhite: return QPainter::RasterOp_SetDestination;
    case pmNot: return QPainter::RasterOp_NotDestination;
    case pmNotCopy: return QPainter::RasterOp_NotSource;
    case pmMergePenNot: return QPainter::RasterOp_SourceOrNotDestination;
    case pmMaskPenNot: return QPainter::RasterOp_SourceAndNotDestination;
    case pmMergeNotPen: return QPainter::RasterOp_NotSourceOrDestination;
    case pmMaskNotPen: return QPainter::RasterOp_NotSourceAndDestination;
    case pmMerge: return QPainter::RasterOp_SourceOrDestination;
    case pmNotMerge: return QPainter::RasterOp_NotSourceAndNotDestination;
    case pmMask: return QPainter::RasterOp_SourceAndDestination;
    case pmNotMask: return QPainter::RasterOp_NotSourceOrNotDestination;
    case pmXor: return QPainter::RasterOp_SourceXorDestination;
    case pmNotXor: return QPainter::RasterOp_NotSourceXorDestination;
    case pmNop:
    case pmCopy: break;
    }
    return QPainter::CompositionMode_SourceOver;
}

// Dash patterns of the one-pixel pen, in pixels (on, off, ...), as the platform draws them.
QVector<qreal> CosmeticDashes(TPenStyle style)
{
    switch (style) {
    case psDash: return {18, 6};
    case psDot: return {3, 3};
    case psDashDot: return {9, 6, 3, 6};
    case psDashDotDot: return {9, 3, 3, 3, 3, 3};
    case psAlternate: return {1, 1};
    default: return {};
    }
}

// Rectangle from platform edges (right/bottom exclusive) to the QRect of the pixels
// a one-pixel outline passes through.
QRect OutlineRect(int x1, int y1, int x2, int y2)
{
    return QRect(QPoint(x1, y1), QPoint(x2 - 1, y2 - 1));
}

// Segments reaching beyond this magnitude are clipped first: it keeps the integer
// arithmetic below and Qt's 26.6 fixed-point rasterizer exact.
constexpr int SafeCoordinate = 1 << 20;

bool IsSafe(const QPoint& p)
{
    return p.x() >= -SafeCoordinate && p.x() <= SafeCoordinate && p.y() >= -SafeCoordinate
        && p.y() <= SafeCoordinate;
}

// Clips segment a-b to the square of SafeCoordinate (Liang-Barsky, in doubles); false if
// nothing of it is left. The direction is kept to within a nano-radian.
bool ClipToSafe(QPoint& a, QPoint& b)
{
    const double x0 = a.x(), y0 = a.y();
    const double dx = double(b.x()) - x0, dy = double(b.y()) - y0;
    double t0 = 0.0, t1 = 1.0;
    const double lim = SafeCoordinate;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0 + lim, lim - x0, y0 + lim, lim - y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0)
                return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0.0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return false;
    }
    const QPoint na(static_cast<int>(std::lround(x0 + t0 * dx)), static_cast<int>(std::lround(y0 + t0 * dy)));
    const QPoint nb(static_cast<int>(std::lround(x0 + t1 * dx)), static_cast<int>(std::lround(y0 + t1 * dy)));
    a = na;
    b = nb;
    return true;
}

} // namespace

TCanvas::TCanvas()
{
    Init();
}

TCanvas::TCanvas(QPainter* Painter)
    : FPainter(Painter)
{
    Init();
}

TCanvas::TCanvas(QPaintDevice* Device)
    : FOwnedPainter(std::make_unique<QPainter>(Device))
    , FPainter(FOwnedPainter.get())
{
    Init();
}

TCanvas::~TCanvas()
{
    if (FPainter && FPainter->isActive())
        FPainter->restore();
    if (FOwnedPainter && FOwnedPainter->isActive())
        FOwnedPainter->end();
}

void TCanvas::Init()
{
    if (!FPainter || !FPainter->isActive()) {
        FPainter = nullptr;
        return;
    }
    FPainter->save();
    FPainter->setRenderHint(QPainter::Antialiasing, false);
    FPainter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    FPainter->setBackgroundMode(Qt::TransparentMode);
    FBaseTransform = FPainter->worldTransform();
    const QPaintEngine* engine = FPainter->paintEngine();
    FRaster = engine && engine->type() == QPaintEngine::Raster;
    QPaintDevice* device = FPainter->device();
    if (device && device->devType() == QInternal::Widget)
        FPalette = static_cast<QWidget*>(device)->palette();
    else if (QGuiApplication::instance())
        FPalette = QGuiApplication::palette();
}

QPainter* TCanvas::Painter()
{
    FVisibleValid = false; // the caller may change the transform
    if (FPainter) {
        ApplyPen();
        ApplyBrush();
        ApplyFont();
        ApplyMode(FPen.Mode());
    }
    return FPainter;
}

void TCanvas::Invalidate()
{
    FPenApplied = false;
    FBrushApplied = false;
    FFontApplied = false;
    FAppliedModeOp = -1;
    FVisibleValid = false;
}

QPaintDevice* TCanvas::Device() const
{
    return FPainter ? FPainter->device() : nullptr;
}

void TCanvas::SetPalette(const QPalette& Value)
{
    FPalette = Value;
    Invalidate();
}

// ---------------------------------------------------------------------------------
// Lazy state

void TCanvas::ApplyPen()
{
    if (FPenApplied && FAppliedPen == FPen)
        return;
    const TPenStyle style = FPen.Style();
    if (style == psClear || FPen.Color() == clNone) {
        FPainter->setPen(Qt::NoPen);
    } else {
        const int width = FPen.Width();
        QPen pen(ToQColor(FPen.Color(), &FPalette));
        if (width <= 1) {
            // Cosmetic pen: flat caps leave out a line's end pixel, as the platform does.
            pen.setWidth(0);
            pen.setCapStyle(Qt::FlatCap);
            pen.setJoinStyle(Qt::MiterJoin);
            const QVector<qreal> dashes = CosmeticDashes(style);
            if (!dashes.isEmpty())
                pen.setDashPattern(dashes);
        } else {
            pen.setWidth(width);
            pen.setStyle(ToQtPenStyle(style));
            pen.setCapStyle(Qt::RoundCap);
            pen.setJoinStyle(Qt::RoundJoin);
        }
        FPainter->setPen(pen);
    }
    FAppliedPen = FPen;
    FPenApplied = true;
}

void TCanvas::ApplyBrush()
{
    if (FBrushApplied && FAppliedBrush == FBrush)
        return;
    if (FBrush.Style() == bsClear || FBrush.Color() == clNone)
        FPainter->setBrush(Qt::NoBrush);
    else
        FPainter->setBrush(QBrush(ToQColor(FBrush.Color(), &FPalette), ToQtBrushStyle(FBrush.Style())));
    FAppliedBrush = FBrush;
    FBrushApplied = true;
}

void TCanvas::ApplyFont()
{
    if (FFontApplied && FAppliedFont == FFont)
        return;
    const QFont font = FFont.ToQFont();
    FPainter->setFont(font);
    FMetrics.emplace(font, FPainter->device());
    FAppliedFont = FFont;
    FFontApplied = true;
}

void TCanvas::ApplyMode(TPenMode Mode)
{
    const int op = FRaster ? static_cast<int>(RasterMode(Mode)) : static_cast<int>(QPainter::CompositionMode_SourceOver);
    if (op == FAppliedModeOp)
        return;
    FPainter->setCompositionMode(static_cast<QPainter::CompositionMode>(op));
    FAppliedModeOp = op;
}

bool TCanvas::ModeDrawsNothing(TPenMode Mode) const
{
    return !FPainter || Mode == pmNop;
}

// ---------------------------------------------------------------------------------
// Lines and shapes

void TCanvas::LineTo(int X, int Y)
{
    const QPoint from = FPenPos;
    FPenPos = QPoint(X, Y);
    if (from == FPenPos || ModeDrawsNothing(FPen.Mode()))
        return;
    ApplyPen();
    ApplyMode(FPen.Mode());
    if (SegmentsExact()) {
        FLines.clear();
        StrokeSegment(from, FPenPos);
        FlushLines();
    } else {
        FPainter->drawLine(from, FPenPos);
    }
}

bool TCanvas::SegmentsExact() const
{
    // Pixel rules only matter on raster devices; vector devices (pictures, SVG, PDF) keep
    // true slanted, connected lines. Exact ends need each segment drawn alone, which
    // would restart dash patterns at every vertex: patterned and wide pens keep Qt's
    // connected drawing.
    return FRaster && FPen.Width() <= 1 && (FPen.Style() == psSolid || FPen.Style() == psInsideFrame);
}

void TCanvas::AddRun(bool XMajor, int Minor, int Low, int High)
{
    // An ascending axis-parallel line: Qt covers exactly Low..High.
    FLines.push_back(XMajor ? QLine(Low, Minor, High + 1, Minor) : QLine(Minor, Low, Minor, High + 1));
}

void TCanvas::FlushLines()
{
    if (!FLines.empty())
        FPainter->drawLines(FLines.data(), static_cast<int>(FLines.size()));
    FLines.clear();
}

void TCanvas::StrokeSegment(const QPoint& A, const QPoint& B)
{
    // Adds the lines for one segment to FLines. Qt's one-pixel lines cover the half-open
    // span [low, high) of their major axis whatever their direction; the platform's
    // cover [start, end). Segments that run towards higher coordinates agree.
    // Axis-parallel and diagonal ones running back are moved one step back along
    // themselves. Other slopes running back become axis-parallel runs of the rasterized
    // segment (moving them by a fractional step would misplace their start pixel).
    if (!IsSafe(A) || !IsSafe(B)) {
        QPoint a = A, b = B;
        if (ClipToSafe(a, b) && a != b)
            StrokeSegment(a, b);
        return;
    }
    const int dx = B.x() - A.x();
    const int dy = B.y() - A.y();
    const bool xMajor = std::abs(dx) >= std::abs(dy);
    const int major = xMajor ? dx : dy;
    const int minor = xMajor ? dy : dx;
    if (major >= 0) {
        FLines.emplace_back(A, B);
        return;
    }
    const int n = -major;
    if (minor == 0 || std::abs(minor) == n) {
        const QPoint back(-dx / n, -dy / n);
        FLines.emplace_back(B + back, A + back); // ascending, as every line handed over
        return;
    }
    // Only the steps inside the visible area are walked (far-off points cost nothing).
    const int startMajor = xMajor ? A.x() : A.y();
    const int startMinor = xMajor ? A.y() : A.x();
    const QRect visible = VisibleRect();
    const int visibleLow = xMajor ? visible.left() : visible.top();
    const int visibleHigh = xMajor ? visible.right() : visible.bottom();
    const int kFirst = std::max(0, startMajor - visibleHigh);
    const int kLast = std::min(n - 1, startMajor - visibleLow);
    if (kFirst > kLast)
        return;
    auto minorAt = [&](int k) {
        // Rounded half away from zero.
        const long long num = 2LL * k * minor;
        return startMinor + static_cast<int>((num + (num >= 0 ? n : -n)) / (2LL * n));
    };
    int runMinor = minorAt(kFirst);
    int runHigh = startMajor - kFirst;
    for (int k = kFirst + 1; k <= kLast; ++k) {
        const int m = minorAt(k);
        if (m != runMinor) {
            AddRun(xMajor, runMinor, startMajor - k + 1, runHigh);
            runMinor = m;
            runHigh = startMajor - k;
        }
    }
    AddRun(xMajor, runMinor, startMajor - kLast, runHigh);
}

QRect TCanvas::VisibleRect()
{
    if (!FVisibleValid) {
        QRect device(0, 0, FPainter->device()->width(), FPainter->device()->height());
        if (FClip)
            device &= *FClip;
        bool invertible = false;
        const QTransform toLogical = FPainter->worldTransform().inverted(&invertible);
        FVisible = invertible ? toLogical.mapRect(device).adjusted(-1, -1, 1, 1) : QRect();
        FVisibleValid = true;
    }
    return FVisible;
}

void TCanvas::StrokeSegments(const QPoint* Points, int Count, bool Closed)
{
    // All segments go to Qt as ascending integer lines in one call; such lines do not
    // interact at their joints (fractional ones would).
    FLines.clear();
    for (int i = 0; i + 1 < Count; ++i)
        if (Points[i] != Points[i + 1])
            StrokeSegment(Points[i], Points[i + 1]);
    if (Closed && Points[Count - 1] != Points[0])
        StrokeSegment(Points[Count - 1], Points[0]);
    FlushLines();
}

void TCanvas::Polyline(const QPoint* Points, int Count)
{
    if (!Points || Count < 2 || ModeDrawsNothing(FPen.Mode()))
        return;
    ApplyPen();
    ApplyMode(FPen.Mode());
    if (SegmentsExact())
        StrokeSegments(Points, Count, false);
    else
        FPainter->drawPolyline(Points, Count);
}

void TCanvas::Polyline(const std::vector<QPoint>& Points)
{
    Polyline(Points.data(), static_cast<int>(Points.size()));
}

void TCanvas::Polygon(const QPoint* Points, int Count)
{
    if (!Points || Count < 2 || ModeDrawsNothing(FPen.Mode()))
        return;
    ApplyPen();
    ApplyBrush();
    ApplyMode(FPen.Mode());
    if (LayerNeeded()) {
        QRect bounds;
        for (int i = 0; i < Count; ++i)
            bounds |= QRect(Points[i], QSize(1, 1));
        DrawCombinedLayer(bounds, [Points, Count](TCanvas& layer) { layer.Polygon(Points, Count); });
        return;
    }
    if (!HasPen() || !SegmentsExact()) {
        FPainter->drawPolygon(Points, Count);
        return;
    }
    // Fill without the pen, then the outline segment by segment, so that every vertex
    // is drawn exactly once.
    if (HasBrush()) {
        FPainter->setPen(Qt::NoPen);
        FPainter->drawPolygon(Points, Count);
        FPenApplied = false;
        ApplyPen();
    }
    StrokeSegments(Points, Count, true);
}

void TCanvas::Polygon(const std::vector<QPoint>& Points)
{
    Polygon(Points.data(), static_cast<int>(Points.size()));
}

void TCanvas::ShapeOutline(bool Ellipse, int X1, int Y1, int X2, int Y2)
{
    if (X2 < X1)
        std::swap(X1, X2);
    if (Y2 < Y1)
        std::swap(Y1, Y2);
    if (X2 == X1 || Y2 == Y1 || ModeDrawsNothing(FPen.Mode()))
        return;
    ApplyPen();
    ApplyBrush();
    ApplyMode(FPen.Mode());
    if (!HasPen()) {
        // Without an outline the fill alone covers the whole rectangle.
        const QRect box(QPoint(X1, Y1), QPoint(X2 - 1, Y2 - 1));
        if (Ellipse)
            FPainter->drawEllipse(QRectF(box));
        else
            FPainter->drawRect(QRectF(box));
        return;
    }
    if (Ellipse && LayerNeeded()) {
        DrawCombinedLayer(QRect(QPoint(X1, Y1), QPoint(X2 - 1, Y2 - 1)),
                          [=](TCanvas& layer) { layer.Ellipse(X1, Y1, X2, Y2); });
        return;
    }
    QRect r = OutlineRect(X1, Y1, X2, Y2);
    const int width = std::max(1, FPen.Width());
    if (FPen.Style() == psInsideFrame && width > 1) {
        // Keep the whole wide pen inside the rectangle.
        r.adjust(width / 2, width / 2, -(width - 1) / 2, -(width - 1) / 2);
        if (r.width() < 1 || r.height() < 1)
            r = QRect(r.topLeft(), QSize(1, 1));
    }
    // A QRect of width w strokes w+1 pixels: pass the pixel span minus one.
    const QRect stroke(r.topLeft(), QSize(r.width() - 1, r.height() - 1));
    if (Ellipse) {
        FPainter->drawEllipse(stroke);
        return;
    }
    if (SegmentsExact()) {
        // Qt's own cosmetic rectangle loses its bottom-right pixel when clipped; the
        // frame as four platform segments does not, and the fill stays inside it.
        if (HasBrush() && r.width() > 2 && r.height() > 2) {
            FPainter->setPen(Qt::NoPen);
            FPainter->drawRect(QRectF(r.adjusted(1, 1, -1, -1)));
            FPenApplied = false;
            ApplyPen();
        }
        FLines.clear();
        if (r.width() == 1 || r.height() == 1) {
            StrokeSegment(r.topLeft(), r.bottomRight() + QPoint(r.height() == 1 ? 1 : 0, r.height() == 1 ? 0 : 1));
        } else {
            const QPoint frame[4] = {r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()};
            for (int i = 0; i < 4; ++i)
                StrokeSegment(frame[i], frame[(i + 1) % 4]);
        }
        FlushLines();
        return;
    }
    if (FRaster && FPen.Mode() != pmCopy && HasBrush()) {
        // Combining modes must see each pixel once: fill only inside the pen's pixels
        // (a pen of width w covers w/2 pixels outside its line and (w-1)/2 inside).
        const QRect inner = r.adjusted((width - 1) / 2 + 1, (width - 1) / 2 + 1, -(width / 2 + 1), -(width / 2 + 1));
        FPainter->setPen(Qt::NoPen);
        if (inner.isValid())
            FPainter->drawRect(QRectF(inner));
        FPenApplied = false;
        ApplyPen();
        FPainter->setBrush(Qt::NoBrush);
        FBrushApplied = false;
    }
    FPainter->drawRect(stroke);
}

bool TCanvas::HasPen() const
{
    return FPen.Style() != psClear && FPen.Color() != clNone;
}

bool TCanvas::HasBrush() const
{
    return FBrush.Style() != bsClear && FBrush.Color() != clNone;
}

bool TCanvas::LayerNeeded() const
{
    return FRaster && (FPen.Mode() == pmXor || FPen.Mode() == pmNotXor) && HasPen() && HasBrush();
}

void TCanvas::DrawCombinedLayer(QRect Bounds, const std::function<void(TCanvas&)>& Draw)
{
    // Fill and outline overlap; in xor modes the shared pixels would cancel. The shape
    // is drawn in copy mode on the mode's neutral colour (black for xor, white for
    // not-xor), and the layer is then combined as a whole.
    const int margin = std::max(1, FPen.Width()) + 1;
    Bounds = Bounds.adjusted(-margin, -margin, margin, margin) & VisibleRect();
    if (Bounds.isEmpty())
        return;
    const TPenMode mode = FPen.Mode();
    QImage layer(Bounds.size(), QImage::Format_RGB32);
    layer.fill(mode == pmXor ? Qt::black : Qt::white);
    {
        TCanvas layerCanvas(&layer);
        layerCanvas.SetPalette(FPalette);
        layerCanvas.SetPen(FPen);
        layerCanvas.Pen().SetMode(pmCopy);
        layerCanvas.SetBrush(FBrush);
        layerCanvas.SetWindowOrg(Bounds.topLeft());
        Draw(layerCanvas);
    }
    ApplyMode(mode);
    FPainter->drawImage(Bounds.topLeft(), layer);
}

void TCanvas::Rectangle(int X1, int Y1, int X2, int Y2)
{
    ShapeOutline(false, X1, Y1, X2, Y2);
}

void TCanvas::Rectangle(const QRect& Rect)
{
    Rectangle(Rect.left(), Rect.top(), Rect.left() + Rect.width(), Rect.top() + Rect.height());
}

void TCanvas::Ellipse(int X1, int Y1, int X2, int Y2)
{
    ShapeOutline(true, X1, Y1, X2, Y2);
}

void TCanvas::Ellipse(const QRect& Rect)
{
    Ellipse(Rect.left(), Rect.top(), Rect.left() + Rect.width(), Rect.top() + Rect.height());
}

void TCanvas::FillRect(const QRect& Rect)
{
    if (!FPainter || Rect.isEmpty() || FBrush.Style() == bsClear || FBrush.Color() == clNone)
        return;
    // Filling ignores the pen mode.
    ApplyMode(pmCopy);
    FPainter->fillRect(Rect, QBrush(ToQColor(FBrush.Color(), &FPalette), ToQtBrushStyle(FBrush.Style())));
}

void TCanvas::FillRect(int X1, int Y1, int X2, int Y2)
{
    FillRect(QRect(QPoint(std::min(X1, X2), std::min(Y1, Y2)), QPoint(std::max(X1, X2) - 1, std::max(Y1, Y2) - 1)));
}

void TCanvas::DrawFocusRect(const QRect& Rect)
{
    if (!FPainter || Rect.width() < 1 || Rect.height() < 1)
        return;
    QPen pen(FRaster ? QColor(Qt::white) : QColor(Qt::gray));
    pen.setWidth(0);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({1, 1});
    FPainter->setPen(pen);
    FPainter->setBrush(Qt::NoBrush);
    FPenApplied = false;
    FBrushApplied = false;
    ApplyMode(FRaster ? pmXor : pmCopy);
    FPainter->drawRect(QRect(Rect.topLeft(), QSize(Rect.width() - 1, Rect.height() - 1)));
}

// ---------------------------------------------------------------------------------
// Text

const QFontMetrics& TCanvas::FontMetrics()
{
    if (FPainter) {
        ApplyFont();
    } else if (!FMetrics || FAppliedFont != FFont) {
        FMetrics.emplace(FFont.ToQFont());
        FAppliedFont = FFont;
    }
    return *FMetrics;
}

int TCanvas::TextWidth(const QString& Text)
{
    return FontMetrics().horizontalAdvance(Text);
}

int TCanvas::TextHeight(const QString&)
{
    const QFontMetrics& fm = FontMetrics();
    return fm.ascent() + fm.descent();
}

QSize TCanvas::TextExtent(const QString& Text)
{
    return QSize(TextWidth(Text), TextHeight(Text));
}

void TCanvas::TextOut(int X, int Y, const QString& Text)
{
    DrawText(X, Y, FFont.Orientation(), Text);
}

void TCanvas::TextOutAngle(int X, int Y, int Angle, const QString& Text)
{
    DrawText(X, Y, Angle, Text);
}

void TCanvas::DrawText(int X, int Y, int Angle, const QString& Text)
{
    const QFontMetrics& fm = FontMetrics();
    const int width = fm.horizontalAdvance(Text);
    FPenPos = QPoint(X + width, Y);
    if (!FPainter || Text.isEmpty())
        return;
    // Text is always drawn in copy mode, in the font colour.
    ApplyMode(pmCopy);
    const bool rotated = Angle % 3600 != 0;
    if (rotated) {
        FPainter->save();
        FPainter->translate(X, Y);
        FPainter->rotate(-Angle / 10.0);
        X = 0;
        Y = 0;
    }
    if (FBrush.Style() != bsClear && FBrush.Color() != clNone)
        FPainter->fillRect(QRect(X, Y, width, fm.ascent() + fm.descent()), ToQColor(FBrush.Color(), &FPalette));
    FPainter->setPen(ToQColor(FFont.Color(), &FPalette));
    FPenApplied = false;
    FPainter->drawText(QPoint(X, Y + fm.ascent()), Text);
    if (rotated)
        FPainter->restore();
}

// ---------------------------------------------------------------------------------
// Pixels

TColor TCanvas::Pixel(int X, int Y) const
{
    if (!FPainter || !FRaster)
        return clNone;
    QPaintDevice* device = FPainter->device();
    if (!device || device->devType() != QInternal::Image)
        return clNone;
    const QImage* image = static_cast<const QImage*>(device);
    const QPoint p = FBaseTransform.map(QPoint(X, Y) - FWindowOrg);
    if (!image->valid(p))
        return clNone;
    return FromQColor(QColor::fromRgb(image->pixel(p)));
}

void TCanvas::SetPixel(int X, int Y, TColor Color)
{
    if (!FPainter)
        return;
    ApplyMode(pmCopy);
    FPainter->fillRect(QRect(X, Y, 1, 1), ToQColor(Color, &FPalette));
}

// ---------------------------------------------------------------------------------
// Clipping and origin

QRect TCanvas::ClipRect() const
{
    QRect device;
    if (FClip)
        device = *FClip;
    else if (FPainter && FPainter->device())
        device = QRect(0, 0, FPainter->device()->width(), FPainter->device()->height());
    return device.translated(FWindowOrg);
}

void TCanvas::ApplyClip()
{
    FVisibleValid = false;
    if (!FPainter)
        return;
    if (!FClip) {
        FPainter->setClipping(false);
        return;
    }
    const QTransform current = FPainter->worldTransform();
    FPainter->setWorldTransform(FBaseTransform);
    FPainter->setClipRect(*FClip, Qt::ReplaceClip);
    FPainter->setWorldTransform(current);
}

void TCanvas::SelectClipRect(const QRect& DeviceRect)
{
    FClip = DeviceRect.normalized();
    ApplyClip();
}

void TCanvas::IntersectClipRect(const QRect& Rect)
{
    const QRect device = Rect.normalized().translated(-FWindowOrg);
    FClip = FClip ? (*FClip & device) : device;
    ApplyClip();
}

void TCanvas::ClearClip()
{
    FClip.reset();
    ApplyClip();
}

void TCanvas::SetWindowOrg(int X, int Y)
{
    FWindowOrg = QPoint(X, Y);
    FVisibleValid = false;
    if (FPainter)
        FPainter->setWorldTransform(QTransform::fromTranslate(-X, -Y) * FBaseTransform);
}

} // namespace vx
