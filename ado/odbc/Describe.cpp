#include "ado/family/Family.h"
#include "ado/odbc/Cells.h"

namespace ADODB::Odbc {

namespace {

constexpr SQLSMALLINT kMsVariant = -150, kMsTime = -154, kMsTimestampOffset = -155, kMsXml = -152;
constexpr qint64 kShortCell = 256;
constexpr qint64 kWidestWhole = 16384; // a declared size past this is not believed to be used

struct TypeRow
{
    SQLSMALLINT Sql;
    DataTypeEnum Signed, Unsigned;
    CellKind Kind;
};

constexpr TypeRow kTypes[] = {
    {SQL_BIT, adBoolean, adBoolean, CellKind::Bit},
    {SQL_TINYINT, adTinyInt, adUnsignedTinyInt, CellKind::Int64},
    {SQL_SMALLINT, adSmallInt, adUnsignedSmallInt, CellKind::Int64},
    {SQL_INTEGER, adInteger, adUnsignedInt, CellKind::Int64},
    {SQL_BIGINT, adBigInt, adUnsignedBigInt, CellKind::Int64},
    {SQL_REAL, adSingle, adSingle, CellKind::Double},
    {SQL_FLOAT, adDouble, adDouble, CellKind::Double},
    {SQL_DOUBLE, adDouble, adDouble, CellKind::Double},
    {SQL_DECIMAL, adNumeric, adNumeric, CellKind::Decimal},
    {SQL_NUMERIC, adNumeric, adNumeric, CellKind::Decimal},
    {SQL_CHAR, adChar, adChar, CellKind::Text},
    {SQL_VARCHAR, adVarChar, adVarChar, CellKind::Text},
    {SQL_LONGVARCHAR, adLongVarWChar, adLongVarWChar, CellKind::Text},
    {SQL_WCHAR, adWChar, adWChar, CellKind::Text},
    {SQL_WVARCHAR, adVarWChar, adVarWChar, CellKind::Text},
    {SQL_WLONGVARCHAR, adLongVarWChar, adLongVarWChar, CellKind::Text},
    {SQL_BINARY, adBinary, adBinary, CellKind::Bytes},
    {SQL_VARBINARY, adBinary, adBinary, CellKind::Bytes},
    {SQL_LONGVARBINARY, adBinary, adBinary, CellKind::Bytes},
    {SQL_TYPE_DATE, adDBDate, adDBDate, CellKind::Date},
    {SQL_TYPE_TIME, adDBTime, adDBTime, CellKind::TimeText}, // the structure has no fraction
    {SQL_TYPE_TIMESTAMP, adDBTimeStamp, adDBTimeStamp, CellKind::Timestamp},
    {SQL_GUID, adGUID, adGUID, CellKind::Text},
    {kMsTime, adDBTime, adDBTime, CellKind::TimeText},
    {kMsTimestampOffset, adVarWChar, adVarWChar, CellKind::Text},
    {kMsXml, adLongVarWChar, adLongVarWChar, CellKind::Text},
    {kMsVariant, adVarWChar, adVarWChar, CellKind::Text},
};

bool IsLong(SQLSMALLINT type)
{
    return type == SQL_LONGVARCHAR || type == SQL_WLONGVARCHAR || type == SQL_LONGVARBINARY || type == kMsXml;
}

// Which fixed kinds give way to text, because the driver's own conversion would hide what is really there.
CellKind Adjusted(const Traits &traits, CellKind kind, bool isUnsigned)
{
    if (traits.LooseTypes) {
        if (kind == CellKind::Int64)
            return CellKind::IntText;
        if (kind == CellKind::Double)
            return CellKind::DoubleText;
        if (kind == CellKind::Bit)
            return CellKind::BoolText;
    }
    if (traits.BendsMoments && kind == CellKind::Date)
        return CellKind::DriversDate;
    if (traits.BendsMoments && kind == CellKind::Timestamp)
        return CellKind::DriversTimestamp;
    if (traits.DatesAsText && kind == CellKind::Date)
        return CellKind::DateText;
    if (traits.DatesAsText && kind == CellKind::Timestamp)
        return CellKind::TimestampText;
    return kind == CellKind::Int64 && isUnsigned ? CellKind::UInt64 : kind;
}

SQLSMALLINT CTypeOf(CellKind kind)
{
    switch (kind) {
    case CellKind::Int64:
        return SQL_C_SBIGINT;
    case CellKind::UInt64:
        return SQL_C_UBIGINT;
    case CellKind::Double:
        return SQL_C_DOUBLE;
    case CellKind::Bit:
        return SQL_C_BIT;
    case CellKind::Bytes:
        return SQL_C_BINARY;
    case CellKind::Date:
        return SQL_C_TYPE_DATE;
    case CellKind::Timestamp:
        return SQL_C_TYPE_TIMESTAMP;
    default:
        return SQL_C_CHAR;
    }
}

QString TextAttribute(const Handle &statement, int column, SQLUSMALLINT what)
{
    char text[512] = {};
    SQLSMALLINT length = 0;
    const SQLRETURN result = ODBC_TRY(SQLColAttribute, statement.Get(), SQLUSMALLINT(column), what,
                                      static_cast<SQLPOINTER>(text), SQLSMALLINT(sizeof text - 1), &length, nullptr);
    return SQL_SUCCEEDED(result) ? FromDriver(text, qsizetype(qstrlen(text))) : QString();
}

SQLLEN NumberAttribute(const Handle &statement, int column, SQLUSMALLINT what)
{
    SQLLEN number = 0;
    const SQLRETURN result = ODBC_TRY(SQLColAttribute, statement.Get(), SQLUSMALLINT(column), what, nullptr,
                                      SQLSMALLINT(0), nullptr, &number);
    return SQL_SUCCEEDED(result) ? number : 0;
}

qint64 FixedWidth(SQLSMALLINT cType)
{
    switch (cType) {
    case SQL_C_BIT:
        return 1;
    case SQL_C_TYPE_DATE:
        return sizeof(SQL_DATE_STRUCT);
    case SQL_C_TYPE_TIMESTAMP:
        return sizeof(SQL_TIMESTAMP_STRUCT);
    default:
        return 8;
    }
}

void SetWidths(ColumnPlan &plan, const Traits &traits, bool isLong, qint64 size)
{
    switch (plan.CType) {
    case SQL_C_CHAR:
        // A character takes at most four bytes; numbers and times need a sign, a point and some room.
        plan.FullWidth = plan.Kind == CellKind::Text ? 4 * size + 1 : qMax<qint64>(size + 8, 64);
        break;
    case SQL_C_BINARY:
        plan.FullWidth = size;
        break;
    default: // arrays of these lie at the stride of the type itself
        plan.Width = plan.FullWidth = FixedWidth(plan.CType);
        return;
    }
    if (size <= 0 || isLong || plan.FullWidth > kWidestWhole)
        plan.FullWidth = 0;
    plan.Width = plan.FullWidth;
    if (traits.Again != ReRead::Columns && (plan.Width == 0 || plan.Width > kShortCell))
        plan.Width = kShortCell;
}

// Where the name of a type tells more than its number.
void SetByName(ColumnPlan &plan, const Quirks &quirks, bool &isLong, SQLULEN &size)
{
    const QString &typeName = plan.Info.TypeName;
    if (quirks.BlobsByName && plan.Kind == CellKind::Text &&
        typeName.contains(QLatin1String("blob"), Qt::CaseInsensitive)) {
        plan.Info.Type = adBinary;
        plan.Kind = CellKind::Bytes;
        isLong = true;
    }
    if (quirks.TypesByName) {
        // PostgreSQL's driver calls a bool VARCHAR(5), and gives money a number's type though it writes "$12.30".
        if (typeName == u"bool") {
            plan.Info.Type = adBoolean;
            plan.Kind = CellKind::BoolText;
        } else if (typeName == u"money") {
            plan.Info.Type = adVarWChar;
            plan.Kind = CellKind::Text;
            size = 32;
        } else if (typeName == u"uuid") { // its driver makes capitals of the server's letters
            plan.Kind = CellKind::GuidText;
        }
    }
}

// The column of a table that shows here.
void SetBase(ColumnInfo &info, const Link &link, const Handle &statement, int column)
{
    info.BaseTable = TextAttribute(statement, column, SQL_DESC_BASE_TABLE_NAME);
    if (!info.BaseTable.isEmpty()) {
        const bool noSchemas = link.Of().Family->Names.DatabasesForSchemas;
        info.BaseSchema = TextAttribute(statement, column, noSchemas ? SQL_DESC_CATALOG_NAME : SQL_DESC_SCHEMA_NAME);
        if (!link.Of().AliasForColumn)
            info.BaseColumn = TextAttribute(statement, column, SQL_DESC_BASE_COLUMN_NAME);
        info.Attributes |= adFldUpdatable;
    }
}

} // namespace

bool TakeServersText(ColumnPlan &plan)
{
    if (plan.Kind != CellKind::DriversDate && plan.Kind != CellKind::DriversTimestamp)
        return false;
    plan.Kind = plan.Kind == CellKind::DriversDate ? CellKind::DateText : CellKind::TimestampText;
    return true;
}

ColumnPlan Describe(const Link &link, const Handle &statement, int column)
{
    ColumnPlan plan;
    char name[1024] = {};
    SQLSMALLINT nameLength = 0, type = 0, scale = 0, nullable = 0;
    SQLULEN size = 0;
    ODBC_CALL(SQLDescribeCol, statement, SQLUSMALLINT(column), reinterpret_cast<SQLCHAR *>(name),
              SQLSMALLINT(sizeof name - 1), &nameLength, &type, &size, &scale, &nullable);
    const bool isUnsigned = NumberAttribute(statement, column, SQL_DESC_UNSIGNED) == SQL_TRUE;
    plan.Info.Name = FromDriver(name, qsizetype(qstrlen(name)));
    plan.Info.Type = adVarWChar;
    for (const TypeRow &row : kTypes) {
        if (row.Sql != type)
            continue;
        plan.Info.Type = isUnsigned ? row.Unsigned : row.Signed;
        plan.Kind = Adjusted(link.Of(), row.Kind, isUnsigned);
    }
    plan.Info.HasInfinity = plan.Kind == CellKind::DriversDate || plan.Kind == CellKind::DriversTimestamp;
    plan.Info.TypeName = TextAttribute(statement, column, SQL_DESC_TYPE_NAME);
    bool isLong = IsLong(type);
    SetByName(plan, link.Of(), isLong, size);
    plan.CType = CTypeOf(plan.Kind);
    SetWidths(plan, link.Of(), isLong, qint64(qMin<SQLULEN>(size, 0x40000000)));

    ColumnInfo &info = plan.Info;
    info.DefinedSize = isLong && (!link.Of().TellsLongSizes || size > 0x3fffffff) ? -1 : qint64(size);
    if (plan.Kind == CellKind::Decimal || info.Type == adSingle || info.Type == adDouble)
        info.Precision = int(qMin<SQLULEN>(size, 1000));
    if (plan.Kind == CellKind::Decimal || info.Type == adDBTimeStamp || info.Type == adDBTime)
        info.NumericScale = scale;
    info.Attributes = 0;
    if (nullable != SQL_NO_NULLS)
        info.Attributes |= adFldIsNullable;
    if (isLong)
        info.Attributes |= adFldLong;
    SetBase(info, link, statement, column);
    return plan;
}

} // namespace ADODB::Odbc
