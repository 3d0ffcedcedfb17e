// Text and positions of the editor control.
#include "RichTextBoxProbe.h"
#include <QScrollBar>

namespace {

QString Lines(int count, const QString &line = QStringLiteral("select a from t"))
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines += line;
    return lines.join(QStringLiteral("\r\n"));
}

} // namespace

TEST(RichTextBox, GivesCrLfWhateverIsWritten)
{
    RichTextBox box;
    box.SetText(QStringLiteral("a\nb\rc\r\nd\r\r\ne\u2029f\n"));
    EXPECT_EQ(box.Text(), QStringLiteral("a\r\nb\r\nc\r\nd\r\n\r\ne\r\nf\r\n"));
    EXPECT_EQ(DocumentText(box), box.Text());
}

TEST(RichTextBox, KeepsHardBlanksAndSoftBreaks)
{
    RichTextBox box;
    const QString text = QStringLiteral("a\u00A0b\u2028c\td");
    box.SetText(text);
    EXPECT_EQ(box.Text(), text);
    box.selectAll();
    EXPECT_EQ(box.SelText(), text);
}

TEST(RichTextBox, CountsALineEndAsTwo)
{
    RichTextBox box;
    box.SetText(QStringLiteral("ab\r\ncd\r\nef"));
    box.SetSelStart(4);
    box.SetSelLength(4);
    EXPECT_EQ(box.SelText(), QStringLiteral("cd\r\n"));
    EXPECT_EQ(box.SelStart(), 4);
    EXPECT_EQ(box.SelLength(), 4);
    EXPECT_EQ(box.GetLineFromChar(3), 0);
    EXPECT_EQ(box.GetLineFromChar(4), 1);
    EXPECT_EQ(box.GetLineFromChar(99), 2);
    EXPECT_EQ(box.textCursor().blockNumber(), 2);
}

TEST(RichTextBox, APositionInsideCrLfSnapsOutwards)
{
    RichTextBox box;
    box.SetText(QStringLiteral("ab\r\ncd\r\n"));
    box.SetSelStart(3); // on the LF
    EXPECT_EQ(box.SelStart(), 2);
    EXPECT_EQ(box.SelLength(), 0);
    box.SetSelStart(1);
    box.SetSelLength(2); // ends between CR and LF
    EXPECT_EQ(box.SelText(), QStringLiteral("b\r\n"));
    box.SetSelStart(7); // as the colouring does with a caret at the end
    box.SetSelLength(9);
    EXPECT_EQ(box.SelStart(), 6);
    EXPECT_EQ(box.SelText(), QStringLiteral("\r\n"));
}

TEST(RichTextBox, PositionsPastTheEndsAreClipped)
{
    RichTextBox box;
    box.SetText(QStringLiteral("abc"));
    box.SetSelStart(50);
    EXPECT_EQ(box.SelStart(), 3);
    box.SetSelStart(-5);
    EXPECT_EQ(box.SelStart(), 0);
    box.SetSelLength(-1);
    EXPECT_EQ(box.SelLength(), 0);
    box.SetSelLength(std::numeric_limits<qsizetype>::max());
    EXPECT_EQ(box.SelText(), QStringLiteral("abc"));
}

TEST(RichTextBox, SelStartEndsTheSelectionAndSelTextReplacesIt)
{
    RichTextBox box;
    box.SetText(QStringLiteral("one\r\ntwo\r\nthree"));
    box.SetSelStart(2);
    box.SetSelLength(5);
    box.SetSelText(QStringLiteral("X\nY"));
    EXPECT_EQ(box.Text(), QStringLiteral("onX\r\nYo\r\nthree"));
    EXPECT_EQ(box.SelStart(), 6);
    EXPECT_EQ(box.SelLength(), 0);
    EXPECT_EQ(DocumentText(box), box.Text());
    box.SetSelLength(3);
    box.SetSelStart(1);
    EXPECT_EQ(box.SelLength(), 0);
}

TEST(RichTextBox, SaysThatItChangedOnceForEachEdit)
{
    RichTextBox box;
    QSignalSpy changed(&box, &RichTextBox::changed);
    box.SetText(QStringLiteral("a"));
    EXPECT_EQ(changed.size(), 1);
    box.SetSelText(QStringLiteral("b"));
    EXPECT_EQ(changed.size(), 2);
    box.SetSelLength(1);
    box.SetSelColor(QColor(1, 2, 3)); // formats are no change
    EXPECT_EQ(changed.size(), 2);
    QTest::keyClick(&box, Qt::Key_Right);
    EXPECT_EQ(changed.size(), 2);
}

TEST(RichTextBox, AListenerThatWritesIsNotCalledAgain)
{
    RichTextBox box;
    int calls = 0;
    QObject::connect(&box, &RichTextBox::changed, [&] {
        ++calls;
        box.SetSelText(QStringLiteral("!"));
        box.SetTextRTF(Rtf(QStringLiteral("\\cf1 other\\cf0 ")));
    });
    box.SetText(QStringLiteral("a"));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(box.Text(), QStringLiteral("other"));
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(calls, 2);
}

TEST(RichTextBox, TextIsSharedAndNotCopied)
{
    RichTextBox box;
    box.SetText(Lines(1000));
    const QString first = box.Text();
    const QString second = box.Text();
    EXPECT_EQ(first.constData(), second.constData());
    box.SetSelText(QStringLiteral("x")); // the copies of others stay as they are
    EXPECT_EQ(first.size() + 1, box.Text().size());
    EXPECT_FALSE(first.startsWith(u'x'));
}

