#include "sqltext/modTemplates.h"

#include "lang/Text.h"

#include <QStringList>

namespace {

QString Lines(const QStringList &lines)
{
    return lines.join(QStringLiteral("\r\n"));
}

} // namespace

QString NewTableTemplate(const QString &name)
{
    return Lines({QStringLiteral("-- NEW TABLE TEMPLATE      note: Replace all [parameters] "),
                  QStringLiteral("CREATE TABLE ") + name + QStringLiteral("  ("),
                  QStringLiteral(" [column_name]  [datatype] [NULL / NOT NULL] "),
                  QStringLiteral(" --CONSTRAINT [table_constraint_name] PRIMARY KEY ([column1]) )"),
                  QStringLiteral(" )")});
}

QString ModifyTableTemplate(const QString &name)
{
    return Lines({QStringLiteral("-- MODIFY TABLE TEMPLATE      note: Replace all [parameters] "),
                  QStringLiteral("ALTER TABLE ") + name + QStringLiteral(" ("),
                  QStringLiteral("   ALTER (  [column_name] [new_data_type]  [ NULL / NOT NULL ]  )"),
                  QStringLiteral("   -- ADD (  [column_name] [new_data_type]  [ NULL / NOT NULL ]  )"),
                  QStringLiteral("   -- DROP (  [column_name]  )"), QStringLiteral(" )")});
}

QString NewViewTemplate(const QString &name)
{
    return Lines({QStringLiteral("-- NEW VIEW TEMPLATE      note: Replace all [parameters] "),
                  QStringLiteral("CREATE VIEW ") + name + QStringLiteral("  AS ("), QStringLiteral(" [Statement]"),
                  QStringLiteral(" )")});
}
