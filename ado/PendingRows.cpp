#include "ado/PendingRows.h"

namespace ADODB {

const PendingRows::Shape *PendingRows::ShapeOf(std::uint32_t row, qint64 &place) const
{
    const std::uint64_t slot = m_slots.At(row);
    if (slot == 0)
        return nullptr;
    place = qint64(slot & 0xFFFFFFFF);
    return &m_shapes[size_t(slot >> 32) - 1];
}

PendingRows::Kind PendingRows::KindOf(std::uint32_t row) const
{
    qint64 place = 0;
    const Shape *const shape = ShapeOf(row, place);
    return shape ? shape->kind : None;
}

std::vector<std::uint32_t> PendingRows::Rows() const
{
    std::vector<std::uint32_t> rows;
    rows.reserve(size_t(Count()));
    m_slots.ForEach([&rows](std::uint32_t row, std::uint64_t) { rows.push_back(row); });
    return rows;
}

bool PendingRows::Has(std::uint32_t row, size_t column) const
{
    qint64 place = 0;
    const Shape *const shape = ShapeOf(row, place);
    return shape && column < shape->columns.size() && shape->columns[column];
}

const ColumnStore *PendingRows::Original(std::uint32_t row, size_t column, qint64 &place) const
{
    const Shape *const shape = ShapeOf(row, place);
    if (!shape || column >= shape->storeOf.size() || shape->storeOf[column] < 0)
        return nullptr;
    return &shape->originals[size_t(shape->storeOf[column])];
}

size_t PendingRows::FindShape(Kind kind, const std::vector<bool> &columns, const std::vector<ColumnStore> &stores)
{
    for (size_t i = 0; i < m_shapes.size(); ++i)
        if (m_shapes[i].kind == kind && m_shapes[i].columns == columns)
            return i;
    Shape shape;
    shape.kind = kind;
    shape.columns = columns;
    shape.storeOf.assign(columns.size(), -1);
    for (size_t i = 0; i < columns.size() && kind != Inserted; ++i) {
        if (!columns[i])
            continue;
        shape.storeOf[i] = int(shape.originals.size());
        shape.originals.emplace_back(stores[i].Type());
    }
    m_shapes.push_back(std::move(shape));
    return m_shapes.size() - 1;
}

void PendingRows::Put(std::uint32_t row, size_t shape, qint64 place)
{
    const std::uint64_t former = m_slots.At(row);
    m_slots.Set(row, std::uint64_t(shape + 1) << 32 | std::uint64_t(place));
    ++m_shapes[shape].rows;
    if (former == 0)
        return;
    Shape &left = m_shapes[size_t(former >> 32) - 1];
    if (--left.rows == 0)
        for (ColumnStore &original : left.originals)
            original = ColumnStore(original.Type());
}

void PendingRows::Move(std::uint32_t row, Kind kind, const std::vector<bool> &columns,
                       const std::vector<ColumnStore> &stores)
{
    const size_t index = FindShape(kind, columns, stores);
    Shape &shape = m_shapes[index];
    const qint64 place = shape.originals.empty() ? 0 : shape.originals.front().Size();
    size_t done = 0;
    try {
        for (size_t i = 0; i < columns.size(); ++i) {
            if (shape.storeOf[i] < 0)
                continue;
            qint64 at = qint64(row);
            const ColumnStore *const kept = Original(row, i, at);
            shape.originals[done].AppendFrom(kept ? *kept : stores[i], kept ? at : qint64(row));
            ++done;
        }
        Put(row, index, place);
    } catch (...) {
        while (done-- > 0)
            shape.originals[done].Remove(place);
        throw;
    }
}

void PendingRows::Insert(std::uint32_t row, const std::vector<bool> &columns)
{
    Put(row, FindShape(Inserted, columns, {}), 0);
}

void PendingRows::Modify(std::uint32_t row, const std::vector<bool> &columns, const std::vector<ColumnStore> &stores)
{
    qint64 place = 0;
    const Shape *const former = ShapeOf(row, place);
    std::vector<bool> all = columns;
    for (size_t i = 0; former && i < all.size(); ++i)
        all[i] = all[i] || former->columns[i];
    if (former && former->columns == all)
        return;
    if (former && former->kind == Inserted)
        Insert(row, all);
    else
        Move(row, former ? former->kind : Modified, all, stores);
}

void PendingRows::Delete(std::uint32_t row, const std::vector<ColumnStore> &stores)
{
    qint64 place = 0;
    const Shape *const former = ShapeOf(row, place);
    Move(row, Deleted, former ? std::vector<bool>(former->columns) : std::vector<bool>(stores.size(), false), stores);
}

void PendingRows::Erase(std::uint32_t row)
{
    const std::uint64_t former = m_slots.At(row);
    if (former == 0)
        return;
    m_slots.Set(row, 0);
    Shape &left = m_shapes[size_t(former >> 32) - 1];
    if (--left.rows == 0)
        for (ColumnStore &original : left.originals)
            original = ColumnStore(original.Type());
}

void PendingRows::Clear()
{
    m_slots.Clear();
    m_shapes.clear();
}

qint64 PendingRows::BytesHeld() const
{
    qint64 held = m_slots.BytesHeld();
    for (const Shape &shape : m_shapes)
        for (const ColumnStore &original : shape.originals)
            held += original.BytesHeld();
    return held;
}

} // namespace ADODB