TEST(RichTextBox, TellsWhatIsVisible)
{
    RichTextBox box;
    box.SetText(Lines(500));
    ShowBox(box);
    EXPECT_EQ(box.GetFirstVisibleLine(), 0);
    EXPECT_EQ(box.GetVisibleLineCount(), box.viewport()->height() / box.fontMetrics().height() + 1);
    box.verticalScrollBar()->setValue(123);
    EXPECT_EQ(box.GetFirstVisibleLine(), 123);
}

TEST(RichTextBox, SettingTheCaretShowsIt)
{
    RichTextBox box;
    box.SetText(Lines(500));
    ShowBox(box);
    box.SetSelStart(box.Text().size());
    EXPECT_GT(box.GetFirstVisibleLine(), 400);
}

TEST(RichTextBox, ALockKeepsTheViewAndTheDirectionOfTheSelection)
{
    RichTextBox box;
    box.SetText(Lines(500));
    ShowBox(box);
    box.SetSelStart(3405);
    QTest::keyClick(&box, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Left, Qt::ShiftModifier);
    const int view = box.verticalScrollBar()->value();
    const qsizetype start = box.SelStart();
    {
        const RichTextBox::LockUpdate lock(&box);
        const RichTextBox::LockUpdate again(&box);
        EXPECT_EQ(box.textCursor().selectionEnd() - box.textCursor().selectionStart(), 2); // on the screen still
        box.SetSelStart(0);
        box.SetSelLength(15);
        EXPECT_EQ(box.SelText(), QStringLiteral("select a from t"));
        box.SetSelStart(start);
        box.SetSelLength(2);
    }
    EXPECT_EQ(box.verticalScrollBar()->value(), view);
    EXPECT_EQ(box.SelStart(), start);
    EXPECT_EQ(box.SelLength(), 2);
    EXPECT_LT(box.textCursor().position(), box.textCursor().anchor());
}

TEST(RichTextBox, OneVeryLongLineCanBeWrittenAndEdited)
{
    RichTextBox box;
    ShowBox(box);
    const QString text(500000, u'x');
    box.SetText(text);
    box.SetSelStart(250000);
    box.SetSelText(QStringLiteral("y\r\nz"));
    EXPECT_EQ(box.Text().size(), 500004);
    EXPECT_EQ(box.GetLineFromChar(300000), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(DocumentText(box), box.Text());
}

TEST(RichTextBox, ATabIsAsWideAsFourCharacters)
{
    RichTextBox box;
    EXPECT_EQ(box.tabStopDistance(), 4 * QFontMetricsF(box.font()).horizontalAdvance(u' '));
    EXPECT_EQ(box.lineWrapMode(), QPlainTextEdit::NoWrap);
}

// Find's "?a" over "b" CR LF "ab" hit the LF: its replacement took the CR LF and left the "a".
TEST(RichTextBox, ALengthCountsFromThePlaceThatWasAskedFor)
{
    RichTextBox box;
    box.SetText(QStringLiteral("b\r\nab"));
    box.SetSelStart(2); // on the LF
    box.SetSelLength(2);
    EXPECT_EQ(box.SelStart(), 1);
    EXPECT_EQ(box.SelText(), QStringLiteral("\r\na"));
    box.SetSelLength(3); // from the same place
    EXPECT_EQ(box.SelText(), QStringLiteral("\r\nab"));
    box.SetSelLength(1);
    EXPECT_EQ(box.SelText(), QStringLiteral("\r\n"));
    box.SetSelLength(0);
    EXPECT_EQ(box.SelLength(), 0);
    {
        const RichTextBox::LockUpdate lock(&box);
        box.SetSelStart(2);
        box.SetSelLength(3);
    }
    EXPECT_EQ(box.SelText(), QStringLiteral("\r\nab"));
    // The caret went elsewhere since, by itself or with the text.
    box.SetSelStart(2);
    box.selectAll();
    box.SetSelLength(3);
    EXPECT_EQ(box.SelText(), QStringLiteral("b\r\n"));
    box.SetSelStart(2);
    QTest::keyClick(&box, Qt::Key_Left);
    box.SetSelLength(1);
    EXPECT_EQ(box.SelText(), QStringLiteral("b"));
    box.SetSelStart(2);
    box.SetText(QStringLiteral("xyz"));
    box.SetSelLength(2);
    EXPECT_EQ(box.SelText(), QStringLiteral("xy"));
}

// Whoever replays the changes that were told has the text, whatever way it changed.
TEST(RichTextBox, TellsEachChangeOfTheText)
{
    RichTextBox box;
    ShowBox(box);
    QString replayed;
    int told = 0;
    QObject::connect(&box, &RichTextBox::edited,
                     [&](const QString &before, qsizetype start, qsizetype length, const QString &now) {
                         EXPECT_EQ(before, replayed);
                         EXPECT_EQ(before, box.Text());
                         replayed.replace(start, length, now);
                         ++told;
                     });
    box.SetText(QStringLiteral("one\r\ntwo"));
    EXPECT_EQ(told, 1);
    QTest::keyClicks(&box, QStringLiteral("ab"));
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(told, 4);
    box.SetSelLength(7);
    box.SetSelText(QStringLiteral("x\ny\nz"));
    box.ChangeText(QStringLiteral("ab\r\nx\r\ny"));
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 other\\cf0 \\par text")));
    box.SetSelLength(3);
    box.SetSelRTF(Rtf(QStringLiteral("\\cf1 frag\\cf0 ")));
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    box.SetText(Lines(3000));
    box.ChangeText(Lines(3001, QStringLiteral("another")));
    EXPECT_EQ(replayed, box.Text());
    const int before = told;
    box.SetTextRTF(box.TextRTF()); // formats are no change
    box.SetSelStart(3);
    EXPECT_EQ(told, before);
}
