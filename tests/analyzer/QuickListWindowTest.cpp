// The list of names beside the editor.
#include "AnalyzerFixture.h"
#include "controls/ListView.h"
#include "tests/support/Text.h"

namespace {

struct NameList : Analyzer
{
    ListView *list = nullptr;

    void SetUp() override
    {
        Analyzer::SetUp();
        list = window->lvQuickList;
    }
    void OpenBehind(const char *text)
    {
        window->SetText(S(text));
        window->txtSQL->SetSelStart(window->Text().size());
        Press(Qt::Key_Space, Qt::ControlModifier);
        ASSERT_TRUE(list->isVisible());
        ASSERT_EQ(window->focusWidget(), list);
    }
    QString Chosen() const { return list->SelectedRow() < 0 ? QString() : list->Text(list->SelectedRow()); }
    QPoint Place(int row) const { return list->visualRect(list->model()->index(row, 0)).center(); }
};

} // namespace

TEST_F(Analyzer, TheQuickListCompletesAWord)
{
    ListView *list = window->lvQuickList;
    window->SetText(QStringLiteral("select * from cust"));
    window->txtSQL->SetSelStart(18);
    const int width = window->txtSQL->width();
    Press(Qt::Key_F1);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(window->focusWidget(), list);
    EXPECT_EQ(list->Text(list->SelectedRow()), QStringLiteral("CUSTOMERS"));
    EXPECT_EQ(window->txtSQL->width(), width * 70 / 100);
    EXPECT_EQ(list->x(), window->txtSQL->width());
    EXPECT_EQ(list->width(), width * 30 / 100);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(window->Text(), QStringLiteral("select * from CUSTOMERS"));
    EXPECT_EQ(window->txtSQL->SelStart(), 23);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(window->txtSQL->width(), width);
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}

TEST_F(Analyzer, EscapeInTheQuickListLeavesTheText)
{
    window->SetText(QStringLiteral("zzz"));
    window->txtSQL->SetSelStart(3);
    QTest::keyClick(window->txtSQL, Qt::Key_Space, Qt::ControlModifier);
    ASSERT_TRUE(window->lvQuickList->isVisible());
    EXPECT_EQ(window->lvQuickList->SelectedRow(), -1); // no name has a "z"
    QTest::keyClick(window->lvQuickList, Qt::Key_Escape);
    EXPECT_EQ(window->Text(), QStringLiteral("zzz"));
    EXPECT_FALSE(window->lvQuickList->isVisible());
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}

TEST_F(Analyzer, ADelimiterTakesTheChosenName)
{
    window->SetText(QStringLiteral("ord"));
    window->txtSQL->SetSelStart(3);
    Press(Qt::Key_F1);
    QTest::keyClick(window->lvQuickList, Qt::Key_Comma);
    EXPECT_EQ(window->Text(), QStringLiteral("ORDERS"));
}

TEST_F(NameList, TheLongestBeginningThatANameHoldsChooses)
{
    OpenBehind("select * from ordXYZ");
    EXPECT_EQ(Chosen(), S("ORDERS"));
    QTest::keyClick(list, Qt::Key_Escape);
    OpenBehind("select * from stom"); // anywhere in the name
    EXPECT_EQ(Chosen(), S("CUSTOMERS"));
    QTest::keyClick(list, Qt::Key_Escape);
    OpenBehind("select "); // no word
    EXPECT_EQ(Chosen(), QString());
}

TEST_F(NameList, UpAndDownAreTheLists)
{
    OpenBehind("cust");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(Chosen(), S("ORDERS"));
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(Chosen(), S("CUSTOMERS"));
    EXPECT_EQ(window->Text(), S("cust"));
    EXPECT_TRUE(list->isVisible());
}

TEST_F(NameList, OtherLettersGoToTheList)
{
    OpenBehind("cust");
    QTest::keyClick(list, 'n');
    EXPECT_EQ(Chosen(), S("NAMES"));
    EXPECT_EQ(window->Text(), S("cust"));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(window->Text(), S("NAMES"));
}

