#include "controls/RichTextBox.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "data/frmTextOutput.h"
#include "data/frmTree.h"
#include "data/modListView.h"
#include "frame/SaveDialog.h"
#include "lang/Text.h"
#include "sqltext/clsColorTable.h"
#include "tests/data/ResultView.h"
#include "tests/support/ExpectCases.h"
#include "tests/support/ScriptedDriver.h"
#include <QDialog>
#include <QHeaderView>
#include <QPdfWriter>
#include <QPrinter>

namespace {

TEST_F(ResultViewTest, GridSaveCases)
{
    ExpectCases("grid_save", [this](const QJsonObject &args) {
        frmGrid *grid = Grid();
        FillFrom(grid, args);
        EXPECT_TRUE(grid->SaveFile(Path("out.csv")));
        QJsonArray lines;
        const QByteArray text = Read(Path("out.csv"));
        EXPECT_TRUE(text.endsWith("\r\n"));
        for (const QString &line : QString::fromUtf8(text.chopped(2)).split("\r\n"))
            lines << line;
        return QJsonValue(lines);
    });
}

TEST_F(ResultViewTest, GridCopyCases)
{
    ExpectCases("grid_copy", [this](const QJsonObject &args) {
        frmGrid *grid = Grid();
        FillFrom(grid, args);
        grid->lvResults->SelectRow(-1);
        QItemSelectionModel *selection = grid->lvResults->selectionModel();
        for (const QJsonValue &row : args["selected"].toArray())
            selection->select(grid->lvResults->model()->index(row.toInt(), 0),
                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
        grid->mnuCopy();
        return QJsonValue(QGuiApplication::clipboard()->text());
    });
}

TEST_F(ResultViewTest, SpanCases)
{
    ExpectCases("span_columns", [](const QJsonObject &args) {
        return QJsonValue(SpannedWidth(args["width"].toDouble(), args["columns"].toInt()));
    });
}

TEST_F(ResultViewTest, SecondsCases)
{
    ExpectCases("format_seconds",
                [](const QJsonObject &args) { return QJsonValue(lang::FormatSeconds(args["seconds"].toDouble())); });
    EXPECT_FALSE(lang::FormatSeconds(-86000.5).isEmpty()); // across midnight: as it comes
}

TEST_F(ResultViewTest, TreeSaveCases)
{
    ExpectCases("tree_save", [](const QJsonObject &args) {
        QList<QPair<QString, QString>> nodes;
        for (const QJsonValue &node : args["nodes"].toArray())
            nodes << qMakePair(node[0].toString(), node[1].toString());
        QJsonArray lines;
        for (const QString &line : frmTree::Lines(nodes))
            lines << line;
        return QJsonValue(lines);
    });
}

TEST_F(ResultViewTest, ColumnsKeepTheirWidthsWhereTheListIsNarrow)
{
    frmGrid *grid = Grid();
    for (int i = 0; i < 30; ++i)
        grid->lvResults->AddColumn("c", 1230);
    grid->SpanColomns(false);
    EXPECT_EQ(grid->lvResults->ColumnWidth(3), 1230);
    grid->SpanColomns(true);
    EXPECT_LT(grid->lvResults->ColumnWidth(3), 700);
    grid->lvResults->ClearColumns();
    grid->lvResults->AddColumn("c");
    grid->lvResults->AddColumn("d");
    grid->SpanColomns(false);
    EXPECT_NEAR(grid->lvResults->ColumnWidth(1), (grid->lvResults->ListWidth() - 300) / 2, 15);
    grid->lvResults->ClearColumns();
    grid->SpanColomns(true); // without columns nothing happens
}

TEST_F(ResultViewTest, AQueryFillsTheWindow)
{
    OpenSample({"create table t (id int, n text)", "insert into t values (1, 'one'), (2, null), (3, 'a,b')"});
    frmGrid *grid = Grid();
    grid->ShowRec("select id,\r\nn from t order by id", gConn, "Browse");
    EXPECT_EQ(grid->Caption(), "Browse[select id, n from t order by i...]");
    EXPECT_EQ(grid->SB->PanelText(1), "select id, n from t order by id");
    EXPECT_EQ(grid->cursor().shape(), Qt::WaitCursor);
    EXPECT_EQ(grid->lvResults->Count(), 0); // it returned at once
    ASSERT_TRUE(Until([&] { return !grid->SB->PanelText(3).isEmpty(); }));
    EXPECT_EQ(grid->SB->PanelText(3), "RecordCount= 3");
    EXPECT_TRUE(grid->SB->PanelText(4).startsWith("QueryTime= 00:00:0"));
    EXPECT_EQ(grid->lvResults->ColumnCount(), 2);
    EXPECT_EQ(grid->lvResults->ColumnText(1), "n");
    EXPECT_EQ(grid->lvResults->SubItem(1, 1), "");
    EXPECT_EQ(grid->lvResults->SubItem(2, 1), "a,b");
    EXPECT_EQ(grid->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ResultViewTest, TheCaptionTakesThirtyCharactersAndTheFormerTitle)
{
    OpenSample({});
    frmGrid *grid = Grid();
    grid->ShowRec("select '" + QString(100, 'x') + "'", gConn);
    EXPECT_EQ(grid->Caption(), "Results[select '" + QString(22, 'x') + "...]");
    ASSERT_TRUE(Until([&] { return !grid->SB->PanelText(3).isEmpty(); }));
}

TEST_F(ResultViewTest, AnEmptyResultHasItsHeaders)
{
    OpenSample({"create table t (id int, n text)"});
    frmGrid *grid = Grid();
    grid->ShowRec("select * from t", gConn);
    ASSERT_TRUE(Until([&] { return !grid->SB->PanelText(3).isEmpty(); }));
    EXPECT_EQ(grid->SB->PanelText(3), "RecordCount= 0");
    EXPECT_EQ(grid->lvResults->ColumnCount(), 2);
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(ResultViewTest, AFailureIsSaidAndClosesTheWindow)
{
    OpenSample({});
    QPointer<frmGrid> grid = Grid();
    grid->ShowRec("select * from nowhere", gConn);
    ASSERT_TRUE(Until([&] { return !m_boxes.Boxes.isEmpty(); }));
    EXPECT_EQ(m_boxes.LastTitle(), "Error");
    EXPECT_EQ(m_boxes.Boxes.last().Icon, mbExclamation);
    EXPECT_TRUE(m_boxes.LastText().startsWith("Error: "));
    EXPECT_TRUE(m_boxes.LastText().contains("nowhere"));
    EXPECT_TRUE(Until([&] { return grid.isNull(); }));
}

TEST_F(ResultViewTest, WithTheFlagOffTheFailureStaysInThePanel)
{
    OpenSample({});
    QPointer<frmGrid> grid = Grid();
    grid->UnloadOnError = false;
    grid->ShowRec("select * from nowhere", gConn);
    ASSERT_TRUE(Until([&] { return !m_boxes.Boxes.isEmpty(); }));
    ASSERT_FALSE(grid.isNull());
    EXPECT_TRUE(Until([&] { return grid->SB->PanelText(1).startsWith("Error: "); }));
    EXPECT_EQ(grid->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ResultViewTest, EscapeClosesAndCancelsWhatRuns)
{
    ScriptedDriver driver;
    driver.OnExecute = [&](const QString &sql) {
        if (sql == "slow")
            driver.RunUntilCancelled(10);
        return ADODB::ExecuteResult();
    };
    ASSERT_TRUE(OpenConnection("Scripted"));
    QPointer<frmGrid> grid = Grid();
    grid->ShowRec("slow", gConn);
    ASSERT_TRUE(Until([&] { return driver.Log().contains("slow"); }));
    QTest::keyClick(grid->lvResults, Qt::Key_Escape);
    EXPECT_TRUE(Until([&] { return grid.isNull(); }));
    EXPECT_TRUE(Until([&] { return driver.Cancels > 0; }));
    EXPECT_TRUE(Until([&] { return !gConn->IsBusy(); }));
    QCoreApplication::processEvents();    // what the worker left in the queue
    EXPECT_TRUE(m_boxes.Boxes.isEmpty()); // nobody is told any more
    EXPECT_NO_THROW(gConn->Execute("next"));
}

TEST_F(ResultViewTest, ANewConnectionClosesTheGrid)
{
    QPointer<frmGrid> grid = Grid();
    EXPECT_EQ(grid->Tag, "1");
    grid->RefreshForm("other");
    EXPECT_TRUE(Until([&] { return grid.isNull(); }));
}

TEST_F(ResultViewTest, APanelShowsItsTextWhole)
{
    frmGrid *grid = Grid();
    grid->SB->SetPanelText(1, "select 1\\par select {2}");
    QTest::mouseClick(grid->SB, Qt::LeftButton, {}, grid->SB->PanelRect(1).center());
    auto *output = qobject_cast<frmTextOutput *>(m_shell.Child("frmTextOutput"));
    if (!output) { // the panel is a widget of its own in the bar
        QWidget *panel = grid->SB->childAt(grid->SB->PanelRect(1).center());
        ASSERT_NE(panel, nullptr);
        QTest::mouseClick(panel, Qt::LeftButton);
        output = qobject_cast<frmTextOutput *>(m_shell.Child("frmTextOutput"));
    }
    ASSERT_NE(output, nullptr);
    EXPECT_EQ(output->PlainText(), "select 1\r\nselect 2"); // as RTF, unescaped
}

TEST_F(ResultViewTest, HeaderClicksSort)
{
    OpenSample({"create table t (n text)", "insert into t values ('b'), ('C'), ('a')"});
    frmGrid *grid = ShowRecordset(Rows("select n from t"), "x");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->lvResults->Text(0), "b");
    grid->lvResults->ColumnClick(0);
    EXPECT_TRUE(grid->lvResults->Sorted());
    EXPECT_EQ(grid->lvResults->Text(0), "C"); // down first, without regard to case
    grid->lvResults->ColumnClick(0);
    EXPECT_EQ(grid->lvResults->Text(0), "a");
    grid->lvResults->resize(300, 100);
    QTest::mouseClick(grid->lvResults->header()->viewport(), Qt::LeftButton, {}, {20, 8}); // by the mouse
    EXPECT_EQ(grid->lvResults->Text(0), "C");
}

TEST_F(ResultViewTest, SavingAsksBeforeItOverwrites)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows("select 1 as a, 'x,y' as b"), "x");
    const QString path = Path("out.csv");
    m_boxes.Files << "" << path << path << path;
    grid->mnuSave();
    EXPECT_EQ(m_boxes.FileDialogs.last().Title, "Save CSV File");
    EXPECT_EQ(m_boxes.FileDialogs.last().DefaultExt, "CSV");
    EXPECT_EQ(m_boxes.FileDialogs.last().Filter, "Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt");
    EXPECT_FALSE(QFile::exists(path));
    grid->mnuSave();
    EXPECT_EQ(Read(path), "a,b,\r\n1,x y,\r\n");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
    Write(path, "former");
    m_boxes.Answers << mbNo << mbYes;
    grid->mnuSave();
    EXPECT_EQ(m_boxes.LastTitle(), "Save");
    EXPECT_EQ(m_boxes.Boxes.last().Buttons, mbYesNo);
    EXPECT_EQ(m_boxes.Boxes.last().Icon, 0); // it came with a question mark
    EXPECT_EQ(m_boxes.LastText(), "This file name already exists. Are you sure you want to overwrite this file?");
    EXPECT_EQ(Read(path), "former");
    grid->mnuSave();
    EXPECT_EQ(Read(path), "a,b,\r\n1,x y,\r\n");
    EXPECT_FALSE(m_shell.Hourglass);
}

TEST_F(ResultViewTest, AFileThatCannotBeWrittenSaysWhy)
{
    frmGrid *grid = Grid();
    EXPECT_FALSE(grid->SaveFile(Path("no/such/folder.csv")));
    EXPECT_EQ(m_boxes.LastTitle(), "Error");
    EXPECT_GT(m_boxes.LastText().size(), 8);
    EXPECT_FALSE(WriteTextFile(nullptr, Path("no/such/file.txt"), "x"));
}

TEST_F(ResultViewTest, WithDoEventsTheWindowsPaintWhenTheRowsAreThere)
{
    OpenSample({});
    ListView list;
    const auto rows = Rows("select 1 as a");
    LoadColumns(rows, &list);
    bool seen = false;
    QTimer::singleShot(0, &list, [&] { seen = list.Count() == 1; });
    FillOptions options;
    FillList(&list, rows, options);
    EXPECT_FALSE(seen);
    rows->MoveFirst();
    options.Clear = options.DoEvents = true;
    FillList(&list, rows, options);
    EXPECT_TRUE(seen);
}

TEST_F(ResultViewTest, RecordsetsAsLists)
{
    OpenSample({"create table t (id int, n text, type int)",
                "insert into t values (1, 'one', 200), (2, null, 3), (3, 'three', 11)"});
    ListView list;
    auto rows = Rows("select * from t order by id");
    LoadColumns(rows, &list);
    EXPECT_EQ(list.ColumnCount(), 3);
    FillList(&list, rows);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(list.SubItem(1, 1), "");
    FillList(&list, rows); // stands at the end: nothing to read
    EXPECT_EQ(list.Count(), 3);

    rows->MoveFirst();
    FillOptions options;
    options.Clear = true;
    options.Limit = 2;
    options.TagField = "N";
    options.TextFields = "id,type,nothing";
    options.Separator = "/";
    options.MaskFields = "n";
    options.ConvertFields = "TYPE";
    qint64 done = 0, count = 0;
    options.Progress = [&](qint64 d, qint64 c) {
        done = d;
        count = c;
    };
    FillList(&list, rows, options);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Text(0), "1/200");
    EXPECT_EQ(list.Tag(0), "one");
    EXPECT_EQ(list.SubItem(0, 1), "*");
    EXPECT_FALSE(list.SubItem(0, 2).isEmpty());
    EXPECT_NE(list.SubItem(0, 2), "200");
    EXPECT_EQ(done, 2);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(rows->AbsolutePosition(), 3); // behind the last one read

    FillOptions formatted;
    formatted.FormatFields = "n";
    formatted.Format = "<%1>";
    FillList(&list, rows, formatted);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.SubItem(2, 1), "<three>");

