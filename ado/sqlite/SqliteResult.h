#pragma once
// The rows of a running SQLite statement. Belongs to its session and must end before it; the session's thread.

#include "ado/sqlite/SqliteSession.h"
#include <vector>

namespace ADODB {

class SqliteResult : public ResultSet
{
public:
    // Takes a statement that gives columns and makes its first step, so that what fails at once fails here.
    SqliteResult(SqliteSession &session, SqliteStatement statement);

    const std::vector<ColumnInfo> &Columns() const override { return m_columns; }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) override;

private:
    bool Step();
    void Describe(int column, ColumnInfo &info);
    void Learn(std::vector<ColumnStore> &columns, int column, int storage, qint64 rows);
    void Read(std::vector<ColumnStore> &columns, int column, qint64 rows);
    static void ReadText(ColumnStore &store, const char *text, qint64 bytes);

    enum class Learning
    {
        Done,
        NoValueYet,
        WholeSoFar
    };

    SqliteSession &m_session;
    SqliteStatement m_statement;
    std::vector<ColumnInfo> m_columns;
    std::vector<Learning> m_learning; // of columns without a declared type, until the first Fetch is over
    bool m_hasRow = false;
    bool m_first = true;
};

// Rows that were read before later statements of the same text ran.
class SqliteKeptRows : public ResultSet
{
public:
    explicit SqliteKeptRows(SqliteResult &running);
    const std::vector<ColumnInfo> &Columns() const override { return m_columns; }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64 maxRows) override;

private:
    std::vector<ColumnInfo> m_columns;
    std::vector<ColumnStore> m_stores;
    qint64 m_rows = 0;
};

} // namespace ADODB
