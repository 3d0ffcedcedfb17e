// The toolbars' drawings, on a field of 16 by 16 units.

#include "controls/IconInk.h"

namespace {

using Ink = IconInk;

void TextLines(Ink &i, std::initializer_list<double> rows, double left, double right)
{
    for (const double y : rows)
        i.Line({{left, y}, {right, y}}, Ink::Light(), 1.4);
}

void Sheet(Ink &i) // a page with a folded corner
{
    i.Line({{9.5, 1.5}, {3, 1.5}, {3, 14.5}, {13, 14.5}, {13, 5}, {9.5, 1.5}}, Ink::Light(), 1.2);
    i.Line({{9.5, 1.5}, {9.5, 5}, {13, 5}}, Ink::Light(), 1.2);
}

void Cylinder(Ink &i, const QColor &colour)
{
    i.Arc({2, 1.5, 9, 4}, 0, 360, colour, 1.3);
    i.Line({{2, 3.5}, {2, 11.5}}, colour, 1.3);
    i.Line({{11, 3.5}, {11, 8}}, colour, 1.3);
    i.Arc({2, 9.5, 9, 4}, 180, 90, colour, 1.3);
    i.Arc({2, 5.5, 9, 4}, 180, 180, colour, 1.1);
}

void Stack(Ink &i, bool front)
{
    i.Frame({1.5, 1.5, 8, 8}, front ? Ink::Leaf() : Ink::Gold(), 1, 1.3);
    if (!front)
        i.Block({1.5, 1.5, 8, 8}, Ink::Gold(), 1);
    i.Block({6, 6, 8.5, 8.5}, front ? Ink::Gold() : QColor(38, 62, 21), 1);
    i.Frame({6, 6, 8.5, 8.5}, front ? Ink::Gold() : Ink::Leaf(), 1, 1.3);
}

} // namespace

