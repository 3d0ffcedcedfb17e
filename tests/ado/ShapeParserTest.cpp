// The reader of SHAPE commands: the forms that the program composes, the published grammar, and every kind of damage.
#include "ado/shape/ShapeParser.h"
#include "ado/Error.h"
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

QString Why(const QString &text)
{
    try {
        ParseShape(text);
    } catch (const Error &error) {
        EXPECT_EQ(error.SQLState, QStringLiteral("42000"));
        return error.Description;
    }
    return QStringLiteral("understood");
}

// The tree once more as text, so that a whole tree is compared at a glance.
QString Told(const ShapeCommand &command);

QString Told(const ShapeSource &source)
{
    const QString alias = source.Alias.isEmpty() ? QString() : QStringLiteral(" as ") + source.Alias;
    switch (source.Kind) {
    case ShapeSource::None:
        return QStringLiteral("-");
    case ShapeSource::Command:
        return QLatin1Char('{') + source.Text + QLatin1Char('}') + alias;
    case ShapeSource::Table:
        return QStringLiteral("table ") + source.Text + alias;
    case ShapeSource::Nested:
        return QLatin1Char('(') + Told(*source.Shape) + QLatin1Char(')') + alias;
    }
    return {};
}

QString Told(const ShapeField &field)
{
    QString text;
    switch (field.Kind) {
    case ShapeField::Chapter:
        text = QStringLiteral("chapter ") + Told(field.Source);
        for (const ShapePair &pair : field.Pairs)
            text += QStringLiteral(" <") + pair.Parent.Text + QLatin1Char('=') + pair.Child.Text + QLatin1Char('>');
        break;
    case ShapeField::Rows:
        text = QStringLiteral("rows ") + field.Path[0].Text;
        break;
    case ShapeField::Figure: {
        text = QStringLiteral("figure%1").arg(int(field.What));
        for (const ShapeName &name : field.Path)
            text += QLatin1Char('.') + name.Text;
        break;
    }
    case ShapeField::New:
        text = QStringLiteral("new %1/%2/%3/%4")
                   .arg(QString::number(int(field.Type)), QString::number(field.Size), QString::number(field.Precision),
                        QString::number(field.Scale));
        break;
    }
    return text + (field.Alias.isEmpty() ? QString() : QStringLiteral(" as ") + field.Alias);
}

QString Told(const ShapeCommand &command)
{
    QString text = Told(command.Source);
    text += command.Action == ShapeCommand::Append    ? QStringLiteral(" append")
            : command.Action == ShapeCommand::Compute ? QStringLiteral(" compute")
                                                      : QString();
    for (const ShapeField &field : command.Fields)
        text += QStringLiteral(" | ") + Told(field);
    for (const ShapeName &name : command.By)
        text += QStringLiteral(" by ") + name.Text;
    return text;
}

QString Tree(const QString &text)
{
    try {
        return Told(ParseShape(text));
    } catch (const Error &error) {
        return error.Description;
    }
}

} // namespace

TEST(ShapeParser, ReadsTheConnectedForm)
{
    EXPECT_EQ(Tree("SHAPE {select 1}"), "{select 1}");
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} RELATE x TO y)"), "{a} append | chapter {b} <x=y>");
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} RELATE x TO y) APPEND ({c} RELATE z TO w)"),
              "{a} append | chapter {b} <x=y> | chapter {c} <z=w>");
}

TEST(ShapeParser, ReadsTheDisconnectedForm)
{
    EXPECT_EQ(
        Tree("SHAPE APPEND  New adInteger as id\r\n, New adVarChar as Order Date\r\n, ((SHAPE APPEND  "
             "New adBigInt(8) as big\r\n\t, New adNumeric(10,2) as n\r\n) RELATE  Order Date TO big ) as ChildShp"),
        "- append | new 3/0/0/0 as id | new 200/0/0/0 as Order Date | chapter (- append | new 20/8/0/0 as big | new "
        "131/0/10/2 as n) <Order Date=big> as ChildShp");
}

