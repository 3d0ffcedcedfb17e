// No text is lost: undo and redo over everything that the window's text was, whatever changed it.
#include "AnalyzerFixture.h"
#include <QClipboard>
#include <QDropEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace {

const QString lines = QStringLiteral("select a\r\nfrom t\r\nwhere c");

struct Undo : Analyzer
{
    QString Text() const { return window->Text(); }
    void PressUndo() { QTest::keyClick(window->txtSQL, Qt::Key_Z, Qt::ControlModifier); }
    void PressRedo() { QTest::keyClick(window->txtSQL, Qt::Key_Y, Qt::ControlModifier); }
    // How often undo has to be pressed until the text is that one; -1 when it never is.
    int UndoesTo(const QString &text, int most = 60)
    {
        for (int presses = 0; presses <= most; ++presses) {
            if (Text() == text)
                return presses;
            PressUndo();
        }
        return -1;
    }
    // A show of brackets that is under way.
    void Show(int kind)
    {
        const QString before = window->txtSQL->TextRTF();
        window->Parse(kind);
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != before; }));
    }
    void Open(const QString &text)
    {
        const QString path = folder.filePath(QStringLiteral("q.sql"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        file.close();
        dialogs.Files << path;
        window->mnuOpen();
    }
    void Drop(const QMimeData &data, QPoint at, Qt::DropAction proposed)
    {
        QWidget *port = window->txtSQL->viewport();
        const Qt::DropActions possible = Qt::MoveAction | Qt::CopyAction;
        QDragEnterEvent enter(at, possible, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(proposed);
        QCoreApplication::sendEvent(port, &enter);
        QDropEvent drop(at, possible, &data, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(proposed);
        QCoreApplication::sendEvent(port, &drop);
        answered = drop.dropAction();
        QCoreApplication::processEvents();
    }
    Qt::DropAction answered = Qt::IgnoreAction;
};

} // namespace

// Undo ended after ten entries, and what lay before them was gone.
TEST_F(Undo, NeverRunsDry)
{
    QString typed;
    for (int i = 0; i < 40; ++i)
        typed += QStringLiteral("w%1 ").arg(i);
    Type(typed);
    ASSERT_EQ(Text(), typed);
    ASSERT_GE(UndoesTo(QStringLiteral("w0 w1 "), 200), 0);
    ASSERT_GE(UndoesTo(QString(), 20), 0);
    for (int i = 0; i < 3; ++i)
        PressUndo();
    EXPECT_EQ(Text(), QString()); // the text that the window was opened with
    // And forward again through every state, by either pair of keys.
    for (qsizetype length = 1; length <= typed.size(); ++length) {
        if (length % 2)
            PressRedo();
        else
            QTest::keyClick(window->txtSQL, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_EQ(Text(), typed.left(length));
    }
    PressRedo();
    EXPECT_EQ(Text(), typed);
}

// A press showed nothing when the entry was the present text, or there was none.
TEST_F(Undo, EveryPressShowsSomethingAsLongAsThereIsSomething)
{
    Type(QStringLiteral("ab"));
    PressUndo(); // the history of ten is empty
    EXPECT_EQ(Text(), QStringLiteral("a"));
    EXPECT_EQ(window->txtSQL->SelStart(), 1);
    PressRedo();
    window->SetText(QStringLiteral("select 1")); // its entry is the text itself
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("ab"));
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("a"));
}

TEST_F(Undo, AStepOfTheHistoryMovesThePositionWithIt)
{
    Type(QStringLiteral("one two")); // an entry "one" at the blank
    PressUndo();
    ASSERT_EQ(Text(), QStringLiteral("one"));
    PressRedo();
    EXPECT_EQ(Text(), QStringLiteral("one "));
    PressRedo();
    EXPECT_EQ(Text(), QStringLiteral("one t"));
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("one "));
}

TEST_F(Undo, AnEditAfterAnUndoTakesNothingAway)
{
    Type(QStringLiteral("abc"));
    PressUndo();
    PressUndo();
    ASSERT_EQ(Text(), QStringLiteral("a"));
    Type(QStringLiteral("x"));
    PressRedo();
    EXPECT_EQ(Text(), QStringLiteral("ax"));
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("a"));
    EXPECT_GE(UndoesTo(QStringLiteral("abc")), 1);
}

// The text that stood there was gone for good.
TEST_F(Undo, OpeningAFileCanBeTakenBack)
{
    Type(QStringLiteral("mine"));
    Open(QStringLiteral("select 2"));
    ASSERT_EQ(Text(), QStringLiteral("select 2"));
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("mine"));
    PressRedo();
    EXPECT_EQ(Text(), QStringLiteral("select 2"));
    EXPECT_EQ(Colours(), "11111100");
}

