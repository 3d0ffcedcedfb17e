#include "lang/Text.h"

#include <cmath>
#include <limits>

namespace lang {

namespace {

constexpr int Significant = 15;

// The day that a moment without a date lies on.
const QDate &DayZero()
{
    static const QDate day(1899, 12, 30);
    return day;
}

} // namespace

QString CStr(double number)
{
    if (number == 0)
        return QStringLiteral("0"); // also for the negative zero
    if (std::isnan(number))
        return QStringLiteral("-1.#IND");
    if (std::isinf(number))
        return number > 0 ? QStringLiteral("1.#INF") : QStringLiteral("-1.#INF");
    return QString::number(number, 'G', Significant);
}

QString CStr(qint64 number)
{
    return QString::number(number);
}

QString CStr(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString Str(double number)
{
    const QString text = CStr(number);
    return text.startsWith(u'-') ? text : u' ' + text;
}

double Round(double number, int digits)
{
    const double scale = std::pow(10.0, digits);
    const double scaled = number * scale;
    // Past 2^52 there is no fraction left to round.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0)
        return number;
    return std::nearbyint(scaled) / scale;
}

qint64 CLng(double number)
{
    if (std::isnan(number))
        return 0;
    const double whole = Round(number);
    if (whole >= 9223372036854775808.0)
        return std::numeric_limits<qint64>::max();
    if (whole < -9223372036854775808.0)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(whole);
}

QString CDate(const QDateTime &moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    const bool dated = date.isValid() && date != DayZero();
    if (!dated)
        return time.isValid() ? time.toString(u"hh:mm:ss") : QString();
    const QString day = date.toString(u"yyyy-MM-dd");
    if (!time.isValid() || time.msecsSinceStartOfDay() == 0)
        return day;
    return day + u' ' + time.toString(u"hh:mm:ss");
}

float Rnd()
{
    static quint32 state = 0x50000;
    state = (state * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
    return static_cast<float>(state) / 16777216.0f;
}

QString FormatSeconds(double seconds)
{
    // A span over midnight comes out negative; it is shown as it is.
    const qint64 signedWhole = CLng(seconds);
    const quint64 whole = signedWhole < 0 ? 0 - quint64(signedWhole) : quint64(signedWhole);
    const auto two = [](quint64 n) { return QString::number(n).rightJustified(2, u'0'); };
    const QString text = two(whole / 3600) + u':' + two(whole / 60 % 60) + u':' + two(whole % 60);
    return signedWhole < 0 ? u'-' + text : text;
}

} // namespace lang
