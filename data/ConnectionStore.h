#pragma once
// es.dat: the stored connections on disk, and the scrambling of their fields.
//
// The file is bytes, without head or line ends: records that end with code 2, of three fields with code 3 between them,
// each field's UTF-8 bytes scrambled by itself. The separators are not escaped; the codes of the built-in key are
// chosen so that no valid UTF-8 text scrambles to 2 or 3. Whatever was written can be read, at any size.
//
// A save never endangers what was saved before: the new content is written beside (es.dat.new), brought safely to disk,
// the former one gets the second name es.dat.old, and only then does the new one take the name in one step. A whole
// file ends with code 2: a reader that finds es.dat missing or without it takes the former content where there is one.
// An empty list is an empty file without a former one beside it. All of them are readable by their owner alone. A store
// that cannot be read whole (cut, no permission) is never replaced without a trace: a save sets it aside as
// es.dat.unread. A connection that a save leaves out is in es.dat.old no more, since its password would stay there.
//
// Only a regular file of the user's own is replaced. A link to such a file in the same folder stays a link; one that
// leads elsewhere is replaced itself, and what it leads to stays; before anything else the save fails. Nothing waits
// for a pipe.
//
// Several programs may save: a lock (es.dat.lock, held by nobody once its process is dead) lets one at a time, and each
// merges what it has with what stands there by now (MergeConnections).

#include "data/clsConns.h"
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

// Its own inverse. An empty key stands for the built-in one. Bytes in, as many bytes out.
QByteArray ScrambleText(const QByteArray &text, const QByteArray &key = {});

// The bytes of a list, and the members that bytes hold, in order. Records with fewer than three fields are passed over,
// further fields of a record are ignored, and so is a name that is there already. Never raises, whatever the bytes.
QByteArray WriteConnections(const clsConns &conns, const QByteArray &key = {});
void ReadConnections(const QByteArray &data, clsConns &into, const QByteArray &key = {});

// What two writers have made of one list. Added by either stays, deleted by one and untouched by the other goes,
// changed by both stays twice: theirs with a number behind its name. The order is that of `mine`, with theirs behind
// it.
clsConns MergeConnections(const clsConns &base, const clsConns &theirs, const clsConns &mine);

// Called ahead of every system call of a save; false makes that call fail. For tests, which may also die in it.
enum class StoreStep
{
    Lock,
    Open,
    Mode,
    Write,
    Sync,
    Close,
    Unlink,
    Link,
    Rename,
    OpenFolder,
    SyncFolder
};
using StoreHook = std::function<bool(StoreStep step)>;

// How far a load has come, in bytes of the file; called again and again on the thread that loads.
using StoreProgress = std::function<void(qint64 done, qint64 all)>;

// Reads the store into the list; false when there is no store that can be read.
bool LoadConnections(const QString &path, clsConns &into, const StoreProgress &progress = {});

// Names of the connections whose text is longer than this many bytes: each start and each end takes longer for it.
constexpr qint64 kLargeText = 16 * 1024 * 1024;
QStringList LargeTexts(const clsConns &conns);

// The store as one writer sees it: remembers what it read, so that a save can tell what others have done since. Any
// thread, one at a time.
class ConnectionStore
{
public:
    explicit ConnectionStore(const QString &path) : m_path(path) {}

    bool Load(clsConns &into, const StoreProgress &progress = {}); // as LoadConnections
    // False when it could not be saved; what was saved before is then still readable.
    bool Save(const clsConns &mine, const StoreHook &before = {});

    // How long a save waits for another writer, milliseconds, and whether it then goes on without the lock.
    void SetPatience(int milliseconds, bool thenGoOn);

private:
    QString m_path;
    clsConns m_base; // what this writer last read or saved
    int m_patience = 60000;
    bool m_goOn = false;
};
