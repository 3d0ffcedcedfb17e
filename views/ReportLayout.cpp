#include "views/ReportLayout.h"

#include "ado/CellReader.h"
#include "views/drReport.h"
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kTwipsAPoint = 20;
constexpr double kTitle = 40;   // height of the title, points; first page only
constexpr double kHeading = 22; // labels and the two lines
constexpr double kRow = 13;
constexpr double kFooter = 24;
constexpr double kGap = 3; // between boxes, so that neighbours do not touch
constexpr double kTitleSize = 11, kHeadingSize = 9;
constexpr int kTitleLines = 2;
constexpr qint64 kLongest = 2000; // characters of a text that any page can show

QFont Font(double points, bool bold = false)
{
    QFont font(QStringLiteral("Sans Serif"));
    font.setPixelSize(qMax(1, int(points))); // a pixel of the painter is a point of the page
    font.setBold(bold);
    return font;
}

QString OneLine(QString text)
{
    text.truncate(kLongest);
    for (QChar &letter : text)
        if (letter == QLatin1Char('\n') || letter == QLatin1Char('\r') || letter == QLatin1Char('\t'))
            letter = QLatin1Char(' ');
    return text;
}

} // namespace

ReportLayout::ReportLayout(ADODB::RecordsetPtr rows, QList<ReportColumn> columns, QString title, QSizeF page)
    : m_rows(std::move(rows)), m_columns(columns.mid(0, drReport::MaxColumns)), m_title(std::move(title)), m_page(page)
{
    MakeRoomForHeadings();
    double widest = 0;
    for (const ReportColumn &column : m_columns)
        widest = std::max(widest, (column.left + column.width) / kTwipsAPoint);
    if (widest > m_page.width()) {
        m_scale = m_page.width() / widest;
        m_page = QSizeF(widest, m_page.height() / m_scale);
    }
    for (const ReportColumn &column : m_columns) {
        int found = -1;
        for (int field = 0; field < m_rows->ColumnCount() && found < 0; ++field)
            if (m_rows->Column(field).Name.compare(column.caption, Qt::CaseInsensitive) == 0)
                found = field;
        m_fields.append(found);
    }
    const double room = m_page.height() - kHeading - kFooter;
    m_perNext = std::max<qint64>(1, qint64(room / kRow));
    m_perFirst = std::max<qint64>(1, qint64((room - kTitle) / kRow));
}

qint64 ReportLayout::Pages() const
{
    const qint64 rest = m_rows->RowCount() - m_perFirst;
    return rest <= 0 ? 1 : 1 + (rest + m_perNext - 1) / m_perNext;
}

qint64 ReportLayout::FirstRow(qint64 page) const
{
    return page == 0 ? 0 : m_perFirst + (page - 1) * m_perNext;
}

qint64 ReportLayout::RowsOnPage(qint64 page) const
{
    const qint64 room = page == 0 ? m_perFirst : m_perNext;
    return std::clamp<qint64>(m_rows->RowCount() - FirstRow(page), 0, room);
}

double ReportLayout::HeadingTop(qint64 page) const
{
    return page == 0 ? kTitle : 0;
}

QString ReportLayout::CellText(qint64 row, int column) const
{
    const int field = m_fields.value(column, -1);
    return field < 0 ? QString() : ADODB::CellStart(*m_rows, row, field, kLongest);
}

// A heading is bold, and so wider than the grid's, whose width its column has. As long as the columns take less than
// the page, each that is too narrow for its heading grows, and those behind it move along.
void ReportLayout::MakeRoomForHeadings()
{
    const QFontMetricsF metrics(Font(kHeadingSize, true));
    double right = 0;
    for (const ReportColumn &column : m_columns)
        right = std::max(right, (column.left + column.width) / kTwipsAPoint);
    double spare = m_page.width() - right;
    int moved = 0;
    for (ReportColumn &column : m_columns) {
        column.left += moved;
        const double needed = metrics.horizontalAdvance(OneLine(column.caption)) + kGap + 1;
        const double missing = needed - column.width / kTwipsAPoint;
        if (missing <= 0 || missing + 1 > spare)
            continue;
        const int twips = int(std::ceil(missing * kTwipsAPoint));
        column.width += twips;
        moved += twips;
        spare -= twips / kTwipsAPoint;
    }
}

QStringList ReportLayout::TitleLines() const
{
    const QFont font = Font(kTitleSize, true);
    const QFontMetricsF metrics(font);
    const QString title = OneLine(m_title);
    QTextLayout layout(title, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(m_page.width());
        if (lines.size() + 1 == kTitleLines) { // the last one says whether more would follow
            lines << metrics.elidedText(title.mid(line.textStart()), Qt::ElideRight, m_page.width());
            break;
        }
        lines << title.mid(line.textStart(), line.textLength());
    }
    layout.endLayout();
    return lines;
}

QRectF ReportLayout::Box(int column) const
{
    const ReportColumn &place = m_columns[column];
    return QRectF(place.left / kTwipsAPoint, 0, std::max(1.0, place.width / kTwipsAPoint - kGap), 1);
}

QString ReportLayout::HeadingText(int column) const
{
    return QFontMetricsF(Font(kHeadingSize, true))
        .elidedText(OneLine(m_columns[column].caption), Qt::ElideRight, Box(column).width());
}

void ReportLayout::Paint(QPainter &painter, qint64 page) const
{
    painter.save();
    painter.scale(m_scale, m_scale);
    painter.setPen(Qt::black);
    const auto draw = [&](const QRectF &box, const QString &text, int flags = Qt::AlignLeft | Qt::AlignVCenter) {
        const QString fitted = QFontMetricsF(painter.font()).elidedText(OneLine(text), Qt::ElideRight, box.width());
        painter.drawText(box, flags | Qt::TextSingleLine, fitted);
    };

    if (page == 0) {
        painter.setFont(Font(kTitleSize, true));
        const double height = QFontMetricsF(painter.font()).lineSpacing();
        double top = 0;
        for (const QString &line : TitleLines()) {
            painter.drawText(QRectF(0, top, m_page.width(), height), Qt::AlignTop | Qt::TextSingleLine, line);
            top += height;
        }
    }

    double y = HeadingTop(page);
    const auto box = [&](int column, double height) {
        const QRectF place = Box(column);
        return QRectF(place.left(), y, place.width(), height);
    };
    painter.setFont(Font(kHeadingSize, true));
    double right = 0;
    for (int column = 0; column < m_columns.size(); ++column) {
        painter.drawText(box(column, kHeading - 4), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         HeadingText(column));
        right = std::max(right, box(column, 1).right());
    }
    painter.setPen(QPen(Qt::black, 0.8));
    painter.drawLine(QPointF(0, y), QPointF(right, y));
    painter.drawLine(QPointF(0, y + kHeading - 4), QPointF(right, y + kHeading - 4));
    y += kHeading;

    painter.setFont(Font(9));
    const qint64 first = FirstRow(page), count = RowsOnPage(page);
    for (qint64 row = first; row < first + count; ++row, y += kRow)
        for (int column = 0; column < m_columns.size(); ++column)
            draw(box(column, kRow), CellText(row, column));

    painter.setFont(Font(8));
    const QRectF footer(0, m_page.height() - kFooter, m_page.width(), kFooter);
    draw(footer, QStringLiteral("Report generated by Brindlewick"));
    draw(footer, QStringLiteral("%1 of %2").arg(page + 1).arg(Pages()), Qt::AlignRight | Qt::AlignVCenter);
    painter.restore();
}
