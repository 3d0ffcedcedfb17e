// Colours of the editor control: RTF in and out, and formats that survive edits.
#include "RichTextBoxProbe.h"
#include <QScrollBar>

namespace {

constexpr char keyword[] = "#0000ff";

QString ColouredLines()
{
    QString body;
    for (int i = 0; i < 300; ++i)
        body += QStringLiteral("\\cf1 select\\cf0  a\r\n\\par ");
    return body;
}

} // namespace

TEST(RichTextBoxRtf, ReadsColoursBoldAndItalic)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 select\\cf0  \\i[t]\\i0 \r\n\\par \\b x\\b0  \\cf2 y\\cf0 ")));
    EXPECT_EQ(box.Text(), QStringLiteral("select [t]\r\nx y"));
    EXPECT_EQ(Shown(box, 0), std::string("0-6 ") + keyword + "; 7-10 i");
    EXPECT_EQ(Shown(box, 1), "0-1 b; 2-3 #ff0000");
    EXPECT_TRUE(box.HasColour(1));
    EXPECT_TRUE(box.HasColour(2));
    EXPECT_FALSE(box.HasColour(3));
}

TEST(RichTextBoxRtf, GivesBackWhatItRead)
{
    RichTextBox box;
    box.SetTextRTF(
        Rtf(QStringLiteral("\\cf1 select\\cf0  \\i[t]\\i0 \r\n\\par \\b x\\b0  \\\\\\{\\} \u0436\u4F60\u0645")));
    const QString text = box.Text();
    const QString rtf = box.TextRTF();
    const std::string first = Shown(box, 0);
    const std::string second = Shown(box, 1);
    EXPECT_TRUE(rtf.contains(QStringLiteral("\\cf1 select")));
    box.SetText(QString());
    box.SetTextRTF(rtf);
    EXPECT_EQ(box.Text(), text);
    EXPECT_EQ(box.TextRTF(), rtf);
    EXPECT_EQ(Shown(box, 0), first);
    EXPECT_EQ(Shown(box, 1), second);
}

TEST(RichTextBoxRtf, AnotherTextKeepsTheFormatsOfWhatItHasInCommon)
{
    for (const int added : {1, 3, 500}) {
        RichTextBox box;
        box.SetTextRTF(Rtf(QStringLiteral("\\cf1 select\\cf0  a\r\n\\par x \\cf2 y\\cf0 ")));
        const QString line(added, u'z');
        box.ChangeText(QStringLiteral("select a\r\n") + line + QStringLiteral("\r\nx y"));
        EXPECT_EQ(Shown(box, 0), std::string("0-6 ") + keyword) << added;
        EXPECT_EQ(Shown(box, 1), "") << added;
        EXPECT_EQ(Shown(box, 2), "2-3 #ff0000") << added;
        // Inside of a coloured word: its two ends stay.
        box.ChangeText(QStringLiteral("sel") + line + QStringLiteral("ect a\r\nx y"));
        EXPECT_EQ(Shown(box, 1), "2-3 #ff0000") << added;
        box.ChangeText(QStringLiteral("y"));
        EXPECT_EQ(Shown(box, 0), "0-1 #ff0000") << added;
    }
}

TEST(RichTextBoxRtf, TheFrameIsThatOfTheWholeText)
{
    RichTextBox box;
    box.SetText(QStringLiteral("a"));
    const RtfFrame frame = box.Frame();
    EXPECT_EQ(frame.head, QStringView(box.TextRTF()).left(box.TextRTF().indexOf(QStringLiteral("\r\n"))));
    EXPECT_TRUE(frame.font.contains(QStringLiteral("\\fs17")));
    EXPECT_TRUE(box.TextRTF().contains(frame.font));
}

TEST(RichTextBoxRtf, WhatIsNoRtfIsPlainText)
{
    RichTextBox box;
    box.SetTextRTF(QStringLiteral("\\b {\\rtf1 odd}\nline"));
    EXPECT_EQ(box.Text(), QStringLiteral("\\b {\\rtf1 odd}\r\nline"));
    box.SetTextRTF(QStringLiteral("{\\rtf1 {{{ unbalanced \\cf9 x"));
    EXPECT_TRUE(box.Text().contains(QStringLiteral("unbalanced")));
}

