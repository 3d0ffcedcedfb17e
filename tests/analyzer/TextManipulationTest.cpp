// The window of a generated text: saving, searching, leaving.
#include "AnalyzerFixture.h"
#include "FindAnswers.h"
#include "analyzer/frmTextManipulation.h"
#include "data/frmFind.h"
#include "tests/support/Text.h"
#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

namespace {

struct TextManipulation : Analyzer
{
    QPointer<frmTextManipulation> page;
    void SetUp() override
    {
        Analyzer::SetUp();
        page = new frmTextManipulation;
        page->SetText(S("one\r\ntwo\r\none \xc3\xa4"));
        page->show();
        page->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(page));
        page->etb->setFocus();
    }
    void TearDown() override
    {
        delete page;
        Analyzer::TearDown();
    }
    QByteArray Content(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
};

} // namespace

TEST_F(TextManipulation, TheMenuAndTheEditorThatFillsTheWindow)
{
    QStringList names;
    for (const QAction *item : page->menuBar()->actions().first()->menu()->actions())
        names += item->objectName();
    EXPECT_EQ(names, QStringList({S("mnuSave"), S("mnuSaveAS"), S("mnuFind"), S("mnuExit")}));
    page->resize(500, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(page->etb->width(), 500);
    EXPECT_EQ(page->etb->height() + page->menuBar()->height(), 400);
    EXPECT_FALSE(page->etb->accessibleName().isEmpty());
}

TEST_F(TextManipulation, TheFirstSaveAsksAndTheNextOnesDoNot)
{
    const QString path = folder.filePath(S("p.txt"));
    dialogs.Files << path;
    QTest::keyClick(page->etb, Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(dialogs.FileDialogs.size(), 1);
    EXPECT_EQ(dialogs.FileDialogs[0].Title, S("Save File"));
    EXPECT_EQ(dialogs.FileDialogs[0].DefaultExt, S("txt"));
    EXPECT_EQ(dialogs.FileDialogs[0].Filter, S("Text File [*.txt]|*.txt"));
    EXPECT_TRUE(dialogs.FileDialogs[0].Save);
    EXPECT_EQ(Content(path), QByteArray("one\r\ntwo\r\none \xc3\xa4"));
    page->etb->SetSelStart(0);
    QTest::keyClicks(page->etb, S("x"));
    page->mnuSave->trigger();
    EXPECT_EQ(dialogs.FileDialogs.size(), 1);
    EXPECT_TRUE(Content(path).startsWith("xone"));
}

TEST_F(TextManipulation, SaveAsWarnsBeforeItOverwrites)
{
    const QString path = folder.filePath(S("there.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    dialogs.Files << path << path << QString();
    dialogs.Answers << mbNo << mbYes;
    page->mnuSaveAS->trigger();
    EXPECT_EQ(dialogs.LastTitle(), S("Save"));
    EXPECT_EQ(dialogs.LastText(), S("This file name already exists. Are you sure you want to overwrite this file?"));
    EXPECT_EQ(Content(path), QByteArray("old"));
    page->mnuSaveAS->trigger();
    EXPECT_TRUE(Content(path).startsWith("one"));
    page->mnuSaveAS->trigger(); // cancelled
    EXPECT_EQ(dialogs.FileDialogs.size(), 3);
    EXPECT_EQ(dialogs.Boxes.size(), 2);
}

TEST_F(TextManipulation, AFileThatCannotBeWrittenIsToldAndTheTextStays)
{
    dialogs.Files << folder.filePath(S("no/such/p.txt"));
    page->mnuSave->trigger();
    EXPECT_EQ(dialogs.LastTitle(), S("Error"));
    EXPECT_TRUE(page->etb->Text().startsWith(S("one")));
    dialogs.Files << QString();
    page->mnuSave->trigger(); // asks again: no file holds it
    EXPECT_EQ(dialogs.FileDialogs.size(), 2);
}

TEST_F(TextManipulation, FindGoesFromHitToHitWithoutReplacing)
{
    int shown = 0;
    bool replacing = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
        if (!find || !find->isVisible())
            return;
        replacing = replacing || find->cmdReplace->isEnabled();
        find->cmbCri->setEditText(S("one"));
        (++shown < 3 ? find->cmdFind : find->cmdCancel)->click();
    });
    timer.start(5);
    QTest::keyClick(page->etb, Qt::Key_F3);
    EXPECT_EQ(shown, 3);
    EXPECT_FALSE(replacing);
    EXPECT_EQ(page->etb->SelStart(), 10);
    EXPECT_EQ(page->etb->SelText(), S("one"));
    timer.stop();
    QTimer::singleShot(20, page, [] {
        auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
        ASSERT_TRUE(find);
        find->cmbCri->setEditText(S("zebra"));
        find->cmdFind->click();
    });
    page->mnuFind->trigger();
    EXPECT_EQ(dialogs.LastText(), S("No match has been found."));
}

// The hit begins on an LF. It was shown one character too far in front, and what it then held was sought next.
TEST_F(TextManipulation, AHitInALineEndIsSelectedWhole)
{
    page->etb->SetText(S("b\r\nab xa"));
    page->etb->SetSelStart(0);
    QStringList seen;
    FindAnswers answers({[&](frmFind &find) {
                             find.cmbCri->setEditText(S("?a"));
                             find.cmdFind->click();
                         },
                         [&](frmFind &find) {
                             seen << page->etb->SelText();
                             find.cmdFind->click(); // as it stands
                         },
                         [&](frmFind &find) {
                             seen << page->etb->SelText();
                             find.cmdCancel->click();
                         }});
    QTest::keyClick(page->etb, Qt::Key_F3);
    EXPECT_EQ(seen, QStringList({S("\r\na"), S("xa")}));
    EXPECT_EQ(answers.criteria.mid(1), QStringList({S("?a"), S("?a")}));
}

TEST_F(TextManipulation, EscapeClosesOnlyWhileNothingWouldBeLost)
{
    page->etb->SetSelStart(0);
    QTest::keyClicks(page->etb, S("x"));
    QTest::keyClick(page->etb, Qt::Key_Escape);
    EXPECT_TRUE(page->isVisible());
    dialogs.Files << folder.filePath(S("p.txt"));
    page->mnuSave->trigger();
    QTest::keyClick(page->etb, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(page);
}

TEST_F(TextManipulation, TheMenuByKeys)
{
    const QString path = folder.filePath(S("p.txt"));
    dialogs.Files << path << folder.filePath(S("q.txt"));
    QTest::keyClick(page->etb, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(Content(path).startsWith("one"));
    QTest::keyClick(page->etb, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(dialogs.FileDialogs.size(), 2);
    EXPECT_TRUE(Content(folder.filePath(S("q.txt"))).startsWith("one"));
    bool found = false;
    QTimer::singleShot(20, page, [&] {
        auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
        ASSERT_TRUE(find);
        found = true;
        QTest::keyClick(find, Qt::Key_Escape);
    });
    QTest::keyClick(page->etb, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(found);
    page->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(page));
    QMenu *menu = page->menuBar()->actions().first()->menu();
    QTest::keyClick(page, Qt::Key_F, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu->isVisible(); }));
    QTest::keyClick(menu, Qt::Key_X);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(page);
}

TEST_F(TextManipulation, ExitCloses)
{
    page->mnuExit->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(page);
}
