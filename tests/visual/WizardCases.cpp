#include "tests/visual/CaseRunners.h"

#include "tests/visual/CaseJoins.h"
#include "visual/logic/MapTables.h"
#include "visual/logic/WizardStatement.h"

namespace {

WizardRows RowsOf(const QJsonObject &args)
{
    std::vector<WizardRow> rows;
    for (const QJsonValue &row : A(args, "rows")) {
        WizardRow cells;
        for (int column = 0; column < wcCount; ++column)
            cells[size_t(column)] = row[column].toString();
        rows.push_back(cells);
    }
    WizardRows result;
    result.Assign(rows);
    result.GroupMode = B(args, "group_mode");
    return result;
}

QJsonArray Shown(const WizardRows &rows)
{
    QJsonArray shown;
    for (const WizardRow &row : rows.All()) {
        QJsonArray cells;
        for (const QString &cell : row)
            cells.append(cell);
        shown.append(cells);
    }
    return shown;
}

QJsonValue RunFreeRow(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    const int row = rows.GetFreeRow();
    return QJsonObject{{QStringLiteral("row"), row}, {QStringLiteral("rows"), Shown(rows)}};
}

QJsonValue RunFieldList(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    const QString text = BuildFieldList(rows, B(args, "grouping"));
    return QJsonObject{{QStringLiteral("text"), text}, {QStringLiteral("rows"), Shown(rows)}};
}

QJsonValue RunCriteria(const QJsonObject &args)
{
    return BuildCriteria(RowsOf(args), B(args, "having"), JoinsOf(args).GetJoinStatement(B(args, "is_oracle")));
}

QJsonValue RunApply(const QJsonObject &args)
{
    MapTables tables;
    for (const QJsonValue &alias : A(args, "aliases"))
        tables.AddTable(QStringLiteral("?"), {QStringLiteral("?")}, {})->Alias = alias.toString();
    WizardRows rows = RowsOf(args);
    const WizardResult result =
        ComposeStatement(rows, tables.GetTableList(), JoinsOf(args).GetJoinStatement(B(args, "is_oracle")));
    QJsonObject seen{{QStringLiteral("rows"), Shown(rows)}};
    if (result.Message)
        seen[u"message"] = QString::fromUtf16(result.Message);
    else
        seen[u"sql"] = result.SQLText;
    return seen;
}

QJsonValue RunPick(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    rows.PickField(I(args, "row"), T(args, "text"));
    return Shown(rows);
}

QJsonValue RunClear(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    rows.ClearField(I(args, "row"));
    return Shown(rows);
}

QJsonValue RunClicked(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    std::vector<MapItem> items;
    for (const QJsonValue &item : A(args, "items"))
        items.push_back({item[0].toString(), item[1].toBool()});
    rows.TableClicked(T(args, "alias"), items);
    return Shown(rows);
}

QJsonValue RunRemoved(const QJsonObject &args)
{
    WizardRows rows = RowsOf(args);
    rows.TableRemoved(T(args, "alias"));
    return Shown(rows);
}

QJsonValue RunFieldsQuery(const QJsonObject &args)
{
    const std::optional<QString> query = WizardFieldsQuery(T(args, "real"));
    return query ? QJsonValue(*query) : QJsonValue();
}

} // namespace

std::span<const CaseRunner> WizardRunners()
{
    static const CaseRunner rows[] = {
        {"unique_alias", [](const QJsonObject &args) -> QJsonValue { return RowsOf(args).GetUniqueAlias(); }},
        {"field_ref", [](const QJsonObject &args) -> QJsonValue { return RowsOf(args).GetFieldRef(I(args, "row")); }},
        {"row_is_free",
         [](const QJsonObject &args) -> QJsonValue {
             return RowsOf(args).RowIsFree(I(args, "row"), B(args, "check_shown"));
         }},
        {"free_row", RunFreeRow},
        {"field_list", RunFieldList},
        {"order_by", [](const QJsonObject &args) -> QJsonValue { return BuildOrderBy(RowsOf(args)); }},
        {"criteria", RunCriteria},
        {"apply", RunApply},
        {"criteria_cell", [](const QJsonObject &args) -> QJsonValue { return CriteriaCell(T(args, "text")); }},
        {"wizard_fields_query", RunFieldsQuery},
        {"wizard_pick_field", RunPick},
        {"wizard_clear_field", RunClear},
        {"wizard_table_clicked", RunClicked},
        {"wizard_table_removed", RunRemoved},
    };
    return rows;
}
