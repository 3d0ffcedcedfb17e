#include "controls/Splitter.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace {
constexpr int keyStep = 10 * TwipsPerPixel;
}

Splitter::Splitter(QWidget *parent, SplitOrientation orientation) : QWidget(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("Splitter"));
    SetOrientation(orientation);
}

void Splitter::SetOrientation(SplitOrientation orientation)
{
    m_orientation = orientation;
    setCursor(orientation == spltVertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    update();
}

int Splitter::Border(int edge) const
{
    return edge >= 1 && edge <= 4 ? m_borders[size_t(edge)] : 0;
}

void Splitter::SetBorder(int edge, int twips)
{
    if (edge >= 1 && edge <= 4)
        m_borders[size_t(edge)] = twips;
}

int Splitter::Position() const
{
    return ToTwips(Along(pos()));
}

int Splitter::Within(int twips) const
{
    const bool standing = m_orientation == spltVertical;
    const int least = m_borders[standing ? 1 : 2];
    int most = twips;
    if (const QWidget *const area = parentWidget())
        most = ToTwips(standing ? area->width() - width() : area->height() - height()) - m_borders[standing ? 3 : 4];
    return std::max(least, std::min(twips, most));
}

void Splitter::SetPosition(int twips)
{
    const int at = ToPixels(Within(twips));
    if (m_orientation == spltVertical)
        move(at, y());
    else
        move(x(), at);
}

void Splitter::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_grip = Along(event->position().toPoint());
}

void Splitter::mouseMoveEvent(QMouseEvent *event)
{
    if (m_grip < 0)
        return;
    const int wanted = Along(mapToParent(event->position().toPoint())) - m_grip;
    SetPosition(ToTwips(wanted));
    emit Moving(Position());
}

void Splitter::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_grip < 0)
        return;
    m_grip = -1;
    emit Moved(Position());
}

void Splitter::keyPressEvent(QKeyEvent *event)
{
    const bool standing = m_orientation == spltVertical;
    int step = 0;
    if (event->key() == (standing ? Qt::Key_Left : Qt::Key_Up))
        step = -keyStep;
    else if (event->key() == (standing ? Qt::Key_Right : Qt::Key_Down))
        step = keyStep;
    if (step == 0)
        return QWidget::keyPressEvent(event);
    SetPosition(Position() + step);
    emit Moved(Position());
}

void Splitter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    const QColor grip = hasFocus() ? SkinColour(SkinRole::Focus) : palette().color(QPalette::Mid);
    const QPoint middle = rect().center();
    for (int i = -2; i <= 2; ++i) {
        const QPoint dot = m_orientation == spltVertical ? QPoint(0, i * 5) : QPoint(i * 5, 0);
        painter.fillRect(QRect(middle + dot, QSize(2, 2)), grip);
    }
}
