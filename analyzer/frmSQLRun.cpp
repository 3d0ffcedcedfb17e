// Running what stands in the editor.
#include "analyzer/frmSQL.h"

#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
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

// What comes before any run: the log of the former one goes, and a run that alters is confirmed. The text to run; ""
// when nothing shall run.
QString frmSQL::TextToRun(bool whole)
{
    if (m_running || RunIsOff())
        return {};
    const QPointer<frmSQL> self(this);
    EndBracketShow();
    ClearLog();
    if (!IsConnected(true) || !self)
        return {};
    const QString sql = whole ? txtSQL->Text() : RunText();
    if (lang::Trim(sql).isEmpty())
        return {};
    if (!IsAlteringSQL(sql))
        return sql;
    if (MsgBox(alterQuestion, mbYesNo | mbExclamation, QStringLiteral("SQL"), this) != mbYes || !self)
        return {};
    ShowLog();
    return sql;
}

std::shared_ptr<void> frmSQL::BeginRun()
{
    m_running = true;
    return {nullptr, [self = QPointer<frmSQL>(this)](void *) {
                if (self)
                    self->m_running = false;
            }};
}

bool frmSQL::RunSQL()
{
    const QPointer<frmSQL> self(this);
    const QString sql = TextToRun(false);
    if (sql.isEmpty())
        return true;
    const auto running = BeginRun();

    bool result = true;
    qint64 affected = 0; // a statement that fails leaves the count of the one before it, and that is logged
    for (const RunStep &step : RunPlan(sql, m_Multi, false)) {
        if (lang::Trim(step.sql).isEmpty())
            break;
        QString why;
        const bool altering = step.target == RunTarget::Execute;
        const bool fine = altering ? Attempt([&] { ExecutePumped(gConn, step.sql, &affected); }, &why)
                                   : Attempt([&] { ShowResult(step); }, &why);
        if (!self)
            return fine;
        if (!fine) {
            result = false;
            Shell::Current().SetHourglass(false);
            if (m_CommitRun) {
                TellError(why, this);
                return false;
            }
        }
        if (altering) {
            AddLog(LogLine(step.sql, affected));
            QApplication::beep();
        }
    }
    return result;
}

bool frmSQL::RunSQL_Trans()
{
    const QPointer<frmSQL> self(this);
    const QString sql = TextToRun(true);
    if (sql.isEmpty())
        return true;
    const auto running = BeginRun();

    const ADODB::ConnectionPtr connection = gConn;
    QString why;
    const bool fine = Attempt(
        [&] {
            const std::vector<RunStep> plan = RunPlan(sql, m_Multi, true);
            connection->BeginTrans();
            qint64 affected = 0;
            for (const RunStep &step : plan) {
                if (lang::Trim(step.sql).isEmpty())
                    break;
                if (step.target != RunTarget::Execute) {
                    ShowResult(step);
                    continue;
                }
                ExecutePumped(connection, step.sql, &affected);
                if (!self) { // closed meanwhile: half a transaction is none
                    connection->RollbackTrans();
                    return;
                }
                AddLog(LogLine(step.sql, affected));
                QApplication::beep();
            }
            connection->CommitTrans(); // waits for the rows that are still being read on this connection
        },
        &why);
    if (fine)
        return !self.isNull();
    Shell::Current().SetHourglass(false);
    TellError(why, self);
    Attempt([&] { connection->RollbackTrans(); });
    return false;
}

void frmSQL::ShowResult(const RunStep &step)
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
    result->ShowRec(step.sql, gConn, QStringLiteral("SQL Result: ") + m_ConnName);
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

// The items of the transaction button. What the driver refuses is told in the status bar.
void frmSQL::Transaction(const char *key)
{
    if (!IsConnected(true))
        return;
    const QPointer<frmSQL> self(this);
    const ADODB::ConnectionPtr connection = gConn;
    const QLatin1String wanted(key);
    QString why;
    if (wanted == QLatin1String("BT")) {
        Attempt([&] { connection->BeginTrans(); }, &why);
    } else if (wanted == QLatin1String("RT")) {
        Attempt([&] { connection->RollbackTrans(); }, &why);
    } else {
        m_CommitRun = true;
        if (lang::Trim(txtSQL->SelText()).isEmpty()) {
            txtSQL->SetSelStart(0);
            txtSQL->SetSelLength(txtSQL->Text().size());
        }
        const bool fine = RunSQL();
        if (self)
            m_CommitRun = false;
        if (fine)
            Attempt([&] { connection->CommitTrans(); }, &why);
    }
    if (!why.isEmpty())
        Shell::Current().SetStatus(QStringLiteral("Error: ") + why);
}
