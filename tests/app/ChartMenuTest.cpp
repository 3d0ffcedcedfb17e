// The Chart menu on a real result: a new chart, its types by their rows, its popup.
#include "app/Menus.h"
#include "controls/ListView.h"
#include "tests/app/ShellFixture.h"
#include "tests/controls/MakeRecordset.h"
#include "views/chart/Chart.h"
#include "views/frmChart.h"
#include "views/frmChartSetup.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

namespace {

class ChartMenu : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
        gConn = ADODB::Connection::Create();
        gConn->Open(Database());
        Shell::Current().SetSchemaMenuEnabled(true);
        auto *result = new frmHirarchy;
        result->KillOnError = false;
        Window->AddChild(result);
        result->ShowChild();
        result->SetDataSourceRec(MakeRows(20));
    }
    QAction *Item(const char *name) { return Window->menus->Item(QString::fromLatin1(name)); }
    // Chooses the labels by the keys alone: Name for the labels, Id for the values.
    void FillSetup()
    {
        auto *form = qobject_cast<frmChartSetup *>(QApplication::activeModalWidget());
        if (!form) {
            QTimer::singleShot(10, Window.get(), [this] { FillSetup(); });
            return;
        }
        form->lvFields->setFocus();
        QTest::keyClick(form->lvFields, Qt::Key_Down); // from the empty fixed column
        QTest::keyClick(form->cmdAddData, Qt::Key_Space);
        QTest::keyClick(form->cmdAddSeries, Qt::Key_Space);
        Labels = form->lvLabels->Text(0);
        QTest::keyClick(form, Qt::Key_Return);
    }
    frmChart *NewChart(const char *row)
    {
        QTimer::singleShot(0, Window.get(), [this] { FillSetup(); });
        Item(row)->trigger();
        return qobject_cast<frmChart *>(Window->ActiveChild());
    }
    QString Labels;
};

TEST_F(ChartMenu, BothRowsMakeAChartOfTheActiveResult)
{
    for (const char *row : {"mnuNewChart", "mnuChart"}) {
        EXPECT_TRUE(Item(row)->isEnabled()) << row;
        QWidget *const result = Window->ActiveChild();
        const frmChart *chart = NewChart(row);
        ASSERT_TRUE(chart) << row;
        EXPECT_EQ(Labels, QStringLiteral("Name"));
        EXPECT_EQ(chart->Caption(), QStringLiteral("Chart - Brindlewick"));
        EXPECT_EQ(chart->chart->Values.RowCount(), 20);
        EXPECT_EQ(chart->chart->Values.Data(20, 1), QStringLiteral("20"));
        EXPECT_EQ(chart->chart->Values.RowLabel(1), QStringLiteral("name 1"));
        qobject_cast<ChildWindow *>(result)->ShowChild();
    }
}

TEST_F(ChartMenu, EachRowOfATypeSetsItsNumber)
{
    frmChart *chart = NewChart("mnuNewChart");
    ASSERT_TRUE(chart);
    const struct
    {
        const char *Row;
        int Type;
    } rows[] = {{"mnuChart2DArea", 5}, {"mnuChart2DBar", 1},  {"mnuChart2DCombination", 9}, {"mnuChart2DLine", 3},
                {"mnuChart2DPie", 14}, {"mnuChart2DStep", 7}, {"mnuChart2DXY", 16},         {"mnuChart3DArea", 4},
                {"mnuChart3DBar", 0},  {"mnuChart3DLine", 2}, {"mnuChart3DComination", 8},  {"mnuChart3DStep", 6}};
    for (const auto &row : rows) {
        ASSERT_TRUE(Item(row.Row)->isEnabled()) << row.Row;
        Item(row.Row)->trigger();
        EXPECT_EQ(chart->chart->chartType(), row.Type) << row.Row;
    }
    Dialogs.Inputs = QStringList{QStringLiteral("T"), QStringLiteral("N")};
    Item("mnuChartTitle")->trigger();
    Item("mnuChartFootNote")->trigger();
    EXPECT_EQ(chart->chart->Title(), QStringLiteral("T"));
    EXPECT_EQ(chart->chart->FootnoteText(), QStringLiteral("N"));
    Item("mnuChartLog")->trigger();
    Item("mnuChartEyes")->trigger();
    EXPECT_TRUE(chart->chart->Logarithmic());
    EXPECT_EQ(chart->chart->Palette(), ChartPalette::ForAllEyes);
}

TEST_F(ChartMenu, ARightClickOnTheChartBringsItUp)
{
    frmChart *chart = NewChart("mnuNewChart");
    ASSERT_TRUE(chart);
    QString shown;
    bool isTypeOn = false;
    QTimer::singleShot(0, Window.get(), [&] {
        if (QWidget *menu = QApplication::activePopupWidget()) {
            shown = menu->objectName();
            isTypeOn = Item("mnuChart2DPie")->isEnabled();
            menu->close();
        }
    });
    QTest::mouseClick(chart->chart, Qt::RightButton, {}, {60, 60});
    EXPECT_EQ(shown, QStringLiteral("mnuChartMain"));
    EXPECT_TRUE(isTypeOn);
}

} // namespace
