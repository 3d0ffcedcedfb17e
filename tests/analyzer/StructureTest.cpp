// The dialog of statement types, and what a table becomes in the text by it.
#include "AnalyzerFixture.h"
#include "StructureAnswer.h"
#include "tests/support/Text.h"
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <algorithm>
#include <memory>

namespace {

QStringList Types(const frmGetSQLStructure &ask)
{
    QStringList types;
    for (int i = 0; i < ask.cmbType->count(); ++i)
        types += ask.cmbType->itemText(i);
    return types;
}

struct Structure : Analyzer
{
    void DoubleClick(const char *key)
    {
        TreeView *tree = window->TV;
        Node *node = tree->Nodes().Item(S(key));
        node->EnsureVisible();
        tree->SetSelectedItem(node);
        const QPoint place = tree->visualRect(tree->currentIndex()).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
        QCoreApplication::processEvents();
    }
    void Drop(const char *key, QPoint at = QPoint(5, 5))
    {
        TreeView *tree = window->TV;
        tree->SetSelectedItem(tree->Nodes().Item(S(key)));
        const std::unique_ptr<QMimeData> data(tree->model()->mimeData({tree->currentIndex()}));
        QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->txtSQL->viewport(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->txtSQL->viewport(), &drop);
        QTest::qWait(30);
    }
};

} // namespace

TEST_F(Structure, TheDialogStandsAsTold)
{
    frmGetSQLStructure ask;
    EXPECT_EQ(ask.windowTitle(), S("SQL Structure"));
    EXPECT_EQ(Types(ask), QStringList({S("Select"), S("Insert"), S("Update"), S("Delete"), S("Drop"), S("Alter")}));
    const QList<std::pair<QCheckBox *, QString>> boxes = {{ask.chkFields, S("Name Fields")},
                                                          {ask.chkGroupBy, S("Group by")},
                                                          {ask.chkHaving, S("Having")},
                                                          {ask.chkOrderBy, S("Order By")}};
    for (const auto &[box, caption] : boxes) {
        EXPECT_EQ(box->text().remove(u'&'), caption);
        EXPECT_FALSE(box->isChecked());
        EXPECT_TRUE(box->isEnabled());
    }
    EXPECT_FALSE(ask.cmbType->accessibleName().isEmpty());
    EXPECT_TRUE(ask.Cancelled);
}

TEST_F(Structure, OnlySelectOffersTheThreeClauses)
{
    frmGetSQLStructure ask;
    ask.show();
    for (QCheckBox *box : {ask.chkFields, ask.chkGroupBy, ask.chkHaving, ask.chkOrderBy})
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    ask.cmbType->setFocus();
    QTest::keyClick(ask.cmbType, Qt::Key_Down);
    EXPECT_EQ(ask.cmbType->currentText(), S("Insert"));
    EXPECT_TRUE(ask.chkFields->isEnabled());
    for (const QCheckBox *box : {ask.chkGroupBy, ask.chkHaving, ask.chkOrderBy}) {
        EXPECT_FALSE(box->isEnabled());
        EXPECT_TRUE(box->isChecked());
    }
    QTest::keyClick(&ask, Qt::Key_Return);
    EXPECT_FALSE(ask.Cancelled);
    EXPECT_EQ(ask.StatementType, StatementKind::Insert);
    EXPECT_TRUE(ask.NameFields);
    EXPECT_FALSE(ask.GroupBy || ask.Having || ask.OrderBy); // checked, and not on offer
    frmGetSQLStructure again;
    again.cmbType->setCurrentIndex(5);
    again.cmbType->setCurrentIndex(0);
    EXPECT_TRUE(again.chkGroupBy->isEnabled());
}

TEST_F(Structure, TheBoxesAreKeptAlsoByACancel)
{
    {
        frmGetSQLStructure ask;
        ask.show();
        ask.chkHaving->setChecked(true);
        ask.chkFields->setChecked(true);
        QTest::keyClick(&ask, Qt::Key_Escape);
        EXPECT_TRUE(ask.Cancelled);
        EXPECT_FALSE(ask.isVisible());
        EXPECT_FALSE(ask.NameFields);
    }
    EXPECT_EQ(GetSetting(S("FieldNames")), S("1"));
    EXPECT_EQ(GetSetting(S("GroupBy")), S("0"));
    EXPECT_EQ(GetSetting(S("Having")), S("1"));
    EXPECT_EQ(GetSetting(S("OrderBy")), S("0"));
    frmGetSQLStructure ask;
    EXPECT_TRUE(ask.chkFields->isChecked());
    EXPECT_FALSE(ask.chkGroupBy->isChecked());
    EXPECT_TRUE(ask.chkHaving->isChecked());
    EXPECT_FALSE(ask.chkOrderBy->isChecked());
    EXPECT_EQ(ask.cmbType->currentIndex(), 0); // the type is not kept
    ask.show();
    QTest::mouseClick(ask.cmdOK, Qt::LeftButton);
    EXPECT_TRUE(ask.NameFields && ask.Having);
    EXPECT_FALSE(ask.GroupBy || ask.OrderBy);
}

