#include "sqltext/modSQLMaipulation.h"

#include <algorithm>
#include <iterator>

namespace {

// Integer, Currency and GUID carry a size on purpose: a generated column of these types shows its defined size too.
constexpr clsDataType kTypes[] = {
    {20, u"Big Integer", u"BigInt", false, false, u'N'},
    {128, u"Binary", u"Binary", true, false, u'N'},
    {11, u"Boolean", u"Boolean", false, false, u'B'},
    {8, u"Binary String", u"BSTR", true, false, u'B'},
    {6, u"Currency", u"Currency", true, false, u'N'},
    {7, u"Date", u"Date", false, false, u'D'},
    {133, u"Database Date", u"DBDate", false, false, u'D'},
    {134, u"Database Time", u"DBTime", false, false, u'D'},
    {135, u"Database Time Stamp", u"DBTimeStamp", false, false, u'D'},
    {14, u"Decimal", u"Decimal", true, true, u'N'},
    {5, u"Double", u"Double", false, false, u'N'},
    {3, u"Integer", u"Integer", true, false, u'N'},
    {131, u"Numeric", u"Numeric", true, true, u'N'},
    {4, u"Single", u"Single", false, false, u'N'},
    {2, u"Small Integer", u"SmallInt", false, false, u'N'},
    {16, u"Tiny Integer", u"TinyInt", false, false, u'N'},
    {21, u"Unsigned Big Integer", u"UnsignedBigInt", false, false, u'N'},
    {19, u"Unsigned Integer", u"UnsignedInt", false, false, u'N'},
    {18, u"Unsigned Small Integer", u"UnsignedSmallInt", false, false, u'N'},
    {17, u"Unsigned Tiny Integer", u"UnsignedTinyInt", false, false, u'N'},
    {129, u"Character", u"Char", true, false, u'A'},
    {130, u"WChar", u"WChar", true, false, u'A'},
    {200, u"Variable Length Character", u"VarChar", true, false, u'A'},
    {202, u"Variable Length WChar", u"VarWChar", true, false, u'A'},
    {203, u"Long Variable Length WChar", u"LongVarWChar", true, false, u'B'},
    {72, u"GUID", u"GUID", true, false, u'U'},
    {0, u"UnKnown", u"UnKnown", true, false, u'U'},
};

const clsDataType *TypeOf(int number)
{
    const auto hit =
        std::find_if(std::begin(kTypes), std::end(kTypes), [&](const auto &row) { return row.Number == number; });
    return hit == std::end(kTypes) ? nullptr : hit;
}

} // namespace

constinit const std::span<const clsDataType> gDataTypes(kTypes);

bool IsSizedType(int number)
{
    const clsDataType *type = TypeOf(number);
    return type && type->HasSize;
}

bool HasPrecisionType(int number)
{
    const clsDataType *type = TypeOf(number);
    return type && type->HasPrecision;
}

QString GetTypeName(int number, bool longName)
{
    const clsDataType *type = TypeOf(number);
    return type ? QString::fromUtf16(longName ? type->LongName : type->ShortName) : QString();
}
