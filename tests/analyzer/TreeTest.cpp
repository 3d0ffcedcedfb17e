// The schema's tree, the history of picked nodes, the stored text.
#include "AnalyzerFixture.h"
#include "StructureAnswer.h"
#include "controls/ListView.h"
#include "controls/Splitter.h"
#include <QDropEvent>
#include <QMimeData>
#include <memory>

TEST_F(Analyzer, TheTreeHoldsTheSchema)
{
    TreeNodes &nodes = window->TV->Nodes();
    const char *roots[] = {"Tables", "Views", "Procedures", "Functions"};
    Node *root = nodes.Item(1);
    for (const char *name : roots) {
        ASSERT_TRUE(root);
        EXPECT_EQ(root->Key(), QString::fromLatin1(name));
        EXPECT_EQ(root->Text(), QString::fromLatin1(name));
        EXPECT_EQ(root->Depth(), 0);
        EXPECT_EQ(root->Image(), window->TV->ImageIndex(QStringLiteral("C")));
        root = root->Next();
    }
    EXPECT_FALSE(root);
    EXPECT_EQ(nodes.Item(QStringLiteral("Tables"))->Tag(), QStringLiteral("2"));
    EXPECT_EQ(nodes.Item(QStringLiteral("Views"))->Tag(), QStringLiteral("1"));
    const Node *customers = nodes.Item(QStringLiteral("customers"));
    EXPECT_EQ(customers->Tag(), QStringLiteral("2"));
    EXPECT_EQ(customers->Image(), window->TV->ImageIndex(QStringLiteral("T")));
    EXPECT_EQ(customers->Child(1)->Key(), QStringLiteral("customers-id"));
    EXPECT_EQ(customers->Child(2)->Text(), QStringLiteral("name"));
    EXPECT_EQ(customers->Child(2)->Image(), window->TV->ImageIndex(QStringLiteral("F")));
    EXPECT_EQ(nodes.Item(QStringLiteral("names"))->Parent()->Key(), QStringLiteral("Views"));
    EXPECT_TRUE(nodes.Item(QStringLiteral("Tables"))->Expanded());
    EXPECT_TRUE(nodes.Item(QStringLiteral("Views"))->Expanded());
}

TEST_F(Analyzer, TheQuickListHoldsTheNamesInUpperCase)
{
    QStringList names;
    for (qint64 row = 0; row < window->lvQuickList->Count(); ++row)
        names += window->lvQuickList->Text(row);
    EXPECT_EQ(names, (QStringList{QStringLiteral("CUSTOMERS"), QStringLiteral("ORDERS"), QStringLiteral("NAMES")}));
    EXPECT_FALSE(window->lvQuickList->isVisible());
}

TEST_F(Analyzer, RefreshReadsTheSchemaAgainAndKeepsTheText)
{
    window->SetText(QStringLiteral("select 1"));
    gConn->Execute(QStringLiteral("create table fresh(a integer)"));
    window->ToolBar(QStringLiteral("SQLRefresh"));
    EXPECT_TRUE(window->TV->Nodes().Find(QStringLiteral("fresh")));
    EXPECT_EQ(window->lvQuickList->Count(), 4);
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
}

TEST_F(Analyzer, WithoutAConnectionTheRootsStandAlone)
{
    gConn.reset();
    window->Load();
    EXPECT_EQ(window->TV->Nodes().Count(), 4);
    EXPECT_EQ(window->lvQuickList->Count(), 0);
}

TEST_F(Analyzer, TheTextLivesInTheStoredConnection)
{
    gConns().Add(QStringLiteral("a"), QStringLiteral("One"), QStringLiteral("select 1 from one"));
    gConns().Add(QStringLiteral("b"), QStringLiteral("Two"), QStringLiteral("select 2 from two"));
    gConns().Add(QStringLiteral("c"), QStringLiteral("Empty"), QString());
    window = Make(QStringLiteral("ONE"));
    EXPECT_EQ(window->Text(), QStringLiteral("select 1 from one"));
    EXPECT_EQ(Colours(), "11111100011110000");
    EXPECT_EQ(window->Caption(), QStringLiteral("SQL Analyzer: [ONE]"));
    window->SetText(QStringLiteral("changed"));
    window->RefreshForm(QStringLiteral("Two"));
    EXPECT_EQ(gConns().Item(QStringLiteral("One"))->Extra, QStringLiteral("changed"));
    EXPECT_EQ(window->Text(), QStringLiteral("select 2 from two"));
    EXPECT_EQ(window->Caption(), QStringLiteral("SQL Analyzer: [Two]"));
    EXPECT_EQ(window->ConnName(), QStringLiteral("Two"));
    window->RefreshForm(QStringLiteral("Empty")); // an empty stored text does not wipe the window's
    EXPECT_EQ(window->Text(), QStringLiteral("select 2 from two"));
    window->SetText(QStringLiteral("closing"));
    window->CloseChild();
    EXPECT_EQ(gConns().Item(QStringLiteral("empty"))->Extra, QStringLiteral("closing"));
    EXPECT_EQ(gConns().Item(QStringLiteral("two"))->Extra, QStringLiteral("select 2 from two"));
}

