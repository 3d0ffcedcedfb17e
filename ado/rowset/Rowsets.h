#pragma once
// The standard shape of each schema rowset: its columns, their order and types, its restriction columns.
//
// A rowset more is a list of columns and a row of kRowsets in one of the Rowsets*.cpp, and then where its rows come
// from: a row of the family's queries (CatalogueQueries.h), or what is known without asking (OwnRows.h).

#include "ado/Driver.h"
#include "ado/Value.h"
#include <span>

namespace ADODB {

struct RowsetColumn
{
    const char *Name;
    DataTypeEnum Type;
};

struct Rowset
{
    SchemaEnum Schema;
    std::span<const RowsetColumn> Columns;
    std::span<const char *const> Restrictions; // names of columns, in the order in which callers give them
    std::span<const char *const> Order;        // the columns that the rows are sorted by; yes before no
};

std::span<const Rowset> RowsetsOfConstraints();
std::span<const Rowset> RowsetsOfServer();
std::span<const Rowset> RowsetsOfObjects();
const Rowset *FindRowset(int schema);                      // null for one that is not answered
int RowsetIndex(const Rowset &rowset, QStringView column); // from 0, without regard to case; -1 when there is none

std::vector<ColumnInfo> ColumnsOf(const Rowset &rowset);
// Catalogues give numbers as text, flags as numbers, and so on; the rowset has its own types.
Value AsRowsetType(Value value, DataTypeEnum type);

// Collects rows of a rowset by column names; what is not set is null.
class RowsetWriter
{
public:
    explicit RowsetWriter(const Rowset &rowset);
    const Rowset &Shape() const { return m_rowset; }
    void Put(int column, Value value);
    void Put(QStringView column, Value value); // an unknown column is left out
    // Keeps the row if it meets the restrictions (exact text, a null QString is none).
    void EndRow(const QStringList &restrictions);
    void Sort();
    qint64 Size() const { return qint64(m_rows.size()); }
    std::vector<ColumnInfo> Columns() const { return ColumnsOf(m_rowset); }
    std::vector<ColumnStore> Stores() const;

private:
    const Rowset &m_rowset;
    std::vector<Value> m_row;
    std::vector<std::vector<Value>> m_rows;
};

[[noreturn]] void RaiseNotCapable(); // adErrFeatureNotAvailable

} // namespace ADODB
