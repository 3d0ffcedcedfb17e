// The wizard's window: map, grid, editors, menu, and what it hands out.

#include "controls/RichTextBox.h"
#include "controls/Splitter.h"
#include "controls/Twips.h"
#include "sqltext/clsColorTable.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include "tests/visual/windows/WizardDriver.h"
#include "visual/DropList.h"
#include <QCheckBox>

namespace {

class WizardWindow : public DataTest
{
protected:
    void SetUp() override
    {
        InitColorTable();
        gKeywordSet = KeywordSet({"SELECT", "FROM", "WHERE"});
        OpenSample({"CREATE TABLE Orders (ID int, Customer int, Total int)",
                    "CREATE TABLE Customers (ID int, Name text)",
                    "INSERT INTO Orders VALUES (1, 1, 10), (2, 1, 20), (3, 9, 5)",
                    "INSERT INTO Customers VALUES (1, 'Anna'), (2, 'Ben')"});
        Make();
    }
    void TearDown() override
    {
        drive.reset();
        form.reset();
        gConn.reset();
    }
    void Make()
    {
        form = std::make_unique<frmSQLWizzard>();
        drive = std::make_unique<WizardDriver>(*form);
        form->show();
        form->activateWindow();
        QCoreApplication::processEvents();
    }
    void TwoTables()
    {
        drive->AddTable("Orders", 20);
        drive->AddTable("Customers", 320);
    }
    void Check(int table, const char *field) { drive->Click(drive->Check(table, field)); }
    QString Text() const
    {
        Until([&] { return form->txtSQL->Text() == form->JoinedText().SQLText; });
        return form->txtSQL->Text();
    }

    std::unique_ptr<frmSQLWizzard> form;
    std::unique_ptr<WizardDriver> drive;
};

} // namespace

TEST_F(WizardWindow, ComesUpEmptyAndCancelled)
{
    EXPECT_EQ(form->windowTitle(), "SQL Wizzard");
    EXPECT_TRUE(form->Cancelled);
    EXPECT_TRUE(form->TableMap->Tables().CheckBoxes && form->TableMap->ShowStar);
    EXPECT_EQ(form->picSplit->Border(2), 100);
    EXPECT_EQ(form->picSplit->Border(4), 100);
    FlexGrid *grid = form->mfgFields;
    EXPECT_EQ(grid->Cols(), 11);
    EXPECT_EQ(grid->Rows(), 2); // an empty one
    QStringList heads;
    for (int col = 0; col < grid->Cols(); ++col)
        heads << grid->TextMatrix(0, col);
    EXPECT_EQ(heads.join('|'), QString::fromUtf16(kWizardHeader));
    const int width = ToTwips(grid->viewport()->width());
    for (int col : {0, 1, 5, 6, 7, 8, 9})
        EXPECT_EQ(grid->ColWidth(col), width / 10) << col;
    EXPECT_EQ(grid->ColWidth(2), width / 12);
    EXPECT_EQ(grid->ColWidth(4), 0);
    EXPECT_EQ(grid->ColWidth(10), 0);
    EXPECT_EQ(form->mnuTableView->actions().size(), 6);
    form->close();
    EXPECT_TRUE(form->Cancelled);
    EXPECT_EQ(form->SQLText, "");
}

TEST_F(WizardWindow, TakesATableBeforeItShows)
{
    frmSQLWizzard early;
    ASSERT_NE(early.TableMap->AddTable("Orders"), nullptr);
    EXPECT_EQ(early.cmbTables->count(), 1);
    EXPECT_EQ(early.cmbTables->itemText(0), "Orders");
    early.TableMap->AddTable("Orders");
    EXPECT_EQ(early.cmbTables->itemText(1), "Orders_Copy1");
}

TEST_F(WizardWindow, SaysWhatIsMissingAndStays)
{
    QTest::mouseClick(form->cmdApply, Qt::LeftButton);
    EXPECT_EQ(m_boxes.LastText(), "You need to add a data source [Table, View, Stored Proceduer, SQL "
                                  "Statement,...,etc] before continuing.");
    EXPECT_EQ(m_boxes.LastTitle(), "SQL");
    EXPECT_EQ(m_boxes.Boxes.last().Icon, mbExclamation);
    drive->AddTable("Orders", 20);
    drive->Key(Qt::Key_F5);
    EXPECT_EQ(m_boxes.LastText(), "You need to select fields to display before continuing.");
    QTest::mouseClick(form->cmdJoins, Qt::LeftButton);
    EXPECT_EQ(m_boxes.Boxes.size(), 3);
    EXPECT_TRUE(form->isVisible() && form->Cancelled);
}

