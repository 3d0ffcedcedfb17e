// The transactions of a session: drivers keep them as a property of the connection.
#include "ado/family/Family.h"
#include "ado/odbc/OdbcSession.h"

namespace ADODB::Odbc {

// The driver manager does not know of a transaction that a statement has begun; the server does.
bool OdbcSession::HasTypedTransaction()
{
    const TransactionRules &rules = Family().Transactions;
    try {
        if (rules.Question) {
            const ExecuteResult answer = Execute(QString::fromLatin1(rules.Question));
            std::vector<ColumnStore> cells;
            for (const ColumnInfo &column : answer.Rows->Columns())
                cells.emplace_back(column.Type);
            return answer.Rows->Fetch(cells, 1) == 1 && cells.front().At(0).ToInt64() == 1;
        }
        if (rules.InsideWords) {
            Execute(QStringLiteral("BEGIN"));
            Execute(QStringLiteral("ROLLBACK"));
        }
        return false;
    } catch (const Error &error) {
        if (!m_link->IsAlive())
            throw;
        // Other refusals tell nothing.
        return error.SQLState == SqlState::kFailedTransaction ||
               (rules.InsideWords && error.Description.contains(QLatin1String(rules.InsideWords)));
    }
}

void OdbcSession::SetAutocommit(bool on)
{
    const SQLRETURN result = ODBC_TRY(SQLSetConnectAttr, m_link->Connection().Get(), SQL_ATTR_AUTOCOMMIT,
                                      AsPointer(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), 0);
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
        // Somebody else may hold the file for a moment; other servers have ended the transaction.
        if (how == SQL_COMMIT && Family().Transactions.KeepsFailedCommit)
            throw error;
        ODBC_TRY(SQLEndTran, SQLSMALLINT(SQL_HANDLE_DBC), connection, SQLSMALLINT(SQL_ROLLBACK));
        ODBC_TRY(SQLSetConnectAttr, connection, SQL_ATTR_AUTOCOMMIT, AsPointer(SQL_AUTOCOMMIT_ON), 0);
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
