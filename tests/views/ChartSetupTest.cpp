// The chart's setup by mouse and keys: moves, drags, and when it is complete.
#include "tests/views/ChartLists.h"
#include "views/frmChartSetup.h"
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

struct Setup : testing::Test
{
    frmChartSetup form;

    void SetUp() override
    {
        std::vector<ChartField> fields;
        for (int column = 0; column < 5; ++column)
            fields.push_back({QStringLiteral("f%1").arg(column), column});
        form.SetFields(fields);
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    }
};

TEST_F(Setup, IsAsItsLabelsSay)
{
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Chart Setup"));
    QStringList labels;
    for (const QLabel *label : form.findChildren<QLabel *>())
        labels << label->text();
    for (const char *text : {"Fields", "Data Labels", "Data Values", "Title"})
        EXPECT_TRUE(labels.contains(QLatin1String(text))) << text;
    EXPECT_EQ(form.chkShowLedgend->text(), QStringLiteral("Show Legend"));
    EXPECT_EQ(form.chkShowSQL->text(), QStringLiteral("Show SQL Statement"));
    EXPECT_EQ(form.cmdCancel->text(), QStringLiteral("&Cancel"));
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.cmdOK->isEnabled());
    for (const ListView *list : {form.lvFields, form.lvLabels, form.lvData}) {
        EXPECT_EQ(list->ColumnCount(), 1);
        EXPECT_NEAR(list->ColumnWidth(0), list->ListWidth() - 350, 15);
    }
}

TEST_F(Setup, ButtonsMoveWhatIsSelectedAndOkNeedsBothLists)
{
    ClickRow(form.lvFields, 1);
    ClickRow(form.lvFields, 3, Qt::ControlModifier);
    QTest::mouseClick(form.cmdAddData, Qt::LeftButton);
    EXPECT_EQ(Rows(form.lvData), QStringList({"f1:1", "f3:3"}));
    EXPECT_EQ(Rows(form.lvFields), QStringList({"f0:0", "f2:2", "f4:4"}));
    EXPECT_TRUE(form.lvFields->hasFocus());
    EXPECT_FALSE(form.cmdOK->isEnabled());

    ClickRow(form.lvFields, 2);
    QTest::mouseClick(form.cmdAddSeries, Qt::LeftButton);
    EXPECT_EQ(Rows(form.lvLabels), QStringList("f4:4"));
    EXPECT_TRUE(form.cmdOK->isEnabled());

    ClickRow(form.lvLabels, 0);
    QTest::mouseClick(form.cmdRemoveSeries, Qt::LeftButton);
    EXPECT_EQ(Rows(form.lvFields), QStringList({"f0:0", "f2:2", "f4:4"}));
    EXPECT_TRUE(form.lvLabels->hasFocus());
    EXPECT_FALSE(form.cmdOK->isEnabled());

    ClickRow(form.lvData, 0);
    QTest::mouseClick(form.cmdRemoveData, Qt::LeftButton);
    EXPECT_EQ(Rows(form.lvFields), QStringList({"f0:0", "f2:2", "f4:4", "f1:1"}));
    EXPECT_TRUE(form.lvData->hasFocus());
}

TEST_F(Setup, DragsMoveAsTheButtonsDo)
{
    ClickRow(form.lvFields, 0);
    ClickRow(form.lvFields, 1, Qt::ControlModifier);
    Drag(form.lvFields, 1, form.lvData); // the whole selection
    EXPECT_EQ(Rows(form.lvData), QStringList({"f0:0", "f1:1"}));
    Drag(form.lvFields, 2, form.lvLabels); // a press selects
    EXPECT_EQ(Rows(form.lvLabels), QStringList("f4:4"));
    EXPECT_TRUE(form.cmdOK->isEnabled());
    Drag(form.lvData, 0, form.lvFields);
    EXPECT_EQ(Rows(form.lvData), QStringList("f1:1"));
    EXPECT_EQ(Rows(form.lvFields), QStringList({"f2:2", "f3:3", "f0:0"}));
    Drag(form.lvFields, 0, form.lvFields); // nowhere
    EXPECT_EQ(Rows(form.lvFields), QStringList({"f2:2", "f3:3", "f0:0"}));
    Drag(form.lvLabels, 0, form.lvFields);
    EXPECT_EQ(form.lvLabels->Count(), 0);
    EXPECT_FALSE(form.cmdOK->isEnabled());
}

TEST_F(Setup, AClickOnASelectedRowSelectsItAlone)
{
    ClickRow(form.lvFields, 0);
    ClickRow(form.lvFields, 1, Qt::ControlModifier);
    ClickRow(form.lvFields, 1);
    EXPECT_EQ(form.lvFields->SelectedRows(), QList<qint64>{1});
}

TEST_F(Setup, TheKeyboardAloneIsEnough)
{
    EXPECT_EQ(form.lvFields->SelectedRows(), QList<qint64>{0});
    QTest::keyClick(form.cmdAddSeries, Qt::Key_Space);
    EXPECT_EQ(Rows(form.lvLabels), QStringList("f0:0"));
    QTest::keyClick(form.cmdAddData, Qt::Key_Space); // what came next is selected
    EXPECT_EQ(Rows(form.lvData), QStringList("f1:1"));
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_FALSE(form.Cancelled);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Setup, OkTakesWhatIsChosenAndEscapeNothing)
{
    ClickRow(form.lvFields, 2);
    QTest::mouseClick(form.cmdAddSeries, Qt::LeftButton);
    form.lvFields->SelectAllRows();
    QTest::mouseClick(form.cmdAddData, Qt::LeftButton);
    QTest::mouseClick(form.chkShowLedgend, Qt::LeftButton, {}, {8, form.chkShowLedgend->height() / 2});
    form.SetChartTitle(QStringLiteral("T"));
    QTest::mouseClick(form.cmdOK, Qt::LeftButton);
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(form.LabelFields, QStringLiteral("2"));
    EXPECT_EQ(form.DataFields, QStringLiteral("0,1,3,4"));
    EXPECT_TRUE(form.ShowLegend);
    EXPECT_FALSE(form.ShowSQL);
    EXPECT_EQ(form.ChartTitle, QStringLiteral("T"));

    frmChartSetup other;
    other.show();
    QTest::keyClick(&other, Qt::Key_Escape);
    EXPECT_TRUE(other.Cancelled);
}

TEST_F(Setup, TenThousandColumnsMoveAtOnce)
{
    std::vector<ChartField> fields;
    for (int column = 0; column < 10000; ++column)
        fields.push_back({QStringLiteral("f%1").arg(column), column});
    form.SetFields(fields);
    form.lvFields->SelectAllRows();
    QTest::mouseClick(form.cmdAddData, Qt::LeftButton);
    EXPECT_EQ(form.lvData->Count(), 10000);
    EXPECT_EQ(form.lvFields->Count(), 0);
}

} // namespace
