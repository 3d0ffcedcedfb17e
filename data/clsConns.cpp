#include "data/clsConns.h"
#include "lang/Text.h"
#include <algorithm>

clsConn *clsConns::Add(const QString &ConnectionString, const QString &Name, const QString &Extra)
{
    const QString key = lang::UCase(Name);
    if (m_byKey.contains(key))
        throw CollectionError{457, QStringLiteral("This key is already associated with an element of this collection")};
    m_members.push_back(std::make_unique<clsConn>(clsConn{Name, ConnectionString, Extra}));
    return *m_byKey.insert(key, m_members.back().get());
}

clsConn *clsConns::Item(const QString &key) const
{
    return m_byKey.value(lang::UCase(key), nullptr);
}

void clsConns::Remove(const QString &key)
{
    const clsConn *gone = m_byKey.take(lang::UCase(key));
    std::erase_if(m_members, [gone](const auto &member) { return member.get() == gone; });
}

void clsConns::Clear()
{
    m_byKey.clear();
    m_members.clear();
}

clsConns clsConns::Copy() const
{
    clsConns copy;
    for (const auto &member : m_members)
        copy.Add(member->ConnectionString, member->Name, member->Extra);
    return copy;
}

clsConns &gConns()
{
    static clsConns conns;
    return conns;
}
