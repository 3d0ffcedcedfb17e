#pragma once
// One open SQLite database. Used by one thread at a time, but for Cancel, which any thread may call at any moment.

#include "ado/Driver.h"
#include <QByteArray>
#include <atomic>
#include <sqlite3.h>

namespace ADODB {

enum class SqliteAccess
{
    Existing, // to read and write, if it is there
    ReadOnly,
    Create
};

class SqliteSession : public Session
{
public:
    SqliteSession(const QString &file, SqliteAccess access);
    ~SqliteSession() override;

    ExecuteResult Execute(const QString &sql) override;
    ExecuteResult ExecuteOne(const QString &sql) override; // the library says where the first statement ends
    qint64 ExecuteBatch(const Batch &batch) override;
    bool CanReturn() const override { return sqlite3_libversion_number() >= 3035000; }
    void Begin() override;
    void Commit() override;
    void Rollback() override;
    std::optional<bool> InTransaction() const override;
    std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &restrictions) override;

    const ADODB::Family &Family() const override;
    QString ProductName() const override;
    QString ProductVersion() const override;
    QString IdentifierQuote() const override;
    QString DatabaseName() const override;
    void Cancel() noexcept override;
    bool IsAlive() const override;

    sqlite3 *Handle() const { return m_db; }
    Error LastError(int code) const; // the library's words for what has just failed; cancelled when Cancel was called
    void RaiseIfCancelled() const;

private:
    void Run(const char *sql);
    static int WaitForLock(void *session, int tries) noexcept;

    sqlite3 *m_db = nullptr;
    std::atomic<bool> m_cancelled = false;
};

// A prepared statement that is finalized with its owner.
struct SqliteStatement
{
    sqlite3_stmt *handle = nullptr;
    SqliteStatement() = default;
    explicit SqliteStatement(sqlite3_stmt *own) : handle(own) {}
    SqliteStatement(SqliteStatement &&other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    SqliteStatement &operator=(SqliteStatement &&other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ~SqliteStatement() { sqlite3_finalize(handle); }
};

} // namespace ADODB
