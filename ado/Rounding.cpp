#include "ado/Rounding.h"

#include "ado/Error.h"
#include "ado/family/Family.h"

namespace ADODB {

namespace {

// How many digits a decimal needs before and behind its point.
struct Digits
{
    int whole = 0, fraction = 0, significant = 0;
};

Digits DigitsOf(QByteArrayView text)
{
    Digits digits;
    const qsizetype point = text.indexOf('.');
    const qsizetype end = point < 0 ? text.size() : point;
    qsizetype first = -1, last = -1, place = 0; // the digits that are not 0, counted without sign and point
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c < '0' || c > '9')
            continue;
        if (c != '0') {
            if (first < 0)
                first = place;
            last = place;
            if (i < end && digits.whole == 0)
                digits.whole = int(end - i);
            if (i > end)
                digits.fraction = int(i - end);
        }
        ++place;
    }
    digits.significant = first < 0 ? 0 : int(last - first + 1);
    return digits;
}

} // namespace

void RaiseIfRounded(const Value &value, const ColumnInfo &column, const Family &family)
{
    const RowRules &rules = family.Rows;
    bool fits = true;
    if (const Decimal *number = value.As<Decimal>()) {
        const Digits digits = DigitsOf(number->digits);
        const bool unbound = column.Precision <= 0 ||
                             (column.Precision == rules.UnboundPrecision && column.NumericScale == rules.UnboundScale);
        constexpr int wholeAlways = 18; // a 64-bit number
        if (rules.DecimalDigits > 0)
            fits = digits.significant <= rules.DecimalDigits || (digits.fraction == 0 && digits.whole <= wholeAlways);
        else if (!unbound)
            fits = digits.fraction <= column.NumericScale && digits.whole <= column.Precision - column.NumericScale;
    } else if (const Timestamp *moment = value.As<Timestamp>(); moment && rules.DecimalDigits == 0) {
        int places = 9;
        for (int rest = moment->time.nanosecond; places > 0 && rest % 10 == 0; rest /= 10)
            --places;
        fits = places <= column.NumericScale;
    }
    if (!fits)
        throw Error(Fault::WrongValue);
}

} // namespace ADODB
