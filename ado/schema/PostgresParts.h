#pragma once
// What the queries of PostgreSQL's catalogue share. The rows' own schema is always `n`, a constraint `con`.

#include "ado/schema/CatalogueQueries.h"

#define PG_USER                                                                                                        \
    " AND n.nspname <> 'information_schema' AND (left(n.nspname, 3) <> 'pg_' OR n.oid = "                              \
    "pg_catalog.pg_my_temp_schema())"
#define PG_TABLE(schema, table)                                                                                        \
    "current_database() AS TABLE_CATALOG, " schema ".nspname AS TABLE_SCHEMA, " table ".relname AS TABLE_NAME"
#define PG_RULE(column)                                                                                                \
    "CASE con." column " WHEN 'c' THEN 'CASCADE' WHEN 'n' THEN 'SET NULL' WHEN 'd' THEN 'SET DEFAULT' "                \
    "WHEN 'r' THEN 'RESTRICT' ELSE 'NO ACTION' END"
