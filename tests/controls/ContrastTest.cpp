// Every text on its ground as the controls paint it in the skin's colours, measured in the picture. Ordinary text has
// at least 4.5 to 1; what is off is told from what is on, and can still be made out.

#include "MakeRecordset.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/FlexGrid.h"
#include "controls/Icons.h"
#include "controls/ListView.h"
#include "controls/Skin.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/TreeView.h"
#include "tests/support/ReadText.h"
#include "tests/support/Text.h"
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

constexpr double s_ordinary = 4.5;

struct Readable : testing::Test
{
    QWidget form;
    void SetUp() override
    {
        InitColours();
        form.resize(420, 260);
    }
    // Shows the form with the control in it, painted and with the keyboard.
    void Place(QWidget &control, const QRect &rect = QRect(20, 20, 200, 28))
    {
        control.setParent(&form);
        control.setGeometry(rect);
        control.show();
        Show();
    }
    void Show()
    {
        ApplySkin(&form);
        form.show();
        QTest::mouseMove(&form, form.rect().bottomRight()); // what the mouse rests on has a ground of its own
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    double Ratio(const QRect &rect) { return ReadText(PictureOf(form), rect).Ratio; }
    static QRect Inner(const QWidget &control, int x = 6, int y = 5)
    {
        return control.geometry().adjusted(x, y, -x, -y);
    }
};

} // namespace

TEST_F(Readable, PushButtonsInEveryState)
{
    QPushButton button(S("Mm"));
    Place(button);
    const double normal = Ratio(Inner(button));
    EXPECT_GE(normal, s_ordinary);
    button.setDefault(true);
    EXPECT_GE(Ratio(Inner(button)), s_ordinary);
    button.setFocus(Qt::TabFocusReason);
    EXPECT_GE(Ratio(Inner(button)), s_ordinary);
    button.setDown(true);
    EXPECT_GE(Ratio(Inner(button)), s_ordinary);
    button.setDown(false);
    button.setCheckable(true);
    button.setChecked(true);
    EXPECT_GE(Ratio(Inner(button)), s_ordinary);
    button.clearFocus();
    button.setEnabled(false);
    const double off = Ratio(Inner(button));
    EXPECT_GT(off, 1.5);
    EXPECT_GT(normal / off, 1.5);
}

TEST_F(Readable, LabelsBoxesAndHeadings)
{
    QLabel label(S("Mm"));
    QCheckBox check(S("Mm"));
    QRadioButton radio(S("Mm"));
    QGroupBox group(S("Mm"));
    Place(label, QRect(20, 10, 80, 24));
    Place(check, QRect(20, 40, 80, 24));
    Place(radio, QRect(20, 70, 80, 24));
    Place(group, QRect(20, 110, 200, 100));
    const double normal = Ratio(label.geometry());
    EXPECT_GE(normal, s_ordinary);
    for (const QWidget *box : {static_cast<QWidget *>(&check), static_cast<QWidget *>(&radio)})
        EXPECT_GE(Ratio(box->geometry().adjusted(22, 2, -4, -2)), s_ordinary);
    EXPECT_GE(Ratio(QRect(group.x() + 1, group.y(), 60, 14)), s_ordinary);
    label.setEnabled(false);
    check.setEnabled(false);
    EXPECT_GT(Ratio(label.geometry()), 1.5);
    EXPECT_GT(normal / Ratio(label.geometry()), 1.5);
    EXPECT_GT(normal / Ratio(check.geometry().adjusted(22, 2, -4, -2)), 1.5);
}

TEST_F(Readable, TextBoxesTheirSelectionAndTheirHint)
{
    QLineEdit line(S("Mm"));
    Place(line);
    EXPECT_GE(Ratio(Inner(line)), s_ordinary);
    line.setFocus();
    line.selectAll();
    EXPECT_GE(Ratio(QRect(line.x() + 5, line.y() + 8, 12, 12)), s_ordinary);
    line.clear();
    line.clearFocus();
    line.setPlaceholderText(S("Mm"));
    EXPECT_GE(Ratio(Inner(line)), s_ordinary);
    line.setPlaceholderText(QString());
    line.setText(S("Mm"));
    line.setEnabled(false);
    EXPECT_GT(Ratio(Inner(line)), 1.5);
}

