// SQL Server's family.
#include "ado/family/ColumnTraits.h"
#include "ado/family/Families.h"
#include "ado/family/sqlserver/SqlServerParts.h"

namespace ADODB {

namespace {

QString Equality(const ColumnInfo &column)
{
    if (column.Type == adLongVarWChar)
        return QStringLiteral("CAST(%1 AS nvarchar(max)) = ?");
    if (column.Type == adBinary && IsLongColumn(column))
        return QStringLiteral("CAST(%1 AS varbinary(max)) = ?");
    return QStringLiteral("%1 = ?");
}

} // namespace

const Family &SqlServerFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::SQLServer,
        .Products = {"SQL Server"},
        .Names = {.Open = u'[',
                  .Close = u']',
                  .Brackets = true,
                  .DoublesBracket = true,
                  .Signs = u"@$#",
                  .AfterCatalog = true,
                  .Reserved = WordsOf(kSqlServerWords),
                  .Where = "SELECT DB_NAME(), COALESCE(OBJECT_SCHEMA_NAME(OBJECT_ID(%1)), '')",
                  .WhereWantsQuotes = true},
        .Texts = {.LiteralBegins = "N'",
                  .InTexts = Backslash::Plain,
                  .NestedComments = true,
                  .Top = true,
                  .NeedsSemicolons = false},
        .Rows = {.Equality = Equality},
        .Transactions = {.Open = "SAVE TRANSACTION brindlewick",
                         .Keep = nullptr,
                         .TakeBack = "ROLLBACK TRANSACTION brindlewick"},
        .Catalogue = {.Queries = {SqlServerQueries()},
                      .Literals = SqlServerLiterals(),
                      .NotAtTheStart = "0123456789$",
                      .Types = SqlServerTypes(),
                      .TypeNames = SqlServerTypeNames()},
    };
    return family;
}

} // namespace ADODB
