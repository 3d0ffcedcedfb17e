#include "views/logic/ChartWords.h"

#include "lang/Text.h"
#include <QTextBoundaryFinder>

namespace {

constexpr qsizetype kMostCharacters = 1000;

}

QString FlatText(const QString &text)
{
    QString flat = text.left(kMostCharacters);
    if (flat.size() < text.size() && flat.back().isHighSurrogate())
        flat.chop(1);
    for (QChar &c : flat)
        if (c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return lang::Trim(flat);
}

QString CutToFit(const QString &text, double width, ChartFace face, const ChartMeasure &measure)
{
    if (text.isEmpty() || measure(text, face).width() <= width)
        return text;
    std::vector<qsizetype> ends; // of its characters as a reader counts them
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype at = finder.toNextBoundary(); at > 0; at = finder.toNextBoundary())
        ends.push_back(at);
    const auto cut = [&](size_t characters) { return text.left(ends[characters - 1]) + QChar(0x2026); };
    size_t fits = 0, tooLong = ends.size(); // the whole is too long
    while (tooLong - fits > 1) {
        const size_t middle = (fits + tooLong) / 2;
        (measure(cut(middle), face).width() <= width ? fits : tooLong) = middle;
    }
    return fits > 0 ? cut(fits) : QString();
}

QStringList WrapToFit(const QString &text, double width, int lines, ChartFace face, const ChartMeasure &measure)
{
    QStringList wrapped;
    QString line;
    const QStringList words = FlatText(text).split(u' ', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString longer = line.isEmpty() ? words[i] : line + u' ' + words[i];
        if (line.isEmpty() || measure(longer, face).width() <= width) {
            line = longer;
            continue;
        }
        if (wrapped.size() + 1 == lines) { // what is left stands in the last line, cut
            line += u' ' + words.mid(i).join(u' ');
            break;
        }
        wrapped += CutToFit(line, width, face, measure);
        line = words[i];
    }
    if (!line.isEmpty())
        wrapped += CutToFit(line, width, face, measure);
    wrapped.removeAll(QString());
    return wrapped;
}
