#include "ado/sqlite/SqliteSession.h"
#include "ado/family/Family.h"
#include "lang/Text.h"

#include "ado/sqlite/SqliteResult.h"
#include "ado/sqlite/SqliteText.h"

#include <QFileInfo>
#include <QString>
#include <QUrl>
#include <chrono>
#include <thread>

namespace ADODB {

namespace {

bool IsUri(const QString &file)
{
    return file.startsWith(QLatin1String("file:"));
}

// A word behind the "?" of an URI; the last one of a name counts.
QString UriWord(const QString &uri, QLatin1String name)
{
    QString value;
    for (const QString &word : uri.section(u'?', 1).section(u'#', 0, 0).split(u'&'))
        if (word.startsWith(name) && word.mid(name.size()).startsWith(u'='))
            value = word.mid(name.size() + 1);
    return value;
}

// Does the name itself say that nothing has to be there: a database in memory, or an URI that asks to make the file?
bool NeedsNoFile(const QString &file)
{
    if (!IsUri(file))
        return file == u":memory:";
    const QString mode = UriWord(file, QLatin1String("mode"));
    return mode == u"memory" || mode == u"rwc" || UriWord(file, QLatin1String("vfs")) == u"memdb" ||
           file.startsWith(QLatin1String("file::memory:"));
}

// The path that the library opens; an URI's without its host, its words and its escapes.
QString PathOf(const QString &file)
{
    if (!IsUri(file))
        return file;
    QString path = file.mid(5).section(u'?', 0, 0).section(u'#', 0, 0);
    if (path.startsWith(QLatin1String("//")))
        path = path.mid(path.indexOf(u'/', 2));
    return QUrl::fromPercentEncoding(path.toUtf8());
}

} // namespace

SqliteSession::SqliteSession(const QString &file, SqliteAccess access)
{
    // No mutexes of the library's own: a session is used by one thread at a time.
    // The file must be there, and the flag to make one is given all the same: it is ATTACH's too.
    const int flags =
        (access == SqliteAccess::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) |
        (IsUri(file) ? SQLITE_OPEN_URI : 0) | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const QString path = PathOf(file);
    if (access != SqliteAccess::Create && !NeedsNoFile(file) && !QFileInfo::exists(path)) {
        Error error(Fault::FileMissing, {path});
        error.NativeError = SQLITE_CANTOPEN;
        throw error;
    }
    int code = sqlite3_open_v2(file.toUtf8().constData(), &m_db, flags, nullptr);
    if (code == SQLITE_OK) {
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
        sqlite3_busy_handler(
            m_db, [](void *self, int tries) { return WaitForLock(self, tries); }, this);
        // Reads the head of the file: a file that is no database fails here and not at the first statement.
        code = sqlite3_exec(m_db, "PRAGMA schema_version; PRAGMA foreign_keys = ON", nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK) {
        const Error error = m_db ? LastError(code) : Error(adErrOutOfMemory, QStringLiteral("out of memory"));
        sqlite3_close_v2(m_db);
        throw error;
    }
}

SqliteSession::~SqliteSession()
{
    sqlite3_close_v2(m_db); // rolls back what is open
}

// Called by the library while another process holds a lock. Five seconds, and an end as soon as somebody cancels.
int SqliteSession::WaitForLock(void *session, int tries) noexcept
{
    constexpr int pauseMs = 10, longestMs = 5000;
    if (static_cast<SqliteSession *>(session)->m_cancelled || tries * pauseMs > longestMs)
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(pauseMs));
    return 1;
}

Error SqliteSession::LastError(int code) const
{
    const int extended = sqlite3_extended_errcode(m_db);
    if ((code & 0xFF) == SQLITE_INTERRUPT || m_cancelled) {
        Error error(Fault::Cancelled);
        error.NativeError = SQLITE_INTERRUPT;
        return error;
    }
    const QString words = QString::fromUtf8(sqlite3_errmsg(m_db));
    if ((code & 0xFF) == SQLITE_NOMEM)
        return Error(adErrOutOfMemory, words, QStringLiteral("HY001"), extended);
    return Error(adErrProviderFailed, words, SqliteState(extended, words), extended);
}

void SqliteSession::RaiseIfCancelled() const
{
    if (m_cancelled.load(std::memory_order_relaxed))
        throw LastError(SQLITE_INTERRUPT);
}

ExecuteResult SqliteSession::Execute(const QString &sql)
{
    m_cancelled = false;
    const QByteArray text = sql.toUtf8();
    if (text.contains('\0')) // the library would take it for the end and drop the rest
        throw Error(Fault::NulCharacter);
    const char *rest = text.constData();
    const char *const end = rest + text.size();
    ExecuteResult result;
    std::vector<std::unique_ptr<ResultSet>> results;
    while (rest < end) {
        SqliteStatement statement;
        const char *tail = nullptr;
        const int code = sqlite3_prepare_v2(m_db, rest, int(end - rest) + 1, &statement.handle, &tail);
        if (code != SQLITE_OK)
            throw LastError(code);
        const QByteArrayView own(rest, tail - rest);
        rest = tail;
        if (!statement.handle)
            continue; // blanks and comments
        const bool changesRows = SqliteChangesRows(own);
        const bool readOnly = sqlite3_stmt_readonly(statement.handle);
        if (sqlite3_column_count(statement.handle) == 0) {
            const int done = sqlite3_step(statement.handle);
            if (done != SQLITE_DONE && done != SQLITE_ROW)
                throw LastError(done);
        } else {
            auto rows = std::make_unique<SqliteResult>(*this, std::move(statement));
            // A statement that also writes is finished before anybody reads; so is one that others follow.
            if (readOnly && SqliteIsBlank(QByteArrayView(rest, end - rest)))
                results.push_back(std::move(rows));
            else
                results.push_back(std::make_unique<SqliteKeptRows>(*rows));
        }
        RaiseIfCancelled();
        if (changesRows && !readOnly)
            result.RecordsAffected = std::max<qint64>(result.RecordsAffected, 0) + sqlite3_changes64(m_db);
    }
    result.Rows = Chained(std::move(results));
    return result;
}

ExecuteResult SqliteSession::ExecuteOne(const QString &sql)
{
    const QByteArray text = sql.toUtf8();
    const char *rest = text.constData();
    const char *const end = rest + text.size();
    for (bool found = false; rest < end;) {
        SqliteStatement statement;
        const char *tail = nullptr;
        // What follows is not even prepared: it could not be, before the first one has run.
        if (found && !SqliteIsBlank(QByteArrayView(rest, end - rest)))
            throw Error(Fault::SeveralStatements);
        if (sqlite3_prepare_v2(m_db, rest, int(end - rest) + 1, &statement.handle, &tail) != SQLITE_OK)
            break; // Execute tells why
        found = found || statement.handle;
        rest = tail;
    }
    return Execute(sql);
}

void SqliteSession::Run(const char *sql)
{
    m_cancelled = false;
    const int code = sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw LastError(code);
}

void SqliteSession::Begin()
{
    Run("BEGIN");
}

void SqliteSession::Commit()
{
    Run("COMMIT");
}

void SqliteSession::Rollback()
{
    Run("ROLLBACK");
}

std::optional<bool> SqliteSession::InTransaction() const
{
    return sqlite3_get_autocommit(m_db) == 0;
}

// A column's own description does not say whether the rest of its key is shown too: this does. The other rowsets come
// from queries of the catalogue.
std::unique_ptr<ResultSet> SqliteSession::Catalogue(SchemaEnum schema, const QStringList &restrictions)
{
    if (schema != adSchemaPrimaryKeys || restrictions.size() < 3)
        return nullptr;
    const auto literal = [](const QString &text) {
        return u'\'' + lang::Replace(text, QStringLiteral("'"), QStringLiteral("''")) + u'\'';
    };
    const QString table = literal(restrictions[2]);
    const QString &database = restrictions[0];
    return Execute(
               QStringLiteral("SELECT %1 AS TABLE_CATALOG, NULL AS TABLE_SCHEMA, %2 AS TABLE_NAME, name AS COLUMN_NAME,"
                              " NULL AS COLUMN_GUID, NULL AS COLUMN_PROPID, pk AS ORDINAL, NULL AS PK_NAME"
                              " FROM pragma_table_info(%2%3) WHERE pk > 0 ORDER BY pk")
                   .arg(database.isEmpty() ? QStringLiteral("NULL") : literal(database), table,
                        database.isEmpty() ? QString() : QStringLiteral(", ") + literal(database)))
        .Rows;
}

const ADODB::Family &SqliteSession::Family() const
{
    return FamilyOf(DatabaseFamily::SQLite);
}

QString SqliteSession::ProductName() const
{
    return QStringLiteral("SQLite");
}

QString SqliteSession::ProductVersion() const
{
    return QString::fromLatin1(sqlite3_libversion());
}

QString SqliteSession::IdentifierQuote() const
{
    return QStringLiteral("\"");
}

QString SqliteSession::DatabaseName() const
{
    return QString();
}

void SqliteSession::Cancel() noexcept
{
    m_cancelled = true;
    sqlite3_interrupt(m_db);
}

bool SqliteSession::IsAlive() const
{
    return true;
}

} // namespace ADODB
