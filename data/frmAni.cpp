#include "data/frmAni.h"
#include "controls/BusyIndicator.h"
#include "controls/Skin.h"
#include <QHBoxLayout>
#include <QLabel>

frmAni::frmAni(QWidget *parent) : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowTitleHint)
{
    setWindowTitle(QStringLiteral("Status"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_busy = new BusyIndicator(this);
    auto *text =
        new QLabel(QStringLiteral("Please wait while Brindlewick attempts to connect to the database..."), this);
    text->setObjectName(QStringLiteral("lblText"));
    text->setWordWrap(true);
    text->setMinimumWidth(280);
    setAccessibleName(text->text());
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(16, 16, 16, 16);
    row->setSpacing(16);
    row->addWidget(m_busy);
    row->addWidget(text, 1);
    resize(400, heightForWidth(400) > 0 ? heightForWidth(400) : sizeHint().height());
}

void frmAni::showEvent(QShowEvent *event)
{
    ApplySkin(this);
    // In the upper part of its owner: a login that comes up meanwhile stands in the middle.
    if (const QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr) {
        const QRect room = owner->geometry();
        move(room.center().x() - width() / 2, room.top() + room.height() / 5);
    }
    m_busy->Play();
    QWidget::showEvent(event);
}

void frmAni::hideEvent(QHideEvent *event)
{
    m_busy->Stop();
    QWidget::hideEvent(event);
}
