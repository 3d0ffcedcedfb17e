#pragma once
// A piece of work on a connection: what one command of a window does, from its first statement to its last.
//
// The connection is taken once, when the work is made. Run does the work on a thread of its own while the caller
// processes events, so that the work goes on whatever the windows do meanwhile, and nobody waits for a window that
// waits. While another's statement holds the connection the status bar says which, and Escape gives up this work alone.
// A cancel ends all of it: what runs is stopped on the server, nothing further begins. It is cancelled by Escape and
// the Stop control, by Cancel, and by the end of the program.
//
// Made and run on the interface thread; inside the work OnWindow and Post lead back to it. Called on any other
// thread, Run does the work on that thread.

#include "ado/Claim.h"
#include "session/Pump.h"
#include <QPointer>
#include <QWidget>

class Work : public std::enable_shared_from_this<Work>
{
public:
    struct Options
    {
        std::function<QString()> status; // asked again and again, on the interface thread; empty: says nothing
        std::function<void()> stopped;   // the user has stopped it; interface thread, beside the cancel itself
        PumpInput input = PumpInput::All;
        QPointer<QWidget> window; // an Escape pressed in it stops this work, whichever began last
    };

    // Raises adErrObjectClosed without a connection. `words`: what others who wait for it are told.
    static std::shared_ptr<Work> On(const ADODB::ConnectionPtr &connection, const QString &words,
                                    ADODB::Claim::Kind kind = ADODB::Claim::Each);
    explicit Work(std::shared_ptr<ADODB::Claim> claim = {}); // as a part of that; null: of no connection
    ~Work();

    // Returns when the body has ended; what it raises is raised again. Raises adErrOperationCancelled at the end of the
    // program.
    void Run(const Options &options, const std::function<void()> &body);

    // From the body. Does it on the interface thread, and waits for it; what it raises is raised here. What it begins
    // on the connection belongs to this work only where it says so (ADODB::Claim::Scope). Raises
    // adErrOperationCancelled when the program ends meanwhile: so it owns what it touches.
    void OnWindow(const std::function<void()> &call);
    void Post(const std::function<void()> &call); // the same without waiting; done before Run returns

    // From any thread.
    void Cancel() noexcept;
    bool Cancelled() const;
    const std::shared_ptr<ADODB::Claim> &Claim() const { return m_claim; }

    // Interface thread: the works whose Run has not returned.
    static void CancelAll(const ADODB::ConnectionPtr &connection);

private:
    struct Desk;
    struct State;
    void Live(const std::function<void()> &body) noexcept;
    void Serve();
    void End();
    const std::shared_ptr<ADODB::Claim> m_claim;
    const std::unique_ptr<State> m;
    friend void EndPumps(bool ending);
};
