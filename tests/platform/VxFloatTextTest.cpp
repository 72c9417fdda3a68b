#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatText.h"

#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"
#include "support/QStringPrintTo.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace vx;

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

// Sets the decimal separator for one test and restores '.' afterwards.
class SeparatorScope {
public:
    explicit SeparatorScope(QChar c) { SetDecimalSeparator(c); }
    ~SeparatorScope() { SetDecimalSeparator(QLatin1Char('.')); }
};

struct FormatRow {
    const char* name;
    double value;
    TFloatFormat format;
    int precision;
    int digits;
    const char* expected;
};

} // namespace

TEST(VxFloatText, FloatToStrFMatchesThePlatformFormats)
{
    const FormatRow rows[] = {
        {"zero", 0.0, ffGeneral, 15, 0, "0"},
        {"negative zero has no sign", -0.0, ffGeneral, 15, 0, "0"},
        {"integer", 42.0, ffGeneral, 15, 0, "42"},
        {"negative fraction", -1.5, ffGeneral, 15, 0, "-1.5"},
        {"binary noise below 15 digits", 0.30000000000000004, ffGeneral, 15, 0, "0.3"},
        {"one third", 1.0 / 3.0, ffGeneral, 15, 0, "0.333333333333333"},
        {"15th digit rounds up", 2.0 / 3.0, ffGeneral, 15, 0, "0.666666666666667"},
        {"rounding uses the true binary value", 2.675, ffGeneral, 3, 0, "2.67"},
        {"15 integer digits stay fixed", 123456789012345.0, ffGeneral, 15, 0, "123456789012345"},
        {"16 integer digits go scientific", 1234567890123456.0, ffGeneral, 15, 0, "1.23456789012346E15"},
        {"rounding carries into a new digit", 999999999999999.9, ffGeneral, 15, 0, "1E15"},
        {"1E-4 is still fixed", 0.0001, ffGeneral, 15, 0, "0.0001"},
        {"1E-5 is scientific", 0.00001, ffGeneral, 15, 0, "1E-5"},
        {"small with fraction", -1.5e-7, ffGeneral, 15, 0, "-1.5E-7"},
        {"exponent padded to digits", 1e-7, ffGeneral, 15, 2, "1E-07"},
        {"exponent digits capped at four", 1e-7, ffGeneral, 15, 9, "1E-0007"},
        {"huge", 1.7e308, ffGeneral, 15, 0, "1.7E308"},
        {"smallest subnormal", 5e-324, ffGeneral, 15, 0, "4.94065645841247E-324"},
        {"precision below 2 is 2", 3.14159, ffGeneral, 1, 0, "3.1"},
        {"precision above 18 is 18", 0.1, ffGeneral, 30, 0, "0.100000000000000006"},
        {"exponent form", 1234.5678, ffExponent, 4, 2, "1.235E+03"},
        {"exponent form negative exponent", -0.001234, ffExponent, 3, 0, "-1.23E-3"},
        {"exponent form pads mantissa", 2.0, ffExponent, 5, 4, "2.0000E+0000"},
        {"exponent form of zero", 0.0, ffExponent, 3, 3, "0.00E+000"},
        {"fixed", 1234.5678, ffFixed, 15, 2, "1234.57"},
        {"fixed pads decimals", 1.5, ffFixed, 15, 3, "1.500"},
        {"fixed leading zeros", 0.0123, ffFixed, 15, 3, "0.012"},
        {"fixed half away from zero", 2.5, ffFixed, 15, 0, "3"},
        {"fixed negative half", -2.5, ffFixed, 15, 0, "-3"},
        {"fixed rounds up into the first place", 0.6, ffFixed, 15, 0, "1"},
        {"fixed 0.005 to two places", 0.005, ffFixed, 15, 2, "0.01"},
        {"fixed rounded to zero drops the sign", -0.001, ffFixed, 15, 2, "0.00"},
        {"fixed far below the last decimal", 0.0004, ffFixed, 15, 2, "0.00"},
        {"fixed limited by precision", 1234.5678, ffFixed, 6, 2, "1234.57"},
        {"fixed precision cuts decimals", 1234.5678, ffFixed, 5, 2, "1234.60"},
        {"fixed too wide falls back to general", 1e20, ffFixed, 15, 2, "1E20"},
        {"number groups thousands", -1234567.891, ffNumber, 15, 2, "-1,234,567.89"},
        {"number below a thousand", 999.0, ffNumber, 15, 0, "999"},
        {"currency", 1234.5, ffCurrency, 15, 2, "$1,234.50"},
        {"negative currency", -0.5, ffCurrency, 15, 2, "($0.50)"},
        {"NaN", kNaN, ffFixed, 15, 2, "NAN"},
        {"infinity", kInf, ffGeneral, 15, 0, "INF"},
        {"negative infinity", -kInf, ffExponent, 15, 0, "-INF"},
    };
    for (const FormatRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FloatToStrF(row.value, row.format, row.precision, row.digits),
                  QString::fromLatin1(row.expected));
    }
}

