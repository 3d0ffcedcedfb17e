// The edits of the window that are more than a key: clipboard, comment, indent, case, insert, break, format.
#include "analyzer/frmSQL.h"

#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "lang/Text.h"
#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"
#include <QClipboard>
#include <QGuiApplication>

// The editor's own text, with the show of bracket pairs put to an end: that one writes into it.
EditText frmSQL::Edited()
{
    EndBracketShow();
    return {txtSQL->Text(), txtSQL->SelStart(), txtSQL->SelLength()};
}

// The text anew and its selection, without the colouring of a key press; then the colouring of a bulk edit.
void frmSQL::BulkEdit(const EditText &edit)
{
    const RichTextBox::LockUpdate lock(txtSQL);
    m_InParse = true;
    txtSQL->ChangeText(edit.text);
    m_InParse = false;
    txtSQL->SetSelStart(edit.selStart);
    txtSQL->SetSelLength(edit.selLength);
    // With a selection only that is coloured. The edit of its first line may have begun at the line's start.
    std::optional<FixRange> lines;
    if (edit.selLength > 0) {
        const qsizetype lineStart =
            edit.selStart > 0 ? edit.text.lastIndexOf(u'\n', edit.selStart - 1) + 1 : edit.selStart;
        lines = FixRange{lineStart, edit.selStart + edit.selLength - lineStart};
    }
    Colour(true, true, 2, lines);
    m_arrived.reset();
    m_journey.Seal();
}

void frmSQL::CommentIn()
{
    BulkEdit(::CommentIn(Edited()));
}

void frmSQL::RemoveComment()
{
    BulkEdit(::RemoveComment(Edited()));
}

void frmSQL::Indent(int shift)
{
    BulkEdit(::Indent(Edited(), shift));
}

void frmSQL::InsertString(const QString &text)
{
    BulkEdit(::InsertString(Edited(), text));
}

void frmSQL::InsertText(const QString &text)
{
    BulkEdit(::InsertText(Edited(), text));
}

void frmSQL::FormatSQL()
{
    EditText edit = Edited();
    const bool whole = edit.selLength == 0;
    const QString formatted = FormatStatement(whole ? edit.text : txtSQL->SelText());
    if (whole)
        BulkEdit({formatted, 0, 0});
    else
        BulkEdit({edit.text.replace(edit.selStart, edit.selLength, formatted), edit.selStart + formatted.size(), 0});
}

void frmSQL::BreakText()
{
    const QPointer<frmSQL> self(this);
    const QString token = InputBox(QStringLiteral("Enter the token you wish to break on."),
                                   QStringLiteral("Line feed break"), QString(), nullptr, this);
    if (token.isEmpty() || !self)
        return;
    const QString broken = BreakOnToken(Edited().text, token);
    BulkEdit({broken, 0, broken.size()});
}

// The colouring follows from the change.
void frmSQL::ChangeCase(bool upper)
{
    EndBracketShow();
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
    EndBracketShow();
    if (txtSQL->SelLength() == 0)
        return;
    txtSQL->copy();
    txtSQL->SetSelText(QString());
}

void frmSQL::mnuPaste()
{
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty())
        return;
    EndBracketShow();
    txtSQL->SetSelText(text);
    txtSQL->ensureCursorVisible();
}

void frmSQL::mnuSelectAll()
{
    txtSQL->selectAll();
}
