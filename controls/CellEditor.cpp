#include "controls/CellEditor.h"
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocument>
#include <algorithm>

namespace {

constexpr int kLinesShown = 8;

// The kind of the first line end; the others must be of it, else the text does not come back as it was.
QString LineEndOf(const QString &text)
{
    const qsizetype cr = text.indexOf(u'\r'), lf = text.indexOf(u'\n');
    if (cr >= 0 && lf == cr + 1)
        return QStringLiteral("\r\n");
    if (cr >= 0 && (lf < 0 || cr < lf))
        return QStringLiteral("\r");
    return QStringLiteral("\n");
}

} // namespace

CellEditor::CellEditor(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("txtCell"));
    setAccessibleName(QStringLiteral("Value of the cell"));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFrameStyle(int(QFrame::Box) | int(QFrame::Plain));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(1);
    hide();
}

bool CellEditor::SetText(const QString &text, bool lines, qint64 most)
{
    m_lines = lines;
    m_most = most;
    m_typed = false;
    m_lineEnd = LineEndOf(text);
    QString shown = text;
    setPlainText(shown.replace(m_lineEnd, QLatin1String("\n")));
    m_former = text;
    return text.size() <= most && Text() == text;
}

// toPlainText would turn blanks that must not break into plain ones.
QString CellEditor::Text() const
{
    QString text = document()->toRawText();
    if (m_lineEnd == u"\n" || !text.contains(QChar::ParagraphSeparator))
        return text.replace(QChar::ParagraphSeparator, u'\n');
    return text.replace(QString(QChar::ParagraphSeparator), m_lineEnd);
}

int CellEditor::LinesShown() const
{
    return std::clamp(document()->blockCount(), 1, kLinesShown);
}

bool CellEditor::event(QEvent *event)
{
    // The keys of the edit are the editor's, whatever the window has for them.
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Delete) {
            event->accept();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

void CellEditor::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool held = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    if (event->key() == Qt::Key_Escape) {
        emit GivenUp();
    } else if (isReturn && held) {
        if (m_lines)
            textCursor().insertBlock();
    } else if (isReturn || event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab ||
               ((event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) && !held &&
                document()->blockCount() == 1)) {
        emit Done(isReturn ? int(Qt::Key_Return) : event->key());
    } else {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    event->accept();
}

void CellEditor::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason && isVisible())
        emit Left();
}

void CellEditor::insertFromMimeData(const QMimeData *source)
{
    QString text = source->text();
    if (text.size() > m_most) {
        emit LongText(text);
        return;
    }
    if (!m_lines)
        while (text.endsWith(u'\n') || text.endsWith(u'\r'))
            text.chop(1);
    if (document()->blockCount() == 1)
        m_lineEnd = LineEndOf(text); // the first line ends of the value are these
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    textCursor().insertText(text);
    ensureCursorVisible();
}
