// The syntax check and the generators through the real window: each by its tool button, its key and its menu item.
#include "analyzer/frmCode.h"
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/Menus.h"
#include "controls/CommandBar.h"
#include "controls/RichTextBox.h"
#include "controls/StatusBar.h"
#include "data/frmConnectionString.h"
#include "data/frmGetSelection.h"
#include "data/frmTextOutput.h"
#include "tests/app/ShellFixture.h"
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

namespace {

const QString allIsWell = QStringLiteral("Syntax check complate. No sytax errors found.");

Qt::Key Letter(const QAction *item)
{
    const QString text = item->text();
    return Qt::Key(text.mid(text.indexOf(u'&') + 1, 1).toUpper().at(0).unicode());
}

class Generators : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        MadeInstead().clear(); // the real Analyzer
        gConns().Add(Database(QStringLiteral("a.sqlite")), QStringLiteral("a"), QStringLiteral("select a from t"));
        Start(QStringLiteral("TestMode"), true);
        Window->resize(1200, 800);
        Window->ConnectTo(Entry(QStringLiteral("a")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
        gConn->Execute(QStringLiteral("insert into t values (1)"));
        Focus();
    }
    void TearDown() override
    {
        delete Code();
        ShellTest::TearDown();
    }
    void Focus()
    {
        SQL->txtSQL->setFocus();
        EXPECT_TRUE(FocusComesTo(SQL->txtSQL));
    }
    // Where a list or dialog has been, the test's desktop makes nothing active by itself.
    bool FocusComesTo(const QWidget *widget)
    {
        Window->activateWindow();
        return QTest::qWaitFor([&] { return QApplication::focusWidget() == widget; });
    }
    // A real click; on the arrow of a drop-down button with an item, and then on that.
    void Click(const char *key, const char *item = nullptr)
    {
        auto *face = Window->cb->findChild<QToolButton *>(QString::fromLatin1(key));
        ASSERT_TRUE(face && face->isEnabled()) << key;
        ASSERT_TRUE(QTest::qWaitFor([&] { return face->isVisible(); })) << key;
        if (!item) {
            QTest::mouseClick(face, Qt::LeftButton, {}, QPoint(face->height() / 3, face->height() / 2));
            return;
        }
        bool clicked = false;
        QTimer::singleShot(0, face->menu(), [&] {
            for (QAction *each : face->menu()->actions())
                if (each->property("Key").toString() == QLatin1String(item)) {
                    clicked = true;
                    QTest::mouseClick(face->menu(), Qt::LeftButton, {}, face->menu()->actionGeometry(each).center());
                }
            face->menu()->close();
        });
        QTest::mouseClick(face, Qt::LeftButton, {}, QPoint(face->width() - 3, face->height() / 2));
        EXPECT_TRUE(clicked) << item;
    }
    // Opens a menu by Alt and its letter, and presses the letter of an item.
    void Keys(const char *menu, const char *item)
    {
        QMenu *opened = Window->menus->Menu(QString::fromLatin1(menu));
        const QAction *chosen = Window->menus->Item(QString::fromLatin1(item));
        QTest::keyClick(Window.get(), Letter(Window->menus->Item(QString::fromLatin1(menu))), Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return opened->isVisible(); })) << menu;
        QTest::keyClick(opened, Letter(chosen));
    }
    // The list of tables is answered with keys: the name is typed, Return takes it; "" is Escape.
    void KeysWithTable(const char *item, const QString &table)
    {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto *ask = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!ask || !ask->isVisible())
                return;
            QTest::keyClicks(ask->findChild<QWidget *>(QStringLiteral("txtCri")), table);
            QTest::keyClick(ask, table.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        timer.start(5);
        Keys("mnuScripts", item);
        QCoreApplication::processEvents();
    }
    template <class Child> Child *Find() const
    {
        for (ChildWindow *child : Window->Children())
            if (auto *found = qobject_cast<Child *>(child))
                return found;
        return nullptr;
    }
    frmCode *Code() const { return Window ? Window->findChild<frmCode *>() : nullptr; }
    QList<frmTextManipulation *> Pages() const { return Window->findChildren<frmTextManipulation *>(); }
    static QString Clipboard() { return QGuiApplication::clipboard()->text(); }
    static int Rows() { return gConn->Execute(QStringLiteral("select count(*) from t"))->CellText(0, 0).toInt(); }

    QPointer<frmSQL> SQL;
};

TEST_F(Generators, TheSyntaxCheckByButtonKeyAndMenu)
{
    const auto byButton = [this] { Click("SQLSyntax"); };
    const auto byKey = [this] { QTest::keyClick(SQL->txtSQL, Qt::Key_F7); };
    const auto byMenu = [this] { Keys("mnuQuery", "mnuSyntax"); };
    int boxes = 0;
    for (const std::function<void()> &check :
         {std::function<void()>(byButton), std::function<void()>(byKey), std::function<void()>(byMenu)}) {
        SQL->SetText(QStringLiteral("delete from t"));
        Focus();
        check();
        EXPECT_EQ(Dialogs.Boxes.size(), ++boxes);
        EXPECT_EQ(Dialogs.LastTitle(), QStringLiteral("Syntax Check"));
        EXPECT_EQ(Dialogs.LastText(), allIsWell);
        EXPECT_FALSE(Find<frmTextOutput>());
        EXPECT_EQ(Rows(), 1);
        SQL->SetText(QStringLiteral("delete from nowhere"));
        check();
        EXPECT_EQ(Dialogs.Boxes.size(), boxes);
        auto *log = Find<frmTextOutput>();
        ASSERT_TRUE(log);
        EXPECT_EQ(Window->ActiveChild(), log);
        EXPECT_EQ(log->Caption(), QStringLiteral("Error Log"));
        EXPECT_TRUE(log->PlainText().contains(QStringLiteral("no such table: nowhere")));
        EXPECT_EQ(SQL->Text(), QStringLiteral("delete from nowhere"));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        log->CloseChild();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        SQL->ShowChild();
    }
}

