#include "vx/graph/VxLabel.h"

#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"
#include "support/PixelProbe.h"

#include <QImage>
#include <QPainter>
#include <QTransform>
#include <gtest/gtest.h>

using namespace vx;
using namespace vx::test;

namespace {

TFont BaseFont(int size = 12, TFontStyles style = TFontStyles())
{
    TFont font;
    font.SetSize(size);
    font.SetStyle(style);
    font.SetColor(clBlack);
    return font;
}

// Measures Text on a device-less canvas with the given base font.
TVxCaptionRec Measure(const QString& text, const TFont& font = BaseFont())
{
    TCanvas canvas(static_cast<QPainter*>(nullptr));
    canvas.SetFont(font);
    TVxCaptionRec rec;
    rec.Text = text;
    rec.Canvas = &canvas;
    RichPaintTo(rec);
    rec.Canvas = nullptr;
    return rec;
}

QFontMetrics MetricsOf(const TFont& font)
{
    TCanvas canvas(static_cast<QPainter*>(nullptr));
    canvas.SetFont(font);
    return canvas.FontMetrics();
}

// Sum of the single characters' advances (no kerning, as the renderer measures).
int PlainWidth(const QString& text, const TFont& font)
{
    const QFontMetrics fm = MetricsOf(font);
    int w = 0;
    for (QChar c : text)
        w += fm.horizontalAdvance(QString(c));
    return w;
}

// Draws Text with RichPaintTo into a fresh white image (characters SelStart up to
// SelStop highlighted when SelStop > SelStart); the caller's brush must be back after.
QImage Draw(const QString& text, int x, int y, int angle, int w = 240, int h = 240,
            TVxCaptionRec* out = nullptr, int selStart = 0, int selStop = 0)
{
    return Painted([&](TCanvas& canvas) {
        canvas.SetFont(BaseFont());
        canvas.Brush().SetStyle(bsClear);
        TVxCaptionRec rec;
        rec.Text = text;
        rec.Canvas = &canvas;
        rec.X = x;
        rec.Y = y;
        rec.Angle = angle;
        rec.Paint = true;
        rec.ShowSelection = selStop > selStart;
        rec.SelStart = selStart;
        rec.SelStop = selStop;
        RichPaintTo(rec);
        EXPECT_EQ(canvas.Brush().Style(), bsClear);
        if (out) {
            *out = rec;
            out->Canvas = nullptr;
        }
    }, w, h);
}

} // namespace

