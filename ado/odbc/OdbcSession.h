#pragma once
// A session over one ODBC connection. See Session for the contract; Catalogue and ExecuteBatch have sources of their
// own.

#include "ado/odbc/Link.h"

namespace ADODB::Odbc {

class OdbcSession : public Session
{
public:
    explicit OdbcSession(const QByteArray &connectionString);
    ~OdbcSession() override;

    ExecuteResult Execute(const QString &sql) override;
    qint64 ExecuteBatch(const Batch &batch) override;
    bool CanReturn() const override;

    void Begin() override;
    void Commit() override;
    void Rollback() override;
    std::optional<bool> InTransaction() const override { return m_inTransaction; }

    std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &restrictions) override;

    const ADODB::Family &Family() const override { return *m_link->Of().Family; }
    QString ProductName() const override { return m_link->Of().ProductName; }
    QString ProductVersion() const override { return m_link->Of().ProductVersion; }
    QString IdentifierQuote() const override { return m_link->Of().IdentifierQuote; }
    QString DatabaseName() const override;

    void Cancel() noexcept override { m_link->Cancel(); }
    bool IsAlive() const override { return m_link->IsAlive(); }

private:
    friend class Shield;
    void Run(const Handle &statement, const QByteArray &sql);
    ExecuteResult RunWhole(const QByteArray &text);
    ExecuteResult AllResults(Handle statement);
    bool HasTypedTransaction(); // one that a typed BEGIN opened
    void SetAutocommit(bool on);
    void End(SQLSMALLINT how);

    std::shared_ptr<Link> m_link;
    bool m_inTransaction = false;
};

} // namespace ADODB::Odbc
