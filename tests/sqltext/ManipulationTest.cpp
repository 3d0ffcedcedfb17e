#include "sqltext/modSQLMaipulation.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <QJsonArray>

namespace {

std::vector<FieldShape> Fields(const QJsonArray &rows)
{
    std::vector<FieldShape> fields;
    for (const QJsonValue &value : rows) {
        const QJsonArray row = value.toArray();
        fields.push_back(
            {row.at(0).toString(), row.at(1).toInt(), row.at(2).toInteger(), row.at(3).toInt(), row.at(4).toInt()});
    }
    return fields;
}

} // namespace

TEST(DataTypes, Cases)
{
    ExpectCases("type_table", [](const QJsonObject &) -> QJsonValue {
        QJsonArray rows;
        for (const clsDataType &type : gDataTypes) {
            rows.append(QJsonArray{type.Number, QString::fromUtf16(type.LongName), QString::fromUtf16(type.ShortName),
                                   type.HasSize, type.HasPrecision, QString(QChar(type.Category))});
        }
        return rows;
    });
    ExpectCases("type_name", [](const QJsonObject &args) -> QJsonValue {
        return GetTypeName(args[u"number"].toInt(), args[u"long"].toBool());
    });
    ExpectCases("is_sized", [](const QJsonObject &args) -> QJsonValue { return IsSizedType(args[u"number"].toInt()); });
    ExpectCases("has_precision",
                [](const QJsonObject &args) -> QJsonValue { return HasPrecisionType(args[u"number"].toInt()); });
}

TEST(Manipulation, Cases)
{
    ExpectCases("quote_name",
                [](const QJsonObject &args) -> QJsonValue { return QuoteName(args[u"name"].toString()); });
    ExpectCases("break_token", [](const QJsonObject &args) -> QJsonValue {
        return BreakToken(args[u"text"].toString(), args[u"token"].toString());
    });
    ExpectCases("break_on_token", [](const QJsonObject &args) -> QJsonValue {
        return BreakOnToken(args[u"text"].toString(), args[u"token"].toString());
    });
    ExpectCases("format_statement",
                [](const QJsonObject &args) -> QJsonValue { return FormatStatement(args[u"sql"].toString()); });
    ExpectCases("create_table", [](const QJsonObject &args) -> QJsonValue {
        return CreateTableStatement(args[u"table"].toString(), Fields(args[u"fields"].toArray()));
    });
}

TEST(Manipulation, QuotesOnlyNamesWithABlank)
{
    EXPECT_EQ(QuoteName(S("order details")), S("[order details]"));
    EXPECT_EQ(QuoteName(S("[order details]")), S("[order details]"));
    EXPECT_EQ(QuoteName(S("select [a b]")), S("select [a b]"));
    EXPECT_EQ(QuoteName(S("a\tb")), S("a\tb"));
}

TEST(Manipulation, EmptyTokenChangesNothing)
{
    EXPECT_EQ(BreakToken(S("a b"), S("")), S("a b"));
    EXPECT_EQ(BreakOnToken(S("a b"), S("")), S("a b"));
}

TEST(Manipulation, FormatsEachClauseOnItsLine)
{
    EXPECT_EQ(FormatStatement(S("select a from t where b=1 and c=2")),
              S("  SELECT a\r\n FROM t\r\n WHERE b=1\r\n AND c=2"));
    EXPECT_EQ(FormatStatement(S("select a\r\n\r\nselect b")), S("  SELECT a\r\n\r\n  SELECT b"));
    EXPECT_EQ(FormatStatement(S("delete from t\r\n where x")), S("  DELETE\r\n FROM t\r\n WHERE x"));
    EXPECT_EQ(FormatStatement(S("select * from t")), S("  SELECT * FROM t"));
    EXPECT_EQ(FormatStatement(S("select 'x' and y")), S("  SELECT 'x' AND y"));
    // Line ends go without a blank in their place.
    EXPECT_EQ(FormatStatement(S("select a\r\nfrom t")), S("  SELECT afrom t"));
    // A comment takes the line below into it, up to the next clause word.
    EXPECT_EQ(FormatStatement(S("-- note\r\nselect a")), S("  -- note\r\nSELECT a"));
    EXPECT_EQ(FormatStatement(S("-- note\r\nx y")), S("  -- notex y"));
}

// Clause words within a name in quotes were parted from it, so the statement named another table.
TEST(Manipulation, ANameKeepsItsClauseWords)
{
    const QString name = S("\"a from b\""), plain = S("[Order Details]");
    EXPECT_FALSE(FormatStatement(S("select * from ") + name).contains(name));
    EXPECT_EQ(FormatStatementKeeping(S("select * from ") + name + S(" where x"), {name}),
              S("  SELECT * FROM ") + name + S("\r\n WHERE x"));
    EXPECT_EQ(FormatStatementKeeping(S("select \"x or y\", z from ") + name, {name, S("\"x or y\"")}),
              S("  SELECT \"x or y\", z\r\n FROM ") + name);
    EXPECT_EQ(FormatStatementKeeping(S(" select * from ") + plain, {plain}),
              FormatStatement(S(" select * from ") + plain));
}

TEST(Manipulation, ALengthThatNobodyKnowsIsLeftOut)
{
    EXPECT_EQ(FieldDefinition({S("a"), 200, -1, 0, 0}), S("\ta VarChar"));
    EXPECT_EQ(FieldDefinition({S("a"), 200, 30, 0, 0}), S("\ta VarChar(30)"));
    EXPECT_EQ(FieldDefinition({S("a;b c"), 3, 4, 0, 0, S("\"a;b c\"")}), S("\t\"a;b c\" Integer(4)"));
}
