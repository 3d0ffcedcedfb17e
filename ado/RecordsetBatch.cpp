// Writing rows back: one statement for all rows that need the same text, prepared once, its values bound.
#include "ado/RecordsetBody.h"

#include "ado/BaseTable.h"
#include "ado/Guard.h"
#include "ado/TableKey.h"

namespace ADODB {

namespace {

// Rows that share one statement. Parameters are columns of the types of their fields.
struct Group
{
    QString sql;
    std::vector<std::uint32_t> rows;
    std::vector<ColumnStore> parameters;
};

class Writer
{
public:
    Writer(const std::vector<ColumnInfo> &columns, const QString &source, Session &session)
        : m_columns(columns), m_quote(session.IdentifierQuote()), m_family(session.Family()),
          m_table(BaseTableOf(source, columns, m_quote))
    {
    }

    void Insert(std::uint32_t row, const std::vector<bool> &touched, const std::vector<Value> &now)
    {
        QStringList names, marks;
        std::vector<std::pair<int, Value>> values;
        for (size_t i = 0; i < m_columns.size(); ++i) {
            if (!touched[i])
                continue;
            names += Name(int(i));
            marks += QStringLiteral("?");
            values.emplace_back(int(i), now[i]);
        }
        const QString tail = !names.isEmpty()
                                 ? QStringLiteral(" (%1) VALUES (%2)")
                                       .arg(names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")))
                             : m_family == DatabaseFamily::MySQL ? QStringLiteral(" () VALUES ()")
                                                                 : QStringLiteral(" DEFAULT VALUES");
        Add(QStringLiteral("INSERT INTO ") + m_table + tail, row, values);
    }

    // Gives false when nothing differs.
    bool Update(std::uint32_t row, const std::vector<Value> &before, const std::vector<Value> &now)
    {
        QStringList sets;
        std::vector<std::pair<int, Value>> values;
        for (size_t i = 0; i < m_columns.size(); ++i) {
            if (before[i] == now[i])
                continue;
            sets += Name(int(i)) + QStringLiteral(" = ?");
            values.emplace_back(int(i), now[i]);
        }
        if (sets.isEmpty())
            return false;
        const QString where = Where(before, values);
        Add(QStringLiteral("UPDATE ") + m_table + QStringLiteral(" SET ") + sets.join(QStringLiteral(", ")) + where,
            row, values);
        return true;
    }

    void Delete(std::uint32_t row, const std::vector<Value> &before)
    {
        std::vector<std::pair<int, Value>> values;
        const QString where = Where(before, values);
        Add(QStringLiteral("DELETE FROM ") + m_table + where, row, values);
    }

    std::vector<Group> &Groups() { return m_groups; }

private:
    QString Name(int column) const
    {
        const ColumnInfo &info = m_columns[size_t(column)];
        return QuotedName(info.BaseColumn.isEmpty() ? info.Name : info.BaseColumn, m_quote);
    }

    // The row by its key; without a key (or with a null in it) by all values that it had.
    QString Where(const std::vector<Value> &before, std::vector<std::pair<int, Value>> &values) const
    {
        bool byKey = false;
        for (size_t i = 0; i < m_columns.size(); ++i)
            byKey = byKey || m_columns[i].IsKey;
        for (size_t i = 0; i < m_columns.size(); ++i)
            byKey = byKey && !(m_columns[i].IsKey && before[i].IsNull());
        QStringList conditions;
        for (size_t i = 0; i < m_columns.size(); ++i) {
            const DataTypeEnum type = m_columns[i].Type;
            // Servers do not compare long texts, bytes and chapters.
            if (byKey ? !m_columns[i].IsKey : type == adLongVarWChar || type == adBinary || type == adChapter)
                continue;
            if (before[i].IsNull()) {
                conditions += Name(int(i)) + QStringLiteral(" IS NULL");
            } else {
                conditions += Name(int(i)) + QStringLiteral(" = ?");
                values.emplace_back(int(i), before[i]);
            }
        }
        if (conditions.isEmpty())
            throw Error(adErrProviderFailed,
                        QStringLiteral("Insufficient key column information for updating or refreshing."));
        return QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
    }

    void Add(const QString &sql, std::uint32_t row, const std::vector<std::pair<int, Value>> &values)
    {
        size_t index = 0;
        if (const auto found = m_bySql.find(sql); found != m_bySql.end()) {
            index = found->second;
        } else {
            index = m_groups.size();
            m_groups.push_back({sql, {}, {}});
            for (const auto &[column, value] : values)
                m_groups.back().parameters.emplace_back(m_columns[size_t(column)].Type);
            m_bySql.emplace(sql, index);
        }
        Group &group = m_groups[index];
        group.rows.push_back(row);
        for (size_t i = 0; i < values.size(); ++i)
            group.parameters[i].Append(values[i].second);
    }

    const std::vector<ColumnInfo> &m_columns;
    const QString m_quote;
    const DatabaseFamily m_family;
    const QString m_table;
    std::vector<Group> m_groups;
    std::map<QString, size_t> m_bySql;
};

} // namespace

void Recordset::Body::Send(const std::vector<std::uint32_t> &rows)
{
    if (!connection) {
        pending.clear();
        return;
    }
    Connection::Turn turn(connection, source);
    turn.Begin();
    Session &session = turn.Driver();
    if (!keyAsked) { // an insertion alone needs no key
        for (const std::uint32_t row : rows) {
            const auto found = pending.find(row);
            keyAsked = keyAsked || (found != pending.end() && found->second.kind != Pending::Inserted);
        }
        if (keyAsked)
            MarkKey(session, BaseTableOf(source, infos, session.IdentifierQuote()), infos);
    }
    Writer writer(infos, source, session);
    // Deletions first and insertions last, so that a key that moves from one row to another is free when it is needed.
    for (const Pending::Kind kind : {Pending::Deleted, Pending::Modified, Pending::Inserted}) {
        for (const std::uint32_t row : rows) {
            const auto found = pending.find(row);
            if (found == pending.end() || found->second.kind != kind)
                continue;
            const Pending &was = found->second;
            if (kind == Pending::Deleted)
                writer.Delete(row, was.original);
            else if (kind == Pending::Inserted)
                writer.Insert(row, was.touched, RowValues(row));
            else if (!writer.Update(row, was.original, RowValues(row)))
                pending.erase(found);
        }
    }
    std::optional<Error> first;
    qint64 refused = 0;
    for (const Group &group : writer.Groups()) {
        std::unordered_set<qint64> failed;
        // A statement without parameters (a row of defaults) runs once a call.
        const bool isBare = group.parameters.empty();
        for (size_t call = 0; call < (isBare ? group.rows.size() : 1); ++call) {
            const auto refuse = [&](qint64 row, const Error &error) {
                failed.insert(isBare ? qint64(call) : row);
                if (!first)
                    first = error;
            };
            AsErrors([&] { return session.ExecuteBatch(group.sql, group.parameters, refuse); });
        }
        refused += qint64(failed.size());
        for (size_t i = 0; i < group.rows.size(); ++i)
            if (!failed.contains(qint64(i)))
                pending.erase(group.rows[i]);
        if (first && (first->Number == adErrOperationCancelled || !session.IsAlive()))
            break; // the other groups stay pending as they are
    }
    if (!first)
        return;
    if (refused > 1)
        first->Description += QStringLiteral("\r\n%1 rows were refused; they stay as they were edited.").arg(refused);
    throw *first;
}

} // namespace ADODB
