#pragma once
// Each family's one object, by the folder that makes it. For the list in Families.cpp alone.

#include "ado/family/Family.h"

namespace ADODB {

const Family &SqliteFamily();
const Family &PostgresFamily();
const Family &MySqlFamily();
const Family &SqlServerFamily();
const Family &OracleFamily();

} // namespace ADODB