    LoadColumns(Rows("select 1 as other"), &list);
    EXPECT_EQ(list.ColumnCount(), 1);
    FillList(&list, nullptr);
}

TEST_F(ResultViewTest, ARecordsetInAWindow)
{
    EXPECT_EQ(ShowRecordset(nullptr, "x"), nullptr);
    EXPECT_EQ(m_boxes.LastTitle(), "Conection");
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows("select 1 as a union select 2"), "All Objects");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(m_shell.Statuses, QStringList{"Loading  [All Objects]"});
    EXPECT_EQ(m_shell.CountPanel, "Count = 2");
    EXPECT_EQ(grid->Caption(), "All Objects");
    EXPECT_TRUE(grid->isVisible());
    EXPECT_EQ(m_shell.Child("frmGrid"), grid);
    EXPECT_EQ(grid->lvResults->Count(), 2);
}

TEST_F(ResultViewTest, TextOutputComposesItsDocument)
{
    EXPECT_EQ(frmTextOutput::GetHeader(),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 MS Sans Serif;}}");
    EXPECT_EQ(frmTextOutput::Document("a\r\n\tb"), frmTextOutput::GetHeader() + gColorTableString +
                                                       " \\viewkind4\\uc1\\pard\\f0\\fs17 \\cf0 a\\par \\tab b}");
    auto *output = new frmTextOutput;
    EXPECT_EQ(output->Caption(), "Text Output");
    output->SetText("one\r\ntwo\tthree\r\n\\\\ \\{\\}");
    EXPECT_EQ(output->PlainText(), "one\r\ntwo\tthree\r\n\\ {}");
    output->SetText("lost \\x and {gone}"); // unescaped: as RTF
    EXPECT_FALSE(output->PlainText().contains('\\'));
    output->ShowChild();
    QPointer<frmTextOutput> watched(output);
    QTest::keyClick(output->txtResult, Qt::Key_Escape);
    EXPECT_TRUE(Until([&] { return watched.isNull(); }));
}

