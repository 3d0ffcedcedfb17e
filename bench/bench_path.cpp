// The search for a way over a grid with obstacles, beside Boost's Dijkstra on the same edges, stopped at the target as
// ours is; and what the edges of the largest grid hold. Both must find the same distances.
#include "Figures.h"

#include "visual/logic/PathGrid.h"
#include <QString>
#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace {

class NoSurface : public DrawSurface
{
public:
    void Line(double, double, double, double, qint32) override {}
    void Pixel(double, double) override {}
    void Print(double, double, const QString &) override {}
    void SetScale(double, double) override {}
    double ScaleWidth() const override { return 1; }
    double ScaleHeight() const override { return 1; }
};

struct Weight
{
    double weight = 0;
};
using PeerGraph = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, Weight>;

struct Arrived
{
};
struct StopAt : boost::default_dijkstra_visitor
{
    explicit StopAt(size_t node) : target(node) {}
    template <class G> void examine_vertex(size_t node, const G &) const
    {
        if (node == target)
            throw Arrived();
    }
    size_t target;
};

struct Field
{
    NoSurface surface;
    PathGrid grid{surface};
    std::vector<std::pair<int, int>> ways; // source and target
    size_t edges = 0;
    PeerGraph peer;
    std::vector<double> lengths;

    explicit Field(int size)
    {
        grid.InitializeMap(size - 1, size - 1);
        const int nodes = size * size;
        // Walls with gaps, as a map full of tables has: a fifth of the nodes.
        std::mt19937 random(static_cast<unsigned>(size));
        std::vector<char> wall(size_t(nodes), 0);
        wall[0] = 1; // no way ends there
        grid.DeleteNode(0);
        for (int box = size * size / 80; box > 0; --box) {
            const int left = int(random() % unsigned(size)), top = int(random() % unsigned(size));
            for (int y = top; y < std::min(top + 4, size); ++y) {
                for (int x = left; x < std::min(left + 4, size); ++x) {
                    if (!wall[size_t(grid.Map(x, y))])
                        grid.DeletePoint(x, y);
                    wall[size_t(grid.Map(x, y))] = 1;
                }
            }
        }
        std::vector<std::pair<size_t, size_t>> pairs;
        std::vector<Weight> weights;
        for (int a = 0; a < nodes; ++a) {
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx) {
                    const int x = grid.GetNodeLeft(a) + dx, y = grid.GetNodeTop(a) + dy;
                    if ((dx == 0 && dy == 0) || x < 0 || y < 0 || x >= size || y >= size)
                        continue;
                    ++edges;
                    const int b = grid.Map(x, y);
                    if (wall[size_t(a)] || wall[size_t(b)])
                        continue;
                    pairs.emplace_back(size_t(a), size_t(b));
                    weights.push_back({dx != 0 && dy != 0 ? 1.4142135623731 : 1.0});
                }
            }
        }
        peer = PeerGraph(boost::edges_are_sorted, pairs.begin(), pairs.end(), weights.begin(),
                         PeerGraph::vertices_size_type(nodes));
        while (ways.size() < 40) {
            const int from = int(random() % unsigned(nodes)), to = int(random() % unsigned(nodes));
            if (from != to && !wall[size_t(from)] && !wall[size_t(to)])
                ways.emplace_back(from, to);
        }
    }

    void Ours()
    {
        lengths.clear();
        grid.PathCalculated = [this](const QString &, double distance) { lengths.push_back(distance); };
        for (const auto &[from, to] : ways)
            grid.GetPathUsingNodes(from, to);
    }

    // As a caller of it writes: distances and predecessors anew for each search.
    void Peers()
    {
        lengths.clear();
        for (const auto &[from, to] : ways) {
            std::vector<double> distances(boost::num_vertices(peer));
            std::vector<size_t> before(boost::num_vertices(peer));
            const auto nodes = boost::get(boost::vertex_index, peer);
            double length = -1;
            try {
                boost::dijkstra_shortest_paths(
                    peer, size_t(from),
                    boost::weight_map(boost::get(&Weight::weight, peer))
                        .distance_map(boost::make_iterator_property_map(distances.begin(), nodes))
                        .predecessor_map(boost::make_iterator_property_map(before.begin(), nodes))
                        .visitor(StopAt(size_t(to))));
            } catch (const Arrived &) {
                length = distances[size_t(to)];
            }
            lengths.push_back(length);
        }
    }
};

bool Measure(int size, double limit)
{
    Field field(size);
    field.Ours();
    const std::vector<double> ours = field.lengths;
    field.Peers();
    int reached = 0;
    for (size_t i = 0; i < ours.size(); ++i) {
        if (std::abs(ours[i] - field.lengths[i]) > 1e-9) {
            std::fprintf(stderr, "  %d: way %zu is %.12g, the peer's %.12g\n", size, i, ours[i], field.lengths[i]);
            return false;
        }
        reached += ours[i] > 0 ? 1 : 0;
    }
    std::fprintf(stderr, "  %d squared: %d of %zu ways reach their target\n", size, reached, ours.size());
    // As many searches a round at each size.
    const int repeat = 120 * 120 / (size * size);
    const auto many = [&](auto &&search) {
        for (int i = 0; i < repeat; ++i)
            search();
    };
    const double ratio = bench::Ratio(
        7, [&] { many([&] { field.Ours(); }); }, [&] { many([&] { field.Peers(); }); });
    bench::Figure(("path_search_" + std::to_string(size) + "_to_boost").c_str(), ratio, limit);
    if (size == 120) {
        const double bytes = double(field.edges) * (2 * sizeof(qint32) + sizeof(double));
        bench::Figure("path_memory_120_to_edges", double(field.grid.Engine()->BytesHeld()) / bytes, 3);
    }
    return true;
}

} // namespace

int main()
{
    // The smallest is over before the search itself counts: held to a wider limit.
    return Measure(20, 2) && Measure(60, 1.5) && Measure(120, 1.5) ? 0 : 2;
}
