#include "controls/TreeView.h"
#include "controls/Attempt.h"
#include "controls/ControlError.h"
#include "tests/support/Text.h"
#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

namespace {

int NumberOf(const std::function<void()> &statement)
{
    try {
        statement();
    } catch (const ControlError &error) {
        return error.Number;
    }
    return 0;
}

} // namespace

TEST(TreeView, AddsUnderRootsAndNodes)
{
    TreeView tree;
    tree.AddSchemaImages();
    Node *const tables = tree.Nodes().Add(nullptr, tvwChild, S("Tables"), S("Tables"), tree.ImageIndex(S("C")));
    Node *const one = tree.Nodes().Add(tables, tvwChild, S("t"), S("orders"), tree.ImageIndex(S("T")));
    tree.Nodes().Add(one, tvwChild, S("t-id"), S("id"), tree.ImageIndex(S("F")));
    EXPECT_EQ(tree.Nodes().Count(), 3);
    EXPECT_EQ(one->Parent(), tables);
    EXPECT_EQ(tables->Parent(), nullptr);
    EXPECT_EQ(tables->Children(), 1);
    EXPECT_EQ(one->Child()->Text(), S("id"));
    EXPECT_EQ(one->Child(2), nullptr);
    EXPECT_EQ(one->Child()->Root(), tables);
    EXPECT_EQ(one->Child()->Depth(), 2);
    EXPECT_EQ(one->Index(), 2);
    EXPECT_EQ(tree.Nodes().Item(S("t-id"))->Index(), 3);
    EXPECT_EQ(one->SelectedImage(), one->Image());
    EXPECT_GT(tree.ImageIndex(S("N")), 0);
    EXPECT_EQ(tree.ImageIndex(S("?")), 0);
    one->SetTag(S("7"));
    EXPECT_EQ(one->Tag(), S("7"));
}

TEST(TreeView, KeysAreUniqueAndExact)
{
    TreeView tree;
    Node *node = tree.Nodes().Add(nullptr, tvwChild, S("key"), S("first"));
    EXPECT_EQ(NumberOf([&] { node = tree.Nodes().Add(nullptr, tvwChild, S("key"), S("second")); }), ctlErrKeyNotUnique);
    EXPECT_EQ(node->Text(), S("first")); // the variable keeps the node of before
    EXPECT_EQ(tree.Nodes().Count(), 1);
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    tree.Nodes().Add(nullptr, tvwChild, S("KEY"), S("other case"));
    tree.Nodes().Add(nullptr, tvwChild, QString(), S("no key"));
    tree.Nodes().Add(nullptr, tvwChild, QString(), S("no key either"));
    EXPECT_EQ(tree.Nodes().Count(), 4);
    EXPECT_EQ(tree.Nodes().Find(QString()), nullptr);
    EXPECT_EQ(NumberOf([&] { tree.Nodes().Item(S("missing")); }), ctlErrElementNotFound);
    EXPECT_EQ(NumberOf([&] { tree.Nodes().Item(5); }), ctlErrIndex);
    EXPECT_EQ(NumberOf([&] { tree.Nodes().Item(0); }), ctlErrIndex);
    EXPECT_FALSE(Attempt([&] { node->SetKey(S("KEY")); }));
    node->SetKey(S("renamed"));
    EXPECT_EQ(tree.Nodes().Find(S("key")), nullptr);
    EXPECT_EQ(tree.Nodes().Item(S("renamed")), node);
}

TEST(TreeView, RelationshipsPlaceSiblings)
{
    TreeView tree;
    Node *const a = tree.Nodes().Add(nullptr, tvwChild, {}, S("a"));
    tree.Nodes().Add(a, tvwNext, {}, S("b"));
    tree.Nodes().Add(a, tvwPrevious, {}, S("0"));
    tree.Nodes().Add(a, tvwLast, {}, S("z"));
    tree.Nodes().Add(a, tvwFirst, {}, S("-"));
    QString order;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        order += tree.topLevelItem(i)->text(0);
    EXPECT_EQ(order, S("-0abz"));
    EXPECT_EQ(a->Next()->Text(), S("b"));
    EXPECT_EQ(a->Previous()->Text(), S("0"));
    EXPECT_EQ(a->Index(), 1);
}

