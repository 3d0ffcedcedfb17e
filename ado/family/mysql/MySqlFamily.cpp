// MySQL's and MariaDB's family. A database is a catalogue there, and there are no schemas.
#include "ado/family/ColumnTraits.h"
#include "ado/family/Families.h"
#include "ado/family/mysql/MySqlParts.h"
#include <QStringList>

namespace ADODB {

namespace {

// Base tables alone: a view here may be listed and still fail.
constexpr char kStanding[] =
    "SELECT t.TABLE_SCHEMA, t.TABLE_NAME, 1, 1 FROM information_schema.TABLES t WHERE t.TABLE_SCHEMA = DATABASE() "
    "AND t.TABLE_TYPE = 'BASE TABLE' AND t.ENGINE IS NOT NULL "
    "AND (EXISTS (SELECT 1 FROM information_schema.USER_PRIVILEGES p WHERE p.PRIVILEGE_TYPE = 'SELECT' "
    "AND p.GRANTEE = CONCAT('''', REPLACE(CURRENT_USER(), '@', '''@'''), '''')) "
    "OR EXISTS (SELECT 1 FROM information_schema.SCHEMA_PRIVILEGES p WHERE p.PRIVILEGE_TYPE = 'SELECT' "
    "AND DATABASE() = p.TABLE_SCHEMA AND p.GRANTEE = CONCAT('''', REPLACE(CURRENT_USER(), '@', '''@'''), '''')))";

QString Equality(const ColumnInfo &column)
{
    // Its collations make 'x', 'X' and 'x ' equal. The plain comparison stays, for the sake of an index.
    if (IsTextColumn(column))
        return QStringLiteral("(%1 = ? AND CAST(CONVERT(%1 USING utf8mb4) AS BINARY) = "
                              "CAST(CONVERT(? USING utf8mb4) AS BINARY))");
    if (column.Type == adSingle)
        return QStringLiteral("(%1 = ? OR CAST(CAST(%1 AS CHAR) AS FLOAT) = CAST(? AS FLOAT))");
    if (column.Type == adBinary && column.TypeName == u"bit")
        return QStringLiteral("CAST(%1 AS BINARY) = ?");
    return QStringLiteral("%1 = ?");
}

QString TakesBack(const QString &database, const QString &table)
{
    // Where a setting makes a backslash plain, the doubled one finds no table: then nobody knows it, and that is safe.
    const auto literal = [](QString text) {
        return u'\'' + text.replace(u'\\', QLatin1String("\\\\")).replace(u'\'', QLatin1String("''")) + u'\'';
    };
    return QStringLiteral("SELECT e.TRANSACTIONS = 'YES' FROM information_schema.TABLES t "
                          "JOIN information_schema.ENGINES e ON e.ENGINE = t.ENGINE "
                          "WHERE t.TABLE_NAME = %1 AND t.TABLE_SCHEMA = %2")
        .arg(literal(table), database.isEmpty() ? QStringLiteral("DATABASE()") : literal(database));
}

bool CanReturn(const QString &product, const QString &version)
{
    const QStringList numbers = version.split(u'.');
    return product == u"MariaDB" &&
           numbers.value(0).toInt() * 100 + numbers.value(1).toInt() >= 1005; // 10.5 was the first
}

} // namespace

const Family &MySqlFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::MySQL,
        .Products = {"MariaDB", "MySQL"},
        .Names = {.Open = u'`',
                  .Close = u'`',
                  .Signs = u"$",
                  .FirstSigns = u"$",
                  .DigitFirst = true,
                  .Foreign = Letters::Basic,
                  .AfterCatalog = true,
                  .AfterSchema = false,
                  .DatabasesForSchemas = true,
                  .Reserved = WordsOf(kMySqlWords),
                  .Where = "SELECT COALESCE(DATABASE(), ''), NULL"},
        .Texts = {.InTexts = Backslash::Escapes,
                  .Backticks = true,
                  .HashComments = true,
                  .DashesWantBlank = true,
                  .CommentsRun = true},
        .Rows = {.EmptyRow = " () VALUES ()",
                 .MadeByKey = "SELECT %1 FROM %2 WHERE %3 = LAST_INSERT_ID()",
                 .ZeroCountsOn = true,
                 .Equality = Equality,
                 .CanReturn = CanReturn},
        // Its older kinds of tables ignore a rollback, and say so in a warning.
        .Transactions = {.Question = "SELECT @@in_transaction",
                         .DeadlockEndsAll = true,
                         .Warnings = "SHOW WARNINGS",
                         .IgnoredRollback = 1196,
                         .TakesBack = TakesBack,
                         .OneRow = " LIMIT 1"},
        .Answers = {.CancelLooksDone = true, .LostNumbers = {2006, 2013}},
        .Plans = {.Question = "EXPLAIN ", .Answer = PlanAnswer::Tables},
        .Catalogue = {.Queries = {MySqlObjects(), MySqlQueries()},
                      .Literals = MySqlLiterals(),
                      .Types = MySqlTypes(),
                      .TypeNames = MySqlTypeNames(),
                      .Standing = kStanding},
    };
    return family;
}

} // namespace ADODB
