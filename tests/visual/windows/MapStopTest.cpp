// Reading the schema while something goes wrong: a driver without keys, a Stop, a server that goes. Scripted, since no
// server here does it at a given statement.

#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include "tests/visual/windows/MapFixture.h"
#include <QTimer>

namespace {

class MapStop : public MapTest
{
protected:
    ScriptedDriver driver;
    QList<QStringList> keys; // PK table, PK column, FK table, FK column

    void SetUp() override
    {
        driver.FamilyIs = ADODB::DatabaseFamily::SQLite; // one query for all keys
        driver.OnExecute = [this](const QString &sql) {
            ADODB::ExecuteResult result;
            if (sql.contains("PK_TABLE_NAME")) {
                result.Rows = std::make_unique<ScriptedRows>(
                    QStringList{"PK_TABLE_NAME", "PK_COLUMN_NAME", "FK_TABLE_NAME", "FK_COLUMN_NAME"}, keys);
                return result;
            }
            if (OnSelect && sql.startsWith("SELECT * FROM"))
                OnSelect(sql);
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"ID", "ParentID"}, QList<QStringList>());
            return result;
        };
        ASSERT_TRUE(OpenConnection("Scripted"));
        for (int i = 1; i < 8; ++i)
            keys << QStringList{"t0", "ID", QString("t%1").arg(i), "ParentID"};
        m_shell.Statuses.clear();
    }
    void TearDown() override
    {
        MapTest::TearDown();
        gConn.reset();
    }
    std::function<void(const QString &sql)> OnSelect; // on the statement's thread
};

} // namespace

TEST_F(MapStop, SaysWhyADriverThatKnowsNoKeysBringsNothing)
{
    driver.FamilyIs = ADODB::DatabaseFamily::Other;
    Show({}, false);
    map->AddAll();
    EXPECT_TRUE(map->Tables().Numbers().empty());
    EXPECT_EQ(m_shell.Status(), "Object or provider is not capable of performing requested operation.");
    EXPECT_FALSE(map->IsReading());
}

TEST_F(MapStop, KeepsWhatWasReadWhenItIsStopped)
{
    Show({"t0"}, false);
    WorkGate gate;
    QString status;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (!m_shell.Stop || !m_shell.Status().startsWith("Reading the fields"))
            return;
        poll.stop();
        status = m_shell.Status();
        m_shell.Stop();
    });
    driver.OnCancel = [&] { gate.Open(); }; // the fourth statement goes on once the cancel has come, which is beside us
    gate.WhenReached(
        [&] {
            // While fields are read the map takes no other input, and reads nothing else.
            EXPECT_TRUE(map->IsReading());
            EXPECT_EQ(map->AddTable("t9"), nullptr);
            Send(QEvent::MouseButtonPress, Heading(1));
            EXPECT_EQ(map->Tables().CarriedTable, 0);
            poll.start(5);
        },
        false);
    std::atomic<int> selects = 0;
    OnSelect = [&](const QString &) {
        if (++selects == 4)
            gate.Pass();
        if (driver.Cancelled.exchange(false))
            throw ADODB::Error(ADODB::adErrOperationCancelled, QStringLiteral("stopped by the user"));
    };
    map->AddAll();
    EXPECT_EQ(status, "Reading the fields of 8 tables: 3 ... (Esc stops)");
    EXPECT_EQ(map->Tables().Numbers().size(), 3u);
    EXPECT_EQ(map->Joins().Rows().size(), 2u);
    EXPECT_FALSE(map->IsReading());
    OnSelect = {};
    driver.Cancelled = false;
    map->AddAll();
    EXPECT_EQ(map->Tables().Numbers().size(), 8u);
    EXPECT_EQ(map->Joins().Rows().size(), 7u);
}

TEST_F(MapStop, KeepsWhatCameBeforeTheServerWentAndSaysItsWords)
{
    Show({}, false);
    int selects = 0;
    OnSelect = [&](const QString &) {
        if (++selects > 5)
            throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("server closed the connection unexpectedly"),
                               QStringLiteral("08S01"), 7);
    };
    map->AddAll();
    ASSERT_EQ(map->Tables().Numbers().size(), 5u);
    EXPECT_EQ(map->Joins().Rows().size(), 4u);
    EXPECT_EQ(m_shell.Status(), "server closed the connection unexpectedly");
    EXPECT_EQ(selects, 6); // nothing more is asked of it
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
    Click(Item(1, 2)); // no dead window
    EXPECT_EQ(map->CurrentTable(), 1);
    EXPECT_EQ(map->lvTable(1)->Selected, 2);
}

TEST_F(MapStop, EndsTheFieldsAtANameThatComesTwice)
{
    driver.OnExecute = [](const QString &) {
        ADODB::ExecuteResult result;
        result.Rows = std::make_unique<ScriptedRows>(QStringList{"a", "b", "a", "c"}, QList<QStringList>());
        return result;
    };
    Show({}, false);
    map->ShowStar = false;
    const MapTable *table = map->AddTable("doubled");
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->Items.size(), 2u);
    EXPECT_EQ(table->Items[1].Text, "b");
}

TEST_F(MapStop, OutlivesAMapThatGoesWhileItIsRead)
{
    Show({}, false);
    WorkGate gate;
    gate.WhenReached([&] { map.reset(); });
    OnSelect = [&](const QString &) { gate.Pass(); };
    map->AddAll();
    EXPECT_EQ(map, nullptr);
}
