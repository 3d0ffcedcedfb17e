// One step of a chain of joins: its lists, when they are read, the fragment that it gives.

#include "ado/Recordset.h"
#include "controls/Twips.h"
#include "tests/data/House.h"
#include "visual/ucJoin.h"
#include <QComboBox>
#include <QLineEdit>

namespace {

class JoinEditor : public DataTest
{
protected:
    std::unique_ptr<ucJoin> step;

    void SetUp() override
    {
        OpenSample({"CREATE TABLE Items (Price int, CustomerID int, ID int)",
                    "CREATE TABLE Orders (ID int, CustomerID int)", "CREATE TABLE \"Order Details\" (x int, id int)",
                    "CREATE VIEW Seen AS SELECT ID FROM Orders"});
        step = std::make_unique<ucJoin>();
        step->show();
        step->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(step.get()));
    }
    static QString Texts(const QComboBox *list)
    {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i)
            texts << list->itemText(i);
        return texts.join(',');
    }
    QString Previous() const { return Texts(step->cmbField[0]); }
    QString Fields() const { return Texts(step->cmbField[1]); }
    void Type(const QString &text)
    {
        step->cmbTable->lineEdit()->setFocus();
        step->cmbTable->lineEdit()->selectAll();
        QTest::keyClicks(step->cmbTable->lineEdit(), text);
    }
    void Enter(const QString &text)
    {
        Type(text);
        QTest::keyClick(step->cmbTable->lineEdit(), Qt::Key_Return);
    }
};

} // namespace

TEST_F(JoinEditor, BeginsAsAnInnerJoinOfEqualValues)
{
    EXPECT_EQ(step->cmbJoin->currentText(), "Inner Join");
    EXPECT_EQ(Texts(step->cmbJoin), "Cross Join,Inner Join,Left Join,Outter Join,Right Join");
    EXPECT_EQ(step->cmbOperator->currentText(), "=");
    EXPECT_EQ(step->txtPrevious->text(), "Previous");
    EXPECT_EQ(step->cmbTable->count(), 0);
    EXPECT_EQ(step->Step, 0);
    EXPECT_EQ(step->GetSQL(), "Previous T1 Inner Join  T2");
}

TEST_F(JoinEditor, ListsTheTablesWithoutTheViews)
{
    step->Populate();
    EXPECT_EQ(Texts(step->cmbTable), "Items,Order Details,Orders");
    EXPECT_EQ(step->cmbTable->currentIndex(), 0);
    EXPECT_EQ(Fields(), "Price,CustomerID,ID");
    step->Populate(); // anew, and not once more behind
    EXPECT_EQ(step->cmbTable->count(), 3);
    gConn->Execute("DROP TABLE Items");
    gConn->Execute("DROP TABLE Orders");
    gConn->Execute("DROP TABLE \"Order Details\"");
    step->Populate();
    EXPECT_EQ(step->cmbTable->count(), 0);
}

TEST_F(JoinEditor, ReadsTheFieldsOfWhatCameBefore)
{
    step->SetPreviousTag("Orders");
    EXPECT_EQ(step->txtPrevious->text(), "Orders");
    EXPECT_EQ(Tag(step->txtPrevious), "Previous (Orders)");
    EXPECT_EQ(Previous(), "ID,CustomerID");
    EXPECT_EQ(step->cmbField[0]->currentIndex(), 0);
    step->SetPreviousTag("select ID as Number from Orders");
    EXPECT_EQ(Previous(), "Number");
    step->SetPreviousTag("nowhere");
    EXPECT_EQ(Previous(), "");
    step->SetPreviousTag("Order Details"); // a blank makes it a statement
    EXPECT_EQ(Previous(), "");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(JoinEditor, ReadsATableThatIsPickedOnceAndChoosesThePairOfEqualNames)
{
    step->SetPreviousTag("Orders");
    step->Populate();
    EXPECT_EQ(step->cmbField[0]->currentText(), "ID");
    EXPECT_EQ(step->cmbField[1]->currentText(), "ID");
    EXPECT_EQ(Tag(step->cmbTable), "");
    step->cmbTable->setFocus();
    QTest::keyClick(step->cmbTable, Qt::Key_Down);
    EXPECT_EQ(Fields(), "x,id"); // no equal name
    EXPECT_EQ(step->cmbField[1]->currentText(), "x");
    EXPECT_EQ(step->cmbField[0]->currentText(), "ID");
    gConn->Execute("DROP TABLE \"Order Details\"");
    step->cmbJoin->setFocus(); // nothing has changed
    EXPECT_EQ(Fields(), "x,id");
    QTest::keyClick(step->cmbTable, Qt::Key_Down);
    EXPECT_EQ(Fields(), "ID,CustomerID");
    QTest::keyClick(step->cmbTable, Qt::Key_Up);
    EXPECT_EQ(Fields(), ""); // it is gone
    EXPECT_EQ(step->cmbField[1]->currentText(), "");
}

TEST_F(JoinEditor, ReadsATypedTextWhenItIsLeft)
{
    Type("orders");
    EXPECT_EQ(Tag(step->cmbTable), "1");
    EXPECT_EQ(Fields(), "");
    step->cmbJoin->setFocus();
    EXPECT_EQ(Fields(), "ID,CustomerID");
    Enter("Select Price From Items");
    EXPECT_EQ(Fields(), "Price");
    Enter("[Order Details]"); // as the server reads it
    EXPECT_EQ(Fields(), "x,id");
    Enter("Order Details");
    EXPECT_EQ(Fields(), "x,id");
    Enter("Selections"); // holds the word
    EXPECT_EQ(Fields(), "");
    EXPECT_EQ(step->cmbTable->count(), 0); // what is typed is no entry
}

TEST_F(JoinEditor, GivesTheFragmentOfItsControls)
{
    step->SetPreviousTag("Orders");
    Enter("Items");
    step->Step = 3;
    EXPECT_EQ(step->GetSQL(), "Orders T4 Inner Join Items T5 ON ( T4.ID= T5.ID)");
    step->cmbJoin->setFocus();
    QTest::keyClick(step->cmbJoin, Qt::Key_Down);
    QTest::keyClick(step->cmbField[1], Qt::Key_Up);
    QTest::keyClick(step->cmbOperator, Qt::Key_End);
    EXPECT_EQ(step->GetSQL(), "Orders T4 Left Join Items T5 ON ( T4.ID>= T5.CustomerID)");
    QTest::keyClick(step->cmbJoin, Qt::Key_C);
    EXPECT_EQ(step->GetSQL(), "Orders T4 Cross Join Items T5");
    QTest::keyClick(step->cmbJoin, Qt::Key_Down);
    Enter("nowhere"); // no field on one side
    EXPECT_EQ(step->GetSQL(), "Orders T4 Inner Join nowhere T5");
    step->SetPreviousTag("select ID from Orders");
    Enter("select ID from Items");
    EXPECT_EQ(step->GetSQL(), "(select ID from Orders) T3 Inner Join (select ID from Items) T3 ON ( T4.ID>= T5.ID)");
}

TEST_F(JoinEditor, IsEmptyWithoutAConnection)
{
    step->SetPreviousTag("Orders");
    Enter("Items");
    gConn.reset();
    step->Populate();
    EXPECT_EQ(step->cmbTable->currentText(), "Items");
    Enter("Orders");
    EXPECT_EQ(Fields(), "");
    step->SetPreviousTag("Items");
    EXPECT_EQ(Previous(), "");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}
