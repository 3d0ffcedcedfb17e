// Layout, painting, mouse and keys of the side bar.

#include "controls/ExplorerBar.h"
#include "controls/Icons.h"
#include "controls/Skin.h"
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

namespace {
constexpr int kMargin = 8, kGap = 8, kIconSide = 16;
constexpr int kWrapped = int(Qt::AlignVCenter) | int(Qt::AlignLeft) | int(Qt::TextWordWrap) | int(Qt::TextWrapAnywhere);

int LineHeight(const QWidget *widget)
{
    return std::max(widget->fontMetrics().height() + 10, kIconSide + 8);
}
} // namespace

int ExplorerBar::ItemHeight(const ExplorerBarItem &item, int width) const
{
    const int line = LineHeight(this);
    if (!item.m_bar->m_wraps)
        return line;
    const int room = std::max(1, width - kIconSide - 16 - 6);
    if (item.m_wrapWidth != room) {
        item.m_wrapWidth = room;
        item.m_wrapHeight = fontMetrics().boundingRect(QRect(0, 0, room, 1 << 20), kWrapped, item.Line()).height();
    }
    return std::max(line, item.m_wrapHeight + 8);
}

std::vector<std::pair<ExplorerBar::Spot, QRect>> ExplorerBar::Layout() const
{
    std::vector<std::pair<Spot, QRect>> spots;
    const int line = LineHeight(this);
    const int width = viewport()->width() - 2 * kMargin;
    int y = kMargin - verticalScrollBar()->value();
    for (const auto &bar : m_bars) {
        spots.push_back({{bar.get(), nullptr}, QRect(kMargin, y, width, line)});
        y += line;
        if (bar->m_expanded) {
            y += 2;
            for (const auto &item : bar->m_items.m_items) {
                const int height = ItemHeight(*item, width);
                spots.push_back({{bar.get(), item.get()}, QRect(kMargin, y, width, height)});
                y += height;
            }
        }
        y += kGap;
    }
    return spots;
}

