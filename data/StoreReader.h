#pragma once
// Reads records of stored connections as their bytes come, in pieces of any size, so that no more than one record is
// held beside the list. The rules are those of ReadConnections (ConnectionStore.h). Any thread; nothing raises.

#include "data/clsConns.h"
#include <QByteArray>
#include <QByteArrayView>

namespace store {

constexpr char kRecordEnd = 2;
constexpr char kFieldEnd = 3;

class Reader
{
public:
    explicit Reader(clsConns &into, QByteArray key = {}) : m_into(into), m_key(std::move(key)) {}
    void Feed(QByteArrayView bytes);
    void Finish(); // what stands behind the last end of a record is one too

private:
    void Add(QByteArrayView record);
    clsConns &m_into;
    QByteArray m_key;
    QByteArray m_rest; // of the record whose end has not come yet
};

QByteArray RecordOf(const clsConn &conn, const QByteArray &key = {}); // with its end

} // namespace store
