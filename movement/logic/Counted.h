#pragma once
// Numbers in what a window says. Pure; any thread.

#include <QLocale>
#include <QString>

// "1,234,567"
inline QString Grouped(qint64 number)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(number); // the C locale does not group
}
// "1 row", "2,000 rows"
inline QString Counted(qint64 number, const char *word)
{
    return Grouped(number) + u' ' + QString::fromLatin1(word) + (number == 1 ? QString() : QStringLiteral("s"));
}
