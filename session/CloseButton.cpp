#include "session/CloseButton.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QStyleOptionTitleBar>

// As the toolkit lays out the title.
static bool OnTitleButton(const QMdiSubWindow &window, const QPoint &at)
{
    if (window.isMaximized())
        return false; // its buttons stand in the menu bar
    QStyleOptionTitleBar title;
    title.initFrom(&window);
    title.subControls = QStyle::SC_All;
    title.titleBarFlags = window.windowFlags();
    title.titleBarState = int(window.windowState());
    const QStyle *style = window.style();
    const int border = style->styleHint(QStyle::SH_TitleBar_NoBorder, &title, &window) ? 0 : 4;
    title.rect = QRect(border, border, window.width() - 2 * border,
                       style->pixelMetric(QStyle::PM_TitleBarHeight, &title, &window));
    return style->hitTestComplexControl(QStyle::CC_TitleBar, &title, at, &window) == QStyle::SC_TitleBarCloseButton;
}

// The buttons of a maximised child.
static bool OnMenuBarButton(const QWidget &buttons, const QPoint &at)
{
    QStyleOptionComplex option;
    option.initFrom(&buttons);
    option.subControls = QStyle::SC_All;
    return buttons.style()->hitTestComplexControl(QStyle::CC_MdiControls, &option, at, &buttons) ==
           QStyle::SC_MdiCloseButton;
}

QWidget *WindowToClose(const QObject *watched, const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return nullptr;
    const QPoint at = event.position().toPoint();
    if (const auto *child = qobject_cast<const QMdiSubWindow *>(watched))
        return OnTitleButton(*child, at) ? const_cast<QMdiSubWindow *>(child) : nullptr;
    if (!watched->inherits("QMdi::ControllerWidget"))
        return nullptr;
    const auto *buttons = static_cast<const QWidget *>(watched);
    if (!OnMenuBarButton(*buttons, at))
        return nullptr;
    for (const QMdiArea *area : buttons->window()->findChildren<QMdiArea *>())
        if (QMdiSubWindow *active = area->currentSubWindow(); active && active->isMaximized())
            return active;
    return nullptr;
}
