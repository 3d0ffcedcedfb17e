// A map that asks for its joins with the dialog: drops beside a field, the join under the pointer, the keyboard alone,
// and what happens while fields are read.

#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include "tests/visual/windows/MapFixture.h"
#include "visual/frmDiagram.h"
#include "visual/frmJoin.h"
#include <QComboBox>
#include <QTimer>

namespace {

class JoinAsk : public MapTest
{
protected:
    using DataTest::Click;
    using MapTest::Click;
    QStringList told; // of CreateJoin

    void ShowAsking(const QStringList &names)
    {
        Show(names);
        AskWithJoinDialog(*map);
        Hear();
    }
    void Hear()
    {
        QObject::connect(map.get(), &ucTableMap::CreateJoin,
                         [this](const QString &table1, const QString &field1, const QString &table2,
                                const QString &field2, const QString &kind) {
                             told << QStringList({table1, field1, table2, field2, kind}).join('|');
                         });
    }
    template <class Act> void WithJoin(Act act)
    {
        WithDialog([act](QWidget *dialog) {
            auto *form = qobject_cast<frmJoin *>(dialog);
            ASSERT_NE(form, nullptr);
            act(*form);
        });
    }
    static QStringList Shown(const frmJoin &form)
    {
        return {form.txtTable1->text(), form.cmbField[0]->currentText(), form.txtTable2->text(),
                form.cmbField[1]->currentText(), form.cmbJoin->currentText()};
    }
};

class JoinAskScripted : public JoinAsk
{
protected:
    ScriptedDriver driver;
    std::function<void(const QString &sql)> OnSelect; // on the statement's thread

    void SetUp() override
    {
        driver.OnExecute = [this](const QString &sql) {
            if (OnSelect)
                OnSelect(sql);
            ADODB::ExecuteResult result;
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"ID"}, QList<QStringList>());
            return result;
        };
        ASSERT_TRUE(OpenConnection("Scripted"));
        driver.ClearLog();
        m_shell.Statuses.clear();
    }
    void TearDown() override
    {
        OnSelect = {};
        MapTest::TearDown();
        gConn.reset();
    }
};

} // namespace

TEST_F(JoinAsk, MakesTheJoinThatTheDialogTells)
{
    ShowAsking({"Orders", "Items"});
    QStringList shown;
    WithJoin([&](frmJoin &form) {
        shown = Shown(form);
        EXPECT_EQ(form.cmbField[1]->count(), 3);
        QTest::keyClick(form.cmbField[1], Qt::Key_Down);
        QTest::keyClick(form.cmbJoin, Qt::Key_R);
        Click(&form, "cmdOK");
    });
    Drag(Item(1, 2), BlankOf(2));
    EXPECT_EQ(shown, QStringList({"Orders", "ID", "Items", "ID", "Inner Join"}));
    ASSERT_EQ(map->Joins().Rows().size(), 1u);
    EXPECT_EQ(map->GetJoinStatement(false), "Orders.ID =* Items.OrderID");
    EXPECT_EQ(told, QStringList("Orders|ID|Items|OrderID|Right Join"));
    EXPECT_FALSE(map->PF(1)->IsEmpty());
    Drag(Item(1, 3), Item(2, 3)); // onto a field: nobody asks
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(map->Joins().Rows().size(), 2u);
    EXPECT_EQ(told.last(), "||||");
}

TEST_F(JoinAsk, MakesNoneWhenTheDialogIsGivenUp)
{
    ShowAsking({"Orders", "Items"});
    for (const bool escape : {true, false}) {
        WithJoin([&](frmJoin &form) {
            if (escape)
                QTest::keyClick(&form, Qt::Key_Escape);
            else
                Click(&form, "cmdCancel");
        });
        Drag(Item(1, 2), Heading(2));
    }
    EXPECT_EQ(m_dialogs, 2);
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_EQ(told, QStringList({"||||", "||||"}));
}

