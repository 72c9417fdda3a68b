#pragma once
// Caption markup and the label widgets that show it.
//
// Every caption of the library (axis captions, tick labels, legend entries, titles,
// labels) may carry inline codes introduced by a backslash; codes are case-insensitive
// and each one toggles its attribute:
//   \s symbol font   \b bold   \i italic   \u underline   \o strikeout
//   \+ superscript   \- subscript   \\ a literal backslash
// One blank directly after a code is swallowed ("10\+ 3" equals "10\+3"); a backslash
// followed by anything else is dropped. Symbol-font text is drawn with the current font:
// its character codes (Adobe Symbol encoding, 'a' = alpha, 0xB1 = plus-minus ...) are
// mapped to the Unicode characters they stand for.

#include "vx/core/VxConsts.h"
#include "vx/platform/VxGraphics.h"

#include <QChar>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QWidget>
#include <memory>

namespace vx {

class TCanvas;

// What RichPaintTo measures and draws. Inputs: Text, Canvas (its Font is the base font),
// X/Y (top-left of the first character in the base font), Angle (tenths of a degree,
// counter-clockwise), SelStart/SelStop, Paint, ShowSelection. Everything else is output;
// the arrays are resized to Text.size() + 1 by every call.
struct TVxCaptionRec {
    QString Text;
    TCanvas* Canvas = nullptr;
    int X = 0;
    int Y = 0;
    int Angle = 0;
    int Width = 0;            // advance of the whole text in pixels
    int SelStart = -1;        // characters [SelStart, SelStop) drawn highlighted
    int SelStop = -1;
    bool Paint = false;       // false: only measure
    bool ShowSelection = false;
    QString Stripped;         // the text without markup
    TVxIntegerArray CharX;    // per visible character: advance up to and including it
    TVxIntegerArray CharSource; // per visible character: its index in Text
    // Attribute states per caret position (visible character index; the entry after the
    // last character holds the state at the end of the text).
    TVxBooleanArray Bold;
    TVxBooleanArray Italic;
    TVxBooleanArray Underline;
    TVxBooleanArray StrikeOut;
    TVxBooleanArray SubScript;
    TVxBooleanArray SuperScript;
    TVxBooleanArray SymbolFont;
    // Extent of the unrotated text relative to (X, Y): Top <= 0 when superscripts rise
    // above the base line's top, Bottom >= the base font's text height; Left <= 0 and
    // Right >= Width where glyphs (italics) reach beyond the advance.
    int Top = 0;
    int Bottom = 0;
    int Left = 0;
    int Right = 0;
};

// Measures Rec.Text and, when Rec.Paint is set, draws it on Rec.Canvas. Restores the
// canvas font afterwards. Without a canvas nothing is measured or drawn.
void RichPaintTo(TVxCaptionRec& Rec);

// Turns Font by Angle (tenths of a degree, counter-clockwise): text written with it runs
// in that direction from its start point.
void RotateFont(TFont& Font, int Angle);

// The caption text without its markup codes.
QString GetStrippedString(const QString& Text);

// The Unicode character a symbol-font character code stands for (the code itself when it
// has no symbol meaning).
QChar SymbolToUnicode(QChar Code);
// The whole text mapped with SymbolToUnicode.
QString SymbolToUnicode(const QString& Text);

// A label showing a marked-up caption, optionally rotated. With AutoSize (default) the
// widget's size follows the text's rotated bounding box; for Angle 0 the widget's
// left edge follows XPosition according to Alignment.
class TVxCustomLabel : public QWidget {
    Q_OBJECT
public:
    explicit TVxCustomLabel(QWidget* parent = nullptr);
    ~TVxCustomLabel() override;

    // The marked-up text.
    TVxCaption Caption() const { return FCaption; }
    void SetCaption(const TVxCaption& value);
    // Rotation in tenths of a degree, counter-clockwise.
    int Angle() const { return FAngle; }
    void SetAngle(int value);
    // Which edge XPosition anchors (Angle 0 only).
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value);
    // Anchor x in the parent's coordinates.
    int XPosition() const { return FXPosition; }
    void SetXPosition(int value);
    // Bounds follow the text (default true).
    bool AutoSize() const { return FAutoSize; }
    void SetAutoSize(bool value);
    // When false (default) the client rectangle is filled with Color before the text.
    bool Transparent() const { return FTransparent; }
    void SetTransparent(bool value);
    // Background colour; setting it clears ParentColor.
    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    // When true (default) the background is the parent's: a graph's Color, else the
    // parent widget's window colour.
    bool ParentColor() const { return FParentColor; }
    void SetParentColor(bool value);
    // The base font of the caption; changing it re-measures the label.
    TFont& Font() { return *FFont; }
    const TFont& Font() const { return *FFont; }
    void SetFont(const TFont& value);

    // Moves and sizes the widget; keeps XPosition consistent with the new left edge.
    virtual void SetBounds(int ALeft, int ATop, int AWidth, int AHeight);
    // Re-measures the text and, with AutoSize, resizes the widget to it.
    virtual void AdjustBounds();
    // Call after a batch of property changes made while loading.
    virtual void Loaded();

    // Advance of the caption in pixels as last measured.
    int TextWidth() const { return FTextWidth; }
    // Where the first character's top-left lies inside the widget.
    QPoint TextOrigin() const { return FTextOrigin; }

    // Draws the label on a canvas whose origin is the widget's top-left.
    virtual void Paint(TCanvas& Canvas);

    // The size of the (rotated) text box, for layouts.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    // Keeps XPosition on the left edge's anchor when the widget is moved directly.
    void moveEvent(QMoveEvent* event) override;

private:
    void ApplyXPosition();
    TColor ParentBackground() const;
    int AnchorOffset() const;
    void FontChanged();

    TVxCaption FCaption;
    int FAngle = 0;
    TAlignment FAlignment = taLeftJustify;
    int FXPosition = 0;
    bool FAutoSize = true;
    bool FTransparent = false;
    bool FParentColor = true;
    TColor FColor;
    std::unique_ptr<TFont> FFont;
    int FTextWidth = 0;
    QPoint FTextOrigin;
    QSize FTextBox;
    bool FPlacing = false;
};

// The label component with its properties published.
class TVxLabel : public TVxCustomLabel {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int Angle READ Angle WRITE SetAngle)
    Q_PROPERTY(vx::TAlignment Alignment READ Alignment WRITE SetAlignment)
    Q_PROPERTY(int XPosition READ XPosition WRITE SetXPosition)
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)
    Q_PROPERTY(bool Transparent READ Transparent WRITE SetTransparent)
    Q_PROPERTY(int Color READ Color WRITE SetColor)
    Q_PROPERTY(bool ParentColor READ ParentColor WRITE SetParentColor)
public:
    explicit TVxLabel(QWidget* parent = nullptr);
};

} // namespace vx
