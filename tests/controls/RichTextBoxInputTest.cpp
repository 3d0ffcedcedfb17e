// Real keys, input methods, the mouse, the clipboard and drops on the editor control.
#include "RichTextBoxProbe.h"
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QUrl>
#include <memory>

namespace {

void Compose(RichTextBox &box, const QString &preedit, const QString &commit = {})
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QCoreApplication::sendEvent(&box, &event);
}

void Drop(RichTextBox &box, const QMimeData &data, const QPoint &at = QPoint(5, 5))
{
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &drop);
}

const QStringList scripts = {
    QStringLiteral("\u0437\u0430\u043F\u0440\u043E\u0441"),          // Cyrillic
    QStringLiteral("\u03B5\u03C1\u03CE\u03C4\u03B7\u03C3\u03B7"),    // Greek
    QStringLiteral("\u67E5\u8BE2\u8A9E"),                            // Han
    QStringLiteral("\u0627\u0633\u062A\u0639\u0644\u0627\u0645"),    // Arabic
    QStringLiteral("\u05E9\u05D0\u05D9\u05DC\u05EA\u05D4"),          // Hebrew
    QStringLiteral("e\u0301\u0923\u0937\u0941"),                     // combining marks, Devanagari
    QStringLiteral("\U0001F600\U0001F468\u200D\U0001F469\U00020BB7") // beyond the first plane
};

} // namespace

TEST(RichTextBoxInput, TypedTextArrives)
{
    RichTextBox box;
    ShowBox(box);
    QTest::keyClicks(&box, QStringLiteral("select 1"));
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Tab);
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text(), QStringLiteral("select 1\r\n\tx"));
    EXPECT_EQ(box.SelStart(), 12);
}

TEST(RichTextBoxInput, AnyScriptSurvivesTypingColouringAndTheRoundTrip)
{
    RichTextBox box;
    ShowBox(box);
    QString expected;
    for (const QString &word : scripts) {
        Compose(box, word.left(1));
        EXPECT_EQ(box.Text(), expected); // what is composed is no text yet
        Compose(box, word);
        Compose(box, QString(), word);
        QTest::keyClick(&box, Qt::Key_Return);
        expected += word + QStringLiteral("\r\n");
        EXPECT_EQ(box.Text(), expected);
        EXPECT_EQ(DocumentText(box), expected);
    }
    const QString rtf = box.TextRTF();
    box.SetText(QString());
    box.SetTextRTF(rtf);
    EXPECT_EQ(box.Text(), expected);
    for (int i = 0; i < scripts.size(); ++i)
        EXPECT_EQ(box.document()->findBlockByNumber(i).text(), scripts[i]);
}

TEST(RichTextBoxInput, ComposingKeepsTheColoursOfTheLine)
{
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 select\\cf0  \\cf2 b\\cf0 ")));
    ShowBox(box);
    box.SetSelStart(3);
    Compose(box, QStringLiteral("\u4F60\u4F60"));
    EXPECT_TRUE(
        QString::fromStdString(Shown(box, 0)).startsWith(QStringLiteral("0-3 #0000ff; 5-8 #0000ff; 9-10 #ff0000")))
        << Shown(box, 0);
    Compose(box, QString());
    EXPECT_EQ(Shown(box, 0), "0-6 #0000ff; 7-8 #ff0000");
    Compose(box, QString(), QStringLiteral("\u4F60"));
    EXPECT_EQ(box.Text(), QStringLiteral("sel\u4F60ect b"));
    EXPECT_EQ(Shown(box, 0), "0-7 #0000ff; 8-9 #ff0000");
}

TEST(RichTextBoxInput, ListenersHearOfACommitOnce)
{
    RichTextBox box;
    ShowBox(box);
    QSignalSpy changed(&box, &RichTextBox::changed);
    Compose(box, QStringLiteral("n"));
    Compose(box, QStringLiteral("ni"));
    EXPECT_EQ(changed.size(), 0);
    Compose(box, QString(), QStringLiteral("\u4F60"));
    EXPECT_EQ(changed.size(), 1);
}

TEST(RichTextBoxInput, UndoIsTheWindowsBusiness)
{
    RichTextBox box;
    ShowBox(box);
    QSignalSpy undo(&box, &RichTextBox::undoRequested);
    QTest::keyClicks(&box, QStringLiteral("ab"));
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undo.size(), 1);
    EXPECT_EQ(box.Text(), QStringLiteral("ab"));
    EXPECT_FALSE(box.isUndoRedoEnabled());
}

TEST(RichTextBoxInput, APasteOfTenMegabytesIsWhole)
{
    QString text;
    text.reserve(10 << 20);
    for (int i = 0; text.size() < (10 << 20); ++i)
        text += QStringLiteral("select \u0436 from t where a = %1\n").arg(i);
    RichTextBox box;
    box.SetTextRTF(Rtf(QStringLiteral("\\cf1 first\\cf0  last")));
    ShowBox(box);
    box.SetSelStart(6);
    QSignalSpy changed(&box, &RichTextBox::changed);
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(changed.size(), 1);
    QString expected = text;
    expected.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    EXPECT_TRUE(box.Text() == QStringLiteral("first ") + expected + QStringLiteral("last"));
    EXPECT_TRUE(DocumentText(box) == box.Text());
    EXPECT_EQ(box.SelStart(), 6 + expected.size());
    EXPECT_EQ(Shown(box, 0), "0-5 #0000ff");
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    EXPECT_EQ(box.Text(), QString());
    QGuiApplication::clipboard()->clear();
}

