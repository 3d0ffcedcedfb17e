// What two writers have made of one list of connections: see ConnectionStore.h.
#include "data/ConnectionStore.h"

namespace {

bool Same(const clsConn *one, const clsConn *other)
{
    return one && other && one->Name == other->Name && one->ConnectionString == other->ConnectionString &&
           one->Extra == other->Extra;
}

class Merge
{
public:
    Merge(const clsConns &base, const clsConns &theirs, const clsConns &mine)
        : m_base(base), m_theirs(theirs), m_mine(mine)
    {
    }

    clsConns Result()
    {
        for (const auto &conn : m_mine)
            Mine(*conn, m_base.Item(conn->Name), m_theirs.Item(conn->Name));
        for (const auto &conn : m_theirs)
            if (!m_mine.Item(conn->Name) && !Same(m_base.Item(conn->Name), conn.get()))
                Take(*conn, conn->Name); // added by them, or changed by them and deleted by me
        for (const clsConn *conn : m_second)
            Take(*conn, FreeName(conn->Name));
        return std::move(m_result);
    }

private:
    void Mine(const clsConn &mine, const clsConn *base, const clsConn *theirs)
    {
        const bool untouched = Same(base, &mine);
        if (untouched && !theirs)
            return; // deleted by them
        const clsConn &taken = untouched ? *theirs : mine;
        Take(taken, taken.Name);
        if (theirs && !untouched && !Same(theirs, &mine) && !Same(theirs, base))
            m_second.push_back(theirs);
    }

    void Take(const clsConn &conn, const QString &name) { m_result.Add(conn.ConnectionString, name, conn.Extra); }

    QString FreeName(const QString &name) const
    {
        for (int number = 2;; ++number)
            if (const QString free = QStringLiteral("%1 (%2)").arg(name).arg(number);
                !m_result.Item(free) && !m_mine.Item(free) && !m_theirs.Item(free))
                return free;
    }

    const clsConns &m_base, &m_theirs, &m_mine;
    clsConns m_result;
    std::vector<const clsConn *> m_second; // changed by both: theirs
};

} // namespace

clsConns MergeConnections(const clsConns &base, const clsConns &theirs, const clsConns &mine)
{
    return Merge(base, theirs, mine).Result();
}