TEST_F(JoinAsk, MakesNoneWithATableThatCannotBeReadAnyMore)
{
    ShowAsking({"Orders", "Items"});
    gConn->Execute("DROP TABLE Items");
    WithJoin([&](frmJoin &form) {
        EXPECT_EQ(Shown(form), QStringList({"Orders", "ID", "Items", "", "Inner Join"}));
        Click(&form, "cmdOK");
    });
    Drag(Item(1, 2), BlankOf(2));
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_TRUE(map->Joins().Rows().empty());
    EXPECT_EQ(told, QStringList("||||"));
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

// A row bore the alias once it was edited, which no server knows: at its second time the dialog had no fields.
TEST_F(JoinAsk, EditsAJoinOfACopyAgainAndAgain)
{
    ShowAsking({"Orders", "Orders", "Items"});
    Drag(Item(2, 2), Item(3, 3));
    QStringList shown;
    const auto note = [&](frmJoin &form) {
        shown = Shown(form);
        QTest::keyClick(form.cmbJoin, Qt::Key_Down);
        QTest::keyClick(&form, Qt::Key_Return);
    };
    WithJoin(note);
    Send(QEvent::MouseButtonDblClick, OnLine(1));
    EXPECT_EQ(shown, QStringList({"Orders_Copy1", "ID", "Items", "OrderID", "Inner Join"}));
    EXPECT_EQ(map->Joins().Rows()[0].Table1, "Orders_Copy1");
    EXPECT_EQ(map->Joins().Rows()[0].Operator, "Left Join");
    WithJoin(note);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab); // behind the last table: the join
    Key(Qt::Key_Return);
    EXPECT_EQ(shown, QStringList({"Orders_Copy1", "ID", "Items", "OrderID", "Left Join"}));
    EXPECT_EQ(map->Joins().Rows()[0].Operator, "Right Join");
    WithJoin([](frmJoin &form) {
        QTest::keyClick(form.cmbJoin, Qt::Key_Home);
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    Click(OnLine(1), Qt::RightButton);
    map->mnuPopup->close();
    Item(map->mnuPopup, "mnuJoinProperties")->trigger();
    EXPECT_EQ(m_dialogs, 3);
    EXPECT_EQ(map->Joins().Rows()[0].Operator, "Right Join");
    EXPECT_EQ(told, QStringList("||||"));
}

TEST_F(JoinAsk, EndsWithAMapThatGoesWhileItIsUp)
{
    ShowAsking({"Orders", "Items"});
    Drag(Item(1, 2), Item(2, 3));
    WithJoin([this](frmJoin &) { map.reset(); });
    const QPointer<ucTableMap> alive(map.get());
    alive->ShowJoinProperties(1);
    EXPECT_FALSE(alive);
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(JoinAsk, AsksOnADiagram)
{
    frmDiagram form;
    EXPECT_TRUE(form.TableMap->AskJoin);
    frmJoin *met = nullptr;
    WithJoin([&](frmJoin &dialog) {
        met = &dialog;
        EXPECT_EQ(Shown(dialog), QStringList({"Orders", "ID", "Items", "OrderID", "Left Join"}));
        Click(&dialog, "cmdOK");
    });
    const JoinAnswer answer =
        form.TableMap->AskJoin({"Orders", "Orders", "Items", "Items", false, "ID", "OrderID", "Left Join"}, &form);
    EXPECT_NE(met, nullptr);
    EXPECT_FALSE(answer.Cancelled);
    EXPECT_EQ(answer.Field2, "OrderID");
    EXPECT_EQ(answer.JoinType, "Left Join");
}

// A field that is gone from its table leaves the first one chosen.
TEST_F(JoinAsk, ChoosesOnlyWhatIsOnTheLists)
{
    frmJoin form;
    form.LoadFields("Orders", "Orders", 0);
    form.LoadFields("Items", "Items", 1);
    form.Choose("orderid", "Price", "Full Join");
    EXPECT_EQ(Shown(form), QStringList({"Orders", "ID", "Items", "Price", "Inner Join"}));
}

TEST_F(JoinAskScripted, ReadsBesideTheLivingWindowsAndTakesNoInputMeanwhile)
{
    ShowAsking({"a", "b"});
    driver.ClearLog();
    WorkGate gate;
    OnSelect = [&](const QString &) { gate.Pass(); };
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (m_shell.Status() != "Reading the fields ... (Esc stops)")
            return;
        poll.stop();
        gate.Open();
    });
    gate.WhenReached(
        [&] { // the statement runs, and the interface thread is here
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            Send(QEvent::MouseButtonPress, Heading(1));
            EXPECT_EQ(map->Tables().CarriedTable, 0);
            poll.start(5);
        },
        false);
    WithJoin([](frmJoin &form) { Click(&form, "cmdOK"); });
    Drag(Item(1, 2), BlankOf(2));
    EXPECT_TRUE(gate.Reached());
    EXPECT_EQ(driver.Log(), QStringList({"SELECT * FROM a where 1=0", "SELECT * FROM b where 1=0"}));
    EXPECT_EQ(map->Joins().Rows().size(), 1u);
}

TEST_F(JoinAskScripted, GivesUpTheListThatEscapeStops)
{
    ShowAsking({"a", "b"});
    WorkGate gate;
    OnSelect = [&](const QString &sql) {
        if (!sql.contains(" a "))
            return;
        gate.Pass();
        driver.RunUntilCancelled(20);
    };
    gate.WhenReached([&] { Key(Qt::Key_Escape); });
    WithJoin([](frmJoin &form) {
        EXPECT_EQ(Shown(form), QStringList({"a", "", "b", "ID", "Inner Join"}));
        Click(&form, "cmdOK");
    });
    Drag(Item(1, 2), BlankOf(2));
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_GE(driver.Cancels, 1);
    EXPECT_TRUE(map->Joins().Rows().empty());
}

TEST_F(JoinAskScripted, ShowsNoDialogForAMapThatGoesWhileFieldsAreRead)
{
    ShowAsking({"a", "b"});
    Drag(Item(1, 2), Item(2, 2));
    WorkGate gate;
    OnSelect = [&](const QString &) { gate.Pass(); };
    gate.WhenReached([&] { map.reset(); });
    const QPointer<ucTableMap> going(map.get());
    going->ShowJoinProperties(1);
    EXPECT_TRUE(gate.Reached());
    EXPECT_FALSE(going);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

// Some servers want a name behind a statement in brackets; others know none.
TEST_F(JoinAskScripted, SendsAStatementOnceMoreWithANameWhenItWasRefused)
{
    int number = 0;
    OnSelect = [&](const QString &sql) {
        if (!sql.contains("TempTableX"))
            throw ADODB::Error(number, "it wants a name");
    };
    for (const bool cancelled : {false, true}) {
        frmJoin form;
        number = cancelled ? int(ADODB::adErrOperationCancelled) : -1;
        driver.ClearLog();
        form.LoadFields("SELECT 1 AS ID", "one", 0);
        const QStringList once = {"SELECT * FROM (SELECT 1 AS ID) where 1=0"};
        const QStringList twice = once + QStringList("SELECT * FROM (SELECT 1 AS ID) TempTableX where 1=0");
        EXPECT_EQ(driver.Log(), cancelled ? once : twice);
        EXPECT_EQ(form.cmbField[0]->count(), cancelled ? 0 : 1);
    }
    frmJoin form;
    driver.ClearLog();
    form.LoadFields("plain", "plain", 0); // a table is asked for once
    EXPECT_EQ(driver.Log(), QStringList("SELECT * FROM plain where 1=0"));
    EXPECT_EQ(form.cmbField[0]->count(), 0);
}
