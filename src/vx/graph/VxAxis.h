#pragma once
// The axis of a graph: its numeric side (range following the data, rounded ends,
// tick and label tables, value <-> pixel mapping, master/slave coupling, zoom history)
// and its drawing side (line, ticks, labels, caption, the space it claims in the graph).
//
// The arithmetic is kept free of widgets: CalculateAxisEnds and CalculateAxisTicks are
// pure functions over small value types, and TVxAxisMap is the cheap 1-D transform that
// turns values into pixels once the axis length is known. TVxAxis holds the state,
// the widget and the settings around them.
//
// Logarithmic mapping: with LogStart = log10(Start) and Scale in decades per pixel,
// value v lies at d = Round((log10 v - LogStart) / Scale) pixels from the axis start.

#include "vx/core/VxConsts.h"
#include "vx/platform/VxGraphics.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <array>
#include <memory>
#include <vector>

namespace vx {

class TRange;
class TRangeList;
class TCanvas;
class TVxIniList;
class TVx2DGraph;

// The enumerations keep int storage: settings files hold their ordinals, and a value read
// from outside the ordinals must stay representable (the mapping rejects it).
enum TVxAxisPos : int { AxBottomPos, AxLeftPos, AxTopPos, AxRightPos, AxFreeFloating };
enum TVxAxScaling : int { AxNormal, AxLog, AxLogEE };
enum TVxAxEnd : int { AxAutoRange, AxFirstSet, AxFixed };

// The four step tables, indexed 1..10 by the rounded mantissa k of the range width
// (entry 0 is unused).
struct TVxAxisStepTables {
    std::array<double, 11> RoundField{};
    std::array<double, 11> TickField{};
    std::array<double, 11> MajorTickField{};
    std::array<double, 11> LabelsField{};
    bool operator==(const TVxAxisStepTables& o) const;
    bool operator!=(const TVxAxisStepTables& o) const { return !(*this == o); }
};

// The built-in tables.
TVxAxisStepTables DefaultAxisStepTables();
// The tables in force for every axis of the process.
const TVxAxisStepTables& AxisStepTables();
void SetAxisStepTables(const TVxAxisStepTables& tables);
// Replaces the tables from the user settings file (section "GraphScale", keys
// "RoundField", "TickField", "MajorTickField", "LabelsField"). Called by the host, once.
void InitFields();

// Options of one axis that steer its scaling (inputs only).
struct TVxAxisScaleOptions {
    TVxAxScaling Scaling = AxNormal;
    TVxAxEnd StartEnd = AxAutoRange;
    TVxAxEnd StopEnd = AxAutoRange;
    bool AutoTicks = true;
    bool Twisted = false;
    bool ShowScaleLabels = true;
    int MinExpForScaleExp = -2;
    int MaxExpForScaleExp = 3;
    bool operator==(const TVxAxisScaleOptions& o) const;
    bool operator!=(const TVxAxisScaleOptions& o) const { return !(*this == o); }
};

// The scaling state of an axis: its ends, tick parts and the exponents derived from them.
struct TVxAxisScale {
    double Start = 0.0;
    double Stop = 100.0;
    double TickPart = 0.05;
    double MajorTickPart = 0.1;
    double LabelPart = 0.5;
    double LogStart = 0.0;
    double LogStop = 2.0;
    int RangeExponent = 2;
    int ValueExponent = 0;
    int LabelDigits = 0;
    bool ScaleExponent = false;
    bool RangeDefaulted = false;
    bool operator==(const TVxAxisScale& o) const;
    bool operator!=(const TVxAxisScale& o) const { return !(*this == o); }
};

// Rounds the ends outward and chooses the tick parts (pure; parts given in `scale`
// are kept unless AutoTicks or the logarithmic rules replace them).
TVxAxisScale CalculateAxisEnds(const TVxAxisScale& scale, const TVxAxisScaleOptions& options);

// One tick label before placement: the tick it belongs to and its marked-up text.
struct TVxAxisTickLabel {
    int TickIndex = 0;
    double Value = 0.0;
    QString Text;
    bool operator==(const TVxAxisTickLabel& o) const;
    bool operator!=(const TVxAxisTickLabel& o) const { return !(*this == o); }
};

// The tick division of an axis: which ticks exist, which are major, the label texts
// and the common power-of-ten label. Pixel positions come from TVxAxisMap.
struct TVxAxisTicks {
    TVxAxScaling Scaling = AxNormal;
    int TickCount = 0;          // linear: intervals + 1; logarithmic: number of decades
    int SubTicks = 0;           // logarithmic: ticks per decade (9)
    std::vector<bool> TickIsMajor;
    std::vector<TVxAxisTickLabel> Labels;
    QString ExponentLabel;      // "·10\+" + ValueExponent, empty when not shown
    // Tick parts in force after the division (a division with fewer than 2 or more than
    // 10001 ticks takes the table parts instead).
    double TickPart = 0.0;
    double MajorTickPart = 0.0;
    double LabelPart = 0.0;
    int Size() const { return int(TickIsMajor.size()); }
    bool operator==(const TVxAxisTicks& o) const;
    bool operator!=(const TVxAxisTicks& o) const { return !(*this == o); }
};

// Builds the tick division of a scaled axis (pure). `omitZeroLabel` leaves out a label
// that reads 0 (axes crossing at the origin).
TVxAxisTicks CalculateAxisTicks(const TVxAxisScale& scale, const TVxAxisScaleOptions& options,
                                bool omitZeroLabel = false);

// Linear label text of `value` under `scale` (mantissa only when ScaleExponent).
QString LinearAxisLabelText(double value, const TVxAxisScale& scale);

// Value <-> pixel transform of one axis, computed once per layout. Pixels are offsets
// from the line's left or top end (so a vertical axis that grows upward maps Start to
// AxisLength and Stop to 0).
class TVxAxisMap {
public:
    TVxAxisMap() = default;
    TVxAxisMap(const TVxAxisScale& scale, TVxAxScaling scaling, int axisLength, bool vertical,
               bool twisted);
    // Raises EConvertError "Axis scaling not supportet" for an unknown scaling.
    int RealToIntPosition(double value) const;
    double IntToRealPosition(int pixel) const;
    // Pixel offset of every tick of `ticks` as stored in TickPositions.
    std::vector<int> TickPositions(const TVxAxisTicks& ticks) const;
    // Screen offset of the tick stored at `storedPosition` (linear ticks of vertical axes
    // are stored from the start value upward and drawn from the line's top).
    int TickScreenOffset(int storedPosition) const;
    bool Forward() const { return FForward; }
    double Scale() const { return FScale; }
    int AxisLength() const { return FAxisLength; }
    bool operator==(const TVxAxisMap& o) const;

private:
    TVxAxScaling FScaling = AxNormal;
    double FStart = 0.0;
    double FStop = 100.0;
    double FLogStart = 0.0;
    double FLogStop = 2.0;
    double FScale = 1.0;
    int FAxisLength = 0;
    bool FVertical = true;
    bool FForward = false;
};

// A placed tick label: text and top-left point inside the axis control.
struct TVxAxisPlacedLabel {
    QString Text;
    QPoint Pos;
    int Width = 0;
    int Height = 0;
};

// An axis of a TVx2DGraph (a child widget of the graph). Series register their data
// ranges here and convert values to pixels through RealToIntPosition.
//
// Geometry: the graph stacks axes outward from the data area on their side (the primary
// axis nearest), labels on the side away from the data. Tick lengths are screen-directed:
// positive lengths point toward +x (vertical axes) or +y (horizontal axes), so they point
// outward on bottom and right axes and into the data on top and left ones (a new primary
// y axis therefore gets negative lengths). Free-floating axes are vertical, keep their x
// and follow the data area vertically; axes without AutoSize keep their bounds.
// Changes made to an axis inside a graph repaint through the graph's Modified.
class TVxAxis : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double Start READ Start WRITE SetStart)
    Q_PROPERTY(double Stop READ Stop WRITE SetStop)
    Q_PROPERTY(bool AutoTicks READ AutoTicks WRITE SetAutoTicks)
    Q_PROPERTY(double TickPart READ TickPart WRITE SetTickPart)
    Q_PROPERTY(double MajorTickPart READ MajorTickPart WRITE SetMajorTickPart)
    Q_PROPERTY(double LabelPart READ LabelPart WRITE SetLabelPart)
    Q_PROPERTY(int MaxExpForScaleExp READ MaxExpForScaleExp WRITE SetMaxExpForScaleExp)
    Q_PROPERTY(int MinExpForScaleExp READ MinExpForScaleExp WRITE SetMinExpForScaleExp)
    Q_PROPERTY(bool Twisted READ Twisted WRITE SetTwisted)
    Q_PROPERTY(bool IsSlaveAxis READ IsSlaveAxis WRITE SetIsSlaveAxis)
    Q_PROPERTY(bool ShowCaption READ ShowCaption WRITE SetShowCaption)
    Q_PROPERTY(bool ShowScaleLabels READ ShowScaleLabels WRITE SetShowScaleLabels)
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)
    Q_PROPERTY(bool Transparent READ Transparent WRITE SetTransparent)
    Q_PROPERTY(int BorderCaptionGap READ BorderCaptionGap WRITE SetBorderCaptionGap)
    Q_PROPERTY(int CaptionScalingsGap READ CaptionScalingsGap WRITE SetCaptionScalingsGap)
    Q_PROPERTY(int ScalingsTicksGap READ ScalingsTicksGap WRITE SetScalingsTicksGap)
    Q_PROPERTY(int ExponentScalingsGap READ ExponentScalingsGap WRITE SetExponentScalingsGap)
    Q_PROPERTY(int ValuesTicksGap READ ValuesTicksGap WRITE SetValuesTicksGap)
    Q_PROPERTY(int MajorTickLength READ MajorTickLength WRITE SetMajorTickLength)
    Q_PROPERTY(int TickLength READ TickLength WRITE SetTickLength)
    Q_PROPERTY(int AxisThicknes READ AxisThicknes WRITE SetAxisThicknes)
    Q_PROPERTY(int TickThicknes READ TickThicknes WRITE SetTickThicknes)
    Q_PROPERTY(int MajorTickThicknes READ MajorTickThicknes WRITE SetMajorTickThicknes)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)

