// SQLite's family: its library, and its files over ODBC.
#include "ado/family/ColumnTraits.h"
#include "ado/family/Families.h"
#include "ado/family/sqlite/SqliteParts.h"

namespace ADODB {

namespace {

// Temporary tables first, then the main database, then those attached in their order.
constexpr char kWhere[] =
    "SELECT NULL, l.schema FROM pragma_table_list(%1) l ORDER BY CASE l.schema WHEN 'temp' THEN -1 ELSE (SELECT d.seq "
    "FROM pragma_database_list d WHERE d.name = l.schema) END LIMIT 1";

QString Literal(const QString &text)
{
    return SqliteFamily().LiteralOf(text);
}

// In the one database that is meant: the ODBC driver names no database in its catalogue.
QString KeyQuery(const QString &database, const QString &table)
{
    return QStringLiteral("SELECT name FROM pragma_table_info(") + Literal(table) +
           (database.isEmpty() ? QString() : QStringLiteral(", ") + Literal(database)) +
           QStringLiteral(") WHERE pk > 0 ORDER BY pk");
}

QString Equality(const ColumnInfo &column)
{
    const DataTypeEnum type = column.Type;
    // A real number may have been read with the 15 digits that its text has, and a moment in another spelling.
    if (type == adSingle || type == adDouble)
        return QStringLiteral("(%1 = ? OR CAST(CAST(%1 AS TEXT) AS REAL) = ?)");
    if (type == adDBTimeStamp || type == adDate || type == adDBTime)
        return QStringLiteral("(%1 = ? OR julianday(%1) = julianday(?))");
    if (IsTextColumn(column)) // by bytes, whatever the column's collation says
        return column.TypeName.isEmpty() ? QStringLiteral("%1 = ? COLLATE BINARY")
                                         : QStringLiteral("(%1 = ? COLLATE BINARY OR CAST(%1 AS TEXT) = ?)");
    return QStringLiteral("%1 = ?");
}

constexpr CatalogueQuery kKeyTexts = {
    adSchemaForeignKeys, "SELECT t.schema AS KEY_SCHEMA, t.name AS KEY_TABLE, t.sql AS KEYS_IN FROM " SQLITE_MASTERS
                         " t WHERE t.type = 'table' AND t.sql LIKE '%REFERENCES%'"};

} // namespace

const Family &SqliteFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::SQLite,
        .Products = {"SQLite"},
        .Files = "SQLite Database [*.db;*.sqlite;*.sqlite3]|*.db;*.sqlite;*.sqlite3|All Files [*]|*",
        .Names = {.Open = u'"',
                  .Close = u'"',
                  .Brackets = true,
                  .Signs = u"$",
                  .Foreign = Letters::All,
                  .DatabasesForSchemas = true,
                  .MainSchema = "main",
                  .Reserved = WordsOf(kSqliteWords),
                  .Where = kWhere},
        .Texts = {.InTexts = Backslash::Plain, .Backticks = true},
        .Rows = {.RowId = "rowid",
                 .NoRowIdWords = "no such column",
                 .MadeByRowId = "SELECT %1 FROM %2 WHERE rowid = last_insert_rowid()",
                 .TellBehindViews = true,
                 .DecimalDigits = 15,
                 .KeyQuery = KeyQuery,
                 .Equality = Equality},
        .Transactions = {.InsideWords = "within a transaction", .KeepsFailedCommit = true, .CommitsWriteAll = true},
        .Plans = {.Question = "EXPLAIN QUERY PLAN ", .Answer = PlanAnswer::Steps},
        .Catalogue = {.Queries = {SqliteObjects(), SqliteConstraints()},
                      .Complete = WithSqliteMasters,
                      .KeyTexts = &kKeyTexts,
                      .Literals = SqliteLiterals(),
                      .NotAtTheStart = "0123456789$",
                      .Types = SqliteTypes(),
                      .TypeNames = SqliteTypeNames(),
                      .ContainedTypeNames = SqliteContainedTypeNames()},
    };
    return family;
}

} // namespace ADODB
