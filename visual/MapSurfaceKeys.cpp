// The keys of a table map.

#include "controls/Attempt.h"
#include "controls/Twips.h"
#include "visual/MapSurface.h"
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>

namespace {

constexpr int kStride = 150, kFineStride = 15; // twips

struct Place // what the keyboard can be on
{
    int table = 0, join = 0;
    bool operator==(const Place &) const = default;
};

std::vector<Place> PlacesOf(const ucTableMap &map)
{
    std::vector<Place> places;
    for (int index : map.Tables().Numbers())
        places.push_back({index, 0});
    for (const MapJoin &row : map.Joins().Rows())
        places.push_back({0, row.Index});
    return places;
}

} // namespace

bool MapSurface::focusNextPrevChild(bool next)
{
    if (m.tables.CarriedTable)
        return true;
    const std::vector<Place> places = PlacesOf(m_map);
    const Place here = m.keyJoin ? Place{0, m.keyJoin} : Place{m.tables.CurrentTable, 0};
    const auto found = std::find(places.begin(), places.end(), here);
    auto to = places.end();
    if (found == places.end())
        to = places.empty() ? places.end() : next ? places.begin() : places.end() - 1;
    else if (next)
        to = found + 1;
    else if (found != places.begin())
        to = found - 1;
    if (to == places.end())
        return QWidget::focusNextPrevChild(next);
    m.keyJoin = to->join;
    if (to->table)
        m.Select(to->table);
    update();
    Announce();
    return true;
}

void MapSurface::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    const bool walked = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    const std::vector<int> numbers = m.tables.Numbers();
    if (walked && !m.keyJoin && !m.tables.At(m.tables.CurrentTable) && !numbers.empty())
        m.Select(numbers.front());
    update();
    Announce();
}

void MapSurface::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

void MapSurface::keyPressEvent(QKeyEvent *event)
{
    Attempt([&] {
        const bool mouse = m_dragging || m.tables.CarriedTable;
        if (event->key() == Qt::Key_Escape && (mouse || m.keySource)) {
            m.GiveBack();
            ForgetMouse();
            m.keySource = 0;
            update();
            return;
        }
        if (mouse) // the other keys wait for the button
            return;
        const QPointer<MapSurface> self(this);
        bool taken = false;
        if (m.keyJoin && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
            m_map.ShowJoinProperties(m.keyJoin), taken = true;
        else if (m.keyJoin && event->key() == Qt::Key_Delete)
            m_map.RemoveJoin(m.keyJoin), taken = true;
        else if (!m.keyJoin && m.tables.At(m.tables.CurrentTable))
            taken = TableKey(event);
        if (!self)
            return;
        if (!taken)
            QWidget::keyPressEvent(event);
        update();
    });
}

bool MapSurface::TableKey(QKeyEvent *event)
{
    const int key = event->key();
    const int table = m.tables.CurrentTable;
    if (event->modifiers() & Qt::ControlModifier) {
        const int step = event->modifiers() & Qt::ShiftModifier ? kFineStride : kStride;
        const int right = key == Qt::Key_Right ? 1 : key == Qt::Key_Left ? -1 : 0;
        const int down = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
        if (key == Qt::Key_J)
            JoinKey();
        else if (right || down)
            m.CarryBy(right * step, down * step);
        return key == Qt::Key_J || right || down;
    }
    if (key == Qt::Key_Delete) {
        SetTag(m_map.mnuTable, QString::number(table));
        m_map.RemoveCurrentTable();
        return true;
    }
    if (key == Qt::Key_Space) {
        m.ClickItem(table, m.tables.At(table)->Selected, m.tables.CheckBoxes);
        return true;
    }
    return ItemKey(key);
}

bool MapSurface::ItemKey(int key)
{
    MapTable &table = *m.tables.At(m.tables.CurrentTable);
    const int items = int(table.Items.size());
    int to = table.Selected;
    switch (key) {
    case Qt::Key_Down:
        ++to;
        break;
    case Qt::Key_Up:
        --to;
        break;
    case Qt::Key_Home:
        to = 1;
        break;
    case Qt::Key_End:
        to = items;
        break;
    default:
        return false;
    }
    table.Selected = std::clamp(to, 1, items);
    Announce();
    return true;
}

// The item becomes one end of a join; at another table it is the other end, as after a drag.
void MapSurface::JoinKey()
{
    const MapTable &table = *m.tables.At(m.tables.CurrentTable);
    if (!m.tables.At(m.keySource)) {
        m.keySource = table.Selected ? table.Index : 0;
        return;
    }
    const int source = m.keySource;
    m.keySource = 0;
    m.dragSource = source;
    m.Drop(source, table.Index, table.Selected);
}

void MapSurface::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return; // the buttons have said it
    Attempt([&] {
        const MapTable *table = m.tables.At(m.tables.CurrentTable);
        if (m.keyJoin)
            m.ShowJoinMenu(m.keyJoin, m.layers.Bounds(m.keyJoin).center().toPoint(), true);
        else if (table)
            m.ShowTableMenu(table->Index, m.BoxRect(*table).center(), true);
        else
            emit m_map.MouseUp(2, 0, ToTwips(width() / 2), ToTwips(height() / 2), false);
    });
}
