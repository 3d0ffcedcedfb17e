#include "controls/WaitCursor.h"
#include <QGuiApplication>
#include <QVariant>

namespace {
const char *const waitDepthProperty = "WaitCursorDepth";
}

WaitCursor::WaitCursor(QWidget *window) : m_window(window), m_whole(!window)
{
    if (m_whole) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        return;
    }
    const int depth = window->property(waitDepthProperty).toInt();
    window->setProperty(waitDepthProperty, depth + 1);
    if (depth == 0)
        window->setCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    Release();
}

void WaitCursor::Release()
{
    if (!m_held)
        return;
    m_held = false;
    if (m_whole) {
        QGuiApplication::restoreOverrideCursor();
        return;
    }
    if (!m_window)
        return;
    const int depth = m_window->property(waitDepthProperty).toInt() - 1;
    m_window->setProperty(waitDepthProperty, depth);
    if (depth == 0)
        m_window->unsetCursor();
}
