#pragma once
// What must hold of the reader of stored connections for any bytes: it comes back, each name is there once, what it
// read survives the way through the writer and the merge with itself, and the pieces in which bytes come do not matter.
// Fed by libFuzzer (fuzz_store.cpp) and, for a few seconds, by the tests.

#include "data/ConnectionStore.h"
#include "data/StoreReader.h"

#include <QByteArray>
#include <string>

namespace fuzz {

inline bool SameLists(const clsConns &one, const clsConns &other)
{
    if (one.Count() != other.Count())
        return false;
    auto second = other.begin();
    for (const auto &conn : one) {
        const clsConn &there = **second++;
        if (there.Name != conn->Name || there.ConnectionString != conn->ConnectionString || there.Extra != conn->Extra)
            return false;
    }
    return true;
}

// A first byte that is odd sets a key that changes nothing, so that the fields are the input's own bytes.
inline std::string Store(const QByteArray &bytes)
{
    const QByteArray key = bytes.isEmpty() || bytes[0] % 2 == 0 ? QByteArray() : QByteArray(1, '\0');
    const QByteArray data = bytes.mid(1);
    clsConns conns;
    ReadConnections(data, conns, key);
    if (conns.Count() > data.count(2) + 1)
        return "more members than records";
    for (const auto &conn : conns)
        if (conns.Item(conn->Name) != conn.get())
            return "a member that its name does not find";

    clsConns again;
    ReadConnections(WriteConnections(conns), again);
    if (!SameLists(conns, again))
        return "writing and reading changes the list";

    clsConns pieces;
    store::Reader reader(pieces, key);
    const qsizetype step = 1 + data.size() % 7;
    for (qsizetype at = 0; at < data.size(); at += step)
        reader.Feed(QByteArrayView(data).sliced(at, qMin(step, data.size() - at)));
    reader.Finish();
    if (!SameLists(conns, pieces))
        return "the pieces in which the bytes come matter";

    if (!SameLists(MergeConnections(conns, conns, conns), conns))
        return "the merge of a list with itself changes it";
    const clsConns half = MergeConnections(clsConns(), conns, clsConns());
    if (!SameLists(half, conns) || MergeConnections(conns, clsConns(), conns).Count() != 0)
        return "the merge with nothing loses or keeps a member";
    return {};
}

} // namespace fuzz
