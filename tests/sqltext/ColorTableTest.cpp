#include "sqltext/clsColorTable.h"

#include "tests/support/ExpectCases.h"

#include <QJsonArray>

namespace {

clsColorTable Table(const QJsonObject &args)
{
    clsColorTable table;
    for (const QJsonValue &cell : args[u"cells"].toArray())
        table.Add(cell.toArray().at(0).toString(), cell.toArray().at(1).toString());
    return table;
}

} // namespace

TEST(ColorTable, Cases)
{
    ExpectCases("color_table", [](const QJsonObject &args) -> QJsonValue {
        clsColorTable table = Table(args);
        const QString text = table.GetColorTableString();
        QJsonArray codes;
        for (const clsColorTable::Cell &cell : table.NewEnum())
            codes.append(cell->Code);
        return QJsonObject{{QStringLiteral("string"), text},
                           {QStringLiteral("codes"), codes},
                           {QStringLiteral("again"), table.GetColorTableString()},
                           {QStringLiteral("count"), table.Count()}};
    });
    ExpectCases("color_item", [](const QJsonObject &args) -> QJsonValue {
        clsColorTable table = Table(args);
        table.GetColorTableString();
        const clsColorTable::Cell cell = table.Item(args[u"key"].toString());
        if (!cell)
            return QJsonValue::Null;
        return QJsonObject{{QStringLiteral("key"), cell->Key},
                           {QStringLiteral("colorDef"), cell->ColorDef},
                           {QStringLiteral("code"), cell->Code}};
    });
}

TEST(ColorTable, KeepsOrderAndRefusesASecondKey)
{
    clsColorTable table;
    table.Add(QStringLiteral("a"), QStringLiteral("K"));
    table.Add(QStringLiteral("b"), QString());
    table.Add(QStringLiteral("c"), QString());
    EXPECT_THROW(table.Add(QStringLiteral("d"), QStringLiteral("k")), clsColorTable::DuplicateKey);
    EXPECT_EQ(table.Count(), 3);
    EXPECT_FALSE(table.Item(QString()));
    EXPECT_EQ(table.Item(QStringLiteral("k"))->Code, QString());
    table.Remove(QStringLiteral("unknown"));
    table.Remove(QStringLiteral("k"));
    ASSERT_EQ(table.Count(), 2);
    EXPECT_EQ((*table.begin())->ColorDef, QStringLiteral("b"));
}

TEST(ColorTable, ApplicationTableHasSixRows)
{
    InitColorTable();
    InitColorTable();
    EXPECT_EQ(gColorTable.Count(), 6);
    EXPECT_EQ(gColorTable.Item(QStringLiteral("error"))->Code, QStringLiteral("\\cf5 "));
    EXPECT_EQ(gColorTable.Item(QStringLiteral("KW"))->ColorDef, QStringLiteral("\\red125\\green145\\Blue195\\"));
    EXPECT_EQ(gColorTableString.count(u';'), 6);
}
