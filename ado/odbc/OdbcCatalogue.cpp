// The driver's catalogue functions as schema rowsets. Their columns are read by number: their names differ from driver
// to driver in case and spelling.
#include "ado/odbc/HeldRows.h"
#include "ado/odbc/OdbcRows.h"
#include "ado/odbc/OdbcSession.h"
#include "ado/rowset/Rowsets.h"

namespace ADODB::Odbc {

namespace {

enum class Reading
{
    Plain,
    TableType,
    ProcedureType,
    Rule,
    NotFlag,
    Flag,
    SqlType,
    Direction,
    Default,
    Deferral,
};

struct Taken
{
    int From; // the catalogue function's column, from 1
    const char *Into;
    Reading How = Reading::Plain;
};

constexpr Taken kTables[] = {{1, "TABLE_CATALOG"},
                             {2, "TABLE_SCHEMA"},
                             {3, "TABLE_NAME"},
                             {4, "TABLE_TYPE", Reading::TableType},
                             {5, "DESCRIPTION"}};
constexpr Taken kViews[] = {{1, "TABLE_CATALOG"}, {2, "TABLE_SCHEMA"}, {3, "TABLE_NAME"}, {5, "DESCRIPTION"}};
constexpr Taken kColumns[] = {{1, "TABLE_CATALOG"},
                              {2, "TABLE_SCHEMA"},
                              {3, "TABLE_NAME"},
                              {4, "COLUMN_NAME"},
                              {17, "ORDINAL_POSITION"},
                              {13, "COLUMN_DEFAULT", Reading::Default},
                              {11, "IS_NULLABLE", Reading::Flag},
                              {5, "DATA_TYPE", Reading::SqlType},
                              {7, "NUMERIC_PRECISION"},
                              {9, "NUMERIC_SCALE"},
                              {16, "CHARACTER_OCTET_LENGTH"},
                              {12, "DESCRIPTION"}};
constexpr Taken kIndexes[] = {{1, "TABLE_CATALOG"},
                              {2, "TABLE_SCHEMA"},
                              {3, "TABLE_NAME"},
                              {1, "INDEX_CATALOG"},
                              {2, "INDEX_SCHEMA"},
                              {6, "INDEX_NAME"},
                              {4, "UNIQUE", Reading::NotFlag},
                              {8, "ORDINAL_POSITION"},
                              {9, "COLUMN_NAME"},
                              {10, "COLLATION", Reading::Direction},
                              {11, "CARDINALITY"},
                              {12, "PAGES"},
                              {13, "FILTER_CONDITION"}};
constexpr Taken kProcedures[] = {{1, "PROCEDURE_CATALOG"},
                                 {2, "PROCEDURE_SCHEMA"},
                                 {3, "PROCEDURE_NAME"},
                                 {7, "DESCRIPTION"},
                                 {8, "PROCEDURE_TYPE", Reading::ProcedureType}};
constexpr Taken kForeignKeys[] = {{1, "PK_TABLE_CATALOG"},
                                  {2, "PK_TABLE_SCHEMA"},
                                  {3, "PK_TABLE_NAME"},
                                  {4, "PK_COLUMN_NAME"},
                                  {5, "FK_TABLE_CATALOG"},
                                  {6, "FK_TABLE_SCHEMA"},
                                  {7, "FK_TABLE_NAME"},
                                  {8, "FK_COLUMN_NAME"},
                                  {9, "ORDINAL"},
                                  {10, "UPDATE_RULE", Reading::Rule},
                                  {11, "DELETE_RULE", Reading::Rule},
                                  {12, "FK_NAME"},
                                  {13, "PK_NAME"},
                                  {14, "DEFERRABILITY", Reading::Deferral}};
constexpr Taken kPrimaryKeys[] = {{1, "TABLE_CATALOG"}, {2, "TABLE_SCHEMA"}, {3, "TABLE_NAME"},
                                  {4, "COLUMN_NAME"},   {5, "ORDINAL"},      {6, "PK_NAME"}};

int AdoType(int sql)
{
    switch (sql) {
    case SQL_BIT:
        return adBoolean;
    case SQL_TINYINT:
        return adTinyInt;
    case SQL_SMALLINT:
        return adSmallInt;
    case SQL_INTEGER:
        return adInteger;
    case SQL_BIGINT:
        return adBigInt;
    case SQL_REAL:
        return adSingle;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return adDouble;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        return adNumeric;
    case SQL_CHAR:
        return adChar;
    case SQL_VARCHAR:
        return adVarChar;
    case SQL_WCHAR:
        return adWChar;
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
        return adLongVarWChar;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
        return adBinary;
    case SQL_TYPE_DATE:
        return adDBDate;
    case SQL_TYPE_TIME:
        return adDBTime;
    case SQL_TYPE_TIMESTAMP:
        return adDBTimeStamp;
    case SQL_GUID:
        return adGUID;
    default:
        return adVarWChar;
    }
}

Value Read(const Value &value, Reading how)
{
    static constexpr const char16_t *kRules[] = {u"CASCADE", u"RESTRICT", u"SET NULL", u"NO ACTION", u"SET DEFAULT"};
    if (value.IsNull())
        return value;
    const qint64 number = value.ToInt64();
    switch (how) {
    case Reading::Plain:
        return value;
    case Reading::TableType: {
        const QString type = value.ToText();
        if (type == u"BASE TABLE" || type == u"LOCAL TEMPORARY" || type == u"GLOBAL TEMPORARY")
            return Value(QStringLiteral("TABLE"));
        return type == u"MATVIEW" || type == u"MATERIALIZED VIEW" ? Value(QStringLiteral("VIEW")) : value;
    }
    case Reading::ProcedureType: // the rowset's callers know 3 as a procedure and 1 as a function
        return Value(number == SQL_PT_PROCEDURE ? 3 : number == SQL_PT_FUNCTION ? 1 : 2);
    case Reading::Rule:
        return number >= 0 && number <= 4 ? Value(kRules[number]) : Value();
    case Reading::NotFlag:
        return Value(number == 0);
    case Reading::Flag:
        return Value(number != 0);
    case Reading::SqlType:
        return Value(AdoType(int(number)));
    case Reading::Direction:
        return Value(value.ToText() == u"D" ? 2 : 1);
    case Reading::Deferral: // initially deferred 1, initially immediate 2, not deferrable 3
        return number >= SQL_INITIALLY_DEFERRED && number <= SQL_NOT_DEFERRABLE ? Value(number - 4) : Value();
    case Reading::Default: // "NULL" stands for no default
        return value.ToText() == u"NULL" ? Value() : value;
    }
    return value;
}

// A catalogue argument: null where there is no restriction.
struct Argument
{
    explicit Argument(const QString &text) : Bytes(text.toUtf8()), IsNull(text.isNull()) {}
    SQLCHAR *Text() { return IsNull ? nullptr : reinterpret_cast<SQLCHAR *>(Bytes.data()); }
    SQLSMALLINT Length() const { return IsNull ? SQLSMALLINT(0) : SQLSMALLINT(Bytes.size()); }
    QByteArray Bytes;
    bool IsNull;
};
#define ADO_NO_ARGUMENT nullptr, SQLSMALLINT(0)
#define ADO_ARGUMENT(argument) (argument).Text(), (argument).Length()

// The restrictions of a rowset by the names of its columns.
struct Restrictions
{
    const Rowset &Shape;
    const QStringList &Texts;
    bool ArePatterns;

