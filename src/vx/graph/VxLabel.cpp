#include "vx/graph/VxLabel.h"

#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace vx {

namespace {

// Unicode equivalents of the symbol font's codes 0x20..0xFF (Adobe Symbol encoding);
// 0 marks a code that keeps its own character.
constexpr char16_t kSymbolLow[0x7F - 0x20] = {
    // 0x20 ..
    0, 0, 0x2200, 0, 0x2203, 0, 0, 0x220B, 0, 0, 0x2217, 0, 0, 0x2212, 0, 0,
    // 0x30 .. digits and punctuation, 0x40 congruent
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    // 0x40 @ A B C D E F G H I J K L M N O
    0x2245, 0x0391, 0x0392, 0x03A7, 0x0394, 0x0395, 0x03A6, 0x0393,
    0x0397, 0x0399, 0x03D1, 0x039A, 0x039B, 0x039C, 0x039D, 0x039F,
    // 0x50 P Q R S T U V W X Y Z [ \ ] ^ _
    0x03A0, 0x0398, 0x03A1, 0x03A3, 0x03A4, 0x03A5, 0x03C2, 0x03A9,
    0x039E, 0x03A8, 0x0396, 0, 0x2234, 0, 0x22A5, 0,
    // 0x60 ` a b c d e f g h i j k l m n o
    0x203E, 0x03B1, 0x03B2, 0x03C7, 0x03B4, 0x03B5, 0x03C6, 0x03B3,
    0x03B7, 0x03B9, 0x03D5, 0x03BA, 0x03BB, 0x03BC, 0x03BD, 0x03BF,
    // 0x70 p q r s t u v w x y z { | } ~
    0x03C0, 0x03B8, 0x03C1, 0x03C3, 0x03C4, 0x03C5, 0x03D6, 0x03C9,
    0x03BE, 0x03C8, 0x03B6, 0, 0, 0, 0x223C,
};

constexpr char16_t kSymbolHigh[0x100 - 0xA0] = {
    // 0xA0
    0x20AC, 0x03D2, 0x2032, 0x2264, 0x2044, 0x221E, 0x0192, 0x2663,
    0x2666, 0x2665, 0x2660, 0x2194, 0x2190, 0x2191, 0x2192, 0x2193,
    // 0xB0
    0x00B0, 0x00B1, 0x2033, 0x2265, 0x00D7, 0x221D, 0x2202, 0x2022,
    0x00F7, 0x2260, 0x2261, 0x2248, 0x2026, 0x23D0, 0x23AF, 0x21B5,
    // 0xC0
    0x2135, 0x2111, 0x211C, 0x2118, 0x2297, 0x2295, 0x2205, 0x2229,
    0x222A, 0x2283, 0x2287, 0x2284, 0x2282, 0x2286, 0x2208, 0x2209,
    // 0xD0
    0x2220, 0x2207, 0x00AE, 0x00A9, 0x2122, 0x220F, 0x221A, 0x22C5,
    0x00AC, 0x2227, 0x2228, 0x21D4, 0x21D0, 0x21D1, 0x21D2, 0x21D3,
    // 0xE0
    0x25CA, 0x2329, 0x00AE, 0x00A9, 0x2122, 0x2211, 0x239B, 0x239C,
    0x239D, 0x23A1, 0x23A2, 0x23A3, 0x23A7, 0x23A8, 0x23A9, 0x23AA,
    // 0xF0
    0, 0x232A, 0x222B, 0x2320, 0x23AE, 0x2321, 0x239E, 0x239F,
    0x23A0, 0x23A4, 0x23A5, 0x23A6, 0x23AB, 0x23AC, 0x23AD, 0,
};

constexpr double kPi = 3.14159265358979323846;

// The markup codes in the order they are tried.
enum TMarkupCode { mcSymbol, mcBold, mcItalic, mcUnderline, mcStrikeOut, mcSuper, mcSub, mcBackslash, mcNone };

TMarkupCode CodeOf(QChar c)
{
    switch (c.toLower().unicode()) {
    case 's': return mcSymbol;
    case 'b': return mcBold;
    case 'i': return mcItalic;
    case 'u': return mcUnderline;
    case 'o': return mcStrikeOut;
    case '+': return mcSuper;
    case '-': return mcSub;
    case '\\': return mcBackslash;
    default: return mcNone;
    }
}

// Baseline shifts of super- and subscripts as fractions of the point size in force.
int ScriptShift(int Size, int Numerator)
{
    return static_cast<int>(std::lround(std::abs(Size) * Numerator / 72.0));
}

// Walks the marked-up text once, measuring and optionally drawing every visible character.
// Positions are kept in the text's own unrotated frame (U along the text from X, V down
// from Y) and mapped to the canvas only where a character is drawn.
class TRichPainter {
public:
    TRichPainter(TVxCaptionRec& Rec, TCanvas& Canvas)
        : R(Rec)
        , C(Canvas)
        , FBase(Canvas.Font())
        , FCurrent(Canvas.Font())
    {
        const double rad = Rec.Angle / 10.0 * kPi / 180.0;
        FCos = std::cos(rad);
        FSin = std::sin(rad);
        RotateFont(FCurrent, Rec.Angle);
        FBaseAscent = Metrics(FCurrent).ascent();
        FBaseHeight = Metrics(FCurrent).height();
        R.Top = 0;
        R.Bottom = FBaseHeight;
        FSavedBrush = C.Brush();
    }

