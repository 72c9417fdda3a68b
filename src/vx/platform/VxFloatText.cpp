#include "vx/platform/VxFloatText.h"

#include "vx/platform/VxExceptions.h"

namespace vx {

namespace {
QChar GDecimalSeparator = QLatin1Char('.');
QChar GThousandSeparator = QLatin1Char(',');
QString GCurrencyString = QStringLiteral("$");
} // namespace

QChar DecimalSeparator() { return GDecimalSeparator; }
void SetDecimalSeparator(QChar separator) { GDecimalSeparator = separator; }
QChar ThousandSeparator() { return GThousandSeparator; }
void SetThousandSeparator(QChar separator) { GThousandSeparator = separator; }
QString CurrencyString() { return GCurrencyString; }
void SetCurrencyString(const QString& symbol) { GCurrencyString = symbol; }

QString FloatToStrF(double value, TFloatFormat, int precision, int)
{
    return QString::number(value, 'g', precision);
}

QString FloatToStr(double x) { return FloatToStrF(x, ffGeneral, 15, 0); }

QString RealToText23(double x)
{
    return QString::number(x, 'E', 14).rightJustified(23, QLatin1Char(' '));
}

void Val(const QString& text, double& value, int& code)
{
    bool ok = false;
    value = text.toDouble(&ok);
    code = ok ? 0 : 1;
}

void Val(const QString& text, int& value, int& code)
{
    bool ok = false;
    value = text.toInt(&ok);
    code = ok ? 0 : 1;
}

bool TryStrToFloat(const QString& text, double& value)
{
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (ok)
        value = v;
    return ok;
}

double StrToFloat(const QString& text)
{
    double v = 0;
    if (!TryStrToFloat(text, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(text));
    return v;
}

bool TryStrToInt(const QString& text, int& value)
{
    int code = 0;
    int v = 0;
    Val(text, v, code);
    if (code == 0)
        value = v;
    return code == 0;
}

int StrToInt(const QString& text)
{
    int v = 0;
    if (!TryStrToInt(text, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid integer value").arg(text));
    return v;
}

} // namespace vx
