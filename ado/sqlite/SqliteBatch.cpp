// Prepared statements that run once a row.
#include "ado/StatementText.h"
#include "ado/sqlite/SqliteSession.h"

namespace ADODB {

namespace {

int BindText(sqlite3_stmt *statement, int index, const QByteArray &utf8)
{
    return sqlite3_bind_text64(statement, index, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT,
                               SQLITE_UTF8);
}

int Bind(sqlite3_stmt *statement, int index, const Value &value)
{
    if (value.IsNull())
        return sqlite3_bind_null(statement, index);
    if (const bool *truth = value.As<bool>())
        return sqlite3_bind_int(statement, index, *truth ? 1 : 0);
    if (const qint64 *number = value.As<qint64>())
        return sqlite3_bind_int64(statement, index, *number);
    if (const double *real = value.As<double>())
        return sqlite3_bind_double(statement, index, *real);
    if (const QByteArray *data = value.As<QByteArray>())
        return data->isEmpty() ? sqlite3_bind_zeroblob(statement, index, 0)
                               : sqlite3_bind_blob64(statement, index, data->constData(), sqlite3_uint64(data->size()),
                                                     SQLITE_TRANSIENT);
    if (const Timestamp *moment = value.As<Timestamp>()) // whole, also at midnight
        return BindText(statement, index, (DateText(moment->date) + u' ' + TimeText(moment->time)).toUtf8());
    return BindText(statement, index, value.ToText().toUtf8());
}

} // namespace

qint64 SqliteSession::ExecuteBatch(const QString &sql, const std::vector<ColumnStore> &parameters,
                                   const std::function<void(qint64, const Error &)> &failed)
{
    m_cancelled = false;
    const QByteArray text = sql.toUtf8();
    SqliteStatement statement;
    const int code = sqlite3_prepare_v2(m_db, text.constData(), int(text.size()) + 1, &statement.handle, nullptr);
    if (code != SQLITE_OK)
        throw LastError(code);
    const bool mustMeetRows = MustMeetRows(text);
    const qint64 rows = parameters.empty() ? 1 : parameters.front().Size();
    // All rows or, when it is cancelled, none: inside the caller's transaction and, with one commit for all rows,
    // outside of one. A refused row undoes itself alone.
    Run("SAVEPOINT brindlewick_batch");
    qint64 affected = 0;
    try {
        for (qint64 row = 0; row < rows; ++row) {
            RaiseIfCancelled();
            int done = SQLITE_OK;
            for (size_t i = 0; i < parameters.size() && done == SQLITE_OK; ++i)
                done = Bind(statement.handle, int(i) + 1, parameters[i].At(row));
            if (done == SQLITE_OK)
                done = sqlite3_step(statement.handle);
            if (done != SQLITE_DONE && done != SQLITE_ROW) {
                const Error error = LastError(done);
                if (error.Number == adErrOperationCancelled)
                    throw error;
                failed(row, error);
            } else if (const qint64 changes = sqlite3_changes64(m_db); changes > 0 || !mustMeetRows) {
                affected += changes;
            } else {
                failed(row, RowConflict());
            }
            sqlite3_reset(statement.handle);
        }
        Run("RELEASE brindlewick_batch");
    } catch (...) {
        sqlite3_reset(statement.handle);
        sqlite3_exec(m_db, "ROLLBACK TO brindlewick_batch; RELEASE brindlewick_batch", nullptr, nullptr, nullptr);
        throw;
    }
    return affected;
}

} // namespace ADODB
