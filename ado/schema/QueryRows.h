#pragma once
// The rows of a catalogue query on their way into a rowset: chosen, sorted, and written column by column straight out
// of the result, so that a text is copied once.
//
// A row stands for one row of the result, or for a part of it (a check in a table's text); then some of its cells are
// the part's own. Any thread; raises what growing raises.

#include "ado/ColumnStore.h"
#include "ado/Driver.h"
#include "ado/rowset/Rowsets.h"
#include <QStringList>
#include <utility>
#include <vector>

namespace ADODB {

// A whole result.
struct HeldResult
{
    std::vector<ColumnInfo> Columns;
    std::vector<ColumnStore> Stores;
    qint64 Rows() const { return Stores.empty() ? 0 : Stores.front().Size(); }
    const ColumnStore *Find(QLatin1String name) const; // without regard to case; null when there is none
};
HeldResult ReadWhole(ResultSet &rows);

class QueryRows
{
public:
    using Cells = std::vector<std::pair<int, Value>>; // by the rowset's column; later ones win

    // Every column of the result that bears a name of the rowset's is its source. `result` outlives this; TakeStores
    // takes from it.
    QueryRows(const Rowset &rowset, HeldResult &result);
    // Another source for a column; a store of the result's length and the column's own type.
    void SetSource(int column, ColumnStore store);

    void Add(qint64 sourceRow);
    void Add(qint64 sourceRow, Cells own);
    // Keeps the rows that meet the restrictions (exact text, a null QString is none).
    void Restrict(const QStringList &restrictions);
    void Sort();
    std::vector<ColumnStore> TakeStores();

private:
    struct Row
    {
        qint64 Source;
        qint64 Own = -1; // index into m_own
    };
    struct Key;
    const Value *OwnCell(const Row &row, int column) const;
    Value At(const Row &row, int column) const;
    Key KeyOf(const Row &row, int column) const;
    std::vector<int> Order() const;
    bool IsSorted(const std::vector<int> &order) const;
    bool StandAsTheyCame() const;
    ColumnStore StoreOf(int column) const;
    ColumnStore *ReadyStore(int column);

    const Rowset &m_rowset;
    HeldResult &m_result;
    std::vector<const ColumnStore *> m_sources; // by the rowset's column, null for none
    std::vector<std::unique_ptr<ColumnStore>> m_made;
    std::vector<Cells> m_own;
    std::vector<Row> m_rows;
};

} // namespace ADODB
