#include "ado/shape/ShapeMatch.h"

#include "ado/ColumnBody.h"
#include <charconv>
#include <cmath>
#include <limits>

namespace ADODB {

namespace {

constexpr qint64 breathes = 4096; // rows between two looks at whether somebody has stopped it

enum class ValueKind
{
    Number,
    Text,
    Moment,
    TimeOfDay,
    Bytes,
    Any,
    None
};

ValueKind KindOf(DataTypeEnum type)
{
    switch (StorageOf(type)) {
    case Storage::Int64:
    case Storage::UInt64:
    case Storage::Double:
    case Storage::Bool:
    case Storage::Decimal:
        return ValueKind::Number;
    case Storage::Date:
    case Storage::Timestamp:
        return ValueKind::Moment;
    case Storage::Time:
        return ValueKind::TimeOfDay;
    case Storage::Bytes:
        return ValueKind::Bytes;
    case Storage::Any:
        return type == adChapter ? ValueKind::None : ValueKind::Any;
    case Storage::Chapters:
        return ValueKind::None;
    case Storage::Text:
        break;
    }
    return ValueKind::Text;
}

// The digits without what changes nothing: "+01.50" is "1.5", "-0" is "0".
QByteArray PlainDigits(QByteArrayView text)
{
    bool negative = false;
    if (!text.isEmpty() && (text[0] == '-' || text[0] == '+')) {
        negative = text[0] == '-';
        text = text.sliced(1);
    }
    const qsizetype point = text.indexOf('.');
    QByteArrayView whole = point < 0 ? text : text.first(point);
    QByteArrayView fraction = point < 0 ? QByteArrayView() : text.sliced(point + 1);
    while (!whole.isEmpty() && whole.front() == '0')
        whole = whole.sliced(1);
    while (!fraction.isEmpty() && fraction.back() == '0')
        fraction = fraction.chopped(1);
    QByteArray plain = whole.isEmpty() ? QByteArrayLiteral("0") : whole.toByteArray();
    if (!fraction.isEmpty())
        plain += '.' + fraction.toByteArray();
    if (negative && plain != "0")
        plain.prepend('-');
    return plain;
}

QByteArray DigitsOf(double number)
{
    char digits[400];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed);
    return PlainDigits(QByteArrayView(digits, end.ptr - digits));
}

// One value as a key: a whole number of 64 bits where it is one, else bytes that are equal where the values are.
struct Key
{
    bool isNull = false, isWhole = false;
    qint64 whole = 0;
    QByteArray bytes;
};

Key WholeKey(qint64 number)
{
    return {false, true, number, {}};
}

Key DigitsKey(const QByteArray &plain)
{
    bool whole = false;
    const qint64 number = plain.contains('.') ? 0 : plain.toLongLong(&whole);
    return whole ? WholeKey(number) : Key{false, false, 0, 'n' + plain};
}

Key KeyOf(const Value &value, bool padded)
{
    if (value.IsNull())
        return {true, false, 0, {}};
    if (const qint64 *number = value.As<qint64>())
        return WholeKey(*number);
    if (const bool *truth = value.As<bool>())
        return WholeKey(*truth ? -1 : 0); // as everywhere else in the order of values
    if (const quint64 *number = value.As<quint64>())
        return *number <= quint64(std::numeric_limits<qint64>::max()) ? WholeKey(qint64(*number))
                                                                      : DigitsKey(QByteArray::number(*number));
    if (const double *number = value.As<double>()) {
        if (!std::isfinite(*number))
            return {false, false, 0, "f" + QByteArray::number(*number)};
        if (*number == std::floor(*number) && std::fabs(*number) < 9.0e18)
            return WholeKey(qint64(*number));
        return DigitsKey(DigitsOf(*number));
    }
    if (const Decimal *decimal = value.As<Decimal>()) {
        if (IsDecimalText(decimal->digits))
            return DigitsKey(PlainDigits(decimal->digits));
        return {false, false, 0, "f" + decimal->digits};
    }
    if (const QString *text = value.As<QString>()) {
        QStringView letters = *text;
        while (padded && letters.endsWith(u' '))
            letters.chop(1);
        return {false, false, 0, 's' + letters.toUtf8()};
    }
    if (const QByteArray *bytes = value.As<QByteArray>())
        return {false, false, 0, 'b' + *bytes};
    if (const Time *time = value.As<Time>())
        return {false, false, 0, 't' + TimeText(*time).toUtf8()};
    if (const Date *date = value.As<Date>())
        return {false, false, 0, 'd' + TimestampText({*date, {}}).toUtf8()};
    if (const Timestamp *moment = value.As<Timestamp>())
        return {false, false, 0, (moment->date == Date() ? 't' : 'd') + TimestampText(*moment).toUtf8()};
    return {true, false, 0, {}};
}

// Numbers for keys, in the order in which they first come.
class Numbers
{
public:
    explicit Numbers(bool nullsMeet) : m_nullsMeet(nullsMeet) {}

