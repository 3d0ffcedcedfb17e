#pragma once
// Reads a text file whole: UTF-8, or Windows-1252 when the bytes are no valid UTF-8; a byte order mark is dropped.

#include <QString>

// False with the system's words in `why` when it cannot be read.
bool ReadTextFile(const QString &path, QString &text, QString &why);
