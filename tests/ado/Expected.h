#pragma once
// What the conformance suite expects of each way to a database: one row a way, in Expected.cpp. A new driver or family
// is a row more; where a test asks which way it goes, that is about a fault of one driver, and the test says which.

#include "ado/family/Family.h"

namespace conformance {

enum class Server
{
    BuiltIn,
    SqliteOdbc,
    Postgres,
    MariaDb
};

// What a place of a test's own is there.
enum class Place
{
    File,
    Schema,
    Catalogue
};

struct Expected
{
    Server Way;
    const char *Name;        // in the names of the tests
    const char *Environment; // where the connection string stands; null: String
    const char *String;
    ADODB::DatabaseFamily Family;
    const char *Product, *Quote;
    Place Own;
    const char *MakePlace, *DropPlace;    // %1 is the place; null where it is a file
    const char *Enter;                    // said on each new connection
    const char *Catalogue;                // TABLE_CATALOG of what a test has made; "" is the place, "~" is none
    const char *Bytes;                    // a literal of these hex digits
    const char *Blob, *LongText;          // types
    const char *MakeUser;                 // %1 with the password %2; null where nobody is asked who he is
    const char *LetIn;                    // what he still needs, or null
    bool TellsCase;                       // names that differ by case alone are two
    const char *NoTable, *Syntax, *Twice; // SQLSTATE of an unknown table, of a typing error, of a second equal key; ""
                                          // for what is not told
};

const Expected &ExpectedOf(Server way);

} // namespace conformance
