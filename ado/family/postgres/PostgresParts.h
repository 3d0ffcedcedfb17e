#pragma once
// What PostgreSQL's sources share. In its queries the rows' own schema is always `n`, a constraint `con`.

#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

#define PG_USER                                                                                                        \
    " AND n.nspname <> 'information_schema' AND (left(n.nspname, 3) <> 'pg_' OR n.oid = "                              \
    "pg_catalog.pg_my_temp_schema())"
#define PG_TABLE(schema, table)                                                                                        \
    "current_database() AS TABLE_CATALOG, " schema ".nspname AS TABLE_SCHEMA, " table ".relname AS TABLE_NAME"
#define PG_RULE(column)                                                                                                \
    "CASE con." column " WHEN 'c' THEN 'CASCADE' WHEN 'n' THEN 'SET NULL' WHEN 'd' THEN 'SET DEFAULT' "                \
    "WHEN 'r' THEN 'RESTRICT' ELSE 'NO ACTION' END"

namespace ADODB {

std::span<const CatalogueQuery> PostgresObjects();
std::span<const CatalogueQuery> PostgresQueries();
std::span<const CatalogueQuery> PostgresGrants();
std::span<const Literal> PostgresLiterals();
std::span<const TypeName> PostgresTypeNames();
extern const char kPostgresWords[];

} // namespace ADODB
