#include "views/GridText.h"

#include "lang/Like.h"
#include "lang/Text.h"
#include <algorithm>

namespace grid {

Block Block::Of(Cell one, Cell other)
{
    return {std::min(one.row, other.row), std::max(one.row, other.row), std::min(one.column, other.column),
            std::max(one.column, other.column)};
}

void WriteCsv(const Cells &cells, const LineSink &line)
{
    const qint64 rows = cells.Rows();
    const int columns = cells.Cols();
    for (qint64 row = 0; row < rows; ++row) {
        QString text;
        for (int column = 1; column < columns; ++column) {
            QString value = cells.Text(row, column);
            if (lang::IsNumeric(value))
                text += value.replace(QLatin1Char(','), QLatin1Char(' '));
            else
                text += QLatin1Char('"') + value + QLatin1Char('"');
            text += QLatin1Char(',');
        }
        if (!line(text))
            return;
    }
    line(QString()); // the file ends with one empty line
}

void WriteHtml(const Cells &cells, const QString &caption, const QString &statement, const LineSink &line)
{
    bool open = true;
    const auto put = [&](const QString &text) { open = open && line(text); };
    put(QStringLiteral(" <html>"));
    put(QStringLiteral(" <head>"));
    put(QStringLiteral("     <title>Brindlewick</title>"));
    put(QStringLiteral(" </head>"));
    put(caption);
    put(QStringLiteral("<BR>SQL:<BR>") + statement + QStringLiteral("<BR>"));
    put(QStringLiteral(" <Table width=100% Bgcolor=White BorderWidth=1>"));
    bool white = true;
    const qint64 rows = cells.Rows();
    const int last = cells.Cols() - 2;
    for (qint64 row = 0; row < rows && open; ++row) {
        const QString ground = row == 0 ? QStringLiteral("gray")
                               : white  ? QStringLiteral("White")
                                        : QStringLiteral("#EEEEEE");
        put(QStringLiteral("\t<TR>"));
        for (int column = 1; column <= last; ++column) {
            put(QStringLiteral("\t\t<TD bgcolor=") + ground + QLatin1Char('>'));
            put(QStringLiteral("\t\t\t") + cells.Text(row, column));
            put(QStringLiteral("\t\t</TD>"));
        }
        put(QStringLiteral("\t</TR>"));
        white = !white;
    }
    put(QStringLiteral(" </Table>"));
    put(QStringLiteral(" </html>"));
}

bool WantsHtml(const QString &fileName)
{
    const QString ending = lang::UCase(lang::Right(lang::Trim(fileName), 3));
    return ending == QLatin1String("HTM") || ending == QLatin1String("ASP");
}

std::optional<QString> CopyText(const Cells &cells, const Block &block, const std::function<bool()> &keepOn)
{
    if (block.top == block.bottom && block.left == block.right)
        return cells.Text(block.top, block.left);
    QString text;
    for (qint64 row = block.top; row <= block.bottom; ++row) {
        if (keepOn && !keepOn())
            return std::nullopt;
        for (int column = block.left; column <= block.right; ++column) {
            if (column > block.left)
                text += QLatin1Char(',');
            QString value = cells.Text(row, column);
            text += QLatin1Char('"') + value.replace(QLatin1String("\""), QLatin1String("\"\"")) + QLatin1Char('"');
        }
        text += QLatin1String("\r\n");
    }
    return text;
}

namespace {

// False when keepOn ended it.
template <class Visit> bool EachNumber(const Cells &cells, const Block &block, const KeepOn &keepOn, const Visit &visit)
{
    for (qint64 row = block.top; row <= block.bottom; ++row) {
        if (keepOn && !keepOn())
            return false;
        for (int column = block.left; column <= block.right; ++column) {
            const QString text = cells.Text(row, column);
            if (lang::IsNumeric(text))
                visit(Cell{row, column}, lang::Val(text));
        }
    }
    return true;
}

template <class Better>
std::optional<Cell> Best(const Cells &cells, const Block &block, const KeepOn &keepOn, const Better &better)
{
    std::optional<Cell> found;
    double best = 0;
    const bool whole = EachNumber(cells, block, keepOn, [&](Cell cell, double number) {
        if (!found || better(number, best)) {
            found = cell;
            best = number;
        }
    });
    return whole ? found : std::nullopt;
}

} // namespace

std::optional<Statistics> Sum(const Cells &cells, const Block &block, const KeepOn &keepOn)
{
    Statistics statistics;
    const bool whole = EachNumber(cells, block, keepOn, [&](Cell, double number) {
        statistics.sum += number;
        ++statistics.count;
    });
    return whole ? std::optional(statistics) : std::nullopt;
}

std::optional<Cell> Largest(const Cells &cells, const Block &block, const KeepOn &keepOn)
{
    return Best(cells, block, keepOn, [](double number, double best) { return number > best; });
}

std::optional<Cell> Smallest(const Cells &cells, const Block &block, const KeepOn &keepOn)
{
    return Best(cells, block, keepOn, [](double number, double best) { return number < best; });
}

std::optional<Cell> Find(const Cells &cells, const SearchFor &what, Cell from, const KeepOn &keepOn)
{
    QString pattern = what.exact ? what.criteria : QLatin1Char('*') + what.criteria + QLatin1Char('*');
    if (!what.caseSensitive)
        pattern = lang::UCase(pattern);
    const lang::LikePattern wanted(pattern); // read once, not for every cell
    const int last = cells.Cols() - 2;
    const qint64 rows = cells.Rows();
    for (Cell cell = from; cell.row < rows; cell = {cell.row + 1, 0}) {
        if (keepOn && !keepOn())
            return std::nullopt;
        for (; cell.column <= last; ++cell.column) {
            const QString text = cells.Text(cell.row, cell.column);
            if (wanted.Matches(what.caseSensitive ? text : lang::UCase(text)))
                return cell;
        }
    }
    return std::nullopt;
}

Cell Next(const Cells &cells, Cell cell)
{
    return cell.column < cells.Cols() - 2 ? Cell{cell.row, cell.column + 1} : Cell{cell.row + 1, 0};
}

} // namespace grid
