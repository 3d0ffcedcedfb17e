#include "views/frmHirarchy.h"

#include "controls/BusyIndicator.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/Skin.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Twips.h"
#include "frame/Shell.h"
#include "views/ResultOwner.h"
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace {

constexpr const char16_t *kLogFormat = u"    | Type          |Time Stamp                     |Value";

template <class Widget> Widget *Named(Widget *widget, const char *name, const QString &spoken)
{
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(spoken);
    return widget;
}

} // namespace

frmHirarchy::frmHirarchy(QWidget *parent) : ChildWindow(parent)
{
    SetCaption(QStringLiteral("Data Shape Hirarchy"));
    Build();
    ApplySkin(this);
    connect(&m_recordset, &UARecordset::RecordsetOpened, this, &frmHirarchy::UARec_RecordsetOpened);
    connect(&m_recordset, &UARecordset::ErrorOccured, this, &frmHirarchy::UARec_ErrorOccured);
    ShowTab(1);
}

frmHirarchy::~frmHirarchy() = default;

void frmHirarchy::Build()
{
    BuildRunning();
    BuildViews();
    auto *top = new QHBoxLayout;
    top->setContentsMargins(0, 0, 4, 0);
    top->setSpacing(6);
    top->addWidget(ts, 0, Qt::AlignBottom);
    top->addStretch(1);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(3, 3, 3, 0);
    all->setSpacing(2);
    all->addLayout(top);
    const std::initializer_list<QWidget *> running = {ani, lblRunning, cmdStop};
    for (QWidget *widget : running)
        top->addWidget(widget, 0, Qt::AlignVCenter);
    for (QWidget *view : std::initializer_list<QWidget *>{mfg, mfgMessge, txtData})
        all->addWidget(view, 1);
    all->addWidget(SB);
    for (QWidget *widget : running)
        widget->hide();
    resize(760, 420);
}

// The tabs, and what shows beside them while a statement runs.
void frmHirarchy::BuildRunning()
{
    ts = Named(new TabStrip(this), "ts", tr("Views of the result"));
    ts->AddTab(QStringLiteral("Data Grid"));
    ts->AddTab(QStringLiteral("Message(s)"));
    ts->AddTab(QStringLiteral("Data Drill Down"));
    connect(ts, &TabStrip::Click, this, &frmHirarchy::ShowTab);

    ani = Named(new BusyIndicator(this), "ani", tr("A statement is running"));
    lblRunning = Named(new QLabel(this), "lblRunning", tr("Progress"));
    cmdStop = Named(new QPushButton(tr("&Stop"), this), "cmdStop", tr("Stop the statement"));
    cmdStop->setToolTip(tr("Cancel the statement on the server (Esc)"));
    connect(cmdStop, &QPushButton::clicked, this, &frmHirarchy::StopRun);
    QSizePolicy room = cmdStop->sizePolicy(); // the rows do not jump when it comes and goes
    room.setRetainSizeWhenHidden(true);
    cmdStop->setSizePolicy(room);
    m_clock.setInterval(100);
    connect(&m_clock, &QTimer::timeout, this, [this] { ShowRunning(true); });
}

// One view a tab, and the status bar.
void frmHirarchy::BuildViews()
{
    mfg = Named(new FlexGrid(this), "mfg", tr("Rows"));
    mfgMessge = Named(new FlexGrid(this), "mfgMessge", tr("Messages"));
    mfgMessge->SetFormatString(QString::fromUtf16(kLogFormat));
    txtData = Named(new LongTextBox(this), "txtData", tr("Text of the cell"));
    connect(txtData, &LongTextBox::Progress, this, [](int percent) {
        SetStatus(percent < 100 ? tr("Loading the text of the cell ... %1 %").arg(percent) : QString());
    });
    WatchGrid(mfg, QStringLiteral("R"));
    WatchGrid(mfgMessge, QStringLiteral("M"));
    connect(mfg, &FlexGrid::RowColChange, this, [this] {
        if (mfg->Row() != 0)
            SB->SetPanelText(2, QStringLiteral("Cell [%1,%2]").arg(mfg->RowSel()).arg(mfg->ColSel()));
    });

    SB = Named(new StatusBar(this), "SB", tr("Status"));
    SB->AddPanel(sbrText, true);
    SB->AddPanel(sbrText, false, 2000);
    SB->AddPanel(sbrText, false, 2600);
    SB->AddPanel(sbrText, false, 2600);
    connect(SB, &StatusBar::PanelClick, this, [this](int panel) { ShowCellText(SB->PanelText(panel)); });
}

