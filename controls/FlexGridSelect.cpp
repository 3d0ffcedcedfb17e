// The current cell and the block of a FlexGrid, and its cells' colours.

#include "controls/FlexGridBody.h"
#include <QAccessible>
#include <algorithm>

void FlexGrid::Body::SetBlock(qint64 r, int c, qint64 rSel, int cSel)
{
    const bool current = r != row || c != col;
    const bool block = current || rSel != rowSel || cSel != colSel;
    row = r;
    col = c;
    rowSel = rSel;
    colSel = cSel;
    if (!block)
        return;
    q->viewport()->update();
    if (current) {
        if (QAccessible::isActive()) {
            QAccessibleValueChangeEvent changed(q, q->Text());
            QAccessible::updateAccessibility(&changed);
        }
        emit q->RowColChange();
    }
    emit q->SelChange();
}

bool FlexGrid::Body::InBlock(qint64 r, int c) const
{
    return r >= std::min(row, rowSel) && r <= std::max(row, rowSel) && c >= std::min(col, colSel) &&
           c <= std::max(col, colSel);
}

void FlexGrid::Body::Clamp()
{
    const auto inRows = [this](qint64 r) { return std::clamp<qint64>(r, 0, std::max<qint64>(0, rows - 1)); };
    const auto inCols = [this](int c) { return std::clamp(c, 0, std::max(0, cols - 1)); };
    SetBlock(inRows(row), inCols(col), inRows(rowSel), inCols(colSel));
}

qint64 FlexGrid::Row() const
{
    return m->row;
}

void FlexGrid::SetRow(qint64 row)
{
    m->CheckRow(row);
    m->SetBlock(row, m->col, row, m->col);
}

int FlexGrid::Col() const
{
    return m->col;
}

void FlexGrid::SetCol(int col)
{
    m->CheckCol(col);
    m->SetBlock(m->row, col, m->row, col);
}

qint64 FlexGrid::RowSel() const
{
    return m->rowSel;
}

void FlexGrid::SetRowSel(qint64 row)
{
    m->CheckRow(row);
    m->SetBlock(m->row, m->col, row, m->colSel);
}

int FlexGrid::ColSel() const
{
    return m->colSel;
}

void FlexGrid::SetColSel(int col)
{
    m->CheckCol(col);
    m->SetBlock(m->row, m->col, m->rowSel, col);
}

void FlexGrid::Select(qint64 row, int col, qint64 rowSel, int colSel)
{
    m->CheckRow(row);
    m->CheckRow(rowSel);
    m->CheckCol(col);
    m->CheckCol(colSel);
    m->SetBlock(row, col, rowSel, colSel);
}

QString FlexGrid::Clip() const
{
    QString text;
    if (m->rows == 0 || m->cols == 0)
        return text;
    const qint64 last = std::max(m->row, m->rowSel);
    const int lastCol = std::max(m->col, m->colSel);
    for (qint64 r = std::min(m->row, m->rowSel); r <= last; ++r) {
        for (int c = std::min(m->col, m->colSel); c <= lastCol; ++c) {
            text += m->CellText(r, c);
            if (c < lastCol)
                text += QLatin1Char('\t');
        }
        if (r < last)
            text += QLatin1Char('\r');
    }
    return text;
}

QColor FlexGrid::Body::Colour(const QColor &own, int role) const
{
    return own.isValid()
               ? own
               : q->palette().color(q->isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ColorRole(role));
}

QColor FlexGrid::BackColor() const
{
    return m->Colour(m->back, QPalette::Base);
}

QColor FlexGrid::ForeColor() const
{
    return m->Colour(m->fore, QPalette::Text);
}

QColor FlexGrid::BackColorFixed() const
{
    return m->Colour(m->backFixed, QPalette::Button);
}

QColor FlexGrid::ForeColorFixed() const
{
    return m->Colour(m->foreFixed, QPalette::ButtonText);
}

void FlexGrid::SetBackColor(const QColor &color)
{
    m->back = color;
    viewport()->update();
}

void FlexGrid::SetForeColor(const QColor &color)
{
    m->fore = color;
    viewport()->update();
}

void FlexGrid::SetBackColorFixed(const QColor &color)
{
    m->backFixed = color;
    viewport()->update();
}

void FlexGrid::SetForeColorFixed(const QColor &color)
{
    m->foreFixed = color;
    viewport()->update();
}

void FlexGrid::SetBackColorBkg(const QColor &color)
{
    m->backBkg = color;
    viewport()->update();
}

void FlexGrid::SetBackColorSel(const QColor &ground, const QColor &text)
{
    m->backSel = ground;
    m->foreSel = text;
    viewport()->update();
}

// The colour that the current cell has for itself; invalid when it has none, or when there is no cell.
QColor FlexGrid::Body::OwnColour(QColor FlexCellColours::*part) const
{
    return row < rows ? colours.value({Id(row), col}).*part : QColor();
}

// The grid's own colour takes the cell's away, so that only cells that differ are kept.
void FlexGrid::Body::SetOwnColour(QColor FlexCellColours::*part, const QColor &colour, const QColor &common)
{
    if (row >= rows)
        return;
    const FlexCellKey key{Id(row), col};
    FlexCellColours &cell = colours[key];
    cell.*part = colour == common ? QColor() : colour;
    if (!cell.back.isValid() && !cell.fore.isValid())
        colours.remove(key);
    q->viewport()->update();
}

QColor FlexGrid::CellBackColor() const
{
    const QColor own = m->OwnColour(&FlexCellColours::back);
    const bool fixed = m->row < m->rows && m->Frozen(m->row, m->col);
    return own.isValid() ? own : fixed ? BackColorFixed() : BackColor();
}

void FlexGrid::SetCellBackColor(const QColor &color)
{
    m->SetOwnColour(&FlexCellColours::back, color, BackColor());
}

QColor FlexGrid::CellForeColor() const
{
    const QColor own = m->OwnColour(&FlexCellColours::fore);
    const bool fixed = m->row < m->rows && m->Frozen(m->row, m->col);
    return own.isValid() ? own : fixed ? ForeColorFixed() : ForeColor();
}

void FlexGrid::SetCellForeColor(const QColor &color)
{
    m->SetOwnColour(&FlexCellColours::fore, color, ForeColor());
}
