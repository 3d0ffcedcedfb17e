// The mouse on a table map: presses, carries, drags of fields, tips.

#include "visual/MapSurface.h"

#include "controls/Attempt.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QDrag>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>

namespace {

int ButtonNumber(Qt::MouseButton button)
{
    return button == Qt::LeftButton ? 1 : button == Qt::RightButton ? 2 : button == Qt::MiddleButton ? 4 : 0;
}

int ButtonNumber(Qt::MouseButtons buttons)
{
    int number = 0;
    for (const Qt::MouseButton one : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        number += buttons.testFlag(one) ? ButtonNumber(one) : 0;
    return number;
}

int ShiftNumber(Qt::KeyboardModifiers keys)
{
    return (keys & Qt::ShiftModifier ? 1 : 0) + (keys & Qt::ControlModifier ? 2 : 0) + (keys & Qt::AltModifier ? 4 : 0);
}

} // namespace

MapSurface::MapSurface(ucTableMap &map) : QWidget(&map), m_map(map), m(*map.m)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Table map"));
    MapAccessInstalled();
}

void MapSurface::ForgetMouse()
{
    m_pressed = {};
    m_button = Qt::NoButton;
    m_dragging = m_moved = false;
}

bool MapSurface::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto *help = static_cast<QHelpEvent *>(event);
    const QString tip = Tip(help->pos());
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), tip, this);
    return true;
}

static QString AsPlain(const QString &text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<p>") + text.toHtmlEscaped() + QStringLiteral("</p>") : text;
}

QString MapSurface::Tip(const QPoint &pixel) const
{
    const MapHit hit = m.At(pixel);
    const MapTable *table = m.tables.At(hit.table);
    if (hit.what == MapHit::Item)
        return AsPlain(table->Items[size_t(hit.item - 1)].Text);
    if (const MapJoin *join = m.joins.OfLayer(hit.join))
        return AsPlain(QStringLiteral("%1.%2 = %3.%4 (%5)")
                           .arg(join->Table1, join->Field1, join->Table2, join->Field2, join->Operator));
    if (!table)
        return {};
    return AsPlain(table->Alias == table->Tag ? table->Tag : table->Alias + QStringLiteral(": ") + table->Tag);
}

void MapSurface::mousePressEvent(QMouseEvent *event)
{
    Attempt([&] { Press(event); });
}

void MapSurface::mouseReleaseEvent(QMouseEvent *event)
{
    Attempt([&] { Release(event); });
}

void MapSurface::Press(QMouseEvent *event)
{
    if (m_button != Qt::NoButton) // one at a time
        return;
    const QPoint at = event->position().toPoint();
    m_button = event->button();
    m_pressed = m.At(at);
    m_from = m_at = at;
    m_moved = false;
    m.keySource = 0;
    m.keyJoin = m_pressed.join;
    switch (m_pressed.what) {
    case MapHit::Join:
        SetTag(m_map.mnuPopup, QString::number(m_pressed.join));
        if (m_button == Qt::RightButton) {
            m_button = Qt::NoButton; // the menu takes the release
            m.ShowJoinMenu(m_pressed.join, at);
        }
        break;
    case MapHit::Heading:
        if (m_button == Qt::LeftButton)
            m.StartCarry(m_pressed.table);
        break;
    case MapHit::Item:
    case MapHit::Blank:
        if (m_pressed.item)
            m.tables.At(m_pressed.table)->Selected = m_pressed.item;
        m.Select(m_pressed.table);
        break;
    case MapHit::Nothing:
        emit m_map.MouseDown(ButtonNumber(m_button), ShiftNumber(event->modifiers()), ToTwips(at.x()), ToTwips(at.y()));
        break;
    }
    update();
}

void MapSurface::mouseMoveEvent(QMouseEvent *event)
{
    Attempt([&] {
        m_at = event->position().toPoint();
        m_moved = m_moved || (m_at - m_from).manhattanLength() >= QApplication::startDragDistance();
        const auto tell = [&] {
            emit m_map.MouseMove(ButtonNumber(event->buttons()), ShiftNumber(event->modifiers()), ToTwips(m_at.x()),
                                 ToTwips(m_at.y()));
        };
        if (m.tables.CarriedTable) {
            tell();
            if (m_moved) // a press that trembles moves nothing
                m.CarryTo(m_at);
        } else if (m_dragging) {
            update();
            if (!rect().contains(m_at))
                DragOut();
        } else if (m_button == Qt::LeftButton && m_pressed.what == MapHit::Item && m_moved) {
            m.dragSource = m_pressed.table;
            m_dragging = true;
            update();
        } else {
            const MapHit hit = m.At(m_at);
            setCursor(hit.what == MapHit::Join      ? Qt::PointingHandCursor
                      : hit.what == MapHit::Heading ? Qt::SizeAllCursor
                                                    : Qt::ArrowCursor);
            if (hit.what == MapHit::Nothing)
                tell();
        }
    });
}