// What both grids share: the cell's text on a double click, sorting by the heading (rows only), the popup.
void frmHirarchy::WatchGrid(FlexGrid *grid, const QString &tag)
{
    connect(grid, &FlexGrid::DoubleClick, this, [this, grid] {
        if (grid->RowSel() < grid->Rows() && grid->ColSel() < grid->Cols())
            ShowCell(grid->ReadCell(grid->RowSel(), grid->ColSel()));
    });
    connect(grid, &FlexGrid::MouseUp, this, [this, grid, tag](Qt::MouseButton button, const QPoint &position) {
        if (button == Qt::RightButton) {
            m_statsTag = tag;
            Shell::Current().ShowMenu(QStringLiteral("mnuStats"), grid->viewport()->mapToGlobal(position), tag);
        } else if (button == Qt::LeftButton && grid == mfg) {
            SortByHeading(grid, position);
        }
    });
}

void frmHirarchy::SetCallerSQLForm(ResultOwner *owner)
{
    m_owner = owner;
    m_ownerWidget = owner ? owner->OwnerWidget() : nullptr;
}

ResultOwner *frmHirarchy::CallerSQLForm() const
{
    return m_ownerWidget ? m_owner : nullptr;
}

// The keyboard goes with the view: Qt would hand it to whatever follows the hidden one.
void frmHirarchy::ShowTab(int tab)
{
    const std::array<QWidget *, 3> views = {mfg, mfgMessge, txtData};
    const bool focused = std::ranges::any_of(views, [](const QWidget *view) { return view->hasFocus(); });
    for (size_t i = 0; i < views.size(); ++i)
        if (int(i) + 1 == tab) {
            views[i]->show();
            if (focused)
                views[i]->setFocus();
        }
    for (size_t i = 0; i < views.size(); ++i)
        if (int(i) + 1 != tab)
            views[i]->hide();
    if (tab == 2)
        FitLog();
}

void frmHirarchy::ShowCell(ADODB::CellReader text)
{
    txtData->Show(std::move(text));
    ts->Select(3);
}

void frmHirarchy::ShowCellText(const QString &text)
{
    ShowCell(ADODB::CellReader(text));
}

void frmHirarchy::FitLog()
{
    const int used = mfgMessge->ColWidth(0) + mfgMessge->ColWidth(1) + mfgMessge->ColWidth(2);
    const int rest = ToTwips(mfgMessge->viewport()->width()) - used - 50;
    mfgMessge->SetColWidth(3, qMax(rest, 3000));
}

void frmHirarchy::resizeEvent(QResizeEvent *event)
{
    ChildWindow::resizeEvent(event);
    FitLog();
}

void frmHirarchy::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && IsRunning()) {
        StopRun();
    } else if (event->key() == Qt::Key_F5) {
        if (ResultOwner *owner = CallerSQLForm()) {
            owner->ActivateOwner(); // its buttons are locked as long as this window is the active one
            owner->RunSQL();
        }
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && ts->Selected() != 3) {
        const FlexGrid *grid = ts->Selected() == 2 ? mfgMessge : mfg;
        if (grid->Row() < grid->Rows() && grid->Col() < grid->Cols())
            ShowCell(grid->ReadCell(grid->Row(), grid->Col()));
    } else if (event->matches(QKeySequence::Copy)) {
        mnuCopy();
    } else {
        ChildWindow::keyPressEvent(event);
        return;
    }
    event->accept();
}

void frmHirarchy::Unload()
{
    m_clock.stop();
    disconnect(&m_recordset, nullptr, this, nullptr);
    m_recordset.Cancel();
}
