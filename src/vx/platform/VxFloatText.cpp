#include "vx/platform/VxFloatText.h"

#include "vx/platform/VxExceptions.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace vx {

namespace {

QChar GDecimalSeparator = QLatin1Char('.');
QChar GThousandSeparator = QLatin1Char(',');
QString GCurrencyString = QStringLiteral("$");

// Width of the platform's extended decimal conversion.
constexpr int CMaxDigits = 18;
// "No limit on decimals" for the significant-digit formats.
constexpr int CNoDecimals = 9999;

// A real as decimal digits: value = 0.Digits * 10^Exponent. Zero (or a value rounded
// away entirely) has no digits.
struct TFloatRec {
    enum Kind { Finite, NaN, PosInf, NegInf };
    Kind kind = Finite;
    bool negative = false;
    int exponent = 0;
    std::string digits;
};

// Rounds |value| to at most `precision` significant digits and at most `decimals` digits
// after the point, half away from zero, starting from the correctly rounded 18-digit form.
TFloatRec FloatToDecimal(double value, int precision, int decimals)
{
    TFloatRec rec;
    if (std::isnan(value)) {
        rec.kind = TFloatRec::NaN;
        return rec;
    }
    if (std::isinf(value)) {
        rec.kind = value > 0 ? TFloatRec::PosInf : TFloatRec::NegInf;
        return rec;
    }
    if (value == 0.0)
        return rec;
    rec.negative = value < 0.0;

    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(value),
                                   std::chars_format::scientific, CMaxDigits - 1);
    const std::string text(buf, res.ptr);
    const size_t ePos = text.find('e');
    std::string digits = text.substr(0, 1) + text.substr(2, ePos - 2);
    int exponent = std::stoi(text.substr(ePos + 1)) + 1;

    int keep = precision;
    if (decimals != CNoDecimals)
        keep = std::min(keep, exponent + decimals);
    if (keep < 0)
        return TFloatRec{TFloatRec::Finite, rec.negative, 0, {}};
    if (keep < int(digits.size())) {
        const bool up = digits[size_t(keep)] >= '5';
        digits.resize(size_t(keep));
        if (up) {
            int i = keep - 1;
            while (i >= 0 && digits[size_t(i)] == '9')
                digits[size_t(i--)] = '0';
            if (i >= 0) {
                ++digits[size_t(i)];
            } else {
                digits.insert(digits.begin(), '1');
                digits.pop_back();
                if (digits.empty())
                    digits = "1";
                ++exponent;
            }
        }
    }
    while (!digits.empty() && digits.back() == '0')
        digits.pop_back();
    if (digits.empty())
        return TFloatRec{TFloatRec::Finite, rec.negative, 0, {}};
    rec.digits = digits;
    rec.exponent = exponent;
    return rec;
}

QString SpecialText(const TFloatRec& rec)
{
    switch (rec.kind) {
    case TFloatRec::NaN: return QStringLiteral("NAN");
    case TFloatRec::PosInf: return QStringLiteral("INF");
    case TFloatRec::NegInf: return QStringLiteral("-INF");
    default: return QString();
    }
}

// Digit i (0-based) of the record, '0' beyond the stored digits.
char DigitAt(const TFloatRec& rec, int i)
{
    return (i >= 0 && i < int(rec.digits.size())) ? rec.digits[size_t(i)] : '0';
}

QString ExponentText(int e, int minDigits, bool plusSign)
{
    QString s = QString::number(std::abs(e));
    if (s.size() < minDigits)
        s = QString(minDigits - s.size(), QLatin1Char('0')) + s;
    if (e < 0)
        return QLatin1Char('-') + s;
    return plusSign ? QLatin1Char('+') + s : s;
}

QString FormatGeneral(const TFloatRec& rec, int precision, int expDigits)
{
    if (rec.digits.empty())
        return QStringLiteral("0");
    const int n = int(rec.digits.size());
    const int e = rec.exponent;
    QString s;
    if (rec.negative)
        s += QLatin1Char('-');
    if (e > precision || e < -3) {
        s += QLatin1Char(rec.digits[0]);
        if (n > 1) {
            s += GDecimalSeparator;
            s += QString::fromLatin1(rec.digits.data() + 1, n - 1);
        }
        s += QLatin1Char('E');
        s += ExponentText(e - 1, expDigits, false);
    } else if (e <= 0) {
        s += QLatin1Char('0');
        s += GDecimalSeparator;
        s += QString(-e, QLatin1Char('0'));
        s += QString::fromLatin1(rec.digits.data(), n);
    } else {
        for (int i = 0; i < e; ++i)
            s += QLatin1Char(DigitAt(rec, i));
        if (n > e) {
            s += GDecimalSeparator;
            s += QString::fromLatin1(rec.digits.data() + e, n - e);
        }
    }
    return s;
}

