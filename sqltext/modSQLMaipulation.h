#pragma once
// Text operations on SQL that need neither window nor database: the table of data types, the breaking of a statement
// into clause lines, the composing of a CREATE TABLE statement, the quoting of names. Pure, any thread, nothing
// raises; an unknown type number gives an empty name and flags that are not set.

#include <QString>
#include <QStringList>

#include <span>
#include <vector>

struct clsDataType
{
    int Number;                // as a recordset's field reports it
    const char16_t *LongName;  // for people
    const char16_t *ShortName; // in SQL text
    bool HasSize;              // takes a size in brackets
    bool HasPrecision;         // the size is a precision and a scale
    char16_t Category;         // N number, D date and time, A text, B boolean and long or binary texts, U other
};

// All types, in their order. The table is built into the program, so there is nothing to load at the start.
extern const std::span<const clsDataType> gDataTypes;

bool IsSizedType(int number);
bool HasPrecisionType(int number);
QString GetTypeName(int number, bool longName);

// A name with a blank and without "[" goes into square brackets, or into round ones when it holds the word SELECT.
QString QuoteName(const QString &name);

// A line break in front of each `token`, found in any case and written as given. A token behind a quote, an opening
// bracket or the like stays on its line. A token at the very start of the text is lost: callers put a blank in front.
QString BreakToken(const QString &text, const QString &token);
// The same for a text without such a blank.
QString BreakOnToken(const QString &text, const QString &token);
// Each clause on a line of its own, clause words in upper case, statements parted by a blank line. Line ends of the
// source are taken out first, not replaced, so a comment swallows what followed it up to the next clause.
QString FormatStatement(const QString &sql);
// The same, but these pieces of it (names in quotes) come out as they went in, also with clause words in them.
QString FormatStatementKeeping(const QString &sql, QStringList pieces);

// What a CREATE TABLE statement has to know of a field.
struct FieldShape
{
    QString name;
    int type = 0;
    qint64 definedSize = 0; // -1 where nobody knows: left out
    int precision = 0;
    int numericScale = 0;
    QString written = {}; // how the name goes into the statement, where the rule below would not do
};
// "\tname type(size)" or "(precision,scale)", as it stands in the statement; a name with a blank gets square brackets.
QString FieldDefinition(const FieldShape &field);
QString CreateTableStatement(const QString &table, const std::vector<FieldShape> &fields);
