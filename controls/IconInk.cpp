#include "controls/IconInk.h"
#include "controls/Skin.h"
#include <QFont>
#include <QIconEngine>

void IconInk::Line(std::initializer_list<QPointF> points, const QColor &colour, double width)
{
    m_painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPolyline(QPolygonF(QList<QPointF>(points)));
}

void IconInk::Fill(std::initializer_list<QPointF> points, const QColor &colour)
{
    m_painter.setPen(QPen(colour, 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.setBrush(colour);
    m_painter.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

void IconInk::Frame(const QRectF &rect, const QColor &colour, double radius, double width)
{
    m_painter.setPen(QPen(colour, width));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRoundedRect(rect, radius, radius);
}

void IconInk::Block(const QRectF &rect, const QColor &colour, double radius)
{
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colour);
    m_painter.drawRoundedRect(rect, radius, radius);
}

void IconInk::Ring(const QPointF &middle, double radius, const QColor &colour, double width)
{
    m_painter.setPen(QPen(colour, width));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawEllipse(middle, radius, radius);
}

void IconInk::Disc(const QPointF &middle, double radius, const QColor &colour)
{
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colour);
    m_painter.drawEllipse(middle, radius, radius);
}

void IconInk::Arc(const QRectF &rect, double fromDegrees, double spanDegrees, const QColor &colour, double width)
{
    m_painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawArc(rect, int(fromDegrees * 16), int(spanDegrees * 16));
}

void IconInk::Letters(const QRectF &rect, const QString &text, const QColor &colour, double height)
{
    QFont font = m_painter.font();
    font.setPixelSize(int(height));
    font.setBold(true);
    m_painter.setFont(font);
    m_painter.setPen(colour);
    m_painter.drawText(rect, Qt::AlignCenter, text);
}

void IconInk::Table(const QRectF &rect, const QColor &colour)
{
    Frame(rect, colour, 0.8, 1.2);
    Block(QRectF(rect.left(), rect.top(), rect.width(), rect.height() * 0.3), colour, 0.6);
    const double x = rect.left() + rect.width() * 0.42, y = rect.top() + rect.height() * 0.65;
    Line({{x, rect.top() + rect.height() * 0.3}, {x, rect.bottom()}}, colour, 1);
    Line({{rect.left(), y}, {rect.right(), y}}, colour, 1);
}

void IconInk::Plus(const QPointF &middle, double reach, const QColor &colour)
{
    Line({middle - QPointF(reach, 0), middle + QPointF(reach, 0)}, colour, 1.8);
    Line({middle - QPointF(0, reach), middle + QPointF(0, reach)}, colour, 1.8);
}

void IconInk::Minus(const QPointF &middle, double reach, const QColor &colour)
{
    Line({middle - QPointF(reach, 0), middle + QPointF(reach, 0)}, colour, 1.8);
}

void IconInk::Cross(const QPointF &middle, double reach, const QColor &colour)
{
    Line({middle - QPointF(reach, reach), middle + QPointF(reach, reach)}, colour, 1.8);
    Line({middle + QPointF(-reach, reach), middle + QPointF(reach, -reach)}, colour, 1.8);
}

namespace {

class DrawnEngine : public QIconEngine
{
public:
    explicit DrawnEngine(IconDrawing drawing) : m_drawing(std::move(drawing)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        // The same shape in one colour: a dark one on the light ground of a selected row; that of a text which is off
        // for a button that is, so that a bright drawing looks no more alive than a dim one.
        if (mode == QIcon::Selected || mode == QIcon::Disabled) {
            const double scale = painter->device()->devicePixelRatio();
            QPixmap plain = pixmap(rect.size() * scale, QIcon::Normal, state);
            QPainter tint(&plain);
            tint.setCompositionMode(QPainter::CompositionMode_SourceAtop);
            tint.fillRect(plain.rect(),
                          mode == QIcon::Selected ? QColor(0, 40, 0) : SkinColour(SkinRole::DisabledText));
            tint.end();
            painter->drawPixmap(rect, plain);
            return;
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const double side = std::min(rect.width(), rect.height());
        painter->translate(rect.left() + (rect.width() - side) / 2, rect.top() + (rect.height() - side) / 2);
        painter->scale(side / 16, side / 16);
        IconInk ink(*painter);
        m_drawing(ink);
        painter->restore();
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine *clone() const override { return new DrawnEngine(m_drawing); }

private:
    IconDrawing m_drawing;
};

} // namespace

QIcon DrawnIcon(IconDrawing drawing)
{
    return QIcon(new DrawnEngine(std::move(drawing)));
}
