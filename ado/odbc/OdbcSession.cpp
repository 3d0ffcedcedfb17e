#include "ado/odbc/OdbcSession.h"
#include "ado/odbc/HeldRows.h"
#include "ado/odbc/OdbcRows.h"
#include <algorithm>

namespace ADODB::Odbc {

namespace {

SQLPOINTER Number(SQLULEN number)
{
    return reinterpret_cast<SQLPOINTER>(number);
}

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The first word of a statement in lower case, behind blanks, comments and opening brackets.
QByteArray FirstWord(const QByteArray &sql)
{
    qsizetype at = 0;
    const qsizetype size = sql.size();
    while (at < size) {
        if (IsSpace(sql[at]) || sql[at] == '(')
            ++at;
        else if (sql.mid(at, 2) == "--")
            at = sql.indexOf('\n', at) < 0 ? size : sql.indexOf('\n', at) + 1;
        else if (sql.mid(at, 2) == "/*")
            at = sql.indexOf("*/", at + 2) < 0 ? size : sql.indexOf("*/", at + 2) + 2;
        else
            break;
    }
    qsizetype end = at;
    while (end < size && (sql[end] | 0x20) >= 'a' && (sql[end] | 0x20) <= 'z')
        ++end;
    return sql.mid(at, end - at).toLower();
}

// True when a statement surely gives one result at most, so that its rows can be handed on while they are read. The
// last result with rows is the one that counts, and it is known only when all have been read.
bool GivesOneResult(const Traits &traits, const QByteArray &sql)
{
    static constexpr const char *kReading[] = {"select", "with",    "values", "table",
                                               "show",   "explain", "pragma", "describe"};
    if (!traits.ManyResults)
        return true;
    if (traits.Family == DatabaseFamily::SQLServer) // a batch there needs no ";" between its statements
        return false;
    const QByteArray first = FirstWord(sql);
    if (std::none_of(std::begin(kReading), std::end(kReading), [&](const char *known) { return first == known; }))
        return false;
    const auto semicolon = std::find(sql.begin(), sql.end(), ';');
    return std::all_of(semicolon, sql.end(), [](char c) { return c == ';' || IsSpace(c); });
}

} // namespace

OdbcSession::OdbcSession(const QByteArray &connectionString) : m_link(std::make_shared<Link>(connectionString)) {}

OdbcSession::~OdbcSession()
{
    if (m_inTransaction && m_link->IsOpen())
        ODBC_TRY(SQLEndTran, SQLSMALLINT(SQL_HANDLE_DBC), m_link->Connection().Get(), SQLSMALLINT(SQL_ROLLBACK));
    m_link->Close();
}

void OdbcSession::Run(const Handle &statement, const QByteArray &sql)
{
    QByteArray text = sql;
    const Link::Running running(*m_link, statement);
    const SQLRETURN result =
        ODBC_TRY(SQLExecDirect, statement.Get(), reinterpret_cast<SQLCHAR *>(text.data()), SQLINTEGER(text.size()));
    if (result == SQL_NEED_DATA)
        throw Error(adErrProviderFailed,
                    QStringLiteral("The statement has parameters, and there are no values for them."));
    if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
        throw m_link->Judge(ErrorOf(SQL_HANDLE_STMT, statement.Get(), "SQLExecDirect"));
}

ExecuteResult OdbcSession::Execute(const QString &sql)
{
    m_link->ForgetCancel();
    Handle statement = m_link->NewStatement();
    if (m_link->Of().Again == ReRead::Scroll)
        ODBC_TRY(SQLSetStmtAttr, statement.Get(), SQL_ATTR_CURSOR_TYPE, Number(SQL_CURSOR_STATIC), 0);
    const QByteArray text = sql.toUtf8();
    Run(statement, text);
    if (!GivesOneResult(m_link->Of(), text))
        return LastResult(std::move(statement));

    ExecuteResult result;
    SQLSMALLINT columns = 0;
    ODBC_CALL(SQLNumResultCols, statement, &columns);
    if (columns > 0) {
        m_link->RaiseIfCancelled();
        result.Rows = std::make_unique<OdbcRows>(m_link, std::move(statement));
        return result;
    }
    SQLLEN count = -1;
    if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, statement.Get(), &count)))
        result.RecordsAffected = count;
    if (result.RecordsAffected < 0)
        m_link->RaiseIfCancelled(); // a driver may have closed the statement under us
    return result;
}

// Reads all results; an error in any is raised. The last one with rows is kept, and the last count.
ExecuteResult OdbcSession::LastResult(Handle statement)
{
    ExecuteResult last;
    for (;;) {
        SQLSMALLINT columns = 0;
        ODBC_CALL(SQLNumResultCols, statement, &columns);
        if (columns > 0) {
            OdbcRows rows(m_link, std::move(statement));
            rows.LeaveFurtherResults();
            last.Rows = HeldRows::ReadAll(rows);
            statement = rows.TakeStatement();
        } else {
            SQLLEN count = -1;
            if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, statement.Get(), &count)))
                last.RecordsAffected = count;
        }
        const Link::Running running(*m_link, statement);
        const SQLRETURN more = ODBC_TRY(SQLMoreResults, statement.Get());
        if (more == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(more))
            throw m_link->Judge(ErrorOf(SQL_HANDLE_STMT, statement.Get(), "SQLMoreResults"));
    }
    if (last.Rows || last.RecordsAffected < 0)
        m_link->RaiseIfCancelled();
    return last;
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
        throw Error(adErrNestedTransaction, QStringLiteral("Only one transaction can be open on a connection."));
    SetAutocommit(false);
    m_inTransaction = true;
}

void OdbcSession::End(SQLSMALLINT how)
{
    if (!m_inTransaction)
        throw Error(adErrNoTransaction, QStringLiteral("No transaction is open on this connection."));
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

// Asked each time: "USE other" changes it.
QString OdbcSession::DatabaseName() const
{
    char text[512] = {};
    SQLINTEGER length = 0;
    if (m_link->IsOpen() &&
        SQL_SUCCEEDED(ODBC_TRY(SQLGetConnectAttr, m_link->Connection().Get(), SQL_ATTR_CURRENT_CATALOG,
                               static_cast<SQLPOINTER>(text), SQLINTEGER(sizeof text - 1), &length)) &&
        text[0])
        return FromDriver(text, qsizetype(qstrlen(text)));
    return m_link->Of().DatabaseName;
}

} // namespace ADODB::Odbc
