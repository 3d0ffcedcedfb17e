// Filling a column. A value that is not of the column's type goes to the exceptions of its row and stays what it was.
#include "ado/ColumnBody.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace ADODB {

void ColumnStore::AppendNull()
{
    if (m->chapters) { // the source has rows for it
        ++m->size;
        return;
    }
    m->ReserveNull(m->size);
    m->PushBlank();
    m->MarkNull(m->size - 1, true);
}

void ColumnStore::AppendNulls(qint64 rows)
{
    if (rows <= 0)
        return;
    if (m->chapters) {
        m->size += rows;
        return;
    }
    m->ReserveNull(m->size + rows - 1);
    for (qint64 i = 0; i < rows; ++i) {
        m->PushBlank();
        m->MarkNull(m->size - 1, true);
    }
}

void ColumnStore::AppendInt64(qint64 value)
{
    if (m->storage == Storage::Int64 || (m->storage == Storage::UInt64 && value >= 0)) {
        m->PushWord(std::uint64_t(value));
    } else if (m->storage == Storage::Decimal) {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        m->PushArena(digits, end.ptr - digits);
    } else if (m->storage == Storage::Double && value > -1'000'000'000'000'000 && value < 1'000'000'000'000'000) {
        m->PushWord(std::bit_cast<std::uint64_t>(double(value))); // the same number, and the same text
    } else {
        m->PushException(value);
    }
}

void ColumnStore::AppendUInt64(quint64 value)
{
    if (m->storage == Storage::UInt64)
        m->PushWord(value);
    else if (value <= quint64(std::numeric_limits<qint64>::max()))
        AppendInt64(qint64(value));
    else if (m->storage == Storage::Decimal)
        AppendDecimal(QByteArray::number(value).constData(), QByteArray::number(value).size());
    else
        m->PushException(value);
}

void ColumnStore::AppendDouble(double value)
{
    if (m->storage == Storage::Double) {
        m->PushWord(std::bit_cast<std::uint64_t>(value));
        return;
    }
    if (m->storage == Storage::Decimal && std::isfinite(value) && !(value == 0 && std::signbit(value))) {
        // The shortest digits that read back as the very same double.
        char digits[40];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        const QByteArrayView text(digits, end.ptr - digits);
        if (IsDecimalText(text)) {
            m->PushArena(digits, text.size());
            return;
        }
    }
    m->PushException(value);
}

void ColumnStore::AppendBool(bool value)
{
    if (m->storage != Storage::Bool) {
        m->PushException(value);
        return;
    }
    m->bytes.Push(value ? 1 : 0);
    ++m->size;
}

void ColumnStore::AppendText(const char *utf8, qint64 bytes)
{
    if (m->storage == Storage::Text)
        m->PushArena(utf8, bytes);
    else
        m->PushException(QString::fromUtf8(utf8, qsizetype(bytes)));
}

void ColumnStore::AppendBytes(const void *data, qint64 bytes)
{
    if (m->storage == Storage::Bytes)
        m->PushArena(static_cast<const char *>(data), bytes);
    else
        m->PushException(QByteArray(static_cast<const char *>(data), qsizetype(bytes)));
}

void ColumnStore::AppendDecimal(const char *digits, qint64 bytes)
{
    if (m->storage == Storage::Decimal)
        m->PushArena(digits, bytes);
    else
        m->PushException(Decimal{QByteArray(digits, qsizetype(bytes))});
}

void ColumnStore::AppendDate(int year, int month, int day)
{
    std::uint64_t word = 0;
    const Date date{year, month, day};
    if (m->storage == Storage::Date && PackDate(date, word))
        m->PushWord(word);
    else if (m->storage == Storage::Timestamp && PackTimestamp({date, {}}, word))
        m->PushWord(PackDateOnly(word));
    else
        m->PushException(date);
}

void ColumnStore::AppendTime(int hour, int minute, int second, int nanoseconds)
{
    std::uint64_t word = 0;
    const Time time{hour, minute, second, nanoseconds};
    if (m->storage == Storage::Time && PackTime(time, word))
        m->PushWord(word);
    else
        m->PushException(time);
}

