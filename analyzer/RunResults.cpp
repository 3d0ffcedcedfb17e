#include "analyzer/RunResults.h"

#include "frame/Shell.h"
#include "views/frmHirarchy.h"
#include <QMdiSubWindow>

namespace {

// The frame that the work area puts round a child; the child itself where there is none.
QWidget *Frame(QWidget *child)
{
    auto *frame = qobject_cast<QMdiSubWindow *>(child->parentWidget());
    return frame ? static_cast<QWidget *>(frame) : child;
}

void MakeNormal(QWidget *frame)
{
    if (frame->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized))
        frame->showNormal();
}

} // namespace

void RunResults::Show(const RunStep &step, const ADODB::ConnectionPtr &connection, const QString &caption)
{
    const bool reused = step.target == RunTarget::ReusedWindow;
    frmHirarchy *result = reused ? m_ResultWindow.data() : nullptr;
    if (!result) {
        result = new frmHirarchy;
        Shell::Current().AddChild(result);
        if (reused)
            m_ResultWindow = result;
    }
    if (reused)
        ShareWorkArea(result);
    result->KillOnError = false;
    result->ClearForRun();
    result->SetCallerSQLForm(m_owner);
    if (Multi && step.target == RunTarget::NewWindow) {
        Frame(result)->showMinimized(); // and stays so when its rows come
        Frame(result)->raise();         // in sight, also where this window has the whole work area
    }
    result->AppendMessage(QStringLiteral("GO"), QStringLiteral("Log"), true);
    result->AppendMessage(step.sql, QStringLiteral("Log"), true);
    result->ShowRec(step.sql, connection, caption);
}

bool RunResults::Stop()
{
    bool any = false;
    for (ChildWindow *child : Shell::Current().Children()) {
        auto *result = qobject_cast<frmHirarchy *>(child);
        if (!result || result->CallerSQLForm() != m_owner || !result->IsRunning())
            continue;
        result->StopRun();
        any = true;
    }
    return any;
}

// Both windows in their normal state; with the split this one above the result.
void RunResults::ShareWorkArea(frmHirarchy *result)
{
    QWidget *mine = Frame(m_window);
    QWidget *others = Frame(result);
    MakeNormal(mine);
    MakeNormal(others);
    others->raise(); // it may have been covered since the last run; the keyboard stays here
    if (!Split)
        return;
    const QRect area = Shell::Current().ClientArea();
    const int half = area.height() / 2;
    mine->setGeometry(0, 0, area.width(), half);
    others->setGeometry(0, half, area.width(), area.height() - half);
}
