#include "ado/odbc/OdbcSession.h"
#include "ado/StatementText.h"
#include "ado/family/Family.h"
#include "ado/odbc/HeldRows.h"
#include "ado/odbc/MomentsAsText.h"
#include "ado/odbc/OdbcRows.h"

namespace ADODB::Odbc {

namespace {

// True when a statement surely gives one result at most, so that its rows can be handed on while they are read.
bool GivesOneResult(const Traits &traits, const QByteArray &sql)
{
    if (!traits.ManyResults)
        return true;
    if (!traits.Family->Texts.NeedsSemicolons)
        return false;
    QByteArrayView text = BehindBlanks(sql);
    while (text.startsWith('('))
        text = BehindBlanks(text.sliced(1));
    if (!BeginsWithOne(text, {"SELECT", "WITH", "VALUES", "TABLE", "SHOW", "EXPLAIN", "PRAGMA", "DESCRIBE"}))
        return false;
    const qsizetype semicolon = text.indexOf(';');
    return semicolon < 0 || BehindBlanks(text.sliced(semicolon)).isEmpty();
}

// Blanks and comments alone. MySQL runs what stands in a comment that opens with "/*!" or "/*M!".
bool DoesNothing(const QByteArray &sql)
{
    return BehindBlanks(sql).isEmpty() && !sql.contains("/*!") && !sql.contains("/*M!");
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
        throw Error(Fault::NoValues);
    if (result != SQL_NO_DATA && !SQL_SUCCEEDED(result))
        throw m_link->Failure(statement, "SQLExecDirect");
}

ExecuteResult OdbcSession::Execute(const QString &sql)
{
    m_link->ForgetCancel();
    try {
        ExecuteResult result = RunWhole(sql.toUtf8());
        if (!result.Rows && Family().Answers.CancelLooksDone)
            m_link->RaiseIfCancelled();
        return result;
    } catch (const Error &) {
        // Or as if the calls came in a wrong order: the driver has closed the statement under us.
        if (m_link->IsAlive())
            m_link->RaiseIfCancelled();
        throw;
    }
}

ExecuteResult OdbcSession::RunWhole(const QByteArray &text)
{
    Handle statement = m_link->NewStatement();
    if (DoesNothing(text)) // the driver manager and some servers take it for a mistake
        return {};
    if (m_link->Of().Again == ReRead::Scroll)
        ODBC_TRY(SQLSetStmtAttr, statement.Get(), SQL_ATTR_CURSOR_TYPE, AsPointer(SQL_CURSOR_STATIC), 0);
    const bool isOne = GivesOneResult(m_link->Of(), text);
    if (m_link->Of().BendsMoments) {
        if (const std::optional<MomentsAsText> other = WithMomentsAsText(*m_link, text)) {
            m_link->RaiseIfCancelled(); // while it was asked for
            Run(statement, other->Sql);
            m_link->RaiseIfCancelled();
            ExecuteResult result;
            result.Rows = std::make_unique<OdbcRows>(m_link, std::move(statement), other->Columns);
            return result;
        }
    }
    Run(statement, text);
    if (!isOne)
        return AllResults(std::move(statement));

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

// Reads all results; an error in any is raised. Those with rows are kept in their order, and the last count.
ExecuteResult OdbcSession::AllResults(Handle statement)
{
    ExecuteResult all;
    std::vector<std::unique_ptr<ResultSet>> results;
    for (;;) {
        SQLSMALLINT columns = 0;
        ODBC_CALL(SQLNumResultCols, statement, &columns);
        if (columns > 0) {
            OdbcRows rows(m_link, std::move(statement));
            rows.LeaveFurtherResults();
            results.push_back(HeldRows::ReadAll(rows));
            statement = rows.TakeStatement();
        } else {
            SQLLEN count = -1;
            if (SQL_SUCCEEDED(ODBC_TRY(SQLRowCount, statement.Get(), &count)))
                all.RecordsAffected = count;
        }
        const Link::Running running(*m_link, statement);
        const SQLRETURN more = ODBC_TRY(SQLMoreResults, statement.Get());
        if (more == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(more))
            throw m_link->Failure(statement, "SQLMoreResults");
    }
    if (!results.empty() || all.RecordsAffected < 0)
        m_link->RaiseIfCancelled();
    all.Rows = Chained(std::move(results));
    return all;
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
