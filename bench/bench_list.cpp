// A list of 1,000,000 rows beside the drill-down grid of the same rows: from the query to the painted rows, and from
// the recordset alone to the painted rows. And how long an event waits at worst while the list fills and while it is
// sorted.
#include "ado/Connection.h"
#include "bench/Figures.h"
#include "bench/Rows.h"
#include "controls/FlexGrid.h"
#include "controls/ListView.h"
#include "controls/StatusBar.h"
#include "data/frmGrid.h"
#include "data/modListView.h"
#include "data/modMain.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

namespace {

const QString s_query = QStringLiteral("select * from rows");

// The longest time between two events of a timer of 10 ms, less these 10 ms.
class Gaps
{
public:
    Gaps()
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Note(); });
        m_since.start();
        m_timer.start();
    }
    double Worst()
    {
        QTest::qWait(100); // what was put off comes now
        m_timer.stop();
        return double(m_worst);
    }

private:
    void Note()
    {
        m_worst = qMax(m_worst, m_since.elapsed() - 10);
        m_since.restart();
    }
    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_worst = 0;
};

template <class Window> std::unique_ptr<Window> Shown()
{
    auto window = std::make_unique<Window>();
    window->resize(900, 600);
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        std::exit(1);
    QCoreApplication::processEvents();
    return window;
}

// The events that the new rows have raised, painting among them.
void Painted()
{
    QCoreApplication::processEvents();
}

// From the query to the painted rows; the old window has gone before the clock starts.
double QueryIntoList()
{
    const auto window = Shown<frmGrid>();
    return bench::Seconds([&] {
        window->ShowRec(s_query, gConn);
        if (!QTest::qWaitFor([&] { return window->lvResults->Count() == bench::kRows; }, 120000))
            std::exit(1);
        Painted();
    });
}

double QueryIntoGrid()
{
    const auto window = Shown<frmHirarchy>();
    return bench::Seconds([&] {
        window->ShowRec(s_query, gConn, QStringLiteral("done"));
        if (!QTest::qWaitFor([&] { return window->Caption() == QLatin1String("done"); }, 120000) ||
            window->mfg->RecordCount() != bench::kRows)
            std::exit(1);
        Painted();
    });
}

double RowsIntoList(const ADODB::RecordsetPtr &rows)
{
    const auto window = Shown<frmGrid>();
    rows->MoveFirst();
    return bench::Seconds([&] {
        LoadColumns(rows, window->lvResults);
        FillOptions options;
        options.Clear = true;
        FillList(window->lvResults, rows, options);
        window->SpanColomns(false);
        Painted();
    });
}

double RowsIntoGrid(const ADODB::RecordsetPtr &rows)
{
    const auto window = Shown<frmHirarchy>();
    rows->MoveFirst();
    return bench::Seconds([&] {
        window->SetDataSourceRec(rows);
        Painted();
    });
}

template <class Ours, class Peer> double Ratio(int rounds, Ours &&ours, Peer &&peer)
{
    std::vector<double> ratios;
    for (int round = 0; round < bench::Rounds(rounds); ++round) {
        const double one = ours(), other = peer();
        ratios.push_back(one / other);
        std::fprintf(stderr, "  list %.4f s, grid %.4f s\n", one, other);
    }
    return bench::Median(ratios);
}

double GapOfFill()
{
    const auto window = Shown<frmGrid>();
    Gaps gaps;
    window->ShowRec(s_query, gConn);
    if (!QTest::qWaitFor([&] { return !window->SB->PanelText(3).isEmpty(); }, 120000))
        std::exit(1);
    return gaps.Worst();
}

// By a text column and by a number, each as a click on its head does it.
double GapOfSort(const ADODB::RecordsetPtr &rows)
{
    const auto window = Shown<frmGrid>();
    rows->MoveFirst();
    LoadColumns(rows, window->lvResults);
    FillList(window->lvResults, rows);
    Gaps gaps;
    for (const int column : {1, 3}) {
        QElapsedTimer clock;
        clock.start();
        emit window->lvResults->ColumnClick(column);
        std::fprintf(stderr, "  sorted by column %d in %.2f s\n", column, double(clock.elapsed()) / 1000);
    }
    return window->lvResults->Sorted() ? gaps.Worst() : 1e9;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("rows.sqlite"));
    if (!bench::MakeRows(file, bench::kRows))
        return 1;
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Driver=SQLite;Database=") + file);

    bench::Figure("list_fill_1M_vs_grid", Ratio(3, QueryIntoList, QueryIntoGrid), 2);
    bench::Figure("latency_while_1M_list_fills_ms", GapOfFill(), 100);
    {
        const ADODB::RecordsetPtr rows = gConn->Execute(s_query);
        bench::Figure("list_bind_1M_vs_grid",
                      Ratio(
                          15, [&] { return RowsIntoList(rows); }, [&] { return RowsIntoGrid(rows); }),
                      2);
        bench::Figure("latency_while_1M_list_sorts_ms", GapOfSort(rows), 100);
    }
    gConn.reset();
    return 0;
}
