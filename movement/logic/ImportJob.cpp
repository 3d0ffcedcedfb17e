#include "movement/logic/ImportJob.h"

#include "ado/Claim.h"
#include "ado/Error.h"
#include "movement/logic/Counted.h"
#include "movement/logic/LineReader.h"
#include <QFileInfo>
#include <memory>

namespace {

class Job
{
public:
    Job(const ImportOrder &order, ImportProgress &progress, const ImportTalk &talk)
        : m_order(order), m_progress(progress), m_talk(talk)
    {
    }
    ImportOutcome Run();

private:
    using Outcome = ImportOutcome;
    Outcome::EndingEnum Begin();
    Outcome::EndingEnum Read();
    Outcome::EndingEnum Keep();
    Outcome::EndingEnum Send();
    Outcome::EndingEnum Fails(const QString &why, bool ofFile = false);
    void TakeBack();
    bool Stopped() const { return !m_talk.GoOn(); }

    const ImportOrder &m_order;
    ImportProgress &m_progress;
    const ImportTalk &m_talk;
    Outcome m_out;
    RowTarget m_target;
    std::unique_ptr<ImportRun> m_run;
    QString m_refusals; // what the log does not hold, since the batch ended the run
    bool m_transaction = false;
};

ImportOutcome Job::Run()
{
    // Each of these ends the import, or hands on to the next by saying Finished.
    m_out.Ending = Begin();
    for (const auto step : {&Job::Read, &Job::Keep, &Job::Send})
        if (m_out.Ending == Outcome::Finished)
            m_out.Ending = (this->*step)();
    TakeBack();
    if (m_out.Ending != Outcome::Finished)
        m_target.CancelBatch();
    if (m_run) {
        m_out.Incomplete = m_run->RowsIncomplete();
        m_out.TooLong = m_run->LinesTooLong();
        m_out.Log = m_run->Log().Text() + m_run->LastStraw();
    }
    return std::move(m_out);
}

ImportOutcome::EndingEnum Job::Begin()
{
    try {
        m_order.Connection->BeginTrans();
        m_transaction = true;
    } catch (const ADODB::Error &) {
        if (Stopped())
            return Outcome::Stopped;
        if (!m_talk.WithoutTransaction())
            return Outcome::Declined;
    }
    if (m_order.File.isEmpty())
        return Outcome::NoFile;
    if (!QFileInfo::exists(m_order.File))
        return Outcome::Missing;
    return Outcome::Finished;
}

ImportOutcome::EndingEnum Job::Read()
{
    ImportPlan plan;
    plan.Delimiter = m_order.Delimiter;
    plan.FirstIsNames = m_order.FirstIsNames;
    plan.Columns = int(m_order.Mapping.size());
    plan.FieldNames = m_order.Mapping;
    plan.Tolerance = ToleranceOf(m_order.Tolerance);
    for (int column = 0; column < plan.Columns; ++column)
        plan.FieldOf.push_back(m_order.Mapping[column].isEmpty() ? -1 : column);
    m_target.SetNames(m_order.Mapping);

    m_progress.At = ImportProgress::Reads;
    std::unique_ptr<LineReader> reader;
    try {
        reader = std::make_unique<LineReader>(m_order.File);
        m_progress.BytesTotal = reader->BytesTotal();
        m_target.Open(m_order.Connection, m_order.Source());
        m_run = std::make_unique<ImportRun>(plan, m_target);
        m_target.NumberOf = [this] { return m_run->LineNumber(); };
        const auto ending = m_run->Lines(*reader, [&] {
            m_progress.Bytes = reader->BytesRead();
            m_progress.Rows = m_run->RowsTaken();
            return m_talk.GoOn();
        });
        m_out.Refused = m_run->Errors() - m_run->RowsIncomplete();
        return ending == ImportRun::Ending::Stopped    ? Outcome::Stopped
               : ending == ImportRun::Ending::Exceeded ? Outcome::Exceeded
                                                       : Outcome::Finished;
    } catch (const LineReader::Failure &failure) {
        return Fails(reader ? QStringLiteral("Line %1: %2").arg(reader->LinesRead() + 1).arg(failure.Why) : failure.Why,
                     true);
    } catch (const ADODB::Error &error) { // the table cannot be opened
        return Stopped() ? Outcome::Stopped : Fails(error.Description);
    }
}

// Before the rows are sent: that order is meant.
ImportOutcome::EndingEnum Job::Keep()
{
    m_progress.At = ImportProgress::Commits;
    if (!m_transaction)
        return Outcome::Finished;
    try {
        m_order.Connection->CommitTrans();
        m_transaction = false;
    } catch (const ADODB::Error &error) {
        if (Stopped())
            return Outcome::Stopped;
        if (m_run->Fails(error.Description))
            return Outcome::Exceeded;
        TakeBack(); // nothing is in it, and nobody else would end it
    }
    return Outcome::Finished;
}

ImportOutcome::EndingEnum Job::Send()
{
    m_progress.At = ImportProgress::Sends;
    const RowTarget::Outcome sent = m_target.Send();
    m_out.In = sent.In;
    m_out.Unsent = sent.Unsent;
    m_out.Refused += qint64(sent.Refused.size());
    if (!sent.Why)
        return Outcome::Finished;
    const bool stopped = Stopped();
    QString why = sent.Why->Description;
    RefusalLog rows;
    for (const RowTarget::Refusal &row : sent.Refused)
        rows.Add(QStringLiteral("\r\nRecord %1)").arg(row.Number) + row.Why, row.Why);
    if (sent.Unsent > 0 && !stopped)
        why += QStringLiteral("\r\nOf %1 the server has told nothing.").arg(Counted(sent.Unsent, "row"));
    const bool ends = m_run->Fails(why + rows.Text());
    return stopped ? Outcome::Stopped : ends ? Outcome::Exceeded : Outcome::Finished;
}

ImportOutcome::EndingEnum Job::Fails(const QString &why, bool ofFile)
{
    m_out.Why = why;
    m_out.OfFile = ofFile;
    return Outcome::Failed;
}

void Job::TakeBack()
{
    if (!m_transaction)
        return;
    m_transaction = false;
    m_out.RolledBack = true;
    const ADODB::Claim::Shield shield; // a stop has ended the claim already
    try {
        m_order.Connection->RollbackTrans();
    } catch (const ADODB::Error &) {
        // The server has gone, and the transaction with it.
    }
}

} // namespace