TEST(RichTextBoxRtf, AFragmentReplacesTheSelection)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 ab\\cf0 \r\n\\par cd\r\n\\par \\cf2 ef\\cf0 ")));
    box.SetSelStart(4);
    box.SetSelLength(4);
    box.SetSelRTF(Rtf(QStringLiteral("c\\cf1 XY\\cf0 \r\n\\par ")));
    EXPECT_EQ(box.Text(), QStringLiteral("ab\r\ncXY\r\nef"));
    EXPECT_EQ(Shown(box, 0), "0-2 #0000ff");
    EXPECT_EQ(Shown(box, 1), "1-3 #0000ff");
    EXPECT_EQ(Shown(box, 2), "0-2 #ff0000");
    EXPECT_EQ(box.SelStart(), 9);
}

TEST(RichTextBoxRtf, AFragmentOfPartOfALineLeavesTheRest)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 abcdef\\cf0 ")));
    box.SetSelStart(2);
    box.SetSelLength(2);
    box.SetSelRTF(Rtf(QStringLiteral("\\cf2 cd\\cf0 ")));
    EXPECT_EQ(Shown(box, 0), "0-2 #0000ff; 2-4 #ff0000; 4-6 #0000ff");
}

TEST(RichTextBoxRtf, AFragmentWithAnotherTableIsMapped)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 abc\\cf0 ")));
    box.SetSelStart(1);
    box.SetSelLength(1);
    QString other = Rtf(QStringLiteral("\\cf2 b"));
    other.replace(QStringLiteral("\\red0\\green0\\blue255;"), QStringLiteral("\\red0\\green255\\blue0;"));
    box.SetSelRTF(other);
    EXPECT_EQ(Shown(box, 0), "0-1 #0000ff; 1-2 #ff0000; 2-3 #0000ff");
}

TEST(RichTextBoxRtf, ColouringTheSameTextMovesNothing)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(ColouredLines()));
    ShowBox(box);
    box.SetSelStart(2005);
    QTest::keyClick(&box, Qt::Key_Left, Qt::ShiftModifier);
    box.verticalScrollBar()->setValue(200);
    const QTextCursor before = box.textCursor();
    QSignalSpy changed(&box, &RichTextBox::changed);
    box.SetTextRTF(Rtf(ColouredLines().replace(QStringLiteral("\\cf1"), QStringLiteral("\\cf2"))));
    EXPECT_EQ(box.verticalScrollBar()->value(), 200);
    EXPECT_EQ(box.textCursor().position(), before.position());
    EXPECT_EQ(box.textCursor().anchor(), before.anchor());
    EXPECT_EQ(changed.size(), 0);
    EXPECT_FALSE(box.HasColour(1));
    EXPECT_EQ(Shown(box, 299), "0-6 #ff0000");
}

TEST(RichTextBoxRtf, ASmallRewriteKeepsTheView)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(ColouredLines()));
    ShowBox(box);
    box.verticalScrollBar()->setValue(150);
    QSignalSpy changed(&box, &RichTextBox::changed);
    QString body = ColouredLines();
    body.replace(body.size() / 2, 1, QStringLiteral("zz"));
    {
        const RichTextBox::LockUpdate lock(&box);
        box.SetTextRTF(Rtf(body));
    }
    EXPECT_EQ(box.verticalScrollBar()->value(), 150);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(DocumentText(box), box.Text());
}

TEST(RichTextBoxRtf, FormatsMoveWithTypedText)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("ab \\cf1 select\\cf0  \\i[t]\\i0  x")));
    ShowBox(box);
    box.SetSelStart(1);
    QTest::keyClicks(&box, QStringLiteral("12"));
    EXPECT_EQ(box.Text(), QStringLiteral("a12b select [t] x"));
    EXPECT_EQ(Shown(box, 0), "5-11 #0000ff; 12-15 i");
    box.SetSelStart(7);
    QTest::keyClick(&box, Qt::Key_Return); // cuts the keyword in two
    EXPECT_EQ(Shown(box, 0), "5-7 #0000ff");
    EXPECT_EQ(Shown(box, 1), "0-4 #0000ff; 5-8 i");
    QTest::keyClick(&box, Qt::Key_Backspace); // and joins it
    EXPECT_EQ(Shown(box, 0), "5-11 #0000ff; 12-15 i");
    QTest::keyClick(&box, Qt::Key_Delete);
    EXPECT_EQ(Shown(box, 0), "5-10 #0000ff; 11-14 i");
    EXPECT_TRUE(box.HasColour(1));
}

