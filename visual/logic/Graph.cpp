#include "visual/Graph.h"

#include "lang/Text.h"

#include <algorithm>
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
    for (Slot &slot : m_slots) {
        slot.In.erase(PlaceOf(slot.In, NodeCount + 1), slot.In.end());
        std::erase_if(slot.Out, [&](qint32 to) { return to > NodeCount; });
    }
}

void Graph::Set_Edge_Weigth(qint32 From, qint32 To, double Weight)
{
    Demand(From);
    Demand(To);
    std::vector<Arriving> &in = m_slots[size_t(To)].In;
    const auto place = PlaceOf(in, From);
    if (place != in.end() && place->From == From) {
        place->Weight = Weight;
        return;
    }
    in.insert(place, {Weight, From});
    m_slots[size_t(From)].Out.push_back(To);
}

double Graph::Edge(qint32 from, qint32 to) const
{
    const std::vector<Arriving> &in = m_slots[size_t(to)].In;
    const auto place = PlaceOf(in, from);
    if (place != in.end() && place->From == from)
        return place->Weight;
    return from <= m_kept && to <= m_kept ? -1 : 0;
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
    struct Candidate
    {
        double Distance;
        qint32 Node;
        // The nearest is the largest; among equally near ones the highest number.
        bool operator<(const Candidate &other) const
        {
            return Distance != other.Distance ? Distance > other.Distance : Node < other.Node;
        }
    };

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
        Open.push_back({distance, node});
        std::push_heap(Open.begin(), Open.end());
    }

    // The nearest node that is not visited yet; 0 when there is none.
    qint32 Nearest()
    {
        while (!Open.empty()) {
            std::pop_heap(Open.begin(), Open.end());
            const Candidate candidate = Open.back();
            Open.pop_back();
            // A shorter way was found after this entry was made: the node has been visited by it.
            if (!Closed[size_t(candidate.Node)])
                return candidate.Node;
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
    Search search(*this);
    if (!search.Closed[size_t(Source)]) {
        // The first step reads the edges that leave, every later one those that arrive: that is meant, and the same on
        // a grid, whose edges run both ways. A weight of 0 is a distance that no way beats: it bars the node.
        const std::vector<qint32> &leaving = m_slots[size_t(Source)].Out;
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
            for (const Arriving &edge : m_slots[size_t(best)].In) {
                const size_t next = size_t(edge.From);
                if (!(edge.Weight > 0) || search.Closed[next])
                    continue;
                const double distance = edge.Weight + base;
                if (search.Distances[next] < 0 || distance < search.Distances[next])
                    search.Reach(edge.From, distance, best);
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
    for (auto node = way.rbegin(); node != way.rend(); ++node)
        path += u'\\' + QString::number(*node);
    return path;
}

qint64 Graph::BytesHeld() const
{
    size_t bytes = m_slots.capacity() * sizeof(Slot) + m_deleted.capacity() * sizeof(qint32);
    for (const Slot &slot : m_slots)
        bytes += slot.In.capacity() * sizeof(Arriving) + slot.Out.capacity() * sizeof(qint32);
    return qint64(bytes);
}
