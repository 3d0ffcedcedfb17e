#pragma once
// Every command of the main window, one row each: the menu item, what a click on it calls and with which number, when
// it is on, its keys, and its button. Menus, popups, toolbars and their states are built from these rows and from
// nothing else; menus show them in the order of the table, toolbars in that of ToolbarTable.
//
// A row is made by one of the functions in CommandTable.cpp and completed by the operations below, each of which gives
// the row with one thing more. A command whose window does not exist yet is marked Later: shown, and never on.

#include "app/SchemaCommands.h"
#include "frame/ChildProtocol.h"
#include "frame/clsMenuSettings.h"
#include <span>

class mdiMother;

enum class Calls
{
    Nothing,   // what it leads to comes later
    Group,     // opens the rows that name it as their parent
    Separator, // between two rows of a menu
    Main,      // a function of the main window's (Main)
    Child,     // that name of the child protocol on the active child (Name, Number)
    Tool,      // ToolBar(Text) on the active child: the key of a button
    Schema,    // an operation of the schema's commands (Schema)
    Rowset,    // a rowset of the schema, shown (Rowset)
    Window,    // a new window of the form Text, on the open connection
    Popup,     // the group Text as a popup, below the button
};

enum class Needs
{
    Nothing,
    Connection, // on while a connection is open
    Setting,    // the active child's menu settings allow it (Setting)
    Answer,     // the active child answers its name
    Toolbar,    // the active child is the window of its toolbar, and its button is on
    Entry,      // it is shown for a stored connection of the side bar
};

inline constexpr char NoMenu[] = "-"; // parent of a row that has no item in a menu

struct CommandRow
{
    const char *Parent = NoMenu; // name of the group it stands in, "" for the menu bar, "popup" for a popup
    const char *Name = "";
    const char *Caption = "";
    Calls Route = Calls::Nothing;

    void (*Main)(mdiMother &) = nullptr;
    ChildName Answer = ChildName::Count;
    int Number = 0;
    const char *Text = "";
    void (SchemaCommands::*Schema)() = nullptr;
    SchemaRow Rowset;

    Needs Need = Needs::Nothing;
    bool clsMenuSettings::*Setting = nullptr;
    bool KeepsState = false; // without a child, and in a popup, it stays as it was
    bool IsLater = false;
    const char *Toolbar = "";   // whose window it is a command of
    const char *Shortcut = "";  // in portable notation
    const char *Hint = "";      // a key that the child itself takes, shown beside the caption
    const char *Status = "";    // in panel 1 while it runs
    const char *ButtonKey = ""; // of its button
    const char *Tip = "";
    bool IsCheck = false;     // the button holds a state
    const char *DropsOf = ""; // the button from which it drops as a further choice, under DropCaption
    const char *DropCaption = "";
    const char *Page = ""; // of the manual; a group's is that of its rows too, unless they name one

    constexpr CommandRow On(Needs need) const;
    constexpr CommandRow Can(bool clsMenuSettings::*setting) const;
    constexpr CommandRow Keeps() const;
    constexpr CommandRow Later() const;
    constexpr CommandRow Of(const char *toolbar) const;
    constexpr CommandRow Key(const char *shortcut) const;
    constexpr CommandRow ChildKey(const char *hint) const;
    constexpr CommandRow Says(const char *status) const;
    constexpr CommandRow Button(const char *key, const char *tip = nullptr) const; // the caption is its tip otherwise
    constexpr CommandRow Check(const char *key, const char *tip = nullptr) const;
    constexpr CommandRow Help(const char *page) const;
    constexpr CommandRow Drops(const char *button, const char *caption = nullptr) const;
};

std::span<const CommandRow> CommandTable();
const CommandRow *FindCommand(const char *name);
QString HelpPageOf(const CommandRow &row); // its own, else its group's, else that of its toolbar's window, else "index"
const CommandRow *FindButton(const char *key); // the command of a button; null for a separator
