#include "sqltext/modSQLMaipulation.h"

#include "lang/Text.h"
#include "sqltext/LineEnd.h"
#include "sqltext/Statements.h"

#include <QStringMatcher>

#include <algorithm>
#include <utility>

using lang::InStr;

namespace {

bool IsBlank(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c == u' '; });
}

// Behind a quote, an opening bracket or another sign below the full stop a clause word stays on its line; blank, comma,
// closing bracket and line ends are the exceptions.
bool KeepsTheLine(QChar c)
{
    return c < QChar(46) && !QStringView(u" ,)\r\n").contains(c);
}

// `blanksBeginALine`: a result of nothing but blanks is the start of a line already and gets no line break.
QString Break(const QString &text, const QString &token, bool blanksBeginALine)
{
    if (token.isEmpty())
        return text;
    const QStringMatcher matcher(token, Qt::CaseInsensitive);
    QString result;
    result.reserve(text.size() + text.size() / 16);
    bool onlyBlanks = true;
    for (qsizetype from = 0;;) {
        const qsizetype hit = matcher.indexIn(text, from);
        const QStringView piece = QStringView(text).mid(from, hit < 0 ? -1 : hit - from);
        if (!result.isEmpty()) {
            if (!KeepsTheLine(result.back()) && !(blanksBeginALine && onlyBlanks))
                result += kCrLf;
            result += token;
            onlyBlanks = false;
        }
        result += piece;
        onlyBlanks = onlyBlanks && IsBlank(piece);
        if (hit < 0)
            return result;
        from = hit + token.size();
    }
}

QString FormatOne(const QString &statement)
{
    static constexpr const char16_t *Tokens[] = {u"--",       u"SELECT ",    u"UPDATE ",  u"DELETE ",   u" SET ",
                                                 u" VALUES ", u" FIELDS ",   u" FROM ",   u" WHERE ",   u" AND ",
                                                 u" OR ",     u" GROUP BY ", u" HAVING ", u" ORDER BY "};
    QString text = u' ' + lang::Replace(statement, QStringLiteral("\r"), {});
    text = u' ' + lang::Replace(text, QStringLiteral("\n"), {});
    for (const char16_t *token : Tokens)
        text = Break(text, QString::fromUtf16(token), true);
    return text;
}

} // namespace

QString QuoteName(const QString &name)
{
    if (InStr(name, QStringLiteral("[")) > 0 || InStr(name, QStringLiteral(" ")) == 0)
        return name;
    if (InStr(name, QStringLiteral("SELECT"), lang::Compare::Text) > 0)
        return u'(' + name + u')';
    return u'[' + name + u']';
}

QString BreakToken(const QString &text, const QString &token)
{
    return Break(text, token, false);
}

QString BreakOnToken(const QString &text, const QString &token)
{
    return lang::Mid(BreakToken(u' ' + text, token), 2);
}

QString FormatStatement(const QString &sql)
{
    QString out;
    for (const QString &statement : SplitStatements(sql)) {
        if (!out.isEmpty())
            out += kCrLf + kCrLf;
        out += FormatOne(statement);
    }
    return out;
}

QString FormatStatementKeeping(const QString &sql, QStringList pieces)
{
    constexpr char16_t first = 0xE000, last = 0xF8FF; // signs that no text means anything by
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const QString &left, const QString &right) { return left.size() > right.size(); });
    QString text = sql;
    QList<std::pair<QChar, QString>> kept;
    char16_t sign = first;
    for (const QString &piece : std::as_const(pieces)) {
        const QString framed = u'a' + piece + u'a';
        if (FormatStatement(framed).contains(framed))
            continue; // comes through as it is
        while (sign <= last && text.contains(QChar(sign)))
            ++sign;
        if (sign > last)
            break;
        text.replace(piece, QString(QChar(sign)));
        kept.append({QChar(sign++), piece});
    }
    text = FormatStatement(text);
    for (const auto &[stood, piece] : std::as_const(kept))
        text.replace(stood, piece);
    return text;
}

QString FieldDefinition(const FieldShape &field)
{
    const bool quoted = InStr(field.name, QStringLiteral(" ")) > 0;
    const QString name = !field.written.isEmpty() ? field.written : quoted ? u'[' + field.name + u']' : field.name;
    QString s = u'\t' + name + u' ' + GetTypeName(field.type, false);
    if (IsSizedType(field.type)) {
        if (HasPrecisionType(field.type))
            s += u'(' + lang::CStr(qint64(field.precision)) + u',' + lang::CStr(qint64(field.numericScale)) + u')';
        else if (field.definedSize != -1)
            s += u'(' + lang::CStr(field.definedSize) + u')';
    }
    return s;
}

QString CreateTableStatement(const QString &table, const std::vector<FieldShape> &fields)
{
    QString s = QStringLiteral("CREATE TABLE ") + table + QStringLiteral(" (") + kCrLf;
    for (const FieldShape &field : fields)
        s += FieldDefinition(field) + u',' + kCrLf;
    s.chop(3); // the last comma and line end; without fields the bracket goes with the line end
    return s + u')';
}
