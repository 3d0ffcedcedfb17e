#pragma once
// A database that does what a test says: installed in front of the real drivers for as long as it lives, it takes every
// connection string that begins with "Scripted".
//
// Its functions are called on whatever thread runs the statement; the log is guarded.

#include "ado/Driver.h"
#include "ado/family/Family.h"
#include <QMutex>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class ScriptedRows : public ADODB::ResultSet
{
public:
    // Texts; a null QString is a null value.
    ScriptedRows(const QStringList &names, QList<QStringList> rows, ADODB::DataTypeEnum type = ADODB::adVarWChar)
        : m_rows(std::move(rows))
    {
        for (const QString &name : names) {
            ADODB::ColumnInfo column;
            column.Name = name;
            column.Type = type;
            m_columns.push_back(column);
        }
    }
    const std::vector<ADODB::ColumnInfo> &Columns() const override { return m_columns; }
    qint64 Fetch(std::vector<ADODB::ColumnStore> &columns, qint64 maxRows) override
    {
        qint64 fetched = 0;
        for (; fetched < maxRows && m_next < m_rows.size(); ++m_next, ++fetched)
            for (size_t i = 0; i < columns.size(); ++i) {
                const QString text = m_rows[m_next].value(qsizetype(i));
                if (text.isNull())
                    columns[i].AppendNull();
                else if (m_columns[i].Type == ADODB::adInteger || m_columns[i].Type == ADODB::adSmallInt)
                    columns[i].AppendInt64(text.toLongLong());
                else
                    columns[i].AppendText(text.toUtf8().constData(), text.toUtf8().size());
            }
        return fetched;
    }
    void SetType(int column, ADODB::DataTypeEnum type) { m_columns[size_t(column)].Type = type; }

private:
    std::vector<ADODB::ColumnInfo> m_columns;
    QList<QStringList> m_rows;
    qsizetype m_next = 0;
};

// A door in the middle of a statement: whoever comes waits until the test opens it.
class Gate
{
public:
    ~Gate() { Open(); }
    void Pass() // on the statement's thread
    {
        std::unique_lock held(m_lock);
        m_arrived = true;
        m_changed.notify_all();
        m_changed.wait(held, [this] { return m_open; });
    }
    bool Arrived() const
    {
        const std::lock_guard held(m_lock);
        return m_arrived;
    }
    void Open()
    {
        const std::lock_guard held(m_lock);
        m_open = true;
        m_changed.notify_all();
    }

private:
    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_arrived = false, m_open = false;
};

class ScriptedDriver : public ADODB::Driver
{
public:
    ScriptedDriver()
    {
        ADODB::SetDriverHook([this](const QString &text) -> ADODB::Driver * {
            return text.startsWith(QLatin1String("Scripted")) ? this : nullptr;
        });
    }
    ~ScriptedDriver() override { ADODB::SetDriverHook({}); }

    // Each may throw ADODB::Error. Without one: every connect succeeds, every statement gives no rows, no catalogue.
    std::function<void(const QString &text, const QString &user, const QString &password)> OnConnect;
    std::function<ADODB::ExecuteResult(const QString &sql)> OnExecute;
    std::function<std::unique_ptr<ADODB::ResultSet>(ADODB::SchemaEnum schema)> OnCatalogue;
    // "BEGIN", "COMMIT" or "ROLLBACK". Only where it is set do transactions stand in the log.
    std::function<void(const QString &words)> OnTransaction;
    std::function<void()> OnCancel; // on whatever thread cancels
    ADODB::DatabaseFamily FamilyIs = ADODB::DatabaseFamily::Other;
    std::atomic<int> Cancels = 0;
    std::atomic<bool> Cancelled = false; // set by Cancel, for statements that wait for it

    QStringList Log() const
    {
        const QMutexLocker held(&m_lock);
        return m_log;
    }
    void ClearLog()
    {
        const QMutexLocker held(&m_lock);
        m_log.clear();
    }
    // For OnExecute: a statement that runs until it is cancelled or `seconds` have gone by.
    void RunUntilCancelled(double seconds)
    {
        for (int i = 0; i < int(seconds * 200); ++i) {
            if (Cancelled.exchange(false))
                throw ADODB::Error(ADODB::adErrOperationCancelled, QStringLiteral("stopped by the user"));
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    std::unique_ptr<ADODB::Session> Connect(const QString &text, const QString &user, const QString &password) override
    {
        if (OnConnect)
            OnConnect(text, user, password);
        return std::make_unique<SessionDouble>(*this);
    }

private:
    class SessionDouble : public ADODB::Session
    {
    public:
        explicit SessionDouble(ScriptedDriver &owner) : m_owner(owner) {}
        ADODB::ExecuteResult Execute(const QString &sql) override
        {
            {
                const QMutexLocker held(&m_owner.m_lock);
                m_owner.m_log << sql;
            }
            return m_owner.OnExecute ? m_owner.OnExecute(sql) : ADODB::ExecuteResult{};
        }
        qint64 ExecuteBatch(const ADODB::Batch &) override { return 0; }
        void Begin() override { Transact(QStringLiteral("BEGIN")); }
        void Commit() override { Transact(QStringLiteral("COMMIT")); }
        void Rollback() override { Transact(QStringLiteral("ROLLBACK")); }
        std::unique_ptr<ADODB::ResultSet> Catalogue(ADODB::SchemaEnum schema, const QStringList &) override
        {
            {
                const QMutexLocker held(&m_owner.m_lock);
                m_owner.m_log << QStringLiteral("[schema %1]").arg(int(schema));
            }
            return m_owner.OnCatalogue ? m_owner.OnCatalogue(schema) : nullptr;
        }
        const ADODB::Family &Family() const override { return ADODB::FamilyOf(m_owner.FamilyIs); }
        QString ProductName() const override { return QStringLiteral("Scripted"); }
        QString ProductVersion() const override { return QStringLiteral("1"); }
        QString IdentifierQuote() const override { return QStringLiteral("\""); }
        QString DatabaseName() const override { return {}; }
        void Cancel() noexcept override
        {
            ++m_owner.Cancels;
            m_owner.Cancelled = true;
            if (m_owner.OnCancel)
                m_owner.OnCancel();
        }
        bool IsAlive() const override { return true; }

    private:
        void Transact(const QString &words)
        {
            if (!m_owner.OnTransaction)
                return;
            {
                const QMutexLocker held(&m_owner.m_lock);
                m_owner.m_log << words;
            }
            m_owner.OnTransaction(words);
        }
        ScriptedDriver &m_owner;
    };

    mutable QMutex m_lock;
    QStringList m_log;
};
