#include "visual/logic/MapTables.h"
#include "visual/logic/MapLook.h"
#include "visual/logic/MapScroll.h"

#include "lang/Text.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

const MapMeasures kMeasures{8000, 6000, 1935, 2300, 195};

struct Map : MapTables
{
    QStringList told;
    Map()
    {
        TableAdded = [this](const MapTable &table) { told += u'+' + table.Alias; };
        TableRemoved = [this](const QString &name, const QString &alias) { told += u'-' + name + u'/' + alias; };
    }
    int Add(const char *name, const QStringList &fields = {S("ID")})
    {
        const MapTable *table = AddTable(S(name), fields, kMeasures);
        return table ? table->Index : 0;
    }
};

QStringList ItemsOf(const MapTable *table)
{
    QStringList items;
    for (const MapItem &item : table->Items)
        items += item.Text;
    return items;
}

} // namespace

TEST(MapTables, BringNoTableAndNoEventWithoutANameOrAField)
{
    Map map;
    EXPECT_EQ(map.Add(""), 0);
    EXPECT_EQ(map.Add("Orders", {}), 0);
    EXPECT_TRUE(map.told.isEmpty());
    EXPECT_EQ(map.UBound(), 0);
    EXPECT_EQ(map.CurrentTable, 0);
    EXPECT_TRUE(map.Stack().empty());
}

TEST(MapTables, ShowTheStarOnlyWhenToldAndCountItNotAsAField)
{
    Map map;
    map.Add("A", {S("x"), S("y")});
    EXPECT_EQ(ItemsOf(map.At(1)), (QStringList{S("*"), S("x"), S("y")}));
    EXPECT_DOUBLE_EQ(map.At(1)->Height, 195 * 1.3 * 5);
    map.ShowStar = false;
    map.Add("B", {S("x"), S("y")});
    EXPECT_EQ(ItemsOf(map.At(2)), (QStringList{S("x"), S("y")}));
    EXPECT_DOUBLE_EQ(map.At(2)->Height, 195 * 1.3 * 5);
    EXPECT_EQ(map.At(2)->Width, kMeasures.TemplateWidth);
}

TEST(MapTables, ShowTheFieldsBeforeANameThatComesTwice)
{
    Map map;
    map.Add("A", {S("x"), S("X"), S("y"), S("x"), S("z")});
    EXPECT_EQ(ItemsOf(map.At(1)), (QStringList{S("*"), S("x"), S("X"), S("y")}));
    EXPECT_DOUBLE_EQ(map.At(1)->Height, 195 * 1.3 * 6);
    EXPECT_EQ(map.Add("B", {S("*"), S("z")}), 0); // the first field is there already: the star
}

TEST(MapTables, NarrowTheColumnFromElevenItemsOn)
{
    Map map;
    QStringList fields;
    for (int i = 0; i < 9; ++i)
        fields += QString::number(i);
    map.Add("Ten", fields);
    fields += S("last");
    map.Add("Eleven", fields);
    EXPECT_EQ(map.At(1)->ColumnWidth, 1935);
    EXPECT_EQ(map.At(2)->ColumnWidth, 1934.5);
}

TEST(MapTables, GiveAliasesByTheCountAndNotByTheHistory)
{
    Map map;
    for (int i = 0; i < 3; ++i)
        map.Add("Orders");
    EXPECT_EQ(map.GetTableList(), S("Orders ,Orders_Copy1 ,Orders_Copy2"));
    map.RemoveTable(1);
    EXPECT_EQ(map.Add("Orders"), 4);
    EXPECT_EQ(map.At(4)->Alias, S("Orders_Copy2")); // given a second time
    map.RemoveTable(4);
    EXPECT_EQ(map.Add("Orders"), 4); // no higher one: the number is used again
    map.RemoveTable(2);
    map.RemoveTable(3);
    map.RemoveTable(4);
    map.Add("Orders");
    EXPECT_EQ(map.GetTableList(), S("Orders"));
    EXPECT_EQ(map.GetTableName(S("orders")), S("orders"));
}

