// The run of a statement: start, arrival of the rows, failure, and what the window shows meanwhile.

#include "controls/Attempt.h"
#include "controls/BusyIndicator.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/RedrawLock.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "views/ResultOwner.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

void frmHirarchy::ShowRec(const QString &strSQL, const ADODB::ConnectionPtr &Conn, const QString &strTitle)
{
    setCursor(Qt::WaitCursor);
    m_shape.reset();
    m_title = strTitle;
    txtData->Clear(); // what it showed of the former rows may have been huge
    SB->SetPanelText(1, lang::Replace(strSQL, QStringLiteral("\r\n"), QStringLiteral(" ")));
    AppendMessage(QStringLiteral("Executing SQL ..."), QStringLiteral("Log"), true);
    SetCaption(QStringLiteral("Loading Results..."));
    if (!isVisible() && !window()->isMinimized())
        ShowChild();
    m_recordset.OpenRecordset(strSQL, Conn, 3);
    cmdStop->setEnabled(true); // a stop that was asked of the former run is none of this one's
    ShowRunning(true);
    m_clock.start();
}

bool frmHirarchy::IsRunning() const
{
    return m_recordset.IsRunning();
}

void frmHirarchy::StopRun()
{
    if (!IsRunning())
        return;
    cmdStop->setEnabled(false);
    lblRunning->setText(tr("Stopping ..."));
    m_recordset.Cancel();
}

QString frmHirarchy::Statement() const
{
    return SB->PanelText(1);
}

void frmHirarchy::ShowRunning(bool running)
{
    if (!running) {
        m_clock.stop();
        ani->Stop();
        lblRunning->hide();
        cmdStop->hide();
        cmdStop->setEnabled(true);
        unsetCursor();
        return;
    }
    if (!ani->Playing()) {
        ani->Play();
        lblRunning->show();
        cmdStop->show();
    }
    if (!cmdStop->isEnabled())
        return;
    if (const QString other = m_recordset.WaitsFor(); !other.isEmpty())
        lblRunning->setText(tr("Waiting for: %1").arg(other.simplified().left(60)));
    else
        lblRunning->setText(tr("%1   %2 rows")
                                .arg(lang::FormatSeconds(m_recordset.ElapsedSeconds()),
                                     QLocale::c().toString(m_recordset.RowsSoFar())));
}

void frmHirarchy::UARec_RecordsetOpened(const ADODB::RecordsetPtr &Rec)
{
    if (m_shape)
        return ShapeOpened(Rec);
    const QPointer<frmHirarchy> alive(this);
    const auto panel = [this](int number, const QString &text) {
        SB->SetPanelText(number, text);
        AppendMessage(text, QStringLiteral("Log"), false);
    };
    panel(4, QStringLiteral("QueryTime= ") + lang::FormatSeconds(m_recordset.ElapsedSeconds()));
    AppendMessage(QStringLiteral("Loading Results..."), QStringLiteral("Log"), false);
    {
        RedrawLock lock(this);
        Attempt([&] { mfg->SetDataSource(Rec); });
        LoadRec(Rec, false);
        SpanColumns(false);
        ts->Select(1);
        SetCaption(m_title);
    }
    panel(3, QStringLiteral("Record Count= ") + lang::CStr(mfg->RecordCount()));
    if (const int further = Rec ? Rec->FurtherResults() : 0) {
        const QString told = QStringLiteral("The statement gave %1 results. This is the first one.").arg(further + 1);
        AppendMessage(told, QStringLiteral("Log"), false);
        SetStatus(told);
    }
    ts->Select(1);
    ShowRunning(false);
    if (!isVisible() && !window()->isMinimized())
        ShowChild();
    QApplication::beep();
    if (alive)
        FocusCaller();
}

void frmHirarchy::UARec_ErrorOccured(int, const QString &ErrorDescription)
{
    if (m_shape)
        return ShapeFailed(ErrorDescription);
    if (!isVisible() && !window()->isMinimized())
        ShowChild();
    ShowRunning(false);
    AppendMessage(QStringLiteral("Error: ") + ErrorDescription, QStringLiteral("Log"), true);
    if (KillOnError) {
        SetStatus(QStringLiteral("Error: ") + ErrorDescription); // the log goes with the window
        FocusCaller();
        CloseChild();
        return;
    }
    QApplication::beep();
    SetCaption(m_title);
}

void frmHirarchy::FocusCaller()
{
    if (ResultOwner *owner = CallerSQLForm())
        owner->ActivateOwner();
}

void frmHirarchy::ClearForRun()
{
    m_recordset.Cancel();
    m_shape.reset();
    Attempt([&] { mfg->ClearStructure(); });
    mnuClearLog();
    for (const int panel : {2, 3, 4}) // what they say is the former result's
        SB->SetPanelText(panel, QString());
    m_sortUp = false;
}

void frmHirarchy::SetDataSourceRec(const ADODB::RecordsetPtr &Rec)
{
    QString trouble;
    const bool done = Attempt(
        [&] {
            AppendMessage(QStringLiteral("Mounting data set"), QStringLiteral("Log"), true);
            if (!Rec || Rec->Eof())
                return; // an empty rowset shows an empty window, without names: nothing came that they could head
            mfg->SetFixedCols(1);
            mfg->SetColHeader(0, false);
            mfg->SetDataSource(Rec);
            mnuClearLog();
            SpanColumns(false);
            ts->Select(1);
        },
        &trouble);
    if (!done)
        MsgBox(QStringLiteral("Error: ") + trouble, mbExclamation, QStringLiteral("Error"), this);
}

void frmHirarchy::LoadRec(const ADODB::RecordsetPtr &Rec, bool ForceHeader)
{
    if (!Rec || Rec->State() == ADODB::adStateClosed)
        return;
    if (ForceHeader) {
        mfg->ClearStructure();
        mfg->SetFixedRows(1);
        mfg->SetRows(2);
        mfg->SetCols(Rec->Fields().Count() + 1);
    }
    // The bound grid answers names and values from the recordset: binding is what writes every cell.
    if (mfg->DataSource() != Rec)
        Attempt([&] { mfg->SetDataSource(Rec); });
    Attempt([&] {
        if (Rec->RecordCount() > 0)
            Rec->MoveFirst();
    });
}

void frmHirarchy::SpanColumns(bool ForceHeader)
{
    Attempt([&] {
        if (ForceHeader) {
            mfg->SetColHeader(0, true);
        } else {
            mfg->SetFixedRows(1);
            mfg->SetColHeader(0, false);
        }
        for (int band = 1; band < mfg->Bands(); ++band) {
            if (ForceHeader)
                mfg->SetColHeader(band, true);
            mfg->SetBandIndent(band, band + 1);
        }
        AutoSize(mfg);
    });
}

void frmHirarchy::AppendMessage(const QString &Message, const QString &LogType, bool EnsureVisible)
{
    const qint64 row = mfgMessge->Rows();
    mfgMessge->AddItem(QString());
    mfgMessge->SetTextMatrix(row, 1, LogType);
    mfgMessge->SetTextMatrix(row, 2, lang::CDate(QDateTime::currentDateTime()));
    mfgMessge->SetTextMatrix(row, 3, lang::Replace(Message, QStringLiteral("\t"), QStringLiteral("    ")));
    mfgMessge->SetRowHeight(row, 240 * static_cast<int>(1 + Message.count(QLatin1Char('\n'))));
    mfgMessge->SetRow(row);
    mfgMessge->SetTopRow(row);
    if (EnsureVisible)
        ts->Select(2);
}
