#include "sqltext/Statements.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <QJsonArray>

TEST(Statements, Cases)
{
    ExpectCases("split_statements", [](const QJsonObject &args) -> QJsonValue {
        qsizetype last = -7;
        const QStringList statements = SplitStatements(args[u"sql"].toString(), last);
        return QJsonObject{{QStringLiteral("statements"), QJsonArray::fromStringList(statements)},
                           {QStringLiteral("last"), last}};
    });
    ExpectCases("has_word", [](const QJsonObject &args) -> QJsonValue {
        return HasWord(args[u"sql"].toString(), args[u"word"].toString());
    });
    ExpectCases("is_altering",
                [](const QJsonObject &args) -> QJsonValue { return IsAlteringSQL(args[u"sql"].toString()); });
    ExpectCases("log_line", [](const QJsonObject &args) -> QJsonValue {
        return LogLine(args[u"sql"].toString(), args[u"n"].toInteger());
    });
    ExpectCases("run_plan", [](const QJsonObject &args) -> QJsonValue {
        const char *names[] = {"execute", "reused", "new"};
        QJsonArray steps;
        for (const RunStep &step : RunPlan(args[u"sql"].toString(), args[u"multi"].toBool(), args[u"trans"].toBool()))
            steps.append(QJsonArray{step.sql, S(names[int(step.target)])});
        return steps;
    });
}

TEST(Statements, GoIsNoSeparatorAndABlankLineIs)
{
    EXPECT_EQ(SplitStatements(S("select 1\r\nGO\r\nselect 2")).size(), 1);
    EXPECT_EQ(SplitStatements(S("select 1\r\n\r\nfrom t")), QStringList({S("select 1"), S("from t")}));
    EXPECT_EQ(SplitStatements(S("select 'a  b'")), QStringList({S("select 'a b'")}));
    // The blank in front of the line end swallows the line of a single blank.
    EXPECT_EQ(SplitStatements(S("a \r\n \r\nb")).size(), 1);
}

TEST(Statements, TabAndFullStopAreNoDelimiters)
{
    EXPECT_FALSE(HasWord(S("\tupdate t"), S("Update")));
    EXPECT_FALSE(HasWord(S("x.update"), S("Update")));
    EXPECT_TRUE(HasWord(S("-- Drop"), S("drop")));
    EXPECT_TRUE(HasWord(S("dropdrop"), S("drop"))); // the nothing between both counts as a delimiter
    EXPECT_FALSE(HasWord(S("x"), S("")));
}

TEST(Statements, SevenWordsAlter)
{
    for (const char *word : {"update", "ALTER", "Delete", "updatetext", "create", "drop", "insert"})
        EXPECT_TRUE(IsAlteringSQL(S("x (") + S(word) + S(")"))) << word;
    for (const char *word : {"truncate", "exec", "grant", "updated", "select"})
        EXPECT_FALSE(IsAlteringSQL(S("x (") + S(word) + S(")"))) << word;
}

TEST(Statements, CaretPicksTheLinesBetweenBlankLines)
{
    const QString text = S("select a\r\nfrom t\r\n\r\nselect b\r\n   \r\nselect c\r\n\t\r\nx");
    const std::pair<int, const char *> rows[] = {{0, "select a\r\nfrom t"},
                                                 {8, "select a\r\nfrom t"},
                                                 {9, "select a\r\nfrom t"},
                                                 {16, "select a\r\nfrom t"},
                                                 {17, "select a\r\nfrom t"},
                                                 {18, ""},
                                                 {20, "select b"},
                                                 {28, "select b"},
                                                 {30, ""},
                                                 {33, ""},
                                                 {35, "select c\r\n\t\r\nx"},
                                                 {int(text.size()), "select c\r\n\t\r\nx"},
                                                 {int(text.size()) + 5, "select c\r\n\t\r\nx"}};
    for (const auto &[caret, want] : rows)
        EXPECT_EQ(GetStatementAtCaret(text, caret).toStdString(), want) << caret;
    EXPECT_EQ(GetStatementAtCaret(S(""), 0), S(""));
}

TEST(Statements, EndsOfTheTextAreNoBlankLines)
{
    EXPECT_EQ(GetStatementAtCaret(S("a\r\n\r\nb\r\n"), 8), S("b\r\n"));
    EXPECT_EQ(GetStatementAtCaret(S("a\r\n\r\n"), 5), S(""));
    EXPECT_EQ(GetStatementAtCaret(S("\r\na\r\n\r\nb"), 0), S("\r\na"));
    EXPECT_EQ(GetStatementAtCaret(S("   "), 1), S("   "));
    // The second line of a text that begins with a line end is one between two line ends.
    EXPECT_EQ(GetStatementAtCaret(S("\r\n\r\na"), 2), S(""));
    EXPECT_EQ(GetStatementAtCaret(S("\r\n\r\na"), 4), S("a"));
}

TEST(Statements, RunTakesSelectionThenStatementThenAll)
{
    const QString text = S("select a\r\n\r\nselect b");
    EXPECT_EQ(GetSQLText(text, 0, 6), S("select"));
    EXPECT_EQ(GetSQLText(text, 14, 0), S("select b"));
    EXPECT_EQ(GetSQLText(text, 10, 0), text);
    EXPECT_EQ(GetSQLText(S(""), 0, 0), S(""));
    EXPECT_EQ(GetSQLText(text, 2, 999), text.mid(2));
}

TEST(Statements, BatchNeverUsesTheReusedWindow)
{
    const auto plan = RunPlan(S("select a\r\n\r\nselect b"), false, false);
    ASSERT_EQ(plan.size(), 2u);
    EXPECT_EQ(plan[0].target, RunTarget::NewWindow);
    EXPECT_EQ(plan[1].target, RunTarget::NewWindow);
}

TEST(Statements, LogCutsBehindTwentyFiveCharacters)
{
    EXPECT_EQ(LogLine(QString(25, u'x'), 3), QString(25, u'x') + S(" 3 records have been affected"));
    EXPECT_EQ(LogLine(QString(26, u'x'), 3), QString(25, u'x') + S("... 3 records have been affected"));
}
