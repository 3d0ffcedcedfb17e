#include "views/frmInline.h"

#include "controls/Attempt.h"
#include "controls/BusyIndicator.h"
#include "controls/DataGrid.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/Named.h"
#include "controls/Skin.h"
#include "controls/StatusBar.h"
#include "data/modMain.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include "session/Work.h"
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolTip>

namespace {

constexpr qint64 kStopPatience = 1000; // ms at the way out, from a stop to its end

} // namespace

frmInline::frmInline(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Table"));
    Build();
    WatchGrid();
    setFocusProxy(dg);
    ApplySkin(this);
    ShowPlace();
}

frmInline::~frmInline() = default;

void frmInline::Build()
{
    ani = WithName(new BusyIndicator(this), "ani", tr("The program is at work on this table"));
    lblRunning = WithName(new QLabel(this), "lblRunning", tr("Progress"));
    cmdStop = WithName(new QPushButton(tr("&Stop"), this), "cmdStop", tr("Stop"));
    cmdStop->setToolTip(tr("Stop the search, the opening or the saving (Esc)"));
    cmdStop->setEnabled(false);
    connect(cmdStop, &QPushButton::clicked, this, &frmInline::Stop);
    dg = WithName(new DataGrid(this), "dg", tr("Rows of the table"));
    mfgRefused = WithName(new FlexGrid(this), "mfgRefused", tr("Rows that were not saved"));
    mfgRefused->SetFormatString(QStringLiteral("    |Row        |Key                              |Message"));
    mfgRefused->setFixedHeight(140);
    mfgRefused->hide();
    SB = WithName(new StatusBar(this), "SB", tr("Status"));
    SB->AddPanel(sbrText, true);
    SB->AddPanel(sbrText, false, 2600);
    SB->AddPanel(sbrText, false, 2000);

    auto *const top = new QHBoxLayout;
    top->setContentsMargins(0, 0, 4, 0);
    top->setSpacing(6);
    top->addStretch(1);
    for (QWidget *const widget : std::initializer_list<QWidget *>{ani, lblRunning, cmdStop})
        top->addWidget(widget, 0, Qt::AlignVCenter);
    auto *const all = new QVBoxLayout(this);
    all->setContentsMargins(3, 3, 3, 0);
    all->setSpacing(2);
    all->addLayout(top);
    all->addWidget(dg, 1);
    all->addWidget(mfgRefused);
    all->addWidget(SB);
    ani->hide();
    resize(760, 420);
    setTabOrder(dg, mfgRefused);
    setTabOrder(mfgRefused, cmdStop);
}

void frmInline::WatchGrid()
{
    connect(dg, &DataGrid::Change, this, [this] {
        m_changed = true;
        SB->SetPanelText(1, m_rows ? m_rows->Source() : QString());
        ShowPlace();
    });
    connect(dg, &DataGrid::RowColChange, this, &frmInline::ShowPlace);
    connect(dg, &DataGrid::Error, this,
            [this](int, const QString &description, int *response) { GridError(description, response); });
    connect(dg, &DataGrid::ContextMenu, this, &frmInline::ShowPopup);
    const auto goThere = [this] {
        const qint64 row = mfgRefused->Row();
        bool isRow = false;
        const qint64 place =
            row > 0 && row < mfgRefused->Rows() ? mfgRefused->TextMatrix(row, 1).toLongLong(&isRow) : 0;
        if (isRow && !IsBusy())
            dg->SetCurrentCell(place - 1, dg->Col());
    };
    connect(mfgRefused, &FlexGrid::RowColChange, this, goThere);
    connect(mfgRefused, &FlexGrid::Click, this, goThere);
}

// The grid shows no dialog of its own: the main window says that something is wrong, this one what it is.
void frmInline::GridError(const QString &description, int *response)
{
    SetStatus(QStringLiteral("Error in data integrity"));
    QApplication::beep();
    *response = 0;
    SB->SetPanelText(1, description);
    const QRect cell = dg->CellRect(dg->Row(), dg->Col());
    if (!cell.isNull() && isVisible())
        QToolTip::showText(dg->viewport()->mapToGlobal(cell.bottomLeft()), description.toHtmlEscaped(), dg->viewport());
}

void frmInline::ShowPlace()
{
    if (dg->IsFrozen())
        return;
    const qint64 rows = dg->Rows(), pending = m_rows ? m_rows->PendingCount() : 0;
    SB->SetPanelText(2, !m_rows          ? QString()
                        : dg->IsNewRow() ? tr("New row, %1 rows").arg(rows)
                                         : tr("Row %1 of %2").arg(dg->Row() + 1).arg(rows));
    SB->SetPanelText(3, pending > 0 ? tr("%1 unsaved").arg(pending) : QString());
}

void frmInline::Activated()
{
    ShowPlace();
}

