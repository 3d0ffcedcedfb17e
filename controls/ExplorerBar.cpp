#include "controls/ExplorerBar.h"
#include "controls/ControlError.h"
#include "controls/Skin.h"
#include <algorithm>

namespace {

[[noreturn]] void Raise(int number)
{
    throw ControlError(number, number == ctlErrKeyNotUnique      ? QStringLiteral("Key is not unique in collection")
                               : number == ctlErrElementNotFound ? QStringLiteral("Element not found")
                                                                 : QStringLiteral("Index out of bounds"));
}

// The one bar whose entries get their keys by themselves.
const QString kConnectionsBar = QStringLiteral("CONN");

} // namespace

void ExplorerBarItem::SetText(const QString &text)
{
    m_text = text;
    m_wrapWidth = -1;
    m_bar->m_owner->Changed();
}

QString ExplorerBarItem::Line() const
{
    constexpr qsizetype shown = 500; // characters
    QString line = m_text.left(shown);
    for (QChar &c : line)
        if (c < u' ')
            c = u' ';
    return line;
}

void ExplorerBarItem::SetIcon(int icon)
{
    m_icon = icon;
    m_bar->m_owner->Changed();
}

void ExplorerBarItem::SetEnabled(bool on)
{
    m_enabled = on;
    m_bar->m_owner->Changed();
}

void ExplorerBarItem::EnsureVisible()
{
    if (!m_bar->Expanded())
        m_bar->SetExpanded(true);
    m_bar->m_owner->Show({m_bar, this});
}

ExplorerBarItem *ExplorerBarItems::Add(const QString &key, const QString &text, int icon, const QString &toolTip,
                                       const QString &tag)
{
    QString own = key;
    if (own.isEmpty() && m_bar->m_key == kConnectionsBar)
        own = QStringLiteral("C:") + QString::number(++m_counter);
    if (!own.isEmpty() && Find(own))
        Raise(ctlErrKeyNotUnique);
    auto item = std::make_unique<ExplorerBarItem>();
    item->m_bar = m_bar;
    item->m_key = own;
    item->m_text = text;
    item->m_icon = icon;
    item->m_toolTip = toolTip;
    item->m_tag = tag;
    m_items.push_back(std::move(item));
    m_bar->m_owner->Changed();
    return m_items.back().get();
}

ExplorerBarItem *ExplorerBarItems::Item(int index) const
{
    if (index < 1 || index > Count())
        Raise(ctlErrIndex);
    return m_items[size_t(index) - 1].get();
}

ExplorerBarItem *ExplorerBarItems::Item(const QString &key) const
{
    ExplorerBarItem *const item = Find(key);
    if (!item)
        Raise(ctlErrElementNotFound);
    return item;
}

ExplorerBarItem *ExplorerBarItems::Find(const QString &key) const
{
    for (const auto &item : m_items)
        if (item->m_key == key && !key.isEmpty())
            return item.get();
    return nullptr;
}

void ExplorerBarItems::Remove(const QString &key)
{
    Remove(Item(key));
}

void ExplorerBarItems::Remove(ExplorerBarItem *item)
{
    const auto there =
        std::find_if(m_items.begin(), m_items.end(), [item](const auto &candidate) { return candidate.get() == item; });
    if (there == m_items.end())
        Raise(ctlErrElementNotFound);
    m_bar->m_owner->Forget(item);
    m_items.erase(there);
    m_bar->m_owner->Changed();
}

void ExplorerBarItems::Clear()
{
    for (const auto &item : m_items)
        m_bar->m_owner->Forget(item.get());
    m_items.clear();
    m_bar->m_owner->Changed();
}

void ExplorerBarBar::SetTitle(const QString &title)
{
    m_title = title;
    m_owner->Changed();
}

void ExplorerBarBar::SetExpanded(bool on)
{
    if (m_expanded == on)
        return;
    m_expanded = on;
    m_owner->Changed();
}

void ExplorerBarBar::SetWraps(bool on)
{
    if (m_wraps == on)
        return;
    m_wraps = on;
    m_owner->Changed();
}

ExplorerBar::ExplorerBar(QWidget *parent)
    : QAbstractScrollArea(parent), m_top(SkinColour(SkinRole::BarTop)), m_bottom(SkinColour(SkinRole::BarBottom)),
      m_header(SkinColour(SkinRole::BarHeader)), m_headerText(SkinColour(SkinRole::BarHeaderText)),
      m_itemText(SkinColour(SkinRole::BarItemText)), m_hoverGround(SkinColour(SkinRole::BarHover)),
      m_hoverText(SkinColour(SkinRole::BarHoverText))
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(QStringLiteral("Side bar"));
    viewport()->setMouseTracking(true);
}

ExplorerBar::~ExplorerBar() = default;

ExplorerBarBar *ExplorerBar::AddBar(const QString &key, const QString &title)
{
    if (FindBar(key))
        Raise(ctlErrKeyNotUnique);
    auto bar = std::make_unique<ExplorerBarBar>();
    bar->m_owner = this;
    bar->m_key = key;
    bar->m_title = title;
    bar->m_items.m_bar = bar.get();
    m_bars.push_back(std::move(bar));
    Changed();
    return m_bars.back().get();
}

void ExplorerBar::RemoveBar(const QString &key)
{
    ExplorerBarBar *const bar = FindBar(key);
    if (!bar)
        return;
    for (Spot *const spot : {&m_focus, &m_hover, &m_pressed})
        if (spot->bar == bar)
            *spot = {};
    std::erase_if(m_bars, [bar](const auto &candidate) { return candidate.get() == bar; });
    Changed();
}

ExplorerBarBar *ExplorerBar::Bar(int index) const
{
    if (index < 1 || index > BarCount())
        Raise(ctlErrIndex);
    return m_bars[size_t(index) - 1].get();
}

ExplorerBarBar *ExplorerBar::Bar(const QString &key) const
{
    ExplorerBarBar *const bar = FindBar(key);
    if (!bar)
        Raise(ctlErrElementNotFound);
    return bar;
}

ExplorerBarBar *ExplorerBar::FindBar(const QString &key) const
{
    for (const auto &bar : m_bars)
        if (bar->m_key == key)
            return bar.get();
    return nullptr;
}

void ExplorerBar::Forget(const ExplorerBarItem *item)
{
    for (Spot *const spot : {&m_focus, &m_hover, &m_pressed})
        if (spot->item == item)
            *spot = {};
}

void ExplorerBar::SetRedraw(bool on)
{
    m_lock = std::max(0, m_lock + (on ? -1 : 1));
    viewport()->setUpdatesEnabled(m_lock == 0);
    if (m_lock == 0)
        Changed();
}

void ExplorerBar::SetGradient(const QColor &top, const QColor &bottom)
{
    m_top = top;
    m_bottom = bottom;
    viewport()->update();
}

void ExplorerBar::SetHeaderColours(const QColor &ground, const QColor &text)
{
    m_header = ground;
    m_headerText = text;
    viewport()->update();
}

void ExplorerBar::SetItemColours(const QColor &text, const QColor &hover, const QColor &hoverText)
{
    m_itemText = text;
    m_hoverGround = hover;
    m_hoverText = hoverText;
    viewport()->update();
}

ExplorerBarItem *ExplorerBar::Current() const
{
    return m_focus.item;
}
