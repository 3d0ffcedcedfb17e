// Shape, texts and the data source of a FlexGrid.

#include "controls/ControlError.h"
#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include "lang/Text.h"
#include <QScrollBar>
#include <algorithm>
#include <numeric>

void FlexGrid::Body::CheckRow(qint64 r) const
{
    if (r < 0 || r >= rows)
        throw ControlError(ctlErrSubscript, QStringLiteral("Row value out of range"));
}

void FlexGrid::Body::CheckCol(int c) const
{
    if (c < 0 || c >= cols)
        throw ControlError(ctlErrSubscript, QStringLiteral("Column value out of range"));
}

qint64 FlexGrid::Body::Id(qint64 r) const
{
    if (hierarchical) {
        const FlexBandTree::Place place = tree.At(r);
        return place.node->IdOf(place.entry);
    }
    return order.empty() ? r : qint64(order[size_t(r)]);
}

bool FlexGrid::Body::IsNames(qint64 r) const
{
    if (hierarchical)
        return BandRow(r).record == -1;
    return source && r == 0;
}

// The recordset's cell behind a cell of the view; false where there is none.
bool FlexGrid::Body::Source(qint64 r, int c, ADODB::Recordset **recordset, qint64 *record, int *field) const
{
    if (!source || c < 1)
        return false;
    *field = c - 1;
    if (hierarchical) {
        const FlexBandRow line = BandRow(r);
        const std::vector<int> &fields = bands[size_t(line.band)].fields;
        if (!line.recordset || line.record < -1 || size_t(*field) >= fields.size())
            return false;
        *recordset = line.recordset;
        *record = line.record;
        *field = fields[size_t(*field)];
    } else {
        const qint64 id = Id(r);
        if (id > boundRows || *field >= source->ColumnCount())
            return false;
        *recordset = source.get();
        *record = id - 1;
    }
    return *record < (*recordset)->RowCount();
}

QString FlexGrid::Body::CellText(qint64 r, int c) const
{
    if (!source) {
        const std::vector<QString> &line = lines[size_t(Id(r))];
        return size_t(c) < line.size() ? line[size_t(c)] : QString();
    }
    if (!written.isEmpty()) {
        const auto own = written.constFind({Id(r), c});
        if (own != written.cend())
            return *own;
    }
    ADODB::Recordset *recordset = nullptr;
    qint64 record = 0;
    int field = 0;
    if (!Source(r, c, &recordset, &record, &field))
        return {};
    return record < 0 ? recordset->Column(field).Name : recordset->CellText(record, field);
}

// Never makes more of a value than is asked for: a cell may hold many megabytes, and is painted again and again.
QString FlexGrid::Body::ShownText(qint64 r, int c, qint64 most) const
{
    ADODB::Recordset *recordset = nullptr;
    qint64 record = 0;
    int field = 0;
    if (source && (written.isEmpty() || !written.contains({Id(r), c})) && Source(r, c, &recordset, &record, &field) &&
        record >= 0)
        return ADODB::CellStart(*recordset, record, field, most);
    const QString text = CellText(r, c);
    return text.size() > most ? text.left(most) : text;
}

bool FlexGrid::Body::IsNull(qint64 r, int c) const
{
    ADODB::Recordset *recordset = nullptr;
    qint64 record = 0;
    int field = 0;
    return source && Source(r, c, &recordset, &record, &field) && record >= 0 && recordset->CellIsNull(record, field) &&
           !written.contains({Id(r), c});
}

void FlexGrid::Body::MakeOrder()
{
    if (!order.empty() || hierarchical)
        return;
    order.resize(size_t(rows));
    std::iota(order.begin(), order.end(), quint32(0));
    nextId = std::max({nextId, rows, boundRows + 1});
}

void FlexGrid::Body::ShiftHeights(qint64 from, qint64 by)
{
    if (heights.isEmpty() || heights.lastKey() < from)
        return;
    QMap<qint64, int> moved;
    for (auto it = heights.cbegin(); it != heights.cend(); ++it) {
        if (it.key() < from)
            moved.insert(it.key(), it.value());
        else if (by > 0 || it.key() >= from - by) // rows that went away take their heights along
            moved.insert(it.key() + by, it.value());
    }
    heights = moved;
}

void FlexGrid::Body::Reset()
{
    source = nullptr;
    boundRows = 0;
    order.clear();
    written.clear();
    colours.clear();
    hierarchical = false;
    tree.Reset();
    sort = 0;
    sortCol = -1;
}

