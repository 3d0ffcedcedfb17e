#include "movement/logic/TransferJob.h"

#include "ado/Error.h"
#include "movement/logic/Counted.h"

namespace {

class Source : public TransferSource
{
public:
    ADODB::RecordsetPtr Rows;
    bool AtEnd() override { return !Rows || m_row >= Rows->RowCount(); }
    ADODB::Value Value(const QString &field) override
    {
        auto column = m_columns.constFind(field);
        if (column == m_columns.cend())
            column = m_columns.insert(field, ColumnNamed(*Rows, field));
        return Rows->CellValue(m_row, *column);
    }
    void MoveNext() override { ++m_row; }

private:
    qint64 m_row = 0;
    QHash<QString, int> m_columns;
};

} // namespace

TransferOutcome RunTransfer(const TransferOrder &order, TransferProgress &progress, const std::function<bool()> &goOn)
{
    using Ending = TransferRun::Ending;
    TransferOutcome out;
    Source source;
    RowTarget target;
    TransferRun run(order.Columns, order.Tolerance, source, target);
    target.NumberOf = [&run] { return run.RowNumber(); };
    const auto finish = [&](Ending ending) {
        out.Ending = ending;
        out.Count = run.Count();
        out.Errors = run.Errors();
        out.Log = run.Log().Text();
        if (ending != Ending::Finished && target.IsOpen())
            target.CancelBatch();
        return out;
    };
    // One error of the whole, through the rows' handler. False when it ends the transfer.
    const auto attempt = [&](const std::function<void()> &step) {
        try {
            step();
            return true;
        } catch (const ADODB::Error &error) {
            return goOn() && run.Failed(error.Number, error.Description);
        }
    };
    const auto ended = [&] { return finish(goOn() ? Ending::TooManyErrors : Ending::Stopped); };

    if (!attempt([&] {
            const ADODB::RecordsetPtr rows = order.From->Execute(order.Source());
            if (rows->State() == ADODB::adStateClosed)
                throw ADODB::Error(ADODB::Fault::ObjectClosed); // the text gives no rows
            progress.Total = rows->RecordCount();
            source.Rows = rows;
        }))
        return ended();
    if (!attempt([&] { target.Open(order.To, order.Target()); }))
        return ended();

    if (source.Rows && target.IsOpen()) {
        progress.At = TransferProgress::Copies;
        const Ending ending = run.Rows([&] {
            progress.Rows = run.RowNumber();
            return goOn();
        });
        out.Refused = run.Count() - run.Added();
        if (ending != Ending::Finished)
            return finish(ending);
        progress.At = TransferProgress::Sends;
        const RowTarget::Outcome sent = target.Send();
        out.In = sent.In;
        out.Unsent = sent.Unsent;
        out.Refused += qint64(sent.Refused.size());
        if (sent.Why) {
            RefusalLog rows;
            for (const RowTarget::Refusal &row : sent.Refused)
                rows.Add(QStringLiteral("\r\nRow %1: ").arg(row.Number) + row.Why, row.Why);
            QString why = sent.Why->Description;
            if (sent.Unsent > 0)
                why += QStringLiteral("\r\nOf %1 the server has told nothing.").arg(Counted(sent.Unsent, "row"));
            if (!goOn())
                return finish(Ending::Stopped);
            if (!run.Failed(sent.Why->Number, why + rows.Text()))
                return finish(Ending::TooManyErrors);
        }
    }
    return finish(goOn() ? Ending::Finished : Ending::Stopped);
}

QString ProgressText(const TransferProgress &progress)
{
    switch (progress.At) {
    case TransferProgress::Reads:
        return QStringLiteral("Reading the source...");
    case TransferProgress::Copies:
        return QStringLiteral("Copying %1 of %2").arg(Grouped(progress.Rows), Counted(progress.Total, "row"));
    default:
        return QStringLiteral("Sending %1...").arg(Counted(progress.Rows, "row"));
    }
}

QString StatusOf(const TransferOutcome &outcome)
{
    QStringList said = {Counted(outcome.In, "row") +
                        (outcome.In == 1 ? QStringLiteral(" is in") : QStringLiteral(" are in"))};
    if (outcome.Refused > 0)
        said += Grouped(outcome.Refused) + QStringLiteral(" refused");
    const bool stopped = outcome.Ending == TransferRun::Ending::Stopped;
    if (outcome.Unsent > 0)
        said += Grouped(outcome.Unsent) +
                (stopped ? QStringLiteral(" not sent") : QStringLiteral(" of which the server has told nothing"));
    return (stopped ? QStringLiteral("Canceling... ") : QString()) + said.join(QStringLiteral(", ")) + u'.';
}
