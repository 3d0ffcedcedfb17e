#pragma once
// The text by which a connection's server reaches the very object that was picked: in every statement that the program
// sends, and in every text that it offers to the editor.
//
// The program writes a name as QuoteName does wherever the server reads that as the object. Where it does not, the name
// goes in the server's own quotes, and with its schema where the plain name leads to another object. The server is
// asked where it leads, since a search path may change at any moment. Any thread; the interface thread keeps the
// windows painting meanwhile. Raises ADODB::Error only when the user cancels.

#include "ado/Connection.h"
#include "ado/ObjectName.h"
#include <QString>
#include <QStringList>

// How the name is written, when it is known whether the plain name leads to this object. Pure.
QString NameText(const ADODB::Family &family, const QString &quote, const ADODB::ObjectName &object,
                 bool plainLeadsHere);

QString ServerName(const ADODB::ConnectionPtr &connection, const ADODB::ObjectName &object);
// Of a text that is a table's name, or a statement in place of one (with a blank and the word SELECT), which goes into
// round brackets. Nobody has picked it, so nothing is known but the text.
QString ServerName(const ADODB::ConnectionPtr &connection, const QString &tableOrStatement);

// For texts that go into an editor and come back from it, cut at blank lines, with each pair of blanks made one: the
// name as ServerName writes it, or in a way of the server's that needs no such characters. "" where there is none: the
// text would lead elsewhere, so it must not be offered; NotOffered says so to the user.
QString OfferedName(const ADODB::ConnectionPtr &connection, const ADODB::ObjectName &object);
QString NotOffered(const QString &name);

// A name that stands in a text as it is: letters, digits, blanks and the like. Anything else could end a statement.
bool IsHarmless(const QString &name);
// A column's name, or the name of a table to be made: as it is when it is harmless, else in the server's quotes, with
// what the editor cannot keep made "_".
QString HarmlessName(const ADODB::ConnectionPtr &connection, const QString &name);
