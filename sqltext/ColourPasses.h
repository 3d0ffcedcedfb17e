#pragma once
// The passes of the colouring that follow one another on the working text, but for the keyword pass. Each gives exactly
// what cutting the text at a mark, changing the pieces and joining them gives, in one walk. Pure; any thread.

#include <QString>
#include <QStringList>

// The switches of the colour table, as they stand at the time of a colouring.
struct ColourCodes
{
    QString plain, keyword, doubleQuote, singleQuote, comment;
    QStringList all; // in the table's order

    static ColourCodes Current();
};

// Takes out the user's own switches, then escapes what RTF reads as its own, and TABs.
QString EscapeSource(const QString &text, const ColourCodes &codes);

// Puts "\par " behind each CR LF. A whole text that ends in a line end gets one more, so that its empty last line
// survives the reading of the result.
QString MarkLines(const QString &text, bool wholeText);

// Colours what stands between two such quotes on one line; `code` is the switch. A quote without a partner on its line
// is no string, and the next quote decides afresh.
QString ColourQuotes(const QString &text, QChar quote, const QString &code, const ColourCodes &codes);

// Colours from "--" to the line's end, unless the stretch before it ends within single quotes.
QString ColourComments(const QString &text, const ColourCodes &codes);

// Italics for bracketed names. The switch behind "]" has no blank of its own: a blank or a digit of the text that
// follows joins it. That is meant.
QString MarkBrackets(const QString &text);
