#include "controls/ListView.h"
#include "MakeRecordset.h"
#include "controls/ControlError.h"
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

void Fill(ListView &list, const QStringList &texts)
{
    list.AddColumn(QStringLiteral("Name"), 1500);
    list.AddColumn(QStringLiteral("More"), 3000);
    for (const QString &text : texts)
        list.SetSubItem(list.AddItem(text, text + QStringLiteral("!")), 1, text.toUpper());
}

QString Texts(const ListView &list, int column = 0)
{
    QStringList texts;
    for (qint64 row = 0; row < list.Count(); ++row)
        texts << list.SubItem(row, column);
    return texts.join(u',');
}

const QStringList fruits{QStringLiteral("pear"), QStringLiteral("Apple"), QStringLiteral("banana"),
                         QStringLiteral("apricot")};

} // namespace

TEST(ListView, HoldsTextsSubItemsAndTags)
{
    ListView list;
    Fill(list, fruits);
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(list.ColumnText(1), QStringLiteral("More"));
    EXPECT_EQ(list.ColumnWidth(0), 1500);
    EXPECT_EQ(list.SubItem(1, 1), QStringLiteral("APPLE"));
    EXPECT_EQ(list.Tag(2), QStringLiteral("banana!"));
    list.SetTag(2, QStringLiteral("t"));
    list.SetText(2, QStringLiteral("kiwi"));
    EXPECT_EQ(list.Text(2), QStringLiteral("kiwi"));
    EXPECT_EQ(list.Tag(2), QStringLiteral("t"));
    list.RemoveItem(0);
    EXPECT_EQ(Texts(list), QStringLiteral("Apple,kiwi,apricot"));
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.ColumnCount(), 2);
    list.ClearColumns();
    EXPECT_EQ(list.ColumnCount(), 0);
}

TEST(ListView, RaisesOutOfRange)
{
    ListView list;
    Fill(list, fruits);
    EXPECT_THROW(list.Text(4), ControlError);
    EXPECT_THROW(list.Text(-1), ControlError);
    EXPECT_THROW(list.SetTag(9, QString()), ControlError);
    EXPECT_THROW(list.ColumnText(2), ControlError);
    EXPECT_THROW(list.SetSortKey(5), ControlError);
    EXPECT_THROW(list.RemoveItem(4), ControlError);
    EXPECT_EQ(list.SubItem(0, 7), QString());
}

TEST(ListView, SortsWithoutCaseAndKeepsTheSelection)
{
    ListView list;
    Fill(list, fruits);
    list.SelectRow(2);
    EXPECT_FALSE(list.Sorted());
    EXPECT_EQ(list.SortOrder(), lvwAscending);
    list.SetSorted(true);
    EXPECT_EQ(Texts(list), QStringLiteral("Apple,apricot,banana,pear"));
    EXPECT_EQ(list.SelectedRow(), 2);
    list.SetSortOrder(lvwDescending);
    EXPECT_EQ(Texts(list), QStringLiteral("pear,banana,apricot,Apple"));
    EXPECT_EQ(list.Text(list.SelectedRow()), QStringLiteral("banana"));
    EXPECT_EQ(list.AddItem(QStringLiteral("blueberry")), 1);
    list.SetSortKey(1);
    EXPECT_EQ(list.Text(0), QStringLiteral("pear"));
    EXPECT_EQ(list.Tag(0), QStringLiteral("pear!"));
}

TEST(ListView, FindsByTheBeginningOrWhole)
{
    ListView list;
    Fill(list, fruits);
    EXPECT_EQ(list.FindItem(QStringLiteral("ap")), 1);
    EXPECT_EQ(list.FindItem(QStringLiteral("AP"), 2), 3);
    EXPECT_EQ(list.FindItem(QStringLiteral("ana")), -1);
    EXPECT_EQ(list.FindItem(QStringLiteral("appl"), 0, false), -1);
    EXPECT_EQ(list.FindItem(QStringLiteral("APPLE"), 0, false), 1);
    EXPECT_EQ(list.FindItem(QString()), 0);
    EXPECT_EQ(list.FindItem(QStringLiteral("x"), 99), -1);
}

TEST(ListView, ChoosesByKeysAndMouse)
{
    ListView list;
    Fill(list, fruits);
    list.SetMultiSelect(true);
    list.resize(400, 200);
    list.show();
    EXPECT_EQ(list.SelectedRow(), -1);
    const auto centre = [&](int row) { return list.visualRect(list.model()->index(row, 0)).center(); };
    QSignalSpy clicks(&list, &ListView::ItemClick), doubles(&list, &ListView::DblClick);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, centre(1));
    EXPECT_EQ(list.SelectedRow(), 1);
    EXPECT_EQ(clicks.size(), 1);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list.SelectedRows(), (QList<qint64>{1, 2}));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, centre(0));
    EXPECT_EQ(list.SelectedRows(), (QList<qint64>{0, 1, 2}));
    EXPECT_TRUE(list.IsSelected(2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, centre(3));
    EXPECT_EQ(doubles.size(), 1);
    EXPECT_EQ(list.SelectedRow(), 3);
    list.SelectRow(-1);
    EXPECT_EQ(list.SelectedRow(), -1);
    list.SetMultiSelect(false);
    list.SelectRow(0);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list.SelectedRows().size(), 1);
}

