// One statement run for many rows of parameters.
//
// Where the driver gains by it, a block of rows goes as parameter arrays, all or nothing; when a block is refused its
// rows go one by one, so that each refused row is known and the others are kept. PostgreSQL's driver takes a refused
// block back by itself, if the block is no longer than the lots that it sends; its own savepoints would swallow ours.
// MariaDB's goes under a savepoint or in a transaction of its own.
#include "ado/StatementText.h"
#include "ado/odbc/OdbcSession.h"
#include "ado/odbc/Parameters.h"
#include <optional>

namespace ADODB::Odbc {

namespace {

constexpr qint64 kBlockRows = 1000;
constexpr qint64 kPostgresLot = 100; // what the driver's BatchSize is unless the user sets it

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

    qint64 Rows() const { return m_parameters.empty() ? 1 : m_parameters.front().Size(); }
    qint64 RunRow(qint64 row);

    struct Outcome
    {
        bool Arrays = true;  // false: the rows do not make arrays, nothing was sent
        bool InPart = false; // some rows of a refused block went in all the same
        qint64 Affected = 0;
        std::optional<Error> Failure;
    };
    Outcome RunBlock(qint64 first, qint64 rows);

private:
    qint64 Counted(bool failed = false);
    [[noreturn]] void Fail() { throw m_link.Failure(m_statement, "SQLExecute"); }

    Link &m_link;
    const std::vector<ColumnStore> &m_parameters;
    Handle m_statement;
};

// Adds what all results of the execution counted.
qint64 Batch::Counted(bool failed)
{
    qint64 total = 0;
    for (;;) {
        SQLLEN count = 0;
        if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, m_statement.Get(), &count)) && count > 0)
            total += count;
        const SQLRETURN more =
            m_link.Of().ManyResults ? ODBC_TRY(SQLMoreResults, m_statement.Get()) : SQLRETURN(SQL_NO_DATA);
        if (more == SQL_NO_DATA || (failed && !SQL_SUCCEEDED(more)))
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

Batch::Outcome Batch::RunBlock(qint64 first, qint64 rows)
{
    Outcome outcome;
    std::vector<ParameterArray> arrays(m_parameters.size());
    for (size_t column = 0; column < arrays.size() && outcome.Arrays; ++column)
        outcome.Arrays = arrays[column].Fill(m_parameters[column], first, rows);
    if (!outcome.Arrays)
        return outcome;
    std::vector<SQLUSMALLINT> status(size_t(rows), SQL_PARAM_UNUSED);
    SQLULEN processed = 0;
    const SQLHANDLE statement = m_statement.Get();
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, static_cast<SQLPOINTER>(status.data()), 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, static_cast<SQLPOINTER>(&processed), 0);
    try {
        ODBC_CALL(SQLSetStmtAttr, m_statement, SQL_ATTR_PARAMSET_SIZE, Number(rows), 0);
        for (size_t column = 0; column < arrays.size(); ++column)
            BindParameter(m_statement, int(column) + 1, arrays[column]);
        const Link::Running running(m_link, m_statement);
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
    outcome.Affected = Counted(outcome.Failure.has_value());
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAM_STATUS_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMS_PROCESSED_PTR, nullptr, 0);
    ODBC_TRY(SQLSetStmtAttr, statement, SQL_ATTR_PARAMSET_SIZE, Number(1), 0);
    ODBC_TRY(SQLFreeStmt, statement, SQLUSMALLINT(SQL_RESET_PARAMS));
    return outcome;
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

// Runs a block of MariaDB's: it is in as a whole, or it is as if it had never been sent.
bool OdbcSession::Protected(const std::function<bool()> &block)
{
    static const QByteArray kName = "brindlewick_block";
    const bool nested = m_inTransaction;
    if (nested)
        Run(m_link->NewStatement(), "SAVEPOINT " + kName);
    else
        Begin();
    const bool done = block();
    if (nested)
        Run(m_link->NewStatement(), (done ? "RELEASE SAVEPOINT " : "ROLLBACK TO SAVEPOINT ") + kName);
    else if (done)
        Commit();
    else
        Rollback();
    if (!done)
        RaiseIfNotTakenBack();
    return done;
}

// False once nothing more can be written: cancelled, or the server or the transaction is gone.
bool OdbcSession::GoesOnAfter(const Error &error) const
{
    return error.Number != adErrOperationCancelled && m_link->IsAlive() && !LosesTransaction(error);
}

// MySQL's servers take the whole transaction back when they break a deadlock.
bool OdbcSession::LosesTransaction(const Error &error) const
{
    return m_inTransaction && Family() == DatabaseFamily::MySQL && error.SQLState == u"40001";
}

qint64 OdbcSession::ExecuteBatch(const QString &sql, const std::vector<ColumnStore> &parameters,
                                 const std::function<void(qint64 row, const Error &)> &failed)
{
    m_link->ForgetCancel();
    const QByteArray text = sql.toUtf8();
    Batch batch(*m_link, text, parameters);
    qint64 row = 0, affected = 0;
    const bool mustMeetRows = MustMeetRows(text);
    const bool wantsProtection = Family() == DatabaseFamily::MySQL;
    const qint64 blockRows = Family() == DatabaseFamily::PostgreSQL ? kPostgresLot : kBlockRows;
    const auto byBlock = [&](qint64 rows) { // false: none of them is in
        Batch::Outcome outcome;
        const auto block = [&] {
            outcome = batch.RunBlock(row, rows);
            return outcome.Arrays && !outcome.Failure;
        };
        const bool done = wantsProtection ? Protected(block) : block();
        if (outcome.Failure && (!GoesOnAfter(*outcome.Failure) || (outcome.InPart && !wantsProtection)))
            throw *outcome.Failure; // in part: smaller lots were asked for, and nobody knows which rows are in
        if (done)
            affected += outcome.Affected;
        return done;
    };
    const auto byRow = [&] {
        try {
            const qint64 met = batch.RunRow(row);
            if (met == 0 && mustMeetRows)
                throw RowConflict();
            affected += met;
        } catch (const Error &error) {
            if (!GoesOnAfter(error))
                throw;
            failed(row, error);
        }
    };
    // Of a block the drivers tell the sum alone: rows that must be met go one by one.
    const bool byArrays = m_link->Of().ParameterArrays && !mustMeetRows && !parameters.empty();
    try {
        while (row < batch.Rows()) {
            m_link->RaiseIfCancelled();
            const qint64 rows = qMin(blockRows, batch.Rows() - row);
            if (byArrays && rows > 1 && byBlock(rows)) {
                row += rows;
                continue;
            }
            for (const qint64 end = row + rows; row < end; ++row) {
                m_link->RaiseIfCancelled();
                byRow();
            }
        }
    } catch (const Error &error) {
        // What stands before `row` is in, unless its transaction went with the server or was taken back as a whole.
        if (row == 0 || LosesTransaction(error) || (m_inTransaction && !m_link->IsAlive()))
            throw;
        for (; row < batch.Rows(); ++row)
            failed(row, error);
    }
    return affected;
}

} // namespace ADODB::Odbc
