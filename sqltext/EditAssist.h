#pragma once
// The text side of the editing assistance: comment, indent, insert, statement skeletons. Pure functions on a text with
// its selection; the window loads the result, then colours. Any thread, nothing raises.
//
// Texts have CR LF line ends; selections count from 0 and a line end is two positions. A selection is clipped to the
// text; a start between CR and LF is taken as before the CR, an end as behind the LF.

#include <QString>
#include <QStringList>

struct EditText
{
    QString text;
    qsizetype selStart = 0;
    qsizetype selLength = 0;
};

// 1-based position of the first character at or behind `start` that is no blank, TAB, CR or LF; -1 when there is none.
qsizetype FirstNonBlank(const QString &text, qsizetype start);

// "--" in front of the caret's line, or of every line of the selection, which is widened to the start of its first
// line.
EditText CommentIn(const EditText &edit);
// "--" taken from the very start of the caret's line, or from each selected line where it comes first; the selection is
// widened to whole lines. A line that the selection only touches at its start counts.
EditText RemoveComment(const EditText &edit);
enum class Shift
{
    In = 0,
    Out = 1
};
// One TAB more at the start of the caret's line or of each selected line; one less when it is shifted out.
EditText Indent(const EditText &edit, Shift shift);

// Replaces the selection, but a selection that starts at 0 is left: the text then goes in front, on lines of its own.
EditText InsertString(const EditText &edit, const QString &inserted);
// The same, but with nothing selected and the caret at 0 the text goes to the end, on a line of its own.
EditText InsertText(const EditText &edit, const QString &inserted);
// A statement at a place of the text, with a blank line to either side where there is text, selected as a whole.
EditText PlaceStatement(const QString &text, qsizetype place, const QString &statement);
// Contents of dropped files behind the text, each after a blank line unless it is the first text of all.
QString DropFiles(const QString &text, const QStringList &contents);

// The statement types in the order of their dialog.
enum class StatementKind
{
    Select = 0,
    Insert = 1,
    Update = 2,
    Delete = 3,
    Drop = 4,
    Alter = 5
};
// What the dialog was left with.
struct SkeletonOptions
{
    StatementKind type = StatementKind::Select;
    bool useFields = false;
    bool groupBy = false;
    bool having = false;
    bool orderBy = false;
};
// The statement for a table; `fields` is its field list, joined.
QString Skeleton(const SkeletonOptions &options, const QString &table, const QString &fields);
// The same with the table's name as it is to be written.
QString SkeletonOf(const SkeletonOptions &options, const QString &written, const QString &fields);

// Does a name, written so in an editor, reach the server again as it is? Line ends are made CR LF and cut a text into
// statements, a pair of blanks becomes one, a blank or digit behind "]" goes with the colouring.
bool KeepsInEditor(const QString &written);
