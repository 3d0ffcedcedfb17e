#pragma once
// Rows that are in memory already, handed out as a driver's result.

#include "ado/Driver.h"

namespace ADODB::Odbc {

class HeldRows : public ResultSet
{
public:
    HeldRows(std::vector<ColumnInfo> columns, std::vector<ColumnStore> stores);

    const std::vector<ColumnInfo> &Columns() const override { return m_columns; }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) override;

    // Reads everything that is left of a result.
    static std::unique_ptr<HeldRows> ReadAll(ResultSet &rows);

private:
    std::vector<ColumnInfo> m_columns;
    std::vector<ColumnStore> m_stores;
    qint64 m_next = 0;
};

} // namespace ADODB::Odbc
