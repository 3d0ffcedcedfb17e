// Joins on the table map: dropped fields, lines under the pointer, the dialog, and the same by keyboard alone.

#include "controls/Twips.h"
#include "tests/visual/windows/MapFixture.h"
#include <QAccessible>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>
#include <random>

namespace {

class MapJoinsTest : public MapTest
{
protected:
    std::vector<JoinQuestion> asked;
    JoinAnswer answer;
    QStringList told; // of CreateJoin

    void Ask()
    {
        map->AskJoin = [this](const JoinQuestion &question, QWidget *) {
            asked.push_back(question);
            return answer;
        };
        QObject::connect(map.get(), &ucTableMap::CreateJoin,
                         [this](const QString &table1, const QString &field1, const QString &table2,
                                const QString &field2, const QString &kind) {
                             told << QStringList({table1, field1, table2, field2, kind}).join('|');
                         });
    }
};

} // namespace

TEST_F(MapJoinsTest, JoinsAFieldThatIsDroppedOnAField)
{
    Show({"Orders", "Items"});
    Ask();
    Drag(Item(1, 2), Item(2, 3));
    Drag(Item(1, 2), Item(2, 3)); // no look for an equal one
    ASSERT_EQ(map->Joins().Rows().size(), 2u);
    EXPECT_EQ(map->DragSourceIndex(), 1);
    EXPECT_TRUE(map->JoinExists("Orders", "ID", "Items", "OrderID"));
    EXPECT_FALSE(map->JoinExists("Items", "OrderID", "Orders", "ID"));
    EXPECT_EQ(map->GetJoinStatement(false), "Orders.ID = Items.OrderID\r\n AND Orders.ID = Items.OrderID");
    EXPECT_EQ(told, QStringList({"||||", "||||"}));
    EXPECT_TRUE(asked.empty());
    Drag(Item(1, 2), Item(1, 3)); // onto itself
    Drag(Item(1, 2), {700, 500}); // onto the ground
    EXPECT_EQ(map->Joins().Rows().size(), 2u);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(MapJoinsTest, AsksWhereNoFieldWasHit)
{
    Show({"Orders", "Items"});
    Ask();
    Drag(Item(1, 2), BlankOf(2)); // cancelled
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].Table1, "Orders");
    EXPECT_EQ(asked[0].Name2, "Items");
    EXPECT_TRUE(asked[0].FindMatch);
    EXPECT_TRUE(map->Joins().Rows().empty());
    answer = {false, "Orders", "ID", "Items", "ID", "Left Join"};
    Drag(Item(1, 2), Heading(2)); // a heading is no field either
    EXPECT_EQ(map->Joins().Rows().size(), 1u);
    EXPECT_EQ(told, QStringList({"||||", "Orders|ID|Items|ID|Left Join"}));
    EXPECT_EQ(map->GetJoinStatement(false), "False");
}

TEST_F(MapJoinsTest, GivesUpADragOnEscape)
{
    Show({"Orders", "Items"});
    Send(QEvent::MouseButtonPress, Item(1, 2));
    Send(QEvent::MouseMove, Item(2, 3));
    Key(Qt::Key_Escape);
    Send(QEvent::MouseButtonRelease, Item(2, 3));
    EXPECT_TRUE(map->Joins().Rows().empty());
}

TEST_F(MapJoinsTest, HitsALineWhereItIsDrawn)
{
    Show({"Orders", "Items"});
    Ask();
    Drag(Item(1, 2), Item(2, 3));
    QSignalSpy down(map.get(), &ucTableMap::MouseDown);
    const QPoint line = OnLine(1);
    EXPECT_EQ(map->Hwnd()->grab().toImage().pixelColor(line), QColor(Qt::black));
    Click(line);
    EXPECT_EQ(Tag(map->mnuPopup), "1");
    EXPECT_EQ(down.count(), 0);
    Click(line + QPoint(0, -6));
    EXPECT_EQ(down.count(), 1);
    Click(line, Qt::RightButton);
    EXPECT_TRUE(map->mnuPopup->isVisible());
    map->mnuPopup->close();
    answer = {false, "Orders", "CustomerID", "Items", "Price", "Right Join"};
    Send(QEvent::MouseButtonDblClick, line);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_FALSE(asked[0].FindMatch);
    EXPECT_EQ(asked[0].Field1, "ID");
    EXPECT_EQ(map->Joins().Rows()[0].Operator, "Right Join");
    Item(map->mnuPopup, "mnuJoinProperties")->trigger();
    EXPECT_EQ(asked.size(), 2u);
    Item(map->mnuPopup, "mnuRemoveJoin")->trigger();
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_EQ(map->PF(1), nullptr);
}