TEST(MapTables, QuoteAliasesInTheListWithABlankBeforeTheComma)
{
    Map map;
    map.Add("Order Details");
    map.Add("select 1");
    map.Add("T");
    EXPECT_EQ(map.GetTableList(), S("[Order Details] ,(select 1) ,T"));
    EXPECT_EQ(map.GetRealName(S("T")), S("T"));
    EXPECT_EQ(map.GetRealName(S("nobody")), S("nobody"));
}

TEST(MapTables, TellOfEachTableThatComesAndGoes)
{
    Map map;
    map.Add("A");
    map.Add("A");
    map.UnloadTable();
    EXPECT_EQ(map.told, (QStringList{S("+A"), S("+A_Copy1"), S("-A/A_Copy1")}));
    map.UnloadTable(); // none is current
    EXPECT_EQ(map.told.size(), 3);
    map.ClearMap(); // tells nothing
    EXPECT_EQ(map.told.size(), 3);
    EXPECT_EQ(map.UBound(), 0);
}

TEST(MapTables, SearchAnItemPastATableOfTheSameAlias)
{
    Map map;
    map.Add("A", {S("x")});
    map.Add("A", {S("y")});
    map.At(2)->Alias = S("A");
    EXPECT_EQ(map.SetItemCheck(S("A"), S("y"), true).Table, 2);
    EXPECT_TRUE(map.At(2)->Items[1].Checked);
    EXPECT_EQ(map.SetItemCheck(S("A"), S("z"), true).Table, 0);
    EXPECT_EQ(map.SetItemCheck(S("a"), S("x"), true).Table, 0);
    map.SetItemCheck(S("A"), S("y"), false);
    EXPECT_FALSE(map.At(2)->Items[1].Checked);
}

TEST(MapTables, StackTheNewOneOnTopAndMoveTheOthersByWish)
{
    Map map;
    for (const char *name : {"A", "B", "C"})
        map.Add(name);
    EXPECT_EQ(map.Stack(), (std::vector<int>{1, 2, 3}));
    map.BringToTop(1);
    EXPECT_EQ(map.Stack(), (std::vector<int>{2, 3, 1}));
    map.SendToBottom(1);
    EXPECT_EQ(map.Stack(), (std::vector<int>{1, 2, 3}));
    map.BringToTop(9);
    map.SendToBottom(9);
    map.RemoveTable(2);
    EXPECT_EQ(map.Stack(), (std::vector<int>{1, 3}));
}

