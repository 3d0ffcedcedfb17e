// What commands and keys do to the text: comment, indent, case, insert, break, format, clipboard, undo, find, files.
#include "analyzer/frmSQL.h"

#include "analyzer/QueryFiles.h"
#include "analyzer/QueryFind.h"
#include "analyzer/QueryText.h"
#include "analyzer/QuickPane.h"
#include "analyzer/frmCode.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "lang/Text.h"
#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"
#include "visual/frmSQLWizzard.h"
#include <QApplication>
#include <QClipboard>
#include <QPointer>

void frmSQL::CommentIn()
{
    m_text->Bulk(::CommentIn(m_text->Edited()));
}

void frmSQL::RemoveComment()
{
    m_text->Bulk(::RemoveComment(m_text->Edited()));
}

void frmSQL::Indent(int shift)
{
    m_text->Bulk(::Indent(m_text->Edited(), Shift(shift == 1)));
}

void frmSQL::InsertString(const QString &text)
{
    m_text->Bulk(::InsertString(m_text->Edited(), text));
}

void frmSQL::InsertText(const QString &text)
{
    m_text->Bulk(::InsertText(m_text->Edited(), text));
}

void frmSQL::FormatSQL()
{
    EditText edit = m_text->Edited();
    const bool whole = edit.selLength == 0;
    const QString formatted = FormatStatement(whole ? edit.text : txtSQL->SelText());
    if (whole)
        m_text->Bulk({formatted, 0, 0});
    else
        m_text->Bulk(
            {edit.text.replace(edit.selStart, edit.selLength, formatted), edit.selStart + formatted.size(), 0});
}

void frmSQL::BreakText()
{
    const QPointer<frmSQL> self(this);
    const QString token = InputBox(QStringLiteral("Enter the token you wish to break on."),
                                   QStringLiteral("Line feed break"), QString(), nullptr, this);
    if (token.isEmpty() || !self)
        return;
    const QString broken = BreakOnToken(m_text->Edited().text, token);
    m_text->Bulk({broken, 0, broken.size()});
}

// The colouring follows from the change.
void frmSQL::ChangeCase(bool upper)
{
    m_text->EndBracketShow();
    const QString text = txtSQL->SelText();
    if (!text.isEmpty())
        txtSQL->SetSelText(upper ? lang::UCase(text) : lang::LCase(text));
}

void frmSQL::ShowWizard()
{
    const QPointer<frmSQL> self(this);
    frmSQLWizzard wizard(this);
    wizard.ShowModal();
    if (!self || wizard.Cancelled)
        return;
    const QString text = m_text->Edited().text;
    const QString front = text.isEmpty() ? QString() : text + QStringLiteral("\r\n\r\n");
    m_text->Bulk({front + wizard.SQLText, front.size(), wizard.SQLText.size()});
}

void frmSQL::mnuCopy()
{
    if (txtSQL->SelLength() > 0)
        txtSQL->copy();
}

void frmSQL::mnuCut()
{
    m_text->EndBracketShow();
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
    m_text->EndBracketShow();
    txtSQL->SetSelText(text);
    txtSQL->ensureCursorVisible();
}

void frmSQL::mnuSelectAll()
{
    txtSQL->selectAll();
}

void frmSQL::mnuUndo()
{
    m_text->Undo();
}

void frmSQL::Redo()
{
    m_text->Redo();
}

void frmSQL::FixText(bool all, bool checkLength, int mode)
{
    m_text->FixText(all, checkLength, FixMode(mode));
}

void frmSQL::Parse(int kind)
{
    txtSQL->setFocus();
    m_text->ShowBrackets(BracketKindOf(kind));
}

void frmSQL::ShowQuickList()
{
    m_quick->Open();
}

// In the tree when it had the keyboard last: the menu that was opened for this took it.
void frmSQL::mnuFind()
{
    m_text->EndBracketShow();
    if (m_TreeHasFocus)
        FindInSchema(this, TV);
    else
        FindInQuery(this, *m_text);
}

void frmSQL::mnuReplace()
{
    mnuFind();
}

void frmSQL::mnuSave()
{
    m_files->Save(FileFilter);
}

void frmSQL::mnuOpen()
{
    m_files->Open();
}

void frmSQL::mnuPrint()
{
    m_files->Print();
}

void frmSQL::ShowCode()
{
    m_text->EndBracketShow();
    frmCode::ShowCode(RunText());
}

void frmSQL::CodeToClipboard()
{
    m_text->EndBracketShow();
    QGuiApplication::clipboard()->setText(PlainCodeAsStored(RunText()));
    QApplication::beep();
}