TEST(RichPaintTo, MarkupParsing)
{
    struct Row {
        const char* name;
        QString text;
        QString stripped;
    };
    const Row rows[] = {
        {"plain text", "abc", "abc"},
        {"toggles vanish", "a\\bb\\b c\\i\\ud\\u\\i", "abcd"},
        {"blank after a code is swallowed, the next stays", "x\\+2\\+ + 1", "x2+ 1"},
        {"literal backslash", "a\\\\b", "a\\b"},
        {"blank after a literal backslash is swallowed", "a\\\\ b", "a\\b"},
        {"unknown code dropped", "\\q", "q"},
        {"unknown code keeps the following blank", "a\\z b", "az b"},
        {"upper-case codes", "\\B\\Ix\\S\\O\\U", "x"},
        {"trailing backslash dropped", "ab\\", "ab"},
        {"only codes", "\\b\\i\\+\\-\\s", ""},
        {"empty", "", ""},
        {"symbol text keeps its codes", "\\sa\\s b", "ab"},
        {"power-of-ten label", QString::fromUtf8("\u00B710\\+4"), QString::fromUtf8("\u00B7104")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TVxCaptionRec rec = Measure(row.text);
        EXPECT_EQ(rec.Stripped, row.stripped);
        EXPECT_EQ(GetStrippedString(row.text), row.stripped);
        const std::size_t n = std::size_t(row.text.size()) + 1;
        EXPECT_EQ(rec.CharX.size(), n);
        EXPECT_EQ(rec.CharSource.size(), n);
        EXPECT_EQ(rec.SymbolFont.size(), n);
        EXPECT_EQ(rec.Bold.size(), n);
    }
}

TEST(RichPaintTo, SwallowedBlankMeasuresAlike)
{
    EXPECT_EQ(Measure("10\\+ 3").Width, Measure("10\\+3").Width);
    EXPECT_EQ(Measure("\\B bold\\b").Width, Measure("\\bbold\\B").Width);
}

TEST(RichPaintTo, WidthsAndCharArrays)
{
    const TFont base = BaseFont();
    const TVxCaptionRec rec = Measure("a\\bW\\b\\\\c", base);
    ASSERT_EQ(rec.Stripped, "aW\\c");
    const int wa = PlainWidth("a", base);
    const int wW = PlainWidth("W", BaseFont(12, fsBold));
    const int wb = PlainWidth("\\", base);
    const int wc = PlainWidth("c", base);
    EXPECT_EQ(TVxIntegerArray(rec.CharX.begin(), rec.CharX.begin() + 4),
              (TVxIntegerArray{wa, wa + wW, wa + wW + wb, wa + wW + wb + wc}));
    EXPECT_EQ(rec.Width, rec.CharX[3]);
    EXPECT_EQ(TVxIntegerArray(rec.CharSource.begin(), rec.CharSource.begin() + 4), (TVxIntegerArray{0, 3, 7, 8}));
    // Bold must really widen the text.
    EXPECT_GT(wW, PlainWidth("W", base));
}

TEST(RichPaintTo, AttributeArraysFollowTheToggles)
{
    // Visible characters: a b c d e; the entry after the last one is the final state.
    const TVxCaptionRec rec = Measure("a\\bb\\i c\\B\\ud\\+e\\s");
    auto first6 = [](const TVxBooleanArray& a) { return TVxBooleanArray(a.begin(), a.begin() + 6); };
    EXPECT_EQ(first6(rec.Bold), (TVxBooleanArray{false, true, true, false, false, false}));
    EXPECT_EQ(first6(rec.Italic), (TVxBooleanArray{false, false, true, true, true, true}));
    EXPECT_EQ(first6(rec.Underline), (TVxBooleanArray{false, false, false, true, true, true}));
    EXPECT_EQ(first6(rec.SuperScript), (TVxBooleanArray{false, false, false, false, true, true}));
    EXPECT_EQ(first6(rec.SymbolFont), (TVxBooleanArray{false, false, false, false, false, true}));
    EXPECT_EQ(first6(rec.SubScript), TVxBooleanArray(6, false));
    EXPECT_EQ(first6(rec.StrikeOut), TVxBooleanArray(6, false));
}

TEST(RichPaintTo, ScriptSizesAndBaselineShifts)
{
    // 12 pt base: scripts are drawn at 12 * 2 / 3 = 8 pt; a superscript raises the
    // baseline by Round(12 * 34 / 72) = 6 px, a subscript lowers it by Round(12 * 11 / 72) = 2.
    const TFont base = BaseFont(12);
    const QFontMetrics fb = MetricsOf(base);
    const QFontMetrics fs = MetricsOf(BaseFont(8));
    const int w2small = PlainWidth("2", BaseFont(8));
    const int wx = PlainWidth("x", base);

    const TVxCaptionRec sup = Measure("x\\+2\\+x", base);
    EXPECT_EQ(sup.CharX[1] - sup.CharX[0], w2small);
    EXPECT_EQ(sup.CharX[2] - sup.CharX[1], wx) << "size restored after the superscript";
    EXPECT_EQ(sup.Top, fb.ascent() - 6 - fs.ascent());
    EXPECT_EQ(sup.Bottom, fb.height());

    const TVxCaptionRec sub = Measure("x\\-2", base);
    EXPECT_EQ(sub.Top, 0);
    EXPECT_EQ(sub.Bottom, std::max(fb.height(), fb.ascent() + 2 - fs.ascent() + fs.height()));

    // Nested scripts shrink twice and come back to the base size.
    const TVxCaptionRec nested = Measure("\\+\\-2\\-\\+x", base);
    EXPECT_EQ(nested.CharX[0], PlainWidth("2", BaseFont(8 * 2 / 3)));
    EXPECT_EQ(nested.CharX[1] - nested.CharX[0], wx);
}

TEST(RichPaintTo, ScriptsAreDrawnShiftedAndBaselineReturns)
{
    TVxCaptionRec rec;
    const QImage image = Draw("H\\+H\\+H \\-H\\-H", 10, 40, 0, 240, 100, &rec);
    auto column = [&](int i) {
        const int left = 10 + (i == 0 ? 0 : rec.CharX[i - 1]);
        return InkBounds(image, QRect(left, 0, 10 + rec.CharX[i] - left, image.height()));
    };
    const QRect base = column(0), super = column(1), after = column(2), sub = column(4), last = column(5);
    ASSERT_FALSE(base.isEmpty());
    EXPECT_LT(super.bottom(), base.bottom() - 3) << "superscript baseline raised";
    EXPECT_LT(super.height(), base.height()) << "superscript smaller";
    EXPECT_EQ(after.top(), base.top());
    EXPECT_EQ(after.bottom(), base.bottom());
    EXPECT_GT(sub.bottom(), base.bottom()) << "subscript baseline lowered";
    EXPECT_LT(sub.height(), base.height());
    EXPECT_EQ(last.bottom(), base.bottom());
}

TEST(RichPaintTo, RotatedDrawingStaysInTheRotatedBox)
{
    struct Row {
        const char* name;
        int angle;
    };
    const Row rows[] = {{"0", 0}, {"90", 900}, {"180", 1800}, {"270", 2700}, {"45", 450}};
    const QString text = "\\bHHHH\\b\\+2";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TVxCaptionRec rec;
        const QImage image = Draw(text, 120, 120, row.angle, 240, 240, &rec);
        const QRect ink = InkBounds(image);
        ASSERT_FALSE(ink.isEmpty());
        // The expected box: the unrotated rectangle (0, Top)-(Width, Bottom) turned
        // counter-clockwise (on screen) about the start point, give or take 2 pixels.
        QTransform turn;
        turn.translate(120, 120).rotate(-row.angle / 10.0);
        const QRectF box = turn.mapRect(QRectF(0, rec.Top, rec.Width, rec.Bottom - rec.Top));
        EXPECT_TRUE(box.adjusted(-2, -2, 2, 2).contains(QRectF(ink).adjusted(0, 0, -1, -1)))
            << ink.x() << "," << ink.y() << " " << ink.width() << "x" << ink.height();
        // And the ink fills most of it along the text direction.
        if (row.angle == 900 || row.angle == 2700)
            EXPECT_GT(ink.height(), rec.Width * 3 / 4);
        if (row.angle == 0 || row.angle == 1800)
            EXPECT_GT(ink.width(), rec.Width * 3 / 4);
    }
    // 90 degrees reads upwards: the text starts at the bottom.
    TVxCaptionRec rec;
    const QImage up = Draw("I\\+III", 120, 200, 900, 240, 240, &rec);
    const QRect ink = InkBounds(up);
    EXPECT_NEAR(ink.bottom(), 200, 3);
    EXPECT_GE(ink.left(), 120 + rec.Top - 1);
}

