#include "lang/Text.h"

#include <QByteArray>
#include <QLocale>

#include <cmath>
#include <limits>

namespace lang {

namespace {

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsExponent(QChar c)
{
    const char16_t code = c.unicode() | 0x20;
    return code == u'e' || code == u'd';
}

int DigitValue(QChar c)
{
    const char16_t code = c.unicode();
    if (code >= u'0' && code <= u'9')
        return code - u'0';
    const char16_t lower = code | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : 99;
}

// Walks over a text; with `skipping` blanks, tabs and line feeds are not seen at all.
class Reader
{
public:
    Reader(const QString &text, bool skipping) : m_text(text), m_skipping(skipping) { Skip(); }
    bool AtEnd() const { return m_at >= m_text.size(); }
    QChar Peek() const { return AtEnd() ? QChar() : m_text.at(m_at); }
    void Next()
    {
        ++m_at;
        Skip();
    }
    bool Take(char16_t c)
    {
        if (AtEnd() || Peek() != c)
            return false;
        Next();
        return true;
    }
    qsizetype At() const { return m_at; }
    void Reset(qsizetype at) { m_at = at; }

private:
    void Skip()
    {
        while (m_skipping && !AtEnd() && (Peek() == u' ' || Peek() == u'\t' || Peek() == u'\n'))
            ++m_at;
    }
    const QString &m_text;
    bool m_skipping;
    qsizetype m_at = 0;
};

// The base that &H or &O introduces, 0 for none. Stands behind the letter afterwards.
int TakeBase(Reader &reader)
{
    if (!reader.Take(u'&'))
        return 0;
    const char16_t letter = reader.Peek().unicode() | 0x20;
    if (letter != u'h' && letter != u'o')
        return 0;
    reader.Next();
    return letter == u'h' ? 16 : 8;
}

double TakeBased(Reader &reader, int base, int &digits)
{
    double value = 0;
    for (digits = 0; !reader.AtEnd() && DigitValue(reader.Peek()) < base; ++digits, reader.Next())
        value = value * base + DigitValue(reader.Peek());
    return value;
}

int TakeDigits(Reader &reader, QByteArray &number, bool commas = false)
{
    int digits = 0;
    while (IsDigit(reader.Peek()) || (commas && digits > 0 && reader.Peek() == u',')) {
        if (IsDigit(reader.Peek())) {
            number += reader.Peek().toLatin1();
            ++digits;
        }
        reader.Next();
    }
    return digits;
}

// Digits, point and exponent in the form that the library reads. False without any digit or, when `whole`, with an
// exponent letter that no digit follows; otherwise such a letter is left standing.
bool TakeDecimal(Reader &reader, QByteArray &number, bool commas, bool whole)
{
    int digits = TakeDigits(reader, number, commas);
    if (reader.Take(u'.')) {
        number += '.';
        digits += TakeDigits(reader, number);
    }
    if (digits == 0)
        return false;
    if (reader.AtEnd() || !IsExponent(reader.Peek()))
        return true;
    const qsizetype letter = reader.At();
    reader.Next();
    QByteArray exponent("e");
    if (reader.Peek() == u'+' || reader.Peek() == u'-') {
        exponent += reader.Peek().toLatin1();
        reader.Next();
    }
    if (TakeDigits(reader, exponent) > 0) {
        number += exponent;
        return true;
    }
    reader.Reset(letter);
    return !whole;
}

// Numbers past the range of a double are held at its ends, so that no caller meets an infinity.
double ToDouble(const QByteArray &number, bool *inRange = nullptr)
{
    // The locale reader tells too large (infinite) from too small (0); the byte array's gives 0 for both.
    const double value = QLocale::c().toDouble(u'0' + QString::fromLatin1(number));
    if (inRange)
        *inRange = std::isfinite(value);
    return std::isfinite(value) ? value : std::numeric_limits<double>::max();
}

} // namespace

double Val(const QString &text)
{
    Reader reader(text, true);
    if (reader.Peek() == u'&') {
        int digits = 0;
        const int base = TakeBase(reader);
        return base == 0 ? 0 : TakeBased(reader, base, digits);
    }
    const bool negative = reader.Take(u'-');
    if (!negative)
        reader.Take(u'+');
    QByteArray number;
    if (!TakeDecimal(reader, number, false, false))
        return 0;
    const double value = ToDouble(number);
    return negative ? -value : value;
}

bool IsNumeric(const QString &text)
{
    const QString trimmed = Trim(text);
    Reader reader(trimmed, false);
    if (reader.Peek() == u'&') {
        int digits = 0;
        const int base = TakeBase(reader);
        if (base == 0)
            return false;
        TakeBased(reader, base, digits);
        return digits > 0 && reader.AtEnd();
    }
    bool sign = false, currency = false, open = false, closed = false;
    // Sign, currency sign and parentheses may stand on either side of the digits, each once.
    const auto takeTrimming = [&](bool behind) {
        for (; !reader.AtEnd(); reader.Next()) {
            const QChar c = reader.Peek();
            if (c == u' ')
                continue;
            if ((c == u'+' || c == u'-') && !sign && !open)
                sign = true;
            else if (c.category() == QChar::Symbol_Currency && !currency)
                currency = true;
            else if (!behind && c == u'(' && !open && !sign)
                open = true;
            else if (behind && c == u')' && open && !closed)
                closed = true;
            else
                return;
        }
    };
    takeTrimming(false);
    QByteArray number;
    bool inRange = false;
    if (!TakeDecimal(reader, number, true, true))
        return false;
    ToDouble(number, &inRange);
    takeTrimming(true);
    return inRange && reader.AtEnd() && open == closed;
}

} // namespace lang
