#pragma once
// es.dat: the stored connections on disk, and the scrambling of their fields.
//
// The file is bytes, without head or line ends: records that end with code 2, of three fields with code 3 between them,
// each field's UTF-8 bytes scrambled by itself. The separators are not escaped; the codes of the built-in key are
// chosen so that no valid UTF-8 text scrambles to 2 or 3.
//
// A save never endangers what was saved before: the new content is written beside (es.dat.new), brought safely to disk,
// the former file is kept as es.dat.old until then, and only then does the new file take the name. A reader that finds
// es.dat missing or hollow takes the former content. The file is readable by its owner alone.
// The save writes the list as it is, an empty one too, and marks the end of a whole file by its last code 2.

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

// The file layer under a save; a test puts in one that fails or dies at a chosen step. Each gives false on failure.
struct StoreFiles
{
    std::function<bool(const QString &path, const QByteArray &data)> WriteSafely; // made anew, mode 0600, fsync, close
    std::function<bool(const QString &from, const QString &to)> Link;             // a second name; replaces `to`
    std::function<bool(const QString &from, const QString &to)> Rename;           // replaces `to`
    std::function<bool(const QString &folder)> SyncFolder;
    std::function<bool(const QString &path)> Remove;
    static StoreFiles System();
};

// Reads the store into the list; false when there is no store at all. Larger than 64 MB is not read.
bool LoadConnections(const QString &path, clsConns &into);
// False when it could not be saved; what was saved before is then still readable.
bool SaveConnections(const QString &path, const clsConns &conns, const StoreFiles &files = StoreFiles::System());
