#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <QJsonArray>

namespace {

EditText Edit(const QJsonObject &args)
{
    return {args[u"text"].toString(), args[u"selStart"].toInteger(), args[u"selLength"].toInteger()};
}

QString Skeleton(const QJsonObject &args)
{
    const SkeletonOptions options{StatementKind(args[u"type"].toInt()), args[u"useFields"].toBool(),
                                  args[u"groupBy"].toBool(), args[u"having"].toBool(), args[u"orderBy"].toBool()};
    return Skeleton(options, args[u"table"].toString(), args[u"fields"].toString());
}

void ExpectEdit(const EditText &got, const char *text, qsizetype selStart, qsizetype selLength)
{
    EXPECT_EQ(got.text.toStdString(), text);
    EXPECT_EQ(got.selStart, selStart) << text;
    EXPECT_EQ(got.selLength, selLength) << text;
}

} // namespace

TEST(EditAssist, Cases)
{
    ExpectCases("first_non_blank", [](const QJsonObject &args) -> QJsonValue {
        return FirstNonBlank(args[u"text"].toString(), args[u"start"].toInteger());
    });
    ExpectCases("comment_in", [](const QJsonObject &args) -> QJsonValue { return CommentIn(Edit(args)).text; });
    ExpectCases("remove_comment", [](const QJsonObject &args) -> QJsonValue { return RemoveComment(Edit(args)).text; });
    ExpectCases("indent", [](const QJsonObject &args) -> QJsonValue {
        return Indent(Edit(args), Shift(args[u"shift"].toInt())).text;
    });
    ExpectCases("skeleton", [](const QJsonObject &args) -> QJsonValue { return Skeleton(args); });
    ExpectCases("skeleton_formatted",
                [](const QJsonObject &args) -> QJsonValue { return FormatStatement(Skeleton(args)); });
    ExpectCases("insert_string", [](const QJsonObject &args) -> QJsonValue {
        return InsertString(Edit(args), args[u"inserted"].toString()).text;
    });
    ExpectCases("drop_files", [](const QJsonObject &args) -> QJsonValue {
        QStringList contents;
        for (const QJsonValue &content : args[u"contents"].toArray())
            contents += content.toString();
        return DropFiles(args[u"text"].toString(), contents);
    });
}

TEST(EditAssist, CommentKeepsTheCaretAtItsCharacter)
{
    ExpectEdit(CommentIn({S("ab"), 1, 0}), "--ab", 3, 0);
    ExpectEdit(CommentIn({S("a\r\nb"), 3, 0}), "a\r\n--b", 5, 0);
    ExpectEdit(CommentIn({S("\r\nb"), 3, 0}), "\r\n--b", 5, 0); // the first line is empty
    ExpectEdit(RemoveComment({S("--ab"), 3, 0}), "ab", 1, 0);
    ExpectEdit(RemoveComment({S("--ab"), 1, 0}), "ab", 0, 0);
    ExpectEdit(RemoveComment({S("  --ab"), 4, 0}), "  --ab", 4, 0); // only the very start is looked at
}

TEST(EditAssist, CommentSelectsWhatItChanged)
{
    ExpectEdit(CommentIn({S("x\r\nab\r\nc"), 4, 4}), "x\r\n--ab\r\n--c", 3, 9);
    ExpectEdit(RemoveComment({S("  --a\r\nx --b"), 0, 12}), "  a\r\nx --b", 0, 10);
    // The second line is touched at its start only, and counts.
    ExpectEdit(RemoveComment({S("--a\r\n--b\r\n--c"), 0, 5}), "a\r\nb\r\n--c", 0, 4);
}

TEST(EditAssist, PositionInsideOfALineEndIsSnapped)
{
    ExpectEdit(CommentIn({S("a\r\nb"), 2, 0}), "--a\r\nb", 3, 0);
    ExpectEdit(CommentIn({S("a\r\nb"), 0, 2}), "--a\r\n--b", 0, 7);
    ExpectEdit(CommentIn({S("ab"), 99, 5}), "--ab", 4, 0);
}

