// How the editor shows its runs: as formats of the blocks' layouts, which are no part of the document's text, raise no
// change and cost nothing until a block is painted.
#include "controls/RichTextBox.h"

#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>

static constexpr int suspected = 32; // lines at each end of an edit

QTextCharFormat RichTextBox::Format(EditorStyle style) const
{
    const size_t index = size_t(style.colour) * 4 + (style.bold ? 2 : 0) + (style.italic ? 1 : 0);
    if (index >= m_formats.size())
        m_formats.resize(index + 1);
    QTextCharFormat &format = m_formats[index];
    if (!format.isEmpty())
        return format;
    if (style.colour > 0 && size_t(style.colour) < m_colours.size() &&
        m_colours[size_t(style.colour)] != RtfAutomaticColour)
        format.setForeground(QColor(QRgb(m_colours[size_t(style.colour)])));
    if (style.bold)
        format.setFontWeight(QFont::Bold);
    if (style.italic)
        format.setFontItalic(true);
    return format;
}

void RichTextBox::ShowLine(const QTextBlock &block, int line)
{
    const EditorText::Runs &runs = m_content.Line(line);
    // Asking a block for its layout makes one, which a long text of plain lines must not cost.
    if (runs.empty() && !m_content.MayHaveFormats(line))
        return;
    QList<QTextLayout::FormatRange> formats;
    formats.reserve(qsizetype(runs.size()));
    for (const EditorRun &run : runs) {
        QTextLayout::FormatRange range;
        range.start = run.start;
        range.length = run.length;
        range.format = Format(run.style);
        formats.append(range);
    }
    block.layout()->setFormats(formats);
    m_content.SetFormatted(line, !formats.isEmpty());
}

void RichTextBox::ShowLines(int first, int last)
{
    QTextBlock block = document()->findBlockByNumber(first);
    for (int line = first; line <= last && block.isValid(); ++line, block = block.next())
        ShowLine(block, line);
    MarkDirty(first, last);
}

// Which of the blocks at both ends of an edit are old ones, with formats of what stood there, only the document knows.
void RichTextBox::ShowEdited(int first, int last)
{
    for (int line = first; line <= last; ++line)
        if (line - first < suspected || last - line < suspected)
            m_content.SuspectFormats(line);
    ShowLines(first, last);
}

void RichTextBox::ShowStale(int first, int last)
{
    int firstShown = -1;
    int lastShown = -1;
    QTextBlock block = document()->findBlockByNumber(first);
    for (int line = first; line <= last && block.isValid(); ++line, block = block.next()) {
        if (!m_content.IsStale(line))
            continue;
        ShowLine(block, line);
        m_content.SetFormatted(line, true);
        if (firstShown < 0)
            firstShown = line;
        lastShown = line;
    }
    if (firstShown >= 0)
        MarkDirty(firstShown, lastShown);
}

int RichTextBox::LastVisibleLine() const
{
    // A line is never lower than its font.
    return std::min(GetFirstVisibleLine() + GetVisibleLineCount() + 1, m_content.LineCount() - 1);
}

void RichTextBox::ShowAllColours()
{
    ShowStale(0, m_content.LineCount() - 1);
}

// Lines get their formats when they are first seen.
void RichTextBox::paintEvent(QPaintEvent *event)
{
    if (!m_filling) // else the lines are another text's
        ShowStale(GetFirstVisibleLine(), LastVisibleLine());
    QPlainTextEdit::paintEvent(event);
}

void RichTextBox::print(QPagedPaintDevice *printer)
{
    ShowAllColours();
    QPlainTextEdit::print(printer);
}

// Lets the layout and the screen follow, without a word about the text.
void RichTextBox::MarkDirty(int first, int last)
{
    const QTextBlock from = document()->findBlockByNumber(first);
    const QTextBlock to = document()->findBlockByNumber(last);
    ++m_quiet;
    document()->markContentsDirty(from.position(), to.position() + to.length() - 1 - from.position());
    --m_quiet;
}

// Its place in the table, which grows by it when it is new.
int RichTextBox::ColourIndex(quint32 colour)
{
    const auto found = std::find(m_colours.begin(), m_colours.end(), colour);
    if (found == m_colours.end())
        return m_colours.push_back(colour), int(m_colours.size()) - 1;
    return int(found - m_colours.begin());
}

void RichTextBox::SetSelColor(const QColor &colour)
{
    const QTextCursor cursor = Cursor();
    const int index = ColourIndex(colour.rgb() & 0xFFFFFF);
    if (!cursor.hasSelection()) {
        EditorStyle style;
        if (!cursor.atBlockStart())
            style = m_content.StyleAt(cursor.blockNumber(), cursor.positionInBlock() - 1);
        style.colour = index;
        m_typing = style;
        m_typingAt = cursor.position();
        return;
    }
    const QTextBlock lastBlock = document()->findBlock(cursor.selectionEnd());
    QTextBlock block = document()->findBlock(cursor.selectionStart());
    const int first = block.blockNumber();
    for (; block.isValid(); block = block.next()) {
        const int line = block.blockNumber();
        const int from = std::max(cursor.selectionStart() - block.position(), 0);
        const int to = std::min(cursor.selectionEnd() - block.position(), block.length() - 1);
        EditorText::Runs runs;
        for (int column = from; column < to; ++column) {
            EditorStyle style = m_content.StyleAt(line, column);
            style.colour = index;
            if (!runs.empty() && runs.back().style == style)
                ++runs.back().length;
            else
                runs.push_back({column, 1, style});
        }
        m_content.SetPart(line, from, to - from, block.length() - 1, runs);
        if (block == lastBlock)
            break;
    }
    ShowLines(first, lastBlock.blockNumber());
}
