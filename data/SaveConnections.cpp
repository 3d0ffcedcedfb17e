// The safe way of es.dat to disk: see the head of ConnectionStore.h.
#include "data/ConnectionStore.h"
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype kPiece = 4096; // written at once

class Saver
{
public:
    explicit Saver(const StoreHook &before) : m_before(before) {}

    // Makes the file anew, readable by its owner alone, and returns when the disk has it.
    bool WriteSafely(const QByteArray &path, const QByteArray &data) const
    {
        // A left-over of a killed save may belong to anyone's mode: it goes first.
        if (May(StoreStep::Unlink))
            ::unlink(path.constData());
        const int file = May(StoreStep::Open)
                             ? ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)
                             : -1;
        if (file < 0)
            return false;
        bool done = May(StoreStep::Mode) && ::fchmod(file, 0600) == 0 && WriteAll(file, data);
        done = done && May(StoreStep::Sync) && ::fsync(file) == 0;
        const bool closed = May(StoreStep::Close);
        done = ::close(file) == 0 && closed && done;
        if (!done && May(StoreStep::Unlink))
            ::unlink(path.constData());
        return done;
    }

    // Gives a file a second name, or, where the file system has no such thing, copies it.
    bool KeepAs(const QByteArray &path, const QByteArray &second) const
    {
        if (May(StoreStep::Unlink))
            ::unlink(second.constData());
        if (May(StoreStep::Link) && ::link(path.constData(), second.constData()) == 0)
            return May(StoreStep::Mode) && ::chmod(second.constData(), 0600) == 0;
        QFile file(QFile::decodeName(path));
        return file.open(QIODevice::ReadOnly) && WriteSafely(second, file.readAll());
    }

    // What no reader could take whole keeps a name of its own: whoever mends it finds all of it.
    void SetAside(const QByteArray &path) const
    {
        for (int copy = 1; copy < 100; ++copy) {
            const QByteArray kept = path + (copy == 1 ? QByteArray(".unread") : ".unread" + QByteArray::number(copy));
            if (QFile::exists(QFile::decodeName(kept)))
                continue;
            if (!May(StoreStep::Link) || ::link(path.constData(), kept.constData()) != 0)
                Rename(path, kept); // a file system without second names
            if (May(StoreStep::Mode))
                ::chmod(kept.constData(), 0600);
            return;
        }
    }

    bool Rename(const QByteArray &from, const QByteArray &to) const
    {
        return May(StoreStep::Rename) && ::rename(from.constData(), to.constData()) == 0;
    }

    bool SyncFolder(const QByteArray &folder) const
    {
        const int handle =
            May(StoreStep::OpenFolder) ? ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
        if (handle < 0)
            return false;
        const bool done = May(StoreStep::SyncFolder) && ::fsync(handle) == 0;
        ::close(handle);
        return done;
    }

    bool Remove(const QByteArray &path) const { return May(StoreStep::Unlink) && ::unlink(path.constData()) == 0; }

private:
    bool May(StoreStep step) const { return !m_before || m_before(step); }

    bool WriteAll(int file, const QByteArray &data) const
    {
        for (qsizetype at = 0; at < data.size();) {
            if (!May(StoreStep::Write))
                return false;
            const ssize_t written = ::write(file, data.constData() + at, size_t(qMin(kPiece, data.size() - at)));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            at += written;
        }
        return true;
    }

    const StoreHook &m_before;
};

enum class Former
{
    Nothing,
    Whole,
    Unread // holds something that a reader cannot take, or not to its end
};

Former LookAt(const QString &path)
{
    QFile file(path);
    if (!file.exists() || file.size() == 0)
        return Former::Nothing;
    char last = 0;
    const bool whole = file.size() <= kLargestStore && file.open(QIODevice::ReadOnly) && file.seek(file.size() - 1) &&
                       file.getChar(&last) && last == 2;
    return whole ? Former::Whole : Former::Unread;
}

} // namespace

bool SaveConnections(const QString &path, const clsConns &conns, const StoreHook &before)
{
    const Saver saver(before);
    // A store that is a symbolic link stays one.
    const QFileInfo info(path);
    const QString real = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray store = QFile::encodeName(real);
    const QByteArray fresh = store + ".new";
    const QByteArray former = store + ".old";
    const QByteArray folder = QFile::encodeName(QFileInfo(real).absolutePath());

    const QByteArray data = WriteConnections(conns);
    if (!saver.WriteSafely(fresh, data))
        return false;
    // A hollow store must not push the good former one away. Should the keeping fail, the step below still replaces the
    // store in one go.
    switch (LookAt(real)) {
    case Former::Whole:
        saver.KeepAs(store, former);
        break;
    case Former::Unread:
        saver.SetAside(store);
        break;
    case Former::Nothing:
        break;
    }
    if (!saver.Rename(fresh, store)) {
        saver.Remove(fresh);
        return false;
    }
    const bool synced = saver.SyncFolder(folder);
    // An empty store beside a former one reads as hollow: with nothing to keep, the former one goes.
    if (data.isEmpty() && synced)
        saver.Remove(former);
    return synced;
}
