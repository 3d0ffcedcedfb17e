#include "ado/schema/TypeNames.h"
#include <QStringList>

namespace ADODB {

namespace {

struct TypeName
{
    const char *Name; // without what stands in brackets
    DataTypeEnum Type;
    int Precision = -1;
};

// What one family means otherwise than the others.
struct FamilyTypeName
{
    DatabaseFamily Family;
    TypeName Row;
};

constexpr FamilyTypeName kOwn[] = {
    {DatabaseFamily::SQLite, {"integer", adInteger, 19}},
    {DatabaseFamily::SQLite, {"real", adDouble, 15}},
    {DatabaseFamily::SQLite, {"float", adDouble, 15}},
    {DatabaseFamily::PostgreSQL, {"bit", adVarWChar}},
    {DatabaseFamily::PostgreSQL, {"real", adSingle, 7}},
    {DatabaseFamily::PostgreSQL, {"\"char\"", adChar}},
    {DatabaseFamily::MySQL, {"real", adDouble, 15}},
    {DatabaseFamily::MySQL, {"float", adSingle, 7}},
    {DatabaseFamily::MySQL, {"float unsigned", adSingle, 7}},
    {DatabaseFamily::MySQL, {"time", adDBTime}},
    {DatabaseFamily::SQLServer, {"tinyint", adUnsignedTinyInt, 3}},
    {DatabaseFamily::SQLServer, {"money", adCurrency, 19}},
    {DatabaseFamily::SQLServer, {"smallmoney", adCurrency, 10}},
    {DatabaseFamily::SQLServer, {"timestamp", adBinary}}, // counts changes, and is no moment
    {DatabaseFamily::SQLServer, {"rowversion", adBinary}},
    {DatabaseFamily::SQLServer, {"image", adBinary}},
    {DatabaseFamily::SQLServer, {"ntext", adLongVarWChar}},
    {DatabaseFamily::SQLServer, {"smalldatetime", adDBTimeStamp}},
    {DatabaseFamily::SQLServer, {"datetime2", adDBTimeStamp}},
    {DatabaseFamily::SQLServer, {"datetimeoffset", adDBTimeStamp}},
    {DatabaseFamily::SQLServer, {"uniqueidentifier", adGUID}},
    {DatabaseFamily::SQLServer, {"sql_variant", adVariant}},
    {DatabaseFamily::Oracle, {"number", adNumeric}},
    {DatabaseFamily::Oracle, {"float", adNumeric}},
    {DatabaseFamily::Oracle, {"binary_float", adSingle, 7}},
    {DatabaseFamily::Oracle, {"binary_double", adDouble, 15}},
    {DatabaseFamily::Oracle, {"varchar2", adVarChar}},
    {DatabaseFamily::Oracle, {"nvarchar2", adVarWChar}},
    {DatabaseFamily::Oracle, {"nclob", adLongVarWChar}},
    {DatabaseFamily::Oracle, {"long", adLongVarWChar}},
    {DatabaseFamily::Oracle, {"raw", adBinary}},
    {DatabaseFamily::Oracle, {"long raw", adBinary}},
    {DatabaseFamily::Oracle, {"rowid", adChar}},
    {DatabaseFamily::Oracle, {"date", adDBTimeStamp}}, // with a time of day
    {DatabaseFamily::Oracle, {"timestamp with local time zone", adDBTimeStamp}},
};

constexpr TypeName kNames[] = {
    {"bool", adBoolean},
    {"boolean", adBoolean},
    {"bit", adBoolean},
    {"tinyint", adTinyInt, 3},
    {"tinyint unsigned", adUnsignedTinyInt, 3},
    {"smallint", adSmallInt, 5},
    {"smallint unsigned", adUnsignedSmallInt, 5},
    {"int2", adSmallInt, 5},
    {"year", adSmallInt, 5},
    {"mediumint", adInteger, 7},
    {"mediumint unsigned", adUnsignedInt, 8},
    {"int", adInteger, 10},
    {"int unsigned", adUnsignedInt, 10},
    {"int4", adInteger, 10},
    {"integer", adInteger, 10},
    {"bigint", adBigInt, 19},
    {"bigint unsigned", adUnsignedBigInt, 20},
    {"int8", adBigInt, 19},
    {"float", adDouble, 15},
    {"real", adSingle, 7},
    {"double", adDouble, 15},
    {"double unsigned", adDouble, 15},
    {"double precision", adDouble, 15},
    {"numeric", adNumeric},
    {"decimal", adNumeric},
    {"decimal unsigned", adNumeric},
    {"char", adChar},
    {"character", adChar},
    {"enum", adChar},
    {"set", adChar},
    {"nchar", adWChar},
    {"varchar", adVarChar},
    {"character varying", adVarChar},
    {"nvarchar", adVarWChar},
    {"text", adLongVarWChar},
    {"tinytext", adLongVarWChar},
    {"mediumtext", adLongVarWChar},
    {"longtext", adLongVarWChar},
    {"clob", adLongVarWChar},
    {"json", adLongVarWChar},
    {"jsonb", adLongVarWChar},
    {"xml", adLongVarWChar},
    {"binary", adBinary},
    {"varbinary", adBinary},
    {"blob", adBinary},
    {"tinyblob", adBinary},
    {"mediumblob", adBinary},
    {"longblob", adBinary},
    {"bytea", adBinary},
    {"date", adDBDate},
    {"time", adDBTime},
    {"time without time zone", adDBTime},
    {"datetime", adDBTimeStamp},
    {"timestamp", adDBTimeStamp},
    {"timestamp without time zone", adDBTimeStamp},
    {"timestamp with time zone", adDBTimeStamp},
    {"uuid", adGUID},
    {"guid", adGUID},
};

// SQLite takes any words for a type and goes by what they contain.
constexpr TypeName kContained[] = {
    {"int", adInteger, 19}, {"char", adVarChar},     {"clob", adLongVarWChar}, {"text", adLongVarWChar},
    {"blob", adBinary},     {"real", adDouble},      {"floa", adDouble},       {"doub", adDouble},
    {"bool", adBoolean},    {"time", adDBTimeStamp}, {"date", adDBDate},       {"dec", adNumeric},
    {"num", adNumeric},
};

const TypeName *Find(DatabaseFamily family, const QString &name)
{
    for (const FamilyTypeName &own : kOwn)
        if (own.Family == family && name == QLatin1String(own.Row.Name))
            return &own.Row;
    for (const TypeName &row : kNames)
        if (name == QLatin1String(row.Name))
            return &row;
    if (family == DatabaseFamily::SQLite)
        for (const TypeName &row : kContained)
            if (name.contains(QLatin1String(row.Name)))
                return &row;
    return nullptr;
}

} // namespace

DeclaredType ReadTypeName(DatabaseFamily family, const QString &name)
{
    QString base = name.toLower();
    QStringList numbers;
    const qsizetype open = base.indexOf(u'('), close = base.indexOf(u')', open);
    if (open >= 0 && close > open) {
        numbers = base.mid(open + 1, close - open - 1).split(u',');
        base.remove(open, close - open + 1);
    }
    base.replace(QLatin1String(" zerofill"), QString());
    QStringList words = base.split(u' ', Qt::SkipEmptyParts);
    const TypeName *row = Find(family, words.join(u' '));
    DeclaredType type;
    if (!row)
        return type;
    type.Type = row->Type;
    type.Precision = row->Precision;
    bool isNumber = false;
    const qint64 first = numbers.value(0).toLongLong(&isNumber);
    switch (isNumber ? row->Type : adEmpty) {
    case adNumeric:
        type.Precision = first;
        type.Scale = numbers.size() > 1 ? numbers[1].toLongLong() : 0;
        break;
    case adChar:
    case adWChar:
    case adVarChar:
    case adVarWChar:
    case adBinary:
        type.Length = first;
        break;
    default:
        break;
    }
    // MySQL's bit(8) is eight bits in a byte, not a yes or no.
    if (base == u"bit" && row->Type == adBoolean && first > 1)
        type.Type = adBinary;
    return type;
}

} // namespace ADODB
