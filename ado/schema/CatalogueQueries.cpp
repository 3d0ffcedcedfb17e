#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/SqliteParts.h"

namespace ADODB {

namespace {

struct FamilyQueries
{
    DatabaseFamily Family;
    std::span<const CatalogueQuery> (*Queries)();
};

constexpr FamilyQueries kFamilies[] = {
    {DatabaseFamily::SQLite, SqliteObjects},       {DatabaseFamily::SQLite, SqliteConstraints},
    {DatabaseFamily::PostgreSQL, PostgresObjects}, {DatabaseFamily::PostgreSQL, PostgresQueries},
    {DatabaseFamily::PostgreSQL, PostgresGrants},  {DatabaseFamily::MySQL, MySQLObjects},
    {DatabaseFamily::MySQL, MySQLQueries},         {DatabaseFamily::SQLServer, SqlServerQueries},
    {DatabaseFamily::Oracle, OracleQueries},
};

} // namespace

std::vector<const CatalogueQuery *> FindCatalogueQueries(DatabaseFamily family, SchemaEnum schema)
{
    std::vector<const CatalogueQuery *> found;
    for (const FamilyQueries &row : kFamilies)
        if (row.Family == family)
            for (const CatalogueQuery &query : row.Queries())
                if (query.Schema == schema)
                    found.push_back(&query);
    return found;
}

bool HasCatalogueQueries(DatabaseFamily family)
{
    return !FindCatalogueQueries(family, adSchemaTables).empty();
}

QString TextOf(const CatalogueQuery &query, Session &session)
{
    QString text = QString::fromLatin1(query.Select);
    const QLatin1String masters(SQLITE_MASTERS);
    if (text.contains(masters))
        text.replace(masters, SqliteMasters(session));
    return text;
}

} // namespace ADODB
