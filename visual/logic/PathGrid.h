#pragma once
// Routes over a grid of cells: each cell is a node of a Graph, joined to its eight neighbours, and a removed node is an
// obstacle. A route is drawn on the surface when the graph has answered.
//
// Cells count from 0 to MapWidth and MapHeight inclusive, row by row: Map(x, y) = y * (MapWidth + 1) + x. The surface
// belongs to the caller and outlives the grid; while a grid is set up, one cell is one unit of it. One thread.
// Without InitializeMap a route raises std::logic_error; a cell that is not there raises std::out_of_range.

#include "visual/Graph.h"
#include "visual/logic/DrawSurface.h"

#include <functional>
#include <memory>

class PathGrid
{
public:
    explicit PathGrid(DrawSurface &surface) : m_surface(surface) {}

    // The true ends in units of the surface, and whether a route is led on to them.
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    bool ConnectEnds = false;

    // Called once a route was drawn; the path and -1 as the graph gives them.
    std::function<void(const QString &Path, double Distance)> PathCalculated;

    // The highest column and row, not their counts. Obstacles of the former grid are gone. What fails is skipped.
    void InitializeMap(qint32 Width, qint32 Height);
    void SetAllPaths(); // all edges anew; removed nodes stay removed

    void GetPath(qint32 X1, qint32 Y1, qint32 X2, qint32 Y2);
    void GetPathUsingNodes(qint32 Node1, qint32 Node2);
    void DeletePoint(qint32 X, qint32 Y);
    void DeleteNode(qint32 Node);
    void DisplayGrid(bool ShowNumbers);

    qint32 Map(qint32 X, qint32 Y) const;
    qint32 GetNodeLeft(qint32 Node) const; // std::domain_error while a row has no cell
    qint32 GetNodeTop(qint32 Node) const;
    qint32 MapWidth() const { return m_width; }
    qint32 MapHeight() const { return m_height; }
    qint32 NodeCount() const { return m_nodeCount; }
    const Graph *Engine() const { return m_graph.get(); } // null before InitializeMap

private:
    Graph &G() const;
    qint32 Columns() const;
    void Answer(const QString &path, double distance);

    DrawSurface &m_surface;
    std::unique_ptr<Graph> m_graph;
    qint32 m_width = 0, m_height = 0, m_nodeCount = 0;
};
