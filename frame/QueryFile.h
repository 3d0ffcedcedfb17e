#pragma once
// A query file as text: UTF-8, or, where its bytes are no UTF-8, Windows-1252. A byte order mark is dropped.

#include <QByteArray>
#include <QString>

// The largest file that is read: the editor has to colour all of it.
constexpr qint64 QueryFileLimit = 16 * 1024 * 1024; // bytes

QString DecodeQueryFile(const QByteArray &bytes); // any thread
// Interface thread. The file is read and decoded on a thread of its own: the windows go on painting, the status bar
// says how far it has come, and Escape gives it up, however slow the disk is. False when there is nothing to show;
// `why` then has the words to tell, "" when the user gave up, and `text` is untouched.
bool ReadQueryFile(const QString &path, QString &text, QString &why);