TEST_F(NameList, EveryDelimiterTakesTheChosenName)
{
    for (const char key : {' ', ',', ')', '(', ':', '$', '&', '\t'}) {
        SCOPED_TRACE(int(key));
        OpenBehind("a cust");
        if (key == '\t')
            QTest::keyClick(list, Qt::Key_Tab);
        else
            QTest::keyClick(list, key);
        EXPECT_EQ(window->Text(), S("a CUSTOMERS")); // the delimiter itself is not inserted
        EXPECT_FALSE(list->isVisible());
        EXPECT_EQ(window->focusWidget(), window->txtSQL);
        EXPECT_EQ(window->txtSQL->SelStart(), 11);
    }
    OpenBehind("a cust");
    QTest::keyClick(list, ';'); // none of the set
    EXPECT_TRUE(list->isVisible());
}

TEST_F(NameList, ADoubleClickTakesAName)
{
    window->SetText(S("select * from c where"));
    window->txtSQL->SetSelStart(15);
    Press(Qt::Key_F1);
    ASSERT_TRUE(list->isVisible());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Place(1));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, Place(1));
    EXPECT_EQ(window->Text(), S("select * from ORDERS where"));
    EXPECT_EQ(window->txtSQL->SelStart(), 20);
    EXPECT_FALSE(list->isVisible());
}

TEST_F(NameList, ReturnWithNothingChosenIsLikeEscape)
{
    OpenBehind("zzz");
    ASSERT_EQ(Chosen(), QString());
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(window->Text(), S("zzz"));
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}

TEST_F(NameList, TheKeyThatOpenedItLeavesTheChoiceWhileItIsHeld)
{
    OpenBehind("cust");
    QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Chosen(), S("CUSTOMERS"));
}

TEST_F(NameList, ATakenNameCanBeUndone)
{
    OpenBehind("select c");
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(window->Text(), S("select CUSTOMERS"));
    EXPECT_EQ(Colours().substr(0, 6), "111111");
    window->mnuUndo();
    if (window->Text() != S("select c"))
        window->mnuUndo();
    EXPECT_EQ(window->Text(), S("select c"));
}

TEST_F(NameList, ItGoesWhenTheFocusGoes)
{
    const int width = window->txtSQL->width();
    OpenBehind("cust");
    EXPECT_LT(window->txtSQL->width(), width);
    window->txtSQL->setFocus();
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(window->txtSQL->width(), width);
    EXPECT_EQ(window->Text(), S("cust"));
}

// The names are those of the last reading of the schema.
TEST_F(NameList, OpeningAsksTheServerNothing)
{
    gConn->Execute(S("create table fresh(a integer)"));
    OpenBehind("fre");
    EXPECT_EQ(Chosen(), QString()); // "fre" is in no name, nor is "f"
    QTest::keyClick(list, Qt::Key_Escape);
    window->ToolBar(S("SQLRefresh"));
    gConn.reset();
    OpenBehind("fre");
    EXPECT_EQ(Chosen(), S("FRESH"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(NameList, TheListStandsAtItsTopWhenNothingIsFound)
{
    for (int i = 0; i < 200; ++i)
        gConn->Execute(S("create table t%1(a integer)").arg(i));
    window->ToolBar(S("SQLRefresh"));
    OpenBehind("t199");
    EXPECT_EQ(Chosen(), S("T199"));
    EXPECT_TRUE(list->viewport()->rect().contains(Place(int(list->SelectedRow()))));
    EXPECT_EQ(list->columnWidth(0), list->viewport()->width()); // beside the scroll bar
    QTest::keyClick(list, Qt::Key_Escape);
    OpenBehind("?");
    EXPECT_EQ(Chosen(), QString());
    EXPECT_TRUE(list->viewport()->rect().contains(Place(0)));
}

TEST_F(NameList, AnEmptyListOpensAndCloses)
{
    gConn.reset();
    window->Load();
    dialogs.Boxes.clear();
    OpenBehind("cust");
    EXPECT_EQ(list->Count(), 0);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(window->Text(), S("cust"));
    EXPECT_FALSE(list->isVisible());
}

TEST_F(NameList, ItsColumnFillsItsWidth)
{
    OpenBehind("cust");
    EXPECT_EQ(list->y(), window->txtSQL->y());
    EXPECT_EQ(list->height(), window->txtSQL->height());
    EXPECT_EQ(list->columnWidth(0), list->viewport()->width());
}
