// The safe way of es.dat to disk: see the head of ConnectionStore.h.
#include "data/ConnectionStore.h"
#include "data/StoreFile.h"
#include "data/StoreReader.h"
#include <QByteArray>
#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype kPiece = 4096; // written at once

class Saver
{
public:
    explicit Saver(const StoreHook &before) : m_before(before) {}

    bool May(StoreStep step) const { return !m_before || m_before(step); }

    bool WriteList(const QByteArray &path, const clsConns &conns) const
    {
        return WriteSafely(path, [&](int file) {
            for (const auto &conn : conns)
                if (!WriteAll(file, store::RecordOf(*conn)))
                    return false;
            return true;
        });
    }

    // Gives a file a second name, or, where the file system has no such thing, copies it.
    bool KeepAs(const QByteArray &path, const QByteArray &second) const
    {
        Remove(second);
        if (May(StoreStep::Link) && ::link(path.constData(), second.constData()) == 0)
            return May(StoreStep::Mode) && ::chmod(second.constData(), 0600) == 0;
        const StoreFile from(path);
        return from.IsOpen() && WriteSafely(second, [&](int file) {
                   return from.Read([&](QByteArrayView bytes) { return WriteAll(file, bytes); });
               });
    }

    // What no reader could take whole keeps a name of its own: whoever mends it finds all of it.
    void SetAside(const QByteArray &path) const
    {
        for (int copy = 1; copy < 100; ++copy) {
            const QByteArray kept = path + (copy == 1 ? QByteArray(".unread") : ".unread" + QByteArray::number(copy));
            struct stat info = {};
            if (::lstat(kept.constData(), &info) == 0)
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

    bool SyncFolderOf(const QByteArray &path) const
    {
        const QByteArray folder = path.left(path.lastIndexOf('/') + 1) + ".";
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
    // Makes the file anew, readable by its owner alone, and returns when the disk has it.
    template <class Content> bool WriteSafely(const QByteArray &path, Content content) const
    {
        Remove(path); // a left-over of a killed save may have any mode
        const int file = May(StoreStep::Open)
                             ? ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)
                             : -1;
        if (file < 0)
            return false;
        bool done = May(StoreStep::Mode) && ::fchmod(file, 0600) == 0 && content(file);
        done = done && May(StoreStep::Sync) && ::fsync(file) == 0;
        const bool closed = May(StoreStep::Close);
        done = ::close(file) == 0 && closed && done;
        if (!done)
            Remove(path);
        return done;
    }

    bool WriteAll(int file, QByteArrayView data) const
    {
        while (!data.isEmpty()) {
            if (!May(StoreStep::Write))
                return false;
            const ssize_t written = ::write(file, data.data(), size_t(qMin(kPiece, data.size())));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            data = data.sliced(written);
        }
        return true;
    }

    const StoreHook &m_before;
};

enum class Former
{
    Nothing, // no file, or a hollow one
    Empty,   // an empty list: an empty file that has no former content beside it
    Whole,
    Unread // holds something that a reader cannot take, or not to its end
};

Former ReadFormer(const StoreTarget &target, clsConns &into)
{
    const StoreFile file(target.Path);
    if (!file.IsOpen())
        return target.Present ? Former::Unread : Former::Nothing;
    if (file.Size() == 0)
        return StoreFile(target.Path + ".old").IsOpen() ? Former::Nothing : Former::Empty;
    store::Reader reader(into);
    const bool read = file.Read([&](QByteArrayView bytes) {
        reader.Feed(bytes);
        return true;
    });
    return read && file.EndsWith(store::kRecordEnd) ? Former::Whole : Former::Unread;
}

// The connections of a former list that the new one has too.
clsConns StillThere(const clsConns &former, const clsConns &now)
{
    clsConns kept;
    for (const auto &conn : former)
        if (now.Item(conn->Name))
            kept.Add(conn->ConnectionString, conn->Name, conn->Extra);
    return kept;
}

// The former content without what has been deleted. When that cannot be written there is none: it would keep a password
// that the user took away.
void KeepWithout(const Saver &saver, const QByteArray &path, const clsConns &kept)
{
    if (kept.Count() == 0 || !saver.WriteList(path, kept))
        saver.Remove(path);
}

} // namespace

bool ConnectionStore::Save(const clsConns &mine, const StoreHook &before)
{
    const StoreTarget target = FindStoreTarget(QFile::encodeName(m_path));
    if (!target.Allowed)
        return false;
    const Saver saver(before);
    std::optional<StoreLock> lock;
    if (saver.May(StoreStep::Lock))
        lock.emplace(target.Path + ".lock", m_patience);
    if (!(lock && lock->IsHeld()) && !m_goOn)
        return false;

    // What stands there is another writer's word only when it is a whole list.
    clsConns theirs;
    const Former former = ReadFormer(target, theirs);
    const bool isList = former == Former::Whole || former == Former::Empty;
    const clsConns result = MergeConnections(m_base, isList ? theirs : m_base, mine);

    const QByteArray fresh = target.Path + ".new";
    const QByteArray old = target.Path + ".old";
    if (!saver.WriteList(fresh, result))
        return false;
    // A hollow store must not push the good former one away. Should the keeping fail, the step below still replaces the
    // store in one go.
    if (former == Former::Whole) {
        const clsConns kept = StillThere(theirs, result);
        if (kept.Count() < theirs.Count() || target.ByLink)
            KeepWithout(saver, old, kept);
        else
            saver.KeepAs(target.Path, old);
    } else if (former == Former::Unread && !target.ByLink) {
        saver.SetAside(target.Path);
    }
    if (!saver.Rename(fresh, target.Path)) {
        saver.Remove(fresh);
        return false;
    }
    m_base = mine.Copy();
    const bool synced = saver.SyncFolderOf(target.Path);
    // An empty store beside a former one reads as hollow: with nothing to keep, the former one goes.
    if (result.Count() == 0) {
        if (synced)
            saver.Remove(old);
    } else if (former != Former::Whole) {
        clsConns older;
        if (const StoreFile file(old); file.EndsWith(store::kRecordEnd))
            LoadConnections(QFile::decodeName(old), older);
        if (const clsConns kept = StillThere(older, result); kept.Count() < older.Count())
            KeepWithout(saver, old, kept);
    }
    return synced;
}
