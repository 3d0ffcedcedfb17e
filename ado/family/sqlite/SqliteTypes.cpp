// What SQLite's literals are made of, and its types: as its catalogue would list them, and as declarations spell them.
#include "ado/family/sqlite/SqliteParts.h"

namespace ADODB {

namespace {

constexpr Literal kLiterals[] = {
    {1, "X'"},          {4, "'"},           {5, kLiteralName},  {6, kLiteralName},   {7, kLiteralName},
    {11, kLiteralName}, {12, "%"},          {13, "_"},          {15, kLiteralQuote}, {16, kLiteralName},
    {17, kLiteralName}, {18, kLiteralName}, {20, kLiteralName}, {27, "."},           {28, kLiteralQuote},
};

using enum TypeRow::Trait;
constexpr TypeRow kTypes[] = {
    {"integer", 19, Best | Number | Counts},
    {"bigint", 19, Best | Number},
    {"smallint", 5, Best | Number},
    {"tinyint", 3, Best | Number},
    {"real", 15, Best | Number | Fixed},
    {"numeric", 15, Best | Number | Scaled, 15},
    {"boolean", 1, Best},
    {"char", 0, Best | Quoted | Sized},
    {"varchar", 0, Best | Quoted | Sized},
    {"text", 0, Best | Quoted | Long},
    {"blob", 0, Best | Quoted | Long},
    {"date", 10, Best | Quoted},
    {"time", 8, Best | Quoted},
    {"datetime", 19, Best | Quoted},
};

constexpr TypeName kTypeNames[] = {
    {"integer", adInteger, 19},
    {"real", adDouble, 15},
    {"float", adDouble, 15},
};

// Any words are a type, and it goes by what they contain.
constexpr TypeName kContained[] = {
    {"int", adInteger, 19}, {"char", adVarChar},     {"clob", adLongVarWChar}, {"text", adLongVarWChar},
    {"blob", adBinary},     {"real", adDouble},      {"floa", adDouble},       {"doub", adDouble},
    {"bool", adBoolean},    {"time", adDBTimeStamp}, {"date", adDBDate},       {"dec", adNumeric},
    {"num", adNumeric},
};

} // namespace

std::span<const Literal> SqliteLiterals()
{
    return kLiterals;
}

std::span<const TypeRow> SqliteTypes()
{
    return kTypes;
}

std::span<const TypeName> SqliteTypeNames()
{
    return kTypeNames;
}

std::span<const TypeName> SqliteContainedTypeNames()
{
    return kContained;
}

} // namespace ADODB
