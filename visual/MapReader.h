#pragma once
// What a map reads from a server: the fields of its tables and the foreign keys between them.
//
// A table bears its plain name, unless that leads to another object: then it bears the name with its schema, so that
// two tables of one name are told apart in headings, joins and statements. For one thread, which may be a worker. A
// table that is refused is nothing; a server that has gone and a cancel raise ADODB::Error.

#include "data/SchemaFields.h"
#include "visual/logic/MapLinks.h"
#include <atomic>
#include <functional>
#include <optional>
#include <vector>

struct MapTableRead
{
    ADODB::ObjectName Object;
    QString Tag;     // the table's name on the map
    QString Written; // how the server reads it
    QString Placed;  // the same with the schema; "" where nobody knows that
    QStringList Fields;
    std::function<QString(const QString &alias)> WriteAlias; // of a copy, as one name of this server's
};

struct MapKey
{
    ADODB::ObjectName Primary, Foreign;
    QString PrimaryColumn, ForeignColumn;
};

class MapReader
{
public:
    explicit MapReader(ADODB::ConnectionPtr connection);

    std::optional<MapTableRead> Read(const QString &tableOrStatement);
    std::optional<MapTableRead> Read(const ADODB::ObjectName &object);
    void Expect(size_t tables); // so many will be read: in one go where that is quicker

    std::vector<MapKey> Keys(); // of the whole schema; raises what the server says when it has no such rowset
    QString TagOf(const ADODB::ObjectName &object);

private:
    struct Name
    {
        QString tag, written;
    };
    Name NameOf(const ADODB::ObjectName &object);
    std::optional<QStringList> Select(const QString &name);
    std::function<QString(const QString &)> AliasWriter() const;

    ADODB::ConnectionPtr m_connection;
    std::atomic<bool> m_stop = false;
    SchemaFields m_fields;
};

// The tables that the keys name, each once, in the order of their coming: the primary one of a key first.
std::vector<ADODB::ObjectName> TablesOf(const std::vector<MapKey> &keys);
