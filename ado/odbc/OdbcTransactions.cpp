// The transactions of a session: drivers keep them as a property of the connection.
#include "ado/odbc/OdbcSession.h"

namespace ADODB::Odbc {

namespace {

SQLPOINTER Number(SQLULEN number)
{
    return reinterpret_cast<SQLPOINTER>(number);
}

// How a server tells of a transaction that a statement has begun. The driver manager does not know of it.
constexpr struct
{
    DatabaseFamily family;
    const char *question; // its first cell says "1" or "t" inside of one
} kQuestions[] = {
    {DatabaseFamily::PostgreSQL,
     "SELECT CASE WHEN pg_catalog.statement_timestamp() <> pg_catalog.transaction_timestamp() THEN 1 ELSE 0 END"},
    {DatabaseFamily::MySQL, "SELECT @@in_transaction"},
};

} // namespace

bool OdbcSession::HasTypedTransaction()
{
    try {
        for (const auto &row : kQuestions) {
            if (row.family != Family())
                continue;
            const ExecuteResult answer = Execute(QString::fromLatin1(row.question));
            std::vector<ColumnStore> cells;
            for (const ColumnInfo &column : answer.Rows->Columns())
                cells.emplace_back(column.Type);
            return answer.Rows->Fetch(cells, 1) == 1 && cells.front().At(0).ToInt64() == 1;
        }
        if (Family() == DatabaseFamily::SQLite) { // refuses a second one, and says so by words alone
            Execute(QStringLiteral("BEGIN"));
            Execute(QStringLiteral("ROLLBACK"));
        }
        return false;
    } catch (const Error &error) {
        if (!m_link->IsAlive())
            throw;
        // 25P02: in a transaction that has failed and waits for its end. Other refusals tell nothing.
        return error.SQLState == SqlState::kFailedTransaction ||
               error.Description.contains(QLatin1String("within a transaction"));
    }
}

void OdbcSession::SetAutocommit(bool on)
{
    const SQLRETURN result = ODBC_TRY(SQLSetConnectAttr, m_link->Connection().Get(), SQL_ATTR_AUTOCOMMIT,
                                      Number(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), 0);
    if (!SQL_SUCCEEDED(result))
        throw m_link->Judge(ErrorOf(SQL_HANDLE_DBC, m_link->Connection().Get(), "SQLSetConnectAttr"));
}

void OdbcSession::Begin()
{
    if (m_inTransaction)
        throw Error(Fault::NestedTransaction);
    if (HasTypedTransaction()) // a commit or rollback of ours would end the user's own
        throw Error(Fault::TypedTransaction);
    SetAutocommit(false);
    m_inTransaction = true;
}

void OdbcSession::End(SQLSMALLINT how)
{
    if (!m_inTransaction)
        throw Error(Fault::NoTransaction);
    const SQLHANDLE connection = m_link->Connection().Get();
    const SQLRETURN result = ODBC_TRY(SQLEndTran, SQLSMALLINT(SQL_HANDLE_DBC), connection, how);
    if (!SQL_SUCCEEDED(result)) {
        const Error error = m_link->Judge(ErrorOf(SQL_HANDLE_DBC, connection, "SQLEndTran"));
        // SQLite keeps a transaction that it could not commit (somebody else holds the file); the others have ended it.
        if (how == SQL_COMMIT && Family() == DatabaseFamily::SQLite)
            throw error;
        ODBC_TRY(SQLEndTran, SQLSMALLINT(SQL_HANDLE_DBC), connection, SQLSMALLINT(SQL_ROLLBACK));
        ODBC_TRY(SQLSetConnectAttr, connection, SQL_ATTR_AUTOCOMMIT, Number(SQL_AUTOCOMMIT_ON), 0);
        m_inTransaction = false;
        throw error;
    }
    m_inTransaction = false;
    SetAutocommit(true);
}

void OdbcSession::Commit()
{
    End(SQL_COMMIT);
}

void OdbcSession::Rollback()
{
    End(SQL_ROLLBACK);
}

} // namespace ADODB::Odbc
