// The commands on a result: statistics, marking, sorting, copying, searching, clearing the log.

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/TabStrip.h"
#include "data/frmFind.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "views/GridCells.h"
#include "views/frmChart.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QClipboard>
#include <QPointer>

namespace {

grid::Block SelectedBlock(const FlexGrid *table)
{
    return grid::Block::Of({table->Row(), table->Col()}, {table->RowSel(), table->ColSel()});
}

// A cell's text of any size, piece by piece.
std::optional<QString> WholeCell(ADODB::CellReader cell, const std::function<bool()> &keepOn)
{
    QString text;
    while (!cell.AtEnd()) {
        text += cell.Next(1 << 20);
        if (!keepOn())
            return std::nullopt;
    }
    return text;
}

// No number is written with so many characters; a value of many megabytes need not be made to see that.
bool IsNumericCell(const FlexGrid *table, qint64 row, int column)
{
    constexpr qint64 most = 4096;
    const QString text = table->CellStart(row, column, most + 1);
    return text.size() <= most && lang::IsNumeric(text);
}

} // namespace

FlexGrid *frmHirarchy::StatisticsGrid() const
{
    return m_statsTag == QLatin1String("M") ? mfgMessge : mfg;
}

void frmHirarchy::mnuSum_Click()
{
    const FlexGrid *table = StatisticsGrid();
    Breather breather(tr("Adding up ..."));
    if (const auto sum = grid::Sum(GridCells(table), SelectedBlock(table), [&] { return breather.Breathe(); }))
        ShowCellText(QStringLiteral("Sum = ") + lang::CStr(sum->sum));
}

void frmHirarchy::mnuAvg_Click()
{
    const FlexGrid *table = StatisticsGrid();
    Breather breather(tr("Adding up ..."));
    const auto sum = grid::Sum(GridCells(table), SelectedBlock(table), [&] { return breather.Breathe(); });
    if (sum && sum->count > 0) // no number: there is nothing to say
        ShowCellText(QStringLiteral("Average = ") + lang::CStr(sum->sum / double(sum->count)));
}

void frmHirarchy::mnuFitColumns()
{
    StatisticsGrid()->FitColumns();
}

void frmHirarchy::mnuChart()
{
    const GridCells cells(mfg);
    const ChartGrid source{cells.Rows(), cells.Cols(), [&](qint64 row, int column) { return cells.Text(row, column); }};
    Attempt([&] { OpenChart(this, {ChartFields(source), mfg, Statement()}); });
}

void frmHirarchy::mnuMax_Click()
{
    MarkBest(true);
}

void frmHirarchy::mnuMin_Click()
{
    MarkBest(false);
}

void frmHirarchy::MarkBest(bool largest)
{
    FlexGrid *table = StatisticsGrid();
    const grid::Block block = SelectedBlock(table);
    ClearMark(table);
    Breather breather(tr("Searching ..."));
    const auto keepOn = [&] { return breather.Breathe(); };
    const GridCells cells(table);
    const auto best = largest ? grid::Largest(cells, block, keepOn) : grid::Smallest(cells, block, keepOn);
    if (best && best->row != 0 && best->column != 0)
        Mark(table, best->row, best->column);
}

void frmHirarchy::ClearMark(FlexGrid *table)
{
    Attempt([&] { table->SetCellBackColor(table->BackColor()); });
    Attempt([&] { table->SetCellForeColor(table->ForeColor()); });
}

void frmHirarchy::Mark(FlexGrid *table, qint64 row, int column)
{
    Attempt([&] { table->SetRow(row); });
    Attempt([&] { table->SetCol(column); });
    Attempt([&] { table->SetTopRow(row); });
    Attempt([&] { table->SetLeftCol(column); });
    Attempt([&] { table->SetCellBackColor(QColor(255, 255, 0)); });
    Attempt([&] { table->SetCellForeColor(QColor(0, 0, 0)); }); // the grid's own text would not be read on yellow
}

void frmHirarchy::SortByHeading(FlexGrid *table, const QPoint &position)
{
    if (table->MouseRow(position) != 0 || table->Rows() < 1)
        return;
    Attempt([&] {
        table->SetCol(table->ColSel());
        table->SetRow(0);
        if (table->Rows() <= 1)
            return;
        const QPointer<frmHirarchy> alive(this);
        Breather breather(tr("Sorting ... (Esc stops)"));
        const bool numeric = IsNumericCell(table, 1, table->Col());
        const int mode = numeric ? (m_sortUp ? flexSortNumericAscending : flexSortNumericDescending)
                                 : (m_sortUp ? flexSortGenericAscending : flexSortGenericDescending);
        if (table->SetSort(mode, [&] { return breather.Breathe(); }) && alive)
            m_sortUp = !m_sortUp;
    });
}

void frmHirarchy::mnuCopy()
{
    Breather breather(tr("Copying ... (Esc stops)"));
    const auto keepOn = [&] { return breather.Breathe(); };
    std::optional<QString> text;
    if (ts->Selected() == 3) {
        text = txtData->textCursor().hasSelection() ? txtData->SelectedText() : txtData->WholeText(keepOn);
        if (text)
            text->replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    } else {
        const FlexGrid *table = ts->Selected() == 2 ? mfgMessge : mfg;
        const grid::Block block = SelectedBlock(table);
        if (block.top == block.bottom && block.left == block.right && block.top < table->Rows() &&
            block.left < table->Cols())
            text = WholeCell(table->ReadCell(block.top, block.left), keepOn);
        else
            text = grid::CopyText(GridCells(table), block, keepOn);
    }
    if (!text)
        return; // stopped: the clipboard keeps what it had
    QApplication::clipboard()->setText(*text);
}

void frmHirarchy::mnuClearLog()
{
    mfgMessge->Clear();
    mfgMessge->SetRows(2);
    mfgMessge->SetRowHeight(1, -1);
    mfgMessge->SetFormatString(QStringLiteral("    | Type          |Time Stamp                     |Value"));
    FitLog();
}

void frmHirarchy::mnuFind()
{
    const QPointer<frmHirarchy> alive(this);
    ts->Select(1);
    ClearMark(mfg);
    grid::SearchFor what;
    const auto ask = [&] {
        frmFind find(this);
        find.ShowModal();
        what = {find.Criteria, find.ExactMatch, find.CaseSensitive};
        return alive && !find.Cancelled;
    };
    if (!ask())
        return;
    grid::Cell from{1, 0};
    while (alive) {
        std::optional<grid::Cell> hit;
        // A malformed pattern ends the command without a word, as running past the last row does.
        const bool searched = Attempt([&] {
            Breather breather(tr("Searching ... (Esc stops)"));
            hit = grid::Find(GridCells(mfg), what, from, [&] { return breather.Breathe(); });
        });
        if (!searched || !hit)
            return;
        Mark(mfg, hit->row, hit->column);
        const bool goOn = ask();
        if (!alive)
            return;
        ClearMark(mfg);
        if (!goOn)
            return;
        from = grid::Next(GridCells(mfg), *hit);
    }
}
