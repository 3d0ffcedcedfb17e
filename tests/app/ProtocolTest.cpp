// Which window answers which name of the child protocol, and what the menus make of it.
#include "app/Menus.h"
#include "tests/app/EveryWindow.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Places.h"
#include <QAction>
#include <QDirIterator>
#include <QRegularExpression>

namespace {

template <typename Form, typename Result, typename... Arguments>
constexpr bool Overrides(Result (Form::*)(Arguments...))
{
    return !std::is_same_v<Form, ChildWindow>; // a name that a window does not override is its base's
}

struct AnswerRow
{
    const char *Form, *Name;
    bool Answers;
};

#define ANSWER(form, name)                                                                                             \
    {                                                                                                                  \
#form, #name, Overrides(&form::name)                                                                           \
    }
#define ANSWERS(form)                                                                                                  \
    ANSWER(form, mnuCopy), ANSWER(form, mnuCut), ANSWER(form, mnuPaste), ANSWER(form, mnuUndo),                        \
        ANSWER(form, mnuSelectAll), ANSWER(form, mnuFind), ANSWER(form, mnuReplace), ANSWER(form, mnuOpen),            \
        ANSWER(form, mnuSave), ANSWER(form, mnuPrint), ANSWER(form, mnuChart), ANSWER(form, SnapShot),                 \
        ANSWER(form, Parse), ANSWER(form, InsertString), ANSWER(form, ChangeChartType), ANSWER(form, ChangeTitle),     \
        ANSWER(form, ChangeFootNote), ANSWER(form, mnuClearLog), ANSWER(form, mnuMax_Click),                           \
        ANSWER(form, mnuMin_Click), ANSWER(form, mnuAvg_Click), ANSWER(form, mnuSum_Click),                            \
        ANSWER(form, mnuFitColumns), ANSWER(form, mnuAddTable), ANSWER(form, ToolBar),                                 \
        ANSWER(form, DynaMenuItemClick), ANSWER(form, SaveState), ANSWER(form, RefreshForm)

constexpr AnswerRow s_answers[] = {ANSWERS(frmGrid),       ANSWERS(frmHirarchy), ANSWERS(frmSQL),
                                   ANSWERS(frmScriptMask), ANSWERS(frmTree),     ANSWERS(frmTextOutput)};

// Who answers each name. A result's chart waits for the chart window; snapshots, charts and diagrams have none yet.
const QMap<QString, QStringList> s_offered = {
    {"mnuCopy", {"frmGrid", "frmHirarchy", "frmSQL"}},
    {"mnuCut", {"frmSQL"}},
    {"mnuPaste", {"frmSQL"}},
    {"mnuUndo", {"frmSQL"}},
    {"mnuSelectAll", {"frmSQL"}},
    {"mnuFind", {"frmHirarchy", "frmSQL"}},
    {"mnuReplace", {"frmSQL"}},
    {"mnuOpen", {"frmSQL"}},
    {"mnuSave", {"frmGrid", "frmHirarchy", "frmSQL", "frmTextOutput", "frmTree"}},
    {"mnuPrint", {"frmHirarchy", "frmSQL", "frmTextOutput"}},
    {"mnuChart", {}},
    {"SnapShot", {}},
    {"Parse", {"frmSQL"}},
    {"InsertString", {"frmSQL"}},
    {"ChangeChartType", {}},
    {"ChangeTitle", {}},
    {"ChangeFootNote", {}},
    {"mnuClearLog", {"frmHirarchy"}},
    {"mnuMax_Click", {"frmHirarchy"}},
    {"mnuMin_Click", {"frmHirarchy"}},
    {"mnuAvg_Click", {"frmHirarchy"}},
    {"mnuSum_Click", {"frmHirarchy"}},
    {"mnuFitColumns", {"frmHirarchy"}},
    {"mnuAddTable", {}},
    {"ToolBar", {"frmSQL"}},
    {"DynaMenuItemClick", {"frmSQL"}},
    {"SaveState", {"frmSQL"}},
    {"RefreshForm", {"frmGrid", "frmSQL", "frmScriptMask", "frmTree"}},
};

// What File and Edit offer for a window.
const QMap<QString, QStringList> s_states = {
    {"frmGrid", {"mnuSave", "mnuCopy"}},
    {"frmHirarchy", {"mnuSave", "mnuPrint", "mnuCopy", "mnuFind"}},
    {"frmSQL",
     {"mnuOpen", "mnuSave", "mnuPrint", "mnuCopy", "mnuCut", "mnuPaste", "mnuUndo", "mnuSelectAll", "mnuFind",
      "mnuReplace"}},
    {"frmScriptMask", {}},
    {"frmTextOutput", {"mnuSave", "mnuPrint"}},
    {"frmTree", {"mnuSave"}},
};

class Protocol : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    ChildWindow *Shown(const WindowRow &row)
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
    for (const WindowRow &row : EveryWindow())
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

TEST_F(Protocol, EachNameIsOfferedByExactlyItsWindows)
{
    QMap<QString, QStringList> overridden, offered;
    for (const QString &name : s_offered.keys())
        overridden[name] = offered[name] = {};
    for (const AnswerRow &row : s_answers)
        if (row.Answers)
            overridden[QString::fromLatin1(row.Name)] << QString::fromLatin1(row.Form);
    for (const WindowRow &row : EveryWindow()) {
        const ChildWindow *child = Shown(row);
        if (!child)
            continue;
        EXPECT_EQ(child->FormName(), QString::fromLatin1(row.Name));
        bool listed = false;
        for (const AnswerRow &answer : s_answers)
            listed = listed || !std::strcmp(answer.Form, row.Name);
        EXPECT_TRUE(listed) << row.Name;
        for (const QString &name : s_offered.keys())
            if (child->Offers(name))
                offered[name] << child->FormName();
        // What follows the connection says so in its Tag.
        EXPECT_EQ(child->Tag == QLatin1String("1"), child->Offers(QStringLiteral("RefreshForm"))) << row.Name;
    }
    for (const QString &name : s_offered.keys()) {
        QStringList wanted = s_offered[name];
        for (QStringList *list : {&wanted, &overridden[name], &offered[name]})
            list->sort();
        EXPECT_EQ(overridden[name], wanted) << qPrintable(name);
        EXPECT_EQ(offered[name], wanted) << qPrintable(name);
    }
}

TEST_F(Protocol, TheMenusFollowWhatTheActiveWindowOffers)
{
    for (const WindowRow &row : EveryWindow()) {
        const ChildWindow *child = Shown(row);
        if (!child)
            continue;
        ASSERT_TRUE(s_states.contains(child->FormName())) << row.Name;
        ASSERT_EQ(Window->ActiveChild(), child);
        Window->menus->OnFile();
        Window->menus->OnEdit();
        QStringList enabled;
        for (const char *name : {"mnuOpen", "mnuSave", "mnuFileSnapshot", "mnuPrint", "mnuCopy", "mnuCut", "mnuPaste",
                                 "mnuUndo", "mnuSelectAll", "mnuFind", "mnuReplace"})
            if (Window->menus->Item(QString::fromLatin1(name))->isEnabled())
                enabled << QString::fromLatin1(name);
        EXPECT_EQ(enabled, s_states[child->FormName()]) << row.Name;
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
