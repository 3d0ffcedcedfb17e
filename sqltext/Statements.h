#pragma once
// What a run of the Analyzer takes from a text, without a window: the statement at the caret, the altering test, the
// splitting at blank lines, the line of the log. Pure functions, any thread, nothing raises.
//
// Texts have CR LF line ends. `selStart` and `selLength` count from 0, a line end is two positions.

#include <QString>
#include <QStringList>

#include <vector>

// The statements of a text, cut at blank lines ("GO" plays no part). `last` becomes the index of the last one, -1 for
// none. Double blanks are collapsed in one pass, also inside of strings; pieces keep their leading blanks.
QStringList SplitStatements(const QString &sql, qsizetype &last);
QStringList SplitStatements(const QString &sql);

// Does `word` stand in `sql`, in any case, with a delimiter or nothing on both sides? Strings and comments are not
// looked at. TAB and the full stop are no delimiters.
bool HasWord(const QString &sql, const QString &word);
// Does one of the words stand there that make the program ask first and run the statement without a result?
bool IsAlteringSQL(const QString &sql);

// The lines around the caret up to the nearest blank lines; "" when the caret is on a blank line itself. A blank line
// is one between two line ends, so the empty line behind the last line end still belongs to the last statement.
QString GetStatementAtCaret(const QString &text, qsizetype selStart);
// What a run executes: the selection, else the statement at the caret, else the whole text.
QString GetSQLText(const QString &text, qsizetype selStart, qsizetype selLength);

// The line that an executed statement adds to the log.
QString LogLine(const QString &sql, qint64 recordsAffected);
QString CancelledLine(const QString &sql); // of one that was stopped on its way
QString NotRunLine(const QString &sql);    // of one behind it

// Where each statement of a run goes.
enum class RunTarget
{
    Execute,
    ReusedWindow,
    NewWindow
};
struct RunStep
{
    QString sql;
    RunTarget target;
};
// `multi`: each run opens its own result window. `transaction`: the run is the one inside a transaction, which never
// uses the reused window. A batch never uses it either.
std::vector<RunStep> RunPlan(const QString &sql, bool multi, bool transaction);
