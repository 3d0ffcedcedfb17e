#include "ado/schema/TypeNames.h"
#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"
#include <QStringList>

namespace ADODB {

namespace {

// What a name means where the family does not mean otherwise.
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

const TypeName *Find(const Family &family, const QString &name)
{
    for (const std::span<const TypeName> rows : {family.Catalogue.TypeNames, std::span<const TypeName>(kNames)})
        for (const TypeName &row : rows)
            if (name == QLatin1String(row.Name))
                return &row;
    for (const TypeName &row : family.Catalogue.ContainedTypeNames)
        if (name.contains(QLatin1String(row.Name)))
            return &row;
    return nullptr;
}

} // namespace

DeclaredType ReadTypeName(const Family &family, const QString &name)
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
