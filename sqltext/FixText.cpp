#include "sqltext/FixText.h"

#include "sqltext/IntColorAll.h"
#include "sqltext/Keywords.h"

#include <algorithm>

namespace {

constexpr QStringView kLineEnd = u"\r\n";
constexpr qsizetype kReach = 128; // of the window, to either side
constexpr qsizetype kMargin = 10; // an end that is nearer to the text's own end moves there

// One-based position of the next line end at or behind a zero-based one, 0 when there is none.
qsizetype NextLineEnd(QStringView text, qsizetype from)
{
    return from > text.size() ? 0 : text.indexOf(kLineEnd, from) + 1;
}

} // namespace

FixRange SelectLine(QStringView text, qsizetype caret)
{
    const qsizetype length = text.size();
    qsizetype lineStart = text.left(qBound(qsizetype(0), caret, length)).lastIndexOf(kLineEnd) + 1;
    if (lineStart + 2 >= length)
        return {lineStart, length + 1};
    if (lineStart > 0)
        ++lineStart; // over the LF
    // Counted from the line's start, so that the range takes in the line end.
    const qsizetype next = NextLineEnd(text, lineStart);
    return {lineStart, (next > 0 ? next - lineStart : length - 1) + 1};
}

FixRange SelectVisibleRange(QStringView text, const FixView &view)
{
    const qsizetype length = text.size();
    const qsizetype lastLine = text.count(kLineEnd);
    if (lastLine < view.visibleLineCount)
        return {0, length};
    // Position 1 of a count from one, used as it is: without a line above, the range leaves out the first character,
    // otherwise it begins on the LF of the line end before.
    qsizetype start = 1;
    qsizetype from = 0;
    for (qsizetype line = 0; line < view.firstVisibleLine; ++line) {
        const qsizetype next = NextLineEnd(text, from);
        if (next == 0)
            break;
        start = from = next;
    }
    return {start, length - start + 1};
}

FixRange SelectWindow(QStringView text, qsizetype caret)
{
    const qsizetype length = text.size();
    const auto endsWord = [&](qsizetype position) {
        return position >= 1 && position <= length && IsWordEnd(text[position - 1]);
    };
    qsizetype from = 0;
    if (caret >= kReach) {
        from = caret - kReach;
        while (from > 1 && !endsWord(from))
            --from;
        if (from < kMargin)
            from = 0;
    }
    qsizetype to = length;
    if (caret + kReach <= length) {
        to = caret + kReach;
        while (to < length && !endsWord(to))
            ++to;
        if (to > length - kMargin)
            to = length;
    }
    return {from, to - from};
}

FixRange SelectFixRange(QStringView text, bool all, FixMode mode, const FixRange &selection, const FixView &view)
{
    if (all || selection.length != 0)
        return selection;
    switch (mode) {
    case FixMode::Line:
        return SelectLine(text, selection.start);
    case FixMode::Visible:
        return SelectVisibleRange(text, view);
    case FixMode::Window:
        return SelectWindow(text, selection.start);
    }
    return selection;
}

FixRange Clipped(QStringView text, const FixRange &range)
{
    const qsizetype start = qBound(qsizetype(0), range.start, text.size());
    return {start, qBound(qsizetype(0), range.length, text.size() - start)};
}

FixRange Snapped(QStringView text, const FixRange &range)
{
    FixRange part = Clipped(text, range);
    const auto splitsLineEnd = [&](qsizetype position) {
        return position > 0 && position < text.size() && text[position - 1] == u'\r' && text[position] == u'\n';
    };
    if (splitsLineEnd(part.start))
        part = {part.start - 1, part.length > 0 ? part.length + 1 : 0};
    if (part.length > 0 && splitsLineEnd(part.start + part.length))
        ++part.length;
    return part;
}

FixRange WholeLines(QStringView text, const FixRange &range)
{
    const FixRange part = Snapped(text, range);
    const qsizetype start = text.left(part.start).lastIndexOf(kLineEnd);
    const qsizetype from = start < 0 ? 0 : start + kLineEnd.size();
    const qsizetype end = text.indexOf(kLineEnd, part.start + part.length);
    return {from, (end < 0 ? text.size() : end) - from};
}

bool IsBlankRange(QStringView text, const FixRange &range)
{
    if (text.size() < 3)
        return false;
    const FixRange part = Snapped(text, range);
    const QStringView inside = text.mid(part.start, part.length);
    for (qsizetype i = 0; i < inside.size(); ++i) {
        if (inside.mid(i, 2) == kLineEnd)
            ++i;
        else if (inside[i] != u' ')
            return false;
    }
    return true;
}

FixCall PlanFixText(const QString &text, bool all, FixMode mode, const FixRange &selection, const FixView &view)
{
    FixRange range = Clipped(text, SelectFixRange(text, all, mode, selection, view));
    if (IsBlankRange(text, range))
        range.length = 0;
    if (text.startsWith(u'\t')) // the caret then stands behind the blank, and nothing is selected
        return {u' ' + text.mid(1), QString(), 2};
    return {text, text.mid(range.start, range.length), range.start + 1};
}

void FixControl(EditControl &control, bool all, FixMode mode, const FixView &view)
{
    const QString text = control.Text();
    const FixRange kept{control.SelStart(), control.SelLength()};
    const FixRange range = SelectFixRange(text, all, mode, kept, view);
    if (range != kept) {
        control.SetSelStart(range.start);
        control.SetSelLength(range.length);
    }
    if (IsBlankRange(text, range))
        control.SetSelLength(0);
    if (text.startsWith(u'\t')) {
        control.SetSelStart(0);
        control.SetSelLength(1);
        control.SetSelText(QStringLiteral(" "));
    }
    intColorAll(control, control.SelText(), control.SelStart() + 1);
    control.SetSelStart(kept.start);
    control.SetSelLength(kept.length);
}
