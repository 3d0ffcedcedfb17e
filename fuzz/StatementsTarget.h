#pragma once
// What must hold when any text is cut into statements: nothing but blanks and line ends is lost, no piece is blank, and
// what a caret stands in is a part of the text. Fed by libFuzzer (fuzz_statements.cpp) and, for a few seconds, by the
// tests.

#include "fuzz/RtfTarget.h"
#include "lang/Text.h"
#include "sqltext/Statements.h"

namespace fuzz {

inline QString WithoutBlanks(QString text)
{
    return text.remove(u' ').remove(u'\r').remove(u'\n');
}

inline bool IsEmptyStatement(const QString &text)
{
    return lang::Trim(lang::Replace(text, QStringLiteral("\r\n"), {})).isEmpty();
}

// The first two bytes place the caret.
inline std::string Statements(const QByteArray &bytes)
{
    const QString text = TextOf(bytes.mid(2));
    qsizetype last = -2;
    const QStringList pieces = SplitStatements(text, last);
    if (last != pieces.size() - 1)
        return "the last index is not that of the last piece";
    for (const QString &piece : pieces) {
        if (IsEmptyStatement(piece))
            return "a blank piece";
        if (piece.contains(QStringLiteral("\r\n\r\n")))
            return "a blank line inside of a piece";
    }
    if (WithoutBlanks(pieces.join(QString())) != WithoutBlanks(text))
        return "more than blanks and line ends is lost";

    const qsizetype places = text.size() + 1;
    const qsizetype caret = bytes.size() < 2 ? 0 : (uchar(bytes[0]) | uchar(bytes[1]) << 8) % places;
    const QString here = GetStatementAtCaret(text, caret);
    if (!here.isEmpty()) {
        const qsizetype from = text.lastIndexOf(here, caret);
        if (from < 0 || from + here.size() < caret - 1) // the caret may stand between the CR and the LF behind it
            return "the statement at the caret is somewhere else";
    }
    if (IsEmptyStatement(GetSQLText(text, caret, 0)) && !IsEmptyStatement(text))
        return "nothing would run";

    bool alters = false;
    const auto plan = RunPlan(text, false, false);
    for (const RunStep &step : plan)
        alters = alters || step.target == RunTarget::Execute;
    if (plan.size() != size_t(pieces.size()))
        return "a step without a piece";
    // Cutting at blank lines makes no word and takes none away.
    if (alters && !IsAlteringSQL(text))
        return "a run that alters would not be asked for";
    return {};
}

} // namespace fuzz
