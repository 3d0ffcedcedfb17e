#include "ado/StatementText.h"

#include "ado/Types.h"
#include "ado/family/Family.h"
#include <algorithm>

namespace ADODB {

QByteArrayView BehindBlanks(QByteArrayView sql)
{
    qsizetype at = 0;
    while (at < sql.size()) {
        const char c = sql[at];
        const char next = at + 1 < sql.size() ? sql[at + 1] : '\0';
        if (c == ' ' || (c >= '\t' && c <= '\r') || c == ';') {
            ++at;
        } else if (c == '-' && next == '-') {
            while (at < sql.size() && sql[at] != '\n')
                ++at;
        } else if (c == '/' && next == '*') {
            at += 2;
            while (at < sql.size() && !(sql[at] == '*' && at + 1 < sql.size() && sql[at + 1] == '/'))
                ++at;
            at = std::min(at + 2, sql.size());
        } else {
            break;
        }
    }
    return sql.sliced(at);
}

bool BeginsWithOne(QByteArrayView sql, std::initializer_list<QByteArrayView> words)
{
    const QByteArrayView text = BehindBlanks(sql);
    for (const QByteArrayView word : words)
        if (text.size() >= word.size() && qstrnicmp(text.data(), word.data(), size_t(word.size())) == 0)
            return true;
    return false;
}

bool MustMeetRows(QByteArrayView sql)
{
    return BeginsWithOne(sql, {"UPDATE", "DELETE"});
}

namespace {

// Walks over a text as one family reads it, until a semicolon that ends a statement.
class OneStatementReader
{
public:
    OneStatementReader(const Family &family, const QString &text)
        : m_rules(family.Texts), m_names(family.Names), m_text(text)
    {
    }

    // True when nothing but blanks, comments and further semicolons follows the first statement.
    bool Read()
    {
        bool ended = false;
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at];
            if (IsBlank(c)) {
                ++m_at;
            } else if (c == u';') {
                ended = true;
                ++m_at;
            } else if (SkipComment()) {
                continue;
            } else if (ended || !SkipPiece(c)) {
                return false;
            }
        }
        return true;
    }

private:
    static bool IsBlank(QChar c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }
    bool Known() const { return m_rules.InTexts != Backslash::Unknown; }
    QChar At(qsizetype at) const { return at < m_text.size() ? m_text[at] : QChar(); }

    void SkipLine()
    {
        while (m_at < m_text.size() && m_text[m_at] != u'\n' && !(m_rules.ReturnEndsLine && m_text[m_at] == u'\r'))
            ++m_at;
    }

    // A comment that is one beyond doubt: MySQL runs what stands in some, and wants a blank behind two dashes.
    bool SkipComment()
    {
        const QChar c = At(m_at), next = At(m_at + 1), third = At(m_at + 2);
        if (c == u'-' && next == u'-' && (!m_rules.DashesWantBlank || IsBlank(third) || third.isNull())) {
            SkipLine();
            return true;
        }
        if (c == u'#' && m_rules.HashComments) {
            SkipLine();
            return true;
        }
        if (c != u'/' || next != u'*' || (m_rules.CommentsRun && (third == u'!' || third == u'M')))
            return false;
        int depth = 1;
        for (m_at += 2; m_at < m_text.size() && depth > 0; ++m_at) {
            if (At(m_at) == u'*' && At(m_at + 1) == u'/') {
                --depth;
                ++m_at;
            } else if (m_rules.NestedComments && At(m_at) == u'/' && At(m_at + 1) == u'*') {
                ++depth;
                ++m_at;
            }
        }
        return true;
    }

    // One sign or one quoted piece of a statement; false for what may be read in two ways.
    bool SkipPiece(QChar c)
    {
        if (c == u'\'') // the backslash is a sign or no sign, by the server's settings
            return !(m_rules.BracketTexts && At(m_at - 1).toLower() == u'q') &&
                   SkipQuoted(c, true, m_rules.InTexts == Backslash::Plain);
        if (c == u'"')
            return SkipQuoted(c, true, Known() && m_rules.InTexts != Backslash::Escapes);
        if (c == u'`' && m_rules.Backticks)
            return SkipQuoted(c, true, true);
        if (c == u'[' && m_names.Brackets)
            return SkipQuoted(u']', m_names.DoublesBracket, true);
        if ((c == u'$' && m_rules.DollarTexts) || (c == u'/' && m_rules.CommentsRun && At(m_at + 1) == u'*'))
            return false;
        if (!Known() && QStringView(u"`[$#\\").contains(c))
            return false;
        ++m_at;
        return true;
    }

    bool SkipQuoted(QChar close, bool doubles, bool backslashIsPlain)
    {
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] == u'\\' && !backslashIsPlain)
                return false;
            if (m_text[m_at] != close)
                continue;
            if (!doubles || At(m_at + 1) != close)
                break;
            ++m_at;
        }
        ++m_at;
        return true;
    }

    const TextRules &m_rules;
    const NameRules &m_names;
    const QString &m_text;
    qsizetype m_at = 0;
};

} // namespace

bool IsOneStatement(const Family &family, const QString &sql)
{
    if (sql.contains(QChar(0)))
        return false;
    return !sql.contains(u';') || OneStatementReader(family, sql).Read();
}

void RaiseUnlessOneStatement(const Family &family, const QString &sql)
{
    if (!IsOneStatement(family, sql))
        throw Error(Fault::SeveralStatements);
}

ExecuteResult Session::ExecuteOne(const QString &sql)
{
    RaiseUnlessOneStatement(Family(), sql);
    return Execute(sql);
}

} // namespace ADODB
