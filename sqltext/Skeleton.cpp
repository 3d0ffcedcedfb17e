#include "sqltext/EditAssist.h"

#include "sqltext/LineEnd.h"
#include "sqltext/modSQLMaipulation.h"

namespace {

QString Select(const SkeletonOptions &options, const QString &name, const QString &fields)
{
    QString sql = QStringLiteral(" SELECT ") + (options.useFields ? fields : QStringLiteral("*")) + kCrLf +
                  QStringLiteral(" FROM ") + name;
    if (options.groupBy) {
        sql += kCrLf + QStringLiteral(" Group By ") + fields;
        if (options.having)
            sql += kCrLf + QStringLiteral(" Having [Expression]=''");
    }
    if (options.orderBy)
        sql += kCrLf + QStringLiteral(" Order By ") + fields;
    return sql;
}

} // namespace

QString Skeleton(const SkeletonOptions &options, const QString &table, const QString &fields)
{
    return SkeletonOf(options, QuoteName(table), fields);
}

bool KeepsInEditor(const QString &written)
{
    for (qsizetype i = 0; i < written.size(); ++i) {
        const QChar c = written[i], next = i + 1 < written.size() ? written[i + 1] : QChar();
        const bool control = c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0) ||
                             c == QChar::LineSeparator || c == QChar::ParagraphSeparator || c == QChar::Nbsp ||
                             c == QChar::ObjectReplacementCharacter;
        if (control || (c == u' ' && next == u' ') || (c == u']' && (next == u' ' || next.isDigit())))
            return false;
    }
    return true;
}

QString SkeletonOf(const SkeletonOptions &options, const QString &name, const QString &fields)
{
    switch (options.type) {
    case StatementKind::Select:
        return Select(options, name, fields);
    case StatementKind::Insert:
        return QStringLiteral("INSERT INTO ") + name + QStringLiteral(" (") + (options.useFields ? fields : QString()) +
               QStringLiteral(") VALUES (  [Values] )");
    case StatementKind::Update:
        return QStringLiteral("UPDATE ") + name + kCrLf + QStringLiteral(" SET WHERE [Expression]");
    case StatementKind::Delete:
        return QStringLiteral("DELETE FROM ") + name + kCrLf + QStringLiteral(" WHERE [Expression]");
    case StatementKind::Drop:
        return QStringLiteral("DROP TABLE ") + name + kCrLf;
    case StatementKind::Alter:
        return QStringLiteral("ALTER TABLE ") + name + kCrLf + QStringLiteral("ADD column_name datatype") + kCrLf +
               QStringLiteral("MODIFY column_name datatype") + kCrLf + QStringLiteral("DROP column_name datatype");
    }
    return {};
}
