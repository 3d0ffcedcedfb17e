#include "ado/odbc/Shield.h"

namespace ADODB::Odbc {

namespace {

constexpr int kNotTakenBack = 1196; // MySQL's older table kinds ignore a rollback

struct SavepointWords
{
    const char *open, *keep, *takeBack;
};

SavepointWords WordsOf(DatabaseFamily family)
{
    if (family == DatabaseFamily::SQLServer)
        return {"SAVE TRANSACTION brindlewick", nullptr, "ROLLBACK TRANSACTION brindlewick"};
    if (family == DatabaseFamily::Oracle)
        return {"SAVEPOINT brindlewick", nullptr, "ROLLBACK TO SAVEPOINT brindlewick"};
    return {"SAVEPOINT brindlewick", "RELEASE SAVEPOINT brindlewick", "ROLLBACK TO SAVEPOINT brindlewick"};
}

} // namespace

Shield::Shield(OdbcSession &session) : m_session(session), m_link(*session.m_link)
{
    m_nested = session.m_inTransaction || session.HasTypedTransaction();
    m_whole = !m_nested && m_link.Of().Family == DatabaseFamily::SQLite;
}

bool Shield::GoesOnAfter(const Error &error) const
{
    return error.Number != adErrOperationCancelled && m_link.IsAlive() && !LosesTransaction(error);
}

bool Shield::LosesTransaction(const Error &error) const
{
    return m_nested && m_link.Of().Family == DatabaseFamily::MySQL && error.SQLState == SqlState::kGivenUp;
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
        Run(WordsOf(m_link.Of().Family).open);
    else
        Begin();
    m_open = true;
}

void Shield::Keep()
{
    m_open = false;
    if (HasSavepoints())
        Run(WordsOf(m_link.Of().Family).keep);
    else
        m_session.End(SQL_COMMIT);
}

void Shield::TakeBack()
{
    if (!m_open)
        return;
    m_open = false;
    if (HasSavepoints())
        Run(WordsOf(m_link.Of().Family).takeBack);
    else
        m_session.End(SQL_ROLLBACK);
    if (m_link.Of().Family == DatabaseFamily::MySQL)
        RaiseIfNotTakenBack();
    if (HasSavepoints()) // it stands still, with nothing behind it
        Run(WordsOf(m_link.Of().Family).keep);
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
    const ExecuteResult warnings = m_session.Execute(QStringLiteral("SHOW WARNINGS"));
    std::vector<ColumnStore> columns;
    for (const ColumnInfo &column : warnings.Rows->Columns())
        columns.emplace_back(column.Type);
    warnings.Rows->Fetch(columns, 64);
    for (qint64 row = 0; row < columns[1].Size(); ++row)
        if (columns[1].At(row).ToInt64() == kNotTakenBack)
            throw Error(adErrProviderFailed, columns[2].Text(row), QString(), kNotTakenBack);
}

} // namespace ADODB::Odbc
