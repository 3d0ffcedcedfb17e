#pragma once
// Bytes as text: what is valid UTF-8, and Windows-1252 turned into it. Any thread.

#include <QByteArray>
#include <QByteArrayView>

bool IsAscii(QByteArrayView bytes);
bool IsUtf8(QByteArrayView bytes); // without surrogates and overlong forms
QByteArray Utf8OfWindows1252(QByteArrayView bytes);
