#include "analyzer/QueryBatch.h"

#include "analyzer/RunLog.h"
#include "analyzer/RunResults.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include <QApplication>

// A statement that fails leaves the count of the one before it, and that is logged. A cancel ends the run: the log says
// which statements were not run.
void QueryRunner::Batch::Run()
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
                OnWindow([step, connection = connection, claim = work->Claim()](QueryRunner &to) {
                    const ADODB::Claim::Scope scope(claim); // its rows are a part of this run
                    to.m_results.Show(step, connection, QStringLiteral("SQL Result: ") + to.m_ConnName);
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

void QueryRunner::Batch::OnWindow(const std::function<void(QueryRunner &)> &call)
{
    work->OnWindow([runner = runner, call] {
        if (runner)
            call(*runner);
    });
}

void QueryRunner::Batch::Log(const QString &line, bool beep)
{
    work->Post([runner = runner, line, beep] {
        if (!runner)
            return;
        runner->m_log.Add(line);
        if (beep)
            QApplication::beep();
    });
}

void QueryRunner::Batch::LogNotRun(size_t from)
{
    for (size_t i = from; i < steps.size() && !lang::Trim(steps[i].sql).isEmpty(); ++i)
        Log(NotRunLine(steps[i].sql), false);
}
