#include "ado/Claim.h"

#include "ado/ConnectionBody.h"

namespace ADODB {

namespace {

thread_local Claim::Scope *t_scope = nullptr;
thread_local int t_shields = 0;

} // namespace

std::shared_ptr<Claim> Claim::On(ConnectionPtr connection, const QString &words, Kind kind)
{
    const std::shared_ptr<Claim> claim(new Claim(std::move(connection), kind));
    if (kind == Whole) {
        Connection::Body &body = *claim->m_connection->m;
        const std::lock_guard guard(body.lock);
        Connection::Body::Ticket hold;
        hold.number = ++body.lastNumber;
        hold.sql = words;
        hold.claim = claim.get();
        hold.isHold = true;
        body.Add(std::move(hold), claim.get());
    }
    return claim;
}

Claim::~Claim()
{
    Leave();
}

void Claim::Leave() noexcept
{
    try {
        Connection::Body &body = *m_connection->m;
        {
            const std::lock_guard guard(body.lock);
            m_left = true;
            body.DropHoldIfDone(*this);
        }
        body.moved.notify_all();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

void Claim::Cancel() noexcept
{
    try {
        Connection::Body &body = *m_connection->m;
        {
            const std::lock_guard guard(body.lock);
            m_cancelled = true;
            for (Connection::Body::Ticket &ticket : body.queue)
                if (ticket.claim == this && !ticket.shielded)
                    body.CancelTicket(ticket);
        }
        body.moved.notify_all();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

QString Claim::WaitsFor() const
{
    const Connection::Body &body = *m_connection->m;
    const std::lock_guard guard(body.lock);
    // Its first ticket: the hold, or the operation that waits.
    for (const Connection::Body::Ticket &ticket : body.queue)
        if (ticket.claim == this)
            return ticket.served || body.IsNext(ticket) ? QString() : body.Running(this);
    return {};
}

Claim::Scope::Scope(std::shared_ptr<Claim> claim) : m_claim(std::move(claim)), m_outer(t_scope)
{
    t_scope = this;
}

Claim::Scope::~Scope()
{
    t_scope = m_outer;
}

Claim::Shield::Shield()
{
    ++t_shields;
}

Claim::Shield::~Shield()
{
    --t_shields;
}

std::shared_ptr<Claim> Claim::OfThisThread(const Connection &connection)
{
    for (const Scope *scope = t_scope; scope; scope = scope->m_outer)
        if (scope->m_claim && scope->m_claim->m_connection.get() == &connection)
            return scope->m_claim;
    return nullptr;
}

bool Claim::IsShielded()
{
    return t_shields > 0;
}

} // namespace ADODB
