// The syntax check of the text that a run would take, and its report.
#include "analyzer/frmSQL.h"

#include "analyzer/SyntaxCheck.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "session/Pump.h"

// Input is held back meanwhile: what another window altered inside of the check's transaction would be rolled back.
// While another's statement holds the connection, Escape stops that one and the check goes on.
void frmSQL::CheckSyntax()
{
    if (m_running)
        return;
    const QPointer<frmSQL> self(this);
    EndBracketShow();
    if (!IsConnected(true) || !self)
        return;
    const auto running = BeginRun();
    Shell::Current().SetHourglass(true);
    const QString sql = RunText();
    const ADODB::ConnectionPtr connection = gConn;
    SyntaxCheck check(connection);
    QString report, why;
    const bool ran = Attempt(
        [&] {
            RunPumpedOn(
                connection, QStringLiteral("Checking the syntax ... (Esc cancels)"),
                [&] { report = check.Report(sql); }, [&] { check.Cancel(); }, PumpInput::EscapeOnly);
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
               QStringLiteral("Syntax Check"), this);
    }
}
