#include "tests/sqltext/LiteralColour.h"

#include "lang/Text.h"
#include "sqltext/Keywords.h"
#include "sqltext/clsColorTable.h"

namespace literal {

namespace {

using lang::Compare;
using lang::InStr;
using lang::InStrRev;
using lang::Left;
using lang::Mid;
using lang::Replace;
using lang::Right;
using lang::Split;

const QString kLineEnd = QStringLiteral("\r\n");
const QString kWordEnds = QStringLiteral(u"   \r \n,)(:$&\u00EE\r\n\t");

QString Code(const char *key)
{
    return gColorTable.Item(QString::fromLatin1(key))->Code;
}

bool EndsWord(const QString &character)
{
    return InStr(kWordEnds, character, Compare::Text) > 0;
}

QString EscapeSource(QString text)
{
    for (const clsColorTable::Cell &cell : gColorTable)
        text = Replace(text, cell->Code, QString());
    text = Replace(text, QStringLiteral("\\"), QStringLiteral("\\\\"));
    text = Replace(text, QStringLiteral("{"), QStringLiteral("\\{"));
    text = Replace(text, QStringLiteral("}"), QStringLiteral("\\}"));
    return Replace(text, QStringLiteral("\t"), QStringLiteral("\\tab "));
}

QString ColourKeyword(const QString &text, const QString &keyword)
{
    QStringList pieces = Split(text, keyword, Compare::Text);
    qsizetype pos = 0;
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        pos = InStr(pos + 1, text, keyword, Compare::Text);
        const QString typed = MatchCase(Mid(text, pos, keyword.size()), keyword);
        if (EndsWord(Left(pieces[i], 1)) && EndsWord(Right(pieces[i - 1], 1)))
            pieces[i] = Code("KW") + typed + Code("D") + pieces[i];
        else
            pieces[i] = typed + pieces[i];
    }
    return pieces.join(QString());
}

QString MarkLines(const QString &text, bool wholeText)
{
    QStringList lines = Split(text, kLineEnd);
    if (wholeText && !lines.isEmpty() && lines.last().isEmpty())
        lines.last() += kLineEnd + "\\par ";
    return lines.join(kLineEnd + "\\par ");
}

QString ColourQuotes(const QString &text, const QString &quote, const QString &code)
{
    bool outside = true;
    QStringList pieces = Split(text, quote);
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        QString &piece = pieces[i];
        if (!outside) {
            outside = true;
            piece = quote + Code("D") + piece;
        } else if (i > 0) {
            if (InStr(piece, kLineEnd) == 0) {
                outside = false;
                piece = Replace(piece, Code("KW"), QString(), Compare::Text);
                piece = Replace(piece, Code("D"), QString(), Compare::Text);
                piece = code + quote + piece;
            } else {
                piece = quote + Code("D") + piece;
            }
        }
    }
    return pieces.join(QString());
}

QString ColourComments(const QString &text)
{
    const QString mark = QStringLiteral("--");
    QStringList pieces = Split(text, mark);
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        QString &piece = pieces[i];
        if (piece.isEmpty()) {
            piece = Code("C") + mark + Code("D");
            continue;
        }
        qsizetype n = InStr(piece, QStringLiteral("\n"));
        if (n == 0)
            n = piece.size();
        const QString &before = pieces[i - 1];
        if (InStrRev(before, Code("D"), Compare::Text) < InStrRev(before, Code("SQ"), Compare::Text)) {
            piece = mark + piece;
            continue;
        }
        QString head = Left(piece, n);
        for (const char *key : {"KW", "DQ", "SQ", "D"})
            head = Replace(head, Code(key), QString());
        piece = Code("C") + mark + head + Code("D") + Mid(piece, n + 1);
    }
    return pieces.join(QString());
}

} // namespace

QString ColourKeywords(QString working, const QStringList &keywords)
{
    for (const QString &keyword : keywords)
        working = ColourKeyword(working, keyword);
    return working;
}

QString ColourBody(const QString &text, const QStringList &keywords, bool wholeText)
{
    QString working = ColourKeywords(EscapeSource(text), keywords);
    working = MarkLines(working, wholeText);
    working = ColourQuotes(working, QStringLiteral("\""), Code("DQ"));
    working = ColourQuotes(working, QStringLiteral("'"), Code("SQ"));
    working = ColourComments(working);
    working = Replace(working, QStringLiteral("["), QStringLiteral("\\i["));
    working = Replace(working, QStringLiteral("]"), QStringLiteral("]\\i0"));
    return Replace(working, QStringLiteral("\t"), QStringLiteral("\\tab "));
}

} // namespace literal
