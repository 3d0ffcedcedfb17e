// The chart's setup and its window, by mouse and keys.
#include "controls/ListView.h"
#include "frame/ModalForm.h"
#include "tests/views/Hirarchy.h"
#include "tests/views/PdfText.h"
#include "views/chart/Chart.h"
#include "views/frmChart.h"
#include "views/frmChartSetup.h"
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>

namespace {

QPoint RowMiddle(ListView *list, int row)
{
    return list->visualRect(list->model()->index(row, 0)).center();
}

void ClickRow(ListView *list, int row, Qt::KeyboardModifiers keys = {})
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, RowMiddle(list, row));
}

QStringList Rows(const ListView *list)
{
    QStringList rows;
    for (qint64 row = 0; row < list->Count(); ++row)
        rows << list->Text(row) + u':' + list->Tag(row);
    return rows;
}

// By the real events of a mouse: down on a row, over to the other list, up.
void Drag(ListView *from, int row, ListView *to)
{
    QWidget *const source = from->viewport();
    const QPoint start = RowMiddle(from, row);
    const QPoint end = source->mapFrom(source->window(), to->viewport()->mapTo(source->window(), QPoint(20, 30)));
    QTest::mousePress(source, Qt::LeftButton, {}, start);
    QTest::mouseMove(source, start + QPoint(3, 0));
    for (const QPoint &at : {start + QPoint(15, 4), end}) {
        QMouseEvent move(QEvent::MouseMove, at, source->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(source, &move);
    }
    QTest::mouseRelease(source, Qt::LeftButton, {}, end);
}

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

struct ChartWindow : Hirarchy
{
    QList<std::function<void(frmChartSetup &)>> Acts; // one for each dialog that comes up

    // Presses what a user would as soon as the dialog is up.
    void WithSetup(std::function<void(frmChartSetup &)> act)
    {
        QTimer::singleShot(0, &shellTimer, [this, act] { Look(act); });
    }
    frmChart *NewChart() const { return qobject_cast<frmChart *>(shell.Child(QStringLiteral("frmChart"))); }
    frmChart *ChartOf(const QString &sql, int labels, const QList<int> &data, bool legend = false,
                      bool statement = false)
    {
        EXPECT_TRUE(Run(sql));
        WithSetup([=](frmChartSetup &form) {
            ClickRow(form.lvFields, labels);
            QTest::mouseClick(form.cmdAddSeries, Qt::LeftButton);
            for (const int column : data) {
                for (int row = 0; row < form.lvFields->Count(); ++row)
                    if (form.lvFields->Tag(row) == QString::number(column))
                        ClickRow(form.lvFields, row);
                QTest::mouseClick(form.cmdAddData, Qt::LeftButton);
            }
            form.chkShowLedgend->setChecked(legend);
            form.chkShowSQL->setChecked(statement);
            QTest::mouseClick(form.cmdOK, Qt::LeftButton);
        });
        window.mnuChart();
        return NewChart();
    }

private:
    void Look(const std::function<void(frmChartSetup &)> &act)
    {
        auto *form = qobject_cast<frmChartSetup *>(QApplication::activeModalWidget());
        if (!form) {
            QTimer::singleShot(10, &shellTimer, [this, act] { Look(act); });
            return;
        }
        act(*form);
        if (form->isVisible())
            form->reject();
    }
    QObject shellTimer;
};

} // namespace

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

TEST_F(ChartWindow, AResultBecomesAChart)
{
    QStringList offered;
    QString title;
    ASSERT_TRUE(Run(QStringLiteral("select id, name, amount from t")));
    WithSetup([&](frmChartSetup &form) {
        offered = Rows(form.lvFields);
        title = form.txtTitle->text();
        ClickRow(form.lvFields, 2);
        QTest::mouseClick(form.cmdAddSeries, Qt::LeftButton);
        ClickRow(form.lvFields, 1);
        QTest::mouseClick(form.cmdAddData, Qt::LeftButton);
        form.txtTitle->setText(QStringLiteral("Ours"));
        form.chkShowLedgend->setChecked(true);
        form.chkShowSQL->setChecked(true);
        QTest::mouseClick(form.cmdOK, Qt::LeftButton);
    });
    window.mnuChart();
    // The empty fixed column is offered and the last one is not: that is settled.
    EXPECT_EQ(offered, QStringList({":0", "id:1", "name:2"}));
    EXPECT_EQ(title, QStringLiteral("Brindlewick"));
    const frmChart *chart = NewChart();
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->Caption(), QStringLiteral("Chart - Ours"));
    EXPECT_EQ(chart->chart->Title(), QStringLiteral("Ours"));
    EXPECT_EQ(chart->chart->FootnoteText(), QStringLiteral("select id, name, amount from t"));
    EXPECT_TRUE(chart->chart->ShowLegend());
    const ChartData &values = chart->chart->Values;
    ASSERT_EQ(values.RowCount(), 3);
    EXPECT_EQ(values.ColumnLabel(1), QStringLiteral("id"));
    EXPECT_EQ(values.RowLabel(1), QStringLiteral("Anna, \"A\""));
    EXPECT_EQ(values.RowLabel(2), QString());
    EXPECT_EQ(values.Data(3, 1), QStringLiteral("3"));
    EXPECT_EQ(chart->chart->Picture().RowCount, 3);
}

