#pragma once
// The rows of one statement, fetched in blocks bound by column.
//
// Short cells land in bound buffers; one that does not fit is read again whole, by the way its driver allows (ReRead),
// so nothing is ever cut silently. A column whose cells often do not fit gets wider buffers.

#include "ado/odbc/Cells.h"
#include <memory>
#include <unordered_map>

namespace ADODB::Odbc {

class OdbcRows : public ResultSet
{
public:
    // `columns`: what they are, where the statement itself does not tell it as it is (MomentsAsText.h).
    OdbcRows(std::shared_ptr<Link> link, Handle statement, const std::vector<ColumnPlan> &columns = {});
    ~OdbcRows() override;

    const std::vector<ColumnInfo> &Columns() const override { return m_columns; }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) override;

    // For a statement with several results: the end of the rows leaves the next result to the caller, who takes the
    // statement back then.
    void LeaveFurtherResults() { m_leaveFurther = true; }
    Handle TakeStatement();

private:
    struct Bound
    {
        ColumnPlan Plan;
        qint64 Width = 0;
        std::unique_ptr<char[]> Data;
        std::unique_ptr<SQLLEN[]> Length;
        qint64 Misses = 0; // cells of this block that did not fit
        qint64 Longest = 0;
    };

    void Bind();
    void Unbind();
    bool NextBlock();                        // false at the end
    qint64 RereadWhatDidNotFit(qint64 rows); // how many of the block's next rows are complete now
    QByteArray ReadCell(int column, qint64 known);
    void Widen();
    void Deliver(std::vector<ColumnStore> &columns, qint64 rows);
    qint64 FetchByCell(std::vector<ColumnStore> &columns, qint64 maxRows);
    [[noreturn]] void Fail();
    SQLRETURN Check(SQLRETURN result);
    void EndOfRows();

    std::shared_ptr<Link> m_link;
    Handle m_statement;
    std::vector<ColumnInfo> m_columns;
    std::vector<Bound> m_bound;
    std::vector<SQLUSMALLINT> m_status;
    std::unordered_map<qint64, QByteArray> m_whole; // cells read again: row of the block * columns + column
    bool m_byCell = false;
    bool m_isBound = false;
    bool m_moved = false; // the cursor stands elsewhere than behind the block
    bool m_end = false;
    bool m_leaveFurther = false;
    qint64 m_blockRows = 0;  // rows asked for at a time
    qint64 m_blockStart = 1; // the block's first row in the result, from 1
    SQLULEN m_got = 0;       // rows in the block
    qint64 m_next = 0;       // the block's first row that has not been delivered
};

} // namespace ADODB::Odbc
