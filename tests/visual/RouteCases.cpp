#include "tests/visual/CaseRunners.h"

#include "tests/visual/RecordingSurface.h"
#include "visual/logic/PathGrid.h"
#include "visual/logic/StepRoute.h"

#include <exception>

namespace {

QJsonValue Found(const QString &path, double distance)
{
    return QJsonObject{{QStringLiteral("path"), path}, {QStringLiteral("distance"), distance}};
}

QJsonValue RunGraph(const QJsonObject &args)
{
    Graph graph;
    QJsonValue answer;
    graph.PathCalculated = [&](const QString &path, double distance) { answer = Found(path, distance); };
    QJsonArray seen;
    for (const QJsonValue &value : A(args, "steps")) {
        const QJsonArray step = value.toArray();
        const QString name = step.at(0).toString();
        answer = QJsonValue::Null;
        try {
            if (name == u"Resize_Graph")
                graph.Resize_Graph(step.at(1).toInt(), step.at(2).toBool());
            else if (name == u"Set_Edge_Weigth")
                graph.Set_Edge_Weigth(step.at(1).toInt(), step.at(2).toInt(), step.at(3).toDouble());
            else if (name == u"DeleteNode")
                graph.DeleteNode(step.at(1).toInt());
            else if (name == u"ResetDeletedNodes")
                graph.ResetDeletedNodes();
            else if (name == u"Find_Shortest_Path")
                graph.Find_Shortest_Path(step.at(1).toInt(), step.at(2).toInt());
            else
                answer = QStringLiteral("unknown step ") + name;
        } catch (const std::exception &) {
            answer = QJsonObject{{QStringLiteral("error"), 9}};
        }
        seen.append(answer);
    }
    return seen;
}

QJsonValue RunDrawStep(const QJsonObject &args)
{
    RecordingSurface surface;
    Draw(surface, StepRoute(D(args, "x1"), D(args, "y1"), D(args, "x2"), D(args, "y2")), I(args, "color"));
    return surface.Lines;
}

QJsonValue RunOneLargeStep(const QJsonObject &args)
{
    RecordingSurface surface;
    Draw(surface, OneLargeStep(D(args, "scale_width"), D(args, "scale_height")), I(args, "color"));
    return surface.Lines;
}

QJsonValue RunEdges(const QJsonObject &args)
{
    RecordingSurface surface;
    PathGrid grid(surface);
    grid.InitializeMap(I(args, "width"), I(args, "height"));
    QJsonArray edges;
    for (int from = 0; from <= grid.NodeCount(); ++from) {
        for (int to = 0; to <= grid.NodeCount(); ++to) {
            const double weight = grid.Engine()->GetEdgeWeight(from, to);
            if (weight != -1)
                edges.append(QJsonArray{from, to, weight});
        }
    }
    return QJsonObject{{QStringLiteral("node_count"), grid.NodeCount()}, {QStringLiteral("edges"), edges}};
}

QJsonValue RunNodes(const QJsonObject &args)
{
    RecordingSurface surface;
    PathGrid grid(surface);
    grid.InitializeMap(I(args, "width"), I(args, "height"));
    QJsonArray nodes;
    for (int y = 0; y <= grid.MapHeight(); ++y) {
        for (int x = 0; x <= grid.MapWidth(); ++x) {
            const int node = grid.Map(x, y);
            nodes.append(QJsonArray{x, y, node, grid.GetNodeLeft(node), grid.GetNodeTop(node)});
        }
    }
    return nodes;
}

QJsonValue RunDisplay(const QJsonObject &args)
{
    RecordingSurface surface;
    PathGrid grid(surface);
    grid.InitializeMap(I(args, "width"), I(args, "height"));
    grid.DisplayGrid(B(args, "show_numbers"));
    return QJsonObject{{QStringLiteral("pixels"), surface.Pixels}, {QStringLiteral("texts"), surface.Texts}};
}

QJsonValue RunGridPath(const QJsonObject &args)
{
    RecordingSurface surface;
    PathGrid grid(surface);
    QJsonObject answer;
    grid.PathCalculated = [&](const QString &path, double distance) { answer = Found(path, distance).toObject(); };
    grid.InitializeMap(I(args, "width"), I(args, "height"));
    const QJsonArray ends = A(args, "ends");
    grid.X1 = ends.at(0).toDouble();
    grid.Y1 = ends.at(1).toDouble();
    grid.X2 = ends.at(2).toDouble();
    grid.Y2 = ends.at(3).toDouble();
    grid.ConnectEnds = B(args, "connect_ends");
    for (const QJsonValue &point : A(args, "delete_points"))
        grid.DeletePoint(point[0].toInt(), point[1].toInt());
    for (const QJsonValue &node : A(args, "delete_nodes"))
        grid.DeleteNode(node.toInt());
    if (const QJsonArray points = A(args, "points"); !points.isEmpty())
        grid.GetPath(points.at(0).toInt(), points.at(1).toInt(), points.at(2).toInt(), points.at(3).toInt());
    else
        grid.GetPathUsingNodes(A(args, "nodes").at(0).toInt(), A(args, "nodes").at(1).toInt());
    answer[u"lines"] = surface.Lines;
    return answer;
}

} // namespace

std::span<const CaseRunner> RouteRunners()
{
    static const CaseRunner rows[] = {
        {"graph", RunGraph},        {"draw_step", RunDrawStep}, {"draw_one_large_step", RunOneLargeStep},
        {"map_edges", RunEdges},    {"map_nodes", RunNodes},    {"display_grid", RunDisplay, 1e-9},
        {"grid_path", RunGridPath},
    };
    return rows;
}
