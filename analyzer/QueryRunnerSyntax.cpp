// The syntax check of the text that a run would take, and its report.
#include "analyzer/QueryRunner.h"

#include "analyzer/QueryText.h"
#include "analyzer/SyntaxCheck.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "session/Work.h"

// The check has the connection to itself: what another window altered inside of its transaction would be rolled back.
void QueryRunner::CheckSyntax()
{
    if (m_running)
        return;
    const QPointer<QueryRunner> self(this);
    m_text.EndBracketShow();
    if (!IsConnected(true) || !self)
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const QString words = QStringLiteral("Checking the syntax");
    const QString sql = m_text.RunText();
    SyntaxCheck check(connection);
    QString report, why;
    Shell::Current().SetHourglass(true);
    const bool ran = Attempt(
        [&] {
            const std::shared_ptr<Work> work = Work::On(connection, words, ADODB::Claim::Whole);
            const auto running = BeginRun(work);
            Work::Options options;
            options.status = [] { return QStringLiteral("Checking the syntax ... (Esc cancels)"); };
            options.stopped = [&] { check.Cancel(); };
            options.input = PumpInput::EscapeOnly;
            options.window = m_window;
            work->Run(options, [&] { report = check.Report(sql); });
        },
        &why);
    Shell::Current().SetHourglass(false);
    if (!self)
        return;
    if (!ran) {
        Shell::Current().SetStatus(QStringLiteral("Error: ") + why);
    } else if (!report.isEmpty()) {
        auto *output = new frmTextOutput;
        Shell::Current().AddChild(output);
        output->SetCaption(QStringLiteral("Error Log"));
        output->SetText(report);
        output->ShowChild();
    } else if (!check.Cancelled()) {
        MsgBox(QStringLiteral("Syntax check complate. No sytax errors found."), mbOKOnly,
               QStringLiteral("Syntax Check"), m_window);
    }
}
