// The edits of the window that are more than a key: clipboard, comment, indent, case, insert, break, format.
#include "analyzer/frmSQL.h"

#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "lang/Text.h"
#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"
#include <QClipboard>
#include <QGuiApplication>

namespace {

EditText Edited(const RichTextBox &box)
{
    return {box.Text(), box.SelStart(), box.SelLength()};
}

} // namespace

// The text anew and its selection, without the colouring of a key press; then the colouring of a bulk edit.
void frmSQL::BulkEdit(const QString &text, qsizetype selStart, qsizetype selLength)
{
    EndBracketShow();
    {
        const RichTextBox::LockUpdate lock(txtSQL);
        m_InParse = true;
        txtSQL->ChangeText(text);
        txtSQL->SetSelStart(selStart);
        txtSQL->SetSelLength(selLength);
        m_InParse = false;
    }
    FixText(true, true, 2);
}

void frmSQL::CommentIn()
{
    const EditText edit = ::CommentIn(Edited(*txtSQL));
    BulkEdit(edit.text, edit.selStart, edit.selLength);
}

void frmSQL::RemoveComment()
{
    const EditText edit = ::RemoveComment(Edited(*txtSQL));
    BulkEdit(edit.text, edit.selStart, edit.selLength);
}

void frmSQL::Indent(int shift)
{
    const EditText edit = ::Indent(Edited(*txtSQL), shift);
    BulkEdit(edit.text, edit.selStart, edit.selLength);
}

void frmSQL::InsertString(const QString &text)
{
    const EditText edit = ::InsertString(Edited(*txtSQL), text);
    BulkEdit(edit.text, edit.selStart, edit.selLength);
}

void frmSQL::InsertText(const QString &text)
{
    const EditText edit = ::InsertText(Edited(*txtSQL), text);
    BulkEdit(edit.text, edit.selStart, edit.selLength);
}

void frmSQL::FormatSQL()
{
    EditText edit = Edited(*txtSQL);
    const bool whole = edit.selLength == 0;
    const QString formatted = FormatStatement(whole ? edit.text : txtSQL->SelText());
    if (whole)
        BulkEdit(formatted, 0, 0);
    else
        BulkEdit(edit.text.replace(edit.selStart, edit.selLength, formatted), edit.selStart + formatted.size(), 0);
}

void frmSQL::BreakText()
{
    const QPointer<frmSQL> self(this);
    const QString token = InputBox(QStringLiteral("Enter the token you wish to break on."),
                                   QStringLiteral("Line feed break"), QString(), nullptr, this);
    if (token.isEmpty() || !self)
        return;
    const QString broken = BreakOnToken(txtSQL->Text(), token);
    BulkEdit(broken, 0, broken.size());
}

// The colouring follows from the change.
void frmSQL::ChangeCase(bool upper)
{
    const QString text = txtSQL->SelText();
    if (!text.isEmpty())
        txtSQL->SetSelText(upper ? lang::UCase(text) : lang::LCase(text));
}

void frmSQL::mnuCopy()
{
    if (txtSQL->SelLength() > 0)
        txtSQL->copy();
}

void frmSQL::mnuCut()
{
    if (txtSQL->SelLength() == 0)
        return;
    txtSQL->copy();
    KeepHistory();
    txtSQL->SetSelText(QString());
}

// Several lines are coloured as a bulk edit, since the colouring of a key press looks at one line only.
void frmSQL::mnuPaste()
{
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty())
        return;
    KeepHistory();
    const bool lines = text.contains(u'\n') || text.contains(u'\r');
    m_InParse = lines;
    txtSQL->SetSelText(text);
    m_InParse = false;
    if (lines)
        FixText(true, true, 2);
    txtSQL->ensureCursorVisible();
}

void frmSQL::mnuSelectAll()
{
    txtSQL->selectAll();
}
