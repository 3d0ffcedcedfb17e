#include "ado/schema/OwnRows.h"
#include "ado/sqlite/SqliteText.h"
#include <algorithm>
#include <iterator>

namespace ADODB {

namespace {

// --- Literals: what a text of each kind is made of. A null value under a family: it has no such thing.

constexpr DatabaseFamily kFamilies[] = {DatabaseFamily::SQLite, DatabaseFamily::PostgreSQL, DatabaseFamily::MySQL,
                                        DatabaseFamily::SQLServer, DatabaseFamily::Oracle};
constexpr size_t kHowMany = std::size(kFamilies);

constexpr char kName[] = "";       // a name: any text that the quotes hold
constexpr char kQuote[] = "quote"; // the identifier quote of the connection

// What a name without quotes cannot hold, and cannot begin with.
constexpr char kNotInNames[] = " !\"#%&'()*+,-./:;<=>?@[\\]^`{|}~";
constexpr const char *kNotAtTheStart[kHowMany] = {"0123456789$", "0123456789$", nullptr, "0123456789$",
                                                  "0123456789$_#"};

struct Literal
{
    int Number;
    const char *Name;
    const char *Values[kHowMany]; // in the order of kFamilies
    int Lengths[kHowMany] = {};   // characters of a name; 0 is no limit
};

constexpr Literal kLiterals[] = {
    {1, "DBLITERAL_BINARY_LITERAL", {"X'", "'\\x", "X'", "0x", nullptr}},
    {2, "DBLITERAL_CATALOG_NAME", {nullptr, kName, kName, kName, nullptr}, {0, 63, 64, 128, 0}},
    {3, "DBLITERAL_CATALOG_SEPARATOR", {nullptr, ".", ".", ".", nullptr}},
    {4, "DBLITERAL_CHAR_LITERAL", {"'", "'", "'", "'", "'"}},
    {5, "DBLITERAL_COLUMN_ALIAS", {kName, kName, kName, kName, kName}, {0, 63, 256, 128, 30}},
    {6, "DBLITERAL_COLUMN_NAME", {kName, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {7, "DBLITERAL_CORRELATION_NAME", {kName, kName, kName, kName, kName}, {0, 63, 256, 128, 30}},
    {8, "DBLITERAL_CURSOR_NAME", {nullptr, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {9, "DBLITERAL_ESCAPE_PERCENT_PREFIX", {nullptr, "\\", "\\", "[", nullptr}},
    {10, "DBLITERAL_ESCAPE_UNDERSCORE_PREFIX", {nullptr, "\\", "\\", "[", nullptr}},
    {11, "DBLITERAL_INDEX_NAME", {kName, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {12, "DBLITERAL_LIKE_PERCENT", {"%", "%", "%", "%", "%"}},
    {13, "DBLITERAL_LIKE_UNDERSCORE", {"_", "_", "_", "_", "_"}},
    {14, "DBLITERAL_PROCEDURE_NAME", {nullptr, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {15, "DBLITERAL_QUOTE_PREFIX", {kQuote, kQuote, kQuote, kQuote, kQuote}},
    {16, "DBLITERAL_SCHEMA_NAME", {kName, kName, nullptr, kName, kName}, {0, 63, 0, 128, 30}},
    {17, "DBLITERAL_TABLE_NAME", {kName, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {18, "DBLITERAL_TEXT_COMMAND", {kName, kName, kName, kName, kName}},
    {19, "DBLITERAL_USER_NAME", {nullptr, kName, kName, kName, kName}, {0, 63, 80, 128, 30}},
    {20, "DBLITERAL_VIEW_NAME", {kName, kName, kName, kName, kName}, {0, 63, 64, 128, 30}},
    {27, "DBLITERAL_SCHEMA_SEPARATOR", {".", ".", nullptr, ".", "."}},
    {28, "DBLITERAL_QUOTE_SUFFIX", {kQuote, kQuote, kQuote, kQuote, kQuote}},
    {29, "DBLITERAL_ESCAPE_PERCENT_SUFFIX", {nullptr, nullptr, nullptr, "]", nullptr}},
    {30, "DBLITERAL_ESCAPE_UNDERSCORE_SUFFIX", {nullptr, nullptr, nullptr, "]", nullptr}},
};

size_t NumberOf(DatabaseFamily family)
{
    return size_t(std::find(std::begin(kFamilies), std::end(kFamilies), family) - std::begin(kFamilies));
}

void WriteLiterals(Session &session, RowsetWriter &writer, const QStringList &restrictions)
{
    const size_t family = NumberOf(session.Family());
    for (const Literal &literal : kLiterals) {
        const char *value = literal.Values[family];
        writer.Put(u"LiteralName", Value(QString::fromLatin1(literal.Name)));
        writer.Put(u"Literal", Value(literal.Number));
        writer.Put(u"Supported", Value(value != nullptr));
        if (value == kQuote)
            writer.Put(u"LiteralValue", Value(session.IdentifierQuote()));
        else if (value && *value)
            writer.Put(u"LiteralValue", Value(QString::fromLatin1(value)));
        if (value && literal.Lengths[family] > 0)
            writer.Put(u"Maxlen", Value(literal.Lengths[family]));
        if (value == kName && literal.Number != 18) {
            writer.Put(u"InvalidChars", Value(QString::fromLatin1(kNotInNames)));
            if (kNotAtTheStart[family])
                writer.Put(u"InvalidStartingChars", Value(QString::fromLatin1(kNotAtTheStart[family])));
        }
        writer.EndRow(restrictions);
    }
}

} // namespace

bool HasOwnRows(DatabaseFamily family, SchemaEnum schema)
{
    switch (schema) {
    case adSchemaDBInfoLiterals:
        return NumberOf(family) < kHowMany;
    case adSchemaProviderTypes:
        return NumberOf(family) < kHowMany && family != DatabaseFamily::PostgreSQL; // whose catalogue lists them
    case adSchemaDBInfoKeywords:
        return family == DatabaseFamily::SQLite;
    default:
        return false;
    }
}

void WriteOwnRows(Session &session, RowsetWriter &writer, const QStringList &restrictions)
{
    switch (writer.Shape().Schema) {
    case adSchemaDBInfoLiterals:
        return WriteLiterals(session, writer, restrictions);
    case adSchemaProviderTypes:
        return WriteTypes(session.Family(), writer, restrictions);
    case adSchemaDBInfoKeywords:
        for (const QString &word : SqliteKeywords()) {
            writer.Put(u"Keyword", Value(word));
            writer.EndRow(restrictions);
        }
        return;
    default:
        RaiseNotCapable();
    }
}

} // namespace ADODB
