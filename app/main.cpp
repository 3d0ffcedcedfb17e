// Brindlewick: the entry of the program.

#include "app/CommandLine.h"
#include "app/QuitSignals.h"
#include "app/Session.h"
#include "app/SingleInstance.h"
#include "app/StartUp.h"
#include "app/UserFolders.h"
#include "app/mdiMother.h"
#include "data/modMain.h"
#include "frame/Settings.h"
#include "session/Pump.h"
#include <QApplication>
#include <cstdio>
#include <unistd.h>

// A driver that hangs in a server would hold up the destructors for ever: then the process ends without them. All is
// saved by now.
static void LeaveIfStuck(SingleInstance &instance, int code)
{
    gConn.reset();
    if (!ADODB::Connection::AnyWork())
        return;
    SyncSettings();
    instance.Release();
    std::fflush(nullptr);
    ::_exit(code);
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Brindlewick"));
    QApplication::setApplicationVersion(QStringLiteral(BRINDLEWICK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("brindlewick"));
    QApplication::setQuitOnLastWindowClosed(false); // the main window's end is the program's
    UseHomeFromEnvironment();

    SingleInstance instance(InstanceFolder());
    mdiMother window;
    InstallWaitHandler();
    const QuitSignals quit(window);
    QObject::connect(&window, &mdiMother::Ended, &app, [&instance] {
        LeaveIfStuck(instance, 0);
        QCoreApplication::exit(0);
    });

    const QStringList arguments = app.arguments().mid(1);
    StartUp start(window, ComposeCommandLine(arguments), [&instance] { return instance.Take(); });
    start.Show = [&window] { window.ShowAsStored(); };
    const QString session = qEnvironmentVariable("BRINDLEWICK_SESSION");
    if (session == QLatin1String("first-paint"))
        EndAtFirstPaint(window);
    if (!start.Run())
        return 0;
    if (window.HasEnded())
        return 0; // closed while a file of the command line was being opened
    if (!session.isEmpty() && session != QLatin1String("first-paint"))
        PlaySession(window, session);
    const int code = app.exec();
    LeaveIfStuck(instance, code);
    return code;
}
