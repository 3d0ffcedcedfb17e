#include "controls/LongTextBox.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimer>
#include <QTimerEvent>
#include <algorithm>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <vector>

namespace {

constexpr qint64 firstPiece = 1 << 14, piece = 1 << 16; // characters
constexpr qsizetype kLongestBlock = 4096, kBlankWithin = 256;
[[maybe_unused]] constexpr qint64 largeText = 4 << 20; // characters
constexpr int kOwnBreak = 1;                           // state of a block whose end is no line end of the text

// The place where a line that is too long is broken: behind a blank where one is near, never inside of a character.
qsizetype BreakBefore(QStringView line, qsizetype end)
{
    for (qsizetype at = end; at > end - kBlankWithin; --at)
        if (line[at - 1] == u' ')
            return at;
    return line[end].isLowSurrogate() ? end - 1 : end;
}

} // namespace

LongTextBox::LongTextBox(QWidget *parent) : QPlainTextEdit(parent) {}

void LongTextBox::Stop()
{
    m_text = {};
    setUndoRedoEnabled(true);
    if (!m_next.isActive())
        return;
    m_next.stop();
    emit Progress(100);
}

void LongTextBox::Clear()
{
    [[maybe_unused]] const bool large = m_made > largeText;
    Stop();
    m_heldReturn = false;
    m_made = 0;
    setPlainText(QString());
#ifdef __GLIBC__
    if (large) // the system would get no more than a part of it back; behind the next events, since it takes its time
        QTimer::singleShot(0, [] { malloc_trim(0); });
#endif
}

void LongTextBox::Show(ADODB::CellReader text)
{
    Clear();
    setUndoRedoEnabled(false); // each piece would be kept once more
    m_text = std::move(text);
    Append(NextLines(firstPiece));
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
    if (m_text.AtEnd())
        return Stop();
    m_next.start(0, this);
    emit Progress(0);
}

void LongTextBox::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_next.timerId())
        return QPlainTextEdit::timerEvent(event);
    Append(NextLines(piece));
    if (m_text.AtEnd())
        Stop();
    else
        emit Progress(int(m_text.At() * 100 / std::max<qint64>(1, m_text.Size())));
}

QString LongTextBox::NextLines(qint64 most)
{
    QString lines = m_text.Next(most);
    m_made += lines.size();
    if (m_heldReturn)
        lines.prepend(u'\r');
    m_heldReturn = lines.endsWith(u'\r') && !m_text.AtEnd();
    if (m_heldReturn)
        lines.chop(1);
    return lines.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(u'\r', u'\n')
        .replace(QChar(0x2029), u'\n');
}

void LongTextBox::Append(const QString &lines)
{
    const int first = blockCount() - 1;
    qsizetype length = document()->lastBlock().length() - 1;
    QString broken;
    broken.reserve(lines.size() + lines.size() / kLongestBlock + 1);
    std::vector<int> ownBreaks;
    int block = first;
    for (qsizetype at = 0; at < lines.size();) {
        qsizetype end = lines.indexOf(u'\n', at);
        end = end < 0 ? lines.size() : end;
        while (length + end - at > kLongestBlock) {
            const qsizetype most = kLongestBlock - length;
            const qsizetype cut = most <= kBlankWithin ? 0 : BreakBefore(QStringView(lines).sliced(at), most);
            broken += QStringView(lines).sliced(at, cut);
            broken += u'\n';
            ownBreaks.push_back(block++);
            at += cut;
            length = 0;
        }
        broken += QStringView(lines).sliced(at, end - at);
        length += end - at;
        at = end;
        if (at < lines.size()) {
            broken += u'\n';
            ++block;
            ++at;
            length = 0;
        }
    }
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(broken);
    for (const int number : ownBreaks)
        document()->findBlockByNumber(number).setUserState(kOwnBreak);
}

QString LongTextBox::Between(int from, int to) const
{
    QString text;
    text.reserve(to - from);
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() < to;
         block = block.next()) {
        const int start = std::max(from - block.position(), 0);
        const int end = std::min(to - block.position(), block.length() - 1);
        if (end > start)
            text += QStringView(block.text()).sliced(start, end - start);
        if (to - block.position() >= block.length() && block.userState() != kOwnBreak)
            text += u'\n';
    }
    return text;
}

QString LongTextBox::SelectedText() const
{
    return Between(textCursor().selectionStart(), textCursor().selectionEnd());
}

std::optional<QString> LongTextBox::WholeText(const std::function<bool()> &keepOn) const
{
    ADODB::CellReader rest = m_text; // as it stands now: events let in meanwhile bring more of it into the box
    QString more = m_heldReturn ? QStringLiteral("\r") : QString();
    QString text = Between(0, document()->characterCount() - 1);
    while (!rest.AtEnd()) {
        more += rest.Next(1 << 20);
        if (keepOn && !keepOn())
            return std::nullopt;
    }
    return text += more.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
}

QMimeData *LongTextBox::createMimeDataFromSelection() const
{
    auto *const mime = new QMimeData;
    mime->setText(SelectedText());
    return mime;
}
