// The way out: every child closes by its own logic, then the settings are written. Nothing can refuse it, and no server
// can hold it up: what still runs is cancelled, and waited for last, for a moment.

#include "app/MainCommands.h"
#include "app/Menus.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/modKeywords.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "session/Pump.h"
#include "views/frmInline.h"
#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <thread>

static constexpr int s_endPatience = 2000; // ms from the close that cancelled work may take to its end

void mdiMother::mnuExit()
{
    m_exit = true;
    close();
}

void Exit(mdiMother &window)
{
    window.mnuExit();
}

void mdiMother::SaveAll()
{
    for (ChildWindow *child : Children())
        Attempt([&] { child->SaveState(); });
    Attempt([&] { Area->RememberPlaces(); }); // at the way out each child does so when it closes
    SaveSettings();
}

// A server that answers lets go at once; one that stands still is left to the process's end.
static void WaitForWork(const QElapsedTimer &since)
{
    while (ADODB::Connection::AnyWork() && since.elapsed() < s_endPatience) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// The last moment at which what was edited in tables can still be sent. Texts are saved before, since they wait for
// nobody.
void mdiMother::AskAboutTables()
{
    QList<QPointer<frmInline>> tables;
    for (ChildWindow *child : Children())
        if (auto *table = qobject_cast<frmInline *>(child); table && (table->HasChanges() || table->IsBusy()))
            tables << table;
    if (!tables.isEmpty())
        SaveAll();
    for (const QPointer<frmInline> &table : tables)
        if (table)
            Attempt([&] { table->AskAtEnd(); });
}

void mdiMother::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (m_ended)
        return; // a second close, while the first one lets events through
    m_ended = true;
    QElapsedTimer since; // the saving, which may wait for another writer as long, and this work end side by side
    since.start();
    AskAboutTables();
    EndPumps(true); // whoever waits for a statement may go; this waits for nothing
    Attempt(
        [&] { Area->CloseAll(); }); // one that stays open keeps its changes to the end, and nothing is saved unasked
    SaveSettings();
    ReleaseKeywords(); // gConn ends with the process
    hide();
    WaitForWork(since);
    emit Ended();
}
