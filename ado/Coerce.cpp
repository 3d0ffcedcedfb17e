// Values on their way into a typed field. What the field cannot hold is refused: nothing else is stored in its place.
#include "ado/RecordsetBody.h"

#include "ado/StatementText.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace ADODB {

namespace {

[[noreturn]] void WrongType()
{
    throw Error(Fault::WrongValue);
}

// What the whole numbers of each type reach from and to.
struct Range
{
    DataTypeEnum type;
    qint64 least;
    quint64 most;
};
constexpr Range kRanges[] = {
    {adTinyInt, -128, 127},
    {adUnsignedTinyInt, 0, 255},
    {adSmallInt, -32768, 32767},
    {adUnsignedSmallInt, 0, 65535},
    {adInteger, -2147483648LL, 2147483647},
    {adUnsignedInt, 0, 4294967295},
    {adBigInt, std::numeric_limits<qint64>::min(), quint64(std::numeric_limits<qint64>::max())},
    {adUnsignedBigInt, 0, std::numeric_limits<quint64>::max()},
};

QByteArray TextOf(const Value &value)
{
    QByteArray text = value.ToText().toUtf8();
    while (text.startsWith(' '))
        text.remove(0, 1);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

double RealOf(const Value &value)
{
    if (value.As<Date>() || value.As<Time>() || value.As<Timestamp>() || value.As<QByteArray>() || value.As<Chapter>())
        WrongType();
    if (!value.As<QString>())
        return value.ToDouble();
    bool good = false;
    const double number = TextOf(value).toDouble(&good);
    if (!good)
        WrongType();
    return number;
}

// A whole number, with its sign apart: 0 to 2^64 - 1, or -1 to -2^63. A fraction is no whole number.
struct WholeNumber
{
    bool negative = false;
    quint64 size = 0;
};

WholeNumber WholeOf(const Value &value)
{
    if (const qint64 *number = value.As<qint64>())
        return {*number < 0, *number < 0 ? ~quint64(*number) + 1 : quint64(*number)};
    if (const quint64 *number = value.As<quint64>())
        return {false, *number};
    if (value.As<bool>())
        return WholeOf(qint64(value.ToInt64()));
    bool good = false;
    const QByteArray text = TextOf(value);
    if (const qint64 number = text.toLongLong(&good); good)
        return WholeOf(number);
    if (const quint64 number = text.toULongLong(&good); good)
        return {false, number};
    const double real = RealOf(value);
    if (!(real > -9.2e18 && real < 9.2e18) || real != std::floor(real)) // not for NaN either
        WrongType();
    return WholeOf(qint64(real));
}

Value Whole(const Value &value, DataTypeEnum type)
{
    const WholeNumber number = WholeOf(value);
    for (const Range &range : kRanges) {
        if (range.type != type)
            continue;
        if (number.negative ? number.size > ~quint64(range.least) + 1 || range.least == 0 : number.size > range.most)
            WrongType();
    }
    if (type == adUnsignedBigInt)
        return number.size;
    return qint64(number.negative ? ~number.size + 1 : number.size);
}

// A single-precision field holds the nearest of its numbers; what lies past them it cannot hold.
Value Single(double number)
{
    if (std::isfinite(number) && std::fabs(number) > double(std::numeric_limits<float>::max()))
        WrongType();
    return double(float(number));
}

Value DecimalOf(const Value &value)
{
    if (value.As<Decimal>())
        return value;
    if (const double *real = value.As<double>()) {
        char digits[400];
        const auto end = std::to_chars(digits, digits + sizeof digits, *real, std::chars_format::fixed);
        if (end.ec != std::errc() || !std::isfinite(*real))
            WrongType();
        return Decimal{QByteArray(digits, end.ptr - digits)};
    }
    if (value.As<bool>())
        return Decimal{QByteArray::number(value.ToInt64())};
    const QByteArray text = TextOf(value);
    if (IsDecimalText(text))
        return Decimal{text};
    return DecimalOf(RealOf(value));
}

Value BoolOf(const Value &value)
{
    if (value.As<bool>())
        return value;
    if (const QString *text = value.As<QString>()) {
        if (CompareText(*text, u"True") == 0)
            return true;
        if (CompareText(*text, u"False") == 0)
            return false;
    }
    const double number = RealOf(value);
    if (std::isnan(number))
        WrongType();
    return number != 0;
}

bool IsInCalendar(const Date &date)
{
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1)
        return false;
    const bool leap = date.month == 2 && date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    return date.day <= days[date.month - 1] + (leap ? 1 : 0);
}

bool IsOfADay(const Time &time)
{
    return time.hour >= 0 && time.hour <= 23 && time.minute >= 0 && time.minute <= 59 && time.second >= 0 &&
           time.second <= 59 && time.nanosecond >= 0 && time.nanosecond <= 999'999'999;
}

Value Day(const Date &date)
{
    if (!IsInCalendar(date))
        WrongType();
    return date;
}

Value TimeOfDay(const Time &time)
{
    if (!IsOfADay(time))
        WrongType();
    return time;
}

// A field for days alone holds no time beside the day.
Value Moment(const Timestamp &moment, DataTypeEnum type)
{
    if (!IsInCalendar(moment.date) || !IsOfADay(moment.time) || (type == adDBDate && moment.time != Time()))
        WrongType();
    return type == adDBDate ? Value(moment.date) : Value(moment);
}

Value MomentOf(const Value &value, DataTypeEnum type)
{
    const QByteArray text = TextOf(value);
    Date date;
    Time time;
    Timestamp moment;
    if (type == adDBTime) {
        if (value.As<Time>())
            return TimeOfDay(*value.As<Time>());
        if (value.As<Timestamp>() && value.As<Timestamp>()->date == Date())
            return TimeOfDay(value.As<Timestamp>()->time);
        if (ReadTime(text, time))
            return TimeOfDay(time);
        WrongType();
    }
    if (value.As<Timestamp>())
        return Moment(*value.As<Timestamp>(), type);
    if (value.As<Date>())
        return Day(*value.As<Date>());
    if (ReadDate(text, date))
        return Day(date);
    if (ReadTimestamp(text, moment))
        return Moment(moment, type);
    WrongType();
}

// The words for it, as the server writes them; "" for anything else.
QString InfinityOf(const Value &value)
{
    const QString *text = value.As<QString>();
    const QString word = text ? text->trimmed().toLower() : QString();
    return word == u"infinity" || word == u"-infinity" ? word : QString();
}

Value BytesOf(const Value &value)
{
    if (value.As<QByteArray>())
        return value;
    const QByteArray text = TextOf(value);
    const QByteArray digits = text.mid(2);
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (!text.startsWith("0x") || bytes.toHex() != digits.toLower())
        WrongType();
    return bytes;
}

} // namespace

Value Coerce(const Value &value, const ColumnInfo &column)
{
    if (value.IsNull())
        return value;
    switch (column.Type) {
    case adSmallInt:
    case adInteger:
    case adTinyInt:
    case adUnsignedTinyInt:
    case adUnsignedSmallInt:
    case adUnsignedInt:
    case adBigInt:
    case adUnsignedBigInt:
        return Whole(value, column.Type);
    case adSingle:
        return Single(RealOf(value));
    case adDouble:
        return RealOf(value);
    case adBoolean:
        return BoolOf(value);
    case adCurrency:
    case adDecimal:
    case adNumeric:
        return DecimalOf(value);
    case adDate:
    case adDBDate:
    case adDBTime:
    case adDBTimeStamp:
        if (const QString infinity = column.HasInfinity ? InfinityOf(value) : QString(); !infinity.isEmpty())
            return infinity;
        return MomentOf(value, column.Type);
    case adBinary:
        return BytesOf(value);
    case adChapter:
        if (!value.As<Chapter>())
            WrongType();
        return value;
    case adEmpty:
    case adVariant:
        return value;
    default:
        if (value.As<QByteArray>() || value.As<Chapter>()) // their words would be something else
            WrongType();
        return value.ToText();
    }
}

} // namespace ADODB
