#include "ado/sqlite/SqliteResult.h"

#include "ado/sqlite/SqliteTypes.h"

#include <limits>

namespace ADODB {

SqliteResult::SqliteResult(SqliteSession &session, SqliteStatement statement)
    : m_session(session), m_statement(std::move(statement))
{
    const int count = sqlite3_column_count(m_statement.handle);
    m_columns.resize(size_t(count));
    m_learning.resize(size_t(count), Learning::Done);
    for (int i = 0; i < count; ++i)
        Describe(i, m_columns[size_t(i)]);
    m_hasRow = Step();
}

void SqliteResult::Describe(int column, ColumnInfo &info)
{
    sqlite3_stmt *const statement = m_statement.handle;
    info.Name = QString::fromUtf8(sqlite3_column_name(statement, column));
    info.DefinedSize = -1;
    if (!SqliteDeclaredType(sqlite3_column_decltype(statement, column), info))
        m_learning[size_t(column)] = Learning::NoValueYet;
    info.Attributes = adFldIsNullable;
    const char *const database = sqlite3_column_database_name(statement, column);
    const char *const table = sqlite3_column_table_name(statement, column);
    const char *const origin = sqlite3_column_origin_name(statement, column);
    if (database && table && origin) {
        int notNull = 0, key = 0;
        if (sqlite3_table_column_metadata(m_session.Handle(), database, table, origin, nullptr, nullptr, &notNull, &key,
                                          nullptr) == SQLITE_OK) {
            info.Attributes = adFldUpdatable | (notNull ? 0 : adFldIsNullable);
            info.IsKey = key != 0;
        }
        info.BaseSchema = QString::fromUtf8(database);
        info.BaseTable = QString::fromUtf8(table);
        info.BaseColumn = QString::fromUtf8(origin);
    }
    if (info.Type == adLongVarWChar || info.Type == adBinary)
        info.Attributes |= adFldLong;
}

bool SqliteResult::Step()
{
    m_session.RaiseIfCancelled();
    const int code = sqlite3_step(m_statement.handle);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        throw m_session.LastError(code);
    return false;
}

// A column without a declared type takes that of its first value; whole numbers become real ones when a real one
// follows.
void SqliteResult::Learn(std::vector<ColumnStore> &columns, int column, int storage, qint64 rows)
{
    Learning &state = m_learning[size_t(column)];
    ColumnInfo &info = m_columns[size_t(column)];
    ColumnStore &store = columns[size_t(column)];
    if (state == Learning::WholeSoFar && storage != SQLITE_FLOAT)
        return;
    info.Type = storage == SQLITE_INTEGER ? adBigInt
                : storage == SQLITE_FLOAT ? adDouble
                : storage == SQLITE_BLOB  ? adBinary
                                          : adVarWChar;
    if (info.Type == adBigInt || info.Type == adDouble) {
        info.DefinedSize = 8;
        info.Precision = info.Type == adBigInt ? 19 : 15;
    }
    state = storage == SQLITE_INTEGER ? Learning::WholeSoFar : Learning::Done;
    if (store.Type() == info.Type)
        return;
    ColumnStore typed(info.Type);
    for (qint64 row = store.Size() - rows; row < store.Size(); ++row)
        typed.Append(store.At(row));
    store = std::move(typed);
}

void SqliteResult::ReadText(ColumnStore &store, const char *text, qint64 bytes)
{
    const QByteArrayView view(text, qsizetype(bytes));
    Date date;
    Time time;
    Timestamp moment;
    switch (store.Type()) {
    case adNumeric:
        if (IsDecimalText(view))
            return store.AppendDecimal(text, bytes);
        break;
    case adDBDate:
        if (ReadDate(view, date))
            return store.AppendDate(date.year, date.month, date.day);
        break;
    case adDBTime:
        if (ReadTime(view, time))
            return store.AppendTime(time.hour, time.minute, time.second, time.nanosecond);
        break;
    case adDBTimeStamp:
        // A "T" between date and time would be lost: such a text stays a text.
        if (!view.contains('T') && ReadTimestamp(view, moment))
            return store.AppendTimestamp(moment.date.year, moment.date.month, moment.date.day, moment.time.hour,
                                         moment.time.minute, moment.time.second, moment.time.nanosecond);
        if (ReadDate(view, date))
            return store.AppendDate(date.year, date.month, date.day);
        break;
    default:
        break;
    }
    store.AppendText(text, bytes);
}

void SqliteResult::Read(std::vector<ColumnStore> &columns, int column, qint64 rows)
{
    sqlite3_stmt *const statement = m_statement.handle;
    const int storage = sqlite3_column_type(statement, column);
    if (storage == SQLITE_NULL)
        return columns[size_t(column)].AppendNull();
    if (m_first && m_learning[size_t(column)] != Learning::Done)
        Learn(columns, column, storage, rows);
    ColumnStore &store = columns[size_t(column)];
    switch (storage) {
    case SQLITE_INTEGER: {
        const qint64 number = sqlite3_column_int64(statement, column);
        if (store.Type() == adBoolean && (number == 0 || number == 1))
            return store.AppendBool(number == 1);
        return store.AppendInt64(number);
    }
    case SQLITE_FLOAT:
        return store.AppendDouble(sqlite3_column_double(statement, column));
    case SQLITE_BLOB: {
        const void *const data = sqlite3_column_blob(statement, column);
        return store.AppendBytes(data, sqlite3_column_bytes(statement, column));
    }
    default: {
        const char *const text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
        if (!text)
            throw std::bad_alloc();
        return ReadText(store, text, sqlite3_column_bytes(statement, column));
    }
    }
}

qint64 SqliteResult::Fetch(std::vector<ColumnStore> &columns, qint64 maxRows)
{
    const int count = int(m_columns.size());
    qint64 rows = 0;
    for (; rows < maxRows && m_hasRow; ++rows) {
        for (int i = 0; i < count; ++i)
            Read(columns, i, rows);
        m_hasRow = Step();
    }
    m_first = false;
    return rows;
}

SqliteKeptRows::SqliteKeptRows(SqliteResult &running)
{
    for (const ColumnInfo &column : running.Columns())
        m_stores.emplace_back(column.Type);
    m_rows = running.Fetch(m_stores, std::numeric_limits<qint64>::max());
    m_columns = running.Columns();
}

qint64 SqliteKeptRows::Fetch(std::vector<ColumnStore> &columns, qint64)
{
    if (m_rows > 0)
        columns = std::move(m_stores);
    return std::exchange(m_rows, 0);
}

} // namespace ADODB
