#pragma once
// What a database driver is to the layer above: a few small interfaces. Each driver is a folder below ado/ that
// implements them and registers itself (ado/DriverList.h); nothing outside of its folder names it.
//
// Every operation raises ADODB::Error with the driver's own words. All operations of one session come from one thread
// at a time (Connection sees to it), except Cancel, which may come from any thread at any moment.

#include "ado/ColumnStore.h"
#include "ado/Error.h"
#include "ado/Types.h"
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ADODB {

struct ColumnInfo
{
    QString Name;
    DataTypeEnum Type = adVarWChar;
    qint64 DefinedSize = 0; // characters for text, bytes for binary; -1 when the driver does not know a limit
    int Precision = 0;
    int NumericScale = 0;
    int Attributes = adFldUnspecified;
    QString TypeName;         // the server's own word for the type, where a driver tells it
    QString BaseSchema;       // of BaseTable: its schema, or its database where the family has no schemas
    QString BaseTable;        // where the driver knows it, else ""
    QString BaseColumn;       // "" also where the driver does not tell a column from an alias
    bool IsKey = false;       // part of the base table's primary key, where the driver knows
    bool HasInfinity = false; // a date or timestamp of a server that knows the words "infinity" and "-infinity"
};

// The rows of one running statement. Closing (destroying) it ends the statement on the server.
class ResultSet
{
public:
    virtual ~ResultSet() = default;
    virtual const std::vector<ColumnInfo> &Columns() const = 0;
    // Appends up to maxRows rows, one value to each store; gives how many. 0 means that there are no more.
    virtual qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) = 0;
    // A driver that learns types only from the rows may change Columns() until the first Fetch has returned, and
    // replaces the stores of such columns itself.

    virtual bool IsMadeUp() const { return false; } // rows of no server, to be edited where they are

    // The next result of the same statement that has rows, to be asked for behind the last row of this one; null when
    // there is none.
    virtual std::unique_ptr<ResultSet> TakeNext() { return std::move(m_next); }
    void SetNext(std::unique_ptr<ResultSet> next) { m_next = std::move(next); }

private:
    std::unique_ptr<ResultSet> m_next;
};

// The first of several results, with the others behind it in their order; null for none.
std::unique_ptr<ResultSet> Chained(std::vector<std::unique_ptr<ResultSet>> results);

struct ExecuteResult
{
    std::unique_ptr<ResultSet> Rows; // of the first result that has rows; none when the statement gives no rows
    qint64 RecordsAffected = -1;     // what the driver counted, -1 when it does not count
};

// Of an UPDATE or DELETE without a key, where kinds of tables ignore a rollback: in such a table a row that would meet
// several is refused before anything changes. All texts are empty where there are no such kinds.
struct CountedBatch
{
    QString TakesBack; // its first cell is 1 where the table takes a rollback; "" where nobody knows the table
    QString Count;     // how many rows the condition meets, by the last `By` of the row's values
    qsizetype By = 0;
    QString Sql; // in place of the batch's: changes one row at most
};

// One prepared statement and the rows of values that it runs for, handed over block by block: nobody holds them all.
// Rows count from 0 over all blocks. What is told of a row is told once, on the thread that runs the batch.
struct Batch
{
    QString Sql;
    std::vector<DataTypeEnum> Types; // of the ?s, in order
    // Fills columns of these types, which are empty, with up to `most` further rows; gives how many, 0 at the end. It
    // may raise, which ends the batch as a cancel does.
    std::function<qint64(std::vector<ColumnStore> &columns, qint64 most)> Next;
    bool ByKey = false; // of an UPDATE or DELETE: its condition meets one row at most, whatever the table holds
    QString Ask; // of an INSERT: the SELECT of what the server made of the row just added, where Sql cannot give it
    CountedBatch Counted;
    std::function<void(qint64 row, const Error &)> Refused;
    std::function<void(qint64 row, const std::vector<Value> &)> Made; // what RETURNING or Ask gave
    std::function<void(qint64 rows)> Written; // all rows before this one are in to stay, but for those refused
};

struct Family; // ado/family/Family.h

class Session
{
public:
    virtual ~Session() = default; // rolls back what is open and disconnects

    virtual ExecuteResult Execute(const QString &sql) = 0;
    // The same for a text that must be one statement: a text of several is refused before anything runs. A driver that
    // knows its server's own way to be sure overrides this; else the text is read.
    virtual ExecuteResult ExecuteOne(const QString &sql);
    // Runs the batch's statement once for each of its rows. A row that the server refuses is told; the others go on. An
    // UPDATE or DELETE is meant for one row: when it meets none it counts as refused, with adErrRowConflict (somebody
    // else was faster); when it meets several it is taken back and counts as refused. Gives the rows affected. Raises
    // when it cannot go on (a cancel, a lost server): what was not told as written is then as if it had not been sent.
    virtual qint64 ExecuteBatch(const Batch &batch) = 0;
    virtual bool CanReturn() const { return false; } // "INSERT ... RETURNING" gives rows

    virtual void Begin() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() = 0;
    // For drivers that can tell whether the server has a transaction open, also one begun by a typed BEGIN.
    virtual std::optional<bool> InTransaction() const { return {}; }

    // The driver's own catalogue function for a rowset, with standard column names and order; null when it has none for
    // it. Restrictions count from 0 as the rowset's restriction columns do; a null QString is "no restriction".
    virtual std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &restrictions) = 0;

    virtual const ADODB::Family &Family() const = 0; // of the server behind it; lives as long as the program
    virtual QString ProductName() const = 0;         // "SQLite", "PostgreSQL", "MariaDB" ...
    virtual QString ProductVersion() const = 0;
    virtual QString IdentifierQuote() const = 0; // "\"", "`" or ""
    virtual QString DatabaseName() const = 0;    // the current catalogue, "" when there is no such notion

    virtual void Cancel() noexcept = 0; // any thread; the running Execute or Fetch then raises adErrOperationCancelled
    virtual bool IsAlive() const = 0;   // false once the server is known to be gone
};

class Driver
{
public:
    virtual ~Driver() = default;
    // The string is the caller's own with provider words taken off; user and password, when not empty, win over those
    // in the string.
    virtual std::unique_ptr<Session> Connect(const QString &connectionString, const QString &user,
                                             const QString &password) = 0;
};

// Tests put a double in front of the real drivers: it gets every string first and gives null for "not mine".
using DriverHook = std::function<Driver *(const QString &connectionString)>;
void SetDriverHook(DriverHook hook);

} // namespace ADODB
