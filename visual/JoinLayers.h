#pragma once
// The numbered join layers of a map: one for each row of its joins, made and dropped with the row, painted in the order
// of their numbers and asked for the mouse from the topmost down. Interface thread; nothing is raised.
//
// Rows belong to the caller: Follow brings the layers up to them. Lengths are twips, points and rectangles pixels of
// the surface.

#include "visual/logic/MapEdit.h"
#include "visual/ucPathFinder.h"

#include <QRectF>

#include <map>
#include <memory>

class QPainter;

class JoinLayers
{
public:
    LayerLook Template; // what a layer looks like when it is made; those that stand keep theirs

    // Layers without a row go, rows without a layer get one.
    void Follow(const MapJoins &joins);
    void Resize(double width, double height); // inner, for all layers and those to come
    // Draws the joins of one table anew, or all with -1. A join whose table or field is gone stays blank.
    void DrawJoins(const MapJoins &joins, const MapTables &tables, const ItemFrameOf &itemFrame, double outerWidth,
                   double outerHeight, int table = -1);
    void Shift(double deltaX, double deltaY); // what is drawn, as the tables are shifted
    void ClearJoinLayers();                   // blank, while a table is carried
    void Enable(bool takesMouse);             // all of them, and those to come
    void Paint(QPainter &painter, const QRectF &area) const;

    int At(const QPointF &pixel) const; // the number of the topmost layer that has this pixel, 0 for none
    ucPathFinder *PF(int index) const;  // null where the numbers have a gap
    int Count() const { return int(m_layers.size()); }
    QRectF Bounds(int index) const;

private:
    struct Layer
    {
        std::unique_ptr<ucPathFinder> finder;
        QRectF bounds;
    };
    std::map<int, Layer> m_layers;
    double m_width = 0, m_height = 0;
    bool m_enabled = true;
};