TEST(ShapeParser, AComposedNameRunsToItsLineEnd)
{
    EXPECT_EQ(Tree("SHAPE APPEND New adDate as Price (USD), net\r\n, New adDate as b"),
              "- append | new 7/0/0/0 as Price (USD), net | new 7/0/0/0 as b");
    EXPECT_EQ(Tree("SHAPE APPEND New adDate as a, New adDate as b"), "- append | new 7/0/0/0 as a | new 7/0/0/0 as b");
    EXPECT_EQ(Tree("SHAPE APPEND New adDate as \"a, New\" , NEW adDate"),
              "- append | new 7/0/0/0 as a, New | new 7/0/0/0");
    EXPECT_EQ(Tree("SHAPE APPEND New adDate as a, ({b} RELATE a TO c)"),
              "- append | new 7/0/0/0 as a | chapter {b} <a=c>");
}

TEST(ShapeParser, ANameInRelateEndsAtToOrAtItsBracket)
{
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} RELATE Order No TO Order No (old))"),
              "{a} append | chapter {b} <Order No=Order No (old)>");
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} RELATE x, y TO z, [to] TO [a]]b] , c to d, e)"),
              "{a} append | chapter {b} <x, y=z> <to=a]b> <c=d, e>");
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} AS kids RELATE 'x' TO \"y\"\"z\") AS \"the kids\""),
              "{a} append | chapter {b} as kids <x=y\"z> as the kids");
    EXPECT_EQ(Tree("SHAPE {a} APPEND ({b} RELATE total TO tomorrow)"), "{a} append | chapter {b} <total=tomorrow>");
}

TEST(ShapeParser, ReadsFiguresGroupsAndTables)
{
    EXPECT_EQ(
        Tree("shape {a} append ({b} relate x to y) as kids, sum(kids.amount) as total, COUNT(kids), any(kids.g.n) z"),
        "{a} append | chapter {b} <x=y> as kids | figure0.kids.amount as total | figure4.kids | figure6.kids.g.n as z");
    EXPECT_EQ(Tree("SHAPE {a} AS r COMPUTE r, STDEV(r.x) AS d, AVG(r.[y z]) BY city, \"zip\""),
              "{a} as r compute | rows r | figure5.r.x as d | figure1.r.y z by city by zip");
    EXPECT_EQ(Tree("SHAPE {a} r COMPUTE r"), "{a} as r compute | rows r");
    EXPECT_EQ(Tree("SHAPE TABLE sales.\"order lines\" AS l"), "table sales.\"order lines\" as l");
    EXPECT_EQ(Tree("SHAPE (SHAPE {a} r COMPUTE r BY c) g COMPUTE g BY d"),
              "({a} as r compute | rows r by c) as g compute | rows g by d");
}

TEST(ShapeParser, BracesInTextsNamesAndCommentsAreNotTheCommands)
{
    for (const char *sql :
         {"select '}'", "select 'it''s }'", "select \"}\"", "select `}` from t", "select [}] from t",
          "select 1 -- }\r\n", "select /* } */ 1", "select {fn now()}, {d '2000-01-01'}", "select $$ } $$, $x$ } $x$",
          "select ARRAY['}', ']}']", "select a[1], '}'", "select 2 / 1 - 1"}) {
        const QString text = QString::fromLatin1(sql);
        EXPECT_EQ(Tree(QStringLiteral("SHAPE {") + text + QLatin1Char('}')),
                  QLatin1Char('{') + text + QLatin1Char('}'));
    }
}