TEST(RichPaintTo, SelectionIsHighlighted)
{
    TVxCaptionRec rec;
    const QImage image = Draw("ab\\bcd", 5, 5, 0, 120, 40, &rec, 1, 3);
    const QColor highlight = ToQColor(clHighlight);
    auto boxHas = [&](int i, const QColor& colour) {
        const int left = 5 + (i == 0 ? 0 : rec.CharX[i - 1]);
        for (int x = left; x < 5 + rec.CharX[i]; ++x)
            for (int y = 5; y < 15; ++y)
                if (image.pixelColor(x, y) == colour)
                    return true;
        return false;
    };
    EXPECT_EQ((std::vector<bool>{boxHas(0, highlight), boxHas(1, highlight), boxHas(2, highlight), boxHas(3, highlight)}),
              (std::vector<bool>{false, true, true, false}));
    Draw("ab", 5, 5, 0, 120, 40, nullptr, 0, 2); // selected to the end: the brush comes back too
}

TEST(RichPaintTo, WithoutCanvasOnlySizesTheArrays)
{
    TVxCaptionRec rec;
    rec.Text = "a\\bb";
    RichPaintTo(rec);
    EXPECT_EQ(rec.Width, 0);
    EXPECT_EQ(rec.CharX.size(), 5u);
}

TEST(SymbolFont, CodesMapToUnicode)
{
    struct Row {
        char16_t code;
        char16_t expected;
    };
    const Row rows[] = {
        {'a', 0x03B1}, {'b', 0x03B2}, {'c', 0x03C7}, {'d', 0x03B4}, {'D', 0x0394},
        {'m', 0x03BC}, {'p', 0x03C0}, {'W', 0x03A9}, {'w', 0x03C9}, {'q', 0x03B8},
        {'l', 0x03BB}, {'s', 0x03C3}, {'S', 0x03A3}, {'F', 0x03A6}, {'G', 0x0393},
        {0xB1, 0x00B1}, {0xB0, 0x00B0}, {0xB4, 0x00D7}, {0xA5, 0x221E}, {0xB6, 0x2202},
        {0xD6, 0x221A}, {0xE5, 0x2211}, {0xA3, 0x2264}, {0xB3, 0x2265}, {0xBB, 0x2248},
        {0xB9, 0x2260}, {0xAE, 0x2192}, {0xF2, 0x222B}, {0xD1, 0x2207}, {'-', 0x2212},
        // Digits, punctuation, undefined codes and real Unicode stay as they are.
        {'1', '1'}, {'(', '('}, {'=', '='}, {0x85, 0x85}, {0x03B1, 0x03B1}, {0x2211, 0x2211},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(int(row.code));
        EXPECT_EQ(SymbolToUnicode(QChar(row.code)).unicode(), row.expected);
    }
    EXPECT_EQ(SymbolToUnicode(QString("Dm=2p")), QString::fromUtf8("\u0394\u03BC=2\u03C0"));
}

