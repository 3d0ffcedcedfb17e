#pragma once
// Which columns of a result are the primary key of the table that it writes back to. Whoever has the connection's turn.

#include "ado/Driver.h"
#include <QString>
#include <QStringList>
#include <vector>

namespace ADODB {

// Asks the catalogue for the primary key of `table` (as BaseTableOf gives it) and marks its columns by IsKey, them
// alone; `names` are what the table calls the columns (as BaseColumnsOf gives them). Marks none when the catalogue
// refuses, when the name means several tables, or when a part of the key is not among the columns; leaves the marks as
// they are when the driver has no such catalogue. Never raises: whoever wants the row then goes by the values that it
// had.
void MarkKey(Session &session, const QString &table, const QStringList &names, std::vector<ColumnInfo> &columns);

} // namespace ADODB
