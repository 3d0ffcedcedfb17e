// Long texts come into the editor beside the living windows, and are in the end what a short one is at once. Opening a
// query file of 16 MB stopped the windows for many seconds.
#include "AnalyzerFixture.h"
#include "analyzer/QueryText.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include <QFile>
#include <QRandomGenerator>
#include <QTimer>

namespace {

struct LongText : Analyzer
{
    const qsizetype atOnce = QueryText::AtOnce;
    const int quick = SetQuickWait(0);

    ~LongText() override
    {
        QueryText::AtOnce = atOnce;
        SetQuickWait(quick);
    }
    QString File(const QString &text)
    {
        const QString path = folder.filePath(QStringLiteral("long.sql"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(text.toUtf8());
        return path;
    }
    // Runs `call` at the first event that is let through.
    template <typename Call> void Meanwhile(Call call) { QTimer::singleShot(0, window, call); }
};

QString Many(int lines)
{
    return QStringLiteral("select a, [b], 'x' from t -- why\r\n").repeated(lines);
}

const QStringList pieces = {
    "select", "SELECT", "from ", " where ", "update", "\r\n",   "\r\n",   "\r",
    "\n",     "\t",     " ",     "'",       "'",      "\"",     "--",     "[",
    "]",      "] ",     "]1",    "{",       "}",      "\\",     "\\cf1 ", "\\par ",
    "a",      "x1",     ",",     "(",       ")",      "\u00E4", "\u2029", QStringLiteral("\U0001F600")};

QString RandomText(QRandomGenerator &random)
{
    QString text;
    for (int i = random.bounded(60); i > 0; --i)
        text += pieces[random.bounded(int(pieces.size()))];
    return text;
}

} // namespace

TEST_F(LongText, EveryTextEndsAsAShortOneDoes)
{
    QPointer<frmSQL> plain = Make(QString());
    QRandomGenerator random(20251);
    for (int round = 0; round < 300; ++round) {
        const QString text = RandomText(random);
        QueryText::AtOnce = atOnce;
        plain->SetText(text);
        QueryText::AtOnce = -1;
        ASSERT_TRUE(window->SetText(text));
        const std::string told = "round " + std::to_string(round) + ": " + text.toStdString();
        ASSERT_EQ(window->Text(), plain->Text()) << told;
        ASSERT_EQ(window->txtSQL->TextRTF(), plain->txtSQL->TextRTF()) << told;
        ASSERT_EQ(window->txtSQL->toPlainText(), plain->txtSQL->toPlainText()) << told;
        ASSERT_EQ(window->txtSQL->SelStart(), plain->txtSQL->SelStart()) << told;
        QueryText::AtOnce = atOnce;
        if (round % 10 != 9)
            continue;
        // The states that undo leads to are the same ones.
        for (int presses = 0; presses < 14; ++presses) {
            plain->mnuUndo();
            window->mnuUndo();
            ASSERT_EQ(window->Text(), plain->Text()) << told << ", undone " << presses;
        }
    }
}

TEST_F(LongText, EventsGoOnWhileItIsColouredAndWhileItComes)
{
    const QString text = Many(30'000);
    int passes = 0, partly = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
        ++passes;
        const int shown = window->txtSQL->document()->characterCount();
        partly += shown > 1 && shown < text.size() / 2;
    });
    tick.start(0);
    EXPECT_TRUE(window->SetText(text));
    tick.stop();
    EXPECT_GT(passes, 0);
    EXPECT_GT(partly, 0); // it can be read before all of it is there
    EXPECT_EQ(window->Text(), text);
    EXPECT_TRUE(window->txtSQL->HasColour(1));
    window->txtSQL->ShowAllColours();
    EXPECT_EQ(Colours(0), Colours(29'999));
    EXPECT_EQ(Colours(0).substr(0, 8), "11111100");
}

TEST_F(LongText, EscapeKeepsTheTextThatWasThere)
{
    window->SetText(QStringLiteral("select 1"));
    const QString status = LastStatus();
    dialogs.Files << File(Many(20'000));
    SetQuickWait(60'000); // the reading lets nothing in
    bool pressed = false;
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, &press, [&] {
        pressed = true;
        QTest::keyClick(window->txtSQL, Qt::Key_Escape);
    });
    press.start(0);
    window->mnuOpen();
    // The colouring was quick as well; what is left to stop is the text on its way in.
    EXPECT_TRUE(pressed);
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
    EXPECT_EQ(window->txtSQL->toPlainText(), QStringLiteral("select 1"));
    EXPECT_EQ(Colours(), "11111100");
    EXPECT_EQ(window->FileName(), QString());

    SetQuickWait(0);
    EXPECT_FALSE(window->SetText(Many(20'000))); // and while it is coloured
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
    press.stop();
    EXPECT_EQ(LastStatus(), status); // nothing is told any more
    window->mnuUndo();
    EXPECT_EQ(window->Text(), QString()); // no state came in between
}

// The text of a connection that was closed before it was shown was empty in the store from then on.
TEST_F(LongText, WhatTheStoreHoldsIsNeitherGivenUpNorSavedHalf)
{
    const QString text = Many(20'000);
    gConns().Add(QStringLiteral("x"), QStringLiteral("c"), text);
    QPointer<frmSQL> made = new frmSQL;
    shell.AddChild(made);
    made->SetConnName(QStringLiteral("c"));
    int saves = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
        if (made->txtSQL->Text().isEmpty() && gConns().Item(QStringLiteral("c"))->Extra == text) {
            made->SaveState();
            saves += made->txtSQL->Text().isEmpty();
            QTest::keyClick(made->txtSQL, Qt::Key_Escape);
        }
    });
    tick.start(0);
    made->Load();
    tick.stop();
    EXPECT_GT(saves, 0);
    EXPECT_EQ(gConns().Item(QStringLiteral("c"))->Extra, text);
    EXPECT_EQ(made->Text(), text);
    EXPECT_FALSE(made->txtSQL->HasColour(1)); // it was not waited for
    // Typing colours the line alone then.
    QTest::keyClicks(made->txtSQL, QStringLiteral(" "));
    EXPECT_TRUE(made->txtSQL->HasColour(1));
    QPointer<frmSQL> again = made;
    again->FixText(true, true, 2);
    made->txtSQL->ShowAllColours();
    EXPECT_GT(made->txtSQL->document()->findBlockByNumber(19'999).layout()->formats().size(), 0);
}

TEST_F(LongText, TheNewestTextWins)
{
    const QString text = Many(20'000);
    Meanwhile([&] { EXPECT_TRUE(window->SetText(QStringLiteral("select 2"))); });
    EXPECT_TRUE(window->SetText(text));
    EXPECT_EQ(window->Text(), QStringLiteral("select 2"));
}

TEST_F(LongText, AWindowThatIsClosedMeanwhileTakesNothing)
{
    Meanwhile([&] { delete window.data(); });
    EXPECT_FALSE(window->SetText(Many(20'000)));
    EXPECT_FALSE(window);
}
