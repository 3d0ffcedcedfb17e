#include "views/chart/Chart.h"

#include "controls/Skin.h"
#include "controls/clsCaptureWindow.h"
#include "views/logic/ChartHit.h"
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kFocusWidth = 2;
constexpr QPointF kNowhere{-1, -1};

} // namespace

Chart::Chart(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Chart::Redraw()
{
    m_isLaid = false;
    m_painted = QImage();
    update();
}

void Chart::SetChartType(int type)
{
    if (!IsChartType(type))
        return;
    m_options.Type = type;
    Redraw();
}

void Chart::SetShowLegend(bool on)
{
    m_options.ShowLegend = on;
    Redraw();
}

void Chart::SetTitle(const QString &text)
{
    m_options.Title = text;
    setAccessibleDescription(text);
    Redraw();
}

void Chart::SetFootnoteText(const QString &text)
{
    m_options.FootNote = text;
    Redraw();
}

void Chart::SetLogarithmic(bool on)
{
    m_options.Logarithmic = on;
    Redraw();
}

void Chart::SetPalette(ChartPalette palette)
{
    m_palette = palette;
    Redraw();
}

void Chart::ShowRows(qint64 first, qint64 rows)
{
    const qint64 all = Values.RowCount();
    if (all == 0)
        return;
    rows = std::clamp(rows, qint64(1), all);
    m_options.FirstRow = std::clamp(first, qint64(0), all - rows);
    m_options.Rows = rows == all ? -1 : rows;
    Redraw();
}

void Chart::ShowAllRows()
{
    m_options.FirstRow = 0;
    m_options.Rows = -1;
    Redraw();
}

const ChartPicture &Chart::Picture() const
{
    if (!m_isLaid) {
        const ChartPainter painter(font(), logicalDpiY());
        m_picture = LayOutChart(Values, m_options, QSizeF(size()), painter.Measure());
        m_isLaid = true;
    }
    return m_picture;
}

void Chart::PaintOn(QPainter &painter, const QSizeF &size, double dotsPerInch) const
{
    const ChartPainter paint(font(), dotsPerInch);
    paint.Paint(painter, LayOutChart(Values, m_options, size, paint.Measure()), m_palette);
}

QPixmap Chart::Capture()
{
    m_isBare = true;
    const QPixmap picture = clsCaptureWindow::CaptureClientfromHwnd(this);
    m_isBare = false;
    return picture;
}

QString Chart::ReadOut(const QPointF &position) const
{
    return HitChart(Values, m_options, Picture(), position).Text;
}

qint64 Chart::RowAt(double x) const
{
    return m_options.Type == chart2DXY ? -1 : RowAtPixel(Picture(), x);
}

void Chart::paintEvent(QPaintEvent *)
{
    const double ratio = devicePixelRatioF();
    if (m_painted.isNull() || !qFuzzyCompare(m_painted.devicePixelRatio(), ratio))
        m_painted = ChartPainter(font(), logicalDpiY()).Paint(Picture(), m_palette, ratio);
    QPainter painter(this);
    painter.drawImage(0, 0, m_painted);
    if (m_isBare)
        return;
    PaintPointer(painter);
    if (hasFocus()) { // yellow alone is not seen on white
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(SkinColour(SkinRole::List), 2 * kFocusWidth));
        painter.drawRect(rect());
        painter.setPen(QPen(SkinColour(SkinRole::Focus), kFocusWidth));
        painter.drawRect(rect());
    }
}

