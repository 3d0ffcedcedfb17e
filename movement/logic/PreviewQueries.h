#pragma once
// What the windows read of a table before anything is moved: its fields, and the first rows of a source. On a worker;
// raises ADODB::Error.

#include "ado/Connection.h"
#include <QStringList>

inline constexpr qint64 PreviewRows = 50;

// The first rows of a statement; then the statement is ended on the server, however many it has.
ADODB::RecordsetPtr ReadFirst(const ADODB::ConnectionPtr &connection, const QString &sql, qint64 most);

QStringList FieldsOf(const ADODB::ConnectionPtr &connection, const QString &quoted);

// The statements that a source is tried with, one after the other: each family knows one of them at least. The one with
// LIMIT stands ahead of the plain one for drivers that take the whole result in before they hand out its first row.
QStringList PreviewStatements(const QString &quoted);
// The first rows of a source, by the first of them that the server takes. Inside of a transaction only by the last two:
// a statement that fails can end it.
ADODB::RecordsetPtr ReadSource(const ADODB::ConnectionPtr &connection, const QString &quoted);

// Does the text stand in place of a table's name as a statement? Then Bracketed makes a table of it that every family
// takes: with a name, and with a line end against a comment at its end.
bool IsStatement(const QString &text);
QString Bracketed(const QString &statement);

// What a preview cell shows of a text.
QString ShownText(const QString &text);