TEST_F(WizardWindow, FollowsTheChecksOfTheMapInTheGridAndBack)
{
    TwoTables();
    Check(1, "ID");
    Check(2, "Name");
    EXPECT_EQ(drive->RowText(1), "Orders|ID||Y|Group By|||||");
    EXPECT_EQ(drive->RowText(2), "Customers|Name||Y|Group By|||||");
    EXPECT_EQ(form->mfgFields->Rows(), 4);
    Check(1, "*");
    EXPECT_EQ(drive->Text(3, 1), "*");
    Check(1, "Total"); // beside all fields it needs a name
    EXPECT_EQ(drive->RowText(4), "Orders|Total|EXP1|Y|Group By|||||");
    Check(1, "ID");
    EXPECT_EQ(drive->RowText(1), "Customers|Name||Y|Group By|||||");
    // The box of a row reaches the map; the row stays.
    drive->Cell(1, wcShow);
    ASSERT_EQ(form->Editors->Current(), form->chkShow);
    QTest::keyClick(form->chkShow, Qt::Key_Space);
    EXPECT_EQ(drive->Text(1, wcShow), "N");
    EXPECT_FALSE(drive->IsChecked(2, "Name"));
    QTest::keyClick(form->chkShow, Qt::Key_Space);
    EXPECT_EQ(drive->Text(1, wcShow), "Y");
    EXPECT_TRUE(drive->IsChecked(2, "Name"));
    EXPECT_EQ(form->mfgFields->Rows(), 6); // an empty row came for the one that went
}

TEST_F(WizardWindow, TakesAFieldThatIsDroppedOnTheGrid)
{
    TwoTables();
    drive->Click(drive->Item(1, "Total"));
    drive->DropField();
    EXPECT_EQ(drive->RowText(1), "Orders|Total||Y|Group By|||||");
    EXPECT_TRUE(drive->IsChecked(1, "Total"));
    drive->DropField(); // it is there
    EXPECT_EQ(form->mfgFields->Rows(), 3);
}

TEST_F(WizardWindow, FillsARowByItsEditors)
{
    TwoTables();
    drive->Cell(1, wcTable);
    drive->Pick(form->cmbTables, "Customers");
    drive->Cell(1, wcField);
    drive->Pick(form->cmbFields, "Name");
    EXPECT_EQ(drive->RowText(1), "Customers|Name||Y|Group By|||||");
    EXPECT_EQ(form->mfgFields->Rows(), 3);
    EXPECT_TRUE(drive->IsChecked(2, "Name"));
    drive->Cell(1, wcAlias);
    drive->Type("Who");
    EXPECT_EQ(drive->Text(1, wcAlias), "Who");
    drive->Cell(1, wcOrderBy);
    drive->Pick(form->cmbOrderBy, "Descending");
    drive->Cell(1, wcCriteria);
    drive->Type("5");
    EXPECT_EQ(drive->Text(1, wcCriteria), "= 5");
    EXPECT_EQ(form->txtCriteria->text(), "5"); // what was typed stays
    drive->Cell(1, wcOr1);
    drive->Type("<7");
    EXPECT_EQ(drive->RowText(1), "Customers|Name|Who|Y|Group By|Descending|= 5|<7||");
    // The list of fields emptied: so is the row but for its criteria.
    drive->Cell(1, wcField);
    form->cmbFields->lineEdit()->selectAll();
    drive->Key(Qt::Key_Delete);
    EXPECT_EQ(drive->RowText(1), "Customers||||||= 5|<7||");
    EXPECT_FALSE(drive->IsChecked(2, "Name"));
    // An expression is typed; it counts when it is left.
    drive->Type("ID + 1");
    drive->Cell(2, wcTable);
    EXPECT_EQ(drive->Text(1, wcField), "ID + 1");
    EXPECT_EQ(drive->Text(1, wcShow), "Y");
}

