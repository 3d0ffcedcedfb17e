#pragma once
// Numbers in what a window says. Pure; any thread.

#include <QString>

// "1,234,567", whatever the desktop's own way is: the texts around it are English.
inline QString Grouped(qint64 number)
{
    QString text = QString::number(number);
    for (qsizetype at = text.size() - 3; at > (number < 0 ? 1 : 0); at -= 3)
        text.insert(at, u',');
    return text;
}
// "1 row", "2,000 rows"
inline QString Counted(qint64 number, const char *word)
{
    return Grouped(number) + u' ' + QString::fromLatin1(word) + (number == 1 ? QString() : QStringLiteral("s"));
}