void FlexGrid::Body::Rebind()
{
    boundRows = source->RowCount();
    hierarchical = false;
    for (int field = 0; field < source->ColumnCount(); ++field)
        hierarchical = hierarchical || source->Column(field).Type == ADODB::adChapter;
    rows =
        std::max<qint64>(boundRows, 1) + 1; // without a record an empty row, so that the names are measured and shown
    cols = source->ColumnCount() + 1;
    nextId = rows;
    if (hierarchical)
        BindBands();
    else
        bands.resize(1);
}

bool FlexGridAccessInstalled();

FlexGrid::FlexGrid(QWidget *parent) : QAbstractScrollArea(parent), m(std::make_unique<Body>(this))
{
    FlexGridAccessInstalled();
    m->lines.resize(2);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m->Stale();
}

FlexGrid::~FlexGrid() = default;

qint64 FlexGrid::Rows() const
{
    return m->rows;
}

void FlexGrid::SetRows(qint64 rows)
{
    if (rows < 0)
        throw ControlError(ctlErrSubscript, QStringLiteral("Row value out of range"));
    if (rows == m->rows)
        return;
    if (m->hierarchical) {
        m->tree.Cut(rows);
        while (m->tree.Rows() < rows)
            m->tree.Insert(m->tree.Rows(), m->nextId++);
    } else if (m->order.empty() && !m->source) {
        m->lines.resize(size_t(rows));
        m->nextId = rows;
        m->colours.removeIf([rows](auto cell) { return cell.key().first >= rows; });
    } else if (!m->order.empty()) {
        m->order.resize(size_t(std::min(rows, m->rows)));
        while (qint64(m->order.size()) < rows)
            m->order.push_back(quint32(m->nextId++));
        if (!m->source)
            m->lines.resize(size_t(m->nextId));
    }
    m->rows = rows;
    while (!m->heights.isEmpty() && m->heights.lastKey() >= rows)
        m->heights.remove(m->heights.lastKey());
    m->Clamp();
    m->Stale();
}

int FlexGrid::Cols() const
{
    return m->cols;
}

void FlexGrid::SetCols(int cols)
{
    if (cols < 0)
        throw ControlError(ctlErrSubscript, QStringLiteral("Column value out of range"));
    if (cols < m->cols)
        for (std::vector<QString> &line : m->lines)
            if (line.size() > size_t(cols))
                line.resize(size_t(cols));
    m->cols = cols;
    if (m->widths.size() > size_t(cols))
        m->widths.resize(size_t(cols));
    m->Clamp();
    m->Stale();
}

qint64 FlexGrid::FixedRows() const
{
    return m->fixedRows;
}

void FlexGrid::SetFixedRows(qint64 rows)
{
    if (rows < 0)
        throw ControlError(ctlErrSubscript, QStringLiteral("Row value out of range"));
    m->fixedRows = rows;
    m->topRow = std::max(m->topRow, m->FrozenRows());
    if (rows == 0)
        m->topRow = m->FrozenRows();
    m->Stale();
}

int FlexGrid::FixedCols() const
{
    return m->fixedCols;
}

void FlexGrid::SetFixedCols(int cols)
{
    if (cols < 0)
        throw ControlError(ctlErrSubscript, QStringLiteral("Column value out of range"));
    m->fixedCols = cols;
    m->Stale();
}

qint64 FlexGrid::RecordCount() const
{
    if (m->hierarchical)
        return m->boundRows;
    const qint64 others = !m->source ? m->fixedRows : m->boundRows > 0 ? 1 : 2; // the names, the empty row
    return std::max<qint64>(0, m->rows - others);
}

QString FlexGrid::TextMatrix(qint64 row, int col) const
{
    m->CheckRow(row);
    m->CheckCol(col);
    return m->CellText(row, col);
}

void FlexGrid::SetTextMatrix(qint64 row, int col, const QString &text)
{
    m->CheckRow(row);
    m->CheckCol(col);
    if (m->source) {
        // What the recordset answers anyway is not kept: writing a whole result over itself costs no memory.
        m->written.remove({m->Id(row), col});
        if (m->CellText(row, col) != text)
            m->written.insert({m->Id(row), col}, text);
    } else {
        std::vector<QString> &line = m->lines[size_t(m->Id(row))];
        if (line.size() <= size_t(col))
            line.resize(size_t(col) + 1);
        line[size_t(col)] = text;
    }
    viewport()->update();
}

bool FlexGrid::CellIsNull(qint64 row, int col) const
{
    m->CheckRow(row);
    m->CheckCol(col);
    return m->IsNull(row, col);
}

QString FlexGrid::CellStart(qint64 row, int col, qint64 most) const
{
    m->CheckRow(row);
    m->CheckCol(col);
    return m->ShownText(row, col, most);
}

