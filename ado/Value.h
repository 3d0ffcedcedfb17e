#pragma once
// One typed value of a field. Null is not an empty text; a decimal keeps its digits; times keep nanoseconds.

#include "ado/Types.h"
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <memory>
#include <variant>

namespace ADODB {

class Recordset;

struct Decimal
{ // the digits as the server wrote them, at least 38 of them are safe: "-12.3400"
    QByteArray digits;
    bool operator==(const Decimal &) const = default;
};
struct Date
{
    int year = 0, month = 0, day = 0;
    bool operator==(const Date &) const = default;
};
struct Time
{
    int hour = 0, minute = 0, second = 0, nanosecond = 0;
    bool operator==(const Time &) const = default;
};
struct Timestamp
{
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

    QString ToText() const; // "" for null; booleans "True"/"False"; ISO dates; bytes as 0x...; doubles to 15 digits
    qint64 ToInt64() const; // 0 where there is no number
    double ToDouble() const;
    bool ToBool() const;

    const Body &Variant() const { return m; }
    bool operator==(const Value &other) const { return m == other.m; }

private:
    Body m;
};

// Orders two values: null first, then numbers and booleans by value (decimals exactly), moments, text without regard to
// case, bytes. Gives a number below, at or above 0.
int CompareValues(const Value &left, const Value &right);
int CompareText(QStringView left, QStringView right);           // without regard to case
int CompareUtf8(QByteArrayView left, QByteArrayView right);     // the same over UTF-8
int CompareDecimals(QByteArrayView left, QByteArrayView right); // "-12.3400"; by value, any number of digits

// ISO forms, as ToText gives them.
QString DateText(const Date &date);
QString TimeText(const Time &time);
QString TimestampText(const Timestamp &moment); // the date alone at midnight, the time alone without a date
// Readers of the same forms ("yyyy-MM-dd", "hh:mm:ss[.fraction]", both with a blank or T between); total: false for
// others.
bool ReadDate(QByteArrayView text, Date &date);
bool ReadTime(QByteArrayView text, Time &time);
bool ReadTimestamp(QByteArrayView text, Timestamp &moment);
bool IsDecimalText(QByteArrayView text); // sign, digits, one "." at most, nothing else

} // namespace ADODB
