#include "visual/logic/JoinClause.h"

#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

namespace {

const QString kSelect = QStringLiteral("select");

QString Alias(int number)
{
    return u'T' + QString::number(number);
}

// A statement in brackets takes the alias of the step itself, a table that of its place behind it.
QString Source(const QString &text, int step, int place)
{
    // In small letters only, unlike TableQuery.
    return lang::InStr(text, kSelect) > 0 ? u'(' + text + QStringLiteral(") ") + Alias(step)
                                          : text + u' ' + Alias(step + place);
}

} // namespace

std::optional<QString> JoinFieldsQuery(const QString &Table)
{
    if (lang::Trim(Table).isEmpty())
        return std::nullopt;
    return QStringLiteral("SELECT * FROM ") + QuoteName(Table) + QStringLiteral(" where 1=0");
}

std::optional<FieldMatch> FindMatch(const QStringList &first, const QStringList &second)
{
    for (qsizetype i = 0; i < first.size(); ++i) {
        const qsizetype j = second.indexOf(first[i]);
        if (j >= 0)
            return FieldMatch{int(i), int(j)};
    }
    return std::nullopt;
}

QString JoinClause::GetSQL() const
{
    QString result = Source(Previous, Step, 1) + u' ' + Join + u' ' + Source(Table, Step, 2);
    if (!Field0.isEmpty() && !Field1.isEmpty() && Join != u"Cross Join")
        result += QStringLiteral(" ON ( ") + Alias(Step + 1) + u'.' + Field0 + Operator + u' ' + Alias(Step + 2) +
                  u'.' + Field1 + u')';
    return result;
}

QString JoinClause::PreviousQuery() const
{
    const bool blank = lang::InStr(Previous, QStringLiteral(" ")) > 0;
    return blank ? QStringLiteral("SELECT * FROM (") + Previous + QStringLiteral(") WHERE 1=0")
                 : QStringLiteral("SELECT * FROM ") + QuoteName(Previous) + QStringLiteral("  WHERE 1=0");
}

QString JoinClause::TableQuery() const
{
    return lang::InStr(Table, kSelect, lang::Compare::Text) > 0
               ? QStringLiteral("SELECT * FROM (") + Table + QStringLiteral(")TempTableX WHERE 1=0")
               : QStringLiteral("SELECT * FROM ") + QuoteName(Table) + QStringLiteral(" TempTableX WHERE 1=0");
}