TEST(ListView, AColumnsHeadSaysWhichOne)
{
    ListView list;
    Fill(list, fruits);
    list.resize(500, 200);
    list.show();
    QSignalSpy heads(&list, &ListView::ColumnClick);
    QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {}, {150, 8});
    ASSERT_EQ(heads.size(), 1);
    EXPECT_EQ(heads[0][0].toInt(), 1);
}

TEST(ListView, ABlockKeepsNoTextAndMayBeWrittenOver)
{
    ListView list;
    for (const char *name : {"Id", "Name", "Price"})
        list.AddColumn(QString::fromLatin1(name));
    const ADODB::RecordsetPtr rows = MakeRows(30);
    list.AddItem(QStringLiteral("before"));
    list.AddBlock({rows, 10, 5, {}, [](ADODB::Recordset &r, qint64 row) { return r.CellText(row, 0); }, 0});
    list.AddBlock({rows,
                   28,
                   99,
                   [](ADODB::Recordset &r, qint64 row, int column) {
                       return column == 0 ? QStringLiteral("<") + r.CellText(row, 1) : QString();
                   },
                   {},
                   0});
    list.AddBlock({nullptr, 0, 5, {}, {}, 0});
    EXPECT_EQ(list.Count(), 1 + 5 + 2);
    EXPECT_EQ(list.Text(1), QStringLiteral("11"));
    EXPECT_EQ(list.SubItem(5, 1), QStringLiteral("name 15"));
    EXPECT_EQ(list.Tag(5), QStringLiteral("15"));
    EXPECT_EQ(list.Text(7), QStringLiteral("<name 30"));
    list.SetSubItem(1, 1, QStringLiteral("changed"));
    EXPECT_EQ(list.SubItem(1, 1), QStringLiteral("changed"));
    EXPECT_EQ(list.SubItem(1, 2), QStringLiteral("5.5"));
    EXPECT_EQ(list.Tag(1), QStringLiteral("11"));
    EXPECT_EQ(rows->CellText(10, 1), QStringLiteral("name 11"));
    list.RemoveItem(2);
    EXPECT_EQ(list.Text(2), QStringLiteral("13"));
}

TEST(ListView, AMillionRowsFillAndScroll)
{
    ListView list;
    list.AddColumn(QStringLiteral("Id"));
    list.AddColumn(QStringLiteral("Name"));
    list.SetMultiSelect(true);
    list.resize(400, 300);
    list.show();
    list.AddBlock({MakeRows(1000000), 0, 1000000, {}, {}, 0});
    EXPECT_EQ(list.Count(), 1000000);
    list.EnsureVisible(765432);
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.model()->index(765432, 0))));
    list.SelectAllRows();
    EXPECT_EQ(list.SelectedRows().size(), 1000000);
    list.SelectRow(999999);
    EXPECT_EQ(list.SelectedRows(), (QList<qint64>{999999}));
    list.EnsureVisible(999999);
    EXPECT_FALSE(list.grab().isNull());
}

TEST(ListView, KeysActAsInAList)
{
    ListView list;
    Fill(list, fruits);
    list.resize(200, 200); // narrower than its columns
    list.show();
    list.SelectRow(1);
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(list.SelectedRow(), 3);
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_EQ(list.SelectedRow(), 0);
    QTest::keyClick(&list, Qt::Key_Right);
    EXPECT_EQ(list.SelectedRow(), 0); // it scrolls
    EXPECT_GT(list.horizontalScrollBar()->value(), 0);
    QTest::keyClick(&list, Qt::Key_Left);
    EXPECT_EQ(list.horizontalScrollBar()->value(), 0);
    QTest::keyClick(&list, Qt::Key_P);
    EXPECT_EQ(list.Text(list.SelectedRow()), QStringLiteral("pear"));
}

TEST(ListView, AHeadSelectsNothing)
{
    ListView list;
    Fill(list, fruits);
    list.SetMultiSelect(true);
    list.resize(500, 200);
    list.show();
    list.SelectRow(1);
    QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {}, {150, 8});
    EXPECT_EQ(list.SelectedRows(), (QList<qint64>{1}));
}

