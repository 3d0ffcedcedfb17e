#pragma once
// Every window of the program, one row each: how it is made, which names of the child protocol it answers, where it
// first stands, and the manual's page on it. What File and Edit offer for it follows from the names (ChildWindow), its
// toolbar from ToolbarTable. Interface thread; nothing here raises but what a window's making raises.

#include "frame/ChildProtocol.h"
#include <QHash>
#include <functional>
#include <span>

class ChildWindow;
class QWidget;

enum class WindowKind
{
    Child,  // in the work area
    Dialog, // modal, a ModalForm
    Free,   // a window of its own beside the main one
};

enum class Stand
{
    Ground, // three quarters of the work area
    Text,   // its upper half
    Rows,   // its lower half
};

struct WindowRow
{
    const char *Form; // its class
    WindowKind Kind;
    QWidget *(*Make)();      // a new one without a parent; null where it needs what only its caller has
    ChildNames (*Answers)(); // of a child
    const char *Page;        // of the manual
    Stand Place;
};

std::span<const WindowRow> WindowTable();
const WindowRow *FindWindow(const QString &form);

// A new child in the work area, not yet shown; null for a form that is none.
ChildWindow *OpenChild(const QString &form);
// A new Analyzer, likewise, open on that stored connection; "" makes a scratch window.
ChildWindow *OpenAnalyzer(const QString &connectionName);
// The text of a child that holds one, and the text set and coloured; any other child, or null: "", and nothing.
QString TextOf(ChildWindow *child);
void SetTextOf(ChildWindow *child, const QString &text);

// How tests put windows of their own in the place of a form's. Empty in the program.
using ChildMaker = std::function<ChildWindow *()>;
QHash<QString, ChildMaker> &MadeInstead();
