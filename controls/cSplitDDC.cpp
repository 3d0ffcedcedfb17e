#include "controls/cSplitDDC.h"
#include "controls/Twips.h"
#include <algorithm>

void cSplitDDC::SetBorder(int edge, int twips)
{
    if (edge >= 1 && edge <= 4)
        m_borders[size_t(edge)] = twips;
}

int cSplitDDC::Position() const
{
    if (!m_bar)
        return 0;
    return ToTwips(m_orientation == spltVertical ? m_bar->x() : m_bar->y());
}

int cSplitDDC::Within(int twips) const
{
    const bool standing = m_orientation == spltVertical;
    const int least = m_borders[standing ? 1 : 2];
    int most = twips;
    if (const QWidget *const area = m_bar ? m_bar->parentWidget() : nullptr)
        most = ToTwips(standing ? area->width() - m_bar->width() : area->height() - m_bar->height()) -
               m_borders[standing ? 3 : 4];
    return std::max(least, std::min(twips, most));
}

void cSplitDDC::SetPosition(int twips)
{
    if (!m_bar)
        return;
    const int at = ToPixels(Within(twips));
    if (m_orientation == spltVertical)
        m_bar->move(at, m_bar->y());
    else
        m_bar->move(m_bar->x(), at);
}

void cSplitDDC::SplitterMouseDown(int pointer)
{
    m_held = true;
    m_start = Position();
    m_grip = pointer - m_start;
}

bool cSplitDDC::SplitterFormMouseMove(int pointer)
{
    if (m_held)
        SetPosition(pointer - m_grip);
    return m_held;
}

bool cSplitDDC::SplitterFormMouseUp(int pointer)
{
    if (!m_held)
        return false;
    m_held = false;
    m_travel = pointer - m_start;
    return m_travel != m_grip;
}
