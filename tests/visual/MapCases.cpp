#include "tests/visual/CaseRunners.h"

#include "visual/logic/MapScroll.h"
#include "visual/logic/MapTables.h"

namespace {

QStringList FieldsOf(int count)
{
    QStringList fields;
    for (int i = 0; i < count; ++i)
        fields += QStringLiteral("F%1").arg(i);
    return fields;
}

QJsonValue RunSequence(const QJsonObject &args)
{
    MapTables tables;
    QJsonArray seen;
    for (const QJsonValue &value : A(args, "steps")) {
        const QString name = value[0].toString(), text = value[1].toString();
        QJsonValue answer;
        if (name == u"add") {
            if (const MapTable *table = tables.AddTable(text, FieldsOf(value[2].toInt()), {}))
                answer = QJsonArray{table->Index, table->Alias};
        } else if (name == u"unload") {
            tables.CurrentTable = value[1].toInt();
            tables.UnloadTable();
        } else if (name == u"count") {
            answer = tables.TableCount(text);
        } else if (name == u"name") {
            answer = tables.GetTableName(text);
        } else if (name == u"list") {
            answer = tables.GetTableList();
        } else if (name == u"real") {
            answer = tables.GetRealName(text);
        } else {
            answer = QStringLiteral("unknown step ") + name;
        }
        seen.append(answer);
    }
    return seen;
}

// Tables with these aliases; the names do not matter.
void Fill(MapTables &tables, const QJsonArray &windows)
{
    for (const QJsonValue &window : windows) {
        MapTable *table = tables.AddTable(QStringLiteral("?"), {QStringLiteral("?")}, {});
        table->Alias = window.isString() ? window.toString() : window[u"alias"].toString();
        table->Items.clear();
        for (const QJsonValue &item : window[u"items"].toArray())
            table->Items.push_back({item.toString()});
    }
}

QJsonValue RunList(const QJsonObject &args)
{
    MapTables tables;
    Fill(tables, A(args, "aliases"));
    return tables.GetTableList();
}

QJsonValue RunFieldIndex(const QJsonObject &args)
{
    MapTables tables;
    Fill(tables, {QJsonObject{{QStringLiteral("items"), args[u"items"]}}});
    return tables.GetFieldIndex(1, T(args, "field"));
}

QJsonValue RunItemCheck(const QJsonObject &args)
{
    MapTables tables;
    Fill(tables, A(args, "windows"));
    const MapTables::ItemPlace place = tables.SetItemCheck(T(args, "alias"), T(args, "field"), true);
    if (!place.Table)
        return QJsonValue::Null;
    return tables.At(place.Table)->Items[size_t(place.Item - 1)].Checked ? QJsonArray{place.Table, place.Item}
                                                                         : QJsonArray();
}

QJsonValue RunPlace(const QJsonObject &args)
{
    const MapPlace place = PlaceTable({D(args, "w"), D(args, "h"), D(args, "width"), D(args, "height"), 0},
                                      D(args, "rnd1"), D(args, "rnd2"));
    return QJsonArray{place.Left, place.Top};
}

QJsonValue Letter(char letter)
{
    return letter ? QJsonValue(QString(QLatin1Char(letter))) : QJsonValue(QJsonValue::Null);
}

QJsonValue RunCarry(const QJsonObject &args)
{
    MapTables tables;
    tables.AddTable(QStringLiteral("?"), {QStringLiteral("?")}, {});
    tables.StartCarry(1);
    tables.MoveCarried(D(args, "x"), D(args, "y"));
    const CarryEdges edges = EdgesAt(D(args, "x"), D(args, "y"), D(args, "w"), D(args, "h"));
    return QJsonObject{{QStringLiteral("left"), tables.At(1)->Left},
                       {QStringLiteral("top"), tables.At(1)->Top},
                       {QStringLiteral("lr"), Letter(edges.LeftRight)},
                       {QStringLiteral("tb"), Letter(edges.TopBottom)}};
}

QJsonObject Bar(const MapScrollBar &bar)
{
    // What was not touched stands as it stood before, at numbers that no fitting gives.
    const auto number = [](int value) { return value == -7 ? QJsonValue() : QJsonValue(value); };
    return {{QStringLiteral("enabled"), bar.Enabled},
            {QStringLiteral("tag"), bar.Tag == u"before" ? QJsonValue() : QJsonValue(bar.Tag)},
            {QStringLiteral("max"), number(bar.Max)},
            {QStringLiteral("large_change"), number(bar.LargeChange)}};
}

QJsonValue RunRanges(const QJsonObject &args)
{
    std::vector<MapTable> tables;
    for (const QJsonValue &window : A(args, "windows")) {
        MapTable table;
        table.Left = window[0].toDouble();
        table.Top = window[1].toDouble();
        table.Width = window[2].toDouble();
        table.Height = window[3].toDouble();
        tables.push_back(table);
    }
    std::vector<const MapTable *> pointers;
    for (const MapTable &table : tables)
        pointers.push_back(&table);
    const MapRanges ranges = MeasureTables(D(args, "w"), D(args, "h"), pointers).Ranges;
    MapScrollBar h{false, 0, -7, -7, QStringLiteral("before")}, v = h;
    FitBar(h, ranges.X, false);
    FitBar(v, ranges.Y, true);
    return QJsonObject{{QStringLiteral("range_x"), ranges.X},
                       {QStringLiteral("range_y"), ranges.Y},
                       {QStringLiteral("h"), Bar(h)},
                       {QStringLiteral("v"), Bar(v)}};
}

QJsonValue RunAutoScroll(const QJsonObject &args)
{
    MapScrollBar bar{true, I(args, "value"), I(args, "max"), I(args, "large_change"), {}};
    const bool on = ScrollTick(bar, T(args, "tag") == u"R" || T(args, "tag") == u"B");
    return QJsonObject{{QStringLiteral("value"), bar.Value}, {QStringLiteral("timer"), on}};
}

QJsonValue RunShift(const QJsonObject &args)
{
    MapScrollBar bar{true, I(args, "value"), 32767, 1, T(args, "tag")};
    const int delta = ShiftOf(bar);
    return QJsonObject{{QStringLiteral("delta"), delta}, {QStringLiteral("tag"), bar.Tag}};
}

} // namespace

std::span<const CaseRunner> MapRunners()
{
    static const CaseRunner rows[] = {
        {"table_sequence", RunSequence},
        {"table_list", RunList},
        {"populate_query", [](const QJsonObject &args) -> QJsonValue { return PopulateQuery(T(args, "name")); }},
        {"field_index", RunFieldIndex},
        {"item_check", RunItemCheck},
        {"table_height",
         [](const QJsonObject &args) -> QJsonValue { return TableHeight(D(args, "text_height"), I(args, "count")); },
         1e-9},
        {"column_width",
         [](const QJsonObject &args) -> QJsonValue { return TableColumnWidth(D(args, "width"), I(args, "items")); }},
        {"table_place", RunPlace, 1e-9},
        {"carry_move", RunCarry, 1e-9},
        {"scroll_ranges", RunRanges},
        {"auto_scroll", RunAutoScroll},
        {"scroll_shift", RunShift},
    };
    return rows;
}
