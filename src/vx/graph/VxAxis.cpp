#include "vx/graph/VxAxis.h"

#include "vx/core/VxArithm.h"
#include "vx/core/VxLargeIni.h"
#include "vx/core/VxRange.h"
#include "vx/graph/VxDraw.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/graph/VxLabel.h"
#include "vx/platform/VxCanvas.h"
#include "vx/platform/VxComponent.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatText.h"

#include <QImage>
#include <QPainter>
#include <QPaintEvent>
#include <algorithm>
#include <cmath>
#include <limits>

namespace vx {

namespace {

// The platform's Round: half to even (the default floating-point rounding mode).
int RoundInt(double x)
{
    if (std::isnan(x))
        return 0;
    const double r = std::nearbyint(x);
    if (r > double(std::numeric_limits<int>::max() / 2))
        return std::numeric_limits<int>::max() / 2;
    if (r < double(std::numeric_limits<int>::min() / 2))
        return std::numeric_limits<int>::min() / 2;
    return int(r);
}

// Table index k (1..10) of a range width mantissa.
int TableIndex(double mantissa)
{
    return std::clamp(RoundInt(mantissa), 1, 10);
}

// More ticks than any screen can show: the division then falls back to the tables.
constexpr int CMaxTickCount = 10001;

TVxAxisStepTables& Tables()
{
    static TVxAxisStepTables tables = DefaultAxisStepTables();
    return tables;
}

const QString& SuperscriptCode()
{
    static const QString code = QStringLiteral("\\+");
    return code;
}

// ffFixed text with precision 15; negative digit counts mean none.
QString FixedText(double value, int digits)
{
    return FloatToStrF(value, ffFixed, 15, std::max(0, digits));
}

void LoadParts(TVxAxisTicks& ticks, int k)
{
    const TVxAxisStepTables& t = AxisStepTables();
    ticks.TickPart = t.TickField[k];
    ticks.MajorTickPart = t.MajorTickField[k];
    ticks.LabelPart = t.LabelsField[k];
}

int LinearTickCount(double width, const TVxAxisScale& s, double tickPart)
{
    const double n = ExpMinus(width, s.RangeExponent) / tickPart + 1;
    if (!std::isfinite(n) || n > CMaxTickCount)
        return CMaxTickCount + 1;
    return RoundInt(n);
}

TVxAxisTicks LinearTicks(const TVxAxisScale& s, const TVxAxisScaleOptions& o, bool omitZeroLabel)
{
    TVxAxisTicks t;
    t.Scaling = AxNormal;
    t.TickPart = s.TickPart;
    t.MajorTickPart = s.MajorTickPart;
    t.LabelPart = s.LabelPart;
    // Parts: no zero step, majors and labels at least as coarse as the minor step.
    if (t.TickPart == 0)
        t.TickPart = 0.1;
    if (t.MajorTickPart < t.TickPart)
        t.MajorTickPart = t.TickPart;
    if (t.LabelPart < t.MajorTickPart)
        t.LabelPart = t.MajorTickPart;

    // Count; a division too coarse (or too fine to draw) takes the table parts.
    const double width = s.Stop - s.Start;
    t.TickCount = LinearTickCount(width, s, t.TickPart);
    if (t.TickCount < 2 || t.TickCount > CMaxTickCount) {
        LoadParts(t, TableIndex(ExpMinus(width, s.RangeExponent)));
        t.TickCount = LinearTickCount(width, s, t.TickPart);
        if (t.TickCount < 2 || t.TickCount > CMaxTickCount)
            t.TickCount = 2;
    }
    const double tickStep = width / (t.TickCount - 1);

    // Phases put majors and labels on multiples of their steps although the ends are
    // multiples of the minor step only.
    const int majorEvery = std::max(1, RoundInt(t.MajorTickPart / t.TickPart));
    const int labelEvery = std::max(1, RoundInt(t.LabelPart / t.TickPart));
    auto phase = [&](double part) {
        const double offset = o.Twisted ? s.Stop - RoundDown(s.Stop, part, s.RangeExponent)
                                        : RoundUp(s.Start, part, s.RangeExponent) - s.Start;
        return RoundInt(ExpMinus(offset, s.RangeExponent) / t.TickPart);
    };
    const int majorPhase = phase(t.MajorTickPart);
    const int labelPhase = phase(t.LabelPart);

    t.TickIsMajor.resize(t.TickCount);
    for (int i = 0; i < t.TickCount; ++i) {
        t.TickIsMajor[i] = i % majorEvery == majorPhase;
        if (!o.ShowScaleLabels || i % labelEvery != labelPhase)
            continue;
        const double value = o.Twisted ? s.Stop - i * tickStep : s.Start + i * tickStep;
        const QString text = LinearAxisLabelText(value, s);
        double back = 1;
        if (omitZeroLabel && TryStrToFloat(text, back) && back == 0)
            continue;
        t.Labels.push_back({i, value, text});
    }
    if (o.ShowScaleLabels && s.ScaleExponent)
        t.ExponentLabel = QString(QChar(0xB7)) + QStringLiteral("10") + SuperscriptCode()
                          + QString::number(s.ValueExponent);
    return t;
}

QString LogLabelText(double logValue, const TVxAxisScale& s, TVxAxScaling scaling)
{
    if (scaling == AxLogEE)
        return QStringLiteral("10") + SuperscriptCode() + QLatin1Char(' ')
               + QString::number(RoundInt(logValue));
    const double v = Exp10(logValue) / s.MajorTickPart;
    const int e = GetExponent(v);
    return FixedText(v, e >= 0 ? 0 : -e);
}

TVxAxisTicks LogTicks(const TVxAxisScale& s, const TVxAxisScaleOptions& o)
{
    TVxAxisTicks t;
    t.Scaling = o.Scaling;
    t.TickPart = s.TickPart;
    t.MajorTickPart = s.MajorTickPart;
    t.LabelPart = s.LabelPart;
    t.SubTicks = std::max(1, RoundInt(1 / t.TickPart - 1));
    t.TickCount = std::max(0, RoundInt((s.LogStop - s.LogStart) / t.MajorTickPart));
    const int size = t.TickCount * t.SubTicks + 1;
    t.TickIsMajor.assign(size, false);
    for (int d = 0; d < t.TickCount; ++d) {
        t.TickIsMajor[t.SubTicks * d] = true;
        if (o.ShowScaleLabels)
            t.Labels.push_back({t.SubTicks * d, Exp10(s.LogStart + d), LogLabelText(s.LogStart + d, s, o.Scaling)});
    }
    t.TickIsMajor[size - 1] = true;
    if (o.ShowScaleLabels) {
        const QString text = o.Scaling == AxLogEE ? LogLabelText(std::log10(s.Stop), s, AxLogEE)
                                                  : FloatToStr(s.Stop);
        t.Labels.push_back({size - 1, s.Stop, text});
    }
    return t;
}

// Rounds the ends of a linear range.
void LinearEnds(TVxAxisScale& r, const TVxAxisScaleOptions& o)
{
    const TVxAxisStepTables& tables = AxisStepTables();
    // An empty range gets one unit of the value's own decade on each side.
    if (r.Start == r.Stop) {
        if (r.Start != 0) {
            r.Start = r.Start - IntExp10(GetExponent(r.Start));
            r.Stop = r.Stop + IntExp10(GetExponent(r.Stop));
        } else {
            r.Start = -1;
            r.Stop = 1;
        }
        r.RangeDefaulted = true;
    }
    if (o.AutoTicks)
        r.TickPart = 0.02;

    // Ends outward to the rounding unit; a fixed end snaps to the minor step only.
    r.RangeExponent = GetExponent(r.Stop - r.Start);
    int k = TableIndex(ExpMinus(r.Stop - r.Start, r.RangeExponent));
    const bool tickUsable = r.TickPart > 0 && std::isfinite(r.TickPart);
    const double startUnit = o.StartEnd == AxFixed && tickUsable ? r.TickPart : tables.RoundField[k];
    const double stopUnit = o.StopEnd == AxFixed && tickUsable ? r.TickPart : tables.RoundField[k];
    r.Start = RoundDown(r.Start, startUnit, r.RangeExponent);
    r.Stop = RoundUp(r.Stop, stopUnit, r.RangeExponent);

    // Parts from the rounded width.
    r.RangeExponent = GetExponent(r.Stop - r.Start);
    if (o.AutoTicks) {
        k = TableIndex(ExpMinus(r.Stop - r.Start, r.RangeExponent));
        r.TickPart = tables.TickField[k];
        r.MajorTickPart = tables.MajorTickField[k];
        r.LabelPart = tables.LabelsField[k];
    }

    // The larger exponent, never that of an end equal to 0.
    const int e1 = GetExponent(r.Start);
    const int e2 = GetExponent(r.Stop);
    r.ValueExponent = (e1 < e2 && r.Stop != 0) || (e1 >= e2 && r.Start == 0) ? e2 : e1;
    r.LabelDigits = r.ValueExponent - r.RangeExponent - GetExponent(r.LabelPart)
                    + LastSignificant(r.LabelPart);
}

// Rounds the ends of a logarithmic range to decades (or to the minor steps for fixed ends).
void LogEnds(TVxAxisScale& r, const TVxAxisScaleOptions& o)
{
    if (0.01 * r.Stop > r.Stop - r.Start) {
        r.Start = IntExp10(GetExponent(r.Start) - 1);
        r.Stop = IntExp10(GetExponent(r.Stop) + 1);
    }
    if (r.Start <= 0)
        r.Start = 1E-10;
    if (r.Stop <= 0)
        r.Stop = 1;
    r.RangeExponent = RoundInt(std::log10(r.Stop) - std::log10(r.Start));
    r.TickPart = 0.1;
    r.MajorTickPart = 1;
    r.LabelPart = 1;
    if (!(o.StartEnd == AxFixed && r.RangeExponent != 0))
        r.Start = RoundDown(Exp10(RoundDown(std::log10(r.Start), r.MajorTickPart, 0)), 1,
                            GetExponent(r.Start) - 9);
    if (!(o.StopEnd == AxFixed && r.RangeExponent != 0))
        r.Stop = Exp10(RoundUp(std::log10(r.Stop), r.MajorTickPart, 0));
    r.Start = RoundLogDown(r.Start, r.MajorTickPart, r.TickPart);
    r.Stop = RoundLogUp(r.Stop, r.MajorTickPart, r.TickPart);
    r.LogStart = std::log10(r.Start);
    r.LogStop = std::log10(r.Stop);
    if (r.LabelPart < r.MajorTickPart)
        r.LabelPart = r.MajorTickPart;
}

bool IsLog(TVxAxScaling s) { return s == AxLog || s == AxLogEE; }

void RaiseScaling()
{
    throw EConvertError(QStringLiteral("Axis scaling not supportet"));
}

} // namespace

// ---------------------------------------------------------------------------------
// Step tables

bool TVxAxisStepTables::operator==(const TVxAxisStepTables& o) const
{
    return RoundField == o.RoundField && TickField == o.TickField
           && MajorTickField == o.MajorTickField && LabelsField == o.LabelsField;
}

TVxAxisStepTables DefaultAxisStepTables()
{
    TVxAxisStepTables t;
    for (int k = 1; k <= 10; ++k) {
        if (k == 1) {
            t.RoundField[k] = 0.1; t.TickField[k] = 0.02; t.MajorTickField[k] = 0.1; t.LabelsField[k] = 0.2;
        } else if (k == 2) {
            t.RoundField[k] = 0.25; t.TickField[k] = 0.05; t.MajorTickField[k] = 0.25; t.LabelsField[k] = 0.5;
        } else if (k <= 6) {
            t.RoundField[k] = 0.5; t.TickField[k] = 0.1; t.MajorTickField[k] = 0.5; t.LabelsField[k] = 1;
        } else {
            t.RoundField[k] = 1; t.TickField[k] = 0.2; t.MajorTickField[k] = 1; t.LabelsField[k] = 2;
        }
    }
    return t;
}

const TVxAxisStepTables& AxisStepTables() { return Tables(); }

void SetAxisStepTables(const TVxAxisStepTables& tables) { Tables() = tables; }

void InitFields()
{
    TVxLargeIniFile ini(UserSettings);
    TVxAxisStepTables t = AxisStepTables();
    auto read = [&ini](const char* key, std::array<double, 11>& field) {
        TVxRealArray values(field.begin() + 1, field.end());
        ini.ReadRealArray(QStringLiteral("GraphScale"), QLatin1String(key), values, 9);
        for (int k = 1; k <= 10; ++k)
            field[k] = values[k - 1];
    };
    read("RoundField", t.RoundField);
    read("TickField", t.TickField);
    read("MajorTickField", t.MajorTickField);
    read("LabelsField", t.LabelsField);
    SetAxisStepTables(t);
}

// ---------------------------------------------------------------------------------
// Pure scaling

bool TVxAxisScaleOptions::operator==(const TVxAxisScaleOptions& o) const
{
    return Scaling == o.Scaling && StartEnd == o.StartEnd && StopEnd == o.StopEnd
           && AutoTicks == o.AutoTicks && Twisted == o.Twisted && ShowScaleLabels == o.ShowScaleLabels
           && MinExpForScaleExp == o.MinExpForScaleExp && MaxExpForScaleExp == o.MaxExpForScaleExp;
}

bool TVxAxisScale::operator==(const TVxAxisScale& o) const
{
    return Start == o.Start && Stop == o.Stop && TickPart == o.TickPart
           && MajorTickPart == o.MajorTickPart && LabelPart == o.LabelPart && LogStart == o.LogStart
           && LogStop == o.LogStop && RangeExponent == o.RangeExponent
           && ValueExponent == o.ValueExponent && LabelDigits == o.LabelDigits
           && ScaleExponent == o.ScaleExponent && RangeDefaulted == o.RangeDefaulted;
}

bool TVxAxisTickLabel::operator==(const TVxAxisTickLabel& o) const
{
    return TickIndex == o.TickIndex && Value == o.Value && Text == o.Text;
}

bool TVxAxisTicks::operator==(const TVxAxisTicks& o) const
{
    return Scaling == o.Scaling && TickCount == o.TickCount && SubTicks == o.SubTicks
           && TickIsMajor == o.TickIsMajor && Labels == o.Labels && ExponentLabel == o.ExponentLabel
           && TickPart == o.TickPart && MajorTickPart == o.MajorTickPart && LabelPart == o.LabelPart;
}

TVxAxisScale CalculateAxisEnds(const TVxAxisScale& scale, const TVxAxisScaleOptions& options)
{
    TVxAxisScale r = scale;
    r.RangeDefaulted = false;
    const bool log = IsLog(options.Scaling);
    // Inverted, or not a number at all: a default range.
    if (r.Start > r.Stop || !std::isfinite(r.Start) || !std::isfinite(r.Stop)
        || !std::isfinite(r.Stop - r.Start)) {
        r.Start = log ? 1 : 0;
        r.Stop = log ? 10 : 100;
        r.RangeDefaulted = true;
    }
    if (options.Scaling == AxNormal)
        LinearEnds(r, options);
    else if (log)
        LogEnds(r, options);
    r.ScaleExponent = (options.Scaling == AxNormal && r.ValueExponent > options.MaxExpForScaleExp
                       && r.ValueExponent > r.LabelDigits)
                      || r.ValueExponent < options.MinExpForScaleExp;
    return r;
}

QString LinearAxisLabelText(double value, const TVxAxisScale& scale)
{
    if (scale.ScaleExponent)
        return FixedText(ExpMinus(value, scale.ValueExponent), scale.LabelDigits - 1);
    if (scale.LabelDigits > scale.ValueExponent)
        return FixedText(value, scale.LabelDigits - scale.ValueExponent - 1);
    return FixedText(value, 0);
}

TVxAxisTicks CalculateAxisTicks(const TVxAxisScale& scale, const TVxAxisScaleOptions& options,
                                bool omitZeroLabel)
{
    if (options.Scaling == AxNormal)
        return LinearTicks(scale, options, omitZeroLabel);
    if (IsLog(options.Scaling))
        return LogTicks(scale, options);
    TVxAxisTicks none;
    none.Scaling = options.Scaling;
    return none;
}

// ---------------------------------------------------------------------------------
// Mapping

TVxAxisMap::TVxAxisMap(const TVxAxisScale& scale, TVxAxScaling scaling, int axisLength,
                       bool vertical, bool twisted)
    : FScaling(scaling), FStart(scale.Start), FStop(scale.Stop), FLogStart(scale.LogStart),
      FLogStop(scale.LogStop), FAxisLength(axisLength), FVertical(vertical),
      FForward((!vertical) != twisted)
{
    const int length = std::max(1, axisLength);
    if (IsLog(scaling))
        FScale = (FLogStop - FLogStart) / length;
    else
        FScale = (FStop - FStart) / length;
    if (!(FScale > 0) || !std::isfinite(FScale))
        FScale = 1.0;
}

bool TVxAxisMap::operator==(const TVxAxisMap& o) const
{
    return FScaling == o.FScaling && FStart == o.FStart && FStop == o.FStop
           && FLogStart == o.FLogStart && FLogStop == o.FLogStop && FScale == o.FScale
           && FAxisLength == o.FAxisLength && FVertical == o.FVertical && FForward == o.FForward;
}

int TVxAxisMap::RealToIntPosition(double value) const
{
    int d = 0;
    if (FScaling == AxNormal) {
        if (std::isnan(value))
            return -1;
        d = RoundInt((value - FStart) / FScale);
    } else if (IsLog(FScaling)) {
        if (!(value > 0))
            return -1;
        d = RoundInt((std::log10(value) - FLogStart) / FScale);
    } else {
        RaiseScaling();
    }
    return FForward ? d : FAxisLength - d;
}

double TVxAxisMap::IntToRealPosition(int pixel) const
{
    const double p = FForward ? pixel : FAxisLength - pixel;
    if (FScaling == AxNormal)
        return p * FScale + FStart;
    if (IsLog(FScaling))
        return Exp10(p * FScale + FLogStart);
    RaiseScaling();
    return 0;
}

std::vector<int> TVxAxisMap::TickPositions(const TVxAxisTicks& ticks) const
{
    std::vector<int> pos(ticks.Size(), 0);
    if (ticks.Scaling == AxNormal) {
        if (ticks.TickCount < 2)
            return pos;
        const double tickStep = (FStop - FStart) / (ticks.TickCount - 1);
        const double pixelStep = tickStep / FScale;
        for (int i = 0; i < ticks.Size(); ++i)
            pos[i] = RoundInt(i * pixelStep);
        return pos;
    }
    if (!IsLog(ticks.Scaling) || ticks.Size() == 0)
        return pos;
    auto stored = [this](int offset) { return FForward ? offset : FAxisLength - offset; };
    for (int d = 0; d < ticks.TickCount; ++d) {
        pos[ticks.SubTicks * d] = stored(RoundInt(d / FScale));
        for (int j = 2; j <= ticks.SubTicks; ++j)
            pos[ticks.SubTicks * d + j - 1] =
                stored(RoundInt(std::log10(j * ticks.TickPart * 10) / FScale + d / FScale));
    }
    pos[ticks.Size() - 1] = FForward ? FAxisLength : 0;
    return pos;
}

int TVxAxisMap::TickScreenOffset(int storedPosition) const
{
    return FScaling == AxNormal && FVertical ? FAxisLength - storedPosition : storedPosition;
}

// ---------------------------------------------------------------------------------
// TVxAxis: state and setters

TVxAxis::TVxAxis(QWidget* parent)
    : QWidget(parent), FRange(std::make_unique<TRange>()), FValuesRange(std::make_unique<TRange>()),
      FValueRanges(std::make_unique<TRangeList>()), FFont(std::make_unique<TFont>()),
      FCaptionFont(std::make_unique<TFont>()), FColor(clBtnFace), FAxisColor(clBlack),
      FTickColor(clBlack), FMajorTickColor(clBlack)
{
    FRange->SetStartStop(0, 100);
    FFont->SetColor(clBlack);
    FCaptionFont->Assign(*FFont);
    FFont->SetOnChange([this] { SetLayoutChanged(); });
    FCaptionFont->SetOnChange([this] { SetLayoutChanged(); });
    resize(400, 50);
}

TVxAxis::~TVxAxis()
{
    Destroying(this);
}

TVx2DGraph* TVxAxis::Graph() const
{
    return qobject_cast<TVx2DGraph*>(parentWidget());
}

void TVxAxis::NotifyGraph()
{
    if (IsDestroying(this))
        return;
    if (TVx2DGraph* g = Graph())
        g->Modified();
}

void TVxAxis::Invalidate()
{
    // Inside a graph the graph repaints everything once its update batch ends.
    if (TVx2DGraph* g = Graph(); g && !g->NotUpdating())
        return;
    update();
}

void TVxAxis::SetLayoutChanged()
{
    FLayoutChanged = true;
    if (Graph())
        NotifyGraph();
    else
        update();
}

void TVxAxis::SetTicksChanged()
{
    FTicksChanged = true;
    if (Graph())
        NotifyGraph();
    else
        update();
}

void TVxAxis::Modified()
{
    SetLayoutChanged();
}

void TVxAxis::SetScaling(TVxAxScaling value)
{
    if (FOptions.Scaling == value)
        return;
    FOptions.Scaling = value;
    FLayoutChanged = true;
    RedoRanges();
    SetLayoutChanged();
}

void TVxAxis::SetStartEnd(TVxAxEnd value)
{
    if (FOptions.StartEnd == value)
        return;
    FOptions.StartEnd = value;
    SetLayoutChanged();
    // An end that follows the data again takes the data's range at once.
    if (value != AxFixed)
        ValuesRangeChanged();
}

void TVxAxis::SetStopEnd(TVxAxEnd value)
{
    if (FOptions.StopEnd == value)
        return;
    FOptions.StopEnd = value;
    SetLayoutChanged();
    // An end that follows the data again takes the data's range at once.
    if (value != AxFixed)
        ValuesRangeChanged();
}

double TVxAxis::Start() const { return FRange->Start(); }
double TVxAxis::Stop() const { return FRange->Stop(); }

void TVxAxis::SetStart(double value)
{
    if (FRange->Start() == value)
        return;
    FRange->SetStart(value);
    SetLayoutChanged();
}

void TVxAxis::SetStop(double value)
{
    if (FRange->Stop() == value)
        return;
    FRange->SetStop(value);
    SetLayoutChanged();
}

void TVxAxis::SetAutoTicks(bool value)
{
    if (FOptions.AutoTicks == value)
        return;
    FOptions.AutoTicks = value;
    if (value)
        CalculateEnds();
    SetTicksChanged();
}

namespace {
void CheckPart(double value)
{
    if (!(value >= 0) || !std::isfinite(value))
        throw ERangeError(QStringLiteral("Tick part must be a finite number not below 0"));
}
} // namespace

void TVxAxis::SetTickPart(double value)
{
    if (FOptions.AutoTicks || FScale.TickPart == value)
        return;
    CheckPart(value);
    FScale.TickPart = value;
    SetTicksChanged();
}

void TVxAxis::SetMajorTickPart(double value)
{
    if (FOptions.AutoTicks || FScale.MajorTickPart == value)
        return;
    CheckPart(value);
    FScale.MajorTickPart = value;
    SetTicksChanged();
}

void TVxAxis::SetLabelPart(double value)
{
    if (FOptions.AutoTicks || FScale.LabelPart == value)
        return;
    CheckPart(value);
    FScale.LabelPart = value;
    SetTicksChanged();
}

void TVxAxis::SetMaxExpForScaleExp(int value)
{
    if (FOptions.MaxExpForScaleExp == value)
        return;
    FOptions.MaxExpForScaleExp = value;
    SetLayoutChanged();
}

void TVxAxis::SetMinExpForScaleExp(int value)
{
    if (FOptions.MinExpForScaleExp == value)
        return;
    FOptions.MinExpForScaleExp = value;
    SetLayoutChanged();
}

void TVxAxis::SetTwisted(bool value)
{
    if (FOptions.Twisted == value)
        return;
    FOptions.Twisted = value;
    UpdateMap(); // the mapping follows the direction at once
    SetTicksChanged();
}

void TVxAxis::SetPosition(TVxAxisPos value)
{
    if (FPosition == value)
        return;
    FPosition = value;
    FVertical = value == AxLeftPos || value == AxRightPos || value == AxFreeFloating;
    UpdateMap();
    SetLayoutChanged();
}

void TVxAxis::SetIsSlaveAxis(bool value)
{
    if (FIsSlaveAxis == value)
        return;
    FIsSlaveAxis = value;
    SetLayoutChanged();
}

void TVxAxis::SetMasterAxis(TVxAxis* axis)
{
    if (!axis) {
        FMasterAxis = nullptr;
        FIsSlaveAxis = false;
        SetLayoutChanged();
        return;
    }
    // No chains of slaves, no self-coupling, no coupling across orientations.
    if (axis == FMasterAxis.data() || axis == this || axis->Vertical() != FVertical
        || axis->IsSlaveAxis())
        return;
    FMasterAxis = axis;
    FIsSlaveAxis = true;
    SetLayoutChanged();
}

void TVxAxis::SetRange(const TRange& range)
{
    FRange->Assign(range);
    SetLayoutChanged();
}

void TVxAxis::SetValuesRange(const TRange& range)
{
    FValuesRange->Assign(range);
    SetLayoutChanged();
}

void TVxAxis::SetAxisLength(int value)
{
    FAxisLength = std::max(0, value);
    UpdateMap();
}

// ---------------------------------------------------------------------------------
// Data ranges and zoom

void TVxAxis::ValuesRangeChanged(TRange*)
{
    // Union of the registered ranges; ranges still empty are skipped.
    FValuesRange->Reset();
    for (TRange* r : *FValueRanges) {
        if (r && r->Stop() >= r->Start()) {
            FValuesRange->IfRangeChanged(r->Start());
            FValuesRange->IfRangeChanged(r->Stop());
        }
    }
    if (FValuesRange->Start() > FValuesRange->Stop())
        return;
    auto follow = [this](TVxAxEnd end, double value, bool start) {
        if (end == AxAutoRange) {
            if (start)
                FRange->SetStart(value);
            else
                FRange->SetStop(value);
            FLayoutChanged = true;
        } else if (end == AxFirstSet) {
            FLayoutChanged = FRange->IfRangeChanged(value) != rgNotChanged;
        }
    };
    follow(FOptions.StartEnd, FValuesRange->Start(), true);
    follow(FOptions.StopEnd, FValuesRange->Stop(), false);
    if (FLayoutChanged)
        SetLayoutChanged();
}

void TVxAxis::RedoRanges()
{
    if (FValueRanges->Count() == 0)
        return;
    ValuesRangeChanged();
    FZoomHistory.clear();
    FZoomIndex = 0;
    Invalidate();
}

void TVxAxis::ZoomIn(double newStart, double newStop)
{
    auto snapshot = [this] {
        auto r = std::make_unique<TRange>();
        r->SetStartStop(Start(), Stop());
        FZoomHistory.push_back(std::move(r));
    };
    if (FZoomHistory.empty())
        snapshot();
    SetStart(newStart);
    SetStop(newStop);
    snapshot();
    FZoomIndex = int(FZoomHistory.size());
}

void TVxAxis::ZoomBack()
{
    if (FZoomHistory.empty())
        return;
    // Cyclic: stepping back past the unzoomed range returns to the latest zoom.
    if (--FZoomIndex <= 0)
        FZoomIndex = int(FZoomHistory.size());
    const TRange& r = *FZoomHistory[FZoomIndex - 1];
    SetStart(r.Start());
    SetStop(r.Stop());
}

// ---------------------------------------------------------------------------------
// Scaling pass

int TVxAxis::RealToIntPosition(double value) const
{
    // The scaling may have changed since the map was last computed.
    if (FOptions.Scaling != AxNormal && !IsLog(FOptions.Scaling))
        RaiseScaling();
    return FMap.RealToIntPosition(value);
}

double TVxAxis::IntToRealPosition(int pixel) const
{
    if (FOptions.Scaling != AxNormal && !IsLog(FOptions.Scaling))
        RaiseScaling();
    return FMap.IntToRealPosition(pixel);
}

void TVxAxis::CalculateEnds()
{
    // Rounding a rounded range can widen it again (-90..155 gives -100..175, which gives
    // -100..200), so the same data would give another axis after every layout.
    const bool untouched = FRounded && Start() == FRoundedStart && Stop() == FRoundedStop;
    if (!untouched) {
        FRoundInputStart = Start();
        FRoundInputStop = Stop();
    }
    FScale.Start = FRoundInputStart;
    FScale.Stop = FRoundInputStop;
    FScale = CalculateAxisEnds(FScale, FOptions);
    FRange->SetStartStop(FScale.Start, FScale.Stop);
    FRounded = true;
    FRoundedStart = Start();
    FRoundedStop = Stop();
}

TVxAxis::TMeasuredText TVxAxis::Measure(TCanvas& canvas, const QString& text, const TFont& font)
{
    TMeasuredText m;
    m.Text = text;
    if (text.isEmpty())
        return m;
    canvas.SetFont(font);
    TVxCaptionRec rec;
    rec.Text = text;
    rec.Canvas = &canvas;
    rec.Paint = false;
    RichPaintTo(rec);
    m.Width = rec.Width;
    m.Top = rec.Top;
    m.Bottom = std::max(rec.Bottom, rec.Top);
    return m;
}

void TVxAxis::CalculateTicks()
{
    if (!Visible()) {
        FTicksChanged = false;
        return;
    }
    FScale.Start = Start();
    FScale.Stop = Stop();
    // Axes crossing at the origin leave out the label 0.
    const TVx2DGraph* g = Graph();
    const bool omitZero = g && g->ZeroOrigin() && FScale.Start <= 0 && 0 < FScale.Stop;
    if (IsLog(FOptions.Scaling)) {
        FScale.LogStart = FScale.Start > 0 ? std::log10(FScale.Start) : 0;
        FScale.LogStop = FScale.Stop > 0 ? std::log10(FScale.Stop) : FScale.LogStart + 1;
    }
    FTicks = CalculateAxisTicks(FScale, FOptions, omitZero);
    FScale.TickPart = FTicks.TickPart;
    FScale.MajorTickPart = FTicks.MajorTickPart;
    FScale.LabelPart = FTicks.LabelPart;

    // Measure labels apart from placing them (on a measuring canvas: fonts are pixel-sized).
    TCanvas canvas;
    FLabelTexts.clear();
    FMaxLabelWidth = 0;
    FMaxLabelHeight = 0;
    for (const TVxAxisTickLabel& l : FTicks.Labels) {
        FLabelTexts.push_back(Measure(canvas, l.Text, *FFont));
        FMaxLabelWidth = std::max(FMaxLabelWidth, FLabelTexts.back().Width);
        FMaxLabelHeight = std::max(FMaxLabelHeight, FLabelTexts.back().Height());
    }
    FExponentText = Measure(canvas, FTicks.ExponentLabel, *FFont);
    FCaptionText = Measure(canvas, FShowCaption ? FCaption : QString(), *FCaptionFont);
    UpdateMap();
    FTicksChanged = false;
}

void TVxAxis::ScalePass()
{
    if (FIsSlaveAxis && FMasterAxis) {
        FRange->SetStartStop(FMasterAxis->Start(), FMasterAxis->Stop());
        FOptions.Scaling = FMasterAxis->Scaling();
        SetAutoCaption(FMasterAxis->AutoCaption());
    }
    CalculateEnds();
    CalculateTicks();
    FLayoutChanged = false;
}

void TVxAxis::UpdateMap()
{
    FMap = TVxAxisMap(FScale, FOptions.Scaling, FAxisLength, FVertical, FOptions.Twisted);
    FTickPositions = FMap.TickPositions(FTicks);
    SetLineOrigin();
    PlaceLabels();
}

int TVxAxis::TickScreenOffset(int i) const
{
    if (i < 0 || i >= int(FTickPositions.size()))
        return 0;
    return FMap.TickScreenOffset(FTickPositions[i]);
}

void TVxAxis::Calculate()
{
    if (TVx2DGraph* g = Graph()) {
        LayoutGraph(*g);
        return;
    }
    ScalePass();
    LayoutStandalone();
}

// ---------------------------------------------------------------------------------
// Geometry: the space across the line and beyond its ends

int TVxAxis::OutwardSign() const
{
    return FPosition == AxBottomPos || FPosition == AxRightPos ? 1 : -1;
}

int TVxAxis::InnerThickness() const
{
    const int s = OutwardSign();
    const int tickIn = std::max({0, -s * FMajorTickLength, -s * FTickLength});
    return std::max(tickIn, FAxisThicknes / 2);
}

int TVxAxis::LabelStart() const
{
    const int s = OutwardSign();
    const int tickOut = std::max({0, s * FMajorTickLength, s * FTickLength});
    return std::max(tickOut, FAxisThicknes / 2) + FScalingsTicksGap;
}

int TVxAxis::LabelBandExtent() const
{
    if (FVertical)
        return std::max(FMaxLabelWidth, FExponentText.Width);
    return std::max(FMaxLabelHeight, FExponentText.Height());
}

int TVxAxis::OuterThickness() const
{
    int u = LabelStart() + LabelBandExtent();
    if (!FCaptionText.Text.isEmpty())
        u += FCaptionScalingsGap + FCaptionText.Height();
    return std::max(1, u + FBorderCaptionGap);
}

int TVxAxis::Thickness() const
{
    return InnerThickness() + OuterThickness();
}

int TVxAxis::OverhangBefore() const
{
    if (FVertical) {
        const int exponent = FExponentText.Text.isEmpty() ? 0 : FExponentScalingsGap + FExponentText.Height();
        return FMaxLabelHeight / 2 + exponent + FValuesTicksGap;
    }
    return FMaxLabelWidth / 2 + FValuesTicksGap;
}

int TVxAxis::OverhangAfter() const
{
    if (FVertical)
        return FMaxLabelHeight - FMaxLabelHeight / 2 + FValuesTicksGap;
    const int exponent = FExponentText.Text.isEmpty() ? 0 : FExponentScalingsGap + FExponentText.Width;
    return FMaxLabelWidth - FMaxLabelWidth / 2 + exponent + FValuesTicksGap;
}

void TVxAxis::SetLineOrigin()
{
    const int across = OutwardSign() > 0 ? InnerThickness() : OuterThickness() - 1;
    if (FVertical) {
        FLineX = across;
        FLineY = OverhangBefore();
    } else {
        FLineX = OverhangBefore();
        FLineY = across;
    }
}

void TVxAxis::PlaceLine(QPoint lineStart, int axisLength)
{
    FAxisLength = std::max(0, axisLength);
    UpdateMap();
    const int along = OverhangBefore() + FAxisLength + 1 + OverhangAfter();
    const QRect r = FVertical ? QRect(lineStart.x() - FLineX, lineStart.y() - FLineY, Thickness(), along)
                              : QRect(lineStart.x() - FLineX, lineStart.y() - FLineY, along, Thickness());
    FInLayout = true;
    if (geometry() != r)
        setGeometry(r);
    FInLayout = false;
}

void TVxAxis::LayoutStandalone()
{
    // The line runs along the whole control, less the label overhangs.
    const int along = FVertical ? height() : width();
    FAxisLength = std::max(0, along - OverhangBefore() - OverhangAfter() - 1);
    UpdateMap();
    update();
}

void TVxAxis::PlaceLabels()
{
    const int s = OutwardSign();
    const int labelStart = LabelStart();
    // Top-left of a box of `extent` across the line at `u` pixels outward.
    auto across = [&](int u, int extent, int line) { return s > 0 ? line + u : line - u + 1 - extent; };

    FLabels.clear();
    for (size_t n = 0; n < FTicks.Labels.size() && n < FLabelTexts.size(); ++n) {
        const TMeasuredText& m = FLabelTexts[n];
        const int along = TickScreenOffset(FTicks.Labels[n].TickIndex);
        TVxAxisPlacedLabel p;
        p.Text = m.Text;
        p.Width = m.Width;
        p.Height = m.Height();
        if (FVertical)
            p.Pos = QPoint(across(labelStart, m.Width, FLineX), FLineY + along - p.Height / 2 - m.Top);
        else
            p.Pos = QPoint(FLineX + along - m.Width / 2, across(labelStart, p.Height, FLineY) - m.Top);
        FLabels.push_back(p);
    }
    if (!FExponentText.Text.isEmpty()) {
        const TMeasuredText& m = FExponentText;
        if (FVertical)
            FExponentPos = QPoint(across(labelStart, m.Width, FLineX),
                                  FLineY - FMaxLabelHeight / 2 - FExponentScalingsGap - m.Height() - m.Top);
        else
            FExponentPos = QPoint(FLineX + FAxisLength + FMaxLabelWidth - FMaxLabelWidth / 2 + FExponentScalingsGap,
                                  across(labelStart, m.Height(), FLineY) - m.Top);
    }
    if (!FCaptionText.Text.isEmpty()) {
        const TMeasuredText& m = FCaptionText;
        const int u = labelStart + LabelBandExtent() + FCaptionScalingsGap;
        if (FVertical) // rotated a quarter turn, reading upward
            FCaptionPos = QPoint(across(u, m.Height(), FLineX) - m.Top, FLineY + FAxisLength / 2 + m.Width / 2);
        else
            FCaptionPos = QPoint(FLineX + FAxisLength / 2 - m.Width / 2, across(u, m.Height(), FLineY) - m.Top);
    }
}

// ---------------------------------------------------------------------------------
// Graph layout

void TVxAxis::LayoutGraph(TVx2DGraph& graph)
{
    constexpr int CPadding = 5;   // free border inside the graph
    constexpr int CStackGap = 6;  // between axes stacked on one side
    const QList<TVxAxis*> all = ComponentsOf<TVxAxis>(&graph);
    QList<TVxAxis*> axes;
    for (TVxAxis* a : all)
        if (a->Visible())
            axes.append(a);

    // Scaling of every visible axis, in component order (slaves after their masters
    // only when created after them).
    for (TVxAxis* a : axes)
        a->ScalePass();

    // Sides: the primary axis nearest the data, the others outward in component order.
    TVxAxis* px = graph.PrimaryXAxis();
    TVxAxis* py = graph.PrimaryYAxis();
    auto spans0 = [](const TVxAxis* a) { return a && a->Visible() && a->Start() <= 0 && 0 < a->Stop(); };
    QList<TVxAxis*> side[4];
    QList<TVxAxis*> loose;
    TVxAxis* crossingX = nullptr;
    TVxAxis* crossingY = nullptr;
    for (TVxAxis* a : axes) {
        if (graph.ZeroOrigin() && a == px && spans0(py))
            crossingX = a;
        else if (graph.ZeroOrigin() && a == py && spans0(px))
            crossingY = a;
        else if (!a->AutoSize() || a->Position() < AxBottomPos || a->Position() > AxRightPos)
            loose.append(a);
        else if (a == px || a == py)
            side[a->Position()].prepend(a);
        else
            side[a->Position()].append(a);
    }

    // Legends placed at a side, outermost.
    struct TPlacedLegend { QWidget* W; IVxGraphLegend* L; };
    QList<TPlacedLegend> legends;
    int legendSpace[4] = {0, 0, 0, 0};
    for (QWidget* w : graph.Legends()) {
        auto* l = dynamic_cast<IVxGraphLegend*>(w);
        if (!l || w->isHidden() || w->parentWidget() != &graph || l->InGraphPosition() < AxBottomPos
            || l->InGraphPosition() > AxRightPos)
            continue;
        l->Calculate();
        const int pos = l->InGraphPosition();
        const int extent = pos == AxBottomPos || pos == AxTopPos ? w->height() : w->width();
        legendSpace[pos] += extent + l->OutsideGap();
        legends.append({w, l});
    }

    // Margins: the stacks, the legends, the title, and the labels overhanging line ends.
    const int W = graph.width();
    const int H = graph.height();
    int margin[4];
    for (int p = 0; p < 4; ++p) {
        int stack = 0;
        for (int k = 0; k < side[p].size(); ++k)
            stack += k == 0 ? side[p][k]->OuterThickness() - 1 : side[p][k]->Thickness() + CStackGap;
        margin[p] = stack + legendSpace[p] + CPadding;
    }
    int titleHeight = 0;
    if (TVxCustomLabel* title = graph.TitleLabel(); title && graph.ShowTitle() && !title->isHidden()) {
        title->AdjustBounds();
        titleHeight = title->height() + CPadding;
        margin[AxTopPos] += titleHeight;
    }
    for (TVxAxis* a : axes) {
        if (a->Vertical()) {
            margin[AxTopPos] = std::max(margin[AxTopPos], a->OverhangBefore() + CPadding + titleHeight);
            margin[AxBottomPos] = std::max(margin[AxBottomPos], a->OverhangAfter() + CPadding);
        } else {
            margin[AxLeftPos] = std::max(margin[AxLeftPos], a->OverhangBefore() + CPadding);
            margin[AxRightPos] = std::max(margin[AxRightPos], a->OverhangAfter() + CPadding);
        }
    }
    const int L = margin[AxLeftPos];
    const int T = margin[AxTopPos];
    const int R = std::max(L + 2, W - margin[AxRightPos]);
    const int B = std::max(T + 2, H - margin[AxBottomPos]);
    const int xLength = R - L - 1;
    const int yLength = B - T - 1;
    for (TVxAxis* a : axes)
        a->SetAxisLength(a->Vertical() ? yLength : xLength);

    // Stacks outward from the data rectangle.
    int edge = 0;
    for (int k = 0; k < side[AxBottomPos].size(); ++k) {
        TVxAxis* a = side[AxBottomPos][k];
        const int line = k == 0 ? B - 1 : edge + CStackGap + a->InnerThickness();
        a->PlaceLine(QPoint(L, line), xLength);
        edge = line + a->OuterThickness();
    }
    for (int k = 0; k < side[AxTopPos].size(); ++k) {
        TVxAxis* a = side[AxTopPos][k];
        const int line = k == 0 ? T : edge - CStackGap - a->InnerThickness() - 1;
        a->PlaceLine(QPoint(L, line), xLength);
        edge = line - a->OuterThickness() + 1;
    }
    for (int k = 0; k < side[AxLeftPos].size(); ++k) {
        TVxAxis* a = side[AxLeftPos][k];
        const int line = k == 0 ? L : edge - CStackGap - a->InnerThickness() - 1;
        a->PlaceLine(QPoint(line, T), yLength);
        edge = line - a->OuterThickness() + 1;
    }
    for (int k = 0; k < side[AxRightPos].size(); ++k) {
        TVxAxis* a = side[AxRightPos][k];
        const int line = k == 0 ? R - 1 : edge + CStackGap + a->InnerThickness();
        a->PlaceLine(QPoint(line, T), yLength);
        edge = line + a->OuterThickness();
    }
    // Axes crossing at the origin sit on the other axis's zero.
    if (crossingX)
        crossingX->PlaceLine(QPoint(L, T + py->RealToIntPosition(0.0)), xLength);
    if (crossingY)
        crossingY->PlaceLine(QPoint(L + px->RealToIntPosition(0.0), T), yLength);
    // Free-floating axes keep their place across the line and follow the data along it.
    for (TVxAxis* a : loose) {
        if (!a->AutoSize()) {
            a->LayoutStandalone();
            continue;
        }
        const QPoint line = a->geometry().topLeft() + QPoint(a->LineX(), a->LineY());
        a->PlaceLine(a->Vertical() ? QPoint(line.x(), T) : QPoint(L, line.y()), a->Vertical() ? yLength : xLength);
    }

    // End ticks pointing into the data coincide with the frame or a crossing axis.
    const bool frame = graph.FrameLine().Visible();
    for (TVxAxis* a : axes) {
        a->FDrawFirstTick = true;
        a->FDrawLastTick = true;
        const int s = a->OutwardSign();
        const bool inward = s * a->FMajorTickLength < 0 || s * a->FTickLength < 0;
        if (!inward || a->FTickPositions.empty())
            continue;
        const bool crossedBefore = a->Vertical() ? frame || !side[AxTopPos].isEmpty() : frame || !side[AxLeftPos].isEmpty();
        const bool crossedAfter = a->Vertical() ? frame || !side[AxBottomPos].isEmpty() : frame || !side[AxRightPos].isEmpty();
        auto atEnd = [&](int i) {
            const int o = a->TickScreenOffset(i);
            return (o == 0 && crossedBefore) || (o == a->FAxisLength && crossedAfter);
        };
        a->FDrawFirstTick = !atEnd(0);
        a->FDrawLastTick = !atEnd(int(a->FTickPositions.size()) - 1);
    }

    // Drawing world, legends and title.
    graph.DrawingWorld()->setGeometry(L, T, R - L, B - T);
    int used[4] = {CPadding, CPadding, CPadding, CPadding};
    for (const TPlacedLegend& pl : legends) {
        QWidget* w = pl.W;
        const int pos = pl.L->InGraphPosition();
        QPoint at;
        switch (pos) {
        case AxBottomPos: at = QPoint(L + (R - L - w->width()) / 2, H - used[pos] - w->height()); break;
        case AxTopPos: at = QPoint(L + (R - L - w->width()) / 2, titleHeight + used[pos]); break;
        case AxLeftPos: at = QPoint(used[pos], T + (B - T - w->height()) / 2); break;
        default: at = QPoint(W - used[pos] - w->width(), T + (B - T - w->height()) / 2); break;
        }
        used[pos] += (pos == AxBottomPos || pos == AxTopPos ? w->height() : w->width()) + pl.L->OutsideGap();
        w->move(at);
    }
    if (TVxCustomLabel* title = graph.TitleLabel(); title && titleHeight > 0)
        title->move((W - title->width()) / 2, CPadding);
    for (TVxAxis* a : axes) {
        a->FLayoutChanged = false;
        a->update();
    }
}

// ---------------------------------------------------------------------------------
// Painting

void TVxAxis::PaintTo(TCanvas& canvas) const
{
    if (!FTransparent) {
        canvas.Brush().SetStyle(bsSolid);
        canvas.Brush().SetColor(FColor);
        canvas.FillRect(rect());
    }
    // Ticks, then the line.
    const int count = int(FTickPositions.size());
    const int first = FDrawFirstTick ? 0 : 1;
    const int last = count - 1 - (FDrawLastTick ? 0 : 1);
    // A range that ends at the first tick draws no ticks at all.
    auto ticks = [&](bool major, TColor color, int width, int length) {
        canvas.Pen().SetStyle(psSolid);
        canvas.Pen().SetColor(color);
        canvas.Pen().SetWidth(width);
        for (int i = first; i <= last && last > 0; ++i) {
            if (FTicks.TickIsMajor[i] != major)
                continue;
            const int o = TickScreenOffset(i);
            if (FVertical)
                DrawLine(FLineX, FLineY + o, FLineX + length, FLineY + o, canvas);
            else
                DrawLine(FLineX + o, FLineY, FLineX + o, FLineY + length, canvas);
        }
    };
    ticks(true, FMajorTickColor, FMajorTickThicknes, FMajorTickLength);
    ticks(false, FTickColor, FTickThicknes, FTickLength);
    canvas.Pen().SetColor(FAxisColor);
    canvas.Pen().SetWidth(FAxisThicknes);
    if (FVertical)
        DrawLine(FLineX, FLineY + FAxisLength, FLineX, FLineY, canvas);
    else
        DrawLine(FLineX, FLineY, FLineX + FAxisLength + 1, FLineY, canvas);

    // Labels, the power-of-ten label and the caption.
    canvas.Brush().SetStyle(bsClear);
    auto text = [&canvas](const QString& s, QPoint at, const TFont& font, int angle) {
        canvas.SetFont(font);
        TVxCaptionRec rec;
        rec.Text = s;
        rec.Canvas = &canvas;
        rec.X = at.x();
        rec.Y = at.y();
        rec.Angle = angle;
        rec.Paint = true;
        RichPaintTo(rec);
    };
    for (const TVxAxisPlacedLabel& l : FLabels)
        text(l.Text, l.Pos, *FFont, 0);
    if (!FExponentText.Text.isEmpty())
        text(FExponentText.Text, FExponentPos, *FFont, 0);
    if (!FCaptionText.Text.isEmpty())
        text(FCaptionText.Text, FCaptionPos, *FCaptionFont, FVertical ? 900 : 0);
}

void TVxAxis::paintEvent(QPaintEvent*)
{
    GuardEvent([this] {
        if (isHidden())
            return;
        if (FLayoutChanged || FTicksChanged) {
            TVx2DGraph* g = Graph();
            const bool batch = g && g->NotUpdating();
            if (batch)
                g->BeginUpdate();
            struct TEnd {
                TVx2DGraph* G;
                ~TEnd() { if (G) G->EndUpdate(); }
            } end{batch ? g : nullptr};
            if (FLayoutChanged)
                Calculate();
            if (FTicksChanged)
                CalculateTicks();
            FLayoutChanged = false;
        }
        QPainter painter(this);
        TCanvas canvas(&painter);
        PaintTo(canvas);
    });
}

bool TVxAxis::Visible() const
{
    return !isHidden() || (isWindow() && !testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void TVxAxis::setVisible(bool visible)
{
    const bool was = Visible();
    QWidget::setVisible(visible);
    if (was != visible) {
        FTicksChanged = true;
        SetLayoutChanged();
    }
}

void TVxAxis::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (!FInLayout && Graph() && FPosition == AxFreeFloating)
        SetLayoutChanged();
}

void TVxAxis::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!FInLayout)
        SetLayoutChanged();
}

