#include "sqltext/clsBraceStacker.h"

#include "lang/Text.h"

#include <algorithm>

using lang::Left;
using lang::Mid;

namespace {

qsizetype CountOf(const QString &text, const QString &mark)
{
    return std::max<qsizetype>(0, lang::Split(text, mark).size() - 1);
}

} // namespace

bool clsBraceStacker::IsBroken(qsizetype group) const
{
    return InTable(group) && (At(group, 0) == 0 || At(group, 1) == 0);
}

void clsBraceStacker::SetTextBody(const QString &rtf, const QString &openBrace, const QString &closeBrace)
{
    m_Text = rtf;
    strOpenBrace = openBrace;
    strCloseBrace = closeBrace;
    if (openBrace == closeBrace)
        PairLike();
    else
        PairNested();
}

void clsBraceStacker::PairNested()
{
    const qsizetype opens = CountOf(m_Text, strOpenBrace);
    const qsizetype closes = CountOf(m_Text, strCloseBrace);
    m_Balanced = opens == closes;
    m_Count = std::max(opens, closes);
    m_Groups.assign(size_t(m_Count) + 2, {0, 0});

    // The columns whose group still waits for a closer, innermost last. A lone closer takes a column of its own, so
    // text like "))((" needs more columns than the table has: what would be written behind it is dropped.
    std::vector<qsizetype> waiting;
    qsizetype top = 0;
    for (qsizetype i = 1; i <= m_Text.size(); ++i) {
        const QStringView c = QStringView(m_Text).mid(i - 1, 1);
        if (c == strOpenBrace) {
            Set(++top, 0, i);
            waiting.push_back(top);
        } else if (c == strCloseBrace) {
            if (waiting.empty()) {
                Set(++top, 1, i);
            } else {
                Set(waiting.back(), 1, i);
                waiting.pop_back();
            }
        }
    }
}

void clsBraceStacker::PairLike()
{
    const qsizetype marks = CountOf(m_Text, strOpenBrace);
    m_Balanced = marks % 2 == 0;
    m_Count = marks / 2 + 1; // an even number leaves an empty last group
    m_Groups.assign(size_t(marks) + 2, {0, 0});

    qsizetype group = 1;
    for (qsizetype i = 1; i <= m_Text.size(); ++i) {
        if (QStringView(m_Text).mid(i - 1, 1) != strOpenBrace)
            continue;
        if (At(group, 0) == 0)
            Set(group, 0, i);
        else
            Set(group++, 1, i);
    }
}

clsBraceStacker::Focus clsBraceStacker::FocusOnGroup(qsizetype group) const
{
    Focus focus{m_Text, {}};
    if (group < 1 || group > m_Count)
        return focus;
    const qsizetype open = At(group, 0);
    const qsizetype close = At(group, 1);
    const QString bold = QStringLiteral("\\b ");
    const QString italic = QStringLiteral("\\i ");
    const auto mark = [&](qsizetype at, const QString &with, const QString &brace) {
        focus.rtf = Left(m_Text, at - 1) + with + brace + Mid(m_Text, at + brace.size());
    };
    if (open > 0 && close > 0) {
        focus.selStart = open + strOpenBrace.size();
        mark(open, bold, strOpenBrace);
        // The switch in front has moved the closer.
        const qsizetype moved = close + bold.size();
        focus.rtf = Left(focus.rtf, moved - 1) + strCloseBrace + QStringLiteral("\\b0 ") +
                    Mid(focus.rtf, moved + strCloseBrace.size());
    } else if (open > 0) {
        mark(open, italic, strOpenBrace);
    } else if (close > 0) {
        mark(close, italic, strCloseBrace);
    }
    return focus;
}

qsizetype clsBraceStacker::At(qsizetype column, int row) const
{
    return InTable(column) ? m_Groups[size_t(column)][size_t(row)] : 0;
}

void clsBraceStacker::Set(qsizetype column, int row, qsizetype position)
{
    if (InTable(column))
        m_Groups[size_t(column)][size_t(row)] = position;
}
