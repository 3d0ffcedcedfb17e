#include "visual/ucTableMap.h"

#include "controls/Attempt.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include "visual/MapSurface.h"
#include <QApplication>
#include <QScrollBar>
#include <QTimer>

namespace {

qint32 SkinNumber(int number)
{
    const QColor colour = SkinColour(number);
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

// Lines are black: the ground is the lightest of the dark ones.
constexpr int kGround = 1, kTableGround = 8, kTableText = 7;

} // namespace

QColor MapColour(qint32 color)
{
    return QColor(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

ucTableMap::Body::Body(ucTableMap *owner) : map(owner)
{
    tables.TableAdded = [this](const MapTable &table) { emit map->TableAdded(table); };
    tables.TableRemoved = [this](const QString &name, const QString &alias) { emit map->TableRemoved(name, alias); };
}

ucTableMap::ucTableMap(QWidget *parent) : QWidget(parent), m(std::make_unique<Body>(this))
{
    m->surface = new MapSurface(*this);
    m->surface->setObjectName(QStringLiteral("picTableMap"));
    setFocusProxy(m->surface);
    const auto bar = [this](const char *name, Qt::Orientation orientation) {
        auto *made = new QScrollBar(orientation, this);
        made->setObjectName(QLatin1String(name));
        made->setEnabled(false);
        connect(made, &QScrollBar::valueChanged, this,
                [this, orientation](int value) { Attempt([&] { m->BarMoved(orientation, value); }); });
        return made;
    };
    VScroll1 = bar("VScroll1", Qt::Vertical);
    HScroll1 = bar("HScroll1", Qt::Horizontal);
    const auto timer = [this](const char *name, MapScrollBar &moved, char forward) {
        auto *made = new QTimer(this);
        made->setObjectName(QLatin1String(name));
        made->setInterval(kAutoScrollMilliseconds);
        connect(made, &QTimer::timeout, this,
                [this, made, &moved, forward] { Attempt([&] { m->Tick(made, moved, forward); }); });
        return made;
    };
    tmrAutoScrollLR = timer("tmrAutoScrollLR", m->across, 'R');
    tmrAutoScrollTB = timer("tmrAutoScrollTB", m->down, 'B');
    m->BuildMenus();
    MakeColor();
    m->LayOut();
}

ucTableMap::~ucTableMap()
{
    delete m->surface; // it hears of the end, and looks into the model
}

void ucTableMap::BringToTop()
{
    m->tables.BringToTop(m->tables.CurrentTable);
    m->surface->update();
}

void ucTableMap::SendToBottom()
{
    m->tables.SendToBottom(m->tables.CurrentTable);
    m->surface->update();
}

void ucTableMap::ClearMap()
{
    m->EndCarry();
    m->surface->ForgetMouse();
    m->tables.ClearMap();
    m->joins.Clear();
    m->objects.clear();
    m->dragSource = m->keyJoin = m->keySource = 0;
    m->FollowJoins();
    m->MeasureBars();
}

void ucTableMap::RefreshMap()
{
    m->LayOut();
    m->DrawJoins();
}

void ucTableMap::Body::ShowLook()
{
    layers.Template = look.Template;
    surface->update();
}

void ucTableMap::MakeGray()
{
    m->gray = true;
    m->look.MakeGray();
    m->ShowLook();
}

void ucTableMap::MakeColor()
{
    m->gray = false;
    m->look.MakeColor({SkinNumber(kTableGround), SkinNumber(kTableText), SkinNumber(kGround), SkinNumber(kGround),
                       SkinNumber(kTableText)});
    m->ShowLook();
}

void ucTableMap::AllowCheckBoxes(bool Value)
{
    m->tables.CheckBoxes = Value;
    m->surface->update();
}

bool ucTableMap::JoinExists(const QString &Table1, const QString &Field1, const QString &Table2,
                            const QString &Field2) const
{
    return m->joins.JoinExists(Table1, Field1, Table2, Field2);
}

QString ucTableMap::GetJoinStatement(bool IsOracle) const
{
    return m->joins.GetJoinStatement(IsOracle, [this](const QString &name) { return StatementName(name); });
}

QString ucTableMap::GetTableList() const
{
    return m->tables.GetTableList();
}

QString ucTableMap::StatementName(const QString &Alias) const
{
    return m->tables.StatementName(Alias);
}

void ucTableMap::UnloadTable()
{
    if (m->tables.CarriedTable == m->tables.CurrentTable)
        m->EndCarry();
    m->tables.UnloadTable();
    m->DrawJoins(); // those of the table are listed still, and not drawn
}

void ucTableMap::SetItemCheck(const QString &Alias, const QString &Field, bool Value)
{
    m->tables.SetItemCheck(Alias, Field, Value);
    m->surface->update();
}

QString ucTableMap::GetRealName(const QString &Alias) const
{
    return m->tables.GetRealName(Alias);
}

void ucTableMap::RemoveCurrentTable()
{
    m->EndCarry();
    m->Edit().RemoveCurrentTable(::Tag(mnuTable));
    m->keyJoin = 0;
    m->FollowJoins();
    m->MeasureBars();
}

int ucTableMap::GetFieldIndex(int TableIndex, const QString &Field) const
{
    return m->tables.GetFieldIndex(TableIndex, Field);
}

int ucTableMap::TableCount(const QString &TableName) const
{
    return m->tables.TableCount(TableName);
}

QString ucTableMap::GetTableName(const QString &TableName) const
{
    return m->tables.GetTableName(TableName);
}

QWidget *ucTableMap::Hwnd() const
{
    return m->surface;
}

const MapTables &ucTableMap::Tables() const
{
    return m->tables;
}

const MapJoins &ucTableMap::Joins() const
{
    return m->joins;
}

const MapTable *ucTableMap::lvTable(int Index) const
{
    return std::as_const(m->tables).At(Index);
}

const ucPathFinder *ucTableMap::PF(int Index) const
{
    return m->layers.PF(Index);
}

int ucTableMap::CurrentTable() const
{
    return m->tables.CurrentTable;
}

int ucTableMap::DragSourceIndex() const
{
    return m->dragSource;
}

bool ucTableMap::IsReading() const
{
    return m->reading;
}

QRect ucTableMap::TableRect(int Index) const
{
    const MapTable *table = lvTable(Index);
    return table ? m->BoxRect(*table) : QRect();
}

QRect ucTableMap::ItemRect(int Index, int Item) const
{
    const MapTable *table = lvTable(Index);
    return table && Item >= 1 && size_t(Item) <= table->Items.size() ? m->ItemRect(*table, Item) : QRect();
}

QString ucTableMap::FieldMimeType()
{
    return QStringLiteral("application/x-brindlewick-field");
}

void ucTableMap::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m->LayOut();
    m->DrawJoins();
}
