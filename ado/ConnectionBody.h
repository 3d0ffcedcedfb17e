#pragma once
// What a connection holds, for the sources of Connection alone. Which lock guards what stands beside each member.

#include "ado/Canceller.h"
#include "ado/Claim.h"
#include "ado/Connection.h"
#include "ado/OwnThread.h"
#include "ado/family/Family.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace ADODB {

struct Connection::Body
{
    // A place in the queue: of a turn, or of a claim that holds the connection between its turns.
    struct Ticket
    {
        quint64 number = 0;
        QString sql;
        const Claim *claim = nullptr; // alive as long as the ticket stands here
        bool isHold = false;
        bool shielded = false;  // a cancel of its claim passes it by
        bool waiting = false;   // its Begin is under way
        std::thread::id waiter; // on this thread
        bool served = false;
        bool cancelled = false;
        std::thread::id server;
    };

    Body();
    ~Body();
    Body(const Body &) = delete;
    Body &operator=(const Body &) = delete;

    mutable std::mutex lock; // guards all of this block; held for moments only
    std::condition_variable moved;
    // In the order of service. The turns of a claim that holds the connection stand right behind its hold.
    std::deque<Ticket> queue;
    quint64 lastNumber = 0;
    QString connectionString;
    QHash<QString, QVariant> properties; // by name in lower case
    const ADODB::Family *family = &NoFamily();
    int cursorLocation = adUseServer;

    // Seen from any thread; written by the thread whose turn is served.
    std::atomic<bool> open = false;
    std::atomic<bool> inTransaction = false;

    // The session itself belongs to the served turn, and speaks to its driver on the connection's own thread. Whoever
    // cancels holds this lock, and so does whoever ends a turn or replaces the session: a cancel never meets another's
    // statement or a session that is gone.
    std::mutex cancelLock;
    std::unique_ptr<Session> session;
    std::shared_ptr<OwnThread> thread = std::make_shared<OwnThread>();
    Canceller canceller; // the last member: ends before what it speaks to

    Ticket *Find(quint64 number);                         // with `lock` held; null when it is gone
    void Add(Ticket ticket, const Claim *claim);          // with `lock` held: in its place
    bool IsNext(const Ticket &ticket) const;              // with `lock` held: nobody but its own hold stands before it
    const Ticket *Served() const;                         // with `lock` held: the one that runs now; null for none
    QString Running(const Claim *except = nullptr) const; // with `lock` held: what holds the connection; "" for nothing
    void CancelTicket(Ticket &ticket);                    // with `lock` held
    void DropHoldIfDone(const Claim &claim);              // with `lock` held
    void CancelAll();
    void Refresh(); // by the served turn: looks whether the server lives and has a transaction
    void RefreshAfter(quint64 number) noexcept; // the same at its end, if it was served at all
};

} // namespace ADODB
