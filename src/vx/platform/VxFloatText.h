#pragma once
// Real <-> text conversions of the run-time library, reproduced character for
// character and independent of the C locale.
//
// Digits come from the shortest correctly rounded 18-significant-digit decimal form
// of the double (the width of the platform's extended conversion), then are rounded
// half away from zero to the requested precision or number of decimals, as the
// platform's float-to-decimal step does. The screen forms (FloatToStrF, FloatToStr,
// StrToFloat) use the settable DecimalSeparator; Val and the 23-character text form
// always use '.'.

#include <QChar>
#include <QString>

namespace vx {

enum TFloatFormat { ffGeneral, ffExponent, ffFixed, ffNumber, ffCurrency };

// Decimal separator of the screen forms; '.' until set.
QChar DecimalSeparator();
void SetDecimalSeparator(QChar separator);

// Thousands separator of ffNumber and ffCurrency; ',' until set.
QChar ThousandSeparator();
void SetThousandSeparator(QChar separator);

// Currency symbol of ffCurrency, put in front ("$1.00", negative "($1.00)"); "$" until set.
QString CurrencyString();
void SetCurrencyString(const QString& symbol);

// Formats value. Precision is clamped to 2..18 significant digits, Digits to 0..18.
//  ffGeneral:  shortest of fixed and scientific with at most Precision significant
//              digits, trailing zeros removed; scientific when the value has more than
//              Precision integer digits or is below 1E-4 ("1E20", "1.5E-7": no '+',
//              exponent padded to Digits (0..4) digits).
//  ffExponent: "-d.ddd...E+dddd" with Precision digits and at least Digits (0..4)
//              exponent digits, the exponent sign always written.
//  ffFixed:    Digits decimals; falls back to ffGeneral when the value has more than
//              Precision integer digits.
//  ffNumber:   as ffFixed with thousands separators.
//  ffCurrency: as ffNumber behind the currency symbol; negative values in parentheses.
// NaN and infinities give "NAN", "INF" and "-INF"; a value that rounds to zero has no sign.
QString FloatToStrF(double value, TFloatFormat format, int precision, int digits);

// The default conversion: FloatToStrF(x, ffGeneral, 15, 0).
QString FloatToStr(double x);

// The 23-character scientific form (Pascal's Str(X:23)): sign (blank or '-'), one digit,
// '.', fourteen digits, 'E', exponent sign, four exponent digits, e.g.
// " 1.23450000000000E+0003"; the mantissa is rounded to 15 significant digits, so
// 9.9999999999999982 gives " 1.00000000000000E+0001", and zero " 0.00000000000000E+0000".
// NaN and infinities give "Nan", "+Inf", "-Inf" right-aligned in 23 characters.
QString RealToText23(double x);

// Pascal's Val for reals: leading blanks, optional sign, digits with an optional '.'
// (always a point), optional exponent 'E'/'e' with optional sign and at least one digit.
// code = 0 when the whole text converted, otherwise the 1-based position of the first
// character that could not be used (length + 1 when the text ended too early, e.g. "",
// "-", "1e"); value is then 0. Trailing blanks are not allowed. A number too large for a
// double raises EOverflow (as the platform's floating-point store traps); one too small
// becomes 0.
void Val(const QString& text, double& value, int& code);

// Pascal's Val for 32-bit integers: leading blanks, optional sign, decimal digits or
// hexadecimal after '$' or "0x". code as for the real Val; a value outside the 32-bit
// range stops at the digit that overflows.
void Val(const QString& text, int& value, int& code);

// Strict conversion of the whole text (leading and trailing blanks allowed) with
// DecimalSeparator as the decimal point. Raises EConvertError
// "'<text>' is not a valid floating point value", also for values beyond the double range.
double StrToFloat(const QString& text);
// As StrToFloat; returns false instead of raising (value unchanged then).
bool TryStrToFloat(const QString& text, double& value);
// Val for integers; a non-zero code raises EConvertError "'<text>' is not a valid integer value".
int StrToInt(const QString& text);
bool TryStrToInt(const QString& text, int& value);

} // namespace vx