ImportOutcome RunImport(const ImportOrder &order, ImportProgress &progress, const ImportTalk &talk)
{
    return Job(order, progress, talk).Run();
}

QString ProgressText(const ImportProgress &progress)
{
    const QString rows = Counted(progress.Rows, "row");
    switch (progress.At) {
    case ImportProgress::Begins:
        return QStringLiteral("Importing Data...");
    case ImportProgress::Reads:
        return QStringLiteral("Importing Data... %1, %2 of %3 bytes")
            .arg(rows, Grouped(progress.Bytes), Grouped(progress.BytesTotal));
    default:
        return QStringLiteral("Importing Data... sending %1").arg(rows);
    }
}

QString StatusOf(const ImportOutcome &outcome)
{
    QStringList said = {Counted(outcome.In, "row") +
                        (outcome.In == 1 ? QStringLiteral(" is in") : QStringLiteral(" are in"))};
    if (outcome.Refused > 0)
        said += Grouped(outcome.Refused) + QStringLiteral(" refused");
    if (outcome.Incomplete > 0)
        said += Grouped(outcome.Incomplete) + QStringLiteral(" without a field that was refused");
    if (outcome.TooLong > 0)
        said += Counted(outcome.TooLong, "line") + QStringLiteral(" with too many fields left out");
    if (outcome.Unsent > 0)
        said += Grouped(outcome.Unsent) + (outcome.Ending == ImportOutcome::Stopped
                                               ? QStringLiteral(" not sent")
                                               : QStringLiteral(" of which the server has told nothing"));
    const QString words = said.join(QStringLiteral(", ")) + u'.';
    return outcome.Ending == ImportOutcome::Finished ? words : QStringLiteral("Canceling... ") + words;
}
