// What PostgreSQL's literals are made of, and its types: as its catalogue would list them, and as declarations spell
// them.
#include "ado/family/postgres/PostgresParts.h"

namespace ADODB {

namespace {

constexpr Literal kLiterals[] = {
    {1, "'\\x"},
    {2, kLiteralName, 63},
    {3, "."},
    {4, "'"},
    {5, kLiteralName, 63},
    {6, kLiteralName, 63},
    {7, kLiteralName, 63},
    {8, kLiteralName, 63},
    {9, "\\"},
    {10, "\\"},
    {11, kLiteralName, 63},
    {12, "%"},
    {13, "_"},
    {14, kLiteralName, 63},
    {15, kLiteralQuote},
    {16, kLiteralName, 63},
    {17, kLiteralName, 63},
    {18, kLiteralName},
    {19, kLiteralName, 63},
    {20, kLiteralName, 63},
    {27, "."},
    {28, kLiteralQuote},
};

constexpr TypeName kTypeNames[] = {
    {"bit", adVarWChar},
    {"real", adSingle, 7},
    {"\"char\"", adChar},
};

} // namespace

std::span<const Literal> PostgresLiterals()
{
    return kLiterals;
}

std::span<const TypeName> PostgresTypeNames()
{
    return kTypeNames;
}

} // namespace ADODB