TEST_F(ResultViewTest, TextOutputSavesPlainText)
{
    auto *output = new frmTextOutput;
    output->SetText("one\r\n\u0436");
    m_boxes.Files << Path("log.txt") << Path("log.txt");
    output->mnuSave();
    EXPECT_EQ(m_boxes.FileDialogs.last().Title, "Save File");
    EXPECT_EQ(m_boxes.FileDialogs.last().Filter, "Text File [*.txt] |*.txt");
    EXPECT_EQ(Read(Path("log.txt")), QByteArray("one\r\n\xD0\xB6"));
    m_boxes.Answers << mbNo;
    output->SetText("two");
    output->mnuSave();
    EXPECT_EQ(Read(Path("log.txt")), QByteArray("one\r\n\xD0\xB6"));
    delete output;
}

TEST_F(ResultViewTest, TextOutputPrints)
{
    auto *output = new frmTextOutput;
    output->SetText("printed");
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(Path("out.pdf"));
    output->PrintTo(&printer);
    EXPECT_TRUE(Read(Path("out.pdf")).startsWith("%PDF"));
    output->ShowChild();
    WithDialog([](QWidget *dialog) { dialog->close(); });
    output->mnuPrint();
    EXPECT_EQ(m_dialogs, 1); // the preview
}

