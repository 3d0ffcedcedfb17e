// The queue before a connection: who is served, who waits, and how a waiting window stays alive.
#include "ado/ConnectionBody.h"

#include <algorithm>

namespace ADODB {

namespace {

struct Handler
{
    std::mutex lock;
    WaitHandler call;
    std::thread::id thread;
};

Handler &TheHandler()
{
    static Handler handler;
    return handler;
}

WaitHandler HandlerOfThisThread()
{
    Handler &handler = TheHandler();
    const std::lock_guard guard(handler.lock);
    return handler.thread == std::this_thread::get_id() ? handler.call : WaitHandler();
}

Error Cancelled()
{
    return Error(adErrOperationCancelled, QStringLiteral("Operation has been cancelled by the user."),
                 QStringLiteral("HY008"));
}

} // namespace

void SetWaitHandler(WaitHandler handler)
{
    Handler &slot = TheHandler();
    const std::lock_guard guard(slot.lock);
    slot.call = std::move(handler);
    slot.thread = std::this_thread::get_id();
}

Connection::Body::Ticket *Connection::Body::Find(quint64 number)
{
    for (Ticket &ticket : queue)
        if (ticket.number == number)
            return &ticket;
    return nullptr;
}

void Connection::Body::RefreshAfter(quint64 number) noexcept
{
    try {
        {
            const std::lock_guard guard(lock);
            if (!Find(number)->served)
                return;
        }
        Refresh();
    } catch (...) {
        open = false; // a driver that cannot even say whether it lives
    }
}

Connection::Turn::Turn(ConnectionPtr connection, QString sql)
    : m_connection(std::move(connection)), m_sql(std::move(sql))
{
    Body &body = *m_connection->m;
    const std::lock_guard guard(body.lock);
    Body::Ticket ticket;
    ticket.number = body.lastNumber + 1;
    ticket.sql = m_sql;
    body.queue.push_back(std::move(ticket));
    m_number = ++body.lastNumber;
}

Connection::Turn::~Turn()
{
    Body &body = *m_connection->m;
    const std::lock_guard noCancel(body.cancelLock);
    body.RefreshAfter(m_number);
    {
        const std::lock_guard guard(body.lock);
        std::erase_if(body.queue, [this](const Body::Ticket &ticket) { return ticket.number == m_number; });
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
        if (ticket.served && ticket.server == thread)
            throw Error(adErrObjectOpen,
                        QStringLiteral("Operation cannot be performed while the connection runs: ") + ticket.sql);
    const auto own = std::find_if(body.queue.begin(), body.queue.end(),
                                  [this](const Body::Ticket &ticket) { return ticket.number == m_number; });
    const auto outer = std::find_if(body.queue.begin(), own, [thread](const Body::Ticket &ticket) {
        return ticket.waiting && ticket.waiter == thread;
    });
    std::rotate(outer, own, std::next(own));

    Body::Ticket *ticket = body.Find(m_number);
    ticket->waiting = true;
    ticket->waiter = thread;
    const auto ready = [&body, this] { // with the lock held
        return body.queue.front().number == m_number || body.Find(m_number)->cancelled;
    };
    if (!ready()) {
        if (const WaitHandler handler = HandlerOfThisThread()) {
            const QString busyWith = body.queue.front().sql;
            guard.unlock();
            handler(*m_connection, busyWith, [&body, &ready] {
                const std::lock_guard inner(body.lock);
                return ready();
            });
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
            throw Error(adErrObjectClosed, QStringLiteral("The turn has not begun."));
    }
    if (!body.session)
        throw Error(adErrObjectClosed, QStringLiteral("Operation is not allowed when the object is closed."));
    return *body.session;
}

void Connection::Turn::Cancel() noexcept
{
    try {
        Body &body = *m_connection->m;
        const std::lock_guard noEnd(body.cancelLock);
        bool served = false;
        {
            const std::lock_guard guard(body.lock);
            Body::Ticket *const own = body.Find(m_number);
            own->cancelled = true;
            served = own->served;
        }
        if (served && body.session)
            body.session->Cancel();
        body.moved.notify_all();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

} // namespace ADODB
