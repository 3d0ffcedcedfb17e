#pragma once
// Finds the check constraints in the text of a CREATE TABLE statement, for a catalogue that knows them from there only.
//
// Quoted names, literals and comments are stepped over; what stands in brackets inside a check belongs to it. A check
// without a name is called CK_table_number, with the numbers of all checks of the table from 1. Any thread; raises
// nothing: a text that breaks off gives the checks that are whole.

#include <QString>
#include <vector>

namespace ADODB {

struct Check
{
    QString Name;
    QString Clause; // without the outer brackets
};

std::vector<Check> ReadChecks(const QString &table, const QString &createTable);

} // namespace ADODB
