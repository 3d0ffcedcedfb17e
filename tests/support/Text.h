#pragma once
// S("..."): a text of the tests, given in UTF-8.

#include <QString>

inline QString S(const char *text)
{
    return QString::fromUtf8(text);
}
