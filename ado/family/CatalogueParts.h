#pragma once
// The rows of which a family's catalogue is made (Family::Catalogue). Plain constants; any thread.

#include "ado/Types.h"
#include <QtGlobal>

namespace ADODB {

// One query a rowset. Its columns bear the rowset's names (in any case and order); what a family does not know is left
// out and becomes null. Some names are not the rowset's own and are worked out by the reader: TYPE_NAME becomes
// DATA_TYPE with lengths (BASE_TYPE_NAME wins where it is not null), any column's default tells COLUMN_HASDEFAULT, a
// row with CHECKED_TABLE becomes a row for each check in the table's text CHECKS_IN, a row with USES_IN, the text of a
// view, a row for each table or column that the view uses, and KEY_SCHEMA, KEY_TABLE and KEY_ID say which foreign key
// a row is of.
//
// Where a family has two queries of a rowset, the second stands in when the server refuses the first.
struct CatalogueQuery
{
    SchemaEnum Schema;
    const char *Select;
    // Joined to Select unless a schema or a table is asked for by name; "" where nothing is hidden.
    const char *UserOnly = "";
};

// What a text of one kind is made of, by the number of the kind; a kind without a row does not exist.
struct Literal
{
    int Number;
    const char *Value; // or one of the two below
    int Length = 0;    // characters of a name; 0 is no limit
};
inline constexpr char kLiteralName[] = "";       // a name: any text that the quotes hold
inline constexpr char kLiteralQuote[] = "quote"; // the identifier quote of the connection

struct TypeName
{
    const char *Name; // in small letters, without what stands in brackets
    DataTypeEnum Type;
    int Precision = -1;
};

struct TypeRow
{
    enum Trait : unsigned
    {
        Quoted = 1,     // literals stand in quotes
        Best = 2,       // the one to choose for its data type
        Long = 4,       // without a declared limit
        Number = 8,     // has a sign, or could have
        Unsigned = 16,  // has none
        Counts = 32,    // can number the rows by itself
        Scaled = 64,    // precision and scale are declared
        Sized = 128,    // a length is declared
        Fixed = 256,    // every value takes the same room
        Caseless = 512, // compared without regard to case
        Money = 1024    // with a scale that nobody declares
    };
    const char *Name;
    qint64 Size; // digits, characters or bytes; 0 is not known
    unsigned Traits;
    int Scale = 0; // the greatest
};

} // namespace ADODB
