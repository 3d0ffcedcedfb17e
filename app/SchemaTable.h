#pragma once
// The commands that put a schema rowset of the current connection on the screen: menu item, rowset, title, and for
// those that ask for a table first, the field that the chosen table filters.

#include <span>

struct SchemaRow
{
    const char *Menu;
    int Schema;              // number of the rowset
    const char *Title;       // "#TABLE#" in it is replaced by the chosen table
    const char *FilterField; // "" for a command that asks for no table
};

std::span<const SchemaRow> SchemaTable();
const SchemaRow *FindSchemaRow(const char *menu); // null for another item
