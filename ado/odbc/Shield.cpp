#include "ado/odbc/Shield.h"

#include "ado/family/Family.h"

namespace ADODB::Odbc {

Shield::Shield(OdbcSession &session) : m_session(session), m_link(*session.m_link)
{
    m_nested = session.m_inTransaction || session.HasTypedTransaction();
    m_whole = !m_nested && m_link.Of().Family->Transactions.CommitsWriteAll;
}

bool Shield::GoesOnAfter(const Error &error) const
{
    return error.Number != adErrOperationCancelled && m_link.IsAlive() && !LosesTransaction(error);
}

bool Shield::LosesTransaction(const Error &error) const
{
    return m_nested && m_link.Of().Family->Transactions.DeadlockEndsAll && error.SQLState == SqlState::kGivenUp;
}

void Shield::Run(const char *sql)
{
    if (sql)
        m_session.Run(m_link.NewStatement(), sql);
}

void Shield::Begin()
{
    m_session.SetAutocommit(false);
    m_session.m_inTransaction = true;
}

void Shield::OpenRun()
{
    if (m_whole)
        Begin();
}

void Shield::KeepRun()
{
    if (m_whole)
        m_session.End(SQL_COMMIT);
}

void Shield::DropRun() noexcept
{
    TakeBackQuietly();
    try {
        if (m_whole && m_session.m_inTransaction)
            m_session.End(SQL_ROLLBACK);
    } catch (...) {
        // what is raised already says more
    }
}

void Shield::Open()
{
    if (HasSavepoints())
        Run(m_link.Of().Family->Transactions.Open);
    else
        Begin();
    m_open = true;
}

void Shield::Keep()
{
    m_open = false;
    if (HasSavepoints())
        Run(m_link.Of().Family->Transactions.Keep);
    else
        m_session.End(SQL_COMMIT);
}

void Shield::TakeBack()
{
    if (!m_open)
        return;
    m_open = false;
    if (HasSavepoints())
        Run(m_link.Of().Family->Transactions.TakeBack);
    else
        m_session.End(SQL_ROLLBACK);
    if (m_link.Of().Family->Transactions.Warnings)
        RaiseIfNotTakenBack();
    if (HasSavepoints()) // it stands still, with nothing behind it
        Run(m_link.Of().Family->Transactions.Keep);
}

void Shield::TakeBackQuietly() noexcept
{
    try {
        TakeBack();
    } catch (...) {
        // what is raised already says more
    }
}

void Shield::RaiseIfNotTakenBack()
{
    const TransactionRules &rules = m_link.Of().Family->Transactions;
    const ExecuteResult warnings = m_session.Execute(QString::fromLatin1(rules.Warnings));
    std::vector<ColumnStore> columns;
    for (const ColumnInfo &column : warnings.Rows->Columns())
        columns.emplace_back(column.Type);
    warnings.Rows->Fetch(columns, 64);
    for (qint64 row = 0; row < columns[1].Size(); ++row)
        if (columns[1].At(row).ToInt64() == rules.IgnoredRollback)
            throw Error(adErrProviderFailed, columns[2].Text(row), QString(), rules.IgnoredRollback);
}

} // namespace ADODB::Odbc
