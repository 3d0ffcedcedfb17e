// The end of the desktop's session: what Exit saves is on the disk when the desktop has been answered, since the
// program may be killed right behind it; and the windows stay, since the user may still take the end back.
#include "analyzer/frmSQL.h"
#include "app/QuitSignals.h"
#include "controls/RichTextBox.h"
#include "data/ConnectionStore.h"
#include "tests/app/ShellFixture.h"
#include <QFile>
#include <QGuiApplication>
#include <QSessionManager>

namespace {

class SessionEnd : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        MadeInstead().clear(); // the real Analyzer
        gConns().Add(Database(), QStringLiteral("a"), QStringLiteral("select 1"));
        Start(QStringLiteral("TestMode"), true);
        Window->ConnectTo(Entry(QStringLiteral("a")));
        m_analyzer = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(m_analyzer);
    }
    // The stored text of the connection, as another program reads it; "(none)" without a store.
    static QString StoredText()
    {
        clsConns stored;
        if (!LoadConnections(AppFile(QStringLiteral("es.dat")), stored) || stored.Count() != 1)
            return QStringLiteral("(none)");
        return stored.Item(QStringLiteral("a"))->Extra;
    }
    QByteArray StoredSettings() const
    {
        QFile file(Folder.filePath(QStringLiteral("settings.ini")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QPointer<frmSQL> m_analyzer;
};

TEST_F(SessionEnd, SavesAsExitDoesAndKeepsTheWindows)
{
    const QuitSignals ends(*Window);
    auto *const session = qApp->findChild<QSessionManager *>(); // the toolkit's own; nobody else can make one
    ASSERT_TRUE(session);
    Window->move(Window->pos() + QPoint(30, 15));
    m_analyzer->txtSQL->setFocus();
    QTest::keyClicks(m_analyzer->txtSQL, QStringLiteral("-- typed "));
    const QString typed = m_analyzer->txtSQL->Text();
    ASSERT_TRUE(typed.contains(QStringLiteral("-- typed")));
    ASSERT_NE(StoredText(), typed);
    const QByteArray before = StoredSettings();

    emit qApp->commitDataRequest(*session);
    EXPECT_EQ(StoredText(), typed);
    const QByteArray settings = StoredSettings();
    EXPECT_NE(settings, before);
    EXPECT_FALSE(settings.isEmpty());
    EXPECT_TRUE(Window->isVisible());
    EXPECT_FALSE(Window->HasEnded());
    EXPECT_TRUE(m_analyzer);
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());                        // nothing is asked
    EXPECT_NO_THROW(gConn->Execute(QStringLiteral("select 1"))); // and work goes on

    Window->mnuExit();
    SyncSettings();
    EXPECT_TRUE(Window->HasEnded());
    EXPECT_EQ(StoredText(), typed);
    EXPECT_EQ(StoredSettings(), settings); // Exit itself finds nothing left to write
}

} // namespace
