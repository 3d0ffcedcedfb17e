// One statement run for many rows of parameters.
//
// Where the driver gains by it, a block of rows goes as parameter arrays; else the rows go one by one. Either way a
// block stands under a shield, a savepoint inside the caller's transaction and a transaction of its own outside of one:
// it is in as a whole, or as if it had never been sent. A block that was refused, or whose counts are wrong, is taken
// back, and its rows go again, each by itself, so that each refused row is known and the others are kept.
//
// Some drivers take a refused block back by themselves, if it is no longer than the lots that they send (Quirks).
// Where each commit writes the file, a whole batch runs in one transaction.
//
// Where a table takes nothing back, the rows that a condition meets are counted before anything changes.
#include "ado/StatementText.h"
#include "ado/family/Family.h"
#include "ado/odbc/BatchStatement.h"
#include "ado/odbc/OdbcSession.h"
#include "ado/odbc/Shield.h"
#include <algorithm>

namespace ADODB::Odbc {

namespace {

class BatchRun
{
public:
    BatchRun(OdbcSession &session, Link &link, const Batch &batch)
        : m_link(link), m_batch(batch), m_text(batch.Sql.toUtf8()), m_shield(session), m_statement(link, m_text),
          m_mustMeetRows(MustMeetRows(m_text))
    {
    }
    qint64 Run();

private:
    bool NextBlock();
    void RunBlock();
    bool ByArrays();
    bool ByRows();
    void EachAlone();
    void LookForRollback();
    void CountFirst(qint64 row);
    void RunOne(qint64 row);
    void Take(qint64 row, const BatchStatement::Outcome &outcome);
    void Tell();
    void TellWritten();

    Link &m_link;
    const Batch &m_batch;
    const QByteArray m_text;
    Shield m_shield;
    BatchStatement m_statement;
    const bool m_mustMeetRows;
    std::optional<BatchStatement> m_counter; // where the table takes nothing back

