#include "visual/Graph.h"

#include "lang/Text.h"

#include <algorithm>
#include <bit>
#include <span>
#include <stdexcept>

namespace {

template <class Edges> auto PlaceOf(Edges &edges, qint32 from)
{
    return std::lower_bound(edges.begin(), edges.end(), from,
                            [](const auto &edge, qint32 node) { return edge.From < node; });
}

} // namespace

void Graph::Demand(qint32 node) const
{
    if (!Holds(node))
        throw std::out_of_range("Subscript out of range");
}

void Graph::Resize_Graph(qint32 NodeCount, bool Preserve)
{
    m_nodeCount = NodeCount;
    m_changed = true;
    if (NodeCount < 0)
        throw std::out_of_range("Subscript out of range");
    const size_t size = size_t(NodeCount) + 1;
    if (!Preserve) {
        m_slots = std::vector<Slot>(size);
        m_kept = NodeCount;
        m_deleted = {-1};
        return;
    }
    const bool shrinks = size < m_slots.size();
    m_slots.resize(size);
    m_kept = std::min(m_kept, NodeCount);
    if (!shrinks)
        return;
    for (Slot &slot : m_slots)
        slot.erase(PlaceOf(slot, NodeCount + 1), slot.end());
}

void Graph::Set_Edge_Weigth(qint32 From, qint32 To, double Weight)
{
    Demand(From);
    Demand(To);
    m_changed = true;
    Slot &slot = m_slots[size_t(To)];
    const auto place = PlaceOf(slot, From);
    if (place != slot.end() && place->From == From)
        place->Weight = Weight;
    else
        slot.insert(place, {Weight, From});
}

double Graph::Edge(qint32 from, qint32 to) const
{
    const Slot &slot = m_slots[size_t(to)];
    const auto place = PlaceOf(slot, from);
    if (place != slot.end() && place->From == from)
        return place->Weight;
    return from <= m_kept && to <= m_kept ? -1 : 0;
}

void Graph::Flatten()
{
    if (!m_changed)
        return;
    const size_t nodes = m_slots.size();
    Flat flat;
    flat.FirstIn.assign(nodes + 1, 0);
    flat.FirstOut.assign(nodes + 1, 0);
    for (size_t to = 0; to < nodes; ++to) {
        flat.FirstIn[to + 1] = flat.FirstIn[to] + qint32(m_slots[to].size());
        for (const Arriving &edge : m_slots[to])
            ++flat.FirstOut[size_t(edge.From) + 1];
    }
    for (size_t node = 0; node < nodes; ++node)
        flat.FirstOut[node + 1] += flat.FirstOut[node];
    const auto edges = size_t(flat.FirstIn.back());
    flat.From.reserve(edges);
    flat.Weight.reserve(edges);
    flat.To.resize(edges);
    std::vector<qint32> next(flat.FirstOut.begin(), flat.FirstOut.end() - 1);
    for (size_t to = 0; to < nodes; ++to) {
        for (const Arriving &edge : m_slots[to]) {
            flat.From.push_back(edge.From);
            flat.Weight.push_back(edge.Weight);
            flat.To[size_t(next[size_t(edge.From)]++)] = qint32(to);
        }
    }
    m_flat = std::move(flat);
    m_changed = false;
}

void Graph::DeleteNode(qint32 Node)
{
    m_deleted.push_back(Node);
}

void Graph::ResetDeletedNodes()
{
    m_deleted = {0}; // meant: the one element left is a zero, and so names node 0
}

bool Graph::IsNodeDeleted(qint32 Node) const
{
    return std::find(m_deleted.begin(), m_deleted.end(), Node) != m_deleted.end();
}

double Graph::GetEdgeWeight(qint32 A, qint32 B) const
{
    if (IsNodeDeleted(A) || IsNodeDeleted(B))
        return -1;
    return Holds(A) && Holds(B) ? Edge(A, B) : 0;
}

// What one search knows of the nodes.
struct Graph::Search
{
    // A node that was reached, as one number that orders as the search does: the nearest is the largest, and among
    // equally near ones the highest. A distance above 0 orders as its bits do.
    __extension__ typedef unsigned __int128 Candidate;
    static Candidate Make(double distance, qint32 node)
    {
        return Candidate(~std::bit_cast<quint64>(distance)) << 32 | quint32(node);
    }
    static qint32 NodeOf(Candidate candidate) { return qint32(quint32(candidate)); }

