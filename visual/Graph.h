#pragma once
// A directed graph with a search for the shortest path: the engine under the grid of routes. It knows nothing of
// drawing.
//
// Nodes are 0 to NodeCount inclusive. An edge reads -1 where there is none; the search follows weights above 0 only. A
// deleted node cuts all its edges as long as it is deleted. Node 0 may begin a path, but none ends at it or passes it.
// What is seen is a square matrix; what is stored are the edges that were set.
//
// One thread. A node out of range raises std::out_of_range. PathCalculated is called once by each search, before
// Find_Shortest_Path returns; it must not search the same graph again.

#include <QString>

#include <functional>
#include <vector>

class Graph
{
public:
    // The numbers joined by "\", the source first with a blank in front of it; "" and -1 when there is no way.
    std::function<void(const QString &Path, double Distance)> PathCalculated;

    // Without Preserve every edge is -1 and nothing is deleted. With it the edges that still fit stay, those of new
    // nodes are 0, and the deleted nodes stay deleted.
    void Resize_Graph(qint32 NodeCount, bool Preserve);
    // Of several shortest paths the one found is fixed: among nodes equally near the highest number goes first, and a
    // node keeps the predecessor that reached it first.
    void Find_Shortest_Path(qint32 Source, qint32 Target);
    void Set_Edge_Weigth(qint32 From, qint32 To, double Weight); // one direction
    void DeleteNode(qint32 Node);                                // any number; one out of range deletes nothing yet
    // The deleted nodes come back; node 0 counts as deleted from here on, until a Resize_Graph without Preserve.
    void ResetDeletedNodes();

    qint32 GetNodeCount() const { return m_nodeCount; }
    // -1 where a node is deleted, 0 out of range.
    double GetEdgeWeight(qint32 A, qint32 B) const;
    bool IsNodeDeleted(qint32 Node) const;
    qint64 BytesHeld() const;

private:
    struct Arriving
    {
        double Weight;
        qint32 From;
    };
    using Slot = std::vector<Arriving>; // the edges that arrive at one node, by rising source
    // The same edges in one piece, as a search reads them; made by the first search after a change.
    struct Flat
    {
        std::vector<qint32> FirstIn, From; // those that arrive at node n: FirstIn[n] to FirstIn[n + 1]
        std::vector<double> Weight;
        std::vector<qint32> FirstOut, To; // those that leave it, without their weights
    };
    struct Search;

    bool Holds(qint32 node) const { return node >= 0 && size_t(node) < m_slots.size(); }
    void Demand(qint32 node) const;
    void Flatten();
    double Edge(qint32 from, qint32 to) const;
    QString BuildPathString(const Search &search, qint32 target, qint32 source) const;

    qint32 m_nodeCount = 0;
    qint32 m_kept = -1; // an edge that was never set reads -1 up to this node, and 0 behind it
    std::vector<qint32> m_deleted{-1};
    std::vector<Slot> m_slots; // NodeCount + 1 of them, none before the first Resize_Graph
    Flat m_flat;
    bool m_changed = true; // m_flat does not show the edges as they are
};
