#include "vx/core/VxStrings.h"
#include "vx/platform/VxExceptions.h"
#include "vx/platform/VxFloatText.h"

#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"
#include "support/QStringPrintTo.h"

#include <cmath>
#include <limits>

using namespace vx;

namespace {

// Sets the decimal separator for one test and restores '.' afterwards.
class SeparatorScope {
public:
    explicit SeparatorScope(QChar c) { SetDecimalSeparator(c); }
    ~SeparatorScope() { SetDecimalSeparator(QLatin1Char('.')); }
};

QString Q(const char* s)
{
    return QString::fromLatin1(s);
}

} // namespace

TEST(VxStrings, RealToTextForms)
{
    // Digits 0 is the 15-digit form; the platform never formats with fewer than 2 digits,
    // so 12345 cannot fit 3 characters.
    for (auto [x, digits, expected] : {std::tuple{1.0 / 3.0, -1, "0.33333333333333"}, {1e13, -1, "10000000000000"},
                                       {1e14, -1, "1E14"}, {NAN, -1, "NAN"}, {3.14159265, 4, "3.14"},
                                       {-3.14159265, 4, "-3.1"}, {1.0 / 3.0, 0, "0.333333333333333"},
                                       {12345.0, 5, "12345"}, {12345.0, 3, "1.2E4"}}) {
        SCOPED_TRACE(expected);
        EXPECT_EQ(digits < 0 ? RealToStr(x) : RealToStrDigits(x, digits), Q(expected));
    }
    EXPECT_EQ(Float8_4(1e-7), Q("1E-0007"));
    EXPECT_EQ(Float8_4(2.0 / 3.0), Q("0.66666667"));
}

TEST(VxStrings, AmericanFormsAlwaysUseAPoint)
{
    EXPECT_EQ(Americanize(Q("1,5")), Q("1,5")); // nothing to do with a point locale
    SeparatorScope comma(QLatin1Char(','));
    EXPECT_EQ(RealToStr(2.5), Q("2,5"));
    EXPECT_EQ(RealToAmericanStr(2.5), Q("2.5"));
    EXPECT_EQ(RealToAmericanStrDigits(3.14159265, 4), Q("3.14"));
    EXPECT_EQ(Americanize(Q("1,5;2,25")), Q("1.5;2.25"));
    EXPECT_EQ(DeAmericanize(Q("1.5;2.25")), Q("1,5;2,25"));
    EXPECT_TRUE(IsNumber(Q("1.5"))); // settings texts keep their point
    EXPECT_FALSE(IsNumber(Q("1,5")));
}

