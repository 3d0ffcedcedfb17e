#include "views/chart/ChartPaint.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace {

const QColor kPaper(Qt::white), kInk(0x20, 0x20, 0x20), kGrid(0xd8, 0xd8, 0xd8), kFrame(0x90, 0x90, 0x90);
constexpr size_t kManyPoints = 1500; // of a line: its stairs are not seen any more, and smoothing takes long
constexpr double kPointsPerInch = 72;

// Each at least three times as dark as the paper, and neighbours far from each other.
constexpr QRgb kPlain[] = {0x1f5fa8, 0xc2500a, 0x2e7d32, 0xb3202a, 0x6a3d9a, 0x00797f,
                           0xb0146c, 0x7a5a00, 0x455a64, 0x8c3b2e, 0x3949ab, 0x5d7a00};
constexpr QRgb kForAllEyes[] = {0x0072b2, 0xd55e00, 0x009e73, 0xcc79a7, 0x3c3c3c, 0xe69f00, 0x56b4e9, 0x8a7f00};

// Lines are told apart by their dashes as well.
const Qt::PenStyle kDashes[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine};

QColor Shaded(const QColor &colour, ChartShade shade)
{
    switch (shade) {
    case ChartShade::Light:
        return colour.lighter(145);
    case ChartShade::Dark:
        return colour.darker(150);
    case ChartShade::Sheer: {
        QColor sheer = colour;
        sheer.setAlphaF(0.45F);
        return sheer;
    }
    case ChartShade::Outline:
        return colour.darker(125);
    case ChartShade::Full:
        break;
    }
    return colour;
}

class MarkPainter
{
public:
    MarkPainter(QPainter &painter, ChartPalette palette) : m_painter(painter), m_palette(palette) {}
    void Paint(const ChartMark &mark)
    {
        const QColor colour = Shaded(ChartColour(m_palette, mark.Colour), mark.Shade);
        m_painter.setRenderHint(QPainter::Antialiasing, mark.What != ChartMark::Boxes &&
                                                            mark.Points.size() < kManyPoints &&
                                                            !(mark.What == ChartMark::Dots && mark.Size < 4));
        switch (mark.What) {
        case ChartMark::Boxes:
            for (const QRectF &box : mark.Rects) // one that is too low to be seen keeps a pixel
                m_painter.fillRect(QRectF(box.topLeft(), QSizeF(box.width(), std::max(box.height(), 1.0))), colour);
            break;
        case ChartMark::Polygon:
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(colour);
            m_painter.drawPolygon(mark.Points.data(), int(mark.Points.size()), Qt::WindingFill);
            break;
        case ChartMark::Band:
            // Piece by piece: as one polygon, pieces that go up and pieces that go down would cancel where they meet.
            m_painter.setPen(QPen(colour, 0));
            m_painter.setBrush(colour);
            for (size_t i = 1; i < mark.Points.size(); ++i) {
                const QPointF from = mark.Points[i - 1], to = mark.Points[i];
                const QPointF piece[] = {from, to, to + kDepth, from + kDepth};
                m_painter.drawConvexPolygon(piece, 4);
            }
            break;
        case ChartMark::Polyline:
            m_painter.setPen(LinePen(mark, colour));
            m_painter.setBrush(Qt::NoBrush);
            m_painter.drawPolyline(mark.Points.data(), int(mark.Points.size()));
            break;
        case ChartMark::Dots:
            PaintDots(mark, colour);
            break;
        case ChartMark::Slice:
            PaintSlice(mark, colour);
            break;
        }
    }

private:
    QPen LinePen(const ChartMark &mark, const QColor &colour) const
    {
        const bool many = mark.Points.size() >= kManyPoints;
        QPen pen(colour, many ? 1 : mark.Shade == ChartShade::Outline ? 1.2 : 2);
        if (m_palette == ChartPalette::ForAllEyes && !many)
            pen.setStyle(kDashes[size_t(mark.Colour) % std::size(kDashes)]);
        pen.setJoinStyle(Qt::RoundJoin);
        return pen;
    }
    void PaintDots(const ChartMark &mark, const QColor &colour)
    {
        const QPointF half(mark.Size / 2, mark.Size / 2);
        const QSizeF size(mark.Size, mark.Size);
        if (mark.Size < 4) {
            for (const QPointF &point : mark.Points)
                m_painter.fillRect(QRectF(point - half, size), colour);
            return;
        }
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(colour);
        const bool isSquare = m_palette == ChartPalette::ForAllEyes && mark.Colour % 2 == 1;
        for (const QPointF &point : mark.Points)
            isSquare ? m_painter.drawRect(QRectF(point - half, size))
                     : m_painter.drawEllipse(QRectF(point - half, size));
    }
    void PaintSlice(const ChartMark &mark, const QColor &colour)
    {
        m_painter.setPen(QPen(kPaper, 1.5));
        m_painter.setBrush(colour);
        if (mark.Span > 359.99)
            m_painter.drawEllipse(mark.Rects.front());
        else // the painter counts in sixteenths against the clock, from the right
            m_painter.drawPie(mark.Rects.front(), int(std::lround((90 - mark.Start - mark.Span) * 16)),
                              std::max(int(std::lround(mark.Span * 16)), 1));
    }