// ---------------------------------------------------------------------------------
// Drawing-side properties

namespace {
template <class T>
bool StoreIfChanged(T& field, const T& value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}
} // namespace

void TVxAxis::SetShowCaption(bool value) { if (StoreIfChanged(FShowCaption, value)) SetLayoutChanged(); }
void TVxAxis::SetShowScaleLabels(bool value) { if (StoreIfChanged(FOptions.ShowScaleLabels, value)) SetLayoutChanged(); }
void TVxAxis::SetAutoSize(bool value) { if (StoreIfChanged(FAutoSize, value)) SetLayoutChanged(); }
void TVxAxis::SetTransparent(bool value) { if (StoreIfChanged(FTransparent, value)) Invalidate(); }
void TVxAxis::SetBorderCaptionGap(int value) { if (StoreIfChanged(FBorderCaptionGap, value)) SetLayoutChanged(); }
void TVxAxis::SetCaptionScalingsGap(int value) { if (StoreIfChanged(FCaptionScalingsGap, value)) SetLayoutChanged(); }
void TVxAxis::SetScalingsTicksGap(int value) { if (StoreIfChanged(FScalingsTicksGap, value)) SetLayoutChanged(); }
void TVxAxis::SetExponentScalingsGap(int value) { if (StoreIfChanged(FExponentScalingsGap, value)) SetLayoutChanged(); }
void TVxAxis::SetValuesTicksGap(int value) { if (StoreIfChanged(FValuesTicksGap, value)) SetLayoutChanged(); }
void TVxAxis::SetMajorTickLength(int value) { if (StoreIfChanged(FMajorTickLength, value)) SetLayoutChanged(); }
void TVxAxis::SetTickLength(int value) { if (StoreIfChanged(FTickLength, value)) SetLayoutChanged(); }
void TVxAxis::SetColor(TColor value) { if (StoreIfChanged(FColor, value)) Invalidate(); }
void TVxAxis::SetAxisColor(TColor value) { if (StoreIfChanged(FAxisColor, value)) Invalidate(); }
void TVxAxis::SetTickColor(TColor value) { if (StoreIfChanged(FTickColor, value)) Invalidate(); }
void TVxAxis::SetMajorTickColor(TColor value) { if (StoreIfChanged(FMajorTickColor, value)) Invalidate(); }
void TVxAxis::SetAxisThicknes(int value) { if (StoreIfChanged(FAxisThicknes, std::max(0, value))) SetLayoutChanged(); }
void TVxAxis::SetTickThicknes(int value) { if (StoreIfChanged(FTickThicknes, std::max(0, value))) Invalidate(); }
void TVxAxis::SetMajorTickThicknes(int value) { if (StoreIfChanged(FMajorTickThicknes, std::max(0, value))) Invalidate(); }

