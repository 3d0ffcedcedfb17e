// Colouring a long text with the shipped keyword list, against the literal chain of passes, and its growth.
#include "Figures.h"

#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/sqltext/LiteralColour.h"

namespace {

const qsizetype kText = bench::Size(1'200'000);

// Statements as people write them, about 85 characters a line, until the text has this length.
QString SqlText(qsizetype length)
{
    QString text;
    text.reserve(length + 500);
    for (int i = 0; text.size() < length; ++i) {
        const QString n = QString::number(i);
        text += QStringLiteral("SELECT o.order_id, c.company_name, SUM(d.quantity * d.unit_price) AS total_") + n +
                QStringLiteral("\r\n  FROM orders o INNER JOIN customers c ON c.customer_id = o.customer_id\r\n"
                               "\tLEFT JOIN [order details] d ON d.order_id = o.order_id -- all lines of order ") +
                n +
                QStringLiteral("\r\n WHERE o.order_date BETWEEN '2019-01-01' AND '2019-12-31' AND c.country IN ('DE', "
                               "'FR', 'it''s')\r\n   AND \"ship name\" IS NOT NULL AND o.freight > 10.5 AND NOT EXISTS "
                               "(SELECT * FROM returns r)\r\n GROUP BY o.order_id, c.company_name HAVING COUNT(*) > ") +
                n + QStringLiteral(" ORDER BY total DESC;\r\n\r\n");
    }
    text.truncate(length);
    return text;
}

} // namespace

int main()
{
    InitColorTable();
    LoadKeywords(QStringLiteral("VB"), gKeywordSet, QStringLiteral(BRINDLEWICK_SOURCE_DIR "/data/files"));
    if (gKeywordSet.Words().isEmpty()) {
        std::fprintf(stderr, "no keyword list\n");
        return 1;
    }

    const QString text = SqlText(kText);
    QString fast, literal;
    const auto ours = [&] { fast = ColourBody(text, gKeywordSet, true); };
    ours(); // the list is made ready once a run
    const double ratio = bench::Ratio(3, ours, [&] { literal = literal::ColourBody(text, gKeywordSet.Words(), true); });
    if (fast != literal) {
        std::fprintf(stderr, "the results differ\n");
        return 1;
    }
    bench::Figure("colour_1.2M_vs_literal_chain", ratio, 0.02);

    // Growth: time a character at ten and a hundred times the length, and of reading the result back.
    double shortest = 0;
    for (const qsizetype full : {100'000, 1'000'000, 10'000'000}) {
        const qsizetype length = bench::Size(full);
        const QString grown = SqlText(length);
        std::vector<double> colour, read;
        for (int round = 0; round < bench::Rounds(5); ++round) {
            QString rtf;
            colour.push_back(bench::Seconds([&] { rtf = ColourBody(grown, gKeywordSet, true); }));
            rtf = QStringLiteral("{\\rtf1 ") + rtf + u'}';
            read.push_back(bench::Seconds([&] { ReadRtf(rtf); }));
        }
        const double perUnit = bench::Median(colour) / double(length);
        if (shortest == 0)
            shortest = perUnit;
        std::printf(
            "  %8lld characters: coloured in %.1f ms, %.2f of the shortest text's time a character; read in %.1f ms\n",
            (long long)length, bench::Median(colour) * 1e3, perUnit / shortest, bench::Median(read) * 1e3);
    }
    return 0;
}
