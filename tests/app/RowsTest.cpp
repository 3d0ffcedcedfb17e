// The rows of commands, toolbars, side bar and windows: each leads somewhere, nothing is without a row, and what stands
// in them stands once more in rows.golden. A change that is meant is taken over with
//     BRINDLEWICK_REFRESH_ROWS=1 build/dev/bin/test_app --gtest_filter='Rows.*'
#include "analyzer/frmSQL.h"
#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/SideBarTable.h"
#include "app/ToolbarTable.h"
#include "app/Toolbars.h"
#include "app/frmHelp.h"
#include "controls/CommandBar.h"
#include "controls/Icons.h"
#include "tests/app/EveryWindow.h"
#include "tests/support/Places.h"
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace {

QString ReadText(const QString &path)
{
    QFile file(places::Source() + QLatin1Char('/') + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

QString L(const char *text)
{
    return QString::fromLatin1(text);
}

QString CallOf(const CommandRow &row)
{
    switch (row.Route) {
    case Calls::Nothing:
        return QStringLiteral("nothing");
    case Calls::Group:
        return QStringLiteral("group");
    case Calls::Separator:
        return QStringLiteral("line");
    case Calls::Main:
        return QStringLiteral("main window");
    case Calls::Child:
        return QStringLiteral("child %1 %2").arg(ToText(row.Answer)).arg(row.Number);
    case Calls::Tool:
        return QStringLiteral("tool ") + L(row.Text);
    case Calls::Schema:
        return QStringLiteral("schema");
    case Calls::Rowset:
        return QStringLiteral("rowset %1 \"%2\" %3")
            .arg(row.Rowset.Schema)
            .arg(L(row.Rowset.Title), L(row.Rowset.FilterField));
    case Calls::Window:
        return QStringLiteral("window ") + L(row.Text);
    case Calls::Popup:
        return QStringLiteral("popup ") + L(row.Text);
    }
    return {};
}

constexpr std::pair<const char *, bool clsMenuSettings::*> s_settings[] = {
    {"Save", &clsMenuSettings::CanSave},           {"Open", &clsMenuSettings::CanOpen},
    {"SelectAll", &clsMenuSettings::CanSelectAll}, {"Replace", &clsMenuSettings::CanReplace},
    {"Copy", &clsMenuSettings::CanCopy},           {"Cut", &clsMenuSettings::CanCut},
    {"Paste", &clsMenuSettings::CanPaste},         {"Undo", &clsMenuSettings::CanUndo},
    {"Find", &clsMenuSettings::CanFind},           {"Print", &clsMenuSettings::CanPrint}};

QString NeedOf(const CommandRow &row)
{
    QString need;
    switch (row.Need) {
    case Needs::Nothing:
        break;
    case Needs::Connection:
        need = QStringLiteral("connection");
        break;
    case Needs::Setting:
        for (const auto &[name, field] : s_settings)
            if (field == row.Setting)
                need = QStringLiteral("Can") + L(name);
        break;
    case Needs::Answer:
        need = QStringLiteral("answer");
        break;
    case Needs::Toolbar:
        need = QStringLiteral("toolbar ") + L(row.Toolbar);
        break;
    case Needs::Entry:
        need = QStringLiteral("entry");
        break;
    }
    return need + (row.KeepsState ? QStringLiteral(", keeps") : QString()) +
           (row.IsLater ? QStringLiteral(", later") : QString());
}

// The keys of the manual's list, one each.
QStringList KeysOfTheManual()
{
    QStringList keys;
    const QStringList lines = ReadText(QStringLiteral("docs/manual/keys.md")).split(QLatin1Char('\n'));
    for (const QString &line : lines)
        if (line.startsWith(QLatin1String("| ")) && !line.startsWith(QLatin1String("| key ")))
            keys << line.section(QLatin1Char('|'), 1, 1).trimmed().split(QStringLiteral(", "));
    return keys;
}

QSet<QString> KeysOfTheRows()
{
    QSet<QString> keys;
    for (const CommandRow &row : CommandTable())
        for (const char *key : {row.Shortcut, row.Hint})
            if (*key)
                keys << L(key);
    return keys;
}

QStringList Rendered()
{
    QStringList lines(
        QStringLiteral("[commands] menu | name | caption | calls | needs | key | status | button | page"));
    for (const CommandRow &row : CommandTable()) {
        QString button;
        if (*row.ButtonKey)
            button = L(row.ButtonKey) + (row.IsCheck ? QStringLiteral(" (check)") : QString()) + QStringLiteral(": ") +
                     L(row.Tip);
        if (*row.DropsOf)
            button += QStringLiteral(" below %1: %2").arg(L(row.DropsOf), L(row.DropCaption));
        lines << QStringList({L(row.Parent), L(row.Name), L(row.Caption), CallOf(row), NeedOf(row),
                              *row.Hint ? QStringLiteral("child's ") + L(row.Hint) : L(row.Shortcut), L(row.Status),
                              button, row.Route == Calls::Separator ? QString() : HelpPageOf(row)})
                     .join(QStringLiteral(" | "));
    }
    lines << QString() << QStringLiteral("[toolbars] key | title | form | mark | buttons");
    for (const ToolbarRow &row : ToolbarTable()) {
        QStringList keys;
        for (const char *key : row.Buttons)
            keys << (FindButton(key) ? L(key) : QLatin1Char('-') + L(key));
        lines << QStringList({L(row.Key), L(row.Title), L(row.Form), QString::number(row.Mark), keys.join(u' ')})
                     .join(QStringLiteral(" | "));
    }
    lines << QString() << QStringLiteral("[side bar] key | text | tip | command");
    for (const SideBarRow &row : SideBarTable())
        lines << QStringList({L(row.Key), L(row.Text), L(row.Tooltip), L(row.Command)}).join(QStringLiteral(" | "));
    lines << QString() << QStringLiteral("[windows] form | kind | page | first place | answers");
    for (const WindowRow &row : WindowTable()) {
        constexpr const char *kinds[] = {"child", "dialog", "free"}, *places[] = {"ground", "text", "rows"};
        lines << QStringList({L(row.Form), L(kinds[int(row.Kind)]), L(row.Page), L(places[int(row.Place)]),
                              row.Answers ? row.Answers().List().join(u' ') : QString()})
                     .join(QStringLiteral(" | "));
    }
    lines << QString() << QStringLiteral("[keys that windows take by themselves]");
    for (const QString &key : KeysOfTheManual())
        if (!KeysOfTheRows().contains(key))
            lines << key;
    return lines;
}

TEST(Rows, StandOnceMoreInTheGoldenFile)
{
    const QString name = QStringLiteral("tests/app/rows.golden");
    const QStringList rows = Rendered();
    if (qEnvironmentVariableIsSet("BRINDLEWICK_REFRESH_ROWS")) {
        QFile file(places::Source() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(rows.join(u'\n').toUtf8() + '\n');
        GTEST_SKIP() << "rows.golden is written anew: look at what changed";
    }
    const QStringList golden = ReadText(name).chopped(1).split(QLatin1Char('\n'));
    for (qsizetype i = 0; i < qMax(rows.size(), golden.size()); ++i)
        ASSERT_EQ(rows.value(i).toStdString(), golden.value(i).toStdString()) << "line " << i + 1;
}

TEST(Rows, EachLeadsSomewhere)
{
    QSet<QString> names, buttons;
    for (const CommandRow &row : CommandTable()) {
        SCOPED_TRACE(row.Name);
        if (*row.Parent && std::strcmp(row.Parent, "popup") && std::strcmp(row.Parent, NoMenu)) {
            const CommandRow *parent = FindCommand(row.Parent);
            ASSERT_TRUE(parent);
            EXPECT_EQ(parent->Route, Calls::Group);
            EXPECT_LT(parent, &row); // built before its items
        }
        if (row.Route == Calls::Separator)
            continue;
        EXPECT_FALSE(names.contains(L(row.Name)));
        names << L(row.Name);
        EXPECT_TRUE(*row.Caption);
        EXPECT_TRUE(frmHelp::Pages().contains(HelpPageOf(row))) << HelpPageOf(row).toStdString();
        EXPECT_EQ(row.Route == Calls::Main, row.Main != nullptr);
        EXPECT_EQ(row.Route == Calls::Schema, row.Schema != nullptr);
        EXPECT_EQ(row.Route == Calls::Child, row.Answer != ChildName::Count);
        EXPECT_EQ(row.Route == Calls::Rowset, *row.Rowset.Title != 0);
        EXPECT_EQ(row.Need == Needs::Setting, row.Setting != nullptr);
        if (row.Route == Calls::Nothing) {
            EXPECT_TRUE(row.IsLater);
        }
        if (row.Route == Calls::Window) {
            EXPECT_TRUE(FindWindow(L(row.Text)));
        }
        if (row.Route == Calls::Popup) {
            EXPECT_EQ(FindCommand(row.Text)->Route, Calls::Group);
        }
        if (row.Route == Calls::Tool && !std::strcmp(row.Toolbar, "SQL")) {
            EXPECT_TRUE(frmSQL::KnowsButton(L(row.Text))); // no dead click
        }
        if (row.Need == Needs::Toolbar) {
            EXPECT_TRUE(FindToolbar(row.Toolbar));
        }
        if (*row.ButtonKey) {
            EXPECT_FALSE(buttons.contains(L(row.ButtonKey)));
            buttons << L(row.ButtonKey);
            EXPECT_TRUE(HasToolIcon(L(row.ButtonKey)));
            EXPECT_TRUE(*row.Tip);
            // A live button has an item too, but for those of the Analyzer that hold a state and the one of a popup.
            const bool holds = !std::strcmp(row.Toolbar, "SQL") && row.IsCheck;
            if (*row.Toolbar && !row.IsLater && !holds && row.Route != Calls::Popup) {
                EXPECT_STRNE(row.Parent, NoMenu);
            }
        }
        if (*row.DropsOf) {
            EXPECT_TRUE(FindButton(row.DropsOf));
        }
    }
}

TEST(Rows, ACommandOfAChildIsOffOnlyWhileNoWindowAnswersItsName)
{
    ChildNames answered;
    for (const WindowRow &window : WindowTable())
        for (int name = 0; window.Answers && name < int(ChildName::Count); ++name)
            if (window.Answers().Has(ChildName(name)))
                answered.Add(ChildName(name));
    for (const CommandRow &row : CommandTable())
        if (row.Route == Calls::Child && row.Need != Needs::Answer) { // which is looked up for each window
            EXPECT_EQ(row.IsLater, !answered.Has(row.Answer)) << row.Name;
        }
}

TEST(Rows, EveryButtonStandsInItsToolbarAndEveryOtherKeyIsASeparator)
{
    static const QRegularExpression separator(QStringLiteral("^(SQL|DTB)S\\d?$"));
    QSet<QString> shown;
    for (const ToolbarRow &toolbar : ToolbarTable())
        for (const char *key : toolbar.Buttons) {
            EXPECT_FALSE(shown.contains(L(key))) << key;
            shown << L(key);
            const CommandRow *row = FindButton(key);
            EXPECT_EQ(row != nullptr, !separator.match(L(key)).hasMatch()) << key;
            if (row) {
                EXPECT_STREQ(row->Toolbar, toolbar.Key) << key;
            }
        }
    for (const CommandRow &row : CommandTable())
        if (*row.ButtonKey) {
            EXPECT_TRUE(shown.contains(L(row.ButtonKey))) << row.ButtonKey;
        }
}

TEST(Rows, EveryFunctionOfTheMainWindowIsReached)
{
    static const QRegularExpression declared(QStringLiteral("^void \\w+\\(mdiMother &"),
                                             QRegularExpression::MultilineOption);
    int functions = 0;
    const QString header = ReadText(QStringLiteral("app/MainCommands.h"));
    for (auto each = declared.globalMatch(header); each.hasNext(); each.next())
        ++functions;
    std::set<void (*)(mdiMother &)> reached;
    for (const CommandRow &row : CommandTable())
        if (row.Main)
            reached.insert(row.Main);
    EXPECT_GT(functions, 10);
    EXPECT_EQ(int(reached.size()), functions);
}

TEST(Rows, TheSideBarReachesItsCommands)
{
    for (const SideBarRow &row : SideBarTable()) {
        EXPECT_TRUE(FindCommand(row.Command)) << row.Command;
        EXPECT_EQ(FindSideBarRow(row.Key), &row);
        EXPECT_TRUE(HasToolIcon(QLatin1String("MTB") + QLatin1String(row.Key))) << row.Key;
    }
}

// Rows whose toolbar was not there followed the Analyzer's "Run Transaction": those of a diagram would have been on
// while an Analyzer was active.
TEST(Rows, ACommandFollowsItsOwnToolbarAndNoOther)
{
    CommandBar bar;
    const QString analyzer = QStringLiteral("frmSQL"), diagram = QStringLiteral("frmDiagram");
    const auto lit = [&](const char *toolbar, const QString &active) {
        int on = 0;
        for (CommandRow row : CommandTable())
            if (!std::strcmp(row.Toolbar, toolbar)) {
                const QString button = L(*row.ButtonKey ? row.ButtonKey : row.DropsOf);
                if (bar.HasButton(button)) // as if its window were there
                    bar.SetEnabled(button, true);
                on += FollowsToolbar(row, bar, active);
            }
        return on;
    };
    const int sql = int(
        std::ranges::count_if(CommandTable(), [](const CommandRow &row) { return !std::strcmp(row.Toolbar, "SQL"); }));
    BuildToolbar(bar, *FindToolbar("SQL"));
    EXPECT_EQ(lit("SQL", analyzer), sql);
    EXPECT_EQ(lit("DTB", analyzer), 0);
    BuildToolbar(bar, *FindToolbar("DTB"));
    EXPECT_EQ(lit("DTB", analyzer), 0); // its toolbar stays when the diagram is left
    EXPECT_EQ(lit("SQL", diagram), 0);
    EXPECT_EQ(lit("DTB", diagram), 8);
    EXPECT_EQ(lit("SQL", QString()), 0);
    // A button that is off takes its choices along.
    ASSERT_TRUE(FollowsToolbar(*FindCommand("mnuBeginTrans"), bar, analyzer));
    bar.SetEnabled(QStringLiteral("SQLTrans"), false);
    EXPECT_FALSE(FollowsToolbar(*FindCommand("mnuBeginTrans"), bar, analyzer));
    EXPECT_TRUE(FollowsToolbar(*FindCommand("mnuStruct"), bar, analyzer)); // it has no button
}

TEST(Rows, EveryKeyOfARowStandsInTheManual)
{
    const QStringList told = KeysOfTheManual();
    EXPECT_GT(told.size(), 30);
    for (const QString &key : KeysOfTheRows())
        EXPECT_TRUE(told.contains(key)) << qPrintable(key);
}

TEST(Rows, EveryWindowHasAPageOfTheManual)
{
    for (const WindowRow &row : WindowTable())
        EXPECT_TRUE(frmHelp::Pages().contains(L(row.Page))) << row.Form;
}

} // namespace
