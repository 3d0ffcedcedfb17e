// The edges of the colouring, each as text and as what it becomes, and what a control is asked to do.
#include "sqltext/IntColorAll.h"
#include "sqltext/WordTrie.h"
#include "sqltext/clsColorTable.h"
#include "tests/sqltext/EditDouble.h"

#include <gtest/gtest.h>

namespace {

class ColourEdges : public testing::Test
{
protected:
    void SetUp() override
    {
        InitColorTable();
        ClearKeywordSet();
        for (const char *word : {"SELECT", "FROM", "BY"})
            gKeywordSet.Append(QString::fromLatin1(word));
    }
    static std::string Body(const char *text, bool whole = true)
    {
        return ColourBody(QString::fromUtf8(text), gKeywordSet, whole).toStdString();
    }
};

TEST(WordTrie, AWordBeyondAsciiIsNotOrdinary)
{
    EXPECT_TRUE(WordTrie::IsOrdinary(QStringLiteral("select")));
    EXPECT_TRUE(WordTrie::IsOrdinary(QString(QChar(0x7f))));
    EXPECT_FALSE(WordTrie::IsOrdinary(QString(QChar(0x80))));
    EXPECT_FALSE(WordTrie::IsOrdinary(QString()));
}

TEST_F(ColourEdges, WorkedExample)
{
    EXPECT_EQ(Body("select 'a--b' from [t] -- x"),
              "\\cf1 select\\cf0  \\cf3 'a--b'\\cf0  \\cf1 from\\cf0  \\i[t]\\i0 \\cf4 -- x\\cf0 ");
}

TEST_F(ColourEdges, WhereAKeywordStandsAlone)
{
    EXPECT_EQ(Body("FROMAGE fromage"), "FROMAGE fromage");
    EXPECT_EQ(Body("select"), "\\cf1 select\\cf0 ");
    EXPECT_EQ(Body("a.select [select]"), "a.select \\i[select]\\i0");
    EXPECT_EQ(Body("(select) select,select:$select&"),
              "(\\cf1 select\\cf0 ) \\cf1 select\\cf0 ,\\cf1 select\\cf0 :$\\cf1 select\\cf0 &");
    EXPECT_EQ(Body("selectselect"), "\\cf1 select\\cf0 \\cf1 select\\cf0 ");
    EXPECT_EQ(Body("selectselectx"), "\\cf1 select\\cf0 selectx");
    EXPECT_EQ(Body("xselectselect"), "xselectselect");
    EXPECT_EQ(Body("selectfrom"), "selectfrom");
    EXPECT_EQ(Body("\u00EEselect\u00CE"), "\u00EE\\cf1 select\\cf0 \u00CE");
    EXPECT_EQ(Body("sElEcT"), "\\cf1 sElEcT\\cf0 ");
}

// A TAB has become a switch before the keywords are looked for: it ends no word on its left, but does on its right.
// The first character past the ASCII ones neither ends a word nor belongs to one.
TEST_F(ColourEdges, CharactersBesideAKeyword)
{
    for (const char16_t c : {u'\x7F', u'\x80', u'\x81', u'\xFF'}) {
        const QString sign(1, QChar(c));
        for (const QString &text : {sign + QStringLiteral("select"), QStringLiteral("select") + sign,
                                    QStringLiteral("sel") + sign + QStringLiteral("ect")})
            EXPECT_EQ(ColourBody(text, gKeywordSet, true), text) << int(c);
        EXPECT_EQ(ColourBody(sign + QStringLiteral(" by ") + sign, gKeywordSet, true),
                  sign + QStringLiteral(" \\cf1 by\\cf0  ") + sign)
            << int(c);
    }
}

TEST_F(ColourEdges, Tabs)
{
    EXPECT_EQ(Body("select\tfrom"), "select\\tab \\cf1 from\\cf0 ");
}

TEST_F(ColourEdges, Quotes)
{
    EXPECT_EQ(Body("'\r\na"), "'\\cf0 \r\n\\par a");
    EXPECT_EQ(Body("'select'"), "\\cf3 'select'\\cf0 ");
    EXPECT_EQ(Body("'a'b'c"), "\\cf3 'a'\\cf0 b\\cf3 'c");
    EXPECT_EQ(Body("\"it's\""), "\\cf2 \"it\\cf3 's\"");
    EXPECT_EQ(Body("\"a\r\nb\""), "\"\\cf0 a\r\n\\par b\\cf2 \"");
    EXPECT_EQ(Body("'a\rb\nc'"), "\\cf3 'a\rb\nc'\\cf0 ");
    EXPECT_EQ(Body("'\"x\"'"), "\\cf3 '\\cf2 \"x\"'\\cf0 ");
}

TEST_F(ColourEdges, Comments)
{
    EXPECT_EQ(Body("'--'"), "\\cf3 '--'\\cf0 ");
    EXPECT_EQ(Body("\"--\" select\r\nx"), "\\cf2 \"\\cf4 --\" select\r\n\\cf0 \\par x");
    EXPECT_EQ(Body("a -- b"), "a \\cf4 -- b\\cf0 ");
    EXPECT_EQ(Body("--"), "\\cf4 --\\cf0 ");
    EXPECT_EQ(Body("----x"), "\\cf4 --\\cf0 \\cf4 --x\\cf0 ");
    EXPECT_EQ(Body("---"), "\\cf4 ---\\cf0 ");
    EXPECT_EQ(Body("-- select 'x' from"), "\\cf4 -- select 'x' from\\cf0 ");
    EXPECT_EQ(Body("/* select */"), "/* \\cf1 select\\cf0  */");
    // Only the stretch right before counts, so the second mark in the string is a comment again.
    EXPECT_EQ(Body("'a--b--c'"), "\\cf3 'a--b\\cf4 --c'\\cf0 ");
    EXPECT_EQ(Body("-- 'a--b' x"), "\\cf4 -- 'a\\cf0 \\cf4 --b' x\\cf0 ");
}

TEST_F(ColourEdges, EscapesAndTheUsersOwnSwitches)
{
    EXPECT_EQ(Body("a{b}c\\d"), "a\\{b\\}c\\\\d");
    EXPECT_EQ(Body("a\\cf3 b"), "ab");
    EXPECT_EQ(Body("\\cf1 "), "");
    EXPECT_EQ(Body("\\cf\\cf0 1 x"), "x");
    EXPECT_EQ(Body("\\CF3 x"), "\\\\CF3 x");
    EXPECT_EQ(Body("[a]1"), "\\i[a]\\i01");
}

TEST_F(ColourEdges, LastLine)
{
    EXPECT_EQ(Body("a\r\n"), "a\r\n\\par \r\n\\par ");
    EXPECT_EQ(Body("a\r\n", false), "a\r\n\\par ");
    EXPECT_EQ(Body("\r\n"), "\r\n\\par \r\n\\par ");
    EXPECT_EQ(Body("a\rb\nc"), "a\rb\nc");
}

TEST_F(ColourEdges, BlankTextChangesNothing)
{
    for (const char *text : {"", "    "}) {
        EditDouble control(QString::fromLatin1(text));
        gRTFHead = gRTFFont = QStringLiteral("as it was");
        intColorAll(control, QString(), 3);
        EXPECT_TRUE(control.log.isEmpty()) << control.log.join(u'|').toStdString();
        EXPECT_EQ(gRTFHead, QStringLiteral("as it was"));
        EXPECT_EQ(gRTFFont, QStringLiteral("as it was"));
    }
}

TEST_F(ColourEdges, WholeTextAndItsCaret)
{
    EditDouble control(QStringLiteral("select a\r\n"));
    intColorAll(control, QString(), 4);
    EXPECT_EQ(control.log, (QStringList{"TextRTF", "SelStart 4"}));
    EXPECT_EQ(control.Text().toStdString(), "select a\r\n");
    EXPECT_EQ(control.document.runs.front(), (RtfRun{0, 6, 1, false, false}));
    EXPECT_EQ(control.document.colours,
              (std::vector<quint32>{0x91C37D, 0x7D91C3, 0x9B7DC3, 0xC3AF7D, 0xA5AFC3, 0xF7CD6C}));
    EXPECT_EQ(gRTFHead, RtfHeadLine(QStringLiteral("Courier New")));
    EXPECT_EQ(gRTFFont, RtfFontLine(17));
}

TEST_F(ColourEdges, ASelectionKeepsItsLineEnd)
{
    EditDouble control(QStringLiteral("ab\r\nfrom\r\nef"));
    control.SetSelStart(4);
    control.SetSelLength(6);
    control.log.clear();
    intColorAll(control, control.SelText(), 5);
    EXPECT_EQ(control.log, (QStringList{"SelRTF", "SelStart 5"}));
    EXPECT_EQ(control.Text().toStdString(), "ab\r\nfrom\r\nef");
}

// What a control takes in ready form is what it would have read.
TEST_F(ColourEdges, ReadyFormIsWhatTheTextSays)
{
    for (const bool whole : {true, false}) {
        EditDouble reads(QStringLiteral("select '[x] y'\r\n")), takes(reads.Text());
        takes.takesColoured = true;
        for (EditDouble *control : {&reads, &takes}) {
            control->SetSelStart(0);
            control->SetSelLength(whole ? 0 : control->Text().size());
            control->log.clear();
            intColorAll(*control, control->SelText(), 1);
        }
        EXPECT_EQ(takes.log.front(), QStringLiteral("taken"));
        EXPECT_EQ(reads.document, takes.document);
        // The blank behind "]" belongs to the switch.
        EXPECT_EQ(takes.Text().toStdString(), "select '[x]y'\r\n");
    }
}

// Colouring again what colouring made changes no more.
TEST_F(ColourEdges, ASecondColouringChangesNothing)
{
    EditDouble control(QStringLiteral("select 'x' from [t].[u] -- c\r\n\"q\" {a} \\ \t by\r\n\r\n"));
    intColorAll(control, QString(), 0);
    const RtfDocument once = control.document;
    intColorAll(control, QString(), 0);
    EXPECT_EQ(control.document, once);
}

TEST(ColourFrame, FontLine)
{
    const auto font = [](const char *rtf) { return FrameOf(QString::fromLatin1(rtf)).font.toStdString(); };
    EXPECT_EQ(font("h\r\n\\a\\fs17 x\r\n\\b\\fs20 y\r\nz z"), "\\a\\fs17 ");
    EXPECT_EQ(font("h\r\n\\a x\r\n\\b\\fs20 y\r\nz z"), "\\b\\fs20 ");
    EXPECT_EQ(font("h\r\n\\a x\r\n\\b y\r\nz w"), "z ");
    EXPECT_EQ(font("h\r\n\\fs17"), "");
    EXPECT_TRUE(FrameOf(u"h\r\nx").font.isNull());
    EXPECT_FALSE(FrameOf(u"h\r\nx").head.isNull());
    EXPECT_TRUE(FrameOf(QString()).head.isNull());
}

} // namespace
