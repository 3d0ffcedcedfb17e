// The box for a value of any size: its first part at once, the rest in pieces, and the text unchanged in the end.

#include "controls/LongTextBox.h"
#include "MakeRecordset.h"
#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <gtest/gtest.h>

namespace {

QString Numbers(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString::number(i) + (i % 7 ? u' ' : u'_');
    return text;
}

bool Complete(LongTextBox &box)
{
    return QTest::qWaitFor([&] { return box.IsComplete(); }, 60000);
}

} // namespace

TEST(LongTextBox, AShortTextShowsAtOnce)
{
    LongTextBox box;
    QSignalSpy progress(&box, &LongTextBox::Progress);
    box.Show(ADODB::CellReader(QStringLiteral("one\r\ntwo\rthree\n\nfour")));
    EXPECT_TRUE(box.IsComplete());
    EXPECT_EQ(box.toPlainText(), QStringLiteral("one\ntwo\nthree\n\nfour"));
    EXPECT_EQ(box.WholeText(), QStringLiteral("one\ntwo\nthree\n\nfour"));
    EXPECT_EQ(box.textCursor().position(), 0);
    EXPECT_EQ(progress.size(), 0);
    box.Show(ADODB::CellReader());
    EXPECT_EQ(box.toPlainText(), QString());
}

// The whole value was laid out in one: 20 MB froze the program for 15 s.
TEST(LongTextBox, TheFirstPartShowsAtOnceAndTheRestComesBetweenEvents)
{
    const QString text = Numbers(400000); // one line
    LongTextBox box;
    box.resize(400, 300);
    box.show();
    QSignalSpy progress(&box, &LongTextBox::Progress);
    box.Show(ADODB::CellReader(text));
    EXPECT_FALSE(box.IsComplete());
    EXPECT_GT(box.CharactersMade(), 1000);
    EXPECT_LE(box.CharactersMade(), 1 << 16);
    EXPECT_EQ(progress.size(), 1);
    QTest::keyClick(&box, Qt::Key_Down); // it can be used meanwhile
    ASSERT_TRUE(Complete(box));
    EXPECT_EQ(progress.last().first().toInt(), 100);
    for (QTextBlock block = box.document()->firstBlock(); block.isValid(); block = block.next())
        ASSERT_LE(block.length(), 4097); // the toolkit lays out a block as a whole
    EXPECT_TRUE(box.WholeText() == text);
    box.selectAll();
    EXPECT_TRUE(box.SelectedText() == text); // the box's own breaks are in no text
    box.copy();
    EXPECT_TRUE(QApplication::clipboard()->text() == text);
}

TEST(LongTextBox, WhatHasNotComeYetIsCopiedToo)
{
    const QString text = Numbers(300000) + QStringLiteral("\r\n") + Numbers(10);
    LongTextBox box;
    box.Show(ADODB::CellReader(text));
    ASSERT_FALSE(box.IsComplete());
    QString wanted = text;
    EXPECT_TRUE(box.WholeText() == wanted.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    EXPECT_EQ(box.WholeText([] { return false; }), std::nullopt); // given up
}

TEST(LongTextBox, LinesAndCharactersSurviveTheSeams)
{
    // CR and LF in two pieces, characters of two places at the ends of blocks, lines of all lengths.
    QString text(16383, u'a');
    text += QStringLiteral("\r\n");
    for (int i = 0; i < 70; ++i)
        text += QString(4090 + i % 10, u'b') + QString::fromUtf8("\xF0\x9F\x98\x80") + QString(i * 3, u'c') +
                (i % 3 ? QStringLiteral("\n") : QString());
    text += QString(65535, u'd') + QStringLiteral("\r\r\n");
    LongTextBox box;
    box.Show(ADODB::CellReader(text));
    ASSERT_TRUE(Complete(box));
    QString wanted = text;
    wanted.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    EXPECT_TRUE(box.WholeText() == wanted);
    for (QTextBlock block = box.document()->firstBlock(); block.isValid(); block = block.next()) {
        ASSERT_FALSE(block.text().endsWith(QChar(0xD83D)));
        ASSERT_FALSE(block.text().startsWith(QChar(0xDE00)));
    }
    // A part of the text, from inside of one block to inside of another.
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(16000);
    cursor.setPosition(40000, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    EXPECT_TRUE(wanted.contains(box.SelectedText()));
    EXPECT_TRUE(box.SelectedText().startsWith(QStringLiteral("aaa")));
}

TEST(LongTextBox, ANewTextEndsTheFormerAndClearingGivesTheMemoryBack)
{
    LongTextBox box;
    const QString text(8 * 1000 * 1000, u'x');
    box.Show(ADODB::CellReader(text));
    box.Show(ADODB::CellReader(QStringLiteral("short")));
    EXPECT_TRUE(box.IsComplete());
    QTest::qWait(20);
    EXPECT_EQ(box.toPlainText(), QStringLiteral("short"));

    QSignalSpy progress(&box, &LongTextBox::Progress);
    const QByteArray value(8 * 1000 * 1000, 'x');
    std::weak_ptr<ADODB::Recordset> rows;
    {
        const ADODB::RecordsetPtr made = MakeTexts({QStringLiteral("t")}, {{QString::fromLatin1(value)}});
        rows = made;
        box.Show(ADODB::CellReader(made, 0, 0));
    }
    EXPECT_FALSE(rows.expired()); // it reads on
    box.Clear();
    EXPECT_TRUE(rows.expired());
    EXPECT_EQ(box.document()->characterCount(), 1);
    EXPECT_EQ(box.CharactersMade(), 0);
    EXPECT_EQ(progress.last().first().toInt(), 100);
}
