// The palette, the contrast of what the skin paints, and the walk over the kinds of controls.

#include "controls/Skin.h"
#include "MakeRecordset.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/FlexGrid.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "sqltext/clsColorTable.h"
#include "tests/support/Text.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

TEST(Skin, ThePaletteIsFixed)
{
    const int rows[16][3] = {{90, 110, 80},   {130, 160, 110}, {84, 124, 78},   {50, 70, 30},
                             {175, 195, 5},   {55, 90, 45},    {145, 195, 125}, {38, 62, 21},
                             {145, 195, 125}, {0, 64, 0},      {0, 255, 0},     {0, 20, 0},
                             {55, 90, 45},    {255, 255, 255}, {255, 255, 0},   {10, 70, 10}};
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(SkinColour(i + 1), QColor(rows[i][0], rows[i][1], rows[i][2])) << i + 1;
}

TEST(Skin, ContrastCountsAsTheGuidelinesDo)
{
    EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21.0, 0.01);
    EXPECT_NEAR(Contrast(Qt::black, Qt::black), 1.0, 0.01);
    EXPECT_NEAR(Contrast(QColor(119, 119, 119), Qt::white), 4.48, 0.01);
}

TEST(Skin, EveryOrdinaryTextCanBeRead)
{
    for (const SkinPair &pair : SkinPairs())
        EXPECT_GE(Contrast(SkinColour(pair.Text), SkinColour(pair.Ground)), 4.5) << pair.Where;
}

TEST(Skin, AllSixColoursOfTheEditorCanBeReadOnItsGround)
{
    const QColor colours[] = {{145, 195, 125}, {125, 145, 195}, {155, 125, 195},
                              {195, 175, 125}, {165, 175, 195}, {247, 205, 108}};
    for (const QColor &colour : colours)
        EXPECT_GE(Contrast(colour, SkinColour(SkinRole::Editor)), 4.5) << qPrintable(colour.name());
}

TEST(Skin, DisabledAndFocusAreTold)
{
    for (const SkinRole ground : {SkinRole::Form, SkinRole::List}) {
        const double normal = Contrast(SkinColour(SkinRole::FormText), SkinColour(ground));
        const double disabled = Contrast(SkinColour(SkinRole::DisabledText), SkinColour(ground));
        EXPECT_GT(normal / disabled, 1.5);
        EXPECT_GT(disabled, 1.8); // still there to be read
        EXPECT_GE(Contrast(SkinColour(SkinRole::Focus), SkinColour(ground)), 3.0);
    }
    EXPECT_GE(Contrast(SkinColour(SkinRole::Selection), SkinColour(SkinRole::List)), 3.0);
}

TEST(Skin, InitColoursFillsTheColourTable)
{
    InitColours();
    EXPECT_EQ(gColorTable.Count(), 6);
    EXPECT_TRUE(gColorTableString.contains(S("\\red145\\green195\\blue125")));
}

TEST(Skin, PaintsByKind)
{
    QWidget form;
    QVBoxLayout layout(&form);
    QLabel label(S("label"));
    QPlainTextEdit editor;
    FlexGrid grid;
    ListView list;
    TreeView tree;
    QComboBox chooser, typed;
    typed.setEditable(true);
    QPushButton button(S("OK"));
    QLineEdit line;
    for (QWidget *const control :
         QList<QWidget *>{&label, &editor, &grid, &list, &tree, &chooser, &typed, &button, &line})
        layout.addWidget(control);
    ApplySkin(&form);
    const auto colour = [](const QWidget &control, QPalette::ColorRole role) { return control.palette().color(role); };
    EXPECT_EQ(colour(form, QPalette::Window), SkinColour(4));
    EXPECT_EQ(colour(label, QPalette::WindowText), SkinColour(7));
    EXPECT_EQ(colour(editor, QPalette::Base), SkinColour(12));
    EXPECT_EQ(grid.BackColorFixed(), SkinColour(1));
    EXPECT_EQ(grid.ForeColorFixed(), SkinColour(14));
    EXPECT_EQ(grid.BackColor(), SkinColour(SkinRole::List));
    EXPECT_EQ(colour(*list.header(), QPalette::Button), SkinColour(1));
    EXPECT_EQ(colour(tree, QPalette::Base), SkinColour(SkinRole::List));
    EXPECT_NE(colour(typed, QPalette::Button), colour(chooser, QPalette::Button));
    EXPECT_EQ(colour(line, QPalette::Text), SkinColour(7));
    const QPalette once = button.palette();
    ApplySkin(&form);
    EXPECT_EQ(button.palette(), once);
}

// The frame of a text box or a check box is what tells it from the form.
TEST(Skin, FramesOfFieldsStandOutFromTheForm)
{
    QWidget form;
    form.resize(200, 80);
    QLineEdit field(&form);
    field.setGeometry(10, 10, 100, 24);
    QCheckBox box(&form);
    box.setGeometry(10, 44, 100, 24);
    ApplySkin(&form);
    const QImage picture = form.grab().toImage();
    const QColor ground = SkinColour(SkinRole::Form);
    double best = 0;
    for (int y = 8; y < 16; ++y)
        best = std::max(best, Contrast(picture.pixelColor(60, y), ground));
    EXPECT_GE(best, 3.0); // the upper edge of the field
    best = 0;
    for (int x = 8; x < 20; ++x)
        best = std::max(best, Contrast(picture.pixelColor(x, 56), ground));
    EXPECT_GE(best, 3.0); // the left edge of the box
}

TEST(Skin, LeavesWhatIsExcludedAndEveryDialog)
{
    QWidget form;
    auto *const painted = new QPushButton(&form);
    auto *const skipped = new QPushButton(&form);
    auto *const inner = new QLabel(skipped);
    auto *const alike = new QPushButton(&form);
    painted->setObjectName(S("cmdOK"));
    skipped->setObjectName(S("cmdRaw"));
    alike->setObjectName(S("cmdRa"));
    auto *const box = new QMessageBox(&form);
    box->setText(S("text"));
    const QColor before = skipped->palette().color(QPalette::Button),
                 boxBefore = box->palette().color(QPalette::Window);
    ApplySkin(&form, S("lblNone,cmdRaw"));
    EXPECT_EQ(skipped->palette().color(QPalette::Button), before);
    EXPECT_EQ(inner->palette().color(QPalette::Button), before);
    EXPECT_EQ(painted->palette().color(QPalette::Button), SkinColour(SkinRole::Button));
    EXPECT_EQ(alike->palette().color(QPalette::Button), SkinColour(SkinRole::Button));
    EXPECT_EQ(box->palette().color(QPalette::Window), boxBefore);
    for (QLabel *const part : box->findChildren<QLabel *>())
        EXPECT_EQ(part->palette().color(QPalette::Window), boxBefore);
    ApplySkin(nullptr);
    ApplyBarSkin(nullptr);
}

TEST(Skin, TheSideBarIsPaintedAndDrawsAgain)
{
    QWidget form;
    auto *const bar = new ExplorerBar(&form);
    bar->AddBar(S("CONN"), S("Connections"))->Items().Add({}, S("Sample"), 7);
    bar->resize(160, 120);
    ApplySkin(&form);
    EXPECT_TRUE(bar->Redraw());
    const QImage picture = bar->viewport()->grab().toImage();
    EXPECT_EQ(picture.pixelColor(1, 1), SkinColour(8));
    EXPECT_EQ(picture.pixelColor(1, picture.height() - 1), SkinColour(4));
}
