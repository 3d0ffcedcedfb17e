#include "visual/logic/JoinedStatement.h"

#include "lang/Text.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <optional>

namespace {

enum class Side
{
    Both,  // inner
    First, // all rows of the first table stay
    Second
};

// Two tables and all lines between them.
struct Bond
{
    size_t first, second; // numbers of sources
    Side kind = Side::Both;
    QStringList conditions;

    bool Joins(size_t a, size_t b) const { return (first == a && second == b) || (first == b && second == a); }
    // Seen from one end: do all rows of the other end stay, and only those?
    bool Keeps(size_t source) const { return (kind == Side::First ? first : second) == source && kind != Side::Both; }
};

bool IsBlank(const QString &text)
{
    return lang::Trim(text).isEmpty();
}

std::optional<size_t> SourceOf(const JoinedWriting &writing, int index, const QString &field)
{
    for (size_t i = 0; i < writing.Sources.size(); ++i)
        if (writing.Sources[i].Index == index && writing.Sources[i].Fields.contains(field))
            return i;
    return std::nullopt;
}

QString FieldOf(const JoinedWriting &writing, const JoinedSource &source, const QString &field)
{
    const bool column = field != u"*" && source.Fields.contains(field);
    return source.Reference + u'.' + (column && writing.Field ? writing.Field(field) : field);
}

std::vector<Bond> BondsOf(const JoinedWriting &writing, const std::vector<MapJoin> &joins)
{
    std::vector<Bond> bonds;
    for (const MapJoin &join : joins) {
        const auto first = SourceOf(writing, join.Table1Index, join.Field1);
        const auto second = SourceOf(writing, join.Table2Index, join.Field2);
        if (!first || !second || *first == *second)
            continue;
        auto bond =
            std::find_if(bonds.begin(), bonds.end(), [&](const Bond &one) { return one.Joins(*first, *second); });
        if (bond == bonds.end())
            bond = bonds.insert(bond, {*first, *second, Side::Both, {}});
        const bool turned = bond->first != *first;
        Side kind = Side::Both;
        if (join.Operator == u"Left Join")
            kind = turned ? Side::Second : Side::First;
        else if (join.Operator == u"Right Join")
            kind = turned ? Side::First : Side::Second;
        if (bond->kind == Side::Both)
            bond->kind = kind;
        const QString condition = FieldOf(writing, writing.Sources[*first], join.Field1) + QStringLiteral(" = ") +
                                  FieldOf(writing, writing.Sources[*second], join.Field2);
        if (!bond->conditions.contains(condition))
            bond->conditions << condition;
    }
    return bonds;
}

QString SourceText(const JoinedWriting &writing, const JoinedSource &source)
{
    if (!source.Named)
        return source.Written;
    return source.Written + (writing.As ? QStringLiteral(" AS ") : QStringLiteral(" ")) + source.Reference;
}

// FROM as it grows: what stands in it, and what can be tied to that.
struct Chain
{
    const JoinedWriting &writing;
    const std::vector<Bond> &bonds;
    QSet<size_t> placed = {};
    QString text = {};

    // The bond that comes next, and the table that it brings. Tables whose rows may be missing come last.
    const Bond *Next(size_t &brings) const
    {
        const Bond *best = nullptr;
        int bestRank = 3;
        for (const Bond &bond : bonds) {
            if (placed.contains(bond.first) == placed.contains(bond.second))
                continue;
            const size_t fresh = placed.contains(bond.first) ? bond.second : bond.first;
            const int rank = bond.kind == Side::Both ? 0 : bond.Keeps(fresh) ? 2 : 1;
            if (rank < bestRank) {
                best = &bond;
                bestRank = rank;
                brings = fresh;
            }
        }
        return best;
    }
    void Begin(size_t source)
    {
        if (!text.isEmpty())
            text += QStringLiteral(", ");
        text += SourceText(writing, writing.Sources[source]);
        placed.insert(source);
    }
    void Grow()
    {
        size_t fresh = 0;
        while (const Bond *bond = Next(fresh)) {
            QStringList conditions;
            for (const Bond &other : bonds)
                if ((other.first == fresh && placed.contains(other.second)) ||
                    (other.second == fresh && placed.contains(other.first)))
                    conditions << other.conditions;
            text += bond->kind == Side::Both ? QStringLiteral("\r\n INNER JOIN ")
                    : bond->Keeps(fresh)     ? QStringLiteral("\r\n RIGHT JOIN ")
                                             : QStringLiteral("\r\n LEFT JOIN ");
            text += SourceText(writing, writing.Sources[fresh]) + QStringLiteral(" ON ") +
                    conditions.join(QStringLiteral(" AND "));
            placed.insert(fresh);
        }
    }
};

// What a row says, in the server's words.
class Terms
{
public:
    Terms(const WizardRows &rows, const JoinedWriting &writing) : m_rows(rows), m_writing(writing)
    {
        for (int row = 1; row <= rows.Count(); ++row)
            m_aliases.insert(rows.TextMatrix(row, wcAlias));
    }

