// The import's run: the order from the boxes, the one question meanwhile, and what is told at the end.
#include "movement/frmImportFlatFile.h"

#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/ProgressBar.h"
#include "data/ServerName.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "session/PumpUntil.h"
#include "session/Work.h"
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>

namespace {

bool AskWithoutTransaction(QWidget *window)
{
    return MsgBox(QStringLiteral("The connection is not allowing a transaction to begin."
                                 " If you continue without a transaction session all modification cannot be rolled "
                                 "back."
                                 " Would you like to contuinue wihtout a trasaction session?"),
                  mbYesNo | mbExclamation, QStringLiteral("Transaction session faild"), window) == mbYes;
}

} // namespace

ImportOrder frmImportFlatFile::Order() const
{
    ImportOrder order;
    order.Connection = gConn;
    order.Source = [connection = gConn, table = txtTable->text(), picked = m_picked] {
        return QStringLiteral("SELECT * FROM ") +
               (picked.Name.isEmpty() ? ServerName(connection, table) : ServerName(connection, picked)) +
               QStringLiteral(" WHERE 1=0"); // rows are only added
    };
    order.File = txtFileName->text();
    order.Delimiter = cmbDilimiter->currentText();
    order.FirstIsNames = chkFirstIsData->isChecked();
    order.Tolerance = txtErrorCount->text();
    for (int column = 1; column <= m_columns; ++column)
        order.Mapping += mfg->TextMatrix(kTableRow, column);
    return order;
}

void frmImportFlatFile::Import()
{
    if (IsRunning())
        return;
    const QPointer<frmImportFlatFile> alive(this);
    if (txtTable->text() != m_table)
        TableChanged();
    if (alive && m_columns == 0 && txtFileName->text() != m_file && QFileInfo::exists(txtFileName->text()))
        Preview();
    if (!alive || txtTable->text().isEmpty() || !IsConnected(true))
        return;
    if (m_of != gConn) { // the table in the box is another connection's
        TableChanged();
        SetStatus(QStringLiteral("The current connection has changed: look at the mapping again."));
        return;
    }
    const auto progress = std::make_shared<ImportProgress>();
    const auto outcome = std::make_shared<ImportOutcome>();
    Job job;
    job.On = gConn;
    job.Words = QStringLiteral("Import Flat File");
    job.Says = [progress] { return ProgressText(*progress); };
    job.Shows = [progress](ProgressBar &bar) {
        if (bar.Max() != progress->BytesTotal)
            bar.SetMax(progress->BytesTotal);
        bar.SetValue(progress->Bytes);
    };
    job.Works = [progress, outcome, alive, order = Order()](const Job &self, Work &work) {
        ImportTalk talk;
        talk.GoOn = self.GoOn();
        talk.WithoutTransaction = [&] {
            bool yes = false;
            work.OnWindow([&] { yes = alive && AskWithoutTransaction(alive); });
            return yes;
        };
        *outcome = RunImport(order, *progress, talk);
    };
    SetStatus(QStringLiteral("Importing Data..."));
    QString why;
    if (!RunJob(job, &why)) {
        SetStatus(StatusOf(*outcome)); // the window has gone, or goes
        ShowLog(outcome->Log);
        return;
    }
    if (!why.isEmpty()) {
        outcome->Ending = ImportOutcome::Failed;
        outcome->Why = why;
    }
    Tell(*outcome);
}

void frmImportFlatFile::Tell(const ImportOutcome &outcome)
{
    const QPointer<frmImportFlatFile> alive(this);
    const auto box = [&](const QString &text, int icon, const QString &title) {
        MsgBox(text, icon, title, alive);
        return !alive.isNull();
    };
    switch (outcome.Ending) {
    case ImportOutcome::Declined:
    case ImportOutcome::NoFile:
        SetStatus(QString());
        return;
    case ImportOutcome::Missing:
        SetStatus(QString());
        box(QStringLiteral("File does not exist."), mbExclamation, QStringLiteral("File Error"));
        return;
    case ImportOutcome::Stopped:
        SetStatus(StatusOf(outcome));
        break;
    case ImportOutcome::Failed:
        SetStatus(StatusOf(outcome));
        box(outcome.Why, mbExclamation, outcome.OfFile ? QStringLiteral("File Error") : QStringLiteral("Import"));
        break;
    case ImportOutcome::Exceeded:
        SetStatus(StatusOf(outcome));
        box(QStringLiteral("Errors have exceeded tolerance level."), 0, QString());
        if (!outcome.RolledBack)
            box(QStringLiteral("Changes have not been rolled back."), 0, QString());
        break;
    case ImportOutcome::Finished:
        SetStatus(StatusOf(outcome));
        box(QStringLiteral("Import complete."), mbInformation, QStringLiteral("Import"));
        if (alive)
            close();
        break;
    }
    ShowLog(outcome.Log);
}

void frmImportFlatFile::ShowLog(const QString &log)
{
    if (log.isEmpty() || IsEnding())
        return;
    auto *output = new frmTextOutput;
    Shell::Current().AddChild(output);
    output->SetCaption(QStringLiteral("Import Log"));
    output->SetText(AsPlainRtf(log));
    output->ShowChild();
}
