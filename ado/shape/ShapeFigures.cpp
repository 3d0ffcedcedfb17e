#include "ado/shape/ShapeFigures.h"

#include "ado/ColumnBody.h"
#include "ado/Error.h"
#include <algorithm>
#include <cmath>

namespace ADODB {

namespace {

enum class Exactness
{
    No,
    Whole,
    Decimal
};

Exactness ExactnessOf(DataTypeEnum type)
{
    switch (StorageOf(type)) {
    case Storage::Int64:
    case Storage::UInt64:
    case Storage::Bool:
        return Exactness::Whole;
    case Storage::Decimal:
        return Exactness::Decimal;
    default:
        return Exactness::No;
    }
}

[[noreturn]] void TooLarge()
{
    throw Error(adErrDataConversion, QStringLiteral("The sum has more digits than can be counted exactly."),
                QStringLiteral("22003"));
}

void Grow(WideInt &number, int digits)
{
    for (int i = 0; i < digits; ++i)
        if (__builtin_mul_overflow(number, WideInt(10), &number))
            TooLarge();
}

QByteArray ShownDigits(WideInt number, int scale)
{
    const bool negative = number < 0;
    QByteArray text;
    WideNatural rest = negative ? -static_cast<WideNatural>(number) : static_cast<WideNatural>(number);
    for (; rest > 0 || text.size() <= scale; rest /= 10) {
        text += char('0' + int(rest % 10));
        if (text.size() == scale)
            text += '.';
    }
    if (scale > 0 && text.endsWith('.'))
        text += '0';
    std::reverse(text.begin(), text.end());
    return negative ? '-' + text : text;
}

} // namespace

ColumnInfo FigureColumn(ShapeFigure what, const ColumnInfo &over)
{
    ColumnInfo column;
    column.DefinedSize = 8;
    switch (what) {
    case ShapeFigure::Count:
        column.Type = adBigInt;
        column.Precision = 19;
        return column;
    case ShapeFigure::Avg:
    case ShapeFigure::StDev:
        column.Type = adDouble;
        column.Precision = 15;
        return column;
    case ShapeFigure::Sum:
        switch (ExactnessOf(over.Type)) {
        case Exactness::Whole:
            column.Type = adBigInt;
            column.Precision = 19;
            break;
        case Exactness::Decimal:
            column.Type = adNumeric;
            column.DefinedSize = 19;
            column.Precision = 38;
            column.NumericScale = over.NumericScale;
            break;
        case Exactness::No:
            column.Type = adDouble;
            column.Precision = 15;
        }
        return column;
    default:
        column = over;
        column.IsKey = false;
        column.BaseTable.clear();
        column.BaseColumn.clear();
        return column;
    }
}

void Figure::Take(const Value &value)
{
    if (value.IsNull())
        return;
    ++m_count;
    switch (m_what) {
    case ShapeFigure::Any:
        if (m_count == 1)
            m_best = value;
        break;
    case ShapeFigure::Min:
        if (m_count == 1 || CompareValues(value, m_best) < 0)
            m_best = value;
        break;
    case ShapeFigure::Max:
        if (m_count == 1 || CompareValues(value, m_best) > 0)
            m_best = value;
        break;
    case ShapeFigure::Sum:
        Add(value);
        break;
    case ShapeFigure::Avg:
    case ShapeFigure::StDev: {
        const double number = value.ToDouble();
        const double apart = number - m_mean; // so that large numbers close together keep their spread
        m_real += number;
        m_mean += apart / double(m_count);
        m_squares += apart * (number - m_mean);
        break;
    }
    case ShapeFigure::Count:
        break;
    }
}

void Figure::Add(const Value &value)
{
    const Decimal *const decimal = value.As<Decimal>();
    if (ExactnessOf(m_over.Type) == Exactness::No || value.As<double>() || value.As<QString>() ||
        (decimal && !IsDecimalText(decimal->digits))) {
        m_real += value.ToDouble();
        return;
    }
    WideInt number = 0;
    int scale = 0;
    if (decimal) {
        bool behind = false, negative = false;
        for (const char c : decimal->digits) {
            if (c == '-')
                negative = true;
            else if (c == '.')
                behind = true;
            else if (c != '+') {
                Grow(number, 1);
                number += c - '0';
                scale += behind ? 1 : 0;
            }
        }
        number = negative ? -number : number;
    } else if (const quint64 *natural = value.As<quint64>()) {
        number = *natural;
    } else {
        number = value.ToInt64();
    }
    if (scale > m_scale) {
        Grow(m_whole, scale - m_scale);
        m_scale = scale;
    } else {
        Grow(number, m_scale - scale);
    }
    if (__builtin_add_overflow(m_whole, number, &m_whole))
        TooLarge();
}

Value Figure::Result() const
{
    if (m_what == ShapeFigure::Count)
        return m_count;
    if (m_count == 0)
        return {};
    switch (m_what) {
    case ShapeFigure::Sum:
        switch (ExactnessOf(m_over.Type)) {
        case Exactness::Whole:
            if (m_real != 0) // a value of another type among the whole numbers
                return m_real + double(m_whole) / std::pow(10.0, m_scale);
            if (m_scale == 0 && m_whole == WideInt(qint64(m_whole)))
                return qint64(m_whole);
            TooLarge();
        case Exactness::Decimal:
            if (m_real != 0)
                return m_real + ShownDigits(m_whole, m_scale).toDouble();
            return Decimal{ShownDigits(m_whole, m_scale)};
        case Exactness::No:
            return m_real;
        }
        return {};
    case ShapeFigure::Avg:
        return m_real / double(m_count);
    case ShapeFigure::StDev:
        return m_count < 2 ? Value() : Value(std::sqrt(m_squares / double(m_count - 1)));
    default:
        return m_best;
    }
}

} // namespace ADODB
