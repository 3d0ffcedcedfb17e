// What SQL Server's literals are made of, and its types: as its catalogue would list them, and as declarations spell
// them.
#include "ado/family/sqlserver/SqlServerParts.h"

namespace ADODB {

namespace {

constexpr Literal kLiterals[] = {
    {1, "0x"},
    {2, kLiteralName, 128},
    {3, "."},
    {4, "'"},
    {5, kLiteralName, 128},
    {6, kLiteralName, 128},
    {7, kLiteralName, 128},
    {8, kLiteralName, 128},
    {9, "["},
    {10, "["},
    {11, kLiteralName, 128},
    {12, "%"},
    {13, "_"},
    {14, kLiteralName, 128},
    {15, kLiteralQuote},
    {16, kLiteralName, 128},
    {17, kLiteralName, 128},
    {18, kLiteralName},
    {19, kLiteralName, 128},
    {20, kLiteralName, 128},
    {27, "."},
    {28, kLiteralQuote},
    {29, "]"},
    {30, "]"},
};

using enum TypeRow::Trait;
constexpr TypeRow kTypes[] = {
    {"bit", 1, Best | Fixed},
    {"tinyint", 3, Best | Number | Unsigned | Counts | Fixed},
    {"smallint", 5, Best | Number | Counts | Fixed},
    {"int", 10, Best | Number | Counts | Fixed},
    {"bigint", 19, Best | Number | Counts | Fixed},
    {"real", 7, Best | Number | Fixed},
    {"float", 15, Best | Number | Fixed},
    {"smallmoney", 10, Number | Money | Fixed},
    {"money", 19, Best | Number | Money | Fixed},
    {"numeric", 38, Number | Scaled | Counts, 38},
    {"decimal", 38, Best | Number | Scaled | Counts, 38},
    {"char", 8000, Best | Quoted | Sized | Caseless | Fixed},
    {"varchar", 8000, Best | Quoted | Sized | Caseless},
    {"text", 2147483647, Quoted | Long | Caseless},
    {"nchar", 4000, Best | Quoted | Sized | Caseless | Fixed},
    {"nvarchar", 4000, Best | Quoted | Sized | Caseless},
    {"ntext", 1073741823, Best | Quoted | Long | Caseless},
    {"xml", 0, Quoted | Long},
    {"binary", 8000, Sized | Fixed},
    {"varbinary", 8000, Best | Sized},
    {"image", 2147483647, Long},
    {"timestamp", 8, Fixed},
    {"uniqueidentifier", 36, Best | Quoted | Fixed},
    {"date", 10, Best | Quoted | Fixed},
    {"time", 16, Best | Quoted | Fixed},
    {"smalldatetime", 16, Quoted | Fixed},
    {"datetime", 23, Quoted | Fixed},
    {"datetime2", 27, Best | Quoted | Fixed},
    {"datetimeoffset", 34, Quoted | Fixed},
    {"sql_variant", 8000, Best | Quoted},
};

constexpr TypeName kTypeNames[] = {
    {"tinyint", adUnsignedTinyInt, 3}, {"money", adCurrency, 19},    {"smallmoney", adCurrency, 10},
    {"timestamp", adBinary}, // counts changes, and is no moment
    {"rowversion", adBinary},          {"image", adBinary},          {"ntext", adLongVarWChar},
    {"smalldatetime", adDBTimeStamp},  {"datetime2", adDBTimeStamp}, {"datetimeoffset", adDBTimeStamp},
    {"uniqueidentifier", adGUID},      {"sql_variant", adVariant},
};

} // namespace

std::span<const Literal> SqlServerLiterals()
{
    return kLiterals;
}

std::span<const TypeRow> SqlServerTypes()
{
    return kTypes;
}

std::span<const TypeName> SqlServerTypeNames()
{
    return kTypeNames;
}

} // namespace ADODB
