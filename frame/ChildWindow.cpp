#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

ChildWindow::ChildWindow(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

QString ChildWindow::FormName() const
{
    return QString::fromLatin1(metaObject()->className());
}

ChildNames ChildWindow::Answers() const
{
    return {};
}

bool ChildWindow::Offers(const QString &name) const
{
    return Answers().List().contains(name);
}

clsMenuSettings ChildWindow::MenuSettings() const
{
    const ChildNames names = Answers();
    clsMenuSettings can;
    can.CanSave = names.Has(ChildName::mnuSave);
    can.CanOpen = names.Has(ChildName::mnuOpen);
    can.CanSelectAll = names.Has(ChildName::mnuSelectAll);
    can.CanReplace = names.Has(ChildName::mnuReplace);
    can.CanCopy = names.Has(ChildName::mnuCopy);
    can.CanCut = names.Has(ChildName::mnuCut);
    can.CanPaste = names.Has(ChildName::mnuPaste);
    can.CanUndo = names.Has(ChildName::mnuUndo);
    can.CanFind = names.Has(ChildName::mnuFind);
    can.CanPrint = names.Has(ChildName::mnuPrint);
    return can;
}

void ChildWindow::ShowChild()
{
    if (!parentWidget() && !isVisible())
        Shell::Current().AddChild(this);
    show();
    auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget());
    if (!frame) {
        raise();
        activateWindow();
        return;
    }
    frame->show();
    if (QMdiArea *area = frame->mdiArea())
        area->setActiveSubWindow(frame);
}

void ChildWindow::CloseChild()
{
    if (auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget()))
        frame->close();
    else
        close();
}

void ChildWindow::closeEvent(QCloseEvent *event)
{
    if (!m_unloaded) {
        m_unloaded = true;
        Unload();
    }
    event->accept();
}

// What a control leaves unanswered ends here: the ground below the children has a menu of its own.
void ChildWindow::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
}

void ChildWindow::Activated() {}
void ChildWindow::Deactivated() {}
void ChildWindow::Unload() {}

void ChildWindow::mnuCopy() {}
void ChildWindow::mnuCut() {}
void ChildWindow::mnuPaste() {}
void ChildWindow::mnuUndo() {}
void ChildWindow::mnuSelectAll() {}
void ChildWindow::mnuFind() {}
void ChildWindow::mnuReplace() {}
void ChildWindow::mnuOpen() {}
void ChildWindow::mnuSave() {}
void ChildWindow::mnuPrint() {}
void ChildWindow::mnuChart() {}
void ChildWindow::SnapShot() {}
void ChildWindow::Parse(int) {}
void ChildWindow::InsertString(const QString &) {}
void ChildWindow::ChangeChartType(int) {}
void ChildWindow::ChangeTitle() {}
void ChildWindow::ChangeFootNote() {}
void ChildWindow::mnuClearLog() {}
void ChildWindow::mnuMax_Click() {}
void ChildWindow::mnuMin_Click() {}
void ChildWindow::mnuAvg_Click() {}
void ChildWindow::mnuSum_Click() {}
void ChildWindow::mnuFitColumns() {}
void ChildWindow::mnuAddTable() {}
void ChildWindow::ToolBar(const QString &) {}
void ChildWindow::DynaMenuItemClick(const QString &, const QString &) {}

void ChildWindow::SaveState() {}
void ChildWindow::RefreshForm(const QString &) {}
