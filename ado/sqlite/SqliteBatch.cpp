// Prepared statements that run once a row.
//
// All rows or, when it is cancelled, none: inside the caller's transaction and, with one commit for all rows, outside
// of one. A refused row undoes itself alone. A row that met several undoes its block, whose rows then go one by one.
#include "ado/StatementText.h"
#include "ado/sqlite/SqliteSession.h"

#include <cmath>

namespace ADODB {

namespace {

constexpr qint64 kBlockRows = 1000;
constexpr qint64 kRefused = -1; // instead of a count of rows

int BindText(sqlite3_stmt *statement, int index, const QByteArray &utf8)
{
    return sqlite3_bind_text64(statement, index, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT,
                               SQLITE_UTF8);
}

// The column outlives the step, so a text is not copied.
int Bind(sqlite3_stmt *statement, int index, const ColumnStore &column, qint64 row)
{
    if (const QByteArrayView text = column.Utf8(row); text.data())
        return sqlite3_bind_text64(statement, index, text.data(), sqlite3_uint64(text.size()), SQLITE_STATIC,
                                   SQLITE_UTF8);
    const Value value = column.At(row);
    if (value.IsNull())
        return sqlite3_bind_null(statement, index);
    if (const bool *truth = value.As<bool>())
        return sqlite3_bind_int(statement, index, *truth ? 1 : 0);
    if (const qint64 *number = value.As<qint64>())
        return sqlite3_bind_int64(statement, index, *number);
    if (const double *real = value.As<double>()) {
        if (std::isnan(*real)) // the library would store a null instead
            throw Error(Fault::WrongValue);
        return sqlite3_bind_double(statement, index, *real);
    }
    if (const QByteArray *data = value.As<QByteArray>())
        return data->isEmpty() ? sqlite3_bind_zeroblob(statement, index, 0)
                               : sqlite3_bind_blob64(statement, index, data->constData(), sqlite3_uint64(data->size()),
                                                     SQLITE_TRANSIENT);
    if (const Timestamp *moment = value.As<Timestamp>()) // whole, also at midnight
        return BindText(statement, index, (DateText(moment->date) + u' ' + TimeText(moment->time)).toUtf8());
    return BindText(statement, index, value.ToText().toUtf8());
}

Value Cell(sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qint64(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char *>(sqlite3_column_blob(statement, column)),
                          sqlite3_column_bytes(statement, column));
    default:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)),
                                 sqlite3_column_bytes(statement, column));
    }
}

class Runner
{
public:
    Runner(SqliteSession &session, const Batch &batch) : m_session(session), m_db(session.Handle()), m_batch(batch)
    {
        const QByteArray text = batch.Sql.toUtf8();
        m_mustMeetRows = MustMeetRows(text);
        const int code = sqlite3_prepare_v2(m_db, text.constData(), int(text.size()) + 1, &m_statement.handle, nullptr);
        if (code != SQLITE_OK)
            throw session.LastError(code);
    }

