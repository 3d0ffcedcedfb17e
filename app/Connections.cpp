// The commands on stored connections: new, view, delete, generate a connection string.

#include "app/MainCommands.h"
#include "app/Menus.h"
#include "app/SideBar.h"
#include "app/SideBarTable.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/ExplorerBar.h"
#include "controls/Skin.h"
#include "data/clsConns.h"
#include "data/frmNewConnection.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "lang/Text.h"
#include <QLineEdit>
#include <QPointer>

void NewConnection(mdiMother &window)
{
    QString name, connectionString;
    for (;;) {
        frmNewConnection dialog(&window);
        dialog.txtCS->setText(connectionString);
        dialog.txtName->setText(name);
        dialog.txtName->selectAll();
        dialog.ShowModal();
        if (dialog.Cancelled)
            return;
        name = dialog.ConnName;
        connectionString = dialog.ConnString;
        ::SetStatus(QString());
        if (lang::Trim(name).isEmpty())
            return;
        ::SetStatus(QStringLiteral("Creating Connection..."));
        if (!gConns().Item(name)) {
            Attempt([&] { gConns().Add(connectionString, name, QString()); });
            Attempt([&] { AddConnectionEntry(*window.eb, name); });
            Attempt([&] { ApplyBarSkin(window.eb); });
            ::SetStatus(QString());
            return;
        }
        MsgBox(QStringLiteral("This name is aready in use. Please enter another connection name."), mbExclamation,
               QStringLiteral("Connection Name"), &window);
    }
}

QString mdiMother::ConnectedName() const
{
    const ExplorerBarItems &entries = eb->Bar(QString::fromLatin1(BarConnections))->Items();
    for (int i = 1; i <= entries.Count(); ++i)
        if (entries.Item(i)->Icon() == IconConnected)
            return entries.Item(i)->Text();
    return menus->Tag(QStringLiteral("mnuViewCS")); // its entry was deleted
}

void ViewConnectionString(mdiMother &window)
{
    const clsConn *conn = gConns().Item(window.menus->Tag(QStringLiteral("mnuViewCS")));
    if (!conn)
        return;
    QString text = conn->ConnectionString;
    for (const char *mark : {"\\", "{", "}"}) // the backslash first, or its own marks would be doubled
        text = lang::Replace(text, QLatin1String(mark), QLatin1String("\\") + QLatin1String(mark));
    auto *output = new frmTextOutput;
    window.AddChild(output);
    Attempt([&] { output->SetText(text); });
    output->ShowChild();
}

// The string goes out as it is: what reads as RTF in it works as RTF, and that is meant.
void GenerateConnectionString(mdiMother &window)
{
    const QString text = PromptConnectionString();
    auto *output = new frmTextOutput;
    window.AddChild(output);
    Attempt([&] { output->SetText(text); });
    output->SetCaption(QStringLiteral("Connection String"));
    output->ShowChild();
}

void DeleteConnection(mdiMother &window)
{
    ExplorerBarItem *entry = ConnectionEntry(*window.eb, window.menus->Tag(QStringLiteral("mnuDeleteConn")));
    if (!entry)
        return;
    gConns().Remove(entry->Text());
    Attempt([&] { entry->Bar()->Items().Remove(entry); });
}
