#include "ado/shape/ShapeTypes.h"

namespace ADODB {

namespace {

constexpr struct
{
    QStringView Name;
    DataTypeEnum Type;
} types[] = {
    {u"adBigInt", adBigInt},
    {u"adBinary", adBinary},
    {u"adBoolean", adBoolean},
    {u"adBSTR", adBSTR},
    {u"adChar", adChar},
    {u"adCurrency", adCurrency},
    {u"adDate", adDate},
    {u"adDBDate", adDBDate},
    {u"adDBTime", adDBTime},
    {u"adDBTimeStamp", adDBTimeStamp},
    {u"adDecimal", adDecimal},
    {u"adDouble", adDouble},
    {u"adGUID", adGUID},
    {u"adInteger", adInteger},
    {u"adLongVarWChar", adLongVarWChar},
    {u"adNumeric", adNumeric},
    {u"adSingle", adSingle},
    {u"adSmallInt", adSmallInt},
    {u"adTinyInt", adTinyInt},
    {u"adUnsignedBigInt", adUnsignedBigInt},
    {u"adUnsignedInt", adUnsignedInt},
    {u"adUnsignedSmallInt", adUnsignedSmallInt},
    {u"adUnsignedTinyInt", adUnsignedTinyInt},
    {u"adVarChar", adVarChar},
    {u"adVarWChar", adVarWChar},
    {u"adVariant", adVariant},
    {u"adWChar", adWChar},
    // Types that the layer keeps in one of those above.
    {u"adLongVarChar", adLongVarWChar},
    {u"adVarBinary", adBinary},
    {u"adLongVarBinary", adBinary},
};

} // namespace

std::optional<DataTypeEnum> ShapeTypeOf(QStringView word)
{
    for (const auto &[name, type] : types)
        if (word.compare(name, Qt::CaseInsensitive) == 0)
            return type;
    return {};
}

} // namespace ADODB
