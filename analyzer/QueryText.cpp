// What the text is, when it is coloured, and which stretch of it.
#include "analyzer/QueryText.h"

#include "controls/EditorText.h"
#include "controls/RichTextBox.h"
#include "sqltext/EditControl.h"
#include "sqltext/Statements.h"
#include <QPointer>
#include <utility>

namespace {

const QColor kTypedColour(145, 195, 125);

} // namespace

QueryText::QueryText(RichTextBox *editor) : m_editor(editor), m_brackets([this](const QString &rtf) { LoadShow(rtf); })
{
    m_clock.start();
    connect(editor, &RichTextBox::changed, this, &QueryText::OnChanged);
    connect(editor, &RichTextBox::edited, this, &QueryText::OnEdited);
    connect(editor, &RichTextBox::undoRequested, this, &QueryText::Undo);
}

QString QueryText::RunText() const
{
    return GetSQLText(m_editor->Text(), m_editor->SelStart(), m_editor->SelLength());
}

QString QueryText::Text() const
{
    return m_coming ? EditorText::Normalised(*m_coming) : m_editor->Text();
}

bool QueryText::SetText(const QString &text)
{
    if (text.size() > AtOnce || m_bringing)
        return SetLongText(text, true);
    m_coming.reset();
    m_InParse = true;
    m_editor->SetText(text);
    m_InParse = false;
    FixText(true, true, FixMode::Window);
    m_journey.Seal();
    return true;
}

void QueryText::Promise(const QString &text)
{
    if (!text.isEmpty() && !m_bringing)
        m_coming = text;
}

void QueryText::TakeStored(const QString &text)
{
    if (text.size() > AtOnce)
        SetLongText(text, false); // what the store holds must not give way to an empty editor
    else if (!text.isEmpty())
        SetText(text);
    else if (!m_bringing)
        m_coming.reset();
}

EditText QueryText::Edited()
{
    EndBracketShow();
    return {m_editor->Text(), m_editor->SelStart(), m_editor->SelLength()};
}

void QueryText::Bulk(const EditText &edit)
{
    const RichTextBox::LockUpdate lock(m_editor);
    m_InParse = true;
    m_editor->ChangeText(edit.text);
    m_InParse = false;
    m_editor->SetSelStart(edit.selStart);
    m_editor->SetSelLength(edit.selLength);
    // With a selection only that is coloured. The edit of its first line may have begun at the line's start.
    std::optional<FixRange> lines;
    if (edit.selLength > 0) {
        const qsizetype lineStart =
            edit.selStart > 0 ? edit.text.lastIndexOf(u'\n', edit.selStart - 1) + 1 : edit.selStart;
        lines = FixRange{lineStart, edit.selStart + edit.selLength - lineStart};
    }
    const QPointer<QueryText> self(this); // a long text is coloured beside the living windows
    Colour(true, true, FixMode::Window, lines);
    if (!self)
        return;
    m_arrived.reset();
    m_journey.Seal();
}

void QueryText::OnEdited(const QString &before, qsizetype start, qsizetype length, const QString &now)
{
    if (m_travelling)
        return;
    m_journey.Change(before, start, length, now);
    if (!m_InParse && now.size() > 2 && now.contains(u'\n'))
        m_arrived = FixRange{start, now.size()};
}

void QueryText::OnChanged()
{
    if (m_InParse)
        return;
    if (m_editor->Text().isEmpty() || m_editor->SelLength() == 0)
        m_editor->SetSelColor(kTypedColour);
    // Once a keyword is coloured the caret's line is enough, or the lines that came in one piece.
    const std::optional<FixRange> arrived = std::exchange(m_arrived, {});
    const QPointer<QueryText> self(this);
    // A long text is never coloured whole while it is typed into.
    if (!m_editor->HasColour(1) && m_editor->Text().size() <= AtOnce)
        FixText(true, false, FixMode::Visible);
    else if (arrived)
        Colour(true, false, FixMode::Window, WholeLines(m_editor->Text(), *arrived));
    else
        FixText(false, false, FixMode::Line);
    if (self)
        m_journey.Seal();
}

void QueryText::FixText(bool all, bool checkLength, FixMode mode)
{
    Colour(all, checkLength, mode, {});
}

// With `lines` these are coloured, wherever the selection is.
void QueryText::Colour(bool all, bool checkLength, FixMode mode, const std::optional<FixRange> &lines)
{
    if (!all && m_InParse)
        return;
    const qsizetype length = m_editor->Text().size();
    if (m_fixState.ChangedMuch(length))
        KeepHistory();
    if (m_fixState.IsIdle(all, checkLength, length))
        return;
    if (length > AtOnce && ColoursAll(all, mode, lines)) {
        m_fixState.Coloured(length);
        if (all)
            ColourLong();
        return;
    }
    m_InParse = true;
    {
        const RichTextBox::LockUpdate lock(m_editor);
        const FixRange kept{m_editor->SelStart(), m_editor->SelLength()};
        if (lines) {
            m_editor->SetSelStart(lines->start);
            m_editor->SetSelLength(lines->length);
        }
        FixControl(*m_editor, all, mode, {m_editor->GetFirstVisibleLine(), m_editor->GetVisibleLineCount()});
        if (lines) {
            m_editor->SetSelStart(kept.start);
            m_editor->SetSelLength(kept.length);
        }
    }
    m_fixState.Coloured(length);
    m_InParse = false;
}

// A stretch that holds nothing stands for the whole text.
bool QueryText::ColoursAll(bool all, FixMode mode, const std::optional<FixRange> &lines) const
{
    const QString text = m_editor->Text();
    const FixRange kept = lines.value_or(FixRange{m_editor->SelStart(), m_editor->SelLength()});
    const FixView view{m_editor->GetFirstVisibleLine(), m_editor->GetVisibleLineCount()};
    const FixRange range = SelectFixRange(text, all, mode, kept, view);
    return text.startsWith(u'\t') || Clipped(text, range).length == 0 || IsBlankRange(text, range);
}

// The clock reads at least one second, so that the first key is never taken for one that follows another.
void QueryText::LineLeft()
{
    if (m_fixState.TakeKeyTime(1 + double(m_clock.elapsed()) / 1000))
        FixText(false, true, FixMode::Window);
}

void QueryText::ShowBrackets(BracketKind kind)
{
    EndBracketShow();
    m_brackets.Begin(m_editor->TextRTF(), kind);
}

void QueryText::EndBracketShow()
{
    m_brackets.End();
}

// The caret and the view stay where the user has them. The show is no edit: neither colouring nor undo hears of it.
void QueryText::LoadShow(const QString &rtf)
{
    m_InParse = m_travelling = true;
    {
        const RichTextBox::LockUpdate lock(m_editor);
        const qsizetype selStart = m_editor->SelStart();
        const qsizetype selLength = m_editor->SelLength();
        m_editor->SetTextRTF(rtf);
        m_editor->SetSelStart(selStart);
        m_editor->SetSelLength(selLength);
    }
    m_InParse = m_travelling = false;
}
