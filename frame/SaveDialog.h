#pragma once
// What every "Save" of a result window does: ask for the file, ask before it overwrites, write safely, say what fails.

#include "controls/Dialogs.h"
#include <QString>
#include <functional>

class QWidget;

// The chosen path, or "" when the user cancelled or would not overwrite. `icon` is that of the question; most ask
// without.
QString AskSavePath(QWidget *parent, const QString &title, const QString &filter, const QString &defaultExtension = {},
                    int icon = 0);
// Writes a text line by line as UTF-8, each line followed by CR LF; the windows paint meanwhile and Escape gives it up.
bool WriteTextLines(QWidget *parent, const QString &path, qint64 lines,
                    const std::function<QString(qint64 line)> &line);
// Writes the whole text as UTF-8, as it is; the former file stands until the new one is whole. On failure the system's
// words are shown and false is returned.
bool WriteTextFile(QWidget *parent, const QString &path, const QString &text);
