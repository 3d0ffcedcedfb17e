#pragma once
// What a declared column type of SQLite means here. Total: any text gives a type. Pure; any thread.

#include "ado/Driver.h"
#include <QByteArrayView>

namespace ADODB {

// Fills type, size, precision and scale from a declaration such as "NUMERIC(12, 2)"; gives false when there is none.
bool SqliteDeclaredType(QByteArrayView declaration, ColumnInfo &column);

} // namespace ADODB
