#include "controls/Icons.h"
#include "controls/IconInk.h"
#include <QHash>

namespace {

using Ink = IconInk;

const IconRow *DrawingOf(const QString &key)
{
    // A button of the main toolbar carries its entry's key behind three letters of its own.
    const QString bare = key.startsWith(QStringLiteral("MTB")) ? key.mid(3) : key;
    for (const IconRow &row : kToolDrawings)
        if (bare == QLatin1String(row.key))
            return &row;
    return nullptr;
}

void Folder(Ink &i, bool open)
{
    i.Line({{1.5, 13}, {1.5, 3}, {6, 3}, {7.5, 5}, {14, 5}, {14, 13}, {1.5, 13}}, Ink::Gold(), 1.2);
    if (open)
        i.Fill({{1.8, 13}, {4.2, 7.8}, {15.3, 7.8}, {13.2, 13}}, Ink::Gold());
    else
        i.Block({1.8, 6, 12, 6.8}, Ink::Gold());
}

void Lens(Ink &i) // a view: an eye over a table's lines
{
    i.Arc({1, 2.5, 14, 14}, 40, 100, Ink::Blue(), 1.5);
    i.Arc({1, -0.5, 14, 14}, 220, 100, Ink::Blue(), 1.5);
    i.Disc({8, 8}, 2.4, Ink::Blue());
}

void Gear(Ink &i, const QColor &colour)
{
    i.Ring({8, 8}, 3.6, colour, 2);
    for (const QPointF &spoke : {QPointF(0, 1), QPointF(1, 0), QPointF(0.7, 0.7), QPointF(0.7, -0.7)}) {
        i.Line({QPointF(8, 8) + spoke * 4.6, QPointF(8, 8) + spoke * 6.2}, colour, 2);
        i.Line({QPointF(8, 8) - spoke * 4.6, QPointF(8, 8) - spoke * 6.2}, colour, 2);
    }
}

const std::initializer_list<IconRow> kTreeDrawings = {
    {"C", [](Ink &i) { Folder(i, false); }},
    {"R", [](Ink &i) { Folder(i, true); }},
    {"T",
     [](Ink &i) {
         i.Table({1.5, 2.5, 13, 11}, Ink::Leaf());
     }},
    {"V", [](Ink &i) { Lens(i); }},
    {"P", [](Ink &i) { Gear(i, Ink::Light()); }},
    {"N",
     [](Ink &i) {
         i.Arc({5.2, 1.6, 6, 5}, 20, 150, Ink::Gold(), 1.7);
         i.Line({{5.6, 4.2}, {4.9, 14}}, Ink::Gold(), 1.7);
         i.Line({{3, 7.4}, {9, 7.4}}, Ink::Gold(), 1.5);
         i.Line({{9.5, 9.5}, {13.5, 14}}, Ink::Light(), 1.4);
         i.Line({{13.5, 9.5}, {9.5, 14}}, Ink::Light(), 1.4);
     }},
    {"F",
     [](Ink &i) {
         i.Frame({2.5, 4.5, 11, 7}, Ink::Light(), 1.2, 1.2);
         i.Line({{5, 8}, {10, 8}}, Ink::Leaf(), 1.6);
     }},
    {"L",
     [](Ink &i) {
         i.Ring({5, 8}, 3.2, Ink::Light(), 1.6);
         i.Ring({11, 8}, 3.2, Ink::Gold(), 1.6);
         i.Line({{6.5, 8}, {9.5, 8}}, Ink::Light(), 1.6);
     }},
};

void Plug(Ink &i, const QColor &colour)
{
    i.Arc({3, 2, 10, 4.4}, 0, 360, colour, 1.4);
    i.Line({{3, 4.2}, {3, 11.8}}, colour, 1.4);
    i.Line({{13, 4.2}, {13, 11.8}}, colour, 1.4);
    i.Arc({3, 9.6, 10, 4.4}, 180, 180, colour, 1.4);
    i.Arc({3, 5.8, 10, 4.4}, 180, 180, colour, 1.1);
}

QIcon Kept(QHash<QString, QIcon> &kept, const QString &key, const IconDrawing &drawing)
{
    QIcon &icon = kept[key];
    if (icon.isNull())
        icon = DrawnIcon(drawing);
    return icon;
}

} // namespace

