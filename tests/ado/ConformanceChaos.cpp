// The asynchronous recordset destroyed, opened again and cancelled at random moments: nothing crashes, nothing arrives
// late, nothing but its own cancel or its own mistake makes a statement fail, and the connection serves on. What
// happens is written down, so that a failure tells what came before it.
#include "ado/UARecordset.h"
#include "tests/ado/Conformance.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>
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

enum Kind
{
    Many,
    Endless,
    Wrong
};
constexpr const char *kKinds[] = {"many", "endless", "wrong"};

// The last moments before a failure.
class Diary
{
public:
    Diary() { m_since.start(); }
    void Note(const QString &what)
    {
        m_lines += QStringLiteral("%1 ms %2").arg(double(m_since.nsecsElapsed()) / 1e6, 0, 'f', 2).arg(what);
        while (m_lines.size() > 40)
            m_lines.removeFirst();
    }
    std::string Told() const { return '\n' + m_lines.join(u'\n').toStdString(); }

private:
    QElapsedTimer m_since;
    QStringList m_lines;
};

QString WordsOf(const Error &error)
{
    return QStringLiteral("error %1, state %2, native %3: %4")
        .arg(error.Number)
        .arg(error.SQLState)
        .arg(error.NativeError)
        .arg(error.Description);
}

// What the server runs, as another connection sees it.
const Dialect kActivity = {"SELECT 'no server'", "SELECT pid, state, query FROM pg_stat_activity WHERE state <> 'idle'",
                           "SELECT id, command, time_ms, state, info FROM information_schema.processlist"};

QString Activity(const ConnectionPtr &other, const QString &sql)
{
    QStringList lines;
    const RecordsetPtr rows = other->Execute(sql);
    for (int row = 0; row < rows->RecordCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->ColumnCount(); ++column)
            cells += rows->CellText(row, column);
        lines += cells.join(QStringLiteral(" | "));
    }
    return lines.join(u'\n');
}

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
    Diary diary;
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        diary.Note(QStringLiteral("round %1").arg(round));
        bool isGone = false, isCancelled = false;
        Kind kind = Many;
        int tag = 0, heard = 0;
        auto recordset = std::make_unique<UARecordset>();
        const auto cancel = [&] {
            diary.Note(QStringLiteral("cancel"));
            isCancelled = true;
            recordset->Cancel();
        };
        QObject::connect(recordset.get(), &UARecordset::RecordsetOpened, [&](const RecordsetPtr &rows) {
            diary.Note(QStringLiteral("rows"));
            EXPECT_FALSE(isGone) << diary.Told();
            // Never the former statement's.
            EXPECT_EQ(rows->CellText(0, 0), QString::number(tag)) << diary.Told();
            ++heard;
        });
        QObject::connect(recordset.get(), &UARecordset::ErrorOccured, [&](int number, const QString &words) {
            diary.Note(QStringLiteral("error %1: %2").arg(number).arg(words));
            EXPECT_FALSE(isGone) << diary.Told();
            EXPECT_FALSE(words.isEmpty()) << diary.Told();
            // A statement that nobody cancelled and that has no mistake must not end by another one's cancel.
            if (number == adErrOperationCancelled) {
                EXPECT_TRUE(isCancelled) << "not cancelled" << diary.Told();
            } else {
                EXPECT_EQ(kind, Wrong) << "neither its own cancel nor a mistake" << diary.Told();
            }
            ++heard;
        });
        const Dialect *const kinds[] = {&kMany, &kEndless, &kWrong};
        for (unsigned opens = 1 + random() % 3; opens > 0; --opens) {
            heard = 0;
            ++tag;
            isCancelled = false;
            kind = Kind(random() % 3);
            diary.Note(QStringLiteral("open %1, %2").arg(tag).arg(QLatin1String(kKinds[kind])));
            recordset->OpenRecordset(Pick(*kinds[kind]).arg(tag), m_connection, 2);
            EXPECT_EQ(heard, 0) << diary.Told();
            pause();
            if (random() % 3 == 0)
                cancel();
            EXPECT_LE(heard, 1) << diary.Told();
        }
        const unsigned end = random() % 3;
        if (end == 0) { // hear it out
            cancel();
            QElapsedTimer timer;
            for (timer.start(); heard == 0 && timer.elapsed() < 10000;)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
            EXPECT_EQ(heard, 1) << "running: " << recordset->IsRunning() << ", waits for "
                                << recordset->WaitsFor().toStdString() << "\nbusy with "
                                << m_connection->BusyWith().toStdString() << '\n'
                                << Activity(NewConnection(), Pick(kActivity)).toStdString() << diary.Told();
        }
        if (end == 1)
            pause();
        diary.Note(QStringLiteral("gone"));
        recordset.reset();
        isGone = true;
        if (round % 5 == 0) {
            const auto ask = [&] { return Cell(QStringLiteral("SELECT %1 + 1").arg(round)).ToInt64(); };
            try {
                diary.Note(QStringLiteral("ask"));
                ASSERT_EQ(ask(), round + 1) << diary.Told();
            } catch (const Error &error) {
                diary.Note(WordsOf(error));
                // Met by a cancel that came late, or broken for good?
                diary.Note(QStringLiteral("asked again: ") + [&] {
                    try {
                        return QString::number(ask());
                    } catch (const Error &next) {
                        return WordsOf(next);
                    }
                }());
                FAIL() << diary.Told();
            }
        }
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
    EXPECT_FALSE(m_connection->IsBusy());
    EXPECT_EQ(m_connection->State(), adStateOpen);
    QCoreApplication::processEvents();
}

} // namespace conformance
