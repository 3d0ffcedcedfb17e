#pragma once
// What the menus of the main window may offer while a child is active. All false in a new object.

struct clsMenuSettings
{
    bool CanSave = false;
    bool CanOpen = false;
    bool CanSelectAll = false;
    bool CanReplace = false;
    bool CanCopy = false;
    bool CanCut = false;
    bool CanPaste = false;
    bool CanUndo = false;
    bool CanFind = false;
    bool CanPrint = false;

    bool operator==(const clsMenuSettings &) const = default;
};
