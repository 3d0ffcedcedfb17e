#pragma once
// The command bar's buttons: the main toolbar, and the two toolbars that belong to the Analyzer and to the diagram.
// Other rooms dispatch on the keys. Image keys equal button keys.

#include <span>

enum class ButtonKind
{
    Push,
    Check,
    Separator
};

struct ButtonRow
{
    const char *Key;
    const char *Tooltip; // "" for separators
    ButtonKind Kind;
    bool Later; // leads to a window that does not exist yet: shown, and never enabled
};

struct DropDownRow
{
    const char *Button; // the button it hangs on
    const char *Key;
    const char *Caption;
    bool Later;
};

std::span<const ButtonRow> SQLToolbar();
std::span<const ButtonRow> DiagramToolbar();
std::span<const DropDownRow> DropDowns();

// What marks a toolbar's buttons, so that they are locked and unlocked together.
enum ToolbarTag : int
{
    SQLToolbarTag = 1,
    DiagramToolbarTag = 2
};