TEST_F(Readable, TheEditorAndItsSelection)
{
    QPlainTextEdit editor(S("MMMM MMMM"));
    Place(editor, QRect(20, 20, 200, 80));
    EXPECT_GE(Ratio(Inner(editor)), s_ordinary);
    editor.selectAll();
    editor.setFocus();
    EXPECT_GE(Ratio(QRect(26, 26, 24, 10)), s_ordinary);
    editor.clearFocus();
    EXPECT_GE(Ratio(QRect(26, 26, 24, 10)), s_ordinary);
}

TEST_F(Readable, ChoosersAndTheirLists)
{
    QComboBox chooser, typed;
    typed.setEditable(true);
    for (QComboBox *combo : {&chooser, &typed})
        combo->addItems({S("Mm"), S("Nn")});
    Place(chooser, QRect(20, 20, 160, 28));
    Place(typed, QRect(20, 60, 160, 28));
    for (const QComboBox *combo : {&chooser, &typed})
        EXPECT_GE(Ratio(combo->geometry().adjusted(8, 5, -40, -5)), s_ordinary);
    chooser.showPopup();
    QAbstractItemView *list = chooser.view();
    list->setCurrentIndex(list->model()->index(0, 0));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
    const QImage picture = PictureOf(*list->viewport());
    for (int row = 0; row < 2; ++row)
        EXPECT_GE(ReadText(picture, list->visualRect(list->model()->index(row, 0)).adjusted(2, 3, -2, -3)).Ratio,
                  s_ordinary)
            << row;
    chooser.hidePopup();
    chooser.setEnabled(false);
    EXPECT_GT(Ratio(chooser.geometry().adjusted(8, 5, -40, -5)), 1.5);
}

TEST_F(Readable, ListsWithTheirHeadersAndSelectedRows)
{
    ListView list;
    list.AddColumn(S("Mm"), 2400);
    for (int i = 0; i < 3; ++i)
        list.AddItem(S("Mm"));
    Place(list, QRect(20, 20, 300, 200));
    list.SelectRow(1);
    const auto row = [&](int index) {
        return ReadText(PictureOf(*list.viewport()),
                        list.visualRect(list.model()->index(index, 0)).adjusted(2, 3, -2, -3))
            .Ratio;
    };
    for (const bool focus : {true, false}) {
        focus ? list.setFocus() : list.clearFocus();
        EXPECT_GE(row(0), s_ordinary);
        EXPECT_GE(row(1), s_ordinary); // the selected one
        EXPECT_GE(row(2), s_ordinary);
    }
    QHeaderView *header = list.header();
    EXPECT_GE(ReadText(PictureOf(*header->viewport()), QRect(4, 4, 60, header->height() - 9)).Ratio, s_ordinary);
}

TEST_F(Readable, TreesAndTheirSelectedNode)
{
    TreeView tree;
    for (const char *key : {"a", "b", "c"})
        tree.Nodes().Add(nullptr, tvwLast, S(key), S("Mm"));
    Place(tree, QRect(20, 20, 300, 200));
    tree.setCurrentItem(tree.topLevelItem(1));
    for (const bool focus : {true, false}) {
        focus ? tree.setFocus() : tree.clearFocus();
        const QImage picture = PictureOf(*tree.viewport());
        for (int i = 0; i < 3; ++i)
            EXPECT_GE(ReadText(picture, tree.visualItemRect(tree.topLevelItem(i)).adjusted(2, 3, -20, -3)).Ratio,
                      s_ordinary)
                << i << focus;
    }
}

TEST_F(Readable, TheGridsCellsFixedCellsAndSelection)
{
    FlexGrid grid;
    grid.SetDataSource(MakeRows(6));
    Place(grid, QRect(20, 20, 360, 200));
    grid.Select(2, 2, 3, 2);
    const auto cell = [&](qint64 row, int column) {
        return ReadText(PictureOf(*grid.viewport()), grid.CellRect(row, column).adjusted(2, 2, -3, -3)).Ratio;
    };
    for (const bool focus : {true, false}) {
        focus ? grid.setFocus() : grid.clearFocus();
        EXPECT_GE(cell(0, 2), s_ordinary);
        EXPECT_GE(cell(1, 2), s_ordinary);
        EXPECT_GE(cell(2, 2), s_ordinary); // the current one
        EXPECT_GE(cell(3, 2), s_ordinary); // selected with it
        EXPECT_GE(cell(4, 2), s_ordinary);
    }
}

