#pragma once
// A query file as text: UTF-8, or, where its bytes are no UTF-8, Windows-1252. A byte order mark is dropped. Any
// thread.

#include <QByteArray>
#include <QString>

QString DecodeQueryFile(const QByteArray &bytes);
// False when the file cannot be read; `why` then has the system's words and `text` is untouched.
bool ReadQueryFile(const QString &path, QString &text, QString &why);
