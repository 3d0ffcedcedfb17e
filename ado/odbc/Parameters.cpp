#include "ado/odbc/Parameters.h"
#include <cstring>

namespace ADODB::Odbc {

namespace {

constexpr qint64 kWidestArray = 8 << 20; // bytes of one column
constexpr qint64 kLongText = 4000;

template <class T> void Put(BoundValue &bound, SQLSMALLINT cType, SQLSMALLINT sqlType, SQLULEN size, const T &raw)
{
    bound.CType = cType;
    bound.SqlType = sqlType;
    bound.Size = size;
    bound.Data = QByteArray(reinterpret_cast<const char *>(&raw), sizeof raw);
}

void PutText(BoundValue &bound, const QByteArray &text)
{
    bound.SqlType = text.size() > kLongText ? SQL_LONGVARCHAR : SQL_VARCHAR;
    bound.Size = SQLULEN(qMax<qsizetype>(1, text.size()));
    bound.Data = text;
}

struct Binder
{
    BoundValue &bound;

    void operator()(std::monostate) { bound.IsNull = true; }
    void operator()(bool value) { Put(bound, SQL_C_BIT, SQL_BIT, 1, static_cast<unsigned char>(value)); }
    void operator()(qint64 value) { Put(bound, SQL_C_SBIGINT, SQL_BIGINT, 19, value); }
    void operator()(quint64 value) { PutNumber(QByteArray::number(value), 0); }
    void operator()(double value) { Put(bound, SQL_C_DOUBLE, SQL_DOUBLE, 15, value); }
    void operator()(const Decimal &value)
    {
        const qsizetype point = value.digits.indexOf('.');
        PutNumber(value.digits, point < 0 ? 0 : value.digits.size() - point - 1);
    }
    void operator()(const QString &value) { PutText(bound, value.toUtf8()); }
    void operator()(const QByteArray &value)
    {
        bound.CType = SQL_C_BINARY;
        bound.SqlType = value.size() > kLongText ? SQL_LONGVARBINARY : SQL_VARBINARY;
        bound.Size = SQLULEN(qMax<qsizetype>(1, value.size()));
        bound.Data = value;
    }
    void operator()(const Date &value)
    {
        Put(bound, SQL_C_TYPE_DATE, SQL_TYPE_DATE, 10,
            SQL_DATE_STRUCT{SQLSMALLINT(value.year), SQLUSMALLINT(value.month), SQLUSMALLINT(value.day)});
    }
    void operator()(const Time &) { PutText(bound, Value(*time).ToText().toUtf8()); }
    void operator()(const Timestamp &value)
    {
        const SQL_TIMESTAMP_STRUCT raw{SQLSMALLINT(value.date.year),      SQLUSMALLINT(value.date.month),
                                       SQLUSMALLINT(value.date.day),      SQLUSMALLINT(value.time.hour),
                                       SQLUSMALLINT(value.time.minute),   SQLUSMALLINT(value.time.second),
                                       SQLUINTEGER(value.time.nanosecond)};
        Put(bound, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 26, raw);
        bound.Digits = 6;
    }
    void operator()(const Chapter &) { bound.IsNull = true; }

    void PutNumber(const QByteArray &digits, qsizetype scale)
    {
        bound.SqlType = SQL_DECIMAL;
        bound.Size = SQLULEN(qMax<qsizetype>(1, digits.size()));
        bound.Digits = SQLSMALLINT(scale);
        bound.Data = digits;
    }
    const Time *time = nullptr;
};

bool SameKind(const BoundValue &left, const BoundValue &right)
{
    return left.CType == right.CType && left.SqlType == right.SqlType;
}

} // namespace

BoundValue Bindable(const Value &value, bool momentsAsText)
{
    BoundValue bound;
    bound.IsNull = false;
    if (momentsAsText && (value.As<Date>() || value.As<Timestamp>())) {
        PutText(bound, value.ToText().toUtf8());
        return bound;
    }
    std::visit(Binder{bound, value.As<Time>()}, value.Variant());
    return bound;
}

bool ParameterArray::Fill(const ColumnStore &column, qint64 first, qint64 rows)
{
    std::vector<BoundValue> values;
    values.reserve(size_t(rows));
    Lengths.assign(size_t(rows), SQL_NULL_DATA);
    Shape = BoundValue();
    Width = 1;
    for (qint64 row = 0; row < rows; ++row) {
        BoundValue value = Bindable(column.At(first + row));
        if (!value.IsNull) {
            if (Shape.IsNull)
                Shape = value;
            else if (!SameKind(Shape, value))
                return false;
            Shape.Size = qMax(Shape.Size, value.Size);
            Shape.Digits = qMax(Shape.Digits, value.Digits);
            Width = qMax<qint64>(Width, value.Data.size());
            Lengths[size_t(row)] = value.Data.size();
        }
        values.push_back(std::move(value));
    }
    if (Width * rows > kWidestArray)
        return false;
    Data = QByteArray(Width * rows, '\0');
    for (qint64 row = 0; row < rows; ++row)
        if (!values[size_t(row)].Data.isEmpty())
            std::memcpy(Data.data() + row * Width, values[size_t(row)].Data.constData(),
                        size_t(values[size_t(row)].Data.size()));
    return true;
}

void BindParameter(const Handle &statement, int number, BoundValue &value, SQLLEN &length)
{
    length = value.IsNull ? SQL_NULL_DATA : value.Data.size();
    ODBC_CALL(SQLBindParameter, statement, SQLUSMALLINT(number), SQLSMALLINT(SQL_PARAM_INPUT), value.CType,
              value.SqlType, value.Size, value.Digits, static_cast<SQLPOINTER>(value.Data.data()),
              SQLLEN(value.Data.size()), &length);
}

void BindParameter(const Handle &statement, int number, ParameterArray &array)
{
    ODBC_CALL(SQLBindParameter, statement, SQLUSMALLINT(number), SQLSMALLINT(SQL_PARAM_INPUT), array.Shape.CType,
              array.Shape.SqlType, array.Shape.Size, array.Shape.Digits, static_cast<SQLPOINTER>(array.Data.data()),
              SQLLEN(array.Width), array.Lengths.data());
}

} // namespace ADODB::Odbc
