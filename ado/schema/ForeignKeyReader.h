#pragma once
// Finds the foreign keys in the text of a CREATE TABLE statement, for a catalogue that tells their columns but neither
// their names nor whether they are deferred.
//
// Quoted names, literals and comments are stepped over. Keys come in the order of the text. Any thread; raises nothing:
// of a text that breaks off come the keys that have begun.

#include <QString>
#include <vector>

namespace ADODB {

// As the rowset of foreign keys counts them.
enum class Deferral
{
    InitiallyDeferred = 1,
    InitiallyImmediate = 2,
    NotDeferrable = 3
};

struct ForeignKey
{
    QString Name; // "" where it has none
    Deferral When = Deferral::NotDeferrable;
};

std::vector<ForeignKey> ReadForeignKeys(const QString &createTable);

} // namespace ADODB
