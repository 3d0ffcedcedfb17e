#include "ado/Canceller.h"

#include <chrono>

namespace ADODB {

namespace {

constexpr std::chrono::milliseconds kFirstPause(100), kLongestPause(1000);

} // namespace

Canceller::Canceller(std::function<bool(quint64)> cancel) : m_cancel(std::move(cancel)) {}

Canceller::~Canceller()
{
    {
        const std::lock_guard guard(m_lock);
        m_ending = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void Canceller::Ask(quint64 turn) noexcept
{
    try {
        const std::lock_guard guard(m_lock);
        m_asked.insert(turn);
        m_woken = true;
        if (!m_thread.joinable())
            m_thread = std::thread([this] { Live(); });
        m_changed.notify_all();
    } catch (...) {
        // no memory or no thread to cancel with: the turn's own flag ends its reading at the next block
    }
}

void Canceller::Live()
{
    std::chrono::milliseconds pause = kFirstPause;
    std::unique_lock guard(m_lock);
    while (!m_ending) {
        m_woken = false;
        const std::set<quint64> turns = m_asked;
        for (const quint64 turn : turns) {
            guard.unlock();
            const bool again = m_cancel(turn);
            guard.lock();
            if (!again)
                m_asked.erase(turn);
            if (m_ending)
                return;
        }
        const auto wake = [this] { return m_ending || m_woken; };
        if (m_asked.empty()) {
            pause = kFirstPause;
            m_changed.wait(guard, wake);
        } else {
            m_changed.wait_for(guard, pause, wake);
            pause = std::min(pause * 2, kLongestPause);
        }
    }
}

} // namespace ADODB
