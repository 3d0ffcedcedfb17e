#include "visual/logic/MapTables.h"

#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

#include <QSet>

#include <algorithm>

namespace {

constexpr double kHeightOfALine = 1.3;
constexpr int kLinesBesideTheFields = 3;
constexpr int kItemsAtFullWidth = 10;
constexpr double kBesideThePointer = 0.1;

} // namespace

MapPlace PlaceTable(const MapMeasures &measures, double first, double second)
{
    // The template's height counts here and not the table's own, so a long table may hang over the lower edge.
    return {(measures.SurfaceWidth - measures.TemplateWidth) * first,
            (measures.SurfaceHeight - measures.TemplateHeight) * second};
}

double TableHeight(double textHeight, int fields)
{
    return textHeight * kHeightOfALine * (fields + kLinesBesideTheFields);
}

double TableColumnWidth(double width, int items)
{
    return items > kItemsAtFullWidth ? width - 0.5 : width;
}

QString PopulateQuery(const QString &name)
{
    return QStringLiteral("SELECT * FROM ") + QuoteName(name) + QStringLiteral(" WHERE 1=0");
}

int PopulateTable(MapTable &table, const QString &name, const QString &alias, const QStringList &fields, bool showStar)
{
    table.Items.clear();
    if (name.isEmpty())
        return 0;
    table.Tag = name;
    table.Alias = alias;
    QSet<QString> keys;
    if (showStar) {
        table.Items.push_back({QStringLiteral("*")});
        keys.insert(QStringLiteral("*"));
    }
    int count = 0;
    for (const QString &field : fields) {
        if (keys.contains(field))
            break;
        keys.insert(field);
        table.Items.push_back({field});
        ++count;
    }
    return count;
}

MapTable *MapTables::AddTable(const QString &name, const QStringList &fields, const MapMeasures &measures,
                              const QString &written)
{
    const int index = UBound() + 1;
    MapTable &table = m_tables[index];
    table.Index = index;
    table.Tag = name; // it counts among its own copies
    if (PopulateTable(table, name, GetTableName(name), fields, ShowStar) < 1) {
        m_tables.erase(index);
        return nullptr;
    }
    table.Written = written;
    if (WriteAlias && table.Alias != name)
        table.AliasWritten = WriteAlias(table.Alias);
    const int items = int(table.Items.size());
    table.Width = measures.TemplateWidth;
    table.ColumnWidth = TableColumnWidth(table.Width, items);
    table.Height = TableHeight(measures.TextHeight, items - (ShowStar ? 1 : 0));
    const double first = lang::Rnd();
    const MapPlace place = PlaceTable(measures, first, lang::Rnd());
    table.Left = place.Left;
    table.Top = place.Top;
    m_stack.push_back(index);
    CurrentTable = index;
    if (TableAdded)
        TableAdded(table);
    return At(index);
}

void MapTables::UnloadTable()
{
    RemoveTable(CurrentTable);
}

void MapTables::RemoveTable(int index)
{
    const MapTable *table = At(index);
    if (!table)
        return;
    const QString name = table->Tag, alias = table->Alias;
    if (TableRemoved)
        TableRemoved(name, alias);
    m_tables.erase(index);
    std::erase(m_stack, index);
    if (CurrentTable == index)
        CurrentTable = 0;
    if (CarriedTable == index)
        CarriedTable = 0;
}

void MapTables::ClearMap()
{
    m_tables.clear();
    m_stack.clear();
    CurrentTable = CarriedTable = 0;
}

int MapTables::TableCount(const QString &name) const
{
    return int(
        std::count_if(m_tables.begin(), m_tables.end(), [&](const auto &one) { return one.second.Tag == name; }));
}

QString MapTables::GetTableName(const QString &name) const
{
    const int count = TableCount(name);
    return count >= 2 ? name + QStringLiteral("_Copy") + QString::number(count - 1) : name;
}

