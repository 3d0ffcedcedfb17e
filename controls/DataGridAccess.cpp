// What a screen reader hears of a DataGrid: its name, the current cell with the name of its column, and what becomes of
// the row.

#include "controls/DataGridBody.h"
#include <QAccessibleWidget>

namespace {

class DataGridAccess : public QAccessibleWidget
{
public:
    explicit DataGridAccess(DataGrid *grid) : QAccessibleWidget(grid, QAccessible::Table), m_grid(grid) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && m_grid->accessibleName().isEmpty())
            return QStringLiteral("Grid");
        const ADODB::RecordsetPtr rows = m_grid->IsFrozen() ? nullptr : m_grid->DataSource();
        const qint64 row = m_grid->Row();
        const int col = m_grid->Col();
        const bool there = rows && row < m_grid->Rows() && col < m_grid->Cols();
        if (kind == QAccessible::Value && rows)
            return !there                       ? QStringLiteral("new row")
                   : rows->CellIsNull(row, col) ? QStringLiteral("null")
                                                : ADODB::CellStart(*rows, row, col, 2000);
        if (kind == QAccessible::Description && rows)
            return m_grid->CellLabel(row, col) + (there ? State(rows->RowStatus(row)) : QString());
        return QAccessibleWidget::text(kind);
    }

private:
    static QString State(int status)
    {
        if (status & ~(ADODB::adRecNew | ADODB::adRecModified | ADODB::adRecDeleted | ADODB::adRecUnmodified))
            return QStringLiteral(", refused by the last save");
        if (status & ADODB::adRecNew)
            return QStringLiteral(", new");
        return status & ADODB::adRecModified ? QStringLiteral(", changed") : QString();
    }

    DataGrid *m_grid;
};

QAccessibleInterface *MakeDataGridAccess(const QString &, QObject *object)
{
    auto *const grid = qobject_cast<DataGrid *>(object);
    return grid ? new DataGridAccess(grid) : nullptr;
}

const bool dataGridInstalled = (QAccessible::installFactory(MakeDataGridAccess), true);

} // namespace

bool DataGridAccessInstalled()
{
    return dataGridInstalled; // named by the grid, so that the linker keeps this source
}
