// The asynchronous recordset destroyed, opened again and cancelled at random moments: nothing crashes, nothing arrives
// late, and the connection serves on.
#include "ado/UARecordset.h"
#include "tests/ado/Conformance.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <random>
#include <thread>

using namespace ADODB;

namespace conformance {

namespace {

const Dialect kMany = {"WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < 3000) "
                       "SELECT %1 AS tag, n FROM g",
                       "SELECT %1 AS tag, n FROM generate_series(1, 3000) n",
                       "SELECT %1 AS tag, seq FROM seq_1_to_3000"};
const Dialect kEndless = {"WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g) SELECT %1, count(*) FROM g",
                          "SELECT %1, pg_sleep(60)", "SELECT %1, SLEEP(60)"};
const Dialect kWrong = {"SELECT %1 FROM nothing_here", "SELECT %1 FROM nothing_here", "SELECT %1 FROM nothing_here"};

} // namespace

TEST_P(Conformance, TheAsynchronousRecordsetSurvivesAnyMoment)
{
    const int rounds = Is(Server::BuiltIn) ? 1000 : 100;
    std::mt19937 random(20);
    const auto pause = [&] {
        if (random() % 3 == 0)
            return;
        QElapsedTimer timer;
        const qint64 wanted = qint64(random() % 4000) * 1000;
        for (timer.start(); timer.nsecsElapsed() < wanted;) {
            if (random() % 2)
                QCoreApplication::processEvents();
            else
                std::this_thread::yield();
        }
    };
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        bool isGone = false;
        int tag = 0, heard = 0;
        auto recordset = std::make_unique<UARecordset>();
        QObject::connect(recordset.get(), &UARecordset::RecordsetOpened, [&](const RecordsetPtr &rows) {
            EXPECT_FALSE(isGone);
            EXPECT_EQ(rows->CellText(0, 0), QString::number(tag)); // never the former statement's
            ++heard;
        });
        QObject::connect(recordset.get(), &UARecordset::ErrorOccured, [&](int number, const QString &words) {
            EXPECT_FALSE(isGone);
            EXPECT_NE(number, 0);
            EXPECT_FALSE(words.isEmpty());
            ++heard;
        });
        const Dialect *const kinds[] = {&kMany, &kEndless, &kWrong};
        for (unsigned opens = 1 + random() % 3; opens > 0; --opens) {
            heard = 0;
            ++tag;
            recordset->OpenRecordset(Pick(*kinds[random() % 3]).arg(tag), m_connection, 2);
            EXPECT_EQ(heard, 0);
            pause();
            if (random() % 3 == 0)
                recordset->Cancel();
            EXPECT_LE(heard, 1);
        }
        const unsigned end = random() % 3;
        if (end == 0) { // hear it out
            recordset->Cancel();
            QElapsedTimer timer;
            for (timer.start(); heard == 0 && timer.elapsed() < 10000;)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
            EXPECT_EQ(heard, 1);
        }
        if (end == 1)
            pause();
        recordset.reset();
        isGone = true;
        if (round % 5 == 0) {
            ASSERT_EQ(Cell(QStringLiteral("SELECT %1 + 1").arg(round)).ToInt64(), round + 1);
        }
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
    EXPECT_FALSE(m_connection->IsBusy());
    EXPECT_EQ(m_connection->State(), adStateOpen);
    QCoreApplication::processEvents();
}

} // namespace conformance
