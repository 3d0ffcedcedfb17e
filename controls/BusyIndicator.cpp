#include "controls/BusyIndicator.h"
#include <QPainter>
#include <QTimerEvent>
#include <cmath>
#include <numbers>

namespace {
constexpr int dots = 8;
constexpr int frameMilliseconds = 90;
} // namespace

BusyIndicator::BusyIndicator(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(QStringLiteral("Busy"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(sizeHint());
    hide();
}

QSize BusyIndicator::sizeHint() const
{
    return {32, 32};
}

void BusyIndicator::Play()
{
    show();
    if (!m_timer.isActive())
        m_timer.start(frameMilliseconds, this);
}

void BusyIndicator::Stop()
{
    m_timer.stop();
    hide();
}

void BusyIndicator::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    ++m_frame;
    update();
}

void BusyIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double side = std::min(width(), height());
    const QPointF middle(width() / 2.0, height() / 2.0);
    QColor colour = palette().color(QPalette::WindowText);
    for (int i = 0; i < dots; ++i) {
        const double angle = 2 * std::numbers::pi * i / dots;
        const int age = (m_frame % dots - i + dots) % dots; // 0: the head of the tail
        colour.setAlphaF(float(1.0 - 0.85 * age / (dots - 1)));
        painter.setBrush(colour);
        const QPointF at = middle + QPointF(std::sin(angle), -std::cos(angle)) * side * 0.36;
        const double radius = side * (0.105 - 0.045 * age / (dots - 1));
        painter.drawEllipse(at, radius, radius);
    }
}