TEST(RichTextBoxRtf, FormatsSurviveADeletionOverSeveralLines)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 one\\cf0  a\r\n\\par \\cf2 two\\cf0 \r\n\\par \\cf1 three\\cf0  b")));
    box.SetSelStart(2);
    box.SetSelLength(11);
    box.SetSelText(QString());
    EXPECT_EQ(box.Text(), QStringLiteral("onhree b"));
    EXPECT_EQ(Shown(box, 0), "0-6 #0000ff");
    EXPECT_FALSE(box.HasColour(2));
}

TEST(RichTextBoxRtf, SelColorRulesWhatIsTypedNext)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 select\\cf0 ")));
    ShowBox(box);
    box.SetSelStart(3);
    box.SetSelColor(QColor(145, 195, 125));
    QTest::keyClicks(&box, QStringLiteral("xy"));
    EXPECT_EQ(Shown(box, 0), "0-3 #0000ff; 5-8 #0000ff");
    QTest::keyClick(&box, Qt::Key_Home);
    QTest::keyClick(&box, Qt::Key_Right);
    QTest::keyClicks(&box, QStringLiteral("q")); // without it the character before rules
    EXPECT_EQ(Shown(box, 0), "0-4 #0000ff; 6-9 #0000ff");
    box.SetSelStart(0);
    box.SetSelLength(2);
    box.SetSelColor(QColor(255, 0, 0));
    EXPECT_EQ(Shown(box, 0), "0-2 #ff0000; 2-4 #0000ff; 6-9 #0000ff");
}

TEST(RichTextBoxRtf, AFinishedColouringIsTakenAsIfItWereRead)
{
    RichTextBox box;
    box.SetText(QStringLiteral("select a"));
    ColouredText coloured;
    coloured.document = ReadRtf(Rtf(QStringLiteral("\\cf1 select\\cf0  a")));
    EXPECT_TRUE(box.TakeColoured(coloured));
    EXPECT_EQ(Shown(box, 0), "0-6 #0000ff");
    RichTextBox other;
    other.SetText(QStringLiteral("select a"));
    other.SetTextRTF(Rtf(QStringLiteral("\\cf1 select\\cf0  a")));
    EXPECT_EQ(other.TextRTF(), box.TextRTF());
    box.SetSelStart(7);
    box.SetSelLength(1);
    coloured.whole = false;
    coloured.document = ReadRtf(Rtf(QStringLiteral("\\cf2 a\\cf0 ")), true);
    EXPECT_TRUE(box.TakeColoured(coloured));
    EXPECT_EQ(Shown(box, 0), "0-6 #0000ff; 7-8 #ff0000");
}

TEST(RichTextBoxRtf, AFontForPeopleIsShownProportional)
{
    RichTextBox box;
    const QFont fixed = box.font();
    QString rtf = Rtf(QStringLiteral("report"));
    box.SetTextRTF(rtf.replace(QStringLiteral("Courier New"), QStringLiteral("MS Sans Serif")));
    EXPECT_NE(box.font().family(), fixed.family());
    EXPECT_TRUE(box.TextRTF().contains(QStringLiteral("MS Sans Serif")));
    box.setReadOnly(true);
    ShowBox(box);
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text(), QStringLiteral("report"));
}

TEST(RichTextBoxRtf, LinesOutOfSightGetTheirColoursWhenTheyAreSeen)
{
    RichTextBox box;
    ShowBox(box);
    box.SetTextRTF(Rtf(ColouredLines()));
    QCoreApplication::processEvents();
    const auto formats = [&](int line) { return box.document()->findBlockByNumber(line).layout()->formats().size(); };
    EXPECT_EQ(formats(0), 1);
    EXPECT_EQ(formats(250), 0);
    EXPECT_TRUE(box.TextRTF().contains(Rtf(ColouredLines()).right(30).left(10))); // the content has them all
    box.verticalScrollBar()->setValue(245);
    QCoreApplication::processEvents();
    EXPECT_EQ(formats(250), 1);
    box.SetSelStart(0); // what is inserted before them moves them unharmed
    box.SetSelText(QStringLiteral("x\r\ny\r\n"));
    box.ShowAllColours();
    EXPECT_EQ(Shown(box, 2 + 299), "0-6 #0000ff");
    EXPECT_EQ(Shown(box, 2 + 120), "0-6 #0000ff");
}
