#pragma once
// One connection to a database: open, execute, transactions, schema rowsets, cancel.
//
// Threads: a connection runs one statement at a time. Whoever wants it takes a turn (Turn, below); turns are served in
// the order in which they were taken, across all threads, but for those who hold the connection over several turns
// (ado/Claim.h). Every operation here takes its own turn, so callers need none. The driver is spoken to on a thread of
// the connection's own, whoever calls. A window thread never waits itself: the installed handlers keep the windows
// alive. Cancel may be called from any thread at any moment and never waits: a thread of the connection's own does it.
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

namespace ADODB {

class Recordset;
class Connection;
using RecordsetPtr = std::shared_ptr<Recordset>;
using ConnectionPtr = std::shared_ptr<Connection>;

class Claim;

// Called on the thread that installed it instead of blocking: must return when ready() has become true (it may process
// events meanwhile). `busyWith` is the SQL that holds the connection; giveUp() ends the waiting alone, and the turn
// raises adErrOperationCancelled. On other threads a waiting turn simply blocks.
using WaitHandler = std::function<void(Connection &connection, const QString &busyWith,
                                       const std::function<bool()> &ready, const std::function<void()> &giveUp)>;
void SetWaitHandler(WaitHandler handler);

// Called on the thread that installed it for every operation of a connection: does `work` on another thread, as part of
// `claim`, and returns when it has ended; what it raises is raised again. On other threads the work is done where the
// caller stands.
using ApartHandler =
    std::function<void(const std::shared_ptr<Claim> &claim, const QString &words, const std::function<void()> &work)>;
void SetApartHandler(ApartHandler handler);

class Connection : public std::enable_shared_from_this<Connection>
{
public:
    static ConnectionPtr Create();
    ~Connection(); // closes; a window thread waits a moment at most, and leaves a driver that hangs to its own thread

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
    // options: adOneStatement for every text that the program composes. progress hears, on the thread that reads, how
    // many rows have come so far.
    RecordsetPtr Execute(const QString &sql, qint64 *recordsAffected = nullptr, int options = -1,
                         const std::function<void(qint64)> &progress = {});

    void BeginTrans();  // raises adErrNestedTransaction when one is open
    void CommitTrans(); // raises adErrNoTransaction when none is open
    void RollbackTrans();
    bool InTransaction() const;

    // A schema rowset with the standard column names. Raises adErrFeatureNotAvailable for what the family has no notion
    // of.
    RecordsetPtr OpenSchema(int schema, const QStringList &restrictions = {});

    void Cancel() noexcept;    // the statement that runs now, on the server
    void CancelAll() noexcept; // and every other that waits, and all claims that hold or wait
    // Of all connections: whether anything runs, waits or closes; and its cancel. For the end of the program.
    static bool AnyWork();
    static void CancelAllWork() noexcept;

    // "DBMS Name", "DBMS Version", "Data Provider", "Identifier Quote", "Current Catalog"; unknown names raise
    // adErrItemNotFound.
    QVariant Property(const QString &name) const;
    void SetProperty(const QString &name, const QVariant &value);
    const ADODB::Family &Family() const; // of the server that it is or was open to; else what nobody knows

    // One turn on the connection. Taken where it is constructed (so order is kept from the interface thread; and it
    // belongs to the claim of that thread), served by Begin, given up by the destructor. A turn that begins while its
    // own thread waits for an earlier one (an event that the wait handler lets through) goes before that one, since the
    // earlier one cannot go on until the event has ended.
    class Turn
    {
    public:
        Turn(ConnectionPtr connection, QString sql);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;
        void Begin();      // waits until it is served; adErrOperationCancelled when Cancel came first
        Session &Driver(); // only after Begin; raises adErrObjectClosed when the connection is not open
        // Does the work on the connection's own thread: many calls of the driver in one go.
        void OnThread(const std::function<void()> &work);
        // Any thread, returns at once: ends the waiting, or cancels what this very turn runs on the server until the
        // turn has ended, never another's statement.
        void Cancel() noexcept;
        void CancelWork() noexcept; // the same, and the whole claim while more of its work may come
        QString WaitsFor() const;   // what another runs while this turn is not served; "" while it need not wait

    private:
        ConnectionPtr m_connection;
        QString m_sql;
        std::shared_ptr<Claim> m_claim; // null: belongs to none
        quint64 m_number = 0;
    };

    bool IsBusy() const;      // somebody's turn is served now, or a claim holds the connection
    QString BusyWith() const; // what it is busy with; "" when idle
    bool HasWork() const;     // somebody is served or waits

private:
    Connection();
    template <class Work> void Transact(const QString &words, const Work &work);
    void Apart(const QString &words, const std::function<void()> &work) const;
    void Register();
    void Unregister() noexcept;
    struct Body;
    std::unique_ptr<Body> m;
    friend class Turn;
    friend class Claim;
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
