#pragma once
// One query a rowset and database family. Its columns bear the rowset's names (in any case and order); what a family
// does not know is left out and becomes null. Three names are not the rowset's own and are worked out in TypeNames.cpp:
// TYPE_NAME becomes DATA_TYPE with lengths, and any column's default tells COLUMN_HASDEFAULT.

#include "ado/Driver.h"

namespace ADODB {

struct CatalogueQuery
{
    DatabaseFamily Family;
    SchemaEnum Schema;
    const char *Select;
    const char
        *UserOnly; // joined to Select unless a schema or a table is asked for by name; "" where nothing is hidden
};

const CatalogueQuery *FindCatalogueQuery(DatabaseFamily family, SchemaEnum schema); // null for no such notion
bool HasCatalogueQueries(DatabaseFamily family);

} // namespace ADODB
