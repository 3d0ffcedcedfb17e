#pragma once
// The canceller of one connection: a thread that speaks to the driver, since a cancel may wait for the network, and
// whoever asks for one must not. Each connection has its own: one that is stuck stops no other.
//
// Ask may be called from any thread, returns at once, and is repeated by the thread until there is nothing left to
// cancel: a cancel that comes just before the statement reaches the server is lost.

#include <QtGlobal>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <set>
#include <thread>

namespace ADODB {

class Canceller
{
public:
    // `cancel` is called on the canceller's thread with the number of a turn; false when that turn has ended or waits
    // again.
    explicit Canceller(std::function<bool(quint64)> cancel);
    ~Canceller(); // waits for a cancel that is under way; none is once every turn has ended
    Canceller(const Canceller &) = delete;
    Canceller &operator=(const Canceller &) = delete;

    void Ask(quint64 turn) noexcept;

private:
    void Live();

    const std::function<bool(quint64)> m_cancel;
    std::mutex m_lock; // guards what follows
    std::condition_variable m_changed;
    std::set<quint64> m_asked;
    bool m_ending = false, m_woken = false;
    std::thread m_thread; // starts with the first request
};

} // namespace ADODB
