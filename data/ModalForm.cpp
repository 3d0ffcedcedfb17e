#include "data/ModalForm.h"
#include "controls/Skin.h"
#include "data/Shell.h"
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
}
