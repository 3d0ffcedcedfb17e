// The worker's side of the asynchronous recordset.
#include "ado/AsyncJob.h"

#include "ado/MemoryGuard.h"

#include <QCoreApplication>
#include <QEvent>

using ADODB::Error;

namespace {

Error OutOfMemory()
{
    return Error(ADODB::Fault::ResultTooLarge);
}

} // namespace

ADODB::RecordsetPtr UARecordset::Job::Read(ADODB::Connection::Turn &own)
{
    own.Begin();
    ADODB::Session &session = own.Driver();
    const ADODB::MemoryGuard memory([&own] { own.Cancel(); });
    ADODB::RecordsetPtr read;
    try {
        own.OnThread([&] {
            ADODB::ExecuteResult result; // lives to the end of a cancel: a driver may have to throw its rows away
            try {
                result = session.Execute(sql);
                read = result.Rows ? ReadRows(*result.Rows) : ADODB::Recordset::FromColumns({}, {});
            } catch (const Error &refusal) {
                if (refusal.Number == ADODB::adErrOutOfMemory)
                    session.Cancel(); // nobody will read the rest
                throw;
            }
        });
    } catch (const Error &refusal) {
        if (memory.Struck() && refusal.Number != ADODB::adErrOutOfMemory)
            throw ADODB::ResultTooLarge();
        throw;
    }
    return read;
}

ADODB::RecordsetPtr UARecordset::Job::ReadRows(ADODB::ResultSet &from)
{
    bool told = false;
    const auto tellDefinition = [&] {
        if (std::exchange(told, true))
            return;
        const std::lock_guard guard(lock);
        definition = from.Columns();
        Tell();
    };
    ADODB::RecordsetPtr read = ADODB::ReadAll(
        from,
        [&](qint64 rowsSoFar) {
            tellDefinition(); // the types are known from the first block on
            rows.store(rowsSoFar, std::memory_order_relaxed);
        },
        [this] { return cancelled.load(std::memory_order_relaxed); });
    tellDefinition();
    return read;
}

void UARecordset::Job::Run(std::unique_ptr<ADODB::Connection::Turn> own) noexcept
{
    ADODB::RecordsetPtr read;
    std::optional<Error> failure;
    try {
        try {
            read = Read(*own);
        } catch (const Error &refusal) {
            failure = refusal;
        } catch (const std::bad_alloc &) {
            failure = OutOfMemory();
        } catch (const std::exception &other) {
            failure = Error(ADODB::adErrProviderFailed, QString::fromLocal8Bit(other.what()));
        }
    } catch (...) {
        failure = Error(); // not even the words of the failure found room
        failure->Number = ADODB::adErrProviderFailed;
    }
    {
        const std::lock_guard guard(turnLock);
        turn = nullptr; // whoever cancels from now on finds nothing
    }
    own.reset(); // the connection is free before anybody hears of the end
    Finish(std::move(read), std::move(failure));
}

void UARecordset::Job::Finish(ADODB::RecordsetPtr read, std::optional<Error> failure) noexcept
{
    ADODB::RecordsetPtr unwanted; // its rows are freed here, on the worker, and outside the lock
    const std::lock_guard guard(lock);
    if (owner)
        recordset = std::move(read);
    else
        unwanted = std::move(read);
    error = std::move(failure);
    done = true;
    end = std::chrono::steady_clock::now();
    Tell();
}

std::mutex &UARecordset::Job::PostLock()
{
    static std::mutex lock;
    return lock;
}

void UARecordset::Job::Tell() noexcept
{
    try {
        if (!owner)
            return;
        const std::lock_guard posting(PostLock());
        QCoreApplication::postEvent(owner, new QEvent(QEvent::User));
    } catch (...) {
        // without memory for an event the owner hears nothing; it can still ask
    }
}
