// Running what stands in the editor.
#include "analyzer/frmSQL.h"

#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/PumpUntil.h"
#include "session/Work.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QMdiSubWindow>

namespace {

const QString alterQuestion = QStringLiteral("This SQL statement(s) may alter the data or structure of the database. "
                                             "Are you sure you want to continue?");
const QString willRollBack = QStringLiteral("Will now atempt to rollback.");

void TellError(const QString &why, QWidget *parent)
{
    MsgBox(why + QStringLiteral("\r\n") + willRollBack, mbExclamation, QStringLiteral("Error"), parent);
}

bool RunIsOff()
{
    const CommandBar *bar = Shell::Current().Commands();
    const QString key = QStringLiteral("SQLRun");
    return bar && bar->HasButton(key) && !bar->Enabled(key);
}

// The frame that the work area puts round a child; the child itself where there is none.
QWidget *Frame(QWidget *child)
{
    auto *frame = qobject_cast<QMdiSubWindow *>(child->parentWidget());
    return frame ? static_cast<QWidget *>(frame) : child;
}

void MakeNormal(QWidget *frame)
{
    if (frame->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized))
        frame->showNormal();
}

} // namespace

// One run on its way. Its thread and the window share it, so that either may be gone first.
struct frmSQL::Batch
{
    QPointer<frmSQL> window;
    ADODB::ConnectionPtr connection;
    std::vector<RunStep> steps;
    QString words; // what others who wait are told
    std::shared_ptr<Work> work;
    bool stopAtError = false; // and raise it
    bool result = true;

    void OnWindow(const std::function<void(frmSQL &)> &call)
    {
        work->OnWindow([window = window, call] {
            if (window)
                call(*window);
        });
    }
    // A line of the log and a beep; nothing where the window has gone.
    void Log(const QString &line, bool beep)
    {
        work->Post([window = window, line, beep] {
            if (!window)
                return;
            window->AddLog(line);
            if (beep)
                QApplication::beep();
        });
    }
    void Run(); // every step; raises what ends the run
    void LogNotRun(size_t from);
};

// A statement that fails leaves the count of the one before it, and that is logged. A cancel ends the run: the log says
// which statements were not run.
void frmSQL::Batch::Run()
{
    qint64 affected = 0;
    for (size_t i = 0; i < steps.size(); ++i) {
        const RunStep &step = steps[i];
        if (lang::Trim(step.sql).isEmpty())
            break;
        const bool altering = step.target == RunTarget::Execute;
        try {
            if (altering)
                connection->Execute(step.sql, &affected);
            else
                OnWindow([step, connection = connection, claim = work->Claim()](frmSQL &into) {
                    const ADODB::Claim::Scope scope(claim); // its rows are a part of this run
                    into.ShowResult(step, connection);
                });
        } catch (const ADODB::Error &error) {
            result = false;
            if (error.Number == ADODB::adErrOperationCancelled || work->Cancelled()) {
                work->Cancel(); // also what was started before it
                Log(CancelledLine(step.sql), true);
                LogNotRun(i + 1);
                throw;
            }
            if (stopAtError)
                throw;
            work->Post([] { Shell::Current().SetHourglass(false); });
        }
        if (altering)
            Log(LogLine(step.sql, affected), true);
    }
}

void frmSQL::Batch::LogNotRun(size_t from)
{
    for (size_t i = from; i < steps.size() && !lang::Trim(steps[i].sql).isEmpty(); ++i)
        Log(NotRunLine(steps[i].sql), false);
}

// What comes before any run: the log of the former one goes, and a run that alters is confirmed. Null when nothing
// shall run. The connection is taken here, once.
std::shared_ptr<frmSQL::Batch> frmSQL::BatchToRun(bool transaction)
{
    if (m_running || RunIsOff())
        return {};
    const QPointer<frmSQL> self(this);
    EndBracketShow();
    ClearLog();
    if (!IsConnected(true) || !self)
        return {};
    const auto batch = std::make_shared<Batch>();
    batch->window = self;
    batch->connection = gConn;
    const QString sql = transaction ? txtSQL->Text() : RunText();
    if (lang::Trim(sql).isEmpty())
        return {};
    if (IsAlteringSQL(sql)) {
        if (MsgBox(alterQuestion, mbYesNo | mbExclamation, QStringLiteral("SQL"), this) != mbYes || !self)
            return {};
        ShowLog();
    }
    batch->steps = RunPlan(sql, m_Multi, transaction);
    batch->words = batch->steps.empty() ? QStringLiteral("Transaction") : batch->steps.front().sql;
    return batch;
}