const std::initializer_list<IconRow> kToolDrawings = {
    {"SQLRun",
     [](Ink &i) {
         i.Fill({{4, 2.5}, {13, 8}, {4, 13.5}}, Ink::Leaf());
     }},
    {"SQLTrans",
     [](Ink &i) {
         i.Fill({{5.5, 4.5}, {11.5, 8}, {5.5, 11.5}}, Ink::Leaf());
         i.Line({{4, 1.5}, {1.5, 1.5}, {1.5, 14.5}, {4, 14.5}}, Ink::Gold(), 1.5);
         i.Line({{12, 1.5}, {14.5, 1.5}, {14.5, 14.5}, {12, 14.5}}, Ink::Gold(), 1.5);
     }},
    {"SQLWiz",
     [](Ink &i) {
         i.Line({{2, 14}, {9.5, 6.5}}, Ink::Light(), 2);
         i.Fill({{11, 1}, {12, 3.8}, {15, 4.8}, {12, 5.8}, {11, 8.6}, {10, 5.8}, {7, 4.8}, {10, 3.8}}, Ink::Gold());
         i.Disc({14, 10.5}, 0.9, Ink::Gold());
         i.Disc({5, 3}, 0.9, Ink::Gold());
     }},
    {"SQLExplain",
     [](Ink &i) {
         i.Line({{8, 5}, {8, 8}, {3.5, 8}, {3.5, 11}}, Ink::Light(), 1.2);
         i.Line({{8, 8}, {12.5, 8}, {12.5, 11}}, Ink::Light(), 1.2);
         i.Block({5.5, 1.5, 5, 4}, Ink::Gold());
         i.Block({1.2, 10.5, 4.6, 4}, Ink::Leaf());
         i.Block({10.2, 10.5, 4.6, 4}, Ink::Leaf());
     }},
    {"SQLSyntax",
     [](Ink &i) {
         TextLines(i, {3, 6.5}, 2, 11);
         i.Line({{4, 11}, {7, 14}, {14, 6}}, Ink::Leaf(), 2.2);
     }},
    {"SQLParser",
     [](Ink &i) {
         i.Arc({1.5, 2, 7, 12}, 100, 160, Ink::Light(), 1.8);
         i.Arc({7.5, 2, 7, 12}, -80, 160, Ink::Light(), 1.8);
         i.Disc({8, 8}, 1.6, Ink::Gold());
     }},
    {"SQLBrake",
     [](Ink &i) {
         TextLines(i, {3}, 2, 14);
         i.Line({{14, 6}, {14, 9.5}, {4, 9.5}}, Ink::Gold(), 1.6);
         i.Line({{6.5, 7}, {4, 9.5}, {6.5, 12}}, Ink::Gold(), 1.6);
         TextLines(i, {14}, 2, 9);
     }},
    {"SQLVBS",
     [](Ink &i) {
         i.Line({{5, 4}, {1.5, 8}, {5, 12}}, Ink::Light(), 1.7);
         i.Line({{11, 4}, {14.5, 8}, {11, 12}}, Ink::Light(), 1.7);
         i.Line({{9.2, 2.5}, {6.8, 13.5}}, Ink::Gold(), 1.5);
     }},
    {"SQLTabIn",
     [](Ink &i) {
         TextLines(i, {2.5, 13.5}, 2, 14);
         TextLines(i, {6.2, 9.8}, 8, 14);
         i.Fill({{2, 5}, {5.5, 8}, {2, 11}}, Ink::Gold());
     }},
    {"SQLTabOut",
     [](Ink &i) {
         TextLines(i, {2.5, 13.5}, 2, 14);
         TextLines(i, {6.2, 9.8}, 8, 14);
         i.Fill({{5.5, 5}, {2, 8}, {5.5, 11}}, Ink::Gold());
     }},
    {"SQLCommIn",
     [](Ink &i) {
         i.Line({{1.5, 8}, {3.6, 8}}, Ink::Gold(), 1.9);
         i.Line({{5.6, 8}, {7.7, 8}}, Ink::Gold(), 1.9);
         TextLines(i, {3, 8, 13}, 10, 14.5);
         TextLines(i, {3, 13}, 2, 10);
     }},
    {"SQLCommOut",
     [](Ink &i) {
         i.Line({{1.5, 8}, {3.6, 8}}, Ink::Gold(), 1.9);
         i.Line({{5.6, 8}, {7.7, 8}}, Ink::Gold(), 1.9);
         TextLines(i, {3, 8, 13}, 10, 14.5);
         i.Line({{1.5, 12}, {8, 4}}, Ink::Red(), 1.7);
     }},
    {"SQLUCase",
     [](Ink &i) {
         i.Letters({0, 0, 16, 16}, QStringLiteral("AA"), Ink::Light(), 10);
     }},
    {"SQLLCase",
     [](Ink &i) {
         i.Letters({0, -1, 16, 16}, QStringLiteral("aa"), Ink::Light(), 11);
     }},
    {"SQLMulti",
     [](Ink &i) {
         i.Frame({1.5, 1.5, 9, 8}, Ink::Leaf());
         i.Block({1.5, 1.5, 9, 2.4}, Ink::Leaf());
         i.Block({5.5, 6.5, 9, 8}, QColor(38, 62, 21));
         i.Frame({5.5, 6.5, 9, 8}, Ink::Gold());
         i.Block({5.5, 6.5, 9, 2.4}, Ink::Gold());
     }},
    {"SQLSplit",
     [](Ink &i) {
         i.Frame({1.5, 2, 13, 12});
         TextLines(i, {4.6}, 4, 11);
         i.Line({{1.5, 7.5}, {14.5, 7.5}}, Ink::Gold(), 1.8);
         i.Line({{6, 8}, {6, 14}}, Ink::Leaf(), 1.1);
         i.Line({{10.2, 8}, {10.2, 14}}, Ink::Leaf(), 1.1);
         i.Line({{2, 10.9}, {14, 10.9}}, Ink::Leaf(), 1.1);
     }},
    {"SQLRefresh",
     [](Ink &i) {
         i.Arc({2.5, 2.5, 11, 11}, 40, 280, Ink::Leaf(), 1.8);
         i.Fill({{10.2, 4.8}, {14.6, 6.2}, {14.2, 1.6}}, Ink::Leaf());
     }},
    {"DTBTable",
     [](Ink &i) {
         i.Table({1.5, 2, 10, 9});
         i.Plus({12.3, 12.3}, 2.7);
     }},
    {"DTBLinked",
     [](Ink &i) {
         i.Table({1, 1.5, 6.5, 6});
         i.Table({8.5, 8.5, 6.5, 6});
         i.Line({{4.2, 8}, {4.2, 11.5}, {8, 11.5}}, Ink::Gold(), 1.6);
     }},
    {"DTBAll",
     [](Ink &i) {
         i.Table({1, 1.5, 6, 5.5});
         i.Table({9, 1.5, 6, 5.5});
         i.Table({1, 9, 6, 5.5});
         i.Plus({12, 12}, 2.7);
     }},
    {"DTBRemove",
     [](Ink &i) {
         i.Table({1.5, 2, 10, 9});
         i.Minus({12.2, 13}, 2.8);
     }},
    {"DTBClear",
     [](Ink &i) {
         i.Table({1.5, 2, 10, 9});
         i.Cross({12.4, 12.4}, 2.2);
     }},
    {"DTBB2F", [](Ink &i) { Stack(i, true); }},
    {"DTBS2B", [](Ink &i) { Stack(i, false); }},
    {"DTBB&W",
     [](Ink &i) {
         i.Ring({8, 8}, 6, Ink::Light(), 1.4);
         i.Fill({{8, 2.2}, {8, 13.8}, {4.8, 12.9}, {2.6, 10.4}, {2, 8}, {2.6, 5.6}, {4.8, 3.1}}, Ink::Light());
     }},
    {"CONN",
     [](Ink &i) {
         Cylinder(i, Ink::Light());
         i.Plus({12, 12}, 2.8);
     }},
    {"RUN",
     [](Ink &i) {
         Sheet(i);
         i.Fill({{6, 6.8}, {11, 9.7}, {6, 12.6}}, Ink::Leaf());
     }},
    {"OPEN",
     [](Ink &i) {
         i.Line({{1.5, 13}, {1.5, 3}, {6, 3}, {7.5, 5}, {12.5, 5}, {12.5, 7.5}}, Ink::Gold(), 1.3);
         i.Fill({{1.8, 13.3}, {4.2, 7.6}, {15, 7.6}, {12.6, 13.3}}, Ink::Gold());
     }},
    {"SAVE",
     [](Ink &i) {
         i.Line({{2, 2}, {11.5, 2}, {14, 4.5}, {14, 14}, {2, 14}, {2, 2}}, Ink::Light(), 1.3);
         i.Block({5, 2, 5.5, 4}, Ink::Leaf());
         i.Block({4.5, 8.8, 7, 5.2}, Ink::Light());
     }},
    {"PRINT",
     [](Ink &i) {
         i.Frame({4.5, 1.5, 7, 4.5});
         i.Block({1.5, 5.8, 13, 6}, Ink::Leaf(), 1.2);
         i.Block({4, 9.5, 8, 5}, Ink::Light());
         i.Disc({12.6, 7.6}, 0.8, QColor(38, 62, 21));
     }},
    {"FIND",
     [](Ink &i) {
         i.Ring({6.6, 6.6}, 4.4, Ink::Light(), 1.7);
         i.Line({{10, 10}, {14, 14}}, Ink::Gold(), 2.4);
     }},
    {"HELP",
     [](Ink &i) {
         i.Ring({8, 8}, 6.4, Ink::Leaf(), 1.4);
         i.Letters({0, 0, 16, 16}, QStringLiteral("?"), Ink::Light(), 11);
     }},
};
