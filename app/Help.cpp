// The keys that nobody takes. Help: F1, and "Contents", go to the widget with the focus first; where nobody takes them,
// the manual opens at the page of the active window. Shift+F1 opens it also from an editor, which has a use of its own
// for F1.

#include "app/MainCommands.h"
#include "app/WorkArea.h"
#include "app/frmHelp.h"
#include "app/mdiMother.h"
#include "frame/ChildWindow.h"
#include <QApplication>
#include <QKeyEvent>

void ShowHelp(mdiMother &window)
{
    QPointer<QWidget> target = QApplication::focusWidget();
    if (!target || target->window() != &window)
        target = &window;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(target, &press); // travels up to this window when nobody takes it
    if (!target)
        return;
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(target, &release);
}

void mdiMother::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !Area->isAncestorOf(QApplication::focusWidget()))
        return Area->FocusActive(); // back from the bars
    if (event->key() != Qt::Key_F1 ||
        (event->modifiers() != Qt::NoModifier && event->modifiers() != Qt::ShiftModifier)) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    event->accept();
    ShowManual();
}

void mdiMother::ShowManual(const QString &page)
{
    auto *help = findChild<frmHelp *>(QString(), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new frmHelp(this);
    const ChildWindow *active = ActiveChild();
    help->ShowPage(!page.isEmpty() ? page : frmHelp::PageOf(active ? active->FormName() : QString()));
}
