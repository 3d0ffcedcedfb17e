// The transfer's run: the order from the boxes and the grid, and what is told at the end.
#include "movement/frmDTS.h"

#include "ado/TableName.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/ProgressBar.h"
#include "data/ServerName.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "session/Status.h"
#include "session/Work.h"
#include <QLineEdit>

TransferOrder frmDTS::Order() const
{
    TransferOrder order;
    order.Import = m_import;
    order.From = ConnectionOf(0);
    order.To = ConnectionOf(1);
    order.Source = [name = NameOf(0)] { return QStringLiteral("SELECT * FROM ") + name(); };
    // A table is opened without the rows that it has; any other text as it stands.
    order.Target = [connection = ConnectionOf(1), text = txtTable[1]->text(), picked = m_sides[1].Picked] {
        const QString table = !picked.Name.isEmpty()        ? ServerName(connection, picked)
                              : ADODB::MayBeTableName(text) ? ADODB::TableNamed(*connection, text)
                                                            : QString();
        return table.isEmpty() ? text : QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE 1=0");
    };
    for (int column = 1; column <= m_columns; ++column)
        order.Columns.push_back({mfg->TextMatrix(kDestinationRow, column), mfg->TextMatrix(kSourceRow, column)});
    order.Tolerance = txtErrorCount->text();
    return order;
}

void frmDTS::Transfer()
{
    const QPointer<frmDTS> alive(this);
    if (IsRunning() || txtTable[0]->text().isEmpty() || txtTable[1]->text().isEmpty())
        return;
    const bool switched = m_sides[size_t(Current())].Read && m_sides[size_t(Current())].Read != gConn;
    TableChanged(); // a text that was typed and not left yet
    if (!alive)
        return;
    if (switched) { // what stands in the grid was another connection's when the user looked at it
        SetStatus(QStringLiteral("The current connection has changed: look at the mapping again."));
        return;
    }
    if (!ConnectionOf(0) || !ConnectionOf(1))
        return;
    const auto progress = std::make_shared<TransferProgress>();
    const auto outcome = std::make_shared<TransferOutcome>();
    Job job;
    job.On = gConn;
    job.Other = m_other;
    job.Words = windowTitle();
    job.Says = [progress] { return ProgressText(*progress); };
    job.Shows = [progress](ProgressBar &bar) {
        if (bar.Max() != progress->Total + 1)
            bar.SetMax(progress->Total + 1);
        bar.SetValue(progress->Rows);
    };
    job.Works = [progress, outcome, order = Order()](const Job &self, Work &) {
        *outcome = RunTransfer(order, *progress, self.GoOn());
    };
    QString why;
    if (!RunJob(job, &why)) {
        SetStatus(StatusOf(*outcome)); // the window has gone, or goes
        return;
    }
    if (!why.isEmpty()) {
        SetStatus(QStringLiteral("Error: ") + why);
        return;
    }
    Tell(*outcome);
}

void frmDTS::Tell(const TransferOutcome &outcome)
{
    using Ending = TransferRun::Ending;
    SetStatus(StatusOf(outcome));
    if (outcome.Ending == Ending::Stopped)
        return;
    if (outcome.Ending == Ending::TooManyErrors) {
        OfferLog(QStringLiteral("Too many errors occurred. You you like to view the log?"), outcome.Log);
        return;
    }
    if (outcome.Errors > 0 &&
        !OfferLog(QStringLiteral("Tolerable errors occurred. You you like to view the log?"), outcome.Log))
        return;
    const QPointer<frmDTS> alive(this);
    const TransferReport report = ReportOf(m_import, outcome.Count);
    MsgBox(report.Text, mbInformation, report.Title, this);
    if (alive)
        close();
}

// False when the window has gone meanwhile.
bool frmDTS::OfferLog(const QString &question, const QString &log)
{
    const QPointer<frmDTS> alive(this);
    if (MsgBox(question, mbYesNo | mbExclamation, QStringLiteral("Errors"), this) == mbYes && alive) {
        auto *output = new frmTextOutput;
        output->SetText(AsPlainRtf(log));
        output->ShowModal(this);
    }
    return !alive.isNull();
}