TEST_F(Undo, TheKeysOfTheToolkitThatRemoveMoreCanBeTakenBack)
{
    const QString text = QStringLiteral("select alpha beta\r\nfrom t");
    const std::pair<QKeySequence::StandardKey, const char *> keys[] = {
        {QKeySequence::DeleteEndOfWord, "select beta\r\nfrom t"},
        {QKeySequence::DeleteStartOfWord, "alpha beta\r\nfrom t"},
        {QKeySequence::DeleteEndOfLine, "select \r\nfrom t"}, // Ctrl+K, on the desktops that have it
        {QKeySequence::DeleteCompleteLine, "from t"}};
    int pressed = 0;
    for (const auto &[key, left] : keys) {
        const QList<QKeySequence> bound = QKeySequence::keyBindings(key);
        if (bound.isEmpty())
            continue;
        ++pressed;
        window->SetText(text);
        window->txtSQL->SetSelStart(7);
        QTest::keySequence(window->txtSQL, bound.front());
        EXPECT_EQ(Text(), QString::fromLatin1(left)) << key;
        EXPECT_GE(UndoesTo(text), 1) << key;
        EXPECT_EQ(Colours(), "11111100000000000") << key;
    }
    EXPECT_GE(pressed, 2);
}

TEST_F(Undo, WhatTheMouseBringsIsColouredWholeAndCanBeTakenBack)
{
    window->SetText(QStringLiteral("select x "));
    const QPoint end = [&] {
        window->txtSQL->SetSelStart(9);
        return window->txtSQL->cursorRect().center();
    }();
    QMimeData data;
    data.setText(QString(lines).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    Drop(data, end, Qt::CopyAction);
    ASSERT_EQ(Text(), QStringLiteral("select x ") + lines);
    EXPECT_EQ(Colours(0), "11111100011111100");
    EXPECT_EQ(Colours(1), "111100");
    EXPECT_EQ(Colours(2), "1111100");
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("select x "));
}

TEST_F(Undo, WhatTheEditorPastesByItselfIsColouredWholeAndCanBeTakenBack)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!clipboard->supportsSelection()) {
        // Where the desktop has no selection the middle button pastes nothing: its way from there on.
        window->SetText(QStringLiteral("select x "));
        window->txtSQL->SetSelStart(9);
        clipboard->setText(lines);
        window->txtSQL->paste();
    } else {
        window->SetText(QStringLiteral("select x "));
        clipboard->setText(lines, QClipboard::Selection);
        window->txtSQL->SetSelStart(9);
        QTest::mouseClick(window->txtSQL->viewport(), Qt::MiddleButton, {}, window->txtSQL->cursorRect().center());
    }
    ASSERT_EQ(Text(), QStringLiteral("select x ") + lines);
    EXPECT_EQ(Colours(2), "1111100");
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("select x "));
    clipboard->clear();
}

TEST_F(Undo, EveryCommandThatWritesCanBeTakenBack)
{
    const QString text = QStringLiteral("select a\r\nfrom t");
    const std::pair<const char *, std::function<void()>> commands[] = {
        {"comment", [&] { window->CommentIn(); }},
        {"indent", [&] { Press(Qt::Key_Tab); }},
        {"format", [&] { window->FormatSQL(); }},
        {"case", [&] { window->ChangeCase(true); }},
        {"insert", [&] { window->InsertString(QStringLiteral("xyz")); }},
        {"cut", [&] { window->mnuCut(); }},
        {"delete", [&] { Press(Qt::Key_Delete); }},
        {"set", [&] { window->SetText(QStringLiteral("other")); }},
        {"break",
         [&] {
             dialogs.Inputs << QStringLiteral("a");
             window->BreakText();
         }},
    };
    for (const auto &[name, run] : commands) {
        window->SetText(text);
        window->mnuSelectAll();
        run();
        ASSERT_NE(Text(), text) << name;
        EXPECT_GE(UndoesTo(text), 1) << name;
    }
}

// The entries of the ten were pushed out by edits that have no place there.
TEST_F(Undo, TheHistoryOfTenIsFedWhereToldAndNowhereElse)
{
    const QString first = QStringLiteral("select 1 ");
    window->SetText(first);
    Press(Qt::Key_Space); // an entry; the blank itself is no change of more than three
    const QString base = Text();
    QGuiApplication::clipboard()->setText(QStringLiteral("ab"));
    for (int i = 0; i < 12; ++i) { // small enough for the colouring's own entries
        window->mnuPaste();
        window->txtSQL->SetSelStart(window->txtSQL->SelStart() - 2);
        window->txtSQL->SetSelLength(2);
        window->mnuCut();
        ASSERT_EQ(Text(), base);
    }
    window->CommentIn();
    ASSERT_NE(Text(), base);
    PressUndo();
    EXPECT_EQ(Text(), first); // the entry of the blank is still the newest
    QGuiApplication::clipboard()->clear();
}

