#include "ado/odbc/Link.h"

#include "ado/family/Family.h"
#include <algorithm>

namespace ADODB::Odbc {

namespace {

constexpr int kLoginSeconds = 30;

struct ProductRow
{
    const char *Product; // a part of the product's name
    Quirks Of;
};

const ProductRow kProducts[] = {
    // Its driver counts SQLSetPos rows from the wrong place, is slower with parameter arrays than without, knows the
    // plain BLOB alone and calls a LONGBLOB a text, so that bytes written there became their words.
    {"SQLite",
     {.Again = ReRead::Scroll,
      .LooseTypes = true,
      .DatesAsText = true,
      .FetchIsLocal = true,
      .BlobsByName = true,
      .AliasForColumn = true}},
    // Its driver sends lots of 100 rows unless the user sets its BatchSize, and bends what no calendar has.
    {"PostgreSQL",
     {.Again = ReRead::SetPos,
      .ManyResults = true,
      .ParameterArrays = true,
      .BlockRows = 100,
      .CountsEachRow = true,
      .BendsMoments = true,
      .TypesByName = true}},
    // Its driver ignores the row of SQLSetPos.
    {"MariaDB",
     {.Again = ReRead::Scroll,
      .DatesAsText = true,
      .ManyResults = true,
      .ParameterArrays = true,
      .FetchIsLocal = true,
      .KeepsPartOfBlock = true,
      .TellsLongSizes = true}},
    {"MySQL",
     {.Again = ReRead::Scroll,
      .DatesAsText = true,
      .ManyResults = true,
      .FetchIsLocal = true,
      .KeepsPartOfBlock = true,
      .TellsLongSizes = true}},
    {"SQL Server", {.ManyResults = true}},
    {"Oracle", {}},
};

// What drivers report once the server is gone, beside the standard's class 08.
bool MeansLost(const Error &error, const Family &family)
{
    const std::vector<int> &numbers = family.Answers.LostNumbers;
    return error.SQLState.startsWith(u"08") || error.SQLState.startsWith(u"57P") ||
           std::find(numbers.begin(), numbers.end(), error.NativeError) != numbers.end();
}

} // namespace

Link::Link(const QByteArray &connectionString, std::optional<ReRead> again)
{
    m_environment = Handle(SQL_HANDLE_ENV, nullptr, 0);
    ODBC_CALL(SQLSetEnvAttr, m_environment, SQL_ATTR_ODBC_VERSION, AsPointer(SQL_OV_ODBC3), 0);
    m_connection = Handle(SQL_HANDLE_DBC, m_environment.Get(), SQL_HANDLE_ENV);
    ODBC_TRY(SQLSetConnectAttr, m_connection.Get(), SQL_ATTR_LOGIN_TIMEOUT, AsPointer(kLoginSeconds), 0);
    QByteArray text = connectionString;
    SQLSMALLINT length = 0;
    ODBC_CALL(SQLDriverConnect, m_connection, nullptr, reinterpret_cast<SQLCHAR *>(text.data()),
              SQLSMALLINT(text.size()), nullptr, SQLSMALLINT(0), &length, SQLUSMALLINT(SQL_DRIVER_NOPROMPT));
    m_connected = true;
    ReadTraits();
    m_traits.Again = again.value_or(m_traits.Again);
}

Link::~Link()
{
    Close();
}

void Link::Close() noexcept
{
    const std::lock_guard lock(m_cancelLock);
    m_running = nullptr;
    if (m_connected) {
        m_connected = false;
        ODBC_TRY(SQLDisconnect, m_connection.Get());
    }
    m_connection.Free();
    m_environment.Free();
}

QString Link::Info(SQLUSMALLINT what) const
{
    char text[512] = {};
    SQLSMALLINT length = 0;
    const SQLRETURN result = ODBC_TRY(SQLGetInfo, m_connection.Get(), what, static_cast<SQLPOINTER>(text),
                                      SQLSMALLINT(sizeof text - 1), &length);
    return SQL_SUCCEEDED(result) ? FromDriver(text, qsizetype(qstrlen(text))) : QString();
}

void Link::ReadTraits()
{
    m_traits.ProductName = Info(SQL_DBMS_NAME);
    m_traits.ProductVersion = Info(SQL_DBMS_VER);
    m_traits.IdentifierQuote = Info(SQL_IDENTIFIER_QUOTE_CHAR);
    if (m_traits.IdentifierQuote == u" ") // the standard's way to say that there is none
        m_traits.IdentifierQuote.clear();
    m_traits.DatabaseName = Info(SQL_DATABASE_NAME);
    m_traits.ManyResults = Info(SQL_MULT_RESULT_SETS) == u"Y";
    SQLUINTEGER again = 0;
    SQLSMALLINT length = 0;
    ODBC_TRY(SQLGetInfo, m_connection.Get(), SQL_GETDATA_EXTENSIONS, static_cast<SQLPOINTER>(&again),
             SQLSMALLINT(sizeof again), &length);
    if ((again & SQL_GD_BLOCK) && (again & SQL_GD_BOUND) && (again & SQL_GD_ANY_COLUMN))
        m_traits.Again = ReRead::SetPos;
    m_traits.Family = &FamilyOfProduct(m_traits.ProductName);
    for (const ProductRow &row : kProducts)
        if (m_traits.ProductName.contains(QLatin1String(row.Product), Qt::CaseInsensitive)) {
            static_cast<Quirks &>(m_traits) = row.Of;
            return;
        }
}

Handle Link::NewStatement()
{
    if (!m_connection)
        throw Error(Fault::ObjectClosed);
    return Handle(SQL_HANDLE_STMT, m_connection.Get(), SQL_HANDLE_DBC);
}

bool Link::IsAlive() const
{
    if (m_dead || !m_connection)
        return false;
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLINTEGER length = 0;
    const SQLRETURN result = ODBC_TRY(SQLGetConnectAttr, m_connection.Get(), SQL_ATTR_CONNECTION_DEAD,
                                      static_cast<SQLPOINTER>(&dead), SQLINTEGER(sizeof dead), &length);
    return !SQL_SUCCEEDED(result) || dead == SQL_CD_FALSE;
}

Error Link::Judge(Error error)
{
    if (m_traits.Family && MeansLost(error, *m_traits.Family)) {
        m_dead = true;
        return error;
    }
    if (!m_cancelled)
        return error;
    m_cancelled = false;
    Error cancelled(Fault::Cancelled);
    cancelled.SQLState = error.SQLState;
    cancelled.NativeError = error.NativeError;
    return cancelled;
}

Error Link::Failure(const Handle &statement, const char *function)
{
    {
        const std::lock_guard lock(m_cancelLock);
        m_running = nullptr;
    }
    return Judge(ErrorOf(SQL_HANDLE_STMT, statement.Get(), function));
}

void Link::Cancel() noexcept
{
    const std::lock_guard lock(m_cancelLock);
    m_cancelled = true;
    if (m_running)
        ODBC_TRY(SQLCancel, m_running);
}

void Link::RaiseIfCancelled() const
{
    if (m_cancelled)
        throw Error(Fault::Cancelled);
}

Link::Running::Running(Link &link, const Handle &statement, bool isFetch) : m_link(link)
{
    if (isFetch && m_link.m_traits.FetchIsLocal)
        return;
    const std::lock_guard lock(m_link.m_cancelLock);
    m_link.m_running = statement.Get();
}

Link::Running::~Running()
{
    const std::lock_guard lock(m_link.m_cancelLock);
    m_link.m_running = nullptr;
}

} // namespace ADODB::Odbc