    std::vector<ColumnStore> m_columns; // the block
    qint64 m_first = 0, m_rows = 0;
    qint64 m_done = 0; // rows before this one are in, or refused
    qint64 m_affected = 0;
    std::vector<std::pair<qint64, Error>> m_refused; // what is to be told once it is sure
    std::vector<std::pair<qint64, std::vector<Value>>> m_made;
    qint64 m_met = 0;
};

bool BatchRun::NextBlock()
{
    m_columns.clear();
    for (const DataTypeEnum type : m_batch.Types)
        m_columns.emplace_back(type);
    m_first += m_rows;
    m_rows = m_batch.Next(m_columns, m_link.Of().BlockRows);
    m_link.RaiseIfCancelled();
    return m_rows > 0;
}

void BatchRun::Take(qint64 row, const BatchStatement::Outcome &outcome)
{
    m_met += outcome.Met();
    if (m_batch.Made && outcome.Returned.size() == 1)
        m_made.emplace_back(row, outcome.Returned.front());
}

// False: none of the block is in.
bool BatchRun::ByArrays()
{
    // In a sum one row that met none hides one that met two; under a key there is no row that meets two.
    const bool counted = !m_mustMeetRows || m_batch.ByKey || m_link.Of().CountsEachRow;
    if (!m_link.Of().ParameterArrays || !counted || m_columns.empty() || m_rows < 2 || !m_batch.Ask.isEmpty())
        return false;
    const bool shield = m_mustMeetRows || m_link.Of().KeepsPartOfBlock;
    if (shield)
        m_shield.Open();
    const BatchStatement::Outcome outcome = m_statement.RunBlock(m_columns, m_rows);
    bool good = outcome.Arrays && !outcome.Failure;
    if (good && m_mustMeetRows)
        good = qint64(outcome.Counts.size()) == m_rows
                   ? std::all_of(outcome.Counts.begin(), outcome.Counts.end(), [](qint64 met) { return met == 1; })
                   : m_batch.ByKey && outcome.Met() == m_rows;
    // In part: smaller lots were asked for, and nobody knows which rows are in.
    if (outcome.Failure && (!m_shield.GoesOnAfter(*outcome.Failure) || (outcome.InPart && !shield))) {
        m_shield.TakeBackQuietly();
        throw *outcome.Failure;
    }
    if (!good) {
        m_shield.TakeBack();
        return false;
    }
    try {
        if (shield)
            m_shield.Keep();
    } catch (const Error &error) {
        if (!m_shield.GoesOnAfter(error))
            throw;
        return false;
    }
    m_met += outcome.Met();
    if (m_batch.Made && qint64(outcome.Returned.size()) == m_rows)
        for (qint64 row = 0; row < m_rows; ++row)
            m_made.emplace_back(m_first + row, outcome.Returned[size_t(row)]);
    return true;
}

void BatchRun::LookForRollback()
{
    const CountedBatch &counted = m_batch.Counted;
    if (!m_mustMeetRows || m_batch.ByKey || counted.Count.isEmpty())
        return;
    if (!counted.TakesBack.isEmpty())
        if (const auto known = m_statement.FirstRowOf(counted.TakesBack.toUtf8());
            known && known->front().ToInt64() == 1)
            return;
    m_counter.emplace(m_link, counted.Count.toUtf8());
    m_statement = BatchStatement(m_link, counted.Sql.toUtf8());
}

// Refuses a row whose condition meets several. There is no lock, since LOCK TABLES commits the user's transaction: if
// an equal row appears between this COUNT and the statement, one of the equal rows is changed, and never both: they
// are equal in all that was read, and the statement ends after one row.
void BatchRun::CountFirst(qint64 row)
{
    const size_t first = m_columns.size() - size_t(m_batch.Counted.By);
    const BatchStatement::Outcome counted = m_counter->RunRow(m_columns, row, first);
    if (counted.Returned.size() != 1 || counted.Returned.front().front().ToInt64() > 1)
        throw Error(Fault::TooManyRows);
}

// One row of a block, whose refusal leaves the others as they are.
void BatchRun::RunOne(qint64 row)
{
    if (m_counter)
        CountFirst(row);
    BatchStatement::Outcome outcome = m_statement.RunRow(m_columns, row);
    if (m_mustMeetRows && outcome.Met() == 0)
        throw Error(Fault::RowConflict);
    if (m_mustMeetRows && outcome.Met() > 1)
        throw Error(Fault::TooManyRows);
    if (!m_batch.Ask.isEmpty())
        if (std::optional<BatchStatement::Values> made = m_statement.FirstRowOf(m_batch.Ask.toUtf8()))
            outcome.Returned = {std::move(*made)};
    Take(m_first + row, outcome);
}

// All rows of the block under one shield. False when it had to be taken back.
bool BatchRun::ByRows()
{
    // Where no row can be one too many, the whole run is shield enough, and so is a single statement. A table's heirs
    // may have rows that its key does not know.
    const bool atMostOne = !m_mustMeetRows || (m_batch.ByKey && !m_link.Of().Family->Rows.HaveHeirs);
    if (!atMostOne || (!m_shield.IsWhole() && m_rows > 1))
        m_shield.Open();
    for (qint64 row = 0; row < m_rows; ++row) {
        m_link.RaiseIfCancelled();
        try {
            RunOne(row);
        } catch (const Error &error) {
            if (!m_shield.GoesOnAfter(error))
                throw;
            // Several met; or the server has given the transaction up, or waits for its end.
            if (error.Name == Fault::TooManyRows || error.SQLState == SqlState::kFailedTransaction ||
                error.SQLState == SqlState::kGivenUp) {
                m_shield.TakeBack();
                return false;
            }
            m_refused.emplace_back(m_first + row, error);
        }
    }
    if (!m_shield.IsOpen())
        return true;
    try {
        m_shield.Keep();
    } catch (const Error &error) {
        if (!m_shield.GoesOnAfter(error))
            throw;
        return false;
    }
    return true;
}

void BatchRun::EachAlone()
{
    const bool shield = !m_counter && (m_mustMeetRows || m_shield.IsNested()); // a rollback would do nothing
    for (qint64 row = 0; row < m_rows; ++row) {
        m_link.RaiseIfCancelled();
        const qint64 met = m_met;
        const size_t made = m_made.size();
        try {
            if (shield)
                m_shield.Open();
            RunOne(row);
            if (shield)
                m_shield.Keep();
        } catch (const Error &error) {
            if (!m_shield.GoesOnAfter(error))
                throw;
            m_shield.TakeBack();
            m_met = met;
            m_made.resize(made);
            m_refused.emplace_back(m_first + row, error);
        }
        m_done = m_first + row + 1;
    }
}

void BatchRun::RunBlock()
{
    const auto forget = [this] {
        m_refused.clear();
        m_made.clear();
        m_met = 0;
    };
    forget();
    if (m_counter || !ByArrays()) {
        forget();
        if (m_counter || !ByRows()) {
            forget();
            EachAlone();
        }
    }
    m_done = m_first + m_rows;
}

void BatchRun::Tell()
{
    for (const auto &[row, error] : m_refused)
        if (row < m_done)
            m_batch.Refused(row, error);
    for (const auto &[row, values] : m_made)
        if (row < m_done)
            m_batch.Made(row, values);
    m_refused.clear();
    m_made.clear();
    m_affected += std::exchange(m_met, 0);
}

void BatchRun::TellWritten()
{
    if (m_batch.Written)
        m_batch.Written(m_done);
}

qint64 BatchRun::Run()
{
    m_shield.OpenRun();
    try {
        LookForRollback();
        while (NextBlock()) {
            RunBlock();
            Tell();
            if (!m_shield.IsNested() && !m_shield.IsWhole())
                TellWritten();
        }
        m_shield.KeepRun();
    } catch (...) {
        const bool lost = [this] {
            try {
                throw;
            } catch (const Error &error) {
                return m_shield.LosesTransaction(error) || (m_shield.IsNested() && !m_link.IsAlive());
            } catch (...) {
                return false;
            }
        }();
        m_shield.DropRun();
        if (!m_shield.IsWhole() && !lost) {
            Tell();
            TellWritten();
        }
        throw;
    }
    TellWritten();
    return m_affected;
}

} // namespace

bool OdbcSession::CanReturn() const
{
    const auto can = Family().Rows.CanReturn;
    return can && can(ProductName(), ProductVersion());
}

qint64 OdbcSession::ExecuteBatch(const Batch &batch)
{
    m_link->ForgetCancel();
    return BatchRun(*this, *m_link, batch).Run();
}

} // namespace ADODB::Odbc