void TVxAxis::SetFont(const TFont& font) { FFont->Assign(font); }
void TVxAxis::SetCaptionFont(const TFont& font) { FCaptionFont->Assign(font); }

void TVxAxis::SetCaption(const QString& value)
{
    if (StoreIfChanged(FCaption, value))
        SetLayoutChanged();
}

void TVxAxis::SetDoUserCaption(bool value)
{
    if (!StoreIfChanged(FDoUserCaption, value))
        return;
    SetCaption(value ? FUserCaption : FAutoCaption);
}

void TVxAxis::SetUserCaption(const QString& value)
{
    FUserCaption = value;
    if (FDoUserCaption)
        SetCaption(value);
}

void TVxAxis::SetAutoCaption(const QString& value)
{
    FAutoCaption = value;
    if (!FDoUserCaption)
        SetCaption(value);
}

// ---------------------------------------------------------------------------------
// Persistence

void TVxAxis::SaveOutfit(const QString& section, TVxIniList& ini) const
{
    ini.WriteFont(section, QStringLiteral("Font"), *FFont);
    ini.WriteFont(section, QStringLiteral("CaptionFont"), *FCaptionFont);
    ini.WriteBool(section, QStringLiteral("DoUserCaption"), FDoUserCaption);
    ini.WriteString(section, QStringLiteral("UserCaption"), FUserCaption);
    ini.WriteBool(section, QStringLiteral("Visible"), Visible());
    ini.WriteBool(section, QStringLiteral("Twisted"), FOptions.Twisted);
    ini.WriteBool(section, QStringLiteral("ShowCaption"), FShowCaption);
    ini.WriteBool(section, QStringLiteral("ShowScaleLabels"), FOptions.ShowScaleLabels);
    ini.WriteInteger(section, QStringLiteral("MajorTickLength"), FMajorTickLength);
    ini.WriteInteger(section, QStringLiteral("TickLength"), FTickLength);
    ini.WriteInteger(section, QStringLiteral("StartEnd"), FOptions.StartEnd);
    ini.WriteInteger(section, QStringLiteral("StopEnd"), FOptions.StopEnd);
    ini.WriteReal(section, QStringLiteral("Start"), Start());
    ini.WriteReal(section, QStringLiteral("Stop"), Stop());
    ini.WriteInteger(section, QStringLiteral("BorderCaptionGap"), FBorderCaptionGap);
    ini.WriteInteger(section, QStringLiteral("CaptionScalingsGap"), FCaptionScalingsGap);
    ini.WriteInteger(section, QStringLiteral("ScalingsTicksGap"), FScalingsTicksGap);
    ini.WriteInteger(section, QStringLiteral("ValuesTicksGap"), FValuesTicksGap);
    ini.WriteInteger(section, QStringLiteral("AxisColor"), FAxisColor);
    ini.WriteInteger(section, QStringLiteral("MajorTickColor"), FMajorTickColor);
    ini.WriteInteger(section, QStringLiteral("TickColor"), FTickColor);
    ini.WriteBool(section, QStringLiteral("AutoTicks"), FOptions.AutoTicks);
    ini.WriteReal(section, QStringLiteral("TickPart"), FScale.TickPart);
    ini.WriteReal(section, QStringLiteral("MajorTickPart"), FScale.MajorTickPart);
    ini.WriteReal(section, QStringLiteral("LabelPart"), FScale.LabelPart);
    ini.WriteInteger(section, QStringLiteral("Scaling"), FOptions.Scaling);
}

