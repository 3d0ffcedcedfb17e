#include "app/ToolbarTable.h"
#include <cstring>

// "SQLS" and "SQLS0" are two separators side by side, drawn as one; the same for the diagram's.
static constexpr const char *s_sql[] = {
    "SQLS",      "SQLS0",    "SQLRun", "SQLTrans", "SQLWiz",   "SQLExplain", "SQLS1",     "SQLSyntax",
    "SQLParser", "SQLBrake", "SQLVBS", "SQLS2",    "SQLTabIn", "SQLTabOut",  "SQLCommIn", "SQLCommOut",
    "SQLUCase",  "SQLLCase", "SQLS3",  "SQLMulti", "SQLSplit", "SQLRefresh",
};
static constexpr const char *s_diagram[] = {
    "DTBS",     "DTBS0", "DTBTable", "DTBLinked", "DTBAll", "DTBS2",  "DTBRemove",
    "DTBClear", "DTBS3", "DTBB2F",   "DTBS2B",    "DTBS4",  "DTBB&W",
};

static constexpr ToolbarRow s_toolbarRows[] = {
    {"SQL", "SQL", "frmSQL", 1, s_sql},
    {"DTB", "Diagram", "frmDiagram", 2, s_diagram},
};

std::span<const ToolbarRow> ToolbarTable()
{
    return s_toolbarRows;
}

const ToolbarRow *FindToolbar(const char *key)
{
    for (const ToolbarRow &row : s_toolbarRows)
        if (!std::strcmp(row.Key, key))
            return &row;
    return nullptr;
}
