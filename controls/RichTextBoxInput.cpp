// What comes into the editor from outside: keys, input methods, the mouse, the clipboard, drag and drop.
#include "controls/RichTextBox.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocument>
#include <QTextLayout>
#include <QUrl>
#include <algorithm>

namespace {

QStringList Files(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            files += url.toLocalFile();
    return files;
}

bool IsNode(const QMimeData *data)
{
    return data->hasFormat(QLatin1String(RichTextBox::NodeMime));
}

// Files and nodes stay with whoever gives them, though he may propose to move them: a file manager deletes what was
// taken so. Text within the editor is moved.
void Accept(QDropEvent *event)
{
    if (IsNode(event->mimeData()) || !Files(event->mimeData()).isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->acceptProposedAction();
    }
}

} // namespace

void RichTextBox::keyPressEvent(QKeyEvent *event)
{
    // Qt's own stack is off; the windows keep the history.
    if (event->matches(QKeySequence::Undo)) {
        event->accept();
        emit undoRequested();
        return;
    }
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) { // keyboards without a menu key
        event->accept();
        emit contextRequested(viewport()->mapToGlobal(cursorRect().bottomLeft()));
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

// While an input method composes, Qt puts its own formats on the block and forgets those that were there.
void RichTextBox::inputMethodEvent(QInputMethodEvent *event)
{
    QPlainTextEdit::inputMethodEvent(event);
    const QTextBlock block = textCursor().block();
    QTextLayout *layout = block.layout();
    const int at = layout->preeditAreaPosition();
    const int length = int(layout->preeditAreaText().size());
    QList<QTextLayout::FormatRange> formats;
    for (const EditorRun &run : m_content.Line(block.blockNumber())) {
        QTextLayout::FormatRange range;
        range.format = Format(run.style);
        const int runEnd = run.start + run.length;
        if (length == 0 || runEnd <= at) {
            range.start = run.start;
            range.length = run.length;
            formats.append(range);
            continue;
        }
        const int before = std::max(0, at - run.start);
        if (before) {
            range.start = run.start;
            range.length = before;
            formats.append(range);
        }
        range.start = std::max(run.start, at) + length;
        range.length = run.length - before;
        formats.append(range);
    }
    if (length)
        formats += layout->formats();
    layout->setFormats(formats);
    m_content.SetFormatted(block.blockNumber(), true);
    ++m_quiet;
    document()->markContentsDirty(block.position(), block.length() - 1);
    --m_quiet;
}

void RichTextBox::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard)
        emit contextRequested(viewport()->mapToGlobal(cursorRect().bottomLeft()));
}

void RichTextBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        event->accept();
        emit contextRequested(event->globalPosition().toPoint());
        return;
    }
    QPlainTextEdit::mouseReleaseEvent(event);
}

void RichTextBox::dragEnterEvent(QDragEnterEvent *event)
{
    QPlainTextEdit::dragEnterEvent(event);
    if (canInsertFromMimeData(event->mimeData()) && !isReadOnly())
        Accept(event);
}

void RichTextBox::dragMoveEvent(QDragMoveEvent *event)
{
    QPlainTextEdit::dragMoveEvent(event);
    if (canInsertFromMimeData(event->mimeData()) && !isReadOnly())
        Accept(event);
}

void RichTextBox::dropEvent(QDropEvent *event)
{
    const QMimeData *mime = event->mimeData();
    const QStringList files = Files(mime);
    if (isReadOnly() || (!IsNode(mime) && files.isEmpty())) {
        QPlainTextEdit::dropEvent(event);
        return;
    }
    // Qt drops nothing and so ends its own part: else its mark of the place would stay for good.
    const QMimeData nothing;
    QDropEvent done(event->position(), event->possibleActions(), &nothing, event->buttons(), event->modifiers());
    QPlainTextEdit::dropEvent(&done);
    Accept(event);
    if (IsNode(mime)) {
        setTextCursor(cursorForPosition(event->position().toPoint()));
        emit nodeDropped(mime->data(QLatin1String(NodeMime)));
    } else {
        emit filesDropped(files);
    }
}

bool RichTextBox::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText() || source->hasUrls() || IsNode(source);
}

void RichTextBox::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly())
        return;
    const QStringList files = Files(source);
    if (!files.isEmpty()) {
        emit filesDropped(files);
    } else if (source->hasText()) {
        textCursor().insertText(EditorText::Normalised(source->text()));
        ensureCursorVisible();
    }
}

// Qt would hand out blanks for hard blanks; what is copied is what stands in the text.
QMimeData *RichTextBox::createMimeDataFromSelection() const
{
    auto *mime = new QMimeData;
    QString text = SelText();
    mime->setText(text.replace(QLatin1String("\r\n"), QLatin1String("\n")));
    return mime;
}
