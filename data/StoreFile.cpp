#include "data/StoreFile.h"
#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype kReadPiece = 1024 * 1024; // read at once

QByteArray FolderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

QByteArray Canonical(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

bool IsOurs(const struct stat &info)
{
    return S_ISREG(info.st_mode) && info.st_uid == ::geteuid();
}

} // namespace

StoreFile::StoreFile(const QByteArray &path)
{
    // Asked before it is opened: some devices act at the opening already. Asked again, since names may change between.
    struct stat info = {};
    if (::stat(path.constData(), &info) != 0 || !S_ISREG(info.st_mode))
        return;
    m_file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (m_file < 0)
        return;
    if (::fstat(m_file, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(m_file);
        m_file = -1;
        return;
    }
    m_size = info.st_size;
}

StoreFile::~StoreFile()
{
    if (m_file >= 0)
        ::close(m_file);
}

bool StoreFile::EndsWith(char last) const
{
    char found = 0;
    return m_file >= 0 && m_size > 0 && ::pread(m_file, &found, 1, m_size - 1) == 1 && found == last;
}

bool StoreFile::Read(const std::function<bool(QByteArrayView bytes)> &piece) const
{
    if (m_file < 0)
        return false;
    QByteArray buffer(std::clamp<qsizetype>(m_size, 1, kReadPiece), Qt::Uninitialized);
    for (off_t at = 0;;) {
        const ssize_t read = ::pread(m_file, buffer.data(), size_t(buffer.size()), at);
        if (read < 0 && errno == EINTR)
            continue;
        if (read <= 0)
            return read == 0;
        at += read;
        if (!piece(QByteArrayView(buffer).first(read)))
            return false;
    }
}

StoreTarget FindStoreTarget(const QByteArray &path)
{
    StoreTarget target{path};
    struct stat info = {};
    if (::lstat(path.constData(), &info) != 0) {
        target.Allowed = errno == ENOENT;
        return target;
    }
    target.Allowed = target.Present = IsOurs(info);
    if (!S_ISLNK(info.st_mode))
        return target;
    if (::stat(path.constData(), &info) != 0) { // leads nowhere
        target.Allowed = target.ByLink = true;
        return target;
    }
    target.Allowed = target.Present = IsOurs(info);
    const QByteArray real = Canonical(path);
    if (!real.isEmpty() && FolderOf(real) == Canonical(FolderOf(path)))
        target.Path = real;
    else
        target.ByLink = true;
    return target;
}

StoreLock::StoreLock(const QByteArray &path, int patience)
{
    const StoreTarget target = FindStoreTarget(path);
    if (!target.Allowed)
        return;
    m_file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
    struct stat info = {};
    if (m_file < 0 || ::fstat(m_file, &info) != 0 || !IsOurs(info))
        return;
    if ((info.st_mode & 07777) != 0600)
        ::fchmod(m_file, 0600);
    // Asked again and again, in turns of different lengths, rather than waited for: a waiting that cannot be ended
    // would hang with a writer that was stopped.
    const QDeadlineTimer end(patience);
    while (!(m_held = ::flock(m_file, LOCK_EX | LOCK_NB) == 0) && (errno == EWOULDBLOCK || errno == EINTR) &&
           !end.hasExpired())
        ::usleep(1000 + QRandomGenerator::global()->bounded(9000));
}

StoreLock::~StoreLock()
{
    if (m_file >= 0)
        ::close(m_file);
}
