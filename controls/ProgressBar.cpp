#include "controls/ProgressBar.h"

#include "controls/Skin.h"
#include <QPainter>

namespace {

constexpr int kBarSteps = 1000; // what a reader of the screen is told in: its numbers are no larger than an int

} // namespace

ProgressBar::ProgressBar(QWidget *parent) : QProgressBar(parent)
{
    setAccessibleName(QStringLiteral("Progress"));
    setRange(0, kBarSteps);
    setValue(0);
    setTextVisible(false);
    setFixedHeight(sizeHint().height());
}

QSize ProgressBar::sizeHint() const
{
    return {160, 14};
}

void ProgressBar::SetMax(qint64 max)
{
    m_max = std::max(qint64(0), max);
    SetValue(0);
}

void ProgressBar::SetValue(qint64 value)
{
    m_value = std::clamp(value, qint64(0), m_max);
    setValue(m_max > 0 ? int(double(m_value) / double(m_max) * kBarSteps) : 0);
    update();
}

QRect ProgressBar::Filled() const
{
    QRect inner = rect().adjusted(2, 2, -2, -2);
    inner.setWidth(m_max > 0 ? int(double(inner.width()) * double(m_value) / double(m_max)) : 0);
    if (isRightToLeft())
        inner.moveRight(rect().right() - 2);
    return inner;
}

void ProgressBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), SkinColour(SkinRole::List));
    painter.setPen(SkinColour(SkinRole::FormText));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.fillRect(Filled(), SkinColour(SkinRole::Selection));
}
