// One statement run for many rows of parameters.
//
// Where the driver gains by it, a block of rows goes as parameter arrays, all or nothing. When a block fails its rows
// go one by one, so that each refused row is known and the others are kept. PostgreSQL's driver takes a failed block
// back by itself; its savepoints would swallow ours. MariaDB's blocks run under a savepoint or in a transaction of
// their own.
#include "ado/odbc/OdbcSession.h"
#include "ado/odbc/Parameters.h"
#include <exception>

namespace ADODB::Odbc {

namespace {

constexpr qint64 kBlockRows = 1000;

SQLPOINTER Number(qint64 number)
{
    return reinterpret_cast<SQLPOINTER>(number);
}

class Batch
{
public:
    Batch(Link &link, const QByteArray &sql, const std::vector<ColumnStore> &parameters)
        : m_link(link), m_parameters(parameters), m_statement(link.NewStatement())
    {
        QByteArray text = sql;
        ODBC_CALL(SQLPrepare, m_statement, reinterpret_cast<SQLCHAR *>(text.data()), SQLINTEGER(text.size()));
    }

    qint64 Rows() const { return m_parameters.empty() ? 0 : m_parameters.front().Size(); }
    qint64 RunRow(qint64 row);
    // False when the rows do not make arrays. Raises when any row is refused.
    bool RunBlock(qint64 first, qint64 rows, qint64 &affected);

private:
    qint64 Counted();
    [[noreturn]] void Fail() { throw m_link.Judge(ErrorOf(SQL_HANDLE_STMT, m_statement.Get(), "SQLExecute")); }

    Link &m_link;
    const std::vector<ColumnStore> &m_parameters;
    Handle m_statement;
};

// Adds what all results of the execution counted.
qint64 Batch::Counted()
{
    qint64 total = 0;
    for (;;) {
        SQLLEN count = 0;
        if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, m_statement.Get(), &count)) && count > 0)
            total += count;
        const SQLRETURN more =
            m_link.Of().ManyResults ? ODBC_TRY(SQLMoreResults, m_statement.Get()) : SQLRETURN(SQL_NO_DATA);
        if (more == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(more))
            Fail();
    }
    ODBC_TRY(SQLFreeStmt, m_statement.Get(), SQLUSMALLINT(SQL_CLOSE));
    return total;
}

qint64 Batch::RunRow(qint64 row)
{
    std::vector<BoundValue> values;
    std::vector<SQLLEN> lengths(m_parameters.size());
    for (const ColumnStore &column : m_parameters)
        values.push_back(Bindable(column.At(row), m_link.Of().LooseTypes));
    for (size_t column = 0; column < values.size(); ++column)
        BindParameter(m_statement, int(column) + 1, values[column], lengths[column]);
    SQLRETURN result;
    {
        const Link::Running running(m_link, m_statement);
        result = ODBC_TRY(SQLExecute, m_statement.Get());
    }
    if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
        Fail();
    return Counted();
}

bool Batch::RunBlock(qint64 first, qint64 rows, qint64 &affected)
{
    std::vector<ParameterArray> arrays(m_parameters.size());
    for (size_t column = 0; column < arrays.size(); ++column)
        if (!arrays[column].Fill(m_parameters[column], first, rows))
            return false;
    std::vector<SQLUSMALLINT> status(size_t(rows), SQL_PARAM_UNUSED);
    SQLULEN processed = 0;
    const SQLHANDLE statement = m_statement.Get();
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, static_cast<SQLPOINTER>(status.data()), 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, static_cast<SQLPOINTER>(&processed), 0);
    ODBC_CALL(SQLSetStmtAttr, m_statement, SQL_ATTR_PARAMSET_SIZE, Number(rows), 0);
    SQLRETURN result = SQL_ERROR;
    std::exception_ptr failure;
    try {
        for (size_t column = 0; column < arrays.size(); ++column)
            BindParameter(m_statement, int(column) + 1, arrays[column]);
        const Link::Running running(m_link, m_statement);
        result = ODBC_TRY(SQLExecute, statement);
        if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
            Fail();
        for (const SQLUSMALLINT one : status)
            if (one == SQL_PARAM_ERROR)
                Fail();
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure)
        ODBC_TRY(SQLFreeStmt, statement, SQLUSMALLINT(SQL_CLOSE));
    else
        affected += Counted();
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMSET_SIZE, Number(1), 0);
    ODBC_TRY(SQLFreeStmt, statement, SQLUSMALLINT(SQL_RESET_PARAMS));
    if (failure)
        std::rethrow_exception(failure);
    return true;
}

} // namespace

// MySQL's older table kinds ignore a rollback; then the block must not be sent again.
void OdbcSession::RaiseIfNotTakenBack()
{
    const ExecuteResult warnings = Execute(QStringLiteral("SHOW WARNINGS"));
    std::vector<ColumnStore> columns;
    for (const ColumnInfo &column : warnings.Rows->Columns())
        columns.emplace_back(column.Type);
    warnings.Rows->Fetch(columns, 64);
    for (qint64 row = 0; row < columns[1].Size(); ++row)
        if (columns[1].At(row).ToInt64() == 1196)
            throw Error(adErrProviderFailed, columns[2].Text(row), QString(), 1196);
}

// Runs a block under protection. True when it is in; false when it was taken back and its rows must go one by one.
bool OdbcSession::Protected(const std::function<bool()> &block)
{
    if (Family() != DatabaseFamily::MySQL) {
        try {
            return block();
        } catch (const Error &error) {
            if (error.Number == adErrOperationCancelled || !IsAlive())
                throw;
            return false;
        }
    }
    static const QByteArray kName = "brindlewick_block";
    const bool nested = m_inTransaction;
    if (nested)
        Run(m_link->NewStatement(), "SAVEPOINT " + kName);
    else
        Begin();
    bool done = false, lost = false;
    try {
        done = block();
    } catch (const Error &error) {
        if (error.Number == adErrOperationCancelled || !IsAlive())
            lost = true;
        if (lost && !IsAlive())
            throw;
    }
    if (nested) {
        Run(m_link->NewStatement(), (done ? "RELEASE SAVEPOINT " : "ROLLBACK TO SAVEPOINT ") + kName);
    } else if (done) {
        Commit();
    } else {
        Rollback();
    }
    if (lost)
        throw Error(adErrOperationCancelled, QStringLiteral("Operation has been cancelled by the user."));
    if (!done)
        RaiseIfNotTakenBack();
    return done;
}

qint64 OdbcSession::ExecuteBatch(const QString &sql, const std::vector<ColumnStore> &parameters,
                                 const std::function<void(qint64 row, const Error &)> &failed)
{
    m_link->ForgetCancel();
    Batch batch(*m_link, sql.toUtf8(), parameters);
    qint64 affected = 0;
    for (qint64 row = 0; row < batch.Rows();) {
        m_link->RaiseIfCancelled();
        const qint64 rows = qMin(kBlockRows, batch.Rows() - row);
        qint64 counted = 0;
        if (m_link->Of().ParameterArrays && rows > 1 && Protected([&] { return batch.RunBlock(row, rows, counted); })) {
            affected += counted;
            row += rows;
            continue;
        }
        for (const qint64 end = row + rows; row < end; ++row) {
            m_link->RaiseIfCancelled();
            try {
                affected += batch.RunRow(row);
            } catch (const Error &error) {
                if (error.Number == adErrOperationCancelled || !m_link->IsAlive())
                    throw;
                failed(row, error);
            }
        }
    }
    return affected;
}

} // namespace ADODB::Odbc
