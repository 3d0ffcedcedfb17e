#include "ado/odbc/MomentsAsText.h"

#include "ado/StatementText.h"
#include "ado/family/Family.h"

namespace ADODB::Odbc {

namespace {

// The number of columns of a statement that is prepared here; 0 when it has none or does not prepare.
int Prepared(Link &link, const Handle &statement, const QByteArray &sql)
{
    QByteArray text = sql;
    SQLSMALLINT columns = 0;
    const Link::Running running(link, statement);
    if (SQL_SUCCEEDED(
            ODBC_TRY(SQLPrepare, statement.Get(), reinterpret_cast<SQLCHAR *>(text.data()), SQLINTEGER(text.size()))) &&
        SQL_SUCCEEDED(ODBC_TRY(SQLNumResultCols, statement.Get(), &columns)))
        return columns;
    const Error error = link.Failure(statement, "SQLNumResultCols");
    if (error.Number == adErrOperationCancelled || !link.IsAlive())
        throw error;
    return 0;
}

// Without the semicolon at its end. A comment behind the statement ends with the line.
QByteArray WithoutEnd(const QByteArray &sql)
{
    for (qsizetype at = sql.indexOf(';'); at >= 0; at = sql.indexOf(';', at + 1))
        if (BehindBlanks(QByteArrayView(sql).sliced(at)).isEmpty())
            return sql.left(at);
    return sql;
}

} // namespace

std::optional<MomentsAsText> WithMomentsAsText(Link &link, const QByteArray &sql)
{
    const bool writes = BeginsWithOne(sql, {"INSERT", "UPDATE", "DELETE"}) && sql.toUpper().contains("RETURNING");
    const auto exact = link.Of().Family->Rows.Exact;
    if (!exact)
        return {};
    if (!writes && !BeginsWithOne(sql, {"SELECT", "WITH", "VALUES", "TABLE", "("}))
        return {};
    MomentsAsText other;
    const Handle asked = link.NewStatement();
    const int columns = Prepared(link, asked, sql);
    QByteArray list, names;
    bool any = false;
    for (int number = 1; number <= columns; ++number) {
        ColumnPlan plan = Describe(link, asked, number);
        const QByteArray name = "c" + QByteArray::number(number);
        list += (list.isEmpty() ? "" : ", ") + exact(plan.Info, QString::fromLatin1(name)).toLatin1();
        names += names.isEmpty() ? name : ", " + name;
        any = TakeServersText(plan) || any;
        other.Columns.push_back(std::move(plan));
    }
    if (!any)
        return {};
    if (writes) // which may not stand in a sub-select
        other.Sql = "WITH moments(" + names + ") AS (" + WithoutEnd(sql) + "\n) SELECT " + list + " FROM moments";
    else
        other.Sql = "SELECT " + list + " FROM (" + WithoutEnd(sql) + "\n) AS moments(" + names + ")";
    const Handle tried = link.NewStatement();
    if (Prepared(link, tried, other.Sql) != columns)
        return {};
    return other;
}

} // namespace ADODB::Odbc
