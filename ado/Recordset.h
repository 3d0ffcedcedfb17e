#pragma once
// The client recordset: rows in typed columns, a current row, a filter, edits. Also lives without any connection.
//
// Widgets read cells by row and column without moving the current row (RowCount, CellText ...): row numbers there count
// from 0 and pass over what the filter hides. Movement and AbsolutePosition (from 1) follow the same visible rows.
// A recordset belongs to one thread at a time: a worker fills it, then hands it to the interface thread.
//
// Every operation raises ADODB::Error. The names of fields are looked up without regard to case.

#include "ado/ColumnStore.h"
#include "ado/Connection.h"
#include "ado/Error.h"
#include <QString>
#include <memory>
#include <vector>

namespace ADODB {

class Recordset;

class Field
{
public:
    QString Name() const;
    DataTypeEnum Type() const;
    qint64 DefinedSize() const;
    int Precision() const;
    int NumericScale() const;
    int Attributes() const;
    Value GetValue() const; // of the current row; adErrNoCurrentRecord where there is none
    void SetValue(const Value &value);
    Value OriginalValue() const; // as it was before the edit of this row began
    QString Text() const;        // GetValue as text

private:
    friend class Recordset;
    friend class Fields;
    Recordset *m_recordset = nullptr;
    int m_index = 0;
};

class Fields
{
public:
    int Count() const;
    Field &Item(int index) const; // from 0; adErrItemNotFound
    Field &Item(const QString &name) const;
    Field &operator[](int index) const { return Item(index); }
    Field &operator[](const QString &name) const { return Item(name); }
    bool Contains(const QString &name) const;
    void Append(const QString &name, DataTypeEnum type, qint64 definedSize = 0, int attributes = adFldUnspecified);

private:
    friend class Recordset;
    explicit Fields(Recordset *recordset) : m_recordset(recordset) {}
    Recordset *m_recordset;
};

// A row that the last batch could not send. It is pending still, as it was edited.
struct RefusedRow
{
    qint64 Row = -1; // among the visible rows, from 0; -1 for a deleted or a hidden one
    int Status = 0;  // bits of RecordStatusEnum
    QString Key;     // "id = 5", as the row was; "" where no key is known
    Error Why;
};

class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    static RecordsetPtr Create();
    ~Recordset();

    class Fields &Fields() const;
    int State() const;

    void Open(); // on appended fields, without a source
    // With options -1 a source that is exactly the name of a table or view of that connection is opened as that table
    // (TableName.h); any other text is sent as it stands.
    void Open(const QString &source, const ConnectionPtr &connection, int cursorType = adOpenStatic,
              int lockType = adLockReadOnly, int options = -1);
    void Close();

    bool Bof() const;
    bool Eof() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(qint64 rows);
    qint64 AbsolutePosition() const; // from 1, or a PositionEnum
    void SetAbsolutePosition(qint64 position);
    qint64 RecordCount() const; // the visible rows

    // Field = 'text' joined by AND and OR, text compared without regard to case (also <>, <, >, <=, >=, LIKE, numbers).
    // "" shows all rows again. The current row becomes the first visible one. Malformed text raises
    // adErrInvalidArgument and leaves the former filter.
    QString Filter() const;
    void SetFilter(const QString &filter);

    void AddNew();
    void Update();
    void CancelUpdate();
    void Delete();
    int EditMode() const;
    int LockType() const;
    // Sends pending edits of a batch-optimistic recordset to its connection, and raises the first refusal; rows that
    // failed stay pending. Each edit meets the one row that it was made on: by its key and the original values of what
    // was changed, without a key by all original values. What meets none or several is refused.
    void UpdateBatch();
    void CancelBatch();
    int Status() const; // of the current row: bits of RecordStatusEnum
    std::vector<RefusedRow> RefusedRows() const;
    int UpdateResync() const; // bits of CEResyncEnum; at first adResyncAutoIncrement
    void SetUpdateResync(int what);
    qint64 PendingBytes() const; // memory of what is kept beside the rows until the next batch
    qint64 PendingCount() const; // rows that the next batch has to send
    // Whether an edit of the column can reach a table at all: the recordset takes edits, its rows are those of one
    // known table, and the column is one of that table's.
    bool CanWrite(int column) const;
    // Told how many rows Open has read, or UpdateBatch has written, so far; on the thread that does it.
    void SetProgress(std::function<void(qint64 rows)> progress);

    // A statement may give several results: this is the first of them, and FurtherResults tells how many follow.
    // NextRecordset hands over the next one, with those that follow it; null when there is none.
    int FurtherResults() const;
    RecordsetPtr NextRecordset();

    // For widgets: visible rows, without moving.
    qint64 RowCount() const { return RecordCount(); }
    int ColumnCount() const;
    const ColumnInfo &Column(int column) const;
    QString CellText(qint64 row, int column) const;
    QByteArrayView CellUtf8(qint64 row, int column) const;  // a text cell's bytes without a copy
    QByteArrayView CellBytes(qint64 row, int column) const; // the same of a cell of bytes
    Value CellValue(qint64 row, int column) const;
    bool CellIsNull(qint64 row, int column) const;
    int CompareCells(qint64 leftRow, qint64 rightRow, int column) const;
    int RowStatus(qint64 row) const;                  // as Status, of any row
    Value CellOriginal(qint64 row, int column) const; // before its first pending edit; null in a new row
    bool CellIsPending(qint64 row, int column) const; // the next batch has it to send
    qint64 BytesHeld() const;

    QString Source() const;
    ConnectionPtr ActiveConnection() const;

    // Of a field of chapters: its rows' fields, in a recordset that is asked for nothing else (null where nobody knows
    // them yet), and how many rows a cell's chapter holds, without making it.
    RecordsetPtr ChapterDefinition(int column) const;
    qint64 ChapterRows(qint64 row, int column) const;
    const ChapterSource *ChaptersOf(int column) const; // null where the field keeps its chapters itself

    // The driver's side: takes over filled columns. Rows that are made up belong to no server: they can be edited, and
    // keep their edits.
    static RecordsetPtr FromColumns(std::vector<ColumnInfo> columns, std::vector<ColumnStore> stores,
                                    bool madeUp = false);
    // Shows these rows of a recordset that shows all of its own, over the same columns; read only.
    static RecordsetPtr SomeRows(const Recordset &of, std::vector<std::uint32_t> rows);
    static std::vector<ColumnStore> TakeColumns(Recordset &from); // which is closed by it
    void SetFurther(std::vector<RecordsetPtr> results);           // of the same statement, in their order

private:
    Recordset();
    void BelongTo(const QString &source, const std::weak_ptr<Connection> &connection);
    struct Body;
    std::unique_ptr<Body> m;
    friend class Connection;
    friend class Field;
    friend class Fields;
};

} // namespace ADODB
