// The order of values: what sorting and filters go by.
#include "ado/Value.h"

#include <cstring>
#include <tuple>

namespace ADODB {

namespace {

enum Rank
{
    RankNull,
    RankNumber,
    RankMoment,
    RankText,
    RankBytes,
    RankChapter
};

Rank RankOf(const Value &value)
{
    // In the order of Value::Body.
    static constexpr Rank ranks[] = {RankNull, RankNumber, RankNumber, RankNumber, RankNumber, RankNumber,
                                     RankText, RankBytes,  RankMoment, RankMoment, RankMoment, RankChapter};
    static_assert(std::size(ranks) == std::variant_size_v<Value::Body>);
    return ranks[value.Variant().index()];
}

template <class T> int Order(const T &left, const T &right)
{
    return left < right ? -1 : (right < left ? 1 : 0);
}

Timestamp MomentOf(const Value &value)
{
    if (const Date *date = value.As<Date>())
        return {*date, {}};
    if (const Time *time = value.As<Time>())
        return {{}, *time};
    return *value.As<Timestamp>();
}

auto Parts(const Timestamp &t)
{
    return std::make_tuple(t.date.year, t.date.month, t.date.day, t.time.hour, t.time.minute, t.time.second,
                           t.time.nanosecond);
}

// Whole numbers as their digits, so that they compare with decimals exactly.
QByteArray DecimalText(const Value &value)
{
    if (const Decimal *decimal = value.As<Decimal>())
        return decimal->digits;
    if (const quint64 *number = value.As<quint64>())
        return QByteArray::number(*number);
    return QByteArray::number(value.ToInt64());
}

long double Real(const Value &value)
{
    if (const double *number = value.As<double>())
        return *number;
    if (const qint64 *number = value.As<qint64>())
        return *number;
    if (const quint64 *number = value.As<quint64>())
        return *number;
    return value.ToDouble();
}

int CompareNumbers(const Value &left, const Value &right)
{
    if (const qint64 *a = left.As<qint64>())
        if (const qint64 *b = right.As<qint64>())
            return Order(*a, *b);
    if (!left.As<double>() && !right.As<double>())
        return CompareDecimals(DecimalText(left), DecimalText(right));
    // Against decimal digits a double is the number that these digits would read as; against whole numbers it is exact.
    const bool digits = left.As<Decimal>() || right.As<Decimal>();
    const long double a = digits ? left.ToDouble() : Real(left), b = digits ? right.ToDouble() : Real(right);
    const bool aIsNumber = a == a, bIsNumber = b == b;
    if (!aIsNumber || !bIsNumber)
        return int(aIsNumber) - int(bIsNumber); // "not a number" comes first and equals itself
    return Order(a, b);
}

struct Digital
{
    bool negative = false;
    QByteArrayView whole;    // without leading zeros
    QByteArrayView fraction; // without trailing zeros
};

Digital Split(QByteArrayView text)
{
    Digital parts;
    if (!text.isEmpty() && (text[0] == '-' || text[0] == '+')) {
        parts.negative = text[0] == '-';
        text = text.sliced(1);
    }
    const qsizetype point = text.indexOf('.');
    parts.whole = point < 0 ? text : text.first(point);
    parts.fraction = point < 0 ? QByteArrayView() : text.sliced(point + 1);
    while (!parts.whole.isEmpty() && parts.whole.front() == '0')
        parts.whole = parts.whole.sliced(1);
    while (!parts.fraction.isEmpty() && parts.fraction.back() == '0')
        parts.fraction = parts.fraction.chopped(1);
    if (parts.whole.isEmpty() && parts.fraction.isEmpty())
        parts.negative = false; // -0 is 0
    return parts;
}

int CompareBytes(QByteArrayView left, QByteArrayView right)
{
    const qsizetype common = std::min(left.size(), right.size());
    const int order = common == 0 ? 0 : std::memcmp(left.data(), right.data(), size_t(common));
    return order != 0 ? order : Order(left.size(), right.size());
}

} // namespace

bool IsDecimalText(QByteArrayView text)
{
    if (!text.isEmpty() && (text[0] == '-' || text[0] == '+'))
        text = text.sliced(1);
    int digits = 0, points = 0;
    for (const char c : text) {
        if (c == '.')
            ++points;
        else if (c >= '0' && c <= '9')
            ++digits;
        else
            return false;
    }
    return digits > 0 && points <= 1;
}

int CompareDecimals(QByteArrayView left, QByteArrayView right)
{
    if (!IsDecimalText(left) || !IsDecimalText(right)) // "1E+40", "NaN": no digits to go by
        return Order(left.toByteArray().toDouble(), right.toByteArray().toDouble());
    const Digital a = Split(left), b = Split(right);
    if (a.negative != b.negative)
        return a.negative ? -1 : 1;
    int order = Order(a.whole.size(), b.whole.size());
    if (order == 0)
        order = CompareBytes(a.whole, b.whole);
    if (order == 0)
        order = CompareBytes(a.fraction, b.fraction);
    return a.negative ? -order : order;
}

int CompareText(QStringView left, QStringView right)
{
    return left.compare(right, Qt::CaseInsensitive);
}

int CompareUtf8(QByteArrayView left, QByteArrayView right)
{
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        unsigned char a = static_cast<unsigned char>(left[i]), b = static_cast<unsigned char>(right[i]);
        if (a >= 0x80 || b >= 0x80) // past ASCII the cases are the text rules' business
            return CompareText(QString::fromUtf8(left), QString::fromUtf8(right));
        a = a >= 'A' && a <= 'Z' ? a + 32 : a;
        b = b >= 'A' && b <= 'Z' ? b + 32 : b;
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (left.size() == right.size())
        return 0;
    return left.size() < right.size() ? -1 : 1;
}

int CompareValues(const Value &left, const Value &right)
{
    const Rank a = RankOf(left), b = RankOf(right);
    if (a != b)
        return Order(int(a), int(b));
    switch (a) {
    case RankNumber:
        return CompareNumbers(left, right);
    case RankMoment:
        return Order(Parts(MomentOf(left)), Parts(MomentOf(right)));
    case RankText:
        return CompareText(*left.As<QString>(), *right.As<QString>());
    case RankBytes:
        return CompareBytes(*left.As<QByteArray>(), *right.As<QByteArray>());
    default:
        return 0;
    }
}

} // namespace ADODB
