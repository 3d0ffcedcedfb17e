#include "controls/BusyIndicator.h"
#include <QPainter>
#include <QTimerEvent>
#include <cmath>
#include <numbers>

namespace {
constexpr int kDots = 8;
constexpr int kFrameMilliseconds = 90;
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
        m_timer.start(kFrameMilliseconds, this);
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
    for (int i = 0; i < kDots; ++i) {
        const double angle = 2 * std::numbers::pi * i / kDots;
        const int age = (m_frame % kDots - i + kDots) % kDots; // 0: the head of the tail
        colour.setAlphaF(float(1.0 - 0.85 * age / (kDots - 1)));
        painter.setBrush(colour);
        const QPointF at = middle + QPointF(std::sin(angle), -std::cos(angle)) * side * 0.36;
        const double radius = side * (0.105 - 0.045 * age / (kDots - 1));
        painter.drawEllipse(at, radius, radius);
    }
}
