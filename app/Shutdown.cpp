// The way out: every child closes by its own logic, then the settings are written. Nothing can refuse it.

#include "app/Menus.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/modKeywords.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include <QCloseEvent>

void mdiMother::mnuExit()
{
    m_exit = true;
    close();
}

void mdiMother::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (m_ended)
        return; // a second close, while the first one lets events through
    m_ended = true;
    EndPumps(true); // whoever waits for a statement may go
    Attempt([&] {
        if (gConn && gConn->IsBusy())
            gConn->Cancel();
    });
    Attempt(
        [&] { Area->CloseAll(); }); // one that stays open keeps its changes to the end, and nothing is saved unasked
    SaveSettings();
    ReleaseKeywords(); // gConn ends with the process
    emit Ended();
}
