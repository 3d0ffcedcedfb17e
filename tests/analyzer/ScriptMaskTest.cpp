// One line of code a field.
#include "AnalyzerFixture.h"
#include "analyzer/frmScriptMask.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/Text.h"
#include "tests/support/WorkGate.h"
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace {

struct ScriptMask : Analyzer
{
    frmScriptMask *mask = nullptr;
    void SetUp() override
    {
        Analyzer::SetUp();
        mask = new frmScriptMask;
        shell.AddChild(mask);
        mask->RefreshForm(S("customers"));
        mask->ShowChild();
    }
};

} // namespace

TEST_F(ScriptMask, TheMasksStandInTheirOrder)
{
    QStringList items;
    for (int i = 0; i < mask->cmbMask->count(); ++i)
        items += mask->cmbMask->itemText(i);
    EXPECT_EQ(items, QStringList({S("rsData.Fields(\"@\").Value = txt@"), S("rsData(\"@\") = txt@"),
                                  S("rsData!@ = txt@"), S("txt@.Text = rsData!@"), S("rsDestination!@ = rsSource!@")}));
    EXPECT_EQ(mask->findChild<QLabel *>(S("lblNote"))->text(),
              S("* the [@] sign is used as a wild card that will be replaced by the field name"));
    EXPECT_EQ(mask->Tag, S("1"));
    EXPECT_TRUE(mask->Offers(S("RefreshForm")));
    EXPECT_FALSE(mask->Offers(S("mnuSave")));
    EXPECT_EQ(mask->MenuSettings(), clsMenuSettings());
    EXPECT_EQ(mask->Table(), S("customers"));
    EXPECT_FALSE(mask->cmbMask->accessibleName().isEmpty() || mask->txtCode->accessibleName().isEmpty());
}

TEST_F(ScriptMask, RunWritesALineAFieldAndKeepsTheMask)
{
    mask->cmbMask->setFocus();
    mask->cmbMask->clearEditText();
    QTest::keyClicks(mask->cmbMask, S("x!@=y@"));
    EXPECT_EQ(GetSetting(S("Mask")), QString());
    QTest::keyClick(mask->cmbMask, Qt::Key_Return);
    EXPECT_EQ(mask->txtCode->Text(), S("x!id=yid\r\nx!name=yname"));
    EXPECT_EQ(GetSetting(S("Mask")), S("x!@=y@"));
    const QTextBlock first = mask->txtCode->document()->firstBlock();
    mask->txtCode->ShowAllColours();
    QStringList colours;
    for (const auto &range : first.layout()->formats())
        colours += first.text().mid(range.start, range.length) + u' ' + range.format.foreground().color().name();
    // Names as numbers or strings are coloured, the rest as keywords.
    EXPECT_EQ(colours, QStringList({S("x! #7d91c3"), S("id #c3af7d"), S("=y #7d91c3"), S("id #c3af7d")}));
    QTest::mouseClick(mask->cmdClipBoard, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text().remove(u'\r'), S("x!id=yid\nx!name=yname"));
    frmScriptMask again;
    EXPECT_EQ(again.cmbMask->currentText(), S("x!@=y@"));
}

TEST_F(ScriptMask, AMaskOfTheListIsRunByTheButton)
{
    mask->cmbMask->setFocus();
    mask->cmbMask->setCurrentIndex(0);
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton);
    EXPECT_EQ(mask->txtCode->Text(),
              S("rsData.Fields(\"id\").Value = txtid\r\nrsData.Fields(\"name\").Value = txtname"));
    mask->cmbMask->setCurrentIndex(2);
    mask->cmdRun->setFocus();
    QTest::keyClick(mask->cmdRun, Qt::Key_Return);
    // The blank behind a name ends its colour switch.
    EXPECT_EQ(mask->txtCode->Text(), S("rsData!id= txtid\r\nrsData!name= txtname"));
}

TEST_F(ScriptMask, ATableThatCannotBeReadIsToldAndTheCodeStays)
{
    mask->Run();
    const QString before = mask->txtCode->Text();
    ASSERT_FALSE(before.isEmpty());
    gConn->Execute(S("drop view names"));
    gConn->Execute(S("drop table customers"));
    mask->Run();
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_TRUE(dialogs.LastText().startsWith(S("Error: ")));
    EXPECT_TRUE(dialogs.LastText().contains(S("customers")));
    EXPECT_EQ(dialogs.LastTitle(), S("Error"));
    EXPECT_EQ(dialogs.Boxes.last().Icon, int(mbExclamation));
    EXPECT_EQ(mask->txtCode->Text(), before);
    gConn.reset();
    mask->Run();
    EXPECT_EQ(dialogs.LastTitle(), S("Conection"));
}

