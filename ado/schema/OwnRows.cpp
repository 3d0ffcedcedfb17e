#include "ado/schema/OwnRows.h"
#include "ado/schema/TypeNames.h"
#include <sqlite3.h>

namespace ADODB {

namespace {

constexpr DatabaseFamily kSQLite = DatabaseFamily::SQLite;
constexpr DatabaseFamily kPostgres = DatabaseFamily::PostgreSQL;
constexpr DatabaseFamily kMySQL = DatabaseFamily::MySQL;

// --- Literals: what a text of each kind is made of. A null value under a family: it has no such thing.

constexpr char kName[] = "";       // a name: any text that the quotes hold
constexpr char kQuote[] = "quote"; // the identifier quote of the connection

struct Literal
{
    int Number;
    const char *Name;
    const char *SQLite, *Postgres, *MySQL;
    int PostgresLength = 0, MySQLLength = 0; // characters of a name; 0 is no limit
};

constexpr Literal kLiterals[] = {
    {1, "DBLITERAL_BINARY_LITERAL", "X'", "'\\x", "X'"},
    {2, "DBLITERAL_CATALOG_NAME", nullptr, kName, kName, 63, 64},
    {3, "DBLITERAL_CATALOG_SEPARATOR", nullptr, ".", "."},
    {4, "DBLITERAL_CHAR_LITERAL", "'", "'", "'"},
    {5, "DBLITERAL_COLUMN_ALIAS", kName, kName, kName, 63, 256},
    {6, "DBLITERAL_COLUMN_NAME", kName, kName, kName, 63, 64},
    {7, "DBLITERAL_CORRELATION_NAME", kName, kName, kName, 63, 256},
    {8, "DBLITERAL_CURSOR_NAME", nullptr, kName, kName, 63, 64},
    {9, "DBLITERAL_ESCAPE_PERCENT_PREFIX", nullptr, "\\", "\\"},
    {10, "DBLITERAL_ESCAPE_UNDERSCORE_PREFIX", nullptr, "\\", "\\"},
    {11, "DBLITERAL_INDEX_NAME", kName, kName, kName, 63, 64},
    {12, "DBLITERAL_LIKE_PERCENT", "%", "%", "%"},
    {13, "DBLITERAL_LIKE_UNDERSCORE", "_", "_", "_"},
    {14, "DBLITERAL_PROCEDURE_NAME", nullptr, kName, kName, 63, 64},
    {15, "DBLITERAL_QUOTE_PREFIX", kQuote, kQuote, kQuote},
    {16, "DBLITERAL_SCHEMA_NAME", kName, kName, nullptr, 63, 0},
    {17, "DBLITERAL_TABLE_NAME", kName, kName, kName, 63, 64},
    {18, "DBLITERAL_TEXT_COMMAND", kName, kName, kName},
    {19, "DBLITERAL_USER_NAME", nullptr, kName, kName, 63, 80},
    {20, "DBLITERAL_VIEW_NAME", kName, kName, kName, 63, 64},
    {27, "DBLITERAL_SCHEMA_SEPARATOR", ".", ".", nullptr},
    {28, "DBLITERAL_QUOTE_SUFFIX", kQuote, kQuote, kQuote},
};

void WriteLiterals(Session &session, RowsetWriter &writer, const QStringList &restrictions)
{
    const DatabaseFamily family = session.Family();
    for (const Literal &literal : kLiterals) {
        const char *value = family == kSQLite ? literal.SQLite : family == kPostgres ? literal.Postgres : literal.MySQL;
        const int length = family == kPostgres ? literal.PostgresLength : family == kMySQL ? literal.MySQLLength : 0;
        writer.Put(u"LiteralName", Value(QString::fromLatin1(literal.Name)));
        writer.Put(u"Literal", Value(literal.Number));
        writer.Put(u"Supported", Value(value != nullptr));
        if (value == kQuote)
            writer.Put(u"LiteralValue", Value(session.IdentifierQuote()));
        else if (value && *value)
            writer.Put(u"LiteralValue", Value(QString::fromLatin1(value)));
        if (value && length > 0)
            writer.Put(u"Maxlen", Value(length));
        // What a name without quotes cannot hold or begin with.
        if (value == kName && literal.Number != 18) {
            writer.Put(u"InvalidChars", Value(QStringLiteral(" !\"#%&'()*+,-./:;<=>?@[\\]^`{|}~")));
            if (family != kMySQL)
                writer.Put(u"InvalidStartingChars", Value(QStringLiteral("0123456789$")));
        }
        writer.EndRow(restrictions);
    }
}

// --- Types, for families whose catalogue does not list them. What each is as a data type is told by its name.

enum Trait : unsigned
{
    Quoted = 1,    // literals stand in quotes
    Best = 2,      // the one to choose for its data type
    Long = 4,      // without a declared limit
    Number = 8,    // has a sign, or could have
    Unsigned = 16, // has none
    Counts = 32,   // can number the rows by itself
    Scaled = 64,   // precision and scale are declared
    Sized = 128,   // a length is declared
    Fixed = 256,   // every value takes the same room
    Caseless = 512 // compared without regard to case
};

struct TypeRow
{
    DatabaseFamily Family;
    const char *Name;
    qint64 Size; // digits, characters or bytes; 0 is not known
    unsigned Traits;
    int Scale = 0; // the greatest
};

constexpr TypeRow kTypes[] = {
    {kSQLite, "integer", 19, Best | Number | Counts},
    {kSQLite, "bigint", 19, Best | Number},
    {kSQLite, "smallint", 5, Best | Number},
    {kSQLite, "tinyint", 3, Best | Number},
    {kSQLite, "real", 15, Best | Number | Fixed},
    {kSQLite, "numeric", 15, Best | Number | Scaled, 15},
    {kSQLite, "boolean", 1, Best},
    {kSQLite, "char", 0, Best | Quoted | Sized},
    {kSQLite, "varchar", 0, Best | Quoted | Sized},
    {kSQLite, "text", 0, Best | Quoted | Long},
    {kSQLite, "blob", 0, Best | Quoted | Long},
    {kSQLite, "date", 10, Best | Quoted},
    {kSQLite, "time", 8, Best | Quoted},
    {kSQLite, "datetime", 19, Best | Quoted},
    {kMySQL, "bit", 1, Number | Unsigned | Sized | Fixed},
    {kMySQL, "boolean", 1, Best | Fixed},
    {kMySQL, "tinyint", 3, Best | Number | Counts | Fixed},
    {kMySQL, "tinyint unsigned", 3, Best | Number | Unsigned | Counts | Fixed},
    {kMySQL, "smallint", 5, Best | Number | Counts | Fixed},
    {kMySQL, "smallint unsigned", 5, Best | Number | Unsigned | Counts | Fixed},
    {kMySQL, "year", 4, Number | Unsigned | Fixed},
    {kMySQL, "mediumint", 7, Number | Counts | Fixed},
    {kMySQL, "mediumint unsigned", 8, Number | Unsigned | Counts | Fixed},
    {kMySQL, "int", 10, Best | Number | Counts | Fixed},
    {kMySQL, "int unsigned", 10, Best | Number | Unsigned | Counts | Fixed},
    {kMySQL, "bigint", 19, Best | Number | Counts | Fixed},
    {kMySQL, "bigint unsigned", 20, Best | Number | Unsigned | Counts | Fixed},
    {kMySQL, "float", 7, Best | Number | Counts | Fixed},
    {kMySQL, "double", 15, Best | Number | Counts | Fixed},
    {kMySQL, "decimal", 65, Best | Number | Scaled, 38},
    {kMySQL, "decimal unsigned", 65, Number | Unsigned | Scaled, 38},
    {kMySQL, "char", 255, Best | Quoted | Sized | Caseless | Fixed},
    {kMySQL, "varchar", 65535, Best | Quoted | Sized | Caseless},
    {kMySQL, "tinytext", 255, Quoted | Long | Caseless},
    {kMySQL, "text", 65535, Quoted | Long | Caseless},
    {kMySQL, "mediumtext", 16777215, Quoted | Long | Caseless},
    {kMySQL, "longtext", 4294967295, Best | Quoted | Long | Caseless},
    {kMySQL, "json", 4294967295, Quoted | Long},
    {kMySQL, "enum", 0, Quoted | Caseless},
    {kMySQL, "set", 0, Quoted | Caseless},
    {kMySQL, "binary", 255, Quoted | Sized | Fixed},
    {kMySQL, "varbinary", 65535, Best | Quoted | Sized},
    {kMySQL, "tinyblob", 255, Quoted | Long},
    {kMySQL, "blob", 65535, Quoted | Long},
    {kMySQL, "mediumblob", 16777215, Quoted | Long},
    {kMySQL, "longblob", 4294967295, Quoted | Long},
    {kMySQL, "date", 10, Best | Quoted | Fixed},
    {kMySQL, "time", 16, Best | Quoted | Fixed},
    {kMySQL, "datetime", 26, Best | Quoted | Fixed},
    {kMySQL, "timestamp", 26, Quoted | Fixed},
};

void WriteTypes(DatabaseFamily family, RowsetWriter &writer, const QStringList &restrictions)
{
    for (const TypeRow &row : kTypes) {
        if (row.Family != family)
            continue;
        const QString name = QString::fromLatin1(row.Name);
        const auto has = [&](unsigned trait) { return (row.Traits & trait) != 0; };
        writer.Put(u"TYPE_NAME", Value(name));
        writer.Put(u"LOCAL_TYPE_NAME", Value(name));
        writer.Put(u"DATA_TYPE", Value(int(ReadTypeName(family, name).Type)));
        if (row.Size > 0)
            writer.Put(u"COLUMN_SIZE", Value(row.Size));
        if (has(Quoted)) {
            writer.Put(u"LITERAL_PREFIX", Value(QStringLiteral("'")));
            writer.Put(u"LITERAL_SUFFIX", Value(QStringLiteral("'")));
        }
        if (has(Scaled)) {
            writer.Put(u"CREATE_PARAMS", Value(QStringLiteral("precision,scale")));
            writer.Put(u"MINIMUM_SCALE", Value(0));
            writer.Put(u"MAXIMUM_SCALE", Value(row.Scale));
        } else if (has(Sized)) {
            writer.Put(u"CREATE_PARAMS", Value(QStringLiteral("length")));
        }
        writer.Put(u"IS_NULLABLE", Value(true));
        writer.Put(u"CASE_SENSITIVE", Value(has(Quoted) && !has(Caseless)));
        writer.Put(u"SEARCHABLE", Value(has(Quoted) ? 4 : 3)); // 4: by LIKE too
        if (has(Number))
            writer.Put(u"UNSIGNED_ATTRIBUTE", Value(has(Unsigned)));
        writer.Put(u"FIXED_PREC_SCALE", Value(false));
        writer.Put(u"AUTO_UNIQUE_VALUE", Value(has(Counts)));
        writer.Put(u"IS_LONG", Value(has(Long)));
        writer.Put(u"BEST_MATCH", Value(has(Best)));
        writer.Put(u"IS_FIXEDLENGTH", Value(has(Fixed)));
        writer.EndRow(restrictions);
    }
}

void WriteSqliteKeywords(RowsetWriter &writer, const QStringList &restrictions)
{
    for (int number = 0; number < sqlite3_keyword_count(); ++number) {
        const char *text = nullptr;
        int length = 0;
        if (sqlite3_keyword_name(number, &text, &length) != SQLITE_OK)
            continue;
        writer.Put(u"Keyword", Value(QString::fromLatin1(text, length)));
        writer.EndRow(restrictions);
    }
}

} // namespace

bool HasOwnRows(DatabaseFamily family, SchemaEnum schema)
{
    switch (schema) {
    case adSchemaDBInfoLiterals:
        return family == kSQLite || family == kPostgres || family == kMySQL;
    case adSchemaProviderTypes:
        return family == kSQLite || family == kMySQL;
    case adSchemaDBInfoKeywords:
        return family == kSQLite;
    default:
        return false;
    }
}

void WriteOwnRows(Session &session, RowsetWriter &writer, const QStringList &restrictions)
{
    switch (writer.Shape().Schema) {
    case adSchemaDBInfoLiterals:
        return WriteLiterals(session, writer, restrictions);
    case adSchemaProviderTypes:
        return WriteTypes(session.Family(), writer, restrictions);
    case adSchemaDBInfoKeywords:
        return WriteSqliteKeywords(writer, restrictions);
    default:
        RaiseNotCapable();
    }
}

} // namespace ADODB
