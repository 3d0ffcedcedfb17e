// Query files and the printer.
#include "analyzer/frmSQL.h"
#include "frame/QueryFile.h"

#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "frame/AppPath.h"
#include "frame/SaveDialog.h"
#include "sqltext/EditAssist.h"
#include <QFileInfo>
#include <QPrinter>

namespace {

const QString filter = QStringLiteral("Query File [*.sql]|*.sql|Text FIles [*.txt]|*.txt");
const QString extension = QStringLiteral("sql");

} // namespace

// The plain text, as it stands, with CR LF; asked for a name only once.
void frmSQL::mnuSave()
{
    EndBracketShow();
    const QPointer<frmSQL> self(this);
    QString path = m_FileName;
    if (path.isEmpty())
        path =
            AskSavePath(this, QStringLiteral("Save Query File"), FileFilter.isEmpty() ? filter : FileFilter, extension);
    if (path.isEmpty() || !self)
        return;
    if (WriteTextFile(this, path, txtSQL->Text()) && self)
        m_FileName = path;
}

void frmSQL::mnuOpen()
{
    const QPointer<frmSQL> self(this);
    const QString title = QStringLiteral("Open");
    const QString path =
        ToNative(OpenFileDialog(QStringLiteral("Open Query File"), filter, extension, QString(), this));
    if (path.isEmpty() || !self)
        return;
    if (!QFileInfo::exists(path)) {
        MsgBox(QStringLiteral("This file name noes not exists. "), mbOKOnly, title, this);
        return;
    }
    QString text;
    if (!ReadFile(path, text) || !self)
        return;
    EndBracketShow();
    if (SetText(text) && self)
        m_FileName = path;
}

bool frmSQL::ReadFile(const QString &path, QString &text)
{
    QString why;
    const QPointer<frmSQL> self(this);
    if (ReadQueryFile(path, text, why))
        return true;
    if (!why.isEmpty() && self) // else the user gave it up
        MsgBox(path + QStringLiteral("\r\n") + why, mbExclamation, QStringLiteral("Open"), this);
    return false;
}

// Dropped files go behind what is there, each after a blank line.
void frmSQL::OpenFiles(const QStringList &files)
{
    const QPointer<frmSQL> self(this);
    QStringList contents;
    for (const QString &path : files) {
        QString text;
        if (ReadFile(path, text))
            contents += text;
        if (!self)
            return;
    }
    if (contents.isEmpty())
        return;
    SetText(::DropFiles(Edited().text, contents));
}

void frmSQL::mnuPrint()
{
    QPrinter printer;
    printer.setDocName(windowTitle());
    const QPointer<frmSQL> self(this);
    if (PrintDialog(printer, this) && self)
        txtSQL->print(&printer); // with its colours
}
