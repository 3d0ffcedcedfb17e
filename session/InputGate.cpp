#include "session/InputGate.h"
#include "session/CloseButton.h"
#include "session/Status.h"
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace {

InputGate *g_innermost = nullptr;
QList<QPointer<QWidget>> g_toClose; // once no gate holds input back

bool IsEscape(const QEvent *event)
{
    return static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape;
}

void CloseLater(QWidget *window)
{
    if (!g_toClose.contains(window))
        g_toClose.append(window);
}

bool IsInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

} // namespace

InputGate::InputGate(PumpInput input, std::function<void()> cancel, QWidget *window)
    : m_input(input), m_cancel(std::move(cancel)), m_window(window), m_modal(QApplication::activeModalWidget()),
      m_popup(QApplication::activePopupWidget()), m_outer(g_innermost)
{
    g_innermost = this;
    qApp->installEventFilter(this);
    StatusBoard::Current().SetStop(m_cancel);
}

InputGate::~InputGate()
{
    qApp->removeEventFilter(this);
    g_innermost = m_outer;
    StatusBoard::Current().SetStop(m_outer ? m_outer->m_cancel : std::function<void()>());
    for (const InputGate *outer = m_outer; outer; outer = outer->m_outer)
        if (outer->m_input != PumpInput::All)
            return;
    for (const QPointer<QWidget> &window : std::exchange(g_toClose, {}))
        if (window)
            QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
}

InputGate *InputGate::ForEscape()
{
    const QWidget *focus = QApplication::focusWidget();
    for (InputGate *gate = g_innermost; gate && focus; gate = gate->m_outer)
        if (gate->m_window && (gate->m_window == focus || gate->m_window->isAncestorOf(focus)))
            return gate;
    return g_innermost;
}

void InputGate::NoteCloseButton(const QObject *watched, const QMouseEvent &event)
{
    QWidget *window = WindowToClose(watched, event);
    if (event.type() == QEvent::MouseButtonPress)
        m_pressed = window;
    else if (event.type() == QEvent::MouseButtonRelease && window && window == m_pressed)
        CloseLater(window);
}

bool InputGate::Holds(QObject *watched) const
{
    if (QApplication::activeModalWidget() != m_modal || QApplication::activePopupWidget() != m_popup)
        return false;
    // Events pass the native window first and reach the widget from there; the Stop control always answers.
    return watched->isWidgetType() && watched->objectName() != QLatin1String("cmdStop");
}

bool InputGate::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool sameDialogs =
        QApplication::activeModalWidget() == m_modal && QApplication::activePopupWidget() == m_popup;
    if ((type == QEvent::KeyPress || type == QEvent::ShortcutOverride) && IsEscape(event) && g_innermost == this &&
        sameDialogs) {
        event->accept();
        if (const InputGate *gate = ForEscape(); type == QEvent::KeyPress && gate->m_cancel)
            gate->m_cancel();
        return true;
    }
    if (m_input == PumpInput::All)
        return false;
    if (type == QEvent::Close && event->spontaneous() && Holds(watched)) {
        event->ignore();
        CloseLater(static_cast<QWidget *>(watched)->window());
        if (m_cancel)
            m_cancel();
        return true;
    }
    if (!IsInput(type) || !(type == QEvent::Shortcut ? sameDialogs : Holds(watched)))
        return false;
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease)
        NoteCloseButton(watched, *static_cast<QMouseEvent *>(event));
    event->accept();
    return true;
}
