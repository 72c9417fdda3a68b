#include "vx/platform/VxGraphics.h"

#include <QGuiApplication>
#include <QPalette>
#include <cmath>

namespace vx {

namespace {

// Palette role standing for each system colour index (the closest Qt meaning).
QPalette::ColorRole RoleOfSystemColor(int index)
{
    switch (index) {
    case 0: return QPalette::Mid;               // scroll bar
    case 1: return QPalette::Dark;              // desktop
    case 2: return QPalette::Highlight;         // active caption
    case 3: return QPalette::Mid;               // inactive caption
    case 4: return QPalette::Window;            // menu
    case 5: return QPalette::Base;              // window (edit background)
    case 6: return QPalette::Shadow;            // window frame
    case 7: return QPalette::WindowText;        // menu text
    case 8: return QPalette::Text;              // window text
    case 9: return QPalette::HighlightedText;   // caption text
    case 10: return QPalette::Window;           // active border
    case 11: return QPalette::Window;           // inactive border
    case 12: return QPalette::Dark;             // application workspace
    case 13: return QPalette::Highlight;
    case 14: return QPalette::HighlightedText;
    case 15: return QPalette::Button;           // button face
    case 16: return QPalette::Dark;             // button shadow
    case 17: return QPalette::PlaceholderText;  // grey text
    case 18: return QPalette::ButtonText;
    case 19: return QPalette::WindowText;       // inactive caption text
    case 20: return QPalette::Light;            // button highlight
    case 21: return QPalette::Shadow;           // 3D dark shadow
    case 22: return QPalette::Midlight;         // 3D light
    case 23: return QPalette::ToolTipText;      // info text
    case 24: return QPalette::ToolTipBase;      // info background
    case 26: return QPalette::Link;             // hot light
    case 27: return QPalette::Highlight;        // gradient active caption
    case 28: return QPalette::Mid;              // gradient inactive caption
    case 29: return QPalette::Highlight;        // menu highlight
    case 30: return QPalette::Window;           // menu bar
    default: return QPalette::Window;
    }
}

QPalette ApplicationPalette()
{
    return QGuiApplication::instance() ? QGuiApplication::palette() : QPalette();
}

QRgb PaletteRgb(TColor color, const QPalette* palette)
{
    const QPalette::ColorRole role = color == clDefault ? QPalette::Window : RoleOfSystemColor(color & 0xFF);
    if (palette)
        return palette->color(QPalette::Active, role).rgb();
    return ApplicationPalette().color(QPalette::Active, role).rgb();
}

} // namespace

TColor ColorToRGB(TColor Color, const QPalette* Palette)
{
    if (Color == clNone)
        return clWhite;
    if (IsSystemColor(Color) || Color == clDefault) {
        const QRgb rgb = PaletteRgb(Color, Palette);
        return RGB(qRed(rgb), qGreen(rgb), qBlue(rgb));
    }
    return Color & 0xFFFFFF;
}

QColor ToQColor(TColor Color, const QPalette* Palette)
{
    if (Color == clNone)
        return QColor(Qt::transparent);
    const TColor rgb = ColorToRGB(Color, Palette);
    return QColor(GetRValue(rgb), GetGValue(rgb), GetBValue(rgb));
}

TColor FromQColor(const QColor& Color)
{
    if (!Color.isValid())
        return clNone;
    const QColor c = Color.toRgb();
    return RGB(c.red(), c.green(), c.blue());
}

TFontStyles::TFontStyles(std::initializer_list<TFontStyle> Styles)
{
    for (TFontStyle s : Styles)
        Include(s);
}

Qt::PenStyle ToQtPenStyle(TPenStyle Style)
{
    switch (Style) {
    case psSolid: return Qt::SolidLine;
    case psDash: return Qt::DashLine;
    case psDot: return Qt::DotLine;
    case psDashDot: return Qt::DashDotLine;
    case psDashDotDot: return Qt::DashDotDotLine;
    case psClear: return Qt::NoPen;
    case psInsideFrame: return Qt::SolidLine;
    case psUserStyle: return Qt::SolidLine;
    case psAlternate: return Qt::DotLine;
    }
    return Qt::SolidLine;
}

Qt::BrushStyle ToQtBrushStyle(TBrushStyle Style)
{
    switch (Style) {
    case bsSolid: return Qt::SolidPattern;
    case bsClear: return Qt::NoBrush;
    case bsHorizontal: return Qt::HorPattern;
    case bsVertical: return Qt::VerPattern;
    case bsFDiagonal: return Qt::FDiagPattern;
    case bsBDiagonal: return Qt::BDiagPattern;
    case bsCross: return Qt::CrossPattern;
    case bsDiagCross: return Qt::DiagCrossPattern;
    }
    return Qt::SolidPattern;
}

// ---------------------------------------------------------------------------------
// TFont

TFont::TFont()
    : FName(QStringLiteral("DejaVu Sans"))
{
}

TFont::TFont(const TFont& Other)
    : FName(Other.FName)
    , FSize(Other.FSize)
    , FColor(Other.FColor)
    , FStyle(Other.FStyle)
    , FCharset(Other.FCharset)
    , FOrientation(Other.FOrientation)
    , FPixelsPerInch(Other.FPixelsPerInch)
{
}

TFont& TFont::operator=(const TFont& Other)
{
    Assign(Other);
    return *this;
}

bool TFont::operator==(const TFont& o) const
{
    return FSize == o.FSize && FColor == o.FColor && FStyle == o.FStyle && FCharset == o.FCharset
        && FOrientation == o.FOrientation && FPixelsPerInch == o.FPixelsPerInch && FName == o.FName;
}

void TFont::Assign(const TFont& Source)
{
    if (this == &Source || *this == Source)
        return;
    FName = Source.FName;
    FSize = Source.FSize;
    FColor = Source.FColor;
    FStyle = Source.FStyle;
    FCharset = Source.FCharset;
    FOrientation = Source.FOrientation;
    FPixelsPerInch = Source.FPixelsPerInch;
    Changed();
}

void TFont::Changed()
{
    if (FOnChange)
        FOnChange();
}

void TFont::SetName(const QString& Value)
{
    if (FName == Value)
        return;
    FName = Value;
    Changed();
}

void TFont::SetSize(int Value)
{
    if (FSize == Value)
        return;
    FSize = Value;
    Changed();
}

int TFont::Height() const
{
    return -PointsToPixels(FSize, FPixelsPerInch);
}

void TFont::SetHeight(int Value)
{
    SetSize(-PixelsToPoints(Value, FPixelsPerInch));
}

void TFont::SetColor(TColor Value)
{
    if (FColor == Value)
        return;
    FColor = Value;
    Changed();
}

void TFont::SetStyle(TFontStyles Value)
{
    if (FStyle == Value)
        return;
    FStyle = Value;
    Changed();
}

void TFont::SetCharset(TFontCharset Value)
{
    if (FCharset == Value)
        return;
    FCharset = Value;
    Changed();
}

void TFont::SetOrientation(int Value)
{
    if (FOrientation == Value)
        return;
    FOrientation = Value;
    Changed();
}

void TFont::SetPixelsPerInch(int Value)
{
    if (Value <= 0 || FPixelsPerInch == Value)
        return;
    FPixelsPerInch = Value;
    Changed();
}

int TFont::PointsToPixels(int Points, int PixelsPerInch)
{
    // MulDiv rounds half away from zero.
    const long long p = static_cast<long long>(Points) * PixelsPerInch;
    return static_cast<int>(p >= 0 ? (p + 36) / 72 : -((-p + 36) / 72));
}

int TFont::PixelsToPoints(int Pixels, int PixelsPerInch)
{
    if (PixelsPerInch <= 0)
        return 0;
    const long long p = static_cast<long long>(Pixels) * 72;
    const long long h = PixelsPerInch / 2;
    return static_cast<int>(p >= 0 ? (p + h) / PixelsPerInch : -((-p + h) / PixelsPerInch));
}

int TFont::PixelSize() const
{
    // A negative size is a pixel height (the platform's sign convention for Height).
    const int px = FSize >= 0 ? PointsToPixels(FSize, FPixelsPerInch) : -FSize;
    return px < 1 ? 1 : px;
}

QFont TFont::ToQFont() const
{
    QFont f(FName);
    f.setPixelSize(PixelSize());
    f.setBold(FStyle.Contains(fsBold));
    f.setItalic(FStyle.Contains(fsItalic));
    f.setUnderline(FStyle.Contains(fsUnderline));
    f.setStrikeOut(FStyle.Contains(fsStrikeOut));
    f.setKerning(false);
    return f;
}

void TFont::SetFromQFont(const QFont& Font)
{
    TFont next(*this);
    next.FName = Font.family();
    if (Font.pixelSize() > 0)
        next.FSize = PixelsToPoints(Font.pixelSize(), FPixelsPerInch);
    else
        next.FSize = static_cast<int>(std::lround(Font.pointSizeF()));
    TFontStyles s;
    s.Set(fsBold, Font.bold());
    s.Set(fsItalic, Font.italic());
    s.Set(fsUnderline, Font.underline());
    s.Set(fsStrikeOut, Font.strikeOut());
    next.FStyle = s;
    Assign(next);
}

} // namespace vx
