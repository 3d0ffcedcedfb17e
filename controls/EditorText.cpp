#include "controls/EditorText.h"

#include <algorithm>
#include <limits>

namespace {

const QString lineBreak = QStringLiteral("\r\n");

// What Qt's document takes for the end of a paragraph.
bool EndsParagraph(QChar ch)
{
    const char16_t code = ch.unicode();
    return code == u'\n' || code == u'\r' || code == 0x2029 || code == 0xFDD0 || code == 0xFDD1;
}

void Append(EditorText::Runs &runs, EditorRun run)
{
    if (run.length <= 0 || run.style.IsPlain())
        return;
    if (!runs.empty() && runs.back().style == run.style && runs.back().start + runs.back().length == run.start)
        runs.back().length += run.length;
    else
        runs.push_back(run);
}

// The runs of `from` between two columns, moved by `shift`, behind those of `to`.
void AppendPart(EditorText::Runs &to, const EditorText::Runs &from, int first, int end, int shift)
{
    for (const EditorRun &run : from) {
        const int start = std::max(run.start, first);
        const int stop = std::min(run.start + run.length, end);
        if (start < stop)
            Append(to, {start + shift, stop - start, run.style});
    }
}

constexpr int farColumn = std::numeric_limits<int>::max() / 2;

} // namespace

EditorText::EditorText() : m_lines(1) {}

bool EditorText::HasColour(int colour) const
{
    return colour >= 0 && size_t(colour) < m_colours.size() && m_colours[size_t(colour)] > 0;
}

void EditorText::Count(const Runs &runs, int by)
{
    for (const EditorRun &run : runs) {
        const size_t colour = size_t(std::max(run.style.colour, 0));
        if (colour >= m_colours.size())
            m_colours.resize(colour + 1);
        m_colours[colour] += by;
    }
}

void EditorText::Reset(const QString &text)
{
    m_text = text;
    m_colours.clear();
    m_lines.clear();
    m_lines.resize(size_t(std::count(text.cbegin(), text.cend(), QChar(u'\n'))) + 1); // only as part of CR LF
}

void EditorText::Reset(const QString &text, const RtfDocument &document)
{
    Reset(text);
    size_t line = 0;
    qsizetype lineStart = 0;
    qsizetype lineEnd = text.indexOf(lineBreak, 0);
    const auto endOf = [&](qsizetype end) { return end < 0 ? text.size() : end; };
    for (const RtfRun &run : document.runs) {
        EditorStyle style{run.colour, run.bold, run.italic};
        if (style.colour < 0 || size_t(style.colour) >= document.colours.size())
            style.colour = 0;
        const qsizetype runEnd = std::min(run.start + run.length, text.size());
        for (qsizetype from = run.start; from < runEnd;) {
            for (; lineEnd >= 0 && from >= lineEnd + 2; ++line) {
                lineStart = lineEnd + 2;
                lineEnd = text.indexOf(lineBreak, lineStart);
            }
            const qsizetype to = std::min(runEnd, endOf(lineEnd));
            Append(m_lines[line].runs, {int(from - lineStart), int(to - from), style});
            from = lineEnd < 0 ? runEnd : std::max(to, std::min(runEnd, lineEnd + 2));
        }
    }
    for (LineRuns &each : m_lines) {
        Count(each.runs, 1);
        each.stale = each.formatted = true;
    }
}

void EditorText::Replace(qsizetype position, qsizetype removed, const QString &added, int line, int column,
                         EditorStyle style)
{
    const QStringView gone = QStringView(m_text).mid(position, removed);
    const int goneLines = int(gone.count(lineBreak));
    const int tailColumn = goneLines ? int(removed - gone.lastIndexOf(lineBreak) - 2) : column + int(removed);
    const int newLines = int(added.count(lineBreak));
    const size_t first = size_t(line);

    for (size_t i = first; i <= first + size_t(goneLines); ++i)
        Count(m_lines[i].runs, -1);
    Runs head;
    AppendPart(head, m_lines[first].runs, 0, column, 0);
    const Runs oldLast = std::move(m_lines[first + size_t(goneLines)].runs);

    const auto at = m_lines.begin() + line + 1;
    if (newLines > goneLines)
        m_lines.insert(at, size_t(newLines - goneLines), LineRuns());
    else
        m_lines.erase(at, at + (goneLines - newLines));

    qsizetype pieceStart = 0;
    for (int i = 0; i <= newLines; ++i) {
        const qsizetype pieceEnd = i < newLines ? added.indexOf(lineBreak, pieceStart) : added.size();
        const int start = i ? 0 : column;
        Runs runs = i ? Runs() : std::move(head);
        Append(runs, {start, int(pieceEnd - pieceStart), style});
        if (i == newLines)
            AppendPart(runs, oldLast, tailColumn, farColumn, start + int(pieceEnd - pieceStart) - tailColumn);
        Count(runs, 1);
        // The blocks at both ends of the edit may be old ones.
        m_lines[first + size_t(i)] = {std::move(runs), i == 0 || i == newLines, false};
        pieceStart = pieceEnd + 2;
    }
    // Typing in a long text must not copy it: room for growth is kept ahead.
    const qsizetype size = m_text.size() - removed + added.size();
    if (m_text.capacity() < size)
        m_text.reserve(size + size / 8 + 64);
    if (removed == added.size())
        std::copy(added.cbegin(), added.cend(), m_text.begin() + position);
    else
        m_text.remove(position, removed).insert(position, added);
}

void EditorText::SetLine(int line, Runs runs)
{
    Runs &kept = m_lines[size_t(line)].runs;
    Count(kept, -1);
    kept = std::move(runs);
    Count(kept, 1);
}

bool EditorText::SetPart(int line, int column, int length, int lineLength, const Runs &runs)
{
    if (column == 0 && length == lineLength) {
        if (Line(line) == runs)
            return false;
        SetLine(line, runs);
        return true;
    }
    Runs whole;
    AppendPart(whole, Line(line), 0, column, 0);
    AppendPart(whole, runs, column, column + length, 0);
    AppendPart(whole, Line(line), column + length, farColumn, 0);
    if (Line(line) == whole)
        return false;
    SetLine(line, std::move(whole));
    return true;
}

EditorStyle EditorText::StyleAt(int line, int column) const
{
    for (const EditorRun &run : Line(line))
        if (run.start <= column && column < run.start + run.length)
            return run.style;
    return {};
}

QString EditorText::Normalised(const QString &text)
{
    const qsizetype size = text.size();
    const auto bad = [&](qsizetype i) {
        const QChar ch = text[i];
        if (!EndsParagraph(ch))
            return false;
        if (ch == u'\r')
            return i + 1 == size || text[i + 1] != u'\n';
        return ch != u'\n' || i == 0 || text[i - 1] != u'\r';
    };
    qsizetype clean = 0;
    while (clean < size && !bad(clean))
        ++clean;
    if (clean == size)
        return text;
    QString result;
    result.reserve(size + size / 16 + 2);
    for (qsizetype i = 0; i < size; ++i) {
        if (!EndsParagraph(text[i])) {
            result += text[i];
            continue;
        }
        if (text[i] == u'\r' && i + 1 < size && text[i + 1] == u'\n')
            ++i;
        result += lineBreak;
    }
    return result;
}
