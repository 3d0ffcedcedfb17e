#pragma once
// One column of a client recordset: all values of one field in one contiguous typed store, with null bits beside it.
//
// A driver appends; a recordset reads by row. Text is made only for the cells that somebody reads.
// Rows count from 0. A store belongs to one thread at a time; it is filled by a worker and then handed over whole.
//
// What a type keeps: whole numbers 64 bits (unsigned 64 too), doubles their bits, decimals the server's digits as text,
// text as UTF-8 bytes in one arena, bytes as they are, dates and times with nanoseconds, booleans one byte.
// A value that does not fit its column's type (SQLite allows it) is kept exactly as it came, as an exception of that
// row. A column of chapters may leave them to a source, which makes them when they are asked for.

#include "ado/ChapterSource.h"
#include "ado/Types.h"
#include "ado/Value.h"
#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <memory>

namespace ADODB {

class ColumnStore
{
public:
    explicit ColumnStore(DataTypeEnum type = adVarWChar);
    ColumnStore(std::shared_ptr<ChapterSource> chapters, qint64 rows);
    ~ColumnStore();
    ColumnStore(ColumnStore &&) noexcept;
    ColumnStore &operator=(ColumnStore &&) noexcept;

    DataTypeEnum Type() const;
    qint64 Size() const;             // rows
    ChapterSource *Chapters() const; // null where the column keeps its chapters itself, or has none

    // Appending, one call a row. Each may throw std::bad_alloc, and then leaves the store as it was.
    void AppendNull();
    void AppendNulls(qint64 rows);
    void AppendInt64(qint64 value);
    void AppendUInt64(quint64 value);
    void AppendDouble(double value);
    void AppendBool(bool value);
    void AppendText(const char *utf8, qint64 bytes);
    void AppendBytes(const void *data, qint64 bytes);
    void AppendDecimal(const char *digits, qint64 bytes); // as the server wrote it: "-12.3400"
    void AppendDate(int year, int month, int day);
    void AppendTime(int hour, int minute, int second, int nanoseconds);
    void AppendTimestamp(int year, int month, int day, int hour, int minute, int second, int nanoseconds);
    void Append(const Value &value);
    void AppendFrom(const ColumnStore &other, qint64 row); // the same cell, without a detour where both keep it alike

    // Whole-column growth for drivers that fetch blocks.
    void Reserve(qint64 rows);
    void AppendInt64Block(const qint64 *values, const std::int64_t *lengthOrNull, qint64 rows); // -1 marks a null
    void AppendDoubleBlock(const double *values, const std::int64_t *lengthOrNull, qint64 rows);

    bool IsNull(qint64 row) const;
    Value At(qint64 row) const;
    QString Text(qint64 row) const; // "" for null; numbers by lang::CStr and exactly, times in ISO form
    // The UTF-8 bytes of a text cell without a copy; null for other cells.
    QByteArrayView Utf8(qint64 row) const;
    // The bytes of a cell of bytes without a copy; null for other cells.
    QByteArrayView Bytes(qint64 row) const;

    void Set(qint64 row, const Value &value);
    void Remove(qint64 row);

    // Orders two cells: nulls first, numbers by value, text without regard to case. Used by sorting and filters.
    int Compare(qint64 left, qint64 right) const;

    qint64 BytesHeld() const; // memory, for the benches and the limit on results

private:
    struct Body;
    std::unique_ptr<Body> m;
};

} // namespace ADODB
