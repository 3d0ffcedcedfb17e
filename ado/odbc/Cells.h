#pragma once
// From a result column's description to how it is bound, and from a fetched cell to a typed value in a column store.
//
// A moment that its driver cannot write is marked ("<date outside 0001 to 9999>"): no value is better than a wrong one.
// What does not fit its column's type (a date that no calendar has, a word in a number column of a loosely typed
// database) is kept exactly as the driver wrote it: AppendText.

#include "ado/Driver.h"
#include "ado/odbc/Link.h"

namespace ADODB::Odbc {

// What a cell becomes; which C type it is fetched as goes with it.
enum class CellKind
{
    Int64,
    UInt64,
    Double,
    Bit,  // one byte
    Text, // from here to BoolText fetched as characters
    Decimal,
    IntText, // whole numbers of a loosely typed database
    DoubleText,
    DateText,
    TimeText,
    TimestampText,
    BoolText,
    GuidText,    // in small letters
    DriversDate, // written by a driver that knows the years 1 to 9999 alone
    DriversTimestamp,
    Bytes,
    Date, // the driver's structures
    Timestamp,
};

struct ColumnPlan
{
    ColumnInfo Info;
    CellKind Kind = CellKind::Text;
    SQLSMALLINT CType = SQL_C_CHAR;
    qint64 FullWidth = 0; // bytes that any value of the declared size fits in; 0 when there is no such bound
    qint64 Width = 0;     // bytes bound for a cell at first
    bool IsVariable() const { return CType == SQL_C_CHAR || CType == SQL_C_BINARY; }
    qint64 Room(qint64 width) const { return CType == SQL_C_CHAR ? width - 1 : width; } // for the value itself
};

// True for the kinds of moments that such a driver writes; gives them the kind that reads the server's own text.
bool TakeServersText(ColumnPlan &plan);

ColumnPlan Describe(const Link &link, const Handle &statement, int column); // columns count from 1

// One cell that is not null. `bytes` is the value's length for characters and binary, ignored for the rest.
void AppendCell(ColumnStore &store, CellKind kind, const char *data, qint64 bytes);

} // namespace ADODB::Odbc
