#include "app/SideBarTable.h"
#include <cstring>

static constexpr SideBarRow s_sideBarRows[] = {
    {"CONN", "New Connection", "Create New Database Connection", "mnuConn"},
    {"RUN", "SQL Analyzer", "Open SQL Analyzer", "mnuSQL"},
    {"OPEN", "Open", "Open", "mnuOpen"},
    {"SAVE", "Save", "Save", "mnuSave"},
    {"PRINT", "Print", "Print", "mnuPrint"},
    {"FIND", "Find", "Search", "mnuFind"},
    {"HELP", "Help", "Help", "mnuShowHelp"},
};

std::span<const SideBarRow> SideBarTable()
{
    return s_sideBarRows;
}

const SideBarRow *FindSideBarRow(const char *key)
{
    for (const SideBarRow &row : s_sideBarRows)
        if (!std::strcmp(row.Key, key))
            return &row;
    return nullptr;
}
