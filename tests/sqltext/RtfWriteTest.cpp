// Writing RTF: the layout that other parts cut lines from, and that reading gives back what was written.
#include "sqltext/Rtf.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace {

RtfDocument Sample()
{
    RtfDocument document;
    document.text = QStringLiteral("select {a}\r\n\tfrom \\b");
    document.runs = {{0, 6, 1, false, false}, {6, 6, 0, false, false}, {12, 1, 0, true, true}, {13, 7, 4, false, true}};
    document.colours = {0x91C37D, 0x7D91C3, RtfAutomaticColour};
    return document;
}

TEST(RtfWrite, Layout)
{
    EXPECT_EQ(WriteRtf(Sample()).toStdString(),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}\r\n"
              "{\\colortbl \\red145\\green195\\blue125;\\red125\\green145\\blue195;;}\r\n"
              "\\viewkind4\\uc1\\pard\\f0\\fs17 \\cf1 select\\cf0  \\{a\\}\r\n"
              "\\par \\b \\i \\tab \\b0 \\cf4 from \\\\b\r\n"
              "\\par }");
}

TEST(RtfWrite, AnEmptyDocument)
{
    const RtfDocument empty;
    EXPECT_EQ(WriteRtf(empty).toStdString(),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}\r\n"
              "{\\colortbl }\r\n\\viewkind4\\uc1\\pard\\f0\\fs17 \r\n\\par }");
    EXPECT_EQ(ReadRtf(WriteRtf(empty)), empty);
}

TEST(RtfWrite, SwitchesComeBackAsTheyWere)
{
    EXPECT_EQ(ReadRtf(WriteRtf(Sample())), Sample());
}

TEST(RtfWrite, HeadAndFontLine)
{
    EXPECT_EQ(RtfHeadLine(QStringLiteral("A\\B")).toStdString(),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 A\\\\B;}}");
    EXPECT_EQ(RtfFontLine(24).toStdString(), "\\viewkind4\\uc1\\pard\\f0\\fs24 ");
    RtfDocument document = Sample();
    document.fontName = QStringLiteral(u"A\\B {\u0436}");
    document.fontHalfPoints = 24;
    EXPECT_EQ(ReadRtf(WriteRtf(document)), document);
}

TEST(RtfWrite, RunsThatFitBadlyAreClipped)
{
    RtfDocument document;
    document.text = QStringLiteral("abcdef");
    document.runs = {{-3, 5, 1, false, false}, {4, 100, 2, false, false}};
    const RtfDocument back = ReadRtf(WriteRtf(document));
    EXPECT_EQ(back.text, document.text);
    EXPECT_EQ(back.runs,
              (std::vector<RtfRun>{{0, 2, 1, false, false}, {2, 2, 0, false, false}, {4, 2, 2, false, false}}));
}

TEST(RtfWrite, LoneLineEndsBecomeWhole)
{
    RtfDocument document;
    document.text = QStringLiteral("a\rb\nc\r\r\nd\n\re");
    EXPECT_EQ(ReadRtf(WriteRtf(document)).text.toStdString(), "a\r\nb\r\nc\r\n\r\nd\r\n\r\ne");
}

// Any text and any look must survive: each unit of UTF-16, in the neighbourhood of what RTF itself is made of.
RtfDocument RandomDocument(QRandomGenerator &random)
{
    static const QString pieces[] = {"\\",
                                     "{",
                                     "}",
                                     "\r\n",
                                     "\r\n",
                                     "\t",
                                     " ",
                                     "0",
                                     "1",
                                     "-",
                                     "*",
                                     "'e4",
                                     "u12?",
                                     "par ",
                                     "cf1 ",
                                     ";",
                                     "\"",
                                     "{\\rtf1 ",
                                     "\\b0 ",
                                     QStringLiteral(u"\u00EE"),
                                     QStringLiteral(u"\U0001F600"),
                                     QStringLiteral(u"\u2028")};
    RtfDocument document;
    const int looks = random.bounded(6);
    for (int look = 0; look <= looks; ++look) {
        RtfRun run{document.text.size(), 0, random.bounded(7), random.bounded(3) == 0, random.bounded(3) == 0};
        const int count = 1 + random.bounded(6);
        for (int i = 0; i < count; ++i) {
            const quint32 kind = random.bounded(4u);
            char16_t unit = char16_t(kind == 0 ? random.bounded(0x10000) : random.bounded(0x80));
            if (unit == u'\r' || unit == u'\n')
                unit = 0;
            document.text += kind < 2 ? QString(QChar(unit)) : pieces[random.bounded(int(std::size(pieces)))];
        }
        run.length = document.text.size() - run.start;
        if (!document.runs.empty() && document.runs.back().SameLook(run))
            document.runs.back().length += run.length;
        else
            document.runs.push_back(run);
    }
    const int colours = random.bounded(8);
    for (int i = 0; i < colours; ++i)
        document.colours.push_back(random.bounded(5) == 0 ? RtfAutomaticColour : random.bounded(0x1000000u));
    document.fontHalfPoints = 2 + random.bounded(100);
    return document;
}

TEST(RtfWrite, ReadingGivesBackWhatWasWritten)
{
    QRandomGenerator random(20240501);
    for (int i = 0; i < 20'000; ++i) {
        const RtfDocument document = RandomDocument(random);
        const QString rtf = WriteRtf(document);
        const RtfDocument back = ReadRtf(rtf);
        ASSERT_EQ(back.text, document.text) << rtf.toStdString();
        ASSERT_EQ(back, document) << rtf.toStdString();
        ASSERT_EQ(WriteRtf(back), rtf);
        ASSERT_EQ(ReadRtf(rtf, true).text, document.text + "\r\n");
    }
}

TEST(RtfWrite, EveryUnitOfUtf16)
{
    RtfDocument document;
    for (int unit = 0; unit < 0x10000; ++unit)
        if (unit != u'\r' && unit != u'\n')
            document.text += QChar(unit);
    document.text += QStringLiteral("\r\n");
    document.runs = {{0, document.text.size(), 0, false, false}};
    EXPECT_EQ(ReadRtf(WriteRtf(document)), document);
}

} // namespace
