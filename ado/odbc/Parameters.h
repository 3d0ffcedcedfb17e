#pragma once
// Values on their way to the server: how a value is bound, one row or an array of rows at a time.

#include "ado/ColumnStore.h"
#include "ado/odbc/Call.h"
#include <vector>

namespace ADODB::Odbc {

struct BoundValue
{
    SQLSMALLINT CType = SQL_C_CHAR;
    SQLSMALLINT SqlType = SQL_VARCHAR;
    SQLULEN Size = 1;
    SQLSMALLINT Digits = 0;
    QByteArray Data; // as the C type lies in memory
    bool IsNull = true;
};

// momentsAsText: for a database that keeps them as text anyway, and whose driver cuts their fractions.
BoundValue Bindable(const Value &value, bool momentsAsText = false);

// Rows [first, first + rows) of one column, laid out for a parameter array. False when the values are of different
// kinds or too wide together; the caller then goes row by row.
struct ParameterArray
{
    BoundValue Shape;
    qint64 Width = 1;
    QByteArray Data;
    std::vector<SQLLEN> Lengths;
    bool Fill(const ColumnStore &column, qint64 first, qint64 rows);
};

// The buffers must outlive the execution.
void BindParameter(const Handle &statement, int number, BoundValue &value, SQLLEN &length);
void BindParameter(const Handle &statement, int number, ParameterArray &array);

} // namespace ADODB::Odbc
