#include "visual/logic/PathGrid.h"

#include "tests/visual/LiteralGraph.h"
#include "tests/visual/RecordingSurface.h"
#include "visual/logic/StepRoute.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace {

class Grid : public testing::Test
{
protected:
    RecordingSurface surface;
    PathGrid grid{surface};
    QString path;
    double distance = 0;
    int answers = 0;

    void SetUp() override
    {
        grid.PathCalculated = [this](const QString &found, double length) {
            path = found;
            distance = length;
            ++answers;
        };
    }
};

} // namespace

TEST_F(Grid, TakesTheDiagonalOfTwoByTwoAndFindsNoWayBack)
{
    grid.InitializeMap(1, 1);
    EXPECT_EQ(grid.NodeCount(), 4);
    grid.GetPath(0, 0, 1, 1);
    EXPECT_EQ(path, QStringLiteral(" 0\\3"));
    EXPECT_EQ(distance, 1.4142135623731);
    grid.GetPath(1, 1, 0, 0);
    EXPECT_EQ(path, QString());
    EXPECT_EQ(distance, -1);
    EXPECT_EQ(answers, 2);
}

TEST_F(Grid, HasNoEdgeWithOneCell)
{
    grid.InitializeMap(0, 0);
    EXPECT_EQ(grid.NodeCount(), 1);
    for (int a : {0, 1}) {
        for (int b : {0, 1})
            EXPECT_EQ(grid.Engine()->GetEdgeWeight(a, b), -1);
    }
}

TEST_F(Grid, RaisesWithoutAGrid)
{
    EXPECT_THROW(grid.GetPathUsingNodes(0, 0), std::logic_error);
    EXPECT_THROW(grid.GetPath(0, 0, 0, 0), std::logic_error);
    EXPECT_THROW(grid.DeleteNode(0), std::logic_error);
    EXPECT_THROW(grid.DeletePoint(0, 0), std::logic_error);
    EXPECT_EQ(grid.Engine(), nullptr);
}

TEST_F(Grid, SetsTheSurfaceToItsOwnUnits)
{
    grid.InitializeMap(7, 3);
    EXPECT_EQ(surface.Width, 7);
    EXPECT_EQ(surface.Height, 3);
}

TEST_F(Grid, SkipsWhatFailsWhileItIsSetUp)
{
    grid.InitializeMap(-1, 4); // rows without a cell
    EXPECT_EQ(grid.NodeCount(), 0);
    EXPECT_THROW(grid.GetNodeLeft(0), std::domain_error);
    EXPECT_THROW(grid.GetPath(0, 0, 0, 0), std::out_of_range);
    grid.InitializeMap(-3, 2); // fewer cells than none
    EXPECT_EQ(grid.NodeCount(), -6);
    grid.InitializeMap(2147483647, 2147483647); // more cells than can be counted: the former count stays
    EXPECT_EQ(grid.NodeCount(), -6);
    grid.InitializeMap(2, 2);
    grid.GetPath(1, 0, 1, 2);
    EXPECT_EQ(path, QStringLiteral(" 1\\4\\7"));
}

TEST_F(Grid, ForgetsObstaclesWithTheNextGridAndKeepsThemWhenEdgesAreSetAnew)
{
    grid.InitializeMap(2, 0);
    grid.DeletePoint(1, 0);
    grid.GetPath(0, 0, 2, 0);
    EXPECT_EQ(path, QString());
    grid.SetAllPaths();
    grid.GetPath(0, 0, 2, 0);
    EXPECT_EQ(path, QString());
    grid.InitializeMap(2, 0);
    grid.GetPath(0, 0, 2, 0);
    EXPECT_EQ(path, QStringLiteral(" 0\\1\\2"));
}

TEST_F(Grid, DrawsNothingForASingleNode)
{
    grid.InitializeMap(2, 2);
    grid.ConnectEnds = true;
    grid.GetPathUsingNodes(0, 0);
    EXPECT_EQ(path, QStringLiteral(" 0"));
    EXPECT_TRUE(surface.Lines.isEmpty());
}

TEST_F(Grid, LeadsTheRouteToItsTrueEndsBeforeItTells)
{
    grid.InitializeMap(2, 0);
    grid.ConnectEnds = true;
    grid.X1 = -1;
    grid.X2 = 9;
    qsizetype drawn = 0;
    grid.PathCalculated = [&](const QString &, double) { drawn = surface.Lines.size(); };
    grid.GetPath(0, 0, 2, 0);
    EXPECT_EQ(drawn, 4);
    EXPECT_EQ(surface.Lines.first(), (QJsonArray{-1, 0, 0, 0, 0}));
    EXPECT_EQ(surface.Lines.last(), (QJsonArray{9, 0, 2, 0, 0}));
}

TEST_F(Grid, TakesTheWayOfThePlainFormAroundObstacles)
{
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        const int width = int(random() % 6), height = int(random() % 6);
        const int nodes = (width + 1) * (height + 1);
        grid.InitializeMap(width, height);
        LiteralGraph literal;
        literal.Resize_Graph(nodes, false);
        for (int a = 0; a <= nodes; ++a) {
            for (int b = 0; b <= nodes; ++b)
                literal.Set_Edge_Weigth(a, b, grid.Engine()->GetEdgeWeight(a, b));
        }
        for (int i = nodes / 5; i > 0; --i) {
            const int node = int(random() % unsigned(nodes));
            grid.DeleteNode(node);
            literal.DeleteNode(node);
        }
        for (int i = 0; i < 10; ++i) {
            const int from = int(random() % unsigned(nodes)), to = int(random() % unsigned(nodes));
            grid.GetPathUsingNodes(from, to);
            literal.Find_Shortest_Path(from, to);
            ASSERT_EQ(path, literal.Path) << width << " x " << height << ", " << from << " to " << to;
            ASSERT_EQ(distance, literal.Distance);
        }
    }
}

TEST(StepRoute, BendsInTheMiddleFromFiveHundredOn)
{
    EXPECT_EQ(StepRoute(100, 0, 600, 50)[0].x2(), 350);
    EXPECT_EQ(StepRoute(100, 0, 599.9, 50)[0].x2(), 100);
    const StepLines lines = StepRoute(100, 10, 600, 50);
    EXPECT_EQ(lines[0], QLineF(100, 10, 350, 10));
    EXPECT_EQ(lines[1], QLineF(350, 10, 350, 50));
    EXPECT_EQ(lines[2], QLineF(350, 50, 600, 50));
}

TEST(StepRoute, CrossesAWholeSurface)
{
    EXPECT_EQ(OneLargeStep(1000, 400)[1], QLineF(500, 0, 500, 400));
    EXPECT_EQ(OneLargeStep(999, 400)[1], QLineF(1, 0, 1, 400));
}
