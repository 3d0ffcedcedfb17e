// Welcome, about and help.
#include "ado/odbc/OdbcDriver.h"
#include "ado/sqlite/SqliteDriver.h"
#include "app/Menus.h"
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmRookie.h"
#include "controls/ListView.h"
#include "controls/Skin.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Settled.h"
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
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
        EXPECT_TRUE(Settled());
    }
    EXPECT_EQ(welcomes, 1);
}

TEST_F(Help, WithAConnectionThereIsNoWelcome)
{
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    EXPECT_TRUE(Settled());
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
    EXPECT_TRUE(help->txtPage->toPlainText().contains(QStringLiteral("The SQL Analyzer")));
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    QTest::keyClick(Window.get(), Qt::Key_F1);
    EXPECT_EQ(Window->findChildren<frmHelp *>().size(), 1); // the same window again
    EXPECT_TRUE(help->isVisible());
}

TEST_F(Help, TheManualOpensAtThePageOfTheActiveWindow)
{
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger();
    auto *help = Window->findChild<frmHelp *>();
    ASSERT_TRUE(help);
    EXPECT_EQ(help->Page(), QStringLiteral("index")); // no window, no page of its own
    const struct
    {
        const char *form, *page;
    } rows[] = {{"frmSQL", "analyzer"}, {"frmHirarchy", "results"},   {"frmGrid", "results"},
                {"frmTree", "schema"},  {"frmTextOutput", "results"}, {"frmScriptMask", "analyzer"},
                {"frmOther", "index"}};
    for (const auto &each : rows) {
        Child(QString::fromLatin1(each.form));
        Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger();
        EXPECT_EQ(help->Page(), QString::fromLatin1(each.page)) << each.form;
        EXPECT_TRUE(frmHelp::Pages().contains(help->Page()));
        EXPECT_EQ(help->lvPages->Tag(help->lvPages->SelectedRow()), help->Page());
    }
}

TEST_F(Help, ShiftF1OpensTheManualFromAnEditorThatHasAUseForF1)
{
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Start(QStringLiteral("TestMode"), true);
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    QTest::keyClick(child, Qt::Key_F1, Qt::ShiftModifier);
    auto *help = Window->findChild<frmHelp *>();
    ASSERT_TRUE(help);
    EXPECT_EQ(help->Page(), QStringLiteral("analyzer"));
    help->close();
    QTest::keyClick(child, Qt::Key_F1, Qt::ControlModifier);
    EXPECT_FALSE(help->isVisible());
}

