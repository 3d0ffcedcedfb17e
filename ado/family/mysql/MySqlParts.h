#pragma once
// What the sources of MySQL's and MariaDB's family share.

#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

namespace ADODB {

std::span<const CatalogueQuery> MySqlObjects();
std::span<const CatalogueQuery> MySqlQueries();
std::span<const Literal> MySqlLiterals();
std::span<const TypeRow> MySqlTypes();
std::span<const TypeName> MySqlTypeNames();
extern const char kMySqlWords[];

} // namespace ADODB
