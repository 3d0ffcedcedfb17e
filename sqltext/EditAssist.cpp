#include "sqltext/EditAssist.h"

#include "lang/Text.h"
#include "sqltext/LineEnd.h"

#include <algorithm>

using lang::Left;
using lang::Mid;
using lang::Replace;

namespace {

const QString kTab = QStringLiteral("\t");
const QString kDashes = QStringLiteral("--");

bool SplitsLineEnd(const QString &text, qsizetype position)
{
    return position > 0 && position < text.size() && text.at(position) == u'\n' && text.at(position - 1) == u'\r';
}

// The selection clipped to the text, with no end inside of a line end.
EditText Snapped(const EditText &edit)
{
    const qsizetype size = edit.text.size();
    qsizetype start = std::clamp<qsizetype>(edit.selStart, 0, size);
    qsizetype end = std::clamp<qsizetype>(start + std::max<qsizetype>(0, edit.selLength), start, size);
    const bool empty = start == end;
    if (SplitsLineEnd(edit.text, start))
        --start;
    if (empty)
        end = start;
    else if (SplitsLineEnd(edit.text, end))
        ++end;
    return {edit.text, start, end - start};
}

qsizetype LineStart(const QString &text, qsizetype position)
{
    // Back to the last line end in front of the position, which does not stand inside of one.
    const qsizetype lineEnd = position < 2 ? -1 : text.lastIndexOf(kCrLf, position - 2);
    return lineEnd < 0 ? 0 : lineEnd + kCrLf.size();
}

// The text with the characters from `from` up to `to` exchanged; those are selected.
EditText Exchanged(const QString &text, qsizetype from, qsizetype to, const QString &with)
{
    return {text.left(from) + with + text.mid(to), from, with.size()};
}

QString WithoutComment(const QString &line)
{
    const qsizetype p = FirstNonBlank(line, 1);
    if (p < 1 || Mid(line, p, 2) != kDashes)
        return line;
    return line.left(p - 1) + line.mid(p + 1);
}

} // namespace

qsizetype FirstNonBlank(const QString &text, qsizetype start)
{
    for (qsizetype p = std::max<qsizetype>(1, start); p <= text.size(); ++p) {
        if (!QStringView(u" \t\r\n").contains(text.at(p - 1)))
            return p;
    }
    return -1;
}

EditText CommentIn(const EditText &given)
{
    const EditText edit = Snapped(given);
    const qsizetype line = LineStart(edit.text, edit.selStart);
    if (edit.selLength == 0) {
        // The caret stays at its character.
        return {edit.text.left(line) + kDashes + edit.text.mid(line), edit.selStart + kDashes.size(), 0};
    }
    const qsizetype end = edit.selStart + edit.selLength;
    return Exchanged(edit.text, line, end, kDashes + Replace(edit.text.mid(line, end - line), kCrLf, kCrLf + kDashes));
}

EditText RemoveComment(const EditText &given)
{
    const EditText edit = Snapped(given);
    const qsizetype line = LineStart(edit.text, edit.selStart);
    if (edit.selLength == 0) {
        if (edit.text.mid(line, 2) != kDashes)
            return edit;
        return {edit.text.left(line) + edit.text.mid(line + 2), std::max(line, edit.selStart - 2), 0};
    }
    const qsizetype behind = edit.text.indexOf(kCrLf, edit.selStart + edit.selLength);
    const qsizetype end = behind < 0 ? edit.text.size() : behind;
    QStringList lines = edit.text.mid(line, end - line).split(kCrLf);
    for (QString &one : lines)
        one = WithoutComment(one);
    return Exchanged(edit.text, line, end, lines.join(kCrLf));
}

EditText Indent(const EditText &given, Shift shift)
{
    const EditText edit = Snapped(given);
    const qsizetype line = LineStart(edit.text, edit.selStart);
    const bool out = shift == Shift::Out;
    const bool tabbed = edit.text.mid(line, 1) == kTab;
    // The first TAB goes in or out at the start of the line, also where the selection begins further right.
    const QString head = out && tabbed ? edit.text.left(line) : edit.text.left(line) + (out ? QString() : kTab);
    const qsizetype restFrom = line + (out && tabbed ? 1 : 0);
    const qsizetype moved = head.size() - restFrom; // 1, 0 or -1
    const qsizetype selEnd = std::max(restFrom, edit.selStart + edit.selLength);
    const QString tail = edit.text.mid(selEnd);

    if (edit.selLength == 0) {
        const qsizetype caret = std::max(line, edit.selStart + moved);
        return {head + edit.text.mid(restFrom), caret, 0};
    }
    const qsizetype from = std::max(restFrom, edit.selStart);
    const QString between = edit.text.mid(restFrom, from - restFrom);
    const QString selected = edit.text.mid(from, selEnd - from);
    const QString changed = out ? Replace(selected, kCrLf + kTab, kCrLf) : Replace(selected, kCrLf, kCrLf + kTab);
    const QString text = head + between + changed + tail;
    // A TAB that went in at the very start of the selection belongs to it.
    const qsizetype start = edit.selStart == line ? line : head.size() + between.size();
    return {text, start, head.size() + between.size() + changed.size() - start};
}

EditText InsertString(const EditText &given, const QString &inserted)
{
    const EditText edit = Snapped(given);
    if (edit.selStart == 0)
        return {inserted + kCrLf + edit.text, 0, 0};
    return {edit.text.left(edit.selStart) + inserted + edit.text.mid(edit.selStart + edit.selLength),
            edit.selStart + inserted.size(), 0};
}

EditText InsertText(const EditText &edit, const QString &inserted)
{
    if (edit.selStart == 0 && edit.selLength == 0)
        return {edit.text + kCrLf + inserted, 0, 0};
    return InsertString(edit, inserted);
}

EditText PlaceStatement(const QString &text, qsizetype place, const QString &statement)
{
    const qsizetype at = Snapped({text, place, 0}).selStart;
    const QString blankLine = kCrLf + kCrLf;
    const QString before = at == 0 ? QString() : text.left(at) + blankLine;
    const QString behind = at == text.size() ? QString() : blankLine + text.mid(at);
    return {before + statement + behind, before.size(), statement.size()};
}

QString DropFiles(const QString &text, const QStringList &contents)
{
    QString result = text;
    for (const QString &content : contents) {
        if (!result.isEmpty())
            result += kCrLf + kCrLf;
        result += content;
    }
    return result;
}
