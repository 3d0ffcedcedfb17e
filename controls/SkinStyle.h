#pragma once
// The style that draws the program's widgets: the same on every desktop, since the palette of the skin suits no other
// one. It differs from Qt's own in what that draws in fixed dark colours (the title bars of the children and
// the buttons of a maximised child in the menu bar), in headings, which stand on the plain colour, since shaded
// their text could not be read, and in the mark of the control that has the keyboard. Interface thread; nothing
// raises.

#include <QProxyStyle>

class SkinStyle : public QProxyStyle
{
    Q_OBJECT
public:
    SkinStyle();

    // Menus that Qt makes when it needs them (of a text box, of what a narrow bar has no room for) get the
    // look of the window that they belong to.
    void polish(QWidget *widget) override;
    using QProxyStyle::polish;

    // Makes it the program's style, and gives tooltips their colours. A second call changes nothing.
    static void Use();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    QIcon standardIcon(StandardPixmap picture, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
};
