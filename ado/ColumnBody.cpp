#include "ado/ColumnBody.h"

#include "ado/Error.h"
#include <algorithm>

namespace ADODB {

Storage StorageOf(DataTypeEnum type)
{
    switch (type) {
    case adSmallInt:
    case adInteger:
    case adTinyInt:
    case adUnsignedTinyInt:
    case adUnsignedSmallInt:
    case adUnsignedInt:
    case adBigInt:
        return Storage::Int64;
    case adUnsignedBigInt:
        return Storage::UInt64;
    case adSingle:
    case adDouble:
        return Storage::Double;
    case adBoolean:
        return Storage::Bool;
    case adCurrency:
    case adDecimal:
    case adNumeric:
        return Storage::Decimal;
    case adDBDate:
        return Storage::Date;
    case adDBTime:
        return Storage::Time;
    case adDate:
    case adDBTimeStamp:
        return Storage::Timestamp;
    case adBinary:
        return Storage::Bytes;
    case adEmpty:
    case adVariant:
    case adChapter:
        return Storage::Any;
    default:
        return Storage::Text;
    }
}

// A date takes 16 + 8 + 8 bits.
bool PackDate(const Date &date, std::uint64_t &word)
{
    if (date.year < 0 || date.year > 0xFFFF || date.month < 0 || date.month > 255 || date.day < 0 || date.day > 255)
        return false;
    word = std::uint64_t(date.year) << 16 | std::uint64_t(date.month) << 8 | std::uint64_t(date.day);
    return true;
}

Date UnpackDate(std::uint64_t word)
{
    return {int(word >> 16), int(word >> 8 & 255), int(word & 255)};
}

// A time takes 16 + 8 + 8 + 32 bits: some servers count hours past the day.
bool PackTime(const Time &time, std::uint64_t &word)
{
    if (time.hour < 0 || time.hour > 0x7FFF || time.minute < 0 || time.minute > 255 || time.second < 0 ||
        time.second > 255 || time.nanosecond < 0)
        return false;
    word = std::uint64_t(time.hour) << 48 | std::uint64_t(time.minute) << 40 | std::uint64_t(time.second) << 32 |
           std::uint64_t(time.nanosecond);
    return true;
}

Time UnpackTime(std::uint64_t word)
{
    return {int(word >> 48), int(word >> 40 & 255), int(word >> 32 & 255), int(word & 0xFFFFFFFF)};
}

// A timestamp takes 14 + 4 + 5 bits for the date, 5 + 6 + 6 for the time and 24 for tenths of a microsecond. The hour
// 31 marks a date that stands alone.
bool PackTimestamp(const Timestamp &moment, std::uint64_t &word)
{
    const auto &[date, time] = moment;
    if (date.year < 0 || date.year > 0x3FFF || date.month < 0 || date.month > 15 || date.day < 0 || date.day > 31 ||
        time.hour < 0 || time.hour > 30 || time.minute < 0 || time.minute > 63 || time.second < 0 || time.second > 63 ||
        time.nanosecond < 0 || time.nanosecond % 100 != 0 || time.nanosecond / 100 > 0xFFFFFF)
        return false;
    word = std::uint64_t(date.year) << 50 | std::uint64_t(date.month) << 46 | std::uint64_t(date.day) << 41 |
           std::uint64_t(time.hour) << 36 | std::uint64_t(time.minute) << 30 | std::uint64_t(time.second) << 24 |
           std::uint64_t(time.nanosecond / 100);
    return true;
}

std::uint64_t PackDateOnly(std::uint64_t timestampWord)
{
    return timestampWord | std::uint64_t(31) << 36;
}

Value UnpackTimestamp(std::uint64_t word)
{
    const Date date{int(word >> 50), int(word >> 46 & 15), int(word >> 41 & 31)};
    const int hour = int(word >> 36 & 31);
    if (hour == 31)
        return date;
    return Timestamp{date, {hour, int(word >> 30 & 63), int(word >> 24 & 63), int(word & 0xFFFFFF) * 100}};
}

void ColumnStore::Body::ReserveNull(qint64 row)
{
    const size_t needed = size_t(row >> 6) + 1;
    if (nulls.size() < needed)
        nulls.resize(needed, 0);
}

void ColumnStore::Body::MarkNull(qint64 row, bool null)
{
    const size_t word = size_t(row >> 6);
    if (null)
        nulls[word] |= std::uint64_t(1) << (row & 63);
    else if (word < nulls.size())
        nulls[word] &= ~(std::uint64_t(1) << (row & 63));
}

void ColumnStore::Body::ReserveBlockNulls(const std::int64_t *lengthOrNull, qint64 rows)
{
    if (lengthOrNull && std::find(lengthOrNull, lengthOrNull + rows, -1) != lengthOrNull + rows)
        ReserveNull(size + rows - 1);
}

void ColumnStore::Body::MarkBlockNulls(const std::int64_t *lengthOrNull, qint64 rows)
{
    for (qint64 i = 0; lengthOrNull && i < rows; ++i)
        if (lengthOrNull[i] == -1)
            MarkNull(size + i, true);
    size += rows;
}

const Value *ColumnStore::Body::Exception(qint64 row) const
{
    if (exceptions.empty())
        return nullptr;
    const auto found = std::lower_bound(exceptions.begin(), exceptions.end(), row,
                                        [](const auto &entry, qint64 wanted) { return entry.first < wanted; });
    return found != exceptions.end() && found->first == row ? &found->second : nullptr;
}

void ColumnStore::Body::PushWord(std::uint64_t word)
{
    words.Push(word);
    ++size;
}

void ColumnStore::Body::PushBlank()
{
    switch (storage) {
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Decimal:
        arena.Push(nullptr, 0);
        break;
    case Storage::Bool:
        bytes.Push(0);
        break;
    case Storage::Any:
        any.Push(Value());
        break;
    case Storage::Chapters:
        break;
    default:
        words.Push(0);
    }
    ++size;
}

void ColumnStore::Body::PopStore()
{
    switch (storage) {
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Decimal:
        arena.Pop();
        break;
    case Storage::Bool:
        bytes.Pop();
        break;
    case Storage::Any:
        any.Pop();
        break;
    case Storage::Chapters:
        break;
    default:
        words.Pop();
    }
    --size;
}

void ColumnStore::Body::PushException(const Value &value)
{
    PushBlank();
    try {
        exceptions.emplace_back(size - 1, value);
    } catch (...) {
        PopStore();
        throw;
    }
    looseBytes += qint64(sizeof(exceptions[0])) + value.ToText().size() * 2;
}

void ColumnStore::Body::PushArena(const char *data, qint64 count)
{
    if (count <= Arena::LongestValue) {
        arena.Push(data, count);
        ++size;
        return;
    }
    PushBlank();
    try {
        longOnes.emplace_hint(longOnes.end(), size - 1, QByteArray(data, qsizetype(count)));
    } catch (...) {
        PopStore();
        throw;
    }
    looseBytes += count + 64;
}

QByteArrayView ColumnStore::Body::ArenaAt(qint64 row) const
{
    if (!longOnes.empty()) {
        const auto found = longOnes.find(row);
        if (found != longOnes.end())
            return found->second;
    }
    return arena.At(row);
}

void ColumnStore::Body::Check(qint64 row) const
{
    if (row < 0 || row >= size)
        throw Error(Fault::NoSuchRow, {QString::number(row + 1)});
}

} // namespace ADODB
