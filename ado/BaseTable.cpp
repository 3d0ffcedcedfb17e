#include "ado/BaseTable.h"

#include "ado/Error.h"
#include "lang/Text.h"

namespace ADODB {

namespace {

bool IsBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

bool IsNameChar(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#' || c == u'@' || c.isSurrogate();
}

QChar ClosingOf(QChar open)
{
    if (open == u'[')
        return u']';
    return open == u'"' || open == u'`' ? open : QChar();
}

// Steps over a quoted name that opens at `at`; false when it is not closed.
bool SkipQuoted(const QString &text, qsizetype &at)
{
    const QChar close = ClosingOf(text[at]);
    for (++at; at < text.size(); ++at) {
        if (text[at] != close)
            continue;
        ++at;
        if (at >= text.size() || text[at] != close)
            return true;
    }
    return false;
}

// The dotted name that stands at `at`, as it is written; "" when there is none.
QString TakeName(const QString &text, qsizetype &at)
{
    const qsizetype from = at;
    for (;;) {
        if (at < text.size() && !ClosingOf(text[at]).isNull()) {
            if (!SkipQuoted(text, at))
                return {};
        } else {
            const qsizetype part = at;
            while (at < text.size() && IsNameChar(text[at]))
                ++at;
            if (at == part)
                return {};
        }
        if (at >= text.size() || text[at] != u'.')
            return text.mid(from, at - from);
        ++at;
    }
}

// The name behind "SELECT ... FROM", outside quotes; "" for anything more involved.
QString NameInSource(const QString &source)
{
    qsizetype at = 0;
    while (at < source.size()) {
        const QChar c = source[at];
        if (!ClosingOf(c).isNull()) {
            if (!SkipQuoted(source, at))
                return {};
        } else if (c == u'\'' || c == u'(') {
            return {};
        } else if (IsNameChar(c)) {
            const qsizetype from = at;
            while (at < source.size() && IsNameChar(source[at]))
                ++at;
            if (source.mid(from, at - from).compare(QStringLiteral("FROM"), Qt::CaseInsensitive) == 0) {
                while (at < source.size() && IsBlank(source[at]))
                    ++at;
                return TakeName(source, at);
            }
        } else {
            ++at;
        }
    }
    return {};
}

} // namespace

QString QuotedName(const QString &name, const QString &quote)
{
    if (quote.isEmpty())
        return name;
    return quote + lang::Replace(name, quote, quote + quote) + quote;
}

QString BaseTableOf(const QString &source, const std::vector<ColumnInfo> &columns, const QString &quote)
{
    QString told;
    bool several = false;
    for (const ColumnInfo &column : columns) {
        if (column.BaseTable.isEmpty())
            continue;
        several = several || (!told.isEmpty() && told != column.BaseTable);
        told = column.BaseTable;
    }
    const QString written = several ? QString() : NameInSource(source);
    if (!written.isEmpty())
        return written;
    if (several || told.isEmpty())
        throw Error(adErrProviderFailed,
                    QStringLiteral("Insufficient base table information for updating or refreshing."));
    return QuotedName(told, quote);
}

} // namespace ADODB
