// How long does an event wait at worst while 1,000,000 rows are read and shown? A 10 ms timer beside the result window.
#include "ado/Connection.h"
#include "bench/Figures.h"
#include "bench/Rows.h"
#include "controls/FlexGrid.h"
#include "data/modMain.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString file = folder.filePath("rows.sqlite");
    if (!bench::MakeRows(file, bench::kRows))
        return 1;

    gConn = ADODB::Connection::Create();
    gConn->Open("Driver=SQLite;Database=" + file);
    frmHirarchy window;
    window.KillOnError = false;
    window.resize(900, 600);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return 1;

    qint64 worst = 0;
    QElapsedTimer since;
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        worst = qMax(worst, since.elapsed() - 10);
        since.restart();
    });
    since.start();
    timer.start();
    window.ShowRec("select * from rows", gConn, "done");
    const bool done = QTest::qWaitFor([&] { return window.Caption() == "done"; }, 120000);
    QTest::qWait(200);
    timer.stop();
    std::fprintf(stderr, "  %lld rows shown\n", static_cast<long long>(window.mfg->RecordCount()));
    if (!done || window.mfg->RecordCount() != bench::kRows)
        return 1;
    bench::Figure("latency_while_1M_rows_load_ms", double(worst), 100);
    gConn.reset();
    return 0;
}
