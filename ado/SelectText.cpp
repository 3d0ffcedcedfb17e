#include "ado/SelectText.h"

#include "ado/family/Family.h"

namespace ADODB {

namespace {

enum class Kind
{
    End,
    Word,   // a plain name or a keyword
    Quoted, // a name in quotes
    Group,  // whatever stands in parentheses
    Other   // texts, numbers, operators
};

struct Token
{
    Kind kind = Kind::End;
    qsizetype from = 0, to = 0;
};

// Servers take every sign beyond ASCII for a part of a plain name, whatever it is elsewhere.
bool IsNameChar(QChar c)
{
    return c.unicode() >= 0x80 || c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#' || c == u'@';
}

class SelectReader
{
public:
    SelectReader(const QString &text, const Family &family) : m_text(text), m_rules(family.Texts) { Next(); }

    const Token &At() const { return m_token; }
    bool Failed() const { return m_failed; }
    bool Is(QStringView word) const
    {
        return m_token.kind == Kind::Word && Written().compare(word, Qt::CaseInsensitive) == 0;
    }
    bool IsOneOf(std::initializer_list<QStringView> words) const
    {
        for (const QStringView word : words)
            if (Is(word))
                return true;
        return false;
    }
    bool IsSign(QChar sign) const
    {
        return m_token.kind == Kind::Other && m_token.to == m_token.from + 1 && m_text[m_token.from] == sign;
    }
    QStringView Written() const { return QStringView(m_text).sliced(m_token.from, m_token.to - m_token.from); }
    bool IsName() const
    {
        return m_token.kind == Kind::Quoted || (m_token.kind == Kind::Word && !m_text[m_token.from].isDigit());
    }
    // The name without its quotes.
    QString Name() const
    {
        if (m_token.kind != Kind::Quoted)
            return Written().toString();
        const QChar close = m_text[m_token.to - 1];
        QString name;
        for (qsizetype at = m_token.from + 1; at < m_token.to - 1; ++at) {
            name += m_text[at];
            if (m_text[at] == close)
                ++at;
        }
        return name;
    }
    void Next()
    {
        m_token = {};
        while (!m_failed && m_token.kind == Kind::End && Step())
            ;
        if (m_failed)
            m_token = {Kind::End, m_at, m_at};
    }

private:
    QChar Char(qsizetype at) const { return at < m_text.size() ? m_text[at] : QChar(); }

    // Steps behind the closing sign, which is doubled where it is meant as itself.
    void Close(QChar close, bool backslash = false)
    {
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at++];
            if (backslash && c == u'\\')
                ++m_at;
            else if (c == close && Char(m_at) == close)
                ++m_at;
            else if (c == close)
                return;
        }
        m_failed = true;
    }

    // Over "$tag$ ... $tag$"; false when none stands here.
    bool DollarText()
    {
        if (!m_rules.DollarTexts || Char(m_at) != u'$' || Char(m_at + 1).isDigit())
            return false;
        qsizetype end = m_at + 1;
        while (IsNameChar(Char(end)) && Char(end) != u'$')
            ++end;
        if (Char(end) != u'$')
            return false;
        const QString tag = m_text.mid(m_at, end + 1 - m_at);
        const qsizetype close = m_text.indexOf(tag, end + 1);
        m_failed = close < 0;
        m_at = close + tag.size();
        return true;
    }

    bool Comment()
    {
        const QChar c = Char(m_at), next = Char(m_at + 1);
        if ((c == u'-' && next == u'-' &&
             (!m_rules.DashesWantBlank || m_at + 2 >= m_text.size() || m_text[m_at + 2].isSpace())) ||
            (c == u'#' && m_rules.HashComments)) {
            while (m_at < m_text.size() && m_text[m_at] != u'\n')
                ++m_at;
            return true;
        }
        if (c != u'/' || next != u'*')
            return false;
        if (m_rules.CommentsRun && (Char(m_at + 2) == u'!' || Char(m_at + 2) == u'M'))
            m_failed = true; // what stands in it runs
        int depth = 0;
        do {
            if (Char(m_at) == u'/' && Char(m_at + 1) == u'*' && (depth == 0 || m_rules.NestedComments)) {
                ++depth;
                m_at += 2;
            } else if (Char(m_at) == u'*' && Char(m_at + 1) == u'/') {
                --depth;
                m_at += 2;
            } else {
                ++m_at;
            }
        } while (depth > 0 && m_at < m_text.size());
        m_failed = m_failed || depth > 0;
        return true;
    }

