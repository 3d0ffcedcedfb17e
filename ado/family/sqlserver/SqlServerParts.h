#pragma once
// What SQL Server's sources share.

#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

namespace ADODB {

std::span<const CatalogueQuery> SqlServerQueries();
std::span<const Literal> SqlServerLiterals();
std::span<const TypeRow> SqlServerTypes();
std::span<const TypeName> SqlServerTypeNames();
extern const char kSqlServerWords[];

} // namespace ADODB