TEST_F(Analyzer, AWindowOfADeletedConnectionClosesQuietly)
{
    gConns().Add(QStringLiteral("a"), QStringLiteral("One"), QStringLiteral("x"));
    window = Make(QStringLiteral("One"));
    gConns().Remove(QStringLiteral("One"));
    window->CloseChild();
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Analyzer, ADoubleClickPutsTheNameIntoTheTextAndIntoTheHistory)
{
    window->SetText(QStringLiteral("select  from"));
    window->txtSQL->SetSelStart(7);
    TreeView *tree = window->TV;
    Node *field = tree->Nodes().Item(QStringLiteral("customers-name"));
    field->EnsureVisible();
    emit tree->NodeDblClick(field);
    EXPECT_EQ(window->Text(), QStringLiteral("select  name  from"));
    emit tree->NodeDblClick(field);
    {
        StructureAnswer accept;
        emit tree->NodeDblClick(tree->Nodes().Item(QStringLiteral("orders")));
        EXPECT_EQ(accept.shown, 1);
    }
    ExplorerBarBar *history = side.FindBar(QStringLiteral("DYNA"));
    ASSERT_TRUE(history);
    EXPECT_EQ(history->Title(), QStringLiteral("History Bar"));
    ASSERT_EQ(history->Items().Count(), 2); // each node once
    EXPECT_EQ(history->Items().Item(1)->Text(), QStringLiteral("name"));
    tree->Nodes().Item(QStringLiteral("customers"))->SetExpanded(false);
    window->DynaMenuItemClick(history->Items().Item(1)->Key(), history->Items().Item(1)->Text());
    EXPECT_EQ(tree->SelectedItem(), field);
    window->DynaMenuItemClick(history->Items().Item(2)->Key(), history->Items().Item(2)->Text());
    EXPECT_EQ(tree->SelectedItem()->Text(), QStringLiteral("orders"));
    EXPECT_TRUE(tree->SelectedItem()->Expanded());
    const QString before = window->Text();
    emit tree->NodeDblClick(tree->Nodes().Item(QStringLiteral("Tables"))); // a root is no name
    EXPECT_EQ(window->Text(), before);
}

TEST_F(Analyzer, ANodeCanBeDraggedIntoTheText)
{
    window->SetText(QStringLiteral("select\r\nfrom"));
    TreeView *tree = window->TV;
    tree->SetSelectedItem(tree->Nodes().Item(QStringLiteral("customers-name")));
    const std::unique_ptr<QMimeData> data(tree->model()->mimeData({tree->currentIndex()}));
    window->txtSQL->SetSelStart(12);
    const QPoint end = window->txtSQL->cursorRect().center();
    window->txtSQL->SetSelStart(0);
    QDragEnterEvent enter(end, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window->txtSQL->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(end, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window->txtSQL->viewport(), &drop);
    EXPECT_EQ(window->Text(), QStringLiteral("select\r\nfrom")); // the drop ends before the text changes
    QCoreApplication::processEvents();
    EXPECT_EQ(window->Text(), QStringLiteral("select\r\nfrom name "));
    EXPECT_EQ(side.FindBar(QStringLiteral("DYNA"))->Items().Count(), 1);
    EXPECT_TRUE(tree->Nodes().Find(QStringLiteral("customers-name"))); // the tree keeps it
}

TEST_F(Analyzer, TheHistoryBarLivesWhileTheWindowIsActive)
{
    emit window->TV->NodeDblClick(window->TV->Nodes().Item(QStringLiteral("customers-name")));
    ASSERT_TRUE(side.FindBar(QStringLiteral("DYNA")));
    window->SetText(QStringLiteral("delete from orders"));
    window->RunSQL();
    ASSERT_TRUE(side.FindBar(QStringLiteral("LOG")));
    window->Deactivated();
    EXPECT_FALSE(side.FindBar(QStringLiteral("DYNA")));
    EXPECT_FALSE(side.FindBar(QStringLiteral("LOG")));
    window->Activated();
    ASSERT_TRUE(side.FindBar(QStringLiteral("DYNA")));
    EXPECT_EQ(side.FindBar(QStringLiteral("DYNA"))->Items().Count(), 1);
    window->CloseChild();
    EXPECT_FALSE(side.FindBar(QStringLiteral("DYNA")));
}

TEST_F(Analyzer, TheSplitterSharesTheWidthAndTheTreeKeepsIts)
{
    const int tree = window->TV->width();
    window->resize(900, 500);
    EXPECT_EQ(window->TV->width(), tree);
    EXPECT_EQ(window->txtSQL->width() + window->picSplit->width() + tree, 900);
    const int left = window->picSplit->x();
    QTest::mousePress(window->picSplit, Qt::LeftButton, {}, QPoint(2, 50));
    QTest::mouseMove(window->picSplit, QPoint(-98, 50));
    QTest::mouseRelease(window->picSplit, Qt::LeftButton, {}, QPoint(2, 50));
    EXPECT_LT(window->picSplit->x(), left);
    EXPECT_EQ(window->txtSQL->width(), window->picSplit->x());
    EXPECT_GT(window->TV->width(), tree);
}

// They led to nodes of a tree that is gone, or to ones of the same name in another database.
TEST_F(Analyzer, TheHistoryBarForgetsTheNodesOfAFormerConnection)
{
    window->TV->Nodes().Item(QStringLiteral("customers-name"))->EnsureVisible();
    emit window->TV->NodeDblClick(window->TV->Nodes().Item(QStringLiteral("customers-name")));
    const auto listed = [this] { return side.FindBar(QStringLiteral("DYNA"))->Items().Count(); };
    ASSERT_EQ(listed(), 1);
    window->ToolBar(QStringLiteral("SQLRefresh"));
    EXPECT_EQ(listed(), 1);
    const ADODB::ConnectionPtr other = ADODB::Connection::Create();
    other->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=") + folder.filePath(QStringLiteral("other.sqlite")));
    gConn = other;
    window->RefreshForm(QStringLiteral("Other"));
    EXPECT_EQ(listed(), 0);
    window->Deactivated();
    gConn = Connect();
    window->RefreshForm(QStringLiteral("Back"));
    EXPECT_FALSE(side.FindBar(QStringLiteral("DYNA"))); // it is the active window's
}