    // Names may hold "%" and "_", which a pattern takes for others too: whoever reads the rows looks again. A "\" would
    // hide a name from the pattern, so such a one is not asked for at all.
    Argument Of(const char *column) const
    {
        for (size_t number = 0; number < Shape.Restrictions.size() && qsizetype(number) < Texts.size(); ++number)
            if (qstrcmp(Shape.Restrictions[number], column) == 0) {
                const QString &text = Texts[qsizetype(number)];
                return Argument(ArePatterns && text.contains(u'\\') ? QString() : text);
            }
        return Argument(QString());
    }
};

// A table in its place.
struct TableArguments
{
    explicit TableArguments(const Restrictions &given, const QString &prefix = {})
        : Catalogue(given.Of((prefix + QStringLiteral("TABLE_CATALOG")).toLatin1().constData())),
          Owner(given.Of((prefix + QStringLiteral("TABLE_SCHEMA")).toLatin1().constData())),
          Table(given.Of((prefix + QStringLiteral("TABLE_NAME")).toLatin1().constData()))
    {
    }
    Argument Catalogue, Owner, Table;
};
#define ADO_TABLE(table) ADO_ARGUMENT((table).Catalogue), ADO_ARGUMENT((table).Owner), ADO_ARGUMENT((table).Table)

SQLRETURN AskForTables(SQLHANDLE statement, const Restrictions &given)
{
    TableArguments table(given);
    Argument type(given.Shape.Schema == adSchemaViews ? QStringLiteral("VIEW") : QString());
    return ODBC_TRY(SQLTables, statement, ADO_TABLE(table), ADO_ARGUMENT(type));
}

SQLRETURN AskForColumns(SQLHANDLE statement, const Restrictions &given)
{
    TableArguments table(given);
    return ODBC_TRY(SQLColumns, statement, ADO_TABLE(table), ADO_NO_ARGUMENT);
}

SQLRETURN AskForIndexes(SQLHANDLE statement, const Restrictions &given)
{
    TableArguments table(given);
    return ODBC_TRY(SQLStatistics, statement, ADO_TABLE(table), SQLUSMALLINT(SQL_INDEX_ALL), SQLUSMALLINT(SQL_QUICK));
}

SQLRETURN AskForProcedures(SQLHANDLE statement, const Restrictions &given)
{
    Argument name = given.Of("PROCEDURE_NAME");
    return ODBC_TRY(SQLProcedures, statement, ADO_NO_ARGUMENT, ADO_NO_ARGUMENT, ADO_ARGUMENT(name));
}

SQLRETURN AskForForeignKeys(SQLHANDLE statement, const Restrictions &given)
{
    TableArguments table(given, QStringLiteral("FK_"));
    return ODBC_TRY(SQLForeignKeys, statement, ADO_NO_ARGUMENT, ADO_NO_ARGUMENT, ADO_NO_ARGUMENT, ADO_TABLE(table));
}

SQLRETURN AskForPrimaryKeys(SQLHANDLE statement, const Restrictions &given)
{
    TableArguments table(given);
    return ODBC_TRY(SQLPrimaryKeys, statement, ADO_TABLE(table));
}

// Which function answers a rowset, and what is taken of its columns.
constexpr struct
{
    SchemaEnum Schema;
    std::span<const Taken> Columns;
    SQLRETURN (*Ask)(SQLHANDLE statement, const Restrictions &given);
    bool TakesPatterns;
} kFunctions[] = {
    {adSchemaTables, kTables, AskForTables, true},
    {adSchemaViews, kViews, AskForTables, true},
    {adSchemaColumns, kColumns, AskForColumns, true},
    {adSchemaIndexes, kIndexes, AskForIndexes, false},
    {adSchemaProcedures, kProcedures, AskForProcedures, true},
    {adSchemaForeignKeys, kForeignKeys, AskForForeignKeys, false},
    {adSchemaPrimaryKeys, kPrimaryKeys, AskForPrimaryKeys, false},
};

std::vector<ColumnStore> ReadAllOf(ResultSet &rows)
{
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : rows.Columns())
        stores.emplace_back(column.Type);
    while (rows.Fetch(stores, 1000) > 0) {
    }
    return stores;
}

void Write(RowsetWriter &writer, const std::vector<ColumnStore> &stores, std::span<const Taken> taken,
           const QStringList &restrictions)
{
    const SchemaEnum schema = writer.Shape().Schema;
    const qint64 count = stores.empty() ? 0 : stores.front().Size();
    for (qint64 row = 0; row < count; ++row) {
        // SQLStatistics begins with a row that tells of the table, not of an index.
        if (schema == adSchemaIndexes && stores[6].At(row).ToInt64() == SQL_TABLE_STAT)
            continue;
        for (const Taken &one : taken)
            if (size_t(one.From) <= stores.size())
                writer.Put(QString::fromLatin1(one.Into), Read(stores[size_t(one.From - 1)].At(row), one.How));
        if (schema == adSchemaColumns)
            writer.Put(u"COLUMN_HASDEFAULT", Value(!Read(stores[12].At(row), Reading::Default).IsNull()));
        writer.EndRow(restrictions);
    }
    writer.Sort();
}

} // namespace

std::unique_ptr<ResultSet> OdbcSession::Catalogue(SchemaEnum schema, const QStringList &restrictions)
{
    const Rowset *shape = FindRowset(schema);
    for (const auto &function : kFunctions) {
        if (!shape || function.Schema != schema)
            continue;
        m_link->ForgetCancel();
        Handle statement = m_link->NewStatement();
        {
            const Link::Running running(*m_link, statement);
            if (!SQL_SUCCEEDED(function.Ask(statement.Get(), {*shape, restrictions, function.TakesPatterns})))
                throw m_link->Failure(statement, "catalogue");
        }
        OdbcRows rows(m_link, std::move(statement));
        RowsetWriter writer(*shape);
        Write(writer, ReadAllOf(rows), function.Columns, restrictions);
        return std::make_unique<HeldRows>(writer.Columns(), writer.Stores());
    }
    return nullptr;
}

} // namespace ADODB::Odbc
