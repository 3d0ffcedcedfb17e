#pragma once
// Foreign keys brought onto a map: the whole web of a schema, or the neighbours of one table. A key over two columns is
// two rows and makes two joins. The caller reads the keys and makes the tables; nothing is raised here but by them.

#include "visual/logic/MapJoins.h"
#include "visual/logic/MapTables.h"

#include <functional>
#include <span>

struct ForeignKeyRow
{
    QString PK_Table_Name, PK_Column_Name, FK_Table_Name, FK_Column_Name;
};

struct MapLinker
{
    MapTables &Tables;
    MapJoins &Joins;
    std::function<MapTable *(const QString &TableName)> AddTable; // a new table, or null when it cannot be read
    std::function<void(const MapJoin &)> CreateJoin;              // told of each new row; may be empty
    std::function<bool()> Stopped;                                // asked before each key; may be empty

    // Tables are found by name or added; a join that is there already is not made again. A table without a key in
    // either role does not come, and a key onto a table that cannot be read is passed over.
    void AddAll(std::span<const ForeignKeyRow> keys) const;
    // A new table for each key of the current one, a copy when it is there already.
    void AddLinked(std::span<const ForeignKeyRow> keys) const;
};
