#pragma once
// Colours, pen, brush and font of the drawing layer: the platform's graphics values
// (colour encoding $00BBGGRR, enumeration ordinals as stored in settings files) and
// their conversion to Qt.

#include <QColor>
#include <QFont>
#include <QString>
#include <cstdint>
#include <functional>
#include <initializer_list>

class QPalette;

namespace vx {

// A colour: $00BBGGRR for an RGB value, $800000nn for the system colour with index nn
// (resolved through the palette when painting), or one of the special values
// clNone / clDefault. Settings files store this integer.
using TColor = std::int32_t;

namespace detail {
constexpr TColor SysColor(int index) { return static_cast<TColor>(0x80000000u | static_cast<unsigned>(index)); }
}

constexpr TColor clBlack = 0x000000;
constexpr TColor clMaroon = 0x000080;
constexpr TColor clGreen = 0x008000;
constexpr TColor clOlive = 0x008080;
constexpr TColor clNavy = 0x800000;
constexpr TColor clPurple = 0x800080;
constexpr TColor clTeal = 0x808000;
constexpr TColor clGray = 0x808080;
constexpr TColor clSilver = 0xC0C0C0;
constexpr TColor clRed = 0x0000FF;
constexpr TColor clLime = 0x00FF00;
constexpr TColor clYellow = 0x00FFFF;
constexpr TColor clBlue = 0xFF0000;
constexpr TColor clFuchsia = 0xFF00FF;
constexpr TColor clAqua = 0xFFFF00;
constexpr TColor clLtGray = 0xC0C0C0;
constexpr TColor clDkGray = 0x808080;
constexpr TColor clWhite = 0xFFFFFF;
constexpr TColor clMoneyGreen = 0xC0DCC0;
constexpr TColor clSkyBlue = 0xF0CAA6;
constexpr TColor clCream = 0xF0FBFF;
constexpr TColor clMedGray = 0xA4A0A0;
constexpr TColor clNone = 0x1FFFFFFF;
constexpr TColor clDefault = 0x20000000;

// System colours (index = the platform's system colour number).
constexpr TColor clScrollBar = detail::SysColor(0);
constexpr TColor clBackground = detail::SysColor(1);
constexpr TColor clActiveCaption = detail::SysColor(2);
constexpr TColor clInactiveCaption = detail::SysColor(3);
constexpr TColor clMenu = detail::SysColor(4);
constexpr TColor clWindow = detail::SysColor(5);
constexpr TColor clWindowFrame = detail::SysColor(6);
constexpr TColor clMenuText = detail::SysColor(7);
constexpr TColor clWindowText = detail::SysColor(8);
constexpr TColor clCaptionText = detail::SysColor(9);
constexpr TColor clActiveBorder = detail::SysColor(10);
constexpr TColor clInactiveBorder = detail::SysColor(11);
constexpr TColor clAppWorkSpace = detail::SysColor(12);
constexpr TColor clHighlight = detail::SysColor(13);
constexpr TColor clHighlightText = detail::SysColor(14);
constexpr TColor clBtnFace = detail::SysColor(15);
constexpr TColor clBtnShadow = detail::SysColor(16);
constexpr TColor clGrayText = detail::SysColor(17);
constexpr TColor clBtnText = detail::SysColor(18);
constexpr TColor clInactiveCaptionText = detail::SysColor(19);
constexpr TColor clBtnHighlight = detail::SysColor(20);
constexpr TColor cl3DDkShadow = detail::SysColor(21);
constexpr TColor cl3DLight = detail::SysColor(22);
constexpr TColor clInfoText = detail::SysColor(23);
constexpr TColor clInfoBk = detail::SysColor(24);
constexpr TColor clHotLight = detail::SysColor(26);
constexpr TColor clGradientActiveCaption = detail::SysColor(27);
constexpr TColor clGradientInactiveCaption = detail::SysColor(28);
constexpr TColor clMenuHighlight = detail::SysColor(29);
constexpr TColor clMenuBar = detail::SysColor(30);

// True for the system colours ($80000000 bit set).
constexpr bool IsSystemColor(TColor Color) { return Color < 0; }

// Builds $00BBGGRR from 0..255 components (values are masked to 8 bits).
constexpr TColor RGB(int R, int G, int B)
{
    return static_cast<TColor>((R & 0xFF) | ((G & 0xFF) << 8) | ((B & 0xFF) << 16));
}
constexpr int GetRValue(TColor Color) { return Color & 0xFF; }
constexpr int GetGValue(TColor Color) { return (Color >> 8) & 0xFF; }
constexpr int GetBValue(TColor Color) { return (Color >> 16) & 0xFF; }

// Resolves system colours (through Palette, or the application palette when null) and
// clDefault (the window background) to an RGB value $00BBGGRR; clNone gives clWhite.
TColor ColorToRGB(TColor Color, const QPalette* Palette = nullptr);
// The Qt colour of Color (opaque; clNone gives Qt::transparent).
QColor ToQColor(TColor Color, const QPalette* Palette = nullptr);
// The colour value of an (opaque) Qt colour.
TColor FromQColor(const QColor& Color);

// Pen styles, with the platform's ordinals.
enum TPenStyle : int {
    psSolid, psDash, psDot, psDashDot, psDashDotDot, psClear, psInsideFrame, psUserStyle, psAlternate
};

// Raster combinations of pen/brush with the destination, with the platform's ordinals.
// Only raster devices combine; vector devices (pictures, SVG, PDF, printers) draw pmCopy.
enum TPenMode : int {
    pmBlack, pmWhite, pmNop, pmNot, pmCopy, pmNotCopy, pmMergePenNot, pmMaskPenNot,
    pmMergeNotPen, pmMaskNotPen, pmMerge, pmNotMerge, pmMask, pmNotMask, pmXor, pmNotXor
};

// Brush styles, with the platform's ordinals.
enum TBrushStyle : int {
    bsSolid, bsClear, bsHorizontal, bsVertical, bsFDiagonal, bsBDiagonal, bsCross, bsDiagCross
};

// Text alignment, with the platform's ordinals.
enum TAlignment : int { taLeftJustify, taRightJustify, taCenter };

// Font style flags, with the platform's ordinals.
enum TFontStyle : int { fsBold, fsItalic, fsUnderline, fsStrikeOut };

// A set of font styles (bit n = TFontStyle n, the platform's set encoding).
class TFontStyles {
public:
    constexpr TFontStyles() = default;
    constexpr TFontStyles(TFontStyle Style) : FBits(Bit(Style)) {}
    TFontStyles(std::initializer_list<TFontStyle> Styles);

