#include "analyzer/QueryFiles.h"

#include "analyzer/QueryText.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "frame/AppPath.h"
#include "frame/QueryFile.h"
#include "frame/SaveDialog.h"
#include <QFileInfo>
#include <QPointer>
#include <QPrinter>

namespace {

const QString kFilter = QStringLiteral("Query File [*.sql]|*.sql|Text FIles [*.txt]|*.txt");
const QString kExtension = QStringLiteral("sql");

} // namespace

QueryFiles::QueryFiles(QWidget *window, QueryText &text) : m_window(window), m_text(text)
{
    connect(text.Editor(), &RichTextBox::filesDropped, this, &QueryFiles::Append);
}

void QueryFiles::Save(const QString &filter)
{
    m_text.EndBracketShow();
    const QPointer<QueryFiles> self(this);
    QString path = m_FileName;
    if (path.isEmpty())
        path =
            AskSavePath(m_window, QStringLiteral("Save Query File"), filter.isEmpty() ? kFilter : filter, kExtension);
    if (path.isEmpty() || !self)
        return;
    if (WriteTextFile(m_window, path, m_text.Editor()->Text()) && self)
        m_FileName = path;
}

void QueryFiles::Open()
{
    const QPointer<QueryFiles> self(this);
    const QString title = QStringLiteral("Open");
    const QString path =
        ToNative(OpenFileDialog(QStringLiteral("Open Query File"), kFilter, kExtension, QString(), m_window));
    if (path.isEmpty() || !self)
        return;
    if (!QFileInfo::exists(path)) {
        MsgBox(QStringLiteral("This file name noes not exists. "), mbOKOnly, title, m_window);
        return;
    }
    QString text;
    if (!Read(path, text) || !self)
        return;
    m_text.EndBracketShow();
    if (m_text.SetText(text) && self)
        m_FileName = path;
}

bool QueryFiles::Read(const QString &path, QString &text)
{
    QString why;
    const QPointer<QueryFiles> self(this);
    if (ReadQueryFile(path, text, why))
        return true;
    if (!why.isEmpty() && self) // else the user gave it up
        MsgBox(path + QStringLiteral("\r\n") + why, mbExclamation, QStringLiteral("Open"), m_window);
    return false;
}

void QueryFiles::Append(const QStringList &files)
{
    const QPointer<QueryFiles> self(this);
    QStringList contents;
    for (const QString &path : files) {
        QString text;
        if (Read(path, text))
            contents += text;
        if (!self)
            return;
    }
    if (!contents.isEmpty())
        m_text.SetText(DropFiles(m_text.Edited().text, contents));
}

void QueryFiles::Print()
{
    QPrinter printer;
    printer.setDocName(m_window->windowTitle());
    const QPointer<QueryFiles> self(this);
    if (PrintDialog(printer, m_window) && self)
        m_text.Editor()->print(&printer);
}
