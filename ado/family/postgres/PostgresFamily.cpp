// PostgreSQL's family.
#include "ado/family/ColumnTraits.h"
#include "ado/family/Families.h"
#include "ado/family/postgres/PostgresParts.h"

namespace ADODB {

namespace {

constexpr char kWhere[] = "SELECT NULL, COALESCE((SELECT n.nspname::text FROM pg_catalog.pg_class c JOIN "
                          "pg_catalog.pg_namespace n ON n.oid = c.relnamespace WHERE c.relname = %1 "
                          "AND pg_catalog.pg_table_is_visible(c.oid)), '')";

constexpr char kStanding[] =
    "SELECT n.nspname, c.relname, CASE WHEN pg_catalog.has_schema_privilege(n.oid, 'USAGE') "
    "AND pg_catalog.has_table_privilege(c.oid, 'SELECT') THEN 1 ELSE 0 END, "
    "CASE WHEN pg_catalog.pg_table_is_visible(c.oid) THEN 1 ELSE 0 END "
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND n.nspname NOT IN ('pg_catalog', 'information_schema')";

constexpr char kInside[] =
    "SELECT CASE WHEN pg_catalog.statement_timestamp() <> pg_catalog.transaction_timestamp() THEN 1 ELSE 0 END";

// The types whose values equal exactly when their texts do, as far as "=" goes. The others are compared as the texts
// that they were read as: some have no "=" (json, xml, point), with some it means something else (box).
bool HasPlainEquality(const QString &typeName)
{
    for (const char *name : {"varchar", "text", "char", "bpchar", "name", "uuid"})
        if (typeName == QLatin1String(name))
            return true;
    return false;
}

QString Equality(const ColumnInfo &column)
{
    if (column.Type == adSingle) // its text is 0.1, its value is not
        return QStringLiteral("%1 = CAST(? AS real)");
    if (IsTextColumn(column) && !HasPlainEquality(column.TypeName))
        return QStringLiteral("pg_catalog.format('%s', %1) = ?");
    return QStringLiteral("%1 = ?");
}

// Dates of any year in the server's own words: its driver knows those of the years 1 to 9999 alone. A moment with a
// zone is read in the session's own, and shows none.
QString Exact(const ColumnInfo &column, const QString &name)
{
    if (!column.HasInfinity)
        return name;
    return name + (column.TypeName == u"timestamptz" ? QLatin1String("::pg_catalog.timestamp::pg_catalog.text")
                                                     : QLatin1String("::pg_catalog.text"));
}

bool CanReturn(const QString &, const QString &)
{
    return true;
}

} // namespace

const Family &PostgresFamily()
{
    static const Family family = {
        .Id = DatabaseFamily::PostgreSQL,
        .Products = {"PostgreSQL"},
        // Capitals past ASCII are folded only in some encodings, so they count too.
        .Names = {.Open = u'"',
                  .Close = u'"',
                  .Signs = u"$",
                  .Foreign = Letters::All,
                  .Bare = Folding::Lower,
                  .NumberNotation = true,
                  .Reserved = WordsOf(kPostgresWords),
                  .Where = kWhere},
        // A literal is E'...', so that it is read alike whatever the server's setting of backslashes.
        .Texts = {.LiteralBegins = "E'",
                  .InTexts = Backslash::InEscapeTexts,
                  .DoublesBackslash = true,
                  .Subscripts = true,
                  .DollarTexts = true,
                  .NestedComments = true,
                  .ReturnEndsLine = true},
        .Rows = {.HaveHeirs = true,
                 .UnboundPrecision = 28,
                 .UnboundScale = 6,
                 .Equality = Equality,
                 .CanReturn = CanReturn,
                 .Exact = Exact},
        .Transactions = {.Question = kInside, .FailureEndsAll = true},
        .Plans = {.Question = "EXPLAIN (FORMAT JSON) ", .Answer = PlanAnswer::Json},
        .Catalogue = {.Queries = {PostgresObjects(), PostgresQueries(), PostgresGrants()},
                      .Literals = PostgresLiterals(),
                      .NotAtTheStart = "0123456789$",
                      .TypeNames = PostgresTypeNames(),
                      .Standing = kStanding},
    };
    return family;
}

} // namespace ADODB
