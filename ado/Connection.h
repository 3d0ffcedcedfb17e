#pragma once
// One connection to a database: open, execute, transactions, schema rowsets, cancel.
//
// Threads: a connection runs one statement at a time. Whoever wants it takes a turn (Turn, below); turns are served in
// the order in which they were taken, across all threads. Every operation here takes its own turn, so callers need
// none. A window thread that would have to wait does so in the installed wait handler, which keeps the windows alive.
// Cancel may be called from any thread at any moment and never waits.
//
// Every operation raises ADODB::Error.

#include "ado/Driver.h"
#include "ado/Types.h"
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace ADODB {

class Recordset;
class Connection;
using RecordsetPtr = std::shared_ptr<Recordset>;
using ConnectionPtr = std::shared_ptr<Connection>;

// Called on the thread that installed it instead of blocking: must return when ready() has become true (it may process
// events meanwhile). `busyWith` is the SQL that holds the connection. On other threads a waiting turn simply blocks.
using WaitHandler =
    std::function<void(Connection &connection, const QString &busyWith, const std::function<bool()> &ready)>;
void SetWaitHandler(WaitHandler handler);

class Connection : public std::enable_shared_from_this<Connection>
{
public:
    static ConnectionPtr Create();
    ~Connection(); // closes

    // The string as it was given; credentials of a login never enter it.
    QString ConnectionString() const;
    void SetConnectionString(const QString &text);
    int CursorLocation() const; // a plain property: results are always held by the client
    void SetCursorLocation(int location);
    int State() const; // adStateClosed or adStateOpen

    void Open(const QString &connectionString = {}, const QString &user = {}, const QString &password = {},
              int options = -1);
    void Close();

    // Runs the statement and reads the whole result. A statement without rows gives a closed recordset (State 0).
    // recordsAffected gets what the driver counted, -1 when it does not count; it is not touched when the call raises.
    // options: adOneStatement for every text that the program composes.
    RecordsetPtr Execute(const QString &sql, qint64 *recordsAffected = nullptr, int options = -1);

    void BeginTrans();  // raises adErrNestedTransaction when one is open
    void CommitTrans(); // raises adErrNoTransaction when none is open
    void RollbackTrans();
    bool InTransaction() const;

    // A schema rowset with the standard column names. Raises adErrFeatureNotAvailable for what the family has no notion
    // of.
    RecordsetPtr OpenSchema(int schema, const QStringList &restrictions = {});

    void Cancel() noexcept; // the statement that runs now, on the server

    // "DBMS Name", "DBMS Version", "Data Provider", "Identifier Quote", "Current Catalog"; unknown names raise
    // adErrItemNotFound.
    QVariant Property(const QString &name) const;
    void SetProperty(const QString &name, const QVariant &value);
    DatabaseFamily Family() const;

    // One turn on the connection. Taken where it is constructed (so order is kept from the interface thread), served by
    // Begin, given up by the destructor. A turn that begins while its own thread waits for an earlier one (an event
    // that the wait handler lets through) goes before that one, since the earlier one cannot go on until the event has
    // ended.
    class Turn
    {
    public:
        Turn(ConnectionPtr connection, QString sql);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;
        void Begin();      // waits until it is served; adErrOperationCancelled when Cancel came first
        Session &Driver(); // only after Begin; raises adErrObjectClosed when the connection is not open
        // Any thread: ends the waiting, or cancels what this very turn runs on the server, never another's statement.
        // A statement that has not reached the server yet is missed, so callers repeat it until the turn has ended.
        void Cancel() noexcept;

    private:
        ConnectionPtr m_connection;
        QString m_sql;
        quint64 m_number = 0;
    };

    bool IsBusy() const; // somebody's turn is served now
    // That turn's SQL; "" when idle, and while the turn is served to the thread `except`.
    QString BusyWith(std::thread::id except = {}) const;

private:
    Connection();
    template <class Work> void Transact(const QString &words, const Work &work);
    struct Body;
    std::unique_ptr<Body> m;
    friend class Turn;
};

// The most memory that one result may hold, in bytes; past it the statement is cancelled and adErrOutOfMemory raised
// with a message for people. 0 is no limit; at start it is three quarters of the machine's memory.
void SetResultLimit(qint64 bytes);
qint64 ResultLimit();

// Reads all rows of a running statement into a new client recordset. progress, when given, sees the rows so far every
// block; cancelled, when given, is asked every block and ends the reading with adErrOperationCancelled.
RecordsetPtr ReadAll(ResultSet &rows, const std::function<void(qint64)> &progress = {},
                     const std::function<bool()> &cancelled = {});

} // namespace ADODB
