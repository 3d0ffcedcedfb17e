#pragma once
// What the drivers must know of a statement's text. Bytes of UTF-8 in; pure and total; any thread.

#include "ado/Driver.h"
#include "ado/Error.h"
#include <QByteArrayView>
#include <initializer_list>

namespace ADODB {

// The text behind leading blanks, semicolons and comments; an unclosed comment runs to the end.
QByteArrayView BehindBlanks(QByteArrayView sql);

// True when one of the words (in capitals) opens the statement, in any case, behind blanks and comments.
bool BeginsWithOne(QByteArrayView sql, std::initializer_list<QByteArrayView> words);

// UPDATE and DELETE: in a batch each run of one is meant for a row that is there.
bool MustMeetRows(QByteArrayView sql);

// Is the text surely one statement to a server of this family? Quotes and comments are read as the family reads them;
// where a server's settings decide how it reads them (backslashes, dollar quotes), a semicolon anywhere makes it false.
// SQL Server needs no semicolon between two statements: there it tells only of texts whose names stand in quotes.
bool IsOneStatement(const Family &family, const QString &sql);
// Raises what is told of any other text.
void RaiseUnlessOneStatement(const Family &family, const QString &sql);

} // namespace ADODB
