#include "ado/odbc/OdbcRows.h"

namespace ADODB::Odbc {

namespace {

constexpr qint64 kBlockRows = 1000;
constexpr qint64 kBlockBytes = 16 << 20;
constexpr qint64 kWidestCell = 32768;    // wider cells are read one by one even when there are many
constexpr qint64 kWholeBytes = 64 << 20; // of cells read again, before rows are handed on

} // namespace

OdbcRows::OdbcRows(std::shared_ptr<Link> link, Handle statement, const std::vector<ColumnPlan> &columns)
    : m_link(std::move(link)), m_statement(std::move(statement))
{
    SQLSMALLINT count = 0;
    ODBC_CALL(SQLNumResultCols, m_statement, &count);
    for (int column = 1; column <= count; ++column) {
        Bound bound;
        bound.Plan =
            size_t(column) <= columns.size() ? columns[size_t(column) - 1] : Describe(*m_link, m_statement, column);
        bound.Width = bound.Plan.Width;
        m_columns.push_back(bound.Plan.Info);
        // Where a cell cannot be read again, one column without a bound makes the whole result be read cell by cell.
        if (m_link->Of().Again == ReRead::Columns && bound.Plan.FullWidth == 0)
            m_byCell = true;
        m_bound.push_back(std::move(bound));
    }
}

OdbcRows::~OdbcRows()
{
    if (!m_link->IsOpen())
        m_statement.Forget(); // went with its connection
}

Handle OdbcRows::TakeStatement()
{
    Unbind();
    return std::move(m_statement);
}

void OdbcRows::Fail()
{
    throw m_link->Failure(m_statement, "SQLFetch");
}

SQLRETURN OdbcRows::Check(SQLRETURN result)
{
    if (result != SQL_SUCCESS && result != SQL_SUCCESS_WITH_INFO && result != SQL_NO_DATA)
        Fail();
    return result;
}

void OdbcRows::Bind()
{
    qint64 rowBytes = 1;
    for (const Bound &bound : m_bound)
        rowBytes += bound.Width + qint64(sizeof(SQLLEN));
    m_blockRows = qBound<qint64>(1, kBlockBytes / rowBytes, kBlockRows);
    m_status.resize(size_t(kBlockRows));
    const SQLHANDLE statement = m_statement.Get();
    Check(ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_ROW_ARRAY_SIZE, AsPointer(m_blockRows), 0));
    Check(ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_ROW_STATUS_PTR, static_cast<SQLPOINTER>(m_status.data()), 0));
    Check(ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_ROWS_FETCHED_PTR, static_cast<SQLPOINTER>(&m_got), 0));
    SQLUSMALLINT number = 0;
    for (Bound &bound : m_bound) {
        if (!bound.Data)
            bound.Data = std::make_unique_for_overwrite<char[]>(size_t(bound.Width * m_blockRows));
        if (!bound.Length)
            bound.Length = std::make_unique<SQLLEN[]>(size_t(kBlockRows));
        Check(ODBC_TRY(SQLBindCol, statement, ++number, bound.Plan.CType, static_cast<SQLPOINTER>(bound.Data.get()),
                       SQLLEN(bound.Width), bound.Length.get()));
    }
    m_isBound = true;
}

void OdbcRows::Unbind()
{
    if (!m_isBound)
        return;
    m_isBound = false;
    ODBC_TRY(SQLFreeStmt, m_statement.Get(), SQLUSMALLINT(SQL_UNBIND));
    ODBC_TRY(SQLSetStmtAttr, m_statement.Get(), SQL_ATTR_ROW_STATUS_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, m_statement.Get(), SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, m_statement.Get(), SQL_ATTR_ROW_ARRAY_SIZE, AsPointer(1), 0);
}

void OdbcRows::Widen()
{
    bool changed = false;
    for (Bound &bound : m_bound) {
        if (bound.Misses > 8 + qint64(m_got) / 64 && bound.Longest <= kWidestCell) {
            bound.Width = qMin(bound.Longest + bound.Longest / 4 + 2, kWidestCell + 1);
            changed = true;
        }
        bound.Misses = bound.Longest = 0;
    }
    if (!changed)
        return;
    for (Bound &bound : m_bound)
        bound.Data.reset();
    m_isBound = false;
}

