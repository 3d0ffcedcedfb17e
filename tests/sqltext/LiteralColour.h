#pragma once
// The colouring to the letter of its rule: a chain of passes that cut the whole text at a mark, change the pieces and
// join them, one for each keyword. Slow, plain, and what the fast one is measured against. Tests and benches only.

#include <QString>
#include <QStringList>

namespace literal {

QString ColourBody(const QString &text, const QStringList &keywords, bool wholeText);

// The keyword pass alone, over a working text.
QString ColourKeywords(QString working, const QStringList &keywords);

} // namespace literal
