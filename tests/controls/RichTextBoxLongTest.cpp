// A content that comes by pieces: how large they are, and what is there when it is given up.
#include "RichTextBoxProbe.h"
#include "controls/EditorContent.h"

namespace {

EditorContent Content(const RichTextBox &box, const QString &body)
{
    return {ReadRtf(Rtf(body)), box.Text()};
}

QString ManyLines(int count)
{
    return QStringLiteral("\\cf1 word\\cf0  and more\r\n\\par ").repeated(count);
}

} // namespace

TEST(RichTextBoxLong, NoPieceIsLongerThanTold)
{
    RichTextBox box;
    ShowBox(box);
    QSignalSpy changed(&box, &RichTextBox::changed);
    QSignalSpy edited(&box, &RichTextBox::edited);
    RichTextBox whole;
    whole.SetTextRTF(Rtf(ManyLines(5'000)));
    int former = 1;
    int largest = 0, pieces = 0;
    EXPECT_TRUE(box.TakeContent(Content(box, ManyLines(5'000)), [&] {
        const int now = box.document()->characterCount();
        largest = std::max(largest, now - former);
        former = now;
        ++pieces;
        EXPECT_EQ(box.Text(), QString()); // the former one until all is in
        return true;
    }));
    EXPECT_LE(largest, RichTextBox::PieceSize + 1);
    EXPECT_EQ(pieces, (whole.Text().size() - 1) / RichTextBox::PieceSize);
    EXPECT_EQ(box.Text(), whole.Text());
    EXPECT_EQ(DocumentText(box), whole.Text());
    EXPECT_EQ(box.TextRTF(), whole.TextRTF());
    EXPECT_EQ(Shown(box, 4'999), "0-4 #0000ff");
    EXPECT_EQ(changed.size(), 1);
    ASSERT_EQ(edited.size(), 1);
    EXPECT_EQ(edited[0][3].toString(), whole.Text());
    // What is typed then goes on from there.
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text().left(5), QStringLiteral("xword"));
    EXPECT_EQ(Shown(box, 0), "1-5 #0000ff");
    EXPECT_EQ(DocumentText(box), box.Text());
}

TEST(RichTextBoxLong, GivenUpEverythingIsAsItWas)
{
    RichTextBox box;
    ShowBox(box);
    box.SetTextRTF(Rtf(ManyLines(300)));
    box.SetSelStart(200);
    box.SetSelLength(7);
    const QString rtf = box.TextRTF();
    const QTextDocument *document = box.document();
    QSignalSpy changed(&box, &RichTextBox::changed);
    QSignalSpy edited(&box, &RichTextBox::edited);
    int asked = 0;
    EXPECT_FALSE(box.TakeContent(Content(box, ManyLines(5'000) + u'x'), [&] { return ++asked < 3; }));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(box.document(), document);
    EXPECT_EQ(box.TextRTF(), rtf);
    EXPECT_EQ(DocumentText(box), box.Text());
    EXPECT_EQ(box.SelStart(), 200);
    EXPECT_EQ(box.SelLength(), 7);
    EXPECT_EQ(changed.size() + edited.size(), 0);
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text().at(200), u'x');
    EXPECT_EQ(DocumentText(box), box.Text());
    // A content that was made for another text is not taken.
    EditorContent late = Content(box, ManyLines(2));
    box.SetText(QStringLiteral("other"));
    EXPECT_FALSE(box.TakeContent(std::move(late), [] { return true; }));
    EXPECT_EQ(box.Text(), QStringLiteral("other"));
}

TEST(RichTextBoxLong, OtherColoursOfTheSameTextComeAtOnce)
{
    RichTextBox box;
    ShowBox(box);
    box.SetText(ReadRtf(Rtf(ManyLines(200))).text);
    box.SetSelStart(30);
    box.SetSelLength(4);
    const QTextDocument *document = box.document();
    EXPECT_TRUE(box.TakeContent(Content(box, ManyLines(200)), [&] { return false; })); // nothing is asked
    EXPECT_EQ(box.document(), document);
    EXPECT_EQ(box.SelStart(), 30);
    EXPECT_EQ(box.SelLength(), 4);
    EXPECT_EQ(Shown(box, 0), "0-4 #0000ff");
    EXPECT_EQ(Shown(box, 199), "0-4 #0000ff");
    // And away again, from the lines that are in sight as well.
    RtfDocument plain;
    plain.text = box.Text();
    EXPECT_TRUE(box.TakeContent({plain, plain.text}, [] { return true; }));
    EXPECT_EQ(Shown(box, 0), "");
    EXPECT_EQ(Shown(box, 199), "");
    EXPECT_FALSE(box.HasColour(1));
}
