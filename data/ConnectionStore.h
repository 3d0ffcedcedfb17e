#pragma once
// es.dat: the stored connections on disk, and the scrambling of their fields.
//
// The file is bytes, without head or line ends: records that end with code 2, of three fields with code 3 between them,
// each field's UTF-8 bytes scrambled by itself. The separators are not escaped; the codes of the built-in key are
// chosen so that no valid UTF-8 text scrambles to 2 or 3.
//
// A save never endangers what was saved before: the new content is written beside (es.dat.new), brought safely to disk,
// the former one gets the second name es.dat.old, and only then does the new one take the name in one step. A whole
// file ends with code 2: a reader that finds es.dat missing or without it takes the former content where there is one.
// An empty list is an empty file without a former one beside it. All of them are readable by their owner alone. A store
// that cannot be read whole (cut, too large, no permission) is never replaced without a trace: a save sets it aside as
// es.dat.unread.

#include "data/clsConns.h"
#include <QByteArray>
#include <QString>
#include <functional>

// Its own inverse. An empty key stands for the built-in one. Bytes in, as many bytes out.
QByteArray ScrambleText(const QByteArray &text, const QByteArray &key = {});

// The bytes of a list, and the members that bytes hold, in order. Records with fewer than three fields are passed over,
// further fields of a record are ignored, and so is a name that is there already. Never raises, whatever the bytes.
QByteArray WriteConnections(const clsConns &conns, const QByteArray &key = {});
void ReadConnections(const QByteArray &data, clsConns &into, const QByteArray &key = {});

// Called ahead of every system call of a save; false makes that call fail. For tests, which may also die in it.
enum class StoreStep
{
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

constexpr qint64 kLargestStore = 64 * 1024 * 1024; // bytes; what is larger is not read

// Reads the store into the list; false when there is no store that can be read.
bool LoadConnections(const QString &path, clsConns &into);
// False when it could not be saved; what was saved before is then still readable.
bool SaveConnections(const QString &path, const clsConns &conns, const StoreHook &before = {});
