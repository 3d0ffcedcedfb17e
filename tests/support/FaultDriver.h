#pragma once
// A driver for tests that speaks to SQLite in memory and fails on command: it breaks the connection, refuses, truncates
// a block, delays, or runs out of memory at the n-th call. Put in front of the real drivers for as long as the object
// lives; it answers every connection string that begins with "Driver=Fault". Interface thread makes it, any thread may
// call it.

#include "ado/Driver.h"
#include "ado/sqlite/SqliteDriver.h"
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>

namespace fault {

enum class Kind
{
    None,
    Break,
    Refuse,
    Truncate,
    Delay,
    NoMemory,
    Foreign
};

// What goes wrong, and at which call of the session (from 0; -1 is never). Shared by driver, session and rows.
struct Plan
{
    std::atomic<Kind> kind = Kind::None;
    std::atomic<int> at = -1;
    std::atomic<int> calls = 0;
    std::atomic<bool> broken = false;
    std::atomic<int> cancels = 0;
    std::function<void()> atCatalogue; // what happens meanwhile

    void Set(Kind what, int call)
    {
        kind = what;
        calls = 0;
        broken = false;
        at = call;
    }
    static ADODB::Error Gone()
    {
        return ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("server closed the connection unexpectedly"),
                            QStringLiteral("08S01"), 7);
    }
    // True when a block has to be truncated here; the other faults happen inside.
    bool Pass()
    {
        if (broken)
            throw Gone();
        if (calls++ != at)
            return false;
        switch (kind.load()) {
        case Kind::Break:
            broken = true;
            throw Gone();
        case Kind::Refuse:
            throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("refused"), QStringLiteral("HY000"));
        case Kind::NoMemory:
            throw std::bad_alloc();
        case Kind::Foreign:
            throw std::runtime_error("something foreign");
        case Kind::Delay:
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return false;
        case Kind::Truncate:
            return true;
        case Kind::None:
            break;
        }
        return false;
    }
};

class Rows : public ADODB::ResultSet
{
public:
    Rows(std::unique_ptr<ADODB::ResultSet> real, Plan &plan) : m_real(std::move(real)), m_plan(plan) {}
    const std::vector<ADODB::ColumnInfo> &Columns() const override { return m_real->Columns(); }
    qint64 Fetch(std::vector<ADODB::ColumnStore> &columns, qint64 maxRows) override
    {
        if (m_plan.Pass()) { // half a row is there when the server goes
            m_plan.broken = true;
            columns.front().AppendNull();
            throw Plan::Gone();
        }
        return m_real->Fetch(columns, maxRows);
    }
    std::unique_ptr<ADODB::ResultSet> TakeNext() override
    {
        std::unique_ptr<ADODB::ResultSet> next = m_real->TakeNext();
        return next ? std::make_unique<Rows>(std::move(next), m_plan) : nullptr;
    }

private:
    std::unique_ptr<ADODB::ResultSet> m_real;
    Plan &m_plan;
};

class Session : public ADODB::Session
{
public:
    Session(std::unique_ptr<ADODB::Session> real, Plan &plan) : m_real(std::move(real)), m_plan(plan) {}

    ADODB::ExecuteResult Execute(const QString &sql) override
    {
        m_plan.Pass();
        ADODB::ExecuteResult result = m_real->Execute(sql);
        if (result.Rows)
            result.Rows = std::make_unique<Rows>(std::move(result.Rows), m_plan);
        return result;
    }
    qint64 ExecuteBatch(const ADODB::Batch &batch) override
    {
        m_plan.Pass();
        return m_real->ExecuteBatch(batch);
    }
    bool CanReturn() const override { return m_real->CanReturn(); }
    void Begin() override
    {
        m_plan.Pass();
        m_real->Begin();
    }
    void Commit() override
    {
        m_plan.Pass();
        m_real->Commit();
    }
    void Rollback() override
    {
        m_plan.Pass();
        m_real->Rollback();
    }
    std::unique_ptr<ADODB::ResultSet> Catalogue(ADODB::SchemaEnum schema, const QStringList &restrictions) override
    {
        m_plan.Pass();
        if (m_plan.atCatalogue)
            m_plan.atCatalogue();
        return m_real->Catalogue(schema, restrictions);
    }
    const ADODB::Family &Family() const override { return m_real->Family(); }
    QString ProductName() const override { return m_real->ProductName(); }
    QString ProductVersion() const override { return m_real->ProductVersion(); }
    QString IdentifierQuote() const override { return m_real->IdentifierQuote(); }
    QString DatabaseName() const override { return m_real->DatabaseName(); }
    void Cancel() noexcept override
    {
        ++m_plan.cancels;
        m_real->Cancel();
    }
    bool IsAlive() const override { return !m_plan.broken; }

private:
    std::unique_ptr<ADODB::Session> m_real;
    Plan &m_plan;
};

class Driver : public ADODB::Driver
{
public:
    Driver()
    {
        ADODB::SetDriverHook([this](const QString &text) -> ADODB::Driver * {
            return text.startsWith(QStringLiteral("Driver=Fault")) ? this : nullptr;
        });
    }
    ~Driver() override { ADODB::SetDriverHook({}); }

    std::unique_ptr<ADODB::Session> Connect(const QString &, const QString &user, const QString &password) override
    {
        plan.Pass();
        if (user == QStringLiteral("wrong"))
            throw ADODB::Error(ADODB::adErrLoginFailed, QStringLiteral("password authentication failed"),
                               QStringLiteral("28P01"));
        return std::make_unique<Session>(
            ADODB::SqliteDriver().Connect(QStringLiteral("Driver=SQLite;Database=:memory:"), user, password), plan);
    }

    Plan plan; // outlives its sessions: close connections before the driver goes
};

} // namespace fault