    ~TRichPainter()
    {
        C.SetFont(FBase);
        C.SetBrush(FSavedBrush);
    }

    void Execute()
    {
        const QString& text = R.Text;
        int runStart = 0;
        int i = 0;
        while (i < text.size()) {
            if (text[i] != QLatin1Char('\\')) {
                ++i;
                continue;
            }
            Run(runStart, i);
            ++i; // the backslash
            if (i >= text.size()) {
                runStart = i;
                break;
            }
            const TMarkupCode code = CodeOf(text[i]);
            if (code == mcBackslash)
                Run(i, i + 1);
            else if (code != mcNone)
                Apply(code);
            if (code != mcNone) {
                ++i;
                if (i < text.size() && text[i] == QLatin1Char(' '))
                    ++i;
            }
            runStart = i;
        }
        Run(runStart, text.size());
        RecordState(FVisible);
    }

private:
    const QFontMetrics& Metrics(const TFont& Font)
    {
        C.SetFont(Font);
        return C.FontMetrics();
    }

    void Apply(TMarkupCode Code)
    {
        switch (Code) {
        case mcSymbol: FSymbol = !FSymbol; break;
        case mcBold: Toggle(fsBold); break;
        case mcItalic: Toggle(fsItalic); break;
        case mcUnderline: Toggle(fsUnderline); break;
        case mcStrikeOut: Toggle(fsStrikeOut); break;
        case mcSuper:
            FSuper = !FSuper;
            Script(FSuper, 34, -1);
            break;
        case mcSub:
            FSub = !FSub;
            Script(FSub, 11, +1);
            break;
        default: break;
        }
    }

    void Toggle(TFontStyle Style)
    {
        TFontStyles s = FCurrent.Style();
        s.Set(Style, !s.Contains(Style));
        FCurrent.SetStyle(s);
    }

    // A script switched on shifts the baseline by the fraction of the size in force and
    // then shrinks the font to 2/3; switched off it restores the size first and shifts
    // back by the fraction of the restored size. Direction: -1 up, +1 down.
    void Script(bool On, int Numerator, int Direction)
    {
        if (On) {
            FShift += Direction * ScriptShift(FCurrent.Size(), Numerator);
            ++FScriptDepth;
        } else {
            --FScriptDepth;
        }
        FCurrent.SetSize(ScriptSize());
        if (!On)
            FShift -= Direction * ScriptShift(FCurrent.Size(), Numerator);
    }

    // The base size shrunk to 2/3 once per active script.
    int ScriptSize() const
    {
        int size = FBase.Size();
        for (int k = 0; k < FScriptDepth; ++k)
            size = size * 2 / 3;
        return size;
    }

    void RecordState(int Index)
    {
        const TFontStyles s = FCurrent.Style();
        R.Bold[Index] = s.Contains(fsBold);
        R.Italic[Index] = s.Contains(fsItalic);
        R.Underline[Index] = s.Contains(fsUnderline);
        R.StrikeOut[Index] = s.Contains(fsStrikeOut);
        R.SubScript[Index] = FSub;
        R.SuperScript[Index] = FSuper;
        R.SymbolFont[Index] = FSymbol;
    }

    bool Selected(int Index) const
    {
        return R.ShowSelection && Index >= R.SelStart && Index < R.SelStop;
    }

    // Measures and draws Text[From, To) in the current font.
    void Run(int From, int To)
    {
        if (From >= To)
            return;
        const QFontMetrics fm = Metrics(FCurrent);
        const int ascent = fm.ascent();
        const int height = fm.height();
        const int v = FBaseAscent + FShift - ascent;
        R.Top = std::min(R.Top, v);
        R.Bottom = std::max(R.Bottom, v + height);
        int i = From;
        while (i < To) {
            int n = 1;
            if (R.Text[i].isHighSurrogate() && i + 1 < To && R.Text[i + 1].isLowSurrogate())
                n = 2;
            const QString source = R.Text.mid(i, n);
            const QString glyph = FSymbol ? SymbolToUnicode(source) : source;
            R.Stripped += source;
            const int w = C.TextWidth(glyph);
            const QRect ink = fm.boundingRect(glyph);
            if (!ink.isEmpty()) {
                R.Left = std::min(R.Left, R.Width + ink.left());
                R.Right = std::max(R.Right, R.Width + ink.right() + 1);
            }
            if (R.Paint)
                Draw(glyph, v);
            RecordState(FVisible);
            R.Width += w;
            R.Right = std::max(R.Right, R.Width);
            R.CharX[FVisible] = R.Width;
            R.CharSource[FVisible] = i;
            ++FVisible;
            i += n;
        }
    }