    // Takes one token, or steps over what is none; false at the end.
    bool Step()
    {
        if (m_at >= m_text.size())
            return false;
        const QChar c = m_text[m_at];
        const qsizetype from = m_at;
        if (c.isSpace()) {
            ++m_at;
            return true;
        }
        if (Comment())
            return true;
        if (c == u'\'') {
            const bool escaped = from > 0 && m_text[from - 1].toUpper() == u'E';
            ++m_at;
            Close(u'\'',
                  m_rules.InTexts == Backslash::Escapes || (escaped && m_rules.InTexts == Backslash::InEscapeTexts));
            m_token = {Kind::Other, from, m_at};
        } else if (DollarText()) {
            m_token = {Kind::Other, from, m_at};
        } else if (c == u'"' || c == u'`' || (c == u'[' && !m_rules.Subscripts)) {
            ++m_at;
            Close(c == u'[' ? QChar(u']') : c);
            m_token = {Kind::Quoted, from, m_at};
        } else if (IsNameChar(c)) {
            while (IsNameChar(Char(m_at)))
                ++m_at;
            m_token = {Kind::Word, from, m_at};
        } else if (c == u'(') {
            int depth = 0;
            do {
                const QChar sign = Char(m_at);
                if (sign == u'(' || sign == u')') {
                    depth += sign == u'(' ? 1 : -1;
                    ++m_at;
                } else if (!Step()) {
                    m_failed = true;
                }
            } while (depth > 0 && !m_failed);
            m_token = {Kind::Group, from, m_at};
        } else {
            ++m_at;
            m_token = {Kind::Other, from, m_at};
        }
        return !m_failed;
    }

    const QString &m_text;
    const TextRules &m_rules;
    qsizetype m_at = 0;
    Token m_token;
    bool m_failed = false;
};

// One expression of the list, up to the comma or FROM behind it.
SelectText::Item ReadItem(SelectReader &reader)
{
    SelectText::Item item;
    bool plain = true;
    int names = 0; // of the dotted name
    bool dotted = true, alias = false, afterAs = false;
    for (; reader.At().kind != Kind::End && !reader.IsSign(u',') && !reader.Is(u"FROM"); reader.Next()) {
        if (reader.IsSign(u'*') && dotted && !item.Star) {
            item.Star = true;
        } else if (item.Star || alias) {
            plain = false;
        } else if (reader.IsSign(u'.') && names > 0 && !dotted) {
            dotted = true;
        } else if (reader.IsName() && dotted) {
            item.Column = reader.Name();
            dotted = false;
            ++names;
        } else if (reader.Is(u"AS") && !dotted && !afterAs) {
            afterAs = true;
        } else if (reader.IsName() && !dotted) {
            alias = true;
        } else {
            plain = false;
        }
    }
    if (!plain || (dotted && !item.Star) || (afterAs && !alias))
        return {};
    if (item.Star)
        item.Column.clear();
    return item;
}

// What may stand behind the one table of a plain statement.
constexpr QStringView kBehindTable[] = {u"WHERE", u"ORDER",   u"LIMIT", u"OFFSET",    u"FETCH", u"FOR",
                                        u"USE",   u"INDEXED", u"NOT",   u"PARTITION", u"FORCE", u"IGNORE"};
// What makes rows of several tables, or one row of several.
constexpr QStringView kNotPlain[] = {u"UNION", u"INTERSECT", u"EXCEPT", u"MINUS",  u"GROUP",        u"HAVING",
                                     u"JOIN",  u"NATURAL",   u"CROSS",  u"SELECT", u"STRAIGHT_JOIN"};

bool IsAmong(const SelectReader &reader, auto &words)
{
    for (const QStringView word : words)
        if (reader.Is(word))
            return true;
    return false;
}

} // namespace

SelectText ReadSelect(const QString &sql, const Family &family)
{
    SelectText select;
    SelectReader reader(sql, family);
    if (!reader.Is(u"SELECT"))
        return select;
    reader.Next();
    bool plain = !reader.IsOneOf({u"DISTINCT", u"DISTINCTROW", u"UNIQUE"});
    if (reader.Is(u"ALL"))
        reader.Next();
    if (reader.Is(u"TOP") && family.Texts.Top) {
        reader.Next();
        reader.Next();
    }
    for (;;) {
        select.Items.push_back(ReadItem(reader));
        if (!reader.IsSign(u','))
            break;
        reader.Next();
    }
    if (!reader.Is(u"FROM"))
        return SelectText();
    select.From = reader.At().from;
    reader.Next();
    const qsizetype from = reader.At().from;
    qsizetype to = from;
    while (reader.IsName()) { // its parts, without a blank between them
        to = reader.At().to;
        reader.Next();
        if (!reader.IsSign(u'.') || reader.At().from != to)
            break;
        reader.Next();
        if (!reader.IsName() || reader.At().from != to + 1)
            return SelectText();
    }
    plain = plain && to > from;
    select.Table = sql.mid(from, to - from);
    if (reader.At().kind != Kind::End && !reader.IsSign(u';') && !IsAmong(reader, kBehindTable)) {
        if (reader.Is(u"AS"))
            reader.Next();
        plain = plain && reader.IsName() && !IsAmong(reader, kNotPlain);
        select.Alias = plain ? reader.Written().toString() : QString();
        reader.Next();
        plain = plain && (reader.At().kind == Kind::End || reader.IsSign(u';') || IsAmong(reader, kBehindTable));
    }
    for (; plain && reader.At().kind != Kind::End; reader.Next()) {
        plain = !IsAmong(reader, kNotPlain);
        if (reader.IsSign(u';')) {
            reader.Next();
            plain = reader.At().kind == Kind::End;
            break;
        }
    }
    if (reader.Failed())
        return SelectText();
    select.Plain = plain;
    if (!plain)
        select.Table.clear();
    return select;
}

} // namespace ADODB
