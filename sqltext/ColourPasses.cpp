#include "sqltext/ColourPasses.h"

#include "lang/Text.h"
#include "sqltext/TextSink.h"
#include "sqltext/clsColorTable.h"

namespace {

constexpr QStringView kTab = u"\\tab ";

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

QString EscapeSource(const QString &text, const ColourCodes &codes)
{
    const QString source = text.contains(u'\\') ? Without(text, codes.all, lang::Compare::Binary) : text;
    TextSink out(source.size() + source.size() / 16);
    const QChar *copied = source.constData();
    const QChar *const end = copied + source.size();
    for (const QChar *at = copied; at < end; ++at) {
        const char16_t c = at->unicode();
        if (c != u'\\' && c != u'{' && c != u'}' && c != u'\t')
            continue;
        out.Put(copied, at - copied);
        copied = at;
        if (c == u'\t') {
            out.Put(kTab);
            ++copied;
        } else {
            out.Put(QChar(u'\\'));
        }
    }
    if (out.Size() == 0)
        return source;
    out.Put(copied, end - copied);
    return out.Take();
}

QString MarkLines(const QString &text, bool wholeText)
{
    constexpr QStringView lineEnd = u"\r\n", mark = u"\\par ";
    TextSink out(text.size() + text.size() / 4);
    const QStringView source = text;
    qsizetype from = 0;
    for (qsizetype hit = source.indexOf(lineEnd); hit >= 0; hit = source.indexOf(lineEnd, from)) {
        out.Put(source.mid(from, hit + 2 - from));
        out.Put(mark);
        from = hit + 2;
    }
    out.Put(source.mid(from));
    // A text of which nothing is left has no lines, not one empty line.
    if (wholeText && from == source.size() && from > 0) {
        out.Put(lineEnd);
        out.Put(mark);
    }
    return out.Take();
}

QString ColourQuotes(const QString &text, QChar quote, const QString &code, const ColourCodes &codes)
{
    const QStringView source = text;
    qsizetype mark = source.indexOf(quote);
    if (mark < 0)
        return text;
    const QStringList inside{codes.keyword, codes.plain};
    TextSink out(text.size() + text.size() / 4);
    out.Put(source.left(mark));
    bool outside = true;
    while (mark >= 0) {
        const qsizetype start = mark + 1;
        mark = source.indexOf(quote, start);
        const QStringView piece = source.mid(start, (mark < 0 ? source.size() : mark) - start);
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
    return out.Take();
}

QString ColourComments(const QString &text, const ColourCodes &codes)
{
    constexpr QStringView mark = u"--";
    const QStringView source = text;
    qsizetype hit = source.indexOf(mark);
    if (hit < 0)
        return text;
    const QStringList inside{codes.keyword, codes.doubleQuote, codes.singleQuote, codes.plain};
    TextSink out(text.size() + text.size() / 4);
    out.Put(source.left(hit));
    qsizetype former = 0; // where the piece before the mark begins in the result, as its own change left it
    while (hit >= 0) {
        const qsizetype start = hit + 2;
        hit = source.indexOf(mark, start);
        const QStringView piece = source.mid(start, (hit < 0 ? source.size() : hit) - start);
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
    return out.Take();
}

QString MarkBrackets(const QString &text)
{
    TextSink out(text.size() + text.size() / 16);
    const QChar *copied = text.constData();
    const QChar *const end = copied + text.size();
    for (const QChar *at = copied; at < end; ++at) {
        const char16_t c = at->unicode();
        if (c != u'[' && c != u']' && c != u'\t')
            continue;
        out.Put(copied, at - copied);
        out.Put(c == u'[' ? QStringView(u"\\i[") : c == u']' ? QStringView(u"]\\i0") : kTab);
        copied = at + 1;
    }
    if (out.Size() == 0)
        return text;
    out.Put(copied, end - copied);
    return out.Take();
}
