// The walk that paints a window's controls by kind. Everything goes through palettes: they pass from a window to its
// controls but not to the dialogs that belong to it, which keep the desktop's look.

#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/FlexGrid.h"
#include "controls/Skin.h"
#include "controls/SkinStyle.h"
#include "controls/StatusBar.h"
#include "sqltext/clsColorTable.h"
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTextEdit>
#include <QTreeView>
#include <QVariant>

namespace {

struct RoleRow
{
    QPalette::ColorRole role;
    SkinRole normal, disabled;
};
constexpr RoleRow kFormRoles[] = {
    {QPalette::Window, SkinRole::Form, SkinRole::Form},
    {QPalette::WindowText, SkinRole::FormText, SkinRole::DisabledText},
    {QPalette::Base, SkinRole::List, SkinRole::Form},
    {QPalette::AlternateBase, SkinRole::NullGround, SkinRole::Form},
    {QPalette::Text, SkinRole::ListText, SkinRole::DisabledText},
    {QPalette::PlaceholderText, SkinRole::ListText, SkinRole::DisabledText},
    {QPalette::Button, SkinRole::Button, SkinRole::List}, // the style lightens it
    {QPalette::ButtonText, SkinRole::ButtonText, SkinRole::DisabledText},
    {QPalette::BrightText, SkinRole::FixedText, SkinRole::DisabledText},
    {QPalette::Highlight, SkinRole::Selection, SkinRole::DisabledText},
    {QPalette::HighlightedText, SkinRole::SelectionText, SkinRole::SelectionText},
    {QPalette::ToolTipBase, SkinRole::Editor, SkinRole::Editor},
    {QPalette::ToolTipText, SkinRole::FixedText, SkinRole::FixedText},
    {QPalette::Link, SkinRole::Focus, SkinRole::DisabledText},
    {QPalette::LinkVisited, SkinRole::Focus, SkinRole::DisabledText},
    {QPalette::Light, SkinRole::Border, SkinRole::Form}, // disabled: or menus show their text twice
    {QPalette::Midlight, SkinRole::Border, SkinRole::Border},
    {QPalette::Mid, SkinRole::Border, SkinRole::Border},
    {QPalette::Dark, SkinRole::List, SkinRole::List},
    {QPalette::Shadow, SkinRole::Editor, SkinRole::Editor},
};

void Set(QPalette &palette, QPalette::ColorRole role, SkinRole normal, SkinRole disabled)
{
    palette.setColor(QPalette::Active, role, SkinColour(normal));
    palette.setColor(QPalette::Inactive, role, SkinColour(normal));
    palette.setColor(QPalette::Disabled, role, SkinColour(disabled));
}

QPalette FormPalette()
{
    QPalette palette;
    for (const RoleRow &row : kFormRoles)
        Set(palette, row.role, row.normal, row.disabled);
    return palette;
}

QPalette GroundedOn(SkinRole ground, SkinRole text)
{
    QPalette palette = FormPalette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
        Set(palette, role, ground, SkinRole::Form);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        Set(palette, role, text, SkinRole::DisabledText);
    return palette;
}

// The kinds in the order of the test; the first that says yes has painted the control.
using Painter = bool (*)(QWidget *control);
constexpr Painter kKinds[] = {
    [](QWidget *control) {
        auto *const grid = qobject_cast<FlexGrid *>(control);
        if (!grid)
            return false;
        grid->setPalette(FormPalette());
        grid->SetBackColor(SkinColour(SkinRole::List));
        grid->SetForeColor(SkinColour(SkinRole::ListText));
        grid->SetBackColorBkg(SkinColour(SkinRole::Editor));
        grid->SetBackColorFixed(SkinColour(SkinRole::Fixed));
        grid->SetForeColorFixed(SkinColour(SkinRole::FixedText));
        grid->SetBackColorSel(SkinColour(SkinRole::Selection), SkinColour(SkinRole::SelectionText));
        return true;
    },
    [](QWidget *control) {
        if (!qobject_cast<QPlainTextEdit *>(control) && !qobject_cast<QTextEdit *>(control))
            return false;
        QPalette palette = FormPalette();
        Set(palette, QPalette::Base, SkinRole::Editor, SkinRole::Editor);
        Set(palette, QPalette::Text, SkinRole::EditorText, SkinRole::DisabledText);
        control->setPalette(palette);
        return true;
    },
    [](QWidget *control) {
        if (!qobject_cast<QHeaderView *>(control))
            return false;
        control->setPalette(GroundedOn(SkinRole::Fixed, SkinRole::FixedText));
        return true;
    },
    [](QWidget *control) {
        if (!qobject_cast<QAbstractItemView *>(control) && !qobject_cast<QProgressBar *>(control))
            return false;
        control->setPalette(FormPalette());
        return true;
    },
    [](QWidget *control) {
        auto *const bar = qobject_cast<ExplorerBar *>(control);
        if (bar)
            ApplyBarSkin(bar);
        return bar != nullptr;
    },
    [](QWidget *control) {
        if (!qobject_cast<CommandBar *>(control) && !qobject_cast<QMenuBar *>(control) &&
            !qobject_cast<StatusBar *>(control))
            return false;
        control->setPalette(GroundedOn(SkinRole::Form, SkinRole::FixedText));
        control->setAutoFillBackground(true);
        return true;
    },
    [](QWidget *control) {
        if (!qobject_cast<QMenu *>(control))
            return false;
        control->setPalette(GroundedOn(SkinRole::BarTop, SkinRole::FixedText));
        return true;
    },
    [](QWidget *control) {
        auto *const combo = qobject_cast<QComboBox *>(control);
        if (!combo)
            return false;
        // One that takes text looks like a text box, one that only chooses like a button.
        combo->setPalette(combo->isEditable() ? GroundedOn(SkinRole::List, SkinRole::ListText) : FormPalette());
        combo->view()->setPalette(FormPalette());
        return true;
    },
    [](QWidget *control) {
        if (!qobject_cast<QLineEdit *>(control) && !qobject_cast<QCheckBox *>(control) &&
            !qobject_cast<QRadioButton *>(control))
            return false;
        // The style draws their frame in a shade of the window's colour, which is lost on a dark form.
        QPalette palette = FormPalette();
        Set(palette, QPalette::Window, SkinRole::FormText, SkinRole::DisabledText);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, QPalette::Window, SkinColour(SkinRole::FormText).lighter(125));
        control->setPalette(palette);
        return true;
    },
    [](QWidget *control) {
        auto *const area = qobject_cast<QMdiArea *>(control);
        if (!area)
            return false;
        area->setBackground(SkinColour(SkinRole::Editor));
        area->setPalette(FormPalette());
        return true;
    },
    [](QWidget *control) {
        control->setPalette(FormPalette());
        return true;
    },
};