TEST_F(Undo, AShowOfBracketsIsNoState)
{
    window->SetText(QStringLiteral("'{a}'"));
    Type(QStringLiteral("x"));
    const QString text = Text();
    Show(2); // the frame's own brackets too
    PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("'{a}'"));
    PressRedo();
    EXPECT_EQ(Text(), text);
}

// What was pasted with the mouse while brackets showed was gone with their last step.
TEST_F(Undo, WhatIsDroppedIntoAShowOfBracketsStays)
{
    window->SetText(QStringLiteral("(a)"));
    Show(0);
    QMimeData data;
    data.setText(QStringLiteral("b"));
    Drop(data, QPoint(300, 5), Qt::CopyAction);
    EXPECT_EQ(Text(), QStringLiteral("(a)b"));
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
}

TEST_F(Undo, AClickIntoAShowOfBracketsMovesTheCaretAndLeavesTheShow)
{
    window->SetText(QStringLiteral("(a) b"));
    Show(0);
    QTest::mouseClick(window->txtSQL->viewport(), Qt::LeftButton, {}, QPoint(300, 5));
    EXPECT_TRUE(window->tmrParseBrackets->isActive());
    EXPECT_EQ(window->txtSQL->SelStart(), 5);
    QTest::mousePress(window->txtSQL->viewport(), Qt::MiddleButton, {}, QPoint(300, 5));
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
    EXPECT_EQ(window->txtSQL->SelStart(), 5);
}

// A file manager deletes the files that were taken as a move.
TEST_F(Undo, DroppedFilesAreTakenAsCopies)
{
    const QString path = folder.filePath(QStringLiteral("a.sql"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("select 1");
    file.close();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    Drop(data, QPoint(5, 5), Qt::MoveAction);
    EXPECT_EQ(answered, Qt::CopyAction);
    EXPECT_EQ(Text(), QStringLiteral("select 1"));
    EXPECT_TRUE(QFile::exists(path));
    PressUndo();
    EXPECT_EQ(Text(), QString());
}

// Any connect gave a scratch window a name and loaded that connection's text over its own.
TEST_F(Undo, AScratchWindowKeepsItsTextAndItsNamelessness)
{
    gConns().Add(QStringLiteral("a"), QStringLiteral("One"), QStringLiteral("select 1 from one"));
    const QString path = folder.filePath(QStringLiteral("q.sql"));
    window->SetText(QStringLiteral("scratch"));
    dialogs.Files << path;
    window->mnuSave();
    window->RefreshForm(QStringLiteral("One"));
    EXPECT_EQ(Text(), QStringLiteral("scratch"));
    EXPECT_EQ(window->ConnName(), QString());
    EXPECT_EQ(window->Caption(), QStringLiteral("SQL Analyzer: "));
    EXPECT_EQ(window->FileName(), path); // it is this text's
    window->SaveState();
    EXPECT_EQ(gConns().Item(QStringLiteral("One"))->Extra, QStringLiteral("select 1 from one"));
}

// Ctrl+S overwrote the query file of one connection with another connection's text.
TEST_F(Undo, AFileBelongsToTheTextThatWasInIt)
{
    gConns().Add(QStringLiteral("a"), QStringLiteral("One"), QStringLiteral("select 1"));
    gConns().Add(QStringLiteral("b"), QStringLiteral("Two"), QStringLiteral("select 2"));
    gConns().Add(QStringLiteral("c"), QStringLiteral("Empty"), QString());
    window = Make(QStringLiteral("One"));
    const QString path = folder.filePath(QStringLiteral("q.sql"));
    dialogs.Files << path;
    window->mnuSave();
    window->ToolBar(QStringLiteral("SQLRefresh")); // the same text
    EXPECT_EQ(window->FileName(), path);
    window->RefreshForm(QStringLiteral("Empty")); // which leaves the text
    EXPECT_EQ(window->FileName(), path);
    window->RefreshForm(QStringLiteral("Two"));
    EXPECT_EQ(window->FileName(), QString());
    const auto asked = dialogs.FileDialogs.size();
    dialogs.Files << QString();
    window->mnuSave();
    EXPECT_EQ(dialogs.FileDialogs.size(), asked + 1);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("select 1"));
}

TEST_F(Undo, BeginsWithTheTextThatTheWindowWasOpenedWith)
{
    gConns().Add(QStringLiteral("a"), QStringLiteral("One"), QStringLiteral("select 1"));
    window = Make(QStringLiteral("One"));
    Type(QStringLiteral("x"));
    for (int i = 0; i < 5; ++i)
        PressUndo();
    EXPECT_EQ(Text(), QStringLiteral("select 1"));
}
