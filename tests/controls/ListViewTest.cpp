#include "controls/ListView.h"
#include "MakeRecordset.h"
#include "controls/ControlError.h"
#include <QHeaderView>
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