TEST(VxFloatText, FloatToStrIsGeneralWithFifteenDigits)
{
    EXPECT_EQ(FloatToStr(0.1 + 0.2), QStringLiteral("0.3"));
    EXPECT_EQ(FloatToStr(1e15), QStringLiteral("1E15"));
    EXPECT_EQ(FloatToStr(-123.456), QStringLiteral("-123.456"));
}

TEST(VxFloatText, ScreenFormsUseTheDecimalSeparatorTextFormDoesNot)
{
    SeparatorScope comma(QLatin1Char(','));
    EXPECT_EQ(FloatToStr(1.5), QStringLiteral("1,5"));
    EXPECT_EQ(FloatToStrF(1.5e-9, ffGeneral, 15, 0), QStringLiteral("1,5E-9"));
    EXPECT_EQ(FloatToStrF(1.25, ffFixed, 15, 1), QStringLiteral("1,3"));
    EXPECT_EQ(RealToText23(1.5), QStringLiteral(" 1.50000000000000E+0000"));
    EXPECT_EQ(StrToFloat(QStringLiteral("2,5")), 2.5);
    EXPECT_THROW(StrToFloat(QStringLiteral("2.5")), EConvertError);
}

TEST(VxFloatText, TextFormHasTwentyThreeCharactersAndFifteenDigits)
{
    struct Row {
        const char* name;
        double value;
        const char* expected;
    };
    const Row rows[] = {
        {"layout", 1234.5, " 1.23450000000000E+0003"},
        {"15th digit rounding carries", 9.9999999999999982, " 1.00000000000000E+0001"},
        {"zero", 0.0, " 0.00000000000000E+0000"},
        {"negative zero", -0.0, " 0.00000000000000E+0000"},
        {"negative small", -0.000123, "-1.23000000000000E-0004"},
        {"tenth", 0.1, " 1.00000000000000E-0001"},
        {"two thirds", 2.0 / 3.0, " 6.66666666666667E-0001"},
        {"largest", std::numeric_limits<double>::max(), " 1.79769313486232E+0308"},
        {"smallest subnormal", 5e-324, " 4.94065645841247E-0324"},
        {"NaN", kNaN, "                    Nan"},
        {"infinity", kInf, "                   +Inf"},
        {"negative infinity", -kInf, "                   -Inf"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString text = RealToText23(row.value);
        EXPECT_EQ(text, QString::fromLatin1(row.expected));
        EXPECT_EQ(text.size(), 23);
    }
}

TEST(VxFloatText, RealValReportsThePositionOfTheFirstUnusableCharacter)
{
    struct Row {
        const char* text;
        double value;
        int code;
    };
    const Row rows[] = {
        {"1.5", 1.5, 0},          {"  -2e3", -2000.0, 0}, {"+7", 7.0, 0},
        {".5", 0.5, 0},           {"5.", 5.0, 0},         {"1E-2", 0.01, 0},
        {"1.5;2.25", 0.0, 4},     {"", 0.0, 1},           {"   ", 0.0, 4},
        {"abc", 0.0, 1},          {"-", 0.0, 2},          {".", 0.0, 2},
        {"1e", 0.0, 3},           {"1e+", 0.0, 4},        {"1.5 ", 0.0, 4},
        {"1,5", 0.0, 2},          {"1..2", 0.0, 3},       {"--1", 0.0, 2},
        {"1e-400", 0.0, 0},       {"0e999999", 0.0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        double value = -99.0;
        int code = -1;
        Val(QString::fromLatin1(row.text), value, code);
        EXPECT_EQ(code, row.code);
        EXPECT_EQ(value, row.value);
    }
    double value = 0.0;
    int code = 0;
    Val(QStringLiteral("4.9e-324"), value, code);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(value, 5e-324);
    Val(QStringLiteral("-0.3000000000000000444089209850062616169452667236328125"), value, code);
    EXPECT_EQ(value, -0.30000000000000004);
    EXPECT_THROW(Val(QStringLiteral("1e309"), value, code), EOverflow);
    EXPECT_THROW(Val(QStringLiteral("-1e99999999999999999999"), value, code), EOverflow);
}

TEST(VxFloatText, IntegerValAcceptsSignsHexAndTheFullRange)
{
    struct Row {
        const char* text;
        int value;
        int code;
    };
    const Row rows[] = {
        {"42", 42, 0},         {" -17", -17, 0},       {"+3", 3, 0},
        {"2147483647", INT_MAX, 0}, {"-2147483648", INT_MIN, 0},
        {"2147483648", 0, 10}, {"-2147483649", 0, 11}, {"$FF", 255, 0},
        {"0x10", 16, 0},       {"$FFFFFFFF", -1, 0},   {"12a", 0, 3},
        {"", 0, 1},            {"-", 0, 2},            {"1.5", 0, 2},
        {"$", 0, 2},           {"+0003", 3, 0},        {"7 ", 0, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        int value = -99;
        int code = -1;
        Val(QString::fromLatin1(row.text), value, code);
        EXPECT_EQ(code, row.code);
        EXPECT_EQ(value, row.value);
    }
}

TEST(VxFloatText, StrictConversionsRaiseThePlatformMessages)
{
    EXPECT_EQ(StrToFloat(QStringLiteral(" 1.5 ")), 1.5);
    EXPECT_EQ(StrToFloat(QStringLiteral("-2E3")), -2000.0);
    for (const char* bad : {"", "1.5x", "1e999", " ", "1 .5"}) {
        SCOPED_TRACE(bad);
        VX_EXPECT_THROW_MSG(StrToFloat(QString::fromLatin1(bad)), EConvertError,
                            QStringLiteral("'%1' is not a valid floating point value").arg(QLatin1String(bad)));
    }
    double value = 7.0;
    EXPECT_FALSE(TryStrToFloat(QStringLiteral("x"), value));
    EXPECT_EQ(value, 7.0);
    EXPECT_TRUE(TryStrToFloat(QStringLiteral("0.25"), value));
    EXPECT_EQ(value, 0.25);

    EXPECT_EQ(StrToInt(QStringLiteral(" 12")), 12);
    VX_EXPECT_THROW_MSG(StrToInt(QStringLiteral("12x")), EConvertError,
                        QStringLiteral("'12x' is not a valid integer value"));
    int n = 5;
    EXPECT_FALSE(TryStrToInt(QStringLiteral("9999999999"), n));
    EXPECT_EQ(n, 5);
}

TEST(VxFloatText, RandomDoublesSurviveTextRoundTrips)
{
    std::mt19937_64 rng(20261122);
    for (int i = 0; i < 5000; ++i) {
        const std::uint64_t bits = rng();
        double x;
        std::memcpy(&x, &bits, sizeof x);
        if (!std::isfinite(x))
            continue;
        SCOPED_TRACE(i);
        double back = 0.0;
        int code = -1;
        // 18 significant digits identify every double.
        Val(FloatToStrF(x, ffGeneral, 18, 0), back, code);
        ASSERT_EQ(code, 0);
        ASSERT_EQ(back, x);
        // The text form keeps 15 digits: at most half a unit of the 15th digit away,
        // plus the binary rounding of reading it back.
        const QString text = RealToText23(x);
        ASSERT_EQ(text.size(), 23);
        Val(text, back, code);
        ASSERT_EQ(code, 0);
        if (x != 0.0 && std::fabs(x) > 1e-290) {
            const int e = int(std::floor(std::log10(std::fabs(back))));
            ASSERT_LE(std::fabs(back - x), 0.5 * std::pow(10.0, e - 14) + std::fabs(x) * 2.3e-16);
        }
    }
}

TEST(VxFloatText, ArbitraryTextNeverCrashesTheParsers)
{
    const char alphabet[] = " +-.,eE0123456789x$";
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> length(0, 12);
    std::uniform_int_distribution<int> pick(0, int(sizeof alphabet) - 2);
    for (int i = 0; i < 5000; ++i) {
        QString text;
        for (int n = length(rng); n > 0; --n)
            text += QLatin1Char(alphabet[pick(rng)]);
        SCOPED_TRACE(text.toStdString());
        double value = 0.0;
        int code = -1;
        try {
            Val(text, value, code);
        } catch (EOverflow&) {
            continue;
        }
        ASSERT_GE(code, 0);
        ASSERT_LE(code, text.size() + 1);
        // A clean conversion is exactly what the strict conversion accepts.
        double strict = 0.0;
        if (!text.startsWith(QLatin1Char(' '))) {
            ASSERT_EQ(code == 0, TryStrToFloat(text, strict) && !text.endsWith(QLatin1Char(' ')));
        }
        int n = 0;
        Val(text, n, code);
        ASSERT_LE(code, text.size() + 1);
    }
}