void ColumnStore::AppendTimestamp(int year, int month, int day, int hour, int minute, int second, int nanoseconds)
{
    std::uint64_t word = 0;
    const Timestamp moment{{year, month, day}, {hour, minute, second, nanoseconds}};
    if (m->storage == Storage::Timestamp && PackTimestamp(moment, word))
        m->PushWord(word);
    else
        m->PushException(moment);
}

void ColumnStore::Append(const Value &value)
{
    if (m->storage == Storage::Any && !value.IsNull()) {
        m->any.Push(value);
        ++m->size;
        m->looseBytes += value.ToText().size() * 2;
    } else if (value.IsNull()) {
        AppendNull();
    } else if (const bool *truth = value.As<bool>()) {
        AppendBool(*truth);
    } else if (const qint64 *number = value.As<qint64>()) {
        AppendInt64(*number);
    } else if (const quint64 *natural = value.As<quint64>()) {
        AppendUInt64(*natural);
    } else if (const double *real = value.As<double>()) {
        AppendDouble(*real);
    } else if (const Decimal *decimal = value.As<Decimal>()) {
        AppendDecimal(decimal->digits.constData(), decimal->digits.size());
    } else if (const QString *text = value.As<QString>()) {
        const QByteArray utf8 = text->toUtf8();
        AppendText(utf8.constData(), utf8.size());
    } else if (const QByteArray *data = value.As<QByteArray>()) {
        AppendBytes(data->constData(), data->size());
    } else if (const Date *date = value.As<Date>()) {
        AppendDate(date->year, date->month, date->day);
    } else if (const Time *time = value.As<Time>()) {
        AppendTime(time->hour, time->minute, time->second, time->nanosecond);
    } else if (const Timestamp *moment = value.As<Timestamp>()) {
        AppendTimestamp(moment->date.year, moment->date.month, moment->date.day, moment->time.hour, moment->time.minute,
                        moment->time.second, moment->time.nanosecond);
    } else {
        m->PushException(value);
    }
}

void ColumnStore::AppendFrom(const ColumnStore &other, qint64 row)
{
    other.m->Check(row);
    if (other.m->IsNull(row))
        return AppendNull();
    if (other.m->storage != m->storage || m->storage == Storage::Any || m->chapters || other.m->Exception(row))
        return Append(other.At(row));
    switch (m->storage) {
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Decimal: {
        const QByteArrayView bytes = other.m->ArenaAt(row);
        return m->PushArena(bytes.data(), bytes.size());
    }
    case Storage::Bool:
        m->bytes.Push(other.m->bytes.At(row));
        ++m->size;
        return;
    default:
        return m->PushWord(other.m->words.At(row));
    }
}

void ColumnStore::Reserve(qint64)
{
    // Growing never copies, so there is nothing to gain beforehand.
}

void ColumnStore::AppendInt64Block(const qint64 *values, const std::int64_t *lengthOrNull, qint64 rows)
{
    if (m->storage != Storage::Int64) {
        for (qint64 i = 0; i < rows; ++i)
            lengthOrNull &&lengthOrNull[i] == -1 ? AppendNull() : AppendInt64(values[i]);
        return;
    }
    m->ReserveBlockNulls(lengthOrNull, rows);
    m->words.PushBlock(reinterpret_cast<const std::uint64_t *>(values), rows);
    m->MarkBlockNulls(lengthOrNull, rows);
}

void ColumnStore::AppendDoubleBlock(const double *values, const std::int64_t *lengthOrNull, qint64 rows)
{
    if (m->storage != Storage::Double) {
        for (qint64 i = 0; i < rows; ++i)
            lengthOrNull &&lengthOrNull[i] == -1 ? AppendNull() : AppendDouble(values[i]);
        return;
    }
    m->ReserveBlockNulls(lengthOrNull, rows);
    m->words.PushBlock(reinterpret_cast<const std::uint64_t *>(values), rows);
    m->MarkBlockNulls(lengthOrNull, rows);
}

} // namespace ADODB
