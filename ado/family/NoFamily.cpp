// A server that nobody knows: what stands here is what hardly any server does otherwise.
#include "ado/Driver.h"
#include "ado/family/Family.h"

namespace ADODB {

namespace {

constexpr char kWords[] =
    "ALL ALTER AND ANY AS ASC BETWEEN BY CASE CAST CHECK COLUMN CONSTRAINT CREATE CROSS CURRENT_DATE "
    "CURRENT_TIME CURRENT_TIMESTAMP CURRENT_USER DEFAULT DELETE DESC DISTINCT DROP ELSE END EXCEPT EXISTS "
    "FALSE FOR FOREIGN FROM FULL GRANT GROUP HAVING IN INNER INSERT INTERSECT INTO IS JOIN LEFT LIKE "
    "NATURAL NOT NULL ON OR ORDER OUTER PRIMARY REFERENCES REVOKE RIGHT SELECT SESSION_USER SET SOME "
    "TABLE THEN TO TRUE UNION UNIQUE UPDATE USER USING VALUES WHEN WHERE WITH";

QString Equality(const ColumnInfo &column)
{
    return column.Type == adLongVarWChar || column.Type == adBinary ? QString() : QStringLiteral("%1 = ?");
}

} // namespace

const Family &NoFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::Other,
        .Names = {.Reserved = WordsOf(kWords)},
        .Rows = {.Equality = Equality},
    };
    return family;
}

} // namespace ADODB
