// The ISO forms of dates and times, written and read.
#include "ado/Value.h"

namespace ADODB {

namespace {

void PutDigits(QString &to, int number, int width)
{
    if (number < 0) {
        to += u'-';
        number = -number;
    }
    to += QString::number(number).rightJustified(width, u'0');
}

// Reads exactly `width` digits at `at` and steps over them.
bool TakeDigits(QByteArrayView text, qsizetype &at, int width, int &number)
{
    if (at + width > text.size())
        return false;
    number = 0;
    for (int i = 0; i < width; ++i, ++at) {
        const char c = text[at];
        if (c < '0' || c > '9')
            return false;
        number = number * 10 + (c - '0');
    }
    return true;
}

bool TakeChar(QByteArrayView text, qsizetype &at, char wanted)
{
    if (at >= text.size() || text[at] != wanted)
        return false;
    ++at;
    return true;
}

bool TakeDate(QByteArrayView text, qsizetype &at, Date &date)
{
    return TakeDigits(text, at, 4, date.year) && TakeChar(text, at, '-') && TakeDigits(text, at, 2, date.month) &&
           TakeChar(text, at, '-') && TakeDigits(text, at, 2, date.day) && date.month >= 1 && date.month <= 12 &&
           date.day >= 1 && date.day <= 31;
}

bool TakeTime(QByteArrayView text, qsizetype &at, Time &time)
{
    if (!TakeDigits(text, at, 2, time.hour) || !TakeChar(text, at, ':') || !TakeDigits(text, at, 2, time.minute) ||
        !TakeChar(text, at, ':') || !TakeDigits(text, at, 2, time.second))
        return false;
    if (time.hour > 23 || time.minute > 59 || time.second > 60)
        return false;
    time.nanosecond = 0;
    if (!TakeChar(text, at, '.'))
        return true;
    int digits = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at, ++digits)
        if (digits < 9)
            time.nanosecond = time.nanosecond * 10 + (text[at] - '0');
    if (digits == 0 || digits > 9)
        return false;
    for (; digits < 9; ++digits)
        time.nanosecond *= 10;
    return true;
}

} // namespace

QString DateText(const Date &date)
{
    QString text;
    PutDigits(text, date.year, 4);
    text += u'-';
    PutDigits(text, date.month, 2);
    text += u'-';
    PutDigits(text, date.day, 2);
    return text;
}

QString TimeText(const Time &time)
{
    QString text;
    PutDigits(text, time.hour, 2);
    text += u':';
    PutDigits(text, time.minute, 2);
    text += u':';
    PutDigits(text, time.second, 2);
    if (time.nanosecond != 0) {
        QString fraction = QString::number(time.nanosecond).rightJustified(9, u'0');
        while (fraction.endsWith(u'0'))
            fraction.chop(1);
        text += u'.' + fraction;
    }
    return text;
}

QString TimestampText(const Timestamp &moment)
{
    if (moment.time == Time())
        return DateText(moment.date);
    if (moment.date == Date())
        return TimeText(moment.time);
    return DateText(moment.date) + u' ' + TimeText(moment.time);
}

bool ReadDate(QByteArrayView text, Date &date)
{
    qsizetype at = 0;
    return TakeDate(text, at, date) && at == text.size();
}

bool ReadTime(QByteArrayView text, Time &time)
{
    qsizetype at = 0;
    return TakeTime(text, at, time) && at == text.size();
}

bool ReadTimestamp(QByteArrayView text, Timestamp &moment)
{
    qsizetype at = 0;
    return TakeDate(text, at, moment.date) && (TakeChar(text, at, ' ') || TakeChar(text, at, 'T')) &&
           TakeTime(text, at, moment.time) && at == text.size();
}

} // namespace ADODB
