// Back and forward through the states of the text.
#include "analyzer/QueryText.h"

#include "controls/RichTextBox.h"
#include "sqltext/EditControl.h"

void QueryText::KeepHistory()
{
    m_History.AddChange(m_editor->TextRTF(), m_editor->SelStart(), m_editor->SelLength());
}

void QueryText::BeginHere()
{
    m_journey.Clear();
}

// The history's entries come first. A press that would show nothing new goes on at once to the state before the present
// one, of all that the window had since it was opened.
void QueryText::Undo()
{
    EndBracketShow();
    m_journey.Seal();
    const QString present = m_editor->Text();
    const clsStringHistory::Entry entry = m_History.GetUndo();
    const QString text = entry ? ReadRtf(entry->Key).text : present;
    if (text == present) {
        ShowState(m_journey.Back(present));
        return;
    }
    // A text that the journey no longer has is a new state of it.
    m_travelling = m_journey.GoTo(present, text);
    m_InParse = true;
    m_editor->SetTextRTF(entry->Key);
    m_editor->SetSelStart(entry->ColorDef.toLongLong());
    m_editor->SetSelLength(entry->Code.toLongLong());
    m_InParse = false;
    m_travelling = false;
    m_journey.Seal();
}

void QueryText::Redo()
{
    EndBracketShow();
    m_journey.Seal();
    ShowState(m_journey.Forward(m_editor->Text()));
}

// Exactly the text of the state: the colouring, which may eat a blank, must not change it. The caret goes to the end of
// what differs. The history of ten hears nothing of it.
void QueryText::ShowState(const std::optional<TextJourney::State> &state)
{
    if (!state)
        return;
    m_InParse = m_travelling = true;
    {
        const RichTextBox::LockUpdate lock(m_editor);
        // An entry of the history may have been taken before its text was coloured.
        const bool coloured = m_editor->HasColour(1) || state->text.size() > AtOnce;
        m_editor->ChangeText(state->text);
        const FixRange lines =
            coloured ? WholeLines(state->text, {state->start, state->length}) : FixRange{0, state->text.size()};
        if (!IsBlankRange(state->text, lines)) {
            m_editor->SetSelStart(lines.start);
            m_editor->SetSelLength(lines.length);
            FixControl(*m_editor, true, FixMode::Window);
            m_editor->ChangeText(state->text);
        }
    }
    m_editor->SetSelStart(state->start + state->length);
    m_InParse = m_travelling = false;
}
