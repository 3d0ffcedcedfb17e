#include "visual/logic/MapEdit.h"

#include <utility>

bool MapEdit::Drop(int source, int target, int item) const
{
    const MapTable *from = Tables.At(source), *to = Tables.At(target);
    if (source == target || !from || !to)
        return false;
    MapJoin row;
    row.Table1Index = source;
    row.Table2Index = target;
    JoinAnswer answer;
    const auto textOf = [](const MapTable &table, int number) {
        return number >= 1 && size_t(number) <= table.Items.size() ? table.Items[size_t(number - 1)].Text : QString();
    };
    if (item > 0) {
        row.Table1 = from->Tag;
        row.Table2 = to->Tag;
        row.Field1 = textOf(*from, from->Selected);
        row.Field2 = textOf(*to, item);
        row.Operator = QStringLiteral("Inner Join");
        Joins.Add(row);
    } else {
        answer = Ask({from->Tag, from->Alias, to->Tag, to->Alias, true, {}, {}, {}});
        if (answer.Cancelled) {
            answer = {};
        } else {
            row.Table1 = answer.Table1;
            row.Table2 = answer.Table2;
            row.Field1 = answer.Field1;
            row.Field2 = answer.Field2;
            row.Operator = answer.JoinType;
            Joins.Add(row);
        }
    }
    if (CreateJoin)
        CreateJoin(answer);
    return true;
}

bool MapEdit::ShowJoinProperties(int index) const
{
    const MapJoin *row = Joins.OfLayer(index);
    if (!row)
        return false;
    // A row that was edited before bears the alias, which no server knows: its fields are read from the table behind
    // it.
    const auto nameOf = [&](int table, const QString &otherwise) {
        const MapTable *found = Tables.At(table);
        return found ? found->Alias : otherwise;
    };
    const JoinAnswer answer =
        Ask({Tables.GetRealName(row->Table1), nameOf(row->Table1Index, row->Table1), Tables.GetRealName(row->Table2),
             nameOf(row->Table2Index, row->Table2), false, row->Field1, row->Field2, row->Operator});
    MapJoin *edited = Joins.OfLayer(index); // it may have gone while the dialog was open
    if (answer.Cancelled || !edited)
        return false;
    edited->Table1 = answer.Table1;
    edited->Table2 = answer.Table2;
    edited->Field1 = answer.Field1;
    edited->Field2 = answer.Field2;
    edited->Operator = answer.JoinType;
    return true;
}

std::vector<int> MapEdit::RemoveCurrentTable(const QString &menuTag) const
{
    bool number = false;
    const int index = menuTag.toInt(&number);
    const MapTable *table = number ? Tables.At(index) : nullptr;
    if (!table)
        return {};
    std::vector<int> removed = Joins.RemoveOfTable(table->Tag);
    Tables.RemoveTable(index);
    return removed;
}

std::optional<JoinEnds> EndsOfRow(const MapJoin &row, const MapTables &tables, const ItemFrameOf &itemFrame,
                                  double outerWidth, double outerHeight)
{
    const MapTable *first = tables.At(row.Table1Index), *second = tables.At(row.Table2Index);
    if (!first || !second)
        return std::nullopt;
    // The neighbour on the primary side of a key has names and numbers crossed; the line goes by the names.
    const auto bears = [](const MapTable &table, const QString &name) {
        return table.Tag == name || table.Alias == name;
    };
    if (!bears(*first, row.Table1) && bears(*first, row.Table2) && bears(*second, row.Table1))
        std::swap(first, second);
    const int firstItem = tables.GetFieldIndex(first->Index, row.Field1);
    const int secondItem = tables.GetFieldIndex(second->Index, row.Field2);
    if (!firstItem || !secondItem)
        return std::nullopt;
    const auto frame = [](const MapTable &table) {
        return TableFrame{table.Left, table.Top, table.Width, table.Height};
    };
    return EndsOfJoin(frame(*first), itemFrame(*first, firstItem), frame(*second), itemFrame(*second, secondItem),
                      row.Operator, outerWidth, outerHeight);
}

bool Touches(const MapJoin &row, int table)
{
    return table < 0 || row.Table1Index == table || row.Table2Index == table;
}
