#include "movement/logic/ExactFit.h"

#include "ado/Error.h"

namespace {

constexpr qsizetype doubleDigits = 15; // every decimal of so many comes back out of a double as it went in

[[noreturn]] void Refuse(const ADODB::Value &value)
{
    throw ADODB::Error(ADODB::adErrDataConversion,
                       QStringLiteral("The field would round %1.").arg(value.ToText().left(100)));
}

bool IsWhole64(QByteArrayView decimal)
{
    bool good = false;
    decimal.toByteArray().toLongLong(&good);
    return good;
}

} // namespace

qsizetype SignificantDigits(QByteArrayView decimal)
{
    QByteArray digits;
    for (const char c : decimal)
        if (c >= '0' && c <= '9' && (c != '0' || !digits.isEmpty()))
            digits += c;
    while (digits.endsWith('0'))
        digits.chop(1);
    return digits.size();
}

void RaiseIfRounded(const ADODB::Value &value, const ADODB::ColumnInfo &column,
                    const std::function<bool()> &decimalsAreExact)
{
    const auto *decimal = value.As<ADODB::Decimal>();
    QByteArray text;
    if (decimal)
        text = decimal->digits;
    else if (const auto *typed = value.As<QString>())
        text = typed->trimmed().toUtf8();
    switch (column.Type) {
    case ADODB::adSingle:
        if (const double *number = value.As<double>(); number && double(float(*number)) != *number)
            Refuse(value);
        [[fallthrough]];
    case ADODB::adDouble:
        if (decimal && SignificantDigits(text) > doubleDigits)
            Refuse(value);
        break;
    case ADODB::adDecimal:
    case ADODB::adNumeric:
        if (ADODB::IsDecimalText(text) && SignificantDigits(text) > doubleDigits && !IsWhole64(text) &&
            !decimalsAreExact())
            Refuse(value);
        break;
    default:
        break;
    }
}
