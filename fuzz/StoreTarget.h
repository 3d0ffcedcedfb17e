#pragma once
// What must hold of the reader of stored connections for any bytes: it comes back, each name is there once, and what it
// read survives the way through the writer. Fed by libFuzzer (fuzz_store.cpp) and, for a few seconds, by the tests.

#include "data/ConnectionStore.h"

#include <QByteArray>
#include <string>

namespace fuzz {

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
    if (again.Count() != conns.Count())
        return "writing and reading loses a member";
    auto other = again.begin();
    for (const auto &conn : conns) {
        const clsConn &read = **other++;
        if (read.Name != conn->Name || read.ConnectionString != conn->ConnectionString || read.Extra != conn->Extra)
            return "writing and reading changes a member";
    }
    return {};
}

} // namespace fuzz