TEST(EditAssist, IndentKeepsTheSelectionOverTheChange)
{
    ExpectEdit(Indent({S("a\r\nb"), 4, 0}, Shift::In), "a\r\n\tb", 5, 0);
    ExpectEdit(Indent({S("a\r\nb"), 0, 4}, Shift::In), "\ta\r\n\tb", 0, 6);
    ExpectEdit(Indent({S("ab\r\ncd"), 1, 4}, Shift::In), "\tab\r\n\tcd", 2, 5);
    ExpectEdit(Indent({S("\ta\r\n\tb"), 0, 6}, Shift::Out), "a\r\nb", 0, 4);
    ExpectEdit(Indent({S("\tab\r\n\tcd"), 2, 5}, Shift::Out), "ab\r\ncd", 1, 4);
    ExpectEdit(Indent({S("\tab"), 0, 0}, Shift::Out), "ab", 0, 0);
    ExpectEdit(Indent({S("ab"), 1, 0}, Shift::Out), "ab", 1, 0);
    ExpectEdit(Indent({S("\ta"), 0, 1}, Shift::Out), "a", 0, 0);
}

TEST(EditAssist, InsertReplacesOnlyASelectionBehindTheStart)
{
    ExpectEdit(InsertString({S("abc"), 1, 1}, S("XY")), "aXYc", 3, 0);
    ExpectEdit(InsertString({S("abc"), 0, 2}, S("X")), "X\r\nabc", 0, 0);
    EXPECT_EQ(InsertText({S("abc"), 0, 0}, S("X")).text, S("abc\r\nX"));
    EXPECT_EQ(InsertText({S("abc"), 0, 2}, S("X")).text, S("X\r\nabc"));
    EXPECT_EQ(InsertText({S("abc"), 3, 0}, S("X")).text, S("abcX"));
}

TEST(EditAssist, StatementIsPlacedBehindABlankLineAndSelected)
{
    ExpectEdit(PlaceStatement(S(""), 0, S("select")), "select", 0, 6);
    ExpectEdit(PlaceStatement(S("a"), 1, S("select")), "a\r\n\r\nselect", 5, 6);
    ExpectEdit(PlaceStatement(S("a"), 0, S("select")), "select\r\n\r\na", 0, 6);
    ExpectEdit(PlaceStatement(S("ab"), 1, S("select")), "a\r\n\r\nselect\r\n\r\nb", 5, 6);
    ExpectEdit(PlaceStatement(S("a\r\nb"), 2, S("x")), "a\r\n\r\nx\r\n\r\n\r\nb", 5, 1); // no half of a line end
}

TEST(EditAssist, SkeletonsGoThroughTheFormatter)
{
    EXPECT_EQ(FormatStatement(Skeleton({StatementKind(0), false, false, false, false}, S("a b"), S("x"))),
              S("   SELECT * FROM [a b]"));
    EXPECT_EQ(FormatStatement(Skeleton({StatementKind(2), false, false, false, false}, S("t"), S("x"))),
              S("  UPDATE t\r\n SET\r\n WHERE [Expression]"));
    EXPECT_EQ(FormatStatement(Skeleton({StatementKind(3), false, false, false, false}, S("t"), S("x"))),
              S("  DELETE\r\n FROM t\r\n WHERE [Expression]"));
    EXPECT_EQ(Skeleton({StatementKind(6), false, false, false, false}, S("t"), S("x")), S(""));
}

TEST(EditAssist, ASkeletonTakesTheNameAsItIsWritten)
{
    SkeletonOptions options;
    options.type = StatementKind::Delete;
    EXPECT_EQ(SkeletonOf(options, S("second.\"T\""), {}), S("DELETE FROM second.\"T\"\r\n WHERE [Expression]"));
    EXPECT_EQ(Skeleton(options, S("a b"), {}), SkeletonOf(options, S("[a b]"), {}));
}

TEST(EditAssist, WhatAnEditorWouldChangeIsNoNameForIt)
{
    for (const char *kept :
         {"t", "[Order Details]", "\"a;b\"", "\"a--b\"", "\"\xf0\x9f\x98\x80\"", "\"a]b\"", "`a{b}\\c`"})
        EXPECT_TRUE(KeepsInEditor(S(kept))) << kept;
    for (const char *lost : {"\"a\nb\"", "\"a\r\nb\"", "\"a\tb\"", "\"a  b\"", "\"a] b\"", "\"a]1\"",
                             "\"a\xc2\xa0"
                             "b\"",
                             "\"a\xe2\x80\xa8"
                             "b\""})
        EXPECT_FALSE(KeepsInEditor(S(lost))) << lost;
}
