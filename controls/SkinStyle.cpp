#include "controls/SkinStyle.h"
#include "controls/IconInk.h"
#include "controls/Skin.h"
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionTitleBar>
#include <QToolButton>
#include <QToolTip>

namespace {

const QColor s_glyph = SkinColour(SkinRole::FixedText);

struct GlyphRow
{
    QStyle::StandardPixmap picture;
    IconDrawing draw;
};

const std::initializer_list<GlyphRow> &Glyphs()
{
    static const std::initializer_list<GlyphRow> rows = {
        {QStyle::SP_TitleBarMinButton,
         [](IconInk &i) {
             i.Line({{3, 12}, {13, 12}}, s_glyph, 2);
         }},
        {QStyle::SP_TitleBarMaxButton,
         [](IconInk &i) {
             i.Frame({3, 3, 10, 10}, s_glyph, 0, 1.6);
             i.Line({{3, 4}, {13, 4}}, s_glyph, 2);
         }},
        {QStyle::SP_TitleBarNormalButton,
         [](IconInk &i) {
             i.Line({{5.5, 4.5}, {5.5, 2.5}, {13.5, 2.5}, {13.5, 9.5}, {11.5, 9.5}}, s_glyph, 1.6);
             i.Frame({2.5, 6, 8, 7.5}, s_glyph, 0, 1.6);
         }},
        {QStyle::SP_ToolBarHorizontalExtensionButton, // there is more than a narrow bar has room for
         [](IconInk &i) {
             i.Line({{2.5, 3}, {7, 8}, {2.5, 13}}, s_glyph, 2.4);
             i.Line({{9, 3}, {13.5, 8}, {9, 13}}, s_glyph, 2.4);
         }},
        {QStyle::SP_TitleBarCloseButton,
         [](IconInk &i) {
             i.Line({{3.5, 3.5}, {12.5, 12.5}}, s_glyph, 2);
             i.Line({{12.5, 3.5}, {3.5, 12.5}}, s_glyph, 2);
         }},
    };
    return rows;
}

// Qt takes the ground from the highlight, a light green on which no title can be read.
QPalette TitlePalette(QPalette palette, bool active)
{
    palette.setColor(QPalette::Highlight, SkinColour(active ? SkinRole::Fixed : SkinRole::Form));
    return palette;
}

void DrawFocus(QPainter &painter, const QRect &rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(SkinColour(SkinRole::Focus), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.restore();
}

} // namespace

SkinStyle::SkinStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void SkinStyle::Use()
{
    if (!qobject_cast<SkinStyle *>(QApplication::style()))
        QApplication::setStyle(new SkinStyle); // the application owns it
    QPalette palette = QToolTip::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::ToolTipBase, SkinColour(SkinRole::Editor));
        palette.setColor(group, QPalette::ToolTipText, SkinColour(SkinRole::FixedText));
    }
    QToolTip::setPalette(palette);
}

void SkinStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QMenu *>(widget) && widget->parentWidget() && IsSkinned(widget->parentWidget()->window()))
        ApplySkin(widget);
}

void SkinStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                   const QWidget *widget) const
{
    const auto *bar = control == CC_TitleBar ? qstyleoption_cast<const QStyleOptionTitleBar *>(option) : nullptr;
    if (!bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control == CC_ToolButton && option->state & State_HasFocus)
            DrawFocus(*painter, option->rect.adjusted(1, 1, -1, -1));
        return;
    }
    // Its buttons are those of an active window, which are white; its text would come twice, for a shadow.
    const bool active = bar->titleBarState & State_Active;
    QStyleOptionTitleBar own(*bar);
    own.palette = TitlePalette(bar->palette, active);
    own.titleBarState |= State_Active;
    own.text.clear();
    QProxyStyle::drawComplexControl(control, &own, painter, widget);
    const QRect room = proxy()->subControlRect(CC_TitleBar, bar, SC_TitleBarLabel, widget).adjusted(6, 0, -6, 0);
    painter->save();
    painter->setPen(SkinColour(active ? SkinRole::FixedText : SkinRole::FormText));
    const QString text = painter->fontMetrics().elidedText(bar->text, Qt::ElideRight, room.width());
    painter->drawText(room, int(Qt::AlignCenter) | int(Qt::TextSingleLine), text);
    painter->restore();
}

void SkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    const auto *focus =
        element == PE_FrameFocusRect ? qstyleoption_cast<const QStyleOptionFocusRect *>(option) : nullptr;
    if (!focus)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!(focus->state & State_KeyboardFocusChange) || qobject_cast<const QToolButton *>(widget))
        return; // a tool button's is drawn whole
    DrawFocus(*painter, focus->rect);
}

void SkinStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    if (element != CE_HeaderSection) {
        QProxyStyle::drawControl(element, option, painter, widget);
        // A default button that has the keyboard looks as one that has not.
        if (element == CE_PushButton && option->state & State_HasFocus && option->state & State_KeyboardFocusChange)
            DrawFocus(*painter, option->rect.adjusted(2, 2, -2, -2));
        return;
    }
    const QRect rect = option->rect;
    painter->fillRect(rect, option->palette.brush(QPalette::Button));
    painter->setPen(SkinColour(SkinRole::Form));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());
}

QIcon SkinStyle::standardIcon(StandardPixmap picture, const QStyleOption *option, const QWidget *widget) const
{
    for (const GlyphRow &row : Glyphs())
        if (row.picture == picture)
            return DrawnIcon(row.draw);
    return QProxyStyle::standardIcon(picture, option, widget);
}
