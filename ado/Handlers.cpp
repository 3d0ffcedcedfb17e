#include "ado/Handlers.h"

#include "ado/Claim.h"

#include <mutex>

namespace ADODB {

namespace {

struct Handlers
{
    std::mutex lock;
    WaitHandler wait;
    ApartHandler apart;
    std::thread::id waitThread, apartThread;
};

Handlers &TheHandlers()
{
    static Handlers &handlers = *new Handlers; // never destroyed: connections may close after everything else
    return handlers;
}

} // namespace

void SetWaitHandler(WaitHandler handler)
{
    Handlers &slot = TheHandlers();
    const std::lock_guard guard(slot.lock);
    slot.wait = std::move(handler);
    slot.waitThread = std::this_thread::get_id();
}

void SetApartHandler(ApartHandler handler)
{
    Handlers &slot = TheHandlers();
    const std::lock_guard guard(slot.lock);
    slot.apart = std::move(handler);
    slot.apartThread = std::this_thread::get_id();
}

WaitHandler WaitHandlerOfThisThread()
{
    Handlers &slot = TheHandlers();
    const std::lock_guard guard(slot.lock);
    return slot.waitThread == std::this_thread::get_id() ? slot.wait : WaitHandler();
}

ApartHandler ApartHandlerOfThisThread()
{
    Handlers &slot = TheHandlers();
    const std::lock_guard guard(slot.lock);
    return slot.apartThread == std::this_thread::get_id() ? slot.apart : ApartHandler();
}

bool IsWindowThread()
{
    return WaitHandlerOfThisThread() || ApartHandlerOfThisThread();
}

// What the caller's thread stands for goes with the work: its claim, and its shield.
void Connection::Apart(const QString &words, const std::function<void()> &work) const
{
    const ApartHandler handler = ApartHandlerOfThisThread();
    if (!handler) {
        work();
        return;
    }
    std::shared_ptr<Claim> claim = Claim::OfThisThread(*this);
    if (!claim)
        claim = Claim::On(std::const_pointer_cast<Connection>(shared_from_this()), words);
    const bool shielded = Claim::IsShielded();
    handler(claim, words, [&] {
        const Claim::Scope scope(claim);
        if (!shielded) {
            work();
            return;
        }
        const Claim::Shield shield;
        work();
    });
}

} // namespace ADODB
