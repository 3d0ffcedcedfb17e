#include "ado/MemoryGuard.h"

#include "ado/Connection.h"
#include "ado/MemoryLimits.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace ADODB {

namespace {

constexpr std::chrono::milliseconds kPause(100);
constexpr qint64 kSlack = 64 * 1024 * 1024; // what a program may grow for reasons of its own
constexpr qint64 kLeastFreeOfMachine = 16;  // this part of the machine's memory stays free

qint64 BytesHeld()
{
    long long whole = 0, held = 0;
    if (FILE *file = std::fopen("/proc/self/statm", "re")) {
        if (std::fscanf(file, "%lld %lld", &whole, &held) != 2)
            held = 0;
        std::fclose(file);
    }
    return held * sysconf(_SC_PAGESIZE);
}

bool IsMachineFull()
{
    long long total = 0, available = -1, kilobytes = 0;
    if (FILE *file = std::fopen("/proc/meminfo", "re")) {
        char name[64];
        while (std::fscanf(file, "%63s %lld%*[^\n]", name, &kilobytes) == 2) {
            if (!std::strcmp(name, "MemTotal:"))
                total = kilobytes;
            else if (!std::strcmp(name, "MemAvailable:"))
                available = kilobytes;
        }
        std::fclose(file);
    }
    return available >= 0 && available < total / kLeastFreeOfMachine;
}

bool IsPast(qint64 start)
{
    const qint64 limit = ResultLimit();
    if (limit <= 0)
        return false;
    const qint64 grown = BytesHeld() - start - kSlack;
    return grown > limit || (grown > 0 && (IsMachineFull() || IsShort(MemoryLimits())));
}

} // namespace

Error ResultTooLarge(qint64 rows)
{
    const QString stopped =
        rows < 0 ? QStringLiteral("it was stopped") : QStringLiteral("it was stopped after %1 rows").arg(rows);
    return Error(
        adErrOutOfMemory,
        QStringLiteral("The result is too large for the memory: %1. Ask for fewer rows or columns.").arg(stopped),
        QStringLiteral("HY001"));
}

MemoryGuard::MemoryGuard(std::function<void()> cancel) : m_cancel(std::move(cancel)), m_start(BytesHeld())
{
    try {
        m_thread = std::thread([this] { Watch(); });
    } catch (const std::exception &) {
        // without a thread the statement runs unwatched
    }
}

MemoryGuard::~MemoryGuard()
{
    {
        const std::lock_guard guard(m_lock);
        m_ending = true;
    }
    m_end.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

bool MemoryGuard::Struck() const
{
    const std::lock_guard guard(m_lock);
    return m_struck;
}

void MemoryGuard::Watch()
{
    std::unique_lock guard(m_lock);
    while (!m_end.wait_for(guard, kPause, [this] { return m_ending; })) {
        if (!m_struck && !IsPast(m_start))
            continue;
        m_struck = true;
        guard.unlock();
        try {
            m_cancel();
        } catch (...) {
            // tried again after the pause
        }
        guard.lock();
    }
}

} // namespace ADODB
