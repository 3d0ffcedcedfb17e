#include "visual/logic/MapJoins.h"

#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

#include <algorithm>

int MapJoins::LayerUBound() const
{
    int highest = 0;
    for (const MapJoin &row : m_rows)
        highest = std::max(highest, row.Index);
    return highest;
}

const MapJoin *MapJoins::OfLayer(int index) const
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const MapJoin &one) { return one.Index == index; });
    return row == m_rows.end() ? nullptr : &*row;
}

MapJoin *MapJoins::OfLayer(int index)
{
    return const_cast<MapJoin *>(std::as_const(*this).OfLayer(index));
}

int MapJoins::Add(MapJoin row)
{
    row.Index = LayerUBound() + 1;
    m_rows.push_back(std::move(row));
    return m_rows.back().Index;
}

bool MapJoins::Remove(int index)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const MapJoin &one) { return one.Index == index; });
    if (row == m_rows.end())
        return false;
    m_rows.erase(row);
    return true;
}

std::vector<int> MapJoins::RemoveOfTable(const QString &tag)
{
    std::vector<int> removed;
    const auto names = [&](const MapJoin &row) { return row.Table1 == tag || row.Table2 == tag; };
    for (const MapJoin &row : m_rows) {
        if (names(row))
            removed.push_back(row.Index);
    }
    std::erase_if(m_rows, names);
    return removed;
}

bool MapJoins::JoinExists(const QString &Table1, const QString &Field1, const QString &Table2,
                          const QString &Field2) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [&](const MapJoin &row) {
        return row.Table1 == Table1 && row.Table2 == Table2 && row.Field1 == Field1 && row.Field2 == Field2;
    });
}

QString MapJoins::GetJoinStatement(bool IsOracle, const std::function<QString(const QString &)> &write) const
{
    const auto name = [&](const QString &table) { return write ? write(table) : QuoteName(table); };
    QString result;
    for (const MapJoin &row : m_rows) {
        const QString a = name(row.Table1) + u'.' + row.Field1;
        const QString b = name(row.Table2) + u'.' + row.Field2;
        // A condition that is empty brings its separator all the same.
        if (!result.isEmpty())
            result += QStringLiteral("\r\n AND ");
        result += GetJoinCondition(row.Operator, a, b, IsOracle);
    }
    return result;
}

QString GetJoinCondition(const QString &Operator, const QString &A, const QString &B, bool IsOracle)
{
    const QString never = lang::CStr(false); // meant: there is no text for these two
    if (Operator == u"Inner Join")
        return A + QStringLiteral(" = ") + B;
    if (Operator == u"Left Join")
        return IsOracle ? A + QStringLiteral(" = ") + B + QStringLiteral(" (+)") : never;
    if (Operator == u"Right Join")
        return IsOracle ? never : A + QStringLiteral(" =* ") + B;
    return {};
}
