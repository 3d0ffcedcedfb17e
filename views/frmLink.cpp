#include "views/frmLink.h"

#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include "session/Status.h"
#include <QFrame>
#include <QKeyEvent>
#include <QPropertyAnimation>

namespace {

constexpr qint64 kRowsThatFit = 16; // of the left grid, with its heading; from there on the window grows
constexpr int kMoveMs = 200;        // of the frame that walks to the middle

struct Read
{
    LinkRows Links;
    QStringList Fields;
};

Read ReadAround(const ADODB::ConnectionPtr &connection, const LinkTarget &target)
{
    Read read;
    const ADODB::RecordsetPtr keys = connection->OpenSchema(ADODB::adSchemaForeignKeys);
    read.Links = ReadLinks(*keys, target);
    const QString name =
        target.IsPicked ? ServerName(connection, target.Table) : ServerName(connection, target.Table.Name);
    const ADODB::RecordsetPtr rows = connection->Execute(
        QLatin1String("SELECT * FROM ") + name + QLatin1String(" WHERE 1=0"), nullptr, ADODB::adOneStatement);
    for (int column = 0; column < rows->ColumnCount(); ++column)
        read.Fields += rows->Column(column).Name;
    return read;
}

void FillSide(FlexGrid *grid, const std::vector<LinkRow> &links)
{
    grid->SetRows(1);
    for (const LinkRow &link : links) {
        grid->AddItem(QString());
        const qint64 row = grid->Rows() - 1;
        grid->SetTextMatrix(row, 0, link.Other.Name);
        grid->SetTextMatrix(row, 1, link.OtherColumn);
        grid->SetTextMatrix(row, 2, link.OwnColumn);
    }
    if (grid->Rows() >= 2) {
        grid->SetFixedRows(1);
        grid->Select(1, 0, 1, 0);
    }
}

} // namespace

frmLink::frmLink(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Table Relationships"));
    mfgPK =
        NewGrid("mfgPK", QStringLiteral("Tables that this one refers to"),
                {QStringLiteral("Primary Table"), QStringLiteral("Primary Column"), QStringLiteral("Foreign Column")});
    mfg = NewGrid("mfg", QStringLiteral("Fields of the table"), {QString()});
    mfgFK =
        NewGrid("mfgFK", QStringLiteral("Tables that refer to this one"),
                {QStringLiteral("Foreign Table"), QStringLiteral("Foreign Column"), QStringLiteral("Primary Column")});
    BuildLegend();
    resize(1040, 460);
    setFocusProxy(mfg);
    ApplySkin(this);
    LayOut();
}

FlexGrid *frmLink::NewGrid(const char *name, const QString &accessible, const QStringList &headings)
{
    auto *const grid = new FlexGrid(this);
    grid->setObjectName(QLatin1String(name));
    grid->setAccessibleName(accessible);
    grid->SetFixedCols(0);
    grid->SetRows(1);
    grid->SetCols(int(headings.size()));
    for (int column = 0; column < headings.size(); ++column)
        grid->SetTextMatrix(0, column, headings[column]);
    connect(grid, &FlexGrid::Scrolled, this, &frmLink::DrawLinks);
    connect(grid, &FlexGrid::MouseUp, this, [this, grid](Qt::MouseButton button, const QPoint &position) {
        if (button == Qt::LeftButton &&
            grid->MouseRow(position) == grid->Row()) // not the headings, nor the empty ground
            Walk(grid);
    });
    grid->installEventFilter(this);
    return grid;
}

void frmLink::Activated()
{
    DrawLinks();
}

void frmLink::RefreshForm(const QString &)
{
    CloseChild();
}

void frmLink::LoadTable(const QString &Table)
{
    LinkTarget target;
    target.Table.Name = Table;
    Load(target);
}

void frmLink::LoadTable(const ADODB::ObjectName &picked)
{
    LinkTarget target;
    target.Table = picked;
    target.IsPicked = true;
    Load(target);
}