// The rows that a drag has chosen so far, or what lies under the pointer.
void Chart::PaintPointer(QPainter &painter) const
{
    if (m_pointer == kNowhere)
        return;
    const ChartPicture &picture = Picture();
    if (m_dragFrom != kNowhere && RowAt(m_dragFrom.x()) >= 0) {
        const double from = std::clamp(m_dragFrom.x(), picture.Plot.left(), picture.Plot.right());
        const double to = std::clamp(m_pointer.x(), picture.Plot.left(), picture.Plot.right());
        painter.fillRect(
            QRectF(QPointF(std::min(from, to), picture.Plot.top()), QPointF(std::max(from, to), picture.Plot.bottom())),
            QColor(0, 80, 160, 50));
        return;
    }
    const ChartHit hit = HitChart(Values, m_options, picture, m_pointer);
    if (hit.Text.isEmpty())
        return;
    painter.setPen(QPen(QColor(0x60, 0x60, 0x60), 1, Qt::DashLine));
    if (hit.IsRow)
        painter.drawLine(QPointF(hit.Mark.x(), picture.Plot.top()), QPointF(hit.Mark.x(), picture.Plot.bottom()));
    const ChartPainter fonts(font(), logicalDpiY());
    painter.setFont(fonts.Font(ChartFace::Label));
    const QFontMetricsF metrics(painter.font());
    const QRectF words = metrics.boundingRect(QRectF(0, 0, width(), height()), Qt::AlignLeft, hit.Text);
    QRectF box(m_pointer + QPointF(14, 10), words.size() + QSizeF(14, 10));
    box.moveLeft(std::max(0.0, std::min(box.left(), width() - box.width() - 1)));
    box.moveTop(std::max(0.0, std::min(box.top(), height() - box.height() - 1)));
    painter.setPen(QColor(0x60, 0x60, 0x60));
    painter.setBrush(QColor(255, 255, 240));
    painter.drawRect(box);
    painter.setPen(QColor(0x20, 0x20, 0x20));
    painter.drawText(box.adjusted(7, 5, -6, -4), Qt::AlignLeft, hit.Text);
}

void Chart::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Redraw();
}

void Chart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Redraw();
}

void Chart::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragFrom = event->position();
}

void Chart::mouseMoveEvent(QMouseEvent *event)
{
    m_pointer = event->position();
    update();
}

void Chart::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_dragFrom != kNowhere) {
        const QPointF from = std::exchange(m_dragFrom, kNowhere);
        const qint64 one = RowAt(from.x()), other = RowAt(event->position().x());
        if (one >= 0 && std::abs(event->position().x() - from.x()) >= QApplication::startDragDistance())
            ShowRows(std::min(one, other), std::abs(other - one) + 1);
        update();
    }
    emit MouseUp(event->button(), event->position().toPoint());
}

void Chart::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        ShowAllRows();
}

// Shows fewer or more rows; what lies at that share of the width stays where it is.
void Chart::Zoom(double factor, double aroundShare)
{
    const ChartPicture &picture = Picture();
    if (!picture.HasAxes || picture.RowCount < 1 || m_options.Type == chart2DXY)
        return;
    double rows = double(picture.RowCount) / factor;
    rows = factor > 1 ? std::min(rows, double(picture.RowCount - 1)) : std::max(rows, double(picture.RowCount + 1));
    const double fixed = double(picture.FirstRow) + aroundShare * double(picture.RowCount);
    const qint64 shown = std::max(qint64(std::llround(rows)), qint64(1));
    ShowRows(qint64(std::llround(fixed - aroundShare * double(shown))), shown);
}

void Chart::wheelEvent(QWheelEvent *event)
{
    const ChartPicture &picture = Picture();
    const int turned = event->angleDelta().y();
    if (turned != 0 && picture.HasAxes) {
        const double share = (event->position().x() - picture.Plot.left()) / picture.Plot.width();
        Zoom(turned > 0 ? kZoomStep : 1 / kZoomStep, std::clamp(share, 0.0, 1.0));
    }
    event->accept();
}

void Chart::keyPressEvent(QKeyEvent *event)
{
    const qint64 rows = RowsShown(), step = std::max(rows / 4, qint64(1));
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        Zoom(kZoomStep, 0.5);
        break;
    case Qt::Key_Minus:
        Zoom(1 / kZoomStep, 0.5);
        break;
    case Qt::Key_Left:
        ShowRows(m_options.FirstRow - step, rows);
        break;
    case Qt::Key_Right:
        ShowRows(m_options.FirstRow + step, rows);
        break;
    case Qt::Key_Home:
        ShowAllRows();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void Chart::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        emit MouseUp(Qt::RightButton, rect().center());
    event->accept();
}

void Chart::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    m_pointer = kNowhere;
    update();
}

void Chart::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void Chart::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}
