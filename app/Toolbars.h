#pragma once
// Builds the command bar from its tables, and locks and unlocks the toolbars that belong to a form. Interface thread.

class ChildWindow;
class CommandBar;
struct ToolbarRow;

void BuildMainToolbar(CommandBar &bar); // "MainTB": a button for each fixed entry of the side bar
void BuildToolbar(CommandBar &bar, const ToolbarRow &toolbar); // once; a second call changes nothing

// A toolbar is shown from the first window of its form on, and its buttons are on only while such a window is active.
void LockToolbars(CommandBar &bar, const ChildWindow *active);
