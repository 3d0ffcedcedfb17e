#pragma once
// A list of rows with sub-items under column headers (report view). Owned by its parent. Interface thread.
//
// Rows and columns count from 0; column 0 is the row's own text, sub-items are columns 1 and up. Widths are twips.
// Rows that come from a recordset keep no text: the recordset answers when a cell is shown, so a million rows are there
// at once. The list shares ownership of such recordsets. Rows or columns out of range raise ControlError 35600.
//
// It is built on Qt's table and not on its tree: a tree visits every row whenever the rows change, a table
// only those that are visible. Keys act as in a list: Home and End go to the first and last row, Left and Right scroll.

#include "ado/Recordset.h"
#include <QStringList>
#include <QTableView>
#include <functional>
#include <memory>

enum ListSortOrder
{
    lvwAscending = 0,
    lvwDescending = 1
};

// How a block of recordset rows becomes list rows. Called for visible cells, for sorting and for reading back.
struct ListBlock
{
    ADODB::RecordsetPtr Recordset;
    qint64 First = 0, Count = 0; // rows of the recordset
    // Text of a cell; without one, column N is field N.
    std::function<QString(ADODB::Recordset &recordset, qint64 row, int column)> Text;
    std::function<QString(ADODB::Recordset &recordset, qint64 row)> Tag; // without one, ""
    int Image = 0;                                                       // number in the image list, 0 for none
};

class ListModel;
class QHeaderView;

class ListView : public QTableView
{
    Q_OBJECT
public:
    explicit ListView(QWidget *parent = nullptr);
    ~ListView() override;

    int AddColumn(const QString &text, int widthTwips = 1440); // gives its number
    void ClearColumns();
    int ColumnCount() const;
    QString ColumnText(int column) const;
    void SetColumnText(int column, const QString &text);
    int ColumnWidth(int column) const;
    void SetColumnWidth(int column, int twips);
    int ListWidth() const; // inner width in twips, without the scroll bar
    QHeaderView *header() const { return horizontalHeader(); }
    void setHeaderHidden(bool hidden);
    bool isHeaderHidden() const;

    qint64 Count() const;
    qint64 AddItem(const QString &text, const QString &tag = {}); // at the end, or at its place in a sorted list
    void AddBlock(ListBlock block);                               // appends Count rows
    void RemoveItem(qint64 row);
    void Clear(); // rows only

    QString Text(qint64 row) const { return SubItem(row, 0); }
    void SetText(qint64 row, const QString &text) { SetSubItem(row, 0, text); }
    QString SubItem(qint64 row, int column) const;
    void SetSubItem(qint64 row, int column, const QString &text);
    QString Tag(qint64 row) const;
    void SetTag(qint64 row, const QString &tag);
    void SetImage(qint64 row, int image);
    int AddImage(const QString &key, const QIcon &icon); // numbers count from 1

    // Sorting is by the text of the key column, without regard to case; equal rows keep their order.
    bool Sorted() const;
    void SetSorted(bool sorted);
    int SortKey() const;
    void SetSortKey(int column);
    ListSortOrder SortOrder() const;
    void SetSortOrder(ListSortOrder order);
    // All three at once, with one sort. `keepOn` is asked every few thousand steps and may process events; when it
    // gives false, or the rows change meanwhile, the list stays as it was and false is returned.
    bool SortBy(int column, ListSortOrder order, const std::function<bool()> &keepOn = {});

    bool MultiSelect() const;
    void SetMultiSelect(bool on);
    qint64 SelectedRow() const;         // the current one, -1 when none is selected
    void SelectRow(qint64 row);         // alone, and current; -1 selects nothing
    QList<qint64> SelectedRows() const; // ascending
    bool IsSelected(qint64 row) const;
    void SelectAllRows();
    void EnsureVisible(qint64 row);

    // The first row at or behind `from` whose text (column 0) begins with `text`, or equals it when not partial,
    // without regard to case; -1 when there is none.
    qint64 FindItem(const QString &text, qint64 from = 0, bool partial = true) const;

signals:
    void ColumnClick(int column);
    void ItemClick(qint64 row);
    void DblClick(); // also on empty ground
    void SelectionChange();

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    void ShowSortMark();
    void FitRows(); // their height, by the font
    ListModel *m_model;
};