TEST_F(ChartWindow, WithoutTheStatementThereIsNoFootNoteAndACancelMakesNoChart)
{
    const frmChart *chart = ChartOf(QStringLiteral("select id, amount, name from t"), 1, {2});
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->chart->FootnoteText(), QString());
    EXPECT_FALSE(chart->chart->ShowLegend());
    delete chart;
    WithSetup([](frmChartSetup &form) { QTest::keyClick(&form, Qt::Key_Escape); });
    window.mnuChart();
    EXPECT_FALSE(NewChart());
}

TEST_F(ChartWindow, AResultWithoutRowsHasNoRowsInItsChart)
{
    const frmChart *chart = ChartOf(QStringLiteral("select id, amount, name from t where id > 9"), 1, {2});
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->chart->Values.RowCount(), 0);
    EXPECT_EQ(chart->chart->Picture().Notice, QStringLiteral("There are no rows to chart."));
}

TEST_F(ChartWindow, ARecordsetIsChartedAndNothingElseIs)
{
    const ADODB::RecordsetPtr rows = connection->Execute(QStringLiteral("select name, amount from t order by id"));
    frmChart form;
    form.LoadChartData(std::monostate(), QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(form.chart->Values.RowCount(), 0);
    form.LoadChartData(rows, QStringLiteral("0"), QStringLiteral("1"));
    ASSERT_EQ(form.chart->Values.RowCount(), 3);
    EXPECT_EQ(form.chart->Values.ColumnLabel(1), QStringLiteral("amount"));
    EXPECT_EQ(form.chart->Values.Data(2, 1), QStringLiteral("-3"));
    form.LoadChartData(rows, QString(), QStringLiteral("1")); // changes nothing
    form.LoadChartData(rows, QStringLiteral("0"), QStringLiteral("77"));
    form.LoadChartDataMFG(nullptr, QStringLiteral("0"), QStringLiteral("1"));
    form.LoadChartDataRec(nullptr, QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(form.chart->Values.RowCount(), 3);
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(ChartWindow, TitleAndFootNoteAreAskedForWithTheSameWords)
{
    frmChart form;
    form.chart->SetTitle(QStringLiteral("old"));
    dialogs.Inputs = QStringList{QStringLiteral("new"), QStringLiteral("note")};
    form.ChangeTitle();
    form.ChangeFootNote();
    ASSERT_EQ(dialogs.InputBoxes.size(), 2);
    for (const InputBoxRequest &box : dialogs.InputBoxes) {
        EXPECT_EQ(box.Title, QStringLiteral("Title"));
        EXPECT_EQ(box.Prompt, QStringLiteral("Enter the chart title you wish to display:"));
    }
    EXPECT_EQ(dialogs.InputBoxes[0].Default, QStringLiteral("old"));
    EXPECT_EQ(form.chart->Title(), QStringLiteral("new"));
    EXPECT_EQ(form.chart->FootnoteText(), QStringLiteral("note"));
    form.ChangeTitle(); // cancelled
    EXPECT_EQ(form.chart->Title(), QStringLiteral("new"));
}

TEST_F(ChartWindow, TypesChangeAndAnUnknownOneDoesNot)
{
    frmChart form;
    EXPECT_EQ(form.chart->chartType(), chart2DBar);
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 14, 16}) {
        form.ChangeChartType(type);
        EXPECT_EQ(form.chart->chartType(), type);
    }
    for (const int type : {-1, 10, 13, 15, 17, 100}) {
        form.ChangeChartType(type);
        EXPECT_EQ(form.chart->chartType(), chart2DXY);
    }
}

TEST_F(ChartWindow, ThePictureGoesToAFileToTheClipboardAndToThePrinter)
{
    frmChart *form = ChartOf(QStringLiteral("select id, amount, name from t"), 1, {2}, true, true);
    ASSERT_TRUE(form);
    const QString path = folder.filePath(QStringLiteral("chart"));
    dialogs.Files = QStringList{path + QStringLiteral(".bmp"), QString(), folder.filePath(QStringLiteral("no/x.bmp"))};
    form->mnuSave();
    ASSERT_EQ(dialogs.FileDialogs.size(), 1);
    EXPECT_EQ(dialogs.FileDialogs[0].Filter, QStringLiteral("Bitmap [*.bmp]|*.bmp"));
    const QImage saved(path + QStringLiteral(".bmp"));
    EXPECT_EQ(saved.size(), form->chart->size());
    EXPECT_EQ(saved.pixelColor(0, 0), QColor(Qt::white)); // no mark of the keyboard in it
    form->mnuSave();                                      // cancelled
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    form->mnuSave();
    EXPECT_TRUE(dialogs.LastText().startsWith(QStringLiteral("Error: ")));

    for (const auto operation : {&frmChart::mnuCopy, &frmChart::SnapShot}) {
        QApplication::clipboard()->clear();
        (form->*operation)();
        EXPECT_EQ(QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
                  saved.convertToFormat(QImage::Format_RGB32));
    }

    form->mnuPrint();
    EXPECT_EQ(dialogs.PrintDialogs, 1);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path + QStringLiteral(".pdf"));
    EXPECT_TRUE(form->PrintTo(printer));
    EXPECT_TRUE(Bytes(QStringLiteral("chart.pdf")).startsWith("%PDF"));
}

