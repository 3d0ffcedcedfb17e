#include "controls/RichTextBox.h"

#include <QFontDatabase>
#include <QPointer>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>

namespace {

constexpr QRgb defaultText = 0x91C37D;
const QColor background(0, 20, 0);
constexpr int tabColumns = 4;
constexpr qsizetype charByChar = 64; // shorter edits are read a character at a time

} // namespace

RichTextBox::RichTextBox(QWidget *parent) : QPlainTextEdit(parent), m_colours{defaultText}
{
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(false);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, background);
    colours.setColor(QPalette::Text, QColor(defaultText));
    setPalette(colours);
    SetProportional(false);
    connect(document(), &QTextDocument::contentsChange, this, &RichTextBox::OnContentsChange);
    connect(this, &QPlainTextEdit::textChanged, this, &RichTextBox::OnTextChanged);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { m_asked.reset(); });
}

RichTextBox::~RichTextBox()
{
    // The document outlives this part of the object and still speaks while it is taken down.
    disconnect(document(), nullptr, this, nullptr);
    disconnect(this, nullptr, this, nullptr);
}

void RichTextBox::SetProportional(bool proportional)
{
    QFont face = QFontDatabase::systemFont(proportional ? QFontDatabase::GeneralFont : QFontDatabase::FixedFont);
    if (!proportional)
        face.setStyleHint(QFont::Monospace);
    setFont(face);
    setTabStopDistance(tabColumns * QFontMetricsF(face).horizontalAdvance(u' '));
}

QString RichTextBox::Text() const
{
    return m_content.Text();
}

void RichTextBox::SetText(const QString &text)
{
    WriteWhole(EditorText::Normalised(text));
    SetSelStart(0);
    m_pending = true;
    OnTextChanged();
}

// All anew, in Qt's fastest way and with one redraw.
void RichTextBox::WriteWhole(const QString &text)
{
    const bool shown = updatesEnabled();
    setUpdatesEnabled(false);
    TellWhole(text);
    ++m_quiet;
    setPlainText(text);
    --m_quiet;
    m_content.Reset(text);
    if (m_shadow)
        m_shadow = textCursor();
    if (document()->characterCount() - 1 + document()->blockCount() - 1 != m_content.Text().size())
        Resync();
    setUpdatesEnabled(shown);
}

RichTextBox::Place RichTextBox::Find(qsizetype wanted, bool upwards) const
{
    const int position = int(std::clamp<qsizetype>(wanted, 0, m_content.Text().size()));
    int low = 0;
    int high = document()->blockCount() - 1;
    const auto start = [&](int line) { return document()->findBlockByNumber(line).position() + line; };
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (start(middle) <= position)
            low = middle;
        else
            high = middle - 1;
    }
    const QTextBlock block = document()->findBlockByNumber(low);
    const int column = position - (block.position() + low);
    const int length = block.length() - 1;
    if (column <= length)
        return {block, column};
    return upwards && block.next().isValid() ? Place{block.next(), 0} : Place{block, length};
}

qsizetype RichTextBox::TextPosition(int documentPosition) const
{
    return documentPosition + document()->findBlock(documentPosition).blockNumber();
}

QTextCursor RichTextBox::Cursor() const
{
    return m_shadow ? *m_shadow : textCursor();
}

void RichTextBox::SetCursor(const QTextCursor &cursor)
{
    if (m_locks)
        m_shadow = cursor;
    else
        setTextCursor(cursor);
}

qsizetype RichTextBox::SelStart() const
{
    return TextPosition(Cursor().selectionStart());
}

void RichTextBox::SetSelStart(qsizetype position)
{
    const Place place = Find(position, false);
    QTextCursor cursor = Cursor();
    cursor.setPosition(place.block.position() + place.column);
    SetCursor(cursor);
    m_asked = std::clamp<qsizetype>(position, 0, m_content.Text().size());
}

qsizetype RichTextBox::SelLength() const
{
    const QTextCursor cursor = Cursor();
    return cursor.hasSelection() ? TextPosition(cursor.selectionEnd()) - TextPosition(cursor.selectionStart()) : 0;
}

void RichTextBox::SetSelLength(qsizetype length)
{
    QTextCursor cursor = Cursor();
    const int start = cursor.selectionStart();
    std::optional<qsizetype> asked = m_asked;
    if (asked) {
        const Place place = Find(*asked, false);
        if (place.block.position() + place.column != start)
            asked.reset(); // the selection was moved meanwhile
    }
    const qsizetype from = asked.value_or(TextPosition(start));
    cursor.setPosition(start);
    if (const qsizetype taken = std::min(length, m_content.Text().size() - from); taken > 0) {
        const Place end = Find(from + taken, true);
        cursor.setPosition(end.block.position() + end.column, QTextCursor::KeepAnchor);
    }
    SetCursor(cursor);
    m_asked = asked; // another length counts from there as well
}

QString RichTextBox::SelText() const
{
    return m_content.Text().mid(SelStart(), SelLength());
}

void RichTextBox::SetSelText(const QString &text)
{
    QTextCursor cursor = Cursor();
    cursor.insertText(EditorText::Normalised(text));
    cursor.setPosition(cursor.position());
    SetCursor(cursor);
}