TEST_F(MapJoinsTest, OutlivesAMapThatGoesWhileItsDialogIsUp)
{
    Show({"Orders", "Items"});
    map->AskJoin = [this](const JoinQuestion &, QWidget *) {
        map.release()->deleteLater();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return JoinAnswer{false, "Orders", "ID", "Items", "ID", "Inner Join"};
    };
    const QPoint from = Item(1, 2), to = BlankOf(2);
    QWidget *surface = map->Hwnd();
    const auto send = [&](QEvent::Type type, const QPoint &at) {
        QMouseEvent event(type, at, surface->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(surface, &event);
    };
    send(QEvent::MouseButtonPress, from);
    send(QEvent::MouseMove, to);
    send(QEvent::MouseButtonRelease, to);
    EXPECT_EQ(map, nullptr);
}

TEST_F(MapJoinsTest, WalksSelectsChecksAndCarriesByKeyboard)
{
    Show({"Orders", "Items"});
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(map->CurrentTable(), 1);
    EXPECT_EQ(map->Tables().Stack().back(), 1);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(map->lvTable(1)->Selected, 2);
    Key(Qt::Key_End);
    EXPECT_EQ(map->lvTable(1)->Selected, 3);
    Key(Qt::Key_Down);
    EXPECT_EQ(map->lvTable(1)->Selected, 3);
    Key(Qt::Key_Home);
    Key(Qt::Key_Up);
    EXPECT_EQ(map->lvTable(1)->Selected, 1);
    QSignalSpy clicked(map.get(), &ucTableMap::MouseUp);
    int heard = 0;
    QObject::connect(map.get(), &ucTableMap::TableClicked, [&] { ++heard; });
    Key(Qt::Key_Space);
    EXPECT_TRUE(map->lvTable(1)->Items[0].Checked);
    EXPECT_EQ(heard, 1);
    const QPoint corner = map->TableRect(1).topLeft();
    Key(Qt::Key_Right, Qt::ControlModifier);
    Key(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(map->TableRect(1).topLeft(), corner + QPoint(10, 1));
    Key(Qt::Key_Tab);
    EXPECT_EQ(map->CurrentTable(), 2);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(MapJoinsTest, JoinsEditsAndRemovesByKeyboard)
{
    Show({"Orders", "Items"});
    Ask();
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    Key(Qt::Key_J, Qt::ControlModifier);
    Key(Qt::Key_Tab);
    Key(Qt::Key_End);
    Key(Qt::Key_Up);
    Key(Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(map->GetJoinStatement(false), "Orders.ID = Items.OrderID");
    Key(Qt::Key_Tab); // behind the last table: the join
    answer = {false, "Orders", "ID", "Items", "ID", "Left Join"};
    Key(Qt::Key_Return);
    EXPECT_EQ(asked.size(), 1u);
    EXPECT_EQ(map->Joins().Rows()[0].Operator, "Left Join");
    Key(Qt::Key_Delete);
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_EQ(map->Tables().Numbers().size(), 2u);
    Key(Qt::Key_Delete); // the keyboard is back on the table
    EXPECT_EQ(map->Tables().Numbers(), std::vector<int>({1}));
}

TEST_F(MapJoinsTest, LeavesTheMapBehindTheLastJoin)
{
    QWidget window;
    window.resize(900, 700);
    Show({"Orders"});
    auto *after = new QLineEdit(&window);
    map->setParent(&window);
    map->show();
    QWidget::setTabOrder(map->Hwnd(), after);
    window.show();
    window.activateWindow();
    map->Hwnd()->setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(map->Hwnd()->hasFocus());
    Key(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    map->setParent(nullptr);
}

TEST_F(MapJoinsTest, NamesItsTablesItemsAndJoins)
{
    Show({"Orders", "Items"});
    Drag(Item(1, 2), Item(2, 3));
    Click(Check(2, 1));
    QAccessibleInterface *access = QAccessible::queryAccessibleInterface(map->Hwnd());
    ASSERT_NE(access, nullptr);
    EXPECT_EQ(access->text(QAccessible::Name), "Table map");
    ASSERT_EQ(access->childCount(), 3);
    EXPECT_EQ(access->child(0)->text(QAccessible::Name), "Orders");
    EXPECT_EQ(access->child(2)->text(QAccessible::Name), "Orders.ID = Items.OrderID, Inner Join");
    QAccessibleInterface *items = access->child(1);
    ASSERT_EQ(items->childCount(), 4);
    EXPECT_EQ(items->child(2)->text(QAccessible::Name), "OrderID");
    EXPECT_EQ(items->child(0)->role(), QAccessible::CheckBox);
    EXPECT_TRUE(items->child(0)->state().checked);
    EXPECT_EQ(items->child(2)->parent(), items);
    EXPECT_EQ(items->indexOfChild(items->child(2)), 2);
    EXPECT_EQ(items->child(1)->rect().size(), map->ItemRect(2, 2).size());
    QAccessibleInterface *gone = access->child(0);
    map->ClearMap();
    EXPECT_FALSE(gone->isValid());
    EXPECT_EQ(access->childCount(), 0);
}

TEST_F(MapJoinsTest, TellsInATipWhatIsCutOff)
{
    gConn->Execute("CREATE TABLE \"A table of a very long name that no box could hold\" (x int)");
    Show({"A table of a very long name that no box could hold"});
    const QPoint at = Heading(1);
    QHelpEvent event(QEvent::ToolTip, at, map->Hwnd()->mapToGlobal(at));
    QCoreApplication::sendEvent(map->Hwnd(), &event);
    EXPECT_EQ(QToolTip::text(), "A table of a very long name that no box could hold");
    QToolTip::hideText();
}

TEST_F(MapJoinsTest, HasALayerForEachRowAndARowForEachLayerOverARandomWalk)
{
    Show();
    map->resize(500, 400);
    map->AskJoin = [](const JoinQuestion &question, QWidget *) {
        return JoinAnswer{question.Name1.size() % 2 == 0, question.Name1, "ID", question.Name2, "ID", "Left Join"};
    };
    std::mt19937 random(11);
    const auto any = [&](int below) { return int(random() % unsigned(below)); };
    const auto point = [&] { return QPoint(any(380), any(280)); }; // a field that leaves the map is the desktop's
    const QStringList names = {"Orders", "Items", "Customers", "nowhere"};
    constexpr int keys[] = {Qt::Key_Tab, Qt::Key_Down,  Qt::Key_Up,   Qt::Key_Space,
                            Qt::Key_J,   Qt::Key_Right, Qt::Key_Left, Qt::Key_Return};
    for (int step = 0; step < 10000; ++step) {
        switch (any(12)) {
        case 0:
            map->AddTable(names[any(4)]);
            break;
        case 1:
        case 2:
        case 3:
            Drag(point(), point());
            break;
        case 4:
            Click(point(), any(2) ? Qt::LeftButton : Qt::RightButton);
            map->mnuTable->close();
            map->mnuPopup->close();
            break;
        case 5:
            Item(map->mnuPopup, any(4) ? "mnuJoinProperties" : "mnuRemoveJoin")->trigger();
            break;
        case 6:
            if (any(3) == 0)
                map->UnloadTable();
            break;
        case 7:
            if (any(3) == 0)
                Item(map->mnuTable, "mnuRemoveTable")->trigger();
            break;
        case 8:
            Key(keys[any(8)], any(2) ? Qt::ControlModifier : Qt::NoModifier);
            break;
        case 9:
            any(2) ? map->BringToTop() : map->SendToBottom();
            break;
        case 10:
            Send(QEvent::MouseMove, point());
            if (any(40) == 0)
                map->resize(400 + any(200), 300 + any(200));
            break;
        default:
            if (any(60) == 0)
                map->ClearMap();
            else
                Send(any(2) ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, point());
        }
        if (map->Tables().UBound() > 14)
            map->ClearMap();
        int layers = 0;
        for (int i = 1; i <= map->Joins().LayerUBound() + 2; ++i)
            layers += map->PF(i) ? 1 : 0;
        ASSERT_EQ(layers, int(map->Joins().Rows().size())) << step;
        for (const MapJoin &row : map->Joins().Rows())
            ASSERT_NE(map->PF(row.Index), nullptr) << step;
        ASSERT_EQ(map->Tables().Stack().size(), map->Tables().Numbers().size()) << step;
        if (step % 100 == 0)
            map->Hwnd()->grab();
    }
}
