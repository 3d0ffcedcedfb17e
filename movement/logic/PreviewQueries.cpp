#include "movement/logic/PreviewQueries.h"

#include "ado/Error.h"
#include "ado/Recordset.h"
#include "lang/Text.h"

namespace {

constexpr qsizetype shownLength = 50; // characters

} // namespace

ADODB::RecordsetPtr ReadFirst(const ADODB::ConnectionPtr &connection, const QString &sql, qint64 most)
{
    ADODB::Connection::Turn turn(connection, sql);
    turn.Begin();
    ADODB::ExecuteResult result = turn.Driver().ExecuteOne(sql);
    if (!result.Rows)
        throw ADODB::Error(ADODB::Fault::ObjectClosed);
    std::vector<ADODB::ColumnStore> stores;
    for (const ADODB::ColumnInfo &column : result.Rows->Columns())
        stores.emplace_back(column.Type);
    for (qint64 read = 0; read < most;) {
        const qint64 fetched = result.Rows->Fetch(stores, most - read);
        if (fetched == 0)
            break;
        read += fetched;
    }
    return ADODB::Recordset::FromColumns(result.Rows->Columns(), std::move(stores));
}

QStringList FieldsOf(const ADODB::ConnectionPtr &connection, const QString &quoted)
{
    const ADODB::RecordsetPtr rows =
        ReadFirst(connection, QStringLiteral("SELECT * FROM ") + quoted + QStringLiteral(" WHERE 1=0"), 1);
    QStringList fields;
    for (int column = 0; column < rows->ColumnCount(); ++column)
        fields += rows->Column(column).Name;
    return fields;
}

QStringList PreviewStatements(const QString &quoted)
{
    const QString all = QStringLiteral("SELECT * FROM ") + quoted;
    return {QStringLiteral("SELECT Top %1 * FROM ").arg(PreviewRows) + quoted,
            all + QStringLiteral(" WHERE Rownum < %1").arg(PreviewRows),
            all + QStringLiteral(" LIMIT %1").arg(PreviewRows), all};
}

ADODB::RecordsetPtr ReadSource(const ADODB::ConnectionPtr &connection, const QString &quoted)
{
    const QStringList statements = PreviewStatements(quoted);
    constexpr qsizetype limited = 2;
    for (qsizetype i = connection->InTransaction() ? limited : 0; i + 1 < statements.size(); ++i) {
        try {
            return ReadFirst(connection, statements[i], PreviewRows);
        } catch (const ADODB::Error &error) {
            if (error.Name == ADODB::Fault::Cancelled)
                throw;
        }
    }
    return ReadFirst(connection, statements.last(), PreviewRows);
}

bool IsStatement(const QString &text)
{
    return text.contains(u' ') && text.contains(QLatin1String("SELECT"), Qt::CaseInsensitive);
}

QString Bracketed(const QString &statement)
{
    return u'(' + statement + QStringLiteral("\r\n) TEMP");
}

QString ShownText(const QString &text)
{
    return text.size() <= shownLength
               ? text
               : text.left(text[shownLength - 1].isHighSurrogate() ? shownLength - 1 : shownLength) +
                     QStringLiteral("...");
}
