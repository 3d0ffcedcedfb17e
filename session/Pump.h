#pragma once
// Long work beside living windows: the work runs on a thread of its own while the caller processes events.
//
// Called on the interface thread, returns when the work has ended; what the work raises is raised again here. Escape
// and the Stop control of the main window call `cancel` (on the interface thread, more than once if pressed again).
// While it runs, the status bar says what for; afterwards it says what it said before. Callers must guard what an event
// may take away (QPointer) unless input is held back.

#include "ado/Recordset.h"
#include <QString>
#include <functional>
#include <memory>

enum class PumpInput
{
    All,       // windows answer keys and mouse as ever
    EscapeOnly // windows paint, but take no input except Escape and the Stop control
};

// `status` "" leaves the status bar alone.
void RunPumped(const QString &status, const std::function<void()> &work, const std::function<void()> &cancel,
               PumpInput input = PumpInput::All);

// The same for a piece of work on a connection (session/Work.h says more): what the work does there is cancelled with
// it, so `cancel` is for what else there is to tell. While another's statement holds the connection, the status bar
// says so, and Escape gives up this work alone.
void RunPumpedOn(const ADODB::ConnectionPtr &connection, const QString &status, const std::function<void()> &work,
                 const std::function<void()> &cancel, PumpInput input = PumpInput::All);
// `status` is asked again and again, on the interface thread, for work that tells how far it has come.
void RunPumpedOn(const ADODB::ConnectionPtr &connection, const std::function<QString()> &status,
                 const std::function<void()> &work, const std::function<void()> &cancel,
                 PumpInput input = PumpInput::All);

// Waits beside the living windows until nothing runs on the connection and nothing waits for it. False when Escape or
// the end of the program came first.
bool WaitUntilIdle(const ADODB::ConnectionPtr &connection);

// The program ends: whatever is under way is cancelled, on every connection, and whatever begins from now on is refused
// with adErrOperationCancelled. Waits for nothing. False takes it back.
void EndPumps(bool ending);

// For work that cannot be cancelled, as connecting to a server that does not answer: Escape leaves it behind on its
// thread, and false is returned. The work must own all that it touches. Input is held back meanwhile.
bool RunAbandonable(const QString &status, const std::function<void()> &work);

// Runs a statement so; Escape and Stop cancel it on the server. Raises ADODB::Error as Connection::Execute does, and
// adErrOperationCancelled when it was cancelled. affected is not touched when the call raises. `options` are those of
// Connection::Execute.
ADODB::RecordsetPtr ExecutePumped(const ADODB::ConnectionPtr &connection, const QString &sql,
                                  qint64 *affected = nullptr, int options = -1);

// Lets every synchronous operation of a connection that is called on this thread run beside the living windows, as a
// piece of work of its own; input is held back meanwhile but for Escape. Called once at start, and by tests;
// RemoveWaitHandler takes it away again.
void InstallWaitHandler();
void RemoveWaitHandler();

// For loops on the interface thread: processes events (painting, timers, Escape) when 30 ms have gone by since the last
// time. Cancelled() is true once Escape or Stop was pressed. Input is held back while the object lives; afterwards the
// status bar says what it said before.
class Breather
{
public:
    explicit Breather(const QString &status = {});
    ~Breather();
    Breather(const Breather &) = delete;
    Breather &operator=(const Breather &) = delete;
    bool Breathe(); // false when cancelled
    bool Cancelled() const;

private:
    struct Body;
    std::unique_ptr<Body> m;
};
