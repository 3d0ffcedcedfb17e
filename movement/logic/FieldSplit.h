#pragma once
// A line of a flat file cut into its fields. Plain: a delimiter inside quotes cuts as well. Bytes are UTF-8; the views
// point into the line. Any thread.

#include <QByteArrayView>
#include <QString>
#include <vector>

// Replaces `fields`. An empty line has no field at all, an empty delimiter leaves the line in one piece.
void SplitFields(QByteArrayView line, QByteArrayView delimiter, std::vector<QByteArrayView> &fields);

// Without blanks around and without the quotes or apostrophes that enclose it, when the trimmed text has at least three
// bytes and begins and ends with the same of them; else as it was given, blanks and all.
QByteArrayView StripQuotes(QByteArrayView text);
QString StripQuotes(const QString &text);

// Nothing but blanks (U+0020)?
bool IsBlankLine(QByteArrayView line);
