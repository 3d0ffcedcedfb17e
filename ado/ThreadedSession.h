#pragma once
// A session whose every operation is done on the connection's own thread, whichever thread calls it; its results as
// well. What runs on that thread already passes straight through.
//
// Cancel alone goes to the driver from the thread that calls it.

#include "ado/Driver.h"
#include "ado/OwnThread.h"
#include <memory>

namespace ADODB {

class ThreadedSession : public Session
{
public:
    ThreadedSession(std::unique_ptr<Session> session, std::shared_ptr<OwnThread> thread);
    ~ThreadedSession() override;

    ExecuteResult Execute(const QString &sql) override;
    ExecuteResult ExecuteOne(const QString &sql) override;
    qint64 ExecuteBatch(const Batch &batch) override;
    bool CanReturn() const override;
    void Begin() override;
    void Commit() override;
    void Rollback() override;
    std::optional<bool> InTransaction() const override;
    std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &restrictions) override;
    const ADODB::Family &Family() const override;
    QString ProductName() const override;
    QString ProductVersion() const override;
    QString IdentifierQuote() const override;
    QString DatabaseName() const override;
    void Cancel() noexcept override;
    bool IsAlive() const override;

private:
    template <class Work> auto There(const Work &work) const;
    std::unique_ptr<ResultSet> Wrap(std::unique_ptr<ResultSet> rows) const;
    std::unique_ptr<Session> m_session;
    std::shared_ptr<OwnThread> m_thread;
};

} // namespace ADODB
