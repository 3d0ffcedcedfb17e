#pragma once
// The catalogue queries of a family, as OpenSchema asks them. Pure but for TextOf.

#include "ado/Driver.h"
#include "ado/family/CatalogueParts.h"
#include <vector>

namespace ADODB {

// In the order in which they are tried; none for no such notion.
std::vector<const CatalogueQuery *> FindCatalogueQueries(const Family &family, SchemaEnum schema);
bool HasCatalogueQueries(const Family &family);

// The query as the server takes it; some families ask it for more first. Called with the connection's turn held.
QString TextOf(const CatalogueQuery &query, Session &session);

} // namespace ADODB
