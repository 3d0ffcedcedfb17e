#include "ado/schema/KeysInText.h"
#include "ado/family/Family.h"
#include "ado/schema/CatalogueQueries.h"

namespace ADODB {

namespace {

QString Together(const QString &schema, const QString &table)
{
    return schema + QChar(0) + table;
}

} // namespace

KeysInText::KeysInText(Session &session, const Rowset &rowset, const HeldResult &held)
    : m_rowset(rowset), m_schemas(held.Find(QLatin1String("KEY_SCHEMA"))),
      m_tables(held.Find(QLatin1String("KEY_TABLE"))), m_ids(held.Find(QLatin1String("KEY_ID")))
{
    if (!m_schemas || !m_tables || !m_ids)
        return;
    for (qint64 row = 0; row < held.Rows(); ++row)
        if (const QString table = TableOf(row); !table.isEmpty())
            m_known[table].Count = qMax(m_known[table].Count, m_ids->At(row).ToInt64() + 1);
    const CatalogueQuery *query = session.Family().Catalogue.KeyTexts;
    if (m_known.isEmpty() || !query)
        return;
    const ExecuteResult result = session.Execute(TextOf(*query, session));
    const HeldResult texts = ReadWhole(*result.Rows);
    for (qint64 row = 0; row < texts.Rows(); ++row)
        if (const auto known = m_known.find(Together(texts.Stores[0].Text(row), texts.Stores[1].Text(row)));
            known != m_known.end())
            known->Keys = ReadForeignKeys(texts.Stores[2].Text(row));
}

QString KeysInText::TableOf(qint64 row) const
{
    return m_ids->IsNull(row) ? QString() : Together(m_schemas->Text(row), m_tables->Text(row));
}

QueryRows::Cells KeysInText::CellsOf(qint64 row) const
{
    if (!m_ids)
        return {};
    const auto known = m_known.constFind(TableOf(row));
    if (known == m_known.constEnd() || qint64(known->Keys.size()) != known->Count)
        return {};
    const ForeignKey &key = known->Keys[size_t(known->Count - 1 - m_ids->At(row).ToInt64())];
    QueryRows::Cells cells;
    const auto put = [&](QStringView column, const Value &value) {
        if (const int number = RowsetIndex(m_rowset, column); number >= 0)
            cells.push_back({number, value});
    };
    if (!key.Name.isEmpty()) {
        put(u"FK_NAME", key.Name);
        put(u"CONSTRAINT_NAME", key.Name);
    }
    put(u"DEFERRABILITY", int(key.When));
    put(u"IS_DEFERRABLE", key.When != Deferral::NotDeferrable);
    put(u"INITIALLY_DEFERRED", key.When == Deferral::InitiallyDeferred);
    return cells;
}

} // namespace ADODB