// A field that was chosen in the grid went with the next click on its table, and one that was deleted came back.
TEST_F(WizardWindow, KeepsChecksAndRowsInStepWhateverIsClicked)
{
    TwoTables();
    drive->Cell(1, wcTable);
    drive->Pick(form->cmbTables, "Orders");
    drive->Cell(1, wcField);
    drive->Pick(form->cmbFields, "ID");
    drive->Click(drive->Item(1, "Total"));
    EXPECT_EQ(drive->Text(1, wcField), "ID");
    drive->Cell(1, wcField);
    drive->Pick(form->cmbFields, "Customer");
    EXPECT_FALSE(drive->IsChecked(1, "ID"));
    drive->Click(drive->Item(1, "Total"));
    EXPECT_EQ(form->Rows().Count(), 2);
    drive->Cell(1, wcField, Qt::RightButton);
    drive->Choose("mnuDelete");
    EXPECT_EQ(form->Rows().Count(), 1);
    drive->Click(drive->Item(1, "Total"));
    EXPECT_EQ(form->Rows().Count(), 1);
}

TEST_F(WizardWindow, OffersWhatItsMenuHasForTheMapAndForTheGrid)
{
    TwoTables();
    Check(1, "ID");
    Check(2, "ID");
    const auto states = [&] {
        QString text;
        for (const char *name : {"mnuAddTable", "mnuRemoveTable", "mnuGroup", "mnuDelete", "mnuInsert", "mnuApply"})
            text += drive->MenuItem(name)->isEnabled() ? '1' : '0';
        return text;
    };
    drive->Click(drive->Ground(), Qt::RightButton);
    EXPECT_EQ(states(), "101001");
    form->mnuTableView->close();
    drive->Cell(2, wcField, Qt::RightButton);
    EXPECT_EQ(states(), "111111");
    drive->Choose("mnuInsert"); // in front of that row
    EXPECT_EQ(drive->Text(2, wcTable), "");
    EXPECT_EQ(drive->Text(3, wcTable), "Customers");
    drive->Cell(3, wcField, Qt::RightButton);
    drive->Choose("mnuRemoveTable"); // the current one: Customers
    EXPECT_EQ(form->TableMap->GetTableList(), "Orders");
    EXPECT_EQ(drive->RowText(1), "Orders|ID||Y|Group By|||||");
    EXPECT_EQ(form->cmbTables->count(), 2); // nothing takes one out
    drive->Cell(1, wcField, Qt::RightButton);
    drive->Choose("mnuGroup");
    EXPECT_EQ(form->mfgFields->ColWidth(wcGroupBy), 1500);
    EXPECT_TRUE(form->Rows().GroupMode && drive->MenuItem("mnuGroup")->isChecked());
    drive->Cell(1, wcGroupBy);
    EXPECT_EQ(form->cmbGroupBy->currentText(), "Group By");
    drive->Pick(form->cmbGroupBy, "Max");
    drive->Cell(1, wcCriteria);
    drive->Type("> 1");
    drive->Cell(1, wcField, Qt::RightButton);
    drive->Choose("mnuApply");
    EXPECT_FALSE(form->Cancelled);
    EXPECT_EQ(form->SQLText, "Select Max (Orders.ID) AS EXP1 From Orders Having (Max (Orders.ID) > 1)");
}

TEST_F(WizardWindow, JoinsByMouseAndSaysSoInBothWays)
{
    TwoTables();
    drive->Drag(drive->Item(1, "Customer"), drive->Item(2, "ID"));
    Check(1, "ID");
    Check(2, "Name");
    EXPECT_EQ(Text(), "Select Orders.ID, Customers.Name\r\nFrom Orders\r\n INNER JOIN Customers ON Orders.Customer = "
                      "Customers.ID");
    EXPECT_NE(form->txtSQL->TextRTF().indexOf("\\cf1"), -1); // in colours
    WithForm<frmJoin>(form.get(), [](frmJoin &join) {
        QTest::keyClick(join.cmbJoin, Qt::Key_Down); // Left Join
        QTest::keyClick(&join, Qt::Key_Return);
    });
    drive->DoubleClick(drive->OnLine(1));
    EXPECT_TRUE(Text().contains("LEFT JOIN Customers"));
    WizardDriver &d = *drive;
    d.Key(Qt::Key_F5);
    EXPECT_EQ(form->SQLText, "Select Orders.ID, Customers.Name From Orders ,Customers Where False");
    EXPECT_FALSE(form->Cancelled || form->isVisible());
}

