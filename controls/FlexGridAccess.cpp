// What a screen reader hears of a FlexGrid: its name, and the current cell with the name of its column.

#include "controls/FlexGridBody.h"
#include <QAccessibleWidget>

namespace {

class FlexGridAccess : public QAccessibleWidget
{
public:
    explicit FlexGridAccess(FlexGrid *grid) : QAccessibleWidget(grid, QAccessible::Table), m_grid(grid) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && m_grid->accessibleName().isEmpty())
            return QStringLiteral("Grid");
        if (kind == QAccessible::Value)
            return Spoken();
        if (kind == QAccessible::Description && m_grid->Row() > 0 && m_grid->Row() < m_grid->Rows() &&
            m_grid->Col() < m_grid->Cols())
            return m_grid->TextMatrix(0, m_grid->Col()) + QStringLiteral(", row ") + QString::number(m_grid->Row());
        return QAccessibleWidget::text(kind);
    }

private:
    // As far as anybody listens: not the whole of a value of many megabytes.
    QString Spoken() const
    {
        const bool there = m_grid->Row() >= 0 && m_grid->Row() < m_grid->Rows() && m_grid->Col() >= 0 &&
                           m_grid->Col() < m_grid->Cols();
        return there ? m_grid->CellStart(m_grid->Row(), m_grid->Col(), 2000) : QString();
    }

    FlexGrid *m_grid;
};

QAccessibleInterface *MakeAccess(const QString &, QObject *object)
{
    auto *const grid = qobject_cast<FlexGrid *>(object);
    return grid ? new FlexGridAccess(grid) : nullptr;
}

const bool installed = (QAccessible::installFactory(MakeAccess), true);

} // namespace

bool FlexGridAccessInstalled()
{
    return installed; // named by the grid, so that the linker keeps this source
}