TEST(MapTables, ArePlacedByTheProgramsOneSequence)
{
    // Whatever has been drawn from the sequence before: two numbers a table, the left one first, none for a table that
    // cannot be read.
    Map map;
    map.Add("nothing", {});
    map.Add("A");
    map.Add("B");
    const double left1 = map.At(1)->Left / (8000 - 1935), top1 = map.At(1)->Top / (6000 - 2300);
    const double left2 = map.At(2)->Left / (8000 - 1935), top2 = map.At(2)->Top / (6000 - 2300);
    const auto next = [](double number) {
        const auto state = quint32(number * 16777216.0 + 0.5);
        return ((state * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu) / 16777216.0;
    };
    EXPECT_NEAR(top1, next(left1), 1e-7);
    EXPECT_NEAR(left2, next(top1), 1e-7);
    EXPECT_NEAR(top2, next(left2), 1e-7);
    EXPECT_NEAR(lang::Rnd(), next(top2), 1e-7);
}

TEST(MapTables, CarryTheOneWhoseHeadingWasPressed)
{
    Map map;
    map.Add("A");
    map.Add("B");
    map.StartCarry(1);
    EXPECT_EQ(map.CarriedTable, 1);
    EXPECT_EQ(map.CurrentTable, 1);
    EXPECT_EQ(map.Stack().back(), 1);
    const double other = map.At(2)->Left;
    map.MoveCarriedOver(2, 30, 40);
    EXPECT_DOUBLE_EQ(map.At(1)->Left, other + 30);
    EXPECT_DOUBLE_EQ(map.At(1)->Top, map.At(2)->Top + 40);
    map.MoveCarriedOver(1, 5, 0);
    EXPECT_DOUBLE_EQ(map.At(1)->Left, other + 35);
    map.MoveCarried(300, 400);
    EXPECT_DOUBLE_EQ(map.At(1)->Left, 300.1);
    EXPECT_DOUBLE_EQ(map.At(1)->Top, 400.1);
    EXPECT_EQ(map.At(2)->Left, other);
    map.EndCarry();
    map.MoveCarried(0, 0);
    EXPECT_DOUBLE_EQ(map.At(1)->Left, 300.1);
    map.StartCarry(7); // no such table
    EXPECT_EQ(map.CarriedTable, 0);
    map.StartCarry(2);
    map.RemoveTable(2);
    EXPECT_EQ(map.CarriedTable, 0);
}

TEST(MapTables, KeepTheirCountsOverARandomWalk)
{
    Map map;
    std::mt19937 random(5);
    const char *names[] = {"A", "B", "C d"};
    for (int step = 0; step < 10000; ++step) {
        const int index = int(random() % unsigned(map.UBound() + 2));
        switch (random() % 7) {
        case 0:
        case 1:
            map.Add(names[random() % 3], random() % 5 ? QStringList{S("ID")} : QStringList());
            break;
        case 2:
        case 3:
            map.RemoveTable(index);
            break;
        case 4:
            map.BringToTop(index);
            break;
        case 5:
            map.SendToBottom(index);
            break;
        default:
            map.StartCarry(index);
            map.MoveCarried(index, index);
        }
        if (map.UBound() > 40)
            map.ClearMap();
        const std::vector<int> numbers = map.Numbers();
        std::vector<int> stack = map.Stack();
        std::sort(stack.begin(), stack.end());
        ASSERT_EQ(stack, numbers);
        ASSERT_TRUE(!map.CurrentTable || map.At(map.CurrentTable));
        ASSERT_TRUE(!map.CarriedTable || map.At(map.CarriedTable));
    }
}

TEST(MapScroll, StartsTheTimersAtTheMarginItself)
{
    EXPECT_EQ(EdgesAt(500, 3000, 8000, 6000).LeftRight, 'L');
    EXPECT_EQ(EdgesAt(500.1, 3000, 8000, 6000).LeftRight, 0);
    EXPECT_EQ(EdgesAt(7500, 3000, 8000, 6000).LeftRight, 'R');
    EXPECT_EQ(EdgesAt(7499.9, 3000, 8000, 6000).LeftRight, 0);
    EXPECT_EQ(EdgesAt(4000, 500, 8000, 6000).TopBottom, 'T');
    EXPECT_EQ(EdgesAt(4000, 5500, 8000, 6000).TopBottom, 'B');
    EXPECT_EQ(EdgesAt(4000, 3000, 8000, 6000).TopBottom, 0);
}

TEST(MapScroll, LandsOnTheEndAndStops)
{
    MapScrollBar bar{true, 95, 100, 10, {}};
    EXPECT_TRUE(ScrollTick(bar, true));
    EXPECT_EQ(bar.Value, 100);
    EXPECT_FALSE(ScrollTick(bar, true));
    bar.Value = 4;
    EXPECT_TRUE(ScrollTick(bar, false));
    EXPECT_EQ(bar.Value, 0);
    EXPECT_FALSE(ScrollTick(bar, false));
    bar = {true, 120, 100, 10, {}}; // past its end
    EXPECT_FALSE(ScrollTick(bar, true));
    EXPECT_EQ(bar.Value, 120);
}

TEST(MapScroll, BringsBackWhatLiesLeftOfTheSurface)
{
    // A table dragged over the left edge used to go further away with the bar: its value stood at 0, as far left as the
    // bar goes.
    MapTables tables;
    tables.AddTable(S("A"), {S("x")}, {});
    MapTable &table = *tables.At(1);
    table.Left = -700.5;
    table.Width = 1000;
    const MapTable *all[] = {&table};
    const MapExtent extent = MeasureTables(8000, 6000, all);
    EXPECT_EQ(extent.Ranges.X, 700);
    MapScrollBar bar;
    FitBar(bar, extent.Ranges.X, false);
    SettleBar(bar, extent.MinLeft);
    EXPECT_EQ(bar.Value, 700);
    EXPECT_EQ(ShiftOf(bar), 0); // settling moves nothing
    while (ScrollTick(bar, false))
        tables.Shift(ShiftOf(bar), 0);
    EXPECT_DOUBLE_EQ(table.Left, -0.5);
}

TEST(MapScroll, TakesAStepOfOneAtLeast)
{
    // The tenth of a small range is nothing: the timer stood still and never ended.
    MapScrollBar bar;
    FitBar(bar, 4, false);
    EXPECT_EQ(bar.LargeChange, 1);
    FitBar(bar, 25, false);
    EXPECT_EQ(bar.LargeChange, 2); // half goes to the even neighbour
    FitBar(bar, 35, true);
    EXPECT_EQ(bar.LargeChange, 4);
    FitBar(bar, 9, true);
    EXPECT_EQ(bar.LargeChange, 4);
    EXPECT_EQ(bar.Max, 9);
    FitBar(bar, 0, true);
    EXPECT_FALSE(bar.Enabled);
    EXPECT_EQ(bar.Tag, S("0"));
    EXPECT_EQ(bar.Max, 9);
}

TEST(MapLook, ReachesTheLayersToComeOnly)
{
    MapLook look;
    const SkinColours skin{1, 2, 3, 4, 5};
    look.MakeColor(skin);
    EXPECT_EQ(look.TableBack, 1);
    EXPECT_EQ(look.TableFore, 2);
    EXPECT_EQ(look.SurfaceBack, 3);
    const LayerLook standing = look.Template;
    look.Template.Fill = 9;
    look.MakeColor(skin);
    EXPECT_EQ(look.Template.Fill, 9);
    look.MakeGray();
    EXPECT_EQ(look.TableBack, 0xFFFFFF);
    EXPECT_EQ(look.SurfaceBack, 0xFFFFFF);
    EXPECT_EQ(look.Template.Back, 0xFFFFFF);
    EXPECT_EQ(look.Template.Fore, 0);
    EXPECT_EQ(look.Template.Fill, 0);
    EXPECT_EQ(standing.Back, 4);
}

// The alias of a copy is no table's name, but it must stay one name: that of a hostile table ended the statement.
TEST(MapTables, WriteACopysAliasAsOneName)
{
    MapTables tables;
    tables.WriteAlias = [](const QString &alias) { return u'"' + alias + u'"'; };
    const QString hostile = QStringLiteral("t;DELETE/**/FROM/**/x;--");
    for (int i = 0; i < 2; ++i)
        tables.AddTable(hostile, {QStringLiteral("ID")}, {}, u'"' + hostile + u'"');
    EXPECT_EQ(tables.GetTableList(),
              QStringLiteral("\"t;DELETE/**/FROM/**/x;--\" ,\"t;DELETE/**/FROM/**/x;--_Copy1\""));
    EXPECT_EQ(tables.StatementName(hostile + QStringLiteral("_Copy1")),
              QStringLiteral("\"t;DELETE/**/FROM/**/x;--_Copy1\""));
    EXPECT_EQ(tables.SourceName(2), QStringLiteral("\"t;DELETE/**/FROM/**/x;--\""));
    EXPECT_EQ(tables.SourceName(3), QString());
}
