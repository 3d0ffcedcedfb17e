#pragma once
// Where the children of each kind stood last, as the settings keep it: twips, by the window's form name, and whether
// they were maximised. Plain values, no window. Interface thread (the settings are).

#include <QRect>
#include <QString>
#include <optional>

// In pixels of the work area; fitted into a room of that size. Nothing when none is stored or it is damaged.
std::optional<QRect> ReadChildPlace(const QString &form, const QSize &room);
void WriteChildPlace(const QString &form, const QRect &place);

bool ReadChildrenMaximised();
void WriteChildrenMaximised(bool maximised);
