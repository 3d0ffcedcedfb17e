#pragma once
// The built-in driver: SQLite's own library, spoken to directly. "Driver=SQLite;Database=FILE", nothing to set up.
//
// Further attributes: "Mode=ReadOnly" opens for reading alone; "Create=Yes" makes a file that does not exist. Without
// it such a file raises adErrFileNotFound and nothing is made: a name that is mistyped shall not become an empty
// database. Databases in memory (":memory:", "file:...?mode=memory") and an URI that says "mode=rwc" need no such word.
// A file that is no database fails at Connect in SQLite's own words. Foreign keys are enforced. User and password have
// no meaning here.

#include "ado/Driver.h"

namespace ADODB {

Driver &SqliteDriver();  // lives as long as the program; any thread
QString SqliteVersion(); // of the library: "3.40.1"

} // namespace ADODB