    constexpr bool Contains(TFontStyle Style) const { return (FBits & Bit(Style)) != 0; }
    constexpr bool IsEmpty() const { return FBits == 0; }
    TFontStyles& Include(TFontStyle Style) { FBits |= Bit(Style); return *this; }
    TFontStyles& Exclude(TFontStyle Style) { FBits &= ~Bit(Style); return *this; }
    // Includes Style when On is true, excludes it otherwise.
    TFontStyles& Set(TFontStyle Style, bool On) { return On ? Include(Style) : Exclude(Style); }

    constexpr TFontStyles operator+(TFontStyles o) const { return FromInt(FBits | o.FBits); }
    constexpr TFontStyles operator-(TFontStyles o) const { return FromInt(FBits & ~o.FBits); }
    constexpr TFontStyles operator*(TFontStyles o) const { return FromInt(FBits & o.FBits); }
    constexpr bool operator==(TFontStyles o) const { return FBits == o.FBits; }
    constexpr bool operator!=(TFontStyles o) const { return FBits != o.FBits; }

    constexpr int ToInt() const { return FBits; }
    static constexpr TFontStyles FromInt(int Bits)
    {
        TFontStyles s;
        s.FBits = static_cast<unsigned char>(Bits & 0x0F);
        return s;
    }

private:
    static constexpr unsigned char Bit(TFontStyle s) { return static_cast<unsigned char>(1u << s); }
    unsigned char FBits = 0;
};

// Character sets (the platform's numbers); only the symbol set changes rendering here.
using TFontCharset = int;
constexpr TFontCharset ANSI_CHARSET = 0;
constexpr TFontCharset DEFAULT_CHARSET = 1;
constexpr TFontCharset SYMBOL_CHARSET = 2;

// A pen: colour, width in pixels (0 = the one-pixel cosmetic pen), style and mode.
class TPen {
public:
    TColor Color() const { return FColor; }
    void SetColor(TColor Value) { FColor = Value; }
    int Width() const { return FWidth; }
    // Negative widths are stored as 0.
    void SetWidth(int Value) { FWidth = Value < 0 ? 0 : Value; }
    TPenStyle Style() const { return FStyle; }
    void SetStyle(TPenStyle Value) { FStyle = Value; }
    TPenMode Mode() const { return FMode; }
    void SetMode(TPenMode Value) { FMode = Value; }
    void Assign(const TPen& Source) { *this = Source; }

