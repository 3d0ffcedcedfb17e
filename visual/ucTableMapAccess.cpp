// What a screen reader finds on a table map: the tables with their items, and the joins.

#include "controls/Twips.h"
#include "visual/MapSurface.h"
#include <QAccessible>
#include <QAccessibleWidget>
#include <map>

namespace {

class SurfaceAccess;

// A table, an item of it, or a join. Valid while the model has it.
class PartAccess : public QAccessibleInterface
{
public:
    PartAccess(MapSurface *surface, int table, int item, int join)
        : m_surface(surface), m_table(table), m_item(item), m_join(join)
    {
    }
    bool isValid() const override { return m_surface && (m_join ? Join() != nullptr : Table() != nullptr); }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int childCount() const override { return isValid() && !m_join && !m_item ? int(Table()->Items.size()) : 0; }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *part = dynamic_cast<const PartAccess *>(child);
        return part && part->m_table == m_table && part->m_item ? part->m_item - 1 : -1;
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !isValid())
            return {};
        if (m_join)
            return QStringLiteral("%1.%2 = %3.%4, %5")
                .arg(Join()->Table1, Join()->Field1, Join()->Table2, Join()->Field2, Join()->Operator);
        return m_item ? Item() ? Item()->Text : QString() : Table()->Alias;
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        if (!isValid() || m_join)
            return {};
        const ucTableMap &map = m_surface->Map();
        const QRect place = m_item ? map.ItemRect(m_table, m_item) : map.TableRect(m_table);
        return {m_surface->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override
    {
        if (m_join)
            return QAccessible::Graphic;
        if (!m_item)
            return QAccessible::List;
        return m_surface->Map().Tables().CheckBoxes ? QAccessible::CheckBox : QAccessible::ListItem;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = true;
        const bool current = !m_join && m_table == m_surface->Map().CurrentTable();
        state.focused = current && m_surface->hasFocus() && (!m_item || m_item == Table()->Selected);
        if (m_item) {
            state.selectable = true;
            state.selected = m_item == Table()->Selected;
            state.checkable = m_surface->Map().Tables().CheckBoxes;
            state.checked = Item() && Item()->Checked;
        }
        return state;
    }

    int Number() const { return m_table; }
    int JoinNumber() const { return m_join; }

private:
    const MapTable *Table() const { return m_surface->Map().lvTable(m_table); }
    const MapItem *Item() const
    {
        return size_t(m_item) <= Table()->Items.size() ? &Table()->Items[size_t(m_item - 1)] : nullptr;
    }
    const MapJoin *Join() const { return m_surface->Map().Joins().OfLayer(m_join); }
    QPointer<MapSurface> m_surface;
    int m_table, m_item, m_join;
};

class SurfaceAccess : public QAccessibleWidget
{
public:
    explicit SurfaceAccess(MapSurface *surface) : QAccessibleWidget(surface, QAccessible::Pane), m_surface(surface) {}
    ~SurfaceAccess() override
    {
        for (const auto &one : m_parts)
            QAccessible::deleteAccessibleInterface(one.second);
    }
    int childCount() const override
    {
        const ucTableMap &map = m_surface->Map();
        return int(map.Tables().Stack().size() + map.Joins().Rows().size());
    }
    QAccessibleInterface *child(int index) const override
    {
        const std::vector<int> numbers = m_surface->Map().Tables().Numbers();
        const std::vector<MapJoin> &rows = m_surface->Map().Joins().Rows();
        if (index < 0 || size_t(index) >= numbers.size() + rows.size())
            return nullptr;
        return size_t(index) < numbers.size() ? Part(numbers[size_t(index)], 0, 0)
                                              : Part(0, 0, rows[size_t(index) - numbers.size()].Index);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int i = int(m_surface->Map().Tables().Stack().size()); i-- > 0;)
            if (child(i)->rect().contains(x, y))
                return child(i);
        return nullptr;
    }
    QAccessibleInterface *focusChild() const override
    {
        const MapTable *table = m_surface->Map().lvTable(m_surface->Map().CurrentTable());
        return table ? Part(table->Index, table->Selected, 0) : nullptr;
    }
    QAccessibleInterface *Part(int table, int item, int join) const
    {
        const auto [found, fresh] = m_parts.try_emplace({table, item, join}, 0);
        if (fresh)
            found->second = QAccessible::registerAccessibleInterface(new PartAccess(m_surface, table, item, join));
        return QAccessible::accessibleInterface(found->second);
    }

private:
    MapSurface *m_surface;
    mutable std::map<std::tuple<int, int, int>, QAccessible::Id> m_parts;
};

SurfaceAccess *AccessOf(MapSurface *surface)
{
    return surface ? dynamic_cast<SurfaceAccess *>(QAccessible::queryAccessibleInterface(surface)) : nullptr;
}

QAccessibleInterface *PartAccess::parent() const
{
    SurfaceAccess *surface = AccessOf(m_surface);
    return surface && m_item ? surface->Part(m_table, 0, 0) : surface;
}

QAccessibleInterface *PartAccess::child(int index) const
{
    SurfaceAccess *surface = AccessOf(m_surface);
    return surface && index >= 0 && index < childCount() ? surface->Part(m_table, index + 1, 0) : nullptr;
}

QAccessibleInterface *PartAccess::childAt(int x, int y) const
{
    for (int i = 0; i < childCount(); ++i)
        if (child(i)->rect().contains(x, y))
            return child(i);
    return nullptr;
}

QAccessibleInterface *MakeAccess(const QString &, QObject *object)
{
    auto *const surface = qobject_cast<MapSurface *>(object);
    return surface ? new SurfaceAccess(surface) : nullptr;
}

const bool installed = (QAccessible::installFactory(MakeAccess), true);

} // namespace

bool MapAccessInstalled()
{
    return installed;
}

void MapSurface::Announce()
{
    if (!QAccessible::isActive() || !hasFocus())
        return;
    SurfaceAccess *surface = AccessOf(this);
    const MapTable *table = m_map.lvTable(m_map.CurrentTable());
    QAccessibleInterface *part = !surface    ? nullptr
                                 : m.keyJoin ? surface->Part(0, 0, m.keyJoin)
                                 : table     ? surface->Part(table->Index, table->Selected, 0)
                                             : nullptr;
    if (!part)
        return;
    QAccessibleEvent event(part, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