void TVxAxis::LoadOutfit(const QString& section, TVxIniList& ini)
{
    // Enumerations outside their ordinals keep the current value.
    auto readEnum = [&](const char* key, int current, int count) {
        const int v = ini.ReadInteger(section, QLatin1String(key), current);
        return v >= 0 && v < count ? v : current;
    };
    TFont font = *FFont;
    ini.ReadFont(section, QStringLiteral("Font"), font);
    SetFont(font);
    TFont captionFont = *FCaptionFont;
    ini.ReadFont(section, QStringLiteral("CaptionFont"), captionFont);
    SetCaptionFont(captionFont);
    SetUserCaption(ini.ReadString(section, QStringLiteral("UserCaption"), FUserCaption));
    SetDoUserCaption(ini.ReadBool(section, QStringLiteral("DoUserCaption"), FDoUserCaption));
    // Only a change: showing an axis without a parent would open a window.
    if (const bool visible = ini.ReadBool(section, QStringLiteral("Visible"), Visible()); visible != Visible())
        setVisible(visible);
    SetTwisted(ini.ReadBool(section, QStringLiteral("Twisted"), FOptions.Twisted));
    SetShowCaption(ini.ReadBool(section, QStringLiteral("ShowCaption"), FShowCaption));
    SetShowScaleLabels(ini.ReadBool(section, QStringLiteral("ShowScaleLabels"), FOptions.ShowScaleLabels));
    SetMajorTickLength(ini.ReadInteger(section, QStringLiteral("MajorTickLength"), FMajorTickLength));
    SetTickLength(ini.ReadInteger(section, QStringLiteral("TickLength"), FTickLength));
    SetStartEnd(TVxAxEnd(readEnum("StartEnd", FOptions.StartEnd, 3)));
    SetStopEnd(TVxAxEnd(readEnum("StopEnd", FOptions.StopEnd, 3)));
    SetStart(ini.ReadReal(section, QStringLiteral("Start"), Start()));
    SetStop(ini.ReadReal(section, QStringLiteral("Stop"), Stop()));
    SetBorderCaptionGap(ini.ReadInteger(section, QStringLiteral("BorderCaptionGap"), FBorderCaptionGap));
    SetCaptionScalingsGap(ini.ReadInteger(section, QStringLiteral("CaptionScalingsGap"), FCaptionScalingsGap));
    SetScalingsTicksGap(ini.ReadInteger(section, QStringLiteral("ScalingsTicksGap"), FScalingsTicksGap));
    SetValuesTicksGap(ini.ReadInteger(section, QStringLiteral("ValuesTicksGap"), FValuesTicksGap));
    SetAxisColor(ini.ReadInteger(section, QStringLiteral("AxisColor"), FAxisColor));
    SetMajorTickColor(ini.ReadInteger(section, QStringLiteral("MajorTickColor"), FMajorTickColor));
    SetTickColor(ini.ReadInteger(section, QStringLiteral("TickColor"), FTickColor));
    SetAutoTicks(ini.ReadBool(section, QStringLiteral("AutoTicks"), FOptions.AutoTicks));
    const double parts[3] = {ini.ReadReal(section, QStringLiteral("TickPart"), FScale.TickPart),
                             ini.ReadReal(section, QStringLiteral("MajorTickPart"), FScale.MajorTickPart),
                             ini.ReadReal(section, QStringLiteral("LabelPart"), FScale.LabelPart)};
    if (!FOptions.AutoTicks) {
        for (double p : parts)
            CheckPart(p);
        SetTickPart(parts[0]);
        SetMajorTickPart(parts[1]);
        SetLabelPart(parts[2]);
    }
    SetScaling(TVxAxScaling(readEnum("Scaling", FOptions.Scaling, 3)));
}

} // namespace vx
