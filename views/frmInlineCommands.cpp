// The commands on the rows of the table editor: clipboard, search and replacement, printing.

#include "ado/Rounding.h"
#include "controls/Attempt.h"
#include "controls/CellEditor.h"
#include "controls/DataGrid.h"
#include "controls/Dialogs.h"
#include "data/frmFind.h"
#include "session/Pump.h"
#include "session/Status.h"
#include "views/InlineFind.h"
#include "views/drReport.h"
#include "views/frmChart.h"
#include "views/frmInline.h"
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLocale>

namespace {
constexpr qint64 kBreath = 20; // ms between two looks at what the user does
} // namespace

void frmInline::mnuCopy()
{
    if (IsBusy() || !m_rows)
        return;
    if (dg->IsEditing())
        return dg->Editor()->copy();
    Breather breather(tr("Copying ... (Esc stops)"));
    const QString text = dg->Clip([&] { return breather.Breathe(); });
    if (!breather.Cancelled())
        QApplication::clipboard()->setText(text);
}

void frmInline::mnuCut()
{
    if (IsBusy() || !m_rows)
        return;
    if (dg->IsEditing())
        return dg->Editor()->cut();
    mnuCopy();
    dg->SetCellNull();
}

void frmInline::mnuPaste()
{
    if (IsBusy() || !m_rows)
        return;
    if (dg->IsEditing())
        return dg->Editor()->paste();
    const QString text = QApplication::clipboard()->text();
    Breather breather(tr("Pasting ... (Esc stops)"));
    dg->Paste(text, [&] { return breather.Breathe(); });
}

void frmInline::mnuReplace()
{
    Search();
}

void frmInline::mnuFind()
{
    Search();
}

bool frmInline::ReplaceAt(qint64 row, int column, const QString &with)
{
    QString why;
    const bool done = Attempt(
        [&] {
            if (!m_rows->CanWrite(column))
                throw ADODB::Error(ADODB::Fault::ReadOnly);
            m_rows->SetAbsolutePosition(row + 1);
            try {
                m_rows->Fields()[column].SetValue(with);
                if (const ADODB::ConnectionPtr connection = m_rows->ActiveConnection())
                    ADODB::RaiseIfRounded(m_rows->Fields()[column].GetValue(), m_rows->Column(column),
                                          connection->Family());
                m_rows->Update();
            } catch (...) {
                m_rows->CancelUpdate();
                throw;
            }
        },
        &why);
    if (done) {
        m_changed = true;
    } else {
        int response = 1;
        GridError(dg->CellLabel(row, column) + QStringLiteral(": ") + why, &response);
    }
    return done;
}

void frmInline::Search()
{
    if (IsBusy() || !m_rows || !dg->EndEdit(true))
        return;
    const QPointer<frmInline> alive(this);
    const ADODB::RecordsetPtr rows = m_rows;
    m_searching = true;
    m_stop = false;
    const auto ask = [&] {
        dg->SetFrozen(false);
        dg->Refresh();
        ShowPlace();
        const FindAnswer answer = AskFind(this, true, QString());
        if (alive)
            dg->SetFrozen(true);
        return answer;
    };
    QElapsedTimer breath;
    breath.start();
    const auto keepOn = [&](qint64 row) {
        if (breath.elapsed() >= kBreath) {
            if (alive)
                SetStatus(tr("Searching ... row %1 (Esc stops)").arg(QLocale::c().toString(row + 1)));
            QCoreApplication::processEvents();
            breath.restart();
        }
        return alive && !m_stop;
    };
    FindAnswer answer = ask();
    InlineFind::Place at{dg->Row(), 0};
    if (alive && !answer.cancelled)
        ShowBusy(true, tr("Searching ..."));
    while (alive && !answer.cancelled && !m_stop) {
        std::optional<InlineFind::Place> hit;
        // A criteria that is no pattern ends the search without a word.
        std::optional<InlineFind> find;
        try {
            find.emplace(answer.criteria, answer.exactMatch, answer.caseSensitive);
        } catch (const lang::BadPattern &) {
            break;
        }
        hit = find->Next(*rows, at, keepOn);
        if (!alive || m_stop)
            break;
        if (!hit) {
            dg->SetFrozen(false);
            const int again = MsgBox(
                QStringLiteral("No matching results where found would you like to start at the top of the table?"),
                mbYesNo | mbQuestion, QStringLiteral("Find"), this);
            if (!alive || again != mbYes)
                break;
            dg->SetFrozen(true);
            at = {};
            continue;
        }
        if (answer.doReplace || answer.doReplaceAll) {
            QString with, value;
            Attempt([&] { value = rows->CellText(hit->Row, hit->Column); });
            with = find->Replaced(value, answer.replaceWith);
            if (with != value)
                ReplaceAt(hit->Row, hit->Column, with);
        }
        at = InlineFind::Behind(*rows, *hit);
        if (answer.doReplaceAll && at.Row < rows->RowCount())
            continue; // nothing is asked between these
        dg->SetFrozen(false);
        dg->SetCurrentCell(hit->Row, hit->Column);
        if (!answer.doReplaceAll)
            answer = ask();
    }
    if (!alive)
        return;
    m_searching = false;
    dg->SetFrozen(false);
    dg->Refresh();
    ShowBusy(false, QString());
    ShowPlace();
    if (LastStatus().startsWith(tr("Searching")))
        SetStatus(QString());
    AfterWork();
}

// Of the rows as they stand here, unsaved edits too; a column without a caption cannot be chosen.
void frmInline::mnuChart()
{
    if (IsBusy() || !m_rows || !dg->EndEdit(true))
        return;
    std::vector<ChartField> fields;
    for (int column = 0; column < dg->Cols(); ++column)
        if (!dg->ColCaption(column).isEmpty())
            fields.push_back({dg->ColCaption(column), column});
    Attempt([&] { OpenChart(this, {fields, m_rows, m_rows->Source()}); });
}

void frmInline::mnuPrint()
{
    if (IsBusy() || !m_rows || !dg->EndEdit(true))
        return;
    QList<ReportColumn> columns;
    int left = 0;
    for (int column = 0; column < dg->Cols() && column < drReport::MaxColumns; ++column) {
        const int width = dg->ColWidth(column);
        columns.append({left, width, dg->ColCaption(column)});
        left += width;
    }
    drReport report(m_rows, columns, Caption(), this);
    report.ShowModal();
}