TEST(ListView, TheFocusIsSeenRoundTheWholeRow)
{
    ListView list;
    Fill(list, fruits);
    list.resize(400, 200);
    list.show();
    list.SelectRow(1);
    list.SelectRow(-1); // no selection hides the frame
    list.selectionModel()->setCurrentIndex(list.model()->index(1, 1), QItemSelectionModel::NoUpdate);
    const auto row = [&] {
        const int y = list.visualRect(list.model()->index(1, 0)).bottom();
        return list.viewport()->grab(QRect(0, y, list.viewport()->width(), 1)).toImage();
    };
    list.clearFocus();
    ASSERT_FALSE(list.hasFocus());
    const QImage without = row();
    list.activateWindow();
    list.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.hasFocus(); }));
    const QImage with = row();
    for (const int x : {20, 150, 250}) // first column, second column
        EXPECT_NE(with.pixel(x, 0), without.pixel(x, 0)) << x;
}

TEST(ListView, ASelectedRowIsMarkedToTheEdge)
{
    ListView list;
    Fill(list, fruits);
    list.resize(500, 200); // 300 pixels of columns
    list.show();
    QPalette palette = list.palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::Highlight, Qt::red);
    list.setPalette(palette);
    const auto at = [&](int row) {
        const QImage picture = list.viewport()->grab().toImage();
        return picture.pixelColor(450, list.visualRect(list.model()->index(row, 0)).center().y());
    };
    list.SelectRow(1);
    EXPECT_EQ(at(1), QColor(Qt::red));
    EXPECT_NE(at(0), QColor(Qt::red));
    EXPECT_NE(at(2), QColor(Qt::red));
    list.SelectRow(-1);
    EXPECT_NE(at(1), QColor(Qt::red));
}

TEST(ListView, SortsOnceByColumnAndOrder)
{
    ListView list;
    Fill(list, fruits);
    list.SelectRow(2);
    EXPECT_TRUE(list.SortBy(1, lvwDescending));
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(list.SortKey(), 1);
    EXPECT_EQ(list.SortOrder(), lvwDescending);
    EXPECT_EQ(Texts(list), QStringLiteral("pear,banana,apricot,Apple"));
    EXPECT_EQ(list.Text(list.SelectedRow()), QStringLiteral("banana"));
    EXPECT_TRUE(list.header()->isSortIndicatorShown());
    EXPECT_THROW(list.SortBy(2, lvwAscending), ControlError);
    list.Clear();
    EXPECT_TRUE(list.SortBy(0, lvwAscending)); // nothing to do, and remembered
    EXPECT_EQ(list.SortKey(), 0);
}

TEST(ListView, EqualRowsKeepTheirOrderAndLongStartsAreToldApart)
{
    ListView list;
    list.AddColumn(QStringLiteral("a"));
    list.AddColumn(QStringLiteral("b"));
    int number = 0;
    for (const char *const text : {"abcdef", "ABCDEE", "abcd", "abc", "", "abcdef", "abd"})
        list.SetSubItem(list.AddItem(QString::fromLatin1(text)), 1, QString::number(++number));
    EXPECT_TRUE(list.SortBy(0, lvwAscending));
    EXPECT_EQ(Texts(list), QStringLiteral(",abc,abcd,ABCDEE,abcdef,abcdef,abd"));
    EXPECT_EQ(Texts(list, 1), QStringLiteral("5,4,3,2,1,6,7"));
    EXPECT_TRUE(list.SortBy(0, lvwDescending));
    EXPECT_EQ(Texts(list, 1), QStringLiteral("7,1,6,2,3,4,5"));
}

TEST(ListView, ASortThatIsGivenUpLeavesTheListAsItWas)
{
    ListView list;
    list.AddColumn(QStringLiteral("Id"));
    list.AddColumn(QStringLiteral("Name"));
    list.AddBlock({MakeRows(20000), 0, 20000, {}, {}, 0});
    ASSERT_TRUE(list.SortBy(0, lvwDescending));
    const QString first = list.Text(0);
    int asked = 0;
    EXPECT_FALSE(list.SortBy(1, lvwAscending, [&] { return ++asked < 3; }));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(list.SortKey(), 0);
    EXPECT_EQ(list.SortOrder(), lvwDescending);
    EXPECT_EQ(list.Text(0), first);
    // The rows change, or the list goes, while events are let in.
    EXPECT_FALSE(list.SortBy(1, lvwAscending, [&] {
        list.RemoveItem(5);
        return true;
    }));
    EXPECT_EQ(list.Count(), 19999);
    EXPECT_EQ(list.Text(0), first);
    auto *const doomed = new ListView;
    doomed->AddColumn(QStringLiteral("Id"));
    doomed->AddBlock({MakeRows(20000), 0, 20000, {}, {}, 0});
    EXPECT_FALSE(doomed->SortBy(0, lvwAscending, [&] {
        delete doomed;
        return true;
    }));
    EXPECT_TRUE(list.SortBy(1, lvwAscending, [] { return true; }));
    EXPECT_EQ(list.SortKey(), 1);
}
