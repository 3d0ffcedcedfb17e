#include "ado/schema/OwnRows.h"

#include "ado/DriverList.h"
#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"

namespace ADODB {

namespace {

// What a name without quotes cannot hold.
constexpr char kNotInNames[] = " !\"#%&'()*+,-./:;<=>?@[\\]^`{|}~";
constexpr int kTextCommand = 18; // any text, and no name

constexpr struct
{
    int Number;
    const char *Name;
} kLiterals[] = {
    {1, "DBLITERAL_BINARY_LITERAL"},
    {2, "DBLITERAL_CATALOG_NAME"},
    {3, "DBLITERAL_CATALOG_SEPARATOR"},
    {4, "DBLITERAL_CHAR_LITERAL"},
    {5, "DBLITERAL_COLUMN_ALIAS"},
    {6, "DBLITERAL_COLUMN_NAME"},
    {7, "DBLITERAL_CORRELATION_NAME"},
    {8, "DBLITERAL_CURSOR_NAME"},
    {9, "DBLITERAL_ESCAPE_PERCENT_PREFIX"},
    {10, "DBLITERAL_ESCAPE_UNDERSCORE_PREFIX"},
    {11, "DBLITERAL_INDEX_NAME"},
    {12, "DBLITERAL_LIKE_PERCENT"},
    {13, "DBLITERAL_LIKE_UNDERSCORE"},
    {14, "DBLITERAL_PROCEDURE_NAME"},
    {15, "DBLITERAL_QUOTE_PREFIX"},
    {16, "DBLITERAL_SCHEMA_NAME"},
    {17, "DBLITERAL_TABLE_NAME"},
    {18, "DBLITERAL_TEXT_COMMAND"},
    {19, "DBLITERAL_USER_NAME"},
    {20, "DBLITERAL_VIEW_NAME"},
    {27, "DBLITERAL_SCHEMA_SEPARATOR"},
    {28, "DBLITERAL_QUOTE_SUFFIX"},
    {29, "DBLITERAL_ESCAPE_PERCENT_SUFFIX"},
    {30, "DBLITERAL_ESCAPE_UNDERSCORE_SUFFIX"},
};

const Literal *Find(const Family &family, int number)
{
    for (const Literal &literal : family.Catalogue.Literals)
        if (literal.Number == number)
            return &literal;
    return nullptr;
}

void WriteLiterals(Session &session, RowsetWriter &writer, const QStringList &restrictions)
{
    const Family &family = session.Family();
    for (const auto &row : kLiterals) {
        const Literal *literal = Find(family, row.Number);
        writer.Put(u"LiteralName", Value(QString::fromLatin1(row.Name)));
        writer.Put(u"Literal", Value(row.Number));
        writer.Put(u"Supported", Value(literal != nullptr));
        if (literal && literal->Value == kLiteralQuote)
            writer.Put(u"LiteralValue", Value(session.IdentifierQuote()));
        else if (literal && *literal->Value)
            writer.Put(u"LiteralValue", Value(QString::fromLatin1(literal->Value)));
        if (literal && literal->Length > 0)
            writer.Put(u"Maxlen", Value(literal->Length));
        if (literal && literal->Value == kLiteralName && row.Number != kTextCommand) {
            writer.Put(u"InvalidChars", Value(QString::fromLatin1(kNotInNames)));
            if (const char *signs = family.Catalogue.NotAtTheStart)
                writer.Put(u"InvalidStartingChars", Value(QString::fromLatin1(signs)));
        }
        writer.EndRow(restrictions);
    }
}

} // namespace

bool HasOwnRows(const Family &family, SchemaEnum schema)
{
    switch (schema) {
    case adSchemaDBInfoLiterals:
        return !family.Catalogue.Literals.empty();
    case adSchemaProviderTypes:
        return !family.Catalogue.Types.empty();
    case adSchemaDBInfoKeywords:
        return !LibraryKeywords(family).isEmpty();
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
        for (const QString &word : LibraryKeywords(session.Family())) {
            writer.Put(u"Keyword", Value(word));
            writer.EndRow(restrictions);
        }
        return;
    default:
        RaiseNotCapable();
    }
}

} // namespace ADODB
