#include "views/InlineFind.h"

namespace {

QString PatternOf(const QString &criteria, bool exactMatch, bool caseSensitive)
{
    const QString pattern = exactMatch ? criteria : u'*' + criteria + u'*';
    return caseSensitive ? pattern : lang::UCase(pattern);
}

} // namespace

InlineFind::InlineFind(const QString &criteria, bool exactMatch, bool caseSensitive)
    : m_criteria(criteria), m_caseSensitive(caseSensitive), m_pattern(PatternOf(criteria, exactMatch, caseSensitive))
{
}

bool InlineFind::Hits(const QString &value) const
{
    return m_pattern.Matches(m_caseSensitive ? value : lang::UCase(value));
}

QString InlineFind::Replaced(const QString &value, const QString &with) const
{
    return lang::Replace(value, m_criteria, with, m_caseSensitive ? lang::Compare::Binary : lang::Compare::Text);
}

std::optional<InlineFind::Place> InlineFind::Next(const ADODB::Recordset &rows, Place from,
                                                  const std::function<bool(qint64)> &keepOn) const
{
    try {
        const qint64 count = rows.RowCount();
        const int columns = rows.ColumnCount();
        for (qint64 row = from.Row; row < count; ++row) {
            if (keepOn && !keepOn(row))
                return std::nullopt;
            for (int column = row == from.Row ? from.Column : 0; column < columns; ++column)
                if (Hits(rows.CellText(row, column)))
                    return Place{row, column};
        }
    } catch (const ADODB::Error &) { // the rows have gone while events were let through
    }
    return std::nullopt;
}

InlineFind::Place InlineFind::Behind(const ADODB::Recordset &rows, Place place)
{
    if (place.Column + 1 < rows.ColumnCount())
        return {place.Row, place.Column + 1};
    return {place.Row + 1, 0};
}

QString InlineFind::FilterText(const QStringList &fields, const QString &criteria, bool exactMatch, bool caseSensitive)
{
    const QString sought = caseSensitive ? criteria : lang::UCase(criteria);
    QStringList tests;
    for (const QString &field : fields)
        tests += (caseSensitive ? field : QStringLiteral("Ucase(") + field + u')') +
                 (exactMatch ? QStringLiteral(" = '") : QStringLiteral(" LIKE '%")) + sought +
                 (exactMatch ? QStringLiteral("'") : QStringLiteral("%'"));
    return tests.join(QStringLiteral(" OR "));
}
