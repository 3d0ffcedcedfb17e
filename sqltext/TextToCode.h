#pragma once
// A statement as a quoted string of program code, plain or as coloured RTF. Pure but for the colour table, which the
// RTF form reads: interface thread only there. Nothing raises.
//
// Quotes inside of the text are not doubled. Blank lines are dropped.

#include <QString>
#include <QStringList>

// The choices of the window, and what stands in the settings before the first change.
inline const QString CodeQuote = QStringLiteral("\"");
inline const QString CodePrefix = QStringLiteral("&");
inline const QString CodePostfix = QStringLiteral(" _");

// Each line in quotes, joined by the continuation. With the default settings the last line has no continuation; with
// others the dangling one stays.
QString TextToPlainCode(const QString &text, const QString &quote = CodeQuote, const QString &prefix = CodePrefix,
                        const QString &postfix = CodePostfix);
// The same as a whole RTF document: quotes in the comment colour, the text in that of strings, the prefix as a keyword.
QString TextToCode(const QString &text, const QString &quote, const QString &prefix, const QString &postfix);

// One line of code per field: the mask with each "@" replaced by the field's name, as a whole RTF document. The
// switches have no blank behind them, so a name that begins with a digit is taken for part of its switch, and a blank
// behind a name for the end of the next one. That is meant: the document is settled to the letter.
QString MaskToCode(const QString &mask, const QStringList &fields);
