#include "controls/RedrawLock.h"
#include <QVariant>

namespace {
const char *const depthProperty = "RedrawLockDepth";
}

RedrawLock::RedrawLock(QWidget *widget) : m_widget(widget)
{
    if (!widget)
        return;
    const int depth = widget->property(depthProperty).toInt();
    widget->setProperty(depthProperty, depth + 1);
    if (depth == 0)
        widget->setUpdatesEnabled(false);
}

RedrawLock::~RedrawLock()
{
    Release();
}

void RedrawLock::Release()
{
    QWidget *const widget = m_widget;
    m_widget = nullptr;
    if (!widget)
        return;
    const int depth = widget->property(depthProperty).toInt() - 1;
    widget->setProperty(depthProperty, depth);
    if (depth == 0)
        widget->setUpdatesEnabled(true);
}