TEST_F(WizardWindow, AppliesTheJoinsThatItShows)
{
    TwoTables();
    drive->Drag(drive->Item(1, "Customer"), drive->Item(2, "ID"));
    Check(1, "ID");
    const QString shown = Text();
    QTest::mouseClick(form->cmdJoins, Qt::LeftButton);
    EXPECT_EQ(form->SQLText, shown);
    EXPECT_EQ(gConn->Execute(form->SQLText)->RowCount(), 2);
}

TEST_F(WizardWindow, IsDrivenByKeysAlone)
{
    EXPECT_EQ(drive->Focus(), form->TableMap->Hwnd());
    for (const char *name : {"Orders", "Customers"}) {
        WithForm<frmGetSelection>(form.get(), [name](frmGetSelection &picker) {
            QTest::keyClicks(picker.txtCri, name);
            QTest::keyClick(picker.txtCri, Qt::Key_Return);
        });
        // A map with tables has their menus; the grid has the window's.
        if (name == QLatin1String("Orders")) {
            drive->MenuKey();
        } else {
            form->mfgFields->setFocus();
            drive->Key(Qt::Key_Menu);
        }
        ASSERT_TRUE(form->mnuTableView->isVisible());
        QTest::keyClick(form->mnuTableView, Qt::Key_Down);
        QTest::keyClick(form->mnuTableView, Qt::Key_Return);
        ASSERT_TRUE(Until([&] { return form->TableMap->TableCount(name) == 1; }));
    }
    form->TableMap->setFocus();
    drive->Key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(form->TableMap->CurrentTable(), 1);
    for (int i = 0; i < 3; ++i) // *, ID, Customer
        drive->Key(Qt::Key_Down);
    drive->Key(Qt::Key_J, Qt::ControlModifier);
    drive->Key(Qt::Key_Tab);
    drive->Key(Qt::Key_Down);
    drive->Key(Qt::Key_Down); // ID
    drive->Key(Qt::Key_J, Qt::ControlModifier);
    ASSERT_EQ(form->TableMap->Joins().Rows().size(), 1u);
    drive->Key(Qt::Key_Down);
    drive->Key(Qt::Key_Space); // Name
    EXPECT_EQ(drive->RowText(1), "Customers|Name||Y|Group By|||||");
    drive->Key(Qt::Key_Tab); // the line
    WithForm<frmJoin>(form.get(), [](frmJoin &join) {
        for (int i = 0; i < 9 && join.focusWidget() != join.cmbJoin; ++i)
            QTest::keyClick(join.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(join.cmbJoin, Qt::Key_Down);
        QTest::keyClick(join.cmbJoin, Qt::Key_Return);
    });
    drive->Key(Qt::Key_Return);
    EXPECT_EQ(form->TableMap->Joins().Rows()[0].Operator, "Left Join");
    for (int i = 0; i < 9 && drive->Focus() != form->mfgFields; ++i)
        drive->Key(Qt::Key_Tab);
    ASSERT_EQ(drive->Focus(), form->mfgFields);
    drive->Key(Qt::Key_Down); // the second row, with its editor
    ASSERT_EQ(form->Editors->Current(), form->cmbTables);
    EXPECT_EQ(form->Editors->Row(), 2);
    drive->Type("O"); // Orders
    EXPECT_EQ(form->cmbTables->currentText(), "Orders");
    drive->Key(Qt::Key_Tab);
    drive->Type("Total");
    drive->Key(Qt::Key_Tab); // Alias
    EXPECT_EQ(drive->RowText(2), "Orders|Total||Y|Group By|||||");
    drive->Key(Qt::Key_Tab); // Show
    drive->Key(Qt::Key_Tab); // Order By, the column of groups does not show
    ASSERT_EQ(form->Editors->Current(), form->cmbOrderBy);
    drive->Type("D");
    drive->Key(Qt::Key_Tab);
    drive->Type(">4");
    EXPECT_EQ(drive->RowText(2), "Orders|Total||Y|Group By|Descending|>4|||");
    drive->Key(Qt::Key_Escape);
    for (int i = 0; i < 9 && drive->Focus() != form->cmdJoins; ++i)
        drive->Key(Qt::Key_Tab);
    drive->Key(Qt::Key_Space);
    EXPECT_FALSE(form->Cancelled);
    const auto rows = gConn->Execute(form->SQLText);
    QStringList seen;
    for (int row = 0; row < rows->RowCount(); ++row)
        seen << rows->CellText(row, 0) + '=' + rows->CellText(row, 1);
    EXPECT_EQ(seen.join(' '), "Anna=20 Anna=10 =5");
}

TEST_F(WizardWindow, ChangesNothingWhenItIsClosed)
{
    TwoTables();
    Check(1, "ID");
    drive->Cell(1, wcAlias);
    drive->Key(Qt::Key_Escape); // leaves the cell
    EXPECT_TRUE(form->isVisible());
    drive->Key(Qt::Key_Escape); // and the window
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(form->Cancelled);
    Make();
    QTest::mouseClick(form->cmdCancel, Qt::LeftButton);
    EXPECT_TRUE(form->Cancelled && !form->isVisible());
}

TEST_F(WizardWindow, LaysItsPartsOutRoundTheBar)
{
    const int before = form->mfgFields->height();
    QTest::keyClick(form->picSplit, Qt::Key_Up);
    EXPECT_GT(form->mfgFields->height(), before);
    EXPECT_EQ(form->mfgFields->y(), form->picSplit->geometry().bottom() + 1);
    form->resize(form->width(), 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(form->mfgFields->geometry().bottom() + 1, form->mfgFields->parentWidget()->height());
}

// Another connection while the wizard is open: what stands in it stays, and what is read now comes from the new one.
TEST_F(WizardWindow, OutlivesAChangeOfTheConnection)
{
    TwoTables();
    Check(1, "ID");
    OpenSample({"CREATE TABLE Other (X int)"}, "other.db");
    drive->Cell(1, wcField);
    form->cmbFields->showPopup();
    EXPECT_EQ(form->cmbFields->count(), 0); // there is no such table
    form->cmbFields->hidePopup();
    drive->AddTable("Other", 320);
    gConn->Close();
    drive->Cell(1, wcField);
    form->cmbFields->showPopup();
    form->cmbFields->hidePopup();
    EXPECT_EQ(form->TableMap->AddTable("Other"), nullptr);
    drive->Key(Qt::Key_F5);
    EXPECT_EQ(form->SQLText, "Select Orders.ID From Orders ,Customers ,Other");
    gConn.reset();
    EXPECT_EQ(form->JoinedText().SQLText, "Select Orders.ID\r\nFrom Orders, Customers, Other");
}

TEST_F(WizardWindow, RefusesANameThatTheEditorCannotHold)
{
    gConn->Execute("CREATE TABLE \"two  blanks\" (ID int)");
    form->TableMap->AddTable("two  blanks");
    drive->PutAt(1, {20, 20});
    Check(1, "ID");
    drive->Key(Qt::Key_F5);
    EXPECT_TRUE(m_boxes.LastText().startsWith("The editor cannot hold the name of"));
    EXPECT_TRUE(form->Cancelled && form->isVisible());
}

namespace {

class WizardReading : public DataTest
{
};

} // namespace

TEST_F(WizardReading, IsClosedInTheMiddleOfTheFields)
{
    InitColorTable();
    ScriptedDriver driver;
    WorkGate gate;
    std::atomic<int> reads = 0;
    driver.FamilyIs = ADODB::DatabaseFamily::SQLite;
    driver.OnExecute = [&](const QString &sql) {
        if (sql.startsWith("SELECT * FROM") && ++reads > 1)
            gate.Pass();
        ADODB::ExecuteResult result;
        result.Rows = std::make_unique<ScriptedRows>(QStringList{"ID", "Name"}, QList<QStringList>());
        return result;
    };
    ASSERT_TRUE(OpenConnection("Scripted"));
    auto form = std::make_unique<frmSQLWizzard>();
    WizardDriver drive(*form);
    form->show();
    QCoreApplication::processEvents();
    ASSERT_NE(form->TableMap->AddTable("T"), nullptr);
    drive.Cell(1, wcTable);
    drive.Pick(form->cmbTables, "T");
    drive.Cell(1, wcField);
    bool closed = false;
    gate.WhenReached([&] {
        form->close();
        closed = true;
    });
    form->cmbFields->showPopup();
    EXPECT_TRUE(closed);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(form->cmbFields->view()->isVisible());
    EXPECT_TRUE(form->Cancelled);
    form.reset();
    gConn.reset();
}