    quint32 Of(const ShapeKey &key, qint64 row, bool add)
    {
        if (key.Columns.size() == 1) {
            const Key one = Read(*key.Columns.front(), row);
            if (one.isWhole)
                return Find(m_whole, one.whole, add);
            if (one.isNull && !m_nullsMeet)
                return ShapeGroups::None;
            return Find(m_bytes, one.bytes, add);
        }
        QByteArray all;
        for (const ColumnStore *column : key.Columns) {
            Key part = Read(*column, row);
            if (part.isNull && !m_nullsMeet)
                return ShapeGroups::None;
            if (part.isWhole)
                part.bytes = 'n' + QByteArray::number(part.whole);
            all += QByteArray::number(part.bytes.size()) + ':' + part.bytes; // so that no two texts run together
        }
        return Find(m_bytes, all, add);
    }
    quint32 Count() const { return m_count; }

private:
    static Key Read(const ColumnStore &column, qint64 row)
    {
        return KeyOf(column.At(row), column.Type() == adChar || column.Type() == adWChar);
    }
    template <class Map, class T> quint32 Find(Map &map, const T &what, bool add)
    {
        const auto found = map.constFind(what);
        if (found != map.cend())
            return *found;
        if (!add)
            return ShapeGroups::None;
        map.insert(what, m_count);
        return m_count++;
    }

    const bool m_nullsMeet;
    quint32 m_count = 0;
    QHash<qint64, quint32> m_whole;
    QHash<QByteArray, quint32> m_bytes;
};

// Rows into their groups, in their order.
void TakeRows(ShapeGroups &groups, const std::vector<quint32> &groupOfRow, quint32 count)
{
    groups.Starts.assign(size_t(count) + 1, 0);
    for (const quint32 group : groupOfRow)
        if (group != ShapeGroups::None)
            ++groups.Starts[size_t(group) + 1];
    for (size_t group = 0; group < count; ++group)
        groups.Starts[group + 1] += groups.Starts[group];
    groups.Rows.resize(groups.Starts.back());
    std::vector<quint32> next(groups.Starts.begin(), groups.Starts.end() - 1);
    for (size_t row = 0; row < groupOfRow.size(); ++row)
        if (const quint32 group = groupOfRow[row]; group != ShapeGroups::None)
            groups.Rows[next[group]++] = quint32(row);
}

} // namespace

bool MayBeEqual(DataTypeEnum left, DataTypeEnum right)
{
    const ValueKind a = KindOf(left), b = KindOf(right);
    if (a == ValueKind::None || b == ValueKind::None)
        return false;
    return a == b || a == ValueKind::Any || b == ValueKind::Any;
}

std::span<const quint32> ShapeGroups::Of(qint64 parent) const
{
    if (parent < 0 || size_t(parent) >= OfParent.size() || OfParent[size_t(parent)] == None)
        return {};
    const quint32 group = OfParent[size_t(parent)];
    return std::span(Rows).subspan(Starts[group], Starts[group + 1] - Starts[group]);
}

qint64 ShapeGroups::BytesHeld() const
{
    return qint64((OfParent.capacity() + Starts.capacity() + Rows.capacity()) * sizeof(quint32));
}

ShapeGroups MatchRows(const ShapeKey &parents, qint64 parentRows, const ShapeKey &children, qint64 childRows,
                      const std::function<void()> &breathe)
{
    ShapeGroups groups;
    Numbers numbers(false);
    groups.OfParent.resize(size_t(parentRows));
    for (qint64 row = 0; row < parentRows; ++row) {
        if (row % breathes == 0)
            breathe();
        groups.OfParent[size_t(row)] = numbers.Of(parents, row, true);
    }
    std::vector<quint32> groupOfRow(static_cast<size_t>(childRows));
    for (qint64 row = 0; row < childRows; ++row) {
        if (row % breathes == 0)
            breathe();
        groupOfRow[size_t(row)] = numbers.Of(children, row, false);
    }
    TakeRows(groups, groupOfRow, numbers.Count());
    return groups;
}

ShapeGroups GroupRows(const ShapeKey &key, qint64 rows, const std::function<void()> &breathe)
{
    ShapeGroups groups;
    Numbers numbers(true);
    std::vector<quint32> groupOfRow(static_cast<size_t>(rows), 0);
    for (qint64 row = 0; !key.Columns.empty() && row < rows; ++row) {
        if (row % breathes == 0)
            breathe();
        groupOfRow[size_t(row)] = numbers.Of(key, row, true);
    }
    const quint32 count = key.Columns.empty() ? 1 : numbers.Count();
    TakeRows(groups, groupOfRow, count);
    for (quint32 group = 0; group < count; ++group)
        groups.OfParent.push_back(group);
    return groups;
}

} // namespace ADODB
