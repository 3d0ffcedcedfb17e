#pragma once
// One of each window class of the program, for the tests that walk them all: those of WindowTable, and those that are
// made of something.

#include "app/WindowTable.h"
#include "tests/controls/MakeRecordset.h"
#include "views/drReport.h"
#include <functional>
#include <memory>
#include <vector>

struct AnyWindow
{
    const char *Name;
    std::function<QWidget *()> Make;
};

inline std::vector<AnyWindow> EveryWindow()
{
    std::vector<AnyWindow> windows = {
        {"drReport", [] { return new drReport(MakeRows(3), {}, QStringLiteral("SQL: select 1")); }}};
    for (const WindowRow &row : WindowTable())
        if (row.Make)
            windows.push_back({row.Form, [&row] {
                                   QWidget *window = row.Make();
                                   window->setAttribute(Qt::WA_DeleteOnClose, false);
                                   return window;
                               }});
    return windows;
}
