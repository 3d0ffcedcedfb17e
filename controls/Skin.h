#pragma once
// The program's one look: a palette of sixteen fixed colours, and walks that paint windows with it by control kind.
//
// Message boxes, file and print dialogs are never painted. A control without a property keeps its look. Interface
// thread; nothing raises. Painting a window twice changes nothing.

#include <QColor>
#include <QString>
#include <array>

class ExplorerBar;
class QWidget;

// Numbers count from 1; entry 0 is unused.
inline constexpr std::array<QRgb, 17> SkinPalette = {
    0,
    qRgb(90, 110, 80),   // 1  fixed cells, headers, borders, the title of the active child
    qRgb(130, 160, 110), // 2
    qRgb(84, 124, 78),   // 3  what is off
    qRgb(50, 70, 30),    // 4  forms, the lower end of the bar's gradient
    qRgb(175, 195, 5),   // 5
    qRgb(55, 90, 45),    // 6
    qRgb(145, 195, 125), // 7  ordinary text; the ground of what is selected
    qRgb(38, 62, 21),    // 8  lists, trees, grids, menus, the upper end of the bar's gradient
    qRgb(145, 195, 125), // 9
    qRgb(0, 64, 0),      // 10
    qRgb(0, 255, 0),     // 11
    qRgb(0, 20, 0),      // 12 the editor's ground, bar headers, the text of what is selected
    qRgb(55, 90, 45),    // 13
    qRgb(255, 255, 255), // 14 text on fixed cells, bar entries
    qRgb(255, 255, 0),   // 15 the focus, links
    qRgb(10, 70, 10),    // 16 buttons, a bar entry under the pointer
};
inline QColor SkinColour(int number)
{
    return QColor(SkinPalette.at(size_t(number)));
}

// The grounds and texts that the walk uses, by what they are for.
enum class SkinRole
{
    Form,
    FormText,
    DisabledText,
    List,
    ListText,
    Editor,
    EditorText,
    Fixed,
    FixedText,
    Button,
    ButtonText,
    Selection,
    SelectionText,
    Border,
    Focus,
    BarTop,
    BarBottom,
    BarHeader,
    BarHeaderText,
    BarItemText,
    BarHover,
    BarHoverText,
    NullGround,
    Count
};
QColor SkinColour(SkinRole role);

// Every pair of text and ground that the skin makes for ordinary text; the contrast test walks it.
struct SkinPair
{
    const char *Where;
    SkinRole Text, Ground;
};
const std::array<SkinPair, 12> &SkinPairs();
double Contrast(const QColor &text, const QColor &ground); // 1 to 21, as the accessibility guidelines count it

// Sets the colour table of the editor and the style. The first action of the program after the test for another
// instance.
void InitColours();

// Paints a window and the controls in it. `excludedNames` is a comma-joined list of object names to skip, may be empty.
void ApplySkin(QWidget *form, const QString &excludedNames = {});
void ApplyBarSkin(ExplorerBar *bar);
bool IsSkinned(const QWidget *window);
