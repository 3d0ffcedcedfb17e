#include "visual/Graph.h"

#include "tests/visual/LiteralGraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

namespace {

struct Answer
{
    std::string path;
    double distance = 0;
    int times = 0;
};

Answer Search(Graph &graph, int source, int target)
{
    Answer answer;
    graph.PathCalculated = [&](const QString &path, double distance) {
        answer.path = path.toStdString();
        answer.distance = distance;
        ++answer.times;
    };
    graph.Find_Shortest_Path(source, target);
    graph.PathCalculated = nullptr;
    return answer;
}

void Both(Graph &graph, int a, int b, double weight)
{
    graph.Set_Edge_Weigth(a, b, weight);
    graph.Set_Edge_Weigth(b, a, weight);
}

// One random history of a graph, carried out on both forms.
class Walk
{
public:
    explicit Walk(unsigned seed, bool written = false) : m_random(seed), m_written(written) {}

    std::string Run()
    {
        Resize(false);
        const int density = Below(4) + 1;
        for (int i = 0; i < m_nodes * density; ++i)
            SetEdge();
        const int steps = 3 + Below(10);
        for (int i = 0; i < steps; ++i) {
            switch (Below(12)) {
            case 0:
                Resize(Below(4) == 0 ? false : true);
                break;
            case 1:
                m_graph.ResetDeletedNodes();
                m_literal.ResetDeletedNodes();
                Note([] { return std::string(" reset"); });
                break;
            case 2:
            case 3: {
                const int node = Below(m_nodes + 3) - 1; // one out of range deletes nothing
                m_graph.DeleteNode(node);
                m_literal.DeleteNode(node);
                Note([&] { return " delete " + std::to_string(node); });
                break;
            }
            case 4:
            case 5:
                SetEdge();
                break;
            default:
                if (std::string fault = Compare(); !fault.empty())
                    return fault + m_done;
            }
        }
        std::string fault = Compare();
        return fault.empty() ? CompareEdges() : fault + m_done;
    }

private:
    template <class Words> void Note(Words words)
    {
        if (m_written)
            m_done += words();
    }

    int Below(int bound) { return int(m_random() % unsigned(bound)); }

    void Resize(bool preserve)
    {
        m_nodes = Below(40);
        m_graph.Resize_Graph(m_nodes, preserve);
        m_literal.Resize_Graph(m_nodes, preserve);
        Note([&] { return " size " + std::to_string(m_nodes) + (preserve ? " kept" : ""); });
    }

    void SetEdge()
    {
        // Few weights, so that many paths are equally short; 0 and those below it are no edge.
        static const double weights[] = {1, 1, 1, 1, 2, 2, 1.4142135623731, 0.5, 3, 0, -1, -2.5, 1e300};
        const int a = Below(m_nodes + 1), b = Below(m_nodes + 1);
        const double weight = weights[Below(int(std::size(weights)))];
        const bool both = Below(3) != 0;
        m_graph.Set_Edge_Weigth(a, b, weight);
        m_literal.Set_Edge_Weigth(a, b, weight);
        if (both) {
            m_graph.Set_Edge_Weigth(b, a, weight);
            m_literal.Set_Edge_Weigth(b, a, weight);
        }
        Note([&] {
            return " edge " + std::to_string(a) + (both ? "=" : ">") + std::to_string(b) + ":" + std::to_string(weight);
        });
    }

    std::string Compare()
    {
        const int source = Below(m_nodes + 1), target = Below(m_nodes + 1);
        const Answer answer = Search(m_graph, source, target);
        m_literal.Find_Shortest_Path(source, target);
        if (answer.times == 1 && answer.path == m_literal.Path.toStdString() && answer.distance == m_literal.Distance)
            return {};
        return std::to_string(source) + " to " + std::to_string(target) + ": \"" + answer.path + "\" " +
               std::to_string(answer.distance) + ", literally \"" + m_literal.Path.toStdString() + "\" " +
               std::to_string(m_literal.Distance) + " after";
    }

    std::string CompareEdges()
    {
        for (int i = 0; i < 100; ++i) {
            const int a = Below(m_nodes + 3) - 1, b = Below(m_nodes + 3) - 1;
            if (m_graph.GetEdgeWeight(a, b) != m_literal.GetEdgeWeight(a, b))
                return "edge " + std::to_string(a) + " " + std::to_string(b) + " after" + m_done;
        }
        return {};
    }

