#pragma once
// Where the rows of an Analyzer's runs show: the one result window that a single statement uses again, and new ones for
// the statements of a batch.
//
// The result windows are given `owner`, so that they can lead back to it. Interface thread; nothing raises.

#include "ado/Connection.h"
#include "sqltext/Statements.h"
#include <QPointer>

class ChildWindow;
class ResultOwner;
class frmHirarchy;

class RunResults
{
public:
    RunResults(ChildWindow *window, ResultOwner *owner) : m_window(window), m_owner(owner) {}

    void Show(const RunStep &step, const ADODB::ConnectionPtr &connection, const QString &caption);
    bool Stop(); // whatever still runs in a result window of this owner; false when nothing does

    bool Multi = false; // each run opens its own result window
    bool Split = false; // the result window takes half the work area

private:
    void ShareWorkArea(frmHirarchy *result);

    ChildWindow *m_window;
    ResultOwner *m_owner;
    QPointer<frmHirarchy> m_ResultWindow;
};
