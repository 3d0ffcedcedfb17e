#include "ado/OwnThread.h"

#include "ado/Error.h"
#include "ado/Types.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>

namespace ADODB {

namespace {

std::atomic<int> g_leftBehind = 0;

} // namespace

struct OwnThread::State
{
    std::mutex lock; // guards all
    std::condition_variable changed;
    const std::function<void()> *work = nullptr; // of the caller that waits
    bool done = false;                           // that work
    std::exception_ptr raised;
    std::function<void()> last;
    bool ending = false, ended = false, left = false;
    std::thread::id id;

    void Live();
};

void OwnThread::State::Live()
{
    std::unique_lock guard(lock);
    for (;;) {
        changed.wait(guard, [this] { return work || ending; });
        if (!work)
            break;
        const std::function<void()> *now = std::exchange(work, nullptr);
        guard.unlock();
        std::exception_ptr failure;
        try {
            (*now)();
        } catch (...) {
            failure = std::current_exception();
        }
        guard.lock();
        raised = std::move(failure);
        done = true;
        changed.notify_all();
    }
    const std::function<void()> closing = std::exchange(last, {});
    guard.unlock();
    try {
        if (closing)
            closing();
    } catch (...) {
        // a session that does not even disconnect well: nobody is left to tell
    }
    guard.lock();
    ended = true;
    if (left)
        --g_leftBehind;
    changed.notify_all();
}

OwnThread::OwnThread() : m(std::make_shared<State>()) {}

OwnThread::~OwnThread()
{
    End();
}

bool OwnThread::IsHere() const
{
    const std::lock_guard guard(m->lock);
    return m->id == std::this_thread::get_id();
}

void OwnThread::Run(const std::function<void()> &work)
{
    std::unique_lock guard(m->lock);
    if (m->id == std::this_thread::get_id() || m->ending) {
        guard.unlock();
        work();
        return;
    }
    if (!m_thread.joinable()) {
        try {
            m_thread = std::thread([state = m] { state->Live(); });
        } catch (const std::system_error &failure) {
            throw Error(adErrOutOfMemory, QString::fromLocal8Bit(failure.what()), QStringLiteral("HY001"));
        }
        m->id = m_thread.get_id();
    }
    m->done = false;
    m->work = &work;
    m->changed.notify_all();
    m->changed.wait(guard, [this] { return m->done; });
    if (m->raised)
        std::rethrow_exception(std::exchange(m->raised, nullptr));
}

bool OwnThread::End(std::function<void()> last, std::optional<std::chrono::milliseconds> patience) noexcept
{
    try {
        std::unique_lock guard(m->lock);
        if (m->ending || !m_thread.joinable()) {
            m->ending = true;
            guard.unlock();
            if (last)
                last();
            return true;
        }
        m->ending = true;
        m->last = std::move(last);
        m->changed.notify_all();
        const bool own = m->id == std::this_thread::get_id();
        const auto ended = [this] { return m->ended; };
        if (!own && !patience)
            m->changed.wait(guard, ended);
        else if (!own)
            m->changed.wait_for(guard, *patience, ended);
        if (m->ended) {
            guard.unlock();
            m_thread.join();
            return true;
        }
        m->left = true;
        ++g_leftBehind;
        m_thread.detach();
        return false;
    } catch (...) {
        return false; // a mutex that fails leaves nothing to do
    }
}

int OwnThread::LeftBehind()
{
    return g_leftBehind;
}

} // namespace ADODB