    explicit Search(const Graph &graph)
        : Distances(graph.m_slots.size(), -1.0), Previous(graph.m_slots.size(), -1), Closed(graph.m_slots.size(), false)
    {
        // Node 0 stands at distance 0 from the start: it is never chosen, and no way to it is shorter.
        Distances[0] = 0;
        Previous[0] = 0;
        for (qint32 node : graph.m_deleted) {
            if (graph.Holds(node))
                Closed[size_t(node)] = true;
        }
    }

    void Reach(qint32 node, double distance, qint32 from)
    {
        Distances[size_t(node)] = distance;
        Previous[size_t(node)] = from;
        Open.push_back(Make(distance, node));
        std::push_heap(Open.begin(), Open.end());
    }

    // The nearest node that is not visited yet; 0 when there is none.
    qint32 Nearest()
    {
        while (!Open.empty()) {
            std::pop_heap(Open.begin(), Open.end());
            const qint32 node = NodeOf(Open.back());
            Open.pop_back();
            // An entry of a node that was reached again by a shorter way comes when the node has been visited.
            if (!Closed[size_t(node)])
                return node;
        }
        return 0;
    }

    std::vector<double> Distances;
    std::vector<qint32> Previous;
    std::vector<char> Closed; // visited or deleted
    std::vector<Candidate> Open;
};

void Graph::Find_Shortest_Path(qint32 Source, qint32 Target)
{
    Demand(Source);
    Demand(Target);
    Flatten();
    Search search(*this);
    if (!search.Closed[size_t(Source)]) {
        // The first step reads the edges that leave, every later one those that arrive: that is meant, and the same on
        // a grid, whose edges run both ways. A weight of 0 is a distance that no way beats: it bars the node.
        const std::span leaving(m_flat.To.data() + m_flat.FirstOut[size_t(Source)],
                                m_flat.To.data() + m_flat.FirstOut[size_t(Source) + 1]);
        if (m_kept < m_nodeCount) {
            for (qint32 to = 1; to <= m_nodeCount; ++to)
                search.Distances[size_t(to)] = search.Closed[size_t(to)] ? -1 : Edge(Source, to);
        } else {
            for (qint32 to : leaving) {
                if (to != 0 && !search.Closed[size_t(to)])
                    search.Distances[size_t(to)] = Edge(Source, to);
            }
        }
        for (qint32 to : leaving) {
            const double weight = to == 0 ? 0 : search.Distances[size_t(to)];
            if (!(weight > 0))
                continue;
            if (to == Source)
                search.Previous[size_t(to)] = Source;
            else
                search.Reach(to, weight, Source);
        }
    }
    if (Source != 0) {
        search.Distances[size_t(Source)] = 0;
        search.Closed[size_t(Source)] = true;
    }
    if (Target != Source && Target != 0 && !search.Closed[size_t(Target)]) {
        while (const qint32 best = search.Nearest()) {
            search.Closed[size_t(best)] = true;
            if (best == Target)
                break;
            const double base = search.Distances[size_t(best)];
            for (qint32 i = m_flat.FirstIn[size_t(best)]; i < m_flat.FirstIn[size_t(best) + 1]; ++i) {
                const qint32 from = m_flat.From[size_t(i)];
                const double weight = m_flat.Weight[size_t(i)];
                if (!(weight > 0) || search.Closed[size_t(from)])
                    continue;
                const double distance = weight + base;
                if (search.Distances[size_t(from)] < 0 || distance < search.Distances[size_t(from)])
                    search.Reach(from, distance, best);
            }
        }
    }
    // A way to node 0 is none: its predecessor is itself.
    const bool found = search.Previous[size_t(Target)] != -1 && (Target != 0 || Source == 0);
    if (!PathCalculated)
        return;
    if (found)
        PathCalculated(BuildPathString(search, Target, Source), search.Distances[size_t(Target)]);
    else
        PathCalculated(QString(), -1);
}

QString Graph::BuildPathString(const Search &search, qint32 target, qint32 source) const
{
    std::vector<qint32> way;
    for (qint32 node = target; node != source; node = search.Previous[size_t(node)])
        way.push_back(node);
    QString path = lang::Str(source);
    path.reserve(path.size() + qsizetype(way.size()) * 6);
    for (auto node = way.rbegin(); node != way.rend(); ++node)
        path += u'\\' + QString::number(*node);
    return path;
}

qint64 Graph::BytesHeld() const
{
    const auto bytes = [](const auto &vector) { return qint64(vector.capacity() * sizeof(vector[0])); };
    qint64 held = bytes(m_slots) + bytes(m_deleted) + bytes(m_flat.FirstIn) + bytes(m_flat.From) +
                  bytes(m_flat.Weight) + bytes(m_flat.FirstOut) + bytes(m_flat.To);
    for (const Slot &slot : m_slots)
        held += bytes(slot);
    return held;
}
