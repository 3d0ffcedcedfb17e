#pragma once
// Whether a server would keep another value than the one that it is given, without a word: past the digits of its
// column it rounds a decimal and cuts a moment. A recordset takes such a value; whoever lets people enter values asks
// here first. Pure; any thread.

#include "ado/Driver.h"

namespace ADODB {

struct Family;

// `value` is as its field has it. Raises adErrDataConversion.
void RaiseIfRounded(const Value &value, const ColumnInfo &column, const Family &family);

} // namespace ADODB