TEST_F(ResultViewTest, TextOutputInADialog)
{
    QPointer<frmTextOutput> output(new frmTextOutput);
    output->SetCaption("Log");
    output->SetText("line");
    WithDialog([&](QWidget *dialog) {
        EXPECT_EQ(dialog->windowTitle(), "Log");
        QTest::keyClick(output->txtResult, Qt::Key_Escape);
    });
    output->ShowModal();
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_TRUE(output.isNull());
}

TEST_F(ResultViewTest, WhatTheWindowsOffer)
{
    frmGrid grid;
    EXPECT_TRUE(grid.Offers("mnuCopy") && grid.Offers("mnuSave") && !grid.Offers("mnuPrint"));
    EXPECT_TRUE(grid.MenuSettings().CanCopy && grid.MenuSettings().CanSave && !grid.MenuSettings().CanFind);
    frmTree tree;
    EXPECT_TRUE(tree.Offers("mnuSave") && !tree.Offers("mnuCopy"));
    EXPECT_TRUE(tree.MenuSettings().CanSave && !tree.MenuSettings().CanCopy);
    frmTextOutput output;
    EXPECT_TRUE(output.Offers("mnuSave") && output.Offers("mnuPrint") && !output.Offers("mnuCopy"));
    EXPECT_TRUE(output.MenuSettings().CanPrint && output.MenuSettings().CanSave);
    EXPECT_EQ(grid.FormName() + tree.FormName() + output.FormName(), "frmGridfrmTreefrmTextOutput");
}

} // namespace
