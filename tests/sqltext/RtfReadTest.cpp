// Reading RTF: words, escapes, groups, tables, and what foreign or broken text comes to.
#include "sqltext/Rtf.h"

#include <gtest/gtest.h>

namespace {

const QString kHead = QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil Courier New;}}\r\n");

QString TextOf(const QString &body, bool fragment = false)
{
    return ReadRtf(kHead + body + u'}', fragment).text;
}

std::string Plain(const QString &text)
{
    return text.toStdString();
}

TEST(RtfRead, TextThatIsNoRtfStaysWhole)
{
    const RtfDocument document = ReadRtf(QStringLiteral("\\b {\\rtf1 a\\par }"));
    EXPECT_EQ(Plain(document.text), "\\b {\\rtf1 a\\par }");
    ASSERT_EQ(document.runs.size(), 1u);
    EXPECT_EQ(document.runs[0], (RtfRun{0, 17, 0, false, false}));
    EXPECT_TRUE(document.colours.empty());
    EXPECT_EQ(Plain(ReadRtf(QStringLiteral("a\nb\rc\r\nd\r\r\n")).text), "a\r\nb\r\nc\r\nd\r\n\r\n");
    EXPECT_EQ(ReadRtf(QString()).text, QString());
    EXPECT_TRUE(ReadRtf(QString()).runs.empty());
}

TEST(RtfRead, AWholeDocumentDropsOneLastParagraphAndAFragmentKeepsIt)
{
    EXPECT_EQ(Plain(TextOf("cd\r\n\\par ")), "cd");
    EXPECT_EQ(Plain(TextOf("cd\r\n\\par ", true)), "cd\r\n");
    EXPECT_EQ(Plain(TextOf("a\r\n\\par \r\n\\par ")), "a\r\n");
    EXPECT_EQ(Plain(TextOf("a\\par \\cf0 ")), "a");
    EXPECT_EQ(Plain(TextOf("a\\par b")), "a\r\nb");
    EXPECT_EQ(Plain(TextOf("\\par ")), "");
    EXPECT_TRUE(ReadRtf(kHead + "\\par }").runs.empty());
    EXPECT_EQ(Plain(TextOf("a\\line ")), "a\r\n");
    // The look may change at the dropped line end.
    const RtfDocument document = ReadRtf(kHead + "a\\b \\par }");
    EXPECT_EQ(document.runs, (std::vector<RtfRun>{{0, 1, 0, false, false}}));
}

TEST(RtfRead, LinesOfTheSourceMeanNothing)
{
    EXPECT_EQ(Plain(TextOf("a\r\nb\rc\nd")), "abcd");
    EXPECT_EQ(Plain(TextOf("a\\\r\nb")), "a\r\nb");
}

// A CR escape takes the LF escape behind it along, but not over a line end of its own.
TEST(RtfRead, AnLfBehindAParagraphIsALineEnd)
{
    EXPECT_EQ(Plain(TextOf("a\\'0d\\'0ab")), "a\r\nb");
    EXPECT_EQ(Plain(TextOf("a\\'0d\\par \\'0ab")), "a\r\n\r\n\r\nb");
    EXPECT_EQ(Plain(TextOf("a\\'0d\\line \\'0ab")), "a\r\n\r\n\r\nb");
}

TEST(RtfRead, ASizeWithoutANumberIsTwelvePoints)
{
    EXPECT_EQ(ReadRtf(kHead + "\\fs a}").fontHalfPoints, 24);
    EXPECT_EQ(ReadRtf(kHead + "\\fs20 a}").fontHalfPoints, 20);
}

