#pragma once
// The foreign keys around one table, from the rowset of all of them: what it refers to, and what refers to it.
//
// A key over several columns gives a link a column; a table that refers to itself stands on both sides. The rowset has
// the columns PK_TABLE_SCHEMA, PK_TABLE_NAME, PK_COLUMN_NAME and the same with FK_, in any case; a missing one raises
// ADODB::Error. Any thread that owns the rowset.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include "ado/family/Family.h"
#include <QStringList>
#include <vector>

struct LinkRow
{
    ADODB::ObjectName Other; // the table at the other end
    QString OtherColumn;
    QString OwnColumn; // of the table in the middle

    bool operator==(const LinkRow &) const = default;
};

struct LinkRows
{
    std::vector<LinkRow> Primary; // one for each foreign-key column of the table
    std::vector<LinkRow> Foreign; // one for each foreign-key column that points to it
};

// Which row of keys is the table's own? By a name that somebody wrote: without regard to case. By an object that was
// picked: as the family tells its names apart, and by its schema where both are known.
struct LinkTarget
{
    ADODB::ObjectName Table;
    bool IsPicked = false;
    const ADODB::Family *Family = &ADODB::NoFamily();
};

LinkRows ReadLinks(const ADODB::Recordset &keys, const LinkTarget &target);
