#include "lang/Text.h"

#include <QStringMatcher>

#include <algorithm>

namespace lang {

namespace {

constexpr QChar Blank(u' ');

Qt::CaseSensitivity CaseOf(Compare compare)
{
    return compare == Compare::Text ? Qt::CaseInsensitive : Qt::CaseSensitive;
}

qsizetype FirstNotBlank(const QString &text)
{
    const auto hit = std::find_if(text.cbegin(), text.cend(), [](QChar c) { return c != Blank; });
    return hit - text.cbegin();
}

qsizetype BehindLastNotBlank(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == Blank)
        --end;
    return end;
}

} // namespace

QString Trim(const QString &text)
{
    const qsizetype start = FirstNotBlank(text);
    return text.mid(start, std::max<qsizetype>(0, BehindLastNotBlank(text) - start));
}

QString LTrim(const QString &text)
{
    return text.mid(FirstNotBlank(text));
}

QString RTrim(const QString &text)
{
    return text.left(BehindLastNotBlank(text));
}

QStringList Split(const QString &text, const QString &delimiter, Compare compare)
{
    if (text.isEmpty())
        return {};
    if (delimiter.isEmpty())
        return {text};
    return text.split(delimiter, Qt::KeepEmptyParts, CaseOf(compare));
}

qsizetype InStr(const QString &text, const QString &what, Compare compare)
{
    return InStr(1, text, what, compare);
}

qsizetype InStr(qsizetype start, const QString &text, const QString &what, Compare compare)
{
    start = std::max<qsizetype>(1, start);
    if (start > text.size())
        return 0;
    if (what.isEmpty())
        return start;
    return text.indexOf(what, start - 1, CaseOf(compare)) + 1;
}

qsizetype InStrRev(const QString &text, const QString &what, Compare compare)
{
    if (text.isEmpty())
        return 0;
    if (what.isEmpty())
        return text.size();
    return text.lastIndexOf(what, -1, CaseOf(compare)) + 1;
}

QString Left(const QString &text, qsizetype length)
{
    return text.left(std::max<qsizetype>(0, length));
}

QString Right(const QString &text, qsizetype length)
{
    return text.right(std::max<qsizetype>(0, length));
}

QString Mid(const QString &text, qsizetype start, qsizetype length)
{
    start = std::max<qsizetype>(1, start);
    if (start > text.size())
        return {};
    return text.mid(start - 1, length < 0 ? -1 : length);
}

QString Replace(const QString &text, const QString &what, const QString &with, Compare compare)
{
    if (what.isEmpty())
        return text;
    // One walk that copies stretch by stretch: the toolkit's own replace moves the tail again for every batch of hits.
    const QStringMatcher matcher(what, CaseOf(compare));
    QString result;
    qsizetype from = 0;
    for (qsizetype hit = matcher.indexIn(text); hit >= 0; hit = matcher.indexIn(text, from)) {
        result.append(QStringView(text).mid(from, hit - from)).append(with);
        from = hit + what.size();
    }
    if (from == 0)
        return text;
    return result.append(QStringView(text).mid(from));
}

QString UCase(const QString &text)
{
    // Character by character: the length must never change, since positions are carried over from the original.
    QString result = text;
    for (QChar &c : result)
        c = c.toUpper();
    return result;
}

QString LCase(const QString &text)
{
    QString result = text;
    for (QChar &c : result)
        c = c.toLower();
    return result;
}

} // namespace lang
