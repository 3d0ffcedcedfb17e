#include "ado/ThreadedSession.h"

#include <type_traits>

namespace ADODB {

namespace {

template <class Work> auto On(OwnThread &thread, const Work &work)
{
    using Result = std::invoke_result_t<Work>;
    if constexpr (std::is_void_v<Result>) {
        thread.Run(work);
    } else {
        std::optional<Result> result;
        thread.Run([&] { result.emplace(work()); });
        return std::move(*result);
    }
}

class ThreadedRows : public ResultSet
{
public:
    ThreadedRows(std::unique_ptr<ResultSet> rows, std::shared_ptr<OwnThread> thread)
        : m_rows(std::move(rows)), m_thread(std::move(thread))
    {
    }
    ~ThreadedRows() override
    {
        try {
            m_thread->Run([this] { m_rows.reset(); });
        } catch (...) {
            // the rows go with this object
        }
    }
    const std::vector<ColumnInfo> &Columns() const override { return m_rows->Columns(); }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) override
    {
        return On(*m_thread, [&] { return m_rows->Fetch(columns, maxRows); });
    }
    bool IsMadeUp() const override { return m_rows->IsMadeUp(); }
    std::unique_ptr<ResultSet> TakeNext() override
    {
        std::unique_ptr<ResultSet> next = On(*m_thread, [&] { return m_rows->TakeNext(); });
        return next ? std::make_unique<ThreadedRows>(std::move(next), m_thread) : nullptr;
    }

private:
    std::unique_ptr<ResultSet> m_rows;
    std::shared_ptr<OwnThread> m_thread;
};

} // namespace

ThreadedSession::ThreadedSession(std::unique_ptr<Session> session, std::shared_ptr<OwnThread> thread)
    : m_session(std::move(session)), m_thread(std::move(thread))
{
}

ThreadedSession::~ThreadedSession()
{
    try {
        m_thread->Run([this] { m_session.reset(); });
    } catch (...) {
        // the session goes with this object
    }
}

template <class Work> auto ThreadedSession::There(const Work &work) const
{
    return On(*m_thread, work);
}

std::unique_ptr<ResultSet> ThreadedSession::Wrap(std::unique_ptr<ResultSet> rows) const
{
    return rows ? std::make_unique<ThreadedRows>(std::move(rows), m_thread) : nullptr;
}

ExecuteResult ThreadedSession::Execute(const QString &sql)
{
    ExecuteResult result = There([&] { return m_session->Execute(sql); });
    result.Rows = Wrap(std::move(result.Rows));
    return result;
}

ExecuteResult ThreadedSession::ExecuteOne(const QString &sql)
{
    ExecuteResult result = There([&] { return m_session->ExecuteOne(sql); });
    result.Rows = Wrap(std::move(result.Rows));
    return result;
}

qint64 ThreadedSession::ExecuteBatch(const Batch &batch)
{
    return There([&] { return m_session->ExecuteBatch(batch); });
}

bool ThreadedSession::CanReturn() const
{
    return There([&] { return m_session->CanReturn(); });
}

void ThreadedSession::Begin()
{
    There([&] { m_session->Begin(); });
}

void ThreadedSession::Commit()
{
    There([&] { m_session->Commit(); });
}

void ThreadedSession::Rollback()
{
    There([&] { m_session->Rollback(); });
}

std::optional<bool> ThreadedSession::InTransaction() const
{
    return There([&] { return m_session->InTransaction(); });
}

std::unique_ptr<ResultSet> ThreadedSession::Catalogue(SchemaEnum schema, const QStringList &restrictions)
{
    return Wrap(There([&] { return m_session->Catalogue(schema, restrictions); }));
}

const ADODB::Family &ThreadedSession::Family() const
{
    return *There([&] { return &m_session->Family(); });
}

QString ThreadedSession::ProductName() const
{
    return There([&] { return m_session->ProductName(); });
}

QString ThreadedSession::ProductVersion() const
{
    return There([&] { return m_session->ProductVersion(); });
}

QString ThreadedSession::IdentifierQuote() const
{
    return There([&] { return m_session->IdentifierQuote(); });
}

QString ThreadedSession::DatabaseName() const
{
    return There([&] { return m_session->DatabaseName(); });
}

void ThreadedSession::Cancel() noexcept
{
    m_session->Cancel();
}

bool ThreadedSession::IsAlive() const
{
    return There([&] { return m_session->IsAlive(); });
}

} // namespace ADODB
