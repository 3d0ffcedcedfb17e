#pragma once
// The texts of a chart, cut to the room that they have. Any thread; nothing raises.

#include "views/logic/ChartLayout.h"

// One line: control characters become blanks, and what no chart has room for is left off.
QString FlatText(const QString &text);
// The text, or as much of its beginning as fits with dots behind it; "" when not even one character does.
QString CutToFit(const QString &text, double width, ChartFace face, const ChartMeasure &measure);
// Lines parted at blanks; the last of them is cut.
QStringList WrapToFit(const QString &text, double width, int lines, ChartFace face, const ChartMeasure &measure);
