// The join dialog by itself: its lists, the pair of equal names, the ways in which it ends.

#include "ado/Recordset.h"
#include "tests/data/House.h"
#include "visual/frmJoin.h"
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace {

QStringList Texts(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts;
}

class JoinDialog : public DataTest
{
protected:
    void SetUp() override
    {
        OpenSample({"CREATE TABLE Orders (ID int, CustomerID int, Note text)",
                    "CREATE TABLE Items (Price int, CustomerID int, ID int)", "CREATE TABLE Other (x int, id int)"});
    }
    static void Load(frmJoin &form, const QString &left = "Orders", const QString &right = "Items")
    {
        form.LoadFields(left, left, 0);
        form.LoadFields(right, right, 1);
    }
    static QStringList Result(const frmJoin &form)
    {
        return {form.Cancelled ? "cancelled" : "ok", form.Table1, form.Field1, form.Table2, form.Field2, form.JoinType};
    }
    // Shows the dialog and does this with it.
    template <class Act> void Show(frmJoin &form, Act act)
    {
        const int met = m_dialogs;
        WithDialog([&form, act](QWidget *dialog) {
            ASSERT_EQ(dialog, &form);
            ASSERT_TRUE(QTest::qWaitForWindowActive(dialog)); // else nothing has the focus yet
            act();
        });
        form.ShowModal();
        EXPECT_EQ(m_dialogs, met + 1);
        EXPECT_FALSE(form.isVisible());
    }
};

} // namespace

TEST_F(JoinDialog, BeginsAsAnInnerJoinThatIsCancelled)
{
    const frmJoin form;
    EXPECT_EQ(form.windowTitle(), "Join");
    EXPECT_TRUE(form.Cancelled);
    EXPECT_EQ(Texts(form.cmbJoin), QStringList({"Inner Join", "Left Join", "Right Join"}));
    EXPECT_EQ(form.cmbJoin->currentText(), "Inner Join");
    EXPECT_EQ(Texts(form.cmbOperator), QStringList("="));
    EXPECT_EQ(form.cmbField[0]->count() + form.cmbField[1]->count(), 0);
    QStringList labels;
    for (const QLabel *label : form.findChildren<QLabel *>())
        labels << QString(label->text()).remove('&');
    EXPECT_EQ(labels, QStringList({"Table", "Field", "Operator", "Join Type"}));
}

TEST_F(JoinDialog, ShowsTheFieldsInTheirOrderUnderTheGivenName)
{
    frmJoin form;
    form.LoadFields("Orders", "Orders", 0);
    form.LoadFields("Items", "Items_Copy1", 1);
    EXPECT_EQ(form.txtTable1->text(), "Orders");
    EXPECT_EQ(form.txtTable2->text(), "Items_Copy1");
    EXPECT_EQ(Texts(form.cmbField[0]), QStringList({"ID", "CustomerID", "Note"}));
    EXPECT_EQ(Texts(form.cmbField[1]), QStringList({"Price", "CustomerID", "ID"}));
    EXPECT_EQ(form.cmbField[0]->currentText(), "ID");
    EXPECT_EQ(form.cmbField[1]->currentText(), "Price");
    form.LoadFields("Other", "Other", 2); // any side but the first is the second
    EXPECT_EQ(Texts(form.cmbField[1]), QStringList({"x", "id"}));
    EXPECT_EQ(form.txtTable2->text(), "Other");
}

TEST_F(JoinDialog, ClearsAListForABlankNameAndShowsNoneOfIt)
{
    frmJoin form;
    Load(form);
    form.LoadFields("   ", "blank", 0);
    EXPECT_EQ(form.cmbField[0]->count(), 0);
    EXPECT_EQ(form.txtTable1->text(), "Orders");
    EXPECT_EQ(form.cmbField[1]->count(), 3);
}

