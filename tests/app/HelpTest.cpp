// Welcome, about and help.
#include "app/Menus.h"
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmRookie.h"
#include "controls/Skin.h"
#include "tests/app/ShellFixture.h"
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextFragment>
#include <QTimer>

namespace {

class Help : public ShellTest
{
protected:
    // Looks at the modal dialog that comes up, then closes it with Return. Calls nothing when none does.
    void OnModal(std::function<void(QDialog *)> look)
    {
        QTimer::singleShot(0, Window.get(), [look] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                look(dialog);
                QTest::keyClick(dialog, Qt::Key_Return);
            }
        });
    }
};

TEST_F(Help, TheWelcomeComesOnceWithoutAnyConnection)
{
    Start();
    int welcomes = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, Window.get(), [&] {
        auto *dialog = qobject_cast<frmRookie *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        ++welcomes;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Add Connection"));
        const auto labels = dialog->findChildren<QLabel *>();
        ASSERT_EQ(labels.size(), 1);
        EXPECT_TRUE(labels[0]->text().startsWith(QStringLiteral(
            "Welcome to Brindlewick your comprehensive database management utility. In order to begin,")));
        EXPECT_TRUE(labels[0]->text().endsWith(QStringLiteral("Click on it to connect and begin.")));
        const auto buttons = dialog->findChildren<QPushButton *>();
        ASSERT_EQ(buttons.size(), 1);
        EXPECT_EQ(buttons[0]->text(), QStringLiteral("OK"));
        QTest::mouseClick(buttons[0], Qt::LeftButton);
    });
    watch.start(5);
    Window->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return welcomes == 1; }));
    for (int i = 0; i < 2; ++i) { // the program comes back to the front
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(Window.get(), &activate);
        QTest::qWait(150);
    }
    EXPECT_EQ(welcomes, 1);
}

TEST_F(Help, WithAConnectionThereIsNoWelcome)
{
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    QTest::qWait(250);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(Help, AboutTellsNameVersionAndLicence)
{
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    QString texts;
    OnModal([&](QDialog *dialog) {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("About Us"));
        for (QLabel *label : dialog->findChildren<QLabel *>())
            texts += label->text() + QLatin1Char('\n');
    });
    Window->menus->Item(QStringLiteral("mnuAboutUS"))->trigger();
    EXPECT_TRUE(texts.contains(QStringLiteral("Brindlewick")));
    EXPECT_TRUE(texts.contains(QStringLiteral(BRINDLEWICK_VERSION)));
    EXPECT_TRUE(texts.contains(QStringLiteral("General Public License")));
}

TEST_F(Help, F1GoesToTheFocusFirst)
{
    struct Taker : QLineEdit
    {
        using QLineEdit::QLineEdit;
        QStringList seen;
        bool take = true;
        void keyPressEvent(QKeyEvent *event) override
        {
            seen << QStringLiteral("press");
            event->setAccepted(take);
        }
        void keyReleaseEvent(QKeyEvent *event) override { seen << QStringLiteral("release"); }
    };
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    auto *taker = new Taker(child);
    taker->show();
    Window->activateWindow();
    taker->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == taker; }));
    Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger();
    EXPECT_EQ(taker->seen, QStringList({"press", "release"}));
    EXPECT_FALSE(Window->findChild<frmHelp *>());
    taker->take = false;
    Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger();
    auto *help = Window->findChild<frmHelp *>();
    ASSERT_TRUE(help);
    EXPECT_TRUE(help->isVisible());
    EXPECT_TRUE(help->txtPage->toPlainText().contains(QStringLiteral("Brindlewick")));
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    QTest::keyClick(Window.get(), Qt::Key_F1);
    EXPECT_EQ(Window->findChildren<frmHelp *>().size(), 1); // the same window again
    EXPECT_TRUE(help->isVisible());
}

TEST_F(Help, EveryPageOfTheManualOpensAndEveryLinkLeadsToOne)
{
    const QStringList pages = frmHelp::Pages();
    ASSERT_FALSE(pages.isEmpty());
    EXPECT_EQ(pages.first(), QStringLiteral("index"));
    frmHelp help;
    for (const QString &page : pages) {
        help.ShowPage(page);
        EXPECT_GT(help.txtPage->toPlainText().size(), 100) << qPrintable(page);
        for (QTextBlock block = help.txtPage->document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().isAnchor()) {
                    EXPECT_GE(Contrast(part.fragment().charFormat().foreground().color(), SkinColour(SkinRole::Editor)),
                              4.5);
                }
        const QString html = help.txtPage->toHtml();
        for (qsizetype at = html.indexOf(QStringLiteral("href=\"")); at >= 0;
             at = html.indexOf(QStringLiteral("href=\""), at + 1)) {
            const QString link = html.mid(at + 6, html.indexOf(QLatin1Char('"'), at + 6) - at - 6);
            if (link.endsWith(QLatin1String(".md"))) {
                EXPECT_TRUE(pages.contains(link.chopped(3))) << qPrintable(page + QStringLiteral(": ") + link);
            }
        }
    }
}

} // namespace
