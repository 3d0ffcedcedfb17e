#include "visual/logic/PathGrid.h"

#include <QStringTokenizer>

#include <limits>
#include <stdexcept>
#include <vector>

namespace {

constexpr double kStraight = 1;
constexpr double kDiagonal = 1.4142135623731; // the root of 2 in 14 digits: distances are compared as they add up

// The edges that a cell sets: from and to as steps right and down of it.
struct EdgeStep
{
    qint32 fromX, fromY, toX, toY;
    double weight;
};
constexpr EdgeStep kEdges[] = {
    {0, 0, 0, 1, kStraight}, {0, 0, 1, 1, kDiagonal}, {0, 0, 1, 0, kStraight}, {1, 0, 0, 1, kDiagonal},
    {0, 1, 0, 0, kStraight}, {1, 1, 0, 0, kDiagonal}, {1, 0, 0, 0, kStraight}, {0, 1, 1, 0, kDiagonal},
};

constexpr double kLastShift = -0.2; // keeps the numbers of the last column and row on the surface

// The nodes of a path; toInt passes over the blank in front of the first one.
std::vector<qint32> NumbersOf(const QString &path)
{
    std::vector<qint32> numbers;
    for (const QStringView number : qTokenize(QStringView(path), u'\\', Qt::SkipEmptyParts))
        numbers.push_back(number.toInt());
    return numbers;
}

} // namespace

Graph &PathGrid::G() const
{
    if (!m_graph)
        throw std::logic_error("Object variable not set");
    return *m_graph;
}

void PathGrid::InitializeMap(qint32 Width, qint32 Height)
{
    m_graph = std::make_unique<Graph>();
    m_graph->PathCalculated = [this](const QString &path, double distance) { Answer(path, distance); };
    // Each of the steps is skipped when it fails: no grid is a reason to lose the layer.
    const qint64 nodes = (qint64(Width) + 1) * (qint64(Height) + 1);
    if (nodes >= std::numeric_limits<qint32>::min() && nodes <= std::numeric_limits<qint32>::max())
        m_nodeCount = qint32(nodes);
    try {
        m_graph->Resize_Graph(m_nodeCount, false);
    } catch (const std::exception &) {
    }
    m_width = Width;
    m_height = Height;
    m_surface.SetScale(Width, Height);
    SetAllPaths();
}

void PathGrid::SetAllPaths()
{
    Graph &graph = G();
    if (m_nodeCount < 0 || graph.GetNodeCount() != m_nodeCount)
        return;
    for (qint32 y = 0; y <= m_height; ++y) {
        for (qint32 x = 0; x <= m_width; ++x) {
            // What lies behind the last column or row is left out: that is the border of the grid.
            for (const EdgeStep &edge : kEdges) {
                const auto inside = [&](qint32 right, qint32 down) {
                    return x + right <= m_width && y + down <= m_height;
                };
                if (inside(edge.fromX, edge.fromY) && inside(edge.toX, edge.toY))
                    graph.Set_Edge_Weigth(Map(x + edge.fromX, y + edge.fromY), Map(x + edge.toX, y + edge.toY),
                                          edge.weight);
            }
        }
    }
}

qint32 PathGrid::Map(qint32 X, qint32 Y) const
{
    if (!m_graph || X < 0 || Y < 0 || X > m_width || Y > m_height)
        throw std::out_of_range("Subscript out of range");
    return Y * (m_width + 1) + X;
}

qint32 PathGrid::Columns() const
{
    if (m_width == -1)
        throw std::domain_error("Division by zero");
    return m_width + 1;
}

qint32 PathGrid::GetNodeLeft(qint32 Node) const
{
    return Node % Columns();
}

qint32 PathGrid::GetNodeTop(qint32 Node) const
{
    return Node / Columns();
}

void PathGrid::GetPath(qint32 fromX, qint32 fromY, qint32 toX, qint32 toY)
{
    Graph &graph = G();
    graph.Find_Shortest_Path(Map(fromX, fromY), Map(toX, toY));
}

void PathGrid::GetPathUsingNodes(qint32 Node1, qint32 Node2)
{
    G().Find_Shortest_Path(Node1, Node2);
}

void PathGrid::DeletePoint(qint32 X, qint32 Y)
{
    Graph &graph = G();
    graph.DeleteNode(Map(X, Y));
}

void PathGrid::DeleteNode(qint32 Node)
{
    G().DeleteNode(Node);
}

void PathGrid::Answer(const QString &path, double distance)
{
    const std::vector<qint32> nodes = NumbersOf(path);
    // A single node has no neighbour and draws nothing, not even the leads.
    for (size_t i = 0; i + 1 < nodes.size(); ++i) {
        const qint32 a = nodes[i], b = nodes[i + 1];
        if (ConnectEnds && i == 0)
            m_surface.Line(X1, Y1, GetNodeLeft(a), GetNodeTop(a), 0);
        m_surface.Line(GetNodeLeft(a), GetNodeTop(a), GetNodeLeft(b), GetNodeTop(b), 0);
    }
    if (ConnectEnds && nodes.size() > 1)
        m_surface.Line(X2, Y2, GetNodeLeft(nodes.back()), GetNodeTop(nodes.back()), 0);
    if (PathCalculated)
        PathCalculated(path, distance);
}

void PathGrid::DisplayGrid(bool ShowNumbers)
{
    for (qint32 x = 0; x <= m_width; ++x) {
        for (qint32 y = 0; y <= m_height; ++y) {
            m_surface.Pixel(x, y);
            if (ShowNumbers)
                m_surface.Print(x == m_width ? x + kLastShift : x, y == m_height ? y + kLastShift : y,
                                QString::number(Map(x, y)));
        }
    }
}
