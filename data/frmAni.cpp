#include "data/frmAni.h"
#include "controls/BusyIndicator.h"
#include "controls/Skin.h"
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

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
    resize(400, sizeHint().height());
}

void frmAni::showEvent(QShowEvent *event)
{
    ApplySkin(this);
    m_busy->Play(); // first: it takes room from the text
    resize(width(), std::max(heightForWidth(width()), sizeHint().height()));
    // In the upper part of its owner: a login that comes up meanwhile stands in the middle.
    if (const QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr) {
        const QRect room = owner->geometry();
        move(room.center().x() - width() / 2, room.top() + room.height() / 5);
    }
    QWidget::showEvent(event);
}

void frmAni::hideEvent(QHideEvent *event)
{
    m_busy->Stop();
    QWidget::hideEvent(event);
}
