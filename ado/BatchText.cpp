#include "ado/BatchText.h"

#include "ado/BaseTable.h"
#include "ado/family/Family.h"

namespace ADODB {

namespace {

// That a column (%1) has the value that was read, once or several times bound; "" where the server cannot compare it.
QString Condition(const ColumnInfo &column, const Family &family)
{
    return column.Type == adChapter ? QString() : family.Rows.Equality(column);
}

class Composer
{
public:
    Composer(const BatchTarget &target, const QByteArray &pattern) : m_target(target), m_pattern(pattern) {}

    BatchText Insert()
    {
        QStringList names, marks;
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (!Has(i, BatchPattern::Set))
                continue;
            names += Name(i);
            marks += QStringLiteral("?");
            Bind(int(i), false);
        }
        m_text.Sql = QStringLiteral("INSERT INTO ") + m_target.Table;
        if (!names.isEmpty())
            m_text.Sql += QStringLiteral(" (%1) VALUES (%2)")
                              .arg(names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
        else
            m_text.Sql += QLatin1String(Rules().EmptyRow);
        if (RowHas(BatchPattern::Returning))
            AskForWhatWasMade();
        return std::move(m_text);
    }

    BatchText Update()
    {
        QStringList sets;
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (!Has(i, BatchPattern::Set))
                continue;
            sets += Name(i) + QStringLiteral(" = ?");
            Bind(int(i), false);
        }
        m_text.Sql =
            QStringLiteral("UPDATE ") + m_target.Table + QStringLiteral(" SET ") + sets.join(QStringLiteral(", "));
        Where();
        return std::move(m_text);
    }

    BatchText Delete()
    {
        m_text.Sql = QStringLiteral("DELETE FROM ") + m_target.Table;
        Where();
        return std::move(m_text);
    }

private:
    const RowRules &Rules() const { return m_target.Family->Rows; }
    QString RowId() const { return QString::fromLatin1(Rules().RowId); }
    bool RowHas(char flag) const { return (m_pattern[1] & flag) != 0; }
    bool Has(size_t column, char flag) const { return (m_pattern[qsizetype(column) + 2] & flag) != 0; }
    QString Name(size_t column) const { return QuotedName(m_target.Names[qsizetype(column)], m_target.Quote); }
    void Bind(int column, bool original)
    {
        m_text.Parameters.push_back({column, original, m_target.Columns[size_t(column)].Type});
    }

    void Where()
    {
        const size_t before = m_text.Parameters.size();
        QStringList conditions;
        if (RowHas(BatchPattern::ByRowId)) {
            conditions += RowId() + QStringLiteral(" = ?");
            m_text.Parameters.push_back({-1, true, adBigInt});
        }
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (!Has(i, BatchPattern::Where))
                continue;
            if (Has(i, BatchPattern::Null)) {
                conditions += Name(i) + QStringLiteral(" IS NULL");
                continue;
            }
            QString condition = Condition(m_target.Columns[i], *m_target.Family);
            if (condition.isEmpty())
                continue;
            for (qsizetype marks = condition.count(u'?'); marks > 0; --marks)
                Bind(int(i), true);
            conditions += condition.replace(QStringLiteral("%1"), Name(i)); // no arg(): a name may hold a "%1" too
        }
        if (conditions.isEmpty()) // every row would be met
            throw Error(Fault::NoKey);
        const QString where = QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
        m_text.Sql += where;
        if (m_target.Family->Transactions.TakesBack && !RowHas(BatchPattern::ByKey))
            CountFirst(where, m_text.Parameters.size() - before);
    }

    void CountFirst(const QString &where, size_t parameters)
    {
        const TransactionRules &rules = m_target.Family->Transactions;
        m_text.Counted = {.TakesBack = {},
                          .Count = QStringLiteral("SELECT COUNT(*) FROM ") + m_target.Table + where,
                          .By = qsizetype(parameters),
                          .Sql = m_text.Sql + QLatin1String(rules.OneRow)};
        for (const ColumnInfo &column : m_target.Columns) {
            if (column.BaseTable.isEmpty())
                continue;
            m_text.Counted.TakesBack = rules.TakesBack(column.BaseSchema, column.BaseTable);
            return;
        }
    }

    // As it comes back exactly.
    QString Returned(size_t column) const
    {
        const auto exact = Rules().Exact;
        const QString name = Name(column);
        return exact ? exact(m_target.Columns[column], name) : name;
    }

    void AskForWhatWasMade()
    {
        QStringList names;
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (m_target.Names[qsizetype(i)].isEmpty())
                continue;
            names += Returned(i);
            m_text.Made.push_back(int(i));
        }
        if (m_target.HasRowIds) {
            names += RowId();
            m_text.Made.push_back(-1);
        }
        const QString list = names.join(QStringLiteral(", "));
        const std::vector<int> key = m_target.Key();
        if (m_target.CanReturn)
            m_text.Sql += QStringLiteral(" RETURNING ") + list;
        else if (Rules().MadeByRowId)
            m_text.Ask = QString::fromLatin1(Rules().MadeByRowId).arg(list, m_target.Table);
        else if (Rules().MadeByKey && key.size() == 1)
            m_text.Ask = QString::fromLatin1(Rules().MadeByKey).arg(list, m_target.Table, Name(size_t(key.front())));
        else
            m_text.Made.clear();
    }

    const BatchTarget &m_target;
    const QByteArray &m_pattern;
    BatchText m_text;
};

} // namespace

std::vector<int> BatchTarget::Key() const
{
    std::vector<int> key;
    for (size_t i = 0; i < Columns.size(); ++i)
        if (Columns[i].IsKey)
            key.push_back(int(i));
    return key;
}

BatchText ComposeBatch(const BatchTarget &target, const QByteArray &pattern)
{
    Composer composer(target, pattern);
    switch (pattern[0]) {
    case 'D':
        return composer.Delete();
    case 'U':
        return composer.Update();
    default:
        return composer.Insert();
    }
}

} // namespace ADODB
