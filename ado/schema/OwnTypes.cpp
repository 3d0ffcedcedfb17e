// The types of families whose catalogue does not list them. What each is as a data type is told by its name.
#include "ado/schema/OwnRows.h"
#include "ado/schema/TypeNames.h"

namespace ADODB {

namespace {

constexpr DatabaseFamily kSQLite = DatabaseFamily::SQLite;
constexpr DatabaseFamily kMySQL = DatabaseFamily::MySQL;
constexpr DatabaseFamily kSQLServer = DatabaseFamily::SQLServer;
constexpr DatabaseFamily kOracle = DatabaseFamily::Oracle;

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
    {kSQLServer, "bit", 1, Best | Fixed},
    {kSQLServer, "tinyint", 3, Best | Number | Unsigned | Counts | Fixed},
    {kSQLServer, "smallint", 5, Best | Number | Counts | Fixed},
    {kSQLServer, "int", 10, Best | Number | Counts | Fixed},
    {kSQLServer, "bigint", 19, Best | Number | Counts | Fixed},
    {kSQLServer, "real", 7, Best | Number | Fixed},
    {kSQLServer, "float", 15, Best | Number | Fixed},
    {kSQLServer, "smallmoney", 10, Number | Money | Fixed},
    {kSQLServer, "money", 19, Best | Number | Money | Fixed},
    {kSQLServer, "numeric", 38, Number | Scaled | Counts, 38},
    {kSQLServer, "decimal", 38, Best | Number | Scaled | Counts, 38},
    {kSQLServer, "char", 8000, Best | Quoted | Sized | Caseless | Fixed},
    {kSQLServer, "varchar", 8000, Best | Quoted | Sized | Caseless},
    {kSQLServer, "text", 2147483647, Quoted | Long | Caseless},
    {kSQLServer, "nchar", 4000, Best | Quoted | Sized | Caseless | Fixed},
    {kSQLServer, "nvarchar", 4000, Best | Quoted | Sized | Caseless},
    {kSQLServer, "ntext", 1073741823, Best | Quoted | Long | Caseless},
    {kSQLServer, "xml", 0, Quoted | Long},
    {kSQLServer, "binary", 8000, Sized | Fixed},
    {kSQLServer, "varbinary", 8000, Best | Sized},
    {kSQLServer, "image", 2147483647, Long},
    {kSQLServer, "timestamp", 8, Fixed},
    {kSQLServer, "uniqueidentifier", 36, Best | Quoted | Fixed},
    {kSQLServer, "date", 10, Best | Quoted | Fixed},
    {kSQLServer, "time", 16, Best | Quoted | Fixed},
    {kSQLServer, "smalldatetime", 16, Quoted | Fixed},
    {kSQLServer, "datetime", 23, Quoted | Fixed},
    {kSQLServer, "datetime2", 27, Best | Quoted | Fixed},
    {kSQLServer, "datetimeoffset", 34, Quoted | Fixed},
    {kSQLServer, "sql_variant", 8000, Best | Quoted},
    {kOracle, "number", 38, Best | Number | Scaled, 127},
    {kOracle, "float", 15, Number},
    {kOracle, "binary_float", 7, Best | Number | Fixed},
    {kOracle, "binary_double", 15, Best | Number | Fixed},
    {kOracle, "char", 2000, Best | Quoted | Sized | Fixed},
    {kOracle, "varchar2", 4000, Best | Quoted | Sized},
    {kOracle, "nchar", 2000, Best | Quoted | Sized | Fixed},
    {kOracle, "nvarchar2", 4000, Best | Quoted | Sized},
    {kOracle, "clob", 4294967295, Quoted | Long},
    {kOracle, "nclob", 4294967295, Best | Quoted | Long},
    {kOracle, "long", 2147483647, Quoted | Long},
    {kOracle, "raw", 2000, Best | Quoted | Sized},
    {kOracle, "blob", 4294967295, Long},
    {kOracle, "long raw", 2147483647, Long},
    {kOracle, "date", 19, Quoted | Fixed},
    {kOracle, "timestamp", 29, Best | Quoted | Fixed},
    {kOracle, "rowid", 18, Quoted | Fixed},
};

} // namespace

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
        writer.Put(u"FIXED_PREC_SCALE", Value(has(Money)));
        writer.Put(u"AUTO_UNIQUE_VALUE", Value(has(Counts)));
        writer.Put(u"IS_LONG", Value(has(Long)));
        writer.Put(u"BEST_MATCH", Value(has(Best)));
        writer.Put(u"IS_FIXEDLENGTH", Value(has(Fixed)));
        writer.EndRow(restrictions);
    }
}

} // namespace ADODB
