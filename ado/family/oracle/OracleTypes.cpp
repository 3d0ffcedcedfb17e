// What Oracle's literals are made of, and its types: as its catalogue would list them, and as declarations spell them.
#include "ado/family/oracle/OracleParts.h"

namespace ADODB {

namespace {

constexpr Literal kLiterals[] = {
    {4, "'"},
    {5, kLiteralName, 30},
    {6, kLiteralName, 30},
    {7, kLiteralName, 30},
    {8, kLiteralName, 30},
    {11, kLiteralName, 30},
    {12, "%"},
    {13, "_"},
    {14, kLiteralName, 30},
    {15, kLiteralQuote},
    {16, kLiteralName, 30},
    {17, kLiteralName, 30},
    {18, kLiteralName},
    {19, kLiteralName, 30},
    {20, kLiteralName, 30},
    {27, "."},
    {28, kLiteralQuote},
};

using enum TypeRow::Trait;
constexpr TypeRow kTypes[] = {
    {"number", 38, Best | Number | Scaled, 127},
    {"float", 15, Number},
    {"binary_float", 7, Best | Number | Fixed},
    {"binary_double", 15, Best | Number | Fixed},
    {"char", 2000, Best | Quoted | Sized | Fixed},
    {"varchar2", 4000, Best | Quoted | Sized},
    {"nchar", 2000, Best | Quoted | Sized | Fixed},
    {"nvarchar2", 4000, Best | Quoted | Sized},
    {"clob", 4294967295, Quoted | Long},
    {"nclob", 4294967295, Best | Quoted | Long},
    {"long", 2147483647, Quoted | Long},
    {"raw", 2000, Best | Quoted | Sized},
    {"blob", 4294967295, Long},
    {"long raw", 2147483647, Long},
    {"date", 19, Quoted | Fixed},
    {"timestamp", 29, Best | Quoted | Fixed},
    {"rowid", 18, Quoted | Fixed},
};

constexpr TypeName kTypeNames[] = {
    {"number", adNumeric},
    {"float", adNumeric},
    {"binary_float", adSingle, 7},
    {"binary_double", adDouble, 15},
    {"varchar2", adVarChar},
    {"nvarchar2", adVarWChar},
    {"nclob", adLongVarWChar},
    {"long", adLongVarWChar},
    {"raw", adBinary},
    {"long raw", adBinary},
    {"rowid", adChar},
    {"date", adDBTimeStamp}, // with a time of day
    {"timestamp with local time zone", adDBTimeStamp},
};

} // namespace

std::span<const Literal> OracleLiterals()
{
    return kLiterals;
}

std::span<const TypeRow> OracleTypes()
{
    return kTypes;
}

std::span<const TypeName> OracleTypeNames()
{
    return kTypeNames;
}

} // namespace ADODB
