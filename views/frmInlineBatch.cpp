// Opening and saving of the table editor: both beside the living windows, with progress and a stop.

#include "ado/StatementText.h"
#include "ado/family/Family.h"
#include "controls/Attempt.h"
#include "controls/BusyIndicator.h"
#include "controls/DataGrid.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include "session/Work.h"
#include "views/frmInline.h"
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScopeGuard>

namespace {

constexpr qsizetype kRefusedShown = 1000; // more would not be read

// A view has rows of its own to show and none to write, whatever its server makes of an edit.
bool IsView(ADODB::Connection &connection, const ADODB::ObjectName &object)
{
    bool isView = false;
    try {
        const auto part = [](const QString &text) { return text.isEmpty() ? QString() : text; };
        const ADODB::RecordsetPtr found =
            connection.OpenSchema(ADODB::adSchemaTables, {part(object.Catalog), part(object.Schema), object.Name});
        for (; !found->Eof(); found->MoveNext()) {
            const ADODB::Fields &fields = found->Fields();
            if (fields[QStringLiteral("TABLE_NAME")].Text() != object.Name)
                continue;
            const QString schema = fields[QStringLiteral("TABLE_SCHEMA")].Text();
            if (!object.Schema.isEmpty() && !schema.isEmpty() && schema != object.Schema)
                continue;
            isView = fields[QStringLiteral("TABLE_TYPE")].Text().contains(QLatin1String("VIEW"));
            if (!isView)
                return false;
        }
    } catch (const ADODB::Error &error) {
        if (error.Number == ADODB::adErrOperationCancelled)
            throw;
    }
    return isView;
}

} // namespace

void frmInline::ShowBusy(bool on, const QString &what)
{
    cmdStop->setEnabled(on);
    lblRunning->setText(on ? what : QString());
    if (on)
        ani->Play();
    else
        ani->Stop();
}

bool frmInline::RunApart(const ADODB::ConnectionPtr &connection, const QString &words, const QString &status,
                         const std::function<void(const std::function<void(qint64)> &progress)> &body, QString *why)
{
    const QPointer<frmInline> alive(this);
    const auto rows = std::make_shared<std::atomic<qint64>>(0);
    const auto done = std::make_shared<std::atomic<bool>>(false);
    m_bodyDone = done;
    dg->SetFrozen(true);
    ShowBusy(true, words);
    const bool ran = Attempt(
        [&] {
            const std::shared_ptr<Work> work = Work::On(connection, words);
            m_work = work;
            Work::Options options;
            options.status = [rows, status, alive] {
                const QString text = status.arg(QLocale::c().toString(rows->load()));
                if (alive)
                    alive->lblRunning->setText(text);
                return text;
            };
            options.window = this;
            work->Run(options, [body, rows, done] {
                const auto note = qScopeGuard([&] { *done = true; });
                body([rows](qint64 count) { *rows = count; });
            });
        },
        why);
    if (!alive)
        return false;
    m_work.reset();
    dg->SetFrozen(false);
    ShowBusy(false, QString());
    return ran;
}

void frmInline::SetSource(const QString &TableName)
{
    SetSource(TableName, {});
}

void frmInline::SetSource(const ADODB::ObjectName &picked)
{
    SetSource(picked.Name, picked);
}

void frmInline::SetSource(const QString &table, const ADODB::ObjectName &object)
{
    if (IsBusy())
        return;
    const QString formerTable = std::exchange(m_table, table);
    const ADODB::ObjectName formerObject = std::exchange(m_object, object);
    const QPointer<frmInline> alive(this);
    if (Load() || !alive || !m_rows)
        return;
    m_table = formerTable; // whose rows are still here
    m_object = formerObject;
}

