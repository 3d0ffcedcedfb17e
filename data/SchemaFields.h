#pragma once
// The fields of tables and views for the schema loader: read in one go where that gives the same as a SELECT on each.
//
// What decides is the SELECT: an object on which it is refused has no fields. A catalogue lists also what the user may
// not read, what another schema hides and what the name needs quoting for, so its columns stand in only for tables of
// which the server itself says, in one query, that the plain name finds them, that they are base tables and that the
// user may read them. PostgreSQL and the MySQL family can say so. Everything else (views, other families, names that
// are key words) is asked by a SELECT each; the embedded database answers that at no cost.
// Used on one thread at a time, which may be a worker. Nothing raises.

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

    // Reads the columns of all objects at once, where the family can be trusted to. Worth it for more than a few.
    void ReadAll();
    // The field names in the order of the table; nothing when the SELECT was refused. `owner` is the schema, or the
    // catalogue where there is no schema.
    std::optional<QStringList> Of(const QString &owner, const QString &name) const;
    QStringList Known() const; // the names that ReadAll answered for

private:
    std::optional<QStringList> Probe(const QString &name) const;
    ADODB::ConnectionPtr m_connection;
    const std::atomic<bool> &m_stop;
    QHash<QString, QStringList> m_known; // by owner and name
};