ADODB::CellReader FlexGrid::ReadCell(qint64 row, int col) const
{
    m->CheckRow(row);
    m->CheckCol(col);
    ADODB::Recordset *recordset = nullptr;
    qint64 record = 0;
    int field = 0;
    if (m->source && !m->written.contains({m->Id(row), col}) && m->Source(row, col, &recordset, &record, &field) &&
        record >= 0)
        return ADODB::CellReader(recordset->shared_from_this(), record, field);
    return ADODB::CellReader(m->CellText(row, col));
}

QString FlexGrid::Text() const
{
    const bool there = m->row >= 0 && m->row < m->rows && m->col >= 0 && m->col < m->cols;
    return there ? m->CellText(m->row, m->col) : QString();
}

void FlexGrid::AddItem(const QString &text, qint64 index)
{
    if (index > m->rows)
        throw ControlError(ctlErrSubscript, QStringLiteral("Row value out of range"));
    const qint64 at = index < 0 ? m->rows : index;
    SetRows(m->rows + 1);
    if (at < m->rows - 1) {
        m->MakeOrder();
        m->ShiftHeights(at, 1);
        if (m->hierarchical) {
            m->tree.Erase(m->rows - 1);
            m->tree.Insert(at, m->nextId++);
        } else {
            std::rotate(m->order.begin() + at, m->order.end() - 1, m->order.end());
        }
    }
    const QStringList cells = lang::Split(text, QStringLiteral("\t"));
    for (int c = 0; c < int(cells.size()) && c < m->cols; ++c)
        if (!cells[c].isEmpty())
            SetTextMatrix(at, c, cells[c]);
    m->Stale();
}

void FlexGrid::RemoveItem(qint64 row)
{
    m->CheckRow(row);
    const qint64 id = m->Id(row);
    if (m->hierarchical) {
        Collapse(row);
        m->tree.Erase(row);
    } else {
        m->MakeOrder();
        if (!m->source)
            m->lines[size_t(id)].clear();
        m->order.erase(m->order.begin() + row);
    }
    for (int c = 0; c < m->cols; ++c) {
        m->written.remove({id, c});
        m->colours.remove({id, c});
    }
    m->ShiftHeights(row, -1);
    --m->rows;
    m->Clamp();
    m->Stale();
}

void FlexGrid::Clear()
{
    m->Reset();
    m->lines.assign(size_t(m->rows), {});
    m->nextId = m->rows;
    m->heights.clear();
    m->Stale();
    emit DataChanged();
}

void FlexGrid::ClearStructure()
{
    m->Reset();
    m->rows = 2;
    m->cols = 2;
    m->fixedRows = 1;
    m->fixedCols = 1;
    m->lines.assign(2, {});
    m->nextId = 2;
    m->heights.clear();
    m->widths.clear();
    m->aligns.clear();
    m->format.clear();
    m->bands.assign(1, {});
    m->topRow = 1;
    m->SetBlock(1, 1, 1, 1);
    m->Stale();
    emit DataChanged();
}

QString FlexGrid::FormatString() const
{
    return m->format;
}

void FlexGrid::SetFormatString(const QString &format)
{
    m->format = format;
    const QStringList heads = lang::Split(format, QStringLiteral("|"));
    if (heads.size() > m->cols)
        SetCols(int(heads.size()));
    if (m->rows < 1)
        SetRows(1);
    for (int c = 0; c < int(heads.size()); ++c) {
        QString head = heads[c];
        FlexAlign align = flexAlignLeft;
        if (!head.isEmpty() && QStringLiteral("<^>").contains(head[0])) {
            align = head[0] == u'^' ? flexAlignCenter : head[0] == u'>' ? flexAlignRight : flexAlignLeft;
            head.remove(0, 1);
        }
        SetColAlignment(c, align);
        SetTextMatrix(0, c, lang::Trim(head));
        SetColWidth(c, ToTwips(fontMetrics().horizontalAdvance(head)) + 120);
    }
}

void FlexGrid::SetDataSource(const ADODB::RecordsetPtr &recordset)
{
    m->Reset();
    m->heights.clear();
    m->source = recordset;
    if (recordset && recordset->ColumnCount() > 0) {
        m->lines.clear();
        m->Rebind();
    } else {
        m->source = nullptr;
        m->rows = recordset ? 1 : 2;
        m->cols = 2;
        m->lines.assign(size_t(m->rows), {});
        m->nextId = m->rows;
    }
    if (m->widths.size() > size_t(m->cols))
        m->widths.resize(size_t(m->cols));
    m->topRow = m->FrozenRows();
    horizontalScrollBar()->setValue(0);
    const qint64 row = std::min(m->FrozenRows(), m->rows - 1);
    const int col = std::min(m->FrozenCols(), m->cols - 1);
    m->Stale();
    m->SetBlock(row, col, row, col);
    emit DataChanged();
}

ADODB::RecordsetPtr FlexGrid::DataSource() const
{
    return m->source;
}