TEST(VxStrings, IsNumberNeedsTheWholeText)
{
    const struct {
        const char* text;
        bool expected;
    } rows[] = {{"1.5", true},   {"-2e-3", true}, {"42", true},   {" 1.5", false},
                {"1.5 ", false}, {"", false},     {"1.5x", false}, {"1e999", false},
                {"abc", false},  {".", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(IsNumber(Q(row.text)), row.expected);
    }
}

TEST(VxStrings, IntegerTimeAndColumnTexts)
{
    for (auto [n, digits, expected] : {std::tuple{7, 3, "007"}, {1234, 2, "1234"}, {-7, 3, "-07"}, {0, 0, "0"}})
        EXPECT_EQ(IntToStrDigits(n, short(digits)), Q(expected));
    for (auto [seconds, expected] : {std::pair{59, "00:59"}, {3600, "01:00:00"}, {90061, "1d01:01:01"},
                                     {183787, "2d03:03:07"}, {86400, "1d00:00"}, {3599, "59:59"}, {-5, "00:00"}})
        EXPECT_EQ(SecondsToStr(seconds), Q(expected));
    for (auto [n, expected] : {std::pair{1, "A"}, {26, "Z"}, {27, "AA"}, {52, "AZ"}, {702, "ZZ"},
                               {703, "AAA"}, {0, ""}, {-3, ""}})
        EXPECT_EQ(ColumnToCharHeader(n), Q(expected));
    EXPECT_EQ(StripBlanks(Q(" Linear Regression (2) ")), Q("LinearRegression(2)"));
}

TEST(VxStrings, ErasingUpToNumbers)
{
    // 'e' counts as a number character; no digits at all empties the text.
    for (auto [next, text, rest] : {std::tuple{false, "x = -1.5; y", "-1.5; y"}, {false, "-1.5; y", "-1.5; y"},
                                    {false, "Time 5", "e 5"}, {true, "a12b34c", "34c"}, {true, "no digits", ""}}) {
        QString s = Q(text);
        next ? EraseToNextNumber(s) : EraseToNumber(s);
        EXPECT_EQ(s, Q(rest)) << text;
    }
}

TEST(VxStrings, ExtractOneNumberCutsTheTextToTheNextNumber)
{
    const struct {
        const char* text;
        bool real;
        double value;
        const char* rest;
    } rows[] = {
        {"1.5;2.25", true, 1.5, "2.25"}, {"2.25", true, 2.25, ""}, {"12;34", false, 12, "34"}, {"1.5", false, 1, "5"},
        {"X: -3.5E2 ;; Y=0.125 end", true, -350.0, "0.125 end"},
        {"0.125 end", true, 0.125, "end"}, // 'e' is a number character
        {"42", false, 42, "42"},           // a whole integer text is kept
        {"12 ; 34", false, 12, "; 34"},    // no second skip to the next number
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.text);
        QString s = Q(r.text);
        EXPECT_EQ(r.real ? ExtractOneReal(s) : ExtractOneInt(s), r.value);
        EXPECT_EQ(s, Q(r.rest));
    }
}

TEST(VxStrings, ExtractionFailuresRaiseTheConversionError)
{
    const char* bad[] = {"", "abc", "-", "e5", "+;1"};
    for (const char* text : bad) {
        SCOPED_TRACE(text);
        QString real = Q(text);
        VX_EXPECT_THROW_MSG(ExtractOneReal(real), EConvertError, Q("Error during integer extraction"));
        QString integer = Q(text);
        EXPECT_THROW(ExtractOneInt(integer), EConvertError);
    }
    QString huge = Q("1e999;2");
    EXPECT_THROW(ExtractOneReal(huge), EOverflow);
}

TEST(VxStrings, TokensAreWholeWords)
{
    const struct {
        const char* text;
        const char* token;
        bool contained;
        const char* bracketed; // with the token replaced by (v)
    } rows[] = {
        {"a+b*x", "b", true, "a+(v)*x"}, {"ab+x", "b", false, "ab+x"}, {"b+b_1+b", "b", true, "(v)+b_1+(v)"},
        {"Slope, DeltaSlope", "Slope", true, "(v), DeltaSlope"}, {"bX", "b", false, "bX"}, {"", "b", false, ""},
        {"a+b", "", false, "a+b"}, {"x2+x", "x", true, "x2+(v)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ContainsToken(Q(row.text), Q(row.token)), row.contained);
        EXPECT_EQ(ReplaceTokenWithBracket(Q(row.text), Q(row.token), Q("v")), Q(row.bracketed));
    }
    // The replacement is not searched again.
    EXPECT_EQ(ReplaceTokenWith(Q("a + a"), Q("a"), Q("a a")), Q("a a + a a"));
}

TEST(VxStrings, XorMixingIsItsOwnInverse)
{
    const QString name = QStringLiteral("TVxFittedLine1 \u00e4\u20ac");
    for (int number : {0, 1, 12345, -1, 0x7F00FF01}) {
        SCOPED_TRACE(number);
        const QString mixed = XORNameWithNumber(name, number);
        EXPECT_EQ(mixed.size(), name.size());
        EXPECT_EQ(XORNameWithNumber(mixed, number), name);
        EXPECT_EQ(mixed != name, number != 0);
    }
}