TEST(RtfRead, EscapesAndCharacters)
{
    EXPECT_EQ(Plain(TextOf("\\\\\\{\\}\\tab x\\tab y")), "\\{}\tx\ty");
    EXPECT_EQ(TextOf("\\'e4\\'80\\'41\\'9F"), QStringLiteral(u"\u00E4\u20ACA\u0178"));
    EXPECT_EQ(Plain(TextOf("a\\'zzb\\'4")), "azzb4");
    EXPECT_EQ(Plain(TextOf("a\\'0d\\'0ab\\'0ac\\'0dd")), "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(TextOf("a\\~b\\_c\\-\\:d"), QStringLiteral(u"a\u00A0b\u2011c\u00ADd"));
    EXPECT_EQ(TextOf("\\bullet\\emdash x"), QStringLiteral(u"\u2022\u2014x"));
    EXPECT_EQ(TextOf(QStringLiteral(u"\\\u00E9a\\\U0001F600b")), QStringLiteral("ab"));
}

TEST(RtfRead, UnicodeAndItsFallback)
{
    EXPECT_EQ(TextOf("\\u?x"), TextOf("\\u0?x")); // without a number it is 0
    EXPECT_EQ(TextOf("\\u1078?x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("\\u-10179?\\u-8704?x"), QStringLiteral(u"\U0001F600x"));
    EXPECT_EQ(TextOf("\\u55357 ?\\u56832 ?x"), QStringLiteral(u"\U0001F600x"));
    EXPECT_EQ(TextOf("\\u128512?x"), QStringLiteral(u"\U0001F600x"));
    EXPECT_EQ(TextOf("\\uc0\\u1078 x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("\\uc2\\u1078 ??x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("\\uc2\\u1078\\'41\\'42x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("\\uc2\\u1078 ?\\b x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("\\uc2\\u1078 \\\\\\{x"), QStringLiteral(u"\u0436x"));
    EXPECT_EQ(TextOf("{\\uc0\\u1078 x}\\u1078 ?y"), QStringLiteral(u"\u0436x\u0436y"));
    EXPECT_EQ(TextOf("{\\uc3\\u1078 ?}xyz"), QStringLiteral(u"\u0436xyz"));
    EXPECT_EQ(TextOf("\\u99999999?x"), QStringLiteral(u"\uFFFDx"));
    EXPECT_EQ(TextOf("\\u65535?\\u65536?x"), QStringLiteral(u"\uFFFF\U00010000x"));
    EXPECT_EQ(TextOf("\\u1114111?\\u1114112?x"), QStringLiteral(u"\U0010FFFF\uFFFDx")); // the last one, and one more
}

// Each byte of the code page's upper half; a table with one wrong entry went unseen.
TEST(RtfRead, EveryByteIsItsCharacter)
{
    const QString upper =
        QStringLiteral(u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152"
                       u"\u008D\u017D\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122"
                       u"\u0161\u203A\u0153\u009D\u017E\u0178");
    for (int byte = 0x20; byte < 0x100; ++byte) {
        const QChar want = byte >= 0x80 && byte < 0xA0 ? upper.at(byte - 0x80) : QChar(byte);
        EXPECT_EQ(TextOf(QStringLiteral("\\'%1").arg(byte, 2, 16, QLatin1Char('0'))), QString(want)) << byte;
    }
}

TEST(RtfRead, LooksAndTheirGroups)
{
    const RtfDocument document = ReadRtf(kHead + "a\\b b\\i\\cf3 c{\\b0 d}e\\plain f\\pard\\cf1 g\\cf h}");
    EXPECT_EQ(Plain(document.text), "abcdefgh");
    EXPECT_EQ(document.runs, (std::vector<RtfRun>{{0, 1, 0, false, false},
                                                  {1, 1, 0, true, false},
                                                  {2, 1, 3, true, true},
                                                  {3, 1, 3, false, true},
                                                  {4, 1, 3, true, true},
                                                  {5, 1, 0, false, false},
                                                  {6, 1, 1, false, false},
                                                  {7, 1, 0, false, false}}));
}

TEST(RtfRead, BracketsThatJoinTheirSwitch)
{
    // Behind "]" stands \i0 without a blank: a blank is eaten, a digit makes another number of it.
    EXPECT_EQ(Plain(TextOf("\\i[t]\\i0 WHERE")), "[t]WHERE");
    const RtfDocument digit = ReadRtf(kHead + "\\i[a]\\i01 b}");
    EXPECT_EQ(Plain(digit.text), "[a]b");
    EXPECT_EQ(digit.runs, (std::vector<RtfRun>{{0, 4, 0, false, true}}));
    const RtfDocument letter = ReadRtf(kHead + "\\i[a]\\i0b}");
    EXPECT_EQ(letter.runs, (std::vector<RtfRun>{{0, 3, 0, false, true}, {3, 1, 0, false, false}}));
}

TEST(RtfRead, TheProgramsOwnColourTable)
{
    const RtfDocument document = ReadRtf(
        kHead +
        "{\\colortbl \\red145\\green195\\blue125;\\red125\\green145\\Blue195\\;\\red155\\green125\\blue195;}x}");
    EXPECT_EQ(document.colours, (std::vector<quint32>{0x91C37D, 0x7D91C3, 0x9B7DC3}));
    EXPECT_EQ(Plain(document.text), "x");
}

TEST(RtfRead, ColourTablesOfOthers)
{
    const RtfDocument document =
        ReadRtf(kHead + "{\\colortbl ;\\RED1\\Green2\\bLUE3;\\red300\\green-4;\\blue7}\\cf1 x\\cf40000 y}");
    EXPECT_EQ(document.colours, (std::vector<quint32>{RtfAutomaticColour, 0x010203, 0xFF0000}));
    EXPECT_EQ(document.runs.at(1).colour, 32767);
    // A second table takes the place of the first, and of what that left without its end.
    EXPECT_EQ(ReadRtf(kHead + "{\\colortbl \\red1;\\red9}{\\colortbl ;\\red2;}x}").colours,
              (std::vector<quint32>{RtfAutomaticColour, 0x020000}));
}

TEST(RtfRead, FontAndSize)
{
    const RtfDocument own = ReadRtf(
        QStringLiteral("{\\rtf1\\deff1{\\fonttbl{\\f0\\fnil Arial;}{\\f1\\fcharset0 MS Sans Serif;}}\\fs20 x}"));
    EXPECT_EQ(Plain(own.fontName), "MS Sans Serif");
    EXPECT_EQ(own.fontHalfPoints, 20);
    const RtfDocument flat =
        ReadRtf(QStringLiteral("{\\rtf1{\\fonttbl\\f0\\fnil One;\\f1\\fnil Two;}\\f1\\fs18\\fs30 x}"));
    EXPECT_EQ(Plain(flat.fontName), "Two");
    EXPECT_EQ(flat.fontHalfPoints, 18);
    EXPECT_EQ(Plain(flat.text), "x");
    EXPECT_EQ(Plain(ReadRtf(QStringLiteral("{\\rtf1 x}")).fontName), "Courier New");
}

TEST(RtfRead, DestinationsArePassedOver)
{
    EXPECT_EQ(Plain(TextOf("a{\\*\\generator Some program;}b{\\info{\\title T}}c{\\pict 0102{\\b x}}d")), "abcd");
    EXPECT_EQ(Plain(TextOf("{\\unknown kept}")), "kept");
    EXPECT_EQ(Plain(TextOf("a\\info b\\* c\\colortbl d")), "ab cd");
    EXPECT_EQ(Plain(TextOf("a\\bin3 }}}b\\bin999 c")), "ab");
}

TEST(RtfRead, BrokenGroupsEndQuietly)
{
    EXPECT_EQ(Plain(ReadRtf(kHead + "a{b{c").text), "abc");
    EXPECT_EQ(Plain(ReadRtf(kHead + "a}b}c").text), "a");
    EXPECT_EQ(Plain(ReadRtf(kHead + "a\\").text), "a");
    EXPECT_EQ(Plain(ReadRtf(QStringLiteral("{\\rtf")).text), "");
    EXPECT_EQ(Plain(ReadRtf(QStringLiteral("{\\rtfx a}")).text), "a");
    EXPECT_EQ(Plain(ReadRtf(kHead + "a\\cf-5 b\\b-0 c\\i99999999999999999999 d}").text), "abcd");
}

TEST(RtfRead, DepthCostsNothing)
{
    const QString deep = kHead + QString(400'000, u'{') + 'x' + QString(400'000, u'}') + "y}";
    EXPECT_EQ(Plain(ReadRtf(deep).text), "xy");
}

TEST(RtfRead, OddCharactersStandForThemselves)
{
    QString odd;
    odd += QChar(0);
    odd += QChar(0xD800);
    odd += u'a';
    odd += QChar(0xDC00);
    odd += u'\t';
    EXPECT_EQ(TextOf(odd), odd);
}

} // namespace