bool OdbcRows::NextBlock()
{
    m_whole.clear();
    m_blockStart += qint64(m_got);
    Widen();
    if (!m_isBound)
        Bind();
    m_got = 0;
    m_next = 0;
    const Link::Running running(*m_link, m_statement, true);
    const SQLRETURN result =
        m_moved ? ODBC_TRY(SQLFetchScroll, m_statement.Get(), SQLSMALLINT(SQL_FETCH_ABSOLUTE), SQLLEN(m_blockStart))
                : ODBC_TRY(SQLFetch, m_statement.Get());
    m_moved = false;
    if (Check(result) == SQL_NO_DATA)
        m_got = 0;
    for (SQLULEN row = 0; row < m_got; ++row)
        if (m_status[row] == SQL_ROW_ERROR)
            Fail();
    return m_got > 0;
}

QByteArray OdbcRows::ReadCell(int column, qint64 known)
{
    const ColumnPlan &plan = m_bound[size_t(column)].Plan;
    const qint64 ending = plan.CType == SQL_C_CHAR ? 1 : 0;
    QByteArray value;
    qint64 room = qMax<qint64>(known, 4096) + ending;
    for (;;) {
        const qint64 had = value.size();
        value.resize(had + room);
        SQLLEN left = 0;
        const SQLRETURN result = Check(ODBC_TRY(SQLGetData, m_statement.Get(), SQLUSMALLINT(column + 1), plan.CType,
                                                static_cast<SQLPOINTER>(value.data() + had), SQLLEN(room), &left));
        if (result == SQL_NO_DATA || left == SQL_NULL_DATA) {
            value.resize(had);
            return left == SQL_NULL_DATA && had == 0 ? QByteArray() : value;
        }
        if (left != SQL_NO_TOTAL && left <= room - ending) {
            value.resize(had + left);
            return value.isNull() ? QByteArray("") : value;
        }
        value.resize(had + room - ending);
        room = (left == SQL_NO_TOTAL ? qMin<qint64>(room * 2, 8 << 20) : left - (room - ending)) + ending;
    }
}

qint64 OdbcRows::RereadWhatDidNotFit(qint64 rows)
{
    const int count = int(m_bound.size());
    qint64 held = 0;
    for (qint64 row = m_next; row < m_next + rows; ++row) {
        bool positioned = false;
        for (int column = 0; column < count; ++column) {
            Bound &bound = m_bound[size_t(column)];
            const SQLLEN length = bound.Length[size_t(row)];
            if (!bound.Plan.IsVariable() || (length >= 0 && length <= bound.Plan.Room(bound.Width)) ||
                length == SQL_NULL_DATA || m_whole.contains(row * count + column))
                continue;
            if (m_link->Of().Again == ReRead::Columns)
                throw Error(Fault::LongerValue, {bound.Plan.Info.Name});
            if (!positioned && m_link->Of().Again == ReRead::SetPos) {
                Check(ODBC_TRY(SQLSetPos, m_statement.Get(), SQLSETPOSIROW(row + 1), SQLUSMALLINT(SQL_POSITION),
                               SQLUSMALLINT(SQL_LOCK_NO_CHANGE)));
            } else if (!positioned) {
                const SQLULEN got = m_got;
                Unbind();
                Check(ODBC_TRY(SQLFetchScroll, m_statement.Get(), SQLSMALLINT(SQL_FETCH_ABSOLUTE),
                               SQLLEN(m_blockStart + row)));
                m_got = got;
                m_moved = true;
            }
            positioned = true;
            QByteArray whole = ReadCell(column, length);
            held += whole.size();
            ++bound.Misses;
            bound.Longest = qMax<qint64>(bound.Longest, whole.size());
            m_whole.emplace(row * count + column, std::move(whole));
        }
        if (held > kWholeBytes)
            return row + 1 - m_next;
    }
    return rows;
}

