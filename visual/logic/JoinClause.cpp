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

std::optional<QString> JoinFieldsQuery(const QString &Table, const QString &Written)
{
    if (lang::Trim(Table).isEmpty())
        return std::nullopt;
    return QStringLiteral("SELECT * FROM ") + (Written.isEmpty() ? QuoteName(Table) : Written) +
           QStringLiteral(" where 1=0");
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

bool JoinClause::IsPreviousInBrackets() const
{
    return lang::InStr(Previous, QStringLiteral(" ")) > 0;
}

bool JoinClause::IsTableInBrackets() const
{
    return lang::InStr(Table, kSelect, lang::Compare::Text) > 0;
}

QString JoinClause::PreviousQuery(const QString &Written) const
{
    const bool brackets = IsPreviousInBrackets();
    return QStringLiteral("SELECT * FROM ") +
           (!Written.isEmpty() ? Written
            : brackets         ? u'(' + Previous + u')'
                               : QuoteName(Previous)) +
           (brackets ? QStringLiteral(" WHERE 1=0") : QStringLiteral("  WHERE 1=0"));
}

QString JoinClause::TableQuery(const QString &Written) const
{
    return QStringLiteral("SELECT * FROM ") +
           (IsTableInBrackets()  ? u'(' + Table + u')'
            : !Written.isEmpty() ? Written + u' '
                                 : QuoteName(Table) + u' ') +
           QStringLiteral("TempTableX WHERE 1=0");
}