TEST_F(ChartWindow, ADrawingKeepsItsTextsAsText)
{
    frmChart *form = ChartOf(QStringLiteral("select id, amount, name from t"), 2, {1}, true, true);
    ASSERT_TRUE(form);
    dialogs.Files = QStringList{folder.filePath(QStringLiteral("c.svg")), folder.filePath(QStringLiteral("c.pdf"))};
    form->ToolBar(QStringLiteral("CHTDrawing"));
    form->ToolBar(QStringLiteral("CHTDrawing"));
    const QString svg = QString::fromUtf8(Bytes(QStringLiteral("c.svg")));
    for (const char *text : {">1.5<", ">-3<", ">id<", ">Brindlewick<", ">select id, amount, name from t<"})
        EXPECT_TRUE(svg.contains(QLatin1String(text))) << text;
    const QString pdf = PdfText(Bytes(QStringLiteral("c.pdf"))).Text();
    const QStringList lines = pdf.split(u'\n');
    for (const char *text : {"1.5", "-3", "id", "Brindlewick", "select id, amount, name from t"})
        EXPECT_TRUE(lines.contains(QLatin1String(text))) << text << " is not in:\n" << qPrintable(pdf);
}

TEST_F(ChartWindow, ARightClickOpensTheChartMenu)
{
    frmChart form;
    form.show();
    QTest::mouseClick(form.chart, Qt::RightButton, {}, {50, 50});
    EXPECT_EQ(shell.Menus, QStringList("mnuChartMain"));
    QTest::mouseClick(form.chart, Qt::LeftButton, {}, {50, 50});
    EXPECT_EQ(shell.Menus.size(), 1);
}

TEST_F(ChartWindow, TheChartFillsTheWindow)
{
    frmChart form;
    form.show();
    for (const QSize size : {QSize(400, 300), QSize(700, 500)}) {
        form.resize(size);
        QApplication::processEvents();
        EXPECT_EQ(form.chart->geometry(), QRect(QPoint(), size));
        EXPECT_EQ(form.chart->Picture().Size, QSizeF(size));
    }
}

