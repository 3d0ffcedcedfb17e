#pragma once
// Which operation each name of the menu table reaches. Interface thread.

class ChildWindow;
class mdiMother;

using MainOperation = void (mdiMother::*)();
using ChildOperation = void (ChildWindow::*)();

MainOperation FindMainOperation(const char *name);   // null for an unknown name
ChildOperation FindChildOperation(const char *name); // of the child protocol, without arguments