void ExplorerBar::Changed()
{
    if (m_lock > 0)
        return;
    const std::vector<std::pair<Spot, QRect>> spots = Layout();
    const int bottom = spots.empty() ? 0 : spots.back().second.bottom() + 1 + verticalScrollBar()->value() + kMargin;
    verticalScrollBar()->setRange(0, std::max(0, bottom - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(LineHeight(this));
    viewport()->update();
}

ExplorerBar::Spot ExplorerBar::SpotAt(const QPoint &position) const
{
    for (const auto &[spot, rect] : Layout())
        if (rect.contains(position))
            return spot;
    return {};
}

ExplorerBarItem *ExplorerBar::ItemAt(const QPoint &viewportPosition) const
{
    return SpotAt(viewportPosition).item;
}

QRect ExplorerBar::ItemRect(const ExplorerBarItem *item) const
{
    for (const auto &[spot, rect] : Layout())
        if (item && spot.item == item)
            return rect;
    return {};
}

QRect ExplorerBar::HeaderRect(const ExplorerBarBar *bar) const
{
    for (const auto &[spot, rect] : Layout())
        if (bar && spot.bar == bar && !spot.item)
            return rect;
    return {};
}

void ExplorerBar::Show(const Spot &wanted)
{
    for (const auto &[spot, rect] : Layout()) {
        if (!(spot == wanted))
            continue;
        QScrollBar *const bar = verticalScrollBar();
        if (rect.top() < kMargin)
            bar->setValue(bar->value() + rect.top() - kMargin);
        else if (rect.bottom() > viewport()->height() - kMargin)
            bar->setValue(bar->value() + rect.bottom() - viewport()->height() + kMargin);
    }
    viewport()->update();
}

void ExplorerBar::Press(const Spot &spot)
{
    if (spot.item) {
        if (spot.item->m_enabled)
            emit ItemClick(spot.item);
    } else if (spot.bar) {
        spot.bar->SetExpanded(!spot.bar->m_expanded);
        emit BarClick(spot.bar);
    }
}

void ExplorerBar::MoveFocus(int step)
{
    const std::vector<std::pair<Spot, QRect>> spots = Layout();
    if (spots.empty())
        return;
    const auto here =
        std::find_if(spots.begin(), spots.end(), [this](const auto &candidate) { return candidate.first == m_focus; });
    const qint64 from = here == spots.end() ? (step > 0 ? -1 : qint64(spots.size())) : here - spots.begin();
    const qint64 to = std::clamp<qint64>(from + step, 0, qint64(spots.size()) - 1);
    m_focus = spots[size_t(to)].first;
    Show(m_focus);
}

void ExplorerBar::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    QLinearGradient ground(0, 0, 0, viewport()->height());
    ground.setColorAt(0, m_top);
    ground.setColorAt(1, m_bottom);
    painter.fillRect(viewport()->rect(), ground);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto &[spot, rect] : Layout()) {
        if (rect.bottom() < 0 || rect.top() > viewport()->height())
            continue;
        const QRectF box = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
        const bool focus = hasFocus() && spot == m_focus;
        const bool hover = spot == m_hover;
        painter.setPen(focus ? QPen(SkinColour(SkinRole::Focus), 1.5) : QPen(Qt::NoPen));
        if (!spot.item) {
            painter.setBrush(m_header);
            painter.drawRoundedRect(box, 4, 4);
            QFont bold = font();
            bold.setBold(true);
            painter.setFont(bold);
            painter.setPen(hover ? m_hoverText : m_headerText);
            const QRect room = rect.adjusted(10, 0, -24, 0);
            painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                             painter.fontMetrics().elidedText(spot.bar->m_title, Qt::ElideRight, room.width()));
            const QPointF middle(rect.right() - 13, rect.center().y() + 0.5);
            const double lift = spot.bar->m_expanded ? 2.2 : -2.2;
            painter.setPen(QPen(painter.pen().color(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(
                QPolygonF({middle + QPointF(-4, lift), middle + QPointF(0, -lift), middle + QPointF(4, lift)}));
            painter.setFont(font());
            continue;
        }
        const bool enabled = spot.item->m_enabled && isEnabled();
        painter.setBrush(hover && enabled ? QBrush(m_hoverGround) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(box, 4, 4);
        const QIcon icon = spot.item->m_icon > 0 ? StateIcon(spot.item->m_icon) : ToolIcon(spot.item->m_key);
        icon.paint(&painter, QRect(rect.left() + 8, rect.center().y() - kIconSide / 2 + 1, kIconSide, kIconSide),
                   Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
        QColor text = hover && enabled ? m_hoverText : m_itemText;
        if (!enabled)
            text = SkinColour(SkinRole::DisabledText);
        painter.setPen(text);
        const QRect room = rect.adjusted(kIconSide + 16, 0, -6, 0);
        if (spot.bar->m_wraps)
            painter.drawText(room, kWrapped, spot.item->Line());
        else
            painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                             fontMetrics().elidedText(spot.item->Line(), Qt::ElideRight, room.width()));
    }
}

void ExplorerBar::resizeEvent(QResizeEvent *)
{
    Changed();
}

void ExplorerBar::mousePressEvent(QMouseEvent *event)
{
    const Spot spot = SpotAt(event->position().toPoint());
    if (!spot.bar)
        return;
    m_focus = spot;
    m_pressed = event->button() == Qt::LeftButton ? spot : Spot();
    viewport()->update();
}

void ExplorerBar::mouseReleaseEvent(QMouseEvent *event)
{
    const Spot spot = SpotAt(event->position().toPoint());
    const Spot pressed = m_pressed;
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = {};
    if (spot.bar && spot == pressed)
        Press(spot);
}

void ExplorerBar::mouseMoveEvent(QMouseEvent *event)
{
    const Spot spot = SpotAt(event->position().toPoint());
    if (spot == m_hover)
        return;
    m_hover = spot;
    viewport()->setCursor(spot.bar ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

void ExplorerBar::contextMenuEvent(QContextMenuEvent *event)
{
    const bool keyboard = event->reason() == QContextMenuEvent::Keyboard;
    ExplorerBarItem *const item = keyboard ? m_focus.item : ItemAt(event->pos());
    if (!item)
        return;
    const QPoint at = keyboard ? viewport()->mapToGlobal(ItemRect(item).center()) : event->globalPos();
    event->accept();
    emit ItemRightClick(item, at);
}

bool ExplorerBar::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        auto *const help = static_cast<QHelpEvent *>(event);
        const ExplorerBarItem *const item = ItemAt(help->pos());
        if (item)
            QToolTip::showText(help->globalPos(), item->m_toolTip.isEmpty() ? item->m_text : item->m_toolTip, this);
        else
            QToolTip::hideText();
        return true;
    }
    if (event->type() == QEvent::Leave) {
        m_hover = {};
        viewport()->update();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void ExplorerBar::keyPressEvent(QKeyEvent *event)
{
    constexpr int everything = 1 << 20;
    switch (event->key()) {
    case Qt::Key_Up:
        return MoveFocus(-1);
    case Qt::Key_Down:
        return MoveFocus(1);
    case Qt::Key_PageUp:
        return MoveFocus(-10);
    case Qt::Key_PageDown:
        return MoveFocus(10);
    case Qt::Key_Home:
        return MoveFocus(-everything);
    case Qt::Key_End:
        return MoveFocus(everything);
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (m_focus.bar && m_focus.bar->m_expanded == (event->key() == Qt::Key_Left)) {
            m_focus.item = nullptr;
            Press(m_focus);
        }
        return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Press(m_focus);
    case Qt::Key_F10: // keyboards without a menu key
        if (event->modifiers() == Qt::ShiftModifier && m_focus.item)
            emit ItemRightClick(m_focus.item, viewport()->mapToGlobal(ItemRect(m_focus.item).center()));
        return;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void ExplorerBar::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (!m_focus.bar)
        MoveFocus(1);
    viewport()->update();
}

void ExplorerBar::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

QSize ExplorerBar::sizeHint() const
{
    return {170, 300};
}
