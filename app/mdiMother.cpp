#include "app/mdiMother.h"
#include "app/Menus.h"
#include "app/SchemaCommands.h"
#include "app/SideBar.h"
#include "app/SideBarTable.h"
#include "app/StatusPanels.h"
#include "app/Toolbars.h"
#include "app/WorkArea.h"
#include "app/frmRookie.h"
#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/Icons.h"
#include "controls/SkinStyle.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "controls/Twips.h"
#include "data/ConnectionStore.h"
#include "frame/ChildWindow.h"
#include "session/Pump.h"
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int s_splitterWidth = 5; // pixels
constexpr int s_dropTwips = 150;   // what a drag of the splitter bar adds
constexpr int s_settle = 60;       // ms after which the window is painted and has its size

// The part between command bar and status bar; it tells the window when its size changes.
class Body : public QWidget
{
public:
    Body(QWidget *parent, std::function<void()> layOut) : QWidget(parent), m_layOut(std::move(layOut)) {}

protected:
    void resizeEvent(QResizeEvent *) override { m_layOut(); }

private:
    std::function<void()> m_layOut;
};

} // namespace

mdiMother::mdiMother(QWidget *parent) : QMainWindow(parent)
{
    SkinStyle::Use(); // before any part of the window takes its pictures from another one
    setObjectName(QStringLiteral("mdiMother"));
    setWindowTitle(QStringLiteral("Brindlewick"));
    setWindowIcon(AppIcon());
    resize(1024, 700);
    setMinimumSize(266, 266); // 4000 twips: a stored size above it is taken as it is
    setAcceptDrops(true);
    BuildFrame();
    BuildKeys();
    menus = new Menus(*this);
    schema = std::make_unique<SchemaCommands>();
    schema->LastTable = [this] { return menus->Tag(QStringLiteral("mnuDBTables")); };
    schema->SetLastTable = [this](const QString &table) { menus->SetTag(QStringLiteral("mnuDBTables"), table); };
    schema->ConnectionName = [this] { return ConnectedName(); };
    Shell::Install(this);
    DiagramHost::Install(this);
    EndPumps(false);
}

mdiMother::~mdiMother()
{
    SetTestMode(false);
    Area->disconnect(this);
    delete Area; // the children go first: they may still ask for the side bar and the command bar
    if (&Shell::Current() == this)
        Shell::Install(nullptr);
}

void mdiMother::BuildFrame()
{
    auto *frame = new QWidget(this);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    cb = new CommandBar(frame);
    cb->setObjectName(QStringLiteral("cb"));
    m_body = new Body(frame, [this] { LayOut(); });
    eb = new ExplorerBar(m_body);
    eb->setObjectName(QStringLiteral("eb"));
    Area = new WorkArea(m_body);
    Area->setObjectName(QStringLiteral("Area"));
    picSplit = new Splitter(m_body, spltVertical);
    picSplit->setObjectName(QStringLiteral("picSplit"));
    SB = new StatusBar(frame);
    SB->setObjectName(QStringLiteral("SB"));
    cmdStop = BuildStatusPanels(*SB);
    column->addWidget(cb);
    column->addWidget(m_body, 1);
    column->addWidget(SB);
    setCentralWidget(frame);

    connect(cmdStop, &QPushButton::clicked, this, [this] {
        const std::function<void()> stop = m_stop;
        Attempt([&] {
            if (stop)
                stop();
        });
    });
    const auto moved = [this](int position) {
        m_split = position;
        LayOut();
    };
    connect(picSplit, &Splitter::Moving, this, moved);
    connect(picSplit, &Splitter::Moved, this, moved);
    connect(picSplit, &Splitter::Dropped, this, [this, moved](int former, int travel) {
        moved(picSplit->Within(former + travel + s_dropTwips)); // the side bar ends behind the pointer: it is meant
    });
    connect(Area, &WorkArea::ActiveChildChanged, this, &mdiMother::OnActiveChild);
    connect(Area, &WorkArea::ContextMenu, this,
            [this](const QPoint &at) { menus->Popup(QStringLiteral("mnuFile"), at); });
    connect(eb, &ExplorerBar::ItemClick, this, &mdiMother::SideBarClick);
    connect(eb, &ExplorerBar::ItemRightClick, this, &mdiMother::SideBarRightClick);
    WatchConnection(*eb);
    connect(cb, &CommandBar::ButtonClick, this, &mdiMother::CommandBarClick);
    connect(cb, &CommandBar::MenuItemClick, this, &mdiMother::CommandBarMenuClick);
}