void OdbcRows::Deliver(std::vector<ColumnStore> &columns, qint64 rows)
{
    const int count = int(m_bound.size());
    for (int column = 0; column < count; ++column) {
        const Bound &bound = m_bound[size_t(column)];
        ColumnStore &store = columns[size_t(column)];
        const CellKind kind = bound.Plan.Kind;
        const SQLLEN *length = bound.Length.get() + m_next;
        const char *data = bound.Data.get() + m_next * bound.Width;
        if (kind == CellKind::Int64) {
            store.AppendInt64Block(reinterpret_cast<const qint64 *>(data), length, rows);
            continue;
        }
        if (kind == CellKind::Double) {
            store.AppendDoubleBlock(reinterpret_cast<const double *>(data), length, rows);
            continue;
        }
        const bool isVariable = bound.Plan.IsVariable();
        const qint64 room = bound.Plan.Room(bound.Width);
        for (qint64 row = 0; row < rows; ++row, data += bound.Width) {
            if (length[row] == SQL_NULL_DATA) {
                store.AppendNull();
            } else if (!isVariable || (length[row] >= 0 && length[row] <= room)) {
                AppendCell(store, kind, data, length[row]);
            } else {
                const QByteArray &whole = m_whole.at((m_next + row) * count + column);
                AppendCell(store, kind, whole.constData(), whole.size());
            }
        }
    }
    m_next += rows;
}

qint64 OdbcRows::FetchByCell(std::vector<ColumnStore> &columns, qint64 maxRows)
{
    qint64 rows = 0;
    for (qint64 bytes = 0; rows < maxRows && bytes < kWholeBytes; ++rows) {
        m_link->RaiseIfCancelled();
        const Link::Running running(*m_link, m_statement, true);
        if (Check(ODBC_TRY(SQLFetch, m_statement.Get())) == SQL_NO_DATA) {
            m_end = true;
            EndOfRows();
            break;
        }
        for (size_t column = 0; column < m_bound.size(); ++column) {
            const ColumnPlan &plan = m_bound[column].Plan;
            if (plan.IsVariable()) {
                const QByteArray value = ReadCell(int(column), plan.FullWidth);
                bytes += value.size();
                if (value.isNull())
                    columns[column].AppendNull();
                else
                    AppendCell(columns[column], plan.Kind, value.constData(), value.size());
                continue;
            }
            alignas(8) char fixed[32] = {};
            SQLLEN length = 0;
            Check(ODBC_TRY(SQLGetData, m_statement.Get(), SQLUSMALLINT(column + 1), plan.CType,
                           static_cast<SQLPOINTER>(fixed), SQLLEN(sizeof fixed), &length));
            if (length == SQL_NULL_DATA)
                columns[column].AppendNull();
            else
                AppendCell(columns[column], plan.Kind, fixed, length);
        }
    }
    return rows;
}

// An error that the server met behind the last row comes with the next result.
void OdbcRows::EndOfRows()
{
    if (!m_link->Of().ManyResults || m_leaveFurther)
        return;
    Unbind();
    while (Check(ODBC_TRY(SQLMoreResults, m_statement.Get())) != SQL_NO_DATA) {
    }
}

qint64 OdbcRows::Fetch(std::vector<ColumnStore> &columns, qint64 maxRows)
{
    if (m_end || !m_link->IsOpen() || !m_statement)
        return 0;
    if (m_byCell)
        return FetchByCell(columns, maxRows);
    qint64 delivered = 0;
    while (delivered < maxRows) {
        m_link->RaiseIfCancelled();
        if (m_next >= qint64(m_got) && !NextBlock()) {
            m_end = true;
            EndOfRows();
            break;
        }
        const qint64 wanted = qMin(maxRows - delivered, qint64(m_got) - m_next);
        const qint64 rows = RereadWhatDidNotFit(wanted);
        Deliver(columns, rows);
        delivered += rows;
        if (rows < wanted)
            break; // long cells: what is there goes on first
    }
    return delivered;
}

} // namespace ADODB::Odbc
