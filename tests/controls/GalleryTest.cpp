// Every control once, painted with the skin at 1x and 2x. With BRINDLEWICK_GALLERY set to a folder the pictures are
// kept there, to be looked at.

#include "MakeRecordset.h"
#include "controls/BusyIndicator.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/FlexGrid.h"
#include "controls/Icons.h"
#include "controls/ListView.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/TreeView.h"
#include "tests/support/Text.h"
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

void Keep(QWidget &window, const char *name, int leastColours)
{
    InitColours(); // and the program's style
    for (const int scale : {1, 2}) {
        QImage picture(window.size() * scale, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        window.render(&picture);
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                colours.insert(picture.pixel(x, y));
        EXPECT_GE(colours.size(), leastColours) << name << " at " << scale;
        const QString folder = qEnvironmentVariable("BRINDLEWICK_GALLERY");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QDir(folder).filePath(QStringLiteral("%1-%2x.png").arg(S(name)).arg(scale))));
        }
    }
}

ADODB::RecordsetPtr Orders()
{
    return MakeTexts(
        {S("OrderID"), S("Customer"), S("Note"), S("Amount")},
        {{S("10248"), S("Vins et alcools Chevalier"), S("a note that is far too long to be shown whole"), S("32.38")},
         {S("10249"), S("Toms Spezialitäten"), QString(), S("11.61")},
         {S("10250"), S("Москва"), S("first\r\nsecond"), S("65.83")},
         {S("10251"), S("Ελλάδα"), S(""), S("-1,234.5")},
         {S("10252"), QString(), QString(), QString()},
         {S("10253"), S("東京"), S("x"), S("58.17")}});
}

} // namespace

TEST(Gallery, Grid)
{
    QWidget window;
    QVBoxLayout layout(&window);
    FlexGrid data, log, tree;
    data.SetDataSource(Orders());
    AutoSize(&data);
    data.SetColWidth(2, 2700);
    data.Select(2, 2, 4, 4);
    data.SetColAlignment(4, flexAlignRight);
    log.SetFormatString(S("    | Type          |Time Stamp                     |Value"));
    log.SetTextMatrix(1, 1, S("Log"));
    log.SetTextMatrix(1, 2, S("2026-11-21 09:30:00"));
    log.SetTextMatrix(1, 3, S("select *\nfrom orders\nwhere 1 = 1"));
    log.SetRowHeight(1, 720);
    log.AddItem(S("\tLog\t2026-11-21 09:30:01\tQueryTime= 00:00:01"));
    log.SetColWidth(3, 4000);
    log.SetRow(2);
    log.SetCol(3);
    log.SetCellBackColor(QColor(255, 255, 0));
    tree.SetDataSource(MakeFamily({1, 2, 3}, 3));
    tree.SetColWidth(1, 3000);
    tree.Expand(2);
    tree.Expand(5);
    layout.addWidget(&data);
    layout.addWidget(&log);
    layout.addWidget(&tree);
    window.resize(640, 560);
    ApplySkin(&window);
    window.show();
    data.setFocus();
    Keep(window, "grid", 30);
}

TEST(Gallery, ListsAndTree)
{
    QWidget window;
    QHBoxLayout layout(&window);
    ListView list;
    list.AddColumn(S("Table"), 2400);
    list.AddColumn(S("Rows"), 1200);
    list.SetMultiSelect(true);
    for (const char *name : {"customers", "Orders", "order details", "products", "shippers"})
        list.SetSubItem(list.AddItem(S(name)), 1, S("123"));
    list.SetSorted(true);
    list.SelectRow(1);
    TreeView tree;
    tree.AddSchemaImages();
    for (const auto &[root, letter] :
         {std::pair{"Tables", "T"}, {"Views", "V"}, {"Procedures", "P"}, {"Functions", "N"}}) {
        Node *const top = tree.Nodes().Add(nullptr, tvwChild, S(root), S(root), tree.ImageIndex(S("C")));
        Node *const object = tree.Nodes().Add(top, tvwChild, {}, S("object"), tree.ImageIndex(S(letter)));
        tree.Nodes().Add(object, tvwChild, {}, S("field"), tree.ImageIndex(S("F")));
        top->SetExpanded(true);
        object->SetExpanded(true);
    }
    tree.Nodes().Item(2)->SetSelected(true);
    tree.setFocus();
    layout.addWidget(&list);
    layout.addWidget(&tree);
    window.resize(640, 330);
    ApplySkin(&window);
    window.show();
    Keep(window, "lists", 30);
}

