#pragma once
// What a column holds, for the sources of ColumnStore alone. One thread at a time.

#include "ado/Chunks.h"
#include "ado/ColumnStore.h"
#include <map>
#include <utility>

namespace ADODB {

enum class Storage
{
    Int64,
    UInt64,
    Double,
    Bool,
    Text,
    Bytes,
    Decimal,
    Date,
    Time,
    Timestamp,
    Any,
    Chapters // whose source makes them
};

Storage StorageOf(DataTypeEnum type);

// Moments in machine words that order as the moments do; false for those that do not fit (they are kept as exceptions).
bool PackDate(const Date &date, std::uint64_t &word);
bool PackTime(const Time &time, std::uint64_t &word);
bool PackTimestamp(const Timestamp &moment, std::uint64_t &word);
std::uint64_t PackDateOnly(std::uint64_t timestampWord); // a date without a time, in a column of timestamps
Date UnpackDate(std::uint64_t word);
Time UnpackTime(std::uint64_t word);
Value UnpackTimestamp(std::uint64_t word); // a Timestamp, or a Date for PackDateOnly's words

struct ColumnStore::Body
{
    explicit Body(DataTypeEnum of) : type(of), storage(StorageOf(of)) {}

    DataTypeEnum type;
    Storage storage;
    qint64 size = 0;

    // The one that `storage` names is as long as the column; the others stay empty.
    Chunks<std::uint64_t> words; // Int64, UInt64, Double (their bits), Date, Time, Timestamp
    Chunks<std::uint8_t> bytes;  // Bool
    Arena arena;                 // Text, Bytes, Decimal
    Chunks<Value> any;           // Any
    std::shared_ptr<ChapterSource> chapters;

    std::vector<std::uint64_t> nulls;                 // only as long as the last null needs
    std::map<qint64, QByteArray> longOnes;            // arena values past its longest
    std::vector<std::pair<qint64, Value>> exceptions; // values of another type, in order of rows
    qint64 looseBytes = 0;                            // memory of longOnes, exceptions and any

    bool IsNull(qint64 row) const
    {
        const size_t word = size_t(row >> 6);
        return word < nulls.size() && (nulls[word] >> (row & 63) & 1);
    }
    void ReserveNull(qint64 row);
    void MarkNull(qint64 row, bool null); // after ReserveNull this cannot fail
    void ReserveBlockNulls(const std::int64_t *lengthOrNull, qint64 rows);
    void MarkBlockNulls(const std::int64_t *lengthOrNull, qint64 rows); // the rows are in already; counts them
    const Value *Exception(qint64 row) const;
    void PushBlank(); // a place-holder in the store itself
    void PopStore();  // takes the last one back
    void PushException(const Value &value);
    void PushArena(const char *data, qint64 count);
    void PushWord(std::uint64_t word);
    QByteArrayView ArenaAt(qint64 row) const;
    void Check(qint64 row) const; // raises adErrInvalidArgument for a row that is not there
};

} // namespace ADODB
