#include "controls/ListView.h"
#include "controls/ControlError.h"
#include "controls/ListModel.h"
#include "controls/RowDelegate.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <algorithm>

namespace {

// The frame of the focus is drawn round the whole row, by the list; a cell has none of its own.
class ListRowDelegate : public RowDelegate
{
public:
    using RowDelegate::RowDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        RowDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

} // namespace

ListView::ListView(QWidget *parent) : QTableView(parent), m_model(new ListModel(this))
{
    setModel(m_model);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new ListRowDelegate(this));
    setAccessibleName(QStringLiteral("List"));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setHighlightSections(false);
    header()->setMinimumSectionSize(8);
    FitRows();
    disconnect(header(), &QHeaderView::sectionPressed, this, nullptr); // a head sorts; it selects nothing
    connect(header(), &QHeaderView::sectionClicked, this, &ListView::ColumnClick);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex &index) { emit ItemClick(index.row()); });
}

ListView::~ListView() = default;

int ListView::AddColumn(const QString &text, int widthTwips)
{
    m_model->AddColumn(text);
    const int column = ColumnCount() - 1;
    setColumnWidth(column, std::max(8, ToPixels(widthTwips)));
    return column;
}

void ListView::ClearColumns()
{
    m_model->ClearColumns();
}

int ListView::ColumnCount() const
{
    return m_model->columnCount();
}

static void CheckColumn(const ListView *list, int column)
{
    if (column < 0 || column >= list->ColumnCount())
        throw ControlError(ctlErrIndex, QStringLiteral("Index out of bounds"));
}

QString ListView::ColumnText(int column) const
{
    CheckColumn(this, column);
    return m_model->Head(column);
}

void ListView::SetColumnText(int column, const QString &text)
{
    CheckColumn(this, column);
    m_model->SetHead(column, text);
}

int ListView::ColumnWidth(int column) const
{
    CheckColumn(this, column);
    return ToTwips(columnWidth(column));
}

void ListView::SetColumnWidth(int column, int twips)
{
    CheckColumn(this, column);
    setColumnWidth(column, std::max(8, ToPixels(twips)));
}

int ListView::ListWidth() const
{
    return ToTwips(viewport()->width());
}

void ListView::setHeaderHidden(bool hidden)
{
    header()->setHidden(hidden);
}

bool ListView::isHeaderHidden() const
{
    return header()->isHidden();
}

void ListView::FitRows()
{
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    verticalHeader()->setMinimumSectionSize(8);
    verticalHeader()->setDefaultSectionSize(std::max(fontMetrics().height() + 5, icon + 2));
}

qint64 ListView::Count() const
{
    return m_model->Count();
}

qint64 ListView::AddItem(const QString &text, const QString &tag)
{
    return m_model->Append(text, tag);
}

void ListView::AddBlock(ListBlock block)
{
    m_model->AppendBlock(std::move(block));
}

void ListView::RemoveItem(qint64 row)
{
    m_model->Check(row);
    m_model->Remove(row);
}

void ListView::Clear()
{
    m_model->Clear();
}

QString ListView::SubItem(qint64 row, int column) const
{
    m_model->Check(row);
    return m_model->Text(row, column);
}

void ListView::SetSubItem(qint64 row, int column, const QString &text)
{
    m_model->Check(row);
    if (column < 0)
        throw ControlError(ctlErrIndex, QStringLiteral("Index out of bounds"));
    std::vector<QString> &cells = m_model->Write(row).cells;
    if (cells.size() <= size_t(column))
        cells.resize(size_t(column) + 1);
    cells[size_t(column)] = text;
    m_model->Changed(row);
}

QString ListView::Tag(qint64 row) const
{
    m_model->Check(row);
    return m_model->Tag(row);
}

void ListView::SetTag(qint64 row, const QString &tag)
{
    m_model->Check(row);
    m_model->Write(row).tag = tag;
}

void ListView::SetImage(qint64 row, int image)
{
    m_model->Check(row);
    m_model->Write(row).image = image;
    m_model->Changed(row);
}

int ListView::AddImage(const QString &, const QIcon &icon)
{
    m_model->images.push_back(icon);
    return int(m_model->images.size());
}

