// Help: F1 goes to the widget with the focus first; where nobody takes it, the manual opens.

#include "app/frmHelp.h"
#include "app/mdiMother.h"
#include <QApplication>
#include <QKeyEvent>

void mdiMother::mnuShowHelp()
{
    QPointer<QWidget> target = QApplication::focusWidget();
    if (!target || target->window() != this)
        target = this;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(target, &press); // travels up to this window when nobody takes it
    if (!target)
        return;
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(target, &release);
}

void mdiMother::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F1 || event->modifiers() != Qt::NoModifier) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    event->accept();
    auto *help = findChild<frmHelp *>(QString(), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new frmHelp(this);
    help->ShowPage();
}
