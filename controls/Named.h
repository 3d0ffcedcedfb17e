#pragma once
// A widget with its object name, by which tests and style find it, and with what a screen reader says for it, where its
// own text does not.

#include <QString>

template <class Widget> Widget *WithName(Widget *widget, const char *name, const QString &spoken = {})
{
    widget->setObjectName(QLatin1String(name));
    if (!spoken.isEmpty())
        widget->setAccessibleName(spoken);
    return widget;
}
