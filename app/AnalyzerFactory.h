#pragma once
// How the main window makes the windows that a connection opens. main.cpp installs the real ones (InstallAnalyzer);
// tests put in their own. Interface thread.

#include <QString>
#include <functional>

class ChildWindow;

struct AnalyzerFactory
{
    // A new Analyzer of that stored connection, loaded and in the work area, not yet shown. "" makes a scratch window,
    // which loads and keeps no text.
    std::function<ChildWindow *(const QString &connectionName)> Create;
    // Its text, and the text set and coloured.
    std::function<QString(ChildWindow *)> Text;
    std::function<void(ChildWindow *, const QString &)> SetText;
    // What its save dialog offers.
    std::function<void(ChildWindow *, const QString &filter)> SetFileFilter;
    // The rows that a result window shows; -1 while it waits, and for any other kind of window.
    std::function<qint64(ChildWindow *)> ResultRows;

    static AnalyzerFactory &Current();
};
