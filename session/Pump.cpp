#include "session/Pump.h"
#include "session/InputGate.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace {

std::atomic<int> g_quickMs = 15; // work that ends within this never lets an event in between
constexpr int kStatusMs = 150;   // shorter work does not flicker in the status bar
constexpr int kTickMs = 20;
constexpr int kAgainMs = 100; // between two cancels at the program's end

bool g_ending = false;

// One piece of work on its way. Shared with its thread, which may outlive the caller.
struct Job
{
    std::mutex lock;
    std::condition_variable changed;
    bool done = false;
    std::exception_ptr raised;
    QAbstractEventDispatcher *wake = nullptr;

    bool WaitQuick()
    {
        std::unique_lock held(lock);
        return changed.wait_for(held, std::chrono::milliseconds(g_quickMs), [this] { return done; });
    }
    bool Done()
    {
        const std::scoped_lock held(lock);
        return done;
    }
};

std::thread Start(const std::shared_ptr<Job> &job, const std::function<void()> &work)
{
    job->wake = QAbstractEventDispatcher::instance();
    return std::thread([job, work] {
        std::exception_ptr raised;
        try {
            work();
        } catch (...) {
            raised = std::current_exception();
        }
        const std::scoped_lock held(job->lock);
        job->raised = raised;
        job->done = true;
        job->changed.notify_all();
        if (job->wake)
            job->wake->wakeUp();
    });
}

void Finish(Job &job, std::thread &thread)
{
    thread.join();
    if (job.raised)
        std::rethrow_exception(job.raised);
}

// What the caller of an abandoned job must do: its thread may not touch the dispatcher any more.
void Forget(Job &job)
{
    const std::scoped_lock held(job.lock);
    job.wake = nullptr;
}

} // namespace

void PumpUntil(const std::function<QString()> &status, const std::function<bool()> &ready,
               const std::function<void()> &cancel, PumpInput input)
{
    if (!QCoreApplication::instance() || QCoreApplication::instance()->thread() != QThread::currentThread()) {
        while (!ready())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return;
    }
    const InputGate gate(input, cancel);
    QTimer tick; // so that the loop below never sleeps for ever
    tick.start(kTickMs);
    QElapsedTimer since, cancelled;
    since.start();
    const QString before = LastStatus();
    QString said;
    while (!ready()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (ready())
            break;
        if (g_ending && cancel && (!cancelled.isValid() || cancelled.elapsed() > kAgainMs)) {
            cancelled.start();
            cancel();
        }
        if (since.elapsed() <= kStatusMs)
            continue;
        if (const QString text = status(); text != said && !text.isEmpty()) {
            said = text;
            SetStatus(text);
        }
    }
    if (!said.isEmpty() && LastStatus() == said)
        SetStatus(before);
}

void EndPumps(bool ending)
{
    g_ending = ending;
}

void RunPumped(const QString &status, const std::function<void()> &work, const std::function<void()> &cancel,
               PumpInput input)
{
    const auto job = std::make_shared<Job>();
    std::thread thread = Start(job, work);
    if (!job->WaitQuick())
        PumpUntil([&] { return status; }, [&] { return job->Done(); }, cancel, input);
    Finish(*job, thread);
}

void RunPumpedOn(const ADODB::ConnectionPtr &connection, const QString &status, const std::function<void()> &work,
                 const std::function<void()> &cancel, PumpInput input)
{
    RunPumpedOn(
        connection, [&] { return status; }, work, cancel, input);
}

void RunPumpedOn(const ADODB::ConnectionPtr &connection, const std::function<QString()> &status,
                 const std::function<void()> &work, const std::function<void()> &cancel, PumpInput input)
{
    const auto job = std::make_shared<Job>();
    std::thread thread = Start(job, work);
    const auto other = [&, own = thread.get_id()] { return connection->BusyWith(own); };
    if (!job->WaitQuick())
        PumpUntil(
            [&] {
                const QString sql = other();
                return sql.isEmpty() ? status() : WaitText(sql);
            },
            [&] { return job->Done(); },
            [&] {
                if (other().isEmpty())
                    cancel();
                else
                    connection->Cancel();
            },
            input);
    Finish(*job, thread);
}

bool RunAbandonable(const QString &status, const std::function<void()> &work)
{
    const auto job = std::make_shared<Job>();
    std::thread thread = Start(job, work);
    bool left = false;
    if (!job->WaitQuick())
        PumpUntil([&] { return status; }, [&] { return left || job->Done(); }, [&] { left = true; },
                  PumpInput::EscapeOnly);
    if (!job->Done()) {
        Forget(*job);
        thread.detach();
        return false;
    }
    Finish(*job, thread);
    return true;
}

struct Breather::Body
{
    QString status, before;
    bool cancelled = false;
    QElapsedTimer since;
    InputGate gate{PumpInput::EscapeOnly, [this] { cancelled = true; }};
};

Breather::Breather(const QString &status) : m(std::make_unique<Body>())
{
    m->status = status;
    m->before = LastStatus();
    if (!status.isEmpty())
        SetStatus(status);
    m->since.start();
}

Breather::~Breather()
{
    if (!m->status.isEmpty() && LastStatus() == m->status)
        SetStatus(m->before);
}

bool Breather::Breathe()
{
    if (m->since.elapsed() >= 30) {
        QCoreApplication::processEvents();
        m->since.restart();
    }
    return !m->cancelled;
}

bool Breather::Cancelled() const
{
    return m->cancelled;
}

int SetQuickWait(int milliseconds)
{
    return g_quickMs.exchange(milliseconds);
}
