#include "visual/MapReader.h"

#include "data/ServerName.h"
#include "visual/JoinFields.h"
#include <algorithm>

using ADODB::ObjectName;

namespace {

constexpr size_t kManyTables = 20; // from here on the catalogue answers sooner than a statement for each

// Nothing that comes after it could succeed.
bool Ends(const ADODB::Error &error, const ADODB::Connection &connection)
{
    return error.Number == ADODB::adErrOperationCancelled || error.SQLState.startsWith(u"08") ||
           error.SQLState.startsWith(u"57P") || connection.State() != ADODB::adStateOpen;
}

} // namespace

MapReader::MapReader(ADODB::ConnectionPtr connection)
    : m_connection(std::move(connection)), m_fields(m_connection, m_stop)
{
}

void MapReader::Expect(size_t tables)
{
    if (tables >= kManyTables)
        m_fields.ReadAll();
}

MapReader::Name MapReader::NameOf(const ObjectName &object)
{
    const QString written = m_fields.NameOf(object);
    const QString plain = NameText(m_connection->Family(),
                                   m_connection->Property(QStringLiteral("Identifier Quote")).toString(), object, true);
    return {written == plain ? object.Name : written, written};
}

QString MapReader::TagOf(const ObjectName &object)
{
    return NameOf(object).tag;
}

std::optional<QStringList> MapReader::Select(const QString &name)
{
    try {
        const auto empty = m_connection->Execute(QStringLiteral("SELECT * FROM ") + name + QStringLiteral(" WHERE 1=0"),
                                                 nullptr, ADODB::adOneStatement);
        if (!empty || empty->State() != ADODB::adStateOpen)
            return {};
        QStringList fields;
        for (int i = 0; i < empty->ColumnCount(); ++i)
            fields << empty->Column(i).Name;
        return fields;
    } catch (const ADODB::Error &error) {
        if (Ends(error, *m_connection))
            throw;
        return {};
    }
}

std::optional<MapTableRead> MapReader::Read(const QString &tableOrStatement)
{
    if (tableOrStatement.isEmpty())
        return {};
    const QString written = ServerName(m_connection, tableOrStatement);
    std::optional<QStringList> fields = Select(written);
    if (!fields && written.startsWith(u'(')) // a statement: some servers want a name behind it
        fields = Select(NamedStatement(written));
    if (!fields)
        return {};
    return MapTableRead{{{}, {}, tableOrStatement}, tableOrStatement, written, {}, *fields, AliasWriter()};
}

std::optional<MapTableRead> MapReader::Read(const ObjectName &object)
{
    if (object.Name.isEmpty())
        return {};
    const Name name = NameOf(object);
    const std::optional<QStringList> fields = m_fields.Knows(object) ? m_fields.Of(object) : Select(name.written);
    if (!fields)
        return {};
    const QString placed = ADODB::PlacedName(
        m_connection->Family(), m_connection->Property(QStringLiteral("Identifier Quote")).toString(), object);
    return MapTableRead{object, name.tag, name.written, placed, *fields, AliasWriter()};
}

std::function<QString(const QString &)> MapReader::AliasWriter() const
{
    const QString quote = m_connection->Property(QStringLiteral("Identifier Quote")).toString();
    return [family = &m_connection->Family(), quote](const QString &alias) {
        return NameText(*family, quote, ObjectName{{}, {}, alias}, true);
    };
}

std::vector<MapKey> MapReader::Keys()
{
    const auto rowset = m_connection->OpenSchema(ADODB::adSchemaForeignKeys);
    const auto column = [&](const char *name) {
        for (int i = 0; i < rowset->ColumnCount(); ++i)
            if (rowset->Column(i).Name.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
                return i;
        return -1;
    };
    const int pk[] = {column("PK_TABLE_CATALOG"), column("PK_TABLE_SCHEMA"), column("PK_TABLE_NAME"),
                      column("PK_COLUMN_NAME")};
    const int fk[] = {column("FK_TABLE_CATALOG"), column("FK_TABLE_SCHEMA"), column("FK_TABLE_NAME"),
                      column("FK_COLUMN_NAME")};
    std::vector<MapKey> keys;
    for (qint64 row = 0; row < rowset->RowCount(); ++row) {
        const auto text = [&](int at) { return at < 0 ? QString() : rowset->CellText(row, at); };
        const auto object = [&](const int *at) {
            return ADODB::ObjectOf(m_connection->Family(), text(at[0]), text(at[1]), text(at[2]));
        };
        keys.push_back({object(pk), object(fk), text(pk[3]), text(fk[3])});
    }
    return keys;
}

std::vector<ObjectName> TablesOf(const std::vector<MapKey> &keys)
{
    std::vector<ObjectName> tables;
    QSet<QString> seen;
    for (const MapKey &key : keys) {
        for (const ObjectName *object : {&key.Primary, &key.Foreign}) {
            const QString id = object->Catalog + QChar(0) + object->Schema + QChar(0) + object->Name;
            if (!seen.contains(id))
                tables.push_back(*object);
            seen.insert(id);
        }
    }
    return tables;
}
