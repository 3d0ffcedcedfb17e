// A turn on a connection: taken, waited for, served, cancelled, given up.
#include "ado/ConnectionBody.h"
#include "ado/Handlers.h"

#include <algorithm>

namespace ADODB {

namespace {

Error Cancelled()
{
    return Error(Fault::Cancelled);
}

} // namespace

Connection::Turn::Turn(ConnectionPtr connection, QString sql)
    : m_connection(std::move(connection)), m_sql(std::move(sql)), m_claim(Claim::OfThisThread(*m_connection))
{
    Body &body = *m_connection->m;
    const std::lock_guard guard(body.lock);
    Body::Ticket ticket;
    ticket.number = body.lastNumber + 1;
    ticket.sql = m_sql;
    ticket.claim = m_claim.get();
    ticket.shielded = Claim::IsShielded();
    ticket.cancelled = m_claim && m_claim->m_cancelled && !ticket.shielded;
    body.Add(std::move(ticket), m_claim.get());
    m_number = ++body.lastNumber;
}

Connection::Turn::~Turn()
{
    Body &body = *m_connection->m;
    const std::lock_guard noCancel(body.cancelLock);
    body.RefreshAfter(m_number);
    {
        const std::lock_guard guard(body.lock);
        std::erase_if(body.queue, [this](const Body::Ticket &other) { return other.number == m_number; });
        if (m_claim)
            body.DropHoldIfDone(*m_claim);
    }
    body.moved.notify_all();
}

void Connection::Turn::Begin()
{
    Body &body = *m_connection->m;
    const std::thread::id thread = std::this_thread::get_id();
    std::unique_lock guard(body.lock);
    if (body.Find(m_number)->served)
        return;
    for (const Body::Ticket &ticket : body.queue)
        if (ticket.served && (ticket.server == thread || body.thread->IsHere()))
            throw Error(Fault::ConnectionRuns, {ticket.sql});
    const auto own = std::find_if(body.queue.begin(), body.queue.end(),
                                  [this](const Body::Ticket &other) { return other.number == m_number; });
    const auto outer = std::find_if(body.queue.begin(), own, [thread](const Body::Ticket &ticket) {
        return ticket.waiting && ticket.waiter == thread;
    });
    std::rotate(outer, own, std::next(own));

    Body::Ticket *ticket = body.Find(m_number);
    ticket->waiting = true;
    ticket->waiter = thread;
    const auto ready = [&body, this] { // with the lock held
        const Body::Ticket &mine = *body.Find(m_number);
        return mine.cancelled || body.IsNext(mine);
    };
    if (!ready()) {
        if (const WaitHandler handler = WaitHandlerOfThisThread()) {
            const Body::Ticket *served = body.Served();
            const QString busyWith = served ? served->sql : body.queue.front().sql;
            guard.unlock();
            handler(
                *m_connection, busyWith,
                [&body, &ready] {
                    const std::lock_guard inner(body.lock);
                    return ready();
                },
                [this] { Cancel(); });
            guard.lock();
        }
        body.moved.wait(guard, ready); // also when a handler came back too early
    }
    ticket = body.Find(m_number);
    ticket->waiting = false;
    if (ticket->cancelled)
        throw Cancelled();
    ticket->served = true;
    ticket->server = thread;
}

Session &Connection::Turn::Driver()
{
    Body &body = *m_connection->m;
    {
        const std::lock_guard guard(body.lock);
        const Body::Ticket *const own = body.Find(m_number);
        if (own->cancelled)
            throw Cancelled();
        if (!own->served)
            throw Error(Fault::TurnNotBegun);
    }
    if (!body.session)
        throw Error(Fault::ObjectClosed);
    return *body.session;
}

void Connection::Turn::OnThread(const std::function<void()> &work)
{
    m_connection->m->thread->Run(work);
}

void Connection::Turn::Cancel() noexcept
{
    try {
        Body &body = *m_connection->m;
        {
            const std::lock_guard guard(body.lock);
            body.CancelTicket(*body.Find(m_number));
        }
        body.moved.notify_all();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

void Connection::Turn::CancelWork() noexcept
{
    if (m_claim && !m_claim->HasLeft())
        m_claim->Cancel();
    Cancel();
}

QString Connection::Turn::WaitsFor() const
{
    const Body &body = *m_connection->m;
    const std::lock_guard guard(body.lock);
    const Body::Ticket &own = *m_connection->m->Find(m_number);
    return own.served || body.IsNext(own) ? QString() : body.Running();
}

} // namespace ADODB
