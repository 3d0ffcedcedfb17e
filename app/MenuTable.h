#pragma once
// Every menu item of the main window, in the order in which the menus show them, with what a click on it reaches. The
// window's menus are built from these rows and from nothing else.

#include <span>

enum class MenuRoute
{
    Group, // opens the rows that name it as their parent
    Separator,
    Main,   // the main window's own operation of that name
    Child,  // that operation of the child protocol, on the active child
    Parse,  // Parse(kind) on the active child: the operation is the kind
    Schema, // the command of that name on the database's schema
    Tool,   // ToolBar(operation) on the active child: the key of a toolbar button
    Later,  // its window does not exist yet: shown, and disabled
};

struct MenuRow
{
    const char *Parent; // name of the group it stands in, "" for the menu bar; popups have the parent "popup"
    const char *Name;
    const char *Caption;
    MenuRoute Route;
    const char *Operation; // "" for groups and later items
    const char *Shortcut;  // in portable notation, or ""
    const char *Hint;      // a key that the child itself takes, shown beside the caption, or ""
    const char *Status;    // written to panel 1 before the operation runs, or ""
    bool NeedsSchema;      // on only while a connection is open
};

std::span<const MenuRow> MenuTable();
const MenuRow *FindMenuRow(const char *name);
