// Help while one types: the list of names over a schema of 20,000 tables against one of 100 and an empty one, and a
// replacement of 10,000 hits in a long text against one colouring of it. Everything through the real window, with keys.
#include "Figures.h"

#include "analyzer/frmSQL.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/frmFind.h"
#include "data/modMain.h"
#include "frame/AppPath.h"
#include "frame/Settings.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

constexpr double frame = 1.0 / 60;

[[noreturn]] void Fail(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    std::exit(1);
}

bool Connect(const QTemporaryDir &folder, int tables)
{
    if (!OpenConnection(QStringLiteral("Driver=SQLite;Create=Yes;Database=") +
                        folder.filePath(QStringLiteral("%1.sqlite").arg(tables))))
        return false;
    gConn->BeginTrans();
    for (int i = 0; i < tables; ++i)
        gConn->Execute(QStringLiteral("create table customer_orders_of_year_%1(a integer)").arg(i, 5, 10, QChar(u'0')));
    gConn->CommitTrans();
    return true;
}

void Paint(QWidget &widget)
{
    QCoreApplication::processEvents();
    widget.repaint();
}

struct Analyzer
{
    Analyzer(const QTemporaryDir &folder, int tables)
    {
        window.resize(1000, 600);
        if (!Connect(folder, tables))
            Fail("no database");
        window.Load();
        window.show();
        // The word is one that no name holds whole.
        window.SetText(QStringLiteral("select * from customer_orders_of_year_00077_and_a_few_letters_more"));
        Paint(window);
        if (window.lvQuickList->Count() != tables)
            Fail("not every table is in the list");
    }
    // From the key to the painted list.
    double Open()
    {
        window.txtSQL->setFocus();
        window.txtSQL->SetSelStart(window.Text().size());
        Paint(window);
        const double seconds = bench::Seconds([&] {
            QTest::keyPress(window.txtSQL, Qt::Key_Space, Qt::ControlModifier);
            Paint(window);
        });
        if (!window.lvQuickList->isVisible())
            Fail("the list did not open");
        QTest::keyClick(window.lvQuickList, Qt::Key_Escape);
        Paint(window);
        return seconds;
    }
    frmSQL window;
};

void QuickList()
{
    const QTemporaryDir folder;
    Analyzer none(folder, 0), few(folder, 100), many(folder, int(bench::Size(20'000)));
    if (many.window.lvQuickList->Text(77) != QLatin1String("CUSTOMER_ORDERS_OF_YEAR_00077"))
        Fail("another name stands there");
    std::vector<double> ratios, extra;
    for (int round = 0; round < bench::Rounds(31); ++round) {
        const double empty = none.Open(), hundred = few.Open(), all = many.Open();
        ratios.push_back(all / hundred);
        extra.push_back((all - empty) / frame);
        std::fprintf(stderr, "  list: empty %.2f ms, 100 names %.2f ms, 20,000 names %.2f ms\n", empty * 1e3,
                     hundred * 1e3, all * 1e3);
    }
    bench::Figure("quick_list_20000_vs_100", bench::Median(ratios), 3);
    bench::Figure("quick_list_frames_over_empty", bench::Median(extra), 1);
}

// Lines of SQL, of which `hits` hold the word, evenly spread.
QString SqlText(qsizetype length, qsizetype hits)
{
    const QString line =
        QStringLiteral("select o.id, c.name from orders o join customers c on c.id = o.customer where o.n > 1%1\r\n");
    const QString hit = line.arg(QStringLiteral(" or HIT")), other = line.arg(QString());
    const qsizetype lines = length / other.size();
    QString text;
    text.reserve(length + length / 8);
    for (qsizetype i = 0; i < lines; ++i)
        text += i * hits % lines < hits ? hit : other;
    return text;
}

void ReplaceAll()
{
    const qsizetype length = bench::Size(1'200'000);
    const qsizetype hits = bench::Size(10'000);
    const QString text = SqlText(length, hits);
    std::fprintf(stderr, "  %lld characters, %lld hits\n", (long long)text.size(),
                 (long long)text.count(QStringLiteral("HIT")));
    if (text.count(QStringLiteral("HIT")) != hits)
        Fail("the text has not the hits that it should have");
    gConn.reset();
    frmSQL window;
    window.resize(1000, 600);
    window.show();
    std::vector<double> ratios;
    for (int round = 0; round < bench::Rounds(9); ++round) {
        window.SetText(text);
        Paint(window);
        const double pass = bench::Seconds([&] { window.FixText(true, true, 2); });
        Paint(window);
        // The clock starts with the click of "Replace All".
        std::chrono::steady_clock::time_point start;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
            if (!find || !find->isVisible())
                return;
            timer.stop();
            find->cmbCri->setEditText(QStringLiteral("hit"));
            find->cmbReplace->setEditText(QStringLiteral("GO")); // a longer one would push the last hits out of reach
            start = std::chrono::steady_clock::now();
            find->cmdReplaceAll->click();
        });
        timer.start(5);
        window.mnuReplace();
        const double replace = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (window.Text().count(QStringLiteral("or GO")) != hits)
            Fail("not every hit was replaced");
        ratios.push_back(replace / pass);
        std::fprintf(stderr, "  replace all %.3f s, pass %.3f s\n", replace, pass);
    }
    bench::Figure("replace_all_vs_pass", bench::Median(ratios), 3);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QTemporaryDir home;
    SetAppPath(home.path());
    SetSettingsFile(home.filePath(QStringLiteral("settings.ini")));
    InitColorTable();
    LoadKeywords(QStringLiteral("VB"), gKeywordSet, QStringLiteral(BRINDLEWICK_SOURCE_DIR "/data/files"));
    if (gKeywordSet.Words().isEmpty()) {
        std::fprintf(stderr, "no keyword list\n");
        return 1;
    }
    if (argc < 2)
        QuickList();
    ReplaceAll();
    gConn.reset();
    return 0;
}
