#pragma once
// One layer of join lines over the whole map: it keeps what is drawn on it, paints it, and takes the mouse only where
// its own drawing has a pixel. No widget of its own: the map's surface owns the layers, paints them in their order and
// asks the topmost first. Interface thread.
//
// Lengths are in the layer's scale: twips while a join is drawn, grid cells after InitializeMap. Lines are drawn in the
// colour that is given, black without one; the layer's own colours play no part in them. Without InitializeMap a route
// raises std::logic_error, and a cell that is not there std::out_of_range.

#include "visual/logic/JoinEnds.h"
#include "visual/logic/MapLook.h"
#include "visual/logic/PathGrid.h"

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <functional>
#include <vector>

class QPainter;

class ucPathFinder : private DrawSurface
{
public:
    ucPathFinder() = default;
    ucPathFinder(const ucPathFinder &) = delete;
    ucPathFinder &operator=(const ucPathFinder &) = delete;

    // The two ends; written by the owner before each drawing.
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    bool ConnectEnds = false; // a route is led on to the ends
    int DrawWidth = 1;        // pixels
    bool Enabled = true;      // takes the mouse
    bool Visible = true;
    LayerLook Look;

    std::function<void(const QString &Path, double Distance)> PathCalculated; // the route has been drawn

    void DrawStep(qint32 Color = 0);
    void DrawOneLargeStep(qint32 Color = 0);
    void DrawMarker(char16_t Key, double Left, double Top); // 'L', 'R' or 'C', 300 twips square
    void InitializeMap(qint32 Width, qint32 Height);
    void SetAllPaths() { m_grid.SetAllPaths(); }
    qint32 GetNodeLeft(qint32 Node) const { return m_grid.GetNodeLeft(Node); }
    qint32 GetNodeTop(qint32 Node) const { return m_grid.GetNodeTop(Node); }
    void GetPath(qint32 FromX, qint32 FromY, qint32 ToX, qint32 ToY);
    void GetPathUsingNodes(qint32 Node1, qint32 Node2);
    void DeletePoint(qint32 X, qint32 Y) { m_grid.DeletePoint(X, Y); }
    void DeleteNode(qint32 Node) { m_grid.DeleteNode(Node); }
    void DisplayGrid(bool ShowNumbers) { m_grid.DisplayGrid(ShowNumbers); }

    void Line(int Flags, double FromX, double FromY, double ToX, double ToY, qint32 Color); // the flags play no part
    void Cls();
    void Resize(double width, double height); // in twips; what is drawn keeps its place
    void Shift(double deltaX, double deltaY); // in twips: what is drawn, and the two ends
    void SetScale(double Width, double Height) override;
    double ScaleWidth() const override { return m_scaleWidth; }
    double ScaleHeight() const override { return m_scaleHeight; }

    void Paint(QPainter &painter) const; // the painter counts pixels from the layer's corner
    bool Covers(const QPointF &pixel) const;
    QRectF Bounds() const; // of what is drawn, in pixels
    bool IsEmpty() const { return m_lines.empty() && m_pixels.empty() && m_texts.empty() && !m_marker.key; }

private:
    struct DrawnLine
    {
        QLineF line; // twips
        qint32 color;
        int width; // pixels
    };
    struct DrawnText
    {
        QPointF place;
        QString text;
    };
    struct Marker
    {
        char16_t key = 0;
        QRectF frame;
    };

    void Line(double FromX, double FromY, double ToX, double ToY, qint32 Color) override;
    void Pixel(double X, double Y) override;
    void Print(double X, double Y, const QString &Text) override;
    QPointF Twips(double x, double y) const;
    void TakeEnds();

    PathGrid m_grid{*this};
    double m_width = 0, m_height = 0; // twips
    double m_scaleWidth = 1, m_scaleHeight = 1;
    std::vector<DrawnLine> m_lines;
    std::vector<QPointF> m_pixels;
    std::vector<DrawnText> m_texts;
    Marker m_marker;
};