TEST_F(Readable, TabsProgressAndStatusPanels)
{
    TabStrip tabs;
    tabs.AddTab(S("Mm"));
    tabs.AddTab(S("Nn"));
    QProgressBar progress;
    progress.setValue(50);
    progress.setFormat(S("MM MM MM MM MM MM"));
    StatusBar status;
    status.AddPanel(sbrText, false, 1500);
    status.AddPanel(sbrScrl);
    status.SetPanelText(1, S("Mm"));
    Place(tabs, QRect(10, 10, 300, tabs.sizeHint().height()));
    Place(progress, QRect(10, 60, 300, 24));
    Place(status, QRect(10, 110, 400, status.sizeHint().height()));
    for (int tab = 0; tab < 2; ++tab)
        EXPECT_GE(Ratio(tabs.tabRect(tab).adjusted(8, 8, -8, -6).translated(tabs.pos())), s_ordinary) << tab;
    EXPECT_GE(Ratio(QRect(110, 66, 40, 12)), s_ordinary); // on what is done
    EXPECT_GE(Ratio(QRect(166, 66, 40, 12)), s_ordinary); // on what is left
    const double on = Ratio(status.PanelRect(1).adjusted(4, 4, -4, -4).translated(status.pos()));
    const double off = Ratio(status.PanelRect(2).adjusted(4, 4, -4, -4).translated(status.pos()));
    EXPECT_GE(on, s_ordinary);
    EXPECT_GT(off, 1.5);
    EXPECT_GT(on / off, 1.5);
}

TEST_F(Readable, TheSideBarsHeadingsAndEntries)
{
    ExplorerBar bar;
    ExplorerBarBar *connections = bar.AddBar(S("CONN"), S("Mm"));
    for (int i = 0; i < 3; ++i)
        connections->Items().Add({}, S("Mm"), 7);
    connections->Items().Item(3)->SetEnabled(false);
    Place(bar, QRect(0, 0, 180, 260));
    const auto read = [&](const QRect &rect) { return ReadText(PictureOf(*bar.viewport()), rect).Ratio; };
    EXPECT_GE(read(bar.HeaderRect(connections).adjusted(6, 4, -80, -4)), s_ordinary);
    const auto entry = [&](int index) {
        return read(bar.ItemRect(connections->Items().Item(index)).adjusted(28, 4, -20, -4));
    };
    const double normal = entry(1);
    EXPECT_GE(normal, s_ordinary);
    QTest::mouseMove(bar.viewport(), bar.ItemRect(connections->Items().Item(2)).center());
    EXPECT_GE(entry(2), s_ordinary);
    EXPECT_GT(normal / entry(3), 1.5);
}

TEST_F(Readable, MenusOpenChosenAndOff)
{
    QMainWindow window;
    window.resize(300, 100);
    QMenu *menu = window.menuBar()->addMenu(S("Mm"));
    window.menuBar()->addMenu(S("Nn"));
    QAction *plain = menu->addAction(S("Mm"));
    QAction *chosen = menu->addAction(S("Mm"));
    QAction *off = menu->addAction(S("Mm"));
    off->setEnabled(false);
    ApplySkin(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QMenuBar *bar = window.menuBar();
    const auto item = [&](QAction *action) {
        return ReadText(PictureOf(*bar), bar->actionGeometry(action).adjusted(2, 3, -2, -5)).Ratio;
    };
    EXPECT_GE(item(menu->menuAction()), s_ordinary);
    bar->setActiveAction(menu->menuAction());
    EXPECT_GE(item(menu->menuAction()), s_ordinary);
    bar->setActiveAction(nullptr);
    menu->menuAction()->setEnabled(false);
    EXPECT_GT(item(menu->menuAction()), 1.5);
    menu->menuAction()->setEnabled(true);
    menu->popup(QPoint(100, 100));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    menu->setActiveAction(chosen);
    const auto row = [&](QAction *action) {
        return ReadText(PictureOf(*menu), menu->actionGeometry(action).adjusted(18, 3, -4, -3)).Ratio;
    };
    EXPECT_GE(row(plain), s_ordinary);
    EXPECT_GE(row(chosen), s_ordinary);
    EXPECT_GT(row(off), 1.5);
    EXPECT_GT(row(plain) / row(off), 1.5);
    menu->close();
}

// What the toolkit makes by itself when it needs it.
TEST_F(Readable, MenusOfTextBoxesAndOfBarsThatAreTooNarrow)
{
    QLineEdit line(S("Mm"));
    Place(line);
    std::unique_ptr<QMenu> context(line.createStandardContextMenu());
    QMainWindow window;
    for (const char *title : {"Mmmmmmmm", "Nnnnnnnn", "Oooooooo"})
        window.menuBar()->addMenu(S(title))->addAction(S("Mm"));
    ApplySkin(&window);
    window.resize(120, 80);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QList<QMenu *> late{context.get()};
    for (QMenu *menu : window.menuBar()->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly))
        if (menu->actions().size() > 1)
            late << menu; // the one that has the items which are out of sight
    ASSERT_EQ(late.size(), 2);
    for (QMenu *menu : late) {
        menu->ensurePolished();
        EXPECT_EQ(menu->palette().color(QPalette::Window), SkinColour(SkinRole::BarTop));
        EXPECT_EQ(menu->palette().color(QPalette::WindowText), SkinColour(SkinRole::FixedText));
    }
}