QString MapTables::GetTableList() const
{
    QString list;
    for (const auto &[index, table] : m_tables) {
        if (!list.isEmpty())
            list += QStringLiteral(" ,");
        const QString &own = table.Alias == table.Tag ? table.Written : table.AliasWritten;
        list += own.isEmpty() ? QuoteName(table.Alias) : own;
    }
    return list;
}

QString MapTables::StatementName(const QString &alias) const
{
    const MapTable *named = nullptr;
    for (const auto &[index, table] : m_tables) {
        if (table.Alias == alias && table.Tag != alias)
            return table.AliasWritten.isEmpty() ? QuoteName(alias) : table.AliasWritten;
        if (!named && table.Tag == alias)
            named = &table;
    }
    return named && !named->Written.isEmpty() ? named->Written : QuoteName(alias);
}

QString MapTables::SourceName(int index) const
{
    const MapTable *table = At(index);
    return !table ? QString() : table->Written.isEmpty() ? QuoteName(table->Tag) : table->Written;
}

QString MapTables::GetRealName(const QString &alias) const
{
    for (const auto &[index, table] : m_tables) {
        if (table.Alias == alias)
            return table.Tag;
    }
    return alias;
}

int MapTables::GetFieldIndex(int table, const QString &field) const
{
    const MapTable *found = At(table);
    if (!found)
        return 0;
    const auto item =
        std::find_if(found->Items.begin(), found->Items.end(), [&](const MapItem &one) { return one.Text == field; });
    return item == found->Items.end() ? 0 : int(item - found->Items.begin()) + 1;
}

MapTables::ItemPlace MapTables::SetItemCheck(const QString &alias, const QString &field, bool value)
{
    for (auto &[index, table] : m_tables) {
        if (table.Alias != alias)
            continue;
        // A removed copy's alias may have been given again: the search goes on behind a table without the field.
        if (const int item = GetFieldIndex(index, field)) {
            table.Items[size_t(item - 1)].Checked = value;
            return {index, item};
        }
    }
    return {};
}

MapTable *MapTables::Find(const QString &name)
{
    for (auto &[index, table] : m_tables) {
        if (table.Tag == name)
            return &table;
    }
    return nullptr;
}

MapTable *MapTables::At(int index)
{
    const auto found = m_tables.find(index);
    return found == m_tables.end() ? nullptr : &found->second;
}

const MapTable *MapTables::At(int index) const
{
    const auto found = m_tables.find(index);
    return found == m_tables.end() ? nullptr : &found->second;
}

std::vector<int> MapTables::Numbers() const
{
    std::vector<int> numbers;
    for (const auto &one : m_tables)
        numbers.push_back(one.first);
    return numbers;
}

void MapTables::BringToTop(int index)
{
    const auto place = std::find(m_stack.begin(), m_stack.end(), index);
    if (place != m_stack.end())
        std::rotate(place, place + 1, m_stack.end());
}

void MapTables::SendToBottom(int index)
{
    const auto place = std::find(m_stack.begin(), m_stack.end(), index);
    if (place != m_stack.end())
        std::rotate(m_stack.begin(), place, place + 1);
}

void MapTables::Shift(double deltaX, double deltaY)
{
    for (auto &one : m_tables) {
        one.second.Left += deltaX;
        one.second.Top += deltaY;
    }
}

void MapTables::StartCarry(int index)
{
    if (!At(index))
        return;
    CurrentTable = index;
    BringToTop(index);
    CarriedTable = index;
}

void MapTables::MoveCarried(double x, double y)
{
    if (MapTable *table = At(CarriedTable)) {
        table->Left = x + kBesideThePointer;
        table->Top = y + kBesideThePointer;
    }
}

void MapTables::MoveCarriedOver(int index, double x, double y)
{
    MapTable *table = At(CarriedTable);
    const MapTable *under = At(index);
    if (!table || !under)
        return;
    const double left = under->Left + x, top = under->Top + y; // read first: it may be the carried one itself
    table->Left = left;
    table->Top = top;
}