bool HasToolIcon(const QString &key)
{
    return DrawingOf(key) != nullptr;
}

QStringList ToolIconKeys()
{
    QStringList keys;
    for (const IconRow &row : kToolDrawings)
        keys << QString::fromLatin1(row.key);
    return keys;
}

QIcon ToolIcon(const QString &key)
{
    static QHash<QString, QIcon> kept;
    if (const IconRow *const row = DrawingOf(key))
        return Kept(kept, QString::fromLatin1(row->key), row->draw);
    const QString letter = key.isEmpty() || !key[0].isLetterOrNumber() ? QString() : QString(key[0].toUpper());
    return Kept(kept, QStringLiteral(" ") + letter, [letter](Ink &i) {
        if (letter.isEmpty()) {
            i.Disc({8, 8}, 2.2, Ink::Leaf());
            return;
        }
        i.Frame({1.5, 1.5, 13, 13}, Ink::Leaf(), 2.5);
        i.Letters({0, 0, 16, 16}, letter, Ink::Light(), 10);
    });
}

QIcon TreeIcon(const QString &letter)
{
    static QHash<QString, QIcon> kept;
    for (const IconRow &row : kTreeDrawings)
        if (letter == QLatin1String(row.key))
            return Kept(kept, letter, row.draw);
    return ToolIcon(letter);
}

QIcon StateIcon(int number)
{
    static QHash<QString, QIcon> kept;
    const QString key = QString::number(number);
    switch (number) {
    case 1:
        return Kept(kept, key, [](Ink &i) {
            Plug(i, QColor(0, 255, 0));
            i.Disc({12.4, 12.4}, 3.2, QColor(38, 62, 21));
            i.Line({{9.8, 12.4}, {11.8, 14.4}, {15, 10.4}}, QColor(0, 255, 0), 1.8);
        });
    case 6:
        return Kept(kept, key, [](Ink &i) {
            Plug(i, Ink::Gold());
            i.Disc({12, 12}, 4.2, QColor(38, 62, 21));
            i.Ring({12, 12}, 3, Ink::Gold(), 1.3);
            i.Line({{12, 10.4}, {12, 12}, {13.2, 12}}, Ink::Gold(), 1.2);
        });
    case 7:
        return Kept(kept, key, [](Ink &i) { Plug(i, QColor(150, 170, 140)); });
    default:
        return Kept(kept, QStringLiteral("dot"), [](Ink &i) { i.Disc({8, 8}, 2.2, Ink::Leaf()); });
    }
}

// The same drawing as the one that the desktop gets (packaging/brindlewick.svg), with lines for small sizes.
QIcon AppIcon()
{
    static const QIcon icon = DrawnIcon([](Ink &i) {
        i.Block({0.5, 0.5, 15, 15}, QColor(38, 62, 21), 2.8);
        i.Frame({0.9, 0.9, 14.2, 14.2}, QColor(130, 160, 110), 2.4, 0.5);
        const auto side = [&i](double x) { i.Line({{x, 4.5}, {x, 11.5}}, Ink::Leaf(), 0.9); };
        i.Arc({3.25, 2.9, 8.5, 3.2}, 0, 360, Ink::Leaf(), 0.9);
        side(3.25);
        side(11.75);
        for (const double top : {5.3, 7.6, 9.9})
            i.Arc({3.25, top, 8.5, 3.2}, 180, 180, Ink::Leaf(), 0.9);
        i.Fill({{9.1, 7.2}, {14.4, 10.25}, {9.1, 13.3}}, QColor(0, 20, 0));
        i.Fill({{9.7, 8}, {13.6, 10.25}, {9.7, 12.5}}, QColor(255, 255, 0));
    });
    return icon;
}
