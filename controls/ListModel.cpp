#include "controls/ListModel.h"
#include "ado/CellReader.h"
#include "controls/ControlError.h"
#include <algorithm>
#include <numeric>

namespace {
constexpr qsizetype kShownLimit = 1000; // characters of a cell that a screen can show

QString FirstLineOf(QString text)
{
    text.truncate(kShownLimit);
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
        return FirstLineOf(ShownText(index.row(), index.column()));
    if (role == Qt::ToolTipRole) {
        const QString text = ShownText(index.row(), index.column());
        return text.size() > 40 ? QVariant(text.toHtmlEscaped()) : QVariant();
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
    ++m_changes;
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

// A field's own text is made only as far as it shows: a value of many megabytes would be made anew at every painting.
QString ListModel::ShownText(qint64 row, int column) const
{
    const quint32 entry = Entry(row);
    if (!m_own.contains(entry)) {
        qint64 record = 0;
        const ListBlock *const block = BlockOf(entry, &record);
        if (block && !block->Text && record < block->Recordset->RowCount() && column < block->Recordset->ColumnCount())
            return ADODB::CellStart(*block->Recordset, record, column, kShownLimit);
    }
    return EntryText(entry, column).left(kShownLimit);
}

QString ListModel::Tag(qint64 row) const
{
    const quint32 entry = Entry(row);
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
    const quint32 entry = Entry(row);
    const auto own = m_own.constFind(entry);
    if (own != m_own.cend())
        return own->image;
    qint64 record = 0;
    const ListBlock *const block = BlockOf(entry, &record);
    return block ? block->Image : 0;
}

ListModel::Own &ListModel::Write(qint64 row)
{
    ++m_changes;
    const quint32 entry = Entry(row);
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
    ++m_changes;
    const quint32 entry = m_next++;
    m_own.insert(entry, {{text}, tag, 0});
    qint64 at = Count();
    if (sorted && m_count > 0) { // its place behind its equals
        MakeOrder();
        const QString folded = EntryText(entry, key).toCaseFolded();
        const auto place =
            std::upper_bound(m_order.begin(), m_order.end(), folded, [this](const QString &value, quint32 other) {
                const int order = value.compare(EntryText(other, key).toCaseFolded());
                return direction == lvwAscending ? order < 0 : order > 0;
            });
        at = place - m_order.begin();
    }
    beginInsertRows({}, int(at), int(at));
    if (!m_order.empty())
        m_order.insert(m_order.begin() + at, entry);
    ++m_count;
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
    ++m_changes;
    const quint32 first = m_next;
    const qint64 at = Count(), count = block.Count;
    m_next += quint32(count);
    const bool all = at == 0; // the header takes a new list in faster than so many new rows
    if (all)
        beginResetModel();
    else
        beginInsertRows({}, int(at), int(at + count - 1));
    m_blocks.emplace_back(first, std::move(block));
    if (!m_order.empty()) {
        m_order.resize(size_t(at + count));
        std::iota(m_order.begin() + at, m_order.end(), first);
    }
    m_count += count;
    if (all)
        endResetModel();
    else
        endInsertRows();
    if (sorted)
        Arrange();
}

void ListModel::Remove(qint64 row)
{
    ++m_changes;
    beginRemoveRows({}, int(row), int(row));
    MakeOrder();
    m_own.remove(Entry(row));
    m_order.erase(m_order.begin() + row);
    if (--m_count == 0)
        Forget();
    endRemoveRows();
}

void ListModel::Clear()
{
    ++m_changes;
    beginResetModel();
    Forget();
    endResetModel();
}

void ListModel::Forget()
{
    m_count = 0;
    m_order.clear();
    m_own.clear();
    m_blocks.clear();
    m_next = 0;
}

void ListModel::MakeOrder()
{
    if (!m_order.empty())
        return;
    m_order.resize(size_t(m_count));
    std::iota(m_order.begin(), m_order.end(), 0U);
}