// Mantissa "d.ddd" with `count` digits, then 'E' and the exponent; used by ffExponent and
// by the 23-character form.
QString ScientificBody(const TFloatRec& rec, int count, QChar point, int expDigits)
{
    QString s;
    s += QLatin1Char(DigitAt(rec, 0));
    s += point;
    for (int i = 1; i < count; ++i)
        s += QLatin1Char(DigitAt(rec, i));
    s += QLatin1Char('E');
    s += ExponentText(rec.digits.empty() ? 0 : rec.exponent - 1, expDigits, true);
    return s;
}

// Unsigned "ddd.ddd" with `decimals` decimals, thousands separators when `grouped`.
QString FixedBody(const TFloatRec& rec, int decimals, bool grouped)
{
    const int e = rec.digits.empty() ? 0 : rec.exponent;
    QString intPart;
    if (e <= 0) {
        intPart = QStringLiteral("0");
    } else {
        for (int i = 0; i < e; ++i)
            intPart += QLatin1Char(DigitAt(rec, i));
    }
    if (grouped && !GThousandSeparator.isNull()) {
        for (int pos = int(intPart.size()) - 3; pos > 0; pos -= 3)
            intPart.insert(pos, GThousandSeparator);
    }
    if (decimals <= 0)
        return intPart;
    QString s = intPart + GDecimalSeparator;
    for (int i = 0; i < decimals; ++i)
        s += QLatin1Char(DigitAt(rec, e + i));
    return s;
}

// Result of scanning a real number in a text.
struct TRealScan {
    int stop = 0;            // index of the first character not used
    bool ok = false;         // a complete number was read up to `stop`
    bool overflow = false;   // the number exceeds the double range
    double value = 0.0;
};

// Scans [sign] digits [point digits] [E [sign] digits] from index `from`; at least one
// mantissa digit and, after 'E', at least one exponent digit are needed.
TRealScan ScanReal(const QString& text, int from, QChar point)
{
    TRealScan scan;
    const int len = int(text.size());
    int i = from;
    std::string number;
    if (i < len && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
        if (text[i] == QLatin1Char('-'))
            number += '-';
        ++i;
    }
    std::string mantissa;
    int pointIndex = -1;
    auto isDigit = [&](int k) { return k < len && text[k] >= QLatin1Char('0') && text[k] <= QLatin1Char('9'); };
    while (isDigit(i))
        mantissa += char(text[i++].unicode());
    if (i < len && text[i] == point) {
        pointIndex = int(mantissa.size());
        ++i;
        while (isDigit(i))
            mantissa += char(text[i++].unicode());
    }
    if (mantissa.empty()) {
        scan.stop = i;
        return scan;
    }
    long long exponent = 0;
    if (i < len && (text[i] == QLatin1Char('E') || text[i] == QLatin1Char('e'))) {
        ++i;
        bool negExp = false;
        if (i < len && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
            negExp = text[i] == QLatin1Char('-');
            ++i;
        }
        if (!isDigit(i)) {
            scan.stop = i;
            return scan;
        }
        while (isDigit(i)) {
            // Saturate: anything beyond this is far outside the double range anyway.
            exponent = std::min(exponent * 10 + (text[i++].unicode() - '0'), 100000000LL);
        }
        if (negExp)
            exponent = -exponent;
    }
    scan.stop = i;
    scan.ok = true;

    if (pointIndex < 0)
        pointIndex = int(mantissa.size());
    const size_t firstNonZero = mantissa.find_first_not_of('0');
    if (firstNonZero == std::string::npos) {
        scan.value = number.empty() ? 0.0 : -0.0;
        return scan;
    }
    // Decimal magnitude of the leading digit, to tell overflow from underflow.
    const long long magnitude = pointIndex - 1 - (long long)firstNonZero + exponent;
    if (magnitude > 400) {
        scan.overflow = true;
        return scan;
    }
    if (magnitude < -400) {
        scan.value = number.empty() ? 0.0 : -0.0;
        return scan;
    }
    number += mantissa.substr(0, size_t(pointIndex));
    number += '.';
    number += mantissa.substr(size_t(pointIndex));
    number += 'e';
    number += std::to_string(exponent);
    double v = 0.0;
    const auto res = std::from_chars(number.data(), number.data() + number.size(), v);
    if (res.ec == std::errc::result_out_of_range) {
        if (magnitude > 0)
            scan.overflow = true;
        else
            scan.value = number[0] == '-' ? -0.0 : 0.0;
        return scan;
    }
    scan.value = v;
    return scan;
}

int SkipBlanks(const QString& text, int from)
{
    while (from < int(text.size()) && text[from] == QLatin1Char(' '))
        ++from;
    return from;
}

} // namespace

QChar DecimalSeparator() { return GDecimalSeparator; }
void SetDecimalSeparator(QChar separator) { GDecimalSeparator = separator; }
QChar ThousandSeparator() { return GThousandSeparator; }
void SetThousandSeparator(QChar separator) { GThousandSeparator = separator; }
QString CurrencyString() { return GCurrencyString; }
void SetCurrencyString(const QString& symbol) { GCurrencyString = symbol; }

