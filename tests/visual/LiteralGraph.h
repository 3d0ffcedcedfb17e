#pragma once
// The graph in its plain form: a full matrix, linear scans, recursion. The sparse one must give the same answers, and
// does so at sizes where this one would not end.

#include "lang/Text.h"

#include <QString>

#include <stdexcept>
#include <vector>

class LiteralGraph
{
public:
    QString Path;
    double Distance = 0;

    void Resize_Graph(int nodeCount, bool preserve)
    {
        const std::vector<std::vector<double>> former = std::move(m_edges);
        const size_t size = size_t(nodeCount) + 1;
        m_nodeCount = nodeCount;
        m_edges.assign(size, std::vector<double>(size, preserve ? 0 : -1));
        if (!preserve) {
            m_deleted = {-1};
            return;
        }
        for (size_t a = 0; a < std::min(size, former.size()); ++a) {
            for (size_t b = 0; b < std::min(size, former.size()); ++b)
                m_edges[a][b] = former[a][b];
        }
    }
    void Set_Edge_Weigth(int from, int to, double weight) { m_edges.at(size_t(from)).at(size_t(to)) = weight; }
    void DeleteNode(int node) { m_deleted.push_back(node); }
    void ResetDeletedNodes() { m_deleted.assign(1, 0); }

    bool IsNodeDeleted(int node) const
    {
        for (int deleted : m_deleted) {
            if (deleted == node)
                return true;
        }
        return false;
    }
    double GetEdgeWeight(int a, int b) const
    {
        if (IsNodeDeleted(a) || IsNodeDeleted(b))
            return -1;
        if (a < 0 || b < 0 || size_t(a) >= m_edges.size() || size_t(b) >= m_edges.size())
            return 0;
        return m_edges[size_t(a)][size_t(b)];
    }

    void Find_Shortest_Path(int source, int target)
    {
        const int n = m_nodeCount;
        std::vector<double> distances(size_t(n) + 1, 0);
        std::vector<int> previous(size_t(n) + 1, 0);
        std::vector<char> visited(size_t(n) + 1, false);
        (void)distances.at(size_t(source));
        (void)distances.at(size_t(target));
        for (int i = 1; i <= n; ++i) {
            const double w = GetEdgeWeight(source, i);
            visited[size_t(i)] = i == source;
            distances[size_t(i)] = i == source ? 0 : w;
            previous[size_t(i)] = w > 0 ? source : -1;
        }
        double passes = 0;
        int best = 0;
        while (double(n) * double(n) > passes && !visited[size_t(target)]) {
            passes += 1;
            bool first = true;
            double least = 0;
            for (int i = 1; i <= n; ++i) {
                if (visited[size_t(i)] || !(distances[size_t(i)] > 0))
                    continue;
                if (first) {
                    first = false;
                    least = distances[size_t(i)];
                }
                if (distances[size_t(i)] <= least) {
                    least = distances[size_t(i)];
                    best = i;
                }
            }
            if (first)
                break; // no node qualified: neither this pass nor any behind it changes anything
            visited[size_t(best)] = true;
            for (int i = 0; i <= n; ++i) {
                if (visited[size_t(i)])
                    continue;
                const double w = GetEdgeWeight(i, best);
                if (!(w > 0))
                    continue;
                const double alternative = w + distances[size_t(best)];
                if (distances[size_t(i)] < 0 || alternative < distances[size_t(i)]) {
                    distances[size_t(i)] = alternative;
                    previous[size_t(i)] = best;
                }
            }
        }
        Distance = distances[size_t(target)];
        // A node that precedes itself is no way to it.
        if (previous[size_t(target)] == -1 || (target != source && previous[size_t(target)] == target)) {
            Path.clear();
            Distance = -1;
        } else {
            Path = BuildPathString(previous, target, source);
        }
    }

private:
    static QString BuildPathString(const std::vector<int> &previous, int node, int source)
    {
        if (node == source)
            return lang::Str(node);
        return BuildPathString(previous, previous.at(size_t(node)), source) + u'\\' + QString::number(node);
    }

    int m_nodeCount = 0;
    std::vector<std::vector<double>> m_edges;
    std::vector<int> m_deleted{-1};
};
