// The driver's catalogue functions as schema rowsets. Their columns are read by number: their names differ from driver
// to driver in case and spelling.
#include "ado/odbc/HeldRows.h"
#include "ado/odbc/OdbcRows.h"
#include "ado/odbc/OdbcSession.h"
#include "ado/schema/Rowsets.h"

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

void Raise(Link &link, const Handle &statement, SQLRETURN result)
{
    if (!SQL_SUCCEEDED(result))
        throw link.Failure(statement, "catalogue");
}

} // namespace

std::unique_ptr<ResultSet> OdbcSession::Catalogue(SchemaEnum schema, const QStringList &restrictions)
{
    const Rowset *shape = FindRowset(schema);
    if (!shape)
        return nullptr;
    m_link->ForgetCancel();
    Handle statement = m_link->NewStatement();
    const SQLHANDLE s = statement.Get();
    // Names may hold "%" and "_", which some of these functions take for a pattern: the writer below looks again. A "\"
    // would hide a name from the pattern, so such a one is not asked for at all.
    const bool takesPatterns =
        schema != adSchemaIndexes && schema != adSchemaForeignKeys && schema != adSchemaPrimaryKeys;
    const auto given = [&](const char *column) {
        for (size_t number = 0; number < shape->Restrictions.size() && qsizetype(number) < restrictions.size();
             ++number)
            if (qstrcmp(shape->Restrictions[number], column) == 0)
                return Argument(takesPatterns && restrictions[qsizetype(number)].contains(u'\\')
                                    ? QString()
                                    : restrictions[qsizetype(number)]);
        return Argument(QString());
    };
    Argument catalogue = given("TABLE_CATALOG"), owner = given("TABLE_SCHEMA"), table = given("TABLE_NAME");
    std::span<const Taken> taken;
    {
        const Link::Running running(*m_link, statement);
        switch (schema) {
        case adSchemaTables:
        case adSchemaViews: {
            taken = schema == adSchemaTables ? std::span<const Taken>(kTables) : std::span<const Taken>(kViews);
            Argument type(schema == adSchemaViews ? QStringLiteral("VIEW") : QString());
            Raise(*m_link, statement,
                  ODBC_TRY(SQLTables, s, catalogue.Text(), catalogue.Length(), owner.Text(), owner.Length(),
                           table.Text(), table.Length(), type.Text(), type.Length()));
            break;
        }
        case adSchemaColumns:
            taken = kColumns;
            Raise(*m_link, statement,
                  ODBC_TRY(SQLColumns, s, catalogue.Text(), catalogue.Length(), owner.Text(), owner.Length(),
                           table.Text(), table.Length(), nullptr, SQLSMALLINT(0)));
            break;
        case adSchemaIndexes:
            taken = kIndexes;
            Raise(*m_link, statement,
                  ODBC_TRY(SQLStatistics, s, catalogue.Text(), catalogue.Length(), owner.Text(), owner.Length(),
                           table.Text(), table.Length(), SQLUSMALLINT(SQL_INDEX_ALL), SQLUSMALLINT(SQL_QUICK)));
            break;
        case adSchemaProcedures: {
            taken = kProcedures;
            Argument name = given("PROCEDURE_NAME");
            Raise(*m_link, statement,
                  ODBC_TRY(SQLProcedures, s, nullptr, SQLSMALLINT(0), nullptr, SQLSMALLINT(0), name.Text(),
                           name.Length()));
            break;
        }
        case adSchemaForeignKeys: {
            taken = kForeignKeys;
            Argument fkCatalogue = given("FK_TABLE_CATALOG"), fkOwner = given("FK_TABLE_SCHEMA"),
                     fkTable = given("FK_TABLE_NAME");
            Raise(*m_link, statement,
                  ODBC_TRY(SQLForeignKeys, s, nullptr, SQLSMALLINT(0), nullptr, SQLSMALLINT(0), nullptr, SQLSMALLINT(0),
                           fkCatalogue.Text(), fkCatalogue.Length(), fkOwner.Text(), fkOwner.Length(), fkTable.Text(),
                           fkTable.Length()));
            break;
        }
        case adSchemaPrimaryKeys:
            taken = kPrimaryKeys;
            Raise(*m_link, statement,
                  ODBC_TRY(SQLPrimaryKeys, s, catalogue.Text(), catalogue.Length(), owner.Text(), owner.Length(),
                           table.Text(), table.Length()));
            break;
        default:
            return nullptr;
        }
    }

    OdbcRows rows(m_link, std::move(statement));
    const int columns = int(rows.Columns().size());
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : rows.Columns())
        stores.emplace_back(column.Type);
    while (rows.Fetch(stores, 1000) > 0) {
    }
    RowsetWriter writer(*shape);
    const qint64 count = stores.empty() ? 0 : stores.front().Size();
    for (qint64 row = 0; row < count; ++row) {
        // SQLStatistics begins with a row that tells of the table, not of an index.
        if (schema == adSchemaIndexes && stores[6].At(row).ToInt64() == SQL_TABLE_STAT)
            continue;
        for (const Taken &one : taken)
            if (one.From <= columns)
                writer.Put(QString::fromLatin1(one.Into), Read(stores[size_t(one.From - 1)].At(row), one.How));
        if (schema == adSchemaColumns)
            writer.Put(u"COLUMN_HASDEFAULT", Value(!Read(stores[12].At(row), Reading::Default).IsNull()));
        writer.EndRow(restrictions);
    }
    writer.Sort();
    return std::make_unique<HeldRows>(writer.Columns(), writer.Stores());
}

} // namespace ADODB::Odbc