TEST_F(Structure, ATableDroppedOnAnEmptyEditorBecomesTheTextAndIsSelected)
{
    StructureAnswer answer([](frmGetSQLStructure &ask) {
        for (QCheckBox *box : {ask.chkFields, ask.chkGroupBy, ask.chkHaving, ask.chkOrderBy})
            box->setChecked(true);
        QTest::mouseClick(ask.cmdOK, Qt::LeftButton);
    });
    Drop("customers");
    EXPECT_EQ(answer.shown, 1);
    const QString text = window->Text();
    EXPECT_EQ(text.simplified(), S("SELECT id, name FROM customers GROUP BY id, name HAVING [Expression]='' "
                                   "ORDER BY id, name"));
    EXPECT_EQ(window->txtSQL->SelStart(), 0);
    EXPECT_EQ(window->txtSQL->SelLength(), text.size());
    EXPECT_EQ(side.FindBar(S("DYNA"))->Items().Count(), 1);
}

TEST_F(Structure, ADroppedTableStandsBehindABlankLine)
{
    window->SetText(S("select 1"));
    StructureAnswer answer;
    Drop("names", QPoint(300, 200)); // a view, behind the text
    const QString text = window->Text();
    ASSERT_TRUE(text.startsWith(S("select 1\r\n\r\n")));
    EXPECT_EQ(text.mid(12).simplified(), S("SELECT * FROM names"));
    EXPECT_EQ(window->txtSQL->SelStart(), 12);
    EXPECT_EQ(window->txtSQL->SelText(), text.mid(12));
    EXPECT_EQ(Colours(0), "11111100"); // the old text keeps its colours
    const std::string first = Colours(2);
    EXPECT_EQ(std::count(first.begin(), first.end(), '1'), 10) << first; // and the new one has its own
}

// It went behind the text, wherever it was dropped.
TEST_F(Structure, ADroppedTableGoesInAtTheDropPoint)
{
    window->SetText(S("select 1\r\nselect 2"));
    window->txtSQL->SetSelStart(10);
    const QPoint secondLine = window->txtSQL->cursorRect().center();
    window->txtSQL->SetSelStart(0);
    StructureAnswer answer;
    Drop("names", secondLine);
    const QString text = window->Text();
    EXPECT_TRUE(text.startsWith(S("select 1\r\n\r\n\r\n"))) << qPrintable(text);
    EXPECT_TRUE(text.endsWith(S("\r\n\r\nselect 2"))) << qPrintable(text);
    EXPECT_EQ(window->txtSQL->SelText().simplified(), S("SELECT * FROM names"));
    EXPECT_EQ(window->txtSQL->SelStart(), 14);
}

TEST_F(Structure, EachTypeOfStatement)
{
    // The blank behind a closing bracket goes when the text is coloured.
    const QStringList wanted = {S("SELECT * FROM orders"),
                                S("INSERT INTO orders () VALUES ( [Values])"),
                                S("UPDATE orders SET WHERE [Expression]"),
                                S("DELETE FROM orders WHERE [Expression]"),
                                S("DROP TABLE orders"),
                                QString()};
    for (int type = 0; type < 6; ++type) {
        window->SetText(QString());
        StructureAnswer answer([type](frmGetSQLStructure &ask) {
            ask.cmbType->setFocus();
            for (int i = 0; i < type; ++i)
                QTest::keyClick(ask.cmbType, Qt::Key_Down);
            QTest::keyClick(&ask, Qt::Key_Return);
        });
        Drop("orders");
        EXPECT_EQ(answer.shown, 1);
        // The formatter takes line ends out, so the words of ALTER run together.
        if (type == 5)
            EXPECT_EQ(window->Text().remove(u' ').remove(S("\r\n")),
                      S("ALTERTABLEordersADDcolumn_namedatatypeMODIFYcolumn_namedatatypeDROPcolumn_namedatatype"));
        else
            EXPECT_EQ(window->Text().simplified(), wanted[type]);
    }
}

namespace {

// What a choice of boxes makes of "customers", by its rule; one blank for each stretch of them.
QString Wanted(int type, bool fields, bool group, bool having, bool order)
{
    const QString list = S("id, name");
    switch (type) {
    case 0:
        return S("SELECT ") + (fields ? list : S("*")) + S(" FROM customers") +
               (group ? S(" GROUP BY ") + list : S("")) + (group && having ? S(" HAVING [Expression]=''") : S("")) +
               (order ? S(" ORDER BY ") + list : S(""));
    case 1:
        return S("INSERT INTO customers (") + (fields ? list : S("")) + S(") VALUES ( [Values])");
    case 2:
        return S("UPDATE customers SET WHERE [Expression]");
    case 3:
        return S("DELETE FROM customers WHERE [Expression]");
    default:
        return S("DROP TABLE customers");
    }
}

void ByMouse(frmGetSQLStructure &ask, int type, const QList<QCheckBox *> &boxes)
{
    QTest::mouseClick(ask.cmbType, Qt::LeftButton);
    QAbstractItemView *list = ask.cmbType->view();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->isVisible(); }));
    QTest::qWait(QApplication::doubleClickInterval() + 50); // the list takes a quick release for the opening click's
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(type, 0)).center());
    for (QCheckBox *box : boxes)
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    QTest::mouseClick(ask.cmdOK, Qt::LeftButton);
}

