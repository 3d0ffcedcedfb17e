// The editor's content as RTF, and finished colourings taken over without that detour.
#include "controls/EditorContent.h"
#include "controls/RichTextBox.h"

#include <QTextDocument>
#include <algorithm>
#include <utility>

namespace {

// A rewrite that leaves this part of the text as it was is done in place, so that the view does not move.
constexpr int inPlaceShare = 2;
// So many lines are shown at once, seen or not; of more only those in sight.
constexpr int shownAtOnce = 64;

// What of the runs lies beside the middle, at its places in the new text.
std::vector<RtfRun> Beside(const std::vector<RtfRun> &runs, const TextDifference &middle)
{
    std::vector<RtfRun> kept;
    const qsizetype behind = middle.start + middle.oldLength;
    const auto keep = [&](RtfRun run, qsizetype from, qsizetype to, qsizetype shift) {
        run.length = std::min(run.start + run.length, to) - std::max(run.start, from);
        run.start = std::max(run.start, from) + shift;
        if (run.length > 0)
            kept.push_back(run);
    };
    for (const RtfRun &run : runs) {
        keep(run, 0, middle.start, 0);
        keep(run, behind, run.start + run.length, middle.newLength - middle.oldLength);
    }
    return kept;
}

} // namespace

std::vector<RtfRun> RichTextBox::Runs() const
{
    std::vector<RtfRun> runs;
    qsizetype start = 0; // of the line
    for (int line = 0; line < m_content.LineCount(); ++line) {
        for (const EditorRun &run : m_content.Line(line))
            runs.push_back({start + run.start, run.length, run.style.colour, run.style.bold, run.style.italic});
        start = m_content.Text().indexOf(u'\n', start) + 1;
    }
    return runs;
}

RtfDocument RichTextBox::Look() const
{
    RtfDocument look;
    look.colours = m_colours;
    look.fontName = m_fontName;
    look.fontHalfPoints = m_fontHalfPoints;
    return look;
}

QString RichTextBox::TextRTF() const
{
    RtfDocument whole = Look();
    whole.text = m_content.Text();
    whole.runs = Runs();
    return WriteRtf(whole);
}

RtfFrame RichTextBox::Frame() const
{
    return {RtfHeadLine(m_fontName), RtfFontLine(m_fontHalfPoints)};
}

void RichTextBox::SetTextRTF(const QString &rtf)
{
    TakeDocument(ReadRtf(rtf));
}

void RichTextBox::SetSelRTF(const QString &rtf)
{
    TakeFragment(ReadRtf(rtf, true));
}

bool RichTextBox::TakeColoured(const ColouredText &coloured)
{
    if (coloured.whole)
        TakeDocument(coloured.document);
    else
        TakeFragment(coloured.document);
    return true;
}

void RichTextBox::TellWhole(const QString &text)
{
    m_asked.reset();
    const TextDifference middle = CompareTexts(m_content.Text(), text);
    if (middle.oldLength > 0 || middle.newLength > 0)
        emit edited(m_content.Text(), middle.start, middle.oldLength, text.mid(middle.start, middle.newLength));
}

// Another text with as little of the document touched as there is need; nobody is told.
void RichTextBox::Rewrite(const QString &text, bool keepFormats)
{
    const TextDifference middle = CompareTexts(m_content.Text(), text);
    const bool telling = std::exchange(m_telling, true);
    if (middle.newLength > text.size() / inPlaceShare) {
        const std::vector<RtfRun> kept = keepFormats ? Beside(Runs(), middle) : std::vector<RtfRun>();
        WriteWhole(text);
        if (!kept.empty())
            TakeRuns(kept, 0, text.size(), {});
    } else {
        ReplaceText(middle.start, middle.oldLength, text.mid(middle.start, middle.newLength));
    }
    m_telling = telling;
}

void RichTextBox::ChangeText(const QString &text)
{
    const QString wanted = EditorText::Normalised(text);
    if (wanted == m_content.Text())
        return;
    Rewrite(wanted, true);
    m_pending = true;
    OnTextChanged();
}

