#pragma once
// Builds the command bar from its tables, and locks and unlocks the toolbars that belong to a kind of window.
// Interface thread.

class ChildWindow;
class CommandBar;

void BuildMainToolbar(CommandBar &bar); // "MainTB": a button for each fixed entry of the side bar
void BuildSQLToolbar(CommandBar &bar);  // once; a second call changes nothing
void BuildDiagramToolbar(CommandBar &bar);

// A toolbar is shown from the first window of its kind on, and its buttons are on only while such a window is active.
void LockToolbars(CommandBar &bar, const ChildWindow *active);
