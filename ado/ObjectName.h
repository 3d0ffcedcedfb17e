#pragma once
// Names of tables and the texts by which a database family reads them. Pure; any thread; nothing is raised.
//
// A name is data: whatever stands in it, the text that is made of it here leads to that very object and to nothing
// else.

#include <QString>

namespace ADODB {

struct Family;

// An object as the rowset of tables tells it. Lists show the name alone; whose it is, is kept beside.
struct ObjectName
{
    QString Catalog, Schema; // "" where the family has no such notion, or where nobody knows
    QString Name;
    bool operator==(const ObjectName &) const = default;
};

// One row of the rowset of tables, of its columns TABLE_CATALOG, TABLE_SCHEMA and TABLE_NAME. SQLite's rowset gives its
// main database no schema; here it has its name.
ObjectName ObjectOf(const Family &family, const QString &catalog, const QString &schema, const QString &name);

// Does a server of this family read `text`, where a table's name is wanted, as the object that is called `name`? It
// looks at folding, key words, the characters of bare names and the family's own brackets and quotes. A family that
// nobody knows is taken to keep the letters of a bare name and to know no brackets.
bool ReadsAs(const Family &family, const QString &text, const QString &name);

// A bare name that means something else to this family, in any case.
bool IsReservedWord(const Family &family, const QString &word);

// The name in the family's own quotes, doubled inside. `quote` is what the driver tells ("" or a blank for none) and
// counts only for a family that nobody knows.
QString InQuotes(const Family &family, const QString &quote, const QString &name);

// Bare where the family reads it so, else in quotes.
QString PartName(const Family &family, const QString &quote, const QString &name);

// The object with the schema (or catalogue) it stands in, each part as PartName writes it.
QString PlacedName(const Family &family, const QString &quote, const ObjectName &object);

// A query whose first row tells where the plain name leads now: catalogue and schema, null for what the family has not,
// "" for nowhere. No row: there is no object of that name at all. "" for a family that cannot be asked.
QString WhereQuery(const Family &family, const QString &name);

} // namespace ADODB
