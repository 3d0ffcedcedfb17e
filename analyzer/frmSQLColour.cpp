// When and what the window colours, and the show of the bracket pairs, which writes the editor in the same guarded way.
#include "analyzer/frmSQL.h"

#include "controls/RichTextBox.h"
#include "sqltext/EditControl.h"

namespace {

const QColor typedColour(145, 195, 125);

} // namespace

void frmSQL::OnChanged()
{
    if (m_InParse)
        return;
    if (txtSQL->Text().isEmpty() || txtSQL->SelLength() == 0)
        txtSQL->SetSelColor(typedColour);
    // Once a keyword is coloured the caret's line is enough.
    if (txtSQL->HasColour(1))
        FixText(false, false, 0);
    else
        FixText(true, false, 1);
}

void frmSQL::FixText(bool all, bool checkLength, int mode)
{
    if (!all && m_InParse)
        return;
    const qsizetype length = txtSQL->Text().size();
    if (m_fixState.ChangedMuch(length))
        KeepHistory();
    if (m_fixState.IsIdle(all, checkLength, length))
        return;
    m_InParse = true;
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        FixControl(*txtSQL, all, FixMode(mode), {txtSQL->GetFirstVisibleLine(), txtSQL->GetVisibleLineCount()});
    }
    m_fixState.Coloured(length);
    m_InParse = false;
}

void frmSQL::mnuUndo()
{
    EndBracketShow();
    m_InParse = true;
    if (const clsStringHistory::Entry entry = m_History.GetUndo()) {
        txtSQL->SetTextRTF(entry->Key);
        txtSQL->SetSelStart(entry->ColorDef.toLongLong());
        txtSQL->SetSelLength(entry->Code.toLongLong());
    }
    m_InParse = false;
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
    m_InParse = true;
    const BraceShow::Step step = m_Brace.Tick();
    tmrParseBrackets->setInterval(step.interval);
    if (!step.running)
        tmrParseBrackets->stop();
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        const qsizetype selStart = txtSQL->SelStart();
        const qsizetype selLength = txtSQL->SelLength();
        txtSQL->SetTextRTF(step.rtf);
        txtSQL->SetSelStart(selStart);
        txtSQL->SetSelLength(selLength);
    }
    m_InParse = false;
}

// What reads the text while a show runs must read the user's own.
void frmSQL::EndBracketShow()
{
    const std::optional<QString> original = m_Brace.Interrupt();
    if (!original)
        return;
    tmrParseBrackets->stop();
    tmrParseBrackets->setInterval(BraceShow::FirstInterval);
    m_InParse = true;
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        const qsizetype selStart = txtSQL->SelStart();
        const qsizetype selLength = txtSQL->SelLength();
        txtSQL->SetTextRTF(*original);
        txtSQL->SetSelStart(selStart);
        txtSQL->SetSelLength(selLength);
    }
    m_InParse = false;
}
