#pragma once
// A source that is no statement but the bare name of a table or view.
//
// MayBeTableName is pure. TableNamed asks the connection's catalogue and takes a turn of it; a catalogue that cannot be
// asked knows no such table, so nothing is raised.

#include "ado/Connection.h"
#include <QString>

namespace ADODB {

// False for what cannot be a name, or is a SELECT in any case: such a text is never looked up.
bool MayBeTableName(const QString &source);
// The table or view of exactly this name, letter by letter, as a statement names it: in the server's quotes, with its
// schema or database where just one has it. "" where there is none.
QString TableNamed(Connection &connection, const QString &name);

} // namespace ADODB
