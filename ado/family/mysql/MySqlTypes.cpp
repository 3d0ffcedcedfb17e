// What MySQL's and MariaDB's literals are made of, and its types: as its catalogue would list them, and as declarations
// spell them.
#include "ado/family/mysql/MySqlParts.h"

namespace ADODB {

namespace {

constexpr Literal kLiterals[] = {
    {1, "X'"},
    {2, kLiteralName, 64},
    {3, "."},
    {4, "'"},
    {5, kLiteralName, 256},
    {6, kLiteralName, 64},
    {7, kLiteralName, 256},
    {8, kLiteralName, 64},
    {9, "\\"},
    {10, "\\"},
    {11, kLiteralName, 64},
    {12, "%"},
    {13, "_"},
    {14, kLiteralName, 64},
    {15, kLiteralQuote},
    {17, kLiteralName, 64},
    {18, kLiteralName},
    {19, kLiteralName, 80},
    {20, kLiteralName, 64},
    {28, kLiteralQuote},
};

using enum TypeRow::Trait;
constexpr TypeRow kTypes[] = {
    {"bit", 1, Number | Unsigned | Sized | Fixed},
    {"boolean", 1, Best | Fixed},
    {"tinyint", 3, Best | Number | Counts | Fixed},
    {"tinyint unsigned", 3, Best | Number | Unsigned | Counts | Fixed},
    {"smallint", 5, Best | Number | Counts | Fixed},
    {"smallint unsigned", 5, Best | Number | Unsigned | Counts | Fixed},
    {"year", 4, Number | Unsigned | Fixed},
    {"mediumint", 7, Number | Counts | Fixed},
    {"mediumint unsigned", 8, Number | Unsigned | Counts | Fixed},
    {"int", 10, Best | Number | Counts | Fixed},
    {"int unsigned", 10, Best | Number | Unsigned | Counts | Fixed},
    {"bigint", 19, Best | Number | Counts | Fixed},
    {"bigint unsigned", 20, Best | Number | Unsigned | Counts | Fixed},
    {"float", 7, Best | Number | Counts | Fixed},
    {"double", 15, Best | Number | Counts | Fixed},
    {"decimal", 65, Best | Number | Scaled, 38},
    {"decimal unsigned", 65, Number | Unsigned | Scaled, 38},
    {"char", 255, Best | Quoted | Sized | Caseless | Fixed},
    {"varchar", 65535, Best | Quoted | Sized | Caseless},
    {"tinytext", 255, Quoted | Long | Caseless},
    {"text", 65535, Quoted | Long | Caseless},
    {"mediumtext", 16777215, Quoted | Long | Caseless},
    {"longtext", 4294967295, Best | Quoted | Long | Caseless},
    {"json", 4294967295, Quoted | Long},
    {"enum", 0, Quoted | Caseless},
    {"set", 0, Quoted | Caseless},
    {"binary", 255, Quoted | Sized | Fixed},
    {"varbinary", 65535, Best | Quoted | Sized},
    {"tinyblob", 255, Quoted | Long},
    {"blob", 65535, Quoted | Long},
    {"mediumblob", 16777215, Quoted | Long},
    {"longblob", 4294967295, Quoted | Long},
    {"date", 10, Best | Quoted | Fixed},
    {"time", 16, Best | Quoted | Fixed},
    {"datetime", 26, Best | Quoted | Fixed},
    {"timestamp", 26, Quoted | Fixed},
};

constexpr TypeName kTypeNames[] = {
    {"real", adDouble, 15},
    {"float", adSingle, 7},
    {"float unsigned", adSingle, 7},
    {"time", adDBTime},
};

} // namespace

std::span<const Literal> MySqlLiterals()
{
    return kLiterals;
}

std::span<const TypeRow> MySqlTypes()
{
    return kTypes;
}

std::span<const TypeName> MySqlTypeNames()
{
    return kTypeNames;
}

} // namespace ADODB