TEST_F(Generators, TheCodeByButtonItemsKeyAndMenu)
{
    SQL->SetText(QStringLiteral("select \"a\"\r\nfrom t"));
    const QString plain = QStringLiteral("\" select \"a\" \" _\r\n& \" from t \"");
    const auto shown = [&](const char *how) {
        ASSERT_TRUE(Code() && Code()->isVisible()) << how;
        EXPECT_EQ(Code()->txtCode->Text(), plain + u' ') << how;
        QTest::keyClick(Code(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(Code()) << how;
        Focus();
    };
    Click("SQLVBS");
    shown("button");
    Click("SQLVBS", "VBSW");
    shown("item");
    Keys("mnuQuery", "mnuVBSW");
    shown("menu");
    const auto copied = [&](const char *how) {
        EXPECT_EQ(Clipboard(), plain) << how;
        EXPECT_FALSE(Code()) << how;
        QGuiApplication::clipboard()->clear();
        Focus();
    };
    Click("SQLVBS", "VBSC");
    copied("item");
    QTest::keyClick(SQL->txtSQL, Qt::Key_F6);
    copied("key");
    Keys("mnuQuery", "mnuVBSC");
    copied("menu");
    EXPECT_EQ(SQL->Text(), QStringLiteral("select \"a\"\r\nfrom t"));
}

TEST_F(Generators, TheScriptsMenuByKeyboard)
{
    KeysWithTable("mnuMask", QStringLiteral("t"));
    QPointer<frmScriptMask> mask = Find<frmScriptMask>();
    ASSERT_TRUE(mask);
    EXPECT_EQ(mask->Table(), QStringLiteral("t"));
    EXPECT_EQ(Window->ActiveChild(), mask);
    ASSERT_TRUE(FocusComesTo(mask->cmbMask));
    QTest::keyClick(mask->cmbMask, Qt::Key_Return);
    EXPECT_EQ(mask->txtCode->Text(), QStringLiteral("rsData.Fields(\"a\").Value = txta"));
    QTest::keyClick(mask->cmbMask, Qt::Key_Down);
    QTest::keyClick(Window.get(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return mask->txtCode->Text() == QStringLiteral("rsData(\"a\") = txta"); }));
    QTest::keyClick(Window.get(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([] { return Clipboard() == QStringLiteral("rsData(\"a\") = txta"); }));
    mask->cmdRun->setFocus();
    QTest::keyClick(Window.get(), Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), mask->cmbMask);
    mask->CloseChild();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    SQL->ShowChild();
    SQL->SetText(QString());
    Focus();
    KeysWithTable("mnuInsert", QStringLiteral("t"));
    EXPECT_EQ(SQL->Text(), QStringLiteral("INSERT INTO t (a) VALUES (  [Values])\r\n"));

    SQL->SetText(QStringLiteral("select a from t"));
    Focus();
    Keys("mnuScripts", "mnuASP");
    ASSERT_EQ(Pages().size(), 1);
    EXPECT_TRUE(Pages()[0]->etb->Text().contains(QStringLiteral("CONN.EXECUTE(\"select a from t\")")));
    EXPECT_EQ(SQL->Text(), QStringLiteral("select a from t"));
    delete Pages()[0];

    Focus();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [] {
        if (QWidget *ask = QApplication::activeModalWidget())
            QTest::keyClick(ask, Qt::Key_Escape);
    });
    timer.start(5);
    Keys("mnuScripts", "mnuGenCS");
    ASSERT_TRUE(Find<frmTextOutput>());
    EXPECT_EQ(Find<frmTextOutput>()->Caption(), QStringLiteral("Connection String"));
}

TEST_F(Generators, APageOfNoStatementIsRefusedInTheStatusBar)
{
    for (const char *text : {"", "  ", "\r\n \r\n"}) {
        SQL->SetText(QString::fromLatin1(text));
        Focus();
        Window->SB->SetPanelText(1, QString());
        Keys("mnuScripts", "mnuASP");
        EXPECT_TRUE(Pages().isEmpty());
        EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Generate ASP needs a statement."));
        EXPECT_EQ(SQL->Text(), QString::fromLatin1(text));
    }
}

// The list was filled while the table still was there.
TEST_F(Generators, ATableThatIsGoneIsToldAndTheTextStays)
{
    SQL->SetText(QStringLiteral("select 'mine'"));
    Focus();
    KeysWithTable("mnuMask", QStringLiteral("t"));
    QPointer<frmScriptMask> mask = Find<frmScriptMask>();
    ASSERT_TRUE(mask);
    gConn->Execute(QStringLiteral("drop table t"));
    QTest::keyClick(mask->cmbMask, Qt::Key_Return);
    EXPECT_EQ(Dialogs.LastTitle(), QStringLiteral("Error"));
    EXPECT_TRUE(Dialogs.LastText().contains(QStringLiteral("no such table: t"))) << qPrintable(Dialogs.LastText());
    EXPECT_EQ(mask->txtCode->Text(), QString());
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 'mine'"));
}

} // namespace