TEST(TreeView, RemovingTakesTheNodesBelowAndMovesNumbersUp)
{
    TreeView tree;
    Node *const a = tree.Nodes().Add(nullptr, tvwChild, S("a"), S("a"));
    Node *const b = tree.Nodes().Add(nullptr, tvwChild, S("b"), S("b"));
    Node *const child = tree.Nodes().Add(a, tvwChild, S("a1"), S("a1"));
    tree.Nodes().Add(child, tvwChild, S("a11"), S("a11"));
    Node *const last = tree.Nodes().Add(b, tvwChild, S("b1"), S("b1"));
    child->SetSelected(true);
    tree.Nodes().Remove(S("a"));
    EXPECT_EQ(tree.Nodes().Count(), 2);
    EXPECT_EQ(b->Index(), 1);
    EXPECT_EQ(last->Index(), 2);
    EXPECT_EQ(tree.Nodes().Find(S("a11")), nullptr);
    tree.Nodes().Add(nullptr, tvwChild, S("a11"), S("again"));
    EXPECT_EQ(NumberOf([&] { tree.Nodes().Remove(S("a")); }), ctlErrElementNotFound);
    tree.Nodes().Clear();
    EXPECT_EQ(tree.Nodes().Count(), 0);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST(TreeView, SelectsShowsAndOpens)
{
    TreeView tree;
    tree.AddSchemaImages();
    tree.resize(200, 120);
    tree.show();
    Node *const root = tree.Nodes().Add(nullptr, tvwChild, S("r"), S("r"), 1, 7);
    for (int i = 0; i < 100; ++i)
        tree.Nodes().Add(root, tvwChild, QString::number(i), QString::number(i), 2);
    QSignalSpy selected(&tree, &TreeView::NodeSelected), opened(&tree, &TreeView::NodeExpand);
    Node *const node = tree.Nodes().Item(S("77"));
    node->EnsureVisible();
    EXPECT_TRUE(root->Expanded());
    EXPECT_EQ(opened.size(), 1);
    node->SetSelected(true);
    EXPECT_EQ(tree.SelectedItem(), node);
    EXPECT_TRUE(node->Selected());
    EXPECT_EQ(selected.size(), 1);
    EXPECT_EQ(tree.HitTest(tree.visualItemRect(tree.currentItem()).center()), node);
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(tree.SelectedItem()->Text(), S("78"));
    QTest::keyClick(&tree, Qt::Key_Left); // to the parent
    QTest::keyClick(&tree, Qt::Key_Left); // closes it
    EXPECT_EQ(tree.SelectedItem(), root);
    EXPECT_FALSE(root->Expanded());
    QSignalSpy clicks(&tree, &TreeView::NodeClick), doubles(&tree, &TreeView::NodeDblClick);
    const QPoint at = tree.visualItemRect(tree.topLevelItem(0)).center();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    EXPECT_GE(clicks.size(), 1);
    EXPECT_EQ(doubles.size(), 1);
    tree.SetSelectedItem(nullptr);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST(TreeView, FortyThousandNodesAreQuick)
{
    TreeView tree;
    tree.resize(200, 300);
    tree.show();
    for (int t = 0; t < 2000; ++t) {
        Node *const table = tree.Nodes().Add(nullptr, tvwChild, QStringLiteral("t%1").arg(t), S("table"));
        for (int f = 0; f < 20; ++f)
            tree.Nodes().Add(table, tvwChild, QStringLiteral("t%1-%2").arg(t).arg(f), S("field"));
    }
    EXPECT_EQ(tree.Nodes().Count(), 42000);
    EXPECT_EQ(tree.Nodes().Item(S("t1999-19"))->Index(), 42000);
    for (int t = 0; t < 100; ++t)
        tree.Nodes().Remove(QStringLiteral("t%1").arg(t));
    EXPECT_EQ(tree.Nodes().Item(S("t1999-19"))->Index(), 42000 - 2100);
}
