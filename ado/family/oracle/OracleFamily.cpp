// Oracle's family.
#include "ado/family/ColumnTraits.h"
#include "ado/family/Families.h"
#include "ado/family/oracle/OracleParts.h"

namespace ADODB {

namespace {

QString Equality(const ColumnInfo &column)
{
    if (column.Type == adLongVarWChar || (column.Type == adBinary && IsLongColumn(column)))
        return QStringLiteral("DBMS_LOB.COMPARE(%1, ?) = 0");
    return QStringLiteral("%1 = ?");
}

} // namespace

const Family &OracleFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::Oracle,
        .Products = {"Oracle"},
        .Names = {.Open = u'"',
                  .Close = u'"',
                  .Signs = u"$#",
                  .UnderscoreFirst = false,
                  .Bare = Folding::Upper,
                  .Reserved = WordsOf(kOracleWords),
                  .Where = "SELECT NULL, SYS_CONTEXT('USERENV', 'CURRENT_SCHEMA') FROM DUAL"},
        .Texts = {.InTexts = Backslash::Plain, .BracketTexts = true},
        .Rows = {.Equality = Equality},
        .Transactions = {.Keep = nullptr},
        .Catalogue = {.Queries = {OracleQueries()},
                      .Literals = OracleLiterals(),
                      .NotAtTheStart = "0123456789$_#",
                      .Types = OracleTypes(),
                      .TypeNames = OracleTypeNames()},
    };
    return family;
}

} // namespace ADODB
