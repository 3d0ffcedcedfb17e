#pragma once
// Finds what a view uses in its text as MySQL and MariaDB keep it: every name in full, `database`.`table`.`column`, or
// `alias`.`column` where the FROM gives an alias, stars replaced by what they stood for. Nothing else is read well.
//
// Tables and views are told from functions, aliases, and the names of WITH; sub-selects see the aliases around them.
// Any thread; raises nothing. A text that breaks off gives what stands before.

#include <QString>
#include <tuple>
#include <vector>

namespace ADODB {

struct UsedName
{
    QString Database, Table, Column; // Column "" for the table itself
    bool operator==(const UsedName &other) const = default;
    bool operator<(const UsedName &other) const
    {
        return std::tie(Database, Table, Column) < std::tie(other.Database, other.Table, other.Column);
    }
};

// Sorted, each once. `database` is the view's own, for names that stand without one.
std::vector<UsedName> ReadUsage(const QString &database, const QString &viewText);

} // namespace ADODB
