// Dialogs, guards, splitter, busy indicator and icons.

#include "ado/Error.h"
#include "controls/Attempt.h"
#include "controls/BusyIndicator.h"
#include "controls/ControlError.h"
#include "controls/Icons.h"
#include "controls/RedrawLock.h"
#include "controls/Splitter.h"
#include "controls/Twips.h"
#include "controls/WaitCursor.h"
#include "controls/ucIconMaker.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/Text.h"
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString csvFilter = S("Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt");

// Runs once the modal dialog that the next call opens stands.
template <class Dialog> void WithDialog(const std::function<void(Dialog *)> &act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(dialog);
    });
}

} // namespace

// In the test mode an error that is passed over went by without a trace.
TEST(Attempt, InTheTestModeAPassedErrorIsToldWithItsPlace)
{
    const auto told = [](bool on, bool described) {
        TellPassedErrors(on);
        testing::internal::CaptureStderr();
        QString why;
        Attempt([] { throw ControlError(5, QStringLiteral("no such row")); }, described ? &why : nullptr);
        TellPassedErrors(false);
        return QString::fromStdString(testing::internal::GetCapturedStderr());
    };
    const QString line = told(true, false);
    EXPECT_TRUE(line.contains(QRegularExpression(QStringLiteral("SmallControlsTest\\.cpp:\\d+: no such row\n$"))))
        << line.toStdString();
    EXPECT_EQ(told(true, true), QString()); // somebody takes its words
    EXPECT_EQ(told(false, false), QString());
}

// With a debugger attached it stops at that place. The debugger here is the parent process.
TEST(Attempt, InTheTestModeADebuggerStopsAtAPassedError)
{
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(9);
        TellPassedErrors(true);
        Attempt([] { throw std::runtime_error("passed over"); });
        ::_exit(3);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSTOPPED(status)) << status;
    EXPECT_EQ(WSTOPSIG(status), SIGTRAP);
    ASSERT_EQ(::ptrace(PTRACE_CONT, child, nullptr, SIGTRAP), 0); // as a tracer that hands it on
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 3) << status;
}

TEST(Attempt, SwallowsAndDescribes)
{
    QString why = S("old");
    EXPECT_TRUE(Attempt([] {}, &why));
    EXPECT_EQ(why, QString());
    EXPECT_FALSE(Attempt([] { throw ADODB::Error(7, S("the server's words")); }, &why));
    EXPECT_EQ(why, S("the server's words"));
    EXPECT_FALSE(Attempt([] { throw ControlError(381, S("range")); }, &why));
    EXPECT_EQ(why, S("range"));
    EXPECT_FALSE(Attempt([] { throw std::runtime_error("plain"); }, &why));
    EXPECT_EQ(why, S("plain"));
    EXPECT_FALSE(Attempt([] { throw 5; }, &why));
    EXPECT_FALSE(why.isEmpty());
    int value = 1;
    EXPECT_FALSE(Attempt([&] { value = std::stoi("x"); }));
    EXPECT_EQ(value, 1); // an assignment that fails keeps the old value
}

TEST(RedrawLock, NestsAndOutlivesItsWidget)
{
    auto *widget = new QWidget;
    RedrawLock outer(widget);
    {
        RedrawLock inner(widget);
        EXPECT_FALSE(widget->updatesEnabled());
    }
    EXPECT_FALSE(widget->updatesEnabled());
    outer.Release();
    EXPECT_TRUE(widget->updatesEnabled());
    outer.Release();
    RedrawLock late(widget);
    delete widget;
    late.Release();
    RedrawLock none(nullptr);
}

