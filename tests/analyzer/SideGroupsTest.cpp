// The two groups of the side bar, and the other members of an Analyzer that work without it.
#include "AnalyzerFixture.h"
#include "analyzer/NodeHistory.h"
#include "analyzer/QueryFiles.h"
#include "analyzer/QueryRunner.h"
#include "analyzer/QueryText.h"
#include "analyzer/RunLog.h"
#include "analyzer/RunResults.h"
#include "analyzer/SchemaTree.h"
#include "data/frmTextOutput.h"
#include "tests/support/Text.h"
#include <QFile>

namespace {

QStringList Texts(const ExplorerBar &side, const char *group)
{
    QStringList texts;
    if (const ExplorerBarBar *bar = side.FindBar(QString::fromLatin1(group)))
        for (int i = 1; i <= bar->Items().Count(); ++i)
            texts += bar->Items().Item(i)->Text();
    return texts;
}

// A window that is no Analyzer, with what an Analyzer is made of.
struct Rooms : Analyzer
{
    frmTextOutput other;
    RichTextBox editor{&other};
    QueryText text{&editor};
    NodeHistory history;
    RunLog log;

    void SetUp() override
    {
        Analyzer::SetUp();
        window->CloseChild();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

} // namespace

TEST_F(Rooms, TheLogTakesLinesOfTheOneThatShowedItLast)
{
    RunLog second;
    log.Add(S("nobody shows"));
    log.Show();
    log.Add(S("first"));
    second.Show();
    log.Add(S("late"));
    second.Add(S("second"));
    EXPECT_EQ(Texts(side, "LOG"), (QStringList{"first", "second"}));
    log.Clear();
    second.Add(S("into nothing"));
    EXPECT_EQ(side.FindBar(S("LOG")), nullptr);
}

// A log is known by its address, and another one may come to stand there when it has gone.
TEST_F(Rooms, ALogThatHasGoneOwnsNoGroup)
{
    alignas(RunLog) unsigned char place[sizeof(RunLog)];
    auto *gone = new (place) RunLog;
    gone->Show();
    gone->~RunLog();
    auto *next = new (place) RunLog;
    next->Add(S("not shown"));
    EXPECT_EQ(Texts(side, "LOG"), QStringList{});
    next->~RunLog();
}

TEST_F(Rooms, PickedNodesAreListedOnceWhileTheyAreShown)
{
    history.Pick(S("T-a"), S("a"));
    EXPECT_EQ(side.FindBar(S("DYNA")), nullptr);
    history.Show();
    history.Pick(S("T-b"), S("b"));
    history.Pick(S("T-a"), S("a"));
    EXPECT_EQ(Texts(side, "DYNA"), (QStringList{"a", "b"}));
    const QString entry = side.FindBar(S("DYNA"))->Items().Item(2)->Key();
    EXPECT_EQ(history.NodeOf(entry), S("T-b"));
    EXPECT_EQ(history.NodeOf(S("strange")), QString());
    history.Forget();
    EXPECT_EQ(Texts(side, "DYNA"), QStringList{});
    history.Hide();
    EXPECT_EQ(side.FindBar(S("DYNA")), nullptr);
    history.Forget();
    EXPECT_EQ(side.FindBar(S("DYNA")), nullptr);
}

TEST_F(Rooms, TheTreeHasTheSchemaAndItsNodesGoIntoTheText)
{
    SchemaTree tree(&other, text, history);
    tree.Fill();
    EXPECT_EQ(tree.OpenNames(), (QStringList{"CUSTOMERS", "ORDERS", "NAMES"}));
    Node *table = tree.View()->Nodes().Find(S("Tables"))->Child(1);
    Node *field = table->Child(1);
    const QString fieldKey = field->Key(), name = field->Text();
    tree.Take(field);
    EXPECT_TRUE(editor.Text().contains(name));
    history.Show();
    EXPECT_EQ(Texts(side, "DYNA"), QStringList{name});
    tree.Reveal(fieldKey);
    EXPECT_EQ(tree.View()->SelectedItem(), field);
    tree.Take(tree.View()->Nodes().Find(S("Tables"))); // a root stands for nothing
    EXPECT_EQ(Texts(side, "DYNA"), QStringList{name});
    gConn.reset();
    tree.Fill(); // another database: its nodes are none of this one's
    EXPECT_EQ(Texts(side, "DYNA"), QStringList{});
    EXPECT_EQ(tree.OpenNames(), QStringList{});
}

TEST_F(Rooms, FilesAreSavedUnderOneNameAndAppendedAfterABlankLine)
{
    QueryFiles files(&other, text);
    const QString path = folder.filePath(S("q.sql"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("select 2");
    file.close();
    text.SetText(S("select 1"));
    files.Append({path});
    EXPECT_EQ(editor.Text(), S("select 1\r\n\r\nselect 2"));
    EXPECT_EQ(files.FileName(), QString()); // the text is no file's
    dialogs.Files << path;
    dialogs.Answers << mbYes;
    files.Save({});
    EXPECT_EQ(files.FileName(), path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("select 1\r\n\r\nselect 2"));
    files.Forget();
    EXPECT_EQ(files.FileName(), QString());
}

TEST_F(Rooms, ARunnerNeedsNoAnalyzerToRunAStatement)
{
    RunResults results(&other, nullptr);
    QueryRunner runner(&other, text, log, results);
    dialogs.Answers << mbYes;
    text.SetText(S("insert into customers values (3, 'C')"));
    EXPECT_TRUE(runner.RunSQL());
    EXPECT_EQ(Count(S("select count(*) from customers")), 3);
    EXPECT_EQ(Log(), QStringList{"insert into customers val... 1 record have been affected"});
    EXPECT_FALSE(runner.Running());
    EXPECT_FALSE(results.Stop());
    runner.Transaction(TransactionItem::Begin);
    EXPECT_TRUE(gConn->InTransaction());
    runner.Transaction(TransactionItem::RollBack);
    EXPECT_FALSE(gConn->InTransaction());
    runner.SetConnName(S("Sample"));
    text.SetText(S("select 1"));
    EXPECT_TRUE(runner.RunSQL());
    WaitForResults();
    ASSERT_EQ(Results().size(), 1);
    EXPECT_EQ(Results().first()->Caption(), S("SQL Result: Sample"));
}