bool frmInline::Load()
{
    const ADODB::ConnectionPtr connection = gConn;
    if (!connection || connection->State() == ADODB::adStateClosed)
        return false;
    struct Opened
    {
        ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
        bool isView = false;
    };
    const auto opened = std::make_shared<Opened>();
    const QString table = m_table;
    const ADODB::ObjectName object = m_object;
    const int kept = connection->CursorLocation();
    connection->SetCursorLocation(ADODB::adUseClient);
    QString why;
    const QPointer<frmInline> alive(this);
    const bool ran = RunApart(
        connection, tr("Opening %1").arg(table),
        tr("Opening %1 ... %2 rows (Esc stops)").arg(table, QStringLiteral("%1")),
        [=](const std::function<void(qint64)> &progress) {
            const QString name = object.Name.isEmpty() ? ServerName(connection, table) : ServerName(connection, object);
            const QString sql = QStringLiteral("SELECT * FROM ") + name;
            ADODB::RaiseUnlessOneStatement(connection->Family(), sql);
            opened->rows->SetProgress(progress);
            opened->rows->Open(sql, connection, ADODB::adOpenDynamic, ADODB::adLockBatchOptimistic, -1);
            opened->rows->SetProgress({});
            opened->isView = IsView(*connection, object.Name.isEmpty() ? ADODB::ObjectName{{}, {}, table} : object);
        },
        &why);
    connection->SetCursorLocation(kept);
    if (!alive)
        return false;
    if (!ran || opened->rows->State() == ADODB::adStateClosed) {
        // What stood here stays, with the connection that it came from.
        SB->SetPanelText(1, QStringLiteral("Error: ") + why);
        if (!m_closeLater && !IsEnding())
            MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), this);
        if (alive)
            AfterWork();
        return false;
    }
    m_rows = opened->rows;
    m_source = connection->ConnectionString();
    m_changed = false;
    bool canWrite = false;
    for (int column = 0; column < m_rows->ColumnCount() && !opened->isView; ++column)
        canWrite = canWrite || m_rows->CanWrite(column);
    dg->SetReadOnly(canWrite ? QString() : ADODB::Error(ADODB::Fault::ReadOnly).Description);
    dg->SetDataSource(m_rows);
    dg->SetCaption(table + QStringLiteral(" Table"));
    SetCaption(table + QStringLiteral(" Table"));
    mfgRefused->hide();
    SB->SetPanelText(1, m_rows->Source());
    ShowPlace();
    AfterWork();
    return true;
}

void frmInline::mnuSave()
{
    Save();
}

bool frmInline::Save()
{
    if (IsBusy() || !m_rows || !dg->EndEdit(true))
        return false;
    const ADODB::RecordsetPtr rows = m_rows;
    const ADODB::ConnectionPtr connection = rows->ActiveConnection();
    const qint64 pending = rows->PendingCount();
    SetStatus(QStringLiteral("Saving..."));
    QString why;
    const QPointer<frmInline> alive(this);
    bool saved = true;
    if (pending > 0)
        saved = RunApart(
            connection, QStringLiteral("Saving..."),
            tr("Saving... %1 of %2 rows (Esc stops)").arg(QStringLiteral("%1"), QLocale::c().toString(pending)),
            [rows](const std::function<void(qint64)> &progress) {
                rows->SetProgress(progress);
                rows->UpdateBatch();
            },
            &why);
    rows->SetProgress({});
    if (!alive)
        return false;
    if (saved)
        m_changed = false;
    if (IsEnding())
        return saved; // the way out has asked about what is left
    ShowRefused(why);
    ShowPlace();
    dg->Refresh();
    if (saved)
        MsgBox(QStringLiteral("Changes to this table have been saved."), mbInformation, QStringLiteral("Save"), this);
    else
        MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), this);
    SetStatus(QString());
    if (alive)
        AfterWork();
    return saved;
}

// Each row that the batch did not take, with its key and the server's words. A click leads to it.
void frmInline::ShowRefused(const QString &why)
{
    const std::vector<ADODB::RefusedRow> refused = m_rows->RefusedRows();
    SB->SetPanelText(1, why.isEmpty() ? m_rows->Source() : QStringLiteral("Error: ") + why);
    mfgRefused->setVisible(!refused.empty());
    mfgRefused->SetRows(1);
    qsizetype shown = 0;
    for (const ADODB::RefusedRow &row : refused) {
        if (shown++ == kRefusedShown) {
            mfgRefused->AddItem(QStringLiteral("\t\t\t") +
                                tr("... and %1 more").arg(qsizetype(refused.size()) - kRefusedShown));
            break;
        }
        mfgRefused->AddItem(QString());
        const qint64 last = mfgRefused->Rows() - 1;
        mfgRefused->SetTextMatrix(last, 1, row.Row < 0 ? tr("deleted") : QString::number(row.Row + 1));
        mfgRefused->SetTextMatrix(last, 2, row.Key);
        mfgRefused->SetTextMatrix(last, 3, row.Why.Description);
    }
    if (refused.empty())
        return;
    mfgRefused->SetFixedRows(1);
    mfgRefused->FitColumns();
}
