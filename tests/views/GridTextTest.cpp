// What the result window copies, saves, counts and finds, on plain cells.
#include "views/GridText.h"
#include "lang/Text.h"
#include <QStringList>
#include <gtest/gtest.h>

namespace {

class Table : public grid::Cells
{
public:
    explicit Table(QList<QStringList> rows) : m_rows(std::move(rows)) {}
    qint64 Rows() const override { return m_rows.size(); }
    int Cols() const override { return m_rows.isEmpty() ? 0 : static_cast<int>(m_rows.first().size()); }
    QString Text(qint64 row, int column) const override { return m_rows[row][column]; }

private:
    QList<QStringList> m_rows;
};

Table Sample()
{
    return Table({{"", "id", "name", "amount"},
                  {"", "1", "Anna, \"A\"", "1,234.5"},
                  {"", "2", "", "-3"},
                  {"", "3", "Björn", "1,234.5"}});
}

QStringList Lines(const std::function<void(const grid::LineSink &)> &write, int stopAfter = 1000000)
{
    QStringList lines;
    write([&](const QString &line) {
        lines << line;
        return lines.size() < stopAfter;
    });
    return lines;
}

TEST(GridText, CsvQuotesTextAsItStandsAndTakesCommasOutOfNumbers)
{
    const Table table = Sample();
    EXPECT_EQ(Lines([&](auto &sink) { grid::WriteCsv(table, sink); }),
              QStringList({"\"id\",\"name\",\"amount\",", "1,\"Anna, \"A\"\",1 234.5,", "2,\"\",-3,",
                           "3,\"Björn\",1 234.5,", ""}));
}

TEST(GridText, CsvOfAnEmptyResultHasItsHeadingAndTheLastEmptyLine)
{
    const Table table(QList<QStringList>{{"", "a"}});
    EXPECT_EQ(Lines([&](auto &sink) { grid::WriteCsv(table, sink); }), QStringList({"\"a\",", ""}));
}

TEST(GridText, CsvEndsWhereTheSinkSaysSo)
{
    const Table table = Sample();
    EXPECT_EQ(Lines([&](auto &sink) { grid::WriteCsv(table, sink); }, 2).size(), 2);
}

TEST(GridText, HtmlStandsAsLaidOutAndLeavesTheLastColumnOut)
{
    const Table table({{"", "a", "b", "c"}, {"", "1", "2", "3"}, {"", "4", "5", "6"}});
    EXPECT_EQ(Lines([&](auto &sink) { grid::WriteHtml(table, "Cap", "select 1", sink); }),
              QStringList({" <html>",
                           " <head>",
                           "     <title>Brindlewick</title>",
                           " </head>",
                           "Cap",
                           "<BR>SQL:<BR>select 1<BR>",
                           " <Table width=100% Bgcolor=White BorderWidth=1>",
                           "\t<TR>",
                           "\t\t<TD bgcolor=gray>",
                           "\t\t\ta",
                           "\t\t</TD>",
                           "\t\t<TD bgcolor=gray>",
                           "\t\t\tb",
                           "\t\t</TD>",
                           "\t</TR>",
                           "\t<TR>",
                           "\t\t<TD bgcolor=#EEEEEE>",
                           "\t\t\t1",
                           "\t\t</TD>",
                           "\t\t<TD bgcolor=#EEEEEE>",
                           "\t\t\t2",
                           "\t\t</TD>",
                           "\t</TR>",
                           "\t<TR>",
                           "\t\t<TD bgcolor=White>",
                           "\t\t\t4",
                           "\t\t</TD>",
                           "\t\t<TD bgcolor=White>",
                           "\t\t\t5",
                           "\t\t</TD>",
                           "\t</TR>",
                           " </Table>",
                           " </html>"}));
}

TEST(GridText, OnlyTheLastThreeCharactersAskForHtml)
{
    EXPECT_TRUE(grid::WantsHtml("x.htm"));
    EXPECT_TRUE(grid::WantsHtml(" x.ASP  "));
    EXPECT_FALSE(grid::WantsHtml("x.html"));
    EXPECT_FALSE(grid::WantsHtml("x.csv"));
}

TEST(GridText, CopyOfOneCellIsBareAndOfABlockIsQuoted)
{
    const Table table = Sample();
    EXPECT_EQ(grid::CopyText(table, grid::Block::Of({1, 2}, {1, 2})), "Anna, \"A\"");
    EXPECT_EQ(grid::CopyText(table, grid::Block::Of({2, 2}, {1, 1})), "\"1\",\"Anna, \"\"A\"\"\"\r\n\"2\",\"\"\r\n");
}

TEST(GridText, SumReadsTheLeadingNumberOfNumericCells)
{
    const Table table = Sample();
    const grid::Statistics all = grid::Sum(table, grid::Block::Of({3, 3}, {1, 1})).value();
    EXPECT_EQ(all.count, 6);
    EXPECT_DOUBLE_EQ(all.sum, 1 + 2 + 3 + 1 - 3 + 1); // "1,234.5" is numeric, and its leading number is 1
    const grid::Statistics names = grid::Sum(table, grid::Block::Of({1, 2}, {3, 2})).value();
    EXPECT_FALSE(grid::Sum(table, grid::Block::Of({1, 1}, {3, 1}), [] { return false; }));
    EXPECT_EQ(names.count, 0);
    EXPECT_EQ(names.sum, 0);
}

TEST(GridText, TheFirstOfEqualBestCellsWins)
{
    const Table table({{"", "a", "b"}, {"", "5", "9"}, {"", "9", "5"}});
    const grid::Block block = grid::Block::Of({1, 1}, {2, 2});
    EXPECT_EQ(grid::Largest(table, block), (grid::Cell{1, 2}));
    EXPECT_EQ(grid::Smallest(table, block), (grid::Cell{1, 1}));
    const Table words(QList<QStringList>{{"", "a"}, {"", "x"}});
    EXPECT_FALSE(grid::Largest(words, grid::Block::Of({1, 1}, {1, 1})));
    EXPECT_FALSE(grid::Smallest(words, grid::Block::Of({1, 1}, {1, 1})));
    EXPECT_FALSE(grid::Largest(table, block, [] { return false; }));
}

TEST(GridText, FindGoesFromCellToCellAndPassesOverTheLastColumn)
{
    const Table table({{"", "a", "b", "c"}, {"", "xay", "A", "a"}, {"", "b", "aa", "a"}});
    grid::SearchFor what{"a", false, false};
    auto hit = grid::Find(table, what, {1, 0});
    ASSERT_TRUE(hit);
    EXPECT_EQ(*hit, (grid::Cell{1, 1}));
    hit = grid::Find(table, what, grid::Next(table, *hit));
    ASSERT_TRUE(hit);
    EXPECT_EQ(*hit, (grid::Cell{1, 2}));
    hit = grid::Find(table, what, grid::Next(table, *hit));
    ASSERT_TRUE(hit);
    EXPECT_EQ(*hit, (grid::Cell{2, 2})); // the cell of the last column does not count
    EXPECT_FALSE(grid::Find(table, what, grid::Next(table, *hit)));

    what = {"a", true, true};
    EXPECT_FALSE(grid::Find(table, what, {1, 0}));
    what = {"?a?", true, false};
    EXPECT_EQ(grid::Find(table, what, {1, 0}), (grid::Cell{1, 1}));
    what = {"[", false, false};
    EXPECT_THROW(grid::Find(table, what, {1, 0}), lang::BadPattern);
    int asked = 0;
    what = {"nowhere", false, false};
    EXPECT_FALSE(grid::Find(table, what, {1, 0}, [&] { return ++asked < 2; }));
    EXPECT_EQ(asked, 2);
}

// The pattern was read anew for every cell.
TEST(GridText, TheSearchReadsItsPatternBeforeAnyCell)
{
    struct Counted : Table
    {
        using Table::Table;
        mutable int reads = 0;
        QString Text(qint64 row, int column) const override
        {
            ++reads;
            return Table::Text(row, column);
        }
    };
    const Counted cells(QList<QStringList>{{"", "a", ""}, {"", "x", ""}, {"", "y", ""}});
    EXPECT_THROW(grid::Find(cells, {QStringLiteral("[x"), false, false}, {1, 0}), lang::BadPattern);
    EXPECT_EQ(cells.reads, 0);
    EXPECT_EQ(grid::Find(cells, {QStringLiteral("[x-y]"), true, true}, {1, 0}), (grid::Cell{1, 1}));
}

} // namespace
