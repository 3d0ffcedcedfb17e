#include "sqltext/TransactionWords.h"

#include <algorithm>
#include <array>

namespace {

bool IsWordSign(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

// Where the text goes on behind what begins at `at` with `opener`: behind the next `closer`, or at the end.
qsizetype Behind(QStringView sql, qsizetype at, qsizetype opener, QStringView closer)
{
    const qsizetype end = sql.indexOf(closer, at + opener);
    return end < 0 ? sql.size() : end + closer.size();
}

// The length of "$$" or "$tag$" at this place; 0 when there is none.
qsizetype DollarMark(QStringView sql, qsizetype at)
{
    qsizetype end = at + 1;
    while (end < sql.size() && IsWordSign(sql[end]))
        ++end;
    const bool digit = end > at + 1 && sql[at + 1].isDigit(); // $1 is a parameter
    return end < sql.size() && sql[end] == u'$' && !digit ? end + 1 - at : 0;
}

// Behind the quote that closes the one at `at`. With `escapes` a backslash takes the sign behind it along.
qsizetype BehindQuote(QStringView sql, qsizetype at, bool escapes)
{
    const QChar quote = sql[at++];
    while (at < sql.size() && sql[at] != quote)
        at += escapes && sql[at] == u'\\' ? 2 : 1;
    return std::min(at + 1, sql.size());
}

// Behind a quoted text, a comment or a body that begins here; `at` itself when none does.
qsizetype Skip(QStringView sql, qsizetype at, bool escapes)
{
    const QChar c = sql[at];
    const QChar next = at + 1 < sql.size() ? sql[at + 1] : QChar();
    if (c == u'\'' || c == u'"' || c == u'`')
        return BehindQuote(sql, at, escapes);
    if (c == u'[')
        return Behind(sql, at, 1, u"]");
    if (c == u'-' && next == u'-')
        return Behind(sql, at, 2, u"\n");
    if (c == u'/' && next == u'*')
        return Behind(sql, at, 2, u"*/");
    const bool inName = at > 0 && IsWordSign(sql[at - 1]);
    if (const qsizetype mark = c == u'$' && !inName ? DollarMark(sql, at) : 0)
        return Behind(sql, at, mark, sql.mid(at, mark));
    return at;
}

bool Ends(QStringView word, bool creates)
{
    constexpr std::array always = {u"COMMIT", u"ROLLBACK", u"ABORT", u"START", u"PREPARE"};
    constexpr std::array notInBodies = {u"END", u"BEGIN"};
    const auto is = [word](const char16_t *other) { return word.compare(other, Qt::CaseInsensitive) == 0; };
    return std::any_of(always.begin(), always.end(), is) ||
           (!creates && std::any_of(notInBodies.begin(), notInBodies.end(), is));
}

bool Finds(QStringView sql, bool escapes)
{
    bool creates = false, first = true; // nothing yet of this piece
    for (qsizetype at = 0; at < sql.size();) {
        if (const qsizetype behind = Skip(sql, at, escapes); behind != at) {
            at = behind;
        } else if (IsWordSign(sql[at])) {
            const qsizetype start = at;
            while (at < sql.size() && IsWordSign(sql[at]))
                ++at;
            const QStringView word = sql.mid(start, at - start);
            if (first && Ends(word, creates))
                return true;
            creates = creates || (first && word.compare(u"CREATE", Qt::CaseInsensitive) == 0);
            first = false;
        } else {
            first = first || sql[at] == u';';
            ++at;
        }
    }
    return false;
}

} // namespace

// Servers differ in what a backslash means inside of quotes: what ends it by either reading counts.
bool EndsTransaction(QStringView sql)
{
    return Finds(sql, false) || Finds(sql, true);
}
