// The clipboard's texts of a DataGrid: a block as a spreadsheet writes it, and back.

#include "controls/DataGridBody.h"
#include <algorithm>

QList<QStringList> SpreadsheetCells(const QString &text)
{
    QList<QStringList> rows;
    QStringList row;
    QString cell;
    bool begun = false, quoted = false, wasQuoted = false;
    const auto endCell = [&] {
        row << cell;
        cell.clear();
        begun = wasQuoted = false;
    };
    const auto endRow = [&] {
        endCell();
        rows << row;
        row.clear();
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        if (quoted) {
            if (c != u'"') {
                cell += c;
            } else if (at + 1 < text.size() && text[at + 1] == u'"') {
                cell += c;
                ++at;
            } else {
                quoted = false;
                wasQuoted = true;
            }
        } else if (c == u'"' && !begun) {
            quoted = begun = true;
        } else if (c == u'\t') {
            endCell();
        } else if (c == u'\n' || c == u'\r') {
            if (c == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
                ++at;
            endRow();
        } else {
            cell += c;
            begun = true;
        }
    }
    if (!cell.isEmpty() || !row.isEmpty() || begun || wasQuoted)
        endRow();
    return rows;
}

namespace {

// What would be read as something else goes in quotes.
QString Written(QString cell)
{
    if (!cell.contains(u'\t') && !cell.contains(u'\n') && !cell.contains(u'\r') && !cell.startsWith(u'"'))
        return cell;
    cell.replace(u'"', QLatin1String("\"\""));
    return u'"' + cell + u'"';
}

} // namespace

QString DataGrid::Clip(const std::function<bool()> &keepOn) const
{
    if (!m->Live() || Cols() == 0)
        return {};
    const qint64 first = std::min(m->row, m->rowSel), last = std::min(std::max(m->row, m->rowSel), Rows() - 1);
    const int firstCol = m->wholeRows ? 0 : std::min(m->col, m->colSel);
    const int lastCol = m->wholeRows ? Cols() - 1 : std::max(m->col, m->colSel);
    QString text;
    try {
        if (first == last && firstCol == lastCol)
            return m->source->CellText(first, firstCol);
        for (qint64 r = first; r <= last; ++r) {
            for (int c = firstCol; c <= lastCol; ++c)
                text += (c > firstCol ? QStringLiteral("\t") : QString()) + Written(m->source->CellText(r, c));
            text += QStringLiteral("\r\n");
            if (keepOn && !keepOn())
                return {};
        }
    } catch (const ADODB::Error &) { // a row has just gone
    }
    return text;
}

bool DataGrid::Body::PasteBlock(const QList<QStringList> &cells, const std::function<bool()> &keepOn)
{
    const qint64 first = std::min(row, rowSel);
    const int left = std::min(col, colSel);
    bool done = true, any = false;
    for (qsizetype i = 0; done && i < cells.size(); ++i) {
        // Behind the last record the new row takes the first cell that is not empty, and is a record from then on.
        const qint64 r = std::min(first + i, q->Rows());
        for (int j = 0; done && j < cells[i].size() && left + j < q->Cols(); ++j) {
            const int c = left + j;
            const QString &text = cells[i][j];
            if (!IsRecord(r) && text.isEmpty())
                continue;
            done = Try(q->CellLabel(r, c), [&] { Store(r, c, Entered(c, text)); });
            any = any || done;
        }
        if (keepOn && !keepOn())
            break;
    }
    FollowRow();
    q->Refresh();
    if (any)
        emit q->Change();
    return done;
}

bool DataGrid::Paste(const QString &text, const std::function<bool()> &keepOn)
{
    if (!m->Live() || Cols() == 0 || !EndEdit(true))
        return false;
    const bool lines = text.contains(u'\n') || text.contains(u'\r');
    if (text.contains(u'\t') || (lines && !m->IsText(m->col)))
        return m->PasteBlock(SpreadsheetCells(text), keepOn);
    return SetCellText(text);
}