TEST_F(JoinDialog, LeavesTheListOfWhatCannotBeReadEmptyAndSaysNothing)
{
    frmJoin form;
    Load(form);
    form.LoadFields("nowhere", "nowhere", 1);
    EXPECT_EQ(form.txtTable2->text(), "nowhere");
    EXPECT_EQ(form.cmbField[1]->count(), 0);
    gConn->Close();
    form.LoadFields("Orders", "closed", 0);
    EXPECT_EQ(form.cmbField[0]->count(), 0);
    gConn.reset();
    form.LoadFields("Orders", "gone", 0);
    EXPECT_EQ(form.txtTable1->text(), "gone");
    EXPECT_EQ(form.cmbField[0]->count(), 0);
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(JoinDialog, ReachesATableWhateverItsName)
{
    const QStringList names = {"Order Details", "select", "a\"b]c'd", QString::fromUtf8("שלום"), QString(200, 'n')};
    frmJoin form;
    for (const QString &name : names) {
        gConn->Execute("CREATE TABLE \"" + QString(name).replace('"', "\"\"") + "\" (own int)");
        form.LoadFields(name, name, 0);
        EXPECT_EQ(Texts(form.cmbField[0]), QStringList("own")) << name;
        EXPECT_EQ(form.txtTable1->text(), name);
    }
}

TEST_F(JoinDialog, ReadsTheFieldsOfAStatementAndRunsNothingElse)
{
    frmJoin form;
    form.LoadFields("SELECT ID AS Number, Note FROM Orders", "Orders of today", 0);
    EXPECT_EQ(Texts(form.cmbField[0]), QStringList({"Number", "Note"}));
    EXPECT_EQ(form.txtTable1->text(), "Orders of today");
    form.LoadFields("SELECT 1); DROP TABLE Orders; SELECT (1", "two at once", 0);
    EXPECT_EQ(form.cmbField[0]->count(), 0);
    form.LoadFields("Orders; DROP TABLE Orders", "a name with a statement", 0);
    EXPECT_EQ(form.cmbField[0]->count(), 0);
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM Orders"));
}

TEST_F(JoinDialog, ChoosesTheFirstPairOfEqualNames)
{
    frmJoin form;
    Load(form);
    form.FindMatch(); // the first list leads, though CustomerID comes first in the second one
    EXPECT_EQ(form.cmbField[0]->currentText(), "ID");
    EXPECT_EQ(form.cmbField[1]->currentText(), "ID");
    Load(form, "Orders", "Other");
    form.cmbField[0]->setCurrentIndex(2);
    form.FindMatch(); // "id" is another name
    EXPECT_EQ(form.cmbField[0]->currentText(), "Note");
    EXPECT_EQ(form.cmbField[1]->currentText(), "x");
}

TEST_F(JoinDialog, GivesWhatWasChosenByKeys)
{
    frmJoin form;
    Load(form);
    Show(form, [&] {
        EXPECT_TRUE(IsSkinned(&form));
        EXPECT_TRUE(form.cmbField[0]->hasFocus());
        QTest::keyClick(form.cmbField[0], Qt::Key_Down);
        QTest::keyClick(&form, Qt::Key_Tab);
        ASSERT_TRUE(form.cmbField[1]->hasFocus());
        QTest::keyClick(form.cmbField[1], Qt::Key_C);
        QTest::keyClick(form.cmbField[1], Qt::Key_J, Qt::AltModifier);
        ASSERT_TRUE(form.cmbJoin->hasFocus());
        QTest::keyClick(form.cmbJoin, Qt::Key_Down, Qt::AltModifier); // the list drops
        QWidget *list = form.cmbJoin->view();
        ASSERT_TRUE(list->isVisible());
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Return);
        QTest::keyClick(form.cmbJoin, Qt::Key_Return);
    });
    EXPECT_EQ(Result(form), QStringList({"ok", "Orders", "CustomerID", "Items", "CustomerID", "Left Join"}));
}

TEST_F(JoinDialog, EndsByEachOfItsWays)
{
    struct Way
    {
        const char *name;
        void (*go)(frmJoin &form);
        bool ok;
    };
    const Way ways[] = {
        {"OK", [](frmJoin &form) { QTest::mouseClick(form.cmdOK, Qt::LeftButton); }, true},
        {"Return", [](frmJoin &form) { QTest::keyClick(&form, Qt::Key_Return); }, true},
        {"Cancel", [](frmJoin &form) { QTest::mouseClick(form.cmdCancel, Qt::LeftButton); }, false},
        {"Escape", [](frmJoin &form) { QTest::keyClick(form.cmbField[0], Qt::Key_Escape); }, false},
        {"the close box", [](frmJoin &form) { form.close(); }, false},
    };
    for (const Way &way : ways) {
        frmJoin form;
        Load(form);
        Show(form, [&] { way.go(form); });
        const QStringList wanted = {"ok", "Orders", "ID", "Items", "Price", "Inner Join"};
        EXPECT_EQ(Result(form), way.ok ? wanted : QStringList({"cancelled", "", "", "", "", ""})) << way.name;
    }
}

TEST_F(JoinDialog, TakesAnOKWithAnEmptyListForACancel)
{
    for (const int side : {0, 1}) {
        frmJoin form;
        Load(form);
        form.LoadFields("nowhere", "nowhere", side);
        Show(form, [&] { Click(&form, "cmdOK"); });
        EXPECT_TRUE(form.Cancelled);
        EXPECT_EQ(side ? form.Field2 : form.Field1, "");
        EXPECT_EQ(side ? form.Field1 : form.Field2, side ? "ID" : "Price");
    }
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

// With BRINDLEWICK_GALLERY set to a folder the dialog's picture is kept there, to be looked at.
TEST_F(JoinDialog, ShowsWhichControlHasTheKeyboard)
{
    const int flash = QApplication::cursorFlashTime();
    QApplication::setCursorFlashTime(0); // a caret that stands
    frmJoin form;
    Load(form);
    form.LoadFields("Items", "Items_Copy1", 1);
    form.FindMatch();
    Show(form, [&] {
        const QString folder = qEnvironmentVariable("BRINDLEWICK_GALLERY");
        EXPECT_TRUE(folder.isEmpty() || form.grab().save(QDir(folder).filePath("join.png")));
        const QList<QWidget *> controls = {form.txtTable1,   form.txtTable2, form.cmbField[0], form.cmbField[1],
                                           form.cmbOperator, form.cmbJoin,   form.cmdOK,       form.cmdCancel};
        for (QWidget *control : controls) {
            EXPECT_GE(control->width(), control->minimumSizeHint().width()) << control->objectName();
            if (QWidget *before = QApplication::focusWidget())
                before->clearFocus();
            const QImage without = control->grab().toImage();
            control->setFocus(Qt::ShortcutFocusReason);
            EXPECT_NE(control->grab().toImage(), without) << control->objectName();
        }
        form.reject();
    });
    QApplication::setCursorFlashTime(flash);
}