    QPainter &m_painter;
    ChartPalette m_palette;
};

} // namespace

QColor ChartColour(ChartPalette palette, int number)
{
    const bool plain = palette == ChartPalette::Plain;
    const int count = plain ? int(std::size(kPlain)) : int(std::size(kForAllEyes));
    const QColor colour(plain ? kPlain[number % count] : kForAllEyes[number % count]);
    switch (number / count % 3) { // further rounds are other shades
    case 1:
        return plain ? colour.lighter(150) : colour.darker(165);
    case 2:
        return plain ? colour.darker(150) : colour.lighter(118);
    default:
        return colour;
    }
}

ChartPainter::ChartPainter(const QFont &font, double dotsPerInch)
{
    const double points = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * kPointsPerInch / 96;
    for (const ChartFace face : {ChartFace::Title, ChartFace::Label, ChartFace::Note}) {
        QFont &one = m_fonts[size_t(face)] = font;
        one.setPixelSize(int(std::ceil(FacePoints(face, points) * dotsPerInch / kPointsPerInch)));
        one.setBold(face == ChartFace::Title);
    }
}

ChartMeasure ChartPainter::Measure() const
{
    return [title = QFontMetricsF(m_fonts[0]), label = QFontMetricsF(m_fonts[1]),
            note = QFontMetricsF(m_fonts[2])](const QString &text, ChartFace face) {
        const QFontMetricsF &metrics = face == ChartFace::Title ? title : face == ChartFace::Label ? label : note;
        return QSizeF(std::ceil(metrics.horizontalAdvance(text)) + 1, std::ceil(metrics.height()));
    };
}

void ChartPainter::Paint(QPainter &painter, const ChartPicture &picture, ChartPalette palette) const
{
    painter.save();
    painter.fillRect(QRectF(QPointF(), picture.Size), kPaper);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(kGrid, 1));
    for (const QLineF &line : picture.Grid)
        painter.drawLine(line);
    MarkPainter marks(painter, palette);
    painter.save();
    if (picture.HasAxes)
        painter.setClipRect(picture.Plot.adjusted(-4, -12, 12, 4));
    for (const ChartMark &mark : picture.Marks)
        marks.Paint(mark);
    painter.restore();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(kInk, 1));
    for (const QLineF &line : picture.Axes)
        painter.drawLine(line);
    if (!picture.Legend.isEmpty()) {
        painter.setPen(QPen(kFrame, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(picture.Legend);
    }
    for (const ChartMark &swatch : picture.Swatches)
        marks.Paint(swatch);
    painter.setPen(kInk);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const ChartText &text : picture.Texts) {
        painter.setFont(m_fonts[size_t(text.Face)]);
        painter.drawText(text.Rect, int(Qt::AlignCenter) | int(Qt::TextSingleLine) | int(Qt::TextDontClip), text.Text);
    }
    painter.restore();
}

QImage ChartPainter::Paint(const ChartPicture &picture, ChartPalette palette, double scale) const
{
    QImage image((picture.Size * scale).toSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    Paint(painter, picture, palette);
    return image;
}
