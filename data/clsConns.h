#pragma once
// The stored connections: what the side bar lists and es.dat keeps. The order is that of the adding.
//
// The collection owns its members; a pointer stays good until that member is removed. Interface thread.

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

struct clsConn
{
    QString Name;             // as typed; unique without regard to case
    QString ConnectionString; // as typed, password included: why the file scrambles it
    QString Extra;            // the SQL text of this connection's Analyzer window
};

// What a keyed collection raises; 457 for a key that is there already. (5, an unknown key, never leaves this class.)
struct CollectionError
{
    int Number = 0;
    QString Description;
};

class clsConns
{
public:
    // Raises CollectionError 457 when a member has the name already, in whatever case.
    clsConn *Add(const QString &ConnectionString, const QString &Name, const QString &Extra);
    clsConn *Item(const QString &key) const; // any case; null for an unknown key
    int Count() const { return int(m_members.size()); }
    void Remove(const QString &key); // an unknown key is ignored
    void Clear();
    clsConns Copy() const; // members of its own

    // Members in the order of insertion: for (const auto &conn : gConns()) ... conn->Name
    auto begin() const { return m_members.begin(); }
    auto end() const { return m_members.end(); }

private:
    std::vector<std::unique_ptr<clsConn>> m_members;
    QHash<QString, clsConn *> m_byKey; // the upper-cased names
};

clsConns &gConns(); // the program's one list, made at first use
