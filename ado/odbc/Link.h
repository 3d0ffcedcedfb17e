#pragma once
// One connected handle with what its session and its running results share: the family's quirks, the cancel switch,
// and whether the server is still there.
//
// Shared by the session and its results, so a result that outlives its session finds a closed link, not a freed one.
// All but Cancel belongs to the thread that has the connection's turn.

#include "ado/Driver.h"
#include "ado/odbc/Call.h"
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace ADODB::Odbc {

// How cells that did not fit their bound buffer are read again.
enum class ReRead
{
    SetPos,  // position inside the block, then SQLGetData
    Scroll,  // fetch that row again by its number: the drivers that only pretend to position
    Columns, // not at all: long columns are read one row at a time, left to right
};

// How the driver of one product behaves, beside what its family does (ado/family/Family.h).
struct Quirks
{
    ReRead Again = ReRead::Columns;
    bool LooseTypes = false;      // any value may stand in any column: everything is read as text and looked at
    bool DatesAsText = false;     // dates that no calendar has must survive
    bool ManyResults = false;     // a statement may give several results
    bool ParameterArrays = false; // batches by parameter arrays pay
    bool FetchIsLocal = false;    // rows lie in the driver's memory, and SQLCancel during a fetch would pull them away
    qint64 BlockRows = 1000;      // of a batch: as many as the driver sends at once, so that it takes them back at once
    bool CountsEachRow = false;   // of a block; others tell the sum alone
    bool KeepsPartOfBlock = false; // of a block that was refused, what came before the refusal is in
    bool BendsMoments = false;     // dates and moments are asked for as the server's text
    bool TypesByName = false;      // the name of a type tells more than its number
    bool BlobsByName = false;      // and so it does of BLOBs alone
    bool TellsLongSizes = false;   // of long columns, up to 1 GB
    bool AliasForColumn = false;   // gives the alias where the column is asked for
};

struct Traits : Quirks
{
    const ADODB::Family *Family = nullptr; // never null once the link stands
    QString ProductName, ProductVersion, IdentifierQuote, DatabaseName;
};

class Link
{
public:
    // Connects; raises. `again` overrules what is known of the driver.
    explicit Link(const QByteArray &connectionString, std::optional<ReRead> again = {});
    ~Link();
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    const Handle &Connection() const { return m_connection; }
    const Traits &Of() const { return m_traits; }
    void Close() noexcept;
    bool IsAlive() const;
    bool IsOpen() const { return bool(m_connection); }

    Handle NewStatement(); // raises adErrObjectClosed after Close

    // Makes the error of a failed call on a statement: notes a lost connection, and tells a cancelled statement.
    Error Judge(Error error);
    // The diagnostics of a call on a statement that failed, judged. No Cancel reaches the statement from here on: it
    // would clear the records while they are read.
    Error Failure(const Handle &statement, const char *function);
    void Cancel() noexcept;
    bool IsCancelled() const { return m_cancelled; }
    void RaiseIfCancelled() const;
    void ForgetCancel() { m_cancelled = false; }

    // While one of these lives, Cancel reaches its statement.
    class Running
    {
    public:
        Running(Link &link, const Handle &statement, bool isFetch = false);
        ~Running();
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;

    private:
        Link &m_link;
    };

private:
    void ReadTraits();
    QString Info(SQLUSMALLINT what) const;

    Handle m_environment, m_connection;
    Traits m_traits;
    std::mutex m_cancelLock;
    SQLHANDLE m_running = nullptr; // under m_cancelLock
    std::atomic<bool> m_cancelled{false};
    std::atomic<bool> m_dead{false};
    bool m_connected = false;
};

} // namespace ADODB::Odbc