TEST(Gallery, Bars)
{
    QWidget window;
    QVBoxLayout layout(&window);
    QWidget middle;
    QHBoxLayout row(&middle);
    CommandBar commands;
    commands.AddToolbar(S("All"));
    commands.AddToolbar(S("Off"));
    int count = 0;
    for (const QString &key : ToolIconKeys()) {
        commands.AddButton(S("All"), key, key, key == S("SQLSplit") ? cbrCheck : cbrButton);
        if (++count % 8 == 0)
            commands.AddSeparator(S("All"), S("sep") + key);
    }
    commands.SetChecked(S("SQLSplit"), true);
    for (const char *key : {"MTBOPEN", "MTBSAVE", "Other"}) {
        commands.AddButton(S("Off"), S(key), S(key), S(key) == S("Other") ? cbrDropDown : cbrButton);
        commands.SetEnabled(S(key), S(key) == S("Other"));
    }
    ExplorerBar side;
    side.AddBar(S("CONN"), S("Connections"));
    side.AddBar(S("TB"), S("Tool Bar"));
    for (const auto &[text, icon] : {std::pair{"Sample", 1}, {"Warehouse, far away in the north", 6}, {"Archive", 7}})
        side.Bar(1)->Items().Add({}, S(text), icon);
    for (const auto &[key, text] : {std::pair{"CONN", "New Connection"},
                                    {"RUN", "SQL Analyzer"},
                                    {"OPEN", "Open"},
                                    {"SAVE", "Save"},
                                    {"PRINT", "Print"},
                                    {"FIND", "Find"},
                                    {"HELP", "Help"}})
        side.Bar(2)->Items().Add(S(key), S(text));
    side.Bar(2)->Items().Item(S("SAVE"))->SetEnabled(false);
    QPlainTextEdit editor(S("select * from orders"));
    Splitter splitter(&middle);
    splitter.setFixedWidth(6);
    row.addWidget(&side);
    row.addWidget(&splitter);
    row.addWidget(&editor, 1);
    StatusBar status;
    status.AddPanel(sbrText, true);
    status.AddPanel(sbrText, false, 1200);
    for (const StatusPanelStyle style : {sbrCaps, sbrNum, sbrIns, sbrScrl, sbrTime, sbrDate})
        status.AddPanel(style);
    status.SetPanelText(1, S("select * from orders\r\nwhere amount > 10 and customer like 'A%' and note is not null"));
    status.SetPanelText(2, S("Count = 12"));
    layout.addWidget(&commands);
    layout.addWidget(&middle, 1);
    layout.addWidget(&status);
    window.resize(1100, 480);
    ApplySkin(&window);
    window.show();
    side.setFocus();
    Keep(window, "bars", 60);
}

TEST(Gallery, Forms)
{
    QWidget window;
    QVBoxLayout layout(&window);
    TabStrip tabs;
    for (const char *text : {"Data Grid", "Message(s)", "Data Drill Down"})
        tabs.AddTab(S(text));
    tabs.Select(2);
    QLineEdit line(S("text in a line")), disabled(S("disabled line"));
    disabled.setEnabled(false);
    QComboBox chooser, typed;
    chooser.addItems({S("one"), S("two")});
    typed.setEditable(true);
    typed.addItem(S("typed"));
    QCheckBox check(S("Match case")), off(S("Disabled"));
    check.setChecked(true);
    off.setEnabled(false);
    QRadioButton radio(S("Up"));
    radio.setChecked(true);
    QPushButton ok(S("OK")), cancel(S("Cancel")), no(S("Disabled"));
    ok.setDefault(true);
    no.setEnabled(false);
    QProgressBar progress;
    progress.setValue(40);
    BusyIndicator busy;
    QLabel label(S("Connection name"));
    for (QWidget *const control : QList<QWidget *>{&tabs, &label, &line, &disabled, &chooser, &typed, &check, &off,
                                                   &radio, &ok, &cancel, &no, &progress, &busy})
        layout.addWidget(control);
    busy.Play();
    window.resize(320, 520);
    ApplySkin(&window);
    window.show();
    line.setFocus();
    Keep(window, "forms", 40);
}

TEST(Gallery, Icons)
{
    class Sheet : public QWidget
    {
    protected:
        void paintEvent(QPaintEvent *) override
        {
            QPainter painter(this);
            painter.fillRect(rect(), SkinColour(SkinRole::BarTop));
            QList<QIcon> icons;
            for (const QString &key : ToolIconKeys())
                icons << ToolIcon(key);
            for (const char *letter : {"C", "R", "T", "V", "P", "N", "F", "L"})
                icons << TreeIcon(S(letter));
            for (const int state : {7, 6, 1, 0})
                icons << StateIcon(state);
            icons << AppIcon() << ToolIcon(S("x"));
            int x = 8, y = 8;
            for (const QIcon &icon : icons) {
                icon.paint(&painter, QRect(x, y, 16, 16));
                icon.paint(&painter, QRect(x + 22, y - 2, 20, 20));
                icon.paint(&painter, QRect(x, y + 24, 40, 40));
                x += 54;
                if (x + 50 > width()) {
                    x = 8;
                    y += 76;
                }
            }
        }
    };
    Sheet sheet;
    sheet.resize(660, 320);
    Keep(sheet, "icons", 60);
}
