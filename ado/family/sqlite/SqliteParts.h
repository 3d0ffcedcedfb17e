#pragma once
// What SQLite's sources share. In its catalogue attached databases have a schema, and so has that of the temporary
// tables, which may bear the name of another one; the main one has none, as over ODBC.

#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

#define SQLITE_SCHEMA "CASE WHEN t.schema <> 'main' THEN t.schema END"
#define SQLITE_USER " AND t.name NOT LIKE 'sqlite!_%' ESCAPE '!'"
// The tables in the order of most rowsets, so that what is joined to them comes sorted. Without the LIMIT the library
// would see no use in the order.
#define SQLITE_TABLES                                                                                                  \
    "FROM (SELECT * FROM pragma_table_list ORDER BY CASE WHEN schema <> 'main' THEN schema END, name "                 \
    "LIMIT -1) t "
// Stands for the catalogues of all attached databases, with a column "schema". Their names have to be known before they
// can stand in a query, so SqliteMasters asks for them.
#define SQLITE_MASTERS "%MASTERS%"

// The target of a foreign key as it is spelled where it was made, not as the key `f` spells it; and the column there,
// which is the primary key's where the key leaves it out.
#define SQLITE_TARGET                                                                                                  \
    "COALESCE((SELECT p.name FROM pragma_table_list(f.\"table\") p WHERE p.schema = t.schema), f.\"table\")"
#define SQLITE_TARGET_COLUMN                                                                                           \
    "COALESCE((SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE lower(c.name) = lower(f.\"to\")), " \
    "f.\"to\", (SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE c.pk = f.seq + 1))"

// Which key a row is of, for whoever reads its name; and that it is of none.
#define SQLITE_KEY "t.schema AS KEY_SCHEMA, t.name AS KEY_TABLE, f.id AS KEY_ID"
#define SQLITE_NO_KEY "NULL AS KEY_SCHEMA, NULL AS KEY_TABLE, NULL AS KEY_ID"

namespace ADODB {

std::span<const CatalogueQuery> SqliteObjects();
std::span<const CatalogueQuery> SqliteConstraints();
std::span<const Literal> SqliteLiterals();
std::span<const TypeRow> SqliteTypes();
std::span<const TypeName> SqliteTypeNames();
extern const char kSqliteWords[];
std::span<const TypeName> SqliteContainedTypeNames();
// The query with the catalogues of this session's databases in it.
QString WithSqliteMasters(QString query, Session &session);

} // namespace ADODB
