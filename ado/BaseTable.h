#pragma once
// Which table a recordset writes back to. Pure; any thread.

#include "ado/Driver.h"
#include <QString>
#include <vector>

namespace ADODB {

QString QuotedName(const QString &name,
                   const QString &quote); // the quote inside is doubled; bare where there is no quote

// The table as the statement names it behind FROM, so with its schema and its quotes; else the one table that the
// driver tells of all columns, quoted. Raises an error when there is none, or when the columns come from several
// tables.
QString BaseTableOf(const QString &source, const std::vector<ColumnInfo> &columns, const QString &quote);

} // namespace ADODB
