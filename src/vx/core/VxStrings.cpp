#include "vx/core/VxStrings.h"

#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatText.h"

namespace vx {

QString RealToStr(double X) { return FloatToStrF(X, ffGeneral, 14, 0); }
QString RealToStrDigits(double X, int Digits) { return Digits == 0 ? FloatToStr(X) : FloatToStrF(X, ffGeneral, Digits, 0); }
QString RealToAmericanStr(double X) { return Americanize(RealToStr(X)); }
QString RealToAmericanStrDigits(double X, int Digits) { return Americanize(RealToStrDigits(X, Digits)); }
QString Float8_4(double X) { return FloatToStrF(X, ffGeneral, 8, 4); }
QString Americanize(const QString& S) { return S; }
QString DeAmericanize(const QString& S) { return S; }
bool IsNumber(const QString& S) { bool ok = false; S.toDouble(&ok); return ok; }
QString IntToStrDigits(int N, short Digits) { return QString::number(N).rightJustified(Digits, QLatin1Char('0')); }
QString SecondsToStr(int Seconds) { return QString::number(Seconds); }
QString StripBlanks(const QString& S) { QString r = S; r.remove(QLatin1Char(' ')); return r; }
QString ColumnToCharHeader(int) { return QString(); }
void EraseToNumber(QString&) {}
void EraseToNextNumber(QString&) {}
int ExtractOneInt(QString& S) { return S.toInt(); }
double ExtractOneReal(QString& S) { const double v = S.toDouble(); S.clear(); return v; }
bool ContainsToken(const QString& S, const QString& Token) { return !Token.isEmpty() && S.contains(Token); }
QString ReplaceTokenWith(const QString& S, const QString& Token, const QString& Replacement) { QString r = S; return r.replace(Token, Replacement); }
QString ReplaceTokenWithBracket(const QString& S, const QString& Token, const QString& Replacement) { return ReplaceTokenWith(S, Token, QLatin1Char('(') + Replacement + QLatin1Char(')')); }
QString XORNameWithNumber(const QString& Name, int) { return Name; }

} // namespace vx
