// The queue before a connection: who stands where, who is next, what holds it; and the connections of the program.
#include "ado/ConnectionBody.h"

#include <algorithm>
#include <set>

namespace ADODB {

namespace {

struct Living
{
    std::mutex lock; // held before any connection's own
    std::set<Connection *> connections;
};

Living &TheLiving()
{
    static Living &living = *new Living; // never destroyed: connections may close after everything else
    return living;
}

} // namespace

Connection::Body::Body()
    : canceller([this](quint64 number) {
          const std::lock_guard noEnd(cancelLock);
          {
              const std::lock_guard guard(lock);
              const Ticket *ticket = Find(number);
              if (!ticket || !ticket->served)
                  return false;
          }
          if (session)
              session->Cancel();
          return true;
      })
{
}

Connection::Body::~Body() = default;

Connection::Body::Ticket *Connection::Body::Find(quint64 number)
{
    for (Ticket &ticket : queue)
        if (ticket.number == number)
            return &ticket;
    return nullptr;
}

void Connection::Body::Add(Ticket ticket, const Claim *claim)
{
    auto at = queue.end();
    if (claim && claim->m_kind == Claim::Whole && !ticket.isHold) {
        for (auto own = queue.begin(); own != queue.end(); ++own)
            if (own->claim == claim)
                at = std::next(own);
    } else if (claim) {
        // A call that waits on the thread which began this work cannot go on before the work has ended.
        at = std::find_if(queue.begin(), queue.end(),
                          [claim](const Ticket &other) { return other.waiting && other.waiter == claim->m_creator; });
    }
    queue.insert(at, std::move(ticket));
}

bool Connection::Body::IsNext(const Ticket &ticket) const
{
    for (const Ticket &other : queue) {
        if (&other == &ticket)
            return true;
        if (!other.isHold || other.claim != ticket.claim)
            return false;
    }
    return false;
}

const Connection::Body::Ticket *Connection::Body::Served() const
{
    const auto served = std::find_if(queue.begin(), queue.end(), [](const Ticket &ticket) { return ticket.served; });
    return served == queue.end() ? nullptr : &*served;
}

QString Connection::Body::Running(const Claim *except) const
{
    const Ticket *now = Served();
    if (!now && !queue.empty() && (queue.front().isHold || except))
        now = &queue.front();
    return now && (!except || now->claim != except) ? now->sql : QString();
}

void Connection::Body::CancelTicket(Ticket &ticket)
{
    ticket.cancelled = true;
    if (ticket.served)
        canceller.Ask(ticket.number);
}

void Connection::Body::DropHoldIfDone(const Claim &claim)
{
    if (!claim.m_left || claim.m_kind != Claim::Whole)
        return;
    const bool runs = std::any_of(queue.begin(), queue.end(),
                                  [&claim](const Ticket &ticket) { return ticket.claim == &claim && !ticket.isHold; });
    if (!runs)
        std::erase_if(queue, [&claim](const Ticket &ticket) { return ticket.claim == &claim; });
}

void Connection::Body::CancelAll()
{
    {
        const std::lock_guard guard(lock);
        for (Ticket &ticket : queue) {
            if (ticket.claim && !ticket.shielded)
                const_cast<Claim *>(ticket.claim)->m_cancelled = true;
            if (!ticket.isHold && !ticket.shielded)
                CancelTicket(ticket);
        }
    }
    moved.notify_all();
}

void Connection::Body::RefreshAfter(quint64 number) noexcept
{
    try {
        {
            const std::lock_guard guard(lock);
            if (!Find(number)->served)
                return;
        }
        thread->Run([this] { Refresh(); });
    } catch (...) {
        open = false; // a driver that cannot even say whether it lives
    }
}

void Connection::Register()
{
    Living &living = TheLiving();
    const std::lock_guard guard(living.lock);
    living.connections.insert(this);
}

void Connection::Unregister() noexcept
{
    try {
        Living &living = TheLiving();
        const std::lock_guard guard(living.lock);
        living.connections.erase(this);
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

bool Connection::AnyWork()
{
    if (OwnThread::LeftBehind() > 0)
        return true;
    Living &living = TheLiving();
    const std::lock_guard guard(living.lock);
    return std::any_of(living.connections.begin(), living.connections.end(),
                       [](const Connection *connection) { return connection->HasWork(); });
}

void Connection::CancelAllWork() noexcept
{
    try {
        Living &living = TheLiving();
        const std::lock_guard guard(living.lock);
        for (Connection *connection : living.connections)
            connection->CancelAll();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

void Connection::Cancel() noexcept
{
    try {
        const std::lock_guard guard(m->lock);
        if (const Body::Ticket *served = m->Served())
            m->CancelTicket(*m->Find(served->number)); // also what has not reached the driver yet
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

void Connection::CancelAll() noexcept
{
    try {
        m->CancelAll();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

bool Connection::IsBusy() const
{
    const std::lock_guard guard(m->lock);
    return m->Served() || (!m->queue.empty() && m->queue.front().isHold);
}

QString Connection::BusyWith() const
{
    const std::lock_guard guard(m->lock);
    return m->Running();
}

bool Connection::HasWork() const
{
    const std::lock_guard guard(m->lock);
    return !m->queue.empty();
}

} // namespace ADODB
