#pragma once
// The fields of tables and views for the schema loader: read in one go where that gives the same as a SELECT on each.
//
// What decides is the SELECT: an object on which it is refused has no fields. A catalogue lists also what the user may
// not read, so on PostgreSQL and the MySQL family its columns stand in for those objects of which the server itself
// says, in one query, that the user may read them. The other families' catalogues list what one can read. What the
// catalogue does not answer for is asked by a SELECT each, by the name that reaches that very object.
// Used on one thread at a time, which may be a worker. Nothing raises.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <atomic>
#include <optional>

class SchemaFields
{
public:
    // `stop`, once true, makes every further answer empty.
    SchemaFields(ADODB::ConnectionPtr connection, const std::atomic<bool> &stop);

    // Reads the columns of all objects at once.
    void ReadAll();
    // The field names in the order of the table; nothing when the SELECT was refused.
    std::optional<QStringList> Of(const ADODB::ObjectName &object) const;
    QStringList Known() const; // the names that ReadAll answered for
    bool Knows(const ADODB::ObjectName &object) const;
    QString NameOf(const ADODB::ObjectName &object) const; // as ServerName; raises what that raises

private:
    // What a server says of the objects that the catalogue lists, by owner and name.
    struct Standing
    {
        bool readable = false;
        bool plainName = false; // leads here
    };
    bool ReadStanding();
    std::optional<QStringList> Probe(const ADODB::ObjectName &object) const;
    ADODB::ConnectionPtr m_connection;
    const std::atomic<bool> &m_stop;
    bool m_hasStanding = false;
    QHash<QString, Standing> m_standing;
    QHash<QString, QStringList> m_known; // by owner and name
};