void frmInline::ShowPopup(const QPoint &viewportPosition)
{
    if (IsBusy() || !m_rows)
        return;
    QMenu menu(this);
    const QPointer<frmInline> alive(this);
    const auto add = [&menu](const QString &text, const auto &act) { menu.addAction(text, act); };
    add(tr("&Edit"), [this] { dg->EditCell(); });
    add(tr("Set &Null"), [this] { dg->SetCellNull(); });
    add(tr("&Undo Cell"), [this] { dg->UndoCell(); });
    menu.addSeparator();
    add(tr("Cu&t"), [this] { mnuCut(); });
    add(tr("&Copy"), [this] { mnuCopy(); });
    add(tr("&Paste"), [this] { mnuPaste(); });
    menu.addSeparator();
    add(tr("&Duplicate Row"), [this] { dg->DuplicateRow(); });
    add(tr("De&lete Rows"), [this] { dg->DeleteRows(); });
    ApplySkin(&menu);
    menu.exec(dg->viewport()->mapToGlobal(viewportPosition));
}

void frmInline::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && IsBusy()) {
        Stop();
        event->accept();
        return;
    }
    ChildWindow::keyPressEvent(event);
}

void frmInline::Stop()
{
    m_stop = true;
    if (m_work)
        m_work->Cancel();
}

frmInline::Answer frmInline::AskChanges()
{
    const QPointer<frmInline> alive(this);
    m_asking = true;
    const int answer = MsgBox(QStringLiteral("Changes have been made to this table and have not been saved.\r\n"
                                             "Would you like to save before exiting?"),
                              mbYesNoCancel, QStringLiteral("Changes"), this);
    if (!alive)
        return Answer::Stay;
    m_asking = false;
    if (answer == mbYes)
        return Save() && alive ? Answer::Go : Answer::Stay; // what was refused is not thrown away
    if (answer != mbNo || m_work)
        return Answer::Stay;
    Attempt([&] {
        if (m_rows)
            m_rows->CancelBatch();
    });
    m_changed = false;
    return Answer::Go;
}

void frmInline::closeEvent(QCloseEvent *event)
{
    event->ignore();
    if (m_asking)
        return; // its question is still up
    if (!IsEnding()) {
        if (IsBusy()) {
            // The work's own loop stands below this event: it ends first, then the window closes.
            m_closeLater = true;
            Stop();
            return;
        }
        dg->EndEdit(true);
        if (dg->IsEditing())
            return; // refused: the words stand beside it
        const QPointer<frmInline> alive(this);
        if (m_changed && AskChanges() == Answer::Stay)
            return;
        if (!alive)
            return;
    }
    ChildWindow::closeEvent(event);
}

void frmInline::AskAtEnd()
{
    m_closeLater = m_refreshLater = false;
    if (m_work && !WaitForWork())
        return;
    const QPointer<frmInline> alive(this);
    dg->SetFrozen(false);
    dg->EndEdit(true);
    dg->EndEdit(false);
    if (m_changed && m_rows && m_rows->PendingCount() > 0 && !m_asking)
        AskChanges();
}

bool frmInline::WaitForWork()
{
    const std::shared_ptr<Work> work = m_work;
    const std::shared_ptr<std::atomic<bool>> done = m_bodyDone;
    const QPointer<frmInline> alive(this);
    QElapsedTimer stopped; // a server that stands still is not waited for once it was to stop
    const auto stop = [work, &stopped] {
        if (!stopped.isValid())
            stopped.start();
        work->Cancel();
    };
    if (MsgBox(tr("The table is still being saved. Wait until that has ended?\r\nNo stops it: what has not been sent "
                  "is lost."),
               mbYesNo | mbQuestion, QStringLiteral("Changes"), this) != mbYes)
        stop();
    PumpUntil([] { return QStringLiteral("Saving... (Esc stops)"); },
              [&] { return done->load() || (stopped.isValid() && stopped.elapsed() > kStopPatience); }, stop,
              PumpInput::EscapeOnly);
    if (!alive || !done->load())
        return false;
    m_work.reset(); // its loop goes on when this event has returned
    return true;
}

void frmInline::Unload()
{
    Stop();
    dg->SetDataSource(nullptr);
}

void frmInline::RefreshForm(const QString &)
{
    if (IsBusy()) {
        m_refreshLater = true; // a new connection while this one's work is on its way out
        Stop();
        return;
    }
    if (m_table.isEmpty() && m_object.Name.isEmpty())
        return;
    dg->EndEdit(true);
    if (dg->IsEditing() || (m_changed && AskChanges() == Answer::Stay))
        return; // the rows stay, and the connection that they came from with them
    if (gConn && gConn->ConnectionString() != m_source) {
        m_table = m_object.Name.isEmpty() ? m_table : m_object.Name;
        m_object = {};
    }
    Load();
}

void frmInline::AfterWork()
{
    if (std::exchange(m_refreshLater, false))
        QMetaObject::invokeMethod(
            this, [this] { RefreshForm(QString()); }, Qt::QueuedConnection);
    if (std::exchange(m_closeLater, false))
        QMetaObject::invokeMethod(
            this, [this] { CloseChild(); }, Qt::QueuedConnection);
}
