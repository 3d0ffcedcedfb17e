#pragma once
// One query a rowset and database family. Its columns bear the rowset's names (in any case and order); what a family
// does not know is left out and becomes null. Some names are not the rowset's own and are worked out by the reader:
// TYPE_NAME becomes DATA_TYPE with lengths (BASE_TYPE_NAME wins where it is not null), any column's default tells
// COLUMN_HASDEFAULT, and a row with CHECKED_TABLE becomes a row for each check in the table's text CHECKS_IN.

#include "ado/Driver.h"
#include <span>

namespace ADODB {

struct CatalogueQuery
{
    DatabaseFamily Family;
    SchemaEnum Schema;
    const char *Select;
    const char
        *UserOnly; // joined to Select unless a schema or a table is asked for by name; "" where nothing is hidden
};

// What is not asked every day, by family.
std::span<const CatalogueQuery> SqliteQueries();
std::span<const CatalogueQuery> PostgresQueries();
std::span<const CatalogueQuery> PostgresGrants();
std::span<const CatalogueQuery> MySQLQueries();

const CatalogueQuery *FindCatalogueQuery(DatabaseFamily family, SchemaEnum schema); // null for no such notion
bool HasCatalogueQueries(DatabaseFamily family);

} // namespace ADODB
