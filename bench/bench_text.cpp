// The work on long texts grows as the text does: formatting, splitting, colouring, searching, replacing.
#include "Figures.h"

#include "sqltext/FindText.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/Statements.h"
#include "sqltext/clsColorTable.h"
#include "sqltext/modSQLMaipulation.h"
#include <climits>
#include <ctime>
#include <functional>
#include <malloc.h>
#include <string>
#include <utility>

namespace {

// Statements as people write them, one in 120 characters, until the text has this length.
QString SqlText(qsizetype length)
{
    QString text;
    text.reserve(length + 200);
    for (int i = 0; text.size() < length; ++i)
        text += QStringLiteral("select o.id, c.name from orders o inner join customers c on c.id = o.customer\r\n"
                               " where o.n > %1 -- all\r\n\r\n")
                    .arg(i, 8);
    text.truncate(length);
    return text;
}

FindAnswer Search(const QString &criteria, const QString &with)
{
    FindAnswer answer;
    answer.cancelled = false;
    answer.criteria = criteria;
    answer.replaceWith = with;
    answer.doReplaceAll = !with.isEmpty();
    return answer;
}

struct Work
{
    const char *name;
    std::function<qsizetype(const QString &text)> run; // gives a size, so that nothing is left out
};

// Growth is that of the work itself: the processor's time, so that whatever else runs on the machine does not decide.
double WorkSeconds(const std::function<void()> &work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

void Growth()
{
    const Work works[] = {
        {"format", [](const QString &text) { return FormatStatement(text).size(); }},
        {"split", [](const QString &text) { return SplitStatements(text).size(); }},
        {"colour", [](const QString &text) { return ColourBody(text, gKeywordSet, true).size(); }},
        {"search",
         [](const QString &text) {
             bool asked = false;
             return FindInText(text, 0, 0,
                               [&](const FindHit &) {
                                   return std::exchange(asked, true) ? FindAnswer{} : Search("nowhere", QString());
                               })
                 .text.size();
         }},
        {"search_wild",
         [](const QString &text) {
             bool asked = false;
             return FindInText(text, 0, 0,
                               [&](const FindHit &) {
                                   return std::exchange(asked, true) ? FindAnswer{} : Search("n?w[a-h]#re", QString());
                               })
                 .text.size();
         }},
        {"replace_all",
         [](const QString &text) {
             return FindInText(text, 0, 0, [&](const FindHit &) { return Search("orders", "invoices"); }).text.size();
         }},
    };
    const qsizetype lengths[] = {100'000, 1'000'000, 10'000'000};
    for (const Work &work : works) {
        double seconds[3] = {};
        for (int i = 0; i < 3; ++i) {
            const QString text = SqlText(bench::Size(lengths[i]));
            std::vector<double> times;
            for (int round = 0; round < bench::Rounds(i == 2 ? 3 : 9); ++round)
                times.push_back(WorkSeconds([&] {
                    volatile qsizetype size = work.run(text);
                    (void)size;
                }));
            seconds[i] = bench::Median(times);
        }
        std::fprintf(stderr, "  %s: 0.1 M %.2f ms, 1 M %.2f ms, 10 M %.2f ms\n", work.name, seconds[0] * 1e3,
                     seconds[1] * 1e3, seconds[2] * 1e3);
        // Ten times the text, with some room for what no longer fits into the processor's caches.
        bench::Figure((std::string(work.name) + "_1M_vs_0.1M").c_str(), seconds[1] / seconds[0], 16);
        bench::Figure((std::string(work.name) + "_10M_vs_1M").c_str(), seconds[2] / seconds[1], 16);
    }
}

} // namespace

int main()
{
    // Memory that was used once stays with the program: texts of 20 MB would else come as fresh pages at every round,
    // and the system's time for these (half of a replacement of all) hides how the work itself grows.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
    InitColorTable();
    LoadKeywords(QStringLiteral("VB"), gKeywordSet, QStringLiteral(BRINDLEWICK_SOURCE_DIR "/data/files"));
    if (gKeywordSet.Words().isEmpty()) {
        std::fprintf(stderr, "no keyword list\n");
        return 1;
    }
    Growth();
    return 0;
}
