#include "frame/AppPath.h"
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace {

QString g_appPath; // set by tests

QString UserDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Brindlewick");
}

// A name may hold "\" itself, so each "\" is tried as a folder's end first and as a part of the name then.
QString Resolve(const QString &base, const QStringList &parts, qsizetype from)
{
    QString name;
    for (auto i = from; i < parts.size(); ++i) {
        name += (i > from ? QStringLiteral("\\") : QString()) + parts[i];
        const QString path = base + name;
        if (i + 1 == parts.size())
            return QFileInfo::exists(path) ? path : QString();
        if (!QFileInfo(path.isEmpty() ? QStringLiteral("/") : path).isDir())
            continue;
        const QString found = Resolve(path + QLatin1Char('/'), parts, i + 1);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

} // namespace

QString AppPath()
{
    if (!g_appPath.isEmpty())
        return g_appPath;
    const QString beside = QCoreApplication::applicationDirPath();
    if (QFileInfo(beside).isWritable())
        return beside;
    const QString user = UserDataFolder();
    QDir().mkpath(user);
    return user;
}

void SetAppPath(const QString &folder)
{
    g_appPath = folder;
}

QString AppFile(const QString &name)
{
    return AppPath() + QLatin1Char('/') + name;
}

QString DataFile(const QString &name)
{
    const QString beside = QCoreApplication::applicationDirPath();
    QStringList folders{AppPath(), beside, UserDataFolder(), beside + QStringLiteral("/../share/brindlewick")};
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << folder + QStringLiteral("/brindlewick");
    for (const QString &folder : folders)
        if (const QFileInfo file(folder + QLatin1Char('/') + name); file.isFile())
            return QDir::cleanPath(file.absoluteFilePath());
    return AppFile(name);
}

QString ToNative(const QString &path)
{
    if (!path.contains(QLatin1Char('\\')) || QFileInfo::exists(path))
        return path;
    QString plain = path;
    plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QFileInfo::exists(plain))
        return plain;
    const QString found = Resolve(QString(), path.split(QLatin1Char('\\')), 0);
    return found.isEmpty() ? plain : found;
}

QString ToProgramPath(const QString &path)
{
    QString full = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return full.replace(QLatin1Char('/'), QLatin1Char('\\'));
}
