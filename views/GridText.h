#pragma once
// What the result window computes from its grid, on plain cells and without a window: the texts that it copies and
// saves, the statistics over a block, and the search. Cells are addressed as in the grid: row 0 is the heading, column
// 0 the fixed column, data begin at row 1 and column 1.
//
// Any thread; nothing raises, except that Find raises lang::BadPattern for a pattern with an unclosed "[".

#include <QString>
#include <functional>
#include <optional>

namespace grid {

// Where cells come from; the window's grids and the tests' tables implement it.
class Cells
{
public:
    virtual ~Cells() = default;
    virtual qint64 Rows() const = 0; // heading included
    virtual int Cols() const = 0;    // fixed column included
    virtual QString Text(qint64 row, int column) const = 0;
};

struct Cell
{
    qint64 row = 0;
    int column = 0;
    bool operator==(const Cell &) const = default;
};

// A selected block, both corners inside. Of() orders two corners.
struct Block
{
    qint64 top = 0, bottom = 0;
    int left = 0, right = 0;
    static Block Of(Cell one, Cell other);
};

// Takes the text line by line, each without its line end. Gives false to end the work (a full disk, the user's Stop).
using LineSink = std::function<bool(const QString &line)>;

// Comma separated: numbers with their commas turned to blanks, all else in quotes (inner quotes stand as they are),
// every value followed by a comma. One line a row, and one empty line at the end.
void WriteCsv(const Cells &cells, const LineSink &line);

// An HTML table with the caption and the statement above it. The last column of the grid is left out. That is
// meant: the layout of saved pages is settled to the byte.
void WriteHtml(const Cells &cells, const QString &caption, const QString &statement, const LineSink &line);

// Does this file name ask for HTML? Only its last three characters count, so "x.html" does not. That is meant:
// "htm" is the extension that the save dialog gives.
bool WantsHtml(const QString &fileName);

// A single cell as its bare text; a block with every cell in quotes (inner ones doubled), commas between, lines ended.
std::optional<QString> CopyText(const Cells &cells, const Block &block, const std::function<bool()> &keepOn = {});

// Long work asks this once a row, and ends with nothing when it says false.
using KeepOn = std::function<bool()>;

struct Statistics
{
    double sum = 0;
    qint64 count = 0; // cells that read as numbers
};
std::optional<Statistics> Sum(const Cells &cells, const Block &block, const KeepOn &keepOn = {});

// The first of the largest (smallest) numbers of the block in row order; none when it has no number.
std::optional<Cell> Largest(const Cells &cells, const Block &block, const KeepOn &keepOn = {});
std::optional<Cell> Smallest(const Cells &cells, const Block &block, const KeepOn &keepOn = {});

struct SearchFor
{
    QString criteria;
    bool exact = false;
    bool caseSensitive = false;
};
// The next cell at or behind `from` that matches, in rows from 1 and columns from 0 to the last but one.
std::optional<Cell> Find(const Cells &cells, const SearchFor &what, Cell from, const KeepOn &keepOn = {});
// The cell behind this one in the order of Find.
Cell Next(const Cells &cells, Cell cell);

} // namespace grid
