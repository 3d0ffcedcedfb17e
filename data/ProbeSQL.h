#pragma once
// A statement tried on the current connection: its recordset, or null on any error, silently. Interface thread.

#include "ado/Recordset.h"
#include <QString>

ADODB::RecordsetPtr ProbeSQL(const QString &SQLText);
