#pragma once
// Reads and changes single attributes of an ODBC connection string, leaving the rest as it was written.
//
// Attributes are parted by ";"; a value may stand in braces, and then "}}" means one "}". Keywords compare without
// regard to case, and the first of a keyword counts.

#include <QString>

namespace ADODB::Odbc {

QString Attribute(const QString &connectionString, const QString &keyword); // without braces; "" where there is none
bool HasAttribute(const QString &connectionString, const QString &keyword);
// Replaces every attribute of that keyword (or appends one); the value is written in braces when it needs them.
QString WithAttribute(const QString &connectionString, const QString &keyword, const QString &value);

// The string as the driver manager gets it: with the credentials of a login, when there are any, and with what a driver
// must be told to speak UTF-8.
QString Completed(const QString &connectionString, const QString &user, const QString &password);

} // namespace ADODB::Odbc