    QString Cell(int row, int column) const { return m_rows.TextMatrix(row, column); }
    bool IsThere(int row) const { return !IsBlank(Cell(row, wcField)); }
    bool IsAggregate(int row) const
    {
        const QString kind = Cell(row, wcGroupBy);
        return m_rows.GroupMode && !IsBlank(kind) && kind != u"Group By" && kind != u"Where";
    }
    bool IsOnlyCondition(int row) const { return m_rows.GroupMode && Cell(row, wcGroupBy) == u"Where"; }
    bool IsExpression(int row) const
    {
        const JoinedSource *source = Source(row);
        const QString field = Cell(row, wcField);
        return (!source || !source->Fields.contains(field)) && lang::Trim(field).contains(u' ');
    }
    QString Value(int row) const // without an aggregate round it
    {
        const QString field = Cell(row, wcField);
        if (IsExpression(row))
            return u'(' + field + u')';
        if (const JoinedSource *source = Source(row))
            return FieldOf(m_writing, *source, field);
        return m_rows.GetFieldRef(row);
    }
    QString Term(int row) const
    {
        if (!IsAggregate(row))
            return Value(row);
        QString kind = Cell(row, wcGroupBy);
        const QString distinct = QStringLiteral(" Distinct");
        const bool each = kind.endsWith(distinct);
        if (each)
            kind.chop(distinct.size());
        const QString value = Value(row);
        const QString all = QStringLiteral("*");
        return kind + u'(' + (each ? QStringLiteral("Distinct ") : QString()) +
               (Cell(row, wcField) == all && kind == u"Count" && !each ? all : value) + u')';
    }
    QString Selected(int row)
    {
        QString alias = Cell(row, wcAlias);
        if (IsBlank(alias) && (IsAggregate(row) || IsExpression(row)))
            alias = FreshAlias();
        return Term(row) + (IsBlank(alias) ? QString() : QStringLiteral(" As ") + alias);
    }

private:
    const JoinedSource *Source(int row) const
    {
        const auto source = std::find_if(m_writing.Sources.begin(), m_writing.Sources.end(),
                                         [&](const JoinedSource &one) { return one.Alias == Cell(row, wcTable); });
        return source == m_writing.Sources.end() ? nullptr : &*source;
    }
    QString FreshAlias()
    {
        QString alias;
        for (int n = 1; alias.isEmpty() || m_aliases.contains(alias); ++n)
            alias = QStringLiteral("EXP") + QString::number(n);
        m_aliases.insert(alias);
        return alias;
    }

    const WizardRows &m_rows;
    const JoinedWriting &m_writing;
    QSet<QString> m_aliases;
};

// The columns of criteria are alternatives; in one the rows hold together.
QString Conditions(const WizardRows &rows, const Terms &terms, bool having)
{
    QStringList alternatives;
    for (int column = wcCriteria; column <= wcOr3; ++column) {
        QStringList all;
        for (int row = 1; row <= rows.Count(); ++row) {
            const QString cell = terms.Cell(row, column);
            if (terms.IsThere(row) && !IsBlank(cell) && terms.IsAggregate(row) == having)
                all << terms.Term(row) + u' ' + cell;
        }
        if (!all.isEmpty())
            alternatives << u'(' + all.join(QStringLiteral(" AND ")) + u')';
    }
    return alternatives.join(QStringLiteral(" OR "));
}

} // namespace

QString ComposeFrom(const JoinedWriting &writing, const std::vector<MapJoin> &joins)
{
    const std::vector<Bond> bonds = BondsOf(writing, joins);
    Chain chain{writing, bonds};
    const auto mayMiss = [&](size_t source) { // some line keeps all rows of its other end
        return std::any_of(bonds.begin(), bonds.end(), [&](const Bond &bond) {
            return bond.kind != Side::Both && (bond.first == source || bond.second == source) && !bond.Keeps(source);
        });
    };
    for (const bool all : {false, true})
        for (size_t source = 0; source < writing.Sources.size(); ++source)
            if (!chain.placed.contains(source) && (all || !mayMiss(source))) {
                chain.Begin(source);
                chain.Grow();
            }
    return chain.text;
}

WizardResult ComposeJoined(const WizardRows &rows, const JoinedWriting &writing, const std::vector<MapJoin> &joins)
{
    if (writing.Sources.empty())
        return {{}, kWizardNoTable};
    Terms terms(rows, writing);
    QStringList fields, groups, order;
    for (int row = 1; row <= rows.Count(); ++row) {
        if (!terms.IsThere(row))
            continue;
        if (terms.Cell(row, wcShow) == u"Y" && !terms.IsOnlyCondition(row))
            fields << terms.Selected(row);
        if (rows.GroupMode && !terms.IsAggregate(row) && !terms.IsOnlyCondition(row))
            groups << terms.Value(row);
        if (const QString direction = terms.Cell(row, wcOrderBy); !direction.isEmpty())
            order << terms.Term(row) + (direction == u"Ascending" ? QString() : QStringLiteral(" Desc"));
    }
    if (fields.isEmpty())
        return {{}, kWizardNoField};
    const QString comma = QStringLiteral(", ");
    QString sql =
        QStringLiteral("Select ") + fields.join(comma) + QStringLiteral("\r\nFrom ") + ComposeFrom(writing, joins);
    const auto clause = [&](const QString &word, const QString &text) {
        if (!text.isEmpty())
            sql += word + text;
    };
    clause(QStringLiteral("\r\nWhere "), Conditions(rows, terms, false));
    clause(QStringLiteral("\r\nGroup By "), groups.join(comma));
    clause(QStringLiteral("\r\nHaving "), Conditions(rows, terms, true));
    clause(QStringLiteral("\r\nOrder By "), order.join(comma));
    return {sql, nullptr};
}
