#pragma once
// The line end of the program's texts.

#include <QString>

inline const QString kCrLf = QStringLiteral("\r\n");