void RichTextBox::TakeDocument(const RtfDocument &document)
{
    const bool sameText = document.text == m_content.Text();
    const QString text = sameText ? document.text : EditorText::Normalised(document.text);
    if (m_fontName != document.fontName) {
        m_fontName = document.fontName;
        SetProportional(!m_fontName.contains(QLatin1String("Courier")) && !m_fontName.contains(QLatin1String("Mono")));
    }
    m_fontHalfPoints = document.fontHalfPoints;
    if (!sameText) {
        const LockUpdate lock(this);
        Rewrite(text, false); // they come with the document
        SetSelStart(0);
        m_pending = true;
    }
    TakeTable(document.colours);
    TakeRuns(document.runs, 0, text.size(), {});
    if (!sameText)
        OnTextChanged();
}

void RichTextBox::TakeFragment(const RtfDocument &document)
{
    const QString text = EditorText::Normalised(document.text);
    const qsizetype start = SelStart();
    const bool sameText = text == QStringView(m_content.Text()).mid(start, SelLength());
    if (!sameText) {
        const bool telling = std::exchange(m_telling, true);
        QTextCursor cursor = Cursor();
        cursor.insertText(text);
        m_telling = telling;
    }
    std::vector<int> mapping;
    if (m_colours.size() <= 1)
        TakeTable(document.colours);
    else if (document.colours != m_colours)
        for (const quint32 colour : document.colours)
            mapping.push_back(mapping.empty() ? 0 : ColourIndex(colour));
    TakeRuns(document.runs, start, text.size(), mapping);
    SetSelStart(start + text.size());
    if (!sameText)
        OnTextChanged();
}

// Another table shows every character anew; the same one, as nearly always, costs nothing.
void RichTextBox::TakeTable(const std::vector<quint32> &colours)
{
    if (colours.empty() || colours == m_colours)
        return;
    m_colours = colours;
    m_formats.clear();
    if (colours.front() != RtfAutomaticColour) {
        QPalette look = palette();
        look.setColor(QPalette::Text, QColor(QRgb(colours.front())));
        setPalette(look);
    }
    int line = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next(), ++line)
        if (!m_content.Line(line).empty())
            ShowLine(block, line);
    MarkDirty(0, line - 1);
}

// Styles of a stretch of the text, from runs that count from its start. Only lines that look different are touched.
void RichTextBox::TakeRuns(const std::vector<RtfRun> &runs, qsizetype start, qsizetype length,
                           const std::vector<int> &mapping)
{
    QTextBlock block = Find(start, false).block;
    const qsizetype end = start + length;
    int line = block.blockNumber();
    qsizetype lineStart = block.position() + line;
    size_t next = 0;
    int firstTouched = -1;
    int lastTouched = -1;
    EditorText::Runs wanted;
    const int firstVisible = GetFirstVisibleLine();
    const int lastVisible = LastVisibleLine();
    int touched = 0;
    for (qsizetype lineEnd = 0; block.isValid() && lineStart <= end;
         block = block.next(), ++line, lineStart = lineEnd + 2) {
        lineEnd = lineStart + block.length() - 1;
        wanted.clear();
        for (; next < runs.size(); ++next) {
            const RtfRun &run = runs[next];
            const qsizetype runEnd = start + run.start + run.length;
            const qsizetype from = std::max(start + run.start, lineStart);
            const qsizetype to = std::min(runEnd, lineEnd);
            EditorStyle style{run.colour, run.bold, run.italic};
            if (!mapping.empty())
                style.colour = size_t(style.colour) < mapping.size() ? mapping[size_t(style.colour)] : 0;
            else if (style.colour < 0 || size_t(style.colour) >= m_colours.size())
                style.colour = 0;
            if (from < to && !style.IsPlain()) {
                if (!wanted.empty() && wanted.back().style == style &&
                    wanted.back().start + wanted.back().length == from - lineStart)
                    wanted.back().length += int(to - from);
                else
                    wanted.push_back({int(from - lineStart), int(to - from), style});
            }
            if (runEnd > lineEnd)
                break; // it goes on in the next line
        }
        const int column = int(std::max<qsizetype>(start - lineStart, 0));
        if (m_content.SetPart(line, column, int(std::min(end, lineEnd) - lineStart) - column, int(lineEnd - lineStart),
                              wanted)) {
            if (touched++ >= shownAtOnce && (line < firstVisible || line > lastVisible)) {
                m_content.SetStale(line);
                continue;
            }
            ShowLine(block, line);
            if (firstTouched < 0)
                firstTouched = line;
            lastTouched = line;
        }
    }
    if (firstTouched >= 0)
        MarkDirty(firstTouched, lastTouched);
}
