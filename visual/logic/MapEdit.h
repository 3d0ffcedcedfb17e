#pragma once
// What a user does to the joins of a map: drops a field on a table, edits a join, removes a table with its joins; and
// which joins can be drawn. The dialog is asked through a function, so that nothing here shows a window. Nothing is
// raised but by the functions that the owner gives. Interface thread.

#include "visual/logic/JoinEnds.h"
#include "visual/logic/MapJoins.h"
#include "visual/logic/MapTables.h"

#include <functional>
#include <optional>

// What the join dialog shows at first. Table is what its fields are read from, Name what it shows.
struct JoinQuestion
{
    QString Table1, Name1, Table2, Name2;
    bool FindMatch = false;           // choose the first pair of equal names
    QString Field1, Field2, Operator; // chosen already, when not FindMatch
};

// The dialog's fields when it has closed: empty texts unless OK was pressed with both fields chosen.
struct JoinAnswer
{
    bool Cancelled = true;
    QString Table1, Field1, Table2, Field2, JoinType;
};

struct MapEdit
{
    MapTables &Tables;
    MapJoins &Joins;
    std::function<JoinAnswer(const JoinQuestion &)> Ask;
    std::function<void(const JoinAnswer &)> CreateJoin; // may be empty

    // The source's selected item was dropped: on an item of the target (from 1), or on no item (0). Onto itself nothing
    // happens. The event goes out at the end of each other drop; its texts are empty unless the dialog made the join.
    // Equal joins are not looked for. False: nothing happened.
    bool Drop(int source, int target, int item) const;
    // The dialog over a join; its answer is written back, where the tables' names become what the dialog showed.
    bool ShowJoinProperties(int index) const;
    // The number as text, as the menu keeps it; one that is no table's does nothing. The joins of all tables of the
    // same name go too; gives the layers' numbers in the order in which they went.
    std::vector<int> RemoveCurrentTable(const QString &menuTag) const;
};

// Where an item stands in its table, which may be scrolled; from 1.
using ItemFrameOf = std::function<ItemFrame(const MapTable &table, int item)>;
// Nothing for a join whose table or field is gone: it stays in the list and is not drawn. Where the two tables bear
// each other's names of the row, the names decide.
std::optional<JoinEnds> EndsOfRow(const MapJoin &row, const MapTables &tables, const ItemFrameOf &itemFrame,
                                  double outerWidth, double outerHeight);
// Does a drawing of this table's joins touch the row? -1 stands for every table.
bool Touches(const MapJoin &row, int table);
