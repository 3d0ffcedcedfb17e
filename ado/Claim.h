#pragma once
// A piece of work on a connection, as the connection sees it: several operations that are cancelled together, and that
// may keep the connection between them.
//
// Operations belong to a claim when they are called on a thread where a Scope of it lives. A cancel ends what runs of
// it on the server and what waits, and refuses what comes later (adErrOperationCancelled); another's statement is never
// touched. The claim keeps its connection alive. Any thread, unless told otherwise.

#include "ado/Connection.h"
#include <atomic>
#include <memory>
#include <thread>

namespace ADODB {

class Claim
{
public:
    enum Kind
    {
        Each, // every operation takes a turn of its own; those of others may come between
        Whole // from its making until Leave nobody else is served: all others wait
    };
    // Takes the claim's place in the queue. `words` are what others who wait are told between the operations.
    static std::shared_ptr<Claim> On(ConnectionPtr connection, const QString &words, Kind kind = Each);
    ~Claim(); // as Leave
    Claim(const Claim &) = delete;
    Claim &operator=(const Claim &) = delete;

    const ConnectionPtr &Of() const { return m_connection; }
    void Cancel() noexcept; // returns at once
    bool Cancelled() const { return m_cancelled; }
    // Its work is done: no operation begins any more. Those on their way go on, and keep the connection until they end.
    void Leave() noexcept;
    bool HasLeft() const { return m_left; }
    // What another runs while this claim waits for the connection; "" while it need not wait.
    QString WaitsFor() const;

    // While one lives, what its thread does on the connection belongs to the claim. Scopes nest.
    class Scope
    {
    public:
        explicit Scope(std::shared_ptr<Claim> claim);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        std::shared_ptr<Claim> m_claim;
        Scope *m_outer;
        friend class Claim;
    };
    // While one lives, the operations of its thread are done even though the claim was cancelled: what gives back what
    // was begun.
    class Shield
    {
    public:
        Shield();
        ~Shield();
        Shield(const Shield &) = delete;
        Shield &operator=(const Shield &) = delete;
    };
    // The claim that an operation on this connection would belong to; null for none.
    static std::shared_ptr<Claim> OfThisThread(const Connection &connection);
    static bool IsShielded(); // this thread

private:
    Claim(ConnectionPtr connection, Kind kind) : m_connection(std::move(connection)), m_kind(kind) {}
    const ConnectionPtr m_connection;
    const Kind m_kind;
    const std::thread::id m_creator = std::this_thread::get_id();
    std::atomic<bool> m_cancelled = false, m_left = false;
    friend class Connection;
    friend class Connection::Turn;
    friend struct Connection::Body;
};

} // namespace ADODB
