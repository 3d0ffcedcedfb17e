#pragma once
// What Oracle's sources share.

#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

namespace ADODB {

std::span<const CatalogueQuery> OracleQueries();
std::span<const Literal> OracleLiterals();
std::span<const TypeRow> OracleTypes();
std::span<const TypeName> OracleTypeNames();
extern const char kOracleWords[];

} // namespace ADODB
