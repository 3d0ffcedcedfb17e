#include "visual/logic/WizardStatement.h"

#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

#include <array>

namespace {

bool IsBlank(const QString &text)
{
    return lang::Trim(text).isEmpty();
}

// The cell stands somewhere in the list, in any case; an empty cell always does.
bool IsOneOf(const QString &cell, const QString &list)
{
    return lang::InStr(list, cell, lang::Compare::Text) > 0;
}

void Append(QString &list, const QString &separator, const QString &term)
{
    if (!list.isEmpty())
        list += separator;
    list += term;
}

// The term of one row of a grouped statement; "" for a row that the list leaves out.
QString GroupedTerm(WizardRows &rows, int row, bool grouping)
{
    const QString kind = rows.TextMatrix(row, wcGroupBy);
    const QString field = rows.GetFieldRef(row);
    if (IsOneOf(kind, QStringLiteral("Group By")))
        return field + u' ';
    if (grouping)
        return {};
    const QString given = rows.TextMatrix(row, wcAlias), made = rows.GetUniqueAlias();
    const QString term = lang::Left(kind, 3) == u"Exp" ? field : kind + QStringLiteral(" (") + field + u')';
    // The alias goes into the statement once: the grid shows a fresh one from here on.
    rows.SetTextMatrix(row, wcAlias, rows.GetUniqueAlias());
    return term + QStringLiteral(" AS ") + (IsBlank(given) ? made : given);
}

QString PlainTerm(WizardRows &rows, int row)
{
    if (rows.TextMatrix(row, wcShow) != u"Y")
        return {};
    const QString field = rows.TextMatrix(row, wcField);
    if (lang::InStr(lang::Trim(field), QStringLiteral(" ")) > 0) {
        if (rows.TextMatrix(row, wcAlias).isEmpty())
            rows.SetTextMatrix(row, wcAlias, rows.GetUniqueAlias());
        return u'(' + field + QStringLiteral(") As ") + rows.TextMatrix(row, wcAlias);
    }
    const QString alias = rows.TextMatrix(row, wcAlias);
    return rows.GetFieldRef(row) + (alias.isEmpty() ? QString() : QStringLiteral(" As ") + alias);
}

// What a criterion contributes; "" where it belongs to the other clause.
QString Condition(const WizardRows &rows, int row, const QString &cell, bool having)
{
    const QString kind = rows.TextMatrix(row, wcGroupBy);
    if (rows.GroupMode) {
        const bool plain = IsOneOf(kind, QStringLiteral("Group By, Where"));
        if (having == plain)
            return {};
        if (having)
            return kind + QStringLiteral(" (") + rows.GetFieldRef(row) + QStringLiteral(") ") + cell;
    }
    return rows.GetFieldRef(row) + u' ' + cell;
}

} // namespace

QString BuildFieldList(WizardRows &rows, bool Grouping)
{
    QString list;
    for (int row = 1; row <= rows.Count(); ++row) {
        if (IsBlank(rows.TextMatrix(row, wcField)))
            continue;
        const QString term = rows.GroupMode ? GroupedTerm(rows, row, Grouping) : PlainTerm(rows, row);
        if (!term.isEmpty())
            Append(list, QStringLiteral(", "), term);
    }
    return list;
}

QString BuildOrderBy(const WizardRows &rows)
{
    QString list;
    for (int row = 1; row <= rows.Count(); ++row) {
        const QString order = rows.TextMatrix(row, wcOrderBy);
        if (order.isEmpty() || rows.TextMatrix(row, wcField).isEmpty())
            continue;
        const QString direction = order == u"Ascending" ? QString() : QStringLiteral("Desc");
        Append(list, QStringLiteral(","), rows.GetFieldRef(row) + u' ' + direction);
    }
    return list;
}

QString BuildCriteria(const WizardRows &rows, bool Having, const QString &JoinStatement)
{
    std::array<QString, wcOr3 - wcCriteria + 1> parts;
    for (int row = 1; row <= rows.Count(); ++row) {
        if (IsBlank(rows.TextMatrix(row, wcField))) // as every clause does: there is nothing to compare
            continue;
        for (size_t c = 0; c < parts.size(); ++c) {
            const QString cell = rows.TextMatrix(row, wcCriteria + int(c));
            if (IsBlank(cell))
                continue;
            const QString condition = Condition(rows, row, cell, Having);
            if (!condition.isEmpty())
                Append(parts[c], QStringLiteral(" AND "), condition);
        }
    }
    QString result;
    for (size_t c : {size_t(1), size_t(2), size_t(3), size_t(0)}) {
        if (!parts[c].isEmpty())
            Append(result, QStringLiteral(" OR "), u'(' + parts[c] + u')');
    }
    if (Having || JoinStatement.isEmpty())
        return result;
    return result.isEmpty() ? JoinStatement : JoinStatement + QStringLiteral("\r\n AND ") + result;
}

WizardResult ComposeStatement(WizardRows &rows, const QString &TableList, const QString &JoinStatement)
{
    if (TableList.isEmpty())
        return {{}, kWizardNoTable};
    const QString fields = BuildFieldList(rows, false);
    if (fields.isEmpty())
        return {{}, kWizardNoField};
    QString sql = QStringLiteral("Select ") + fields + QStringLiteral(" From ") + TableList;
    const QString where = BuildCriteria(rows, false, JoinStatement);
    if (!IsBlank(where))
        sql += QStringLiteral(" Where ") + where;
    if (rows.GroupMode) {
        if (const QString groups = BuildFieldList(rows, true); !groups.isEmpty())
            sql += QStringLiteral(" Group By ") + groups;
        if (const QString having = BuildCriteria(rows, true, {}); !having.isEmpty())
            sql += QStringLiteral(" Having ") + having;
    }
    if (const QString order = BuildOrderBy(rows); !order.isEmpty())
        sql += QStringLiteral(" Order By ") + order;
    return {sql, nullptr};
}
