#include "ado/Value.h"

#include "lang/Text.h"
#include <cmath>
#include <limits>

namespace ADODB {

namespace {

template <class... T> struct Overloaded : T...
{
    using T::operator()...;
};
template <class... T> Overloaded(T...) -> Overloaded<T...>;

// Saturates: a number past the whole-number range gives the nearest whole number that fits.
qint64 WholeOf(double number)
{
    if (std::isnan(number))
        return 0;
    if (number >= 9223372036854775807.0)
        return std::numeric_limits<qint64>::max();
    if (number <= -9223372036854775808.0)
        return std::numeric_limits<qint64>::min();
    return qint64(std::nearbyint(number)); // half to the even neighbour, as everywhere
}

qint64 WholeOfText(QByteArrayView digits)
{
    bool exact = false;
    const qint64 whole = digits.toByteArray().toLongLong(&exact);
    return exact ? whole : WholeOf(digits.toByteArray().toDouble());
}

} // namespace

QString Value::ToText() const
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return QString(); }, [](bool value) { return lang::CStr(value); },
            [](qint64 value) { return QString::number(value); }, [](quint64 value) { return QString::number(value); },
            [](double value) { return lang::CStr(value); },
            [](const Decimal &value) { return QString::fromLatin1(value.digits); },
            [](const QString &value) { return value; },
            [](const QByteArray &value) { return QStringLiteral("0x") + QString::fromLatin1(value.toHex().toUpper()); },
            [](const Date &value) { return DateText(value); }, [](const Time &value) { return TimeText(value); },
            [](const Timestamp &value) { return TimestampText(value); }, [](const Chapter &) { return QString(); }},
        m);
}

qint64 Value::ToInt64() const
{
    return std::visit(Overloaded{[](bool value) { return qint64(value ? -1 : 0); }, [](qint64 value) { return value; },
                                 [](quint64 value) {
                                     return value > quint64(std::numeric_limits<qint64>::max())
                                                ? std::numeric_limits<qint64>::max()
                                                : qint64(value);
                                 },
                                 [](double value) { return WholeOf(value); },
                                 [](const Decimal &value) { return WholeOfText(value.digits); },
                                 [](const QString &value) {
                                     bool exact = false;
                                     const qint64 whole = value.toLongLong(&exact);
                                     return exact ? whole : WholeOf(lang::Val(value));
                                 },
                                 [](const auto &) { return qint64(0); }},
                      m);
}

double Value::ToDouble() const
{
    return std::visit(
        Overloaded{[](bool value) { return value ? -1.0 : 0.0; }, [](qint64 value) { return double(value); },
                   [](quint64 value) { return double(value); }, [](double value) { return value; },
                   [](const Decimal &value) { return value.digits.toDouble(); },
                   [](const QString &value) { return lang::Val(value); }, [](const auto &) { return 0.0; }},
        m);
}

bool Value::ToBool() const
{
    if (const QString *text = As<QString>())
        return CompareText(*text, u"true") == 0 || lang::Val(*text) != 0;
    return ToDouble() != 0;
}

} // namespace ADODB
