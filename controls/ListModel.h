#pragma once
// The rows of a ListView; for the list's own sources only.
//
// A row is an entry of the list: either its own texts, or a place in a block of recordset rows. Writing into a row of a
// block gives it texts of its own. Sorting permutes the entries' numbers.

#include "controls/ListView.h"
#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <vector>

class ListModel : public QAbstractItemModel
{
public:
    using QAbstractItemModel::QAbstractItemModel;

    struct Own
    {
        std::vector<QString> cells;
        QString tag;
        int image = 0;
    };

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &) const override { return {}; }
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(m_count); }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_heads.size());
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override { return !parent.isValid(); }

    void AddColumn(const QString &text);
    void ClearColumns();
    void SetHead(int column, const QString &text);
    QString Head(int column) const { return m_heads.at(column); }

    void Check(qint64 row) const;
    qint64 Count() const { return m_count; }
    QString Text(qint64 row, int column) const { return EntryText(Entry(row), column); }
    QString Tag(qint64 row) const;
    int Image(qint64 row) const;
    Own &Write(qint64 row); // the row's own texts, made when it has none yet
    void Changed(qint64 row);
    qint64 Append(const QString &text, const QString &tag);
    void AppendBlock(ListBlock block);
    void Remove(qint64 row);
    void Clear();

    void Arrange(); // sorts anew, when it is sorted
    // Sorts by another column or order; false and nothing changed when keepOn gave up or the rows changed meanwhile.
    bool SortBy(int column, ListSortOrder order, const std::function<bool()> &keepOn);
    bool sorted = false;
    int key = 0;
    ListSortOrder direction = lvwAscending;
    std::vector<QIcon> images;

private:
    struct Places;
    Places Sort(int column, ListSortOrder order, const std::function<bool()> &keepOn) const;
    void Arrange(const Places &places);
    quint32 Entry(qint64 row) const { return m_order.empty() ? quint32(row) : m_order[size_t(row)]; }
    void Forget();    // all rows, with nobody told
    void MakeOrder(); // before rows leave the order in which they came
    QString EntryText(quint32 entry, int column) const;
    QString ShownText(qint64 row, int column) const; // cut to what a screen can show
    const ListBlock *BlockOf(quint32 entry, qint64 *record) const;
    quint32 m_next = 0;    // entries made so far
    quint64 m_changes = 0; // of rows and texts, so that a sort that lets events in sees them
    qint64 m_count = 0;
    std::vector<quint32> m_order; // entries by row; none as long as row N is entry N
    QStringList m_heads;
    QHash<quint32, Own> m_own;
    std::vector<std::pair<quint32, ListBlock>> m_blocks; // first entry, block; ascending
};