public:
    explicit TVxAxis(QWidget* parent = nullptr);
    ~TVxAxis() override;

    // --- scaling ---
    TVxAxScaling Scaling() const { return FOptions.Scaling; }
    void SetScaling(TVxAxScaling value);
    // How each end follows the data. Switching an end away from AxFixed applies the
    // data's range to the axis at once (AxAutoRange takes it, AxFirstSet widens to it).
    TVxAxEnd StartEnd() const { return FOptions.StartEnd; }
    void SetStartEnd(TVxAxEnd value);
    TVxAxEnd StopEnd() const { return FOptions.StopEnd; }
    void SetStopEnd(TVxAxEnd value);
    double Start() const;
    void SetStart(double value);
    double Stop() const;
    void SetStop(double value);
    // Turning AutoTicks on rounds the ends at once.
    bool AutoTicks() const { return FOptions.AutoTicks; }
    void SetAutoTicks(bool value);
    // Tick steps in units of 10^RangeExponent; ignored while AutoTicks is on.
    double TickPart() const { return FScale.TickPart; }
    void SetTickPart(double value);
    double MajorTickPart() const { return FScale.MajorTickPart; }
    void SetMajorTickPart(double value);
    double LabelPart() const { return FScale.LabelPart; }
    void SetLabelPart(double value);
    // True when AutoTicks is off (the three parts are then worth storing).
    bool IsNotAutoTicks() const { return !FOptions.AutoTicks; }
    int MaxExpForScaleExp() const { return FOptions.MaxExpForScaleExp; }
    void SetMaxExpForScaleExp(int value);
    int MinExpForScaleExp() const { return FOptions.MinExpForScaleExp; }
    void SetMinExpForScaleExp(int value);
    // Reverses the direction of the axis.
    bool Twisted() const { return FOptions.Twisted; }
    void SetTwisted(bool value);
    // Setting the position also decides Vertical (free-floating axes are vertical).
    TVxAxisPos Position() const { return FPosition; }
    void SetPosition(TVxAxisPos value);
    bool IsSlaveAxis() const { return FIsSlaveAxis; }
    void SetIsSlaveAxis(bool value);
    // A slave shows its master's range; masters of the other orientation, slaves and
    // the axis itself are ignored.
    TVxAxis* MasterAxis() const { return FMasterAxis; }
    void SetMasterAxis(TVxAxis* axis);

    // The displayed range and the union of the registered data ranges (owned).
    TRange& Range() const { return *FRange; }
    void SetRange(const TRange& range);
    TRange& ValuesRange() const { return *FValuesRange; }
    void SetValuesRange(const TRange& range);
    // Data ranges registered by series (not owned).
    TRangeList& ValueRanges() const { return *FValueRanges; }

    // Value <-> pixel offset from the axis start.
    int RealToIntPosition(double value) const;
    double IntToRealPosition(int pixel) const;

    // Rounds the ends outward. A range still as the last rounding left it is rounded from
    // that rounding's input again, so that laying the graph out once more never widens it.
    void CalculateEnds();
    void CalculateTicks();
    // The graph-wide pass: scales every visible axis of the parent graph, then lays out
    // axes, legends and the drawing world.
    void Calculate();
    // Change notice of a registered data range.
    void ValuesRangeChanged(TRange* sender = nullptr);
    void RedoRanges();
    void ZoomIn(double newStart, double newStop);
    void ZoomBack();
    bool CanZoomBack() const { return !FZoomHistory.empty(); }
    int ZoomIndex() const { return FZoomIndex; }
    int ZoomCount() const { return int(FZoomHistory.size()); }
    void Modified();

    // --- read-only state of the last calculation ---
    bool Vertical() const { return FVertical; }
    const TVxAxisScale& ScaleState() const { return FScale; }
    const TVxAxisScaleOptions& ScaleOptions() const { return FOptions; }
    const TVxAxisTicks& Ticks() const { return FTicks; }
    const TVxAxisMap& Map() const { return FMap; }
    double Scale() const { return FMap.Scale(); }
    int AxisLength() const { return FAxisLength; }
    void SetAxisLength(int value);
    int RangeExponent() const { return FScale.RangeExponent; }
    int ValueExponent() const { return FScale.ValueExponent; }
    int LabelDigits() const { return FScale.LabelDigits; }
    bool ScaleExponent() const { return FScale.ScaleExponent; }
    bool RangeDefaulted() const { return FScale.RangeDefaulted; }
    bool LayoutChanged() const { return FLayoutChanged; }
    bool TicksChanged() const { return FTicksChanged; }
    int TickCount() const { return FTicks.TickCount; }
    const TVxIntegerArray& TickPositions() const { return FTickPositions; }
    const TVxBooleanArray& TickIsMajor() const { return FTicks.TickIsMajor; }
    // Screen offset of tick i from the line origin.
    int TickScreenOffset(int i) const;
    const std::vector<TVxAxisPlacedLabel>& LabelList() const { return FLabels; }
    int LineX() const { return FLineX; }
    int LineY() const { return FLineY; }
    bool DrawFirstTick() const { return FDrawFirstTick; }
    bool DrawLastTick() const { return FDrawLastTick; }

    // --- drawing ---
    bool ShowCaption() const { return FShowCaption; }
    void SetShowCaption(bool value);
    bool ShowScaleLabels() const { return FOptions.ShowScaleLabels; }
    void SetShowScaleLabels(bool value);
    bool AutoSize() const { return FAutoSize; }
    void SetAutoSize(bool value);
    bool Transparent() const { return FTransparent; }
    void SetTransparent(bool value);
    int BorderCaptionGap() const { return FBorderCaptionGap; }
    void SetBorderCaptionGap(int value);
    int CaptionScalingsGap() const { return FCaptionScalingsGap; }
    void SetCaptionScalingsGap(int value);
    int ScalingsTicksGap() const { return FScalingsTicksGap; }
    void SetScalingsTicksGap(int value);
    int ExponentScalingsGap() const { return FExponentScalingsGap; }
    void SetExponentScalingsGap(int value);
    int ValuesTicksGap() const { return FValuesTicksGap; }
    void SetValuesTicksGap(int value);
    // Pixels; a value below 1 turns the ticks to the other side of the line.
    int MajorTickLength() const { return FMajorTickLength; }
    void SetMajorTickLength(int value);
    int TickLength() const { return FTickLength; }
    void SetTickLength(int value);
    // Font of tick labels (and of the power-of-ten label).
    TFont& Font() const { return *FFont; }
    void SetFont(const TFont& font);
    // Font of the caption.
    TFont& CaptionFont() const { return *FCaptionFont; }
    void SetCaptionFont(const TFont& font);
    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    TColor AxisColor() const { return FAxisColor; }
    void SetAxisColor(TColor value);
    TColor TickColor() const { return FTickColor; }
    void SetTickColor(TColor value);
    TColor MajorTickColor() const { return FMajorTickColor; }
    void SetMajorTickColor(TColor value);
    int AxisThicknes() const { return FAxisThicknes; }
    void SetAxisThicknes(int value);
    int TickThicknes() const { return FTickThicknes; }
    void SetTickThicknes(int value);
    int MajorTickThicknes() const { return FMajorTickThicknes; }
    void SetMajorTickThicknes(int value);

    // The shown caption: UserCaption when DoUserCaption, else AutoCaption.
    QString Caption() const { return FCaption; }
    void SetCaption(const QString& value);
    bool DoUserCaption() const { return FDoUserCaption; }
    void SetDoUserCaption(bool value);
    QString UserCaption() const { return FUserCaption; }
    void SetUserCaption(const QString& value);
    // The caption proposed by series and master axes.
    QString AutoCaption() const { return FAutoCaption; }
    void SetAutoCaption(const QString& value);

    // Space the axis claims across its line (height for horizontal axes, width for
    // vertical ones), from the current labels and fonts.
    int Thickness() const;
    // Pixels the control reaches beyond the line on the side facing the data.
    int InnerThickness() const;
    // Pixels the control reaches beyond the line ends (before: left/top end; after:
    // right/bottom end), for the labels centred on the end ticks.
    int OverhangBefore() const;
    int OverhangAfter() const;
    // Places the axis control so that its line starts at `lineStart` (parent pixels: the
    // left end of a horizontal line, the top end of a vertical one) and runs `axisLength`
    // pixels. Used by the graph layout.
    void PlaceLine(QPoint lineStart, int axisLength);

    // Persistence through the settings list.
    void SaveOutfit(const QString& section, TVxIniList& ini) const;
    void LoadOutfit(const QString& section, TVxIniList& ini);

    // The graph this axis belongs to (its parent), or null.
    TVx2DGraph* Graph() const;

    // Paints the axis on `canvas` (origin at the control's top-left).
    void PaintTo(TCanvas& canvas) const;
    // The component's visibility: not explicitly hidden. An axis without a parent that was
    // never shown counts as visible, so it computes ticks and maps values on its own.
    bool Visible() const;
    // Mirrors visibility into the layout of the graph.
    void setVisible(bool visible) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct TMeasuredText {
        QString Text;
        int Width = 0;
        int Top = 0;
        int Bottom = 0;
        int Height() const { return Bottom - Top; }
    };
    // Scaling pass of one axis (slave copy, ends, ticks).
    void ScalePass();
    // The graph-wide layout run by Calculate.
    static void LayoutGraph(TVx2DGraph& graph);
    // Lays out an axis that is not inside a graph within its own bounds.
    void LayoutStandalone();
    // Outward direction of the labels: +1 below/right of the line, -1 above/left.
    int OutwardSign() const;
    int LabelStart() const;
    int LabelBandExtent() const;
    int OuterThickness() const;
    static TMeasuredText Measure(TCanvas& canvas, const QString& text, const TFont& font);
    void Invalidate();
    void SetLayoutChanged();
    void SetTicksChanged();
    void NotifyGraph();
    void UpdateMap();
    void PlaceLabels();
    void SetLineOrigin();

    TVxAxisScaleOptions FOptions;
    TVxAxisScale FScale;
    // The last rounding of the ends: its input and its result.
    bool FRounded = false;
    double FRoundInputStart = 0, FRoundInputStop = 0, FRoundedStart = 0, FRoundedStop = 0;
    TVxAxisTicks FTicks;
    TVxAxisMap FMap;
    TVxIntegerArray FTickPositions;
    std::vector<TVxAxisPlacedLabel> FLabels;
    std::vector<TMeasuredText> FLabelTexts;
    TMeasuredText FExponentText;
    TMeasuredText FCaptionText;
    QPoint FExponentPos;
    QPoint FCaptionPos;
    int FMaxLabelWidth = 0;
    int FMaxLabelHeight = 0;

    std::unique_ptr<TRange> FRange;
    std::unique_ptr<TRange> FValuesRange;
    std::unique_ptr<TRangeList> FValueRanges;
    std::vector<std::unique_ptr<TRange>> FZoomHistory;
    int FZoomIndex = 0;

    TVxAxisPos FPosition = AxLeftPos;
    bool FVertical = true;
    bool FIsSlaveAxis = false;
    QPointer<TVxAxis> FMasterAxis;
    int FAxisLength = 0;
    bool FLayoutChanged = true;
    bool FTicksChanged = true;

    bool FShowCaption = false;
    bool FAutoSize = true;
    bool FTransparent = true;
    int FBorderCaptionGap = 0;
    int FCaptionScalingsGap = 0;
    int FScalingsTicksGap = 1;
    int FExponentScalingsGap = 10;
    int FValuesTicksGap = 0;
    int FMajorTickLength = 10;
    int FTickLength = 6;
    std::unique_ptr<TFont> FFont;
    std::unique_ptr<TFont> FCaptionFont;
    TColor FColor;
    TColor FAxisColor;
    TColor FTickColor;
    TColor FMajorTickColor;
    int FAxisThicknes = 0;
    int FTickThicknes = 0;
    int FMajorTickThicknes = 0;
    QString FCaption;
    QString FUserCaption;
    QString FAutoCaption;
    bool FDoUserCaption = false;
    int FLineX = 0;
    int FLineY = 0;
    bool FDrawFirstTick = true;
    bool FDrawLastTick = true;
    bool FInLayout = false;
};

} // namespace vx
