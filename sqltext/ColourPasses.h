#pragma once
// The passes of the colouring that follow one another on the working text, but for the keyword pass. Each gives exactly
// what cutting the text at a mark, changing the pieces and joining them gives, in one walk. Pure; any thread.

#include <QString>
#include <QStringList>
#include <QStringView>

class TextSink;

// The switches of the colour table, as they stand at the time of a colouring.
struct ColourCodes
{
    QString plain, keyword, doubleQuote, singleQuote, comment;
    QStringList all; // in the table's order

    static ColourCodes Current();
};

// Takes out the user's own switches, then escapes what RTF reads as its own, and TABs.
void EscapeSource(const QString &text, const ColourCodes &codes, TextSink &out);

// Puts "\par " behind each CR LF. A whole text that ends in a line end gets one more, so that its empty last line
// survives the reading of the result.
void MarkLines(QStringView text, bool wholeText, TextSink &out);

// Colours what stands between two such quotes on one line; `code` is the switch. A quote without a partner on its line
// is no string, and the next quote decides afresh.
void ColourQuotes(QStringView text, QChar quote, const QString &code, const ColourCodes &codes, TextSink &out);

// Colours from "--" to the line's end, unless the stretch before it ends within single quotes.
void ColourComments(QStringView text, const ColourCodes &codes, TextSink &out);

// Italics for bracketed names. The switch behind "]" has no blank of its own: a blank or a digit of the text that
// follows joins it. That is meant: the RTF of each pass is settled to the letter, and the passes behind it read it so.
void MarkBrackets(QStringView text, TextSink &out);