    void Draw(const QString& Glyph, int V)
    {
        const int u = R.Width;
        const int x = R.X + static_cast<int>(std::lround(u * FCos + V * FSin));
        const int y = R.Y + static_cast<int>(std::lround(-u * FSin + V * FCos));
        TFont font = FCurrent;
        if (Selected(FVisible)) {
            font.SetColor(clHighlightText);
            C.Brush().SetColor(clHighlight);
            C.Brush().SetStyle(bsSolid);
        } else {
            font.SetColor(FBase.Color());
            C.SetBrush(FSavedBrush);
        }
        C.SetFont(font);
        C.TextOut(x, y, Glyph);
    }

    TVxCaptionRec& R;
    TCanvas& C;
    TFont FBase;
    TFont FCurrent;
    TBrush FSavedBrush;
    double FCos = 1.0;
    double FSin = 0.0;
    int FBaseAscent = 0;
    int FBaseHeight = 0;
    int FShift = 0;       // baseline offset of the scripts, pixels down
    int FScriptDepth = 0; // active super- and subscripts
    int FVisible = 0;     // visible characters so far
    bool FSymbol = false;
    bool FSuper = false;
    bool FSub = false;
};

void ResetOutputs(TVxCaptionRec& Rec)
{
    const std::size_t n = static_cast<std::size_t>(Rec.Text.size()) + 1;
    Rec.Width = 0;
    Rec.Stripped.clear();
    Rec.Top = 0;
    Rec.Bottom = 0;
    Rec.Left = 0;
    Rec.Right = 0;
    Rec.CharX.assign(n, 0);
    Rec.CharSource.assign(n, 0);
    for (TVxBooleanArray* a : {&Rec.Bold, &Rec.Italic, &Rec.Underline, &Rec.StrikeOut,
                               &Rec.SubScript, &Rec.SuperScript, &Rec.SymbolFont})
        a->assign(n, false);
}

} // namespace

void RotateFont(TFont& Font, int Angle)
{
    Font.SetOrientation(Angle);
}

QChar SymbolToUnicode(QChar Code)
{
    const char16_t c = Code.unicode();
    char16_t mapped = 0;
    if (c >= 0x20 && c < 0x7F)
        mapped = kSymbolLow[c - 0x20];
    else if (c >= 0xA0 && c <= 0xFF)
        mapped = kSymbolHigh[c - 0xA0];
    return mapped ? QChar(mapped) : Code;
}

QString SymbolToUnicode(const QString& Text)
{
    QString result = Text;
    for (QChar& c : result)
        c = SymbolToUnicode(c);
    return result;
}

void RichPaintTo(TVxCaptionRec& Rec)
{
    ResetOutputs(Rec);
    if (!Rec.Canvas)
        return;
    TRichPainter painter(Rec, *Rec.Canvas);
    painter.Execute();
}

QString GetStrippedString(const QString& Text)
{
    TCanvas canvas(static_cast<QPainter*>(nullptr));
    TVxCaptionRec rec;
    rec.Text = Text;
    rec.Canvas = &canvas;
    RichPaintTo(rec);
    return rec.Stripped;
}

// ---------------------------------------------------------------------------------
// TVxCustomLabel

TVxCustomLabel::TVxCustomLabel(QWidget* parent)
    : QWidget(parent)
    , FColor(clBtnFace)
    , FFont(std::make_unique<TFont>())
{
    if (parent)
        FFont->SetFromQFont(parent->font());
    FFont->SetOnChange([this] { FontChanged(); });
    AdjustBounds();
}

TVxCustomLabel::~TVxCustomLabel() = default;

void TVxCustomLabel::SetCaption(const TVxCaption& value)
{
    if (FCaption == value)
        return;
    FCaption = value;
    AdjustBounds();
    update();
}

void TVxCustomLabel::SetAngle(int value)
{
    if (FAngle == value)
        return;
    FAngle = value;
    AdjustBounds();
    update();
}

void TVxCustomLabel::SetAlignment(TAlignment value)
{
    if (FAlignment == value)
        return;
    FAlignment = value;
    ApplyXPosition();
    update();
}

void TVxCustomLabel::SetXPosition(int value)
{
    FXPosition = value;
    ApplyXPosition();
}

