#pragma once
// What the built-in driver must know of a statement's text and of the library's messages. Pure and total; any thread.

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace ADODB {

bool SqliteIsBlank(QByteArrayView sql); // nothing but blanks, semicolons and comments
bool SqliteChangesRows(
    QByteArrayView sql);      // INSERT, UPDATE, DELETE, REPLACE, WITH: statements that the library counts for
QStringList SqliteKeywords(); // all that the library has
QString SqliteState(int extendedCode, const QString &words); // the five characters of SQLSTATE

} // namespace ADODB
