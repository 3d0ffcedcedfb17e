#pragma once
// A grid in which a live recordset is edited: each cell by an editor of its field's type, a new row at the end, rows
// deleted, what is pending marked at the row's head. Owned by its parent. Interface thread.
//
// Rows count the records from 0, and the new row stands behind them; columns count as the fields do. The grid shares
// the recordset and moves its current row along with its own. An edit goes into the recordset cell by cell, at once,
// and is stored exactly or refused: then the editor stays open, and Error tells the field's own words. With a batch
// recordset all edits stay pending until its UpdateBatch. Nothing here raises.
//
// A text of any size is painted by its start and never goes into the editor whole: what is longer than LongestEdit, or
// holds what an editor would change, can be replaced (typed or pasted over), and opens for no edit of its middle.

#include "ado/Recordset.h"
#include <QAbstractScrollArea>
#include <functional>
#include <memory>

class CellEditor;

class DataGrid : public QAbstractScrollArea
{
    Q_OBJECT
public:
    static constexpr qint64 LongestEdit = 64 * 1024; // characters

    explicit DataGrid(QWidget *parent = nullptr);
    ~DataGrid() override;

    void SetDataSource(const ADODB::RecordsetPtr &recordset); // null unbinds
    ADODB::RecordsetPtr DataSource() const;
    void Refresh();                       // the recordset was changed by other hands
    void SetReadOnly(const QString &why); // refuses every edit with these words; "" allows them again
    // While another thread has the recordset: the grid shows the picture that it showed, and answers to nothing.
    void SetFrozen(bool frozen);
    bool IsFrozen() const;

    QString Caption() const;
    void SetCaption(const QString &caption);
    qint64 Rows() const; // records, without the new row
    int Cols() const;
    QString ColCaption(int col) const;
    int ColWidth(int col) const; // twips
    void SetColWidth(int col, int twips);
    void FitColumn(int col); // to its heading and the rows in view

    // The current cell and the block from it to (RowSel, ColSel).
    qint64 Row() const;
    int Col() const;
    qint64 RowSel() const;
    int ColSel() const;
    bool SetCurrentCell(qint64 row, int col); // false when an edit under way was refused, and stays
    void Select(qint64 row, int col, qint64 rowSel, int colSel);
    bool IsNewRow() const; // the current one
    qint64 TopRow() const;
    void EnsureVisible(qint64 row, int col);
    QRect CellRect(qint64 row, int col) const;    // pixels in the viewport; empty when it is scrolled away
    qint64 RowAt(int y) const;                    // -1 above and below the rows
    int ColAt(int x) const;                       // -1 for the rows' heads and behind the last column
    QString CellLabel(qint64 row, int col) const; // as a message names it: "amount, row 3"

    // Edits. Each gives false when it was refused, which Error has told.
    bool EditCell();                     // opens the editor on the present value
    bool EditCell(const QString &typed); // opens it on what is typed over the value
    bool IsEditing() const;
    bool EndEdit(bool take); // false: the value was refused and the editor is still open
    bool SetCellText(const QString &text);
    bool SetCellNull();
    bool UndoCell(); // as it was before its first pending edit
    bool DuplicateRow();
    bool DeleteRows(); // all that the block touches
    // The block as text: TAB between cells, line ends between rows. keepOn is asked between rows; false ends it.
    QString Clip(const std::function<bool()> &keepOn = {}) const;
    bool Paste(const QString &text, const std::function<bool()> &keepOn = {}); // cells parted so make a block
    CellEditor *Editor() const;

    QSize sizeHint() const override;

signals:
    void RowColChange(); // another current cell
    void Change();       // an edit was taken
    // An edit was refused. A response of 0 silences the grid's own message box.
    void Error(int number, const QString &description, int *response);
    void ContextMenu(const QPoint &viewportPosition);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    struct Body;
    std::unique_ptr<Body> m;
};