QString FloatToStrF(double value, TFloatFormat format, int precision, int digits)
{
    precision = std::clamp(precision, 2, CMaxDigits);
    const bool fixedKind = format == ffFixed || format == ffNumber || format == ffCurrency;
    const int decimals = fixedKind ? std::clamp(digits, 0, CMaxDigits) : CNoDecimals;
    const TFloatRec rec = FloatToDecimal(value, precision, decimals);
    if (rec.kind != TFloatRec::Finite)
        return SpecialText(rec);

    const int expDigits = std::clamp(digits, 0, 4);
    const bool signShown = rec.negative && !rec.digits.empty();
    switch (format) {
    case ffGeneral:
        return FormatGeneral(rec, precision, expDigits);
    case ffExponent:
        return (signShown ? QStringLiteral("-") : QString())
            + ScientificBody(rec, precision, GDecimalSeparator, expDigits);
    case ffFixed:
    case ffNumber:
    case ffCurrency:
        break;
    }
    // Too many integer digits for the precision: the general form takes over.
    if (!rec.digits.empty() && rec.exponent > precision)
        return FormatGeneral(FloatToDecimal(value, precision, CNoDecimals), precision, 0);
    const QString body = FixedBody(rec, decimals, format != ffFixed);
    if (format == ffCurrency) {
        return signShown ? QLatin1Char('(') + GCurrencyString + body + QLatin1Char(')')
                         : GCurrencyString + body;
    }
    return signShown ? QLatin1Char('-') + body : body;
}

QString FloatToStr(double x)
{
    return FloatToStrF(x, ffGeneral, 15, 0);
}

QString RealToText23(double x)
{
    const TFloatRec rec = FloatToDecimal(x, 15, CNoDecimals);
    QString s;
    switch (rec.kind) {
    case TFloatRec::NaN: s = QStringLiteral("Nan"); break;
    case TFloatRec::PosInf: s = QStringLiteral("+Inf"); break;
    case TFloatRec::NegInf: s = QStringLiteral("-Inf"); break;
    case TFloatRec::Finite:
        s = QLatin1Char(rec.negative && !rec.digits.empty() ? '-' : ' ')
            + ScientificBody(rec, 15, QLatin1Char('.'), 4);
        break;
    }
    return s.rightJustified(23, QLatin1Char(' '));
}

void Val(const QString& text, double& value, int& code)
{
    value = 0.0;
    const TRealScan scan = ScanReal(text, SkipBlanks(text, 0), QLatin1Char('.'));
    if (!scan.ok) {
        code = scan.stop + 1;
        return;
    }
    if (scan.stop < int(text.size())) {
        code = scan.stop + 1;
        return;
    }
    if (scan.overflow)
        throw EOverflow();
    code = 0;
    value = scan.value;
}

void Val(const QString& text, int& value, int& code)
{
    value = 0;
    const int len = int(text.size());
    int i = SkipBlanks(text, 0);
    bool negative = false;
    if (i < len && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
        negative = text[i] == QLatin1Char('-');
        ++i;
    }
    int base = 10;
    if (i < len && text[i] == QLatin1Char('$')) {
        base = 16;
        ++i;
    } else if (i + 1 < len && text[i] == QLatin1Char('0')
               && (text[i + 1] == QLatin1Char('x') || text[i + 1] == QLatin1Char('X'))) {
        base = 16;
        i += 2;
    }
    // Decimal values are limited to the signed range, hexadecimal ones to 32 bits.
    const std::int64_t limit = base == 16 ? 0xFFFFFFFFLL : (negative ? 2147483648LL : 2147483647LL);
    std::int64_t acc = 0;
    const int firstDigit = i;
    for (; i < len; ++i) {
        const char16_t c = text[i].unicode();
        int d = -1;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (base == 16 && c >= 'a' && c <= 'f')
            d = c - 'a' + 10;
        else if (base == 16 && c >= 'A' && c <= 'F')
            d = c - 'A' + 10;
        if (d < 0)
            break;
        acc = acc * base + d;
        if (acc > limit) {
            code = i + 1;
            return;
        }
    }
    if (i == firstDigit || i < len) {
        code = i + 1;
        return;
    }
    code = 0;
    const std::int64_t v = negative ? -acc : acc;
    value = int(std::uint32_t(v));
}

bool TryStrToFloat(const QString& text, double& value)
{
    int end = int(text.size());
    while (end > 0 && text[end - 1] == QLatin1Char(' '))
        --end;
    const QString body = text.left(end);
    const TRealScan scan = ScanReal(body, SkipBlanks(body, 0), GDecimalSeparator);
    if (!scan.ok || scan.overflow || scan.stop != end)
        return false;
    value = scan.value;
    return true;
}

double StrToFloat(const QString& text)
{
    double v = 0.0;
    if (!TryStrToFloat(text, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(text));
    return v;
}

bool TryStrToInt(const QString& text, int& value)
{
    int code = 0;
    int v = 0;
    Val(text, v, code);
    if (code != 0)
        return false;
    value = v;
    return true;
}

int StrToInt(const QString& text)
{
    int v = 0;
    if (!TryStrToInt(text, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid integer value").arg(text));
    return v;
}

} // namespace vx
