// Shape, geometry and scrolling of a DataGrid. Rows scroll by rows, so that any count of them fits a scroll bar;
// columns scroll by pixels.

#include "controls/DataGridBody.h"
#include "controls/Twips.h"
#include <QAccessible>
#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

bool DataGridAccessInstalled();

namespace {

constexpr int kLeastColumn = 24, kMostColumn = 320; // pixels of a column that nobody has drawn wider
constexpr qint64 kMeasured = 40;                    // rows that a width is taken from

} // namespace

DataGrid::DataGrid(QWidget *parent) : QAbstractScrollArea(parent), m(std::make_unique<Body>(this))
{
    DataGridAccessInstalled();
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    viewport()->setMouseTracking(true);
    m->editor = new CellEditor(viewport());
    connect(m->editor, &CellEditor::GivenUp, this, [this] { EndEdit(false); });
    connect(m->editor, &CellEditor::Left, this, [this] { EndEdit(true); });
    connect(m->editor, &CellEditor::textChanged, this, [this] { m->PlaceEditor(); });
    connect(m->editor, &CellEditor::Done, this, [this](int key) {
        if (!EndEdit(true))
            return;
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
            m->Step(key == Qt::Key_Tab);
        else if (key != Qt::Key_Return)
            SetCurrentCell(m->row + (key == Qt::Key_Down ? 1 : -1), m->col);
    });
    connect(m->editor, &CellEditor::LongText, this, [this](const QString &text) {
        // All of the value gives way, or the text would have to go through the editor.
        const QTextCursor cursor = m->editor->textCursor();
        if (cursor.selectionEnd() - cursor.selectionStart() < m->editor->document()->characterCount() - 1) {
            m->Tell(ADODB::adErrInvalidArgument, tr("The text is too long for the editor of a cell: select all of the "
                                                    "value, or leave the editor, and paste again."));
            return;
        }
        EndEdit(false);
        SetCellText(text);
    });
    m->UpdateBars();
}

DataGrid::~DataGrid()
{
    m->editor->disconnect(this);
}

CellEditor *DataGrid::Editor() const
{
    return m->editor;
}

void DataGrid::SetDataSource(const ADODB::RecordsetPtr &recordset)
{
    EndEdit(false);
    SetFrozen(false);
    m->source = recordset && recordset->State() != ADODB::adStateClosed ? recordset : nullptr;
    m->row = m->rowSel = m->top = 0;
    m->col = m->colSel = 0;
    m->wholeRows = false;
    m->widths.assign(m->source ? size_t(m->source->ColumnCount()) : 0, 0);
    for (int c = 0; c < Cols(); ++c)
        FitColumn(c);
    horizontalScrollBar()->setValue(0);
    m->FollowRow();
    Refresh();
    emit RowColChange();
}

ADODB::RecordsetPtr DataGrid::DataSource() const
{
    return m->source;
}

void DataGrid::Refresh()
{
    m->Clamp();
    m->UpdateBars();
    m->PlaceEditor();
    viewport()->update();
}

void DataGrid::SetReadOnly(const QString &why)
{
    m->readOnly = why;
    Refresh();
}

void DataGrid::SetFrozen(bool frozen)
{
    if (m->frozen == frozen)
        return;
    if (frozen) {
        m->frozenRows = Rows();
        m->picture = viewport()->grab();
    } else {
        m->picture = {};
    }
    m->frozen = frozen;
    Refresh();
}

bool DataGrid::IsFrozen() const
{
    return m->frozen;
}

QString DataGrid::Caption() const
{
    return m->caption;
}

void DataGrid::SetCaption(const QString &caption)
{
    m->caption = caption;
    setAccessibleName(caption);
}

qint64 DataGrid::Rows() const
{
    return m->frozen ? m->frozenRows : m->source ? m->source->RowCount() : 0;
}

int DataGrid::Cols() const
{
    return int(m->widths.size());
}

QString DataGrid::ColCaption(int col) const
{
    return m->source && col >= 0 && col < Cols() ? m->source->Column(col).Name : QString();
}

int DataGrid::ColWidth(int col) const
{
    return col >= 0 && col < Cols() ? ToTwips(m->widths[size_t(col)]) : 0;
}

