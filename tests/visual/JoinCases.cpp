#include "tests/visual/CaseRunners.h"

#include "tests/visual/CaseJoins.h"
#include "visual/logic/JoinClause.h"
#include "visual/logic/JoinEnds.h"
#include "visual/logic/MapLinks.h"

namespace {

QJsonValue RunExists(const QJsonObject &args)
{
    return JoinsOf(args).JoinExists(T(args, "table1"), T(args, "field1"), T(args, "table2"), T(args, "field2"));
}

QJsonValue RunCondition(const QJsonObject &args)
{
    return GetJoinCondition(T(args, "operator"), T(args, "a"), T(args, "b"), B(args, "is_oracle"));
}

QJsonValue RunRemove(const QJsonObject &args)
{
    MapJoins joins = JoinsOf(args);
    const size_t before = joins.Rows().size();
    QJsonArray removed;
    for (int index : joins.RemoveOfTable(T(args, "tag")))
        removed.append(index);
    return joins.Rows().size() + size_t(removed.size()) == before ? QJsonValue(removed) : QJsonValue();
}

TableFrame Frame(const QJsonObject &t)
{
    return {D(t, "left"), D(t, "top"), D(t, "width"), D(t, "height")};
}

QJsonValue RunDraw(const QJsonObject &args)
{
    const QJsonObject one = O(args, "item1"), two = O(args, "item2");
    const JoinEnds ends =
        EndsOfJoin(Frame(O(args, "t1")), {D(one, "top"), D(one, "height")}, Frame(O(args, "t2")),
                   {D(two, "top"), D(two, "height")}, T(args, "operator"), D(args, "outer_w"), D(args, "outer_h"));
    QJsonArray lines;
    for (const QLineF &line : ends.Lines())
        lines.append(QJsonArray{line.x1(), line.y1(), line.x2(), line.y2(), 0});
    return QJsonObject{{QStringLiteral("x1"), ends.X1},
                       {QStringLiteral("y1"), ends.Y1},
                       {QStringLiteral("x2"), ends.X2},
                       {QStringLiteral("y2"), ends.Y2},
                       {QStringLiteral("swapped"), ends.Swapped},
                       {QStringLiteral("marker"), QString(QChar(ends.Marker))},
                       {QStringLiteral("marker_left"), ends.MarkerLeft},
                       {QStringLiteral("marker_top"), ends.MarkerTop},
                       {QStringLiteral("lines"), lines}};
}

// The map after foreign keys were brought onto it.
QJsonValue RunKeys(const QJsonObject &args, bool all)
{
    MapTables tables;
    MapJoins joins;
    int told = 0;
    const auto add = [&](const QString &name) { return tables.AddTable(name, {QStringLiteral("ID")}, {}); };
    for (const QJsonValue &name : A(args, "start"))
        add(name.toString());
    tables.CurrentTable = I(args, "current");
    std::vector<ForeignKeyRow> keys;
    for (const QJsonValue &key : A(args, "keys"))
        keys.push_back({key[0].toString(), key[1].toString(), key[2].toString(), key[3].toString()});
    const MapLinker linker{tables, joins, add, [&](const MapJoin &) { ++told; }, {}};
    all ? linker.AddAll(keys) : linker.AddLinked(keys);
    if (told != int(joins.Rows().size()))
        return QStringLiteral("not every join was told");
    QJsonArray windows, rows;
    for (int index : tables.Numbers())
        windows.append(QJsonArray{index, tables.At(index)->Alias});
    for (const MapJoin &row : joins.Rows())
        rows.append(QJsonObject{{QStringLiteral("Table1"), row.Table1},
                                {QStringLiteral("Table1Index"), QString::number(row.Table1Index)},
                                {QStringLiteral("Field1"), row.Field1},
                                {QStringLiteral("Operator"), row.Operator},
                                {QStringLiteral("Table2"), row.Table2},
                                {QStringLiteral("Table2Index"), QString::number(row.Table2Index)},
                                {QStringLiteral("Field2"), row.Field2},
                                {QStringLiteral("Index"), row.Index}});
    return QJsonObject{{QStringLiteral("windows"), windows}, {QStringLiteral("joins"), rows}};
}

QJsonValue RunMatch(const QJsonObject &args)
{
    const std::optional<FieldMatch> match = FindMatch(Texts(A(args, "list0")), Texts(A(args, "list1")));
    return match ? QJsonValue(QJsonArray{match->First, match->Second}) : QJsonValue();
}

QJsonValue RunFormOk(const QJsonObject &args)
{
    return QJsonObject{{QStringLiteral("cancelled"), IsJoinCancelled(T(args, "field0"), T(args, "field1"))}};
}

QJsonValue RunClause(const QJsonObject &args)
{
    JoinClause clause;
    clause.Previous = T(args, "previous");
    clause.Table = T(args, "table");
    clause.Join = T(args, "join");
    clause.Field0 = T(args, "field0");
    clause.Field1 = T(args, "field1");
    clause.Operator = T(args, "operator");
    clause.Step = I(args, "step");
    return clause.GetSQL();
}

QJsonValue OrNull(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

JoinClause Between(const QString &previous, const QString &table)
{
    JoinClause clause;
    clause.Previous = previous;
    clause.Table = table;
    return clause;
}

} // namespace

std::span<const CaseRunner> JoinRunners()
{
    static const CaseRunner rows[] = {
        {"join_exists", RunExists},
        {"join_condition", RunCondition},
        {"join_statement",
         [](const QJsonObject &args) -> QJsonValue { return JoinsOf(args).GetJoinStatement(B(args, "is_oracle")); }},
        {"remove_table_joins", RunRemove},
        {"draw_join", RunDraw},
        {"add_linked", [](const QJsonObject &args) { return RunKeys(args, false); }},
        {"add_all", [](const QJsonObject &args) { return RunKeys(args, true); }},
        {"find_match", RunMatch},
        {"join_form_query", [](const QJsonObject &args) { return OrNull(JoinFieldsQuery(T(args, "table"))); }},
        {"join_form_ok", RunFormOk},
        {"ucjoin_previous_query",
         [](const QJsonObject &args) -> QJsonValue { return Between(T(args, "text"), {}).PreviousQuery(); }},
        {"ucjoin_table_query",
         [](const QJsonObject &args) -> QJsonValue { return Between({}, T(args, "text")).TableQuery(); }},
        {"ucjoin_sql", RunClause},
    };
    return rows;
}