    std::mt19937 m_random;
    bool m_written; // writes down what was done
    int m_nodes = 0;
    Graph m_graph;
    LiteralGraph m_literal;
    std::string m_done;
};

} // namespace

TEST(Graph, AgreesWithThePlainFormOnTenThousandRandomGraphs)
{
    for (unsigned seed = 1; seed <= 10000; ++seed) {
        ASSERT_TRUE(Walk(seed).Run().empty()) << "seed " << seed << ": " << Walk(seed, true).Run();
    }
}

TEST(Graph, GivesThePathWithABlankInFrontOfTheSourceOnly)
{
    Graph graph;
    graph.Resize_Graph(30, false);
    Both(graph, 12, 13, 1);
    Both(graph, 13, 24, 2);
    const Answer answer = Search(graph, 12, 24);
    EXPECT_EQ(answer.path, " 12\\13\\24");
    EXPECT_EQ(answer.distance, 3);
    EXPECT_EQ(answer.times, 1);
}

TEST(Graph, FindsAWayToTheSourceItselfOnlyOverASelfEdgeOrFromNodeZero)
{
    Graph graph;
    graph.Resize_Graph(3, false);
    EXPECT_EQ(Search(graph, 1, 1).path, "");
    EXPECT_EQ(Search(graph, 1, 1).distance, -1);
    EXPECT_EQ(Search(graph, 0, 0).path, " 0");
    EXPECT_EQ(Search(graph, 0, 0).distance, 0);
    graph.Set_Edge_Weigth(2, 2, 5);
    EXPECT_EQ(Search(graph, 2, 2).path, " 2");
    EXPECT_EQ(Search(graph, 2, 2).distance, 0);
}

TEST(Graph, EndsNoPathAtNodeZeroAndLeadsNoneThroughIt)
{
    Graph graph;
    graph.Resize_Graph(3, false);
    Both(graph, 0, 1, 1);
    Both(graph, 0, 2, 1);
    EXPECT_EQ(Search(graph, 1, 0).path, "");
    EXPECT_EQ(Search(graph, 1, 0).distance, -1);
    EXPECT_EQ(Search(graph, 1, 2).path, "");
    EXPECT_EQ(Search(graph, 0, 2).path, " 0\\2");
}

TEST(Graph, TakesTheHighestNodeOfEquallyNearOnes)
{
    Graph graph;
    graph.Resize_Graph(5, false);
    for (int middle : {2, 3, 4}) {
        Both(graph, 1, middle, 1);
        Both(graph, middle, 5, 1);
    }
    EXPECT_EQ(Search(graph, 1, 5).path, " 1\\4\\5");
}

TEST(Graph, ReadsLeavingEdgesFirstAndArrivingOnesAfterwards)
{
    Graph graph;
    graph.Resize_Graph(3, false);
    graph.Set_Edge_Weigth(1, 2, 1);
    graph.Set_Edge_Weigth(2, 3, 1);
    EXPECT_EQ(Search(graph, 1, 3).path, ""); // 2 to 3 leaves node 2
    graph.Set_Edge_Weigth(3, 2, 4);
    EXPECT_EQ(Search(graph, 1, 3).path, " 1\\2\\3");
    EXPECT_EQ(Search(graph, 1, 3).distance, 5);
}

TEST(Graph, FollowsNoEdgeOfWeightZero)
{
    // A weight of 0 from the source is a distance that no way beats, so the node cannot be reached at all.
    Graph graph;
    graph.Resize_Graph(3, false);
    graph.Set_Edge_Weigth(1, 3, 0);
    Both(graph, 1, 2, 1);
    Both(graph, 2, 3, 1);
    EXPECT_EQ(Search(graph, 1, 3).path, "");
    EXPECT_EQ(Search(graph, 1, 2).path, " 1\\2");
}

TEST(Graph, CutsTheEdgesOfADeletedNodeUntilTheReset)
{
    Graph graph;
    graph.Resize_Graph(4, false);
    Both(graph, 1, 2, 1);
    Both(graph, 2, 3, 1);
    Both(graph, 1, 4, 5);
    Both(graph, 4, 3, 5);
    graph.DeleteNode(2);
    EXPECT_EQ(graph.GetEdgeWeight(1, 2), -1);
    EXPECT_EQ(graph.GetEdgeWeight(2, 3), -1);
    EXPECT_EQ(Search(graph, 1, 3).path, " 1\\4\\3");
    graph.DeleteNode(1);
    EXPECT_EQ(Search(graph, 1, 3).path, "");
    EXPECT_EQ(Search(graph, 1, 3).distance, -1);
    graph.ResetDeletedNodes();
    EXPECT_EQ(Search(graph, 1, 3).path, " 1\\2\\3");
}