TEST(WaitCursor, IsPutBack)
{
    QWidget window;
    {
        WaitCursor outer(&window), inner(&window);
        EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
        inner.Release();
        EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
    }
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(Attempt([] {
        WaitCursor whole;
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        throw 1;
    }));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Dialogs, TheDoubleReadsWhatIsAsked)
{
    {
        DialogDouble dialogs;
        dialogs.Answers << mbNo;
        EXPECT_EQ(MsgBox(S("Sure?"), mbYesNo | mbExclamation, S("Save")), mbNo);
        EXPECT_EQ(dialogs.Boxes[0].Text, S("Sure?"));
        EXPECT_EQ(dialogs.Boxes[0].Title, S("Save"));
        EXPECT_EQ(dialogs.Boxes[0].Icon, int(mbExclamation));
        EXPECT_EQ(dialogs.Boxes[0].Buttons, int(mbYesNo));
        EXPECT_EQ(MsgBox(S("Hello")), mbOK);
        EXPECT_EQ(dialogs.LastTitle(), S("Brindlewick"));
        EXPECT_EQ(dialogs.Boxes[1].Icon, 0);
        dialogs.Inputs << S("typed");
        bool accepted = false;
        EXPECT_EQ(InputBox(S("Name?"), {}, S("preset"), &accepted), S("typed"));
        EXPECT_TRUE(accepted);
        EXPECT_EQ(dialogs.InputBoxes[0].Default, S("preset"));
        EXPECT_EQ(InputBox(S("Again?"), S("t"), S("preset"), &accepted), QString());
        EXPECT_FALSE(accepted);
        dialogs.Files << S("/tmp/a.csv");
        EXPECT_EQ(SaveFileDialog(S("Save CSV File"), csvFilter, S("CSV")), S("/tmp/a.csv"));
        EXPECT_TRUE(dialogs.FileDialogs[0].Save);
        EXPECT_EQ(dialogs.FileDialogs[0].DefaultExt, S("CSV"));
        EXPECT_EQ(OpenFileDialog(S("Open"), csvFilter), QString());
        EXPECT_FALSE(dialogs.FileDialogs[1].Save);
    }
    EXPECT_EQ(dynamic_cast<DialogDouble *>(&DialogService::Current()), nullptr);
}

TEST(Dialogs, FiltersAndExtensions)
{
    EXPECT_EQ(ToolkitFilter(csvFilter), S("Comma Seperated File [*.csv] (*.csv);;Text File [*.txt] (*.txt)"));
    EXPECT_EQ(ToolkitFilter(S("Text File [*.txt] |*.txt")), S("Text File [*.txt] (*.txt)"));
    EXPECT_EQ(ToolkitFilter(S("Both|*.a;*.b")), S("Both (*.a *.b)"));
    EXPECT_EQ(ToolkitFilter({}), QString());
    EXPECT_EQ(WithDefaultExtension(S("/x/name"), S("CSV")), S("/x/name.CSV"));
    EXPECT_EQ(WithDefaultExtension(S("/x.d/name"), S("CSV")), S("/x.d/name.CSV"));
    EXPECT_EQ(WithDefaultExtension(S("/x/name.htm"), S("CSV")), S("/x/name.htm"));
    EXPECT_EQ(WithDefaultExtension({}, S("CSV")), QString());
}

