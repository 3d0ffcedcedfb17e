// The statements of the data provider inside a SHAPE command.
#include "ado/shape/ShapeReader.h"

namespace ADODB {

namespace {

// Behind a text or a name in quotes that begins at `at`; the end when it is not closed. A doubled quote closes it and
// opens the next one, which comes to the same.
qsizetype BehindQuoted(QStringView text, qsizetype at)
{
    const QChar close = text[at] == u'[' ? QChar(u']') : text[at];
    const qsizetype end = text.indexOf(close, at + 1);
    return end < 0 ? text.size() : end + 1;
}

// Behind $tag$ ... $tag$, when one begins at `at`; else the next character.
qsizetype BehindDollars(QStringView text, qsizetype at)
{
    qsizetype end = at + 1;
    while (end < text.size() && (text[end].isLetterOrNumber() || text[end] == u'_'))
        ++end;
    if (end >= text.size() || text[end] != u'$' || (end > at + 1 && text[at + 1].isDigit()))
        return at + 1;
    const QStringView tag = text.sliced(at, end + 1 - at);
    const qsizetype close = text.indexOf(tag, end + 1);
    return close < 0 ? text.size() : close + tag.size();
}

qsizetype BehindComment(QStringView text, qsizetype at)
{
    if (text.sliced(at).startsWith(u"--")) {
        while (at < text.size() && text[at] != u'\n' && text[at] != u'\r')
            ++at;
        return at;
    }
    const qsizetype end = text.indexOf(u"*/", at + 2);
    return end < 0 ? text.size() : end + 2;
}

// "[" begins a name, except before a quote or a digit: there it is an array's.
bool BeginsName(QStringView text, qsizetype at)
{
    if (text[at] != u'[')
        return text[at] == u'\'' || text[at] == u'"' || text[at] == u'`';
    if (at + 1 >= text.size())
        return false;
    const QChar next = text[at + 1];
    return next != u'\'' && next != u'"' && next != u']' && !next.isDigit();
}

} // namespace

QString ShapeReader::StatementBehindBrace(const ShapePlace &brace)
{
    const qsizetype from = m_at;
    int depth = 1;
    qsizetype at = from;
    while (at < m_text.size()) {
        const QStringView rest = m_text.sliced(at, qMin(qsizetype(2), m_text.size() - at));
        if (rest == u"--" || rest == u"/*") {
            at = BehindComment(m_text, at);
        } else if (BeginsName(m_text, at)) {
            at = BehindQuoted(m_text, at);
        } else if (m_text[at] == u'$') {
            at = BehindDollars(m_text, at);
        } else {
            if (m_text[at] == u'{')
                ++depth;
            else if (m_text[at] == u'}' && --depth == 0) {
                m_at = at + 1;
                return m_text.sliced(from, at - from).toString();
            }
            ++at;
        }
    }
    Fail(brace, QStringLiteral("the statement that begins with this brace is not closed"));
}

} // namespace ADODB
