#pragma once
// The pen of the drawn icons, and the engine that runs a drawing at any size; for the icons' sources only.
// Drawings live on a field of 16 by 16 units.

#include <QIcon>
#include <QPainter>
#include <functional>
#include <initializer_list>

class IconInk
{
public:
    explicit IconInk(QPainter &painter) : m_painter(painter) {}

    static QColor Light() { return QColor(226, 240, 216); }
    static QColor Leaf() { return QColor(145, 195, 125); }
    static QColor Gold() { return QColor(236, 214, 92); }
    static QColor Red() { return QColor(236, 128, 104); }
    static QColor Blue() { return QColor(142, 182, 226); }

    void Line(std::initializer_list<QPointF> points, const QColor &colour = Light(), double width = 1.4);
    void Fill(std::initializer_list<QPointF> points, const QColor &colour = Light());
    void Frame(const QRectF &rect, const QColor &colour = Light(), double radius = 1, double width = 1.3);
    void Block(const QRectF &rect, const QColor &colour = Light(), double radius = 0.6);
    void Ring(const QPointF &middle, double radius, const QColor &colour = Light(), double width = 1.4);
    void Disc(const QPointF &middle, double radius, const QColor &colour = Light());
    void Arc(const QRectF &rect, double fromDegrees, double spanDegrees, const QColor &colour = Light(),
             double width = 1.5);
    void Letters(const QRectF &rect, const QString &text, const QColor &colour = Light(), double height = 9);
    void Table(const QRectF &rect, const QColor &colour = Light()); // a small grid with a filled head
    void Plus(const QPointF &middle, double reach, const QColor &colour = Gold());
    void Minus(const QPointF &middle, double reach, const QColor &colour = Red());
    void Cross(const QPointF &middle, double reach, const QColor &colour = Red());

private:
    QPainter &m_painter;
};

using IconDrawing = std::function<void(IconInk &)>;
QIcon DrawnIcon(IconDrawing drawing);

struct IconRow
{
    const char *key;
    void (*draw)(IconInk &ink);
};
// The drawings by key; found by a walk.
extern const std::initializer_list<IconRow> kToolDrawings;
