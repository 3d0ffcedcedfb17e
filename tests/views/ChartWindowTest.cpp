// The chart of a result and its window, by mouse and keys.
#include "tests/views/ChartLists.h"
#include "tests/views/Hirarchy.h"
#include "tests/views/PdfText.h"
#include "views/chart/Chart.h"
#include "views/frmChart.h"
#include "views/frmChartSetup.h"
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>

namespace {

struct ChartWindow : Hirarchy
{
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
    frmChart form;
    form.LoadChartData(connection->Execute(QStringLiteral("select name, amount from t where id > 9")),
                       QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(form.chart->Values.RowCount(), 0);
    EXPECT_EQ(form.chart->Values.ColumnLabel(1), QStringLiteral("amount"));
    EXPECT_EQ(form.chart->Picture().Notice, QStringLiteral("There are no rows to chart."));
    // A window without rows has no columns to choose from either: nothing can be chosen.
    ASSERT_TRUE(Run(QStringLiteral("select id, amount, name from t where id > 9")));
    bool isOn = true;
    WithSetup([&](frmChartSetup &setup) {
        setup.lvFields->SelectAllRows();
        QTest::mouseClick(setup.cmdAddData, Qt::LeftButton);
        isOn = setup.cmdOK->isEnabled();
    });
    window.mnuChart();
    EXPECT_FALSE(isOn);
    EXPECT_FALSE(NewChart());
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
    QString pdf = PdfText(Bytes(QStringLiteral("c.pdf"))).Text();
    pdf.replace(u'\t', u' '); // the file's table of letters names a blank by the other character of its drawing
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
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {5, 5}, form.chart->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(form.chart, &key);
    EXPECT_EQ(shell.Menus.size(), 2);
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
    const QImage read = form->chart->grab().toImage();
    EXPECT_NE(read, before);
    // The mark of the keyboard once filled the whole chart with the colour of the words' ground.
    form->chart->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return form->chart->hasFocus(); }));
    EXPECT_EQ(form->chart->grab().toImage().pixelColor(8, 8), QColor(Qt::white));
    EXPECT_EQ(read.pixelColor(8, 8), QColor(Qt::white));
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

} // namespace
