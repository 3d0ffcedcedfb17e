// The owner's side of the asynchronous recordset, on the interface thread.
#include "ado/UARecordset.h"

#include "ado/AsyncJob.h"

#include <QEvent>
#include <QPointer>
#include <system_error>

UARecordset::UARecordset(QObject *parent) : QObject(parent) {}

UARecordset::~UARecordset()
{
    LetGo();
}

void UARecordset::LetGo() noexcept
{
    if (!m_job)
        return;
    const std::shared_ptr<Job> job = std::exchange(m_job, nullptr);
    bool running = false;
    {
        const std::lock_guard guard(job->lock);
        job->owner = nullptr; // from here on no event is posted
        running = !job->done;
    }
    if (running)
        Workers::Cancel(*job);
}

void UARecordset::OpenRecordset(const QString &SQL, const ADODB::ConnectionPtr &Connection, int)
{
    LetGo();
    const auto job = std::make_shared<Job>();
    job->sql = SQL;
    job->owner = this;
    m_job = job;
    if (!Connection) {
        job->Finish(nullptr, ADODB::Error(ADODB::Fault::ObjectClosed));
        return;
    }
    try {
        auto turn = std::make_unique<ADODB::Connection::Turn>(Connection, SQL);
        job->turn = turn.get();
        Workers::Get().Start(job, std::move(turn));
    } catch (const std::exception &failure) { // no thread, no memory: told like any other failure
        {
            const std::lock_guard guard(job->turnLock);
            job->turn = nullptr;
        }
        job->Finish(nullptr, ADODB::Error(ADODB::adErrOutOfMemory, QString::fromLocal8Bit(failure.what())));
    }
}

bool UARecordset::IsRunning() const
{
    if (!m_job)
        return false;
    const std::lock_guard guard(m_job->lock);
    return !m_job->done;
}

qint64 UARecordset::RowsSoFar() const
{
    return m_job ? m_job->rows.load(std::memory_order_relaxed) : 0;
}

double UARecordset::ElapsedSeconds() const
{
    if (!m_job)
        return 0;
    const std::lock_guard guard(m_job->lock);
    const auto end = m_job->done ? m_job->end : std::chrono::steady_clock::now();
    return std::chrono::duration<double>(end - m_job->start).count();
}

void UARecordset::Cancel()
{
    if (IsRunning())
        Workers::Cancel(*m_job);
}

QString UARecordset::WaitsFor() const
{
    if (!m_job)
        return {};
    const std::lock_guard alive(m_job->turnLock);
    return m_job->turn ? m_job->turn->WaitsFor() : QString();
}

bool UARecordset::event(QEvent *event)
{
    {
        const std::lock_guard posted(Job::PostLock());
    }
    if (event->type() != QEvent::User)
        return QObject::event(event);
    Deliver();
    return true;
}

// Takes out of the mailbox what is there. A receiver may open another statement or destroy this object: after each
// signal it is looked whether the job is still ours.
void UARecordset::Deliver()
{
    const std::shared_ptr<Job> job = m_job;
    if (!job)
        return;
    std::optional<std::vector<ADODB::ColumnInfo>> definition;
    ADODB::RecordsetPtr recordset;
    std::optional<ADODB::Error> error;
    {
        const std::lock_guard guard(job->lock);
        definition.swap(job->definition);
        recordset.swap(job->recordset);
        error.swap(job->error);
    }
    const QPointer<UARecordset> self(this);
    if (definition)
        emit GotTableDefinition(*definition);
    if (!self || m_job != job)
        return;
    if (error)
        emit ErrorOccured(error->Number, error->Description);
    else if (recordset)
        emit RecordsetOpened(recordset);
}
