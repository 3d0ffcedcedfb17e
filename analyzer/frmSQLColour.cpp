// When and what the window colours, and the show of the bracket pairs, which writes the editor in the same guarded way.
#include "analyzer/frmSQL.h"

#include "controls/RichTextBox.h"
#include "sqltext/EditControl.h"
#include <utility>

namespace {

const QColor typedColour(145, 195, 125);

} // namespace

// Whatever changes the text passes here: keys, the mouse, an input method, the colouring itself.
void frmSQL::OnEdited(const QString &before, qsizetype start, qsizetype length, const QString &now)
{
    if (m_travelling)
        return;
    m_journey.Change(before, start, length, now);
    if (!m_InParse && now.size() > 2 && now.contains(u'\n'))
        m_arrived = FixRange{start, now.size()};
}

void frmSQL::OnChanged()
{
    if (m_InParse)
        return;
    if (txtSQL->Text().isEmpty() || txtSQL->SelLength() == 0)
        txtSQL->SetSelColor(typedColour);
    // Once a keyword is coloured the caret's line is enough, or the lines that came in one piece.
    const std::optional<FixRange> arrived = std::exchange(m_arrived, {});
    // A long text is never coloured whole while it is typed into.
    if (!txtSQL->HasColour(1) && txtSQL->Text().size() <= AtOnce)
        FixText(true, false, 1);
    else if (arrived)
        Colour(true, false, 2, WholeLines(txtSQL->Text(), *arrived));
    else
        FixText(false, false, 0);
    m_journey.Seal();
}

void frmSQL::FixText(bool all, bool checkLength, int mode)
{
    Colour(all, checkLength, mode, {});
}

// With `lines` these are coloured, wherever the selection is.
void frmSQL::Colour(bool all, bool checkLength, int mode, const std::optional<FixRange> &lines)
{
    if (!all && m_InParse)
        return;
    const qsizetype length = txtSQL->Text().size();
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
        const RichTextBox::LockUpdate lock(txtSQL);
        const FixRange kept{txtSQL->SelStart(), txtSQL->SelLength()};
        if (lines) {
            txtSQL->SetSelStart(lines->start);
            txtSQL->SetSelLength(lines->length);
        }
        FixControl(*txtSQL, all, FixMode(mode), {txtSQL->GetFirstVisibleLine(), txtSQL->GetVisibleLineCount()});
        if (lines) {
            txtSQL->SetSelStart(kept.start);
            txtSQL->SetSelLength(kept.length);
        }
    }
    m_fixState.Coloured(length);
    m_InParse = false;
}

// A stretch that holds nothing stands for the whole text.
bool frmSQL::ColoursAll(bool all, int mode, const std::optional<FixRange> &lines) const
{
    const QString text = txtSQL->Text();
    const FixRange kept = lines.value_or(FixRange{txtSQL->SelStart(), txtSQL->SelLength()});
    const FixView view{txtSQL->GetFirstVisibleLine(), txtSQL->GetVisibleLineCount()};
    const FixRange range = SelectFixRange(text, all, FixMode(mode), kept, view);
    return text.startsWith(u'\t') || Clipped(text, range).length == 0 || IsBlankRange(text, range);
}

// The history's entries come first. A press that would show nothing new goes on at once to the state before the present
// one, of all that the window had since it was opened.
void frmSQL::mnuUndo()
{
    EndBracketShow();
    m_journey.Seal();
    const QString present = txtSQL->Text();
    const clsStringHistory::Entry entry = m_History.GetUndo();
    const QString text = entry ? ReadRtf(entry->Key).text : present;
    if (text == present) {
        ShowState(m_journey.Back(present));
        return;
    }
    // A text that the journey no longer has is a new state of it.
    m_travelling = m_journey.GoTo(present, text);
    m_InParse = true;
    txtSQL->SetTextRTF(entry->Key);
    txtSQL->SetSelStart(entry->ColorDef.toLongLong());
    txtSQL->SetSelLength(entry->Code.toLongLong());
    m_InParse = false;
    m_travelling = false;
    m_journey.Seal();
}

void frmSQL::Redo()
{
    EndBracketShow();
    m_journey.Seal();
    ShowState(m_journey.Forward(txtSQL->Text()));
}

// Exactly the text of the state: the colouring, which may eat a blank, must not change it. The caret goes to the end of
// what differs. The history of ten hears nothing of it.
void frmSQL::ShowState(const std::optional<TextJourney::State> &state)
{
    if (!state)
        return;
    m_InParse = m_travelling = true;
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        // An entry of the history may have been taken before its text was coloured.
        const bool coloured = txtSQL->HasColour(1) || state->text.size() > AtOnce;
        txtSQL->ChangeText(state->text);
        const FixRange lines =
            coloured ? WholeLines(state->text, {state->start, state->length}) : FixRange{0, state->text.size()};
        if (!IsBlankRange(state->text, lines)) {
            txtSQL->SetSelStart(lines.start);
            txtSQL->SetSelLength(lines.length);
            FixControl(*txtSQL, true, FixMode::Window);
            txtSQL->ChangeText(state->text);
        }
    }
    txtSQL->SetSelStart(state->start + state->length);
    m_InParse = m_travelling = false;
}

void frmSQL::Parse(int kind)
{
    txtSQL->setFocus();
    EndBracketShow();
    m_Brace.Parse(txtSQL->TextRTF(), kind);
    tmrParseBrackets->start();
}

// One pair after another. The caret and the view stay where the user has them.
void frmSQL::TickBrackets()
{
    const BraceShow::Step step = m_Brace.Tick();
    tmrParseBrackets->setInterval(step.interval);
    if (!step.running)
        tmrParseBrackets->stop();
    LoadShow(step.rtf);
}

// What reads the text while a show runs must read the user's own.
void frmSQL::EndBracketShow()
{
    const std::optional<QString> original = m_Brace.Interrupt();
    if (!original)
        return;
    tmrParseBrackets->stop();
    tmrParseBrackets->setInterval(BraceShow::FirstInterval);
    LoadShow(*original);
}

void frmSQL::LoadShow(const QString &rtf)
{
    m_InParse = m_travelling = true;
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        const qsizetype selStart = txtSQL->SelStart();
        const qsizetype selLength = txtSQL->SelLength();
        txtSQL->SetTextRTF(rtf);
        txtSQL->SetSelStart(selStart);
        txtSQL->SetSelLength(selLength);
    }
    m_InParse = m_travelling = false;
}
