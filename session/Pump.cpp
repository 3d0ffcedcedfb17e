#include "session/Pump.h"
#include "session/InputGate.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include "session/Work.h"
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

std::atomic<bool> g_ending = false;

// Work that may be left behind on its thread, which may outlive the caller.
struct Job
{
    std::mutex lock;
    std::condition_variable changed;
    bool done = false;
    std::exception_ptr raised;
    QAbstractEventDispatcher *wake = nullptr; // null: nobody waits any more

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
    void Live(const std::function<void()> &work) noexcept
    {
        std::exception_ptr failure;
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        const std::scoped_lock held(lock);
        raised = failure;
        done = true;
        changed.notify_all();
        if (wake)
            wake->wakeUp();
    }
};

} // namespace

void PumpUntil(const std::function<QString()> &status, const std::function<bool()> &ready,
               const std::function<void()> &cancel, PumpInput input, QWidget *window)
{
    if (!QCoreApplication::instance() || QCoreApplication::instance()->thread() != QThread::currentThread()) {
        while (!ready())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return;
    }
    const InputGate gate(input, cancel, window);
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

bool IsEnding()
{
    return g_ending;
}

void SetEnding(bool ending)
{
    g_ending = ending;
}

static void RunWork(const std::shared_ptr<Work> &piece, const std::function<QString()> &status,
                    const std::function<void()> &work, const std::function<void()> &cancel, PumpInput input)
{
    Work::Options options;
    options.status = status;
    options.stopped = cancel;
    options.input = input;
    piece->Run(options, work);
}

void RunPumped(const QString &status, const std::function<void()> &work, const std::function<void()> &cancel,
               PumpInput input)
{
    RunWork(
        std::make_shared<Work>(), [&] { return status; }, work, cancel, input);
}

void RunPumpedOn(const ADODB::ConnectionPtr &connection, const QString &status, const std::function<void()> &work,
                 const std::function<void()> &cancel, PumpInput input)
{
    RunWork(
        Work::On(connection, status), [&] { return status; }, work, cancel, input);
}

void RunPumpedOn(const ADODB::ConnectionPtr &connection, const std::function<QString()> &status,
                 const std::function<void()> &work, const std::function<void()> &cancel, PumpInput input)
{
    RunWork(Work::On(connection, status()), status, work, cancel, input);
}

bool WaitUntilIdle(const ADODB::ConnectionPtr &connection)
{
    bool given = false;
    PumpUntil([&] { return BehindText(connection->BusyWith()); }, [&] { return given || !connection->HasWork(); },
              [&] { given = true; }, PumpInput::All);
    return !given;
}

bool RunAbandonable(const QString &status, const std::function<void()> &work)
{
    const auto job = std::make_shared<Job>();
    job->wake = QAbstractEventDispatcher::instance();
    std::thread([job, work] { job->Live(work); }).detach();
    bool left = false;
    if (!job->WaitQuick())
        PumpUntil([&] { return status; }, [&] { return left || job->Done(); }, [&] { left = true; },
                  PumpInput::EscapeOnly);
    const std::scoped_lock held(job->lock);
    job->wake = nullptr;
    if (!job->done)
        return false;
    if (job->raised)
        std::rethrow_exception(job->raised);
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

int QuickWait()
{
    return g_quickMs;
}
