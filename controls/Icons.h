#pragma once
// Icons drawn at run time from vectors, so that they are sharp at every scale. Interface thread; nothing raises.

#include <QIcon>
#include <QString>
#include <QStringList>

// A toolbar's image by its button's key: "SQLRun", "DTBTable", "MTBOPEN" or a bare side bar key as "OPEN". A key
// without a drawing gives its first letter in a frame, never an empty icon.
QIcon ToolIcon(const QString &key);
bool HasToolIcon(const QString &key);
QStringList ToolIconKeys();

// A tree's image by its letter: closed folder "C", open folder "R", table "T", view "V", procedure "P", function "N",
// field "F", link "L".
QIcon TreeIcon(const QString &letter);

// A side bar entry's image by number: 7 not connected, 6 connecting, 1 connected; other numbers a plain dot.
QIcon StateIcon(int number);

QIcon AppIcon();
