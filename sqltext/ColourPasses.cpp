#include "sqltext/ColourPasses.h"

#include "lang/Text.h"
#include "sqltext/TextSink.h"
#include "sqltext/clsColorTable.h"

namespace {

constexpr QStringView kTabWord = u"\\tab ";

QString CodeOf(const QString &key)
{
    const clsColorTable::Cell cell = gColorTable.Item(key);
    return cell ? cell->Code : QString();
}

// The stretch without the codes, taken out one after the other.
QString Without(QStringView stretch, const QStringList &codes, lang::Compare compare)
{
    QString left = stretch.toString();
    for (const QString &code : codes)
        left = lang::Replace(left, code, QString(), compare);
    return left;
}

void PutWithout(TextSink &out, QStringView stretch, const QStringList &codes, lang::Compare compare)
{
    // Every code begins with a backslash, or there is none.
    if (stretch.contains(u'\\'))
        out.Put(Without(stretch, codes, compare));
    else
        out.Put(stretch);
}

// One-based position of the last such code without regard to case, 0 when there is none.
qsizetype LastCode(QStringView text, const QString &code)
{
    return code.isEmpty() ? text.size() : text.lastIndexOf(code, -1, Qt::CaseInsensitive) + 1;
}

// Does the last single-quote switch stand behind the last default switch?
bool EndsInSingleQuotes(QStringView text, const ColourCodes &codes)
{
    const qsizetype quoted = LastCode(text, codes.singleQuote);
    return quoted > 0 && LastCode(text, codes.plain) < quoted;
}

} // namespace

ColourCodes ColourCodes::Current()
{
    ColourCodes codes{CodeOf(QStringLiteral("D")),  CodeOf(QStringLiteral("KW")), CodeOf(QStringLiteral("DQ")),
                      CodeOf(QStringLiteral("SQ")), CodeOf(QStringLiteral("C")),  {}};
    for (const clsColorTable::Cell &cell : gColorTable)
        codes.all.append(cell->Code);
    return codes;
}

void EscapeSource(const QString &text, const ColourCodes &codes, TextSink &out)
{
    const QString source = text.contains(u'\\') ? Without(text, codes.all, lang::Compare::Binary) : text;
    const QChar *copied = source.constData();
    const QChar *const end = copied + source.size();
    for (const QChar *at = copied; at < end; ++at) {
        const char16_t c = at->unicode();
        if (c != u'\\' && c != u'{' && c != u'}' && c != u'\t')
            continue;
        out.Put(copied, at - copied);
        copied = at;
        if (c == u'\t') {
            out.Put(kTabWord);
            ++copied;
        } else {
            out.Put(QChar(u'\\'));
        }
    }
    out.Put(copied, end - copied);
}

void MarkLines(QStringView text, bool wholeText, TextSink &out)
{
    constexpr QStringView lineEnd = u"\r\n", mark = u"\\par ";
    qsizetype from = 0;
    for (qsizetype hit = text.indexOf(lineEnd); hit >= 0; hit = text.indexOf(lineEnd, from)) {
        out.Put(text.mid(from, hit + 2 - from));
        out.Put(mark);
        from = hit + 2;
    }
    out.Put(text.mid(from));
    // A text of which nothing is left has no lines, not one empty line.
    if (wholeText && from == text.size() && from > 0) {
        out.Put(lineEnd);
        out.Put(mark);
    }
}

void ColourQuotes(QStringView text, QChar quote, const QString &code, const ColourCodes &codes, TextSink &out)
{
    const QStringList inside{codes.keyword, codes.plain};
    qsizetype mark = text.indexOf(quote);
    out.Put(text.left(mark < 0 ? text.size() : mark));
    bool outside = true;
    while (mark >= 0) {
        const qsizetype start = mark + 1;
        mark = text.indexOf(quote, start);
        const QStringView piece = text.mid(start, (mark < 0 ? text.size() : mark) - start);
        if (outside && !piece.contains(u"\r\n")) {
            outside = false;
            out.Put(code);
            out.Put(quote);
            PutWithout(out, piece, inside, lang::Compare::Text);
        } else {
            outside = true;
            out.Put(quote);
            out.Put(codes.plain);
            out.Put(piece);
        }
    }
}

void ColourComments(QStringView text, const ColourCodes &codes, TextSink &out)
{
    constexpr QStringView mark = u"--";
    const QStringList inside{codes.keyword, codes.doubleQuote, codes.singleQuote, codes.plain};
    qsizetype hit = text.indexOf(mark);
    out.Put(text.left(hit < 0 ? text.size() : hit));
    qsizetype former = 0; // where the piece before the mark begins in the result, as its own change left it
    while (hit >= 0) {
        const qsizetype start = hit + 2;
        hit = text.indexOf(mark, start);
        const QStringView piece = text.mid(start, (hit < 0 ? text.size() : hit) - start);
        const bool quoted = !piece.isEmpty() && EndsInSingleQuotes(out.View(former), codes);
        former = out.Size();
        if (quoted) {
            out.Put(mark);
            out.Put(piece);
            continue;
        }
        const qsizetype lineFeed = piece.indexOf(u'\n');
        const QStringView head = lineFeed < 0 ? piece : piece.left(lineFeed + 1);
        out.Put(codes.comment);
        out.Put(mark);
        PutWithout(out, head, inside, lang::Compare::Binary);
        out.Put(codes.plain);
        out.Put(piece.mid(head.size()));
    }
}

void MarkBrackets(QStringView text, TextSink &out)
{
    const QChar *copied = text.data();
    const QChar *const end = copied + text.size();
    for (const QChar *at = copied; at < end; ++at) {
        const char16_t c = at->unicode();
        if (c != u'[' && c != u']' && c != u'\t')
            continue;
        out.Put(copied, at - copied);
        out.Put(c == u'[' ? QStringView(u"\\i[") : c == u']' ? QStringView(u"]\\i0") : kTabWord);
        copied = at + 1;
    }
    out.Put(copied, end - copied);
}
