#include "app/UserFolders.h"
#include "frame/AppPath.h"
#include "frame/Settings.h"
#include <QDir>
#include <QStandardPaths>

static QString Home()
{
    const QString home = qEnvironmentVariable("BRINDLEWICK_HOME");
    return home.isEmpty() ? QString() : QDir(home).absolutePath();
}

void UseHomeFromEnvironment()
{
    const QString home = Home();
    if (home.isEmpty())
        return;
    QDir().mkpath(home);
    SetAppPath(home);
    SetSettingsFile(home + QStringLiteral("/settings.ini"));
}

QString InstanceFolder()
{
    const QString home = Home();
    if (!home.isEmpty())
        return home;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Brindlewick");
}
