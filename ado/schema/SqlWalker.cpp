#include "ado/schema/SqlWalker.h"

namespace ADODB {

namespace {

bool IsAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsOfName(QChar c)
{
    return c == u'_' || c == u'$' || c.unicode() >= 0x80 || IsAsciiDigit(c) || (c >= u'a' && c <= u'z') ||
           (c >= u'A' && c <= u'Z');
}

} // namespace

bool SqlWalker::IsBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

void SqlWalker::Past(QStringView end)
{
    const qsizetype found = Text.indexOf(end, Next);
    Next = found < 0 ? Text.size() : found + end.size();
}

// A quote within is written twice, but not between square brackets.
void SqlWalker::PastQuote(QChar close)
{
    for (++Next; Next < Text.size(); ++Next) {
        if (Backslashes && close == u'\'' && Text[Next] == u'\\')
            ++Next;
        else if (Text[Next] != close)
            continue;
        else if (close == u']' || At(Next + 1) != close)
            break;
        else
            ++Next;
    }
    Next = qMin(Next + 1, Text.size());
}

SqlWalker::Kind SqlWalker::Step()
{
    Start = Next;
    const QChar first = At(Next), second = At(Next + 1);
    if (Next >= Text.size())
        return Found = End;
    if (IsBlank(first)) {
        ++Next;
        return Found = Blank;
    }
    if (first == u'-' && second == u'-') {
        Past(u"\n");
        return Found = Blank;
    }
    if (first == u'/' && second == u'*') {
        Next += 2;
        Past(u"*/");
        return Found = Blank;
    }
    if (first == u'\'' || first == u'"' || first == u'`' || first == u'[') {
        PastQuote(first == u'[' ? QChar(u']') : first);
        return Found = Quoted;
    }
    if (!IsOfName(first)) {
        ++Next;
        return Found = Sign;
    }
    while (IsOfName(At(Next)))
        ++Next;
    return Found = Word;
}

SqlWalker::Kind SqlWalker::StepOverBlanks()
{
    while (Step() == Blank) {
    }
    return Found;
}

bool SqlWalker::IsName() const
{
    return Found == Word ? !IsAsciiDigit(Text[Start]) : Found == Quoted && Text[Start] != u'\'';
}

QString SqlWalker::Name() const
{
    QString name = Piece().toString();
    if (Found != Quoted)
        return name;
    const QChar close = name.back();
    name = name.mid(1, name.size() - 2);
    return close == u']' ? name : name.replace(QString(2, close), QString(close));
}

} // namespace ADODB