TEST(SymbolFont, SymbolRunsMeasureTheMappedGlyphs)
{
    const TFont base = BaseFont();
    TCanvas canvas(static_cast<QPainter*>(nullptr));
    canvas.SetFont(base);
    const TVxCaptionRec rec = Measure("\\sW\\sW", base);
    EXPECT_EQ(rec.CharX[0], canvas.TextWidth(QString(QChar(0x03A9))));
    EXPECT_EQ(rec.CharX[1] - rec.CharX[0], canvas.TextWidth("W"));
    // The Greek letter is really drawn (not a missing-glyph box of the Latin letter).
    const QImage omega = Draw("\\sW", 10, 10, 0, 60, 40);
    const QImage latin = Draw("W", 10, 10, 0, 60, 40);
    EXPECT_NE(omega, latin);
}

TEST(TVxLabel, AutoSizeAndXPositionAnchoring)
{
    QWidget parent;
    parent.resize(400, 300);
    TVxLabel label(&parent);
    label.SetFont(BaseFont());
    label.SetCaption("Voltage \\i U\\-0\\-\\i  / V");
    const TVxCaptionRec rec = Measure(label.Caption());
    EXPECT_EQ(label.TextWidth(), rec.Width);
    EXPECT_EQ(label.width(), rec.Width);
    EXPECT_EQ(label.height(), rec.Bottom - rec.Top);
    EXPECT_EQ(label.sizeHint(), label.size());

    struct Row {
        const char* name;
        TAlignment alignment;
        int left;
    };
    const Row rows[] = {{"left", taLeftJustify, 200},
                        {"right", taRightJustify, 200 - rec.Width},
                        {"centre", taCenter, 200 - rec.Width / 2}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        label.SetAlignment(row.alignment);
        label.SetXPosition(200);
        EXPECT_EQ(label.x(), row.left);
        // Moving the label moves the anchor along under the same rule.
        label.SetBounds(row.left + 7, 10, label.width(), label.height());
        EXPECT_EQ(label.XPosition(), 207);
    }
    // The anchor holds when the text grows.
    label.SetAlignment(taRightJustify);
    label.SetXPosition(300);
    label.SetCaption("a much longer caption");
    EXPECT_EQ(label.x() + label.width(), 300);
    // Also after a plain QWidget::move of the shown label.
    parent.show();
    label.move(100, 40);
    label.SetCaption("short");
    EXPECT_EQ(label.XPosition(), label.x() + label.width());
    EXPECT_EQ(label.x() + label.width(), 100 + Measure("a much longer caption").Width);
}

TEST(TVxLabel, RotatedLabelContainsItsText)
{
    QWidget parent;
    parent.resize(300, 300);
    TVxLabel label(&parent);
    label.SetFont(BaseFont());
    label.SetColor(clYellow);
    label.SetCaption("\\bAmplitude\\b \\iAf\\i\\+2\\+  \\iff\\i");
    const int w = label.width();
    label.SetAngle(900);
    EXPECT_EQ(label.height(), w);
    for (int angle : {900, 450, 1800, -300}) {
        SCOPED_TRACE(angle);
        label.SetAngle(angle);
        label.SetTransparent(true);
        QImage image = WhiteImage(label.width() + 20, label.height() + 20);
        label.render(&image, QPoint(10, 10), QRegion(), QWidget::DrawChildren);
        const QRect ink = InkBounds(image);
        ASSERT_FALSE(ink.isEmpty());
        EXPECT_TRUE(QRect(10, 10, label.width(), label.height()).contains(ink));
    }
    // The published properties reach the same setters.
    EXPECT_TRUE(label.setProperty("Alignment", QVariant::fromValue(taCenter)));
    EXPECT_EQ(label.Alignment(), taCenter);
    EXPECT_TRUE(label.setProperty("Angle", 0));
    EXPECT_EQ(label.height(), Measure(label.Caption()).Bottom - Measure(label.Caption()).Top);
    // Opaque labels fill their rectangle with Color first.
    label.SetTransparent(false);
    QImage image = WhiteImage(label.width(), label.height());
    label.render(&image);
    EXPECT_EQ(image.pixelColor(0, 0), ToQColor(clYellow));
    // With ParentColor a label on a graph takes the graph's colour.
    TVx2DGraph graph;
    graph.SetColor(clAqua);
    TVxLabel onGraph(&graph);
    onGraph.SetCaption("x");
    QImage second = WhiteImage(onGraph.width(), onGraph.height());
    onGraph.render(&second, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_EQ(second.pixelColor(0, 0), ToQColor(clAqua));
}
