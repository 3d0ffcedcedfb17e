#pragma once
// What a connection holds, for the sources of Connection alone. Which lock guards what stands beside each member.

#include "ado/Connection.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace ADODB {

struct Connection::Body
{
    struct Ticket
    {
        quint64 number = 0;
        QString sql;
        bool waiting = false;   // its Begin is under way
        std::thread::id waiter; // on this thread
        bool served = false;
        bool cancelled = false;
        std::thread::id server;
    };

    mutable std::mutex lock; // guards all of this block; held for moments only
    std::condition_variable moved;
    std::deque<Ticket> queue; // the first one that is served, or may be, stands in front
    quint64 lastNumber = 0;
    QString connectionString;
    QHash<QString, QVariant> properties; // by name in lower case
    DatabaseFamily family = DatabaseFamily::Other;
    int cursorLocation = adUseServer;

    // Seen from any thread; written by the thread whose turn is served.
    std::atomic<bool> open = false;
    std::atomic<bool> inTransaction = false;

    // The session itself belongs to the served turn. Whoever cancels holds this lock, and so does whoever ends a turn
    // or replaces the session: a cancel never meets another's statement or a session that is gone.
    std::mutex cancelLock;
    std::unique_ptr<Session> session;

    Ticket *Find(quint64 number); // with `lock` held; null when it is gone
    void Refresh();               // by the served turn: looks whether the server lives and has a transaction
    void RefreshAfter(quint64 number) noexcept; // the same at its end, if it was served at all
};

} // namespace ADODB
