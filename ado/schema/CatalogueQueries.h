#pragma once
// One query a rowset and database family. Its columns bear the rowset's names (in any case and order); what a family
// does not know is left out and becomes null. Some names are not the rowset's own and are worked out by the reader:
// TYPE_NAME becomes DATA_TYPE with lengths (BASE_TYPE_NAME wins where it is not null), any column's default tells
// COLUMN_HASDEFAULT, a row with CHECKED_TABLE becomes a row for each check in the table's text CHECKS_IN, and a row
// with USES_IN, the text of a view, a row for each table or column that the view uses.
//
// Where a family has two queries of a rowset, the second stands in when the server refuses the first.

#include "ado/Driver.h"
#include <span>

namespace ADODB {

struct CatalogueQuery
{
    SchemaEnum Schema;
    const char *Select;
    // Joined to Select unless a schema or a table is asked for by name; "" where nothing is hidden.
    const char *UserOnly = "";
};

// By family: what is asked every day, and the rest.
std::span<const CatalogueQuery> SqliteObjects();
std::span<const CatalogueQuery> SqliteConstraints();
std::span<const CatalogueQuery> PostgresObjects();
std::span<const CatalogueQuery> PostgresQueries();
std::span<const CatalogueQuery> PostgresGrants();
std::span<const CatalogueQuery> MySQLObjects();
std::span<const CatalogueQuery> MySQLQueries();
std::span<const CatalogueQuery> SqlServerQueries();
std::span<const CatalogueQuery> OracleQueries();

// In the order in which they are tried; none for no such notion.
std::vector<const CatalogueQuery *> FindCatalogueQueries(DatabaseFamily family, SchemaEnum schema);
bool HasCatalogueQueries(DatabaseFamily family);

// The query as the server takes it. SQLite's may ask it for the attached databases first.
QString TextOf(const CatalogueQuery &query, Session &session);

} // namespace ADODB
