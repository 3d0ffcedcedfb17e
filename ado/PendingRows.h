#pragma once
// What a batch has still to send, by store row. The recordset's own columns hold what the rows are to be; kept here is
// only what they were, and of that only the columns that were changed, typed as the recordset's columns are. One thread
// at a time.

#include "ado/ColumnStore.h"
#include "ado/RowSlots.h"
#include <vector>

namespace ADODB {

class PendingRows
{
public:
    enum Kind : std::uint8_t
    {
        None,
        Inserted,
        Modified,
        Deleted
    };

    Kind KindOf(std::uint32_t row) const;
    std::int64_t Count() const { return m_slots.Count(); }
    std::vector<std::uint32_t> Rows() const; // in order
    // Of an inserted row: the column was set. Of the others: it was changed, and Original knows what it was.
    bool Has(std::uint32_t row, size_t column) const;
    // Where the value stands that the column had before its first change; null when it is as it was.
    const ColumnStore *Original(std::uint32_t row, size_t column, qint64 &place) const;

    // Each either succeeds or leaves all as it was (std::bad_alloc). `columns` has a mark for each column.
    void Insert(std::uint32_t row, const std::vector<bool> &columns);
    // Keeps what the columns are now in `stores`, unless it is kept already; more set columns of an inserted row.
    void Modify(std::uint32_t row, const std::vector<bool> &columns, const std::vector<ColumnStore> &stores);
    void Delete(std::uint32_t row, const std::vector<ColumnStore> &stores);
    void Erase(std::uint32_t row);
    void Clear();

    qint64 BytesHeld() const;

private:
    // Rows of one kind with the same columns share one.
    struct Shape
    {
        Kind kind = None;
        std::vector<bool> columns;
        std::vector<int> storeOf; // by column: which of `originals`, -1 for none
        std::vector<ColumnStore> originals;
        qint64 rows = 0;
    };
    const Shape *ShapeOf(std::uint32_t row, qint64 &place) const;
    size_t FindShape(Kind kind, const std::vector<bool> &columns, const std::vector<ColumnStore> &stores);
    void Move(std::uint32_t row, Kind kind, const std::vector<bool> &columns, const std::vector<ColumnStore> &stores);
    void Put(std::uint32_t row, size_t shape, qint64 place);

    RowSlots m_slots; // (shape + 1) << 32 | place in its originals
    std::vector<Shape> m_shapes;
};

} // namespace ADODB