TEST_F(ScriptMask, ANewConnectionKeepsTheTableAndReadsItAgain)
{
    gConns().Add(S("a"), S("One"), QString());
    mask->cmbMask->setEditText(S("@"));
    mask->Run();
    EXPECT_EQ(mask->txtCode->Text(), S("id\r\nname"));
    gConn->Execute(S("alter table customers add city text"));
    mask->RefreshForm(S("One"));
    EXPECT_EQ(mask->Table(), S("customers"));
    EXPECT_EQ(mask->txtCode->Text(), S("id\r\nname\r\ncity"));
    gConn->Execute(S("drop view names"));
    gConn->Execute(S("drop table customers"));
    mask->RefreshForm(S("One")); // no box while connecting
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_TRUE(shell.Status().startsWith(S("Error: ")));
    mask->RefreshForm(S("orders")); // no connection's name: a table's
    EXPECT_EQ(mask->Table(), S("orders"));
}

TEST_F(ScriptMask, AnAnswerOfTheFormerConnectionComesTooLate)
{
    gConns().Add(S("a"), S("One"), QString());
    const ADODB::ConnectionPtr next = gConn;
    ScriptedDriver driver;
    WorkGate gate;
    bool answered = false;
    driver.OnExecute = [&](const QString &) {
        gate.Pass();
        ADODB::ExecuteResult result;
        result.Rows = std::make_unique<ScriptedRows>(QStringList(S("old")), QList<QStringList>());
        return result;
    };
    gConn = ADODB::Connection::Create();
    gConn->Open(S("Scripted"));
    mask->cmbMask->setEditText(S("@"));
    gate.WhenReached([&] {
        gConn = next;
        mask->RefreshForm(S("One"));
        EXPECT_EQ(mask->txtCode->Text(), S("id\r\nname"));
        answered = true;
    });
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton);
    EXPECT_TRUE(answered);
    EXPECT_EQ(mask->txtCode->Text(), S("id\r\nname"));
    mask->cmbMask->setEditText(S("[@]"));
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton); // and the button works on
    EXPECT_EQ(mask->txtCode->Text(), S("[id]\r\n[name]"));
}

TEST_F(ScriptMask, TheFirstNameIsATableEvenIfAConnectionIsCalledSo)
{
    gConns().Add(S("a"), S("orders"), QString());
    frmScriptMask fresh;
    fresh.RefreshForm(S("orders"));
    EXPECT_EQ(fresh.Table(), S("orders"));
}

TEST_F(ScriptMask, ANameWithABlankIsQuoted)
{
    gConn->Execute(S("create table \"order details\"(a integer)"));
    mask->RefreshForm(S("order details"));
    mask->cmbMask->setEditText(S("[@]"));
    mask->Run();
    EXPECT_EQ(mask->txtCode->Text(), S("[a]"));
}

// Field names are data: what RTF takes for its own is shown all the same. A digit at the head of a name is the known
// exception.
TEST_F(ScriptMask, OddFieldNamesAndMasks)
{
    gConn->Execute(S("create table odd(\"a b\" int, \"[c]\" int, \"d\"\"e'\" int, \"f}{\\g\" int, \"\xc3\xa4@\" int, "
                     "\"1st\" int)"));
    mask->RefreshForm(S("odd"));
    mask->cmbMask->setEditText(S("{@}\\;"));
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton);
    EXPECT_EQ(mask->txtCode->Text(),
              S("{a b}\\;\r\n{[c]}\\;\r\n{d\"e'}\\;\r\n{f}{\\g}\\;\r\n{\xc3\xa4@}\\;\r\n{st}\\;"));
    QTest::mouseClick(mask->cmdClipBoard, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), mask->txtCode->Text());
    mask->cmbMask->setEditText(S("no sign"));
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton);
    EXPECT_EQ(mask->txtCode->Text().count(S("no sign")), 6);
    mask->cmbMask->setEditText(QString());
    QTest::mouseClick(mask->cmdRun, Qt::LeftButton);
    EXPECT_EQ(mask->txtCode->Text().trimmed(), QString());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(ScriptMask, EveryControlIsReachedByKeyboard)
{
    mask->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(mask));
    mask->cmbMask->setFocus();
    QList<QWidget *> reached;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached += QApplication::focusWidget();
    }
    for (QWidget *widget : {static_cast<QWidget *>(mask->cmbMask), static_cast<QWidget *>(mask->txtCode),
                            static_cast<QWidget *>(mask->cmdRun), static_cast<QWidget *>(mask->cmdClipBoard)})
        EXPECT_TRUE(reached.contains(widget)) << qPrintable(widget->objectName());
    mask->cmbMask->setFocus();
    QTest::keyClick(mask->cmbMask, Qt::Key_Down); // the next mask of the list
    EXPECT_EQ(mask->cmbMask->currentText(), mask->cmbMask->itemText(1));
    QTest::keyClick(mask, Qt::Key_R, Qt::AltModifier); // a button shows its press before it acts
    const QString code = S("rsData(\"id\") = txtid\r\nrsData(\"name\") = txtname");
    EXPECT_TRUE(QTest::qWaitFor([&] { return mask->txtCode->Text() == code; }));
    QTest::keyClick(mask, Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::clipboard()->text() == code; }));
    QTest::keyClick(mask, Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), mask->cmbMask);
}

TEST_F(ScriptMask, EscapeCloses)
{
    QPointer<frmScriptMask> closing = mask;
    QTest::keyClick(mask->cmbMask, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(!closing || !closing->isVisible());
}
