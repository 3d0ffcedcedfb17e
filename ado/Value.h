#pragma once
// One typed value of a field. Null is not an empty text; a decimal keeps its digits; times keep nanoseconds.

#include "ado/Types.h"
#include <QByteArray>
#include <QString>
#include <memory>
#include <variant>

namespace ADODB {

class Recordset;

struct Decimal { // the digits as the server wrote them, at least 38 of them are safe: "-12.3400"
    QByteArray digits;
    bool operator==(const Decimal &) const = default;
};
struct Date {
    int year = 0, month = 0, day = 0;
    bool operator==(const Date &) const = default;
};
struct Time {
    int hour = 0, minute = 0, second = 0, nanosecond = 0;
    bool operator==(const Time &) const = default;
};
struct Timestamp {
    Date date;
    Time time;
    bool operator==(const Timestamp &) const = default;
};
using Chapter = std::shared_ptr<Recordset>; // the child rows of a hierarchical recordset

class Value
{
public:
    using Body = std::variant<std::monostate, bool, qint64, quint64, double, Decimal, QString, QByteArray, Date, Time,
                              Timestamp, Chapter>;

    Value() = default; // null
    Value(bool value) : m(value) {}
    Value(int value) : m(qint64(value)) {}
    Value(qint64 value) : m(value) {}
    Value(quint64 value) : m(value) {}
    Value(double value) : m(value) {}
    Value(QString value) : m(std::move(value)) {}
    Value(const char16_t *value) : m(QString::fromUtf16(value)) {}
    Value(QByteArray value) : m(std::move(value)) {}
    Value(Decimal value) : m(std::move(value)) {}
    Value(Date value) : m(value) {}
    Value(Time value) : m(value) {}
    Value(Timestamp value) : m(value) {}
    Value(Chapter value) : m(std::move(value)) {}

    bool IsNull() const { return std::holds_alternative<std::monostate>(m); }
    template <class T> const T *As() const { return std::get_if<T>(&m); } // null when it holds another type

    QString ToText() const;   // "" for null; booleans "True"/"False"; ISO dates; bytes as 0x...; doubles to 15 digits
    qint64 ToInt64() const;   // 0 where there is no number
    double ToDouble() const;
    bool ToBool() const;

    const Body &Variant() const { return m; }
    bool operator==(const Value &other) const { return m == other.m; }

private:
    Body m;
};

} // namespace ADODB
