#pragma once
// The chapters of a hierarchy: rows of one child recordset, found for each parent; or made-up rows, which each parent
// row keeps for itself.
//
// One thread at a time, with the recordset that they belong to.

#include "ado/Recordset.h"
#include "ado/shape/ShapeMatch.h"
#include <map>

namespace ADODB {

// Rows of `whole` by group. What is asked for shows them without a copy of a cell.
class MatchedChapters : public ChapterSource
{
public:
    MatchedChapters(RecordsetPtr whole, ShapeGroups groups);
    RecordsetPtr At(qint64 row) override;
    qint64 RowsAt(qint64 row) const override { return qint64(m_groups.Of(row).size()); }
    const RecordsetPtr &Definition() const override { return m_whole; }
    void Removed(qint64 row) override;
    qint64 BytesHeld() const override;

    const Recordset &Whole() const { return *m_whole; }
    std::span<const quint32> RowsOf(qint64 row) const { return m_groups.Of(row); }

private:
    const RecordsetPtr m_whole;
    ShapeGroups m_groups;
};

// What fabricated rows look like, with those below them.
struct MadeUpRows
{
    std::vector<ColumnInfo> Columns;
    std::vector<std::shared_ptr<MadeUpRows>> Below; // by column; null for those without chapters

    std::vector<ColumnStore> NewColumns(qint64 rows) const;
    RecordsetPtr NewRecordset() const; // without rows, to be edited
};

// A recordset for each parent row, made when it is first asked for and kept: its rows are nowhere else.
class MadeUpChapters : public ChapterSource
{
public:
    explicit MadeUpChapters(std::shared_ptr<MadeUpRows> rows);
    RecordsetPtr At(qint64 row) override;
    qint64 RowsAt(qint64 row) const override;
    const RecordsetPtr &Definition() const override { return m_definition; }
    void Removed(qint64 row) override;
    qint64 BytesHeld() const override;

private:
    const std::shared_ptr<MadeUpRows> m_rows;
    const RecordsetPtr m_definition;
    std::map<qint64, RecordsetPtr> m_made;
};

} // namespace ADODB