TEST_F(ChartWindow, ThePointerReadsOutTheRowAndItsValues)
{
    frmChart *form = ChartOf(QStringLiteral("select id, amount, name from t order by id"), 1, {2});
    ASSERT_TRUE(form);
    const ChartPicture &picture = form->chart->Picture();
    ASSERT_TRUE(picture.HasAxes);
    EXPECT_EQ(form->chart->ReadOut({picture.RowX(1), picture.Plot.center().y()}), QStringLiteral("2\namount: -3"));
    EXPECT_EQ(form->chart->ReadOut({2, 2}), QString());
    const QImage before = form->chart->grab().toImage();
    QTest::mouseMove(form->chart, QPointF(picture.RowX(1), picture.Plot.center().y()).toPoint());
    QApplication::processEvents();
    EXPECT_NE(form->chart->grab().toImage(), before);
    form->ChangeChartType(chart2DPie);
    const QRectF pie = form->chart->Picture().Slices.front().Pie;
    EXPECT_EQ(form->chart->ReadOut(pie.center() + QPointF(5, -20)), QStringLiteral("1\namount: 1.5 (50%)"));
    EXPECT_EQ(form->chart->ReadOut(pie.topLeft()), QString());
}

TEST_F(ChartWindow, WheelDragAndKeysZoomIntoTheRows)
{
    connection->Execute(QStringLiteral("create table n(i integer, v double)"));
    connection->Execute(QStringLiteral("insert into n with recursive c(i) as (select 1 union all select i+1 from c "
                                       "where i<100) select i, i*i from c"));
    frmChart *form = ChartOf(QStringLiteral("select i, v, 0 as z from n order by i"), 1, {2});
    ASSERT_TRUE(form);
    Chart *const chart = form->chart;
    ASSERT_EQ(chart->RowsShown(), 100);
    const QRectF plot = chart->Picture().Plot;
    QWheelEvent wheel(plot.center(), chart->mapToGlobal(plot.center()), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(chart, &wheel);
    EXPECT_EQ(chart->RowsShown(), 80);
    EXPECT_EQ(chart->FirstRow(), 10);
    QTest::keyClick(chart, Qt::Key_Right);
    EXPECT_EQ(chart->FirstRow(), 20);
    QTest::keyClick(chart, Qt::Key_Plus);
    EXPECT_EQ(chart->RowsShown(), 64);
    QTest::keyClick(chart, Qt::Key_Home);
    EXPECT_EQ(chart->RowsShown(), 100);

    const QRectF whole = chart->Picture().Plot;
    const auto at = [&](double share) {
        return QPointF(whole.left() + share * whole.width(), whole.center().y()).toPoint();
    };
    QTest::mousePress(chart, Qt::LeftButton, {}, at(0.205));
    QTest::mouseMove(chart, at(0.3));
    QTest::mouseRelease(chart, Qt::LeftButton, {}, at(0.395));
    EXPECT_EQ(chart->FirstRow(), 20);
    EXPECT_EQ(chart->RowsShown(), 20);
    QTest::mouseDClick(chart, Qt::LeftButton, {}, at(0.5));
    EXPECT_EQ(chart->RowsShown(), 100);
    for (int i = 0; i < 60; ++i)
        QTest::keyClick(chart, Qt::Key_Plus);
    EXPECT_EQ(chart->RowsShown(), 1);
    form->ToolBar(QStringLiteral("CHTWhole"));
    EXPECT_EQ(chart->RowsShown(), 100);
}

TEST_F(ChartWindow, TheFurtherRowsOfTheMenuSwitch)
{
    frmChart form;
    form.ToolBar(QStringLiteral("CHTLog"));
    form.ToolBar(QStringLiteral("CHTEyes"));
    EXPECT_TRUE(form.chart->Logarithmic());
    EXPECT_EQ(form.chart->Palette(), ChartPalette::ForAllEyes);
    form.ToolBar(QStringLiteral("CHTLog"));
    form.ToolBar(QStringLiteral("CHTEyes"));
    form.ToolBar(QStringLiteral("SQLRun")); // another window's
    EXPECT_FALSE(form.chart->Logarithmic());
    EXPECT_EQ(form.chart->Palette(), ChartPalette::Plain);
}

// A window that goes while it reads its rows must leave nothing behind that is written to.
TEST_F(ChartWindow, AWindowMayGoWhileItsRowsAreRead)
{
    ASSERT_TRUE(Run(Counting(300000)));
    QPointer<frmChart> form(new frmChart);
    form->show();
    QTimer::singleShot(0, form, [form] { delete form.data(); });
    form->LoadChartDataMFG(window.mfg, QStringLiteral("1"), QStringLiteral("1"));
    EXPECT_FALSE(form);
}