// None other starts in this window while what it gives lives, though events come in. Closing the window cancels it.
std::shared_ptr<void> frmSQL::BeginRun(const std::shared_ptr<Work> &work)
{
    m_running = true;
    m_work = work;
    return {nullptr, [self = QPointer<frmSQL>(this)](void *) {
                if (self)
                    self->m_running = false;
            }};
}

void frmSQL::RunWork(const std::shared_ptr<Work> &work, const QString &words, const std::function<void()> &body)
{
    const auto running = BeginRun(work);
    Work::Options options;
    options.status = [line = words] { return WaitText(line); };
    options.window = this;
    work->Run(options, body);
}

bool frmSQL::RunSQL()
{
    return RunStatements(nullptr);
}

// The run has the connection to itself until its last statement; one that commits, until then.
bool frmSQL::RunStatements(QString *commitError)
{
    const QPointer<frmSQL> self(this);
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
            TellError(why, this);
    }
    return false;
}

bool frmSQL::RunSQL_Trans()
{
    const QPointer<frmSQL> self(this);
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
                batch->OnWindow([why](frmSQL &window) {
                    Shell::Current().SetHourglass(false);
                    TellError(why, &window);
                });
            });
            const ADODB::Claim::Shield shield; // half a transaction is none, also of a run that was cancelled
            Attempt([&] { batch->connection->RollbackTrans(); });
        });
    });
    return fine && batch->result && self;
}

void frmSQL::ShowResult(const RunStep &step, const ADODB::ConnectionPtr &connection)
{
    frmHirarchy *result = step.target == RunTarget::ReusedWindow ? m_ResultWindow.data() : nullptr;
    if (!result) {
        result = new frmHirarchy;
        Shell::Current().AddChild(result);
        if (step.target == RunTarget::ReusedWindow)
            m_ResultWindow = result;
    }
    if (step.target == RunTarget::ReusedWindow)
        ShareWorkArea(result);
    result->KillOnError = false;
    result->ClearForRun();
    result->SetCallerSQLForm(this);
    if (m_Multi && step.target == RunTarget::NewWindow) {
        Frame(result)->showMinimized(); // and stays so when its rows come
        Frame(result)->raise();         // in sight, also where this window has the whole work area
    }
    result->AppendMessage(QStringLiteral("GO"), QStringLiteral("Log"), true);
    result->AppendMessage(step.sql, QStringLiteral("Log"), true);
    result->ShowRec(step.sql, connection, QStringLiteral("SQL Result: ") + m_ConnName);
}

bool frmSQL::StopRuns()
{
    bool any = false;
    for (ChildWindow *child : Shell::Current().Children()) {
        auto *result = qobject_cast<frmHirarchy *>(child);
        if (!result || result->CallerSQLForm() != this || !result->IsRunning())
            continue;
        result->StopRun();
        any = true;
    }
    return any;
}

// Both windows in their normal state; with the split this one above the result.
void frmSQL::ShareWorkArea(frmHirarchy *result)
{
    QWidget *mine = Frame(this);
    QWidget *others = Frame(result);
    MakeNormal(mine);
    MakeNormal(others);
    others->raise(); // it may have been covered since the last run; the keyboard stays here
    if (!m_Split)
        return;
    const QRect area = Shell::Current().ClientArea();
    const int half = area.height() / 2;
    mine->setGeometry(0, 0, area.width(), half);
    others->setGeometry(0, half, area.width(), area.height() - half);
}

// A transaction that was begun so is the connection's: every window's statements join it, and any window may end it,
// but not in the middle of another's run: that is waited for.
void frmSQL::TransactionStep(void (ADODB::Connection::*step)(), QString *why)
{
    const ADODB::ConnectionPtr connection = gConn;
    Attempt(
        [&] {
            const QString words = QStringLiteral("Transaction");
            RunWork(Work::On(connection, words), words, [connection, step] { (connection.get()->*step)(); });
        },
        why);
}

// The items of the transaction button. What the driver refuses is told in the status bar.
void frmSQL::Transaction(const char *key)
{
    if (m_running || !IsConnected(true))
        return;
    const QPointer<frmSQL> self(this);
    const QLatin1String wanted(key);
    QString why;
    if (wanted == QLatin1String("BT")) {
        TransactionStep(&ADODB::Connection::BeginTrans, &why);
    } else if (wanted == QLatin1String("RT")) {
        TransactionStep(&ADODB::Connection::RollbackTrans, &why);
    } else {
        m_CommitRun = true;
        if (lang::Trim(txtSQL->SelText()).isEmpty()) {
            txtSQL->SetSelStart(0);
            txtSQL->SetSelLength(txtSQL->Text().size());
        }
        RunStatements(&why);
        if (self)
            m_CommitRun = false;
    }
    if (!why.isEmpty())
        Shell::Current().SetStatus(QStringLiteral("Error: ") + why);
}
