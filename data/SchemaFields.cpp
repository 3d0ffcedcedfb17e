#include "data/SchemaFields.h"
#include "controls/Attempt.h"
#include "sqltext/Keywords.h"
#include "sqltext/modSQLMaipulation.h"
#include <QMultiMap>

namespace {

// The base tables that the plain name finds and the user may read: owner and name. quote_ident leaves a name alone only
// when it needs no quotes, so key words and capitals are out.
const char *const kReadablePostgres =
    "SELECT n.nspname, c.relname FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "WHERE c.relkind IN ('r', 'p') AND pg_catalog.pg_table_is_visible(c.oid) "
    "AND pg_catalog.has_table_privilege(c.oid, 'SELECT') AND pg_catalog.quote_ident(c.relname) = c.relname";
const char *const kReadableMySQL =
    "SELECT t.TABLE_SCHEMA, t.TABLE_NAME FROM information_schema.TABLES t WHERE t.TABLE_SCHEMA = DATABASE() "
    "AND t.TABLE_TYPE = 'BASE TABLE' AND t.ENGINE IS NOT NULL AND t.TABLE_NAME REGEXP '^[A-Za-z_][A-Za-z0-9_]*$' "
    "AND (EXISTS (SELECT 1 FROM information_schema.USER_PRIVILEGES p WHERE p.PRIVILEGE_TYPE = 'SELECT' "
    "AND p.GRANTEE = CONCAT('''', REPLACE(CURRENT_USER(), '@', '''@'''), '''')) "
    "OR EXISTS (SELECT 1 FROM information_schema.SCHEMA_PRIVILEGES p WHERE p.PRIVILEGE_TYPE = 'SELECT' "
    "AND DATABASE() = p.TABLE_SCHEMA AND p.GRANTEE = CONCAT('''', REPLACE(CURRENT_USER(), '@', '''@'''), '''')))";

const char *ReadableQuery(ADODB::DatabaseFamily family)
{
    switch (family) {
    case ADODB::DatabaseFamily::PostgreSQL:
        return kReadablePostgres;
    case ADODB::DatabaseFamily::MySQL:
        return kReadableMySQL;
    default:
        return nullptr;
    }
}

QString KeyOf(const QString &owner, const QString &name)
{
    return owner + QChar(0) + name;
}

QSet<QString> Keywords()
{
    QSet<QString> words;
    for (const QString &word : gKeywordSet.Words())
        words.insert(word.toUpper());
    return words;
}

QSet<QString> Readable(ADODB::Connection &connection, const char *query, bool checkWords)
{
    QSet<QString> keys;
    const auto rows = connection.Execute(QLatin1String(query));
    const QSet<QString> words = checkWords ? Keywords() : QSet<QString>();
    if (checkWords && words.isEmpty())
        return keys;
    for (qint64 row = 0; row < rows->RowCount(); ++row)
        if (!words.contains(rows->CellText(row, 1).toUpper()))
            keys.insert(KeyOf(rows->CellText(row, 0), rows->CellText(row, 1)));
    return keys;
}

int Find(const ADODB::Recordset &rowset, const char *name)
{
    for (int i = 0; i < rowset.ColumnCount(); ++i)
        if (QString::compare(rowset.Column(i).Name, QLatin1String(name), Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

} // namespace

SchemaFields::SchemaFields(ADODB::ConnectionPtr connection, const std::atomic<bool> &stop)
    : m_connection(std::move(connection)), m_stop(stop)
{
}

void SchemaFields::ReadAll()
{
    Attempt([&] {
        const auto family = m_connection->Family();
        const char *query = ReadableQuery(family);
        if (!query || m_stop)
            return;
        const QSet<QString> readable = Readable(*m_connection, query, family == ADODB::DatabaseFamily::MySQL);
        if (readable.isEmpty() || m_stop)
            return;
        const auto rowset = m_connection->OpenSchema(ADODB::adSchemaColumns);
        const int catalogue = Find(*rowset, "TABLE_CATALOG"), schema = Find(*rowset, "TABLE_SCHEMA");
        const int table = Find(*rowset, "TABLE_NAME"), column = Find(*rowset, "COLUMN_NAME");
        const int ordinal = Find(*rowset, "ORDINAL_POSITION");
        if (table < 0 || column < 0 || ordinal < 0)
            return;
        QHash<QString, QMultiMap<qint64, QString>> fields;
        for (qint64 row = 0; row < rowset->RowCount() && !m_stop; ++row) {
            QString owner = schema < 0 ? QString() : rowset->CellText(row, schema);
            if (owner.isEmpty() && catalogue >= 0)
                owner = rowset->CellText(row, catalogue);
            const QString key = KeyOf(owner, rowset->CellText(row, table));
            if (readable.contains(key))
                fields[key].insert(rowset->CellValue(row, ordinal).ToInt64(), rowset->CellText(row, column));
        }
        for (auto it = fields.cbegin(); it != fields.cend(); ++it)
            if (it->uniqueKeys().size() == it->size()) // each position once: one table, and its order is sure
                m_known.insert(it.key(), it->values());
    });
}

std::optional<QStringList> SchemaFields::Of(const QString &owner, const QString &name) const
{
    if (m_stop)
        return {};
    const auto known = m_known.constFind(KeyOf(owner, name));
    return known != m_known.constEnd() ? std::optional(*known) : Probe(name);
}

QStringList SchemaFields::Known() const
{
    QStringList names;
    for (auto it = m_known.keyBegin(); it != m_known.keyEnd(); ++it)
        names << it->section(QChar(0), 1);
    return names;
}

std::optional<QStringList> SchemaFields::Probe(const QString &name) const
{
    std::optional<QStringList> names;
    Attempt([&] {
        const auto empty =
            m_connection->Execute(QStringLiteral("SELECT * FROM ") + QuoteName(name) + QStringLiteral(" where 0=1"));
        if (!empty || empty->State() != ADODB::adStateOpen)
            return;
        names.emplace();
        for (int i = 0; i < empty->ColumnCount(); ++i)
            names->append(empty->Column(i).Name);
    });
    return names;
}
