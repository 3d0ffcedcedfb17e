#pragma once
// The store's way to its file: opens nothing but regular files, never waits for a pipe, and tells what a save may
// replace. POSIX calls, since what is asked (whose file it is, whether it is a link) has no other name. Any thread;
// nothing raises.

#include <QByteArray>
#include <QByteArrayView>
#include <functional>

// A regular file, open for reading while the object lives.
class StoreFile
{
public:
    explicit StoreFile(const QByteArray &path); // follows links
    ~StoreFile();
    StoreFile(const StoreFile &) = delete;
    StoreFile &operator=(const StoreFile &) = delete;

    bool IsOpen() const { return m_file >= 0; }
    qint64 Size() const { return m_size; }
    bool EndsWith(char last) const;
    // From the start to the end, in pieces; false when a read fails or `piece` says so.
    bool Read(const std::function<bool(QByteArrayView bytes)> &piece) const;

private:
    int m_file = -1;
    qint64 m_size = 0;
};

// Which file a save puts in place of the one called so.
struct StoreTarget
{
    QByteArray Path;      // the file to replace: the name itself, or what it leads to in the same folder
    bool Allowed = false; // a regular file of the user's own, or nothing yet
    bool ByLink = false;  // a link that leads elsewhere: itself is replaced, what it leads to is not touched
    bool Present = false; // something can be read there
};
StoreTarget FindStoreTarget(const QByteArray &path);

// One writer at a time: a lock on a file beside the store, which ends with its process, however that ends.
class StoreLock
{
public:
    StoreLock(const QByteArray &path, int patience); // waits so long, milliseconds
    ~StoreLock();
    StoreLock(const StoreLock &) = delete;
    StoreLock &operator=(const StoreLock &) = delete;
    bool IsHeld() const { return m_held; }

private:
    int m_file = -1;
    bool m_held = false;
};
