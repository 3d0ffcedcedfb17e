#include "sqltext/Statements.h"

#include "lang/Text.h"
#include "sqltext/LineEnd.h"
#include "sqltext/clsDStreamBuffer.h"

#include <QStringMatcher>

#include <algorithm>
#include <iterator>

using lang::Replace;
using lang::Trim;

namespace {

// Without line ends and outer blanks nothing is left.
bool IsBlank(const QString &text)
{
    return Trim(Replace(text, kCrLf, {})).isEmpty();
}

bool IsWordEdge(QChar c)
{
    return QStringView(u" ()-+*/|=`:'?><,\r\n").contains(c);
}

// Characters 0-based [from, to).
struct Span
{
    qsizetype from;
    qsizetype to;
};

Span LineAt(const QString &text, qsizetype position)
{
    // A position between CR and LF belongs to the line that ends there.
    if (position > 0 && position < text.size() && text.at(position) == u'\n' && text.at(position - 1) == u'\r')
        --position;
    const qsizetype before = position > 0 ? text.lastIndexOf(kCrLf, position - 1) : -1;
    // A line end that begins before the position ends before it as well, now that it is not inside of one.
    const qsizetype behind = text.indexOf(kCrLf, position);
    return {before < 0 ? 0 : before + 2, behind < 0 ? text.size() : behind};
}

// A line of nothing or blanks between two line ends parts statements; at either end of the text it does not.
bool IsBlankLine(const QString &text, Span line)
{
    const QStringView view = QStringView(text).mid(line.from, line.to - line.from);
    return line.from > 0 && line.to < text.size() &&
           std::all_of(view.begin(), view.end(), [](QChar c) { return c == u' '; });
}

} // namespace

QStringList SplitStatements(const QString &sql, qsizetype &last)
{
    const QString blankLine = kCrLf + kCrLf;
    QString text = clsDStreamBuffer::CleanDuplicates(sql, QStringLiteral(" "));
    text = clsDStreamBuffer::CleanDuplicates(text, blankLine);
    text = clsDStreamBuffer::CleanDuplicates(text, u' ' + kCrLf);
    text = Replace(text, kCrLf + u' ' + kCrLf, blankLine);
    QStringList statements;
    for (const QString &piece : lang::Split(text, blankLine)) {
        if (!IsBlank(piece))
            statements += piece;
    }
    last = statements.size() - 1;
    return statements;
}

QStringList SplitStatements(const QString &sql)
{
    qsizetype last = -1;
    return SplitStatements(sql, last);
}

bool HasWord(const QString &sql, const QString &word)
{
    if (word.isEmpty())
        return false;
    const QStringMatcher matcher(word, Qt::CaseInsensitive);
    qsizetype behindLast = 0;
    qsizetype hit = matcher.indexIn(sql);
    while (hit >= 0) {
        const qsizetype end = hit + word.size();
        const qsizetype next = matcher.indexIn(sql, end);
        // Nothing between this hit and the last one, the next one or the end of the text counts as a delimiter.
        const bool left = hit == behindLast || IsWordEdge(sql.at(hit - 1));
        const bool right = end == sql.size() || end == next || IsWordEdge(sql.at(end));
        if (left && right)
            return true;
        behindLast = end;
        hit = next;
    }
    return false;
}

bool IsAlteringSQL(const QString &sql)
{
    static constexpr const char16_t *Words[] = {u"Update", u"Alter", u"Delete", u"UPDATETEXT",
                                                u"Create", u"Drop",  u"Insert"};
    return std::any_of(std::begin(Words), std::end(Words),
                       [&](const char16_t *word) { return HasWord(sql, QString::fromUtf16(word)); });
}

QString GetStatementAtCaret(const QString &text, qsizetype selStart)
{
    Span stretch = LineAt(text, std::clamp<qsizetype>(selStart, 0, text.size()));
    if (IsBlankLine(text, stretch))
        return {};
    while (stretch.from > 0) {
        const Span line = LineAt(text, stretch.from - 2);
        if (IsBlankLine(text, line))
            break;
        stretch.from = line.from;
    }
    while (stretch.to < text.size()) {
        const Span line = LineAt(text, stretch.to + 2);
        if (IsBlankLine(text, line))
            break;
        stretch.to = line.to;
    }
    return text.mid(stretch.from, stretch.to - stretch.from);
}

QString GetSQLText(const QString &text, qsizetype selStart, qsizetype selLength)
{
    if (selLength > 0)
        return lang::Mid(text, selStart + 1, selLength);
    const QString statement = GetStatementAtCaret(text, selStart);
    return IsBlank(statement) ? text : statement;
}

// The beginning of a statement, as the log names it.
static QString Head(const QString &sql)
{
    constexpr qsizetype shown = 25;
    return lang::Left(sql, shown) + (sql.size() > shown ? QStringLiteral("... ") : QStringLiteral(" "));
}

QString LogLine(const QString &sql, qint64 recordsAffected)
{
    return Head(sql) + lang::CStr(recordsAffected) + QStringLiteral(" record") +
           (recordsAffected == 1 ? QString() : QStringLiteral("s")) + QStringLiteral(" have been affected");
}

QString CancelledLine(const QString &sql)
{
    return Head(sql) + QStringLiteral("has been cancelled");
}

QString NotRunLine(const QString &sql)
{
    return Head(sql) + QStringLiteral("has not been run");
}

std::vector<RunStep> RunPlan(const QString &sql, bool multi, bool transaction)
{
    qsizetype last = -1;
    const QStringList statements = SplitStatements(sql, last);
    const RunTarget shown = multi || transaction || last >= 1 ? RunTarget::NewWindow : RunTarget::ReusedWindow;
    std::vector<RunStep> steps;
    for (const QString &statement : statements)
        steps.push_back({statement, IsAlteringSQL(statement) ? RunTarget::Execute : shown});
    return steps;
}
