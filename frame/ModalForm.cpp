#include "frame/ModalForm.h"
#include "controls/Skin.h"
#include "frame/RememberedSize.h"
#include "frame/Shell.h"
#include <QApplication>
#include <QShowEvent>

namespace {

QWidget *OwnerOf(QWidget *parent)
{
    if (parent)
        return parent;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return Shell::Current().MainWindow();
}

} // namespace

ModalForm::ModalForm(const QString &title, QWidget *parent) : QDialog(OwnerOf(parent))
{
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
    RememberSize(this);
    // Dialogs live on their callers' stack: a window that goes while its dialog is up must not take it along.
    if (QWidget *owner = parentWidget())
        connect(owner, &QObject::destroyed, this, [this] {
            setParent(nullptr, windowFlags());
            reject();
        });
}

void ModalForm::ShowModal()
{
    exec();
}

void ModalForm::Finish()
{
    Cancelled = false;
    accept();
}

void ModalForm::showEvent(QShowEvent *event)
{
    if (!m_shown) {
        m_shown = true;
        ApplySkin(this);
    }
    QDialog::showEvent(event);
    if (QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr) {
        m_middle = owner->geometry().center();
        owner->installEventFilter(this);
    }
}

// A dialog of the first moment is placed while the main window still has its former size: one that stands in the middle
// of its owner stays there.
bool ModalForm::eventFilter(QObject *watched, QEvent *event)
{
    const QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr;
    if (owner && watched == owner && (event->type() == QEvent::Resize || event->type() == QEvent::Move)) {
        constexpr int near = 120; // pixels: Qt places it somewhat above, and it has a frame
        const QPoint former = m_middle;
        m_middle = owner->geometry().center();
        if (isVisible() && m_middle != former && (frameGeometry().center() - former).manhattanLength() < near)
            move(pos() + m_middle - former);
    }
    return QDialog::eventFilter(watched, event);
}
