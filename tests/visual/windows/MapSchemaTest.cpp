// Foreign keys brought onto a map: the whole web, the neighbours of a table, and what goes wrong meanwhile.

#include "tests/support/ScriptedDriver.h"
#include "tests/visual/windows/MapFixture.h"

namespace {

class MapSchema : public MapTest
{
protected:
    QStringList Tables() const override
    {
        return {"CREATE TABLE Parent (A int, B int, PRIMARY KEY (A, B))",
                "CREATE TABLE Child (ID int PRIMARY KEY, PA int, PB int, Boss int, FOREIGN KEY (PA, PB) REFERENCES "
                "Parent (A, B), FOREIGN KEY (Boss) REFERENCES Child (ID))",
                "CREATE TABLE Leaf (ChildID int REFERENCES Child (ID), Second int REFERENCES Child (ID))",
                "CREATE TABLE Alone (x int)"};
    }
    QStringList Rows() const
    {
        QStringList rows;
        for (const MapJoin &row : map->Joins().Rows())
            rows << row.Table1 + '.' + row.Field1 + '=' + row.Table2 + '.' + row.Field2;
        rows.sort();
        return rows;
    }
    QStringList Aliases() const
    {
        QStringList aliases;
        for (int index : map->Tables().Numbers())
            aliases << map->lvTable(index)->Alias;
        return aliases;
    }
};

} // namespace

TEST_F(MapSchema, BringsTheWholeWebWithARowForEachColumnOfAKey)
{
    Show({}, false);
    QStringList told;
    QObject::connect(map.get(), &ucTableMap::CreateJoin,
                     [&](const QString &a, const QString &b, const QString &c, const QString &d, const QString &kind) {
                         told << a + '.' + b + '=' + c + '.' + d + ' ' + kind;
                     });
    map->AddAll();
    QStringList aliases = Aliases();
    aliases.sort();
    EXPECT_EQ(aliases, QStringList({"Child", "Leaf", "Parent"})); // a table without a key does not come
    const QStringList expected = {"Child.ID=Child.Boss", "Child.ID=Leaf.ChildID", "Child.ID=Leaf.Second",
                                  "Parent.A=Child.PA", "Parent.B=Child.PB"};
    EXPECT_EQ(Rows(), expected);
    EXPECT_EQ(told.size(), 5);
    map->AddAll(); // what is there is not added again
    EXPECT_EQ(Rows(), expected);
    EXPECT_EQ(Aliases().size(), 3);
    for (const MapJoin &row : map->Joins().Rows())
        EXPECT_NE(map->PF(row.Index), nullptr);
}

TEST_F(MapSchema, BringsTheNeighboursAsNewBoxes)
{
    Show({"Leaf"}, false);
    map->AddLinked();
    EXPECT_EQ(Aliases(), QStringList({"Leaf", "Child", "Child_Copy1"})); // one for each key
    ASSERT_EQ(map->Joins().Rows().size(), 2u);
    const MapJoin &row = map->Joins().Rows()[0];
    EXPECT_EQ(row.Table1, "Leaf");
    EXPECT_EQ(row.Table2, "Child");
    EXPECT_EQ(row.Table2Index, 1); // its own number stays with the primary side
    EXPECT_EQ(row.Field2, "ID");
    // The line goes from the field of the key to the field that it refers to all the same.
    ASSERT_FALSE(map->PF(1)->IsEmpty());
}

TEST_F(MapSchema, BringsNoNeighbourWithoutATable)
{
    Show({}, false);
    map->AddLinked();
    EXPECT_TRUE(Aliases().isEmpty());
    gConn.reset();
    map->AddAll();
    EXPECT_TRUE(Aliases().isEmpty());
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(MapSchema, PassesOverAKeyOfATableThatCannotBeRead)
{
    gConn->Execute("CREATE TABLE Lost (ID int, Gone int REFERENCES nowhere (x), Other int REFERENCES Parent (A))");
    Show({}, false);
    map->AddAll();
    EXPECT_FALSE(Aliases().contains("nowhere"));
    EXPECT_TRUE(Rows().contains("Parent.A=Lost.Other"));
    EXPECT_TRUE(Rows().contains("Child.ID=Leaf.ChildID"));
}

TEST_F(MapSchema, AsksBeforeMoreThanFiveHundredBoxes)
{
    gConn->Execute("CREATE TABLE Root (ID int PRIMARY KEY)");
    gConn->BeginTrans();
    for (int i = 0; i < 501; ++i)
        gConn->Execute(QString("CREATE TABLE t%1 (ID int REFERENCES Root (ID))").arg(i));
    gConn->CommitTrans();
    Show({}, false);
    m_boxes.Answers << mbNo;
    map->AddAll();
    EXPECT_EQ(m_boxes.LastTitle(), "Add Tables");
    EXPECT_TRUE(Aliases().isEmpty());
    m_boxes.Answers << mbYes;
    map->AddAll();
    EXPECT_EQ(Aliases().size(), 505);
    EXPECT_EQ(map->Joins().Rows().size(), 506u);
}