// Tab belongs to the editor, so that the bars need keys of their own.
void mdiMother::BuildKeys()
{
    const std::pair<int, std::function<void()>> keys[] = {
        {Qt::Key_1, [this] { eb->setFocus(Qt::ShortcutFocusReason); }},
        {Qt::Key_2, [this] { cb->FocusFirst(); }},
        {Qt::Key_3, [this] { Area->FocusActive(); }},
    };
    for (const auto &[key, go] : keys)
        connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(key)), this), &QShortcut::activated, this, go);
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Minus), this), &QShortcut::activated, Area,
            &WorkArea::ShowSystemMenu);
}

void mdiMother::LayOut()
{
    if (!m_body || m_body->width() <= 0)
        return;
    eb->SetRedraw(false);
    picSplit->setFixedHeight(m_body->height());
    picSplit->setFixedWidth(s_splitterWidth);
    picSplit->SetPosition(m_split);
    const int left = picSplit->x(), height = m_body->height();
    picSplit->move(left, 0);
    eb->setGeometry(0, 0, left, height);
    Area->setGeometry(left + s_splitterWidth, 0, qMax(0, m_body->width() - left - s_splitterWidth), height);
    eb->SetRedraw(true);
}

void mdiMother::SetStatus(const QString &text)
{
    SB->SetPanelText(1, text);
}
void mdiMother::SetCountPanel(const QString &text)
{
    SB->SetPanelText(2, text);
}

void mdiMother::SetHourglass(bool on)
{
    if (on)
        setCursor(Qt::WaitCursor);
    else
        unsetCursor();
}

void mdiMother::SetSchemaMenuEnabled(bool enabled)
{
    menus->SetSchemaMenuEnabled(enabled);
}

void mdiMother::SetStop(const std::function<void()> &stop)
{
    m_stop = stop;
    cmdStop->setVisible(static_cast<bool>(m_stop));
}

void mdiMother::AddChild(ChildWindow *child)
{
    Area->AddChild(child);
}
QList<ChildWindow *> mdiMother::Children() const
{
    return Area->Children();
}
ChildWindow *mdiMother::ActiveChild() const
{
    return Area->ActiveChild();
}
QRect mdiMother::ClientArea() const
{
    return Area->viewport()->rect();
}
QWidget *mdiMother::MainWindow() const
{
    return const_cast<mdiMother *>(this);
}
ExplorerBar *mdiMother::SideBar() const
{
    return eb;
}
CommandBar *mdiMother::Commands() const
{
    return cb;
}

void mdiMother::ShowMenu(const QString &name, const QPoint &globalPosition, const QString &tag)
{
    menus->SetTag(name, tag);
    menus->Popup(name, globalPosition);
}

void mdiMother::SetDiagramMenu(bool)
{
    RefreshMenus();
}

void mdiMother::RefreshMenus()
{
    menus->Refresh();
}

void mdiMother::SetTestMode(bool on)
{
    m_testMode = on;
    TellPassedErrors(on);
}

void mdiMother::OnActiveChild(ChildWindow *child)
{
    Attempt([&] { LockToolbars(*cb, child); });
    RefreshMenus();
}

void mdiMother::Activate()
{
    LayOut();
    if (m_ended || m_opening || QApplication::activeModalWidget())
        return; // nothing covers a question; what asked it comes back here
    Attempt([&] { TellLargeTexts(); });
    if (m_welcomed)
        return;
    Attempt([&] {
        if (eb->Bar(QString::fromLatin1(BarConnections))->Items().Count() > 0)
            return;
        m_welcomed = true;
        frmRookie(this).ShowModal();
    });
}

bool mdiMother::event(QEvent *event)
{
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate)
        QTimer::singleShot(s_settle, this, &mdiMother::Activate);
    return handled;
}

// Where no desktop gives windows the focus, the first showing is the activation.
void mdiMother::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    QTimer::singleShot(s_settle, this, &mdiMother::Activate);
}
