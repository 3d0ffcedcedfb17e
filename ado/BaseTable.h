#pragma once
// Which table a recordset writes back to, and which of its columns a result shows. Pure; any thread.

#include "ado/Driver.h"
#include <QString>
#include <QStringList>
#include <vector>

namespace ADODB {

// The quote inside is doubled; bare where there is no quote.
QString QuotedName(const QString &name, const QString &quote);

// The parts of a dotted name as it is written in a statement, quotes taken off, as the family's catalogue spells them.
QStringList NameParts(const QString &written, const Family &family);

// The one table that the driver tells of the columns, in quotes and with its schema where that is told too: what the
// statement names behind FROM may mean another one by now. Where the driver tells none, or no schema for the same name,
// the table as it is written. Raises an error when there is none, when the columns come from several tables, or when a
// row of the result is no row of a table (joins, groups, unions, DISTINCT, WITH; SQLite's views, which it cannot
// write).
QString BaseTableOf(const QString &source, const std::vector<ColumnInfo> &columns, const QString &quote,
                    const Family &family);

// The table's own name for each column of the result; "" for one that shows none (an expression, whatever its alias
// says) or that another one shows already: it cannot be written.
QStringList BaseColumnsOf(const QString &source, const std::vector<ColumnInfo> &columns, const Family &family);

} // namespace ADODB
