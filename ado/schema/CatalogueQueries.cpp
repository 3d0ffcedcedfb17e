#include "ado/schema/CatalogueQueries.h"

#include "ado/family/Family.h"

namespace ADODB {

std::vector<const CatalogueQuery *> FindCatalogueQueries(const Family &family, SchemaEnum schema)
{
    std::vector<const CatalogueQuery *> found;
    for (const std::span<const CatalogueQuery> queries : family.Catalogue.Queries)
        for (const CatalogueQuery &query : queries)
            if (query.Schema == schema)
                found.push_back(&query);
    return found;
}

bool HasCatalogueQueries(const Family &family)
{
    return !family.Catalogue.Queries.empty();
}

QString TextOf(const CatalogueQuery &query, Session &session)
{
    const QString text = QString::fromLatin1(query.Select);
    const CatalogueRules &rules = session.Family().Catalogue;
    return rules.Complete ? rules.Complete(text, session) : text;
}

} // namespace ADODB