void MapSurface::Release(QMouseEvent *event)
{
    if (event->button() != m_button)
        return;
    const QPointer<MapSurface> self(this); // what is told may close the window
    const QPoint at = event->position().toPoint();
    const MapHit pressed = m_pressed;
    const bool dragging = m_dragging;
    const int button = ButtonNumber(event->button()), shift = ShiftNumber(event->modifiers());
    ForgetMouse();
    if (m.tables.CarriedTable) {
        emit m_map.MouseUp(button, shift, ToTwips(at.x()), ToTwips(at.y()), false);
        if (self)
            m.EndCarry();
        return;
    }
    if (dragging) {
        update();
        const MapHit hit = m.At(at);
        if (hit.table)
            m.Drop(m.dragSource, hit.table, hit.item);
        return;
    }
    if (pressed.what == MapHit::Join)
        return;
    const MapTable *table = m.tables.At(pressed.table);
    if (!table) {
        emit m_map.MouseUp(button, shift, ToTwips(at.x()), ToTwips(at.y()), false);
        return;
    }
    if (button == 2) {
        m.ShowTableMenu(pressed.table, at);
        return;
    }
    const MapHit hit = m.At(at);
    if (button == 1 && hit.table == pressed.table)
        m.ClickItem(pressed.table, pressed.item, pressed.check && hit.check && hit.item == pressed.item);
    if (self)
        emit m_map.MouseUp(button, shift, ToTwips(at.x()), ToTwips(at.y()), true);
}

void MapSurface::mouseDoubleClickEvent(QMouseEvent *event)
{
    Attempt([&] {
        const MapHit hit = m.At(event->position().toPoint());
        if (hit.what == MapHit::Join && event->button() == Qt::LeftButton) {
            SetTag(m_map.mnuPopup, QString::number(hit.join));
            m_map.ShowJoinProperties(hit.join);
        } else {
            Press(event);
        }
    });
}

void MapSurface::wheelEvent(QWheelEvent *event)
{
    const bool across =
        event->modifiers() & Qt::ShiftModifier || qAbs(event->angleDelta().x()) > qAbs(event->angleDelta().y());
    QScrollBar *bar = across ? m_map.HScroll1 : m_map.VScroll1;
    if (bar->isEnabled())
        QCoreApplication::sendEvent(bar, event);
    event->accept();
}

void MapSurface::hideEvent(QHideEvent *event)
{
    m.EndCarry();
    ForgetMouse();
    QWidget::hideEvent(event);
}

// The pointer leaves the map with a field: from here on the desktop carries it.
void MapSurface::DragOut()
{
    const MapTable *table = m.tables.At(m.dragSource);
    if (!table || table->Selected < 1 || size_t(table->Selected) > table->Items.size())
        return;
    const QString field = table->Items[size_t(table->Selected - 1)].Text;
    ForgetMouse();
    update();
    auto *mime = new QMimeData;
    mime->setData(ucTableMap::FieldMimeType(), field.toUtf8());
    mime->setText(table->Alias + u'.' + field);
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->exec(Qt::CopyAction);
}

void MapSurface::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() == this && event->mimeData()->hasFormat(ucTableMap::FieldMimeType()))
        event->acceptProposedAction();
}

void MapSurface::dragMoveEvent(QDragMoveEvent *event)
{
    const bool ours = event->source() == this && event->mimeData()->hasFormat(ucTableMap::FieldMimeType());
    event->setAccepted(ours && m.At(event->position().toPoint()).table);
}

void MapSurface::dropEvent(QDropEvent *event)
{
    if (event->source() != this || !event->mimeData()->hasFormat(ucTableMap::FieldMimeType()))
        return;
    event->acceptProposedAction();
    Attempt([&] {
        const MapHit hit = m.At(event->position().toPoint());
        if (hit.table)
            m.Drop(m.dragSource, hit.table, hit.item);
    });
}
