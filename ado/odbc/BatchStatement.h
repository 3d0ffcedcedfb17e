#pragma once
// A prepared statement that runs for rows of parameters: one row, or a block of them as parameter arrays. What the rows
// are to mean is the caller's. Whoever has the connection's turn.

#include "ado/odbc/Link.h"
#include <optional>
#include <vector>

namespace ADODB::Odbc {

class BatchStatement
{
public:
    using Values = std::vector<Value>;

    BatchStatement(Link &link, const QByteArray &sql);

    struct Outcome
    {
        bool Arrays = true;           // false: the rows do not make arrays, nothing was sent
        bool InPart = false;          // some rows of a refused block went in all the same
        std::vector<qint64> Counts;   // of rows met, one for each result that the driver gives: a row's, or the block's
        std::vector<Values> Returned; // by RETURNING
        std::optional<Error> Failure; // of a block; a row's is raised

        qint64 Met() const;
    };
    // With the columns from `first` on.
    Outcome RunRow(const std::vector<ColumnStore> &columns, qint64 row, size_t first = 0);
    Outcome RunBlock(const std::vector<ColumnStore> &columns, qint64 rows);
    // Runs another statement beside it and gives its first row; none when it has none.
    std::optional<Values> FirstRowOf(const QByteArray &sql);

private:
    void Collect(Outcome &outcome);
    void ReadReturned(std::vector<Values> &into);
    [[noreturn]] void Fail() { throw m_link->Failure(m_statement, "SQLExecute"); }

    Link *m_link;
    Handle m_statement;
};

} // namespace ADODB::Odbc
