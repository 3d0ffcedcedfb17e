#include "data/modListView.h"
#include "controls/Attempt.h"
#include "controls/ListView.h"
#include "data/frmGrid.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "sqltext/modSQLMaipulation.h"
#include <QCoreApplication>
#include <algorithm>
#include <vector>

namespace {

// The columns of the named fields; names that are not there are passed over.
QList<int> ColumnsOf(const ADODB::Recordset &recordset, const QString &names)
{
    QList<int> columns;
    for (const QString &piece : lang::Split(names, QStringLiteral(","))) {
        const QString name = lang::Trim(piece);
        for (int i = 0; i < recordset.ColumnCount(); ++i)
            if (QString::compare(recordset.Column(i).Name, name, Qt::CaseInsensitive) == 0) {
                columns << i;
                break;
            }
    }
    return columns;
}

// How the cells of one filling become texts. Shared by the list's closures, which are asked for visible cells only.
struct CellText
{
    QList<int> text, mask, convert, format;
    QString separator, pattern;

    QString Special(const ADODB::Recordset &recordset, qint64 row, int column) const
    {
        const QString value = recordset.CellText(row, column);
        if (mask.contains(column))
            return QStringLiteral("*");
        if (convert.contains(column))
            return GetTypeName(int(recordset.CellValue(row, column).ToInt64()), true);
        if (format.contains(column))
            return QString(pattern).replace(QLatin1String("%1"), value);
        return value;
    }
    QString operator()(const ADODB::Recordset &recordset, qint64 row, int column) const
    {
        if (column > 0 || text.isEmpty())
            return Special(recordset, row, column);
        QStringList parts;
        for (const int field : text)
            parts << recordset.CellText(row, field);
        return parts.join(separator);
    }
};

} // namespace

void LoadColumns(const ADODB::RecordsetPtr &Recordset, ListView *List)
{
    List->ClearColumns();
    if (!Recordset)
        return;
    for (int i = 0; i < Recordset->ColumnCount(); ++i)
        Attempt([&] { List->AddColumn(Recordset->Column(i).Name); });
}

void FillList(ListView *List, const ADODB::RecordsetPtr &Recordset, const FillOptions &options)
{
    if (options.Clear)
        List->Clear();
    if (!Recordset)
        return;
    ListBlock block;
    block.Recordset = Recordset;
    block.Image = std::max(options.Image, 0);
    qint64 position = 0, count = 0;
    Attempt([&] {
        position = Recordset->AbsolutePosition();
        count = Recordset->RecordCount();
    });
    if (position < 1) // no current record: nothing to read
        return;
    block.First = position - 1;
    block.Count = count - block.First;
    if (options.Limit > 0)
        block.Count = std::min(block.Count, options.Limit);

    const CellText cell{ColumnsOf(*Recordset, options.TextFields),
                        ColumnsOf(*Recordset, options.MaskFields),
                        ColumnsOf(*Recordset, options.ConvertFields),
                        ColumnsOf(*Recordset, options.FormatFields),
                        options.Separator,
                        options.Format};
    if (!cell.text.isEmpty() || !cell.mask.isEmpty() || !cell.convert.isEmpty() || !cell.format.isEmpty())
        block.Text = [cell](ADODB::Recordset &rows, qint64 row, int column) { return cell(rows, row, column); };
    if (const QList<int> tag = ColumnsOf(*Recordset, options.TagField); !tag.isEmpty())
        block.Tag = [field = tag.first()](ADODB::Recordset &rows, qint64 row) { return rows.CellText(row, field); };

    const qint64 added = block.Count;
    Attempt([&] { List->AddBlock(std::move(block)); });
    Attempt([&] {
        if (position - 1 + added < count) {
            Recordset->SetAbsolutePosition(position + added);
        } else {
            Recordset->MoveLast();
            Recordset->MoveNext();
        }
    });
    if (options.Progress)
        options.Progress(added, count);
    // The rows come all at once: the list asks for a cell when it paints it. So nothing goes on between two of them.
    if (options.DoEvents)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

double SpannedWidth(double listWidth, int columns)
{
    return columns > 0 ? (listWidth - 300) / columns : 0;
}

void SpanListColumns(ListView *List, bool Force)
{
    const int columns = List->ColumnCount();
    const double width = SpannedWidth(List->ListWidth(), columns);
    if (columns == 0 || (width < 700 && !Force))
        return;
    for (int i = 0; i < columns; ++i)
        Attempt([&] { List->SetColumnWidth(i, int(width)); });
}

void SortListBy(ListView *List, int column)
{
    Breather breather(QStringLiteral("Sorting ... (Esc stops)"));
    const ListSortOrder order = List->SortOrder() == lvwAscending ? lvwDescending : lvwAscending;
    Attempt([&] { List->SortBy(column, order, [&] { return breather.Breathe(); }); });
}

frmGrid *ShowRecordset(const ADODB::RecordsetPtr &Recordset, const QString &Title)
{
    if (!IsConnected(true) || !Recordset)
        return nullptr;
    SetStatus(QStringLiteral("Loading  [%1]").arg(Title));
    auto *grid = new frmGrid;
    LoadColumns(Recordset, grid->lvResults);
    FillOptions options;
    options.Clear = true;
    FillList(grid->lvResults, Recordset, options);
    Shell::Current().SetCountPanel(QStringLiteral("Count = ") + lang::CStr(qint64(Recordset->RecordCount())));
    grid->SetCaption(Title);
    grid->ShowChild();
    grid->SpanColomns(false);
    return grid;
}

QString ListLine(const QStringList &values)
{
    QString line;
    for (const QString &value : values)
        line += QString(value).replace(QLatin1Char(','), QLatin1Char(' ')) + QLatin1Char(',');
    return line;
}