TEST(Graph, CountsNodeZeroAsDeletedFromAResetOn)
{
    Graph graph;
    graph.Resize_Graph(2, false);
    Both(graph, 0, 1, 1);
    EXPECT_FALSE(graph.IsNodeDeleted(0));
    graph.ResetDeletedNodes();
    EXPECT_TRUE(graph.IsNodeDeleted(0));
    EXPECT_EQ(graph.GetEdgeWeight(0, 1), -1);
    EXPECT_EQ(Search(graph, 0, 1).path, "");
    graph.Resize_Graph(2, true);
    EXPECT_TRUE(graph.IsNodeDeleted(0));
    graph.Resize_Graph(2, false);
    EXPECT_FALSE(graph.IsNodeDeleted(0));
    EXPECT_TRUE(graph.IsNodeDeleted(-1));
}

TEST(Graph, KeepsWhatFitsWhenItIsResizedWithPreserve)
{
    Graph graph;
    graph.Resize_Graph(4, false);
    Both(graph, 1, 2, 7);
    Both(graph, 1, 4, 7);
    graph.DeleteNode(3);
    graph.Resize_Graph(2, true);
    EXPECT_EQ(graph.GetNodeCount(), 2);
    EXPECT_EQ(graph.GetEdgeWeight(1, 2), 7);
    EXPECT_EQ(graph.GetEdgeWeight(0, 1), -1);
    graph.Resize_Graph(5, true);
    EXPECT_EQ(graph.GetEdgeWeight(1, 2), 7);
    EXPECT_EQ(graph.GetEdgeWeight(1, 4), 0);  // lost when the graph shrank
    EXPECT_EQ(graph.GetEdgeWeight(0, 5), 0);  // new
    EXPECT_EQ(graph.GetEdgeWeight(1, 3), -1); // deleted still
}

TEST(Graph, RaisesWhereANodeIsOutOfRange)
{
    Graph graph;
    EXPECT_THROW(graph.Find_Shortest_Path(0, 0), std::out_of_range); // not resized
    EXPECT_THROW(graph.Set_Edge_Weigth(0, 0, 1), std::out_of_range);
    graph.Resize_Graph(2, false);
    EXPECT_NO_THROW(graph.Set_Edge_Weigth(2, 2, 1)); // the spare slot
    int answers = 0;
    graph.PathCalculated = [&](const QString &, double) { ++answers; };
    for (const auto &[a, b] : {std::pair(3, 1), std::pair(1, 3), std::pair(-1, 1), std::pair(1, -1)}) {
        EXPECT_THROW(graph.Set_Edge_Weigth(a, b, 1), std::out_of_range);
        EXPECT_THROW(graph.Find_Shortest_Path(a, b), std::out_of_range);
        // The list of deleted nodes always begins with -1, so that number reads as deleted.
        EXPECT_EQ(graph.GetEdgeWeight(a, b), std::min(a, b) == -1 ? -1 : 0);
    }
    EXPECT_EQ(answers, 0);
    EXPECT_NO_THROW(graph.DeleteNode(99));
    EXPECT_THROW(graph.Resize_Graph(-1, false), std::out_of_range);
}

TEST(Graph, SearchesWithoutAListener)
{
    Graph graph;
    graph.Resize_Graph(2, false);
    Both(graph, 1, 2, 1);
    EXPECT_NO_THROW(graph.Find_Shortest_Path(1, 2));
}

TEST(Graph, LetsAnErrorOfTheListenerThroughAndSearchesAgain)
{
    Graph graph;
    graph.Resize_Graph(2, false);
    Both(graph, 1, 2, 1);
    graph.PathCalculated = [](const QString &, double) { throw std::runtime_error("listener"); };
    EXPECT_THROW(graph.Find_Shortest_Path(1, 2), std::runtime_error);
    EXPECT_EQ(Search(graph, 1, 2).path, " 1\\2");
}

TEST(Graph, TakesInfiniteAndUndefinedWeights)
{
    Graph graph;
    graph.Resize_Graph(4, false);
    Both(graph, 1, 2, std::numeric_limits<double>::infinity());
    Both(graph, 2, 3, 1);
    EXPECT_EQ(Search(graph, 1, 3).path, " 1\\2\\3");
    Both(graph, 1, 4, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Search(graph, 1, 4).path, "");
}
