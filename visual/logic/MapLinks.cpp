#include "visual/logic/MapLinks.h"

namespace {

struct End
{
    QString table, field;
    int index;
};

void Link(const MapLinker &linker, const End &left, const End &right)
{
    const MapJoin row{left.table,  left.index,  left.field,  QStringLiteral("Inner Join"),
                      right.table, right.index, right.field, 0};
    const int layer = linker.Joins.Add(row);
    if (linker.CreateJoin)
        linker.CreateJoin(*linker.Joins.OfLayer(layer));
}

// The number of the table of that name, added when it is missing; 0 when it cannot be read.
int Bring(const MapLinker &linker, const QString &name)
{
    const MapTable *table = linker.Tables.Find(name);
    if (!table)
        table = linker.AddTable(name);
    return table ? table->Index : 0;
}

bool Stops(const MapLinker &linker)
{
    return linker.Stopped && linker.Stopped();
}

} // namespace

void MapLinker::AddAll(std::span<const ForeignKeyRow> keys) const
{
    for (const ForeignKeyRow &key : keys) {
        if (Stops(*this))
            return;
        const int primary = Bring(*this, key.PK_Table_Name);
        const int foreign = Bring(*this, key.FK_Table_Name);
        if (!primary || !foreign)
            continue;
        if (!Joins.JoinExists(key.PK_Table_Name, key.PK_Column_Name, key.FK_Table_Name, key.FK_Column_Name))
            Link(*this, {key.PK_Table_Name, key.PK_Column_Name, primary},
                 {key.FK_Table_Name, key.FK_Column_Name, foreign});
    }
}

void MapLinker::AddLinked(std::span<const ForeignKeyRow> keys) const
{
    const MapTable *current = Tables.At(Tables.CurrentTable);
    if (!current)
        return;
    // Read once: each added table becomes the current one.
    const QString name = Tables.GetRealName(current->Alias);
    const int own = current->Index;
    for (const ForeignKeyRow &key : keys) {
        if (Stops(*this))
            return;
        const bool primary = key.PK_Table_Name == name;
        if (!primary && key.FK_Table_Name != name)
            continue;
        const MapTable *added = AddTable(primary ? key.FK_Table_Name : key.PK_Table_Name);
        if (!added)
            continue;
        // The primary side is the first one where the table itself has it, and else the second one. The table's own
        // number stays with the primary side in both: where the table is the foreign one, names and numbers cross.
        const End pk{key.PK_Table_Name, key.PK_Column_Name, own};
        const End fk{key.FK_Table_Name, key.FK_Column_Name, added->Index};
        Link(*this, primary ? pk : fk, primary ? fk : pk);
    }
}
