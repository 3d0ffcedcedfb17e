// Long contents: the text goes into a document of its own piece by piece, so that no event waits for it, and the
// colours are those that were worked out elsewhere.
#include "controls/EditorContent.h"
#include "controls/RichTextBox.h"

#include <QPlainTextDocumentLayout>
#include <QPointer>
#include <QScrollBar>
#include <QTextDocument>
#include <QThreadPool>
#include <algorithm>
#include <utility>

namespace {

// An empty document that looks and breaks its lines as that one.
QTextDocument *EmptyLike(const QTextDocument &other, QObject *parent)
{
    auto *document = new QTextDocument(parent);
    document->setUndoRedoEnabled(false);
    document->setDocumentMargin(other.documentMargin());
    document->setDefaultFont(other.defaultFont());
    document->setDefaultTextOption(other.defaultTextOption());
    auto *layout = new QPlainTextDocumentLayout(document);
    if (const auto *former = qobject_cast<const QPlainTextDocumentLayout *>(other.documentLayout()))
        layout->setCursorWidth(former->cursorWidth());
    document->setDocumentLayout(layout);
    return document;
}

// Taking a long one down takes long as well.
void Discard(QTextDocument *document)
{
    document->setParent(nullptr);
    document->moveToThread(nullptr);
    QThreadPool::globalInstance()->start([document] { delete document; });
}

// No piece ends between CR and LF or within a pair of surrogates.
qsizetype PieceEnd(const QString &text, qsizetype start)
{
    qsizetype end = std::min(text.size(), start + RichTextBox::PieceSize);
    if (end < text.size() && (text[end - 1] == u'\r' || text[end - 1].isHighSurrogate()))
        ++end;
    return end;
}

} // namespace

void RichTextBox::Adopt(QTextDocument *document)
{
    QTextDocument *former = this->document();
    disconnect(former, nullptr, this, nullptr);
    former->setParent(this); // else the toolkit deletes it
    setDocument(document);
    connect(document, &QTextDocument::contentsChange, this, &RichTextBox::OnContentsChange);
    if (m_shadow)
        m_shadow = textCursor();
}

bool RichTextBox::Fill(const QString &text, const std::function<bool()> &goOn)
{
    QTextDocument *former = document();
    const QTextCursor place = textCursor();
    const int scrollX = horizontalScrollBar()->value();
    const int scrollY = verticalScrollBar()->value();
    const QPointer<RichTextBox> self(this);
    const QPointer<QTextDocument> fresh = EmptyLike(*former, this);
    m_filling = true;
    ++m_quiet;
    Adopt(fresh);
    bool whole = true;
    for (qsizetype start = 0; whole && start < text.size();) {
        const qsizetype end = PieceEnd(text, start);
        const int before = fresh->characterCount();
        QTextCursor cursor(fresh);
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(text.mid(start, end - start));
        if (start == 0)
            setTextCursor(QTextCursor(fresh)); // it went along with the first piece
        start = end;
        const int now = fresh->characterCount();
        whole = now > before && (start == text.size() || goOn());
        if (!self)
            return false;
        whole = whole && fresh && document() == fresh && fresh->characterCount() == now; // nobody else wrote
    }
    if (!whole) {
        Adopt(former);
        setTextCursor(place);
        if (m_shadow)
            m_shadow = place;
    }
    --m_quiet;
    m_filling = false;
    Discard(whole ? former : fresh.data());
    horizontalScrollBar()->setValue(scrollX);
    verticalScrollBar()->setValue(scrollY);
    return whole;
}

bool RichTextBox::TakeContent(EditorContent &&made, const std::function<bool()> &goOn)
{
    if (m_filling || m_content.Text() != made.former)
        return false;
    const QPointer<RichTextBox> self(this);
    const bool sameText = made.difference.oldLength == 0 && made.difference.newLength == 0;
    const qsizetype selStart = SelStart();
    const qsizetype selLength = SelLength();
    if (!sameText && !Fill(made.content.Text(), goOn))
        return false;
    if (m_fontName != made.fontName) {
        m_fontName = made.fontName;
        SetProportional(!m_fontName.contains(QLatin1String("Courier")) && !m_fontName.contains(QLatin1String("Mono")));
    }
    m_fontHalfPoints = made.fontHalfPoints;
    if (!sameText) {
        m_asked.reset();
        emit edited(made.former, made.difference.start, made.difference.oldLength, made.now);
        if (!self)
            return true;
    }
    std::swap(m_content, made.content);
    if (!made.colours.empty() && made.colours != m_colours) {
        m_colours = made.colours;
        if (m_colours.front() != RtfAutomaticColour) {
            QPalette look = palette();
            look.setColor(QPalette::Text, QColor(QRgb(m_colours.front())));
            setPalette(look);
        }
    }
    m_formats.clear();
    if (document()->characterCount() - 1 + document()->blockCount() - 1 != m_content.Text().size())
        Resync();
    QThreadPool::globalInstance()->start(
        [old = std::make_shared<EditorText>(std::move(made.content))]() mutable { old.reset(); });
    ShowStale(GetFirstVisibleLine(), LastVisibleLine());
    viewport()->update();
    if (!sameText) {
        SetSelStart(selStart);
        SetSelLength(selLength);
        m_pending = true;
        OnTextChanged();
    }
    return true;
}
