// What a user does to tables and joins: the two popups, clicks, drops, the join dialog.

#include "controls/Attempt.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include "visual/MapSurface.h"
#include <QAction>
#include <QMenu>

namespace {

struct MapGone // the map went while its dialog was up: leaves what touches it
{
};

QAction *AddItem(QMenu *menu, const char *name, const QString &caption, std::function<void()> run)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(QLatin1String(name));
    if (run)
        QObject::connect(action, &QAction::triggered, menu, [run] { Attempt(run); });
    else
        action->setEnabled(false);
    return action;
}

} // namespace

void ucTableMap::Body::BuildMenus()
{
    map->mnuTable = new QMenu(map);
    map->mnuTable->setObjectName(QStringLiteral("mnuTable"));
    AddItem(map->mnuTable, "mnuRemoveTable", QStringLiteral("Remove"), [this] { map->RemoveCurrentTable(); });
    AddItem(map->mnuTable, "mnuAddLinked", QStringLiteral("Add Linked Tables"), [this] { map->AddLinked(); });
    AddItem(map->mnuTable, "mnuB2F", QStringLiteral("Bring to front"), [this] { map->BringToTop(); });
    AddItem(map->mnuTable, "mnuS2B", QStringLiteral("Send to back"), [this] { map->SendToBottom(); });
    AddItem(map->mnuTable, "mnuTableProperties", QStringLiteral("Properties"), {}); // nothing behind it in any release
    map->mnuPopup = new QMenu(map);
    map->mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    AddItem(map->mnuPopup, "mnuRemoveJoin", QStringLiteral("Remove"),
            [this] { map->RemoveJoin(::Tag(map->mnuPopup).toInt()); });
    AddItem(map->mnuPopup, "mnuJoinProperties", QStringLiteral("Properties"),
            [this] { map->ShowJoinProperties(::Tag(map->mnuPopup).toInt()); });
    for (QMenu *menu : {map->mnuTable, map->mnuPopup})
        ApplySkin(menu);
}

static void Popup(QMenu *menu, QWidget *surface, const QPoint &pixel, bool keyboard)
{
    menu->popup(surface->mapToGlobal(pixel));
    if (keyboard)
        menu->setActiveAction(menu->actions().constFirst());
}

void ucTableMap::Body::ShowTableMenu(int table, const QPoint &pixel, bool keyboard)
{
    tables.CurrentTable = table;
    SetTag(map->mnuTable, QString::number(table));
    surface->update();
    Popup(map->mnuTable, surface, pixel, keyboard);
}

void ucTableMap::Body::ShowJoinMenu(int join, const QPoint &pixel, bool keyboard)
{
    SetTag(map->mnuPopup, QString::number(join));
    Popup(map->mnuPopup, surface, pixel, keyboard);
}

void ucTableMap::Body::Select(int table)
{
    tables.CurrentTable = table;
    tables.BringToTop(table);
    surface->update();
}

void ucTableMap::Body::ClickItem(int table, int item, bool check)
{
    MapTable *clicked = tables.At(table);
    if (!clicked)
        return;
    if (check && item >= 1 && size_t(item) <= clicked->Items.size())
        clicked->Items[size_t(item - 1)].Checked = !clicked->Items[size_t(item - 1)].Checked;
    surface->update();
    emit map->TableClicked(*clicked);
}

MapEdit ucTableMap::Body::Edit()
{
    const QPointer<ucTableMap> alive(map);
    return {tables, joins,
            [alive, ask = map->AskJoin](const JoinQuestion &question) {
                JoinAnswer answer = ask ? ask(question, alive) : JoinAnswer();
                if (!alive)
                    throw MapGone();
                return answer;
            },
            [this](const JoinAnswer &made) {
                FollowJoins(); // drawn before anybody hears of it
                emit map->CreateJoin(made.Table1, made.Field1, made.Table2, made.Field2, made.JoinType);
            }};
}

bool ucTableMap::Body::Drop(int source, int target, int item)
{
    MeasureBars();
    bool dropped = false;
    Attempt([&] { dropped = Edit().Drop(source, target, item); });
    return dropped; // the map may have gone
}

void ucTableMap::ShowJoinProperties(int Index)
{
    const QPointer<ucTableMap> self(this);
    Attempt([&] { m->Edit().ShowJoinProperties(Index); });
    if (!self)
        return;
    m->DrawJoins();
    emit JoinsChanged();
}

void ucTableMap::RemoveJoin(int Index)
{
    m->joins.Remove(Index);
    m->FollowJoins();
}
