#include "visual/JoinLayers.h"
#include "tests/support/Text.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr int kPixels = 400;
constexpr double kTwips = kPixels * 15;

// Two tables side by side on a surface of 400 pixels: 100 wide, the left one at 0, the right one at 300.
class Layers : public testing::Test
{
protected:
    MapTables tables;
    MapJoins joins;
    JoinLayers layers;
    const ItemFrameOf itemFrame = [](const MapTable &, int item) { return ItemFrame{item * 300.0, 300}; };

    void SetUp() override
    {
        layers.Resize(kTwips, kTwips);
        for (int i = 0; i < 2; ++i) {
            MapTable *table = tables.AddTable(S(i ? "B" : "A"), {S("x"), S("y")}, {});
            table->Left = i * 4500;
            table->Top = 0;
            table->Width = 1500;
            table->Height = 3000;
        }
    }
    int Join(const char *from, const char *to, const char *kind = "Inner Join")
    {
        const int index = joins.Add({S("A"), 1, S(from), S(kind), S("B"), 2, S(to), 0});
        layers.Follow(joins);
        return index;
    }
    void Draw(int table = -1) { layers.DrawJoins(joins, tables, itemFrame, kTwips, kTwips, table); }
    QImage Picture() const
    {
        QImage image(kPixels, kPixels, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        layers.Paint(painter, QRectF(0, 0, kPixels, kPixels));
        return image;
    }
    static bool Blank(const QImage &picture)
    {
        QImage white(picture.size(), picture.format());
        white.fill(Qt::white);
        return picture == white;
    }
};

} // namespace

TEST_F(Layers, DrawAJoinFromEdgeToEdge)
{
    Join("x", "x");
    Draw();
    // x is the second item behind the star: its lower edge lies 60 pixels down.
    const QImage picture = Picture();
    EXPECT_EQ(picture.pixel(120, 60), qRgb(0, 0, 0));
    EXPECT_EQ(picture.pixel(280, 60), qRgb(0, 0, 0));
    EXPECT_EQ(picture.pixel(80, 60), qRgb(255, 255, 255));
    EXPECT_EQ(layers.At({120, 60}), 1);
    EXPECT_EQ(layers.At({120, 80}), 0);
}

TEST_F(Layers, GiveTheTopmostOfTwoEqualJoinsAndTheOtherWhenItIsGone)
{
    Join("x", "x");
    Join("x", "x");
    Draw();
    EXPECT_EQ(layers.At({120, 60}), 2);
    joins.Remove(2);
    layers.Follow(joins);
    EXPECT_EQ(layers.PF(2), nullptr);
    EXPECT_EQ(layers.At({120, 60}), 1);
    EXPECT_EQ(layers.Count(), 1);
}

TEST_F(Layers, AreBlankAndLetTheMouseThroughWhileATableIsCarried)
{
    Join("x", "y");
    Draw();
    layers.Enable(false);
    EXPECT_EQ(layers.At({120, 60}), 0);
    layers.ClearJoinLayers();
    EXPECT_TRUE(Blank(Picture()));
    Join("y", "y");
    Draw();
    EXPECT_EQ(layers.At({120, 80}), 0); // made meanwhile: takes no mouse either
    layers.Enable(true);
    EXPECT_EQ(layers.At({120, 80}), 2);
    EXPECT_EQ(layers.At({120, 60}), 1);
}

TEST_F(Layers, StayBlankForAJoinWhoseFieldIsGone)
{
    Join("x", "x");
    Draw();
    tables.At(2)->Items.erase(tables.At(2)->Items.begin() + 1);
    Draw();
    EXPECT_TRUE(Blank(Picture()));
    EXPECT_EQ(layers.At({120, 60}), 0);
    EXPECT_EQ(layers.Count(), 1);
}

TEST_F(Layers, DrawOnlyTheJoinsOfTheTableThatIsAsked)
{
    Join("x", "x");
    Draw();
    tables.At(1)->Top = 1500;
    Draw(7); // no join of that table: the line stays where it was
    EXPECT_EQ(layers.At({120, 60}), 1);
    Draw(1);
    EXPECT_EQ(layers.At({120, 60}), 0);
    EXPECT_EQ(layers.At({120, 160}), 1);
}

TEST_F(Layers, TakeTheTemplatesLookWhenTheyAreMade)
{
    layers.Template.Back = 0x112233;
    Join("x", "x");
    layers.Template.Back = 0xFFFFFF;
    Join("x", "y");
    EXPECT_EQ(layers.PF(1)->Look.Back, 0x112233);
    EXPECT_EQ(layers.PF(2)->Look.Back, 0xFFFFFF);
}

TEST_F(Layers, PaintOnlyWhatTheAreaTouches)
{
    Join("x", "x");
    Draw();
    QImage image(kPixels, kPixels, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    layers.Paint(painter, QRectF(0, 200, kPixels, 100));
    painter.end();
    EXPECT_TRUE(Blank(image));
}

TEST_F(Layers, GoWithTheirRowsOverARandomWalk)
{
    const MapEdit edit{tables, joins, [](const JoinQuestion &) { return JoinAnswer(); }, nullptr};
    std::mt19937 random(9);
    for (int step = 0; step < 10000; ++step) {
        const int one = int(random() % unsigned(tables.UBound() + 2)),
                  other = int(random() % unsigned(tables.UBound() + 2));
        switch (random() % 6) {
        case 0:
        case 1:
            if (MapTable *table = tables.At(one))
                table->Selected = int(random() % 4);
            edit.Drop(one, other, int(random() % 4));
            break;
        case 2:
            joins.Remove(one);
            break;
        case 3:
            edit.RemoveCurrentTable(QString::number(one));
            break;
        case 4:
            tables.CurrentTable = one;
            tables.UnloadTable(); // its joins stay
            break;
        default:
            tables.AddTable(S(random() % 2 ? "A" : "B"), {S("x"), S("y")}, {kTwips, kTwips, 1500, 3000, 200});
        }
        if (tables.UBound() > 12) {
            tables.ClearMap();
            joins.Clear();
        }
        layers.Follow(joins);
        if (step % 50 == 0)
            Draw();
        ASSERT_EQ(layers.Count(), int(joins.Rows().size()));
        for (const MapJoin &row : joins.Rows())
            ASSERT_NE(layers.PF(row.Index), nullptr);
        const int hit = layers.At({double(random() % kPixels), double(random() % kPixels)});
        ASSERT_TRUE(!hit || joins.OfLayer(hit));
    }
}
