#pragma once
// What stands inside a DataGrid; for its own sources only. Pixels inside, twips outside.

#include "ado/CellReader.h"
#include "controls/CellEditor.h"
#include "controls/DataGrid.h"
#include <QPixmap>
#include <vector>

struct DataGrid::Body
{
    explicit Body(DataGrid *grid) : q(grid) {}

    DataGrid *const q;
    ADODB::RecordsetPtr source;
    QString caption, readOnly;
    bool frozen = false;
    qint64 frozenRows = 0; // records when it was frozen
    QPixmap picture;
    std::vector<int> widths;

    qint64 row = 0, rowSel = 0, top = 0;
    int col = 0, colSel = 0;
    bool wholeRows = false; // the block was taken at the rows' heads
    CellEditor *editor = nullptr;
    bool ending = false; // EndEdit is under way

    enum class Drag
    {
        None,
        Block,
        Width
    };
    Drag drag = Drag::None;
    int dragCol = -1, dragFrom = 0, dragWidth = 0;
    double wheelRest = 0;

    // View.
    bool Live() const { return source && !frozen; }
    bool HasNewRow() const;
    qint64 Lines() const { return q->Rows() + (HasNewRow() ? 1 : 0); }
    int RowHeight() const;
    int HeadWidth() const;                    // of the rows' heads
    int ColX(int c) const;                    // in the viewport
    qint64 RowsInView() const;                // whole ones
    int EdgeAt(const QPoint &position) const; // the column whose right edge is there, -1 for none
    void UpdateBars();
    void Clamp();
    void SetBlock(qint64 r, int c, qint64 rSel, int cSel, bool whole);
    bool InBlock(qint64 r, int c) const;
    void PlaceEditor();
    void FollowRow(); // the recordset's current row
    void Moved();

    // Cells. `r` may be the new row.
    bool IsRecord(qint64 r) const { return Live() && r >= 0 && r < q->Rows(); }
    bool IsNull(qint64 r, int c) const;
    QString Start(qint64 r, int c, qint64 most) const;
    bool IsText(int c) const; // where an empty text is a value of its own

    // Edits.
    void Store(qint64 r, int c, const ADODB::Value &value); // raises
    ADODB::Value Entered(int c, const QString &text) const; // what a user means by the text
    bool Try(const QString &where, const std::function<void()> &edit);
    void Tell(int number, const QString &description);
    bool OpenEditor(const QString &text, bool typed);
    bool PasteBlock(const QList<QStringList> &cells, const std::function<bool()> &keepOn);
    bool Step(bool next); // Tab

    // Input.
    bool MoveKey(const QKeyEvent &event);

    // Paint.
    void PaintHeads(QPainter &painter, const QRect &area);
    void PaintRow(QPainter &painter, qint64 r, const QRect &line);
    void PaintMark(QPainter &painter, qint64 r, const QRect &head);
    void PaintCell(QPainter &painter, qint64 r, int c, const QRect &cell);
};

// The cells of a text from a spreadsheet: parted by TAB and line ends, quoted where a cell holds such itself.
QList<QStringList> SpreadsheetCells(const QString &text);
