#include "sqltext/EditAssist.h"

#include "sqltext/modSQLMaipulation.h"

namespace {

const QString CrLf = QStringLiteral("\r\n");

QString Select(const SkeletonOptions &options, const QString &name, const QString &fields)
{
    QString sql = QStringLiteral(" SELECT ") + (options.useFields ? fields : QStringLiteral("*")) + CrLf +
                  QStringLiteral(" FROM ") + name;
    if (options.groupBy) {
        sql += CrLf + QStringLiteral(" Group By ") + fields;
        if (options.having)
            sql += CrLf + QStringLiteral(" Having [Expression]=''");
    }
    if (options.orderBy)
        sql += CrLf + QStringLiteral(" Order By ") + fields;
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
    case 0:
        return Select(options, name, fields);
    case 1:
        return QStringLiteral("INSERT INTO ") + name + QStringLiteral(" (") + (options.useFields ? fields : QString()) +
               QStringLiteral(") VALUES (  [Values] )");
    case 2:
        return QStringLiteral("UPDATE ") + name + CrLf + QStringLiteral(" SET WHERE [Expression]");
    case 3:
        return QStringLiteral("DELETE FROM ") + name + CrLf + QStringLiteral(" WHERE [Expression]");
    case 4:
        return QStringLiteral("DROP TABLE ") + name + CrLf;
    case 5:
        return QStringLiteral("ALTER TABLE ") + name + CrLf + QStringLiteral("ADD column_name datatype") + CrLf +
               QStringLiteral("MODIFY column_name datatype") + CrLf + QStringLiteral("DROP column_name datatype");
    default:
        return {};
    }
}