TEST_F(Help, TheManualIsSearched)
{
    frmHelp help;
    help.ShowPage();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
    const qint64 all = help.lvPages->Count();
    EXPECT_EQ(all, frmHelp::Pages().size());
    EXPECT_EQ(help.lvPages->Text(0), frmHelp::Title(QStringLiteral("index")));
    QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return help.txtSearch->hasFocus(); }));
    QTest::keyClicks(help.txtSearch, QStringLiteral("CTRL")); // without regard to case
    ASSERT_GT(help.lvPages->Count(), 1);
    EXPECT_LT(help.lvPages->Count(), all);
    const QString page = help.Page();
    const qsizetype hits = help.Hits(QStringLiteral("ctrl")).size();
    ASSERT_GT(hits, 0);
    EXPECT_EQ(help.lvPages->Text(help.lvPages->SelectedRow()),
              frmHelp::Title(page) + QStringLiteral(" (%1)").arg(hits));
    EXPECT_EQ(help.txtPage->extraSelections().size(), hits);
    // One hit after another, then the next page's first, and back again.
    const auto at = [&] { return help.txtPage->textCursor().position(); };
    EXPECT_EQ(at(), help.Hits(QStringLiteral("ctrl"))[0]);
    for (qsizetype i = 1; i < hits; ++i) {
        QTest::keyClick(help.txtSearch, Qt::Key_Return);
        EXPECT_EQ(help.Page(), page);
        EXPECT_EQ(at(), help.Hits(QStringLiteral("ctrl"))[i]);
    }
    QTest::keyClick(&help, Qt::Key_F3);
    EXPECT_NE(help.Page(), page);
    EXPECT_EQ(at(), help.Hits(QStringLiteral("ctrl"))[0]);
    QTest::keyClick(&help, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(help.Page(), page);
    EXPECT_EQ(at(), help.Hits(QStringLiteral("ctrl"))[hits - 1]);
    // All the way round.
    qsizetype steps = 0;
    do
        QTest::keyClick(&help, Qt::Key_F3);
    while ((help.Page() != page || at() != help.Hits(QStringLiteral("ctrl"))[hits - 1]) && ++steps < 1000);
    EXPECT_LT(steps, 1000);
    // Nothing found: no page is listed, what is shown stays.
    QTest::keyClicks(help.txtSearch, QStringLiteral("zzzz"));
    EXPECT_EQ(help.lvPages->Count(), 0);
    EXPECT_EQ(help.Page(), page);
    EXPECT_TRUE(help.txtPage->extraSelections().isEmpty());
    QTest::keyClick(help.txtSearch, Qt::Key_Return);
    // Escape empties the search first.
    QTest::keyClick(help.txtSearch, Qt::Key_Escape);
    EXPECT_TRUE(help.isVisible());
    EXPECT_EQ(help.lvPages->Count(), all);
    QTest::keyClick(help.txtSearch, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(Help, APageIsChosenInTheList)
{
    frmHelp help;
    help.ShowPage();
    const auto row = help.lvPages->visualRect(help.lvPages->model()->index(2, 0));
    QTest::mouseClick(help.lvPages->viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(help.Page(), frmHelp::Pages()[2]);
    EXPECT_TRUE(help.txtPage->toPlainText().startsWith(frmHelp::Title(help.Page())));
    QTest::keyClick(help.lvPages, Qt::Key_Up);
    EXPECT_EQ(help.Page(), frmHelp::Pages()[1]);
}

TEST_F(Help, AboutListsTheToolkitAndTheDrivers)
{
    frmAbout about;
    const auto *list = about.findChild<ListView *>(QStringLiteral("lvDrivers"));
    ASSERT_TRUE(list);
    ASSERT_GT(list->Count(), 0);
    EXPECT_EQ(list->Text(0), QStringLiteral("SQLite %1 (built in)").arg(ADODB::SqliteVersion()));
    EXPECT_GT(ADODB::SqliteVersion().count(QLatin1Char('.')), 1);
    QStringList rest;
    for (qint64 row = 1; row < list->Count(); ++row)
        rest << list->Text(row);
    EXPECT_EQ(rest, ADODB::OdbcDrivers());
    EXPECT_TRUE(about.findChild<QLabel *>(QStringLiteral("lblVersion"))
                    ->text()
                    .contains(QStringLiteral("Qt ") + QString::fromLatin1(qVersion())));
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

TEST_F(Help, F1OnAnItemOfAMenuOpensThePageOfItsCommand)
{
    gConns().Add(Database(), QStringLiteral("a"), QString());
    Start(QStringLiteral("TestMode"), true);
    for (const auto &[group, item, page] :
         {std::array{"mnuFile", "mnuConn", "connections"}, std::array{"mnuDBTables", "mnuTableLinks", "links"},
          std::array{"mnuDBTables", "mnuFieldsGrp", "schema"}, std::array{"mnuWindow", "mnuCascade", "index"}}) {
        SCOPED_TRACE(item);
        QMenu *menu = Window->menus->Menu(QLatin1String(group));
        menu->popup(Window->mapToGlobal(QPoint(0, 0)));
        menu->setActiveAction(Window->menus->Item(QLatin1String(item)));
        QTest::keyClick(menu, Qt::Key_F1);
        EXPECT_FALSE(menu->isVisible());
        auto *help = Window->findChild<frmHelp *>();
        ASSERT_TRUE(help);
        EXPECT_TRUE(help->isVisible());
        EXPECT_EQ(help->Page(), QLatin1String(page));
        help->close();
    }
}

} // namespace
