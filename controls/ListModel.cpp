#include "controls/ListModel.h"
#include "controls/ControlError.h"
#include <algorithm>
#include <numeric>

namespace {
constexpr qsizetype shownLimit = 1000; // characters of a cell that a screen can show

QString OneLine(QString text)
{
    text.truncate(shownLimit);
    for (QChar &c : text)
        if (c < u' ')
            c = u' ';
    return text;
}
} // namespace

QModelIndex ListModel::index(int row, int column, const QModelIndex &parent) const
{
    const bool there = !parent.isValid() && row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return there ? createIndex(row, column) : QModelIndex();
}

QVariant ListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return OneLine(Text(index.row(), index.column()));
    if (role == Qt::ToolTipRole) {
        const QString text = Text(index.row(), index.column());
        return text.size() > 40 ? QVariant(text.left(shownLimit).toHtmlEscaped()) : QVariant();
    }
    if (role == Qt::DecorationRole && index.column() == 0) {
        const int image = Image(index.row());
        if (image > 0 && size_t(image) <= images.size())
            return images[size_t(image) - 1];
    }
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_heads.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_heads[section];
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren : Qt::NoItemFlags;
}

void ListModel::AddColumn(const QString &text)
{
    beginInsertColumns({}, int(m_heads.size()), int(m_heads.size()));
    m_heads << text;
    endInsertColumns();
}

void ListModel::ClearColumns()
{
    beginResetModel();
    m_heads.clear();
    endResetModel();
}

void ListModel::SetHead(int column, const QString &text)
{
    m_heads[column] = text;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void ListModel::Check(qint64 row) const
{
    if (row < 0 || row >= Count())
        throw ControlError(ctlErrIndex, QStringLiteral("Index out of bounds"));
}

const ListBlock *ListModel::BlockOf(quint32 entry, qint64 *record) const
{
    auto block = std::upper_bound(m_blocks.begin(), m_blocks.end(), entry,
                                  [](quint32 value, const auto &candidate) { return value < candidate.first; });
    if (block == m_blocks.begin())
        return nullptr;
    --block;
    const qint64 offset = qint64(entry) - block->first;
    if (offset >= block->second.Count)
        return nullptr;
    *record = block->second.First + offset;
    return &block->second;
}

QString ListModel::EntryText(quint32 entry, int column) const
{
    if (!m_own.isEmpty()) {
        const auto own = m_own.constFind(entry);
        if (own != m_own.cend())
            return size_t(column) < own->cells.size() ? own->cells[size_t(column)] : QString();
    }
    qint64 record = 0;
    const ListBlock *const block = BlockOf(entry, &record);
    if (!block || record >= block->Recordset->RowCount())
        return {};
    if (block->Text)
        return block->Text(*block->Recordset, record, column);
    return column < block->Recordset->ColumnCount() ? block->Recordset->CellText(record, column) : QString();
}

QString ListModel::Tag(qint64 row) const
{
    const quint32 entry = m_order[size_t(row)];
    const auto own = m_own.constFind(entry);
    if (own != m_own.cend())
        return own->tag;
    qint64 record = 0;
    const ListBlock *const block = BlockOf(entry, &record);
    return block && block->Tag && record < block->Recordset->RowCount() ? block->Tag(*block->Recordset, record)
                                                                        : QString();
}

int ListModel::Image(qint64 row) const
{
    const quint32 entry = m_order[size_t(row)];
    const auto own = m_own.constFind(entry);
    if (own != m_own.cend())
        return own->image;
    qint64 record = 0;
    const ListBlock *const block = BlockOf(entry, &record);
    return block ? block->Image : 0;
}

ListModel::Own &ListModel::Write(qint64 row)
{
    const quint32 entry = m_order[size_t(row)];
    const auto there = m_own.find(entry);
    if (there != m_own.end())
        return *there;
    Own own;
    for (int column = 0; column < columnCount(); ++column)
        own.cells.push_back(EntryText(entry, column));
    own.tag = Tag(row);
    own.image = Image(row);
    return *m_own.insert(entry, own);
}

void ListModel::Changed(qint64 row)
{
    emit dataChanged(index(int(row), 0), index(int(row), columnCount() - 1));
}

qint64 ListModel::Append(const QString &text, const QString &tag)
{
    const quint32 entry = m_next++;
    m_own.insert(entry, {{text}, tag, 0});
    qint64 at = Count();
    if (sorted) { // its place behind its equals
        const QString folded = EntryText(entry, key).toCaseFolded();
        const auto place =
            std::upper_bound(m_order.begin(), m_order.end(), folded, [this](const QString &value, quint32 other) {
                const int order = value.compare(EntryText(other, key).toCaseFolded());
                return direction == lvwAscending ? order < 0 : order > 0;
            });
        at = place - m_order.begin();
    }
    beginInsertRows({}, int(at), int(at));
    m_order.insert(m_order.begin() + at, entry);
    endInsertRows();
    return at;
}

void ListModel::AppendBlock(ListBlock block)
{
    if (!block.Recordset)
        return;
    block.Count = std::min(block.Count, block.Recordset->RowCount() - block.First);
    if (block.Count <= 0)
        return;
    const quint32 first = m_next;
    const qint64 at = Count(), count = block.Count;
    m_next += quint32(count);
    beginInsertRows({}, int(at), int(at + count - 1));
    m_blocks.emplace_back(first, std::move(block));
    m_order.resize(size_t(at + count));
    std::iota(m_order.begin() + at, m_order.end(), first);
    endInsertRows();
    if (sorted)
        Arrange();
}

void ListModel::Remove(qint64 row)
{
    beginRemoveRows({}, int(row), int(row));
    m_own.remove(m_order[size_t(row)]);
    m_order.erase(m_order.begin() + row);
    endRemoveRows();
}

void ListModel::Clear()
{
    beginResetModel();
    m_order.clear();
    m_own.clear();
    m_blocks.clear();
    m_next = 0;
    endResetModel();
}

void ListModel::Arrange()
{
    if (!sorted || m_order.size() < 2)
        return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<QString> keys(m_order.size()); // made once, by place
    for (size_t i = 0; i < m_order.size(); ++i)
        keys[i] = EntryText(m_order[i], key).toCaseFolded();
    std::vector<quint32> places(m_order.size());
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(), [&](quint32 a, quint32 b) {
        const int order = keys[a].compare(keys[b]);
        return direction == lvwAscending ? order < 0 : order > 0;
    });
    std::vector<quint32> arranged(m_order.size());
    for (size_t i = 0; i < places.size(); ++i)
        arranged[i] = m_order[places[i]];
    const QModelIndexList former = persistentIndexList();
    if (!former.isEmpty()) { // the selection stays on its rows
        std::vector<quint32> now(places.size());
        for (size_t i = 0; i < places.size(); ++i)
            now[places[i]] = quint32(i);
        QModelIndexList moved;
        for (const QModelIndex &index : former)
            moved << createIndex(int(now[size_t(index.row())]), index.column());
        m_order = std::move(arranged);
        changePersistentIndexList(former, moved);
    } else {
        m_order = std::move(arranged);
    }
    emit layoutChanged({}, VerticalSortHint);
}
