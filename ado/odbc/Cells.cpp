#include "ado/odbc/Cells.h"
#include <charconv>

namespace ADODB::Odbc {

namespace {

constexpr char kOutside[] = "<date outside 0001 to 9999>";
constexpr char kDoubtfulEnd[] = "<9999-12-31 23:59:59 or infinity>";
constexpr char kDoubtfulStart[] = "<9999-01-01 00:00:00 BC or -infinity>";

// Reads digits of a fixed or free count; false when there are none.
bool Digits(const char *&at, const char *end, int &number, int least, int most)
{
    int count = 0;
    number = 0;
    while (at < end && *at >= '0' && *at <= '9' && count < most) {
        number = number * 10 + (*at++ - '0');
        ++count;
    }
    return count >= least;
}

bool Sign(const char *&at, const char *end, char sign)
{
    if (at >= end || *at != sign)
        return false;
    ++at;
    return true;
}

bool ReadDate(const char *&at, const char *end, int &year, int &month, int &day)
{
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (!Digits(at, end, year, 4, 6) || !Sign(at, end, '-') || !Digits(at, end, month, 2, 2) || !Sign(at, end, '-') ||
        !Digits(at, end, day, 2, 2))
        return false;
    if (year < 1 || month < 1 || month > 12 || day < 1)
        return false;
    const bool leap = month == 2 && year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return day <= kDays[month - 1] + (leap ? 1 : 0);
}

bool ReadTime(const char *&at, const char *end, int &hour, int &minute, int &second, int &nanosecond)
{
    nanosecond = 0;
    if (!Digits(at, end, hour, 2, 2) || !Sign(at, end, ':') || !Digits(at, end, minute, 2, 2) || !Sign(at, end, ':') ||
        !Digits(at, end, second, 2, 2))
        return false;
    if (Sign(at, end, '.')) {
        const char *from = at;
        if (!Digits(at, end, nanosecond, 1, 9))
            return false;
        for (qint64 digits = at - from; digits < 9; ++digits)
            nanosecond *= 10;
    }
    return hour <= 23 && minute <= 59 && second <= 59;
}

bool AppendDateText(ColumnStore &store, const char *at, const char *end)
{
    int year, month, day;
    if (!ReadDate(at, end, year, month, day) || at != end)
        return false;
    store.AppendDate(year, month, day);
    return true;
}

bool AppendTimeText(ColumnStore &store, const char *at, const char *end)
{
    int hour, minute, second, nanosecond;
    if (!ReadTime(at, end, hour, minute, second, nanosecond) || at != end)
        return false;
    store.AppendTime(hour, minute, second, nanosecond);
    return true;
}

bool AppendTimestampText(ColumnStore &store, const char *at, const char *end)
{
    int year, month, day, hour = 0, minute = 0, second = 0, nanosecond = 0;
    if (!ReadDate(at, end, year, month, day))
        return false;
    if (at != end) {
        if (!Sign(at, end, ' ') && !Sign(at, end, 'T'))
            return false;
        if (!ReadTime(at, end, hour, minute, second, nanosecond) || at != end)
            return false;
    }
    store.AppendTimestamp(year, month, day, hour, minute, second, nanosecond);
    return true;
}

bool AppendWholeText(ColumnStore &store, const char *at, const char *end)
{
    qint64 whole = 0;
    const auto read = std::from_chars(at, end, whole);
    if (read.ec != std::errc() || read.ptr != end)
        return false;
    store.AppendInt64(whole);
    return true;
}

bool AppendNumberText(ColumnStore &store, const char *at, const char *end)
{
    double number = 0;
    const auto read = std::from_chars(at, end, number);
    if (read.ec != std::errc() || read.ptr != end)
        return false;
    store.AppendDouble(number);
    return true;
}

bool AppendBoolText(ColumnStore &store, const char *at, const char *end)
{
    if (end - at != 1)
        return false;
    const bool yes = *at == '1' || *at == 't';
    if (!yes && *at != '0' && *at != 'f')
        return false;
    store.AppendBool(yes);
    return true;
}

bool IsDecimal(const char *at, const char *end)
{
    if (!Sign(at, end, '-'))
        Sign(at, end, '+');
    bool digit = false, point = false;
    for (; at < end; ++at) {
        if (*at == '.' && !point)
            point = true;
        else if (*at >= '0' && *at <= '9')
            digit = true;
        else
            return false;
    }
    return digit;
}

// A structure whose date no calendar has is written out as the server would.
void AppendStruct(ColumnStore &store, const SQL_TIMESTAMP_STRUCT &t)
{
    if (t.month >= 1 && t.day >= 1 && t.year >= 1) {
        store.AppendTimestamp(t.year, t.month, t.day, t.hour, t.minute, t.second, int(t.fraction));
        return;
    }
    const QByteArray text =
        QString::asprintf("%04d-%02d-%02d %02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute, t.second)
            .toLatin1();
    store.AppendText(text.constData(), text.size());
}

// One driver writes a month 0 for a date past its years, and for the ends of time the last or first second that it
// knows. A year before the first is told by " BC".
bool AppendDriversMoment(ColumnStore &store, CellKind kind, const char *at, const char *end)
{
    const QByteArrayView text(at, end - at);
    if (text == "9999-12-31 23:59:59") {
        store.AppendText(kDoubtfulEnd, sizeof kDoubtfulEnd - 1);
    } else if (text == "9999-01-01 00:00:00 BC") {
        store.AppendText(kDoubtfulStart, sizeof kDoubtfulStart - 1);
    } else if (kind == CellKind::DriversDate ? AppendDateText(store, at, end) : AppendTimestampText(store, at, end)) {
        return true;
    } else if (text.endsWith(" BC")) {
        store.AppendText(at, end - at);
    } else {
        store.AppendText(kOutside, sizeof kOutside - 1);
    }
    return true;
}

void AppendSmallLetters(ColumnStore &store, const char *at, qint64 bytes)
{
    const QByteArray small = QByteArray(at, qsizetype(bytes)).toLower();
    store.AppendText(small.constData(), small.size());
}

} // namespace

void AppendCell(ColumnStore &store, CellKind kind, const char *data, qint64 bytes)
{
    const char *end = data + bytes;
    bool done = false;
    switch (kind) {
    case CellKind::Int64:
        return store.AppendInt64(*reinterpret_cast<const qint64 *>(data));
    case CellKind::UInt64:
        return store.AppendUInt64(*reinterpret_cast<const quint64 *>(data));
    case CellKind::Double:
        return store.AppendDouble(*reinterpret_cast<const double *>(data));
    case CellKind::Bit:
        return store.AppendBool(*data != 0 && *data != '0');
    case CellKind::Bytes:
        return store.AppendBytes(data, bytes);
    case CellKind::Date: {
        const auto &date = *reinterpret_cast<const SQL_DATE_STRUCT *>(data);
        return store.AppendDate(date.year, date.month, date.day);
    }
    case CellKind::Timestamp:
        return AppendStruct(store, *reinterpret_cast<const SQL_TIMESTAMP_STRUCT *>(data));
    case CellKind::Text:
        return store.AppendText(data, bytes);
    case CellKind::Decimal:
        if ((done = IsDecimal(data, end)))
            store.AppendDecimal(data, bytes);
        break;
    case CellKind::IntText:
        done = AppendWholeText(store, data, end) || AppendNumberText(store, data, end);
        break;
    case CellKind::DoubleText:
        done = AppendNumberText(store, data, end);
        break;
    case CellKind::DateText:
        done = AppendDateText(store, data, end);
        break;
    case CellKind::TimeText:
        done = AppendTimeText(store, data, end);
        break;
    case CellKind::TimestampText:
        done = AppendTimestampText(store, data, end);
        break;
    case CellKind::BoolText:
        done = AppendBoolText(store, data, end);
        break;
    case CellKind::GuidText:
        return AppendSmallLetters(store, data, bytes);
    case CellKind::DriversDate:
    case CellKind::DriversTimestamp:
        done = AppendDriversMoment(store, kind, data, end);
        break;
    }
    if (!done)
        store.AppendText(data, bytes);
}

} // namespace ADODB::Odbc
