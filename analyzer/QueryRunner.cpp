#include "analyzer/QueryRunner.h"

#include "analyzer/QueryBatch.h"
#include "analyzer/QueryText.h"
#include "analyzer/RunLog.h"
#include "analyzer/RunResults.h"
#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/PumpUntil.h"
#include <QApplication>

namespace {

const QString kAlterQuestion = QStringLiteral("This SQL statement(s) may alter the data or structure of the database. "
                                              "Are you sure you want to continue?");
const QString kWillRollBack = QStringLiteral("Will now atempt to rollback.");
const QString kTransaction = QStringLiteral("Transaction");

void TellError(const QString &why, QWidget *parent)
{
    MsgBox(why + QStringLiteral("\r\n") + kWillRollBack, mbExclamation, QStringLiteral("Error"), parent);
}

bool RunIsOff()
{
    const CommandBar *bar = Shell::Current().Commands();
    const QString key = QStringLiteral("SQLRun");
    return bar && bar->HasButton(key) && !bar->Enabled(key);
}

} // namespace

QueryRunner::QueryRunner(ChildWindow *window, QueryText &text, RunLog &log, RunResults &results)
    : m_window(window), m_text(text), m_log(log), m_results(results)
{
}

// What comes before any run: the log of the former one goes, and a run that alters is confirmed. Null when nothing
// shall run. The connection is taken here, once.
std::shared_ptr<QueryRunner::Batch> QueryRunner::BatchToRun(bool transaction)
{
    if (m_running || RunIsOff())
        return {};
    const QPointer<QueryRunner> self(this);
    m_text.EndBracketShow();
    m_log.Clear();
    if (!IsConnected(true) || !self)
        return {};
    const auto batch = std::make_shared<Batch>();
    batch->runner = self;
    batch->connection = gConn;
    const QString sql = transaction ? m_text.Editor()->Text() : m_text.RunText();
    if (lang::Trim(sql).isEmpty())
        return {};
    if (IsAlteringSQL(sql)) {
        if (MsgBox(kAlterQuestion, mbYesNo | mbExclamation, QStringLiteral("SQL"), m_window) != mbYes || !self)
            return {};
        m_log.Show();
    }
    batch->steps = RunPlan(sql, m_results.Multi, transaction);
    batch->words = batch->steps.empty() ? kTransaction : batch->steps.front().sql;
    return batch;
}

std::shared_ptr<void> QueryRunner::BeginRun(const std::shared_ptr<Work> &work)
{
    m_running = true;
    m_work = work;
    return {nullptr, [self = QPointer<QueryRunner>(this)](void *) {
                if (self)
                    self->m_running = false;
            }};
}

void QueryRunner::RunWork(const std::shared_ptr<Work> &work, const QString &words, const std::function<void()> &body)
{
    const auto running = BeginRun(work);
    Work::Options options;
    options.status = [line = words] { return WaitText(line); };
    options.window = m_window;
    work->Run(options, body);
}

void QueryRunner::Cancel()
{
    if (const auto work = m_work.lock())
        work->Cancel();
}

bool QueryRunner::RunSQL()
{
    return RunStatements(nullptr);
}

// The run has the connection to itself until its last statement; one that commits, until then.
bool QueryRunner::RunStatements(QString *commitError)
{
    const QPointer<QueryRunner> self(this);
    const bool commit = m_CommitRun;
    const std::shared_ptr<Batch> batch = BatchToRun(false);
    if (!batch) {
        if (commit && self && gConn)
            TransactionStep(&ADODB::Connection::CommitTrans, commitError);
        return true;
    }
    batch->stopAtError = commit;
    QString why;
    const bool fine = Attempt(
        [&] {
            batch->work = Work::On(batch->connection, batch->words, ADODB::Claim::Whole);
            RunWork(batch->work, batch->words, [batch, commit, commitError] {
                batch->Run();
                if (commit)
                    Attempt([&] { batch->connection->CommitTrans(); }, commitError);
            });
        },
        &why);
    if (fine)
        return batch->result;
    if (self) {
        Shell::Current().SetHourglass(false);
        if (commit)
            TellError(why, m_window);
    }
    return false;
}

bool QueryRunner::RunSQL_Trans()
{
    const QPointer<QueryRunner> self(this);
    const std::shared_ptr<Batch> batch = BatchToRun(true);
    if (!batch)
        return true;
    batch->stopAtError = true;
    const bool fine = Attempt([&] {
        batch->work = Work::On(batch->connection, batch->words, ADODB::Claim::Whole);
        RunWork(batch->work, batch->words, [batch] {
            QString why;
            const bool done = Attempt(
                [&] {
                    batch->connection->BeginTrans();
                    batch->Run();
                    batch->connection->CommitTrans(); // waits for the rows that are still being read
                },
                &why);
            if (done)
                return;
            batch->result = false;
            // The box first, and nobody comes between it and the roll-back. A window that has gone is not asked.
            Attempt([&] {
                batch->OnWindow([why](QueryRunner &runner) {
                    Shell::Current().SetHourglass(false);
                    TellError(why, runner.m_window);
                });
            });
            const ADODB::Claim::Shield shield; // half a transaction is none, also of a run that was cancelled
            Attempt([&] { batch->connection->RollbackTrans(); });
        });
    });
    return fine && batch->result && self;
}

// A transaction that was begun so is the connection's: every window's statements join it, and any window may end it,
// but not in the middle of another's run: that is waited for.
void QueryRunner::TransactionStep(void (ADODB::Connection::*step)(), QString *why)
{
    const ADODB::ConnectionPtr connection = gConn;
    Attempt(
        [&] {
            RunWork(Work::On(connection, kTransaction), kTransaction,
                    [connection, step] { (connection.get()->*step)(); });
        },
        why);
}

void QueryRunner::Transaction(TransactionItem item)
{
    if (m_running || !IsConnected(true))
        return;
    const QPointer<QueryRunner> self(this);
    QString why;
    switch (item) {
    case TransactionItem::Begin:
        TransactionStep(&ADODB::Connection::BeginTrans, &why);
        break;
    case TransactionItem::RollBack:
        TransactionStep(&ADODB::Connection::RollbackTrans, &why);
        break;
    case TransactionItem::Commit:
        m_CommitRun = true;
        if (lang::Trim(m_text.Editor()->SelText()).isEmpty()) {
            m_text.Editor()->SetSelStart(0);
            m_text.Editor()->SetSelLength(m_text.Editor()->Text().size());
        }
        RunStatements(&why);
        if (self)
            m_CommitRun = false;
        break;
    }
    if (!why.isEmpty())
        Shell::Current().SetStatus(QStringLiteral("Error: ") + why);
}
