#pragma once
// A session of the provider of hierarchies: what begins with SHAPE it runs itself, over the session of the provider of
// its data; any other statement goes there as it stands. Without a provider of data it is fabricated rows alone.
//
// As every session: one thread at a time but for Cancel, which stops the statement that runs there and what follows it.

#include "ado/Driver.h"
#include <atomic>

namespace ADODB {

class ShapeSession : public Session
{
public:
    explicit ShapeSession(std::unique_ptr<Session> provider); // null: none

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
    ExecuteResult RunShape(const QString &text);
    Session &Provider() const; // raises adErrFeatureNotAvailable where there is none
    const std::unique_ptr<Session> m_provider;
    std::atomic<bool> m_cancelled = false;
};

} // namespace ADODB