void DataGrid::SetColWidth(int col, int twips)
{
    if (col < 0 || col >= Cols())
        return;
    m->widths[size_t(col)] = std::max(ToPixels(twips), 4);
    Refresh();
}

void DataGrid::FitColumn(int col)
{
    if (!m->Live() || col < 0 || col >= Cols())
        return;
    const QFontMetrics metrics = fontMetrics();
    int width = metrics.horizontalAdvance(ColCaption(col).left(200));
    const qint64 last = std::min(m->top + std::max(m->RowsInView(), kMeasured), Rows());
    for (qint64 r = m->top; r < last; ++r)
        width = std::max(width, metrics.horizontalAdvance(m->Start(r, col, 200)));
    m->widths[size_t(col)] = std::clamp(width + 14, kLeastColumn, kMostColumn);
    Refresh();
}

qint64 DataGrid::Row() const
{
    return m->row;
}

int DataGrid::Col() const
{
    return m->col;
}

qint64 DataGrid::RowSel() const
{
    return m->rowSel;
}

int DataGrid::ColSel() const
{
    return m->colSel;
}

bool DataGrid::IsNewRow() const
{
    return m->Live() && m->row == Rows();
}

qint64 DataGrid::TopRow() const
{
    return m->top;
}

bool DataGrid::SetCurrentCell(qint64 row, int col)
{
    if (!EndEdit(true))
        return false;
    m->SetBlock(row, col, row, col, false);
    EnsureVisible(m->row, m->col);
    return true;
}

void DataGrid::Select(qint64 row, int col, qint64 rowSel, int colSel)
{
    if (EndEdit(true))
        m->SetBlock(row, col, rowSel, colSel, false);
}

void DataGrid::Body::SetBlock(qint64 r, int c, qint64 rSel, int cSel, bool whole)
{
    const qint64 formerRow = row;
    const int formerCol = col;
    row = r;
    col = c;
    rowSel = rSel;
    colSel = cSel;
    wholeRows = whole;
    Clamp();
    q->viewport()->update();
    if (row != formerRow)
        FollowRow();
    if (row != formerRow || col != formerCol)
        Moved();
}

void DataGrid::Body::Moved()
{
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(q, QVariant());
        QAccessible::updateAccessibility(&event);
    }
    emit q->RowColChange();
}

// The recordset's current row goes with the grid's.
void DataGrid::Body::FollowRow()
{
    if (!IsRecord(row))
        return;
    try {
        source->SetAbsolutePosition(row + 1);
    } catch (const ADODB::Error &) { // it has gone: nothing to stand on
    }
}

bool DataGrid::Body::HasNewRow() const
{
    if (!source || !readOnly.isEmpty())
        return false;
    return frozen || source->LockType() != ADODB::adLockReadOnly;
}

void DataGrid::Body::Clamp()
{
    const qint64 lastRow = std::max<qint64>(0, Lines() - 1);
    const int lastCol = std::max(0, q->Cols() - 1);
    row = std::clamp<qint64>(row, 0, lastRow);
    rowSel = std::clamp<qint64>(rowSel, 0, lastRow);
    col = std::clamp(col, 0, lastCol);
    colSel = std::clamp(colSel, 0, lastCol);
}

bool DataGrid::Body::InBlock(qint64 r, int c) const
{
    return r >= std::min(row, rowSel) && r <= std::max(row, rowSel) &&
           (wholeRows || (c >= std::min(col, colSel) && c <= std::max(col, colSel)));
}

int DataGrid::Body::RowHeight() const
{
    return q->fontMetrics().height() + 6;
}

int DataGrid::Body::HeadWidth() const
{
    return q->fontMetrics().height() + 12;
}

qint64 DataGrid::Body::RowsInView() const
{
    return std::max(1, (q->viewport()->height() - RowHeight()) / RowHeight());
}

int DataGrid::Body::ColX(int c) const
{
    int x = HeadWidth() - q->horizontalScrollBar()->value();
    for (int i = 0; i < c && i < q->Cols(); ++i)
        x += widths[size_t(i)];
    return x;
}

