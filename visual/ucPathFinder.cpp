#include "visual/ucPathFinder.h"

#include "controls/Twips.h"
#include "visual/logic/StepRoute.h"

#include <QColor>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace {

QColor ColourOf(qint32 color)
{
    return QColor(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

QPointF ToPixel(const QPointF &twips)
{
    return twips / TwipsPerPixel;
}

QLineF ToPixel(const QLineF &twips)
{
    return {ToPixel(twips.p1()), ToPixel(twips.p2())};
}

QRectF ToPixel(const QRectF &twips)
{
    return {ToPixel(twips.topLeft()), twips.size() / TwipsPerPixel};
}

// How far a point lies from the nearest point of a line.
double Distance(const QLineF &line, const QPointF &point)
{
    const QPointF way = line.p2() - line.p1(), from = point - line.p1();
    const double length = QPointF::dotProduct(way, way);
    const double along = length > 0 ? std::clamp(QPointF::dotProduct(from, way) / length, 0.0, 1.0) : 0.0;
    const QPointF off = from - along * way;
    return std::hypot(off.x(), off.y());
}

} // namespace

void ucPathFinder::DrawStep(qint32 Color)
{
    Draw(*this, StepRoute(X1, Y1, X2, Y2), Color);
}

void ucPathFinder::DrawOneLargeStep(qint32 Color)
{
    Draw(*this, OneLargeStep(m_scaleWidth, m_scaleHeight), Color);
}

void ucPathFinder::DrawMarker(char16_t Key, double Left, double Top)
{
    m_marker = {Key, QRectF(Left, Top, kMarkerSize, kMarkerSize)};
}

void ucPathFinder::InitializeMap(qint32 Width, qint32 Height)
{
    m_grid.PathCalculated = [this](const QString &path, double distance) {
        if (PathCalculated)
            PathCalculated(path, distance);
    };
    m_grid.InitializeMap(Width, Height);
}

void ucPathFinder::TakeEnds()
{
    m_grid.X1 = X1;
    m_grid.Y1 = Y1;
    m_grid.X2 = X2;
    m_grid.Y2 = Y2;
    m_grid.ConnectEnds = ConnectEnds;
}

void ucPathFinder::GetPath(qint32 FromX, qint32 FromY, qint32 ToX, qint32 ToY)
{
    TakeEnds();
    m_grid.GetPath(FromX, FromY, ToX, ToY);
}

void ucPathFinder::GetPathUsingNodes(qint32 Node1, qint32 Node2)
{
    TakeEnds();
    m_grid.GetPathUsingNodes(Node1, Node2);
}

void ucPathFinder::Line(int, double FromX, double FromY, double ToX, double ToY, qint32 Color)
{
    Line(FromX, FromY, ToX, ToY, Color);
}

void ucPathFinder::Line(double FromX, double FromY, double ToX, double ToY, qint32 Color)
{
    m_lines.push_back({QLineF(Twips(FromX, FromY), Twips(ToX, ToY)), Color, DrawWidth});
}

void ucPathFinder::Pixel(double X, double Y)
{
    m_pixels.push_back(Twips(X, Y));
}

void ucPathFinder::Print(double X, double Y, const QString &Text)
{
    m_texts.push_back({Twips(X, Y), Text});
}

void ucPathFinder::Cls()
{
    m_lines.clear();
    m_pixels.clear();
    m_texts.clear();
    m_marker = {};
}

void ucPathFinder::Resize(double width, double height)
{
    m_width = width;
    m_height = height;
}

void ucPathFinder::Shift(double deltaX, double deltaY)
{
    const QPointF delta(deltaX, deltaY);
    X1 += deltaX;
    X2 += deltaX;
    Y1 += deltaY;
    Y2 += deltaY;
    for (DrawnLine &drawn : m_lines)
        drawn.line.translate(delta);
    for (QPointF &pixel : m_pixels)
        pixel += delta;
    for (DrawnText &drawn : m_texts)
        drawn.place += delta;
    m_marker.frame.translate(delta);
}

void ucPathFinder::SetScale(double Width, double Height)
{
    m_scaleWidth = Width == 0 ? 1 : Width;
    m_scaleHeight = Height == 0 ? 1 : Height;
}

QPointF ucPathFinder::Twips(double x, double y) const
{
    return {x * m_width / m_scaleWidth, y * m_height / m_scaleHeight};
}

void ucPathFinder::Paint(QPainter &painter) const
{
    if (!Visible)
        return;
    for (const DrawnLine &drawn : m_lines) {
        painter.setPen(QPen(ColourOf(drawn.color), drawn.width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawLine(ToPixel(drawn.line));
    }
    painter.setPen(QPen(ColourOf(Look.Fore), DrawWidth));
    for (const QPointF &pixel : m_pixels)
        painter.drawPoint(ToPixel(pixel));
    for (const DrawnText &drawn : m_texts) // a text's place is its upper left corner
        painter.drawText(ToPixel(drawn.place) + QPointF(0, painter.fontMetrics().ascent()), drawn.text);
    if (!m_marker.key)
        return;
    // A disc with the letter's side filled: both sides for a join of equals, the outer side for the others.
    const QRectF frame = ToPixel(m_marker.frame).adjusted(2, 2, -2, -2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(Qt::white);
    painter.drawEllipse(frame);
    painter.setBrush(Qt::black);
    constexpr int kDegree = 16, kHalf = 180 * kDegree;
    if (m_marker.key == u'L')
        painter.drawChord(frame, 90 * kDegree, kHalf);
    else if (m_marker.key == u'R')
        painter.drawChord(frame, -90 * kDegree, kHalf);
    else
        painter.drawEllipse(frame.center(), frame.width() / 5, frame.height() / 5);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

bool ucPathFinder::Covers(const QPointF &pixel) const
{
    if (!Enabled || !Visible)
        return false;
    if (m_marker.key && ToPixel(m_marker.frame).contains(pixel))
        return true;
    return std::any_of(m_lines.begin(), m_lines.end(), [&](const DrawnLine &drawn) {
        return Distance(ToPixel(drawn.line), pixel) <= std::max(drawn.width, 1) / 2.0;
    });
}

QRectF ucPathFinder::Bounds() const
{
    QRectF bounds = m_marker.key ? ToPixel(m_marker.frame) : QRectF();
    for (const DrawnLine &drawn : m_lines) {
        const QLineF line = ToPixel(drawn.line);
        const double edge = drawn.width;
        bounds |= QRectF(line.p1(), line.p2()).normalized().adjusted(-edge, -edge, edge, edge);
    }
    return bounds;
}
