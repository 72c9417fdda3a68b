#include "vx/platform/VxGraphics.h"

#include <QPalette>
#include <gtest/gtest.h>
#include <tuple>

using namespace vx;

TEST(VxGraphics, ColourValuesUseTheBGREncoding)
{
    struct Row {
        const char* name;
        TColor color;
        int r, g, b;
    };
    const Row rows[] = {
        {"red", clRed, 255, 0, 0},       {"blue", clBlue, 0, 0, 255},     {"navy", clNavy, 0, 0, 128},
        {"olive", clOlive, 128, 128, 0}, {"teal", clTeal, 0, 128, 128},   {"skyblue", clSkyBlue, 166, 202, 240},
        {"cream", clCream, 255, 251, 240}, {"medgray", clMedGray, 160, 160, 164},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(GetRValue(row.color), row.r);
        EXPECT_EQ(GetGValue(row.color), row.g);
        EXPECT_EQ(GetBValue(row.color), row.b);
        EXPECT_EQ(RGB(row.r, row.g, row.b), row.color);
        EXPECT_EQ(ToQColor(row.color), QColor(row.r, row.g, row.b));
        EXPECT_EQ(FromQColor(QColor(row.r, row.g, row.b)), row.color);
    }
}

TEST(VxGraphics, SystemColoursAreNegativeAndResolveThroughThePalette)
{
    EXPECT_EQ(static_cast<std::uint32_t>(clBtnFace), 0x8000000Fu);
    EXPECT_EQ(static_cast<std::uint32_t>(clWindowText), 0x80000008u);
    EXPECT_TRUE(IsSystemColor(clHighlight));
    EXPECT_FALSE(IsSystemColor(clWhite));

    QPalette palette;
    palette.setColor(QPalette::Button, QColor(1, 2, 3));
    palette.setColor(QPalette::Base, QColor(4, 5, 6));
    palette.setColor(QPalette::Highlight, QColor(7, 8, 9));
    palette.setColor(QPalette::Window, QColor(10, 11, 12));
    for (auto [system, rgb] : {std::pair{clBtnFace, RGB(1, 2, 3)}, {clWindow, RGB(4, 5, 6)},
                               {clHighlight, RGB(7, 8, 9)}, {clDefault, RGB(10, 11, 12)}, {clRed, clRed}})
        EXPECT_EQ(ColorToRGB(system, &palette), rgb) << system;
    // Without a palette the application's is used; the result is a plain RGB value.
    EXPECT_GE(ColorToRGB(clBtnFace), 0);
    EXPECT_EQ(ToQColor(clNone).alpha(), 0);
}

TEST(VxGraphics, FontStyleSetsCombineLikeTheirOrdinalBits)
{
    TFontStyles s{fsBold, fsUnderline};
    EXPECT_EQ(s.ToInt(), 0b0101);
    EXPECT_TRUE(s.Contains(fsBold));
    EXPECT_FALSE(s.Contains(fsItalic));
    s.Include(fsItalic).Exclude(fsBold);
    EXPECT_EQ(s, TFontStyles::FromInt(0b0110));
    EXPECT_EQ((s + fsStrikeOut).ToInt(), 0b1110);
    EXPECT_EQ((s - fsItalic).ToInt(), 0b0100);
    EXPECT_EQ((s * TFontStyles{fsItalic, fsBold}).ToInt(), 0b0010);
    EXPECT_TRUE(TFontStyles().IsEmpty());
    EXPECT_EQ(TFontStyles::FromInt(0xFF).ToInt(), 0x0F);
}

TEST(VxGraphics, FontHeightAndSizeConvertAtPixelsPerInch)
{
    struct Row {
        int size, ppi, height;
    };
    const Row rows[] = {{8, 96, -11}, {10, 96, -13}, {12, 96, -16}, {9, 120, -15}, {16, 72, -16}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.size * 1000 + row.ppi);
        TFont f;
        f.SetPixelsPerInch(row.ppi);
        f.SetSize(row.size);
        EXPECT_EQ(f.Height(), row.height);
        EXPECT_EQ(f.PixelSize(), -row.height);
        EXPECT_EQ(f.ToQFont().pixelSize(), -row.height);
        f.SetHeight(row.height);
        EXPECT_EQ(f.Size(), row.size);
    }
    TFont tiny;
    tiny.SetSize(0);
    EXPECT_EQ(tiny.ToQFont().pixelSize(), 1); // never an invalid Qt font
}

TEST(VxGraphics, FontToQFontCarriesStyles)
{
    TFont f;
    f.SetName("DejaVu Serif");
    f.SetStyle({fsBold, fsItalic, fsUnderline, fsStrikeOut});
    const QFont q = f.ToQFont();
    EXPECT_EQ(q.family(), QStringLiteral("DejaVu Serif"));
    EXPECT_TRUE(q.bold() && q.italic() && q.underline() && q.strikeOut());
    TFont back;
    back.SetFromQFont(q);
    EXPECT_EQ(std::make_tuple(back.Style(), back.Size(), back.Name()), std::make_tuple(f.Style(), f.Size(), f.Name()));
}

TEST(VxGraphics, FontChangeCallbackFiresOncePerRealChange)
{
    TFont f;
    int calls = 0;
    f.SetOnChange([&calls] { ++calls; });
    f.SetSize(14);
    f.SetSize(14);
    f.SetColor(clRed);
    f.SetColor(clRed);
    f.SetStyle(fsBold);
    f.SetName(f.Name());
    EXPECT_EQ(calls, 3);

    TFont other;
    other.SetSize(20);
    other.SetCharset(SYMBOL_CHARSET);
    f = other; // assignment keeps f's callback and reports one change
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(f, other);
    f = other;
    EXPECT_EQ(calls, 4);

    TFont copy(f); // a copy does not inherit the callback
    copy.SetSize(30);
    EXPECT_EQ(calls, 4);
}
