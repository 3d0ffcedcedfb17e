#include "ado/odbc/OdbcString.h"
#include <vector>

namespace ADODB::Odbc {

namespace {

struct Piece
{
    QString Keyword;
    QString Value;
    qsizetype Start = 0; // of the whole attribute in the string
    qsizetype End = 0;   // behind it, before its ";"
};

QString WithoutBlanks(const QString &text)
{
    qsizetype from = 0, to = text.size();
    while (from < to && text[from] == u' ')
        ++from;
    while (to > from && text[to - 1] == u' ')
        --to;
    return text.mid(from, to - from);
}

// The position behind a value in braces whose "{" stands at `open`; the end of the text when it is not closed.
qsizetype BehindBraces(const QString &text, qsizetype open)
{
    for (qsizetype at = open + 1; at < text.size(); ++at) {
        if (text[at] != u'}')
            continue;
        if (at + 1 < text.size() && text[at + 1] == u'}')
            ++at;
        else
            return at + 1;
    }
    return text.size();
}

std::vector<Piece> Pieces(const QString &text)
{
    std::vector<Piece> pieces;
    for (qsizetype at = 0; at < text.size();) {
        Piece piece;
        piece.Start = at;
        const qsizetype semicolon = text.indexOf(u';', at);
        const qsizetype equals = text.indexOf(u'=', at);
        if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
            piece.End = semicolon < 0 ? text.size() : semicolon;
        } else {
            piece.Keyword = WithoutBlanks(text.mid(at, equals - at));
            qsizetype value = equals + 1;
            while (value < text.size() && text[value] == u' ')
                ++value;
            const bool braced = value < text.size() && text[value] == u'{';
            const qsizetype behind = braced ? BehindBraces(text, value) : value;
            piece.End = text.indexOf(u';', behind);
            if (piece.End < 0)
                piece.End = text.size();
            if (braced) {
                const bool closed = behind > value + 1 && text[behind - 1] == u'}';
                piece.Value = text.mid(value + 1, behind - value - 1 - (closed ? 1 : 0));
                piece.Value.replace(QLatin1String("}}"), QLatin1String("}"));
            } else {
                piece.Value = WithoutBlanks(text.mid(value, piece.End - value));
            }
        }
        at = piece.End + 1;
        pieces.push_back(piece);
    }
    return pieces;
}

bool Same(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

QString Written(const QString &value)
{
    for (const QChar c : value) {
        if (QStringView(u";{}[](),?*=!@ ").contains(c)) {
            QString inner = value;
            return u'{' + inner.replace(QLatin1String("}"), QLatin1String("}}")) + u'}';
        }
    }
    return value;
}

} // namespace

QString Attribute(const QString &connectionString, const QString &keyword)
{
    for (const Piece &piece : Pieces(connectionString))
        if (Same(piece.Keyword, keyword))
            return piece.Value;
    return {};
}

bool HasAttribute(const QString &connectionString, const QString &keyword)
{
    for (const Piece &piece : Pieces(connectionString))
        if (Same(piece.Keyword, keyword))
            return true;
    return false;
}

QString WithAttribute(const QString &connectionString, const QString &keyword, const QString &value)
{
    QString result;
    for (const Piece &piece : Pieces(connectionString)) {
        if (Same(piece.Keyword, keyword))
            continue;
        const QString text = connectionString.mid(piece.Start, piece.End - piece.Start);
        if (WithoutBlanks(text).isEmpty())
            continue;
        result += text + u';';
    }
    return result + keyword + u'=' + Written(value);
}

QString Completed(const QString &connectionString, const QString &user, const QString &password)
{
    QString text = connectionString;
    if (!user.isEmpty())
        text = WithAttribute(text, QStringLiteral("UID"), user);
    if (!password.isEmpty())
        text = WithAttribute(text, QStringLiteral("PWD"), password);
    // This driver speaks the machine's old character set unless it is told otherwise.
    const QString driver = Attribute(text, QStringLiteral("Driver"));
    const bool isTds = driver.contains(QLatin1String("FreeTDS"), Qt::CaseInsensitive) ||
                       driver.contains(QLatin1String("libtdsodbc"), Qt::CaseInsensitive);
    if (isTds && !HasAttribute(text, QStringLiteral("ClientCharset")))
        text = WithAttribute(text, QStringLiteral("ClientCharset"), QStringLiteral("UTF-8"));
    return text;
}

} // namespace ADODB::Odbc
