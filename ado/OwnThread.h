#pragma once
// The one thread on which a connection speaks to its driver, from connecting to disconnecting. Some drivers keep locks
// and other things a thread, and leave them taken after an error: another thread would then wait for ever.
//
// Made and kept by the connection, its session and its results. Run may be called from any thread, one at a time (the
// connection's turns see to it); it blocks until the work is done, and raises what the work raises.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

namespace ADODB {

class OwnThread
{
public:
    OwnThread();  // the thread itself starts with the first work
    ~OwnThread(); // as End
    OwnThread(const OwnThread &) = delete;
    OwnThread &operator=(const OwnThread &) = delete;

    // On the thread itself, and after End, the work is done at once where the caller stands.
    void Run(const std::function<void()> &work);
    bool IsHere() const; // is this the thread?

    // Nothing runs after `last`. Waits for it, or for as long as `patience` says: what hangs is left to its thread,
    // and false comes back. Raises nothing.
    bool End(std::function<void()> last = {}, std::optional<std::chrono::milliseconds> patience = {}) noexcept;
    static int LeftBehind(); // threads that were left so and have not come to their end

private:
    struct State;
    std::shared_ptr<State> m;
    std::thread m_thread;
};

} // namespace ADODB
