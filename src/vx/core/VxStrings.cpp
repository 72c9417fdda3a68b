#include "vx/core/VxStrings.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatText.h"

#include <algorithm>
#include <cstdint>

namespace vx {

namespace {

const QLatin1Char CPoint('.');

bool IsNumberChar(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('+')
        || c == QLatin1Char('-') || c == CPoint || c == QLatin1Char('E') || c == QLatin1Char('e');
}

bool IsWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// Index of the first token occurrence of Token in S at or after `from`, or -1.
qsizetype FindToken(const QString& S, const QString& Token, qsizetype from)
{
    if (Token.isEmpty())
        return -1;
    for (qsizetype i = S.indexOf(Token, from); i >= 0; i = S.indexOf(Token, i + 1)) {
        const qsizetype end = i + Token.size();
        const bool freeBefore = i == 0 || !IsWordChar(S[i - 1]);
        const bool freeAfter = end >= S.size() || !IsWordChar(S[end]);
        if (freeBefore && freeAfter)
            return i;
    }
    return -1;
}

QString TwoDigits(int n)
{
    return IntToStrDigits(n, 2);
}

[[noreturn]] void RaiseExtractionError()
{
    throw EConvertError(QStringLiteral("Error during integer extraction"));
}

} // namespace

QString RealToStr(double X)
{
    try {
        return FloatToStrF(X, ffGeneral, 14, 0);
    } catch (...) {
        return QString();
    }
}

QString RealToStrDigits(double X, int Digits)
{
    if (Digits == 0)
        return FloatToStr(X);
    int precision = Digits;
    QString s = FloatToStrF(X, ffGeneral, precision, 0);
    while (s.size() > Digits && precision > 0) {
        --precision;
        s = FloatToStrF(X, ffGeneral, precision, 0);
    }
    return s;
}

QString RealToAmericanStr(double X)
{
    return Americanize(RealToStr(X));
}

QString RealToAmericanStrDigits(double X, int Digits)
{
    return Americanize(RealToStrDigits(X, Digits));
}

QString Float8_4(double X)
{
    return FloatToStrF(X, ffGeneral, 8, 4);
}

QString Americanize(const QString& S)
{
    QString r = S;
    if (DecimalSeparator() != CPoint)
        r.replace(DecimalSeparator(), CPoint);
    return r;
}

QString DeAmericanize(const QString& S)
{
    QString r = S;
    if (DecimalSeparator() != CPoint)
        r.replace(CPoint, DecimalSeparator());
    return r;
}

bool IsNumber(const QString& S)
{
    if (S.isEmpty() || S.front() == QLatin1Char(' ') || S.back() == QLatin1Char(' '))
        return false;
    double value = 0.0;
    int code = 0;
    try {
        Val(S, value, code);
    } catch (EMathError&) {
        return false;
    }
    return code == 0;
}

QString IntToStrDigits(int N, short Digits)
{
    const QString digits = QString::number(std::int64_t(N) < 0 ? -std::int64_t(N) : std::int64_t(N));
    const int width = int(Digits) - (N < 0 ? 1 : 0);
    const QString padded = digits.size() < width ? QString(width - digits.size(), QLatin1Char('0')) + digits
                                                 : digits;
    return N < 0 ? QLatin1Char('-') + padded : padded;
}

QString SecondsToStr(int Seconds)
{
    Seconds = std::max(Seconds, 0);
    const int days = Seconds / 86400;
    const int hours = Seconds / 3600 % 24;
    QString s = TwoDigits(Seconds / 60 % 60) + QLatin1Char(':') + TwoDigits(Seconds % 60);
    if (hours > 0)
        s = TwoDigits(hours) + QLatin1Char(':') + s;
    if (days > 0)
        s = QString::number(days) + QLatin1Char('d') + s;
    return s;
}

QString StripBlanks(const QString& S)
{
    QString r = S;
    r.remove(QLatin1Char(' '));
    return r;
}

QString ColumnToCharHeader(int N)
{
    QString s;
    while (N > 0) {
        --N;
        s.prepend(QChar(u'A' + N % 26));
        N /= 26;
    }
    return s;
}

void EraseToNumber(QString& S)
{
    qsizetype i = 0;
    while (i < S.size() && !IsNumberChar(S[i]))
        ++i;
    S.remove(0, i);
}

void EraseToNextNumber(QString& S)
{
    EraseToNumber(S);
    qsizetype i = 0;
    while (i < S.size() && IsNumberChar(S[i]))
        ++i;
    S.remove(0, i);
    EraseToNumber(S);
}

int ExtractOneInt(QString& S)
{
    EraseToNumber(S);
    const QString copy = S;
    int value = 0;
    int position = 0;
    Val(S, value, position);
    if (position == 0)
        return value;
    S.remove(0, position);
    int code = 0;
    Val(copy.left(position - 1), value, code);
    if (code != 0)
        RaiseExtractionError();
    return value;
}

double ExtractOneReal(QString& S)
{
    EraseToNumber(S);
    const QString copy = S;
    double value = 0.0;
    int position = 0;
    Val(S, value, position);
    if (position == 0) {
        S.clear();
        return value;
    }
    S.remove(0, position);
    EraseToNumber(S);
    int code = 0;
    Val(copy.left(position - 1), value, code);
    if (code != 0)
        RaiseExtractionError();
    return value;
}

bool ContainsToken(const QString& S, const QString& Token)
{
    return FindToken(S, Token, 0) >= 0;
}

QString ReplaceTokenWith(const QString& S, const QString& Token, const QString& Replacement)
{
    QString result;
    qsizetype done = 0;
    for (qsizetype i = FindToken(S, Token, 0); i >= 0; i = FindToken(S, Token, done)) {
        result += QStringView(S).mid(done, i - done);
        result += Replacement;
        done = i + Token.size();
    }
    result += QStringView(S).mid(done);
    return result;
}

QString ReplaceTokenWithBracket(const QString& S, const QString& Token, const QString& Replacement)
{
    return ReplaceTokenWith(S, Token, QLatin1Char('(') + Replacement + QLatin1Char(')'));
}

QString XORNameWithNumber(const QString& Name, int Number)
{
    const auto key = std::uint32_t(Number);
    QString r = Name;
    for (qsizetype i = 0; i < r.size(); ++i) {
        const auto byte = char16_t((key >> (8 * (i % 4))) & 0xFFu);
        r[i] = QChar(char16_t(r[i].unicode() ^ byte));
    }
    return r;
}

} // namespace vx
