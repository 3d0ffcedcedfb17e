#pragma once
// PostgreSQL's dates and timestamps in the server's own words.
//
// Its ODBC driver knows the years 1 to 9999 alone: it drops the BC of a date, cuts longer years, and makes an infinity
// the year 9999, and none of the types in which a cell can be fetched tells it. So a query whose result has such
// columns is asked again as a sub-select that casts them to text, and what writes with RETURNING as a WITH in front of
// one. What can stand in neither (a WITH that writes, several statements) is left to the driver, and what the driver
// cannot write is marked (Cells.h).

#include "ado/odbc/Cells.h"
#include <QByteArray>
#include <optional>
#include <vector>

namespace ADODB::Odbc {

struct MomentsAsText
{
    QByteArray Sql;                  // runs in place of the statement
    std::vector<ColumnPlan> Columns; // what the statement itself would have said of them
};

// Prepares the statement, so the server reads and describes it, but runs nothing; none when it has
// no such columns, or cannot stand in a sub-select, or does not even prepare: then running it tells why. Raises when
// it was cancelled, or the server is gone.
std::optional<MomentsAsText> WithMomentsAsText(Link &link, const QByteArray &sql);

} // namespace ADODB::Odbc
