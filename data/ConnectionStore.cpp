#include "data/ConnectionStore.h"
#include "data/StoreFile.h"
#include "data/StoreReader.h"
#include <QFile>

QByteArray WriteConnections(const clsConns &conns, const QByteArray &key)
{
    QByteArray data;
    for (const auto &conn : conns)
        data += store::RecordOf(*conn, key);
    return data;
}

void ReadConnections(const QByteArray &data, clsConns &into, const QByteArray &key)
{
    store::Reader reader(into, key);
    reader.Feed(data);
    reader.Finish();
}

static bool ReadStore(const StoreFile &file, clsConns &into, const StoreProgress &progress)
{
    store::Reader reader(into);
    qint64 done = 0;
    const bool whole = file.Read([&](QByteArrayView bytes) {
        reader.Feed(bytes);
        done += bytes.size();
        if (progress)
            progress(done, file.Size());
        return true;
    });
    reader.Finish();
    return whole;
}

bool LoadConnections(const QString &path, clsConns &into, const StoreProgress &progress)
{
    const QByteArray name = QFile::encodeName(path);
    const StoreFile file(name);
    if (!file.EndsWith(store::kRecordEnd))
        if (const StoreFile former(name + ".old"); former.Size() > 0)
            return ReadStore(former, into, progress);
    return ReadStore(file, into, progress);
}

bool ConnectionStore::Load(clsConns &into, const StoreProgress &progress)
{
    m_base.Clear();
    const bool loaded = LoadConnections(m_path, m_base, progress);
    for (const auto &conn : m_base)
        if (!into.Item(conn->Name))
            into.Add(conn->ConnectionString, conn->Name, conn->Extra);
    return loaded;
}

void ConnectionStore::SetPatience(int milliseconds, bool thenGoOn)
{
    m_patience = milliseconds;
    m_goOn = thenGoOn;
}

static qint64 BytesOf(const QString &text)
{
    qint64 bytes = text.size();
    for (const QChar c : text)
        bytes += c.unicode() < 0x80 ? 0 : c.unicode() < 0x800 || c.isSurrogate() ? 1 : 2;
    return bytes;
}

QStringList LargeTexts(const clsConns &conns)
{
    QStringList names;
    for (const auto &conn : conns) // a character has three bytes at most
        if (conn->Extra.size() > kLargeText / 3 && BytesOf(conn->Extra) > kLargeText)
            names << conn->Name;
    return names;
}
