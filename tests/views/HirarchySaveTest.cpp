// What leaves the result window: copies, files, reports and prints.
#include "controls/LongTextBox.h"
#include "controls/TabStrip.h"
#include "tests/support/SmallDisk.h"
#include "tests/views/Hirarchy.h"
#include "views/drReport.h"
#include <QApplication>
#include <QClipboard>
#include <QTimer>

namespace {

TEST_F(Hirarchy, CopyFollowsTheTab)
{
    ASSERT_TRUE(Run(QStringLiteral("select id, name from t")));
    window.mfg->Select(1, 2, 1, 2);
    window.mnuCopy();
    EXPECT_EQ(QApplication::clipboard()->text(), "Anna, \"A\"");
    window.mfg->Select(1, 1, 2, 2);
    window.mnuCopy();
    EXPECT_EQ(QApplication::clipboard()->text(), "\"1\",\"Anna, \"\"A\"\"\"\r\n\"2\",\"\"\r\n");
    window.txtData->setPlainText(QStringLiteral("x\ny"));
    window.ts->Select(3);
    window.mnuCopy();
    EXPECT_EQ(QApplication::clipboard()->text(), "x\r\ny");
}

TEST_F(Hirarchy, CsvAndHtmlByteForByte)
{
    ASSERT_TRUE(Run(QStringLiteral("select * from t")));
    dialogs.Files << folder.filePath("a.csv") << folder.filePath("a.htm") << folder.filePath("a.html");
    window.mnuSave();
    EXPECT_EQ(dialogs.FileDialogs.last().Title, "Save CSV File");
    EXPECT_EQ(Bytes("a.csv"), "\"id\",\"name\",\"amount\",\r\n1,\"Anna, \"A\"\",1.5,\r\n2,\"\",-3,\r\n"
                              "3,\"Bj\xC3\xB6rn\",1.5,\r\n\r\n");
    window.mnuSave();
    const QByteArray html = Bytes("a.htm");
    EXPECT_TRUE(html.startsWith(" <html>\r\n <head>\r\n     <title>Brindlewick</title>\r\n </head>\r\nSQL Result: c\r\n"
                                "<BR>SQL:<BR>select * from t<BR>\r\n <Table width=100% Bgcolor=White BorderWidth=1>\r\n"
                                "\t<TR>\r\n\t\t<TD bgcolor=gray>\r\n\t\t\tid\r\n\t\t</TD>\r\n"))
        << html.toStdString();
    EXPECT_FALSE(html.contains("amount"));
    EXPECT_TRUE(html.endsWith("\t</TR>\r\n </Table>\r\n </html>\r\n"));
    window.mnuSave();
    EXPECT_EQ(Bytes("a.html"), Bytes("a.csv"));
}

TEST_F(Hirarchy, SavingAsksBeforeItOverwritesAndSaysWhyItCannot)
{
    ASSERT_TRUE(Run(QStringLiteral("select 1 as a")));
    QFile old(folder.filePath("old.csv"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("keep");
    old.close();
    dialogs.Files << old.fileName();
    dialogs.Answers << mbNo;
    window.mnuSave();
    EXPECT_EQ(Bytes("old.csv"), "keep");
    EXPECT_EQ(dialogs.LastTitle(), "Save");
    EXPECT_EQ(dialogs.Boxes.last().Icon, mbExclamation);
    EXPECT_EQ(dialogs.Boxes.last().Buttons, mbYesNo);
    EXPECT_EQ(dialogs.LastText(), "This file name already exists. Are you sure you want to overwrite this file?");
    EXPECT_FALSE(window.SaveFile(QStringLiteral("/nowhere/at/all.csv")));
    EXPECT_TRUE(dialogs.LastText().contains("/nowhere/at/all.csv"));
    EXPECT_EQ(dialogs.Boxes.last().Icon, mbExclamation);
}

TEST_F(Hirarchy, AFullDiskLeavesTheFormerFileWholeAndIsSaid)
{
    ASSERT_TRUE(Run(Counting(300000))); // more than one block of the file
    QFile old(folder.filePath("old.csv"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("keep");
    old.close();
    {
        const SmallDisk disk(1500000);
        EXPECT_FALSE(window.SaveFile(old.fileName()));
        EXPECT_EQ(dialogs.LastText(), old.fileName() + "\n\n" + qt_error_string(EFBIG));
    }
    {
        const SmallDisk disk(1000);
        EXPECT_FALSE(window.SaveHTMLFile(old.fileName()));
        EXPECT_EQ(dialogs.LastText(), old.fileName() + "\n\n" + qt_error_string(EFBIG));
    }
    EXPECT_EQ(Bytes("old.csv"), "keep");
    EXPECT_TRUE(window.SaveFile(old.fileName()));
}

TEST_F(Hirarchy, AReportSavesAsPdf)
{
    ASSERT_TRUE(Run(QStringLiteral("select * from t")));
    const ADODB::RecordsetPtr rows = connection->Execute(Counting(500));
    drReport report(rows, {{0, 1200, "i"}, {1200, 900, "absent"}}, QStringLiteral("SQL: counting"));
    EXPECT_GT(report.Pages(), 5);
    ASSERT_TRUE(report.SavePdf(folder.filePath("r.pdf")));
    EXPECT_TRUE(Bytes("r.pdf").startsWith("%PDF"));
    EXPECT_FALSE(report.SavePdf(QStringLiteral("/nowhere/at/all.pdf")));
    EXPECT_TRUE(dialogs.LastText().contains("cannot be written"));
}

TEST_F(Hirarchy, PrintingRunsTheStatementAgainAndShowsTheReport)
{
    ASSERT_TRUE(Run(QStringLiteral("select * from t")));
    QString pages;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto *report = qobject_cast<drReport *>(QApplication::activeModalWidget());
        if (report && !report->lblPages->text().isEmpty()) {
            look.stop();
            pages = report->lblPages->text();
            QTest::keyClick(report, Qt::Key_Escape);
        }
    });
    look.start(5);
    window.mnuPrint();
    EXPECT_EQ(pages, "1 page");
}

} // namespace
