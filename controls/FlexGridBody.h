#pragma once
// What stands inside a FlexGrid; for the grid's own sources only.
//
// Every row of the view has an id that stays with it when rows are sorted: texts written over a bound cell and colours
// hang on ids, heights on rows of the view. Without an order the id is the row itself.

#include "controls/FlexGrid.h"
#include "controls/FlexGridRows.h"
#include <QFontMetrics>
#include <QHash>
#include <QMap>
#include <QPoint>
#include <vector>

using FlexCellKey = std::pair<qint64, int>; // id, column

struct FlexCellColours
{
    QColor back, fore;
};

struct FlexBandRow
{ // one row of a hierarchy as it is shown
    ADODB::Recordset *recordset = nullptr;
    qint64 record = -2; // -1: the row of field names above a band; -2: no record
    int band = 0;
    FlexBandTree::Place place;
};

struct FlexBand
{
    int indent = 0;
    bool header = true;
    int parent = -1, chapter = -1;     // the field of chapters in the band above that it shows
    std::vector<int> fields, chapters; // of its recordsets: the columns, and what opens
};

struct FlexGrid::Body
{
    explicit Body(FlexGrid *grid) : q(grid) {}

    FlexGrid *const q;

    // Shape and texts.
    qint64 rows = 2, fixedRows = 1;
    int cols = 2, fixedCols = 1;
    std::vector<std::vector<QString>> lines; // of an unbound grid, one a row, short where nothing was written
    ADODB::RecordsetPtr source;
    qint64 boundRows = 0; // records when it was bound
    std::vector<quint32> order;
    qint64 nextId = 2;
    QHash<FlexCellKey, QString> written; // over a bound grid
    QHash<FlexCellKey, FlexCellColours> colours;
    QMap<qint64, int> heights; // twips, by row of the view
    std::vector<int> widths;   // twips, -1 the default
    std::vector<FlexAlign> aligns;
    QString format;

    // A hierarchy.
    bool hierarchical = false;
    FlexBandTree tree;
    std::vector<FlexBand> bands{1};

    // The current cell, the block, the view.
    qint64 row = 1, rowSel = 1, topRow = 1;
    int col = 1, colSel = 1;
    int sort = 0, sortCol = -1;
    QColor back, fore, backFixed, foreFixed, backBkg, backSel, foreSel;

    // The mouse.
    enum class Drag
    {
        None,
        Block,
        Rows,
        Columns,
        Width
    };
    Drag drag = Drag::None;
    int dragCol = -1, dragFrom = 0, dragWidth = 0;
    QPoint dragAt;
    bool pressed = false;
    QBasicTimer autoScroll;
    double wheelRest = 0;

    mutable std::vector<int> edges; // left edge of each column in pixels, unscrolled; empty when stale

    void CheckRow(qint64 r) const;
    void CheckCol(int c) const;

    // Rows and texts.
    qint64 Id(qint64 r) const;
    bool IsNames(qint64 r) const; // shows field names
    QString CellText(qint64 r, int c) const;
    static constexpr qint64 shownLimit = 2000; // characters of one line that a screen can show
    QString ShownText(qint64 r, int c, qint64 most = shownLimit) const;
    QString HiddenText(const QPoint &position) const; // of a cell that does not show all of its text, else ""
    bool IsNull(qint64 r, int c) const;
    bool Source(qint64 r, int c, ADODB::Recordset **recordset, qint64 *record, int *field) const;
    void MakeOrder();
    void ShiftHeights(qint64 from, qint64 by);
    void Reset();
    void Rebind();

    // Bands.
    void BindBands();
    void Describe(size_t band, const ADODB::RecordsetPtr &definition);
    int BandBelow(int band, int chapter, const ADODB::RecordsetPtr &definition);
    int KnownBand(int band, int chapter) const; // -1 where no row has shown it yet
    FlexBandRow BandRow(qint64 r) const;
    bool HasBelow(const FlexBandNode &node, qint64 entry) const;
    std::vector<std::unique_ptr<FlexBandNode>> BandsOf(const FlexBandNode &node, qint64 entry);
    void OpenAll(FlexBandNode &node);
    qint64 SortedRow(qint64 i) const; // the row of the view that a sort counts as this one
    qint64 SortedRows() const;        // and how many there are, fixed ones included
    int IndentPixels(qint64 r) const;
    QRect ExpanderRect(qint64 r) const;

    // Geometry, in pixels.
    int DefaultHeight() const;
    int HeightOf(qint64 r) const;
    qint64 HeightBetween(qint64 from, qint64 to) const; // of rows from .. to-1
    int WidthOf(int c) const;
    const std::vector<int> &Edges() const;
    qint64 FrozenRows() const;
    int FrozenCols() const;
    int FrozenHeight() const;
    int FrozenWidth() const;
    int ColX(int c) const; // scrolled, without a band's indent
    qint64 LastTop() const;
    using Comparison = std::function<int(size_t, size_t)>; // of two rows, counted from the first that is sorted
    void SortRows(const std::function<bool()> &keepOn);
    Comparison CompareBy(int column, qint64 first, size_t count, bool numeric, const std::function<void()> &breathe);
    void TakeRowOrder(qint64 first, const std::vector<quint32> &places); // the row that comes to each place
    void Stale(); // shape or widths changed: scroll bars and paint
    void UpdateScrollBars();
    bool Frozen(qint64 r, int c) const { return r < FrozenRows() || c < FrozenCols(); }
    int ResizeColumnAt(const QPoint &position) const; // -1: none

    // The block.
    void SetBlock(qint64 r, int c, qint64 rSel, int cSel);
    bool InBlock(qint64 r, int c) const;
    void Clamp();
    void DragTo(const QPoint &position);
    bool MoveKey(QKeyEvent *event);

    // Paint.
    QColor Colour(const QColor &own, int role) const;
    QColor OwnColour(QColor FlexCellColours::*part) const;
    void SetOwnColour(QColor FlexCellColours::*part, const QColor &colour, const QColor &common);
    void PaintPane(QPainter &painter, qint64 firstRow, qint64 lastRow, int firstCol, int lastCol, const QRect &clip);
    void PaintCell(QPainter &painter, qint64 r, int c, const QRect &cell);
    void PaintText(QPainter &painter, const QString &text, const QRect &room, int align) const;
    QRect TextRoom(qint64 r, int c, const QRect &cell) const; // what margins and the mark of sorting leave
    int LinesIn(const QRect &room) const;                     // lines of text that a cell of this height shows
};
