#include "ado/BatchText.h"

#include "ado/BaseTable.h"

namespace ADODB {

namespace {

bool IsText(DataTypeEnum type)
{
    switch (type) {
    case adBSTR:
    case adGUID:
    case adChar:
    case adWChar:
    case adVarChar:
    case adVarWChar:
    case adLongVarWChar:
        return true;
    default:
        return false;
    }
}

// PostgreSQL's types whose values equal exactly when their texts do, as far as "=" goes. The others are compared as the
// texts that they were read as: some have no "=" (json, xml, point), with some it means something else (box).
bool HasPlainEquality(const QString &typeName)
{
    for (const char *name : {"varchar", "text", "char", "bpchar", "name", "uuid"})
        if (typeName == QLatin1String(name))
            return true;
    return false;
}

// That a column (%1) has the value that was read, once or several times bound; "" where the server cannot compare it.
QString Condition(const ColumnInfo &column, DatabaseFamily family)
{
    const DataTypeEnum type = column.Type;
    const bool isLong = (column.Attributes & adFldLong) != 0 && column.Attributes != adFldUnspecified;
    if (type == adChapter)
        return {};
    switch (family) {
    case DatabaseFamily::SQLite:
        // A real number may have been read with the 15 digits that its text has, and a moment in another spelling.
        if (type == adSingle || type == adDouble)
            return QStringLiteral("(%1 = ? OR CAST(CAST(%1 AS TEXT) AS REAL) = ?)");
        if (type == adDBTimeStamp || type == adDate || type == adDBTime)
            return QStringLiteral("(%1 = ? OR julianday(%1) = julianday(?))");
        if (IsText(type)) // by bytes, whatever the column's collation says
            return column.TypeName.isEmpty() ? QStringLiteral("%1 = ? COLLATE BINARY")
                                             : QStringLiteral("(%1 = ? COLLATE BINARY OR CAST(%1 AS TEXT) = ?)");
        break;
    case DatabaseFamily::PostgreSQL:
        if (type == adSingle) // its text is 0.1, its value is not
            return QStringLiteral("%1 = CAST(? AS real)");
        if (IsText(type) && !HasPlainEquality(column.TypeName))
            return QStringLiteral("pg_catalog.format('%s', %1) = ?");
        break;
    case DatabaseFamily::MySQL:
        // Its collations make 'x', 'X' and 'x ' equal. The plain comparison stays, for the sake of an index.
        if (IsText(type))
            return QStringLiteral("(%1 = ? AND CAST(CONVERT(%1 USING utf8mb4) AS BINARY) = "
                                  "CAST(CONVERT(? USING utf8mb4) AS BINARY))");
        if (type == adSingle)
            return QStringLiteral("(%1 = ? OR CAST(CAST(%1 AS CHAR) AS FLOAT) = CAST(? AS FLOAT))");
        if (type == adBinary && column.TypeName == u"bit")
            return QStringLiteral("CAST(%1 AS BINARY) = ?");
        break;
    case DatabaseFamily::SQLServer:
        if (type == adLongVarWChar)
            return QStringLiteral("CAST(%1 AS nvarchar(max)) = ?");
        if (type == adBinary && isLong)
            return QStringLiteral("CAST(%1 AS varbinary(max)) = ?");
        break;
    case DatabaseFamily::Oracle:
        if (type == adLongVarWChar || (type == adBinary && isLong))
            return QStringLiteral("DBMS_LOB.COMPARE(%1, ?) = 0");
        break;
    case DatabaseFamily::Other:
        if (type == adLongVarWChar || type == adBinary)
            return {};
        break;
    }
    return QStringLiteral("%1 = ?");
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
            m_text.Sql += m_target.Family == DatabaseFamily::MySQL ? QStringLiteral(" () VALUES ()")
                                                                   : QStringLiteral(" DEFAULT VALUES");
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
    bool RowHas(char flag) const { return (m_pattern[1] & flag) != 0; }
    bool Has(size_t column, char flag) const { return (m_pattern[qsizetype(column) + 2] & flag) != 0; }
    QString Name(size_t column) const { return QuotedName(m_target.Names[qsizetype(column)], m_target.Quote); }
    void Bind(int column, bool original)
    {
        m_text.Parameters.push_back({column, original, m_target.Columns[size_t(column)].Type});
    }

    void Where()
    {
        QStringList conditions;
        if (RowHas(BatchPattern::ByRowId)) {
            conditions += QStringLiteral("rowid = ?");
            m_text.Parameters.push_back({-1, true, adBigInt});
        }
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (!Has(i, BatchPattern::Where))
                continue;
            if (Has(i, BatchPattern::Null)) {
                conditions += Name(i) + QStringLiteral(" IS NULL");
                continue;
            }
            QString condition = Condition(m_target.Columns[i], m_target.Family);
            if (condition.isEmpty())
                continue;
            for (qsizetype marks = condition.count(u'?'); marks > 0; --marks)
                Bind(int(i), true);
            conditions += condition.replace(QStringLiteral("%1"), Name(i)); // no arg(): a name may hold a "%1" too
        }
        if (conditions.isEmpty()) // every row would be met
            throw Error(Fault::NoKey);
        m_text.Sql += QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
    }

    void AskForWhatWasMade()
    {
        QStringList names;
        for (size_t i = 0; i < m_target.Columns.size(); ++i) {
            if (m_target.Names[qsizetype(i)].isEmpty())
                continue;
            names += Name(i);
            m_text.Made.push_back(int(i));
        }
        if (m_target.HasRowIds) {
            names += QStringLiteral("rowid");
            m_text.Made.push_back(-1);
        }
        const QString list = names.join(QStringLiteral(", "));
        const std::vector<int> key = m_target.Key();
        if (m_target.CanReturn)
            m_text.Sql += QStringLiteral(" RETURNING ") + list;
        else if (m_target.Family == DatabaseFamily::SQLite)
            m_text.Ask =
                QStringLiteral("SELECT %1 FROM %2 WHERE rowid = last_insert_rowid()").arg(list, m_target.Table);
        else if (m_target.Family == DatabaseFamily::MySQL && key.size() == 1)
            m_text.Ask = QStringLiteral("SELECT %1 FROM %2 WHERE %3 = LAST_INSERT_ID()")
                             .arg(list, m_target.Table, Name(size_t(key.front())));
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