    bool operator==(const TPen& o) const
    {
        return FColor == o.FColor && FWidth == o.FWidth && FStyle == o.FStyle && FMode == o.FMode;
    }
    bool operator!=(const TPen& o) const { return !(*this == o); }

private:
    TColor FColor = clBlack;
    int FWidth = 1;
    TPenStyle FStyle = psSolid;
    TPenMode FMode = pmCopy;
};

// A brush: colour and fill pattern (bsClear = no fill).
class TBrush {
public:
    TColor Color() const { return FColor; }
    void SetColor(TColor Value) { FColor = Value; }
    TBrushStyle Style() const { return FStyle; }
    void SetStyle(TBrushStyle Value) { FStyle = Value; }
    void Assign(const TBrush& Source) { *this = Source; }

    bool operator==(const TBrush& o) const { return FColor == o.FColor && FStyle == o.FStyle; }
    bool operator!=(const TBrush& o) const { return !(*this == o); }

private:
    TColor FColor = clWhite;
    TBrushStyle FStyle = bsSolid;
};

// A font: family Name, Size in points, Color, Style set, Charset and Orientation (text
// angle in tenths of a degree, counter-clockwise). Sizes map to pixels at
// PixelsPerInch (default 96), so text measures the same on every device.
// Copying takes the values only; assignment (= Assign) keeps the target's OnChange and
// calls it once when something changed.
class TFont {
public:
    TFont();
    TFont(const TFont& Other);
    TFont& operator=(const TFont& Other);

    QString Name() const { return FName; }
    void SetName(const QString& Value);
    // Size in points; 0 or negative sizes are kept (a negative one is a pixel height).
    int Size() const { return FSize; }
    void SetSize(int Value);
    // Height in pixels: -Size * PixelsPerInch / 72 (the platform's sign convention).
    int Height() const;
    void SetHeight(int Value);
    TColor Color() const { return FColor; }
    void SetColor(TColor Value);
    TFontStyles Style() const { return FStyle; }
    void SetStyle(TFontStyles Value);
    TFontCharset Charset() const { return FCharset; }
    void SetCharset(TFontCharset Value);
    int Orientation() const { return FOrientation; }
    void SetOrientation(int Value);
    int PixelsPerInch() const { return FPixelsPerInch; }
    void SetPixelsPerInch(int Value);

    // Copies every value except OnChange; calls OnChange once if anything changed.
    void Assign(const TFont& Source);
    // Pixel size of the em square (at least 1).
    int PixelSize() const;
    // The Qt font (pixel-sized, no hinting surprises); Orientation is not part of it.
    QFont ToQFont() const;
    // Takes family, size, weight, italic, underline and strike-out from a Qt font.
    void SetFromQFont(const QFont& Font);

    // Called after every change of a value.
    std::function<void()> OnChange() const { return FOnChange; }
    void SetOnChange(std::function<void()> Handler) { FOnChange = std::move(Handler); }

    bool operator==(const TFont& o) const;
    bool operator!=(const TFont& o) const { return !(*this == o); }

    // Points <-> pixels at PixelsPerInch, rounded as the platform's MulDiv.
    static int PointsToPixels(int Points, int PixelsPerInch);
    static int PixelsToPoints(int Pixels, int PixelsPerInch);
    static constexpr int DefaultPixelsPerInch = 96;

private:
    void Changed();

    QString FName;
    int FSize = 8;
    TColor FColor = clWindowText;
    TFontStyles FStyle;
    TFontCharset FCharset = DEFAULT_CHARSET;
    int FOrientation = 0;
    int FPixelsPerInch = DefaultPixelsPerInch;
    std::function<void()> FOnChange;
};

// The Qt pen and brush styles for the platform's styles.
Qt::PenStyle ToQtPenStyle(TPenStyle Style);
Qt::BrushStyle ToQtBrushStyle(TBrushStyle Style);

} // namespace vx