    qint64 RunAll()
    {
        Run("SAVEPOINT brindlewick_batch");
        try {
            while (NextBlock()) {
                // Under a key no row can meet several, so nothing has to be taken back.
                const bool guarded = m_mustMeetRows && !m_batch.ByKey;
                if (!guarded) {
                    RunBlock(false);
                } else {
                    Run("SAVEPOINT brindlewick_block");
                    if (!RunBlock(false)) {
                        Run("ROLLBACK TO brindlewick_block");
                        RunBlock(true);
                    }
                    Run("RELEASE brindlewick_block");
                }
                TellBlock();
            }
            Run("RELEASE brindlewick_batch");
        } catch (...) {
            sqlite3_reset(m_statement.handle);
            Undo("ROLLBACK TO brindlewick_batch");
            Undo("RELEASE brindlewick_batch");
            throw;
        }
        if (m_batch.Written)
            m_batch.Written(m_first);
        return m_affected;
    }

private:
    // Not the session's own: that one forgets a cancel that has come meanwhile.
    void Run(const char *sql)
    {
        const int code = sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr);
        if (code != SQLITE_OK)
            throw m_session.LastError(code);
    }

    // A cancel is repeated until the batch has ended, and must not stop what takes the batch back.
    void Undo(const char *sql)
    {
        while ((sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) & 0xFF) == SQLITE_INTERRUPT) {
        }
    }

    bool NextBlock()
    {
        m_session.RaiseIfCancelled();
        m_columns.clear();
        for (const DataTypeEnum type : m_batch.Types)
            m_columns.emplace_back(type);
        m_rows = m_batch.Next(m_columns, kBlockRows);
        return m_rows > 0;
    }

    // False when a row met several and nothing guarded it: the block must be taken back.
    bool RunBlock(bool rowByRow)
    {
        m_refused.clear();
        m_made.clear();
        m_blockAffected = 0;
        for (qint64 row = 0; row < m_rows; ++row) {
            m_session.RaiseIfCancelled();
            if (rowByRow)
                Run("SAVEPOINT brindlewick_row");
            qint64 met = RunRow(row);
            if (m_mustMeetRows && met > 1) {
                if (!rowByRow)
                    return m_batch.ByKey; // which cannot be
                Run("ROLLBACK TO brindlewick_row");
                m_refused.emplace_back(row, Error(Fault::TooManyRows));
                met = kRefused;
            } else if (m_mustMeetRows && met == 0) {
                m_refused.emplace_back(row, Error(Fault::RowConflict));
            }
            if (rowByRow)
                Run("RELEASE brindlewick_row");
            if (met != kRefused)
                m_blockAffected += met;
        }
        return true;
    }

    // How many rows it met, or kRefused.
    qint64 RunRow(qint64 row)
    {
        int code = SQLITE_OK;
        try {
            for (size_t i = 0; i < m_columns.size() && code == SQLITE_OK; ++i)
                code = Bind(m_statement.handle, int(i) + 1, m_columns[i], row);
        } catch (const Error &error) {
            m_refused.emplace_back(row, error);
            return kRefused;
        }
        while (code == SQLITE_OK || code == SQLITE_ROW) {
            code = sqlite3_step(m_statement.handle);
            if (code == SQLITE_ROW && m_batch.Made) {
                const int columns = sqlite3_column_count(m_statement.handle);
                std::vector<Value> values;
                values.reserve(size_t(columns));
                for (int i = 0; i < columns; ++i)
                    values.push_back(Cell(m_statement.handle, i));
                m_made.emplace_back(row, std::move(values));
            }
        }
        qint64 met = kRefused;
        if (code == SQLITE_DONE) {
            met = sqlite3_changes64(m_db);
        } else {
            const Error error = m_session.LastError(code);
            // A trigger or a constraint may roll back the whole transaction, and with it the rows before this one.
            if (error.Number == adErrOperationCancelled || sqlite3_get_autocommit(m_db))
                throw error;
            m_refused.emplace_back(row, error);
        }
        sqlite3_reset(m_statement.handle);
        return met;
    }

    void TellBlock()
    {
        for (const auto &[row, error] : m_refused)
            m_batch.Refused(m_first + row, error);
        for (const auto &[row, values] : m_made)
            m_batch.Made(m_first + row, values);
        m_affected += m_blockAffected;
        m_first += m_rows;
    }

    SqliteSession &m_session;
    sqlite3 *const m_db;
    const Batch &m_batch;
    SqliteStatement m_statement;
    bool m_mustMeetRows = false;
    std::vector<ColumnStore> m_columns;
    qint64 m_first = 0, m_rows = 0; // the block
    qint64 m_affected = 0, m_blockAffected = 0;
    std::vector<std::pair<qint64, Error>> m_refused;
    std::vector<std::pair<qint64, std::vector<Value>>> m_made;
};

} // namespace

qint64 SqliteSession::ExecuteBatch(const Batch &batch)
{
    m_cancelled = false;
    return Runner(*this, batch).RunAll();
}

} // namespace ADODB