TEST(RichTextBoxInput, TheClipboardCarriesPlainText)
{
    RichTextBox box;
    box.SetText(QStringLiteral("a\u00A0b\r\nc"));
    ShowBox(box);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("a\u00A0b\nc"));
    QTest::keyClick(&box, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), QString());
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), QStringLiteral("a\u00A0b\r\nc"));
    QGuiApplication::clipboard()->clear();
}

TEST(RichTextBoxInput, DroppedFilesAndNodesAreTheWindowsBusiness)
{
    RichTextBox box;
    box.SetText(QStringLiteral("abc\r\ndef"));
    ShowBox(box);
    QSignalSpy files(&box, &RichTextBox::filesDropped);
    QSignalSpy nodes(&box, &RichTextBox::nodeDropped);
    QMimeData urls;
    urls.setUrls(
        {QUrl::fromLocalFile(QStringLiteral("/tmp/a b.sql")), QUrl::fromLocalFile(QStringLiteral("/tmp/c.sql"))});
    Drop(box, urls);
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0][0].toStringList(), (QStringList{QStringLiteral("/tmp/a b.sql"), QStringLiteral("/tmp/c.sql")}));
    QMimeData node;
    node.setData(QLatin1String(RichTextBox::NodeMime), QByteArrayLiteral("orders"));
    box.SetSelStart(5);
    const QPoint secondLine = box.cursorRect().center();
    box.SetSelStart(0);
    Drop(box, node, secondLine);
    ASSERT_EQ(nodes.size(), 1);
    EXPECT_EQ(nodes[0][0].toByteArray(), QByteArrayLiteral("orders"));
    EXPECT_EQ(box.SelStart(), 5);
    EXPECT_EQ(box.Text(), QStringLiteral("abc\r\ndef"));
    box.setReadOnly(true);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &urls, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST(RichTextBoxInput, DroppedTextGoesIn)
{
    RichTextBox box;
    box.SetText(QStringLiteral("abc"));
    ShowBox(box);
    QMimeData text;
    text.setText(QStringLiteral("x\ny"));
    Drop(box, text, QPoint(390, 5));
    EXPECT_EQ(box.Text(), QStringLiteral("abcx\r\ny"));
    EXPECT_EQ(DocumentText(box), box.Text());
}

TEST(RichTextBoxInput, TheRightButtonAsksForAMenu)
{
    RichTextBox box;
    box.SetText(QStringLiteral("abc"));
    ShowBox(box);
    QSignalSpy asked(&box, &RichTextBox::contextRequested);
    QTest::mouseClick(box.viewport(), Qt::RightButton, {}, QPoint(20, 20));
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].toPoint(), box.viewport()->mapToGlobal(QPoint(20, 20)));
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, QPoint(20, 20), QPoint(20, 20));
    QCoreApplication::sendEvent(box.viewport(), &byMouse);
    EXPECT_EQ(asked.size(), 1); // the release of the button has asked already
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
    QCoreApplication::sendEvent(box.viewport(), &byKey);
    EXPECT_EQ(asked.size(), 2);
}

TEST(RichTextBoxInput, RightToLeftTextCanBeEdited)
{
    RichTextBox box;
    ShowBox(box);
    const QString text = QStringLiteral("\u05E9\u05D0 select \u0645\u0646");
    box.SetText(text);
    QCoreApplication::processEvents();
    box.SetSelStart(2);
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text(), QString(text).insert(2, u'x'));
}

// It was swallowed, and no menu came on keyboards without a menu key.
TEST(RichTextBoxInput, ShiftF10AsksForAMenu)
{
    RichTextBox box;
    box.SetText(QStringLiteral("abc"));
    ShowBox(box);
    QSignalSpy asked(&box, &RichTextBox::contextRequested);
    QTest::keyClick(&box, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].toPoint(), box.viewport()->mapToGlobal(box.cursorRect().bottomLeft()));
    EXPECT_EQ(box.Text(), QStringLiteral("abc"));
}

// A giver that proposes to move files deletes them afterwards.
TEST(RichTextBoxInput, FilesAndNodesAreTakenAsCopies)
{
    RichTextBox box;
    ShowBox(box);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.sql"))});
    QMimeData node;
    node.setData(QLatin1String(RichTextBox::NodeMime), QByteArrayLiteral("orders"));
    const Qt::DropActions possible = Qt::MoveAction | Qt::CopyAction;
    for (const QMimeData *data : {&files, &node}) {
        QDragEnterEvent enter(QPoint(5, 5), possible, data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(box.viewport(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        QDragMoveEvent move(QPoint(6, 5), possible, data, Qt::LeftButton, Qt::NoModifier);
        move.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(box.viewport(), &move);
        EXPECT_EQ(move.dropAction(), Qt::CopyAction);
        QDropEvent drop(QPoint(6, 5), possible, data, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(box.viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    }
}
