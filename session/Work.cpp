#include "session/Work.h"

#include "session/PumpUntil.h"
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QScopeGuard>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace {

std::vector<Work *> g_running; // the innermost last; interface thread

ADODB::Error Stopped()
{
    return ADODB::Error(ADODB::Fault::Cancelled);
}

bool IsInterfaceThread()
{
    const QCoreApplication *app = QCoreApplication::instance();
    return app && app->thread() == QThread::currentThread();
}

} // namespace

struct Work::State
{
    struct Call
    {
        std::function<void()> call;
        bool done = false;
        std::exception_ptr raised;
    };

    std::mutex lock; // guards what follows
    std::condition_variable changed;
    bool done = false, ending = false;
    std::exception_ptr raised;
    std::deque<std::shared_ptr<Call>> calls;
    Desk *desk = nullptr; // null: nobody takes calls
    QAbstractEventDispatcher *wake = nullptr;

    std::atomic<bool> cancelled = false; // of a work without a connection

    bool Done()
    {
        const std::lock_guard guard(lock);
        return done;
    }
    std::shared_ptr<Call> Push(const std::function<void()> &call); // with the lock held
};

// Where calls for the interface thread arrive: events find it in whichever loop runs.
struct Work::Desk : QObject
{
    explicit Desk(Work &work) : m_work(work) {}
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        m_work.Serve();
        return true;
    }
    Work &m_work;
};

std::shared_ptr<Work::State::Call> Work::State::Push(const std::function<void()> &call)
{
    auto made = std::make_shared<Call>();
    made->call = call;
    calls.push_back(made);
    QCoreApplication::postEvent(desk, new QEvent(QEvent::User));
    changed.notify_all();
    return made;
}

std::shared_ptr<Work> Work::On(const ADODB::ConnectionPtr &connection, const QString &words, ADODB::Claim::Kind kind)
{
    if (!connection)
        throw ADODB::Error(ADODB::Fault::ObjectClosed);
    return std::make_shared<Work>(ADODB::Claim::On(connection, words, kind));
}

Work::Work(std::shared_ptr<ADODB::Claim> claim) : m_claim(std::move(claim)), m(std::make_unique<State>()) {}

Work::~Work() = default;

void Work::Cancel() noexcept
{
    m->cancelled = true;
    if (m_claim)
        m_claim->Cancel();
}

bool Work::Cancelled() const
{
    return m->cancelled || (m_claim && m_claim->Cancelled());
}

void Work::Live(const std::function<void()> &body) noexcept
{
    std::exception_ptr raised;
    try {
        const ADODB::Claim::Scope scope(m_claim);
        body();
    } catch (...) {
        raised = std::current_exception();
    }
    if (m_claim)
        m_claim->Leave(); // whoever waits for the connection next gets it, even if this work's caller cannot go on yet
    const std::lock_guard guard(m->lock);
    m->raised = raised;
    m->done = true;
    m->changed.notify_all();
    if (m->wake)
        m->wake->wakeUp();
}

void Work::Run(const Options &options, const std::function<void()> &body)
{
    if (IsEnding() && !ADODB::Claim::IsShielded())
        throw Stopped();
    if (!IsInterfaceThread()) {
        const ADODB::Claim::Scope scope(m_claim);
        body();
        if (m_claim)
            m_claim->Leave();
        return;
    }
    const std::shared_ptr<Work> self = shared_from_this();
    Desk desk(*this);
    {
        const std::lock_guard guard(m->lock);
        m->desk = &desk;
        m->wake = QAbstractEventDispatcher::instance();
    }
    const auto leave = qScopeGuard([this] {
        const std::lock_guard guard(m->lock);
        m->desk = nullptr;
        std::erase(g_running, this);
    });
    g_running.push_back(this);
    std::thread thread([self, body] { self->Live(body); });
    const auto quick = [this] { // calls are answered, events are not
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(QuickWait());
        for (;;) {
            std::unique_lock guard(m->lock);
            m->changed.wait_until(guard, end, [this] { return m->done || !m->calls.empty(); });
            if (m->done || m->calls.empty())
                return m->done;
            guard.unlock();
            Serve();
        }
    };
    bool waits = false; // for another's statement, when it was last looked at
    if (!quick())
        PumpUntil(
            [&] {
                const QString other = m_claim ? m_claim->WaitsFor() : QString();
                if (waits && other.isEmpty() && Cancelled()) // given up in the queue: it never came to its own work
                    return QString();
                waits = !other.isEmpty();
                return waits ? BehindText(other) : options.status ? options.status() : QString();
            },
            [this] { return m->Done(); },
            [&] {
                Cancel();
                if (options.stopped)
                    options.stopped();
            },
            options.input, options.window);
    thread.join();
    Serve(); // what was posted last
    if (m->raised)
        std::rethrow_exception(m->raised);
}

void Work::Serve()
{
    for (;;) {
        std::shared_ptr<State::Call> next;
        {
            const std::lock_guard guard(m->lock);
            if (m->calls.empty())
                return;
            next = m->calls.front();
            m->calls.pop_front();
        }
        std::exception_ptr raised;
        if (!IsEnding()) {
            try {
                next->call();
            } catch (...) {
                raised = std::current_exception();
            }
        }
        const std::lock_guard guard(m->lock);
        next->raised = raised;
        next->done = true;
        m->changed.notify_all();
    }
}

void Work::OnWindow(const std::function<void()> &call)
{
    if (IsInterfaceThread()) {
        call();
        return;
    }
    std::unique_lock guard(m->lock);
    if (m->ending || !m->desk)
        throw Stopped();
    const auto made = m->Push(call);
    m->changed.wait(guard, [&] { return made->done || m->ending; });
    if (m->ending)
        throw Stopped();
    if (made->raised)
        std::rethrow_exception(made->raised);
}

void Work::Post(const std::function<void()> &call)
{
    if (IsInterfaceThread()) {
        call();
        return;
    }
    const std::lock_guard guard(m->lock);
    if (!m->ending && m->desk)
        m->Push(call);
}

void Work::End()
{
    Cancel();
    const std::lock_guard guard(m->lock);
    m->ending = true;
    m->changed.notify_all();
}

void Work::CancelAll(const ADODB::ConnectionPtr &connection)
{
    for (Work *work : g_running)
        if (work->m_claim && work->m_claim->Of() == connection)
            work->Cancel();
    if (connection)
        connection->CancelAll();
}

void EndPumps(bool ending)
{
    SetEnding(ending);
    if (!ending)
        return;
    for (Work *work : g_running)
        work->End();
    ADODB::Connection::CancelAllWork();
}
