#include "frame/ChildProtocol.h"
#include "frame/ChildWindow.h"

QString ToText(ChildName name)
{
    switch (name) {
#define NAME(name)                                                                                                     \
    case ChildName::name:                                                                                              \
        return QStringLiteral(#name);
        CHILD_PROTOCOL(NAME)
#undef NAME
    case ChildName::Count:
        break;
    }
    return {};
}

QStringList ChildNames::List() const
{
    QStringList names;
    for (int name = 0; name < int(ChildName::Count); ++name)
        if (Has(ChildName(name)))
            names << ToText(ChildName(name));
    return names;
}

void CallChild(ChildWindow &child, ChildName name, int number)
{
    switch (name) {
#define NAME(name)                                                                                                     \
    case ChildName::name:                                                                                              \
        return child.name();
        CHILD_COMMANDS(NAME)
#undef NAME
#define NAME(name)                                                                                                     \
    case ChildName::name:                                                                                              \
        return child.name(number);
        CHILD_NUMBERED(NAME)
#undef NAME
    default:
        break;
    }
}