// A stretch of the text without touching the selection, which moves with what it stands in.
void RichTextBox::ReplaceText(qsizetype position, qsizetype length, const QString &text)
{
    const Place start = Find(position, false);
    const Place end = Find(position + length, true);
    QTextCursor cursor(document());
    cursor.setPosition(start.block.position() + start.column);
    cursor.setPosition(end.block.position() + end.column, QTextCursor::KeepAnchor);
    cursor.insertText(text);
}

int RichTextBox::GetLineFromChar(qsizetype position) const
{
    return Find(position, false).block.blockNumber();
}

int RichTextBox::GetFirstVisibleLine() const
{
    return firstVisibleBlock().blockNumber();
}

int RichTextBox::GetVisibleLineCount() const
{
    return viewport()->height() / std::max(1, fontMetrics().height()) + 1;
}

bool RichTextBox::HasColour(int index) const
{
    return m_content.HasColour(index);
}

QString RichTextBox::DocumentText(int position, int length) const
{
    QString text;
    if (length <= charByChar) {
        for (int i = position; i < position + length; ++i)
            text += document()->characterAt(i);
    } else {
        text.reserve(length + length / 16);
        QTextBlock block = document()->findBlock(position);
        int column = position - block.position();
        for (; block.isValid() && length > 0; block = block.next(), column = 0) {
            const QString line = block.text();
            const qsizetype taken = std::min<qsizetype>(line.size() - column, length);
            text += QStringView(line).mid(column, taken);
            length -= int(taken);
            if (length-- > 0 && block.next().isValid())
                text += u'\n';
        }
    }
    return EditorText::Normalised(text);
}

void RichTextBox::OnContentsChange(int position, int removed, int added)
{
    if (m_quiet)
        return;
    const int documentLength = document()->characterCount() - 1;
    added = std::clamp(added, 0, documentLength - position);
    const QTextBlock block = document()->findBlock(position);
    int line = block.blockNumber();
    qsizetype start = position + line;
    // What went away, counted in the text as it was: a line end is one character to the document.
    const QString &old = m_content.Text();
    qsizetype end = start;
    for (; removed > 0 && end < old.size(); --removed)
        end += old[end] == u'\r' ? 2 : 1;
    QString now = DocumentText(position, added);
    if (old.size() - (end - start) + now.size() != documentLength + document()->blockCount() - 1) {
        Resync();
        return;
    }
    // Qt reports stretches wider than the edit; styles of what stayed must stay.
    const QStringView gone = QStringView(old).mid(start, end - start);
    qsizetype same = 0;
    const qsizetype shorter = std::min(gone.size(), now.size());
    while (same < shorter && gone[same] == now[same])
        ++same;
    qsizetype tail = 0;
    while (tail < shorter - same && gone[gone.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    // Blocks of the reported stretch may be new ones, without formats, even where the text is what it was.
    const int firstShown = line;
    const int lastShown = document()->findBlock(position + added).blockNumber();
    if (gone.size() == same && now.size() == same) {
        ShowEdited(firstShown, lastShown);
        return;
    }
    const qsizetype goneSize = gone.size() - same - tail;
    const QStringView skipped = QStringView(now).left(same);
    const qsizetype skippedLines = skipped.count(u'\r');
    int column = skippedLines ? int(same - skipped.lastIndexOf(u'\n') - 1) : int(position - block.position() + same);
    line += int(skippedLines);
    start += same;
    if (same || tail)
        now = now.mid(same, now.size() - same - tail);

    const int documentStart = int(start) - line;
    EditorStyle style;
    if (m_typing && m_typingAt == documentStart) {
        style = *m_typing;
        m_typingAt += int(now.size()) - int(now.count(u'\r'));
    } else {
        m_typing.reset();
        if (column > 0)
            style = m_content.StyleAt(line, column - 1);
    }
    m_asked.reset();
    emit edited(m_content.Text(), start, goneSize, now);
    m_content.Replace(start, goneSize, now, line, column, style);
    m_pending = true;
    ShowEdited(firstShown, lastShown);
}

// The way out when the document reports something that does not add up: read it whole, styles are lost.
void RichTextBox::Resync()
{
    QString text;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber())
            text += QLatin1String("\r\n");
        text += block.text();
    }
    TellWhole(text);
    m_content.Reset(text);
    m_pending = true;
    ShowLines(0, m_content.LineCount() - 1);
}

void RichTextBox::OnTextChanged()
{
    if (m_quiet || !m_pending || m_telling)
        return;
    m_telling = true;
    m_pending = false;
    const QPointer<RichTextBox> self(this);
    emit changed();
    if (!self)
        return;
    m_telling = false;
    m_pending = false; // what listeners wrote is theirs
}

void RichTextBox::Lock()
{
    if (m_locks++)
        return;
    m_shadow = textCursor();
    m_scrollX = horizontalScrollBar()->value();
    m_scrollY = verticalScrollBar()->value();
}

void RichTextBox::Unlock()
{
    if (--m_locks)
        return;
    const QTextCursor wanted = *m_shadow;
    m_shadow.reset();
    const QTextCursor present = textCursor();
    // A selection that ends as it began keeps its direction and the view.
    if (wanted.selectionStart() != present.selectionStart() || wanted.selectionEnd() != present.selectionEnd())
        setTextCursor(wanted);
    horizontalScrollBar()->setValue(m_scrollX);
    verticalScrollBar()->setValue(m_scrollY);
}

RichTextBox::LockUpdate::LockUpdate(RichTextBox *box) : m_box(box)
{
    m_box->Lock();
}

RichTextBox::LockUpdate::~LockUpdate()
{
    m_box->Unlock();
}
