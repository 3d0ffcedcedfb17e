#include "data/SchemaFields.h"
#include "ado/family/Family.h"
#include "controls/Attempt.h"
#include "data/ServerName.h"
#include <QMultiMap>

namespace {

QString KeyOf(const QString &owner, const QString &name)
{
    return owner + QChar(0) + name;
}

// The owner is the schema, or the catalogue where there is no schema.
QString KeyOf(const ADODB::ObjectName &object)
{
    return KeyOf(object.Schema.isEmpty() ? object.Catalog : object.Schema, object.Name);
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

// False where the family has no such query.
bool SchemaFields::ReadStanding()
{
    const char *query = m_connection->Family().Catalogue.Standing;
    if (!query)
        return false;
    const auto rows = m_connection->Execute(QLatin1String(query), nullptr, ADODB::adOneStatement);
    for (qint64 row = 0; row < rows->RowCount(); ++row)
        m_standing.insert(KeyOf(rows->CellText(row, 0), rows->CellText(row, 1)),
                          {rows->CellText(row, 2) == QLatin1String("1"), rows->CellText(row, 3) == QLatin1String("1")});
    return true;
}

void SchemaFields::ReadAll()
{
    Attempt([&] {
        m_hasStanding = ReadStanding();
        if (m_stop)
            return;
        const ADODB::Family &family = m_connection->Family();
        const auto rowset = m_connection->OpenSchema(ADODB::adSchemaColumns);
        const int catalogue = Find(*rowset, "TABLE_CATALOG"), schema = Find(*rowset, "TABLE_SCHEMA");
        const int table = Find(*rowset, "TABLE_NAME"), column = Find(*rowset, "COLUMN_NAME");
        const int ordinal = Find(*rowset, "ORDINAL_POSITION");
        if (table < 0 || column < 0 || ordinal < 0)
            return;
        const auto text = [&](qint64 row, int at) { return at < 0 ? QString() : rowset->CellText(row, at); };
        QHash<QString, QMultiMap<qint64, QString>> fields;
        for (qint64 row = 0; row < rowset->RowCount() && !m_stop; ++row) {
            const QString key =
                KeyOf(ADODB::ObjectOf(family, text(row, catalogue), text(row, schema), text(row, table)));
            if (!m_hasStanding || m_standing.value(key).readable)
                fields[key].insert(rowset->CellValue(row, ordinal).ToInt64(), rowset->CellText(row, column));
        }
        for (auto it = fields.cbegin(); it != fields.cend(); ++it)
            if (it->uniqueKeys().size() == it->size()) // each position once: one table, and its order is sure
                m_known.insert(it.key(), it->values());
    });
}

std::optional<QStringList> SchemaFields::Of(const ADODB::ObjectName &object) const
{
    if (m_stop)
        return {};
    const auto known = m_known.constFind(KeyOf(object));
    return known != m_known.constEnd() ? std::optional(*known) : Probe(object);
}

QStringList SchemaFields::Known() const
{
    QStringList names;
    for (auto it = m_known.keyBegin(); it != m_known.keyEnd(); ++it)
        names << it->section(QChar(0), 1);
    return names;
}

bool SchemaFields::Knows(const ADODB::ObjectName &object) const
{
    return m_known.contains(KeyOf(object));
}

QString SchemaFields::NameOf(const ADODB::ObjectName &object) const
{
    const auto standing = m_standing.constFind(KeyOf(object));
    return standing == m_standing.constEnd()
               ? ServerName(m_connection, object)
               : NameText(m_connection->Family(), m_connection->Property(QStringLiteral("Identifier Quote")).toString(),
                          object, standing->plainName);
}

std::optional<QStringList> SchemaFields::Probe(const ADODB::ObjectName &object) const
{
    std::optional<QStringList> names;
    Attempt([&] {
        const auto empty =
            m_connection->Execute(QStringLiteral("SELECT * FROM ") + NameOf(object) + QStringLiteral(" where 0=1"),
                                  nullptr, ADODB::adOneStatement);
        if (!empty || empty->State() != ADODB::adStateOpen)
            return;
        names.emplace();
        for (int i = 0; i < empty->ColumnCount(); ++i)
            names->append(empty->Column(i).Name);
    });
    return names;
}