void ListView::ShowSortMark()
{
    header()->setSortIndicatorShown(m_model->sorted);
    if (m_model->sorted)
        header()->setSortIndicator(m_model->key,
                                   m_model->direction == lvwAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

bool ListView::Sorted() const
{
    return m_model->sorted;
}

void ListView::SetSorted(bool sorted)
{
    m_model->sorted = sorted;
    m_model->Arrange();
    ShowSortMark();
}

int ListView::SortKey() const
{
    return m_model->key;
}

void ListView::SetSortKey(int column)
{
    CheckColumn(this, column);
    m_model->key = column;
    m_model->Arrange();
    ShowSortMark();
}

ListSortOrder ListView::SortOrder() const
{
    return m_model->direction;
}

void ListView::SetSortOrder(ListSortOrder order)
{
    m_model->direction = order;
    m_model->Arrange();
    ShowSortMark();
}

bool ListView::SortBy(int column, ListSortOrder order, const std::function<bool()> &keepOn)
{
    CheckColumn(this, column);
    const QPointer<ListView> alive(this);
    if (!m_model->SortBy(column, order, keepOn) || !alive)
        return false;
    ShowSortMark();
    return true;
}

bool ListView::MultiSelect() const
{
    return selectionMode() == ExtendedSelection;
}

void ListView::SetMultiSelect(bool on)
{
    setSelectionMode(on ? ExtendedSelection : SingleSelection);
}

qint64 ListView::SelectedRow() const
{
    const QItemSelectionModel *const selection = selectionModel();
    const QModelIndex current = selection->currentIndex();
    if (current.isValid() && selection->isRowSelected(current.row(), {}))
        return current.row();
    const QList<qint64> rows = SelectedRows();
    return rows.isEmpty() ? -1 : rows.first();
}

void ListView::SelectRow(qint64 row)
{
    if (row < 0) {
        selectionModel()->clear();
        return;
    }
    m_model->Check(row);
    selectionModel()->setCurrentIndex(m_model->index(int(row), 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QList<qint64> ListView::SelectedRows() const
{
    QList<qint64> rows; // from the ranges: a million selected rows are one of them
    for (const QItemSelectionRange &range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows << row;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

bool ListView::IsSelected(qint64 row) const
{
    m_model->Check(row);
    return selectionModel()->isRowSelected(int(row), {});
}

void ListView::SelectAllRows()
{
    if (Count() == 0 || ColumnCount() == 0)
        return;
    selectionModel()->select(QItemSelection(m_model->index(0, 0), m_model->index(int(Count()) - 1, ColumnCount() - 1)),
                             QItemSelectionModel::ClearAndSelect);
}

void ListView::EnsureVisible(qint64 row)
{
    m_model->Check(row);
    executeDelayedItemsLayout(); // rows that have just come have no place yet
    scrollTo(m_model->index(int(row), 0));
}

qint64 ListView::FindItem(const QString &text, qint64 from, bool partial) const
{
    for (qint64 row = std::max<qint64>(0, from); row < Count(); ++row) {
        const QString candidate = m_model->Text(row, 0);
        if (partial ? candidate.startsWith(text, Qt::CaseInsensitive)
                    : candidate.compare(text, Qt::CaseInsensitive) == 0)
            return row;
    }
    return -1;
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const auto scroll = [this](int sign) {
        QScrollBar *const bar = horizontalScrollBar();
        bar->setValue(bar->value() + sign * bar->singleStep());
        return currentIndex();
    };
    switch (action) {
    case MoveHome:
        return m_model->index(0, 0);
    case MoveEnd:
        return m_model->index(int(Count()) - 1, 0);
    case MoveLeft:
        return scroll(-1);
    case MoveRight:
        return scroll(1);
    default:
        return QTableView::moveCursor(action, modifiers);
    }
}

void ListView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitRows();
}

// Beyond the last column: a selected row is marked to the edge, and the focus is a frame round the whole row.
void ListView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    const int end = header()->length() - header()->offset();
    const bool live = hasFocus() || QApplication::activeWindow() == window();
    const QColor mark = palette().color(live ? QPalette::Active : QPalette::Inactive, QPalette::Highlight);
    for (int row = rowAt(0); row >= 0 && row < Count() && rowViewportPosition(row) < viewport()->height(); ++row)
        if (end < viewport()->width() && IsSelected(row))
            painter.fillRect(end, rowViewportPosition(row), viewport()->width() - end, rowHeight(row), mark);
    const QModelIndex current = currentIndex();
    if (!hasFocus() || !current.isValid())
        return;
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.state |= QStyle::State_KeyboardFocusChange | QStyle::State_HasFocus;
    frame.backgroundColor = IsSelected(current.row()) ? mark : palette().color(QPalette::Base);
    frame.rect = QRect(0, rowViewportPosition(current.row()), viewport()->width(), rowHeight(current.row()));
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

void ListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit DblClick();
}

void ListView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    viewport()->update(); // the mark goes on beyond the cells
    emit SelectionChange();
}

void ListView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    viewport()->update(); // the frame goes round the row, not the cell
}
