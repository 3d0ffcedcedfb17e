#include "ado/odbc/BatchStatement.h"
#include "ado/StatementText.h"
#include "ado/odbc/OdbcRows.h"
#include "ado/odbc/Parameters.h"
#include <cmath>
#include <numeric>

namespace ADODB::Odbc {

namespace {

// The links of results are shared; a batch lives inside of one operation of its link.
std::shared_ptr<Link> Borrowed(Link &link)
{
    return std::shared_ptr<Link>(std::shared_ptr<Link>(), &link);
}

} // namespace

qint64 BatchStatement::Outcome::Met() const
{
    return std::accumulate(Counts.begin(), Counts.end(), qint64(0));
}

BatchStatement::BatchStatement(Link &link, const QByteArray &sql) : m_link(&link), m_statement(link.NewStatement())
{
    QByteArray text = sql;
    ODBC_CALL(SQLPrepare, m_statement, reinterpret_cast<SQLCHAR *>(text.data()), SQLINTEGER(text.size()));
}

void BatchStatement::ReadReturned(std::vector<Values> &into)
{
    OdbcRows rows(Borrowed(*m_link), std::move(m_statement));
    rows.LeaveFurtherResults();
    std::vector<ColumnStore> columns;
    for (const ColumnInfo &column : rows.Columns())
        columns.emplace_back(column.Type);
    try {
        while (rows.Fetch(columns, 1000) > 0) {
        }
    } catch (...) {
        m_statement = rows.TakeStatement();
        throw;
    }
    m_statement = rows.TakeStatement();
    for (qint64 row = 0; row < columns.front().Size(); ++row) {
        Values values;
        for (const ColumnStore &column : columns)
            values.push_back(column.At(row));
        into.push_back(std::move(values));
    }
}

// What all results of the execution counted and gave.
void BatchStatement::Collect(Outcome &outcome)
{
    for (;;) {
        SQLSMALLINT columns = 0;
        const SQLRETURN asked = ODBC_TRY(SQLNumResultCols, m_statement.Get(), &columns);
        if (SQL_SUCCEEDED(asked) && columns > 0) {
            const size_t before = outcome.Returned.size();
            ReadReturned(outcome.Returned);
            outcome.Counts.push_back(qint64(outcome.Returned.size() - before));
        } else {
            SQLLEN count = 0;
            if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, m_statement.Get(), &count)))
                outcome.Counts.push_back(qMax<qint64>(0, count));
        }
        const SQLRETURN more =
            m_link->Of().ManyResults ? ODBC_TRY(SQLMoreResults, m_statement.Get()) : SQLRETURN(SQL_NO_DATA);
        if (more == SQL_NO_DATA || (outcome.Failure && !SQL_SUCCEEDED(more)))
            break;
        if (!SQL_SUCCEEDED(more))
            Fail();
    }
    ODBC_TRY(SQLFreeStmt, m_statement.Get(), SQLUSMALLINT(SQL_CLOSE));
}

BatchStatement::Outcome BatchStatement::RunRow(const std::vector<ColumnStore> &columns, qint64 row, size_t first)
{
    std::vector<BoundValue> values;
    std::vector<SQLLEN> lengths(columns.size());
    for (size_t column = first; column < columns.size(); ++column) {
        const Value value = columns[column].At(row);
        if (const double *real = value.As<double>(); real && m_link->Of().LooseTypes && std::isnan(*real))
            throw Error(Fault::WrongValue); // a database of loose types would store a null instead
        values.push_back(Bindable(value, m_link->Of().LooseTypes));
    }
    for (size_t column = 0; column < values.size(); ++column)
        BindParameter(m_statement, int(column) + 1, values[column], lengths[column]);
    SQLRETURN result;
    {
        const Link::Running running(*m_link, m_statement);
        result = ODBC_TRY(SQLExecute, m_statement.Get());
    }
    if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
        Fail();
    Outcome outcome;
    Collect(outcome);
    return outcome;
}

BatchStatement::Outcome BatchStatement::RunBlock(const std::vector<ColumnStore> &columns, qint64 rows)
{
    Outcome outcome;
    std::vector<ParameterArray> arrays(columns.size());
    for (size_t column = 0; column < arrays.size() && outcome.Arrays; ++column)
        outcome.Arrays = arrays[column].Fill(columns[column], 0, rows);
    if (!outcome.Arrays)
        return outcome;
    std::vector<SQLUSMALLINT> status(size_t(rows), SQL_PARAM_UNUSED);
    SQLULEN processed = 0;
    const SQLHANDLE statement = m_statement.Get();
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, static_cast<SQLPOINTER>(status.data()), 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, static_cast<SQLPOINTER>(&processed), 0);
    try {
        ODBC_CALL(SQLSetStmtAttr, m_statement, SQL_ATTR_PARAMSET_SIZE, AsPointer(rows), 0);
        for (size_t column = 0; column < arrays.size(); ++column)
            BindParameter(m_statement, int(column) + 1, arrays[column]);
        const Link::Running running(*m_link, m_statement);
        const SQLRETURN result = ODBC_TRY(SQLExecute, statement);
        if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
            Fail();
        for (const SQLUSMALLINT one : status)
            if (one == SQL_PARAM_ERROR)
                Fail();
    } catch (const Error &error) {
        outcome.Failure = error;
        outcome.InPart = status.front() == SQL_PARAM_SUCCESS || status.front() == SQL_PARAM_SUCCESS_WITH_INFO;
    }
    try {
        Collect(outcome);
    } catch (const Error &error) {
        outcome.Failure = error;
        outcome.InPart = true;
    }
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMSET_SIZE, AsPointer(1), 0);
    ODBC_TRY(SQLFreeStmt, statement, SQLUSMALLINT(SQL_RESET_PARAMS));
    return outcome;
}

std::optional<BatchStatement::Values> BatchStatement::FirstRowOf(const QByteArray &sql)
{
    BatchStatement other(*m_link, sql);
    const Outcome outcome = other.RunRow({}, 0);
    if (outcome.Returned.empty())
        return {};
    return outcome.Returned.front();
}

} // namespace ADODB::Odbc
