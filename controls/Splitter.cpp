#include "controls/Splitter.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include <QKeyEvent>
#include <QPainter>

namespace {
constexpr int kKeyStep = 10 * TwipsPerPixel;
}

Splitter::Splitter(QWidget *parent, SplitOrientation orientation) : QWidget(parent)
{
    m_split.SetSplitObject(this);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("Splitter"));
    SetOrientation(orientation);
}

void Splitter::SetOrientation(SplitOrientation orientation)
{
    m_split.SetOrientation(orientation);
    setCursor(orientation == spltVertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    update();
}

int Splitter::Pointer(const QMouseEvent *event) const
{
    const QPoint at = mapToParent(event->position().toPoint());
    return ToTwips(Orientation() == spltVertical ? at.x() : at.y());
}

void Splitter::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_split.SplitterMouseDown(Pointer(event));
}

void Splitter::mouseMoveEvent(QMouseEvent *event)
{
    if (m_split.SplitterFormMouseMove(Pointer(event)))
        emit Moving(Position());
}

void Splitter::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_split.SplitterFormMouseUp(Pointer(event)))
        return;
    emit Moved(Position());
    emit Dropped(m_split.Start(), m_split.Travel());
}

void Splitter::keyPressEvent(QKeyEvent *event)
{
    const bool standing = Orientation() == spltVertical;
    int step = 0;
    if (event->key() == (standing ? Qt::Key_Left : Qt::Key_Up))
        step = -kKeyStep;
    else if (event->key() == (standing ? Qt::Key_Right : Qt::Key_Down))
        step = kKeyStep;
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
        const QPoint dot = Orientation() == spltVertical ? QPoint(0, i * 5) : QPoint(i * 5, 0);
        painter.fillRect(QRect(middle + dot, QSize(2, 2)), grip);
    }
}