void DataGrid::Body::UpdateBars()
{
    int across = HeadWidth();
    for (const int width : widths)
        across += width;
    const qint64 most = std::max<qint64>(0, Lines() - RowsInView());
    QScrollBar *const down = q->verticalScrollBar(), *const side = q->horizontalScrollBar();
    down->setRange(0, int(std::min<qint64>(most, INT_MAX)));
    down->setPageStep(int(RowsInView()));
    side->setRange(0, std::max(0, across - q->viewport()->width()));
    side->setPageStep(q->viewport()->width());
    side->setSingleStep(20);
    top = down->value();
}

void DataGrid::EnsureVisible(qint64 row, int col)
{
    if (row < m->top)
        verticalScrollBar()->setValue(int(row));
    else if (row >= m->top + m->RowsInView())
        verticalScrollBar()->setValue(int(row - m->RowsInView() + 1));
    if (col < 0 || col >= Cols())
        return;
    const int left = m->ColX(col), right = left + m->widths[size_t(col)], bar = horizontalScrollBar()->value();
    if (left < m->HeadWidth() || right - left > viewport()->width() - m->HeadWidth())
        horizontalScrollBar()->setValue(bar + left - m->HeadWidth());
    else if (right > viewport()->width())
        horizontalScrollBar()->setValue(bar + right - viewport()->width());
}

QRect DataGrid::CellRect(qint64 row, int col) const
{
    if (row < m->top || row >= m->Lines() || col < 0 || col >= Cols())
        return {};
    const qint64 y = (row - m->top + 1) * m->RowHeight();
    if (y >= viewport()->height())
        return {};
    const QRect cell(m->ColX(col), int(y), m->widths[size_t(col)], m->RowHeight());
    const QRect shown = cell & QRect(m->HeadWidth(), 0, viewport()->width() - m->HeadWidth(), viewport()->height());
    return shown.isEmpty() ? QRect() : shown;
}

qint64 DataGrid::RowAt(int y) const
{
    if (y < m->RowHeight())
        return -1;
    const qint64 row = m->top + y / m->RowHeight() - 1;
    return row < m->Lines() ? row : -1;
}

int DataGrid::ColAt(int x) const
{
    if (x < m->HeadWidth())
        return -1;
    int edge = m->ColX(0);
    for (int c = 0; c < Cols(); ++c) {
        edge += m->widths[size_t(c)];
        if (x < edge)
            return c;
    }
    return -1;
}

QString DataGrid::CellLabel(qint64 row, int col) const
{
    return tr("%1, row %2").arg(ColCaption(col)).arg(row + 1);
}

void DataGrid::Body::PlaceEditor()
{
    if (editor->isHidden())
        return;
    const QRect cell = q->CellRect(row, col);
    if (cell.isNull()) {
        editor->move(-10000, 0); // scrolled away; it keeps the keyboard
        return;
    }
    // As wide as the cell, wider for what does not fit there, and within the view.
    int wanted = cell.width();
    for (QTextBlock block = editor->document()->firstBlock(); block.isValid() && wanted < kMostColumn;
         block = block.next())
        wanted = std::max(wanted, q->fontMetrics().horizontalAdvance(block.text().left(200)) + 16);
    wanted = std::min(wanted, std::max(cell.width(), kMostColumn));
    const int lines = editor->LinesShown();
    const int height = lines == 1 ? RowHeight() + 1 : lines * q->fontMetrics().lineSpacing() + 8;
    QRect place(cell.left() - 1, cell.top() - 1, wanted + 1, height);
    place.moveLeft(std::max(0, std::min(place.left(), q->viewport()->width() - place.width())));
    if (place.bottom() > q->viewport()->height())
        place.moveTop(std::max(0, q->viewport()->height() - place.height()));
    editor->setGeometry(place);
}

void DataGrid::scrollContentsBy(int, int)
{
    if (m->frozen)
        return;
    m->top = verticalScrollBar()->value();
    m->PlaceEditor();
    viewport()->update();
}

void DataGrid::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    Refresh();
}

void DataGrid::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        Refresh();
}

QSize DataGrid::sizeHint() const
{
    return {480, 280};
}
