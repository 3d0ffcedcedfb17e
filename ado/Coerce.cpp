// Values on their way into a typed field.
#include "ado/RecordsetBody.h"

#include <charconv>
#include <cmath>

namespace ADODB {

namespace {

[[noreturn]] void WrongType()
{
    throw Error(adErrDataConversion,
                QStringLiteral("Application uses a value of the wrong type for the current operation."));
}

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

Value Whole(const Value &value, bool isUnsigned)
{
    if (value.As<qint64>() && (!isUnsigned || *value.As<qint64>() >= 0))
        return value;
    if (value.As<quint64>() && (isUnsigned || *value.As<quint64>() <= quint64(INT64_MAX)))
        return isUnsigned ? value : Value(qint64(*value.As<quint64>()));
    if (value.As<bool>())
        return qint64(value.ToInt64());
    bool good = false;
    const QByteArray text = TextOf(value);
    if (isUnsigned) {
        if (const quint64 number = text.toULongLong(&good); good)
            return number;
    } else if (const qint64 number = text.toLongLong(&good); good) {
        return number;
    }
    const double real = std::nearbyint(RealOf(value));
    if (!(real >= -9.2e18 && real <= 9.2e18) || (isUnsigned && real < 0))
        WrongType();
    return isUnsigned ? Value(quint64(real)) : Value(qint64(real));
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
    return RealOf(value) != 0;
}

Value MomentOf(const Value &value, DataTypeEnum type)
{
    const QByteArray text = TextOf(value);
    Date date;
    Time time;
    Timestamp moment;
    if (type == adDBTime) {
        if (value.As<Time>())
            return value;
        if (value.As<Timestamp>())
            return value.As<Timestamp>()->time;
        if (ReadTime(text, time))
            return time;
        WrongType();
    }
    if (value.As<Timestamp>())
        return type == adDBDate ? Value(value.As<Timestamp>()->date) : value;
    if (value.As<Date>())
        return value;
    if (ReadDate(text, date))
        return date;
    if (ReadTimestamp(text, moment))
        return type == adDBDate ? Value(moment.date) : Value(moment);
    WrongType();
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
        return Whole(value, false);
    case adUnsignedBigInt:
        return Whole(value, true);
    case adSingle:
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
        return value.ToText();
    }
}

} // namespace ADODB
