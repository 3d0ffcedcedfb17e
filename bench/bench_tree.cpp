// The Analyzer's tree of 2,000 tables of 10 columns, as the user sees it filled: how long the windows go without an
// event while it is read and built, in ms, and how long after Escape it ends. The servers come from
// BRINDLEWICK_TEST_POSTGRES and BRINDLEWICK_TEST_MARIADB.
#include "bench/Figures.h"
#include "bench/Wide.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

namespace {

// Notes the longest time between two rounds of the event loop.
class Heart
{
public:
    Heart()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Beat(); });
        m_timer.start(0);
        m_since.start();
    }
    void Beat()
    {
        Longest = qMax(Longest, m_since.nsecsElapsed() / 1e6);
        m_since.restart();
        ++Beats;
    }
    double Longest = 0; // ms
    qint64 Beats = 0;

private:
    QTimer m_timer;
    QElapsedTimer m_since;
};

void Fill(TreeView &tree)
{
    tree.Nodes().Clear();
    for (const char *type : {"TABLE", "VIEW", "PROCEDURE", "FUNCTION"}) {
        const QString name = QLatin1String(type);
        Node *root = tree.Nodes().Add(nullptr, tvwLast, name, name, 0, 0);
        if (!LoadStructure(&tree, root, name, 1, 1, 2))
            return;
    }
}

class Notes : public Shell
{
public:
    Notes() { Install(this); }
    ~Notes() override { Install(nullptr); }
    void SetStatus(const QString &text) override { Progress += text.contains(QLatin1String(" of ")); }
    int Progress = 0;
};

bool Measure(const char *name, const bench::Wide &wide)
{
    if (!OpenConnection(wide.Text))
        return false;
    Notes notes;
    TreeView tree;
    tree.AddSchemaImages();
    tree.resize(300, 600);
    tree.show();
    QCoreApplication::processEvents();
    std::vector<double> gaps, ends, seconds;
    for (int round = 0; round < bench::Rounds(3); ++round) {
        Heart heart;
        seconds.push_back(bench::Seconds([&] { Fill(tree); }));
        heart.Beat();
        gaps.push_back(heart.Longest);
        // Every object with its fields, a field list for each view, and the four roots.
        const int whole = bench::kTables * (1 + bench::kColumns) + bench::kTables / 10 * 4 + 4;
        if (tree.Nodes().Count() < whole || notes.Progress == 0) {
            std::fprintf(stderr, "  %s: %d nodes of %d, %d words of progress\n", name, tree.Nodes().Count(), whole,
                         notes.Progress);
            return false;
        }
        QElapsedTimer since;
        QTimer::singleShot(int(seconds.back() * 400), &tree, [&] {
            since.start();
            QTest::keyClick(&tree, Qt::Key_Escape);
        });
        Fill(tree);
        ends.push_back(since.isValid() ? since.nsecsElapsed() / 1e6 : 0);
        if (!since.isValid()) // it was faster this time
            QTest::qWait(int(seconds.back() * 400) + 50);
    }
    std::fprintf(stderr, "  %s: filled in %.0f ms, %d words of progress\n", name, 1000 * bench::Median(seconds),
                 notes.Progress);
    bench::Figure((QByteArray("tree_") + name + "_longest_gap_ms").constData(), bench::Median(gaps), 100);
    bench::Figure((QByteArray("tree_") + name + "_ms_after_escape").constData(), bench::Median(ends), 250);
    gConn.reset();
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const struct
    {
        const char *Name, *Variable;
    } families[] = {{"sqlite", ""}, {"postgres", "BRINDLEWICK_TEST_POSTGRES"}, {"mariadb", "BRINDLEWICK_TEST_MARIADB"}};
    try {
        for (const auto &family : families) {
            const std::unique_ptr<bench::Wide> wide = bench::Wide::Make(family.Variable);
            if (!wide || !Measure(family.Name, *wide)) {
                std::fprintf(stderr, "  %s is not measured\n", family.Name);
                return 2;
            }
        }
    } catch (const ADODB::Error &error) {
        std::fprintf(stderr, "  %s\n", error.what());
        return 2;
    }
    return 0;
}
