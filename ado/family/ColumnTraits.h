#pragma once
// What families ask of a column before they compare it. Plain data; any thread.

#include "ado/Driver.h"

namespace ADODB {

inline bool IsTextColumn(const ColumnInfo &column)
{
    switch (column.Type) {
    case adBSTR:
    case adGUID:
    case adChar:
    case adWChar:
    case adVarChar:
    case adVarWChar:
    case adLongVarWChar:
        return true;
    default:
        return false;
    }
}

inline bool IsLongColumn(const ColumnInfo &column)
{
    return (column.Attributes & adFldLong) != 0 && column.Attributes != adFldUnspecified;
}

} // namespace ADODB
