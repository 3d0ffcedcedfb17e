#pragma once
// The toolbars of the command bar that belong to a form: which form, and their buttons in order. What a button is and
// does stands in its row of CommandTable; a key that no row names is a separator. Other rooms dispatch on the keys.
// Image keys equal button keys.

#include <span>

struct ToolbarRow
{
    const char *Key;
    const char *Title;
    const char *Form; // its buttons are on only while such a window is active
    int Mark;         // item data of its live buttons, so that they are locked and unlocked together
    std::span<const char *const> Buttons;
};

std::span<const ToolbarRow> ToolbarTable();
const ToolbarRow *FindToolbar(const char *key);
