#pragma once
// The program's text and number rules. Every room reads, cuts, compares and prints with these, and never with the
// toolkit's lookalikes, which differ at the edges (what counts as a blank, empty delimiters, decimal points).
//
// Positions are one-based, 0 means "not found". Comparison is exact unless Compare::Text is given.
// All functions are pure and may be called from any thread, but for Rnd, which belongs to the window thread.

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace lang {

enum class Compare
{
    Binary,
    Text
};

// Removes blanks (U+0020 only, neither TAB nor line ends) from both ends, the left end, the right end.
QString Trim(const QString &text);
QString LTrim(const QString &text);
QString RTrim(const QString &text);

// Pieces between delimiters. "" gives no piece at all; an empty delimiter gives the whole text as one piece.
QStringList Split(const QString &text, const QString &delimiter, Compare compare = Compare::Binary);

// Position of `what` in `text` at or behind `start`. An empty `what` is found at `start`; an empty text has nothing.
qsizetype InStr(const QString &text, const QString &what, Compare compare = Compare::Binary);
qsizetype InStr(qsizetype start, const QString &text, const QString &what, Compare compare = Compare::Binary);
// Position of the last `what`, sought from the right; 0 when it is missing.
qsizetype InStrRev(const QString &text, const QString &what, Compare compare = Compare::Binary);

// Parts of a text, clipped to it. Mid counts from 1; without a length it runs to the end.
QString Left(const QString &text, qsizetype length);
QString Right(const QString &text, qsizetype length);
QString Mid(const QString &text, qsizetype start, qsizetype length = -1);

// Every `what` replaced in one walk from left to right. An empty `what` replaces nothing.
QString Replace(const QString &text, const QString &what, const QString &with, Compare compare = Compare::Binary);

QString UCase(const QString &text);
QString LCase(const QString &text);

// Wildcard match: * any run, ? one character, # one digit, [list], [!list], ranges. The whole text must match.
// A "[" that is never closed makes the pattern malformed: Like then throws BadPattern.
struct BadPattern
{
};
bool Like(const QString &text, const QString &pattern);

// The number that leads the text, 0 when there is none. Blanks are skipped, "." is the decimal point, E and D are
// exponents, &H and &O introduce other bases; reading stops at the first other character.
double Val(const QString &text);
// Does the whole text read as a number? Blanks around, sign, thousands commas, currency sign, parentheses for a
// negative, exponents and &H are accepted; "" is not a number.
bool IsNumeric(const QString &text);

// Number to text: at most 15 significant digits, no trailing zeros, "." as decimal point. Str puts a blank in front of
// a number that is not negative.
QString CStr(double number);
QString CStr(qint64 number);
QString CStr(bool value); // "True" or "False"
QString Str(double number);

// Half goes to the even neighbour.
double Round(double number, int digits = 0);
qint64 CLng(double number);

// ISO date and time: "yyyy-MM-dd hh:mm:ss". A midnight shows as the date alone, a time without a date as the time
// alone.
QString CDate(const QDateTime &moment);

// The next number of the program's one random sequence: 0 or more, below 1, the same sequence in every run.
float Rnd();

// Hours, minutes and seconds as "hh:mm:ss"; the fraction is dropped to whole seconds by rounding.
QString FormatSeconds(double seconds);

} // namespace lang
