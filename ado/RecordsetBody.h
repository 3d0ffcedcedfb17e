#pragma once
// What a recordset holds, for the sources of Recordset alone. One thread at a time.
//
// Three ways to count rows: a store row is a place in the columns and never moves; a visible row counts what neither
// the filter nor a deletion hides; `position` is the visible row that is current, -1 before the first, Count() behind
// the last.

#include "ado/Filter.h"
#include "ado/PendingRows.h"
#include "ado/Recordset.h"
#include "ado/RowSlots.h"
#include <QStringList>
#include <map>
#include <optional>
#include <utility>

namespace ADODB {

[[noreturn]] void RaiseClosed();
[[noreturn]] void RaiseOpen();
[[noreturn]] void RaiseNoCurrent();
[[noreturn]] void RaiseNotFound();
[[noreturn]] void RaiseReadOnly();
[[noreturn]] void RaiseOutOfMemory();

// The value as the column's type has it. Raises adErrDataConversion where it cannot be.
Value Coerce(const Value &value, const ColumnInfo &column);

// The columns of a recordset. Recordsets that show some rows of another one hold the same columns.
class Columns
{
public:
    Columns() : m(std::make_shared<std::vector<ColumnStore>>()) {}
    Columns &operator=(std::vector<ColumnStore> stores)
    {
        m = std::make_shared<std::vector<ColumnStore>>(std::move(stores));
        return *this;
    }
    // A copy holds the same columns. There is no move: what was assigned from stays usable.
    Columns(const Columns &) = default;
    Columns &operator=(const Columns &) = default;
    ColumnStore &operator[](size_t column) const { return (*m)[column]; }
    size_t size() const { return m->size(); }
    auto begin() const { return m->begin(); }
    auto end() const { return m->end(); }
    ColumnStore &back() const { return m->back(); }
    void pop_back() { m->pop_back(); }
    void emplace_back(DataTypeEnum type) { m->emplace_back(type); }
    void clear() { m = std::make_shared<std::vector<ColumnStore>>(); } // those who share them keep them
    operator const std::vector<ColumnStore> &() const { return *m; }
    std::vector<ColumnStore> Take() { return std::exchange(*m, {}); }

private:
    std::shared_ptr<std::vector<ColumnStore>> m; // never null
};

struct Recordset::Body
{
    explicit Body(Recordset *owner) : fields(owner) {}

    class Fields fields;
    std::vector<std::unique_ptr<Field>> items;
    std::vector<ColumnInfo> infos;
    QStringList baseColumns; // of a result that writes back: what its table calls each column, "" for what it has not
    bool keyAsked = false;   // infos have what the catalogue knows of the key
    Columns stores;
    bool madeUp = false;             // nobody's rows: edits are kept here
    bool isPart = false;             // shows some rows of columns that others hold too
    std::vector<std::uint32_t> part; // which, once a filter shows fewer of them
    int state = adStateClosed;
    int lockType = adLockReadOnly;
    QString source;
    std::weak_ptr<Connection> origin;  // of a result that only shows rows
    ConnectionPtr connection;          // of one that writes back
    std::vector<RecordsetPtr> further; // the later results of the same statement

    qint64 storeRows = 0;
    std::optional<ColumnStore> rowIds; // SQLite's, of a result that writes back
    std::vector<bool> gone;            // deleted store rows; as long as the last one needs
    bool allVisible = true;            // then `order` is empty: visible rows are the store rows
    std::vector<std::uint32_t> order;  // the store rows that are visible, in order
    qint64 position = -1;
    bool currentGone = false; // the current row was deleted; `position` is that of its follower
    QString filterText;
    std::unique_ptr<RowFilter> filter;

    // The edit under way: what was set of the current row, or of the row to be added.
    int editMode = adEditNone;
    std::vector<std::optional<Value>> buffer;

    PendingRows pending;
    std::map<std::uint32_t, Error> refusals; // by the last batch, of rows that are pending still
    int updateResync = adResyncAutoIncrement;
    std::function<void(qint64)> progress;
    std::optional<bool> hasBase; // whether one known table is behind the rows; asked for once
    // Rows that were added and not read back: which of their columns are as the server made them (an index from 1).
    RowSlots unknown;
    std::vector<std::vector<bool>> unknownMasks;

    qint64 Count() const { return allVisible ? storeRows : qint64(order.size()); }
    qint64 StoreRow(qint64 visible) const { return allVisible ? visible : qint64(order[size_t(visible)]); }
    bool HasCurrent() const { return !currentGone && position >= 0 && position < Count(); }
    bool WritesBack() const { return connection != nullptr && lockType != adLockReadOnly; }
    bool IsGone(std::uint32_t row) const { return row < gone.size() && gone[row]; }
    void SetGone(std::uint32_t row, bool isGone);
    bool WritesAtOnce() const { return WritesBack() && lockType != adLockBatchOptimistic; }

    void NeedOpen() const;
    void NeedWritable() const;
    qint64 NeedCurrent() const; // its store row
    int ColumnOf(const QString &name) const;
    void MakeFields(Recordset *owner);
    void ShowRows();  // works out the visible rows anew
    void MakeOrder(); // so that single rows can be hidden
    void Clear();

    Value Current(int column) const;
    std::vector<Value> RowValues(qint64 storeRow) const;
    qint64 AppendRow(const std::vector<std::optional<Value>> &values); // its store row
    void RemoveLastRow();
    void RevertRow(std::uint32_t storeRow);
    int StatusOf(std::uint32_t storeRow) const;
    class Sender;
    void Send(const std::vector<std::uint32_t> &rows); // to the connection; those that fail stay pending
};

} // namespace ADODB
