// The text as program code, in a window or on the clipboard.
#include "analyzer/frmCode.h"
#include "analyzer/frmSQL.h"

#include "controls/RichTextBox.h"
#include "sqltext/Statements.h"
#include <QApplication>
#include <QClipboard>

QString frmSQL::RunText() const
{
    return GetSQLText(txtSQL->Text(), txtSQL->SelStart(), txtSQL->SelLength());
}

void frmSQL::ShowCode()
{
    EndBracketShow();
    frmCode::ShowCode(RunText());
}

void frmSQL::CodeToClipboard()
{
    EndBracketShow();
    QGuiApplication::clipboard()->setText(PlainCodeAsStored(RunText()));
    QApplication::beep();
}
