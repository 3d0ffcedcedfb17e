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
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(m_order.size()); }
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
    qint64 Count() const { return qint64(m_order.size()); }
    QString Text(qint64 row, int column) const { return EntryText(m_order[size_t(row)], column); }
    QString Tag(qint64 row) const;
    int Image(qint64 row) const;
    Own &Write(qint64 row); // the row's own texts, made when it has none yet
    void Changed(qint64 row);
    qint64 Append(const QString &text, const QString &tag);
    void AppendBlock(ListBlock block);
    void Remove(qint64 row);
    void Clear();

    void Arrange(); // sorts anew, when it is sorted
    bool sorted = false;
    int key = 0;
    ListSortOrder direction = lvwAscending;
    std::vector<QIcon> images;

private:
    QString EntryText(quint32 entry, int column) const;
    const ListBlock *BlockOf(quint32 entry, qint64 *record) const;
    quint32 m_next = 0; // entries made so far
    std::vector<quint32> m_order;
    QStringList m_heads;
    QHash<quint32, Own> m_own;
    std::vector<std::pair<quint32, ListBlock>> m_blocks; // first entry, block; ascending
};