TEST_F(Readable, Tooltips)
{
    QLabel label(S("x"));
    Place(label);
    QToolTip::showText(label.mapToGlobal(QPoint(5, 5)), S("Mm Mm"), &label);
    QWidget *tip = nullptr;
    for (QWidget *top : QApplication::topLevelWidgets())
        if (top->inherits("QTipLabel") && top->isVisible())
            tip = top;
    ASSERT_TRUE(tip);
    EXPECT_GE(ReadText(PictureOf(*tip), tip->rect().adjusted(2, 2, -2, -2)).Ratio, s_ordinary);
    EXPECT_EQ(ReadText(PictureOf(*tip), tip->rect().adjusted(2, 2, -2, -2)).Ground, SkinColour(SkinRole::Editor));
    QToolTip::hideText();
}

// A button with a menu stands on the bar as the others do.
TEST_F(Readable, ButtonsOfTheCommandBarStandOnItsGround)
{
    CommandBar bar;
    Place(bar, QRect(0, 0, 400, 40));
    bar.AddToolbar(S("T"));
    bar.AddButton(S("T"), S("SQLRun"), S("Run"));
    bar.AddButton(S("T"), S("SQLTrans"), S("Run Transaction"), cbrDropDown);
    bar.AddMenuItem(S("SQLTrans"), S("BT"), S("Mm"));
    QCoreApplication::processEvents();
    const QImage picture = PictureOf(form, 1);
    for (const char *key : {"SQLRun", "SQLTrans"})
        EXPECT_EQ(ReadText(picture, bar.ButtonRect(S(key))).Ground, SkinColour(SkinRole::Form)) << key;
}

// An image must be made out on the bar at both scales, each must differ from every other, and one that is off is faint.
TEST_F(Readable, ToolImagesAtBothScales)
{
    const QColor ground = SkinColour(SkinRole::Form);
    for (const int scale : {1, 2}) {
        QHash<QByteArray, QString> seen;
        for (const QString &key : ToolIconKeys()) {
            const auto picture = [&](QIcon::Mode mode) {
                QImage image(20 * scale, 20 * scale, QImage::Format_RGB32);
                image.fill(ground);
                QPainter painter(&image);
                ToolIcon(key).paint(&painter, image.rect(), Qt::AlignCenter, mode);
                return image;
            };
            const auto clear = [&](const QImage &image) {
                int count = 0;
                for (int y = 0; y < image.height(); ++y)
                    for (int x = 0; x < image.width(); ++x)
                        count += Contrast(image.pixelColor(x, y), ground) >= 3.0;
                return 100.0 * count / (image.width() * image.height());
            };
            const QImage on = picture(QIcon::Normal);
            EXPECT_GE(clear(on), 8.0) << qPrintable(key) << scale; // per cent of the field
            EXPECT_LT(clear(picture(QIcon::Disabled)), clear(on) / 2) << qPrintable(key) << scale;
            const QByteArray bytes(reinterpret_cast<const char *>(on.constBits()), on.sizeInBytes());
            EXPECT_FALSE(seen.contains(bytes)) << qPrintable(key) << " looks like " << qPrintable(seen.value(bytes));
            seen.insert(bytes, key);
        }
    }
}
