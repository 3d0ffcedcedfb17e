#include "visual/JoinLayers.h"

#include <QPainter>

#include <set>

void JoinLayers::Follow(const MapJoins &joins)
{
    std::set<int> wanted;
    for (const MapJoin &row : joins.Rows())
        wanted.insert(row.Index);
    std::erase_if(m_layers, [&](const auto &one) { return !wanted.contains(one.first); });
    for (int index : wanted) {
        Layer &layer = m_layers[index];
        if (layer.finder)
            continue;
        layer.finder = std::make_unique<ucPathFinder>();
        layer.finder->Look = Template;
        layer.finder->Enabled = m_enabled;
        layer.finder->Resize(m_width, m_height);
    }
}

void JoinLayers::Resize(double width, double height)
{
    m_width = width;
    m_height = height;
    for (auto &one : m_layers)
        one.second.finder->Resize(width, height);
}

void JoinLayers::DrawJoins(const MapJoins &joins, const MapTables &tables, const ItemFrameOf &itemFrame,
                           double outerWidth, double outerHeight, int table)
{
    for (const MapJoin &row : joins.Rows()) {
        const auto found = m_layers.find(row.Index);
        if (found == m_layers.end() || !Touches(row, table))
            continue;
        Layer &layer = found->second;
        ucPathFinder &finder = *layer.finder;
        finder.Cls();
        layer.bounds = {};
        const std::optional<JoinEnds> ends = EndsOfRow(row, tables, itemFrame, outerWidth, outerHeight);
        if (!ends)
            continue;
        finder.DrawWidth = kJoinWidth;
        finder.SetScale(m_width, m_height);
        finder.ConnectEnds = true;
        finder.X1 = ends->X1;
        finder.Y1 = ends->Y1;
        finder.X2 = ends->X2;
        finder.Y2 = ends->Y2;
        finder.DrawStep();
        finder.DrawMarker(ends->Marker, ends->MarkerLeft, ends->MarkerTop);
        layer.bounds = finder.Bounds();
    }
}

void JoinLayers::Shift(double deltaX, double deltaY)
{
    for (auto &one : m_layers) {
        one.second.finder->Shift(deltaX, deltaY);
        one.second.bounds = one.second.finder->IsEmpty() ? QRectF() : one.second.finder->Bounds();
    }
}

void JoinLayers::ClearJoinLayers()
{
    for (auto &one : m_layers) {
        one.second.finder->Cls();
        one.second.bounds = {};
    }
}

void JoinLayers::Enable(bool takesMouse)
{
    m_enabled = takesMouse;
    for (auto &one : m_layers)
        one.second.finder->Enabled = takesMouse;
}

void JoinLayers::Paint(QPainter &painter, const QRectF &area) const
{
    for (const auto &[index, layer] : m_layers) {
        if (layer.bounds.intersects(area))
            layer.finder->Paint(painter);
    }
}

int JoinLayers::At(const QPointF &pixel) const
{
    for (auto one = m_layers.rbegin(); one != m_layers.rend(); ++one) {
        if (one->second.bounds.contains(pixel) && one->second.finder->Covers(pixel))
            return one->first;
    }
    return 0;
}

ucPathFinder *JoinLayers::PF(int index) const
{
    const auto found = m_layers.find(index);
    return found == m_layers.end() ? nullptr : found->second.finder.get();
}

QRectF JoinLayers::Bounds(int index) const
{
    const auto found = m_layers.find(index);
    return found == m_layers.end() ? QRectF() : found->second.bounds;
}
