#include "app/SingleInstance.h"
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <sys/stat.h>

static QString LockFileIn(const QString &folder)
{
    QDir().mkpath(folder);
    return folder + QStringLiteral("/instance.lock");
}

SingleInstance::SingleInstance(const QString &folder) : m_file(LockFileIn(folder)), m_lock(m_file)
{
    m_lock.setStaleLockTime(0); // never by age: a window may stay open for weeks
}

bool SingleInstance::Take()
{
    // The file names the machine and the process: nobody else's business.
    const mode_t former = ::umask(077);
    const auto restore = qScopeGuard([former] { ::umask(former); });
    if (m_lock.tryLock(0))
        return true;
    if (m_lock.error() != QLockFile::LockFailedError)
        return true;
    qint64 process = 0;
    QString host, program;
    if (m_lock.getLockInfo(&process, &host, &program))
        return false;
    // Nobody's name in it: a crash cut it short, unless its owner is writing it at this moment.
    if (QFileInfo(m_file).lastModified().secsTo(QDateTime::currentDateTime()) < 5)
        return false;
    QFile::remove(m_file);
    return m_lock.tryLock(0) || m_lock.error() != QLockFile::LockFailedError;
}

void SingleInstance::Release()
{
    m_lock.unlock();
}
