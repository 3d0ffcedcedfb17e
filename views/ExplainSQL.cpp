#include "views/ExplainSQL.h"

#include "ado/Command.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/StatusBar.h"
#include "data/modMain.h"
#include "session/Status.h"
#include "session/Work.h"
#include "sqltext/Statements.h"
#include "views/frmExecutionPlan.h"
#include "views/logic/FamilyPlan.h"
#include <QPointer>

using ADODB::ConnectionPtr;
using ADODB::RecordsetPtr;

namespace {

constexpr int kServerSide = ADODB::adUseServer;

// Whose words an answer is in.
enum class PlanForm
{
    ShowPlan,
    PlanTable,
    Family
};
struct Answer
{
    PlanForm Form = PlanForm::ShowPlan;
    RecordsetPtr Rows;
};

// Sets the cursor location for as long as the asking lasts.
class ServerCursor
{
public:
    explicit ServerCursor(ConnectionPtr connection)
        : m_connection(std::move(connection)), m_former(m_connection->CursorLocation())
    {
        m_connection->SetCursorLocation(kServerSide);
    }
    ~ServerCursor() { m_connection->SetCursorLocation(m_former); }
    ServerCursor(const ServerCursor &) = delete;
    ServerCursor &operator=(const ServerCursor &) = delete;

private:
    const ConnectionPtr m_connection;
    const int m_former;
};

RecordsetPtr Execute(ADODB::Command &command, const QString &text)
{
    command.CommandText = text;
    return command.Execute();
}

RecordsetPtr AskPlanTable(ADODB::Command &command, const QString &statement)
{
    Execute(command, QStringLiteral("DELETE FROM PLAN_TABLE"));
    Execute(command, QStringLiteral("EXPLAIN PLAN FOR ") + statement);
    return Execute(command, QStringLiteral("SELECT * FROM PLAN_TABLE"));
}

// While SHOWPLAN is on, a statement gives its plan and does nothing. A connection of its own, so that the user's is
// never left in that state.
RecordsetPtr AskShowPlan(ADODB::Command &command, const ConnectionPtr &own, const QString &statement)
{
    own->Open(command.ActiveConnection->ConnectionString());
    own->SetCursorLocation(kServerSide);
    command.ActiveConnection = own;
    Execute(command, QStringLiteral("SET SHOWPLAN_All ON"));
    const RecordsetPtr rows = Execute(command, statement);
    Attempt([&] { Execute(command, QStringLiteral("SET SHOWPLAN_All OFF")); }); // the connection goes anyway
    return rows;
}

Answer Ask(const ConnectionPtr &connection, const ConnectionPtr &own, const QString &statement)
{
    ADODB::Command command;
    command.ActiveConnection = connection;
    if (connection->ConnectionString().contains(QLatin1String("Oracle"), Qt::CaseInsensitive))
        return {PlanForm::PlanTable, AskPlanTable(command, statement)};
    try {
        const RecordsetPtr rows = AskShowPlan(command, own, statement);
        if (rows->State() != ADODB::adStateClosed)
            return {PlanForm::ShowPlan, rows};
    } catch (const ADODB::Error &error) {
        if (error.Number == ADODB::adErrOperationCancelled)
            throw;
    }
    const QString question = FamilyPlanQuestion(connection->Family(), statement);
    if (question.isEmpty())
        throw ADODB::Error(ADODB::Fault::NotCapable);
    return {PlanForm::Family, connection->Execute(question, nullptr, ADODB::adOneStatement)};
}

void Show(frmExecutionPlan *window, const Answer &answer, const ADODB::Family &family)
{
    bool shown = false;
    switch (answer.Form) {
    case PlanForm::ShowPlan:
        window->ExplainSQLServer(answer.Rows, shown);
        break;
    case PlanForm::PlanTable:
        window->ExplainOracle(answer.Rows, shown);
        break;
    case PlanForm::Family:
        window->ExplainFamily(family, answer.Rows, shown);
        break;
    }
}

void SayFailed()
{
    MsgBox(QStringLiteral("Execution Plan Faild. Make sure of the following\r\n Your SQL statement is valid.\r\n Your "
                          "database is supported by Brindlewick's Excution Plan."),
           mbExclamation, QStringLiteral("Execution Plan"));
}

enum class Outcome
{
    Answered,
    Refused,
    Stopped // by the user or the end of the program
};

Outcome Wait(const ConnectionPtr &connection, const ConnectionPtr &own, const QString &statement,
             const std::shared_ptr<Answer> &answer)
{
    try {
        const std::shared_ptr<Work> work = Work::On(connection, QStringLiteral("Execution Plan"));
        Work::Options options;
        options.status = [] { return QStringLiteral("Asking for the execution plan ... (Esc cancels)"); };
        options.stopped = [own] { own->CancelAll(); };
        work->Run(options, [=] { *answer = Ask(connection, own, statement); });
        return Outcome::Answered;
    } catch (const ADODB::Error &error) {
        if (error.Number == ADODB::adErrOperationCancelled)
            return Outcome::Stopped;
        SetStatus(QStringLiteral("Execution Plan: ") + error.Description);
    } catch (...) {
        SetStatus(QStringLiteral("Execution Plan: ") + DescribeCurrentException());
    }
    return Outcome::Refused;
}

} // namespace

void ExplainSQL(const QString &SQLText)
{
    qsizetype last = -1;
    const QStringList statements = SplitStatements(SQLText, last);
    if (!IsConnected(true))
        return;
    const ConnectionPtr connection = gConn; // the text is asked about where it was written
    const ServerCursor cursor(connection);
    for (qsizetype number = 0; number <= last; ++number) {
        const QPointer<frmExecutionPlan> window(new frmExecutionPlan);
        const QString statement = statements[number];
        const ConnectionPtr own = ADODB::Connection::Create();
        const std::shared_ptr<Answer> answer = std::make_shared<Answer>(); // the asking may outlive an ending program
        const Outcome outcome = Wait(connection, own, statement, answer);
        if (outcome == Outcome::Stopped) {
            delete window;
            return;
        }
        if (outcome == Outcome::Answered)
            Show(window, *answer, connection->Family());
        else
            SayFailed();
        if (!window)
            return;
        window->SB->SetPanelText(1, SQLText);
        window->ShowChild();
    }
}
