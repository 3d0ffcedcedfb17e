#pragma once
// Columns that stand together in many rowsets, in the standard's order, and the restrictions that go with them.

#include "ado/rowset/Rowsets.h"

#define ROWSET_NAME(what)                                                                                              \
    {what "_CATALOG", adVarWChar}, {what "_SCHEMA", adVarWChar},                                                       \
    {                                                                                                                  \
        what "_NAME", adVarWChar                                                                                       \
    }
#define ROWSET_TABLE ROWSET_NAME("TABLE")
#define ROWSET_CONSTRAINT ROWSET_NAME("CONSTRAINT")
#define ROWSET_PROCEDURE ROWSET_NAME("PROCEDURE")
#define ROWSET_COLUMN                                                                                                  \
    {"COLUMN_NAME", adVarWChar}, {"COLUMN_GUID", adGUID},                                                              \
    {                                                                                                                  \
        "COLUMN_PROPID", adUnsignedInt                                                                                 \
    }
#define ROWSET_SIZES                                                                                                   \
    {"CHARACTER_MAXIMUM_LENGTH", adUnsignedInt}, {"CHARACTER_OCTET_LENGTH", adUnsignedInt},                            \
        {"NUMERIC_PRECISION", adUnsignedSmallInt},                                                                     \
    {                                                                                                                  \
        "NUMERIC_SCALE", adSmallInt                                                                                    \
    }

namespace ADODB {

inline constexpr const char *kByTable[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};
inline constexpr const char *kByTableColumn[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "COLUMN_NAME"};
inline constexpr const char *kByConstraint[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME"};

} // namespace ADODB
