// Which window answers which name of the child protocol, and what the menus make of it.
#include "app/Menus.h"
#include "frame/ModalForm.h"
#include "tests/app/EveryWindow.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Places.h"
#include <QAction>
#include <QDirIterator>
#include <QRegularExpression>

namespace {

class Protocol : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    ChildWindow *Shown(const AnyWindow &row)
    {
        std::unique_ptr<QWidget> window(row.Make());
        auto *child = qobject_cast<ChildWindow *>(window.get());
        if (!child)
            return nullptr;
        window.release();
        Window->AddChild(child);
        child->ShowChild();
        return child;
    }
};

TEST(EveryWindow, IsKnown)
{
    QSet<QString> known;
    for (const AnyWindow &row : EveryWindow())
        known << QString::fromLatin1(row.Name);
    static const QRegularExpression form(QStringLiteral("^class ((?:frm|dr)[A-Z]\\w*) : public"),
                                         QRegularExpression::MultilineOption);
    int found = 0;
    for (const char *room : {"data", "views", "visual", "movement", "analyzer", "app"}) {
        QDirIterator headers((places::Source() + QStringLiteral("/")) + QLatin1String(room), {QStringLiteral("*.h")},
                             QDir::Files);
        while (headers.hasNext()) {
            QFile header(headers.next());
            ASSERT_TRUE(header.open(QIODevice::ReadOnly));
            const auto match = form.match(QString::fromUtf8(header.readAll()));
            if (!match.hasMatch())
                continue;
            ++found;
            EXPECT_TRUE(known.contains(match.captured(1))) << qPrintable(match.captured(1));
        }
    }
    EXPECT_EQ(found, known.size());
}

// The names are what a window overrides; it says so itself with one line, which may be forgotten.
TEST_F(Protocol, EachWindowIsWhatItsRowSays)
{
    for (const AnyWindow &each : EveryWindow()) {
        SCOPED_TRACE(each.Name);
        const WindowRow *row = FindWindow(QString::fromLatin1(each.Name));
        ASSERT_TRUE(row);
        const std::unique_ptr<QWidget> window(each.Make());
        EXPECT_STREQ(window->metaObject()->className(), each.Name);
        EXPECT_EQ(qobject_cast<ModalForm *>(window.get()) != nullptr, row->Kind == WindowKind::Dialog);
        auto *child = qobject_cast<ChildWindow *>(window.get());
        ASSERT_EQ(child != nullptr, row->Kind == WindowKind::Child);
        ASSERT_EQ(child != nullptr, row->Answers != nullptr);
        if (!child)
            continue;
        EXPECT_EQ(child->FormName(), QString::fromLatin1(each.Name));
        EXPECT_EQ(child->Answers().List(), row->Answers().List());
        for (const QString &name : row->Answers().List())
            EXPECT_TRUE(child->Offers(name));
        // What follows the connection says so in its Tag.
        EXPECT_EQ(child->Tag == QLatin1String("1"), child->Offers(QStringLiteral("RefreshForm")));
    }
}

TEST_F(Protocol, EveryOperationOfAChildIsAName)
{
    QFile header(places::Source() + QStringLiteral("/frame/ChildWindow.h"));
    ASSERT_TRUE(header.open(QIODevice::ReadOnly));
    static const QRegularExpression operation(QStringLiteral("^    virtual void (\\w+)\\("),
                                              QRegularExpression::MultilineOption);
    QSet<QString> operations, names;
    const QString text = QString::fromUtf8(header.readAll());
    for (auto each = operation.globalMatch(text); each.hasNext();)
        operations << each.next().captured(1);
    operations -= {QStringLiteral("Activated"), QStringLiteral("Deactivated"), QStringLiteral("Unload")};
    for (int name = 0; name < int(ChildName::Count); ++name)
        names << ToText(ChildName(name));
    EXPECT_EQ(operations, names);
}

// What File and Edit offer is what the window answers.
TEST_F(Protocol, TheMenusFollowWhatTheActiveWindowOffers)
{
    for (const AnyWindow &row : EveryWindow()) {
        const ChildWindow *child = Shown(row);
        if (!child)
            continue;
        ASSERT_EQ(Window->ActiveChild(), child);
        Window->menus->Follow("mnuFile");
        Window->menus->Follow("mnuEdit");
        for (const char *name : {"mnuOpen", "mnuSave", "mnuPrint", "mnuCopy", "mnuCut", "mnuPaste", "mnuUndo",
                                 "mnuSelectAll", "mnuFind", "mnuReplace"})
            EXPECT_EQ(Window->menus->Item(QString::fromLatin1(name))->isEnabled(),
                      child->Offers(QString::fromLatin1(name)))
                << row.Name << ' ' << name;
        EXPECT_EQ(Window->menus->Item(QStringLiteral("mnuFileSnapshot"))->isEnabled(),
                  child->Offers(QStringLiteral("SnapShot")));
        EXPECT_FALSE(Window->menus->Item(QStringLiteral("mnuDeleteConn"))->isEnabled());
    }
}

TEST_F(Protocol, ANewObjectAllowsNothing)
{
    const clsMenuSettings none;
    EXPECT_FALSE(none.CanSave || none.CanOpen || none.CanSelectAll || none.CanReplace || none.CanCopy || none.CanCut ||
                 none.CanPaste || none.CanUndo || none.CanFind || none.CanPrint);
}

} // namespace
