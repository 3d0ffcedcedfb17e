#include "ado/odbc/HeldRows.h"

namespace ADODB::Odbc {

HeldRows::HeldRows(std::vector<ColumnInfo> columns, std::vector<ColumnStore> stores)
    : m_columns(std::move(columns)), m_stores(std::move(stores))
{
}

qint64 HeldRows::Fetch(std::vector<ColumnStore> &columns, qint64 maxRows)
{
    const qint64 size = m_stores.empty() ? 0 : m_stores.front().Size();
    const qint64 end = qMin(size, m_next + maxRows);
    const qint64 rows = end - m_next;
    for (size_t column = 0; column < m_stores.size(); ++column)
        for (qint64 row = m_next; row < end; ++row)
            columns[column].Append(m_stores[column].At(row));
    m_next = end;
    return rows;
}

std::unique_ptr<HeldRows> HeldRows::ReadAll(ResultSet &rows)
{
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : rows.Columns())
        stores.emplace_back(column.Type);
    while (rows.Fetch(stores, 4096) > 0) {
    }
    return std::make_unique<HeldRows>(rows.Columns(), std::move(stores));
}

} // namespace ADODB::Odbc
