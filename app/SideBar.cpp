#include "app/SideBar.h"
#include "app/SideBarTable.h"
#include "controls/Attempt.h"
#include "controls/ExplorerBar.h"
#include "controls/Skin.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include <QTimer>

ExplorerBarItem *AddConnectionEntry(ExplorerBar &bar, const QString &name)
{
    return bar.Bar(QString::fromLatin1(BarConnections))
        ->Items()
        .Add(QString(), name, IconNotConnected, {}, QString::fromLatin1(TagConnection));
}

void BuildSideBar(ExplorerBar &bar)
{
    bar.SetRedraw(false);
    Attempt([&] { bar.AddBar(QString::fromLatin1(BarConnections), QStringLiteral("Connections")); });
    for (const auto &conn : gConns())
        Attempt([&] { AddConnectionEntry(bar, conn->Name); });
    Attempt([&] {
        ExplorerBarBar *tools = bar.AddBar(QString::fromLatin1(BarTools), QStringLiteral("Tool Bar"));
        for (const SideBarRow &row : SideBarTable())
            tools->Items().Add(QString::fromLatin1(row.Key), QString::fromLatin1(row.Text), 0,
                               QString::fromLatin1(row.Tooltip));
    });
    Attempt([&] { ApplyBarSkin(&bar); });
    bar.SetRedraw(true);
}

static ExplorerBarBar *Connections(ExplorerBar &bar)
{
    return bar.FindBar(QString::fromLatin1(BarConnections));
}

ExplorerBarItem *ConnectionEntry(ExplorerBar &bar, const QString &key)
{
    ExplorerBarBar *connections = Connections(bar);
    return connections ? connections->Items().Find(key) : nullptr;
}

ExplorerBarItem *ConnectionEntryByText(ExplorerBar &bar, const QString &text)
{
    ExplorerBarBar *connections = Connections(bar);
    for (int i = 1; connections && i <= connections->Items().Count(); ++i)
        if (ExplorerBarItem *item = connections->Items().Item(i); item->Text() == text)
            return item;
    return nullptr;
}

// A statement that fails finds out that the server has gone, wherever it ran; nobody else hears of it.
static void ShowLost(ExplorerBar &bar)
{
    ExplorerBarBar *connections = Connections(bar);
    if (!gConn || gConn->State() != ADODB::adStateClosed || !connections)
        return;
    for (int i = 1; i <= connections->Items().Count(); ++i)
        if (ExplorerBarItem *item = connections->Items().Item(i); item->Icon() == IconConnected)
            item->SetIcon(IconNotConnected);
}

void WatchConnection(ExplorerBar &bar)
{
    constexpr int pause = 500; // milliseconds
    auto *const look = new QTimer(&bar);
    QObject::connect(look, &QTimer::timeout, &bar, [&bar] { Attempt([&] { ShowLost(bar); }); });
    look->start(pause);
}
