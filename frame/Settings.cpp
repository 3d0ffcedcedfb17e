#include "frame/Settings.h"
#include "lang/Text.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>
#include <memory>

namespace {

// A settings file holds a few kilobytes; what is larger than this is not ours.
constexpr qint64 kLargestFile = 4 * 1024 * 1024;

std::unique_ptr<QSettings> g_settings;
QString g_file; // set by tests

void Forget()
{
    g_settings.reset();
} // writes what is pending

// Known without a look into it: what cannot be opened must not be parsed before it is put aside.
QString FileName()
{
    if (!g_file.isEmpty())
        return g_file;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Brindlewick/Brindlewick.ini");
}

QSettings &Settings()
{
    if (!g_settings) {
        static const bool registered = (qAddPostRoutine(Forget), true);
        Q_UNUSED(registered);
        QString path = FileName();
        const QFileInfo info(path);
        const auto owner = QFile::ReadOwner | QFile::WriteOwner;
        if (info.isFile()) {
            QFile::setPermissions(path, owner); // the last statements and paths of a user stand in it
            // A foreign file of a gigabyte would cost its size in memory.
            if (info.size() > kLargestFile) {
                QFile::remove(path + QStringLiteral(".foreign"));
                QFile::rename(path, path + QStringLiteral(".foreign"));
            }
        } else if (info.exists() && !info.isDir()) {
            path += QStringLiteral("/none"); // opening a pipe would wait for ever
        } else if (!info.exists() && QDir().mkpath(info.path())) {
            QFile file(path); // Qt keeps the mode of a file that is there
            file.open(QIODevice::WriteOnly | QIODevice::NewOnly, owner);
        }
        g_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
        g_settings->setFallbacksEnabled(false);
    }
    return *g_settings;
}

QString FullKey(const QString &key)
{
    return QStringLiteral("settings/") + key.toLower();
}

} // namespace

QString GetSetting(const QString &key, const QString &otherwise)
{
    const QVariant value = Settings().value(FullKey(key));
    // An unquoted comma in a hand-written file reads as a list.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(','));
    return value.typeId() == QMetaType::QString ? value.toString() : otherwise;
}

void SaveSetting(const QString &key, const QString &value)
{
    // An empty text that was never null, so that it reads back as a stored value.
    Settings().setValue(FullKey(key), value.isNull() ? QStringLiteral("") : value);
}

double GetSettingNumber(const QString &key, double otherwise)
{
    const QString text = GetSetting(key);
    return text.isEmpty() ? otherwise : lang::Val(text);
}

void SaveSettingNumber(const QString &key, double value)
{
    SaveSetting(key, lang::CStr(value));
}

void SyncSettings()
{
    if (g_settings)
        g_settings->sync();
}

void SetSettingsFile(const QString &path)
{
    Forget();
    g_file = path;
}
