// The table map by mouse: tables come, are carried, scrolled and removed.

#include "controls/Twips.h"
#include "tests/visual/windows/MapFixture.h"
#include <QMenu>
#include <QScrollBar>
#include <QTimer>

namespace {

class TableMap : public MapTest
{
};

QStringList Texts(const MapTable *table)
{
    QStringList texts;
    for (const MapItem &item : table->Items)
        texts << item.Text;
    return texts;
}

} // namespace

TEST_F(TableMap, ShowsTheFieldsBehindAStarAndTellsOfTheTable)
{
    Show();
    QStringList told;
    QObject::connect(map.get(), &ucTableMap::TableAdded, [&](const MapTable &table) { told << table.Alias; });
    const MapTable *table = map->AddTable("Items");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(Texts(table), QStringList({"*", "ID", "OrderID", "Price"}));
    EXPECT_EQ(map->CurrentTable(), 1);
    map->ShowStar = false;
    EXPECT_EQ(Texts(map->AddTable("Items")), QStringList({"ID", "OrderID", "Price"}));
    EXPECT_EQ(told, QStringList({"Items", "Items_Copy1"}));
    EXPECT_EQ(map->GetTableList(), "Items ,Items_Copy1");
    EXPECT_EQ(map->GetRealName("Items_Copy1"), "Items");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(TableMap, BringsNoBoxAndNoMessageForWhatCannotBeRead)
{
    gConn->Execute("CREATE VIEW broken AS SELECT gone FROM Orders");
    Show();
    QSignalSpy added(map.get(), &ucTableMap::TableAdded);
    EXPECT_EQ(map->AddTable("nowhere"), nullptr);
    EXPECT_EQ(map->AddTable("broken"), nullptr);
    EXPECT_EQ(map->AddTable(""), nullptr);
    gConn.reset();
    EXPECT_EQ(map->AddTable("Orders"), nullptr);
    EXPECT_EQ(added.count(), 0);
    EXPECT_TRUE(map->Tables().Numbers().empty());
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(TableMap, ReachesTheVeryTableWhateverItsName)
{
    const QString longName = QString(200, 'n');
    const QStringList names = {"a\"b]c'd", "Order Details", "select", longName, QString::fromUtf8("שלום")};
    for (const QString &name : names)
        gConn->Execute("CREATE TABLE \"" + QString(name).replace('"', "\"\"") + "\" (x int)");
    Show();
    for (const QString &name : names) {
        ASSERT_NE(map->AddTable(name), nullptr) << name;
        EXPECT_EQ(map->lvTable(map->CurrentTable())->Alias, name);
    }
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM " + map->GetTableList())) << map->GetTableList();
    EXPECT_EQ(map->StatementName("Order Details"), "[Order Details]");
}

TEST_F(TableMap, CarriesATableByItsHeadingAndLeavesItWhereItIsReleased)
{
    Show({"Orders", "Items"});
    Drag(Item(1, 2), Item(2, 3));
    ASSERT_NE(map->PF(1), nullptr);
    EXPECT_FALSE(map->PF(1)->IsEmpty());
    Send(QEvent::MouseButtonPress, Heading(1));
    EXPECT_EQ(map->Tables().CarriedTable, 1);
    EXPECT_EQ(map->Tables().Stack().back(), 1);
    EXPECT_TRUE(map->PF(1)->IsEmpty()); // blank meanwhile
    Send(QEvent::MouseMove, Heading(1) + QPoint(2, 1));
    EXPECT_EQ(map->TableRect(1).topLeft(), QPoint(40, 40)); // a press that trembles carries nothing
    Send(QEvent::MouseMove, {300, 200});
    EXPECT_DOUBLE_EQ(map->lvTable(1)->Left, 4500.1);
    EXPECT_DOUBLE_EQ(map->lvTable(1)->Top, 3000.1);
    Send(QEvent::MouseButtonRelease, {300, 200});
    EXPECT_EQ(map->Tables().CarriedTable, 0);
    EXPECT_FALSE(map->PF(1)->IsEmpty());
    Send(QEvent::MouseMove, {350, 250});
    EXPECT_DOUBLE_EQ(map->lvTable(1)->Left, 4500.1);
}

TEST_F(TableMap, GivesACarriedTableBackOnEscape)
{
    Show({"Orders"});
    Send(QEvent::MouseButtonPress, Heading(1));
    Send(QEvent::MouseMove, {300, 200});
    Key(Qt::Key_Tab); // waits for the button
    Key(Qt::Key_Escape);
    EXPECT_EQ(map->TableRect(1).topLeft(), QPoint(40, 40));
    EXPECT_EQ(map->Tables().CarriedTable, 0);
    Send(QEvent::MouseMove, {310, 210});
    Send(QEvent::MouseButtonRelease, {310, 210});
    EXPECT_EQ(map->TableRect(1).topLeft(), QPoint(40, 40));
}

TEST_F(TableMap, ScrollsByItselfWhileATableIsCarriedToAnEdge)
{
    Show({"Orders"});
    const int width = ToTwips(map->Hwnd()->width());
    Send(QEvent::MouseButtonPress, Heading(1));
    Send(QEvent::MouseMove, {34, 300}); // 510 twips
    EXPECT_FALSE(map->tmrAutoScrollLR->isActive());
    Send(QEvent::MouseMove, {33, 300}); // 495
    EXPECT_TRUE(map->tmrAutoScrollLR->isActive());
    EXPECT_EQ(Tag(map->tmrAutoScrollLR), "L");
    EXPECT_FALSE(map->tmrAutoScrollTB->isActive());
    Send(QEvent::MouseMove, {(width - 500) / 15 + 1, 10});
    EXPECT_EQ(Tag(map->tmrAutoScrollLR), "R");
    EXPECT_EQ(Tag(map->tmrAutoScrollTB), "T");
    EXPECT_TRUE(Until([&] { return !map->tmrAutoScrollLR->isActive(); })); // nothing to scroll: it goes off
    Send(QEvent::MouseButtonRelease, {400, 300});
    EXPECT_FALSE(map->tmrAutoScrollTB->isActive());
    EXPECT_EQ(map->tmrAutoScrollLR->interval(), 100);
}

TEST_F(TableMap, StepsToTheEndOfTheBarWhileItScrollsByItself)
{
    Show({"Orders", "Items"});
    PutAt(2, {880, 300}); // hangs over the right edge
    ASSERT_TRUE(map->HScroll1->isEnabled());
    const int most = map->HScroll1->maximum();
    const double before = map->lvTable(2)->Left;
    Send(QEvent::MouseButtonPress, Heading(1));
    Send(QEvent::MouseMove, {map->Hwnd()->width() - 5, 300});
    EXPECT_TRUE(Until([&] { return !map->tmrAutoScrollLR->isActive(); }));
    EXPECT_EQ(map->HScroll1->value(), most);
    EXPECT_NEAR(map->lvTable(2)->Left, before - most, 0.01);
    EXPECT_EQ(Tag(map->HScroll1), QString::number(most));
    Key(Qt::Key_Escape); // to its place, which has gone along
    EXPECT_NEAR(map->TableRect(1).left(), 40 - most / 15.0, 1);
}

TEST_F(TableMap, BringsBackWhatWasCarriedOffTheLeftEdge)
{
    Show({"Orders"});
    PutAt(1, {-60, 40});
    ASSERT_TRUE(map->HScroll1->isEnabled());
    EXPECT_EQ(map->HScroll1->value(), map->HScroll1->maximum());
    map->HScroll1->setValue(0);
    EXPECT_NEAR(map->lvTable(1)->Left, 0, 1);
    EXPECT_EQ(Tag(map->HScroll1), "0");
    map->resize(880, 600);
    EXPECT_FALSE(map->HScroll1->isEnabled());
}

TEST_F(TableMap, RelaysTheMouseOfItsGround)
{
    Show({"Orders"});
    QSignalSpy down(map.get(), &ucTableMap::MouseDown), up(map.get(), &ucTableMap::MouseUp),
        moved(map.get(), &ucTableMap::MouseMove);
    Send(QEvent::MouseButtonPress, {500, 400}, Qt::RightButton, Qt::ControlModifier);
    EXPECT_EQ(down.takeLast(), QVariantList({2, 2, 7500.0, 6000.0}));
    Send(QEvent::MouseButtonRelease, {510, 400}, Qt::RightButton);
    EXPECT_EQ(up.takeLast(), QVariantList({2, 0, 7650.0, 6000.0, false}));
    Send(QEvent::MouseMove, {520, 400});
    EXPECT_EQ(moved.takeLast().at(2), 7800.0);
    Click(Item(1, 2));
    EXPECT_EQ(down.count(), 0);
    ASSERT_EQ(up.count(), 1);
    EXPECT_EQ(up.takeLast().at(4), true);
    Click(Heading(1)); // the ground takes the mouse while a table is carried
    EXPECT_EQ(up.takeLast().at(4), false);
}

TEST_F(TableMap, ChecksAndSelectsByMouse)
{
    Show({"Orders", "Items"});
    QStringList told;
    QObject::connect(map.get(), &ucTableMap::TableClicked, [&](const MapTable &table) { told << table.Alias; });
    Click(Check(1, 2));
    EXPECT_TRUE(map->lvTable(1)->Items[1].Checked);
    EXPECT_EQ(map->CurrentTable(), 1);
    EXPECT_EQ(map->Tables().Stack().back(), 1);
    Click(Check(1, 2));
    EXPECT_FALSE(map->lvTable(1)->Items[1].Checked);
    Click(Item(2, 3));
    EXPECT_EQ(map->lvTable(2)->Selected, 3);
    EXPECT_FALSE(map->lvTable(2)->Items[2].Checked);
    EXPECT_EQ(told, QStringList({"Orders", "Orders", "Items"}));
    map->AllowCheckBoxes(false);
    Click(Check(1, 2));
    EXPECT_FALSE(map->lvTable(1)->Items[1].Checked);
    map->SetItemCheck("Items", "Price", true);
    EXPECT_TRUE(map->lvTable(2)->Items[3].Checked);
}

TEST_F(TableMap, PopsUpTheMenuOfATable)
{
    Show({"Orders", "Items", "Orders"});
    Drag(Item(1, 2), Item(2, 3));
    Drag(Item(3, 2), Item(2, 3));
    ASSERT_EQ(map->Joins().Rows().size(), 2u);
    QSignalSpy up(map.get(), &ucTableMap::MouseUp), removed(map.get(), &ucTableMap::TableRemoved);
    Click(Item(3, 1), Qt::RightButton);
    EXPECT_EQ(up.count(), 0);
    EXPECT_TRUE(map->mnuTable->isVisible());
    EXPECT_EQ(Tag(map->mnuTable), "3");
    EXPECT_EQ(map->CurrentTable(), 3);
    map->mnuTable->close();
    QStringList texts;
    for (const QAction *action : map->mnuTable->actions())
        texts << action->text();
    EXPECT_EQ(texts, QStringList({"Remove", "Add Linked Tables", "Bring to front", "Send to back", "Properties"}));
    EXPECT_FALSE(Item(map->mnuTable, "mnuTableProperties")->isEnabled());
    Item(map->mnuTable, "mnuS2B")->trigger();
    EXPECT_EQ(map->Tables().Stack().front(), 3);
    Item(map->mnuTable, "mnuB2F")->trigger();
    EXPECT_EQ(map->Tables().Stack().back(), 3);
    Item(map->mnuTable, "mnuRemoveTable")->trigger(); // the joins of all copies go
    EXPECT_EQ(map->Tables().Numbers(), std::vector<int>({1, 2}));
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_EQ(map->PF(1), nullptr);
    EXPECT_EQ(removed.takeLast(), QVariantList({"Orders", "Orders_Copy1"}));
}

TEST_F(TableMap, UnloadsATableAndKeepsItsJoinsInTheList)
{
    Show({"Orders", "Items"});
    Drag(Item(1, 2), Item(2, 3));
    Click(Item(2, 2));
    map->UnloadTable();
    EXPECT_EQ(map->Joins().Rows().size(), 1u);
    EXPECT_TRUE(map->PF(1)->IsEmpty());
    EXPECT_EQ(map->GetJoinStatement(false), "Orders.ID = Items.OrderID");
    map->ClearMap();
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_TRUE(map->Tables().Numbers().empty());
}

TEST_F(TableMap, ChangesItsColoursButNotThoseOfJoinsThatStand)
{
    Show({"Orders", "Items"});
    const LayerLook green = [&] {
        Drag(Item(1, 2), Item(2, 3));
        return map->PF(1)->Look;
    }();
    const auto ground = [&] { return map->Hwnd()->grab().toImage().pixelColor(5, 500); };
    EXPECT_EQ(ground(), SkinColour(1));
    map->MakeGray();
    EXPECT_EQ(ground(), QColor(Qt::white));
    Drag(Item(1, 3), Item(2, 3));
    EXPECT_EQ(map->PF(1)->Look.Back, green.Back);
    EXPECT_EQ(map->PF(2)->Look.Back, 0xFFFFFF);
    map->MakeColor();
    EXPECT_EQ(ground(), SkinColour(1));
}

TEST_F(TableMap, ReadsAgainWhatATableHolds)
{
    Show({"Orders", "Items"});
    EXPECT_EQ(map->PopulateTable(1, "Items"), 3);
    EXPECT_EQ(map->lvTable(1)->Alias, "Items_Copy1"); // it counts among its own copies
    EXPECT_EQ(map->PopulateTable(1, ""), 0);
    EXPECT_EQ(map->PopulateTable(9, "Items"), 0);
}

TEST_F(TableMap, DrawsAfterAScrollWhatItWouldDrawAnew)
{
    Show({"Orders", "Items", "Customers"});
    Drag(Item(1, 2), Item(2, 3));
    PutAt(3, {800, 500}); // over both edges
    Drag(Item(2, 2), Item(1, 3));
    for (const int step : {300, 7, -300, 150}) { // whole pixels and others
        for (QScrollBar *bar : {map->HScroll1, map->VScroll1}) {
            bar->setValue(bar->value() + step);
            QCoreApplication::processEvents();
            const QPoint line = OnLine(2);
            Click(line);
            EXPECT_EQ(Tag(map->mnuPopup), "2") << step; // the line is hit where it is drawn now
            SetTag(map->mnuPopup, {});
        }
        const QImage shown = map->Hwnd()->grab().toImage();
        map->RefreshMap();
        EXPECT_EQ(shown, map->Hwnd()->grab().toImage()) << step;
    }
}