void frmLink::Load(const LinkTarget &target)
{
    if (!IsConnected(false))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    LinkTarget asked = target;
    asked.Family = &connection->Family();
    const QPointer<frmLink> alive(this); // events are processed meanwhile
    const auto read = std::make_shared<Read>();
    QString why;
    const bool isRead = Attempt(
        [&] {
            RunPumpedOn(
                connection, QStringLiteral("Reading the links of %1 ... (Esc cancels)").arg(asked.Table.Name),
                [=] { *read = ReadAround(connection, asked); }, {}, PumpInput::EscapeOnly);
        },
        &why);
    if (!alive || connection != gConn)
        return;
    if (!isRead) {
        SetStatus(QStringLiteral("Error: ") + why);
        return;
    }
    Attempt([&] { Fill(asked.Table.Name, read->Links, read->Fields); });
    DrawLinks();
}

void frmLink::Fill(const QString &table, const LinkRows &links, const QStringList &fields)
{
    m_links = links;
    FillSide(mfgPK, links.Primary);
    FillSide(mfgFK, links.Foreign);
    mfg->SetRows(1);
    mfg->SetTextMatrix(0, 0, table);
    for (const QString &field : fields) {
        mfg->AddItem(QString());
        mfg->SetTextMatrix(mfg->Rows() - 1, 0, field);
    }
    if (mfg->Rows() >= 2) {
        mfg->SetFixedRows(1);
        mfg->Select(1, 0, 1, 0);
    }
    GrowForRows();
    LayOut();
}

void frmLink::GrowForRows()
{
    if (mfgPK->Rows() < kRowsThatFit)
        return;
    const qint64 rows = std::max({mfgPK->Rows(), mfg->Rows(), mfgFK->Rows()});
    const int wanted = ToPixels(rows * mfg->RowHeight(0)) + height() - mfg->height();
    const int more = wanted - height();
    if (more <= 0)
        return;
    // In the work area the frame around the window is what has a size.
    QWidget *const sized = parentWidget() && parentWidget()->windowType() == Qt::SubWindow ? parentWidget() : this;
    const int room = sized->parentWidget() ? sized->parentWidget()->height() : INT_MAX;
    sized->resize(sized->width(), std::max(sized->height(), std::min(sized->height() + more, room)));
}

void frmLink::Walk(FlexGrid *grid)
{
    const qint64 row = grid->Row();
    const std::vector<LinkRow> &links = grid == mfgPK ? m_links.Primary : m_links.Foreign;
    if (grid == mfg || row <= 0 || row > qint64(links.size()) || m_moving)
        return;
    m_next = LinkTarget();
    m_next.Table = links[size_t(row - 1)].Other;
    m_next.IsPicked = true;

    const int rowHeight = ToPixels(grid->RowHeight(0));
    m_moving = new QFrame(this);
    m_moving->setObjectName(QStringLiteral("moving"));
    m_moving->setFrameStyle(int(QFrame::Box) | int(QFrame::Plain));
    m_moving->setLineWidth(2);
    m_moving->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_moving->show();
    m_way = new QPropertyAnimation(m_moving, "geometry", m_moving);
    m_way->setDuration(kMoveMs);
    m_way->setStartValue(QRect(grid->x(), grid->y() + ToPixels(grid->RowPos(row)), grid->width(), rowHeight));
    m_way->setEndValue(QRect(mfg->x(), mfg->y(), mfg->width(), rowHeight));
    connect(m_way, &QPropertyAnimation::finished, this, &frmLink::EndMove);
    m_way->start();
}

// The frame has arrived, or a click or a key does not want to wait for it.
void frmLink::EndMove()
{
    if (!m_moving)
        return;
    m_moving->hide();
    m_moving->deleteLater();
    m_moving = nullptr;
    Load(m_next);
}

bool frmLink::eventFilter(QObject *watched, QEvent *event)
{
    if (m_moving && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress)) {
        m_way->stop();
        EndMove();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        auto *const grid = qobject_cast<FlexGrid *>(watched);
        if (grid && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            Walk(grid);
            return true;
        }
    }
    return ChildWindow::eventFilter(watched, event);
}

void frmLink::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        CloseChild();
    else
        ChildWindow::keyPressEvent(event);
}