void PaintByKind(QWidget *control)
{
    for (const Painter &kind : kKinds)
        if (kind(control))
            break;
}

// Every colour of the control's look, fixed, so that the window's does not reach it.
QPalette Frozen(const QPalette &look)
{
    QPalette palette;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            palette.setBrush(group, QPalette::ColorRole(role), look.brush(group, QPalette::ColorRole(role)));
    return palette;
}

// Windows of their own within the window (message boxes, file dialogs) are none of its controls.
bool BelongsTo(const QWidget *control, const QWidget *form)
{
    for (const QWidget *widget = control; widget && widget != form; widget = widget->parentWidget())
        if (widget->isWindow() && !qobject_cast<const QMenu *>(widget) && widget->windowType() != Qt::Popup)
            return false;
    return true;
}

bool Under(const QWidget *control, const QList<QWidget *> &tops)
{
    for (QWidget *const top : tops)
        if (control == top || top->isAncestorOf(control))
            return true;
    return false;
}

} // namespace

bool IsSkinned(const QWidget *window)
{
    return window && window->palette().color(QPalette::Active, QPalette::Window) == SkinColour(SkinRole::Form);
}

void InitColours()
{
    InitColorTable();
    SkinStyle::Use();
}

void ApplySkin(QWidget *form, const QString &excludedNames)
{
    if (!form)
        return;
    const QString excluded = QLatin1Char(',') + excludedNames + QLatin1Char(',');
    const QList<QWidget *> controls = form->findChildren<QWidget *>();
    QList<QWidget *> skipped;
    for (QWidget *const control : controls) {
        const QString name = control->objectName();
        if (!name.isEmpty() && excluded.contains(QLatin1Char(',') + name + QLatin1Char(',')))
            skipped << control;
    }
    for (QWidget *const control : skipped)
        control->setPalette(Frozen(control->palette()));
    if (qobject_cast<QMenu *>(form))
        PaintByKind(form);
    else
        form->setPalette(FormPalette());
    if (!form->isWindow())
        form->setAutoFillBackground(true);
    for (QWidget *const control : controls) {
        if (!BelongsTo(control, form) || Under(control, skipped))
            continue;
        // A part of a control that is painted as a whole takes what its control got.
        const bool part = control->objectName().startsWith(QStringLiteral("qt_"));
        if (part && !qobject_cast<QMenu *>(control))
            continue;
        PaintByKind(control);
    }
}

void ApplyBarSkin(ExplorerBar *bar)
{
    if (!bar)
        return;
    bar->SetRedraw(false);
    bar->setPalette(FormPalette());
    bar->SetGradient(SkinColour(SkinRole::BarTop), SkinColour(SkinRole::BarBottom));
    bar->SetHeaderColours(SkinColour(SkinRole::BarHeader), SkinColour(SkinRole::BarHeaderText));
    bar->SetItemColours(SkinColour(SkinRole::BarItemText), SkinColour(SkinRole::BarHover),
                        SkinColour(SkinRole::BarHoverText));
    bar->SetRedraw(true);
}