void ByKeys(frmGetSQLStructure &ask, int type, const QList<QCheckBox *> &boxes)
{
    ask.cmdOK->setFocus();
    QTest::keyClick(&ask, Qt::Key_T, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), ask.cmbType);
    for (QCheckBox *box : boxes) { // a box shows its press before it turns
        const QString caption = box->text();
        QTest::keyClick(&ask, Qt::Key(caption.at(caption.indexOf(u'&') + 1).toUpper().unicode()), Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return box->isChecked(); })) << qPrintable(caption);
    }
    QTest::keyClick(&ask, Qt::Key_T, Qt::AltModifier);
    for (int i = 0; i < type; ++i)
        QTest::keyClick(ask.cmbType, Qt::Key_Down);
    QTest::keyClick(ask.cmbType, Qt::Key_Return);
}

} // namespace

// Select with every choice of boxes, by keys; every type with all boxes by keys and by mouse.
TEST_F(Structure, EveryChoiceReachesTheEditor)
{
    const auto choose = [&](int type, int boxes, bool mouse) {
        SCOPED_TRACE(testing::Message() << type << ' ' << boxes << ' ' << mouse);
        for (const char *setting : {"FieldNames", "GroupBy", "Having", "OrderBy"})
            SaveSetting(S(setting), S("0"));
        window->SetText(QString());
        StructureAnswer answer([&](frmGetSQLStructure &ask) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == ask.cmbType; }));
            QList<QCheckBox *> chosen;
            int bit = 1;
            for (QCheckBox *box : {ask.chkFields, ask.chkGroupBy, ask.chkHaving, ask.chkOrderBy}) {
                if (boxes & bit)
                    chosen += box;
                bit *= 2;
            }
            (mouse ? ByMouse : ByKeys)(ask, type, chosen);
        });
        Drop("customers");
        EXPECT_EQ(answer.shown, 1);
        EXPECT_EQ(window->Text().simplified(), Wanted(type, boxes & 1, boxes & 2, boxes & 4, boxes & 8));
    };
    for (int boxes = 0; boxes < 16; ++boxes)
        choose(0, boxes, false);
    for (int type = 0; type < 5; ++type)
        for (const bool mouse : {false, true})
            choose(type, 15, mouse);
}

TEST_F(Structure, CancelLeavesTextAndHistoryAlone)
{
    window->SetText(S("select 1"));
    StructureAnswer answer([](frmGetSQLStructure &ask) { QTest::keyClick(&ask, Qt::Key_Escape); });
    Drop("orders");
    DoubleClick("orders");
    EXPECT_EQ(answer.shown, 2);
    EXPECT_EQ(window->Text(), S("select 1"));
    EXPECT_EQ(side.FindBar(S("DYNA"))->Items().Count(), 0);
}

TEST_F(Structure, ADoubleClickPutsTheStatementInAtTheCaret)
{
    window->SetText(S("-- a\r\n"));
    window->txtSQL->SetSelStart(6);
    StructureAnswer answer;
    DoubleClick("orders");
    EXPECT_EQ(answer.shown, 1);
    EXPECT_TRUE(window->Text().startsWith(S("-- a\r\n")));
    EXPECT_EQ(window->Text().mid(6).simplified(), S("SELECT * FROM orders"));
    DoubleClick("customers-name"); // a field asks nothing
    EXPECT_EQ(answer.shown, 1);
    EXPECT_TRUE(window->Text().contains(S(" name ")));
}

TEST_F(Structure, ATableThatIsGoneGivesAStatementWithoutFields)
{
    gConn->Execute(S("drop table orders"));
    StructureAnswer answer([](frmGetSQLStructure &ask) {
        ask.chkFields->setChecked(true);
        ask.cmbType->setCurrentIndex(1);
        QTest::keyClick(&ask, Qt::Key_Return);
    });
    Drop("orders");
    EXPECT_EQ(window->Text().simplified(), S("INSERT INTO orders () VALUES ( [Values])"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Structure, ANameWithABlankIsQuoted)
{
    gConn->Execute(S("create table \"order details\"(a integer)"));
    window->ToolBar(S("SQLRefresh"));
    StructureAnswer answer;
    Drop("order details");
    EXPECT_EQ(window->Text().simplified(), S("SELECT * FROM [order details]"));
}
