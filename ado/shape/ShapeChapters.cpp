#include "ado/shape/ShapeChapters.h"

namespace ADODB {

MatchedChapters::MatchedChapters(RecordsetPtr whole, ShapeGroups groups)
    : m_whole(std::move(whole)), m_groups(std::move(groups))
{
}

RecordsetPtr MatchedChapters::At(qint64 row)
{
    const std::span<const quint32> rows = m_groups.Of(row);
    return Recordset::SomeRows(*m_whole, std::vector<std::uint32_t>(rows.begin(), rows.end()));
}

void MatchedChapters::Removed(qint64 row)
{
    if (row >= 0 && size_t(row) < m_groups.OfParent.size())
        m_groups.OfParent.erase(m_groups.OfParent.begin() + row);
}

qint64 MatchedChapters::BytesHeld() const
{
    return m_whole->BytesHeld() + m_groups.BytesHeld();
}

std::vector<ColumnStore> MadeUpRows::NewColumns(qint64 rows) const
{
    std::vector<ColumnStore> stores;
    for (size_t column = 0; column < Columns.size(); ++column) {
        if (Below[column]) {
            stores.emplace_back(std::make_shared<MadeUpChapters>(Below[column]), rows);
        } else {
            stores.emplace_back(Columns[column].Type);
            stores.back().AppendNulls(rows);
        }
    }
    return stores;
}

RecordsetPtr MadeUpRows::NewRecordset() const
{
    return Recordset::FromColumns(Columns, NewColumns(0), true);
}

MadeUpChapters::MadeUpChapters(std::shared_ptr<MadeUpRows> rows)
    : m_rows(std::move(rows)), m_definition(m_rows->NewRecordset())
{
}

RecordsetPtr MadeUpChapters::At(qint64 row)
{
    RecordsetPtr &made = m_made[row];
    if (!made)
        made = m_rows->NewRecordset();
    return made;
}

qint64 MadeUpChapters::RowsAt(qint64 row) const
{
    const auto found = m_made.find(row);
    return found == m_made.end() || found->second->State() == adStateClosed ? 0 : found->second->RecordCount();
}

void MadeUpChapters::Removed(qint64 row)
{
    std::map<qint64, RecordsetPtr> rest;
    for (auto &[at, made] : m_made)
        if (at != row)
            rest.emplace(at > row ? at - 1 : at, std::move(made));
    m_made.swap(rest);
}

qint64 MadeUpChapters::BytesHeld() const
{
    qint64 held = 0;
    for (const auto &[row, made] : m_made)
        held += made->BytesHeld();
    return held;
}

} // namespace ADODB
