#pragma once
// Fixed texts to start a DDL statement from, and the server-side script page of a query. Pure, any thread, nothing
// raises. Lines are parted by CR LF, the last has none. Names go in as they are given.

#include <QString>

QString NewTableTemplate(const QString &name);
QString ModifyTableTemplate(const QString &name);
QString NewViewTemplate(const QString &name);

// A page of VBScript that shows the rows of `sql` as an HTML table in two alternating colours. The connection string
// stands in it as it is, with its password.
QString GenerateScriptPage(const QString &connectionString, const QString &sql);
