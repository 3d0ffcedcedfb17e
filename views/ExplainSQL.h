#pragma once
// The execution plan of a text: each of its statements gets a window of its own.
//
// Asked on a connection of its own with "SET SHOWPLAN_All ON", through PLAN_TABLE where the connection string says
// Oracle. Where a server refuses the first and its family has words of its own, those are asked on the current
// connection, whose temporary tables count. A statement that nobody can explain is told in a box, and its window says
// what to look at. Escape ends it. Interface thread; nothing raises.

#include <QString>

void ExplainSQL(const QString &SQLText);
