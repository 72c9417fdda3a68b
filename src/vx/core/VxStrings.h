#pragma once
// Reals to text and back (screen forms honour DecimalSeparator, "American" forms always
// use a point, as settings files need), picking numbers out of free text, and small
// caption-text helpers.

#include <QString>

namespace vx {

// General format, precision 14; empty if the conversion fails.
QString RealToStr(double X);
// Digits = 0: FloatToStr. Otherwise general format with precision Digits, the precision
// lowered step by step while the text is longer than Digits characters.
QString RealToStrDigits(double X, int Digits);
// RealToStr / RealToStrDigits with a point as decimal separator.
QString RealToAmericanStr(double X);
QString RealToAmericanStrDigits(double X, int Digits);
// General format, precision 8, exponent digits 4.
QString Float8_4(double X);

// Locale separator -> '.' (nothing to do while DecimalSeparator is '.').
QString Americanize(const QString& S);
// '.' -> locale separator.
QString DeAmericanize(const QString& S);

// True when the whole of S is a number with a point as decimal separator
// (no blanks or other characters before or after it).
bool IsNumber(const QString& S);

// N in decimal, left-padded with '0' to at least Digits characters ("007").
// A negative N keeps its '-' in front of the padding zeros.
QString IntToStrDigits(int N, short Digits);
// "mm:ss"; "hh:" in front when the hours part (of the day) is above 0; "<days>d" in front
// when there are whole days: 2d05:03:07, and 1d00:00 for exactly one day.
// Negative Seconds count as 0.
QString SecondsToStr(int Seconds);
// S without any blank.
QString StripBlanks(const QString& S);
// Spreadsheet column letters: 1 = A, 26 = Z, 27 = AA; "" for N <= 0.
QString ColumnToCharHeader(int N);

// Deletes characters from the front of S up to the first number character
// ('+', '-', '.', digit, 'E', 'e').
void EraseToNumber(QString& S);
// Skips one number: EraseToNumber, the run of number characters, EraseToNumber.
void EraseToNextNumber(QString& S);

// Takes the first integer from S. S is cut behind the number and the one character after
// it; when all of S is the number, S is left unchanged. Raises EConvertError
// "Error during integer extraction" when no integer can be read.
int ExtractOneInt(QString& S);
// Takes the first real from S ('.' as decimal point) and removes it, the one separator
// after it and any following non-number characters, so that repeated calls walk through
// "1.5;2.25". Raises EConvertError "Error during integer extraction" when no real can be
// read (EOverflow for a number beyond the double range).
double ExtractOneReal(QString& S);

// Tokens: a token occurrence is Token found literally (case-sensitive) in S that is not
// part of a longer word, i.e. neither the character before nor the one after it is a
// letter, digit or '_'. A juxtaposed product such as "bX" is one word, not the token "b".
// An empty Token never occurs.

// True when Token occurs in S as a token.
bool ContainsToken(const QString& S, const QString& Token);
// Every token occurrence of Token replaced by Replacement (scanning left to right; the
// replacement text is not searched again).
QString ReplaceTokenWith(const QString& S, const QString& Token, const QString& Replacement);
// As ReplaceTokenWith with "(" + Replacement + ")", so that a substituted negative or
// compound value keeps its meaning in a formula ("a+b*x", b -> -2: "a+(-2)*x").
QString ReplaceTokenWithBracket(const QString& S, const QString& Token,
                                const QString& Replacement);

// Reversible mixing of a name with a number: every UTF-16 unit i of Name is xor-ed with
// byte (i mod 4) of Number (least significant first). Applying it twice with the same
// Number gives Name back; the length is kept. Not encryption, only obfuscation.
QString XORNameWithNumber(const QString& Name, int Number);

} // namespace vx
