#pragma once
// A FlexGrid as plain cells. The grid must outlive it. Interface thread; cells out of range read as "".

#include "controls/FlexGrid.h"
#include "views/GridText.h"

class GridCells : public grid::Cells
{
public:
    explicit GridCells(const FlexGrid *grid) : m_grid(grid) {}
    qint64 Rows() const override // the empty row of a result without records is none of its rows
    {
        return m_grid->DataSource() && m_grid->RecordCount() == 0 ? 1 : m_grid->Rows();
    }
    int Cols() const override { return m_grid->Cols(); }
    QString Text(qint64 row, int column) const override { return m_grid->TextMatrix(row, column); }

private:
    const FlexGrid *m_grid;
};