TEST(ShapeParser, RefusesByLineAndColumn)
{
    const QString at = QStringLiteral("The shape command is not understood at line ");
    const std::pair<const char *, const char *> cases[] = {
        {"", "1, column 1: expected SHAPE, but the text ends."},
        {"select 1", "1, column 1: expected SHAPE, found \"select 1\"."},
        {"SHAPES {a}", "1, column 1: expected SHAPE, found \"SHAPES {a}\"."},
        {"SHAPE", "1, column 6: expected a statement in braces, TABLE or APPEND, but the text ends."},
        {"SHAPE {a\r\nb", "1, column 7: the statement that begins with this brace is not closed."},
        {"SHAPE {a}\r\n\r\n APPEND", "3, column 8: expected a relation in brackets, a figure (SUM, AVG, MIN, MAX, "
                                     "COUNT, STDEV, ANY) or NEW, but the text ends."},
        {"SHAPE APPEND  SQL ERROR, ((SHAPE", "1, column 15: expected a relation in brackets, a figure (SUM, AVG, MIN, "
                                             "MAX, COUNT, STDEV, ANY) or NEW, found \"SQL ERROR, ((SHAPE\"."},
        {"SHAPE APPEND  Critical Error", "1, column 15: expected a relation in brackets, a figure (SUM, AVG, MIN, MAX, "
                                         "COUNT, STDEV, ANY) or NEW, found \"Critical Error\"."},
        {"SHAPE {a} APPEND ({b}\n RELATE  `~DS1~` TO `~DS2~` ) as x",
         "2, column 10: \"`~DS1~`\" has not been replaced by a field."},
        {"SHAPE {a} APPEND ({b} RELATE x TO `~DS2~` )", "1, column 35: \"`~DS2~`\" has not been replaced by a field."},
        {"SHAPE {a} APPEND CALC(x + 1)", "1, column 18: CALC is not supported."},
        {"SHAPE {a} APPEND ({b} RELATE x TO PARAMETER 0)", "1, column 35: PARAMETER is not supported."},
        {"SHAPE {a} APPEND ({b})", "1, column 22: expected RELATE, found \")\"."},
        {"SHAPE {a} APPEND ({b} RELATE x)", "1, column 30: expected a field and TO behind RELATE, found \"x)\"."},
        {"SHAPE {a} APPEND ({b} RELATE x TO )", "1, column 35: expected a field of the child behind TO, found \")\"."},
        {"SHAPE {a} APPEND ({b} RELATE x TO y",
         "1, column 36: expected \")\" that closes the relation, but the text ends."},
        {"SHAPE {a} APPEND NEW adNothing", "1, column 22: \"adNothing\" is not the name of a type."},
        {"SHAPE {a} APPEND NEW adChar(x)", "1, column 29: expected a size, found \"x)\"."},
        {"SHAPE {a} AS \"x", "1, column 14: the name that begins here is not closed."},
        {"SHAPE {a} b c", "1, column 13: expected the end of the command, found \"c\"."},
        {"SHAPE {a} COMPUTE SUM(x BY", "1, column 25: expected \")\" that closes the figure, found \"BY\"."},
        {"SHAPE {a})", "1, column 10: expected the end of the command, found \")\"."},
    };
    for (const auto &[text, why] : cases)
        EXPECT_EQ(Why(QString::fromLatin1(text)), at + QLatin1String(why)) << text;
}

TEST(ShapeParser, EveryCutTextEndsInOneErrorOrATree)
{
    const QString whole = QStringLiteral("SHAPE {select '}' /* } */ from [a}]} AS m APPEND ((SHAPE {b} APPEND ({c} "
                                         "RELATE x y TO z)) AS k RELATE a TO b, c TO "
                                         "d) AS kids, SUM(kids.n) AS s, NEW adNumeric(10,2) AS \"q\"");
    ASSERT_EQ(Why(whole), "understood");
    int refused = 0;
    for (qsizetype length = 0; length < whole.size(); ++length)
        refused += Why(whole.left(length)) != QLatin1String("understood");
    EXPECT_GT(refused, whole.size() * 2 / 3); // a cut name may still be a name
}

TEST(ShapeParser, NestsAHundredLevelsAndNoMore)
{
    const auto nested = [](int levels) {
        QString text = QStringLiteral("SHAPE {a}");
        for (int i = 1; i < levels; ++i)
            text = QStringLiteral("SHAPE (") + text + QLatin1Char(')');
        return text;
    };
    EXPECT_EQ(Why(nested(ShapeDepthLimit)), "understood");
    EXPECT_TRUE(Why(nested(ShapeDepthLimit + 1)).contains("more than 100 levels are nested"));
    EXPECT_TRUE(Why(QStringLiteral("SHAPE (").repeated(1'000'000)).contains("more than 100 levels"));
    EXPECT_TRUE(Why(QStringLiteral("SHAPE {a}") + QString(1'000'000, QLatin1Char(')'))).contains("line 1, column 10"));
    EXPECT_NE(Why(QStringLiteral("SHAPE {a} APPEND ({b} RELATE ") + QString(1'000'000, QLatin1Char('('))),
              "understood");
}

TEST(ShapeParser, KnowsAShapeByItsFirstWord)
{
    EXPECT_TRUE(IsShapeCommand(" \r\n shape {a}"));
    EXPECT_FALSE(IsShapeCommand("shapes"));
    EXPECT_FALSE(IsShapeCommand("select shape"));
}
