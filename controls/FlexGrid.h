#pragma once
// A grid with fixed rows and columns that shows a recordset or its own texts. Owned by its parent. Interface thread.
//
// Rows and columns count from 0, fixed ones included. Row heights, column widths and RowPos are twips. Rows or columns
// out of range raise ControlError 381. Only what is visible is painted; a bound grid keeps no text: the recordset
// answers.
//
// Bound: row 0 holds the field names, data rows follow; column 0 is empty, field N stands in column N + 1. A recordset
// without rows leaves one empty row below the names, which is no record. Fields of chapters make a hierarchy: rows that
// open onto the rows of their chapters, each in a band of its own. Bands are numbered from 0, those below a band before
// the next one beside it. A chapter is no column. The grid shares ownership of the recordset and never moves its
// current row. Sorting permutes row numbers; no row is copied. In a hierarchy it sorts the first band, and what is open
// stays with its row.

#include "ado/CellReader.h"
#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QColor>
#include <functional>
#include <memory>

enum FlexSort
{
    flexSortNone = 0,
    flexSortGenericAscending = 1,
    flexSortGenericDescending = 2,
    flexSortNumericAscending = 3,
    flexSortNumericDescending = 4
};
enum FlexAlign
{
    flexAlignLeft = 1,
    flexAlignCenter = 4,
    flexAlignRight = 7
};

class FlexGrid : public QAbstractScrollArea
{
    Q_OBJECT
public:
    explicit FlexGrid(QWidget *parent = nullptr); // 2 x 2 with one fixed row and column
    ~FlexGrid() override;

    // Shape. A bound grid's rows and columns may be cut or grown, too; what is added is empty.
    qint64 Rows() const;
    void SetRows(qint64 rows);
    int Cols() const;
    void SetCols(int cols);
    qint64 FixedRows() const;
    void SetFixedRows(qint64 rows);
    int FixedCols() const;
    void SetFixedCols(int cols);
    qint64 RecordCount() const; // rows of data, without names and the empty row; of a hierarchy, of the first band

    // Cells.
    QString TextMatrix(qint64 row, int col) const;
    void SetTextMatrix(qint64 row, int col, const QString &text);
    bool CellIsNull(qint64 row, int col) const;
    QString CellStart(qint64 row, int col, qint64 most) const; // the first characters of a text of any size
    ADODB::CellReader ReadCell(qint64 row, int col) const;     // the whole text, piece by piece
    QString Text() const;                                      // of the current cell, "" when there is none
    void AddItem(const QString &text, qint64 index = -1);      // cells parted by TAB; at the end without an index
    void RemoveItem(qint64 row);
    void Clear();          // texts, colours and the data source; the shape stays
    void ClearStructure(); // Clear, and names, widths, heights, bands, sorting; 2 x 2 remains
    QString FormatString() const;
    void SetFormatString(const QString &format); // headers parted by "|", led by < ^ or > for the alignment

    // Data.
    void SetDataSource(const ADODB::RecordsetPtr &recordset); // null unbinds
    ADODB::RecordsetPtr DataSource() const;

    // The current cell and the block from it to (RowSel, ColSel). Setting Row or Col ends a block.
    qint64 Row() const;
    void SetRow(qint64 row);
    int Col() const;
    void SetCol(int col);
    qint64 RowSel() const;
    void SetRowSel(qint64 row);
    int ColSel() const;
    void SetColSel(int col);
    void Select(qint64 row, int col, qint64 rowSel, int colSel);
    QString Clip() const; // the block as text: TAB between cells, CR between rows

    // The view.
    qint64 TopRow() const; // the first row that is not fixed
    void SetTopRow(qint64 row);
    int LeftCol() const;
    void SetLeftCol(int col);
    bool RowIsVisible(qint64 row) const; // whole
    void EnsureVisible(qint64 row, int col);
    qint64 RowPos(qint64 row) const; // from the grid's top edge
    int ColPos(int col) const;
    int RowHeight(qint64 row) const;
    void SetRowHeight(qint64 row, int twips); // -1: the default again
    int DefaultRowHeight() const;
    int ColWidth(int col) const;
    void SetColWidth(int col, int twips); // -1: the default again
    void SetColAlignment(int col, FlexAlign align);
    void FitColumn(int col); // to its heading and the rows in view, 51 at least
    void FitColumns();
    qint64 MouseRow(const QPoint &viewportPosition) const; // -1 outside the rows
    int MouseCol(const QPoint &viewportPosition) const;
    QRect CellRect(qint64 row, int col) const; // pixels in the viewport; empty when it is scrolled away
    int CellLeft() const;                      // twips, of the current cell: where an editor is laid over it
    int CellTop() const;
    int CellWidth() const;

    // Colours. A colour of the current cell that is invalid, or equals the grid's own, takes the cell's own away.
    QColor BackColor() const;
    QColor ForeColor() const;
    QColor BackColorFixed() const;
    QColor ForeColorFixed() const;
    void SetBackColor(const QColor &color);
    void SetForeColor(const QColor &color);
    void SetBackColorFixed(const QColor &color);
    void SetForeColorFixed(const QColor &color);
    void SetBackColorBkg(const QColor &color); // behind the cells
    void SetBackColorSel(const QColor &ground, const QColor &text);
    QColor CellBackColor() const;
    void SetCellBackColor(const QColor &color);
    QColor CellForeColor() const;
    void SetCellForeColor(const QColor &color);

    // Sorts the rows of data by the columns from Col to ColSel. Equal rows keep their order.
    // A long sort asks keepOn now and then; false gives the sort up, and the order stays. True when it was done.
    bool SetSort(int mode, const std::function<bool()> &keepOn = {});
    int Sort() const;

    // Bands of a hierarchy.
    int Bands() const; // 1 for a flat grid
    int BandIndent(int band) const;
    void SetBandIndent(int band, int columns);
    bool ColHeader(int band) const; // is a row of field names shown above the band's rows? band 0's is row 0
    void SetColHeader(int band, bool on);
    QString ColHeaderCaption(int band, int col) const; // field N in column N + 1
    int BandLevel(qint64 row) const;
    bool CanExpand(qint64 row) const;
    bool IsExpanded(qint64 row) const;
    void Expand(qint64 row);
    void Collapse(qint64 row);
    void ExpandAll();
    void CollapseAll();

    QSize sizeHint() const override;

signals:
    void RowColChange(); // the current cell is another one
    void SelChange();    // the block changed
    void Click();
    void DoubleClick();
    void MouseUp(Qt::MouseButton button, const QPoint &viewportPosition);
    void Scrolled();
    void DataChanged(); // bound, sorted, rows opened or closed

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    struct Body;
    std::unique_ptr<Body> m;
};

// Fits every column to the longest text of its rows 0 to 50 (never the last row), plus one blank and 60 twips. A text
// counts as far as the grid shows it.
void AutoSize(FlexGrid *grid);