void TVxCustomLabel::SetAutoSize(bool value)
{
    if (FAutoSize == value)
        return;
    FAutoSize = value;
    AdjustBounds();
}

void TVxCustomLabel::SetTransparent(bool value)
{
    if (FTransparent == value)
        return;
    FTransparent = value;
    update();
}

void TVxCustomLabel::SetColor(TColor value)
{
    if (FColor == value && !FParentColor)
        return;
    FColor = value;
    FParentColor = false;
    update();
}

void TVxCustomLabel::SetParentColor(bool value)
{
    if (FParentColor == value)
        return;
    FParentColor = value;
    update();
}

TColor TVxCustomLabel::ParentBackground() const
{
    const QWidget* parent = parentWidget();
    if (const auto* graph = qobject_cast<const TVx2DGraph*>(parent))
        return graph->Color();
    return FromQColor((parent ? parent : this)->palette().color(QPalette::Window));
}

void TVxCustomLabel::SetFont(const TFont& value)
{
    FFont->Assign(value);
}

void TVxCustomLabel::FontChanged()
{
    AdjustBounds();
    update();
}

int TVxCustomLabel::AnchorOffset() const
{
    switch (FAlignment) {
    case taRightJustify: return FTextWidth;
    case taCenter: return FTextWidth / 2;
    default: return 0;
    }
}

void TVxCustomLabel::ApplyXPosition()
{
    if (FAngle != 0)
        return;
    FPlacing = true;
    move(FXPosition - AnchorOffset(), y());
    FPlacing = false;
}

void TVxCustomLabel::SetBounds(int ALeft, int ATop, int AWidth, int AHeight)
{
    setGeometry(ALeft, ATop, std::max(0, AWidth), std::max(0, AHeight));
    if (!FPlacing && FAngle == 0)
        FXPosition = ALeft + AnchorOffset();
}

void TVxCustomLabel::AdjustBounds()
{
    TCanvas canvas(static_cast<QPainter*>(nullptr));
    canvas.SetFont(*FFont);
    TVxCaptionRec rec;
    rec.Text = FCaption;
    rec.Canvas = &canvas;
    rec.Angle = FAngle;
    RichPaintTo(rec);
    FTextWidth = rec.Width;

    // Bounding box of the rotated text rectangle (Left, Top)-(Right, Bottom) around the
    // start point, in widget pixels (y down, angle counter-clockwise).
    const double rad = FAngle / 10.0 * kPi / 180.0;
    const double c = std::cos(rad);
    const double s = std::sin(rad);
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    bool first = true;
    for (double u : {double(rec.Left), double(rec.Right)}) {
        for (double v : {double(rec.Top), double(rec.Bottom)}) {
            const double x = u * c + v * s;
            const double y = -u * s + v * c;
            if (first) {
                minX = maxX = x;
                minY = maxY = y;
                first = false;
            } else {
                minX = std::min(minX, x);
                maxX = std::max(maxX, x);
                minY = std::min(minY, y);
                maxY = std::max(maxY, y);
            }
        }
    }
    const int left = static_cast<int>(std::floor(minX + 1e-9));
    const int top = static_cast<int>(std::floor(minY + 1e-9));
    FTextOrigin = QPoint(-left, -top);
    FTextBox = QSize(static_cast<int>(std::ceil(maxX - 1e-9)) - left,
                     static_cast<int>(std::ceil(maxY - 1e-9)) - top);
    updateGeometry();
    if (!FAutoSize)
        return;
    FPlacing = true;
    resize(FTextBox);
    FPlacing = false;
    ApplyXPosition();
}

QSize TVxCustomLabel::sizeHint() const
{
    return FTextBox;
}

void TVxCustomLabel::Loaded()
{
    AdjustBounds();
}

void TVxCustomLabel::Paint(TCanvas& Canvas)
{
    if (!FTransparent) {
        Canvas.Brush().SetColor(FParentColor ? ParentBackground() : FColor);
        Canvas.Brush().SetStyle(bsSolid);
        Canvas.FillRect(rect());
    }
    Canvas.Brush().SetStyle(bsClear);
    Canvas.SetFont(*FFont);
    TVxCaptionRec rec;
    rec.Text = FCaption;
    rec.Canvas = &Canvas;
    rec.X = FTextOrigin.x();
    rec.Y = FTextOrigin.y();
    rec.Angle = FAngle;
    rec.Paint = true;
    RichPaintTo(rec);
}

void TVxCustomLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    TCanvas canvas(&painter);
    Paint(canvas);
}

void TVxCustomLabel::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (!FPlacing && FAngle == 0)
        FXPosition = x() + AnchorOffset();
}

// ---------------------------------------------------------------------------------
// TVxLabel

TVxLabel::TVxLabel(QWidget* parent)
    : TVxCustomLabel(parent)
{
}

} // namespace vx