TEST(Dialogs, ARealBoxShowsTextIconAndItsFirstButton)
{
    WithDialog<QMessageBox>([](QMessageBox *box) {
        EXPECT_EQ(box->text(), S("<b>is no markup</b>"));
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->buttons().size(), 2);
        EXPECT_EQ(box->standardButton(box->defaultButton()), QMessageBox::Yes);
        QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(MsgBox(S("<b>is no markup</b>"), mbYesNo | mbExclamation, S("SQL")), mbYes);
    WithDialog<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
    EXPECT_EQ(MsgBox(S("?"), mbYesNo), mbNo);
    WithDialog<QMessageBox>([](QMessageBox *box) { box->close(); });
    EXPECT_EQ(MsgBox(S("?"), mbYesNoCancel), mbCancel);
    WithDialog<QMessageBox>([](QMessageBox *box) {
        EXPECT_EQ(box->icon(), QMessageBox::NoIcon);
        QTest::mouseClick(box->button(QMessageBox::Retry), Qt::LeftButton);
    });
    EXPECT_EQ(MsgBox(S("?"), mbAbortRetryIgnore), mbRetry);
    WithDialog<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
    EXPECT_EQ(MsgBox(S("!")), mbOK);
}

TEST(Dialogs, ARealInputBoxGivesWhatIsTyped)
{
    WithDialog<QInputDialog>([](QInputDialog *box) {
        EXPECT_EQ(box->textValue(), S("old"));
        auto *const line = box->findChild<QLineEdit *>();
        line->selectAll();
        QTest::keyClicks(line, S("new"));
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(InputBox(S("Name"), S("Title"), S("old")), S("new"));
    WithDialog<QInputDialog>([](QInputDialog *box) { QTest::keyClick(box, Qt::Key_Escape); });
    bool accepted = true;
    EXPECT_EQ(InputBox(S("Name"), S("Title"), S("old"), &accepted), QString());
    EXPECT_FALSE(accepted);
}

// The toolkit refused a name that is not there in its own words, and the window's own never came.
TEST(Dialogs, AFileThatIsNotThereCanBeNamedForOpening)
{
    const QTemporaryDir folder;
    QFile there(folder.filePath(S("there.sql")));
    ASSERT_TRUE(there.open(QIODevice::WriteOnly));
    const auto typed = [&](const QString &name) {
        int boxes = 0;
        WithDialog<QFileDialog>([&](QFileDialog *dialog) {
            auto *const line = dialog->findChild<QLineEdit *>();
            line->setText(name);
            QTimer::singleShot(0, dialog, [&boxes, dialog] { // what would stand above it
                if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                    ++boxes;
                    box->close();
                    dialog->reject();
                }
            });
            QTest::keyClick(line, Qt::Key_Return);
        });
        const QString path = OpenFileDialog(S("Open"), S("Query File [*.sql]|*.sql"), S("sql"), folder.path());
        EXPECT_EQ(boxes, 0) << qPrintable(name);
        return path;
    };
    EXPECT_EQ(typed(S("gone.txt")), folder.filePath(S("gone.txt")));
    EXPECT_EQ(typed(S("there.sql")), folder.filePath(S("there.sql")));
    EXPECT_EQ(typed(S("there")), folder.filePath(S("there.sql"))); // the extension goes without saying
}

TEST(Splitter, KeepsItsBordersAndSaysWhereItWent)
{
    QWidget window;
    window.resize(400, 200);
    auto *const split = new Splitter(&window);
    split->resize(6, 200);
    split->SetBorder(1, 10);
    split->SetBorder(3, 150);
    window.show();
    split->SetPosition(2500);
    EXPECT_EQ(split->Position(), 2490); // whole pixels
    split->SetPosition(-5000);
    EXPECT_EQ(split->Position(), 0);
    EXPECT_EQ(split->Within(999999), ToTwips(394) - 150);
    EXPECT_EQ(split->Border(9), 0);
    split->SetPosition(1500);
    QSignalSpy moving(split, &Splitter::Moving), moved(split, &Splitter::Moved);
    QTest::mousePress(split, Qt::LeftButton, {}, {3, 50});
    const auto drag = [&](const QPoint &to) {
        QMouseEvent move(QEvent::MouseMove, to, split->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(split, &move);
    };
    drag({53, 50});
    EXPECT_EQ(split->Position(), 1500 + ToTwips(50));
    EXPECT_EQ(moving.size(), 1);
    EXPECT_EQ(moved.size(), 0);
    QTest::mouseRelease(split, Qt::LeftButton, {}, {3, 50});
    EXPECT_EQ(moved.size(), 1);
    drag({90, 50}); // no longer held
    EXPECT_EQ(split->Position(), 1500 + ToTwips(50));
    split->setFocus();
    QTest::keyClick(split, Qt::Key_Left);
    EXPECT_EQ(split->Position(), 1500 + ToTwips(40));
    EXPECT_EQ(moved.size(), 2);
    split->SetOrientation(spltHorizontal);
    split->resize(400, 6);
    split->SetPosition(750);
    EXPECT_EQ(split->y(), 50);
}

TEST(Splitter, ADragTellsWhereTheBarStoodAndHowFarThePointerWent)
{
    QWidget window;
    window.resize(400, 200);
    auto *const split = new Splitter(&window);
    split->resize(6, 200);
    window.show();
    split->SetPosition(1500);
    QSignalSpy moved(split, &Splitter::Moved), dropped(split, &Splitter::Dropped);
    QTest::mouseClick(split, Qt::LeftButton, {}, {3, 50}); // a click alone moves nothing
    EXPECT_EQ(moved.size() + dropped.size(), 0);
    QTest::mousePress(split, Qt::LeftButton, {}, {3, 50});
    QMouseEvent move(QEvent::MouseMove, QPoint(43, 50), split->mapToGlobal(QPoint(43, 50)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(split, &move);
    QTest::mouseRelease(split, Qt::LeftButton, {}, {3, 50}); // the bar has followed
    ASSERT_EQ(dropped.size(), 1);
    EXPECT_EQ(dropped[0][0].toInt(), 1500);
    EXPECT_EQ(dropped[0][1].toInt(), ToTwips(43));
    EXPECT_EQ(moved[0][0].toInt(), 1500 + ToTwips(40));
}

TEST(Splitter, ItsRulesNeedNoMouse)
{
    QWidget area;
    area.resize(400, 200);
    auto *const bar = new QWidget(&area);
    bar->setGeometry(100, 0, 6, 200);
    cSplitDDC rules;
    rules.SetPosition(300); // without a bar nothing happens
    EXPECT_EQ(rules.Position(), 0);
    rules.SetSplitObject(bar);
    EXPECT_EQ(rules.SplitObject(), bar);
    rules.SetOrientation(spltVertical);
    rules.SetBorder(1, 150);
    rules.SetBorder(3, 300);
    EXPECT_EQ(rules.Border(1), 150);
    EXPECT_EQ(rules.Border(3), 300);
    EXPECT_FALSE(rules.SplitterFormMouseMove(3000)); // not held
    EXPECT_FALSE(rules.SplitterFormMouseUp(3000));
    EXPECT_EQ(rules.Position(), 1500);
    rules.SplitterMouseDown(1530);
    EXPECT_TRUE(rules.SplitterFormMouseMove(15));
    EXPECT_EQ(rules.Position(), 150);
    EXPECT_TRUE(rules.SplitterFormMouseMove(99999));
    EXPECT_EQ(rules.Position(), ToTwips(394) - 300);
    EXPECT_TRUE(rules.SplitterFormMouseUp(1230));
    EXPECT_EQ(rules.Travel(), 1230 - 1500);
    EXPECT_FALSE(rules.SplitterFormMouseMove(2000));
    delete bar;
    EXPECT_EQ(rules.SplitObject(), nullptr);
    EXPECT_EQ(rules.Position(), 0);
}

TEST(BusyIndicator, RunsOnlyWhileItPlays)
{
    QWidget window;
    window.show();
    auto *const busy = new BusyIndicator(&window);
    EXPECT_TRUE(busy->isHidden());
    busy->Play();
    EXPECT_TRUE(busy->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return busy->Frame() >= 2; }, 3000));
    EXPECT_FALSE(busy->grab().isNull());
    busy->Stop();
    const int frame = busy->Frame();
    EXPECT_FALSE(busy->Playing());
    QTest::qWait(250);
    EXPECT_EQ(busy->Frame(), frame);
    EXPECT_TRUE(busy->isHidden());
}

TEST(Icons, EveryDrawingShowsSomethingOfItsOwnAtEveryScale)
{
    QList<QImage> seen;
    QStringList keys = ToolIconKeys();
    EXPECT_GE(keys.size(), 32);
    QList<QIcon> icons;
    for (const QString &key : keys)
        icons << ToolIcon(key);
    for (const char *letter : {"T", "V", "P", "N", "F", "C", "R", "L"})
        icons << TreeIcon(S(letter));
    for (const int state : {7, 6, 1})
        icons << StateIcon(state);
    icons << AppIcon() << ToolIcon(S("Unknown")) << ToolIcon({});
    for (const QIcon &icon : icons) {
        for (const int side : {16, 20, 40, 64}) {
            const QImage picture = icon.pixmap(QSize(side, side)).toImage().convertToFormat(QImage::Format_ARGB32);
            ASSERT_GE(picture.width(), side);
            int inked = 0;
            for (int y = 0; y < picture.height(); ++y)
                for (int x = 0; x < picture.width(); ++x)
                    inked += qAlpha(picture.pixel(x, y)) > 128;
            EXPECT_GT(inked, picture.width() * picture.height() / 20);
            if (side == 40) {
                EXPECT_FALSE(seen.contains(picture));
                seen << picture;
            }
        }
    }
    EXPECT_TRUE(HasToolIcon(S("MTBOPEN")));
    EXPECT_FALSE(HasToolIcon(S("Unknown")));
}

TEST(Icons, TheMakerCountsItsImages)
{
    ucIconMaker maker;
    EXPECT_EQ(maker.Count(), 0);
    const int count = maker.MakeIcons();
    EXPECT_EQ(count, 8);
    EXPECT_EQ(maker.MakeIcons(), count); // not twice
    for (int image = 1; image <= count; ++image) {
        EXPECT_FALSE(maker.Key(image).isEmpty());
        EXPECT_FALSE(maker.Image(image).pixmap(16, 16).isNull());
    }
    EXPECT_TRUE(maker.Image(0).isNull());
    EXPECT_TRUE(maker.Image(count + 1).isNull());
}
